// A polyline while PLINE draws it: its segments so far (lines and arcs in
// the drawing plane, each with its starting and ending width), the widths
// the next segment takes, and the direction the last segment left in.
// It becomes a lightweight polyline when the command ends, however it
// ends, as long as it has a segment.
#pragma once

#include <vector>

#include "editor/command_context.h"
#include "editor/commands/plane_arc.h"

namespace kelhost::editor {

struct PlineSegment {
  AcGePoint2d from, to;
  bool isArc = false;
  PlaneArc arc;
  double startWidth = 0.0, endWidth = 0.0;
  double directionBefore = 0.0;  // restored when the segment is undone
};

struct PlineDraft {
  AcGePoint2d start;
  double z = 0.0;
  AcGePoint2d current;
  double direction = 0.0;                   // of travel at the current point
  double startWidth = 0.0, endWidth = 0.0;  // of the next segment
  bool closed = false;
  std::vector<PlineSegment> segments;

  void addLine(const AcGePoint2d& to);
  void addArc(const PlaneArc& arc);
  PlineSegment startSegment() const;
  // False when there is nothing to undo.
  bool undo();
  // The polyline made from the segments (none without a segment); the
  // last one drawn is remembered for the commands that continue.
  void commit() const;
  // A UCS point of the current position, for rubber bands.
  void currentPoint(double p[3]) const;
};

// The Width and Halfwidth options: the next segment's widths, and PLINEWID.
void AskWidths(CommandContext& c, PlineDraft& d, bool half);

// Arc mode, until Line or the end of the command; true when the command
// ends (Enter, or CLose).
bool DrawPlineArcs(CommandContext& c, PlineDraft& d);

}  // namespace kelhost::editor
