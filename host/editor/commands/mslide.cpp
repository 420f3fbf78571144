// MSLIDE: a slide file of what the view shows (editor/slide_picture.h),
// drawn on the headless screen and written atomically. The name is always
// asked on the command line; Enter takes the drawing's name, next to the
// drawing; a name without an extension gets ".sld".
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

#include "arx/acedads.h"
#include "arx/acutads.h"
#include "editor/builtin_commands.h"
#include "editor/screen.h"
#include "editor/slide_file.h"
#include "editor/slide_picture.h"
#include "editor/view.h"
#include "kelhost/paths.h"

namespace kelhost::editor {
namespace {

std::wstring TextVar(const wchar_t* name) {
  resbuf rb{};
  if (acedGetVar(name, &rb) != RTNORM || rb.restype != RTSTR || !rb.resval.rstring) return L"";
  std::wstring text = rb.resval.rstring;
  std::free(rb.resval.rstring);
  return text;
}

size_t NameStart(const std::wstring& path) {
  const size_t slash = path.find_last_of(L"/\\");
  return slash == std::wstring::npos ? 0 : slash + 1;
}

bool HasExtension(const std::wstring& path) { return path.find(L'.', NameStart(path)) != std::wstring::npos; }

// The drawing's name without its extension.
std::wstring DrawingName() {
  std::wstring name = TextVar(L"DWGNAME");
  const size_t dot = name.rfind(L'.');
  if (dot != std::wstring::npos && dot > 0) name.erase(dot);
  return name;
}

// The view rectangle on the display plane and its pixels.
struct Canvas {
  double left, bottom, right, top;
  double scale;  // pixels per drawing unit
  ScreenSize screen;

  Pixel pixel(const AcGePoint2d& p) const {
    auto at = [this](double v, int size) {
      return std::clamp(static_cast<int>(std::floor(v * scale)), 0, size - 1);
    };
    return {at(p.x - left, screen.width), at(p.y - bottom, screen.height)};
  }
};

// The part of segment a-b inside the canvas (Liang and Barsky's clipping);
// false when none is.
bool Clip(const Canvas& c, AcGePoint2d& a, AcGePoint2d& b) {
  const double dx = b.x - a.x, dy = b.y - a.y;
  double t0 = 0, t1 = 1;
  const double p[4] = {-dx, dx, -dy, dy};
  const double q[4] = {a.x - c.left, c.right - a.x, a.y - c.bottom, c.top - a.y};
  for (int i = 0; i < 4; ++i) {
    if (p[i] == 0) {
      if (q[i] < 0) return false;
      continue;
    }
    const double t = q[i] / p[i];
    if (p[i] < 0) t0 = std::max(t0, t);
    else t1 = std::min(t1, t);
    if (t0 > t1) return false;
  }
  const AcGePoint2d from = a;
  a = AcGePoint2d(from.x + t0 * dx, from.y + t0 * dy);
  b = AcGePoint2d(from.x + t1 * dx, from.y + t1 * dy);
  return true;
}

// The part of a convex polygon inside the canvas (Sutherland and
// Hodgman's clipping, one edge of the canvas at a time).
std::vector<AcGePoint2d> ClipArea(const Canvas& c, std::vector<AcGePoint2d> poly) {
  for (int edge = 0; edge < 4 && !poly.empty(); ++edge) {
    auto inside = [&](const AcGePoint2d& p) {
      switch (edge) {
        case 0: return p.x >= c.left;
        case 1: return p.x <= c.right;
        case 2: return p.y >= c.bottom;
        default: return p.y <= c.top;
      }
    };
    auto cross = [&](const AcGePoint2d& a, const AcGePoint2d& b) {
      const double bound = edge == 0 ? c.left : edge == 1 ? c.right : edge == 2 ? c.bottom : c.top;
      const double t = edge < 2 ? (bound - a.x) / (b.x - a.x) : (bound - a.y) / (b.y - a.y);
      return AcGePoint2d(a.x + t * (b.x - a.x), a.y + t * (b.y - a.y));
    };
    std::vector<AcGePoint2d> kept;
    for (size_t i = 0; i < poly.size(); ++i) {
      const AcGePoint2d& cur = poly[i];
      const AcGePoint2d& prev = poly[(i + poly.size() - 1) % poly.size()];
      if (inside(cur)) {
        if (!inside(prev)) kept.push_back(cross(prev, cur));
        kept.push_back(cur);
      } else if (inside(prev)) {
        kept.push_back(cross(prev, cur));
      }
    }
    poly = std::move(kept);
  }
  return poly;
}

std::string MakeSlide() {
  Canvas c;
  c.screen = Screen();
  const ViewBox view = CurrentViewBox();
  c.left = view.center[0] - view.width() / 2;
  c.right = view.center[0] + view.width() / 2;
  c.bottom = view.center[1] - view.height / 2;
  c.top = view.center[1] + view.height / 2;
  c.scale = c.screen.height / view.height;
  SlideEncoder slide(c.screen.width, c.screen.height);
  if (!(c.scale > 0) || !std::isfinite(c.scale)) return slide.finish();  // a view of no size shows nothing
  // Curves stay within half a pixel of their straight pieces.
  for (const SlideMark& m : DrawCurrentSpace(0.5 / c.scale)) {
    if (m.filled) {
      std::vector<Pixel> corners;
      for (const AcGePoint2d& p : ClipArea(c, m.points)) {
        const Pixel px = c.pixel(p);
        if (corners.empty() || !(corners.back() == px)) corners.push_back(px);
      }
      while (corners.size() > 1 && corners.front() == corners.back()) corners.pop_back();
      if (corners.size() < 3) continue;
      slide.color(m.color);
      slide.fill(corners);
      continue;
    }
    for (size_t i = 0; i + 1 < m.points.size(); ++i) {
      AcGePoint2d a = m.points[i], b = m.points[i + 1];
      if (!Clip(c, a, b)) continue;
      slide.color(m.color);
      slide.vector(c.pixel(a), c.pixel(b));
    }
  }
  return slide.finish();
}

void RunMslide(CommandContext& c) {
  const std::wstring name = DrawingName();
  const Answer a = c.askString(L"\nEnter name of slide file to create <" + name + L">: ");
  std::wstring path = a.text;
  if (path.size() >= 2 && path.front() == L'"' && path.back() == L'"') path = path.substr(1, path.size() - 2);
  if (path.empty()) path = TextVar(L"DWGPREFIX") + name;
  if (!HasExtension(path)) path += L".sld";
  if (!WriteFileAtomically(NativePath(path), MakeSlide())) c.fail(L"\nUnable to create slide file " + path + L".");
}

}  // namespace

KELHOST_BUILTIN_COMMAND(Mslide, {L"MSLIDE", RunMslide});

}  // namespace kelhost::editor
