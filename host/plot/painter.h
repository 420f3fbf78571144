// Draws a space's entities onto a cairo surface: each entity with the
// colour, linetype and lineweight it plots with (resolved through its
// layer and the block reference that shows it), block references and
// dimensions through their blocks, text with its style's glyphs.
#pragma once

#include <cairo.h>

#include <map>
#include <set>
#include <string>
#include <vector>

#include "arx/acge.h"
#include "arx/dbid.h"
#include "arx/gemat3d.h"

class AcDbDatabase;
class AcDbEntity;
class AcDbText;
class AcDbMText;
class AcDbPoint;
class AcDbBlockReference;

namespace kelhost::text {
class StyleFonts;
}

namespace kelhost::plot {

// Plane coordinates to device coordinates, as cairo_matrix_t holds them:
// x' = xx x + xy y + x0, y' = yx x + yy y + y0.
struct Affine {
  double xx = 1, yx = 0, xy = 0, yy = 1, x0 = 0, y0 = 0;
  void apply(double x, double y, double& ox, double& oy) const {
    ox = xx * x + xy * y + x0;
    oy = yx * x + yy * y + y0;
  }
  // How many device units one plane unit spans (the mean of the axes).
  double unit() const;
  Affine then(const Affine& outer) const;  // this first, then outer
};

struct PaintOptions {
  bool monochrome = false;
  // Device units per millimetre of paper: lineweights and dots.
  double devicePerMm = 72.0 / 25.4;
  // False: every line one thinnest pen wide (no lineweights plotted).
  bool lineweights = true;
  double thinnest = 0.5;  // the narrowest line, device units
  double pointSize = 0;   // drawing units of a relative PDSIZE (5% of the area's height)
};

class Painter {
 public:
  Painter(cairo_t* cr, AcDbDatabase* db, const PaintOptions& options);
  ~Painter();
  Painter(const Painter&) = delete;
  Painter& operator=(const Painter&) = delete;

  // The entities of a block table record (model space, a paper space)
  // through toDevice. linetypeUnit scales the linetypes' dashes on top of
  // toDevice (a viewport's paper-space linetype scaling); frozen names
  // layers frozen in this view only.
  void paintSpace(AcDbObjectId space, const Affine& toDevice, double linetypeUnit = 1.0,
                  const std::set<AcDbObjectId>* frozen = nullptr);

  // Entities left out because the plotter cannot draw them, by DXF type.
  const std::map<std::wstring, int>& skipped() const { return mSkipped; }

 private:
  struct Look;
  struct Context;
  struct Pen;

  void entity(const AcDbEntity* e, const Context& c);
  void reference(const AcDbBlockReference& ref, const Look& look, const Context& c);
  void block(AcDbObjectId blockId, const AcGeMatrix3d& xform, const Look& look, const Context& c);
  void primitives(const AcDbEntity* e, const Look& look, const Context& c);
  void text(const AcDbText& t, const Look& look, const Context& c);
  void mtext(const AcDbMText& t, const Look& look, const Context& c);
  void point(const AcDbPoint& p, const Look& look, const Context& c);
  void textLine(text::StyleFonts& fonts, const std::u32string& shown, const AcGePoint3d& start,
                const AcGeVector3d& x, const AcGeVector3d& y, double height, double xScale, double slant,
                const Look& look, const Context& c);

  bool resolve(const AcDbEntity* e, const Context& c, Look& look) const;
  void setPen(const Look& look, const Context& c, bool dashed);
  void moveTo(const AcGePoint3d& p, const Context& c);
  void lineTo(const AcGePoint3d& p, const Context& c);
  void chain(const std::vector<AcGePoint3d>& points, bool closed, const Context& c);
  void conic(const AcGePoint3d& center, const AcGeVector3d& u, const AcGeVector3d& v, double sweep,
             const Context& c);
  text::StyleFonts* fontsOf(AcDbObjectId style, double* widthFactor = nullptr);

  cairo_t* mCr;
  AcDbDatabase* mDb;
  PaintOptions mOptions;
  // Drawing settings read once per plot.
  double mLtscale = 1.0;
  int mLwDefault = 25;
  bool mFill = true;
  int mPdmode = 0;
  double mPdsize = 0.0;
  std::map<std::wstring, int> mSkipped;
  struct Caches;
  Caches* mCaches;
};

}  // namespace kelhost::plot
