// Making simple entities in model space of the current drawing, and
// layers. Each maker appends its entity through KEL::Append and closes it;
// an entity that could not be appended is deleted and false returned.
#pragma once

#include "kelcad/platform.h"

namespace KEL {

// A LINE; without ends from the origin to the origin, the 2D form at z 0.
bool CreateLine(AcDbObjectId& id);
bool CreateLine(AcGePoint3d start, AcGePoint3d end, AcDbObjectId& id);
bool CreateLine(AcGePoint2d start, AcGePoint2d end, AcDbObjectId& id);

// A lightweight polyline. Without points, and from an array (which is
// taken and emptied, its points not used), it has no vertices; from two
// points it has those two, with bulge 0 and widths -1.0.
bool CreatePline(AcDbObjectId& id);
bool CreatePline(AcArray<AcGePoint2d> pts, AcDbObjectId& id);
bool CreatePline(AcGePoint2d p1, AcGePoint2d p2, AcDbObjectId& id);

// A 3D polyline; without points it has no vertices. closed does two jobs:
// non-zero makes a closed polyline and closes the object; 0 makes an open
// polyline and leaves the object open for write, for the caller to finish
// and close.
bool Create3dPline(AcDbObjectId& id);
bool Create3dPline(AcDb::Poly3dType type, AcArray<AcGePoint3d>& pts, AcDbObjectId& id, int closed);

// A CIRCLE of centre, normal and radius.
bool CreateCircle(AcGePoint3d centre, AcGeVector3d normal, double radius, AcDbObjectId& id);

// A TEXT at position in the drawing's current style, of height 0 and
// rotation 0, with the given width factor.
bool CreateText(AcGePoint3d position, const wchar_t* text, AcDbObjectId& id, double widthFactor);

// The layer name, made when missing (through layerInfo), given the
// linetype record's name ltName (see layerInfo::SetLineTypeName: the
// linetype record itself is renamed) and colour (unless colour is -1),
// and made current when makeCurrent. True only when all of it was done;
// false at once for an empty name.
bool CreateLayer(const wchar_t* name, const wchar_t* ltName, int colour, bool makeCurrent);

}  // namespace KEL
