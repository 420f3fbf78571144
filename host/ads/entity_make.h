// Making entities from lists: the one-list core shared by acdbEntMake and
// the complex sequences (POLYLINE...VERTEX...SEQEND, INSERT...ATTRIB...SEQEND,
// BLOCK...ENDBLK), and the walk of acdbEntNext through sub-entities.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "arx/dbmain.h"
#include "db/stub.h"
#include "dxf/group_filer.h"

namespace kelhost::ads {

// A new object for a list of that type: POLYLINE and VERTEX lists with the
// 3D bit in group 70 (8, 32) give the 3D classes, an INSERT list with more
// than one column (70) or row (71) an array (AcDbMInsertBlock).
std::unique_ptr<AcDbObject> NewObjectForList(const std::wstring& type, const resbuf* list);

// Reads a list into a new object that is not in any database (xdata
// included); the records it names that are still missing are returned in
// pending. RTNORM, or RTREJ when the list is bad.
int ReadEntityList(const resbuf* list, std::unique_ptr<AcDbObject>& object,
                   std::vector<dxf::GroupFiler::PendingRecord>& pending);
// Creates the records a read queued (new layers).
bool CreatePendingRecords(AcDbDatabase* db, std::vector<dxf::GroupFiler::PendingRecord>& pending);

// Handles a list that belongs to a sequence (or arrives while a block
// definition is open): true with rc set when it did. An anonymous block
// gives RTKWORD at its ENDBLK, its name in LastBlockName().
bool MakeInSequence(const resbuf* list, AcDbObjectId& made, int& rc);
const std::wstring& LastBlockName();
// Drops a sequence in progress (nothing of it was added).
void AbandonSequences();

// The sub-entity after id within its complex entity (the first for the
// complex entity itself; the SEQEND after the last), or null.
AcDbObjectId NextInSequence(AcDbObjectId id);
// The complex entity a sub-entity belongs to; the entity itself otherwise.
AcDbStub* MainEntityOf(AcDbObjectId id);

}  // namespace kelhost::ads
