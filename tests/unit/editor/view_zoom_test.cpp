// ZOOM and PAN: each option's view on the default 16:9 screen, the
// history ZOOM Previous goes back through, and answers ZOOM refuses.
#include "view_fixture.h"

namespace {

class Zoom : public ViewTest {};

TEST_F(Zoom, WindowFitsTheWholeBoxOnTheScreen) {
  command(L"\"ZOOM\" \"W\" \"0,0\" \"160,90\"");  // just the screen's proportions
  expectView(80, 45, 90);
  command(L"\"ZOOM\" \"10,0\" \"0,100\"");  // corners given at once; tall: the height decides
  expectView(5, 50, 100);
  command(L"\"ZOOM\" '(0 0) '(320 10)");  // wide: the width decides
  expectView(160, 5, 320 / kAspect);
  EXPECT_NE(out.find(L"\nSpecify first corner: 0,0\nSpecify opposite corner: 160,90"), std::wstring::npos);
}

TEST_F(Zoom, CenterTakesAHeightOrAMagnification) {
  command(L"\"ZOOM\" \"C\" \"5,5\" \"20\"");
  expectView(5, 5, 20);
  EXPECT_NE(out.find(L"\nSpecify center point: 5,5\nEnter magnification or height <297.0000>: 20"),
            std::wstring::npos);
  command(L"\"ZOOM\" \"C\" \"7,7\" \"2x\"");
  expectView(7, 7, 10);
  command(L"\"ZOOM\" \"C\" \"\" \"\"");  // Enter keeps the centre and the height
  expectView(7, 7, 10);
  command(L"\"ZOOM\" \"C\" \"1,1\" \"0\" \"-3\" \"huh\" \"4\"");
  expectView(1, 1, 4);
  EXPECT_NE(out.find(L"Value must be positive and nonzero."), std::wstring::npos);
  EXPECT_NE(out.find(L"Requires numeric distance or two points."), std::wstring::npos);
}

TEST_F(Zoom, ScaleIsRelativeToTheViewOrToTheLimits) {
  command(L"\"ZOOM\" \"2x\"");
  expectView(210, 148.5, 148.5);
  command(L"\"ZOOM\" \"S\" \"0.5XP\"");  // in model space XP is X
  expectView(210, 148.5, 297);
  command(L"\"ZOOM\" \"C\" \"0,0\" \"1\"");
  // A bare number: relative to the view of the limits (420 x 297 needs 297).
  command(L"\"ZOOM\" 4");
  expectView(0, 0, 297.0 / 4);
  command(L"\"ZOOM\" \"S\" \"2\"");
  expectView(0, 0, 297.0 / 2);
}

TEST_F(Zoom, ExtentsShowWhatIsDrawnAndTheLimitsOfAnEmptyDrawing) {
  command(L"\"ZOOM\" \"C\" \"0,0\" \"1\"");
  command(L"\"ZOOM\" \"E\"");
  expectView(210, 148.5, 297);

  line(0, 0, 100, 50);
  command(L"\"ZOOM\" \"E\"");
  expectView(50, 25, 100 / kAspect);
  // Objects on a frozen layer are left out; on a layer that is off they count.
  line(0, 0, 0, 400, L"FROZEN");
  setLayer(L"FROZEN", false, true);
  line(-100, 0, 0, 0, L"OFF");
  setLayer(L"OFF", true, false);
  command(L"\"ZOOM\" \"E\"");
  expectView(0, 25, 200 / kAspect);
}

TEST_F(Zoom, AllShowsTheLimitsAndWhateverLiesBeyondThem) {
  command(L"\"ZOOM\" \"A\"");
  expectView(210, 148.5, 297);
  line(0, 0, 1000, 0);
  command(L"\"ZOOM\" \"A\"");
  expectView(500, 148.5, 1000 / kAspect);
}

TEST_F(Zoom, ObjectShowsTheChosenObjects) {
  eval(L"(entmake '((0 . \"CIRCLE\") (10 50.0 60.0 0.0) (40 . 5.0)))");
  eval(L"(setq c (entlast))");
  line(-500, -500, -400, -400);
  command(L"\"ZOOM\" \"O\" c \"\"");
  expectView(50, 60, 10);
}

TEST_F(Zoom, PreviousGoesBackThroughTenViews) {
  command(L"\"ZOOM\" \"P\"");
  EXPECT_NE(out.find(L"\nNo previous view saved."), std::wstring::npos);
  for (int i = 1; i <= 12; ++i) command(L"\"ZOOM\" \"C\" \"" + std::to_wstring(i) + L",0\" 10");
  expectView(12, 0, 10);
  for (int i = 11; i >= 2; --i) {
    command(L"\"ZOOM\" \"P\"");
    expectView(i, 0, 10);
  }
  out.clear();
  command(L"\"ZOOM\" \"P\"");
  EXPECT_NE(out.find(L"\nNo previous view saved."), std::wstring::npos);
  expectView(2, 0, 10);
}

TEST_F(Zoom, PanMovesTheViewAgainstTheDrawing) {
  command(L"\"PAN\" \"0,0\" \"10,5\"");
  expectView(200, 143.5, 297);
  EXPECT_NE(out.find(L"\nSpecify base point or displacement: 0,0\nSpecify second point: 10,5"), std::wstring::npos);
  command(L"\"-PAN\" \"-20,0\" \"\"");  // Enter: the first point was the displacement
  expectView(220, 143.5, 297);
  command(L"\"ZOOM\" \"P\"");
  expectView(200, 143.5, 297);
}

TEST_F(Zoom, RealTimeDynamicAndWrongAnswersLeaveTheView) {
  command(L"\"ZOOM\" \"\"");
  EXPECT_NE(out.find(L"\nSpecify corner of window, enter a scale factor (nX or nXP), or\n"
                     L"[All/Center/Dynamic/Extents/Previous/Scale/Window/Object] <real time>: \n"
                     L"Press ESC or ENTER to exit, or right-click to display shortcut menu."),
            std::wstring::npos);
  command(L"\"-ZOOM\" \"D\"");
  expectView(210, 148.5, 297);
  out.clear();
  command(L"\"ZOOM\" \"nonsense\" \"0x\" \"E\"");
  EXPECT_NE(out.find(L"nonsense\nPoint or option keyword required."), std::wstring::npos);
  EXPECT_NE(out.find(L"0x\nPoint or option keyword required."), std::wstring::npos);
  // ZOOM P undoes only real changes: Dynamic and real time saved none.
  command(L"\"ZOOM\" \"P\"");
  expectView(210, 148.5, 297);
  command(L"\"ZOOM\" \"P\"");
  EXPECT_NE(out.find(L"\nNo previous view saved."), std::wstring::npos);
}

}  // namespace
