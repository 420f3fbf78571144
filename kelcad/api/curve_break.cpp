// Breaking a curve into pieces at points on it.
#include <algorithm>
#include <utility>
#include <vector>

#include "kelcad/api/current_space.h"
#include "kelcad/api/curves.h"
#include "kelcad/api/opened.h"

namespace KEL {

namespace {

using Interval = std::pair<double, double>;

// Deletes what getSplitCurves made and was not handed to the drawing.
struct LoosePieces {
  AcDbVoidPtrArray pieces;
  int handedOver = 0;
  ~LoosePieces() {
    for (int i = handedOver; i < pieces.length(); ++i) delete static_cast<AcDbEntity*>(pieces[i]);
  }
};

// Whether the middle of the piece lies between the points of a pair.
bool BetweenAPair(const AcDbCurve& curve, const AcDbCurve& piece, const std::vector<Interval>& gaps) {
  if (gaps.empty()) return false;
  double end = 0.0, length = 0.0, at = 0.0;
  AcGePoint3d middle;
  if (piece.getEndParam(end) != Acad::eOk || piece.getDistAtParam(end, length) != Acad::eOk ||
      piece.getPointAtDist(length / 2, middle) != Acad::eOk || curve.getParamAtPoint(middle, at) != Acad::eOk)
    return false;
  for (const Interval& gap : gaps)
    if (at > gap.first && at < gap.second) return true;
  return false;
}

void EraseAll(const AcArray<AcDbObjectId>& ids) {
  for (int i = 0; i < ids.length(); ++i) {
    Opened<AcDbEntity> made(ids[i], AcDb::kForWrite);
    if (made) made->erase();
  }
}

}  // namespace

bool Break(AcDbObjectId id, const AcArray<AcGePoint3d>& points, bool dropBetweenPairs, AcArray<AcDbObjectId>& pieces) {
  Opened<AcDbCurve> curve(id, AcDb::kForWrite);
  if (!curve) return false;
  AcGeDoubleArray params;
  for (int i = 0; i < points.length(); ++i) {
    double t = 0.0;
    if (curve->getParamAtPoint(points[i], t) == Acad::eOk) params.append(t);
  }
  // BREAK's two points: the part from the lower parameter to the higher
  // one goes (on a closed curve, the way the curve runs).
  std::vector<Interval> gaps;
  if (dropBetweenPairs)
    for (int i = 0; i + 1 < params.length(); i += 2)
      gaps.emplace_back(std::min(params[i], params[i + 1]), std::max(params[i], params[i + 1]));
  LoosePieces made;
  if (params.isEmpty() || curve->getSplitCurves(params, made.pieces) != Acad::eOk) return false;
  AcArray<AcDbObjectId> added;
  for (; made.handedOver < made.pieces.length(); ++made.handedOver) {
    auto* piece = static_cast<AcDbCurve*>(made.pieces[made.handedOver]);
    if (BetweenAPair(*curve.get(), *piece, gaps)) {
      delete piece;
      continue;
    }
    AcDbObjectId pieceId;
    if (Append(piece, pieceId) != Acad::eOk) {
      EraseAll(added);
      return false;  // the piece not appended is deleted with the rest
    }
    piece->close();
    added.append(pieceId);
  }
  curve->erase();
  pieces.append(added);
  return true;
}

}  // namespace KEL
