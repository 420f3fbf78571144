// What the current space of the working drawing shows, as lines on the
// display plane: the picture MSLIDE puts in a slide.
//  - Curves (lines, arcs, circles, polylines, ellipses, splines) become
//    chains of straight pieces, each within the given tolerance of the
//    curve.
//  - Lightweight polylines with a width are their outlines, and filled
//    unless FILLMODE is 0; the segments of heavy polylines are drawn along
//    their middle.
//  - Text is its box (the fonts are not stroked); multiline text its
//    frame; a point a dot.
//  - Block references draw their blocks' entities and their attributes,
//    dimensions their pictures; other entities their extents' outline.
//  - Entities on layers that are off or frozen are left out (in a block,
//    entities on layer 0 go with the reference's layer); colours BYLAYER
//    and BYBLOCK are resolved to the layer's or the reference's.
#pragma once

#include <vector>

#include "arx/acge.h"

namespace kelhost::editor {

struct SlideMark {
  int color = 7;
  bool filled = false;                // a filled polygon; else a chain of lines
  std::vector<AcGePoint2d> points;    // display coordinates (DCS)
};

std::vector<SlideMark> DrawCurrentSpace(double tolerance);

}  // namespace kelhost::editor
