// What a font tells about one character: how far it moves the pen, the box
// of the ink it lays down, and its outline. Every measure is in text-height
// units (1.0 is the height the text is drawn at), so fonts of different
// kinds can be mixed on one line.
#pragma once

#include <cstdint>
#include <vector>

namespace kelhost::text {

struct GlyphMetrics {
  double advance = 0.0;  // pen movement along the baseline
  // The ink's bounding box relative to the pen position; meaningless when
  // inked is false (a space).
  double xMin = 0.0, yMin = 0.0, xMax = 0.0, yMax = 0.0;
  bool inked = false;
};

// A glyph's outline as path commands: the one description of its shape,
// which measuring and drawing (plots) both use. TrueType glyphs are closed
// contours to be filled; shape-font glyphs are open pen strokes.
struct GlyphPath {
  enum class Op : std::uint8_t { kMove, kLine, kQuad, kCubic };
  std::vector<Op> ops;
  // The points of each op in order: one for kMove and kLine, two for kQuad
  // (control, end) and three for kCubic (control, control, end), x then y.
  std::vector<double> coords;
  bool filled = false;

  void moveTo(double x, double y) { add(Op::kMove, {x, y}); }
  void lineTo(double x, double y) { add(Op::kLine, {x, y}); }
  void quadTo(double cx, double cy, double x, double y) { add(Op::kQuad, {cx, cy, x, y}); }
  void cubicTo(double c1x, double c1y, double c2x, double c2y, double x, double y) {
    add(Op::kCubic, {c1x, c1y, c2x, c2y, x, y});
  }
  bool empty() const { return ops.empty(); }
  // Scales about the origin and moves by (dx, dy).
  void transform(double sx, double sy, double dx, double dy);

 private:
  void add(Op op, std::initializer_list<double> values) {
    ops.push_back(op);
    coords.insert(coords.end(), values);
  }
};

}  // namespace kelhost::text
