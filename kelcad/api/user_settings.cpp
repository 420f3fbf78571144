// The default text height and the dimension precision in USERR5/USERI4.
#include "kelcad/api/user_settings.h"

#include "kelbase/tolerance.h"
#include "kelcad/api/kept_settings.h"
#include "kelcad/api/sysvar_access.h"
#include "kelcad/platform.h"

namespace KEL {

namespace {
constexpr double kDefaultTextHigh = 3.5;
constexpr int kDefaultBZXSW = 3;
// Beyond this many decimal places a dimension's text is not meant.
constexpr int kMostBZXSW = 5;

double keptTextHigh = kDefaultTextHigh;
int keptBZXSW = kDefaultBZXSW;
}  // namespace

void KeepTextHigh(double h) { keptTextHigh = h; }

double GetTextHigh() {
  double h = keptTextHigh;
  if (GetCADVar(L"USERR5", h) != RTNORM) h = keptTextHigh;
  if (!(h > 0.0)) {
    h = kDefaultTextHigh;
    SetCADVar(L"USERR5", h);
  }
  keptTextHigh = h;
  return h;
}

bool SetTextHigh(double h) {
  if (!(h > ZERO())) return false;
  return SetCADVar(L"USERR5", h) == RTNORM;
}

int GetBZXSW() {
  int v = keptBZXSW;
  if (GetCADVar(L"USERI4", v) != RTNORM) v = keptBZXSW;
  if (v > kMostBZXSW) {
    v = kDefaultBZXSW;
    SetCADVar(L"USERI4", v);
  }
  keptBZXSW = v;
  return v;
}

bool SetBZXSW(int v) {
  if (v < 0) return false;
  return SetCADVar(L"USERI4", v) == RTNORM;
}

}  // namespace KEL
