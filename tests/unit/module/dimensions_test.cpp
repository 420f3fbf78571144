// The KEL dimension functions: chains as they are measured and laid out,
// merging and splitting, and the per-dimension settings with what the
// dimension's block then shows.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

#include "db/stub.h"
#include "db/working.h"
#include "editor_module_fixture.h"
#include "kelcad/kelcad.h"

namespace {

class Dimensions : public EditorModuleTest {
 protected:
  void SetUp() override {
    EditorModuleTest::SetUp();
    KEL::SetCurDWGPtr(nullptr);
  }
  void TearDown() override {
    EXPECT_EQ(kelhost::db::OpenObjectCount(), 0) << "objects left open";
    KEL::SetCurDWGPtr(nullptr);
    EditorModuleTest::TearDown();
  }
  template <class T>
  static T* Peek(AcDbObjectId id) {
    return kelhost::db::PeekAs<T>(id);
  }
  // The dimensions of model space that are not erased.
  std::vector<AcDbDimension*> Live() {
    std::vector<AcDbDimension*> dims;
    auto* model = Peek<AcDbBlockTableRecord>(drawing->modelSpaceId());
    for (const AcDbObjectId& id : model->entityIds())
      if (auto* d = id.isErased() ? nullptr : Peek<AcDbDimension>(id)) dims.push_back(d);
    return dims;
  }
  static AcArray<AcGePoint3d> Points(std::initializer_list<AcGePoint3d> pts) {
    AcArray<AcGePoint3d> out;
    for (const AcGePoint3d& p : pts) out.append(p);
    return out;
  }
  static std::wstring Text(const AcDbDimension* d) {
    ACHAR* t = d->dimensionText();
    std::wstring s = t ? t : L"";
    std::free(t);
    return s;
  }
  // The text the dimension's block shows.
  static std::wstring Shown(AcDbObjectId dim) {
    auto* block = Peek<AcDbBlockTableRecord>(Peek<AcDbDimension>(dim)->dimBlockId());
    for (const AcDbObjectId& id : block->entityIds())
      if (auto* m = id.isErased() ? nullptr : Peek<AcDbMText>(id)) {
        ACHAR* c = m->contents();
        std::wstring s = c ? c : L"";
        std::free(c);
        return s;
      }
    return L"(none)";
  }
  static double Measured(const AcDbDimension* d) {
    double v = -1;
    d->measurement(v);
    return v;
  }
  double Spacing() { return Peek<AcDbDimStyleTableRecord>(drawing->dimstyle())->dimdli(); }
};

TEST_F(Dimensions, EveryChainOfTwoPointsMakesOneDimensionAndFewerMakeNone) {
  const AcArray<AcGePoint3d> two = Points({{0, 0, 0}, {10, 0, 0}}), one = Points({{0, 0, 0}});
  const CStringArray none;
  AcArray<AcDbObjectId> ids;
  EXPECT_EQ(KEL::CreateMAlignedDim(two, AcGePoint3d(0, 5, 0), none, ids), Acad::eOk);
  EXPECT_EQ(KEL::CreateMRotatedDim(0.0, two, AcGePoint3d(0, 5, 0), none, ids), Acad::eOk);
  EXPECT_EQ(KEL::CreateMBAlignedDim(two, AcGePoint3d(0, 5, 0), none, ids), Acad::eOk);
  EXPECT_EQ(KEL::CreateMBRotatedDim(0.0, two, AcGePoint3d(0, 5, 0), none, ids), Acad::eOk);
  ASSERT_EQ(ids.length(), 4);
  EXPECT_TRUE(Peek<AcDbAlignedDimension>(ids[0]));
  EXPECT_TRUE(Peek<AcDbRotatedDimension>(ids[1]));
  EXPECT_TRUE(Peek<AcDbAlignedDimension>(ids[2]));
  EXPECT_TRUE(Peek<AcDbRotatedDimension>(ids[3]));
  // The baseline chain of one step stays on the given line.
  EXPECT_TRUE(Peek<AcDbRotatedDimension>(ids[3])->dimLinePoint().isEqualTo(AcGePoint3d(0, 5, 0)));

  EXPECT_EQ(KEL::CreateMAlignedDim(one, AcGePoint3d(0, 5, 0), none, ids), Acad::eInvalidInput);
  EXPECT_EQ(KEL::CreateMRotatedDim(0.0, one, AcGePoint3d(0, 5, 0), none, ids), Acad::eInvalidInput);
  EXPECT_EQ(KEL::CreateMBAlignedDim(one, AcGePoint3d(0, 5, 0), none, ids), Acad::eInvalidInput);
  EXPECT_EQ(KEL::CreateMBRotatedDim(0.0, AcArray<AcGePoint3d>(), AcGePoint3d(0, 5, 0), none, ids),
            Acad::eInvalidInput);
  EXPECT_EQ(ids.length(), 4);
  EXPECT_EQ(Live().size(), 4u);
}

TEST_F(Dimensions, ContinuousChainsShareTheLineAndTakeTextsInOrder) {
  CStringArray texts;
  texts.Add(L"A=<>");
  AcArray<AcDbObjectId> ids;
  // An aligned chain at 45 degrees: an aligned first step, rotated ones after.
  const AcArray<AcGePoint3d> diagonal = Points({{0, 0, 0}, {3, 3, 0}, {5, 5, 0}, {9, 9, 0}});
  ASSERT_EQ(KEL::CreateMAlignedDim(diagonal, AcGePoint3d(0, 2, 0), texts, ids), Acad::eOk);
  ASSERT_EQ(ids.length(), 3);
  auto* first = Peek<AcDbAlignedDimension>(ids[0]);
  ASSERT_TRUE(first);
  EXPECT_EQ(Text(first), L"A=<>");
  for (int i = 1; i < 3; ++i) {
    auto* step = Peek<AcDbRotatedDimension>(ids[i]);
    ASSERT_TRUE(step) << i;
    EXPECT_NEAR(step->rotation(), std::atan2(3.0, 3.0), 1e-12);
    EXPECT_TRUE(step->dimLinePoint().isEqualTo(AcGePoint3d(0, 2, 0)));
    EXPECT_EQ(Text(step), L"") << "past the texts: the measurement";
    EXPECT_NEAR(Measured(step), diagonal[i].distanceTo(diagonal[i + 1]), 1e-9);
  }
  EXPECT_EQ(Shown(ids[0]).substr(0, 2), L"A=");

  ids.setLogicalLength(0);
  ASSERT_EQ(KEL::CreateMRotatedDim(0.0, Points({{0, 0, 0}, {10, 4, 0}, {25, 0, 0}}), AcGePoint3d(0, -6, 0), texts,
                                   ids),
            Acad::eOk);
  ASSERT_EQ(ids.length(), 2);
  EXPECT_NEAR(Measured(Peek<AcDbDimension>(ids[0])), 10.0, 1e-12);
  EXPECT_NEAR(Measured(Peek<AcDbDimension>(ids[1])), 15.0, 1e-12);
}

TEST_F(Dimensions, BaselineChainsStepOutwardAwayFromTheMeasuredPoint) {
  const double d = Spacing();
  ASSERT_GT(d, 0);
  AcArray<AcDbObjectId> ids;
  const CStringArray none;
  // Dimension line above the points: each further line lies higher.
  ASSERT_EQ(KEL::CreateMBRotatedDim(0.0, Points({{0, 0, 0}, {10, 0, 0}, {20, 0, 0}, {35, 0, 0}}),
                                    AcGePoint3d(0, 5, 0), none, ids),
            Acad::eOk);
  ASSERT_EQ(ids.length(), 3);
  for (int i = 0; i < 3; ++i) {
    auto* dim = Peek<AcDbRotatedDimension>(ids[i]);
    EXPECT_TRUE(dim->xLine1Point().isEqualTo(AcGePoint3d(0, 0, 0))) << "every one measures from the first point";
    EXPECT_NEAR(dim->dimLinePoint().y, 5 + i * d, 1e-12) << i;
  }
  // Below the points: further down. A vertical chain steps sideways.
  ids.setLogicalLength(0);
  ASSERT_EQ(KEL::CreateMBRotatedDim(0.0, Points({{0, 0, 0}, {10, 0, 0}, {20, 0, 0}}), AcGePoint3d(0, -5, 0), none,
                                    ids),
            Acad::eOk);
  EXPECT_NEAR(Peek<AcDbRotatedDimension>(ids[1])->dimLinePoint().y, -5 - d, 1e-12);
  ids.setLogicalLength(0);
  ASSERT_EQ(KEL::CreateMBAlignedDim(Points({{0, 0, 0}, {0, 10, 0}, {0, 30, 0}}), AcGePoint3d(-4, 0, 0), none, ids),
            Acad::eOk);
  ASSERT_EQ(ids.length(), 2);
  EXPECT_TRUE(Peek<AcDbAlignedDimension>(ids[0]));
  auto* second = Peek<AcDbRotatedDimension>(ids[1]);
  ASSERT_TRUE(second);
  EXPECT_NEAR(second->rotation(), std::atan2(1.0, 0.0), 1e-12);
  EXPECT_NEAR(second->dimLinePoint().x, -4 - d, 1e-12);
  EXPECT_NEAR(Measured(second), 30.0, 1e-12);

  // A given style's spacing; a style that does not open stops the chain.
  AcDbObjectId line;
  KEL::CreateLine(line);
  ids.setLogicalLength(0);
  EXPECT_EQ(KEL::CreateMBRotatedDim(0.0, Points({{0, 0, 0}, {10, 0, 0}}), AcGePoint3d(0, 5, 0), none, ids, line),
            Acad::eNotThatKindOfClass);
  EXPECT_EQ(ids.length(), 0);
}

TEST_F(Dimensions, MergingTakesTheFarthestPointsAndErasesTheChain) {
  AcArray<AcDbObjectId> ids;
  const CStringArray none;
  ASSERT_EQ(KEL::CreateMAlignedDim(Points({{0, 0, 0}, {4, 3, 0}, {8, 6, 0}, {12, 9, 0}}), AcGePoint3d(0, 3, 0), none,
                                   ids),
            Acad::eOk);
  ASSERT_EQ(KEL::SetEntDimDec(ids[0], 1), Acad::eOk);
  out.clear();
  AcDbObjectId merged;
  ASSERT_EQ(KEL::ManyDimEntToOne(ids, merged), Acad::eOk);
  const std::wstring line = L"\nangle:0.643501 , rotation:0.643501";
  EXPECT_EQ(out, line + line + line);
  auto* one = Peek<AcDbAlignedDimension>(merged);
  ASSERT_TRUE(one) << "of the first input's kind";
  EXPECT_TRUE(one->xLine1Point().isEqualTo(AcGePoint3d(0, 0, 0)));
  EXPECT_TRUE(one->xLine2Point().isEqualTo(AcGePoint3d(12, 9, 0)));
  EXPECT_TRUE(one->dimLinePoint().isEqualTo(AcGePoint3d(0, 3, 0)));
  EXPECT_EQ(one->dimdec(), 1) << "the first input's own settings come along";
  EXPECT_EQ(Live().size(), 1u);

  // Directions that differ, or an entity that is no dimension: nothing
  // made, nothing erased.
  AcArray<AcDbObjectId> mixed;
  AcDbObjectId a, b, line2;
  KEL::CreateRotatedDim(0.0, AcGePoint3d(0, 20, 0), AcGePoint3d(10, 20, 0), AcGePoint3d(0, 25, 0), a);
  KEL::CreateRotatedDim(0.3, AcGePoint3d(10, 20, 0), AcGePoint3d(20, 20, 0), AcGePoint3d(0, 25, 0), b);
  KEL::CreateLine(line2);
  mixed.append(a);
  mixed.append(b);
  AcDbObjectId none2;
  EXPECT_EQ(KEL::ManyDimEntToOne(mixed, none2), Acad::eNotApplicable);
  mixed.append(line2);
  EXPECT_EQ(KEL::ManyDimEntToOne(mixed, none2), Acad::eNotThatKindOfClass);
  EXPECT_EQ(KEL::ManyDimEntToOne(AcArray<AcDbObjectId>(), none2), Acad::eInvalidInput);
  EXPECT_EQ(Live().size(), 3u);

  // Opposite senses are one direction; the selection-set form.
  AcDbObjectId c;
  KEL::CreateRotatedDim(3.14159265358979323846, AcGePoint3d(20, 20, 0), AcGePoint3d(30, 20, 0),
                        AcGePoint3d(0, 25, 0), c);
  ads_name set, member;
  acdbGetAdsName(member, a);
  ASSERT_EQ(acedSSAdd(member, nullptr, set), RTNORM);
  acdbGetAdsName(member, c);
  acedSSAdd(member, set, set);
  ASSERT_EQ(KEL::ManyDimEntToOne(set, merged), Acad::eOk);
  acedSSFree(set);
  EXPECT_NEAR(Measured(Peek<AcDbDimension>(merged)), 30.0, 1e-9);
}

TEST_F(Dimensions, SplittingProjectsThePointsOntoTheMeasuredLine) {
  AcDbObjectId dim;
  ASSERT_EQ(KEL::CreateRotatedDim(0.0, AcGePoint3d(0, 0, 0), AcGePoint3d(30, 0, 0), AcGePoint3d(0, 8, 0), dim),
            Acad::eOk);
  ASSERT_EQ(KEL::SetEntDimRnd(dim, 5.0), Acad::eOk);
  AcArray<AcDbObjectId> ids;
  // Out of order, off the line, and one on an end (no piece of its own).
  ASSERT_EQ(KEL::OneDimEntToMany(dim, Points({{20, -3, 0}, {12, 5, 0}, {30, 9, 0}}), ids), Acad::eOk);
  ASSERT_EQ(ids.length(), 3);
  const double expected[] = {12, 8, 10};
  for (int i = 0; i < 3; ++i) {
    auto* piece = Peek<AcDbRotatedDimension>(ids[i]);
    ASSERT_TRUE(piece);
    EXPECT_NEAR(Measured(piece), expected[i], 1e-9) << i;
    EXPECT_TRUE(piece->dimLinePoint().isEqualTo(AcGePoint3d(0, 8, 0)));
    EXPECT_EQ(piece->dimrnd(), 5.0);
  }
  bool erased = false;
  EXPECT_FALSE(KEL::IsErased(dim, erased)) << "the split dimension is erased";
  AcDbObjectId line;
  KEL::CreateLine(line);
  EXPECT_EQ(KEL::OneDimEntToMany(line, Points({{1, 1, 0}}), ids), Acad::eNotThatKindOfClass);
  EXPECT_EQ(ids.length(), 3);
}

TEST_F(Dimensions, SettersChangeOnlyDimensionsAndTheBlockShowsThem) {
  AcDbObjectId dim, line;
  ASSERT_EQ(KEL::CreateRotatedDim(0.0, AcGePoint3d(0, 0, 0), AcGePoint3d(12.3456, 0, 0), AcGePoint3d(0, 5, 0), dim),
            Acad::eOk);
  KEL::CreateLine(line);
  EXPECT_EQ(KEL::SetEntDimText(line, L"X"), Acad::eNotThatKindOfClass);
  EXPECT_EQ(KEL::SetEntDimDec(line, 2), Acad::eNotThatKindOfClass);
  EXPECT_EQ(KEL::SetEntDimRnd(line, 1.0), Acad::eNotThatKindOfClass);
  EXPECT_EQ(KEL::SetDimEntProperty(line, 1, 1, 1, 1, L"_ARCHTICK"), Acad::eNotThatKindOfClass);
  EXPECT_EQ(KEL::SetEntDimStyle(line, CString(L"Standard")), Acad::eNotThatKindOfClass);
  EXPECT_EQ(Peek<AcDbLine>(line)->xData(L"ACAD"), nullptr) << "the line is left as it was";

  ASSERT_EQ(KEL::SetEntDimDec(dim, 1), Acad::eOk);
  EXPECT_EQ(Shown(dim), L"12,3") << "ISO-25 writes a decimal comma";
  ASSERT_EQ(KEL::SetEntDimRnd(dim, 0.5), Acad::eOk);
  EXPECT_EQ(Shown(dim), L"12,5");
  EXPECT_EQ(KEL::SetEntDimDec(dim, 9), Acad::eInvalidInput);
  ASSERT_EQ(KEL::SetEntDimText(dim, L"L=<>"), Acad::eOk);
  EXPECT_EQ(Shown(dim), L"L=12,5");

  resbuf sah{};
  sah.restype = RTSHORT;
  sah.resval.rint = 1;
  acedSetVar(L"DIMSAH", &sah);
  ASSERT_EQ(KEL::SetDimEntProperty(dim, 1.0, 2.0, 1.5, 2.5, L"_ARCHTICK"), Acad::eOk);
  EXPECT_EQ(Var(L"DIMSAH"), L"1") << "restored";
  auto* d = Peek<AcDbDimension>(dim);
  EXPECT_EQ(d->dimgap(), 1.0);
  EXPECT_EQ(d->dimasz(), 2.0);
  EXPECT_EQ(d->dimdle(), 1.5);
  EXPECT_EQ(d->dimexe(), 2.5);
  EXPECT_FALSE(d->dimsah());
  auto* tick = Peek<AcDbBlockTableRecord>(d->dimblk());
  ASSERT_TRUE(tick);
  EXPECT_EQ(std::wstring(tick->getName()), L"_ArchTick");
  EXPECT_EQ(KEL::SetDimEntProperty(dim, 1, 1, 1, 1, L"NoSuchArrow"), Acad::eKeyNotFound);

  // A named style's data becomes the dimension's own; a name not found
  // drops it and leaves the drawing's current style.
  ASSERT_EQ(KEL::SetEntDimStyle(dim, CString(L"NoSuchStyle")), Acad::eOk);
  EXPECT_EQ(d->dimensionStyle(), drawing->dimstyle());
  EXPECT_EQ(d->xData(L"ACAD"), nullptr);
  EXPECT_EQ(d->dimdec(), Peek<AcDbDimStyleTableRecord>(drawing->dimstyle())->dimdec());
}

}  // namespace
