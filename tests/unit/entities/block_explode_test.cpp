// Exploding block references: copies of the block's entities placed by
// the reference, attribute definitions instead of attributes, nested
// references one level deep, ellipses from circles under a non-uniform
// scaling, failure with nothing made for what cannot follow; arrays give
// a reference per image; exploding into the owner's space.
#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "../database/database_fixture.h"
#include "entity_test_helpers.h"
#include "arx/dbelipse.h"
#include "kelhost/text.h"

namespace {
using entity_tests::kPi;
using entity_tests::LastId;

// The entities an explode returned, deleted with this.
struct Parts {
  AcDbVoidPtrArray array;
  ~Parts() {
    for (void* p : array) delete static_cast<AcDbEntity*>(p);
  }
  AcDbEntity* at(int i) const { return static_cast<AcDbEntity*>(array[i]); }
  std::vector<std::wstring> types() const {
    std::vector<std::wstring> out;
    for (void* p : array) out.push_back(static_cast<AcDbEntity*>(p)->isA()->name());
    return out;
  }
};

// Block SUB: one line. Block PART, based at (1,1): a line, a circle, an
// arc, an attribute definition, a heavy polyline with an arc segment and
// a reference to SUB, the line red with xdata.
const wchar_t* kBlocks[] = {
    L"(regapp \"KELAPP\")",
    L"(entmake '((0 . \"BLOCK\") (2 . \"SUB\") (10 0.0 0.0 0.0)))",
    L"(entmake '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 1.0 0.0 0.0)))",
    L"(entmake '((0 . \"ENDBLK\")))",
    L"(entmake '((0 . \"BLOCK\") (2 . \"PART\") (70 . 2) (10 1.0 1.0 0.0)))",
    L"(entmake '((0 . \"LINE\") (62 . 1) (10 1.0 1.0 0.0) (11 3.0 1.0 0.0) (-3 (\"KELAPP\" (1000 . \"edge\")))))",
    L"(entmake '((0 . \"CIRCLE\") (10 2.0 2.0 0.0) (40 . 0.5)))",
    L"(entmake '((0 . \"ARC\") (10 1.0 1.0 0.0) (40 . 1.0) (50 . 0.0) (51 . 1.5707963267948966)))",
    L"(entmake '((0 . \"ATTDEF\") (10 1.0 3.0 0.0) (40 . 0.25) (1 . \"X\") (3 . \"Mark?\") (2 . \"MARK\") (70 . 0)))",
    L"(entmake '((0 . \"POLYLINE\") (66 . 1) (70 . 0)))",
    L"(entmake '((0 . \"VERTEX\") (10 1.0 1.0 0.0) (42 . 1.0)))",
    L"(entmake '((0 . \"VERTEX\") (10 3.0 1.0 0.0)))",
    L"(entmake '((0 . \"SEQEND\")))",
    L"(entmake '((0 . \"INSERT\") (2 . \"SUB\") (10 1.0 2.0 0.0)))",
    L"(entmake '((0 . \"ENDBLK\")))",
};

}  // namespace

class BlockExplode : public DrawingTest {
 protected:
  void SetUp() override {
    DrawingTest::SetUp();
    for (const wchar_t* expr : kBlocks) ASSERT_NE(eval(expr), L"nil") << kelhost::ToUtf8(expr);
  }
  // An INSERT of PART at (10,0), with an attribute, and its id.
  AcDbObjectId insertPart(const std::wstring& placement) {
    eval(L"(entmake '((0 . \"INSERT\") (66 . 1) (2 . \"PART\") (10 10.0 0.0 0.0) " + placement + L"))");
    eval(L"(entmake '((0 . \"ATTRIB\") (10 10.0 4.0 0.0) (40 . 0.5) (1 . \"M7\") (2 . \"MARK\") (70 . 0)))");
    EXPECT_NE(eval(L"(entmake '((0 . \"SEQEND\")))"), L"nil");
    return LastId();
  }
};

TEST_F(BlockExplode, CopiesArePlacedByTheBlockTransform) {
  // Scaled by 2 and turned a quarter: block (x,y) -> (10 - 2(y-1), 2(x-1)).
  const AcDbObjectId id = insertPart(L"(41 . 2.0) (42 . 2.0) (43 . 2.0) (50 . 1.5707963267948966)");
  AcDbBlockReference* ref = nullptr;
  ASSERT_EQ(acdbOpenObject(ref, id, AcDb::kForRead), Acad::eOk);
  Parts parts;
  ASSERT_EQ(ref->explode(parts.array), Acad::eOk);
  ref->close();
  EXPECT_EQ(parts.types(), (std::vector<std::wstring>{L"AcDbLine", L"AcDbCircle", L"AcDbArc",
                                                      L"AcDbAttributeDefinition", L"AcDb2dPolyline",
                                                      L"AcDbBlockReference"}));
  for (void* p : parts.array) EXPECT_FALSE(static_cast<AcDbEntity*>(p)->isDatabaseResident());

  auto* line = AcDbLine::cast(parts.at(0));
  EXPECT_PT(line->startPoint(), 10, 0, 0);
  EXPECT_PT(line->endPoint(), 10, 4, 0);
  EXPECT_EQ(line->colorIndex(), 1);
  resbuf* xdata = line->xData(L"KELAPP");
  ASSERT_NE(xdata, nullptr);
  EXPECT_STREQ(xdata->rbnext->resval.rstring, L"edge");
  acutRelRb(xdata);

  auto* circle = AcDbCircle::cast(parts.at(1));
  EXPECT_PT(circle->center(), 8, 2, 0);
  EXPECT_DOUBLE_EQ(circle->radius(), 1.0);
  AcGePoint3d s, e;
  AcDbArc::cast(parts.at(2))->getStartPoint(s);
  AcDbArc::cast(parts.at(2))->getEndPoint(e);
  EXPECT_PT(s, 10, 2, 0);
  EXPECT_PT(e, 8, 0, 0);

  // The definition, not the reference's attribute, with its own text.
  auto* def = AcDbAttributeDefinition::cast(parts.at(3));
  EXPECT_STREQ(def->tagConst(), L"MARK");
  EXPECT_STREQ(def->textStringConst(), L"X");
  EXPECT_PT(def->position(), 6, 0, 0);
  EXPECT_DOUBLE_EQ(def->height(), 0.5);

  // The nested reference stays a reference, carrying the outer placement.
  auto* nested = AcDbBlockReference::cast(parts.at(5));
  EXPECT_PT(nested->position(), 8, 0, 0);
  EXPECT_NEAR(nested->scaleFactors().x, 2.0, 1e-12);
  EXPECT_NEAR(nested->rotation(), kPi / 2, 1e-12);

  // The heavy polyline brings copies of its vertices, which join the
  // drawing with it.
  auto* pl = AcDb2dPolyline::cast(parts.at(4));
  AcGePoint3d mid;
  ASSERT_EQ(pl->getPointAtParam(0.5, mid), Acad::eOk);
  EXPECT_PT(mid, 12, 2, 0);  // the half circle's low point (2,0) placed
  AcDbBlockTableRecord* ms = nullptr;
  ASSERT_EQ(acdbOpenObject(ms, db->modelSpaceId(), AcDb::kForWrite), Acad::eOk);
  AcDbObjectId plId;
  ASSERT_EQ(ms->appendAcDbEntity(plId, pl), Acad::eOk);
  ms->close();
  pl->close();
  parts.array[4] = nullptr;  // the database has it now
  EXPECT_EQ(eval(L"(cdr (assoc 10 (entget (entnext (entnext (entlast))))))"), L"(10.0 4.0 0.0)");

  // The block itself is untouched.
  const AcDbObjectId partId = kelhost::db::PeekAs<AcDbBlockReference>(id)->blockTableRecord();
  auto* block = kelhost::db::PeekAs<AcDbBlockTableRecord>(partId);
  auto* original = kelhost::db::PeekAs<AcDbLine>(block->entityIds()[0]);
  EXPECT_PT(original->endPoint(), 3, 1, 0);
}

TEST_F(BlockExplode, NonUniformScalingTurnsCirclesIntoEllipses) {
  // Scale (2,1): block (x,y) -> (10 + 2(x-1), y-1). The block holds an
  // attribute definition (text), so first a block without one.
  eval(L"(entmake '((0 . \"BLOCK\") (2 . \"ROUND\") (10 0.0 0.0 0.0)))");
  eval(L"(entmake '((0 . \"CIRCLE\") (10 1.0 1.0 0.0) (40 . 1.0)))");
  eval(L"(entmake '((0 . \"ARC\") (10 0.0 0.0 0.0) (40 . 1.0) (50 . 0.0) (51 . 1.5707963267948966)))");
  eval(L"(entmake '((0 . \"INSERT\") (2 . \"SUB\") (10 0.0 0.0 0.0)))");
  eval(L"(entmake '((0 . \"ENDBLK\")))");
  eval(L"(entmake '((0 . \"INSERT\") (2 . \"ROUND\") (10 0.0 0.0 0.0) (41 . 2.0) (42 . 1.0) (43 . 1.0)))");
  AcDbBlockReference* ref = nullptr;
  ASSERT_EQ(acdbOpenObject(ref, LastId(), AcDb::kForRead), Acad::eOk);
  Parts parts;
  ASSERT_EQ(ref->explode(parts.array), Acad::eOk);
  ref->close();
  ASSERT_EQ(parts.types(), (std::vector<std::wstring>{L"AcDbEllipse", L"AcDbEllipse", L"AcDbBlockReference"}));
  auto* full = AcDbEllipse::cast(parts.at(0));
  EXPECT_PT(full->center(), 2, 1, 0);
  EXPECT_NEAR(full->majorAxis().length(), 2.0, 1e-9);
  EXPECT_NEAR(std::fabs(full->majorAxis().x), 2.0, 1e-9);
  EXPECT_NEAR(full->radiusRatio(), 0.5, 1e-9);
  EXPECT_TRUE(full->isClosed());
  // The quarter arc from (1,0) to (0,1) becomes the quarter ellipse from
  // (2,0) to (0,1).
  AcGePoint3d s, e;
  AcDbEllipse::cast(parts.at(1))->getStartPoint(s);
  AcDbEllipse::cast(parts.at(1))->getEndPoint(e);
  EXPECT_PT(s, 2, 0, 0);
  EXPECT_PT(e, 0, 1, 0);
  // A nested reference along the scaling's axes takes it as scale factors.
  auto* nested = AcDbBlockReference::cast(parts.at(2));
  EXPECT_NEAR(nested->scaleFactors().x, 2.0, 1e-12);
  EXPECT_NEAR(nested->scaleFactors().y, 1.0, 1e-12);
}

TEST_F(BlockExplode, WhatCannotFollowFailsTheWholeExplode) {
  // PART holds text (its attribute definition): no non-uniform scaling.
  const AcDbObjectId id = insertPart(L"(41 . 2.0) (42 . 1.0) (43 . 1.0)");
  AcDbBlockReference* ref = nullptr;
  ASSERT_EQ(acdbOpenObject(ref, id, AcDb::kForRead), Acad::eOk);
  Parts parts;
  parts.array.append(nullptr);  // what the caller had stays as it was
  EXPECT_EQ(ref->explode(parts.array), Acad::eCannotScaleNonUniformly);
  EXPECT_EQ(parts.array.length(), 1);
  ref->close();

  // A nested reference turned across the outer scaling's axes cannot be
  // said with scale factors either.
  eval(L"(entmake '((0 . \"BLOCK\") (2 . \"TILTED\") (10 0.0 0.0 0.0)))");
  eval(L"(entmake '((0 . \"INSERT\") (2 . \"SUB\") (10 0.0 0.0 0.0) (50 . 0.7853981633974483)))");
  eval(L"(entmake '((0 . \"ENDBLK\")))");
  eval(L"(entmake '((0 . \"INSERT\") (2 . \"TILTED\") (10 0.0 0.0 0.0) (41 . 3.0)))");
  ASSERT_EQ(acdbOpenObject(ref, LastId(), AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(ref->explode(parts.array), Acad::eCannotScaleNonUniformly);
  EXPECT_EQ(parts.array.length(), 1);
  ref->close();

  // A reference to no block has nothing to give.
  AcDbBlockReference loose(AcGePoint3d(0, 0, 0), AcDbObjectId::kNull);
  EXPECT_EQ(loose.explode(parts.array), Acad::eInvalidInput);
}

TEST_F(BlockExplode, AnArrayExplodesIntoOneReferencePerImage) {
  eval(L"(entmake '((0 . \"INSERT\") (66 . 1) (2 . \"SUB\") (10 1.0 1.0 0.0) (50 . 1.5707963267948966)"
       L" (70 . 2) (71 . 3) (44 . 5.0) (45 . 2.0)))");
  eval(L"(entmake '((0 . \"ATTRIB\") (10 1.0 1.0 0.0) (40 . 0.5) (1 . \"V\") (2 . \"T\") (70 . 0)))");
  ASSERT_NE(eval(L"(entmake '((0 . \"SEQEND\")))"), L"nil");
  AcDbMInsertBlock* array = nullptr;
  ASSERT_EQ(acdbOpenObject(array, LastId(), AcDb::kForRead), Acad::eOk);
  Parts parts;
  ASSERT_EQ(array->explode(parts.array), Acad::eOk);
  const AcDbObjectId sub = array->blockTableRecord();
  array->close();
  ASSERT_EQ(parts.array.length(), 6);
  // Rows run along the reference's Y axis (turned: -X), columns along X (turned: +Y).
  const double expected[6][2] = {{1, 1}, {1, 6}, {-1, 1}, {-1, 6}, {-3, 1}, {-3, 6}};
  for (int i = 0; i < 6; ++i) {
    auto* ref = AcDbBlockReference::cast(parts.at(i));
    ASSERT_NE(ref, nullptr);
    EXPECT_EQ(ref->isA(), AcDbBlockReference::desc()) << "a plain reference, not an array";
    EXPECT_PT(ref->position(), expected[i][0], expected[i][1], 0);
    EXPECT_NEAR(ref->rotation(), kPi / 2, 1e-12);
    // Each image brings its copy of the attribute, moved with it.
    ASSERT_EQ(ref->sequence().pending.size(), 1u);
    EXPECT_PT(AcDbAttribute::cast(ref->sequence().pending[0].get())->position(), expected[i][0], expected[i][1], 0);
  }
  // An array of no images explodes into nothing.
  AcDbMInsertBlock empty(AcGePoint3d(0, 0, 0), sub, 0, 3, 1.0, 1.0);
  EXPECT_EQ(empty.explode(parts.array), Acad::eOk);
  EXPECT_EQ(parts.array.length(), 6);
}

TEST_F(BlockExplode, ExplodeToOwnerSpaceAppendsTheCopiesAndKeepsTheReference) {
  const AcDbObjectId id = insertPart(L"");
  const int before = std::stoi(eval(L"(sslength (ssget \"X\"))"));
  AcDbBlockReference* ref = nullptr;
  ASSERT_EQ(acdbOpenObject(ref, id, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(ref->explodeToOwnerSpace(), Acad::eOk);
  ref->close();
  EXPECT_EQ(std::stoi(eval(L"(sslength (ssget \"X\"))")), before + 6);
  EXPECT_FALSE(id.isErased());
  // The polyline came with its vertices; the last made is the nested reference.
  EXPECT_EQ(eval(L"(cdr (assoc 0 (entget (entlast))))"), L"\"INSERT\"");
  EXPECT_EQ(eval(L"(sslength (ssget \"X\" '((0 . \"POLYLINE\"))))"), L"1");
  EXPECT_EQ(eval(L"(cdr (assoc 10 (entget (entnext (ssname (ssget \"X\" '((0 . \"POLYLINE\"))) 0)))))"),
            L"(10.0 0.0 0.0)");

  AcDbBlockReference outside(AcGePoint3d(0, 0, 0), kelhost::db::PeekAs<AcDbBlockReference>(id)->blockTableRecord());
  EXPECT_EQ(outside.explodeToOwnerSpace(), Acad::eNotInDatabase);
}
