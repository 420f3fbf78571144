// The painter's working state, shared by its files: what an entity plots
// with, where it is drawn, and what is kept for the length of a plot.
#pragma once

#include <map>
#include <utility>

#include "plot/font_faces.h"
#include "plot/glyph_cache.h"
#include "plot/linetype_dashes.h"
#include "plot/painter.h"

namespace kelhost::plot {

// What an entity plots with, after BYLAYER and BYBLOCK are resolved.
struct Painter::Look {
  AcDbObjectId layer;
  std::uint32_t rgb = 0;      // 0xRRGGBB as plotted
  std::uint32_t byBlock = 0;  // what BYBLOCK colour means inside this entity
  int lineWeight = 25;        // hundredths of a millimetre
  AcDbObjectId linetype;      // null: continuous
  double linetypeScale = 1.0;
};

struct Painter::Context {
  AcGeMatrix3d model = AcGeMatrix3d::kIdentity;  // entity coordinates to the space's
  Affine device;                                 // the space's plane to the device
  double dashUnit = 1.0;                         // device units per linetype unit
  const std::set<AcDbObjectId>* frozen = nullptr;
  const Look* outer = nullptr;  // the block reference (or dimension) that shows the entity
  int depth = 0;
};

struct Painter::Caches {
  GlyphCache glyphs;
  FontFaces faces;
  std::map<AcDbObjectId, std::pair<text::StyleFonts*, double>> styles;
  std::map<AcDbObjectId, Dashes> dashes;
};

}  // namespace kelhost::plot
