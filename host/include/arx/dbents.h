// Entity classes: line, circle, arc, point, single-line text and the
// lightweight polyline.
#pragma once

#include <string>
#include <vector>

#include "dbmain.h"
#include "gemat3d.h"

namespace kelhost::geom {
class Path;
}

// The curve interface. Parameters run from getStartParam to getEndParam
// (a line's is the distance from its start, an arc's or circle's the
// angle, a polyline's the vertex index); points are in WCS. A parameter,
// distance or point off the curve answers eInvalidInput.
class AcDbCurve : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbCurve);
  virtual bool isClosed() const { return false; }
  Acad::ErrorStatus getStartParam(double& param) const;
  Acad::ErrorStatus getEndParam(double& param) const;
  Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const;
  Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const;
  Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const;
  Acad::ErrorStatus getParamAtPoint(const AcGePoint3d& point, double& param) const;
  Acad::ErrorStatus getDistAtParam(double param, double& dist) const;
  Acad::ErrorStatus getParamAtDist(double dist, double& param) const;
  Acad::ErrorStatus getDistAtPoint(const AcGePoint3d& point, double& dist) const;
  Acad::ErrorStatus getPointAtDist(double dist, AcGePoint3d& point) const;
  Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& givenPoint, AcGePoint3d& pointOnCurve,
                                      bool extend = false) const;
  Acad::ErrorStatus getFirstDeriv(double param, AcGeVector3d& firstDeriv) const;
  Acad::ErrorStatus getFirstDeriv(const AcGePoint3d& point, AcGeVector3d& firstDeriv) const;

  Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
  Acad::ErrorStatus intersectWith(const AcDbEntity* entity, AcDb::Intersect intType, AcGePoint3dArray& points,
                                  Adesk::GsMarker thisGsMarker = 0, Adesk::GsMarker otherGsMarker = 0) const override;
  // The pieces between the given parameters (or points on the curve), in
  // order along it: new curves with this one's properties, outside any
  // database (the caller deletes them). Values at the ends of an open
  // curve, repeated or unsorted ones are taken as the platform takes them;
  // a closed curve needs two cuts at least. eInvalidInput for a value off
  // the curve or no cut at all; eNotImplementedYet for kinds of curve that
  // cannot be split here (ellipses, splines, the heavy polylines).
  virtual Acad::ErrorStatus getSplitCurves(const AcGeDoubleArray& params, AcDbVoidPtrArray& curveSegments) const;
  virtual Acad::ErrorStatus getSplitCurves(const AcGePoint3dArray& points, AcDbVoidPtrArray& curveSegments) const;

  // The curve's geometry as pieces over its parameter range (host use);
  // false for a curve with no geometry yet.
  virtual bool buildPath(kelhost::geom::Path& path) const;

 protected:
  // The curve from parameter a to b (a < b, b past the end param for the
  // piece of a closed curve that goes round its start), or null when this
  // kind of curve has no pieces of its own kind.
  virtual AcDbCurve* pieceBetween(double a, double b) const;
  // Lines, arcs and circles as such; elliptical and free-form pieces as
  // polylines close to them.
  Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override;
};

class AcDbLine : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDbLine);
  AcDbLine() = default;
  AcDbLine(const AcGePoint3d& start, const AcGePoint3d& end) : mStart(start), mEnd(end) {}
  AcGePoint3d startPoint() const { return mStart; }
  AcGePoint3d endPoint() const { return mEnd; }
  Acad::ErrorStatus setStartPoint(const AcGePoint3d& pt);
  Acad::ErrorStatus setEndPoint(const AcGePoint3d& pt);
  double thickness() const { return mThickness; }
  Acad::ErrorStatus setThickness(double t);
  AcGeVector3d normal() const { return mNormal; }
  Acad::ErrorStatus setNormal(const AcGeVector3d& n);
  bool buildPath(kelhost::geom::Path& path) const override;
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;

 protected:
  AcDbCurve* pieceBetween(double a, double b) const override;
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  AcGePoint3d mStart, mEnd;
  AcGeVector3d mNormal = AcGeVector3d::kZAxis;
  double mThickness = 0.0;
};

class AcDbCircle : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDbCircle);
  AcDbCircle() = default;
  AcDbCircle(const AcGePoint3d& center, const AcGeVector3d& normal, double radius)
      : mCenter(center), mNormal(normal), mRadius(radius) {}
  AcGePoint3d center() const { return mCenter; }
  Acad::ErrorStatus setCenter(const AcGePoint3d& c);
  double radius() const { return mRadius; }
  // A radius must be positive (eInvalidInput).
  Acad::ErrorStatus setRadius(double r);
  double thickness() const { return mThickness; }
  Acad::ErrorStatus setThickness(double t);
  AcGeVector3d normal() const { return mNormal; }
  Acad::ErrorStatus setNormal(const AcGeVector3d& n);
  bool isClosed() const override { return true; }
  bool buildPath(kelhost::geom::Path& path) const override;
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;

 protected:
  AcDbCurve* pieceBetween(double a, double b) const override;
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;
  // The groups of the circle subclass, shared with the arc.
  void circleFields(kelhost::dxf::GroupFiler& filer);

 private:
  AcGePoint3d mCenter;
  AcGeVector3d mNormal = AcGeVector3d::kZAxis;
  double mRadius = 0.0;
  double mThickness = 0.0;
};

class AcDbArc : public AcDbCircle {
 public:
  ACRX_DECLARE_MEMBERS(AcDbArc);
  AcDbArc() = default;
  AcDbArc(const AcGePoint3d& center, double radius, double startAngle, double endAngle);
  double startAngle() const { return mStartAngle; }
  double endAngle() const { return mEndAngle; }
  Acad::ErrorStatus setStartAngle(double a);
  Acad::ErrorStatus setEndAngle(double a);
  bool isClosed() const override { return false; }
  bool buildPath(kelhost::geom::Path& path) const override;
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;

 protected:
  AcDbCurve* pieceBetween(double a, double b) const override;
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  double mStartAngle = 0.0;
  double mEndAngle = 0.0;
};

class AcDbPoint : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbPoint);
  AcDbPoint() = default;
  explicit AcDbPoint(const AcGePoint3d& position) : mPosition(position) {}
  AcGePoint3d position() const { return mPosition; }
  Acad::ErrorStatus setPosition(const AcGePoint3d& p);
  double thickness() const { return mThickness; }
  Acad::ErrorStatus setThickness(double t);
  AcGeVector3d normal() const { return mNormal; }
  Acad::ErrorStatus setNormal(const AcGeVector3d& n);
  double ecsRotation() const { return mEcsRotation; }
  Acad::ErrorStatus setEcsRotation(double a);
  // A box of no size at the position.
  Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
  // Any affine transformation: the position moves, the normal and the
  // thickness along it follow the matrix.
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;

 protected:
  Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override;
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  AcGePoint3d mPosition;
  AcGeVector3d mNormal = AcGeVector3d::kZAxis;
  double mThickness = 0.0;
  double mEcsRotation = 0.0;
};

class AcDbText : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbText);
  AcDbText();
  AcDbText(const AcGePoint3d& position, const ACHAR* text, AcDbObjectId style = AcDbObjectId::kNull,
           double height = 0.0, double rotation = 0.0);

  AcGePoint3d position() const { return mPosition; }
  Acad::ErrorStatus setPosition(const AcGePoint3d& p);
  AcGePoint3d alignmentPoint() const { return mAlignment; }
  Acad::ErrorStatus setAlignmentPoint(const AcGePoint3d& p);
  // The text itself; the pointer lives as long as the text is unchanged.
  const ACHAR* textStringConst() const { return mText.c_str(); }
  // A new copy the caller releases (acutDelString / free).
  ACHAR* textString() const;
  Acad::ErrorStatus setTextString(const ACHAR* text);
  AcDbObjectId textStyle() const { return mStyle; }
  Acad::ErrorStatus setTextStyle(AcDbObjectId style);
  double height() const { return mHeight; }
  Acad::ErrorStatus setHeight(double h);
  double rotation() const { return mRotation; }
  Acad::ErrorStatus setRotation(double a);
  double widthFactor() const { return mWidthFactor; }
  Acad::ErrorStatus setWidthFactor(double w);
  double oblique() const { return mOblique; }
  Acad::ErrorStatus setOblique(double a);
  AcDb::TextHorzMode horizontalMode() const { return static_cast<AcDb::TextHorzMode>(mHorzMode); }
  Acad::ErrorStatus setHorizontalMode(AcDb::TextHorzMode m);
  AcDb::TextVertMode verticalMode() const { return static_cast<AcDb::TextVertMode>(mVertMode); }
  Acad::ErrorStatus setVerticalMode(AcDb::TextVertMode m);
  bool isMirroredInX() const { return (mGeneration & 2) != 0; }
  bool isMirroredInY() const { return (mGeneration & 4) != 0; }
  double thickness() const { return mThickness; }
  Acad::ErrorStatus setThickness(double t);
  AcGeVector3d normal() const { return mNormal; }
  Acad::ErrorStatus setNormal(const AcGeVector3d& n);
  // Moves, rotates and scales the text (uniform scaling only).
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;
  // The box of the text's characters from the baseline to the text height,
  // placed by its justification; character widths are estimated as
  // multiline text estimates them (db/mtext_layout.h). Text that shows no
  // characters has none (eInvalidExtents).
  Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;

 protected:
  Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override;
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;
  // The groups every text-like entity shares (AcDbText's first subclass).
  void textFields(kelhost::dxf::GroupFiler& filer);
  // The vertical justification: group 73 in TEXT, 74 in attributes.
  void verticalModeField(kelhost::dxf::GroupFiler& filer, int code);

 private:
  AcGePoint3d mPosition, mAlignment;
  AcGeVector3d mNormal = AcGeVector3d::kZAxis;
  std::wstring mText;
  AcDbObjectId mStyle;
  double mHeight = 0.0, mRotation = 0.0, mWidthFactor = 1.0, mOblique = 0.0, mThickness = 0.0;
  short mGeneration = 0, mHorzMode = 0, mVertMode = 0;
};

// Lightweight polyline: 2D vertices with widths and bulges in the plane of
// its normal, at its elevation.
class AcDbPolyline : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDbPolyline);
  AcDbPolyline() = default;
  explicit AcDbPolyline(unsigned int reserve) { mVertices.reserve(reserve); }

  unsigned int numVerts() const { return static_cast<unsigned int>(mVertices.size()); }
  // index may equal numVerts() to append; eInvalidIndex beyond.
  Acad::ErrorStatus addVertexAt(unsigned int index, const AcGePoint2d& pt, double bulge = 0.0,
                                double startWidth = -1.0, double endWidth = -1.0);
  Acad::ErrorStatus removeVertexAt(unsigned int index);
  Acad::ErrorStatus getPointAt(unsigned int index, AcGePoint2d& pt) const;
  Acad::ErrorStatus getPointAt(unsigned int index, AcGePoint3d& pt) const;  // in WCS for the default normal
  Acad::ErrorStatus setPointAt(unsigned int index, const AcGePoint2d& pt);
  Acad::ErrorStatus getBulgeAt(unsigned int index, double& bulge) const;
  Acad::ErrorStatus setBulgeAt(unsigned int index, double bulge);
  Acad::ErrorStatus getWidthsAt(unsigned int index, double& startWidth, double& endWidth) const;
  Acad::ErrorStatus setWidthsAt(unsigned int index, double startWidth, double endWidth);
  bool isClosed() const override { return (mFlags & 1) != 0; }
  void setClosed(bool closed);
  bool hasPlinegen() const { return (mFlags & 128) != 0; }
  void setPlinegen(bool on);
  // The one width of every segment; eInvalidInput when the widths differ.
  Acad::ErrorStatus getConstantWidth(double& width) const;
  Acad::ErrorStatus setConstantWidth(double width);
  double elevation() const { return mElevation; }
  void setElevation(double e);
  double thickness() const { return mThickness; }
  Acad::ErrorStatus setThickness(double t);
  AcGeVector3d normal() const { return mNormal; }
  Acad::ErrorStatus setNormal(const AcGeVector3d& n);
  // The segment starting at a vertex: false for the last vertex of an
  // open polyline.
  bool onSegment(unsigned int index) const;
  bool buildPath(kelhost::geom::Path& path) const override;
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;
  // Into lines and arcs with the polyline's properties.
  Acad::ErrorStatus explode(AcDbVoidPtrArray& entitySet) const override;

 protected:
  AcDbCurve* pieceBetween(double a, double b) const override;
  // Its segments, wide ones as filled bands (AcGiGeometry::pline).
  Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override;
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  struct Vertex {
    AcGePoint2d point;
    double startWidth = 0.0, endWidth = 0.0, bulge = 0.0;
  };
  std::vector<Vertex> mVertices;
  AcGeVector3d mNormal = AcGeVector3d::kZAxis;
  double mElevation = 0.0, mThickness = 0.0;
  short mFlags = 0;
};
