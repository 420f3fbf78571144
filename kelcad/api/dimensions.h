// Linear dimensions: single ones, continuous and baseline chains, merging a
// chain into one dimension and splitting one into a chain, and the
// per-dimension settings the family's programs change. New dimensions go
// to model space of the current drawing through KEL::Append; a dimension
// that could not be appended is deleted and adds no id. Points are WCS.
#pragma once

#include "kelcad/platform.h"

namespace KEL {

// One aligned dimension measuring p1-p2 whose dimension line passes
// through dimLinePoint. text null (or empty) shows the measurement; style
// null is the drawing's current dimension style. The status of the append.
Acad::ErrorStatus CreateAlignedDim(const AcGePoint3d& p1, const AcGePoint3d& p2, const AcGePoint3d& dimLinePoint,
                                   AcDbObjectId& id, const wchar_t* text = nullptr,
                                   AcDbObjectId style = AcDbObjectId::kNull);
// One rotated (linear) dimension along rotation (radians, about +Z).
Acad::ErrorStatus CreateRotatedDim(double rotation, const AcGePoint3d& p1, const AcGePoint3d& p2,
                                   const AcGePoint3d& dimLinePoint, AcDbObjectId& id, const wchar_t* text = nullptr,
                                   AcDbObjectId style = AcDbObjectId::kNull);

// Continuous chains: one dimension per step points[i]-points[i+1], all on
// the dimension line through dimLinePoint. texts[i] is the text of step i;
// steps past the end of texts show their measurement. The aligned chain is
// an aligned first step followed by rotated steps in its direction. Ids
// are appended to ids in order; a failed append does not stop the chain.
// Fewer than two points: eInvalidInput, nothing made. Otherwise the status
// of the last append.
Acad::ErrorStatus CreateMAlignedDim(const AcArray<AcGePoint3d>& points, const AcGePoint3d& dimLinePoint,
                                    const CStringArray& texts, AcArray<AcDbObjectId>& ids,
                                    AcDbObjectId style = AcDbObjectId::kNull);
Acad::ErrorStatus CreateMRotatedDim(double rotation, const AcArray<AcGePoint3d>& points,
                                    const AcGePoint3d& dimLinePoint, const CStringArray& texts,
                                    AcArray<AcDbObjectId>& ids, AcDbObjectId style = AcDbObjectId::kNull);

// Baseline chains: dimension k-1 measures points[0]-points[k]. The first
// dimension line passes through dimLinePoint; each later one lies the
// style's baseline spacing (DIMDLI) further out, on the side away from the
// point it measures. style null: the drawing's current dimension style
// (whose record must open: its status otherwise). The aligned chain's
// first dimension is aligned, the rest rotated in its direction.
Acad::ErrorStatus CreateMBAlignedDim(const AcArray<AcGePoint3d>& points, const AcGePoint3d& dimLinePoint,
                                     const CStringArray& texts, AcArray<AcDbObjectId>& ids,
                                     AcDbObjectId style = AcDbObjectId::kNull);
Acad::ErrorStatus CreateMBRotatedDim(double rotation, const AcArray<AcGePoint3d>& points,
                                     const AcGePoint3d& dimLinePoint, const CStringArray& texts,
                                     AcArray<AcDbObjectId>& ids, AcDbObjectId style = AcDbObjectId::kNull);

// Merges aligned and rotated dimensions of one direction into one of the
// first one's kind, style, layer and own settings, between the two
// extension-line points lying farthest apart, on the first one's
// dimension-line point; then erases them. Prints "\nangle:%f , rotation:%f"
// for each input (the angle of its measured points and its direction,
// radians in [0, pi)). No dimensions: eInvalidInput; an input that is no
// aligned or rotated dimension: eNotThatKindOfClass (or its open status);
// directions differing by more than 1e-6: eNotApplicable. Nothing is
// erased when it fails.
Acad::ErrorStatus ManyDimEntToOne(const AcArray<AcDbObjectId>& dims, AcDbObjectId& id);
Acad::ErrorStatus ManyDimEntToOne(const ads_name selection, AcDbObjectId& id);

// Splits an aligned or rotated dimension at the projections of points on
// its measured line into rotated dimensions in its direction, on its
// dimension-line point, with its style, layer and own settings; then
// erases it. Points that project onto an end or onto each other add no
// piece. The status of the open, or of the last append.
Acad::ErrorStatus OneDimEntToMany(AcDbObjectId dim, const AcArray<AcGePoint3d>& points,
                                  AcArray<AcDbObjectId>& ids);

// Settings of one dimension. Each opens it for write (an entity that is no
// dimension gives eNotThatKindOfClass and is left as it was), calls one
// setter and closes it: the setter's status.
// The style's data as the dimension's own (setDimstyleData); a null style,
// which a name that is not found gives, drops its own settings and leaves
// it in the drawing's current dimension style.
Acad::ErrorStatus SetEntDimStyle(AcDbObjectId dim, AcDbObjectId style);
Acad::ErrorStatus SetEntDimStyle(AcDbObjectId dim, CString styleName);
// The text: null or "" the measurement, "<>" in it stands for it.
Acad::ErrorStatus SetEntDimText(AcDbObjectId dim, const wchar_t* text);
// Decimal places (DIMDEC, 0 to 8) and rounding (DIMRND) of its own.
Acad::ErrorStatus SetEntDimDec(AcDbObjectId& dim, int places);
Acad::ErrorStatus SetEntDimRnd(AcDbObjectId& dim, double rounding);
// Text gap (DIMGAP), arrow size (DIMASZ), dimension-line extension
// (DIMDLE), extension-line extension (DIMEXE) and the arrowhead of both
// ends (DIMBLK by name, DIMSAH off), in that order; the first status that
// is not eOk stops it. The system variable DIMSAH is 0 while the arrowhead
// is given, and is then restored.
Acad::ErrorStatus SetDimEntProperty(AcDbObjectId dim, double textGap, double arrowSize, double lineExtension,
                                    double extensionBeyond, const wchar_t* arrowBlock);

}  // namespace KEL
