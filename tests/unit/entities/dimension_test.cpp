// Aligned and rotated dimensions: what they measure, the text their style
// writes, the *D block drawn as they close (through the API, entmake and
// entmod), the kinds the host does not model, transformations, extents
// and explosion.
#include <cmath>
#include <cstdlib>
#include <map>
#include <memory>

#include "../database/database_fixture.h"
#include "entity_test_helpers.h"
#include "db/database_state.h"

namespace {
using entity_tests::kPi;
using entity_tests::Owned;
using entity_tests::LastId;
using entity_tests::AddToModelSpace;
// The live entities of a block by DXF name, and the block's name.
std::map<std::wstring, int> Census(AcDbObjectId blockId, std::wstring* name = nullptr) {
  std::map<std::wstring, int> count;
  auto* block = kelhost::db::PeekAs<AcDbBlockTableRecord>(blockId);
  if (!block) return count;
  if (name) *name = block->getName();
  for (const AcDbObjectId& id : block->entityIds())
    if (!id.isErased()) ++count[kelhost::db::Peek(id)->isA()->dxfName()];
  return count;
}

// How many objects the drawing holds.
size_t ObjectCount(AcDbDatabase* db) { return db->state().stubs.size(); }

// The contents of the block's (first live) MTEXT.
std::wstring BlockText(AcDbObjectId blockId) {
  auto* block = kelhost::db::PeekAs<AcDbBlockTableRecord>(blockId);
  for (const AcDbObjectId& id : block ? block->entityIds() : std::vector<AcDbObjectId>())
    if (auto* m = id.isErased() ? nullptr : kelhost::db::PeekAs<AcDbMText>(id)) return Owned(m->contents());
  return L"<none>";
}

// A style of its own, made current, with the given settings.
AcDbObjectId NewStyle(AcDbDatabase* db, const wchar_t* name, void (*set)(AcDbDimStyleTableRecord*)) {
  AcDbDimStyleTable* table = nullptr;
  AcDbObjectId id;
  if (acdbOpenObject(table, db->dimStyleTableId(), AcDb::kForWrite) != Acad::eOk) return id;
  auto* style = new AcDbDimStyleTableRecord;
  style->setName(name);
  set(style);
  if (table->add(id, style) == Acad::eOk) style->close();
  table->close();
  return id;
}
}  // namespace

class Dimensions : public DrawingTest {};

TEST_F(Dimensions, MeasureAlongTheirDirection) {
  const AcGePoint3d a(0, 0, 0), b(3, 4, 0);
  double v = 0;
  AcDbAlignedDimension aligned(a, b, AcGePoint3d(-4, 3, 0));
  ASSERT_EQ(aligned.measurement(v), Acad::eOk);
  EXPECT_NEAR(v, 5.0, 1e-12);
  AcDbRotatedDimension horizontal(0.0, a, b, AcGePoint3d(0, 8, 0));
  horizontal.measurement(v);
  EXPECT_NEAR(v, 3.0, 1e-12);
  AcDbRotatedDimension vertical(kPi / 2, b, a, AcGePoint3d(9, 0, 0));
  vertical.measurement(v);
  EXPECT_NEAR(v, 4.0, 1e-12) << "the order of the points does not matter";
  AcDbRotatedDimension slanted(std::atan2(4.0, 3.0), a, b, AcGePoint3d(0, 8, 0));
  slanted.measurement(v);
  EXPECT_NEAR(v, 5.0, 1e-12);
  EXPECT_EQ(AcDbAlignedDimension::cast(&horizontal), nullptr) << "rotated is not a kind of aligned";
  EXPECT_STREQ(horizontal.isA()->dxfName(), L"DIMENSION");
}

TEST_F(Dimensions, TextFollowsTheStyleAndTheUsersText) {
  const AcDbObjectId style = NewStyle(db.get(), L"KEL", [](AcDbDimStyleTableRecord* s) {
    s->setDimdec(3);
    s->setInteger(78, 0);    // DIMZIN: keep zeros
    s->setInteger(278, 44);  // DIMDSEP: comma
    s->setReal(144, 2.0);    // DIMLFAC
    s->setReal(45, 0.25);    // DIMRND
  });
  AcDbRotatedDimension dim(0.0, AcGePoint3d(0, 0, 0), AcGePoint3d(1.6, 0, 0), AcGePoint3d(0, 1, 0), nullptr, style);
  ACHAR* text = nullptr;
  // 1.6 x 2 = 3.2, rounded to a quarter: 3.25.
  ASSERT_EQ(dim.formatMeasurement(text, 1.6), Acad::eOk);
  EXPECT_EQ(Owned(text), L"3,250");
  dim.setDimensionText(L"L=<> (typ.)");
  dim.formatMeasurement(text, 1.6);
  EXPECT_EQ(Owned(text), L"L=3,250 (typ.)");
  dim.setDimensionText(L"text of its own");
  dim.formatMeasurement(text, 1.6);
  EXPECT_EQ(Owned(text), L"text of its own");
  dim.setDimensionText(L" ");
  dim.formatMeasurement(text, 1.6);
  EXPECT_EQ(Owned(text), L"") << "a single space hides the text";

  // The new drawing's ISO-25: 2 decimals, trailing zeros dropped, a comma.
  AcDbAlignedDimension iso(AcGePoint3d(0, 0, 0), AcGePoint3d(12.5, 0, 0), AcGePoint3d(0, 1, 0));
  iso.formatMeasurement(text, 12.5);
  EXPECT_EQ(Owned(text), L"12,5");
  iso.formatMeasurement(text, 0.004);
  EXPECT_EQ(Owned(text), L"0");
  // DIMPOST around the number (a style made from a list: imperial values,
  // 4 decimals, zeros kept).
  ASSERT_NE(eval(L"(entmake '((0 . \"DIMSTYLE\") (100 . \"AcDbSymbolTableRecord\") (100 . \"AcDbDimStyleTableRecord\")"
                 L" (2 . \"POST\") (70 . 0) (3 . \"Ø<> mm\")))"),
            L"nil");
  AcDbObjectId post;
  ASSERT_EQ(kelhost::db::PeekAs<AcDbDimStyleTable>(db->dimStyleTableId())->getAt(L"POST", post), Acad::eOk);
  iso.setDimensionStyle(post);
  iso.formatMeasurement(text, 12.5);
  EXPECT_EQ(Owned(text), L"Ø12.5000 mm");
  EXPECT_EQ(iso.formatMeasurement(text, std::nan("")), Acad::eInvalidInput);
}

TEST_F(Dimensions, ClosingANewDimensionDrawsItsBlock) {
  auto* dim = new AcDbRotatedDimension(0.0, AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 0), AcGePoint3d(3, 5, 0));
  const AcDbObjectId id = AddToModelSpace(db.get(), dim);
  AcDbRotatedDimension* d = nullptr;
  ASSERT_EQ(acdbOpenObject(d, id, AcDb::kForRead), Acad::eOk);
  std::wstring blockName;
  const auto parts = Census(d->dimBlockId(), &blockName);
  EXPECT_EQ(blockName, L"*D1");
  auto* block = kelhost::db::PeekAs<AcDbBlockTableRecord>(d->dimBlockId());
  ASSERT_NE(block, nullptr);
  EXPECT_TRUE(block->isAnonymous());
  // Two extension lines and the dimension line, two arrowheads, the text,
  // three definition points.
  EXPECT_EQ(parts, (std::map<std::wstring, int>{{L"LINE", 3}, {L"LWPOLYLINE", 2}, {L"MTEXT", 1}, {L"POINT", 3}}));
  EXPECT_EQ(BlockText(d->dimBlockId()), L"10");
  // ISO-25 puts the text above the line: a gap and half the text height.
  EXPECT_NEAR(d->textPosition().x, 5.0, 1e-12);
  EXPECT_NEAR(d->textPosition().y, 5.0 + 0.625 + 1.25, 1e-12);
  EXPECT_EQ(d->dimensionStyle(), db->dimstyle());
  AcDbExtents ext;
  ASSERT_EQ(d->getGeomExtents(ext), Acad::eOk);
  EXPECT_NEAR(ext.minPoint().y, 0.0, 1e-9) << "the definition points are in the block";
  EXPECT_NEAR(ext.maxPoint().x, 10.0, 1e-9);
  EXPECT_GT(ext.maxPoint().y, 6.25);
  d->close();
  // The list: its block, its kind with flag 32, the measurement.
  EXPECT_EQ(eval(L"(cdr (assoc 2 (entget (entlast))))"), L"\"*D1\"");
  EXPECT_EQ(eval(L"(cdr (assoc 70 (entget (entlast))))"), L"32");
  EXPECT_EQ(eval(L"(cdr (assoc 42 (entget (entlast))))"), L"10.0");
  EXPECT_NE(eval(L"(tblsearch \"LAYER\" \"Defpoints\")"), L"nil");

  // Changed, it is drawn again in the same block.
  ASSERT_EQ(acdbOpenObject(d, id, AcDb::kForWrite), Acad::eOk);
  d->setXLine2Point(AcGePoint3d(20, 0, 0));
  d->setDimensionText(L"<> long");
  d->close();
  ASSERT_EQ(acdbOpenObject(d, id, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(Census(d->dimBlockId(), &blockName).size(), 4u);
  EXPECT_EQ(blockName, L"*D1");
  EXPECT_EQ(BlockText(d->dimBlockId()), L"20 long");
  EXPECT_NEAR(d->textPosition().x, 10.0, 1e-12);
  d->close();
}

TEST_F(Dimensions, EntmakePicksTheKindAndRefusesTheOthers) {
  const std::wstring common =
      L"(0 . \"DIMENSION\") (100 . \"AcDbEntity\") (100 . \"AcDbDimension\") (10 0.0 5.0 0.0) (11 5.0 6.0 0.0) (1 . \"\")";
  ASSERT_NE(eval(L"(entmake '(" + common +
                 L" (70 . 1) (100 . \"AcDbAlignedDimension\") (13 0.0 0.0 0.0) (14 3.0 4.0 0.0)))"),
            L"nil");
  AcDbAlignedDimension* aligned = nullptr;
  ASSERT_EQ(acdbOpenObject(aligned, LastId(), AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(BlockText(aligned->dimBlockId()), L"5");
  aligned->close();
  EXPECT_EQ(eval(L"(cdr (assoc 70 (entget (entlast))))"), L"33");

  // The brief layout: 50 and 52 after the rotated marker are taken too.
  ASSERT_NE(eval(L"(entmake '(" + common +
                 L" (70 . 0) (100 . \"AcDbAlignedDimension\") (13 0.0 0.0 0.0) (14 3.0 4.0 0.0)"
                 L" (100 . \"AcDbRotatedDimension\") (50 . 1.5707963267948966)))"),
            L"nil");
  AcDbRotatedDimension* rotated = nullptr;
  ASSERT_EQ(acdbOpenObject(rotated, LastId(), AcDb::kForRead), Acad::eOk);
  EXPECT_NEAR(rotated->rotation(), kPi / 2, 1e-12);
  EXPECT_EQ(BlockText(rotated->dimBlockId()), L"4");
  const AcDbObjectId firstBlock = rotated->dimBlockId();
  rotated->close();

  // A list naming an existing block uses it, drawing nothing.
  const size_t before = ObjectCount(db.get());
  ASSERT_NE(eval(L"(entmake '(" + common + L" (2 . \"*D2\") (70 . 32) (13 0.0 0.0 0.0) (14 3.0 4.0 0.0)))"), L"nil");
  EXPECT_EQ(ObjectCount(db.get()), before + 1);
  ASSERT_EQ(acdbOpenObject(rotated, LastId(), AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(rotated->dimBlockId(), firstBlock);
  rotated->close();

  // Kinds the host cannot draw, and bad lists, make nothing.
  for (const wchar_t* bad : {L" (70 . 2) (13 0.0 0.0 0.0) (14 3.0 4.0 0.0)", L" (70 . 37) (13 1.0 1.0 0.0) (14 2.0 2.0 0.0)",
                             L" (70 . 0) (13 0.0 0.0 0.0)", L" (2 . \"*D99\") (70 . 0) (13 0.0 0.0 0.0) (14 1.0 0.0 0.0)",
                             L" (3 . \"NO_SUCH_STYLE\") (13 0.0 0.0 0.0) (14 1.0 0.0 0.0)"}) {
    EXPECT_EQ(eval(L"(entmake '(" + common + bad + L"))"), L"nil") << bad;
  }
  EXPECT_EQ(ObjectCount(db.get()), before + 1);
}

TEST_F(Dimensions, EntmodRedrawsTheBlockItOwnsButNotASharedOne) {
  eval(L"(entmake '((0 . \"DIMENSION\") (10 0.0 5.0 0.0) (70 . 0) (13 0.0 0.0 0.0) (14 10.0 0.0 0.0)))");
  EXPECT_EQ(eval(L"(cdr (assoc 2 (entget (entlast))))"), L"\"*D1\"");
  eval(L"(setq e (entget (entlast)) e (subst '(14 7.0 0.0 0.0) (assoc 14 e) e))");
  ASSERT_NE(eval(L"(entmod e)"), L"nil");
  EXPECT_EQ(eval(L"(cdr (assoc 2 (entget (entlast))))"), L"\"*D1\"");
  EXPECT_EQ(eval(L"(cdr (assoc 42 (entget (entlast))))"), L"7.0");
  AcDbRotatedDimension* d = nullptr;
  ASSERT_EQ(acdbOpenObject(d, LastId(), AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(BlockText(d->dimBlockId()), L"7");
  d->close();

  // A copy drawing with the same block: changing it makes a block of its own.
  eval(L"(entmake (entget (entlast)))");
  EXPECT_EQ(eval(L"(cdr (assoc 2 (entget (entlast))))"), L"\"*D1\"");
  eval(L"(setq e (entget (entlast)) e (subst '(14 3.0 0.0 0.0) (assoc 14 e) e))");
  ASSERT_NE(eval(L"(entmod e)"), L"nil");
  EXPECT_EQ(eval(L"(cdr (assoc 2 (entget (entlast))))"), L"\"*D2\"");
  ASSERT_EQ(acdbOpenObject(d, LastId(), AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(BlockText(d->dimBlockId()), L"3");
  d->close();
  eval(L"(setq first (entnext))");
  EXPECT_EQ(eval(L"(cdr (assoc 2 (entget first)))"), L"\"*D1\"");
  AcDbObjectId d1;
  auto* table = kelhost::db::PeekAs<AcDbBlockTable>(db->blockTableId());
  ASSERT_EQ(table->getAt(L"*D1", d1), Acad::eOk);
  EXPECT_EQ(BlockText(d1), L"7") << "the first dimension's picture is untouched";
}

TEST_F(Dimensions, TransformMovesThePointsAndRedrawsOnClose) {
  auto* dim = new AcDbAlignedDimension(AcGePoint3d(0, 0, 0), AcGePoint3d(4, 0, 0), AcGePoint3d(0, 2, 0));
  const AcDbObjectId id = AddToModelSpace(db.get(), dim);
  AcDbAlignedDimension* d = nullptr;
  ASSERT_EQ(acdbOpenObject(d, id, AcDb::kForWrite), Acad::eOk);
  const AcGeMatrix3d m = AcGeMatrix3d::translation(AcGeVector3d(10, 0, 0)) *
                         AcGeMatrix3d::rotation(kPi / 2, AcGeVector3d::kZAxis) * AcGeMatrix3d::scaling(2.0);
  ASSERT_EQ(d->transformBy(m), Acad::eOk);
  EXPECT_NEAR(d->xLine2Point().x, 10, 1e-12);
  EXPECT_NEAR(d->xLine2Point().y, 8, 1e-12);
  EXPECT_NEAR(d->dimLinePoint().x, 6, 1e-12);
  // Until it closes, the old picture is placed by the transformation.
  AcDbVoidPtrArray parts;
  ASSERT_EQ(d->explode(parts), Acad::eOk);
  ASSERT_EQ(parts.length(), 9);
  AcDbExtents placed;
  for (void* p : parts) {
    AcDbExtents e;
    if (static_cast<AcDbEntity*>(p)->getGeomExtents(e) == Acad::eOk) placed.addExt(e);
    delete static_cast<AcDbEntity*>(p);
  }
  EXPECT_NEAR(placed.minPoint().y, 0.0, 1e-9);
  EXPECT_NEAR(placed.maxPoint().y, 8.0, 1e-9);
  EXPECT_NEAR(placed.maxPoint().x, 10.0, 1e-9);
  AcGeMatrix3d squash;
  squash.entry[0][0] = 3;
  EXPECT_EQ(d->transformBy(squash), Acad::eCannotScaleNonUniformly);
  d->close();
  ASSERT_EQ(acdbOpenObject(d, id, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(BlockText(d->dimBlockId()), L"8");
  EXPECT_TRUE(d->dimBlockTransform().isIdentity());
  d->close();
}

TEST_F(Dimensions, ObliqueExtensionLinesAndSuppressedOnes) {
  const AcDbObjectId style = NewStyle(db.get(), L"NO_FIRST", [](AcDbDimStyleTableRecord* s) {
    s->setInteger(75, 1);  // DIMSE1
    s->setDimexo(0.0);
    s->setDimexe(0.0);
  });
  auto* dim = new AcDbRotatedDimension(0.0, AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 0), AcGePoint3d(0, 4, 0),
                                       nullptr, style);
  dim->setOblique(kPi / 4);
  const AcDbObjectId id = AddToModelSpace(db.get(), dim);
  AcDbRotatedDimension* d = nullptr;
  ASSERT_EQ(acdbOpenObject(d, id, AcDb::kForRead), Acad::eOk);
  auto* block = kelhost::db::PeekAs<AcDbBlockTableRecord>(d->dimBlockId());
  std::vector<AcDbLine*> lines;
  for (const AcDbObjectId& e : block->entityIds())
    if (auto* line = kelhost::db::PeekAs<AcDbLine>(e)) lines.push_back(line);
  d->close();
  ASSERT_EQ(lines.size(), 2u) << "one extension line suppressed";
  // The second extension line leaves (10,0) at 45 degrees to meet the
  // dimension line (y = 4) at (14,4); the dimension line runs from the
  // first one's foot (4,4).
  EXPECT_NEAR(lines[0]->startPoint().x, 10, 1e-9);
  EXPECT_NEAR(lines[0]->endPoint().x, 14, 1e-9);
  EXPECT_NEAR(lines[0]->endPoint().y, 4, 1e-9);
  EXPECT_NEAR(lines[1]->startPoint().x, 4, 1e-9);
  EXPECT_NEAR(lines[1]->endPoint().x, 14, 1e-9);
}
