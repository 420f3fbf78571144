// LINE and ARC entities read into the kernel's records.
#include <memory>

#include "kernel_support.h"

namespace {

TEST(EntityReaders, LineAndArcRecordsFromTheDrawing) {
  auto db = std::make_unique<AcDbDatabase>();
  acdbHostApplicationServices()->setWorkingDatabase(db.get());
  const ads_point from = {1, 2, 0}, to = {4, 6, 0}, up = {0, 0, 1};
  ads_name names[4];
  resbuf* lists[4] = {acutBuildList(RTDXF0, L"LINE", 10, from, 11, to, 210, up, 0),
                      acutBuildList(RTDXF0, L"CIRCLE", 10, from, 40, 2.0, 0),
                      acutBuildList(RTDXF0, L"LINE", 10, from, 11, from, 0),
                      acutBuildList(RTDXF0, L"ARC", 10, to, 40, 2.5, 50, 0.25, 51, 1.75, 0)};
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(acdbEntMakeX(lists[i], names[i]), RTNORM);
    acutRelRb(lists[i]);
  }
  // A line fills the record, yet the result is 0.
  linfo l{};
  double normal[3] = {9, 9, 9};
  EXPECT_EQ(gl_getline(names[0], &l, normal), 0);
  EXPECT_XY(l.pt1, 1, 2, 0);
  EXPECT_XY(l.dir, 0.6, 0.8, 1e-15);
  EXPECT_EQ(normal[2], 1);
  // Not a line, or no entity: nothing touched; no length: only the normal.
  linfo kept{};
  double keptNormal[3] = {5, 5, 5};
  const ads_name nothing = {0, 0};
  EXPECT_EQ(gl_getline(names[1], &kept, keptNormal) + gl_getline(nothing, &kept, keptNormal), 0);
  EXPECT_EQ(keptNormal[2], 5);
  EXPECT_EQ(gl_getline(names[2], &kept, keptNormal), 0);
  EXPECT_XY(kept.pt1, 0, 0, 0);
  EXPECT_EQ(keptNormal[2], 1);

  atype a{};
  ASSERT_EQ(acs_getarc(names[3], &a, normal), 1);
  EXPECT_XY(a.center, 4, 6, 0);
  EXPECT_EQ(a.radius, 2.5);
  EXPECT_EQ(a.start, 0.25);
  EXPECT_EQ(a.end, 1.75);
  // 210 precedes 50 and 51; looked for after the last item, the search
  // stays there: the end angle's value.
  EXPECT_EQ(normal[0], 1.75);
  EXPECT_EQ(normal[2], 0);
  EXPECT_EQ(acs_getarc(names[0], &a, normal) + acs_getarc(nothing, &a, normal), 0);
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
}

}  // namespace
