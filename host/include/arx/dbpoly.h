// Heavy polylines: AcDb2dPolyline and AcDb3dPolyline own their vertices
// (AcDb2dVertex, AcDb3dPolylineVertex) and the SEQEND that closes the run.
#pragma once

#include <vector>

#include "dbents.h"

// Sub-entities owned by a complex entity, in order, and the SEQEND.
struct AcDbSubentSequence {
  std::vector<AcDbObjectId> items;
  AcDbObjectId end;
};

class AcDbSequenceEnd : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbSequenceEnd);
};

class AcDbVertex : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbVertex);
};

namespace AcDb {
enum Vertex2dType { k2dVertex = 0, k2dSplineCtlVertex = 1, k2dSplineFitVertex = 2, k2dCurveFitVertex = 3 };
enum Poly2dType { k2dSimplePoly = 0, k2dFitCurvePoly = 1, k2dQuadSplinePoly = 2, k2dCubicSplinePoly = 3 };
}  // namespace AcDb

class AcDb2dVertex : public AcDbVertex {
 public:
  ACRX_DECLARE_MEMBERS(AcDb2dVertex);
  AcDb2dVertex() = default;
  // position in the polyline's object coordinate system.
  explicit AcDb2dVertex(const AcGePoint3d& position, double bulge = 0.0, double startWidth = 0.0,
                        double endWidth = 0.0)
      : mPosition(position), mBulge(bulge), mStartWidth(startWidth), mEndWidth(endWidth) {}
  AcGePoint3d position() const { return mPosition; }
  Acad::ErrorStatus setPosition(const AcGePoint3d& p);
  double bulge() const { return mBulge; }
  Acad::ErrorStatus setBulge(double b);
  double startWidth() const { return mStartWidth; }
  double endWidth() const { return mEndWidth; }
  Acad::ErrorStatus setStartWidth(double w);
  Acad::ErrorStatus setEndWidth(double w);
  AcDb::Vertex2dType vertexType() const;

 protected:
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  AcGePoint3d mPosition;
  double mBulge = 0.0, mStartWidth = 0.0, mEndWidth = 0.0, mTangent = 0.0;
  short mFlags = 0;
};

class AcDb3dPolylineVertex : public AcDbVertex {
 public:
  ACRX_DECLARE_MEMBERS(AcDb3dPolylineVertex);
  AcDb3dPolylineVertex() = default;
  explicit AcDb3dPolylineVertex(const AcGePoint3d& position) : mPosition(position) {}
  AcGePoint3d position() const { return mPosition; }
  Acad::ErrorStatus setPosition(const AcGePoint3d& p);

 protected:
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  AcGePoint3d mPosition;
  short mFlags = 32;
};

// The vertices of a heavy polyline are appended once the polyline is in a
// database and open for write; each new vertex joins the database open for
// write (the caller closes it), and the first one brings the SEQEND.
class AcDb2dPolyline : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDb2dPolyline);
  AcDb2dPolyline() = default;
  Acad::ErrorStatus appendVertex(AcDb2dVertex* vertex);
  Acad::ErrorStatus appendVertex(AcDbObjectId& id, AcDb2dVertex* vertex);
  const std::vector<AcDbObjectId>& vertexIds() const { return mSequence.items; }
  AcDbObjectId sequenceEndId() const { return mSequence.end; }
  AcDbSubentSequence& sequence() { return mSequence; }
  bool isClosed() const override { return (mFlags & 1) != 0; }
  Acad::ErrorStatus makeClosed();
  Acad::ErrorStatus makeOpen();
  double elevation() const { return mElevation; }
  Acad::ErrorStatus setElevation(double e);
  double defaultStartWidth() const { return mStartWidth; }
  double defaultEndWidth() const { return mEndWidth; }
  AcGeVector3d normal() const { return mNormal; }
  Acad::ErrorStatus setNormal(const AcGeVector3d& n);
  double thickness() const { return mThickness; }
  bool buildPath(kelhost::geom::Path& path) const override;
  Acad::ErrorStatus explode(AcDbVoidPtrArray& entitySet) const override;

 protected:
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  AcDbSubentSequence mSequence;
  AcGeVector3d mNormal = AcGeVector3d::kZAxis;
  double mElevation = 0.0, mThickness = 0.0, mStartWidth = 0.0, mEndWidth = 0.0;
  short mFlags = 0, mCurveType = 0;
};

class AcDb3dPolyline : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDb3dPolyline);
  AcDb3dPolyline() = default;
  Acad::ErrorStatus appendVertex(AcDb3dPolylineVertex* vertex);
  Acad::ErrorStatus appendVertex(AcDbObjectId& id, AcDb3dPolylineVertex* vertex);
  const std::vector<AcDbObjectId>& vertexIds() const { return mSequence.items; }
  AcDbObjectId sequenceEndId() const { return mSequence.end; }
  AcDbSubentSequence& sequence() { return mSequence; }
  bool isClosed() const override { return (mFlags & 1) != 0; }
  Acad::ErrorStatus makeClosed();
  Acad::ErrorStatus makeOpen();
  bool buildPath(kelhost::geom::Path& path) const override;
  Acad::ErrorStatus explode(AcDbVoidPtrArray& entitySet) const override;

 protected:
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  AcDbSubentSequence mSequence;
  short mFlags = 8;
};
