#include "kelcad/symtab/cad_view.h"

#include <cmath>

namespace {

enum CoordSystem { kWorld = 0, kUser = 1, kDisplay = 2 };

// A variable's value (0 or the origin when it cannot be read).
resbuf Var(const wchar_t* name) {
  resbuf rb{};
  if (acedGetVar(name, &rb) != RTNORM) {
    rb.restype = RTNONE;
    rb.resval.rpoint[0] = rb.resval.rpoint[1] = rb.resval.rpoint[2] = 0.0;
  }
  return rb;
}

double Real(const wchar_t* name) {
  const resbuf rb = Var(name);
  return rb.restype == RTREAL ? rb.resval.rreal : 0.0;
}

int Int(const wchar_t* name) {
  const resbuf rb = Var(name);
  return rb.restype == RTSHORT ? rb.resval.rint : (rb.restype == RTLONG ? static_cast<int>(rb.resval.rlong) : 0);
}

// A point variable given in the user coordinate system, converted to to
// (as a displacement when displacement is set).
AcGePoint3d Point(const wchar_t* name, CoordSystem to, bool displacement) {
  const resbuf value = Var(name);
  resbuf from{}, into{};
  from.restype = into.restype = RTSHORT;
  from.resval.rint = kUser;
  into.resval.rint = static_cast<short>(to);
  ads_point converted = {value.resval.rpoint[0], value.resval.rpoint[1], value.resval.rpoint[2]};
  acedTrans(value.resval.rpoint, &from, &into, displacement ? 1 : 0, converted);
  return AcGePoint3d(converted[0], converted[1], converted[2]);
}

void CopyView(const AcDbViewTableRecord& from, AcDbViewTableRecord& to) {
  to.setCenterPoint(from.centerPoint());
  to.setHeight(from.height());
  to.setWidth(from.width());
  to.setTarget(from.target());
  to.setViewDirection(from.viewDirection());
  to.setViewTwist(from.viewTwist());
  to.setLensLength(from.lensLength());
  to.setFrontClipDistance(from.frontClipDistance());
  to.setBackClipDistance(from.backClipDistance());
  to.setPerspectiveEnabled(from.perspectiveEnabled());
  to.setFrontClipEnabled(from.frontClipEnabled());
  to.setBackClipEnabled(from.backClipEnabled());
  to.setFrontClipAtEye(from.frontClipAtEye());
}

}  // namespace

CCadView::CCadView(AcDbViewTableRecord& view, int mode, AcDbViewport* vp) : m_mode(mode), m_pViewport(vp) {
  GetCurrentView(*this);
  SetCurrentView(view, m_mode, m_pViewport);
}

CCadView::CCadView(const AcDbExtents& extents, int mode, AcDbViewport* vp) : m_mode(mode), m_pViewport(vp) {
  GetCurrentView(*this);
  SetCurrentView(extents, m_mode, m_pViewport);
}

CCadView::CCadView(const AcGePoint3d& corner1, const AcGePoint3d& corner2, int mode, AcDbViewport* vp)
    : m_mode(mode), m_pViewport(vp) {
  GetCurrentView(*this);
  SetCurrentView(corner1, corner2, m_mode, m_pViewport);
}

CCadView::CCadView(const CCadView& other) : AcDbViewTableRecord(), m_mode(other.m_mode), m_pViewport(other.m_pViewport) {
  CopyView(other, *this);
}

CCadView& CCadView::operator=(const CCadView& other) {
  if (this != &other) {
    CopyView(other, *this);
    m_mode = other.m_mode;
    m_pViewport = other.m_pViewport;
  }
  return *this;
}

CCadView::~CCadView() { acedSetCurrentView(this, m_pViewport); }

void CCadView::GetCurrentView(AcDbViewTableRecord& view) {
  const int viewMode = Int(L"VIEWMODE");
  view.setPerspectiveEnabled((viewMode & 1) != 0);
  view.setFrontClipEnabled((viewMode & 2) != 0);
  view.setBackClipEnabled((viewMode & 4) != 0);
  view.setFrontClipAtEye((viewMode & 16) == 0);
  view.setBackClipDistance(Real(L"BACKZ"));
  const AcGePoint3d center = Point(L"VIEWCTR", kDisplay, false);
  view.setCenterPoint(AcGePoint2d(center.x, center.y));
  view.setFrontClipDistance(Real(L"FRONTZ"));
  view.setLensLength(Real(L"LENSLENGTH"));
  view.setTarget(Point(L"TARGET", kWorld, false));
  view.setViewDirection(Point(L"VIEWDIR", kWorld, true).asVector());
  const double height = Real(L"VIEWSIZE");
  view.setHeight(height);
  const AcGePoint3d low = Point(L"VSMIN", kDisplay, false);
  const AcGePoint3d high = Point(L"VSMAX", kDisplay, false);
  // The screen's aspect ratio applied to the view's height.
  view.setWidth(height * std::fabs(high.x - low.x) / std::fabs(high.y - low.y));
}

int CCadView::SetCurrentView(AcDbViewTableRecord& view, int mode, AcDbViewport* vp) {
  if (mode == 0) {
    AcDbViewTableRecord current;
    GetCurrentView(current);
    const double dh = current.height() - view.height();
    const double dw = current.width() - view.width();
    const bool inside = dh >= 0 && dh / 2 >= std::fabs(view.centerPoint().y - current.centerPoint().y) && dw >= 0 &&
                        dw / 2 >= std::fabs(view.centerPoint().x - current.centerPoint().x);
    if (inside) return 1;
  }
  return acedSetCurrentView(&view, vp) == Acad::eOk ? 1 : 0;
}

int CCadView::SetCurrentView(const AcDbExtents& extents, int mode, AcDbViewport* vp) {
  return SetCurrentView(extents.minPoint().convert2d(), extents.maxPoint().convert2d(), mode, vp);
}

int CCadView::SetCurrentView(const AcGePoint2d& corner1, const AcGePoint2d& corner2, int mode, AcDbViewport* vp) {
  AcDbViewTableRecord view;
  view.setCenterPoint(AcGePoint2d((corner1.x + corner2.x) / 2, (corner1.y + corner2.y) / 2));
  view.setWidth(std::fabs(corner2.x - corner1.x));
  view.setHeight(std::fabs(corner2.y - corner1.y));
  return SetCurrentView(view, mode, vp);
}

int CCadView::SetCurrentView(const AcGePoint3d& corner1, const AcGePoint3d& corner2, int mode, AcDbViewport* vp) {
  return SetCurrentView(corner1.convert2d(), corner2.convert2d(), mode, vp);
}
