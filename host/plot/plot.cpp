// A plot: what is plotted (an area of model space, or a layout), where it
// goes on the sheet, and the file the sheet is written to.
#include "kelhost/plot.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>
#include <cairo.h>

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <memory>
#include <string>

#include "arx/dbdatabase.h"
#include "arx/dbdict.h"
#include "arx/dblayout.h"
#include "arx/dbsymtb.h"
#include "db/active_view.h"
#include "db/database_state.h"
#include "db/drawing_extents.h"
#include "db/header_vars.h"
#include "db/stub.h"
#include "kelhost/paths.h"
#include "kelhost/text.h"
#include "plot/drawing_settings.h"
#include "plot/layout_viewports.h"
#include "plot/painter.h"

namespace kelhost::plot {
namespace {

constexpr double kPointsPerMm = 72.0 / 25.4;
constexpr double kLeastDpi = 10.0, kMostDpi = 2400.0;
constexpr double kMostPixels = 200e6;  // per image: what a PNG may hold in memory

// A rectangle in some plane: x0, y0 lower left, x1, y1 upper right.
struct Box {
  double x0 = 0, y0 = 0, x1 = 0, y1 = 0;
  double width() const { return x1 - x0; }
  double height() const { return y1 - y0; }
};

// What the plot shows, in the coordinates of the space it comes from.
struct Source {
  AcDbObjectId space;
  bool paper = false;
  Box area;
};

bool FindLayoutBlock(AcDbDatabase* db, const std::wstring& name, AcDbObjectId& block) {
  if (EqualNoCase(name, L"Model")) {
    block = db->modelSpaceId();
    return true;
  }
  AcDbDictionary* layouts = nullptr;
  if (db->getLayoutDictionary(layouts, AcDb::kForRead) != Acad::eOk) return false;
  AcDbObjectId id;
  const bool has = layouts->getAt(name.c_str(), id) == Acad::eOk;
  layouts->close();
  const AcDbLayout* layout = has ? db::PeekAs<AcDbLayout>(id) : nullptr;
  if (!layout) return false;
  block = layout->getBlockTableRecordId();
  return !block.isNull();
}

bool NamedView(AcDbDatabase* db, const std::wstring& name, Box& box) {
  AcDbViewTable* table = nullptr;
  if (db->getViewTable(table, AcDb::kForRead) != Acad::eOk) return false;
  AcDbObjectId id;
  const bool has = table->getAt(name.c_str(), id) == Acad::eOk;
  table->close();
  const AcDbViewTableRecord* view = has ? db::PeekAs<AcDbViewTableRecord>(id) : nullptr;
  if (!view || view->isErased()) return false;
  const AcGePoint2d c = view->centerPoint();
  const AcGePoint3d t = view->target();
  box = {t.x + c.x - view->width() / 2, t.y + c.y - view->height() / 2, t.x + c.x + view->width() / 2,
         t.y + c.y + view->height() / 2};
  return true;
}

bool AreaOf(AcDbDatabase* db, const Settings& s, Source& src, std::wstring& error) {
  if (!FindLayoutBlock(db, s.layout, src.space)) {
    error = L"No layout named \"" + s.layout + L"\".";
    return false;
  }
  src.paper = src.space != db->modelSpaceId();
  switch (s.area) {
    case Area::kExtents: {
      AcDbExtents e;
      bool any = db::SpaceExtents(db, src.space, e);
      if (src.paper)  // the viewports count, though the host keeps them as read
        for (const LayoutViewport& vp : ViewportsOf(db, src.space)) {
          e.addPoint(AcGePoint3d(vp.center[0] - vp.width / 2, vp.center[1] - vp.height / 2, 0));
          e.addPoint(AcGePoint3d(vp.center[0] + vp.width / 2, vp.center[1] + vp.height / 2, 0));
          any = true;
        }
      if (!any) {
        error = L"Nothing to plot: the plot area has no extents.";
        return false;
      }
      src.area = {e.minPoint().x, e.minPoint().y, e.maxPoint().x, e.maxPoint().y};
      break;
    }
    case Area::kWindow:
      src.area = {std::fmin(s.window[0], s.window[2]), std::fmin(s.window[1], s.window[3]),
                  std::fmax(s.window[0], s.window[2]), std::fmax(s.window[1], s.window[3])};
      break;
    case Area::kView:
      if (!NamedView(db, s.view, src.area)) {
        error = L"No view named \"" + s.view + L"\".";
        return false;
      }
      break;
    case Area::kLimits: {
      const db::HeaderVarDef* lo = db::FindHeaderVarDef(L"LIMMIN");
      const db::HeaderVarDef* hi = db::FindHeaderVarDef(L"LIMMAX");
      const db::HeaderValue a = db::GetHeaderVar(db->state(), *lo), b = db::GetHeaderVar(db->state(), *hi);
      src.area = {a.point[0], a.point[1], b.point[0], b.point[1]};
      break;
    }
    case Area::kDisplay: {
      const db::ActiveView v = db::GetActiveView(db->state());
      src.area = {v.target.x + v.center.x - v.width / 2, v.target.y + v.center.y - v.height / 2,
                  v.target.x + v.center.x + v.width / 2, v.target.y + v.center.y + v.height / 2};
      break;
    }
    case Area::kLayout:
      break;  // the printable area, worked out with the sheet
  }
  if (s.area != Area::kLayout && !(src.area.width() > 0 && src.area.height() > 0)) {
    // A single point or a line along an axis still plots, centred.
    if (s.area == Area::kExtents && (src.area.width() > 0 || src.area.height() > 0)) {
      const double grow = std::fmax(src.area.width(), src.area.height()) / 2;
      src.area = {src.area.x0 - grow, src.area.y0 - grow, src.area.x1 + grow, src.area.y1 + grow};
    } else {
      error = L"Nothing to plot: the plot area has no size.";
      return false;
    }
  }
  return true;
}

cairo_status_t AppendBytes(void* closure, const unsigned char* data, unsigned int length) {
  static_cast<std::string*>(closure)->append(reinterpret_cast<const char*>(data), length);
  return CAIRO_STATUS_SUCCESS;
}

void NoteSkipped(const std::map<std::wstring, int>& skipped) {
  if (skipped.empty()) return;
  std::wstring list;
  int total = 0;
  for (const auto& [type, count] : skipped) {
    list += (list.empty() ? L"" : L", ") + type + L" " + std::to_wstring(count);
    total += count;
  }
  std::fprintf(stderr, "Plot: %d object%s kept as read not drawn (%s).\n", total, total == 1 ? "" : "s",
               ToUtf8(list).c_str());
}

}  // namespace

bool FormatOfFile(const std::wstring& path, Format& format) {
  const size_t dot = path.find_last_of(L'.');
  const size_t slash = path.find_last_of(L"/\\");
  if (dot == std::wstring::npos || (slash != std::wstring::npos && dot < slash)) return false;
  const std::wstring ext = ToLower(path.substr(dot + 1));
  if (ext == L"pdf") format = Format::kPdf;
  else if (ext == L"svg") format = Format::kSvg;
  else if (ext == L"png") format = Format::kPng;
  else return false;
  return true;
}

bool PlotDrawing(AcDbDatabase* db, const Settings& s, const std::wstring& path, std::wstring& error) {
  try {
    Format format;
    if (!FormatOfFile(path, format)) {
      error = L"Cannot plot to " + path + L": the name must end in .pdf, .svg or .png.";
      return false;
    }
    if (!s.fit && !(s.scale > 0 && std::isfinite(s.scale))) {
      error = L"The plot scale must be greater than zero.";
      return false;
    }
    if (!(s.paperWidth > 0 && s.paperHeight > 0 && s.paperWidth < 1e5 && s.paperHeight < 1e5)) {
      error = L"The paper has no size.";
      return false;
    }
    if (format == Format::kPng && !(s.dpi >= kLeastDpi && s.dpi <= kMostDpi)) {
      error = L"The resolution must be from 10 to 2400 dots per inch.";
      return false;
    }
    // The sheet, as it lies: landscape puts its long side across.
    const double longSide = std::fmax(s.paperWidth, s.paperHeight), shortSide = std::fmin(s.paperWidth, s.paperHeight);
    const double sheetW = s.landscape ? longSide : shortSide, sheetH = s.landscape ? shortSide : longSide;
    const double margin = std::fmax(0.0, s.margin);
    const Box printable{margin, margin, sheetW - margin, sheetH - margin};
    if (!(printable.width() > 0 && printable.height() > 0)) {
      error = L"The margins leave nothing of the paper to plot on.";
      return false;
    }
    Source src;
    if (!AreaOf(db, s, src, error)) return false;
    if (s.area == Area::kLayout) src.area = {0, 0, printable.width(), printable.height()};

    // Drawing units to millimetres on the sheet.
    const double scale =
        s.fit ? std::fmin(printable.width() / src.area.width(), printable.height() / src.area.height()) : s.scale;
    double originX = printable.x0 + s.offset[0], originY = printable.y0 + s.offset[1];
    if (s.area == Area::kLayout) originX = printable.x0, originY = printable.y0;
    else if (s.center) {
      originX = printable.x0 + (printable.width() - src.area.width() * scale) / 2;
      originY = printable.y0 + (printable.height() - src.area.height() * scale) / 2;
    }
    const double perMm = format == Format::kPng ? s.dpi / 25.4 : kPointsPerMm;
    const double deviceW = sheetW * perMm, deviceH = sheetH * perMm;
    // Whole pixels: a size a rounding error above a whole number is that number.
    const int pixelsW = static_cast<int>(std::ceil(deviceW - 1e-6)), pixelsH = static_cast<int>(std::ceil(deviceH - 1e-6));
    if (format == Format::kPng && (static_cast<double>(pixelsW) * pixelsH > kMostPixels)) {
      error = L"The image would be too large at that resolution.";
      return false;
    }
    // Sheet millimetres (y up) to the device (y down); upside down turns
    // the sheet half round.
    Affine sheet;
    sheet.xx = perMm;
    sheet.yy = -perMm;
    sheet.y0 = deviceH;
    if (s.upsideDown) {
      sheet.xx = -perMm;
      sheet.yy = perMm;
      sheet.x0 = deviceW;
      sheet.y0 = 0;
    }
    Affine toSheet;
    toSheet.xx = toSheet.yy = scale;
    toSheet.x0 = originX - src.area.x0 * scale;
    toSheet.y0 = originY - src.area.y0 * scale;
    const Affine spaceToDevice = toSheet.then(sheet);

    std::string bytes;
    cairo_surface_t* surface = nullptr;
    if (format == Format::kPdf) surface = cairo_pdf_surface_create_for_stream(AppendBytes, &bytes, deviceW, deviceH);
    else if (format == Format::kSvg) surface = cairo_svg_surface_create_for_stream(AppendBytes, &bytes, deviceW, deviceH);
    else
      surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, pixelsW, pixelsH);
    std::unique_ptr<cairo_surface_t, void (*)(cairo_surface_t*)> surfaceOwner(surface, cairo_surface_destroy);
    cairo_t* cr = cairo_create(surface);
    std::unique_ptr<cairo_t, void (*)(cairo_t*)> crOwner(cr, cairo_destroy);
    if (cairo_status(cr) != CAIRO_STATUS_SUCCESS) {
      error = L"Cannot make the plot: " + FromUtf8(cairo_status_to_string(cairo_status(cr)));
      return false;
    }
    if (format == Format::kPng) {  // the paper
      cairo_set_source_rgb(cr, 1, 1, 1);
      cairo_paint(cr);
    }
    // Nothing outside the printable area.
    double cx0, cy0, cx1, cy1;
    sheet.apply(printable.x0, printable.y0, cx0, cy0);
    sheet.apply(printable.x1, printable.y1, cx1, cy1);
    cairo_rectangle(cr, std::fmin(cx0, cx1), std::fmin(cy0, cy1), std::fabs(cx1 - cx0), std::fabs(cy1 - cy0));
    cairo_clip(cr);

    PaintOptions options;
    options.monochrome = s.monochrome;
    options.devicePerMm = perMm;
    // A page plots lineweights; an image shows them as the screen does,
    // when the drawing's LWDISPLAY is on.
    options.lineweights = s.lineweights && (format != Format::kPng || DrawingSetting(db, L"LWDISPLAY", 0) != 0);
    // A pixel for an image; a hairline a printer still shows for a page.
    options.thinnest = format == Format::kPng ? 1.0 : 0.25;
    options.pointSize = 0.05 * src.area.height() * scale * perMm;
    Painter painter(cr, db, options);
    if (src.paper) {
      // The viewports' model space first, each within its rectangle, then
      // the paper's own entities over them.
      const bool paperLinetypes = DrawingSetting(db, L"PSLTSCALE", 1) != 0;
      for (const LayoutViewport& vp : ViewportsOf(db, src.space)) {
        const double k = vp.scale(), c = std::cos(vp.twist), sn = std::sin(vp.twist);
        Affine modelToPaper;
        modelToPaper.xx = k * c;
        modelToPaper.xy = k * sn;
        modelToPaper.yx = -k * sn;
        modelToPaper.yy = k * c;
        modelToPaper.x0 = vp.center[0] - k * vp.viewCenter[0] - (modelToPaper.xx * vp.target[0] + modelToPaper.xy * vp.target[1]);
        modelToPaper.y0 = vp.center[1] - k * vp.viewCenter[1] - (modelToPaper.yx * vp.target[0] + modelToPaper.yy * vp.target[1]);
        const Affine modelToDevice = modelToPaper.then(spaceToDevice);
        cairo_save(cr);
        cairo_new_path(cr);
        const double corners[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
        for (int i = 0; i < 4; ++i) {
          double x, y;
          spaceToDevice.apply(vp.center[0] + corners[i][0] * vp.width / 2, vp.center[1] + corners[i][1] * vp.height / 2, x,
                              y);
          if (i == 0) cairo_move_to(cr, x, y);
          else cairo_line_to(cr, x, y);
        }
        cairo_close_path(cr);
        cairo_clip(cr);
        painter.paintSpace(db->modelSpaceId(), modelToDevice, paperLinetypes ? 1.0 / k : 1.0, &vp.frozenLayers);
        cairo_restore(cr);
      }
    }
    painter.paintSpace(src.space, spaceToDevice);
    std::map<std::wstring, int> skipped = painter.skipped();
    if (src.paper) skipped.erase(L"VIEWPORT");  // drawn above
    NoteSkipped(skipped);

    cairo_show_page(cr);
    crOwner.reset();
    cairo_status_t status = CAIRO_STATUS_SUCCESS;
    if (format == Format::kPng) {
      cairo_surface_flush(surface);
      status = cairo_surface_write_to_png_stream(surface, AppendBytes, &bytes);
    } else {
      cairo_surface_finish(surface);
      status = cairo_surface_status(surface);
    }
    surfaceOwner.reset();
    if (status != CAIRO_STATUS_SUCCESS) {
      error = L"Cannot make the plot: " + FromUtf8(cairo_status_to_string(status));
      return false;
    }
    errno = 0;
    if (!WriteFileAtomically(NativePath(path), bytes)) {
      error = L"Cannot write " + path + L": " + WriteErrorText(errno) + L".";
      return false;
    }
    return true;
  } catch (const std::bad_alloc&) {
    error = L"Not enough memory to plot.";
    return false;
  } catch (const std::exception& e) {
    error = L"Cannot plot: " + FromUtf8(e.what());
    return false;
  }
}

}  // namespace kelhost::plot
