// Selection sets grown and shrunk one entity at a time: each entity once,
// in the order it came, membership that follows ssdel, and sets that do
// not share members.
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "arx/acdbads.h"
#include "arx/acedads.h"
#include "tests/unit/database/database_fixture.h"

namespace {

class SelectionMembership : public DrawingTest {
 protected:
  // n LINEs, oldest first.
  std::vector<std::array<std::int64_t, 2>> Lines(int n) {
    std::vector<std::array<std::int64_t, 2>> names;
    for (int i = 0; i < n; ++i) {
      eval(L"(entmake '((0 . \"LINE\") (10 " + std::to_wstring(i) + L" 0.0 0.0) (11 0.0 1.0 0.0)))");
      ads_name last;
      EXPECT_EQ(acdbEntLast(last), RTNORM);
      names.push_back({last[0], last[1]});
    }
    return names;
  }
  // The set's members as indexes into names, in the set's order.
  static std::vector<int> Members(const ads_name set, const std::vector<std::array<std::int64_t, 2>>& names) {
    std::vector<int> out;
    ads_name ent;
    for (Adesk::Int32 i = 0; acedSSName(set, i, ent) == RTNORM; ++i)
      for (size_t k = 0; k < names.size(); ++k)
        if (ent[0] == names[k][0] && ent[1] == names[k][1]) out.push_back(static_cast<int>(k));
    return out;
  }
};

TEST_F(SelectionMembership, OneAtATimeEachOnceInOrder) {
  const auto names = Lines(6);
  ads_name set, other, got;
  ASSERT_EQ(acedSSAdd(nullptr, nullptr, set), RTNORM);
  for (int k : {3, 1, 3, 5, 1, 0, 5}) {
    ads_name ent = {names[k][0], names[k][1]};
    ASSERT_EQ(acedSSAdd(ent, set, got), RTNORM);
  }
  EXPECT_EQ(Members(set, names), (std::vector<int>{3, 1, 5, 0}));

  // Taken out, an entity is no member; added again it goes to the end.
  ads_name one = {names[1][0], names[1][1]};
  EXPECT_EQ(acedSSDel(one, set), RTNORM);
  EXPECT_EQ(acedSSMemb(one, set), RTERROR);
  EXPECT_EQ(acedSSDel(one, set), RTERROR);
  EXPECT_EQ(Members(set, names), (std::vector<int>{3, 5, 0}));
  ASSERT_EQ(acedSSAdd(one, set, got), RTNORM);
  ASSERT_EQ(acedSSAdd(one, set, got), RTNORM);
  EXPECT_EQ(acedSSMemb(one, set), RTNORM);
  EXPECT_EQ(Members(set, names), (std::vector<int>{3, 5, 0, 1}));
  Adesk::Int32 n = 0;
  EXPECT_EQ(acedSSLength(set, &n), RTNORM);
  EXPECT_EQ(n, 4);

  // Another set made from the first entity has members of its own.
  ASSERT_EQ(acedSSAdd(one, nullptr, other), RTNORM);
  ads_name two = {names[2][0], names[2][1]};
  ASSERT_EQ(acedSSAdd(two, other, got), RTNORM);
  EXPECT_EQ(acedSSMemb(two, set), RTERROR);
  EXPECT_EQ(acedSSDel(one, other), RTNORM);
  EXPECT_EQ(acedSSMemb(one, set), RTNORM);
  EXPECT_EQ(Members(other, names), (std::vector<int>{2}));
  EXPECT_EQ(acedSSFree(other), RTNORM);
  EXPECT_EQ(acedSSFree(set), RTNORM);
}

TEST_F(SelectionMembership, SetsFromSsgetKnowTheirMembers) {
  const auto names = Lines(4);
  ads_name set, got;
  ASSERT_EQ(acedSSGet(L"X", nullptr, nullptr, nullptr, set), RTNORM);
  EXPECT_EQ(Members(set, names), (std::vector<int>{3, 2, 1, 0}));  // newest first
  ads_name first = {names[0][0], names[0][1]};
  ASSERT_EQ(acedSSAdd(first, set, got), RTNORM);
  EXPECT_EQ(Members(set, names), (std::vector<int>{3, 2, 1, 0}));
  EXPECT_EQ(acedSSDel(first, set), RTNORM);
  ASSERT_EQ(acedSSAdd(first, set, got), RTNORM);
  EXPECT_EQ(Members(set, names), (std::vector<int>{3, 2, 1, 0}));
  ads_name third = {names[2][0], names[2][1]};
  EXPECT_EQ(acedSSDel(third, set), RTNORM);
  ASSERT_EQ(acedSSAdd(third, set, got), RTNORM);
  EXPECT_EQ(Members(set, names), (std::vector<int>{3, 1, 0, 2}));
  EXPECT_EQ(acedSSFree(set), RTNORM);
}

}  // namespace
