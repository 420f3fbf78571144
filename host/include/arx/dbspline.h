// AcDbSpline: a NURBS curve, made from its control points, knots and
// weights or fitted through points.
#pragma once

#include <memory>
#include <vector>

#include "dbents.h"

namespace kelhost::geom {
struct Nurbs;
}

// The curve parameter runs over the knots (from knot degree to knot
// numControlPoints). A spline made from fit points is a cubic through
// them, its knots the cumulative chord lengths, with the start and end
// tangents given (or chosen from the neighbouring points when zero). Bad
// NURBS data (too few control points for the degree, a knot count that
// does not fit, decreasing knots, weights missing or not positive) is
// refused with eInvalidInput and leaves the spline as it was. Points are
// WCS.
class AcDbSpline : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDbSpline);
  // A spline without geometry (isNull()).
  AcDbSpline();
  // Through the fit points (a fitted spline is always cubic; order, the
  // degree + 1, must be from 2 to 26). Unusable fit points leave a null
  // spline.
  AcDbSpline(const AcGePoint3dArray& fitPoints, int order = 4, double fitTolerance = 0.0);
  AcDbSpline(const AcGePoint3dArray& fitPoints, const AcGeVector3d& startTangent, const AcGeVector3d& endTangent,
             int order = 4, double fitTolerance = 0.0);
  // From NURBS data, as setNurbsData(); bad data leaves a null spline.
  AcDbSpline(int degree, Adesk::Boolean rational, Adesk::Boolean closed, Adesk::Boolean periodic,
             const AcGePoint3dArray& controlPoints, const AcGeDoubleArray& knots, const AcGeDoubleArray& weights,
             double controlPtTol = 0.0, double knotTol = 0.0);
  ~AcDbSpline() override;

  bool isNull() const;
  bool isRational() const;
  bool isPeriodic() const { return (mFlags & 2) != 0; }
  // Closed when it ends where it starts.
  bool isClosed() const override;
  bool isPlanar() const { return (mFlags & 8) != 0; }
  int degree() const;
  // The plane's normal of a planar spline.
  AcGeVector3d normal() const { return mNormal; }

  int numControlPoints() const;
  Acad::ErrorStatus getControlPointAt(int index, AcGePoint3d& point) const;
  // Moving a control point drops the fit data (the curve no longer
  // passes through the fit points).
  Acad::ErrorStatus setControlPointAt(int index, const AcGePoint3d& point);
  // 1 for a non-rational spline; weightAt gives -1 for a bad index.
  Acad::ErrorStatus getWeightAt(int index, double& weight) const;
  double weightAt(int index) const;
  // Makes the spline rational; the weight must be positive.
  Acad::ErrorStatus setWeightAt(int index, double weight);
  Acad::ErrorStatus getNurbsData(int& degree, Adesk::Boolean& rational, Adesk::Boolean& closed,
                                 Adesk::Boolean& periodic, AcGePoint3dArray& controlPoints, AcGeDoubleArray& knots,
                                 AcGeDoubleArray& weights, double& controlPtTol, double& knotTol) const;
  // Replaces the geometry and drops any fit data. Weights count only for
  // a rational spline.
  Acad::ErrorStatus setNurbsData(int degree, Adesk::Boolean rational, Adesk::Boolean closed, Adesk::Boolean periodic,
                                 const AcGePoint3dArray& controlPoints, const AcGeDoubleArray& knots,
                                 const AcGeDoubleArray& weights, double controlPtTol = 0.0, double knotTol = 0.0);

  bool hasFitData() const { return !mFit.empty(); }
  int numFitPoints() const { return static_cast<int>(mFit.size()); }
  Acad::ErrorStatus getFitPointAt(int index, AcGePoint3d& point) const;
  // Fit point edits refit the curve.
  Acad::ErrorStatus setFitPointAt(int index, const AcGePoint3d& point);
  Acad::ErrorStatus insertFitPointAt(int index, const AcGePoint3d& point);
  Acad::ErrorStatus removeFitPointAt(int index);
  // eNotApplicable for a spline without fit data.
  Acad::ErrorStatus getFitData(AcGePoint3dArray& fitPoints, int& degree, double& fitTolerance,
                               Adesk::Boolean& tangentsExist, AcGeVector3d& startTangent,
                               AcGeVector3d& endTangent) const;
  // Fits the spline through the points (at least two, no two in a row
  // equal); the result is cubic whatever degree (1 to 25) is asked for.
  // Zero tangents are chosen by the spline.
  Acad::ErrorStatus setFitData(const AcGePoint3dArray& fitPoints, int degree, double fitTolerance,
                               const AcGeVector3d& startTangent, const AcGeVector3d& endTangent);
  Acad::ErrorStatus getFitTangents(AcGeVector3d& startTangent, AcGeVector3d& endTangent) const;
  Acad::ErrorStatus setFitTangents(const AcGeVector3d& startTangent, const AcGeVector3d& endTangent);
  double fitTolerance() const;
  Acad::ErrorStatus setFitTol(double tolerance);
  Acad::ErrorStatus purgeFitData();

  bool buildPath(kelhost::geom::Path& path) const override;
  // Any affine transformation (the curve is affinely invariant).
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;

 protected:
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  // Takes a checked curve: the rational flag follows its weights, the
  // planar and linear flags its points.
  void adopt(kelhost::geom::Nurbs&& curve);
  // Fits a cubic through the points and keeps them as the fit data;
  // false (nothing changed) when they cannot make a curve.
  bool refit(const std::vector<AcGePoint3d>& fit, const AcGeVector3d& startTangent, const AcGeVector3d& endTangent);
  // The planar and linear flags and the normal from the points, the
  // normal kept on the side of the previous one.
  void updatePlanarity();

  // Shared with the paths built from it; replaced, never changed in place.
  std::shared_ptr<const kelhost::geom::Nurbs> mCurve;
  std::vector<AcGePoint3d> mFit;
  AcGeVector3d mStartTangent, mEndTangent;  // zero when not given
  AcGeVector3d mNormal = AcGeVector3d::kZAxis;
  // Negative until given (by the caller or a DXF group).
  double mKnotTolerance = -1.0, mControlTolerance = -1.0, mFitTolerance = -1.0;
  short mFlags = 0;  // 1 closed, 2 periodic, 4 rational, 8 planar, 16 linear
};
