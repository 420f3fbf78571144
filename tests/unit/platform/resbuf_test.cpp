#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <cwchar>

#include "arx/acutads.h"
#include "kelhost/resbuf_kinds.h"

TEST(Resbuf, NewNodesAreZeroed) {
  for (int type : {RTSTR, RTREAL, 1004, 310, 1, RT3DPOINT}) {
    resbuf* rb = acutNewRb(type);
    ASSERT_NE(rb, nullptr);
    EXPECT_EQ(rb->restype, type);
    EXPECT_EQ(rb->rbnext, nullptr);
    EXPECT_EQ(rb->resval.rpoint[0], 0.0);
    EXPECT_EQ(rb->resval.rpoint[2], 0.0);
    EXPECT_EQ(rb->resval.rbinary.clen, 0);
    acutRelRb(rb);  // a null string or chunk is released without trouble
  }
}

TEST(Resbuf, BuildListTakesEachValueByItsKind) {
  ads_point pt = {1.0, 2.0, 3.0};
  ads_name name = {11, 22};
  char bytes[] = {1, 0, 2};
  ads_binary chunk = {3, bytes};
  resbuf* list = acutBuildList(RTDXF0, L"LINE", 8, L"Layer \u4e2d", 10, pt, 40, 2.5, 62, 1, 90, 70000, 1071,
                               -5, -1, name, 1004, &chunk, RTLB, RTSHORT, 7, RTDOTE, RTLONG, 100000, RTLE, -3,
                               1000, L"xdata", RTT, RTNIL, 0);
  ASSERT_NE(list, nullptr);
  const int expected[] = {0, 8, 10, 40, 62, 90, 1071, -1, 1004, RTLB, RTSHORT, RTDOTE, RTLONG, RTLE, -3, 1000, RTT, RTNIL};
  resbuf* rb = list;
  for (int code : expected) {
    ASSERT_NE(rb, nullptr);
    EXPECT_EQ(rb->restype, code);
    rb = rb->rbnext;
  }
  EXPECT_EQ(rb, nullptr);
  rb = list;
  EXPECT_STREQ(rb->resval.rstring, L"LINE");  // the RTDXF0 string became group 0
  rb = rb->rbnext;
  EXPECT_STREQ(rb->resval.rstring, L"Layer \u4e2d");
  rb = rb->rbnext;
  EXPECT_EQ(rb->resval.rpoint[2], 3.0);
  pt[2] = 9.0;
  EXPECT_EQ(rb->resval.rpoint[2], 3.0);  // copied, not referenced
  EXPECT_EQ((rb = rb->rbnext)->resval.rreal, 2.5);
  EXPECT_EQ((rb = rb->rbnext)->resval.rint, 1);
  EXPECT_EQ((rb = rb->rbnext)->resval.rlong, 70000);
  EXPECT_EQ((rb = rb->rbnext)->resval.rlong, -5);
  EXPECT_EQ((rb = rb->rbnext)->resval.rlname[1], 22);
  rb = rb->rbnext;
  ASSERT_EQ(rb->resval.rbinary.clen, 3);
  EXPECT_NE(rb->resval.rbinary.buf, bytes);
  EXPECT_EQ(std::memcmp(rb->resval.rbinary.buf, bytes, 3), 0);
  rb = rb->rbnext->rbnext;
  EXPECT_EQ(rb->resval.rint, 7);
  EXPECT_EQ(rb->rbnext->rbnext->resval.rlong, 100000);
  EXPECT_EQ(acutRelRb(list), RTNORM);  // AddressSanitizer checks that everything is released
}

TEST(Resbuf, BuildListFailuresReleaseWhatWasBuilt) {
  EXPECT_EQ(acutBuildList(0), nullptr);
  EXPECT_EQ(acutBuildList(RTNONE), nullptr);
  EXPECT_EQ(acutBuildList(RTSTR, L"kept until failure", 12345, 1.0, 0), nullptr);  // unknown code
  EXPECT_EQ(acutBuildList(RTSTR, L"a", RTSTR, static_cast<const wchar_t*>(nullptr), 0), nullptr);
  EXPECT_EQ(acutBuildList(RTSHORT, 1, RTPOINT, static_cast<const double*>(nullptr), 0), nullptr);
  // RTNONE ends a list as 0 does.
  resbuf* one = acutBuildList(RTREAL, 1.5, RTNONE, RTSTR, L"ignored", 0);
  ASSERT_NE(one, nullptr);
  EXPECT_EQ(one->rbnext, nullptr);
  acutRelRb(one);
}

TEST(Resbuf, ReleaseCopesWithStringsFreedByTheApplication) {
  resbuf* list = acutBuildList(RTSTR, L"one", 1, L"two", 0);
  ASSERT_NE(list, nullptr);
  std::free(list->resval.rstring);  // allowed: the platform's strings come from malloc
  list->resval.rstring = nullptr;
  EXPECT_EQ(acutRelRb(list), RTNORM);
  EXPECT_EQ(acutRelRb(nullptr), RTNORM);
  ACHAR* copy = nullptr;
  ASSERT_EQ(acutNewString(L"copy me", copy), RTNORM);
  EXPECT_STREQ(copy, L"copy me");
  std::free(copy);
  EXPECT_EQ(acutNewString(nullptr, copy), RTNORM);
  EXPECT_EQ(copy, nullptr);
}

TEST(Resbuf, ValueKindsOfGroupCodes) {
  using kelhost::RbKind;
  using kelhost::ResbufKind;
  EXPECT_EQ(ResbufKind(0), RbKind::kString);
  EXPECT_EQ(ResbufKind(-4), RbKind::kString);
  EXPECT_EQ(ResbufKind(-3), RbKind::kNone);
  EXPECT_EQ(ResbufKind(-2), RbKind::kName);
  EXPECT_EQ(ResbufKind(11), RbKind::kPoint);
  EXPECT_EQ(ResbufKind(39), RbKind::kReal);
  EXPECT_EQ(ResbufKind(70), RbKind::kShort);
  EXPECT_EQ(ResbufKind(95), RbKind::kLong);
  EXPECT_EQ(ResbufKind(160), RbKind::kInt64);
  EXPECT_EQ(ResbufKind(290), RbKind::kShort);
  EXPECT_EQ(ResbufKind(310), RbKind::kBinary);
  EXPECT_EQ(ResbufKind(330), RbKind::kName);
  EXPECT_EQ(ResbufKind(370), RbKind::kShort);
  EXPECT_EQ(ResbufKind(1004), RbKind::kBinary);
  EXPECT_EQ(ResbufKind(1005), RbKind::kString);
  EXPECT_EQ(ResbufKind(1010), RbKind::kPoint);
  EXPECT_EQ(ResbufKind(1041), RbKind::kReal);
  EXPECT_EQ(ResbufKind(1070), RbKind::kShort);
  EXPECT_EQ(ResbufKind(1071), RbKind::kLong);
  EXPECT_EQ(ResbufKind(RTANG), RbKind::kReal);
  EXPECT_EQ(ResbufKind(RTPICKS), RbKind::kName);
  EXPECT_EQ(ResbufKind(150), RbKind::kUnknown);
  EXPECT_EQ(ResbufKind(1072), RbKind::kUnknown);
}
