// Drawing records of a fixed two-level layout: the named-object
// dictionary holds a dictionary named dictName, which holds the xrecord
// recName whose chain is the whole record. The drawing is the module's
// current drawing, else the working database. Names are 1 to 31
// characters long; a wrong one is shown in a message box.
#pragma once

#include "kelcad/platform.h"

namespace KEL {

// Stores chain as the record (levels made when missing): 1. A null chain
// removes the record: 2. -1 when there is no drawing, a name is wrong, a
// group code is unknown (message box naming its 1-based position) or the
// record refuses the chain (the drawing is then unchanged).
int SetXRecord(CString dictName, CString recName, resbuf* chain);
// A copy of the record's chain in out (the caller releases it; null when
// a level is missing) and true; false, out null, for a wrong name or when
// there is no drawing.
bool GetXRecord(CString dictName, CString recName, resbuf*& out);
// Takes the record out of its dictionary (the xrecord itself is not
// erased). True whenever the drawing and the first level could be had.
bool RemoveXRecord(CString dictName, CString recName);

}  // namespace KEL
