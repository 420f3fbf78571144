// A paper space layout with two viewports at different scales, plotted to
// an A3 PDF: each viewport shows model space at its own scale, and only
// within its rectangle.
#include <string>

#include "../database/database_fixture.h"
#include "dxf/kept_object.h"
#include "kelhost/plot.h"
#include "kelhost/text.h"
#include "plot_test_support.h"

namespace {

using kelhost::dxf::KeptData;
using kelhost::dxf::RawGroup;

// A VIEWPORT as a drawing file gives it: centre and size on the paper,
// and the model-space view it shows (its centre and height).
void AddViewport(AcDbDatabase* db, int number, double cx, double cy, double w, double h, double viewX, double viewY,
                 double viewHeight) {
  auto text = [](double v) { return std::to_string(v); };
  KeptData data;
  data.type = L"VIEWPORT";
  data.body = {{100, "AcDbViewport"}, {10, text(cx)},         {20, text(cy)},         {30, "0.0"},
               {40, text(w)},         {41, text(h)},          {68, "1"},              {69, std::to_string(number)},
               {12, text(viewX)},     {22, text(viewY)},      {17, "0.0"},            {27, "0.0"},
               {37, "0.0"},           {45, text(viewHeight)}, {51, "0.0"},            {90, "32864"}};
  auto* vp = new kelhost::dxf::KeptEntity(data);
  AcDbBlockTableRecord* paper = nullptr;
  ASSERT_EQ(acdbOpenObject(paper, db->paperSpaceId(), AcDb::kForWrite), Acad::eOk);
  AcDbObjectId id;
  ASSERT_EQ(paper->appendAcDbEntity(id, vp), Acad::eOk);
  vp->close();
  paper->close();
}

class PlotLayout : public DrawingTest {};

TEST_F(PlotLayout, TwoViewportsAtTheirScalesClipped) {
  // Model space: two long lines crossing at (50, 50), and a short upright
  // at x = 90, all one millimetre wide.
  for (const wchar_t* expr :
       {L"(entmake '((0 . \"LINE\") (10 -1000.0 50.0 0.0) (11 1000.0 50.0 0.0) (370 . 100)))",
        L"(entmake '((0 . \"LINE\") (10 50.0 -1000.0 0.0) (11 50.0 1000.0 0.0) (370 . 100)))",
        L"(entmake '((0 . \"LINE\") (10 90.0 55.0 0.0) (11 90.0 100.0 0.0) (370 . 100)))"})
    ASSERT_NE(eval(expr), L"nil");
  // The paper's own viewport, then one at 1:1 and one at 1:2, both
  // centred on (50, 50).
  AddViewport(db.get(), 1, 210, 148.5, 500, 350, 210, 148.5, 350);
  AddViewport(db.get(), 2, 110, 150, 160, 120, 50, 50, 120);
  AddViewport(db.get(), 3, 310, 150, 160, 120, 50, 50, 240);
  // A frame on the paper itself.
  ASSERT_NE(eval(L"(entmake '((0 . \"LINE\") (67 . 1) (10 10.0 20.0 0.0) (11 410.0 20.0 0.0) (370 . 100)))"), L"nil");

  kelhost::plot::Settings s;
  s.layout = L"Layout1";
  s.area = kelhost::plot::Area::kLayout;
  s.paperWidth = 420;
  s.paperHeight = 297;
  s.margin = 0;
  s.fit = false;
  s.scale = 1;
  plot_tests::ScratchDir scratch;
  const std::string pdf = scratch.file("layout.pdf");
  std::wstring error;
  ASSERT_TRUE(kelhost::plot::PlotDrawing(db.get(), s, kelhost::FromUtf8(pdf), error)) << kelhost::ToUtf8(error);
  // 127 dots per inch: five to the millimetre.
  const plot_tests::Image im = plot_tests::Rasterise(pdf, 127);
  ASSERT_TRUE(im.ok());
  EXPECT_NEAR(im.width(), 2100, 1);
  EXPECT_NEAR(im.height(), 1485, 1);
  auto ink = [&](double x, double y) { return im.inkNear(x * 5, (297 - y) * 5, 2); };
  EXPECT_TRUE(ink(200, 20)) << "the paper's own line";
  // Left viewport, 1:1: the crossing at its centre, the upright 40 to the right.
  EXPECT_TRUE(ink(60, 150));
  EXPECT_TRUE(ink(110, 190));
  EXPECT_TRUE(ink(150, 170)) << "upright at 1:1";
  // Right viewport, 1:2: the upright 20 to the right, not 40.
  EXPECT_TRUE(ink(260, 150));
  EXPECT_TRUE(ink(310, 110));
  EXPECT_TRUE(ink(330, 165)) << "upright at 1:2";
  EXPECT_FALSE(ink(350, 170)) << "nothing where 1:1 would put it";
  // Clipped: the long lines stop at the viewports' edges.
  EXPECT_FALSE(ink(20, 150)) << "left of the left viewport";
  EXPECT_FALSE(ink(210, 150)) << "between the viewports";
  EXPECT_FALSE(ink(400, 150)) << "right of the right viewport";
  EXPECT_FALSE(ink(110, 230)) << "above the left viewport";
  EXPECT_FALSE(ink(310, 70)) << "below the right viewport";
}

}  // namespace

namespace {

// Entities the host keeps as read are left out, with one note for all.
TEST_F(PlotLayout, KeptEntitiesAreNotedOnce) {
  ASSERT_NE(eval(L"(entmake '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 10.0 10.0 0.0)))"), L"nil");
  for (int i = 0; i < 2; ++i) {
    KeptData data;
    data.type = L"HATCH";
    AcDbBlockTableRecord* model = nullptr;
    ASSERT_EQ(acdbOpenObject(model, db->modelSpaceId(), AcDb::kForWrite), Acad::eOk);
    auto* hatch = new kelhost::dxf::KeptEntity(data);
    AcDbObjectId id;
    ASSERT_EQ(model->appendAcDbEntity(id, hatch), Acad::eOk);
    hatch->close();
    model->close();
  }
  plot_tests::ScratchDir scratch;
  std::wstring error;
  testing::internal::CaptureStderr();
  const bool ok = kelhost::plot::PlotDrawing(db.get(), kelhost::plot::Settings(),
                                             kelhost::FromUtf8(scratch.file("kept.svg")), error);
  const std::string said = testing::internal::GetCapturedStderr();
  ASSERT_TRUE(ok) << kelhost::ToUtf8(error);
  EXPECT_EQ(said, "Plot: 2 objects kept as read not drawn (HATCH 2).\n");
}

}  // namespace
