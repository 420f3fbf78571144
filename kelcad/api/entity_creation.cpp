#include "kelcad/api/entity_creation.h"

#include "kelcad/api/current_space.h"
#include "kelcad/symtab/layer_info.h"

namespace KEL {

namespace {

// Appends a new entity to model space of the current drawing; on success
// closes it unless keepOpen, on failure deletes it.
bool AppendNew(AcDbEntity* entity, AcDbObjectId& id, bool keepOpen = false) {
  if (Append(entity, id) != Acad::eOk) {
    delete entity;
    id.setNull();
    return false;
  }
  if (!keepOpen) entity->close();
  return true;
}

}  // namespace

bool CreateLine(AcDbObjectId& id) { return AppendNew(new AcDbLine, id); }

bool CreateLine(AcGePoint3d start, AcGePoint3d end, AcDbObjectId& id) {
  return AppendNew(new AcDbLine(start, end), id);
}

bool CreateLine(AcGePoint2d start, AcGePoint2d end, AcDbObjectId& id) {
  return AppendNew(new AcDbLine(AcGePoint3d(start.x, start.y, 0.0), AcGePoint3d(end.x, end.y, 0.0)), id);
}

bool CreatePline(AcDbObjectId& id) { return AppendNew(new AcDbPolyline, id); }

bool CreatePline(AcArray<AcGePoint2d> pts, AcDbObjectId& id) {
  // The family's callers build the vertices themselves afterwards: the
  // points given are released, not added.
  pts.setLogicalLength(0);
  return AppendNew(new AcDbPolyline, id);
}

bool CreatePline(AcGePoint2d p1, AcGePoint2d p2, AcDbObjectId& id) {
  auto* pline = new AcDbPolyline(2);
  pline->addVertexAt(0, p1, 0.0, -1.0, -1.0);
  pline->addVertexAt(1, p2, 0.0, -1.0, -1.0);
  return AppendNew(pline, id);
}

bool Create3dPline(AcDbObjectId& id) { return AppendNew(new AcDb3dPolyline, id); }

bool Create3dPline(AcDb::Poly3dType type, AcArray<AcGePoint3d>& pts, AcDbObjectId& id, int closed) {
  // An open polyline is left open for write: the caller goes on with it.
  return AppendNew(new AcDb3dPolyline(type, pts, closed != 0), id, closed == 0);
}

bool CreateCircle(AcGePoint3d centre, AcGeVector3d normal, double radius, AcDbObjectId& id) {
  return AppendNew(new AcDbCircle(centre, normal, radius), id);
}

bool CreateText(AcGePoint3d position, const wchar_t* text, AcDbObjectId& id, double widthFactor) {
  auto* entity = new AcDbText(position, text != nullptr ? text : L"", AcDbObjectId::kNull, 0.0, 0.0);
  entity->setWidthFactor(widthFactor);
  return AppendNew(entity, id);
}

bool CreateLayer(const wchar_t* name, const wchar_t* ltName, int colour, bool makeCurrent) {
  if (name == nullptr || *name == L'\0') return false;
  layerInfo layer(name, true);
  bool done = layer.IsExist();
  done = layer.SetLineTypeName(ltName) && done;
  // -1 asks for no colour: any other value, read as unsigned, is set.
  if (static_cast<unsigned>(colour) < 0xFFFFFFFFu) done = layer.SetColorIndex(colour) && done;
  if (makeCurrent) done = layer.SetCurLayer() && done;
  return done;
}

}  // namespace KEL
