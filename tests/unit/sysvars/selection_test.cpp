// Selection sets: the sets' own calls, the selection modes, and filters
// with every -4 operator, wildcards and xdata.
#include "arx/acedads.h"
#include "arx/acutads.h"
#include "tests/unit/database/database_fixture.h"

namespace {

class SelectionTest : public DrawingTest {
 protected:
  void SetUp() override {
    DrawingTest::SetUp();
    // Newest last: L1 (0,0)-(10,0) on layer 0; C1 radius 5 at (20,0) on
    // WALLS; L2 (0,0)-(100,100) red; T1 text "Door A" with xdata.
    ASSERT_EQ(eval(L"(progn (entmake '((0 . \"LAYER\") (100 . \"AcDbSymbolTableRecord\") "
                   L"(100 . \"AcDbLayerTableRecord\") (2 . \"WALLS\") (70 . 0) (62 . 7) (6 . \"Continuous\"))) "
                   L"(regapp \"KELAPP\") (regapp \"OTHER\")"
                   L"(setq l1 (entmakex '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 10.0 0.0 0.0))))"
                   L"(setq c1 (entmakex '((0 . \"CIRCLE\") (8 . \"WALLS\") (10 20.0 0.0 0.0) (40 . 5.0))))"
                   L"(setq l2 (entmakex '((0 . \"LINE\") (62 . 1) (10 0.0 0.0 0.0) (11 100.0 100.0 0.0))))"
                   L"(setq t1 (entmakex '((0 . \"TEXT\") (10 30.0 30.0 0.0) (40 . 2.5) (1 . \"Door A\")"
                   L" (-3 (\"KELAPP\" (1000 . \"x\")))))) T)"),
              L"T");
  }
  // The names of a selection, in order, as l1 c1 l2 t1.
  std::wstring names(const std::wstring& selection) {
    return eval(L"(if (setq ss " + selection +
                L") (progn (setq i 0 out \"\") (repeat (sslength ss) (setq e (ssname ss i) i (1+ i) "
                L"out (strcat out (cond ((eq e l1) \"l1 \") ((eq e c1) \"c1 \") ((eq e l2) \"l2 \") ((eq e t1) \"t1 \") "
                L"(T \"? \"))))) out) \"none\")");
  }
};

TEST_F(SelectionTest, SetsKeepTheirMembersInOrder) {
  EXPECT_EQ(names(L"(ssget \"X\")"), L"\"t1 l2 c1 l1 \"");  // newest first
  EXPECT_EQ(eval(L"(sslength (ssget \"_X\"))"), L"4");
  EXPECT_EQ(eval(L"(type (ssget \"X\"))"), L"PICKSET");
  const std::wstring printed = eval(L"(ssget \"X\")");
  EXPECT_EQ(printed.rfind(L"<Selection set: ", 0), 0u) << printed;

  EXPECT_EQ(names(L"(ssadd)"), L"\"\"");
  EXPECT_EQ(names(L"(ssadd c1)"), L"\"c1 \"");
  EXPECT_EQ(names(L"(progn (setq s (ssadd l1)) (ssadd t1 s) (ssadd l1 s) s)"), L"\"l1 t1 \"");  // each once
  EXPECT_EQ(eval(L"(eq (ssadd c1 s) s)"), L"T");
  EXPECT_EQ(eval(L"(eq (ssmemb t1 s) t1)"), L"T");
  EXPECT_EQ(eval(L"(ssmemb l2 s)"), L"nil");
  EXPECT_EQ(eval(L"(eq (ssdel t1 s) s)"), L"T");
  EXPECT_EQ(eval(L"(ssdel t1 s)"), L"nil");
  EXPECT_EQ(names(L"s"), L"\"l1 c1 \"");
  EXPECT_EQ(eval(L"(ssname s 2)"), L"nil");
  EXPECT_EQ(eval(L"(ssname s -1)"), L"nil");
  EXPECT_EQ(eval(L"(eq (ssname s 1.0) c1)"), L"T");
  EXPECT_EQ(eval(L"(sslength l1)").rfind(L"error: bad argument type: lselsetp ", 0), 0u);
  EXPECT_EQ(eval(L"(ssadd (tblobjname \"LAYER\" \"0\"))"), L"nil");  // not an entity

  ads_name set, ent, got;
  ASSERT_EQ(acedSSGet(L"X", nullptr, nullptr, nullptr, set), RTNORM);
  Adesk::Int32 n = 0;
  EXPECT_EQ(acedSSLength(set, &n), RTNORM);
  EXPECT_EQ(n, 4);
  ASSERT_EQ(acedSSName(set, 3, ent), RTNORM);
  EXPECT_EQ(acedSSMemb(ent, set), RTNORM);
  EXPECT_EQ(acedSSName(set, 4, got), RTERROR);
  EXPECT_EQ(acedSSDel(ent, set), RTNORM);
  EXPECT_EQ(acedSSMemb(ent, set), RTERROR);
  EXPECT_EQ(acedSSAdd(ent, set, got), RTNORM);
  EXPECT_TRUE(ads_name_equal(got, set));
  EXPECT_EQ(acedSSFree(set), RTNORM);
  EXPECT_EQ(acedSSFree(set), RTERROR);
  EXPECT_EQ(acedSSLength(set, &n), RTERROR);
  EXPECT_EQ(acedSSName(set, 0, got), RTERROR);

  // Erased entities drop out of new selections.
  eval(L"(entdel l2)");
  EXPECT_EQ(names(L"(ssget \"X\")"), L"\"t1 c1 l1 \"");
}

TEST_F(SelectionTest, FiltersMatchGroupsWithWildcardsAndDefaults) {
  EXPECT_EQ(names(L"(ssget \"X\" '((0 . \"LINE\")))"), L"\"l2 l1 \"");
  EXPECT_EQ(names(L"(ssget \"X\" '((0 . \"line\")))"), L"\"l2 l1 \"");  // any case
  EXPECT_EQ(names(L"(ssget \"X\" '((0 . \"*I*\")))"), L"\"l2 c1 l1 \"");
  EXPECT_EQ(names(L"(ssget \"X\" '((0 . \"LINE,TEXT\")))"), L"\"t1 l2 l1 \"");
  EXPECT_EQ(names(L"(ssget \"X\" '((8 . \"W*\")))"), L"\"c1 \"");
  EXPECT_EQ(names(L"(ssget \"X\" '((1 . \"Door ?\")))"), L"\"t1 \"");
  // An entity without a colour group is BYLAYER (256).
  EXPECT_EQ(names(L"(ssget \"X\" '((0 . \"LINE\") (62 . 256)))"), L"\"l1 \"");
  EXPECT_EQ(names(L"(ssget \"X\" '((62 . 1)))"), L"\"l2 \"");
  EXPECT_EQ(names(L"(ssget \"X\" '((0 . \"ARC\")))"), L"\"none\"");
  EXPECT_EQ(names(L"(ssget \"X\" '((-3 (\"KEL*\"))))"), L"\"t1 \"");
  EXPECT_EQ(names(L"(ssget \"X\" '((-3 (\"OTHER\"))))"), L"\"none\"");
  EXPECT_EQ(names(L"(ssget \"X\" '((-3 (\"KELAPP\") (\"OTHER\"))))"), L"\"none\"");  // both needed
}

TEST_F(SelectionTest, RelationalAndLogicalOperators) {
  EXPECT_EQ(names(L"(ssget \"X\" '((0 . \"CIRCLE\") (-4 . \">\") (40 . 4.0)))"), L"\"c1 \"");
  EXPECT_EQ(names(L"(ssget \"X\" '((0 . \"CIRCLE\") (-4 . \"<\") (40 . 4.0)))"), L"\"none\"");
  EXPECT_EQ(names(L"(ssget \"X\" '((-4 . \"<=\") (40 . 5.0)))"), L"\"t1 c1 \"");
  EXPECT_EQ(names(L"(ssget \"X\" '((-4 . \"!=\") (62 . 256)))"), L"\"l2 \"");
  EXPECT_EQ(names(L"(ssget \"X\" '((-4 . \"&\") (62 . 3)))"), L"\"l2 \"");  // 1 & 3
  EXPECT_EQ(names(L"(ssget \"X\" '((-4 . \"&=\") (62 . 3)))"), L"\"none\"");
  EXPECT_EQ(names(L"(ssget \"X\" '((-4 . \">,=,*\") (11 50.0 100.0 0.0)))"), L"\"l2 \"");
  EXPECT_EQ(names(L"(ssget \"X\" '((-4 . \"<,<,*\") (10 25.0 10.0 0.0)))"), L"\"l2 c1 l1 \"");
  EXPECT_EQ(names(L"(ssget \"X\" '((10 20.0 0.0 0.0)))"), L"\"c1 \"");

  EXPECT_EQ(names(L"(ssget \"X\" '((-4 . \"<OR\") (0 . \"CIRCLE\") (0 . \"TEXT\") (-4 . \"OR>\")))"), L"\"t1 c1 \"");
  EXPECT_EQ(names(L"(ssget \"X\" '((-4 . \"<AND\") (0 . \"LINE\") (62 . 1) (-4 . \"AND>\")))"), L"\"l2 \"");
  EXPECT_EQ(names(L"(ssget \"X\" '((-4 . \"<NOT\") (0 . \"LINE\") (-4 . \"NOT>\")))"), L"\"t1 c1 \"");
  // Lines XOR on layer 0: the circle is neither, the text only the second.
  EXPECT_EQ(names(L"(ssget \"X\" '((-4 . \"<XOR\") (0 . \"LINE\") (8 . \"0\") (-4 . \"XOR>\")))"), L"\"t1 \"");
  EXPECT_EQ(names(L"(ssget \"X\" '((-4 . \"<or\") (-4 . \"<and\") (0 . \"LINE\") (62 . 1) (-4 . \"and>\") "
                  L"(-4 . \"<NOT\") (8 . \"0\") (-4 . \"NOT>\") (-4 . \"or>\")))"),
            L"\"l2 c1 \"");

  // Malformed filters select nothing.
  for (const wchar_t* bad : {L"'((-4 . \"<OR\") (0 . \"LINE\"))", L"'((0 . \"LINE\") (-4 . \"OR>\"))",
                             L"'((-4 . \"<XOR\") (0 . \"LINE\") (-4 . \"XOR>\"))",
                             L"'((-4 . \"<NOT\") (0 . \"LINE\") (8 . \"0\") (-4 . \"NOT>\"))",
                             L"'((-4 . \"~\") (62 . 1))", L"'((-4 . \">\") (0 . \"LINE\"))", L"'((-4 . \">\"))"})
    EXPECT_EQ(eval(std::wstring(L"(ssget \"X\" ") + bad + L")"), L"nil") << bad;
  EXPECT_EQ(eval(L"(ssget \"X\" '((0 . 1)))").rfind(L"error: bad SSGET list value", 0), 0u);
}

TEST_F(SelectionTest, WindowCrossingLastAndPrevious) {
  // The circle spans 15..25 x -5..5; the long line 0..100.
  EXPECT_EQ(names(L"(ssget \"W\" '(-1 -6) '(26 6))"), L"\"c1 l1 \"");
  EXPECT_EQ(names(L"(ssget \"W\" '(26 6) '(-1 -6))"), L"\"c1 l1 \"");  // corners any way round
  EXPECT_EQ(names(L"(ssget \"W\" '(16 -6) '(26 6))"), L"\"none\"");
  // The long line's box reaches into this window but the line passes above it.
  EXPECT_EQ(names(L"(ssget \"C\" '(16 -6) '(26 6))"), L"\"c1 \"");
  EXPECT_EQ(names(L"(ssget \"C\" '(16 -6) '(26 20))"), L"\"l2 c1 \"");
  EXPECT_EQ(names(L"(ssget \"C\" '(16 -6) '(26 6) '((0 . \"CIRCLE\")))"), L"\"c1 \"");
  EXPECT_EQ(names(L"(ssget \"C\" '(200 200) '(300 300))"), L"\"none\"");
  EXPECT_EQ(eval(L"(ssget \"W\" '(0 0))"), L"nil");  // a window needs two corners

  EXPECT_EQ(names(L"(ssget \"L\")"), L"\"t1 \"");
  EXPECT_EQ(names(L"(ssget \"L\" '((0 . \"LINE\")))"), L"\"none\"");
  eval(L"(ssget \"X\" '((0 . \"LINE\")))");
  EXPECT_EQ(names(L"(ssget \"P\")"), L"\"l2 l1 \"");
  EXPECT_EQ(names(L"(ssget \"P\" '((62 . 1)))"), L"\"l2 \"");
  EXPECT_EQ(eval(L"(ssget \"I\")"), L"nil");  // no pick-first set without a user
  ads_name ss;
  EXPECT_EQ(acedSSGet(L"W", nullptr, nullptr, nullptr, ss), RTERROR);
  EXPECT_EQ(acedSSGet(L"Q", nullptr, nullptr, nullptr, ss), RTERROR);
}

}  // namespace
