// A dimension's own style values: kept in its "ACAD" xdata as the DSTYLE
// list, read back over its style, given whole from a style record, and
// drawn into its block (arrowhead blocks made on demand, the dimension
// line run on past ticks). Redrawing keeps to the block the dimension owns.
#include <cmath>
#include <cstdlib>
#include <map>

#include "../database/database_fixture.h"
#include "entity_test_helpers.h"
#include "db/database_state.h"
#include "db/dimension_style_data.h"

namespace {
using entity_tests::AddToModelSpace;

std::map<std::wstring, int> Census(AcDbObjectId blockId) {
  std::map<std::wstring, int> count;
  auto* block = kelhost::db::PeekAs<AcDbBlockTableRecord>(blockId);
  for (const AcDbObjectId& id : block ? block->entityIds() : std::vector<AcDbObjectId>())
    if (!id.isErased()) ++count[kelhost::db::Peek(id)->isA()->dxfName()];
  return count;
}

// The block's first live entity of class T.
template <class T>
T* First(AcDbObjectId blockId) {
  auto* block = kelhost::db::PeekAs<AcDbBlockTableRecord>(blockId);
  for (const AcDbObjectId& id : block ? block->entityIds() : std::vector<AcDbObjectId>())
    if (auto* e = id.isErased() ? nullptr : kelhost::db::PeekAs<T>(id)) return e;
  return nullptr;
}

class DimensionOverrides : public DrawingTest {
 protected:
  AcDbObjectId NewDim() {
    return AddToModelSpace(db.get(), new AcDbRotatedDimension(0.0, AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 0),
                                                              AcGePoint3d(0, 5, 0)));
  }
  std::wstring Xdata() { return eval(L"(cdr (assoc -3 (entget (entlast) '(\"ACAD\"))))"); }
};

TEST_F(DimensionOverrides, KeptAsTheDstyleListAndReadOverTheStyle) {
  const AcDbObjectId id = NewDim();
  AcDbDimension* d = nullptr;
  ASSERT_EQ(acdbOpenObject(d, id, AcDb::kForWrite), Acad::eOk);
  const double styleGap = d->dimgap();
  EXPECT_EQ(d->setDimdec(3), Acad::eOk);
  EXPECT_EQ(d->setDimrnd(0.25), Acad::eOk);
  EXPECT_EQ(d->setDimdec(1), Acad::eOk) << "replaces its value in place";
  EXPECT_EQ(d->setDimsah(true), Acad::eOk);
  EXPECT_EQ(d->setDimdec(9), Acad::eInvalidInput);
  EXPECT_EQ(d->setDimasz(-1), Acad::eInvalidInput);
  EXPECT_EQ(d->setDimgap(-0.5), Acad::eOk) << "a framed text";
  EXPECT_EQ(d->setDimblk1(L"_oblique"), Acad::eOk);
  EXPECT_EQ(d->setDimblk2(L"NoSuchArrow"), Acad::eKeyNotFound);
  EXPECT_EQ(d->dimdec(), 1);
  EXPECT_EQ(d->dimrnd(), 0.25);
  EXPECT_EQ(d->dimgap(), -0.5);
  EXPECT_NE(styleGap, -0.5);
  EXPECT_TRUE(d->dimsah());
  EXPECT_TRUE(d->dimblk2().isNull()) << "the style's: the closed filled arrowhead";
  const AcDbObjectId oblique = d->dimblk1();
  d->close();
  const std::wstring handle = eval(L"(cdr (assoc 5 (entget (tblobjname \"BLOCK\" \"_Oblique\"))))");
  EXPECT_EQ(Xdata(), L"((\"ACAD\" (1000 . \"DSTYLE\") (1002 . \"{\") (1070 . 271) (1070 . 1) (1070 . 45) (1040 . 0.25)"
                     L" (1070 . 173) (1070 . 1) (1070 . 147) (1040 . -0.5) (1070 . 343) (1005 . " +
                         handle + L") (1002 . \"}\")))");
  // Other data of the application stays around the list.
  ASSERT_NE(eval(L"(entmod (append (entget (entlast)) '((-3 (\"ACAD\" (1000 . \"DSTYLE\") (1002 . \"{\")"
                 L" (1070 . 271) (1070 . 4) (1002 . \"}\") (1000 . \"after\"))))))"),
            L"nil");
  ASSERT_EQ(acdbOpenObject(d, id, AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(d->dimdec(), 4);
  EXPECT_EQ(d->dimrnd(), 0.0) << "entmod gave the list anew";
  EXPECT_EQ(d->setDimexe(3.0), Acad::eOk);
  EXPECT_TRUE(d->dimblk1().isNull());
  d->close();
  EXPECT_EQ(Xdata(), L"((\"ACAD\" (1000 . \"DSTYLE\") (1002 . \"{\") (1070 . 271) (1070 . 4) (1070 . 44) (1040 . 3.0)"
                     L" (1002 . \"}\") (1000 . \"after\")))");
  EXPECT_FALSE(oblique.isNull());
}

TEST_F(DimensionOverrides, StyleDataBecomesTheDimensionsOwn) {
  const AcDbObjectId id = NewDim();
  AcDbDimStyleTable* table = nullptr;
  AcDbObjectId fine;
  ASSERT_EQ(acdbOpenObject(table, db->dimStyleTableId(), AcDb::kForWrite), Acad::eOk);
  auto* style = new AcDbDimStyleTableRecord;
  style->setName(L"Fine");
  AcDbDimStyleTableRecord* current = nullptr;
  ASSERT_EQ(acdbOpenObject(current, db->dimstyle(), AcDb::kForRead), Acad::eOk);
  kelhost::db::CopyDimStyleData(*current, *style);
  current->close();
  style->setDimdec(4);
  style->setDimtxt(7.0);
  ASSERT_EQ(table->add(fine, style), Acad::eOk);
  style->close();
  table->close();

  AcDbDimension* d = nullptr;
  ASSERT_EQ(acdbOpenObject(d, id, AcDb::kForWrite), Acad::eOk);
  d->setDimasz(9.0);
  ASSERT_EQ(d->setDimstyleData(fine), Acad::eOk);
  EXPECT_EQ(d->dimensionStyle(), db->dimstyle()) << "it keeps its style";
  EXPECT_EQ(d->dimdec(), 4);
  EXPECT_EQ(d->dimtxt(), 7.0);
  EXPECT_NE(d->dimasz(), 9.0) << "its other own values go";
  AcDbDimStyleTableRecord* data = nullptr;
  ASSERT_EQ(d->getDimstyleData(data), Acad::eOk);
  EXPECT_EQ(data->dimdec(), 4);
  EXPECT_FALSE(data->isDatabaseResident());
  delete data;
  d->close();
  EXPECT_EQ(Xdata(), L"((\"ACAD\" (1000 . \"DSTYLE\") (1002 . \"{\") (1070 . 140) (1040 . 7.0) (1070 . 271)"
                     L" (1070 . 4) (1002 . \"}\")))");
  ASSERT_EQ(acdbOpenObject(d, id, AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(d->setDimstyleData(AcDbObjectId::kNull), Acad::eOk);
  d->close();
  EXPECT_EQ(Xdata(), L"nil");
  EXPECT_EQ(First<AcDbMText>(kelhost::db::PeekAs<AcDbDimension>(id)->dimBlockId())->textHeight(), 2.5);
}

TEST_F(DimensionOverrides, ArrowheadsAndTicksAreDrawnFromTheirBlocks) {
  const AcDbObjectId id = NewDim();
  AcDbDimension* d = nullptr;
  ASSERT_EQ(acdbOpenObject(d, id, AcDb::kForWrite), Acad::eOk);
  ASSERT_EQ(d->setDimblk(L"_ARCHTICK"), Acad::eOk);
  d->setDimasz(2.0);
  d->setDimdle(1.5);
  d->close();
  const AcDbObjectId tick = kelhost::db::PeekAs<AcDbDimension>(id)->dimblk();
  auto* tickBlock = kelhost::db::PeekAs<AcDbBlockTableRecord>(tick);
  ASSERT_TRUE(tickBlock);
  EXPECT_EQ(std::wstring(tickBlock->getName()), L"_ArchTick");
  EXPECT_EQ(Census(tick), (std::map<std::wstring, int>{{L"LWPOLYLINE", 1}}));
  const AcDbObjectId block = kelhost::db::PeekAs<AcDbDimension>(id)->dimBlockId();
  EXPECT_EQ(Census(block),
            (std::map<std::wstring, int>{{L"LINE", 3}, {L"INSERT", 2}, {L"MTEXT", 1}, {L"POINT", 3}}));
  auto* head = First<AcDbBlockReference>(block);
  EXPECT_EQ(head->blockTableRecord(), tick);
  EXPECT_NEAR(head->scaleFactors().x, 2.0, 1e-12);
  // The dimension line runs on by DIMDLE past the ticks.
  double lo = 1e9, hi = -1e9;
  auto* record = kelhost::db::PeekAs<AcDbBlockTableRecord>(block);
  for (const AcDbObjectId& e : record->entityIds())
    if (auto* line = e.isErased() ? nullptr : kelhost::db::PeekAs<AcDbLine>(e))
      if (std::fabs(line->startPoint().y - 5) < 1e-9 && std::fabs(line->endPoint().y - 5) < 1e-9) {
        lo = std::min(line->startPoint().x, line->endPoint().x);
        hi = std::max(line->startPoint().x, line->endPoint().x);
      }
  EXPECT_NEAR(lo, -1.5, 1e-9);
  EXPECT_NEAR(hi, 11.5, 1e-9);

  // A second dimension asks again: the same block, not another.
  const AcDbObjectId other = NewDim();
  ASSERT_EQ(acdbOpenObject(d, other, AcDb::kForWrite), Acad::eOk);
  ASSERT_EQ(d->setDimblk(L"archtick"), Acad::eOk);
  EXPECT_EQ(d->dimblk(), tick);
  d->close();
  // Each dimension draws over its own block and no other.
  EXPECT_NE(kelhost::db::PeekAs<AcDbDimension>(other)->dimBlockId(), block);
  ASSERT_EQ(acdbOpenObject(d, id, AcDb::kForWrite), Acad::eOk);
  d->setDimblk(L".");
  d->close();
  EXPECT_EQ(kelhost::db::PeekAs<AcDbDimension>(id)->dimBlockId(), block);
  EXPECT_EQ(Census(block), (std::map<std::wstring, int>{{L"LINE", 3}, {L"LWPOLYLINE", 2}, {L"MTEXT", 1}, {L"POINT", 3}}));
}

}  // namespace

// Radial and diametric dimensions are modelled: made from lists, measured,
// drawn (with "R" and the diameter sign before the number), and moved.
TEST_F(DimensionOverrides, RadialAndDiametricKinds) {
  const std::wstring common = L"(0 . \"DIMENSION\") (1 . \"\") (70 . ";
  ASSERT_NE(eval(L"(entmake '(" + common + L"4) (10 1.0 1.0 0.0) (15 4.0 5.0 0.0) (40 . 2.0)))"), L"nil");
  auto* radial = kelhost::db::PeekAs<AcDbRadialDimension>(entity_tests::LastId());
  ASSERT_TRUE(radial);
  double value = 0;
  radial->measurement(value);
  EXPECT_EQ(value, 5.0);
  EXPECT_EQ(radial->leaderLength(), 2.0);
  const AcDbObjectId radialBlock = radial->dimBlockId();
  ACHAR* radius = First<AcDbMText>(radialBlock)->contents();
  EXPECT_STREQ(radius, L"R5");
  std::free(radius);
  EXPECT_EQ(eval(L"(cdr (assoc 70 (entget (entlast))))"), L"36");
  EXPECT_EQ(eval(L"(cdr (assoc 15 (entget (entlast))))"), L"(4.0 5.0 0.0)");

  ASSERT_NE(eval(L"(entmake '(" + common + L"3) (10 -3.0 0.0 0.0) (15 3.0 0.0 0.0) (40 . 0.0)))"), L"nil");
  const AcDbObjectId id = entity_tests::LastId();
  AcDbDiametricDimension* diametric = nullptr;
  ASSERT_EQ(acdbOpenObject(diametric, id, AcDb::kForWrite), Acad::eOk);
  ASSERT_EQ(diametric->transformBy(AcGeMatrix3d::scaling(2.0)), Acad::eOk);
  diametric->close();
  diametric = kelhost::db::PeekAs<AcDbDiametricDimension>(id);
  diametric->measurement(value);
  EXPECT_EQ(value, 12.0);
  EXPECT_EQ(Census(diametric->dimBlockId()), (std::map<std::wstring, int>{{L"LINE", 1}, {L"LWPOLYLINE", 2},
                                                                         {L"MTEXT", 1}, {L"POINT", 2}}));
  ACHAR* shown = First<AcDbMText>(diametric->dimBlockId())->contents();
  EXPECT_STREQ(shown, L"%%c12");
  std::free(shown);
}

// Ordinate dimensions: the axis in group 70's bit 64, the distance from
// the origin along it, the leader and the text in the block.
TEST_F(DimensionOverrides, OrdinateKind) {
  ASSERT_NE(eval(L"(entmake '((0 . \"DIMENSION\") (1 . \"\") (70 . 102) (10 1.0 1.0 0.0) (13 4.0 7.0 0.0)"
                 L" (14 4.0 12.0 0.0)))"),
            L"nil");
  const AcDbObjectId id = entity_tests::LastId();
  AcDbOrdinateDimension* ordinate = nullptr;
  ASSERT_EQ(acdbOpenObject(ordinate, id, AcDb::kForWrite), Acad::eOk);
  EXPECT_TRUE(ordinate->isUsingXAxis());
  double value = 0;
  ordinate->measurement(value);
  EXPECT_EQ(value, 3.0);
  EXPECT_EQ(Census(ordinate->dimBlockId()),
            (std::map<std::wstring, int>{{L"LINE", 1}, {L"MTEXT", 1}, {L"POINT", 3}}));
  ASSERT_EQ(ordinate->useYAxis(), Acad::eOk);
  ordinate->close();
  ordinate = kelhost::db::PeekAs<AcDbOrdinateDimension>(id);
  ordinate->measurement(value);
  EXPECT_EQ(value, 6.0);
  ACHAR* shown = First<AcDbMText>(ordinate->dimBlockId())->contents();
  EXPECT_STREQ(shown, L"6");
  std::free(shown);
  EXPECT_EQ(eval(L"(cdr (assoc 70 (entget (entlast))))"), L"38");
}
