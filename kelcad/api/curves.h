// Curves and angles: normalising angles, the parallel test, the foot of a
// perpendicular, lengths, division and measurement of curves into points,
// breaking curves, intersections, arc and line marker points, points
// along a curve, sorting points and the largest fillet radius.
#pragma once

#include "kelcad/platform.h"

namespace KEL {

// An angle in [0, 2pi] is returned as it is; any other becomes
// a + (2k + 2)pi with k = a / (-2pi) truncated toward zero. Every negative
// angle comes into range; one above 2pi is left as it is (7.0 stays 7.0).
double MakeAngleIn2PI(double angle);
// The angle brought into [0, pi) by whole half turns.
double TransAngleInPI(double angle);

// Whether the line a1-a2 is parallel to b1-b2: their directions (acutAngle)
// taken modulo pi differ by at most tol. There is no wrap-around: 0.0001
// and pi - 0.0001 are not parallel under this test.
bool IsLinesPX(AcGePoint3d a1, AcGePoint3d a2, AcGePoint3d b1, AcGePoint3d b2, double tol);

// The foot of the perpendicular from pt to the line through lineStart and
// lineEnd. When the line is degenerate (the PointEQ tolerance, read at
// every call, exceeds its squared length) foot is lineStart and the result
// is true; otherwise the result is false.
bool Qtyd(const double pt[3], const double lineStart[3], const double lineEnd[3], double foot[3]);

// The length of a curve (line, arc, circle, polyline, ellipse, spline).
// False when the id does not open as a curve.
bool GetCurveLength(AcDbObjectId curve, double& length);
// Points on the curve at distances 0, L/count, 2L/count, ... while the
// distance, summed step by step, does not exceed the length L: the end
// point is there only when the sum does not overshoot it by rounding.
// Points are appended to points. False when the id does not open as a
// curve, or count is not positive.
bool DivideCurve(AcArray<AcGePoint3d>& points, AcDbObjectId curve, double count);
// The same with a given step instead of L / count; false also for a step
// that is not positive.
bool MeasureCurve(AcArray<AcGePoint3d>& points, AcDbObjectId curve, double step);

// Breaks a curve of the drawing at the given points (those on the curve;
// others are ignored). The pieces are appended to model space of the
// current drawing (KEL::Append), pieces gets their ids in the order they
// run along the curve, and the curve is erased. With dropBetweenPairs the points are taken in pairs, as BREAK
// takes its two points, and the parts between the points of each pair
// are left out. False, with the drawing unchanged, when the curve cannot
// be opened for write, no point breaks it, or a piece cannot be added.
bool Break(AcDbObjectId curve, const AcArray<AcGePoint3d>& points, bool dropBetweenPairs,
           AcArray<AcDbObjectId>& pieces);

// Where two entities meet (intersectWith with the given mode), each point
// once (points nearer than the PointEQ tolerance count as one), appended
// to points. The number of points found; -1 when an entity cannot be
// opened or the pair cannot be intersected.
int IntersectWith(AcDbObjectId first, AcDbObjectId second, AcDb::Intersect mode, AcArray<AcGePoint3d>& points);
// The same for entity names, on both entities as they are (no extension).
int GetEntIntersect(const ads_name first, const ads_name second, AcArray<AcGePoint3d>& points);

// The three points that fix an arc: its start, the middle of the arc (its
// vertex) and its end, in WCS. False when the entity is not an arc.
bool GetARCVertex(const ads_name arc, double start[3], double vertex[3], double end[3]);

// Where a LINE is marked: its midpoint, the points a tenth of its length
// from the midpoint on its left and on its right (perpendicular to it, in
// plan), the line's direction as text reads it (flipped by a half turn
// when it points leftwards) and its length. False when the entity is not
// a LINE.
bool GetLAMarkPoint(const ads_name line, double middle[3], double left[3], double right[3], double& angle,
                    double& length);

// The point reached from pt (taken to the nearest point of the curve) by
// going dist along the curve towards the right of the screen: forwards
// where the curve runs rightwards, backwards where it runs leftwards.
// False when the curve cannot be read or the distance leaves the curve.
bool GetRightPointAtDist(AcDbObjectId curve, const AcGePoint3d& pt, double dist, AcGePoint3d& out);

// Sorts points in place: mode 0 by x ascending, 1 by y ascending, 2 by x
// descending, 3 by y descending (ties by the other coordinate, the same
// way); other modes leave the array as it is.
void SortCArrayAcGePoint3d(int mode, CArray<AcGePoint3d, AcGePoint3d&>& points);

// The largest fillet radius between two lines or arcs at the pick points:
// the radius of the largest arc tangent to both, in the corner the picks
// show, whose tangent points lie on the entities as drawn. The radius is
// put into the AutoLISP symbol "t1" and made FILLET's radius. False, with
// a message, when an entity cannot be read or is neither a line nor an
// arc, the lines are parallel, or the entities do not meet.
bool js_f_max(const ads_name e1, const double pick1[3], const ads_name e2, const double pick2[3], double& radius);

}  // namespace KEL
