#include "db/frames.h"

#include <cmath>

#include "db/active_view.h"
#include "db/database_state.h"

namespace kelhost::db {
namespace {

void Cross(const double* a, const double* b, double* out) {
  out[0] = a[1] * b[2] - a[2] * b[1];
  out[1] = a[2] * b[0] - a[0] * b[2];
  out[2] = a[0] * b[1] - a[1] * b[0];
}

bool Normalize(double* v) {
  const double len = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
  if (!(len > 1e-12) || !std::isfinite(len)) return false;
  for (int i = 0; i < 3; ++i) v[i] /= len;
  return true;
}

bool HeaderPoint(const DatabaseState& s, const HeaderVarDef* def, double* out) {
  if (!def) return false;
  const HeaderValue v = GetHeaderVar(s, *def);
  for (int i = 0; i < 3; ++i) out[i] = v.point[i];
  return true;
}

}  // namespace

// X is world Y crossed with the normal when the normal lies near the
// world Z axis, else world Z crossed with it.
bool OcsFrame(const double normal[3], Frame& f) {
  double n[3] = {normal[0], normal[1], normal[2]};
  if (!Normalize(n)) return false;
  const double wy[3] = {0, 1, 0}, wz[3] = {0, 0, 1};
  const bool nearZ = std::fabs(n[0]) < 1.0 / 64 && std::fabs(n[1]) < 1.0 / 64;
  Cross(nearZ ? wy : wz, n, f.axis[0]);
  Normalize(f.axis[0]);
  Cross(n, f.axis[0], f.axis[1]);
  Normalize(f.axis[1]);
  for (int i = 0; i < 3; ++i) f.axis[2][i] = n[i];
  return true;
}

bool UcsFrame(const DatabaseState& s, Frame& f) {
  // Every point a command is given passes here: find the variables once.
  static const HeaderVarDef* const origin = FindHeaderVarDef(L"UCSORG");
  static const HeaderVarDef* const xDir = FindHeaderVarDef(L"UCSXDIR");
  static const HeaderVarDef* const yDir = FindHeaderVarDef(L"UCSYDIR");
  double y[3];
  if (!HeaderPoint(s, origin, f.origin) || !HeaderPoint(s, xDir, f.axis[0]) || !HeaderPoint(s, yDir, y)) return false;
  if (!Normalize(f.axis[0])) return false;
  Cross(f.axis[0], y, f.axis[2]);
  if (!Normalize(f.axis[2])) return false;
  Cross(f.axis[2], f.axis[0], f.axis[1]);
  return true;
}

bool DcsFrame(const DatabaseState& s, Frame& f) {
  const ActiveView v = GetActiveView(s);
  const double dir[3] = {v.direction.x, v.direction.y, v.direction.z};
  if (!OcsFrame(dir, f)) return false;
  f.origin[0] = v.target.x;
  f.origin[1] = v.target.y;
  f.origin[2] = v.target.z;
  return true;
}

void ToWorld(const Frame& f, const double p[3], bool disp, double out[3]) {
  double r[3];
  for (int i = 0; i < 3; ++i)
    r[i] = (disp ? 0.0 : f.origin[i]) + p[0] * f.axis[0][i] + p[1] * f.axis[1][i] + p[2] * f.axis[2][i];
  for (int i = 0; i < 3; ++i) out[i] = r[i];
}

void FromWorld(const Frame& f, const double p[3], bool disp, double out[3]) {
  double d[3];
  for (int i = 0; i < 3; ++i) d[i] = p[i] - (disp ? 0.0 : f.origin[i]);
  for (int k = 0; k < 3; ++k) out[k] = d[0] * f.axis[k][0] + d[1] * f.axis[k][1] + d[2] * f.axis[k][2];
}

}  // namespace kelhost::db
