// AcDbEllipse: a full ellipse or an elliptical arc.
#pragma once

#include "dbents.h"

// The ellipse is center + cos(t) majorAxis + sin(t) minorAxis, with the
// minor axis normal x majorAxis scaled by the radius ratio. t is the
// curve parameter (DXF groups 41 and 42); an angle is the direction of a
// point seen from the center, counter-clockwise from the major axis about
// the normal, so that tan(angle) = radiusRatio tan(t). Parameters run
// from the start parameter to the end one, past 2pi when the arc crosses
// the major axis. Points and vectors are WCS.
class AcDbEllipse : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDbEllipse);
  // A full circle of radius 1 about the origin in the XY plane.
  AcDbEllipse() = default;
  // As set(); arguments that set() refuses leave the default ellipse.
  AcDbEllipse(const AcGePoint3d& center, const AcGeVector3d& unitNormal, const AcGeVector3d& majorAxis,
              double radiusRatio, double startAngle = 0.0, double endAngle = 6.28318530717958647692);

  AcGePoint3d center() const { return mCenter; }
  Acad::ErrorStatus setCenter(const AcGePoint3d& center);
  AcGeVector3d normal() const { return mNormal; }
  AcGeVector3d majorAxis() const { return mMajor; }
  AcGeVector3d minorAxis() const;
  double radiusRatio() const { return mRatio; }
  // From 1e-6 to 1 (eInvalidInput otherwise).
  Acad::ErrorStatus setRadiusRatio(double ratio);

  double startAngle() const;
  double endAngle() const;
  Acad::ErrorStatus setStartAngle(double angle);
  Acad::ErrorStatus setEndAngle(double angle);
  // The parameters as stored (the curve's getStartParam/getEndParam give
  // the end past the start).
  double startParam() const { return mStartParam; }
  double endParam() const { return mEndParam; }
  Acad::ErrorStatus setStartParam(double param);
  Acad::ErrorStatus setEndParam(double param);
  double paramAtAngle(double angle) const;
  double angleAtParam(double param) const;

  Acad::ErrorStatus get(AcGePoint3d& center, AcGeVector3d& unitNormal, AcGeVector3d& majorAxis, double& radiusRatio,
                        double& startAngle, double& endAngle) const;
  // eInvalidInput for a zero major axis or normal, a major axis not
  // perpendicular to the normal, or a ratio outside 1e-6..1; equal start
  // and end angles make a full ellipse. Needs write access.
  Acad::ErrorStatus set(const AcGePoint3d& center, const AcGeVector3d& unitNormal, const AcGeVector3d& majorAxis,
                        double radiusRatio, double startAngle = 0.0, double endAngle = 6.28318530717958647692);

  bool isNull() const { return mMajor.isZeroLength(); }
  bool isClosed() const override;
  bool buildPath(kelhost::geom::Path& path) const override;
  // Any affine transformation: the image of an ellipse is an ellipse,
  // whose axes are worked out anew (a non-uniform scale too).
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;

 protected:
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  AcGePoint3d mCenter;
  AcGeVector3d mNormal = AcGeVector3d::kZAxis;
  AcGeVector3d mMajor = AcGeVector3d::kXAxis;
  double mRatio = 1.0;
  double mStartParam = 0.0;
  double mEndParam = 6.28318530717958647692;
};
