// ZoomE and the command KELZZ: a ZOOM window 3% of the extents' diagonal
// larger on each side, in user coordinates; ZOOM Extents for an empty
// drawing; command echo off meanwhile and put back.
#include <gtest/gtest.h>

#include "command_recorder.h"
#include "editor_module_fixture.h"
#include "kelcad/kelcad.h"

namespace {

class ZoomExtents : public EditorModuleTest {
 protected:
  // The window's corners as ZOOM received them.
  void ExpectWindow(double x1, double y1, double x2, double y2) {
    ASSERT_EQ(recorder.calls().size(), 1u);
    const RecordedCommand& zoom = recorder.calls()[0];
    EXPECT_EQ(zoom.cmdecho, 0);
    ASSERT_EQ(zoom.answers.size(), 3u) << kelhost::ToUtf8(zoom.line);
    EXPECT_EQ(zoom.answers[0].text, L"W");
    const double want[2][3] = {{x1, y1, 0.0}, {x2, y2, 0.0}};
    for (int c = 0; c < 2; ++c) {
      ASSERT_EQ(zoom.answers[1 + c].kind, kelhost::editor::Token::kPoint);
      for (int i = 0; i < 3; ++i) EXPECT_NEAR(zoom.answers[1 + c].value[i], want[c][i], 1e-9) << c << i;
    }
  }
  CommandRecorder recorder{{L"ZOOM"}};
};

TEST_F(ZoomExtents, AnEmptyDrawingZoomsToItsExtentsAndEchoComesBack) {
  KEL::ZoomE();
  EXPECT_EQ(recorder.lines(), std::vector<std::wstring>{L"ZOOM E"});
  EXPECT_EQ(recorder.calls()[0].cmdecho, 0);
  EXPECT_EQ(Var(L"CMDECHO"), L"1");
}

TEST_F(ZoomExtents, TheWindowHasAThreePercentMarginAtZeroElevationInUserCoordinates) {
  // The drawing's extents are kept exact: one line spans them.
  Eval(L"(entmake '((0 . \"LINE\") (10 0.0 0.0 5.0) (11 100.0 50.0 7.0)))");
  KEL::ZoomE();
  // 3% of the diagonal along the diagonal: 3 across, 1.5 up.
  ExpectWindow(-3.0, -1.5, 103.0, 51.5);
  recorder.clear();
  HostVar(L"UCSORG", 100.0, 200.0, 0.0);
  KEL::ZoomE();
  ExpectWindow(-103.0, -201.5, 3.0, -148.5);
}

TEST_F(ZoomExtents, TheKelzzCommandZooms) {
  ASSERT_TRUE(LoadModule());
  Eval(L"(entmake '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 100.0 0.0 0.0)))");
  EXPECT_TRUE(kelhost::Host::instance().runCommand(L"KELZZ"));
  ExpectWindow(-3.0, 0.0, 103.0, 0.0);
}

}  // namespace
