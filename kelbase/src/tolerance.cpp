#include "kelbase/tolerance.h"

#include <cmath>

#include "cached_setting.h"
#include "kelbase/directories.h"
#include "kelbase/strings.h"

namespace KEL {
namespace {
kelbase::CachedRealSetting& ZeroSetting() {
  static kelbase::CachedRealSetting setting(L"Precision", L"ZERO", L"1e-10");
  return setting;
}

kelbase::CachedRealSetting& DoubleEQSetting() {
  static kelbase::CachedRealSetting setting(L"Precision", L"DoubleEQ", L"0.000001");
  return setting;
}
}  // namespace

double ZERO() { return ZeroSetting().Value(); }

bool ISZERO(double value) { return std::fabs(value) < ZERO(); }

double GetDoubleEQ() { return DoubleEQSetting().Value(); }

void SetDoubleEQ(double tol) { CInitSetting().SetSetting(L"DoubleEQ", FloatToStr(tol, 10), L"Precision"); }

bool IsDoubleEQ(double a, double b, double tol) {
  if (tol < 0.0) tol = GetDoubleEQ();
  return std::fabs(a - b) < tol;
}
}  // namespace KEL
