// Heavy polylines: AcDb2dPolyline and AcDb3dPolyline own their vertices
// (AcDb2dVertex, AcDb3dPolylineVertex) and the SEQEND that closes the run.
#pragma once

#include <memory>
#include <vector>

#include "dbents.h"

// Sub-entities owned by a complex entity, in order, and the SEQEND. Those
// appended while the owner is not in a database are held here and join
// the database with their owner.
struct AcDbSubentSequence {
  std::vector<AcDbObjectId> items;
  AcDbObjectId end;
  std::vector<std::unique_ptr<AcDbEntity>> pending;
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
enum Poly3dType { k3dSimplePoly = 0, k3dQuadSplinePoly = 1, k3dCubicSplinePoly = 2 };
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
  // Moves the vertex within its polyline's plane (the WCS XY plane for a
  // vertex without a polyline): the transformed point projected back.
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;

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
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;

 protected:
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  AcGePoint3d mPosition;
  short mFlags = 32;
};

// Vertices appended to a heavy polyline in a database (open for write) join
// the database open for write (the caller closes them), the first with the
// SEQEND. Vertices appended to a polyline not yet in a database belong to
// it (the caller neither closes nor deletes them) and join the database
// with it; vertexIds() lists those in the database.
class AcDb2dPolyline : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDb2dPolyline);
  AcDb2dPolyline() = default;
  // A polyline through vertices (OCS X and Y; Z is ignored) with their
  // bulges, if given, one per vertex. A fitted or splined type is recorded
  // in the flags (70) and curve type (75); the vertices are kept as given,
  // no fit vertices are generated.
  AcDb2dPolyline(AcDb::Poly2dType type, const AcGePoint3dArray& vertices, double elevation = 0.0,
                 bool closed = false, double defStartWidth = 0.0, double defEndWidth = 0.0,
                 const AcGeDoubleArray* bulges = nullptr);
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
  // The polyline and its vertices. A non-uniform scaling keeps straight
  // segments straight but cannot carry arcs or widths
  // (eCannotScaleNonUniformly); a vertex open elsewhere stops it unchanged.
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;

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
  // A polyline through vertices; a splined type is recorded in the flags
  // (70) only, the vertices are kept as given.
  AcDb3dPolyline(AcDb::Poly3dType type, const AcGePoint3dArray& vertices, bool closed = false);
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
  // The vertices, by any affine transformation.
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;

 protected:
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  AcDbSubentSequence mSequence;
  short mFlags = 8;
};
