// Layouts (LAYOUT): a tab's name and order, its limits, extents and UCS,
// and the block it holds.
#include <cstdlib>
#include <cwchar>

#include "arx/dblayout.h"
#include "arx/dbsymtb.h"
#include "db/rx_define.h"
#include "db/setters.h"
#include "db/stub.h"
#include "dxf/group_filer.h"

using kelhost::dxf::Presence;

KELHOST_RX_DEFINE(AcDbLayout, AcDbPlotSettings, L"LAYOUT")

Acad::ErrorStatus AcDbLayout::getLayoutName(const ACHAR*& name) const {
  name = mName.c_str();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLayout::getLayoutName(ACHAR*& name) const {
  name = static_cast<ACHAR*>(std::malloc((mName.size() + 1) * sizeof(ACHAR)));
  if (!name) return Acad::eOutOfMemory;
  std::wmemcpy(name, mName.c_str(), mName.size() + 1);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLayout::setLayoutName(const ACHAR* name) {
  if (!name || !*name) return Acad::eInvalidInput;
  KELHOST_SET(mName, name);
}

Acad::ErrorStatus AcDbLayout::setBlockTableRecordId(AcDbObjectId id) {
  if (!kelhost::db::PeekAs<AcDbBlockTableRecord>(id)) return Acad::eInvalidInput;
  KELHOST_SET(mBlock, id);
}

void AcDbLayout::setTabOrder(int order) {
  if (writable() && order >= 0 && order <= 0x7fff) mTabOrder = static_cast<short>(order);
}

void AcDbLayout::getLimits(AcGePoint2d& min, AcGePoint2d& max) const {
  min = mLimMin;
  max = mLimMax;
}

void AcDbLayout::getExtents(AcGePoint3d& min, AcGePoint3d& max) const {
  min = mExtMin;
  max = mExtMax;
}

void AcDbLayout::dxfFields(kelhost::dxf::GroupFiler& f) {
  AcDbPlotSettings::dxfFields(f);
  f.subclass(L"AcDbLayout");
  f.text(1, mName, L"", Presence::kRequired);
  if (f.reading() && mName.empty()) f.fail(L"a layout without a name (group 1)");
  f.int16(70, mFlags, 1, Presence::kAlways);
  f.int16(71, mTabOrder, 1, Presence::kAlways);
  f.point2d(10, mLimMin, Presence::kAlways);
  f.point2d(11, mLimMax, Presence::kAlways);
  f.point(12, mInsertionBase, Presence::kAlways);
  f.point(14, mExtMin, Presence::kAlways);
  f.point(15, mExtMax, Presence::kAlways);
  f.real(146, mElevation, 0.0, Presence::kAlways);
  f.point(13, mUcsOrigin, Presence::kAlways);
  f.vector(16, mUcsX, AcGeVector3d::kXAxis, Presence::kAlways);
  f.vector(17, mUcsY, AcGeVector3d::kYAxis, Presence::kAlways);
  f.int16(76, mUcsType, 1, Presence::kAlways);
  if (mUcsType < 0 || mUcsType > 6) f.fail(L"bad orthographic UCS type in group 76");
  f.id(330, mBlock, Presence::kAlways);
  f.id(331, mViewport, Presence::kUnlessDefault);
  f.id(345, mUcs, Presence::kUnlessDefault);
  f.id(346, mBaseUcs, Presence::kUnlessDefault);
}
