// The view variables: their types and read-only flags, the headless
// screen's size and aspect ratio, the view kept in the active viewport
// record (and so in a saved drawing), and acedSetCurrentView.
#include <filesystem>

#include "arx/aced_view.h"
#include "db/database_state.h"
#include "kelhost/drawing_files.h"
#include "kelhost/text.h"
#include "view_fixture.h"

namespace {

class ViewState : public ViewTest {
 protected:
  // The screen rectangle as the module works it out: the view height and
  // the virtual screen's proportions.
  void screenRectangle(AcGePoint3d& lowerLeft, AcGePoint3d& upperRight) {
    const double h = real(L"VIEWSIZE");
    const AcGePoint3d m = point(L"VIEWCTR"), lo = point(L"VSMIN"), hi = point(L"VSMAX");
    const double w = (hi.x - lo.x) / (hi.y - lo.y) * h;
    lowerLeft = AcGePoint3d(m.x - w / 2, m.y - h / 2, 0);
    upperRight = AcGePoint3d(m.x + w / 2, m.y + h / 2, 0);
  }
};

TEST_F(ViewState, NewDrawingViewHasThePlatformTypesAndTheScreenProportions) {
  EXPECT_EQ(var(L"VIEWCTR").restype, RT3DPOINT);
  EXPECT_EQ(var(L"VIEWDIR").restype, RT3DPOINT);
  EXPECT_EQ(var(L"TARGET").restype, RT3DPOINT);
  EXPECT_EQ(var(L"VSMIN").restype, RT3DPOINT);
  EXPECT_EQ(var(L"VIEWSIZE").restype, RTREAL);
  EXPECT_EQ(var(L"VIEWMODE").restype, RTSHORT);
  EXPECT_EQ(var(L"SCREENSIZE").restype, RTPOINT);
  expectView(210, 148.5, 297);
  EXPECT_DOUBLE_EQ(real(L"LENSLENGTH"), 50.0);
  EXPECT_DOUBLE_EQ(point(L"VIEWDIR").z, 1.0);
  EXPECT_DOUBLE_EQ(point(L"SCREENSIZE").x, 1920);
  EXPECT_DOUBLE_EQ(point(L"SCREENSIZE").y, 1080);

  // The virtual screen is the view itself, with the screen's proportions.
  const AcGePoint3d lo = point(L"VSMIN"), hi = point(L"VSMAX");
  EXPECT_NEAR(hi.y - lo.y, 297, 1e-9);
  EXPECT_NEAR((hi.x - lo.x) / (hi.y - lo.y), kAspect, 1e-12);
  EXPECT_NEAR((lo.x + hi.x) / 2, 210, 1e-9);
  AcGePoint3d ll, ur;
  screenRectangle(ll, ur);
  EXPECT_NEAR(ll.x, lo.x, 1e-9);
  EXPECT_NEAR(ur.y, hi.y, 1e-9);

  resbuf p{};
  p.restype = RT3DPOINT;
  for (const wchar_t* name : {L"VSMIN", L"VSMAX", L"SCREENSIZE", L"EXTMIN", L"EXTMAX"}) {
    EXPECT_EQ(acedSetVar(name, &p), RTREJ) << name;
    EXPECT_EQ(kelhost::sysvars::SetHostVar(name, &p), RTREJ) << name;
  }
}

TEST_F(ViewState, ScreenSizeComesFromTheEnvironment) {
  setenv("KELCAD_SCREENSIZE", "800x600", 1);
  EXPECT_DOUBLE_EQ(point(L"SCREENSIZE").x, 800);
  EXPECT_DOUBLE_EQ(point(L"SCREENSIZE").y, 600);
  command(L"\"ZOOM\" \"W\" \"0,0\" \"400,100\"");
  expectView(200, 50, 300);  // 400 wide on a 4:3 screen
  const AcGePoint3d lo = point(L"VSMIN"), hi = point(L"VSMAX");
  EXPECT_NEAR(hi.x - lo.x, 400, 1e-9);

  for (const char* bad : {"800", "800x", "0x600", "800x40000", "800 x 600", "axb"}) {
    setenv("KELCAD_SCREENSIZE", bad, 1);
    EXPECT_DOUBLE_EQ(point(L"SCREENSIZE").x, 1920) << bad;
  }
}

TEST_F(ViewState, TheViewLivesInTheActiveViewportRecordAndIsSavedWithTheDrawing) {
  command(L"\"ZOOM\" \"C\" \"30,40\" \"25\"");
  expectView(30, 40, 25);
  EXPECT_EQ(eval(L"(cdr (assoc 12 (tblsearch \"VPORT\" \"*Active\")))"), L"(30.0 40.0 0.0)");
  EXPECT_EQ(eval(L"(cdr (assoc 40 (tblsearch \"VPORT\" \"*Active\")))"), L"25.0");
  // The record keeps the width through its aspect ratio.
  EXPECT_NEAR(std::stod(eval(L"(cdr (assoc 41 (tblsearch \"VPORT\" \"*Active\")))")), kAspect, 1e-5);

  const auto dir = std::filesystem::temp_directory_path() / ("kelcad_view_" + std::to_string(getpid()));
  std::filesystem::create_directories(dir);
  const std::wstring file = kelhost::FromUtf8((dir / "view.dxf").string());
  ASSERT_EQ(db->saveAs(file.c_str()), Acad::eOk);
  auto reopened = std::make_unique<AcDbDatabase>(false);
  std::wstring error;
  ASSERT_TRUE(kelhost::ReadDrawingFile(reopened.get(), file, error)) << kelhost::ToUtf8(error);
  acdbHostApplicationServices()->setWorkingDatabase(reopened.get());
  db = std::move(reopened);
  std::filesystem::remove_all(dir);
  expectView(30, 40, 25);

  // What the host sets (read-only for applications) lands there too.
  resbuf centre{};
  centre.restype = RT3DPOINT;
  centre.resval.rpoint[0] = 7;
  centre.resval.rpoint[1] = 8;
  ASSERT_EQ(kelhost::sysvars::SetHostVar(L"VIEWCTR", &centre), RTNORM);
  EXPECT_EQ(eval(L"(cdr (assoc 12 (tblsearch \"VPORT\" \"*Active\")))"), L"(7.0 8.0 0.0)");
}

TEST_F(ViewState, ADrawingWithoutAnActiveViewportGetsOneWhenItsViewIsSet) {
  AcDbObjectId active;
  AcDbViewportTable* table = nullptr;
  ASSERT_EQ(db->getViewportTable(table, AcDb::kForRead), Acad::eOk);
  table->getAt(L"*Active", active);
  table->close();
  AcDbObject* record = nullptr;
  ASSERT_EQ(acdbOpenObject(record, active, AcDb::kForWrite), Acad::eOk);
  record->erase();
  record->close();
  expectView(210, 148.5, 297);  // a new drawing's
  command(L"\"ZOOM\" \"C\" \"1,2\" \"3\"");
  expectView(1, 2, 3);
  EXPECT_EQ(eval(L"(cdr (assoc 40 (tblsearch \"VPORT\" \"*Active\")))"), L"3.0");
}

TEST_F(ViewState, ViewPointsAreReportedInTheCurrentUcs) {
  resbuf origin{};
  origin.restype = RT3DPOINT;
  origin.resval.rpoint[0] = 100;
  origin.resval.rpoint[1] = 10;
  ASSERT_EQ(kelhost::sysvars::SetHostVar(L"UCSORG", &origin), RTNORM);
  expectView(110, 138.5, 297);  // the world's (210, 148.5)
  EXPECT_NEAR(point(L"TARGET").x, -100, 1e-9);
  // Points given to ZOOM are in the UCS as well.
  command(L"\"ZOOM\" \"C\" \"0,0\" \"10\"");
  expectView(0, 0, 10);
  EXPECT_EQ(eval(L"(cdr (assoc 12 (tblsearch \"VPORT\" \"*Active\")))"), L"(100.0 10.0 0.0)");
}

TEST_F(ViewState, SetCurrentViewShowsTheRecordWidenedToTheScreen) {
  AcDbViewTableRecord view;
  view.setCenterPoint(AcGePoint2d(50, 60));
  view.setHeight(10);
  view.setWidth(100);  // wider than the screen's proportions allow at that height
  EXPECT_EQ(acedSetCurrentView(&view, nullptr), Acad::eOk);
  expectView(50, 60, 100 / kAspect);

  view.setHeight(40);
  view.setWidth(1);
  view.setViewDirection(AcGeVector3d(0, -1, 1));
  view.setLensLength(35);
  view.setViewTwist(0.25);
  view.setFrontClipEnabled(true);
  view.setFrontClipAtEye(false);
  EXPECT_EQ(acedSetCurrentView(&view, nullptr), Acad::eOk);
  EXPECT_NEAR(real(L"VIEWSIZE"), 40, 1e-12);
  EXPECT_NEAR(point(L"VIEWDIR").y, -1, 1e-12);
  EXPECT_DOUBLE_EQ(real(L"LENSLENGTH"), 35);
  EXPECT_DOUBLE_EQ(real(L"VIEWTWIST"), 0.25);
  EXPECT_EQ(var(L"VIEWMODE").resval.rint, 2 | 16);

  // Refused: no record, a view of no size or direction, a viewport the
  // host does not have. The view stays.
  AcDbViewTableRecord none;
  none.setWidth(0);
  none.setHeight(0);
  EXPECT_EQ(acedSetCurrentView(&none, nullptr), Acad::eInvalidInput);
  EXPECT_EQ(acedSetCurrentView(nullptr, nullptr), Acad::eInvalidInput);
  AcDbViewTableRecord sideways;
  sideways.setViewDirection(AcGeVector3d(0, 0, 0));
  EXPECT_EQ(acedSetCurrentView(&sideways, nullptr), Acad::eInvalidInput);
  EXPECT_EQ(acedSetCurrentView(&view, reinterpret_cast<AcDbViewport*>(&view)), Acad::eInvalidInput);
  EXPECT_NEAR(real(L"VIEWSIZE"), 40, 1e-12);

  // The views it replaced are there for ZOOM Previous.
  command(L"\"ZOOM\" \"P\"");
  expectView(50, 60, 100 / kAspect);
  EXPECT_DOUBLE_EQ(point(L"VIEWDIR").z, 1.0);
  command(L"\"ZOOM\" \"P\"");
  expectView(210, 148.5, 297);
}

}  // namespace
