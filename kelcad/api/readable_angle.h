// Which way text along a direction reads.
#pragma once

#include "kelcad/api/curves.h"

namespace KEL {

// Whether a direction (radians) points leftwards, so that text along it
// would read upside down: above a quarter turn and up to three quarters,
// after MakeAngleIn2PI. The margin of 1e-5 keeps an upward vertical as it
// is and turns a downward one.
inline bool ReadsBackwards(double angle) {
  constexpr double kPi = 3.14159265358979323846;
  constexpr double kMargin = 1e-5;
  angle = MakeAngleIn2PI(angle);
  return angle > kPi / 2 + kMargin && angle <= 3 * kPi / 2 + kMargin;
}

}  // namespace KEL
