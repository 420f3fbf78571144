// The viewports of a paper space layout: the VIEWPORT entities of its
// block, read from the groups the drawing gave them. Each shows model
// space through a rectangle on the paper.
#pragma once

#include <set>
#include <vector>

#include "arx/dbid.h"

class AcDbDatabase;

namespace kelhost::plot {

struct LayoutViewport {
  double center[2] = {0, 0};      // on the paper
  double width = 0, height = 0;   // on the paper
  double viewCenter[2] = {0, 0};  // model space, relative to the target
  double target[2] = {0, 0};
  double viewHeight = 0;  // model units the rectangle's height shows
  double twist = 0;       // radians
  std::set<AcDbObjectId> frozenLayers;
  // Paper units per model unit.
  double scale() const { return viewHeight > 0 ? height / viewHeight : 0.0; }
};

// The viewports that show model space (not the layout's own paper
// viewport, nor those turned off), in the order the layout holds them.
std::vector<LayoutViewport> ViewportsOf(AcDbDatabase* db, AcDbObjectId paperSpace);

}  // namespace kelhost::plot
