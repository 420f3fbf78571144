// Reading the dimension handlers' arguments: each reader takes the next
// argument when it is of its kind and moves past it.
#pragma once

#include "kelcad/platform.h"

namespace KEL {
namespace Lisp {

// A point (2D or 3D).
bool TakePoint(const resbuf*& rb, AcGePoint3d& point);
// A real or a 16-bit integer.
bool TakeNumber(const resbuf*& rb, double& value);
bool TakeShort(const resbuf*& rb, int& value);
bool TakeText(const resbuf*& rb, const wchar_t*& text);
// An entity name, as an object id.
bool TakeEntity(const resbuf*& rb, AcDbObjectId& id);
bool TakeSelection(const resbuf*& rb, ads_name selection);
// A list of points (nil is the empty list).
bool TakePointList(const resbuf*& rb, AcArray<AcGePoint3d>& points);

// The entity name of id, or a selection set of ids (nil when empty), as
// the handler's result.
void ReturnEntity(AcDbObjectId id);
void ReturnSelection(const AcArray<AcDbObjectId>& ids);

}  // namespace Lisp
}  // namespace KEL
