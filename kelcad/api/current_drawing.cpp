// The one current-drawing pointer of the module.
#include "kelcad/api/current_drawing.h"

#include "kelcad/api/drawing_in_use.h"

namespace KEL {

namespace {
AcDbDatabase* gCurrentDrawing = nullptr;
}  // namespace

bool SetCurDWGPtr(AcDbDatabase* db) {
  gCurrentDrawing = db != nullptr ? db : acdbHostApplicationServices()->workingDatabase();
  return gCurrentDrawing != nullptr;
}

AcDbDatabase* DrawingInUse() {
  return gCurrentDrawing != nullptr ? gCurrentDrawing : acdbHostApplicationServices()->workingDatabase();
}

AcDbDatabase* GetCurDWGPtr() { return DrawingInUse(); }

void ForgetCurrentDrawing() { gCurrentDrawing = nullptr; }

}  // namespace KEL

