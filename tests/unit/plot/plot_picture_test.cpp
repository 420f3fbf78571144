// Plots read back as pictures: a drawing holding every kind of entity the
// host models goes to PNG, and to PDF rasterised by pdftoppm; pixels at
// known places tell whether each thing was drawn where it belongs.
#include <cairo.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "../database/database_fixture.h"
#include "db/database_state.h"
#include "kelhost/plot.h"
#include "kelhost/text.h"
#include "plot_test_support.h"

namespace {

using plot_tests::Image;
using plot_tests::ScratchDir;

// The drawing: millimetres, laid out on a 200 x 120 sheet plotted 1:1.
const wchar_t* const kDrawing[] = {
    L"(setvar \"PDMODE\" 3)",
    L"(setvar \"PDSIZE\" 4.0)",
    L"(entmake '((0 . \"LTYPE\") (100 . \"AcDbSymbolTableRecord\") (100 . \"AcDbLinetypeTableRecord\") (2 . \"DASH10\")"
    L" (70 . 0) (3 . \"__ __\") (72 . 65) (73 . 2) (40 . 10.0) (49 . 5.0) (74 . 0) (49 . -5.0) (74 . 0)))",
    L"(entmake '((0 . \"LAYER\") (100 . \"AcDbSymbolTableRecord\") (100 . \"AcDbLayerTableRecord\") (2 . \"HIDDEN\")"
    L" (70 . 0) (62 . -1) (6 . \"Continuous\")))",
    L"(entmake '((0 . \"LAYER\") (100 . \"AcDbSymbolTableRecord\") (100 . \"AcDbLayerTableRecord\") (2 . \"ICE\")"
    L" (70 . 1) (62 . 1) (6 . \"Continuous\")))",
    L"(entmake '((0 . \"LINE\") (10 10.0 110.0 0.0) (11 60.0 110.0 0.0) (370 . 50)))",
    L"(entmake '((0 . \"CIRCLE\") (10 90.0 100.0 0.0) (40 . 8.0)))",
    L"(entmake '((0 . \"ARC\") (10 120.0 100.0 0.0) (40 . 8.0) (50 . 0.0) (51 . 3.141592653589793)))",
    L"(entmake '((0 . \"ELLIPSE\") (100 . \"AcDbEntity\") (100 . \"AcDbEllipse\") (10 150.0 100.0 0.0)"
    L" (11 12.0 0.0 0.0) (210 0.0 0.0 1.0) (40 . 0.5) (41 . 0.0) (42 . 6.283185307179586)))",
    L"(entmake '((0 . \"SPLINE\") (100 . \"AcDbEntity\") (100 . \"AcDbSpline\") (210 0.0 0.0 1.0) (70 . 8) (71 . 3)"
    L" (72 . 8) (73 . 4) (74 . 0) (40 . 0.0) (40 . 0.0) (40 . 0.0) (40 . 0.0) (40 . 1.0) (40 . 1.0) (40 . 1.0)"
    L" (40 . 1.0) (10 170.0 90.0 0.0) (10 175.0 110.0 0.0) (10 185.0 110.0 0.0) (10 190.0 90.0 0.0)))",
    L"(entmake '((0 . \"LWPOLYLINE\") (100 . \"AcDbEntity\") (100 . \"AcDbPolyline\") (90 . 3) (70 . 0)"
    L" (10 10.0 80.0) (40 . 2.0) (41 . 2.0) (42 . 0.0) (10 40.0 80.0) (42 . 1.0) (10 60.0 80.0)))",
    L"(entmake '((0 . \"POLYLINE\") (66 . 1) (10 0.0 0.0 0.0) (70 . 0)))",
    L"(entmake '((0 . \"VERTEX\") (10 70.0 80.0 0.0) (40 . 4.0) (41 . 0.0)))",
    L"(entmake '((0 . \"VERTEX\") (10 100.0 80.0 0.0)))",
    L"(entmake '((0 . \"SEQEND\")))",
    L"(entmake '((0 . \"POINT\") (10 120.0 80.0 0.0)))",
    L"(entmake '((0 . \"TEXT\") (10 140.0 75.0 0.0) (40 . 5.0) (1 . \"Plot\")))",
    L"(entmake '((0 . \"TEXT\") (10 165.0 75.0 0.0) (40 . 6.0) (1 . \"\u4e2d\u6587\")))",
    L"(entmake '((0 . \"MTEXT\") (100 . \"AcDbEntity\") (100 . \"AcDbMText\") (10 10.0 60.0 0.0) (40 . 3.0)"
    L" (71 . 1) (1 . \"Two\\\\Plines\")))",
    // A block with an attribute, and a block that holds it twice.
    L"(entmake '((0 . \"BLOCK\") (2 . \"TAG\") (70 . 2) (10 0.0 0.0 0.0)))",
    L"(entmake '((0 . \"CIRCLE\") (10 0.0 0.0 0.0) (40 . 3.0)))",
    L"(entmake '((0 . \"ATTDEF\") (10 4.0 0.0 0.0) (40 . 3.0) (1 . \"\") (3 . \"No?\") (2 . \"NO\") (70 . 0)))",
    L"(entmake '((0 . \"ENDBLK\")))",
    L"(entmake '((0 . \"INSERT\") (66 . 1) (2 . \"TAG\") (10 40.0 55.0 0.0)))",
    L"(entmake '((0 . \"ATTRIB\") (10 44.0 55.0 0.0) (40 . 3.0) (1 . \"A1\") (2 . \"NO\") (70 . 0)))",
    L"(entmake '((0 . \"SEQEND\")))",
    L"(entmake '((0 . \"BLOCK\") (2 . \"PAIR\") (70 . 0) (10 0.0 0.0 0.0)))",
    L"(entmake '((0 . \"INSERT\") (2 . \"TAG\") (10 0.0 0.0 0.0)))",
    L"(entmake '((0 . \"INSERT\") (2 . \"TAG\") (10 10.0 0.0 0.0)))",
    L"(entmake '((0 . \"ENDBLK\")))",
    L"(entmake '((0 . \"INSERT\") (2 . \"PAIR\") (10 60.0 45.0 0.0)))",
    // A chain of three dimensions along y = 30.
    L"(foreach x '(10.0 30.0 50.0) (entmake (list '(0 . \"DIMENSION\") '(100 . \"AcDbEntity\")"
    L" '(100 . \"AcDbDimension\") (list 10 (+ x 20.0) 30.0 0.0) '(70 . 32) '(100 . \"AcDbAlignedDimension\")"
    L" (list 13 x 20.0 0.0) (list 14 (+ x 20.0) 20.0 0.0) '(50 . 0.0) '(100 . \"AcDbRotatedDimension\"))))",
    L"(entmake '((0 . \"LINE\") (6 . \"DASH10\") (10 100.0 30.0 0.0) (11 190.0 30.0 0.0) (370 . 50)))",
    L"(entmake '((0 . \"LINE\") (8 . \"HIDDEN\") (10 100.0 20.0 0.0) (11 190.0 20.0 0.0) (370 . 100)))",
    L"(entmake '((0 . \"LINE\") (8 . \"ICE\") (10 100.0 15.0 0.0) (11 190.0 15.0 0.0) (370 . 100)))",
    L"(entmake '((0 . \"LINE\") (62 . 1) (10 100.0 10.0 0.0) (11 190.0 10.0 0.0) (370 . 100)))",
    L"(entmake '((0 . \"LINE\") (62 . 1) (420 . 65280) (10 100.0 5.0 0.0) (11 190.0 5.0 0.0) (370 . 100)))",
};

class PlotPictures : public DrawingTest {
 protected:
  void SetUp() override {
    DrawingTest::SetUp();
    for (const wchar_t* expr : kDrawing) ASSERT_NE(eval(expr), L"nil") << kelhost::ToUtf8(expr);
    setLwdisplay(true);
    settings.area = kelhost::plot::Area::kWindow;
    settings.window[2] = 200;
    settings.window[3] = 120;
    settings.paperWidth = 200;
    settings.paperHeight = 120;
    settings.margin = 0;
    settings.fit = false;
    settings.scale = 1;
    settings.center = false;
    settings.dpi = 254;  // ten pixels to the millimetre
  }

  // LWDISPLAY as a drawing file from the platform carries it.
  void setLwdisplay(bool on) {
    kelhost::db::HeaderValue v;
    v.type = RTSHORT;
    v.code = 290;
    v.integer = on ? 1 : 0;
    db->state().headerVars[L"LWDISPLAY"] = v;
  }

  Image plotPng(const std::string& name) {
    const std::string path = scratch.file(name);
    std::wstring error;
    EXPECT_TRUE(kelhost::plot::PlotDrawing(db.get(), settings, kelhost::FromUtf8(path), error))
        << kelhost::ToUtf8(error);
    return Image(path);
  }

  kelhost::plot::Settings settings;
  ScratchDir scratch;
};

// What every rendering of the drawing must show, at ten pixels to the
// millimetre.
void CheckDrawing(const Image& im, bool lineweights) {
  ASSERT_TRUE(im.ok());
  // pdftoppm may round the page up to the next whole pixel.
  ASSERT_NEAR(im.width(), 2000, 1);
  ASSERT_NEAR(im.height(), 1200, 1);
  auto ink = [&](double x, double y) { return im.inkNear(x * 10, (120 - y) * 10, 2); };
  EXPECT_TRUE(ink(35, 110)) << "line";
  EXPECT_FALSE(ink(35, 112)) << "nothing beside the line";
  EXPECT_TRUE(ink(98, 100)) << "circle";
  EXPECT_FALSE(ink(90, 100)) << "the circle's hole";
  EXPECT_TRUE(ink(120, 108)) << "arc";
  EXPECT_FALSE(ink(120, 92)) << "the arc's missing half";
  EXPECT_TRUE(ink(162, 100)) << "ellipse, end of the major axis";
  EXPECT_TRUE(ink(150, 106)) << "ellipse, end of the minor axis";
  EXPECT_FALSE(ink(150, 100)) << "the ellipse's hole";
  EXPECT_TRUE(ink(190, 90)) << "spline";
  EXPECT_TRUE(ink(180, 105)) << "spline's top";
  EXPECT_FALSE(ink(180, 95)) << "under the spline";
  EXPECT_TRUE(im.inkAt(250, 392)) << "wide polyline band, off its centre line";
  EXPECT_TRUE(ink(50, 70)) << "polyline arc segment";
  EXPECT_FALSE(ink(50, 76)) << "inside the polyline arc";
  EXPECT_TRUE(im.inkAt(720, 385)) << "heavy polyline's wide start";
  EXPECT_FALSE(im.inkAt(990, 385)) << "heavy polyline's narrow end";
  EXPECT_TRUE(ink(121.2, 81.2)) << "point drawn as an X";
  EXPECT_FALSE(ink(120, 81.8)) << "the X has no upright";
  // Text: ink inside the box it measures, none around it.
  EXPECT_GT(im.inkCount(1400, 1200 - 800, 1560, 1200 - 750), 300) << "Latin text";
  EXPECT_EQ(im.inkCount(1380, 1200 - 745, 1600, 1200 - 735), 0) << "below the Latin text";
  EXPECT_GT(im.inkCount(1650, 1200 - 810, 1780, 1200 - 750), 600) << "Chinese text";
  // Ideographs reach a little below the baseline, as their fonts draw them.
  EXPECT_EQ(im.inkCount(1640, 1200 - 728, 1790, 1200 - 720), 0) << "below the Chinese text";
  EXPECT_GT(im.inkCount(100, 1200 - 600, 250, 1200 - 570), 100) << "mtext first line";
  EXPECT_GT(im.inkCount(100, 1200 - 555, 250, 1200 - 520), 100) << "mtext second line";
  // The block, its attribute, and the nested block's two copies.
  EXPECT_TRUE(ink(43, 55)) << "block's circle";
  EXPECT_GT(im.inkCount(440, 1200 - 585, 500, 1200 - 550), 50) << "attribute value";
  EXPECT_TRUE(ink(63, 45)) << "nested block, first copy";
  EXPECT_TRUE(ink(73, 45)) << "nested block, second copy";
  EXPECT_FALSE(ink(68, 45)) << "between the copies";
  // The dimension chain.
  for (double x : {20.0, 40.0, 60.0}) EXPECT_TRUE(ink(x, 30)) << "dimension line at " << x;
  EXPECT_TRUE(ink(30, 25)) << "shared extension line";
  EXPECT_FALSE(ink(29, 21)) << "definition points do not plot";
  EXPECT_GT(im.inkCount(150, 1200 - 345, 250, 1200 - 305), 30) << "dimension text";
  // The dashed line: dashes of five, gaps of five.
  for (int k = 0; k < 8; ++k) {
    EXPECT_TRUE(ink(102.5 + 10 * k, 30)) << "dash " << k;
    EXPECT_FALSE(ink(107.5 + 10 * k, 30)) << "gap " << k;
  }
  EXPECT_FALSE(ink(150, 20)) << "layer off";
  EXPECT_FALSE(ink(150, 15)) << "layer frozen";
  // Colours.
  EXPECT_EQ(im.rgbAt(1500, 1100), 0xFF0000u) << "colour 1";
  EXPECT_EQ(im.rgbAt(1500, 1150), 0x00FF00u) << "true colour";
  // Lineweight 1.00 mm is ten pixels wide when plotted.
  EXPECT_EQ(im.inkAt(1500, 1104), lineweights) << "lineweight";
}

TEST_F(PlotPictures, PngShowsEveryKindOfEntity) { CheckDrawing(plotPng("all.png"), true); }

TEST_F(PlotPictures, PdfRasterisedShowsTheSame) {
  const std::string pdf = scratch.file("all.pdf");
  std::wstring error;
  ASSERT_TRUE(kelhost::plot::PlotDrawing(db.get(), settings, kelhost::FromUtf8(pdf), error)) << kelhost::ToUtf8(error);
  CheckDrawing(plot_tests::Rasterise(pdf, 254), true);
}

TEST_F(PlotPictures, SvgIsWritten) {
  const std::string svg = scratch.file("all.svg");
  std::wstring error;
  ASSERT_TRUE(kelhost::plot::PlotDrawing(db.get(), settings, kelhost::FromUtf8(svg), error)) << kelhost::ToUtf8(error);
  std::string text;
  ASSERT_TRUE(plot_tests::ReadFile(svg, text));
  EXPECT_NE(text.find("<svg"), std::string::npos);
  EXPECT_NE(text.find("width=\"566.929"), std::string::npos) << "200 mm in points";
  EXPECT_NE(text.find("rgb(100%,0%,0%)"), std::string::npos) << "the red line";
}

TEST_F(PlotPictures, MonochromeAndThinLines) {
  settings.monochrome = true;
  settings.lineweights = false;
  const Image im = plotPng("mono.png");
  // One pixel wide between two rows of pixels: grey, but no colour.
  for (int row : {1100, 1150}) {
    const std::uint32_t v = im.rgbAt(1500, row);
    EXPECT_TRUE(im.inkAt(1500, row)) << row;
    EXPECT_TRUE((v >> 16) == ((v >> 8) & 255) && (v & 255) == ((v >> 8) & 255)) << std::hex << v;
  }
  EXPECT_FALSE(im.inkAt(1500, 1104)) << "without lineweights every line is one pixel";
}

// An image shows lineweights as the screen does; a page always plots them.
TEST_F(PlotPictures, LwdisplayOffThinsImagesOnly) {
  setLwdisplay(false);
  EXPECT_FALSE(plotPng("thin.png").inkAt(1500, 1104));
  const std::string pdf = scratch.file("thick.pdf");
  std::wstring error;
  ASSERT_TRUE(kelhost::plot::PlotDrawing(db.get(), settings, kelhost::FromUtf8(pdf), error));
  EXPECT_TRUE(plot_tests::Rasterise(pdf, 254).inkAt(1500, 1104));
}

// A plot that cannot be made says why and leaves no file.
TEST_F(PlotPictures, BadRequestsLeaveNoFile) {
  const std::string out = scratch.file("bad.png");
  std::wstring error;
  kelhost::plot::Settings s = settings;
  s.fit = false;
  s.scale = 0;
  EXPECT_FALSE(kelhost::plot::PlotDrawing(db.get(), s, kelhost::FromUtf8(out), error));
  EXPECT_EQ(error, L"The plot scale must be greater than zero.");
  s = settings;
  s.dpi = 100000;
  EXPECT_FALSE(kelhost::plot::PlotDrawing(db.get(), s, kelhost::FromUtf8(out), error));
  EXPECT_EQ(error, L"The resolution must be from 10 to 2400 dots per inch.");
  s = settings;
  s.window[2] = 0;
  EXPECT_FALSE(kelhost::plot::PlotDrawing(db.get(), s, kelhost::FromUtf8(out), error));
  EXPECT_EQ(error, L"Nothing to plot: the plot area has no size.");
  s = settings;
  s.area = kelhost::plot::Area::kView;
  s.view = L"NOSUCH";
  EXPECT_FALSE(kelhost::plot::PlotDrawing(db.get(), s, kelhost::FromUtf8(out), error));
  EXPECT_EQ(error, L"No view named \"NOSUCH\".");
  EXPECT_FALSE(kelhost::plot::PlotDrawing(db.get(), settings, L"/nonexistent-dir/x.png", error));
  EXPECT_EQ(error, L"Cannot write /nonexistent-dir/x.png: the folder does not exist.");
  EXPECT_FALSE(kelhost::plot::PlotDrawing(db.get(), settings, kelhost::FromUtf8(scratch.file("x.bmp")), error));
  EXPECT_EQ(access(out.c_str(), F_OK), -1) << "no partial file";

  // An empty drawing has no extents.
  AcDbDatabase empty;
  s = kelhost::plot::Settings();
  EXPECT_FALSE(kelhost::plot::PlotDrawing(&empty, s, kelhost::FromUtf8(out), error));
  EXPECT_EQ(error, L"Nothing to plot: the plot area has no extents.");
  EXPECT_EQ(access(out.c_str(), F_OK), -1);
}

TEST(PlotPapers, NamesAndSizes) {
  double w = 0, h = 0;
  EXPECT_TRUE(kelhost::plot::PaperSize(L"a3", w, h));
  EXPECT_EQ(w, 420);
  EXPECT_EQ(h, 297);
  EXPECT_TRUE(kelhost::plot::PaperSize(L"ISO full bleed A0 (1189.00 x 841.00 MM)", w, h));
  EXPECT_EQ(w, 1189);
  EXPECT_TRUE(kelhost::plot::PaperSize(L"ISO_A4_(297.00_x_210.00_MM)", w, h));
  EXPECT_EQ(h, 210);
  EXPECT_TRUE(kelhost::plot::PaperSize(L"500x250", w, h));
  EXPECT_EQ(w, 500);
  EXPECT_EQ(h, 250);
  EXPECT_FALSE(kelhost::plot::PaperSize(L"B7", w, h));
  EXPECT_FALSE(kelhost::plot::PaperSize(L"0x100", w, h));
  EXPECT_FALSE(kelhost::plot::PaperSize(L"A3 please", w, h));
}

}  // namespace
