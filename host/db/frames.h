// The drawing's coordinate systems as frames: an origin and three
// orthonormal axes in world coordinates. acedTrans, the view variables and
// the editor's view all convert through these.
#pragma once

namespace kelhost::db {

struct DatabaseState;

struct Frame {
  double origin[3] = {0, 0, 0};
  double axis[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};  // X, Y, Z in WCS
};

// The object coordinate system of an extrusion direction (the
// arbitrary-axis rule); false for a zero vector.
bool OcsFrame(const double normal[3], Frame& f);
// The current UCS from UCSORG, UCSXDIR and UCSYDIR (Y made square to X).
bool UcsFrame(const DatabaseState& s, Frame& f);
// The display coordinates of the current view: the target at the origin,
// Z along the view direction (the view's twist is not applied).
bool DcsFrame(const DatabaseState& s, Frame& f);

// disp: p is a displacement (the origin does not apply).
void ToWorld(const Frame& f, const double p[3], bool disp, double out[3]);
void FromWorld(const Frame& f, const double p[3], bool disp, double out[3]);

}  // namespace kelhost::db
