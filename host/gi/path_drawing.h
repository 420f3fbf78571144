// A curve's geometry as graphics primitives: runs of straight pieces as
// polylines, circular pieces as arcs or circles, elliptical and free-form
// pieces as polylines close to them.
#pragma once

#include <vector>

#include "arx/acgi.h"
#include "db/curve_path.h"

namespace kelhost::gi {

// Segments a curved piece is drawn with: one per five degrees of a conic's
// sweep, a fixed number for a free-form piece.
std::vector<AcGePoint3d> Approximate(const geom::Piece& piece);

// Draws the pieces of path whose parameters lie from fromParam to toParam.
void DrawPath(const geom::Path& path, AcGiGeometry& geometry, double fromParam, double toParam);
inline void DrawPath(const geom::Path& path, AcGiGeometry& geometry) {
  DrawPath(path, geometry, path.startParam(), path.endParam());
}

}  // namespace kelhost::gi
