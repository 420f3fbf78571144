// The family's point and vector tolerances and the comparisons that use
// them. The values live in the initialisation settings, section
// "Precision", so every module and AutoLISP program sees the same ones;
// each getter reads the setting again and caches what it read.
#pragma once

#include "kelcad/platform.h"

namespace KEL {

// "Precision"/"PointEQ", default 0.000001.
double GetPointEQ();
// Caches the value and stores it with 10 decimals.
void SetPointEQ(double tol);
// Read from "Precision"/"DoubleEQ" (default 0.000001), while SetVectorEQ
// writes "Precision"/"VectorEQ": a value set here is only cached, and the
// next GetVectorEQ reads DoubleEQ again. Kept so for the family's code.
double GetVectorEQ();
void SetVectorEQ(double tol);

// One shared AcGeTol for both getters: each refreshes its own member
// (equalPoint or equalVector) from the setting and returns the object.
const AcGeTol& GetPointEQTol();
const AcGeTol& GetVectorEQTol();

// True when tol is strictly greater than the distance of a and b (in 3D,
// or on x and y only); a negative tol means the PointEQ setting.
bool IsPointEQ(const ads_point a, const ads_point b, double tol = -1.0);
bool IsPoint2dEQ(const ads_point a, const ads_point b, double tol = -1.0);

// True when neither of the family's design libraries ("RNXGXLibD.arx",
// "RNXGXLib.arx") is loaded.
bool IsDL();

}  // namespace KEL
