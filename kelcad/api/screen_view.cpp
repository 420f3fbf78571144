// The current view's rectangle and what follows from it.
#include "kelcad/api/screen_view.h"

#include <cmath>

#include "kelcad/api/sysvar_access.h"

namespace KEL {

namespace {
constexpr double kPi = 3.14159265358979323846;
// The view height the pick box is reckoned against, in pixels.
constexpr double kViewPixels = 200.0;
constexpr int kPickBoxUnset = 3;
}  // namespace

void GetScreenLBRT(double lowerLeft[3], double upperRight[3]) {
  double height = 0.0;
  GetCADVar(L"VIEWSIZE", height);
  ads_point centre = {0.0, 0.0, 0.0}, vsMax = {0.0, 0.0, 0.0}, vsMin = {0.0, 0.0, 0.0};
  GetCADVar(L"VIEWCTR", centre);
  GetCADVar(L"VSMAX", vsMax);
  GetCADVar(L"VSMIN", vsMin);
  const double width = (vsMax[0] - vsMin[0]) / (vsMax[1] - vsMin[1]) * height;
  ads_point edge;
  acutPolar(centre, 3.0 * kPi / 2.0, height / 2.0, edge);
  acutPolar(edge, kPi, width / 2.0, lowerLeft);
  acutPolar(centre, kPi / 2.0, height / 2.0, edge);
  acutPolar(edge, 0.0, width / 2.0, upperRight);
}

bool IsPtInView(double point[3]) {
  ads_point lowerLeft, upperRight;
  GetScreenLBRT(lowerLeft, upperRight);
  return lowerLeft[0] <= point[0] && point[0] <= upperRight[0] && lowerLeft[1] <= point[1] &&
         point[1] <= upperRight[1];
}

double GetPickBoxWidth() {
  int pickBox = kPickBoxUnset;
  GetCADVar(L"PICKBOX", pickBox);
  if (pickBox == 0) pickBox = kPickBoxUnset;
  ads_point lowerLeft, upperRight;
  GetScreenLBRT(lowerLeft, upperRight);
  return std::fabs(upperRight[1] - lowerLeft[1]) / kViewPixels * pickBox;
}

void RedrawSS(ads_name set, int mode) {
  ads_name member = {0, 0};
  for (Adesk::Int32 i = 0; acedSSName(set, i, member) == RTNORM; ++i) acedRedraw(member, mode);
}

}  // namespace KEL
