// What a dimension's block holds, drawn as its style and its own values
// say: lines for the dimension and extension lines, the arrowheads (the
// closed filled one as a two-vertex polyline tapering from a third of the
// arrow size to its tip, which fills it without a SOLID; any other as an
// insert of its block, see db/dimension_arrows.h; DIMTSZ > 0 as oblique
// strokes), the text as multiline text, and points on the Defpoints layer
// at the definition points. Sizes are the style's times DIMSCALE; colours
// and lineweights its DIMCLRD/DIMCLRE/DIMCLRT and DIMLWD/DIMLWE, on layer 0
// with the BYBLOCK linetype.
#pragma once

#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "arx/dbsymtb.h"

class AcDbDimension;

namespace kelhost::db {

class DimPicture {
 public:
  // The style may be null (a new drawing's Standard values are used).
  // With a dimension, its own text height and text style count over the
  // style's.
  DimPicture(AcDbDatabase* db, AcDbObjectId style, const AcGeVector3d& normal,
             const AcDbObject* dimension = nullptr);
  DimPicture(const DimPicture&) = delete;
  DimPicture& operator=(const DimPicture&) = delete;

  // The style's data with the dimension's own values over it.
  const AcDbDimStyleTableRecord& style() const { return *mStyle; }
  const AcGeVector3d& normal() const { return mNormal; }
  // DIMSCALE (0 counts as 1) and the style's sizes times it.
  double scale() const { return mScale; }
  double arrowSize() const { return mStyle->dimasz() * mScale; }
  double extensionOffset() const { return mStyle->dimexo() * mScale; }
  double extensionBeyond() const { return mStyle->dimexe() * mScale; }
  double textHeight() const { return mStyle->dimtxt() * mScale; }
  // How far the dimension line runs on past the extension lines: DIMDLE
  // where the ends are strokes (DIMTSZ > 0 or tick arrowheads), else 0.
  double lineExtension() const;
  double textGap() const { return std::abs(mStyle->dimgap()) * mScale; }

  void dimensionLine(const AcGePoint3d& from, const AcGePoint3d& to);
  void extensionLine(const AcGePoint3d& from, const AcGePoint3d& to);
  // The arrowhead of end 1 or 2 (DIMBLK1/DIMBLK2 when DIMSAH is on, else
  // DIMBLK) with its tip at tip, its body along back.
  void arrow(int end, const AcGePoint3d& tip, const AcGeVector3d& back);
  // The text centred on middle, at angle in the plane of the normal.
  void text(const AcGePoint3d& middle, double angle, const std::wstring& contents);
  void definitionPoint(const AcGePoint3d& point);

  // The entities drawn, not in any database.
  std::vector<std::unique_ptr<AcDbEntity>> take() { return std::move(mEntities); }

 private:
  void add(AcDbEntity* entity, int colorCode, int weightCode);

  AcDbDatabase* mDb;
  AcGeVector3d mNormal;
  std::unique_ptr<AcDbDimStyleTableRecord> mStyle;
  double mScale = 1.0;
  AcDbObjectId mDefpoints;
  std::vector<std::unique_ptr<AcDbEntity>> mEntities;
};

// An angle turned so that text along it reads left to right (or upwards).
double ReadableAngle(double angle);

// The text a dimension's block shows for a measurement.
std::wstring ShownText(const AcDbDimension& dim, double measured);

// The Defpoints layer (made, not plotted, when the drawing lacks it); null
// when it cannot be made.
AcDbObjectId DefpointsLayer(AcDbDatabase* db);

}  // namespace kelhost::db
