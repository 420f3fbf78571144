// LINE and ARC entities read into the kernel's records.
#include <memory>

#include <gtest/gtest.h>

#include "kelcad/kelcad.h"

namespace {

class EntityReaders : public ::testing::Test {
 protected:
  void SetUp() override {
    db_ = std::make_unique<AcDbDatabase>();
    acdbHostApplicationServices()->setWorkingDatabase(db_.get());
  }
  void TearDown() override {
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    db_.reset();
  }
  // Makes the entity of the list (released here) and names it.
  static void Make(resbuf* list, ads_name name) {
    ASSERT_NE(list, nullptr);
    const int status = acdbEntMakeX(list, name);
    acutRelRb(list);
    ASSERT_EQ(status, RTNORM);
  }

 private:
  std::unique_ptr<AcDbDatabase> db_;
};

TEST_F(EntityReaders, LineFillsTheRecordYetReturnsZero) {
  const ads_point from = {1, 2, 0}, to = {4, 6, 0}, up = {0, 0, 1};
  ads_name line, circle, same;
  Make(acutBuildList(RTDXF0, L"LINE", 10, from, 11, to, 210, up, 0), line);
  linfo l{};
  double normal[3] = {9, 9, 9};
  EXPECT_EQ(gl_getline(line, &l, normal), 0);
  EXPECT_EQ(l.pt1[1], 2);
  EXPECT_EQ(l.pt2[0], 4);
  EXPECT_DOUBLE_EQ(l.dir[0], 0.6);
  EXPECT_DOUBLE_EQ(l.dir[1], 0.8);
  EXPECT_EQ(normal[0], 0);
  EXPECT_EQ(normal[2], 1);

  // Not a line: nothing touched.
  Make(acutBuildList(RTDXF0, L"CIRCLE", 10, from, 40, 2.0, 0), circle);
  linfo untouched{};
  untouched.pt1[0] = 77;
  double kept[3] = {5, 5, 5};
  EXPECT_EQ(gl_getline(circle, &untouched, kept), 0);
  EXPECT_EQ(untouched.pt1[0], 77);
  EXPECT_EQ(untouched.dir[0], 0);
  EXPECT_EQ(kept[0], 5);
  // A line of no length: its normal is taken, the record left alone.
  Make(acutBuildList(RTDXF0, L"LINE", 10, from, 11, from, 0), same);
  EXPECT_EQ(gl_getline(same, &untouched, kept), 0);
  EXPECT_EQ(untouched.pt1[0], 77);
  EXPECT_EQ(kept[2], 1);
  const ads_name nothing = {0, 0};
  EXPECT_EQ(gl_getline(nothing, &untouched, kept), 0);
  EXPECT_EQ(untouched.pt1[0], 77);
}

TEST_F(EntityReaders, ArcFillsItsRecordAndTheLastItemLandsInTheNormal) {
  const ads_point centre = {3, 4, 0}, from = {0, 0, 0}, to = {1, 1, 0};
  ads_name arc, line;
  Make(acutBuildList(RTDXF0, L"ARC", 10, centre, 40, 2.5, 50, 0.25, 51, 1.75, 0), arc);
  atype a{};
  double normal[3] = {9, 9, 9};
  ASSERT_EQ(acs_getarc(arc, &a, normal), 1);
  EXPECT_EQ(a.center[0], 3);
  EXPECT_EQ(a.center[1], 4);
  EXPECT_EQ(a.radius, 2.5);
  EXPECT_EQ(a.start, 0.25);
  EXPECT_EQ(a.end, 1.75);
  // 210 comes before 50 and 51 in the list; the search for it, started
  // after the last item, stays on that item: the end angle.
  EXPECT_EQ(normal[0], 1.75);
  EXPECT_EQ(normal[1], 0);
  EXPECT_EQ(normal[2], 0);

  Make(acutBuildList(RTDXF0, L"LINE", 10, from, 11, to, 0), line);
  atype untouched{};
  untouched.radius = 42;
  EXPECT_EQ(acs_getarc(line, &untouched, normal), 0);
  EXPECT_EQ(untouched.radius, 42);
  const ads_name nothing = {0, 0};
  EXPECT_EQ(acs_getarc(nothing, &untouched, normal), 0);
  EXPECT_EQ(acs_getarc(arc, nullptr, normal), 0);
}

}  // namespace
