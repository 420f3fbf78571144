// The graphics interface: the properties and the geometry a drawable
// hands to whoever draws it (the screen, a plot, a jig's sample).
#pragma once

#include "drawable.h"
#include "dbmain.h"
#include "gemat3d.h"

class AcDbPolyline;

typedef enum {
  eAcGiRegenTypeInvalid = 0,
  kAcGiStandardDisplay = 2,
  kAcGiHideOrShadeCommand,
  kAcGiRenderCommand,
  kAcGiShadedDisplay = kAcGiRenderCommand,
  kAcGiForExplode,
  kAcGiSaveWorldDrawForProxy,
} AcGiRegenType;

typedef enum { kAcGiFillAlways = 1, kAcGiFillNever } AcGiFillType;

// How an arc is closed: not at all, by two radii, or by its chord.
typedef enum { kAcGiArcSimple = 0, kAcGiArcSector, kAcGiArcChord } AcGiArcType;

typedef enum {
  kAcGiMaxDevForCircle = 0,
  kAcGiMaxDevForCurve,
  kAcGiMaxDevForBoundary,
  kAcGiMaxDevForIsoline,
  kAcGiMaxDevForFacet,
} AcGiDeviationType;

// The properties the primitives that follow are drawn with.
class AcGiSubEntityTraits : public AcRxObject {
 public:
  virtual void setColor(const Adesk::UInt16 color) = 0;
  virtual void setLayer(const AcDbObjectId layerId) = 0;
  virtual void setLineType(const AcDbObjectId linetypeId) = 0;
  virtual void setSelectionMarker(const Adesk::LongPtr markerId) = 0;
  virtual void setFillType(const AcGiFillType fillType) = 0;
  virtual void setLineWeight(const AcDb::LineWeight lineWeight) = 0;
  virtual void setLineTypeScale(double scale = 1.0) = 0;
  virtual void setThickness(double thickness) = 0;

  virtual Adesk::UInt16 color() const = 0;
  virtual AcDbObjectId layerId() const = 0;
  virtual AcDbObjectId lineTypeId() const = 0;
  virtual AcGiFillType fillType() const = 0;
  virtual AcDb::LineWeight lineWeight() const = 0;
  virtual double lineTypeScale() const = 0;
  virtual double thickness() const = 0;
};

// The traits a drawable sets for itself in setAttributes.
class AcGiDrawableTraits : public AcGiSubEntityTraits {};

// What a drawing session knows about its surroundings.
class AcGiContext : public AcRxObject {
 public:
  virtual Adesk::Boolean isPsOut() const = 0;
  virtual Adesk::Boolean isPlotGeneration() const = 0;
  virtual AcDbDatabase* database() const = 0;
};

// The primitives. Each returns true when the regeneration was aborted
// (the drawable should stop drawing).
class AcGiGeometry : public AcRxObject {
 public:
  virtual void getModelToWorldTransform(AcGeMatrix3d& xform) const = 0;
  virtual void getWorldToModelTransform(AcGeMatrix3d& xform) const = 0;
  // Following primitives are given in the coordinates the matrix maps to
  // those of the primitives before it (a block's definition in its
  // reference's place); the normal form maps the plane's coordinates.
  virtual Adesk::Boolean pushModelTransform(const AcGeVector3d& normal) = 0;
  virtual Adesk::Boolean pushModelTransform(const AcGeMatrix3d& xform) = 0;
  virtual Adesk::Boolean popModelTransform() = 0;

  virtual Adesk::Boolean circle(const AcGePoint3d& center, const double radius, const AcGeVector3d& normal) const = 0;
  virtual Adesk::Boolean circle(const AcGePoint3d& p1, const AcGePoint3d& p2, const AcGePoint3d& p3) const = 0;
  // sweepAngle is measured from startVector anticlockwise about normal.
  virtual Adesk::Boolean circularArc(const AcGePoint3d& center, const double radius, const AcGeVector3d& normal,
                                     const AcGeVector3d& startVector, const double sweepAngle,
                                     const AcGiArcType arcType = kAcGiArcSimple) const = 0;
  virtual Adesk::Boolean circularArc(const AcGePoint3d& start, const AcGePoint3d& point, const AcGePoint3d& end,
                                     const AcGiArcType arcType = kAcGiArcSimple) const = 0;
  virtual Adesk::Boolean polyline(const Adesk::UInt32 nbPoints, const AcGePoint3d* pVertexList,
                                  const AcGeVector3d* pNormal = nullptr,
                                  Adesk::LongPtr lBaseSubEntMarker = -1) const = 0;
  // A closed area, filled when the fill type says so.
  virtual Adesk::Boolean polygon(const Adesk::UInt32 nbPoints, const AcGePoint3d* pVertexList) const = 0;
  virtual Adesk::Boolean polypoint(const Adesk::UInt32 nbPoints, const AcGePoint3d* pVertexList,
                                   const AcGeVector3d* pNormal = nullptr,
                                   const Adesk::LongPtr* pSubEntMarkers = nullptr) const = 0;
  // Text starting at position, along direction, in the plane of normal;
  // width is the width factor, oblique the slant angle.
  virtual Adesk::Boolean text(const AcGePoint3d& position, const AcGeVector3d& normal, const AcGeVector3d& direction,
                              const double height, const double width, const double oblique,
                              const ACHAR* pMsg) const = 0;
  virtual Adesk::Boolean xline(const AcGePoint3d& one, const AcGePoint3d& two) const = 0;
  virtual Adesk::Boolean ray(const AcGePoint3d& origin, const AcGePoint3d& through) const = 0;
  // The segments of a lightweight polyline; numSegs 0 for all from fromIndex.
  virtual Adesk::Boolean pline(const AcDbPolyline& lwBuf, Adesk::UInt32 fromIndex = 0,
                               Adesk::UInt32 numSegs = 0) const = 0;
  // Another drawable, with its own properties, in the current transformation.
  virtual Adesk::Boolean draw(AcGiDrawable* pDrawable) const = 0;
  virtual Adesk::Boolean worldLine(const AcGePoint3d pnts[2]) = 0;
};

class AcGiWorldGeometry : public AcGiGeometry {
 public:
  virtual void setExtents(AcGePoint3d* pNewExtents) const = 0;
};

class AcGiCommonDraw : public AcRxObject {
 public:
  virtual AcGiRegenType regenType() const = 0;
  virtual Adesk::Boolean regenAbort() const = 0;
  virtual AcGiSubEntityTraits& subEntityTraits() const = 0;
  virtual AcGiGeometry* rawGeometry() const = 0;
  // True while a jig drags the drawable.
  virtual Adesk::Boolean isDragging() const = 0;
  virtual AcGiContext* context() = 0;
  virtual Adesk::UInt32 numberOfIsolines() const = 0;
  // The largest distance a curve's approximation may stray from it.
  virtual double deviation(const AcGiDeviationType type, const AcGePoint3d& point) const = 0;
};

class AcGiWorldDraw : public AcGiCommonDraw {
 public:
  virtual AcGiWorldGeometry& geometry() const = 0;
};
