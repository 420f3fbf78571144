#include "dxf/file_structure.h"

#include "arx/dbdatabase.h"
#include "arx/dbpoly.h"
#include "db/database_state.h"
#include "db/standard_objects.h"
#include "dxf/access.h"

namespace kelhost::dxf {
namespace {

// A heavy polyline is followed by its SEQEND in a file even when it has no
// vertex (the first vertex appended brings the SEQEND otherwise).
void EnsureSequenceEnd(AcDbDatabase* db, AcDbEntity* polyline, AcDbSubentSequence& seq) {
  if (!seq.end.isNull()) return;
  auto* end = new AcDbSequenceEnd;
  end->setPropertiesFrom(polyline);
  if (db->addAcDbObject(seq.end, end) != Acad::eOk) {
    delete end;
    return;
  }
  Access::setOwner(end, polyline->objectId());
  end->close();
}

}  // namespace

void CompleteForFile(AcDbDatabase* db) {
  db::EnsureStandardObjects(db);
  // Stubs are added while walking: walk by index over those there now.
  auto& stubs = db->state().stubs;
  for (size_t i = 0, n = stubs.size(); i < n; ++i) {
    AcDbStub* stub = stubs[i].get();
    if (stub->erased || !stub->object) continue;
    if (auto* p = AcDb2dPolyline::cast(stub->object.get())) EnsureSequenceEnd(db, p, p->sequence());
    else if (auto* p3 = AcDb3dPolyline::cast(stub->object.get())) EnsureSequenceEnd(db, p3, p3->sequence());
  }
}

}  // namespace kelhost::dxf
