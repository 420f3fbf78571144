// What every drawing file carries even when the drawing never used it,
// added to the database before it is written so that readers (the CAD
// program, ezdxf) find a complete structure: the standard objects (layouts,
// plot style names, ...) and a SEQEND closing every heavy polyline.
#pragma once

class AcDbDatabase;

namespace kelhost::dxf {

void CompleteForFile(AcDbDatabase* db);

}  // namespace kelhost::dxf
