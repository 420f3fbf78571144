// AcDbMInsertBlock: a block reference drawn as a rectangular array of
// images. Each image is the reference moved by its element offset, so the
// array's boxes are the reference's boxes moved to the array's corners.
#include <cmath>

#include "arx/dbblkref.h"
#include "db/rx_define.h"
#include "db/setters.h"
#include "dxf/group_filer.h"

using kelhost::dxf::Presence;

KELHOST_RX_DEFINE(AcDbMInsertBlock, AcDbBlockReference, L"INSERT")

namespace {
// A count a DXF group (16 bits, signed) can carry.
constexpr Adesk::UInt16 kMaxCount = 32767;

// The reference's own X and Y axes in WCS (rotation in the plane of the
// normal): the directions of the columns and of the rows.
AcGeVector3d Axis(const AcDbBlockReference& ref, const AcGeVector3d& which) {
  return AcGeMatrix3d::planeToWorld(ref.normal()) *
         (AcGeMatrix3d::rotation(ref.rotation(), AcGeVector3d::kZAxis) * which);
}
}  // namespace

Acad::ErrorStatus AcDbMInsertBlock::setColumns(Adesk::UInt16 columns) {
  if (columns > kMaxCount) return Acad::eOutOfRange;
  KELHOST_SET(mColumns, columns);
}
Acad::ErrorStatus AcDbMInsertBlock::setRows(Adesk::UInt16 rows) {
  if (rows > kMaxCount) return Acad::eOutOfRange;
  KELHOST_SET(mRows, rows);
}
Acad::ErrorStatus AcDbMInsertBlock::setColumnSpacing(double spacing) { KELHOST_SET(mColumnSpacing, spacing); }
Acad::ErrorStatus AcDbMInsertBlock::setRowSpacing(double spacing) { KELHOST_SET(mRowSpacing, spacing); }

AcGeVector3d AcDbMInsertBlock::elementOffset(int column, int row) const {
  return Axis(*this, AcGeVector3d::kXAxis) * (column * mColumnSpacing) +
         Axis(*this, AcGeVector3d::kYAxis) * (row * mRowSpacing);
}

namespace {
// The offsets of the array's corner images: every other image lies
// between them, so their boxes bound the array.
std::vector<AcGeVector3d> CornerOffsets(const AcDbMInsertBlock& array) {
  const int lastColumn = array.columns() - 1, lastRow = array.rows() - 1;
  return {array.elementOffset(0, 0), array.elementOffset(lastColumn, 0), array.elementOffset(0, lastRow),
          array.elementOffset(lastColumn, lastRow)};
}
}  // namespace

Acad::ErrorStatus AcDbMInsertBlock::getGeomExtents(AcDbExtents& extents) const {
  if (mColumns == 0 || mRows == 0) return Acad::eInvalidExtents;
  AcDbExtents image;
  Acad::ErrorStatus es = AcDbBlockReference::getGeomExtents(image);
  if (es != Acad::eOk) return es;
  AcDbExtents box;
  for (const AcGeVector3d& offset : CornerOffsets(*this))
    box.addExt(AcDbExtents(image.minPoint() + offset, image.maxPoint() + offset));
  extents = box;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMInsertBlock::geomExtentsBestFit(AcDbExtents& extents, const AcGeMatrix3d& parent) const {
  if (mColumns == 0 || mRows == 0) return Acad::eInvalidExtents;
  AcDbExtents box;
  for (const AcGeVector3d& offset : CornerOffsets(*this)) {
    AcDbExtents image;
    Acad::ErrorStatus es =
        AcDbBlockReference::geomExtentsBestFit(image, parent * AcGeMatrix3d::translation(offset));
    if (es != Acad::eOk) return es;
    box.addExt(image);
  }
  extents = box;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMInsertBlock::transformBy(const AcGeMatrix3d& m) {
  if (!writable()) return Acad::eNotOpenForWrite;
  const AcGeVector3d columnStep = m * Axis(*this, AcGeVector3d::kXAxis);
  const AcGeVector3d rowStep = m * Axis(*this, AcGeVector3d::kYAxis);
  Acad::ErrorStatus es = AcDbBlockReference::transformBy(m);
  if (es != Acad::eOk) return es;
  // The steps now lie along the new axes, perhaps turned round by a
  // mirroring: the spacings take their length and their sign.
  mColumnSpacing *= columnStep.dotProduct(Axis(*this, AcGeVector3d::kXAxis));
  mRowSpacing *= rowStep.dotProduct(Axis(*this, AcGeVector3d::kYAxis));
  return Acad::eOk;
}

void AcDbMInsertBlock::dxfFields(kelhost::dxf::GroupFiler& f) { referenceFields(f, L"AcDbMInsertBlock"); }

void AcDbMInsertBlock::arrayFields(kelhost::dxf::GroupFiler& f) {
  short columns = static_cast<short>(mColumns), rows = static_cast<short>(mRows);
  f.int16(70, columns, 1, Presence::kAlways);
  f.int16(71, rows, 1, Presence::kAlways);
  f.real(44, mColumnSpacing, 0.0, Presence::kAlways);
  f.real(45, mRowSpacing, 0.0, Presence::kAlways);
  if (columns < 0 || rows < 0) return f.fail(L"a column or row count (70, 71) is negative");
  mColumns = static_cast<Adesk::UInt16>(columns);
  mRows = static_cast<Adesk::UInt16>(rows);
}
