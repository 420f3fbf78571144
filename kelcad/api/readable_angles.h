// Angles at which text reads the right way up, and the area of a polygon
// given as a chain of points.
#pragma once

#include "kelcad/platform.h"

namespace KEL {

// For a direction angle (radians): readable, the angle a text along it is
// written at so that it reads from left to right or bottom to top, and
// perpendicular, a quarter turn anticlockwise from readable. A direction
// above pi/2 and up to 3pi/2 (each with 1e-5 to spare, so vertical text
// reads upwards) is turned half round.
// Angles are first brought into range as the family always has: a value
// outside [0, 2pi] becomes v + (2k + 2)pi, k the whole part of v / -2pi.
// Every negative angle comes into range; one above 2pi stays as it is or
// comes one turn lower (7.0 stays 7.0).
void GetRightTopAngles(double angle, double& readable, double& perpendicular);

// The area of the closed polygon through the chain's points (x and y of
// each item's point value, whatever its type code); 0.0 for fewer than
// three items.
double JSPTBArea(resbuf* points);

}  // namespace KEL
