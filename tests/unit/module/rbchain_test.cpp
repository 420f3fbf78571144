// Result-buffer chains: kinds of group codes, walking, splicing and copies,
// with the deliberate quirks the family's code relies on. Under ASan these
// tests also check that every node is released exactly once.
#include <gtest/gtest.h>

#include <cstring>
#include <initializer_list>
#include <vector>

#include "kelcad/kelcad.h"

namespace {

// A chain of short-kind nodes whose types name them (70, 71, ...).
resbuf* Chain(std::initializer_list<int> types) {
  resbuf* head = nullptr;
  for (int type : types) KEL::AppendRb(head, acutNewRb(type));
  return head;
}

std::vector<int> Types(const resbuf* rb) {
  std::vector<int> types;
  for (; rb != nullptr; rb = rb->rbnext) types.push_back(rb->restype);
  return types;
}

resbuf* Node(int type, const wchar_t* text = nullptr, short value = 0) {
  resbuf* rb = acutNewRb(type);
  if (text != nullptr) acutNewString(text, rb->resval.rstring);
  else rb->resval.rint = value;
  return rb;
}

resbuf* Binary(const char* bytes, short count) {
  resbuf* rb = acutNewRb(1004);
  rb->resval.rbinary.clen = count;
  rb->resval.rbinary.buf = static_cast<char*>(std::malloc(count));
  std::memcpy(rb->resval.rbinary.buf, bytes, count);
  return rb;
}

TEST(RbChain, GroupCodeKindsWithTheirGaps) {
  const std::pair<int, int> kinds[] = {
      {-1, RTENAME}, {9, RTSTR}, {10, RT3DPOINT}, {17, RT3DPOINT}, {18, RTNONE}, {38, RTREAL}, {60, RTSHORT},
      {80, RTNONE}, {90, RTLONG}, {103, RTNONE}, {105, RTSTR}, {112, RTSTR}, {139, RTNONE}, {149, RTREAL},
      {175, RTSHORT}, {210, RT3DPOINT}, {299, RTSHORT}, {309, RTSTR}, {310, RTENAME}, {389, RTSHORT},
      {390, RTENAME}, {409, RTSHORT}, {419, RTSTR}, {998, RTNONE}, {999, RTSTR}, {1004, 1004}, {1009, RTSTR},
      {1013, RT3DPOINT}, {1041, RTREAL}, {1070, RTSHORT}, {1071, RTLONG}, {1072, RTNONE}, {4999, RTNONE},
      {-2, -2}, {-3, -3}, {-5001, -5001}, {5000, 5000}, {RTNIL, RTNIL}};
  for (const auto& [code, kind] : kinds) EXPECT_EQ(KEL::GetDXFCodeDataType(code), kind) << code;
}

TEST(RbChain, WalksAndSearches) {
  resbuf* chain = Chain({70, 71, 72, 71});
  EXPECT_EQ(KEL::GetRbLength(chain), 4);
  EXPECT_EQ(KEL::GetRbLength(nullptr), 0);
  EXPECT_EQ(KEL::GetRbNth(chain, 0), chain);
  EXPECT_EQ(KEL::GetRbNth(chain, 4), nullptr);
  EXPECT_EQ(KEL::GetRbNth(chain, -1), nullptr);
  EXPECT_EQ(KEL::tailOfResbufChain(chain), KEL::GetRbNth(chain, 3));
  EXPECT_EQ(KEL::GetRbXDXF(chain, 71), KEL::GetRbNth(chain, 1));  // the first of two
  resbuf* found = chain;
  EXPECT_FALSE(KEL::GetRbXDXF(chain, 99, found));
  EXPECT_EQ(found, nullptr);
  EXPECT_EQ(KEL::GetRbXDXFIndex(chain, 72), 2);
  EXPECT_EQ(KEL::GetRbXDXFIndex(chain, 99), RTERROR);
  EXPECT_EQ(KEL::GetRbXDXFIndex(nullptr, 70), RTERROR);
  acutRelRb(chain);
}

TEST(RbChain, InsertAfterIndex) {
  resbuf* chain = nullptr;
  resbuf* extra = Chain({80, 81});
  EXPECT_EQ(KEL::InsertRbAfterN(chain, extra, -1), RTERROR);  // a null head takes nothing
  EXPECT_EQ(KEL::AppendRb(chain, Chain({70, 71, 72})), chain);
  EXPECT_EQ(KEL::InsertRbAfterN(chain, extra, 3), RTERROR);  // n equal to the length
  EXPECT_EQ(KEL::InsertRbAfterN(chain, extra, 2), RTNORM);   // length - 1: at the end
  EXPECT_EQ(KEL::InsertRbAfterN(chain, Chain({90}), -4), RTNORM);  // negative: after the head
  EXPECT_EQ(Types(chain), (std::vector<int>{70, 90, 71, 72, 80, 81}));
  acutRelRb(chain);
}

TEST(RbChain, ReplaceNeverReachesTheHead) {
  resbuf* chain = Chain({70, 71, 72, 73});
  resbuf* repl = Chain({80, 81});
  EXPECT_EQ(KEL::ReplaceRbAfterN(chain, repl, 0), RTERROR);
  EXPECT_EQ(KEL::ReplaceRbAfterN(chain, repl, 4), RTERROR);
  EXPECT_EQ(KEL::ReplaceRbAfterXDXF(chain, repl, 70), RTERROR);  // found at the head
  EXPECT_EQ(KEL::ReplaceRbAfterXDXF(chain, repl, 99), RTERROR);
  EXPECT_EQ(Types(chain), (std::vector<int>{70, 71, 72, 73}));
  EXPECT_EQ(KEL::ReplaceRbAfterN(chain, repl, 1), RTNORM);
  EXPECT_EQ(KEL::ReplaceRbAfterN(chain, nullptr, 4), RTNORM);  // null: only deletes
  EXPECT_EQ(KEL::ReplaceRbAfterXDXF(chain, Chain({90}), 81), RTNORM);
  EXPECT_EQ(Types(chain), (std::vector<int>{70, 80, 90, 72}));
  acutRelRb(chain);
}

// Indexes are counted in 16 bits: index 60535 reads as RTERROR, and a match
// beyond 65535 wraps round to a small index.
TEST(RbChain, IndexesAreCountedInSixteenBits) {
  std::vector<resbuf*> nodes;
  resbuf* chain = nullptr;
  for (int i = 0; i < 65538; ++i) {
    nodes.push_back(acutNewRb(70));
    if (i == 0) chain = nodes[0];
    else nodes[i - 1]->rbnext = nodes[i];
  }
  nodes[60535]->restype = 71;
  nodes[65537]->restype = 72;
  EXPECT_EQ(KEL::GetRbXDXFIndex(chain, 71), RTERROR);
  EXPECT_EQ(KEL::GetRbXDXFIndex(chain, 72), 1);
  resbuf* repl = Chain({80});
  EXPECT_EQ(KEL::ReplaceRbAfterXDXF(chain, repl, 71), RTERROR);
  EXPECT_EQ(KEL::ReplaceRbAfterXDXF(chain, repl, 72), RTNORM);  // lands on index 1
  EXPECT_EQ(Types(chain).at(1), 80);
  acutRelRb(chain);
}

TEST(RbChain, ModifyIntNodeReplacesOnlyTheValueNode) {
  resbuf* list = nullptr;
  resbuf* first = Node(RTSHORT, nullptr, 1);
  first->rbnext = Node(RTSTR, L"one");
  EXPECT_TRUE(KEL::ModifyRbIntNode(list, first));  // an empty list takes the pair
  resbuf* second = Node(RTSHORT, nullptr, 2);
  second->rbnext = Node(RTSTR, L"two");
  EXPECT_TRUE(KEL::ModifyRbIntNode(list, second));  // a new key is appended
  EXPECT_EQ(KEL::GetRbLength(list), 4);

  resbuf* oldValue = first->rbnext;
  resbuf* again = Node(RTSHORT, nullptr, 1);
  again->rbnext = Node(RTSTR, L"uno");
  EXPECT_TRUE(KEL::ModifyRbIntNode(list, again));
  EXPECT_EQ(Types(list), (std::vector<int>{RTSHORT, RTSTR, RTSHORT, RTSTR}));
  EXPECT_EQ(list, first);
  EXPECT_STREQ(list->rbnext->resval.rstring, L"uno");
  // The old value node and the new key node are the caller's, each alone.
  EXPECT_EQ(oldValue->rbnext, nullptr);
  EXPECT_EQ(again->rbnext, nullptr);
  acutRelRb(oldValue);
  acutRelRb(again);
  EXPECT_FALSE(KEL::ModifyRbIntNode(list, list->rbnext));  // not an RTSHORT key
  acutRelRb(list);
}

TEST(RbChain, CopiesFollowTheKindOfEachNode) {
  resbuf* chain = Node(5, L"2F");
  KEL::AppendRb(chain, Binary("xy", 2));
  KEL::AppendRb(chain, Node(20));  // no kind: skipped
  KEL::AppendRb(chain, Node(-3));
  KEL::AppendRb(chain, Node(1071));
  chain->rbnext->rbnext->rbnext->rbnext->resval.rlong = 123456789;

  resbuf* copy = KEL::duplicateResbufChain(chain);
  EXPECT_EQ(Types(copy), (std::vector<int>{5, 1004, -3, 1071}));
  EXPECT_STREQ(copy->resval.rstring, L"2F");
  EXPECT_NE(copy->resval.rstring, chain->resval.rstring);
  // The chunk's bytes are copied, its length is not (kept as acutNewRb gave it).
  EXPECT_EQ(std::memcmp(copy->rbnext->resval.rbinary.buf, "xy", 2), 0);
  EXPECT_EQ(copy->rbnext->resval.rbinary.clen, 0);
  EXPECT_EQ(copy->rbnext->rbnext->rbnext->resval.rlong, 123456789);
  acutRelRb(copy);

  copy = KEL::duplicateResbufChain(chain->rbnext, chain->rbnext->rbnext->rbnext);  // end included
  EXPECT_EQ(Types(copy), (std::vector<int>{1004, -3}));
  acutRelRb(copy);
  EXPECT_EQ(KEL::duplicateResbufChain(chain, nullptr), nullptr);
  EXPECT_EQ(KEL::duplicateResbufNode(chain->rbnext->rbnext), nullptr);
  acutRelRb(chain);
}

TEST(RbChain, PointArraysBecomeThreeDPointChains) {
  AcArray<AcGePoint3d> points;
  EXPECT_EQ(KEL::ptArrayToResbuf(points), nullptr);
  points.append(AcGePoint3d(1, 2, 3));
  points.append(AcGePoint3d(-4, 5.5, 0));
  resbuf* chain = KEL::ptArrayToResbuf(points);
  ASSERT_EQ(Types(chain), (std::vector<int>{RT3DPOINT, RT3DPOINT}));
  EXPECT_EQ(chain->rbnext->resval.rpoint[1], 5.5);
  EXPECT_EQ(chain->resval.rpoint[2], 3);
  acutRelRb(chain);
}

}  // namespace
