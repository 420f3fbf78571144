// The family's real-number tolerances, kept in the initialisation settings
// (section "Precision") so every module sees the same values.
#pragma once

namespace KEL {
// Values are read from the initialisation settings (CInitSetting) as the
// platform's _wtof reads text, so text that is not a number gives 0.0. The
// file is read again only when it has changed, so these are cheap to call
// in loops.

// A real whose magnitude is below ZERO() is zero ("Precision"/"ZERO",
// default 1e-10).
double ZERO();
bool ISZERO(double value);
// Two reals are equal when they differ by less than the tolerance
// ("Precision"/"DoubleEQ", default 1e-6).
double GetDoubleEQ();
// Stores tol as text with 10 decimals (FloatToStr(tol, 10)).
void SetDoubleEQ(double tol);
// True when |a - b| < tol, strictly; a negative tol means the DoubleEQ
// setting.
bool IsDoubleEQ(double a, double b, double tol = -1.0);
}  // namespace KEL
