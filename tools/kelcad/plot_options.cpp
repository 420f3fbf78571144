#include "plot_options.h"

#include <cmath>
#include <cstdlib>
#include <strings.h>

#include "kelhost/text.h"

namespace kelcad_console {
namespace {

bool Number(const std::string& text, double& out) {
  if (text.empty()) return false;
  char* end = nullptr;
  out = std::strtod(text.c_str(), &end);
  return *end == '\0' && std::isfinite(out);
}

bool StartsWith(const std::string& text, const char* prefix, std::string& rest) {
  const size_t n = std::char_traits<char>::length(prefix);
  if (text.size() < n || strncasecmp(text.c_str(), prefix, n) != 0) return false;
  rest = text.substr(n);
  return true;
}

// "1:100" and "1=100" (plotted mm = drawing units) or a plain factor.
bool Scale(const std::string& text, double& scale) {
  const size_t sep = text.find_first_of(":=");
  if (sep == std::string::npos) return Number(text, scale);
  double mm = 0, units = 0;
  if (!Number(text.substr(0, sep), mm) || !Number(text.substr(sep + 1), units)) return false;
  if (units == 0) return false;
  scale = mm / units;
  return true;
}

}  // namespace

bool PlotSettingsOf(const Options& o, kelhost::plot::Settings& s, std::string& error) {
  using kelhost::plot::Area;
  if (!o.plotLayout.empty()) s.layout = kelhost::FromUtf8(o.plotLayout);
  const bool paper = !kelhost::EqualNoCase(s.layout, L"Model");
  s.area = paper ? Area::kLayout : Area::kExtents;
  s.fit = !paper;
  std::string rest;
  if (o.plotArea.empty()) {
  } else if (!strcasecmp(o.plotArea.c_str(), "extents")) {
    s.area = Area::kExtents;
  } else if (!strcasecmp(o.plotArea.c_str(), "display")) {
    s.area = Area::kDisplay;
  } else if (!strcasecmp(o.plotArea.c_str(), "limits") && !paper) {
    s.area = Area::kLimits;
  } else if (!strcasecmp(o.plotArea.c_str(), "layout") && paper) {
    s.area = Area::kLayout;
  } else if (StartsWith(o.plotArea, "view:", rest) && !rest.empty()) {
    s.area = Area::kView;
    s.view = kelhost::FromUtf8(rest);
  } else if (StartsWith(o.plotArea, "window:", rest)) {
    s.area = Area::kWindow;
    double* w = s.window;
    if (std::sscanf(rest.c_str(), "%lf,%lf,%lf,%lf", &w[0], &w[1], &w[2], &w[3]) != 4) {
      error = "--plot-area window: needs two corners, as window:0,0,420,297";
      return false;
    }
  } else {
    error = "--plot-area: not an area: " + o.plotArea;
    return false;
  }
  if (!o.plotScale.empty()) {
    if (!strcasecmp(o.plotScale.c_str(), "fit")) {
      s.fit = true;
    } else if (Scale(o.plotScale, s.scale)) {
      s.fit = false;
      if (!(s.scale > 0)) {
        error = "--plot-scale: the scale must be greater than zero: " + o.plotScale;
        return false;
      }
    } else {
      error = "--plot-scale: not a scale: " + o.plotScale;
      return false;
    }
  }
  if (!o.plotPaper.empty() &&
      !kelhost::plot::PaperSize(kelhost::FromUtf8(o.plotPaper), s.paperWidth, s.paperHeight)) {
    error = "--plot-paper: unknown paper size: " + o.plotPaper;
    return false;
  }
  if (o.plotOrientation.empty() || !strcasecmp(o.plotOrientation.c_str(), "landscape")) {
    s.landscape = true;
  } else if (!strcasecmp(o.plotOrientation.c_str(), "portrait")) {
    s.landscape = false;
  } else {
    error = "--plot-orientation: landscape or portrait, not " + o.plotOrientation;
    return false;
  }
  if (!o.plotDpi.empty() && (!Number(o.plotDpi, s.dpi) || s.dpi < 10 || s.dpi > 2400)) {
    error = "--plot-dpi: from 10 to 2400 dots per inch, not " + o.plotDpi;
    return false;
  }
  if (!o.plotMargin.empty() && (!Number(o.plotMargin, s.margin) || s.margin < 0)) {
    error = "--plot-margin: not a margin in millimetres: " + o.plotMargin;
    return false;
  }
  if (o.plotStyle.empty() || !strcasecmp(o.plotStyle.c_str(), "acad.ctb") || o.plotStyle == ".") {
    s.monochrome = false;
  } else if (!strcasecmp(o.plotStyle.c_str(), "monochrome.ctb")) {
    s.monochrome = true;
  } else {
    error = "--plot-style: acad.ctb or monochrome.ctb, not " + o.plotStyle;
    return false;
  }
  kelhost::plot::Format format;
  if (!kelhost::plot::FormatOfFile(kelhost::FromUtf8(o.plot), format)) {
    error = "--plot: the file's name must end in .pdf, .svg or .png: " + o.plot;
    return false;
  }
  return true;
}

}  // namespace kelcad_console
