// Point and vector tolerances kept in the initialisation settings.
#include "kelcad/entry/tolerance.h"

#include <cmath>

#include "kelbase/kelbase.h"

namespace KEL {

namespace {

const wchar_t kPrecision[] = L"Precision";
const wchar_t kDefaultTolerance[] = L"0.000001";

double gPointEQ = 1e-6;
double gVectorEQ = 1e-6;

AcGeTol& SharedTol() {
  static AcGeTol tol;
  return tol;
}

double ReadPrecision(const wchar_t* key) {
  return _wtof(CInitSetting().GetSetting(key, kDefaultTolerance, kPrecision));
}

}  // namespace

double GetPointEQ() {
  gPointEQ = ReadPrecision(L"PointEQ");
  return gPointEQ;
}

void SetPointEQ(double tol) {
  gPointEQ = tol;
  CInitSetting().SetSetting(L"PointEQ", FloatToStr(tol, 10), kPrecision);
}

double GetVectorEQ() {
  gVectorEQ = ReadPrecision(L"DoubleEQ");
  return gVectorEQ;
}

void SetVectorEQ(double tol) {
  gVectorEQ = tol;
  CInitSetting().SetSetting(L"VectorEQ", FloatToStr(tol, 10), kPrecision);
}

const AcGeTol& GetPointEQTol() {
  SharedTol().setEqualPoint(GetPointEQ());
  return SharedTol();
}

const AcGeTol& GetVectorEQTol() {
  SharedTol().setEqualVector(GetVectorEQ());
  return SharedTol();
}

bool IsPointEQ(const ads_point a, const ads_point b, double tol) {
  if (tol < 0.0) tol = GetPointEQ();
  const double dx = a[X] - b[X], dy = a[Y] - b[Y], dz = a[Z] - b[Z];
  return tol > std::sqrt(dx * dx + dy * dy + dz * dz);
}

bool IsPoint2dEQ(const ads_point a, const ads_point b, double tol) {
  if (tol < 0.0) tol = GetPointEQ();
  return tol > std::hypot(a[X] - b[X], a[Y] - b[Y]);
}

bool IsDL() { return !IsLoadedArx(L"RNXGXLibD.arx") && !IsLoadedArx(L"RNXGXLib.arx"); }

}  // namespace KEL
