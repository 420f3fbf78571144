// The family's real-number tolerances, kept in the initialisation settings
// (section "Precision") so every module sees the same values.
#pragma once

namespace KEL {
// A real whose magnitude is below ZERO() is zero ("Precision"/"ZERO",
// default 1e-10).
double ZERO();
bool ISZERO(double value);
// Two reals are equal when they differ by less than the tolerance
// ("Precision"/"DoubleEQ", default 1e-6).
double GetDoubleEQ();
void SetDoubleEQ(double tol);
// A negative tol means the DoubleEQ setting.
bool IsDoubleEQ(double a, double b, double tol = -1.0);
}  // namespace KEL
