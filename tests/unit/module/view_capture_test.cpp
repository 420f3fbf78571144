// CCadView: the current view read from the view variables, the forms that
// set it (mode 0 leaving a view that already shows the box alone), and the
// object that shows a box for its lifetime and always puts the view back.
#include <gtest/gtest.h>

#include "editor_module_fixture.h"
#include "kelcad/kelcad.h"

namespace {

class ViewCapture : public EditorModuleTest {
 protected:
  void SetUp() override {
    EditorModuleTest::SetUp();
    // A known view to start from: centre (100, 50), 80 high.
    AcDbViewTableRecord start;
    start.setCenterPoint(AcGePoint2d(100, 50));
    start.setHeight(80);
    start.setWidth(80);
    ASSERT_EQ(acedSetCurrentView(&start, nullptr), Acad::eOk);
    CCadView::GetCurrentView(now);
  }
  static double Size() {
    resbuf rb{};
    return acedGetVar(L"VIEWSIZE", &rb) == RTNORM ? rb.resval.rreal : -1.0;
  }
  AcGePoint2d Center() {
    AcDbViewTableRecord view;
    CCadView::GetCurrentView(view);
    return view.centerPoint();
  }

  AcDbViewTableRecord now;  // the view after SetUp
};

TEST_F(ViewCapture, TheCurrentViewComesFromTheViewVariables) {
  EXPECT_EQ(now.centerPoint(), AcGePoint2d(100, 50));
  EXPECT_DOUBLE_EQ(now.height(), 80.0);
  // The width follows the screen's shape, whatever was asked for.
  resbuf low{}, high{};
  ASSERT_EQ(acedGetVar(L"VSMIN", &low), RTNORM);
  ASSERT_EQ(acedGetVar(L"VSMAX", &high), RTNORM);
  const double aspect = (high.resval.rpoint[0] - low.resval.rpoint[0]) / (high.resval.rpoint[1] - low.resval.rpoint[1]);
  EXPECT_NEAR(now.width(), 80.0 * aspect, 1e-9);
  EXPECT_EQ(now.viewDirection(), AcGeVector3d(0, 0, 1));
  EXPECT_FALSE(now.perspectiveEnabled());
  EXPECT_TRUE(now.frontClipAtEye());

  // A user coordinate system moved and turned: the centre stays in display
  // coordinates, the target and direction in world ones.
  HostVar(L"UCSORG", 10.0, 20.0, 0.0);
  HostVar(L"UCSXDIR", 0.0, 1.0, 0.0);
  HostVar(L"UCSYDIR", -1.0, 0.0, 0.0);
  AcDbViewTableRecord turned;
  CCadView::GetCurrentView(turned);
  EXPECT_NEAR(turned.centerPoint().x, 100.0, 1e-9);
  EXPECT_NEAR(turned.centerPoint().y, 50.0, 1e-9);
  EXPECT_NEAR(turned.viewDirection().z, 1.0, 1e-12);
  EXPECT_NEAR(turned.target().distanceTo(now.target()), 0.0, 1e-9);
}

TEST_F(ViewCapture, ModeZeroLeavesAViewThatAlreadyShowsTheBox) {
  // Exactly as large as the view and centred on it.
  AcDbViewTableRecord same;
  same.setCenterPoint(now.centerPoint());
  same.setHeight(now.height());
  same.setWidth(now.width());
  EXPECT_EQ(CCadView::SetCurrentView(same, 0, nullptr), 1);
  EXPECT_DOUBLE_EQ(Size(), 80.0);
  // A small box inside: left alone with mode 0, shown with mode 1.
  EXPECT_EQ(CCadView::SetCurrentView(AcGePoint2d(90, 40), AcGePoint2d(110, 60), 0, nullptr), 1);
  EXPECT_DOUBLE_EQ(Size(), 80.0);
  EXPECT_EQ(CCadView::SetCurrentView(AcGePoint3d(110, 60, 7), AcGePoint3d(90, 40, -3), 1, nullptr), 1);
  EXPECT_DOUBLE_EQ(Size(), 20.0);
  EXPECT_EQ(Center(), AcGePoint2d(100, 50));

  // A hair larger than the view, or off its centre by a hair: shown.
  CCadView::GetCurrentView(now);
  AcDbViewTableRecord taller;
  taller.setCenterPoint(now.centerPoint());
  taller.setHeight(now.height() + 1e-9);
  taller.setWidth(now.width());
  EXPECT_EQ(CCadView::SetCurrentView(taller, 0, nullptr), 1);
  EXPECT_NEAR(Size(), 20.0 + 1e-9, 1e-12);
  CCadView::GetCurrentView(now);
  AcDbViewTableRecord shifted;
  shifted.setCenterPoint(AcGePoint2d(now.centerPoint().x + 1e-6, now.centerPoint().y));
  shifted.setHeight(now.height());
  shifted.setWidth(now.width());
  EXPECT_EQ(CCadView::SetCurrentView(shifted, 0, nullptr), 1);
  EXPECT_NEAR(Center().x, 100.0 + 1e-6, 1e-9);

  // An extents box seen from above.
  EXPECT_EQ(CCadView::SetCurrentView(AcDbExtents(AcGePoint3d(0, 0, -5), AcGePoint3d(40, 300, 5)), 0, nullptr), 1);
  EXPECT_DOUBLE_EQ(Size(), 300.0);
  EXPECT_EQ(Center(), AcGePoint2d(20, 150));
}

TEST_F(ViewCapture, AViewOfNoSizeIsHandedOnAndTheEditorRefusesIt) {
  // Two identical corners outside the view: width and height 0.
  EXPECT_EQ(CCadView::SetCurrentView(AcGePoint3d(500, 500, 0), AcGePoint3d(500, 500, 0), 0, nullptr), 0);
  EXPECT_EQ(CCadView::SetCurrentView(AcGePoint2d(500, 500), AcGePoint2d(500, 500), 1, nullptr), 0);
  EXPECT_DOUBLE_EQ(Size(), 80.0);
  // Inside the view, mode 0 needs no change at all.
  EXPECT_EQ(CCadView::SetCurrentView(AcGePoint2d(100, 50), AcGePoint2d(100, 50), 0, nullptr), 1);
}

TEST_F(ViewCapture, TheObjectShowsItsBoxAndAlwaysPutsTheViewBack) {
  {
    CCadView view(AcGePoint3d(0, 0, 0), AcGePoint3d(100, 200, 0), 0, nullptr);
    EXPECT_DOUBLE_EQ(Size(), 200.0);
    EXPECT_EQ(view.centerPoint(), AcGePoint2d(100, 50)) << "the view captured before";
    EXPECT_DOUBLE_EQ(view.height(), 80.0);
  }
  EXPECT_DOUBLE_EQ(Size(), 80.0);
  EXPECT_EQ(Center(), AcGePoint2d(100, 50));

  // A box already on screen: nothing changes, and the restore shows the
  // same view again.
  {
    CCadView inside(AcDbExtents(AcGePoint3d(95, 45, 0), AcGePoint3d(105, 55, 0)), 0, nullptr);
    EXPECT_DOUBLE_EQ(Size(), 80.0);
  }
  EXPECT_DOUBLE_EQ(Size(), 80.0);

  // Restored when an exception passes, too.
  try {
    AcDbViewTableRecord far;
    far.setCenterPoint(AcGePoint2d(1000, 1000));
    far.setHeight(10);
    far.setWidth(10);
    CCadView view(far, 1, nullptr);
    EXPECT_DOUBLE_EQ(Size(), 10.0);
    throw 1;
  } catch (int) {
  }
  EXPECT_DOUBLE_EQ(Size(), 80.0);
  EXPECT_EQ(Center(), AcGePoint2d(100, 50));
}

TEST_F(ViewCapture, ACopyKeepsTheCapturedViewWithoutCapturingAgain) {
  CCadView first(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 10, 0), 1, nullptr);
  EXPECT_DOUBLE_EQ(Size(), 10.0);
  {
    CCadView copy(first);
    EXPECT_DOUBLE_EQ(copy.height(), 80.0) << "the first object's capture, not the view on screen";
    EXPECT_EQ(copy.centerPoint(), AcGePoint2d(100, 50));
    CCadView other(AcGePoint3d(0, 0, 0), AcGePoint3d(30, 30, 0), 1, nullptr);
    EXPECT_DOUBLE_EQ(other.height(), 10.0) << "its own capture";
    other = first;
    EXPECT_DOUBLE_EQ(other.height(), 80.0);
    CCadView::SetCurrentView(AcGePoint2d(0, 0), AcGePoint2d(50, 50), 1, nullptr);
  }
  // The copies put the first capture back as they went.
  EXPECT_DOUBLE_EQ(Size(), 80.0);
}

}  // namespace
