// Object snaps over the working drawing (osnap, running snaps).
#pragma once

#include <string>

#include "arx/acge.h"

namespace kelhost::ads {

// The modes, as OSMODE numbers them.
enum SnapMode : unsigned {
  kSnapEnd = 1,
  kSnapMid = 2,
  kSnapCen = 4,
  kSnapNode = 8,
  kSnapQuad = 16,
  kSnapInt = 32,
  kSnapIns = 64,
  kSnapPerp = 128,
  kSnapTan = 256,
  kSnapNear = 512,
  kSnapNone = 0x4000,
};

// "_end,_int", "mid"...: modes by their first three letters, "_" and
// case ignored ("app" counts as "int", "quick" adds nothing); false for a
// word that names no mode.
bool ParseSnapModes(const std::wstring& text, unsigned& modes);

// The snap point nearest to at (WCS) among the objects within aperture
// (drawing units) of it; perpendicular and tangent snaps start from last
// (none without it). False when nothing snaps.
bool ObjectSnap(const AcGePoint3d& at, unsigned modes, double aperture, const AcGePoint3d* last,
                AcGePoint3d& snapped);

}  // namespace kelhost::ads
