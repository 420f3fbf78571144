// The sibling's drawing functions: what a family module draws through
// KELCAD's entity makers, layer records and small edits.
#include "kelsib.h"

namespace kelsib {

namespace {

resbuf* Append(resbuf*& head, resbuf* tail, resbuf* node) {
  if (tail == nullptr)
    head = node;
  else
    tail->rbnext = node;
  return node;
}

resbuf* Int(int v) {
  resbuf* rb = acutNewRb(RTSHORT);
  rb->resval.rint = static_cast<short>(v);
  return rb;
}

}  // namespace

// (kelsib_draw): draws a small part on layer "SIB" in model space and
// answers what each step reported, as 1 and 0 (and the counts).
int Draw() {
  resbuf* head = nullptr;
  resbuf* tail = nullptr;
  auto report = [&](int v) { tail = Append(head, tail, Int(v)); };

  report(KEL::CreateLayer(L"SIB", L"", 3, true) ? 1 : 0);  // no linetype name: refused, the rest done
  layerInfo sib(L"SIB", false);
  report(sib.IsExist() ? 1 : 0);
  report(sib.GetColorIndex());
  report(sib.SetColor(RGB(0, 0, 250)));

  AcDbObjectId line, pline, circle, text, poly3d;
  report(KEL::CreateLine(AcGePoint3d(0, 0, 0), AcGePoint3d(100, 0, 0), line) ? 1 : 0);
  report(KEL::CreatePline(AcGePoint2d(0, 10), AcGePoint2d(100, 10), pline) ? 1 : 0);
  report(KEL::CreateCircle(AcGePoint3d(50, 50, 0), AcGeVector3d::kZAxis, 25.0, circle) ? 1 : 0);
  report(KEL::CreateText(AcGePoint3d(0, 80, 0), L"KELSIB 零件", text, 0.8) ? 1 : 0);
  AcGePoint3dArray corners;
  corners.append(AcGePoint3d(0, 0, 0));
  corners.append(AcGePoint3d(10, 0, 5));
  corners.append(AcGePoint3d(10, 10, 5));
  report(KEL::Create3dPline(AcDb::k3dSimplePoly, corners, poly3d, 1) ? 1 : 0);

  // Everything made so far goes onto the sibling's layer.
  AcArray<AcDbObjectId> made;
  for (AcDbObjectId id : {line, pline, circle, text, poly3d}) {
    AcDbEntity* entity = nullptr;
    if (acdbOpenObject(entity, id, AcDb::kForWrite) == Acad::eOk) {
      entity->setLayer(L"SIB");
      entity->close();
    }
    made.append(id);
  }
  report(KEL::SetEntColorIndex(circle, 1) ? 1 : 0);
  CString handle;
  report(KEL::GetHandle(line, handle) && !handle.IsEmpty() ? 1 : 0);

  // A scratch line erased again, with one id that names nothing.
  AcDbObjectId scratch;
  KEL::CreateLine(AcGePoint2d(0, 0), AcGePoint2d(1, 1), scratch);
  AcArray<AcDbObjectId> gone;
  gone.append(scratch);
  gone.append(AcDbObjectId::kNull);
  report(KEL::Erase(gone));

  AcDbObjectId style;
  report(KEL::GetTxtStyleIDbyName(L"NoSuchStyle", style) == Acad::eOk && style.isNull() ? 1 : 0);
  report(KEL::IsLoadedArx(L"kelcad") ? 1 : 0);
  report(static_cast<int>(KEL::ucsAngleXZ(30.0)));
  acedRetList(head);
  acutRelRb(head);
  return RTNORM;
}

}  // namespace kelsib
