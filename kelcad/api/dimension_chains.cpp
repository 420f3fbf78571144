// Single dimensions and the continuous and baseline chains.
#include <cmath>

#include "kelcad/api/current_space.h"
#include "kelcad/api/dimensions.h"

namespace KEL {

namespace {

constexpr double kHalfPi = 1.5707963267948966;

// Appends a new dimension and closes it; one that could not be appended is
// deleted. The id goes to ids (when given) on success.
Acad::ErrorStatus AppendDimension(AcDbDimension* dim, AcDbObjectId& id, AcArray<AcDbObjectId>* ids = nullptr) {
  const Acad::ErrorStatus es = Append(dim, id);
  if (es != Acad::eOk) {
    delete dim;
    return es;
  }
  dim->close();
  if (ids) ids->append(id);
  return es;
}

// Text i of a chain: null past the end of texts (the measurement).
const wchar_t* TextAt(const CStringArray& texts, int i) {
  return i < texts.GetSize() ? static_cast<const wchar_t*>(texts[i]) : nullptr;
}

// The direction of to - from on the XY plane (0 for a vertical span).
double PlanAngle(const AcGePoint3d& from, const AcGePoint3d& to) {
  const double dx = to.x - from.x, dy = to.y - from.y;
  return dx == 0 && dy == 0 ? 0.0 : std::atan2(dy, dx);
}

AcGeVector3d Direction(double angle) { return AcGeVector3d(std::cos(angle), std::sin(angle), 0.0); }

// The next dimension line of a baseline chain: spacing further out from
// current, square to the chain's direction, on the side away from the
// point measured next (the +90 degree side when both are as far).
AcGePoint3d NextBaselinePoint(const AcGePoint3d& current, double rotation, double spacing,
                              const AcGePoint3d& measured) {
  const AcGeVector3d left = Direction(rotation + kHalfPi) * spacing, right = Direction(rotation - kHalfPi) * spacing;
  const AcGePoint3d a = current + left, b = current + right;
  return a.distanceTo(measured) >= b.distanceTo(measured) ? a : b;
}

// The baseline spacing (DIMDLI) of style, or of the drawing's current
// dimension style when style is null.
Acad::ErrorStatus BaselineSpacing(AcDbObjectId style, double& spacing) {
  if (style.isNull()) style = acdbHostApplicationServices()->workingDatabase()->dimstyle();
  AcDbDimStyleTableRecord* record = nullptr;
  const Acad::ErrorStatus es = acdbOpenObject(record, style, AcDb::kForRead);
  if (es != Acad::eOk) return es;
  spacing = record->dimdli();
  record->close();
  return Acad::eOk;
}

// A baseline chain whose first dimension is made by first (an aligned one,
// or a rotated one like the rest) and whose later ones are rotated at
// rotation.
template <class First>
Acad::ErrorStatus Baseline(double rotation, const AcArray<AcGePoint3d>& points, const AcGePoint3d& dimLinePoint,
                           const CStringArray& texts, AcArray<AcDbObjectId>& ids, AcDbObjectId style, First first) {
  if (points.length() < 2) return Acad::eInvalidInput;
  double spacing = 0.0;
  Acad::ErrorStatus es = BaselineSpacing(style, spacing);
  if (es != Acad::eOk) return es;
  AcGePoint3d line = dimLinePoint;
  for (int k = 1; k < points.length(); ++k) {
    AcDbObjectId id;
    if (k == 1) {
      es = AppendDimension(first(points[0], points[1], line, TextAt(texts, 0)), id, &ids);
      continue;
    }
    line = NextBaselinePoint(line, rotation, spacing, points[k]);
    es = AppendDimension(new AcDbRotatedDimension(rotation, points[0], points[k], line, TextAt(texts, k - 1), style),
                         id, &ids);
  }
  return es;
}

}  // namespace

Acad::ErrorStatus CreateAlignedDim(const AcGePoint3d& p1, const AcGePoint3d& p2, const AcGePoint3d& dimLinePoint,
                                   AcDbObjectId& id, const wchar_t* text, AcDbObjectId style) {
  return AppendDimension(new AcDbAlignedDimension(p1, p2, dimLinePoint, text, style), id);
}

Acad::ErrorStatus CreateRotatedDim(double rotation, const AcGePoint3d& p1, const AcGePoint3d& p2,
                                   const AcGePoint3d& dimLinePoint, AcDbObjectId& id, const wchar_t* text,
                                   AcDbObjectId style) {
  return AppendDimension(new AcDbRotatedDimension(rotation, p1, p2, dimLinePoint, text, style), id);
}

Acad::ErrorStatus CreateMRotatedDim(double rotation, const AcArray<AcGePoint3d>& points,
                                    const AcGePoint3d& dimLinePoint, const CStringArray& texts,
                                    AcArray<AcDbObjectId>& ids, AcDbObjectId style) {
  if (points.length() < 2) return Acad::eInvalidInput;
  Acad::ErrorStatus es = Acad::eOk;
  for (int i = 0; i + 1 < points.length(); ++i) {
    AcDbObjectId id;
    es = AppendDimension(
        new AcDbRotatedDimension(rotation, points[i], points[i + 1], dimLinePoint, TextAt(texts, i), style), id, &ids);
  }
  return es;
}

Acad::ErrorStatus CreateMAlignedDim(const AcArray<AcGePoint3d>& points, const AcGePoint3d& dimLinePoint,
                                    const CStringArray& texts, AcArray<AcDbObjectId>& ids, AcDbObjectId style) {
  if (points.length() < 2) return Acad::eInvalidInput;
  AcDbObjectId id;
  Acad::ErrorStatus es = AppendDimension(
      new AcDbAlignedDimension(points[0], points[1], dimLinePoint, TextAt(texts, 0), style), id, &ids);
  const double angle = PlanAngle(points[0], points[1]);
  for (int i = 1; i + 1 < points.length(); ++i)
    es = AppendDimension(
        new AcDbRotatedDimension(angle, points[i], points[i + 1], dimLinePoint, TextAt(texts, i), style), id, &ids);
  return es;
}

Acad::ErrorStatus CreateMBRotatedDim(double rotation, const AcArray<AcGePoint3d>& points,
                                     const AcGePoint3d& dimLinePoint, const CStringArray& texts,
                                     AcArray<AcDbObjectId>& ids, AcDbObjectId style) {
  return Baseline(rotation, points, dimLinePoint, texts, ids, style,
                  [&](const AcGePoint3d& p1, const AcGePoint3d& p2, const AcGePoint3d& line, const wchar_t* text) {
                    return new AcDbRotatedDimension(rotation, p1, p2, line, text, style);
                  });
}

Acad::ErrorStatus CreateMBAlignedDim(const AcArray<AcGePoint3d>& points, const AcGePoint3d& dimLinePoint,
                                     const CStringArray& texts, AcArray<AcDbObjectId>& ids, AcDbObjectId style) {
  const double angle = points.length() >= 2 ? PlanAngle(points[0], points[1]) : 0.0;
  return Baseline(angle, points, dimLinePoint, texts, ids, style,
                  [&](const AcGePoint3d& p1, const AcGePoint3d& p2, const AcGePoint3d& line, const wchar_t* text) {
                    return new AcDbAlignedDimension(p1, p2, line, text, style);
                  });
}

}  // namespace KEL
