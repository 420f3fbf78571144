// Text measured by the CAD program's textbox: a string's width, and a text
// entity's box placed in the drawing.
#include "kelcad/api/text_measure.h"

#include <cmath>
#include <cwchar>

#include "kelcad/api/module_info.h"

namespace KEL {

bool GetTextWidth(const wchar_t* text, double height, double& width, double widthFactor) {
  if (text == nullptr) return false;
  if (widthFactor < 0.0) widthFactor = GetTextWidthFactor();
  resbuf* list = acutBuildList(1, text, 40, height, 41, widthFactor, 0);
  if (list == nullptr) return false;
  ads_point lowerLeft, upperRight;
  const int rc = acedTextBox(list, lowerLeft, upperRight);
  acutRelRb(list);
  if (rc != RTNORM) return false;
  width = upperRight[0] - lowerLeft[0];
  return true;
}

namespace {

// Where a text stands: its insertion point and angle in its own plane, and
// that plane's normal.
struct TextPlacement {
  ads_point position = {0.0, 0.0, 0.0};
  double rotation = 0.0;
  ads_point normal = {0.0, 0.0, 1.0};
};

bool IsTextKind(const wchar_t* type) {
  for (const wchar_t* kind : {L"TEXT", L"ATTRIB", L"ATTDEF"})
    if (type != nullptr && wcscmp(type, kind) == 0) return true;
  return false;
}

bool ReadPlacement(const resbuf* list, TextPlacement& at) {
  bool isText = false;
  for (const resbuf* rb = list; rb != nullptr; rb = rb->rbnext) {
    switch (rb->restype) {
      case 0: isText = IsTextKind(rb->resval.rstring); break;
      case 10: ads_point_set(rb->resval.rpoint, at.position); break;
      case 50: at.rotation = rb->resval.rreal; break;
      case 210: ads_point_set(rb->resval.rpoint, at.normal); break;
      default: break;
    }
  }
  return isText;
}

// A point of the text's own box (x along the baseline) in world
// coordinates.
void PlaceCorner(const TextPlacement& at, double x, double y, double* out) {
  const double c = std::cos(at.rotation), s = std::sin(at.rotation);
  ads_point inPlane = {at.position[0] + x * c - y * s, at.position[1] + x * s + y * c, at.position[2]};
  resbuf from{};
  from.restype = RT3DPOINT;
  ads_point_set(at.normal, from.resval.rpoint);
  resbuf world{};
  world.restype = RTSHORT;
  world.resval.rint = 0;
  ads_point placed;
  if (acedTrans(inPlane, &from, &world, 0, placed) != RTNORM) ads_point_set(inPlane, placed);
  ads_point_set(placed, out);
}

}  // namespace

int GetTextRect(ads_name text, double xMargin, double yMargin, double* lowerLeft, double* lowerRight,
                double* upperRight, double* upperLeft, double* centre) {
  if (text == nullptr || !lowerLeft || !lowerRight || !upperRight || !upperLeft || !centre) return 0;
  resbuf* list = acdbEntGet(text);
  if (list == nullptr) return 0;
  TextPlacement at;
  ads_point low, high;
  const bool measured = ReadPlacement(list, at) && acedTextBox(list, low, high) == RTNORM;
  acutRelRb(list);
  if (!measured) return 0;
  const double x0 = low[0] - xMargin, x1 = high[0] + xMargin;
  const double y0 = low[1] - yMargin, y1 = high[1] + yMargin;
  PlaceCorner(at, x0, y0, lowerLeft);
  PlaceCorner(at, x1, y0, lowerRight);
  PlaceCorner(at, x1, y1, upperRight);
  PlaceCorner(at, x0, y1, upperLeft);
  PlaceCorner(at, (x0 + x1) / 2.0, (y0 + y1) / 2.0, centre);
  return 1;
}

}  // namespace KEL
