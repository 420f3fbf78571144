// What a drawable drew: its primitives in world coordinates with the
// properties each was drawn with. A jig's samples keep one per sample;
// anything that renders (plots, slides) reads the same primitives.
#pragma once

#include <string>
#include <vector>

#include "arx/acgi.h"

namespace kelhost::gi {

struct Properties {
  Adesk::UInt16 color = 7;
  AcDbObjectId layer;
  AcDbObjectId linetype;
  AcDb::LineWeight lineWeight = AcDb::kLnWtByLayer;
  double linetypeScale = 1.0;
  double thickness = 0.0;
  AcGiFillType fill = kAcGiFillNever;
  Adesk::LongPtr marker = 0;  // selection marker
};

struct Primitive {
  enum Kind {
    kPolyline,  // points joined in order
    kPolygon,   // a closed area (filled when fill says so)
    kPoints,    // separate points
    kCircle,    // center, radius, normal
    kArc,       // center, radius, normal, startVector, sweep, arcType
    kText,      // points[0] the start, normal, direction, height, widthFactor, oblique, text
    kXline,     // points[0] and points[1] on an infinite line
    kRay,       // from points[0] through points[1]
  };
  Kind kind = kPolyline;
  Properties properties;
  std::vector<AcGePoint3d> points;
  AcGePoint3d center;
  double radius = 0.0;
  AcGeVector3d normal = AcGeVector3d::kZAxis;
  AcGeVector3d startVector = AcGeVector3d::kXAxis;  // unit, from the center to the arc's start
  double sweep = 0.0;                               // anticlockwise about normal
  AcGiArcType arcType = kAcGiArcSimple;
  AcGeVector3d direction = AcGeVector3d::kXAxis;    // text baseline, unit
  double height = 0.0, widthFactor = 1.0, oblique = 0.0;
  std::wstring text;
};

typedef std::vector<Primitive> Picture;

}  // namespace kelhost::gi
