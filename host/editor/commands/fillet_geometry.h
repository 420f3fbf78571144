// The geometry of a fillet between two picked lines, arcs or circles:
// the arc of the fillet radius tangent to both (none for radius 0, where
// the two meet in a corner), and each object trimmed or extended to it,
// keeping the part that was picked. Two parallel lines are joined by a
// half circle at the picked end of the first, whatever the radius (the
// second line is trimmed or extended to match); with radius 0 they have
// no corner to meet in.
#pragma once

#include "editor/commands/plane_arc.h"
#include "editor/commands/plane_entities.h"

namespace kelhost::editor {

struct Fillet {
  PlaneEntity first, second;  // as they become when trimmed (circles stay)
  bool hasArc = false;
  PlaneArc arc;  // from the first object to the second
};

enum class FilletProblem {
  kNone,
  kRadiusTooLarge,  // the objects are too short (or too far apart) for the radius
  kParallel,        // parallel lines and radius 0
  kNoFillet,        // any other geometry that has no fillet
};

FilletProblem MakeFillet(const PlaneEntity& first, const AcGePoint2d& pick1, const PlaneEntity& second,
                         const AcGePoint2d& pick2, double radius, Fillet& out);

}  // namespace kelhost::editor
