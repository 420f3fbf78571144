// "Select objects:" and the selection modes: what picks, windows, fences
// and polygons take, the running messages, adding and removing, and the
// sets the editor keeps (Previous, pick-first).
#include <array>

#include "arx/dbdict.h"
#include "arx/dbgroup.h"
#include "editor/picking.h"
#include "editor/region_selection.h"
#include "tests/unit/editor/input_fixture.h"

namespace {

class EditorSelectionTest : public InputTest {
 protected:
  void SetUp() override {
    InputTest::SetUp();
    // h: (0,0)-(10,0); c: circle radius 5 at (20,0); d: (0,0)-(100,100)
    // on layer HIDE; t: text at (30,30).
    ASSERT_EQ(eval(L"(progn (entmake '((0 . \"LAYER\") (100 . \"AcDbSymbolTableRecord\") "
                   L"(100 . \"AcDbLayerTableRecord\") (2 . \"HIDE\") (70 . 0) (62 . 7) (6 . \"Continuous\"))) "
                   L"(setq h (entmakex '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 10.0 0.0 0.0))))"
                   L"(setq c (entmakex '((0 . \"CIRCLE\") (10 20.0 0.0 0.0) (40 . 5.0))))"
                   L"(setq d (entmakex '((0 . \"LINE\") (8 . \"HIDE\") (10 0.0 0.0 0.0) (11 100.0 100.0 0.0))))"
                   L"(setq t1 (entmakex '((0 . \"TEXT\") (10 30.0 30.0 0.0) (40 . 2.5) (1 . \"Door\")))) T)"),
              L"T");
  }
  void hideLayer(bool frozen, bool locked) {
    AcDbLayerTable* table = nullptr;
    ASSERT_EQ(db->getLayerTable(table), Acad::eOk);
    AcDbLayerTableRecord* layer = nullptr;
    const Acad::ErrorStatus es = table->getAt(L"HIDE", layer, AcDb::kForWrite);
    table->close();
    ASSERT_EQ(es, Acad::eOk);
    layer->setIsFrozen(frozen);
    layer->setIsLocked(locked);
    layer->close();
  }
  // The names of the set a selection gives, in order, as "h c d t".
  std::wstring names(const std::wstring& selection) {
    return eval(L"(if (setq ss " + selection +
                L") (progn (setq i 0 o \"\") (repeat (sslength ss) (setq e (ssname ss i) i (1+ i) "
                L"o (strcat o (cond ((eq e h) \"h \") ((eq e c) \"c \") ((eq e d) \"d \") ((eq e t1) \"t \") "
                L"(T \"? \"))))) o) \"none\")");
  }
};

TEST_F(EditorSelectionTest, PicksWindowsAndTheRunningCount) {
  answers({L"5,0", L"20,5", L"20,5", L"W", L"-1,-6", L"26,6", L"R", L"5,0", L"Add", L"25,29", L"45,35", L""});
  EXPECT_EQ(names(L"(ssget)"), L"\"c t \"");
  EXPECT_EQ(out,
            L"\nSelect objects: 5,0\n1 found"
            L"\nSelect objects: 20,5\n1 found, 2 total"
            L"\nSelect objects: 20,5\n1 found (1 duplicate), 2 total"
            L"\nSelect objects: W\nSpecify first corner: -1,-6\nSpecify opposite corner: 26,6"
            L"\n2 found (2 duplicates), 2 total"
            L"\nSelect objects: R\nRemove objects: 5,0\n1 found, 1 removed, 1 total"
            L"\nRemove objects: Add"
            // A pick on nothing opens a window: left to right it takes what it holds.
            L"\nSelect objects: 25,29\nSpecify opposite corner: 45,35\n1 found, 2 total"
            L"\nSelect objects: ");
}

TEST_F(EditorSelectionTest, InvalidAnswersListTheOptions) {
  answers({L"what", L""});
  EXPECT_EQ(names(L"(ssget)"), L"\"none\"");
  EXPECT_EQ(out,
            L"\nSelect objects: what\n*Invalid selection*\nExpects a point or\n"
            L"Window/Last/Crossing/BOX/ALL/Fence/WPolygon/CPolygon/Group/Add/Remove/Multiple/Previous/Undo/AUto/"
            L"SIngle/SUbobject/Object\nSelect objects: ");
  answers({L"5,0"});
  EXPECT_EQ(eval(L"(ssget)"), L"error: Function cancelled");  // the input ended at the prompt
}

TEST_F(EditorSelectionTest, ImpliedWindowDirectionUndoAndSingle) {
  // Right to left is a crossing window: it takes the circle it cuts.
  answers({L"26,-1", L"24,1", L"U", L"ALL", L""});
  EXPECT_EQ(names(L"(ssget)"), L"\"t d c h \"");
  EXPECT_NE(out.find(L"\nSpecify opposite corner: 24,1\n1 found"), std::wstring::npos) << out;
  answers({L"26,-1", L"24,1", L"U", L""});
  EXPECT_EQ(names(L"(ssget)"), L"\"none\"");
  answers({L"SI", L"5,0"});
  EXPECT_EQ(names(L"(ssget)"), L"\"h \"");
  answers({L"60,40", L"70,50", L"L"});  // finding nothing does not end a single selection
  EXPECT_EQ(names(L"(ssget \":S\")"), L"\"t \"");
  answers({L"M", L"5,0", L"20,5", L"5,0", L"", L""});
  EXPECT_EQ(names(L"(ssget)"), L"\"h c \"");
  EXPECT_NE(out.find(L"\nSelect objects: \n2 found"), std::wstring::npos) << out;
}

TEST_F(EditorSelectionTest, FencesAndPolygonsByGeometry) {
  // The fence crosses the short line and the circle, not the text.
  answers({L"F", L"5,-5", L"5,20", L"U", L"5,4", L"25,3", L"", L""});
  EXPECT_EQ(names(L"(ssget)"), L"\"c h \"");
  EXPECT_NE(out.find(L"\nFirst fence point: 5,-5\nSpecify endpoint of line or [Undo]: 5,20"), std::wstring::npos);
  EXPECT_EQ(names(L"(ssget \"F\" '((5 -5) (5 4) (25 3)))"), L"\"c h \"");
  EXPECT_EQ(names(L"(ssget \"F\" '((5 -5) (5 20)))"), L"\"d h \"");
  // A polygon around the circle only; crossing also takes the line it cuts.
  EXPECT_EQ(names(L"(ssget \"WP\" '((14 -6) (26 -6) (26 6) (14 6)))"), L"\"c \"");
  EXPECT_EQ(names(L"(ssget \"CP\" '((8 -6) (26 -6) (26 6) (8 6)))"), L"\"c h \"");
  EXPECT_EQ(names(L"(ssget \"WP\" '((8 -6) (26 -6) (26 6) (8 6)))"), L"\"c \"");
  EXPECT_EQ(names(L"(ssget \"CP\" '((0 0) (1 1)))"), L"\"none\"");  // no polygon
  // A crossing window by geometry: the circle's box reaches in, the circle does not.
  EXPECT_EQ(names(L"(ssget \"C\" '(24 4) '(26 6))"), L"\"none\"");
  EXPECT_EQ(names(L"(ssget \"C\" '(24 -1) '(26 1))"), L"\"c \"");
  EXPECT_EQ(eval(L"(ssget \"F\" '(5 5))"), L"error: bad argument type: 2D/3D point: 5");
}

TEST_F(EditorSelectionTest, HiddenLayersAndOtherSpacesAreNotSelectable) {
  hideLayer(true, false);
  EXPECT_EQ(names(L"(ssget \"C\" '(40 40) '(60 60))"), L"\"none\"");
  EXPECT_EQ(names(L"(ssget '(50 50))"), L"\"none\"");
  EXPECT_EQ(names(L"(ssget \"X\" '((8 . \"HIDE\")))"), L"\"d \"");  // all of the drawing
  hideLayer(false, false);
  EXPECT_EQ(names(L"(ssget '(50 50))"), L"\"d \"");

  // The Previous set still names what is elsewhere; the prompt says so.
  eval(L"(entmake '((0 . \"LINE\") (67 . 1) (10 0.0 0.0 0.0) (11 5.0 5.0 0.0)))");
  EXPECT_EQ(names(L"(ssget \"X\" '((0 . \"LINE\")))"), L"\"? d h \"");
  answers({L"P", L""});
  EXPECT_EQ(names(L"(ssget)"), L"\"d h \"");
  EXPECT_NE(out.find(L"\n3 found\n1 was not in current space."), std::wstring::npos) << out;
}

TEST_F(EditorSelectionTest, FiltersLockedLayersAndPoints) {
  answers({L"ALL", L""});
  EXPECT_EQ(names(L"(ssget '((0 . \"LINE\")))"), L"\"d h \"");
  EXPECT_NE(out.find(L"\n4 found\n2 were filtered out."), std::wstring::npos) << out;

  hideLayer(false, true);
  EXPECT_EQ(names(L"(ssget \"_C\" '(40 40) '(60 60))"), L"\"d \"");
  EXPECT_EQ(names(L"(ssget \"_:L\" '(50 50))"), L"\"none\"");
  // A pick takes the nearest object; ":E" everything within the pick box.
  EXPECT_EQ(names(L"(ssget '(0.5 0.1))"), L"\"h \"");
  EXPECT_EQ(names(L"(ssget \"_:E\" '(0.5 0.1))"), L"\"h d \"");
  EXPECT_EQ(names(L"(ssget \"L\")"), L"\"t \"");
  EXPECT_EQ(eval(L"(ssget \"Q\")"), L"nil");
}

TEST_F(EditorSelectionTest, GroupsByName) {
  AcDbDictionary* groups = nullptr;
  ASSERT_EQ(db->getGroupDictionary(groups, AcDb::kForWrite), Acad::eOk);
  auto* group = new AcDbGroup(L"circle and line");
  AcDbObjectId groupId;
  const Acad::ErrorStatus es = groups->setAt(L"PARTS", group, groupId);
  groups->close();
  ASSERT_EQ(es, Acad::eOk);
  group->append(kelhost::editor::PickIdAt(std::array<double, 3>{5, 0, 0}.data()));
  group->append(kelhost::editor::PickIdAt(std::array<double, 3>{25, 0, 0}.data()));
  group->close();

  answers({L"G", L"nothing", L"G", L"parts", L""});
  EXPECT_EQ(names(L"(ssget)"), L"\"h c \"");
  EXPECT_NE(out.find(L"\nEnter group name: nothing\nGroup \"nothing\" has not been defined."), std::wstring::npos)
      << out;
  EXPECT_NE(out.find(L"\nEnter group name: parts\n2 found"), std::wstring::npos) << out;
}

TEST_F(EditorSelectionTest, PickfirstSet) {
  EXPECT_EQ(eval(L"(ssget \"I\")"), L"nil");
  EXPECT_EQ(eval(L"(ssgetfirst)"), L"(nil nil)");
  EXPECT_EQ(eval(L"(progn (setq ss (ssget \"X\" '((0 . \"LINE\")))) (equal (sssetfirst nil ss) (list nil ss)))"),
            L"T");
  EXPECT_EQ(names(L"(ssget \"_I\")"), L"\"d h \"");
  EXPECT_EQ(names(L"(cadr (ssgetfirst))"), L"\"d h \"");
  resbuf *grips = nullptr, *picked = nullptr;
  ASSERT_EQ(acedSSGetFirst(&grips, &picked), RTNORM);
  EXPECT_EQ(grips, nullptr);
  ASSERT_NE(picked, nullptr);
  Adesk::Int32 n = 0;
  acedSSLength(picked->resval.rlname, &n);
  EXPECT_EQ(n, 2);
  acedSSFree(picked->resval.rlname);
  acutRelRb(picked);
  EXPECT_EQ(acedSSSetFirst(nullptr, nullptr), RTNORM);
  EXPECT_EQ(eval(L"(ssget \"I\")"), L"nil");
  const ads_name bogus = {999999, 0};
  EXPECT_EQ(acedSSSetFirst(bogus, nullptr), RTERROR);
}

TEST_F(EditorSelectionTest, PickBoxFollowsPickbox) {
  const double at[3] = {5, 0.5, 0};  // half a unit off the short line
  setShort(L"PICKBOX", 1);
  const double small = kelhost::editor::PickAperture();
  EXPECT_EQ(kelhost::editor::PickIdAt(at).isNull(), small < 0.5);
  setShort(L"PICKBOX", 50);
  EXPECT_DOUBLE_EQ(kelhost::editor::PickAperture(), 50 * small);
  EXPECT_FALSE(kelhost::editor::PickIdAt(at).isNull());
  setShort(L"PICKBOX", 3);
}

}  // namespace
