// Objects as group-code lists: the entity list of acdbEntGet, the list
// acdbEntMake builds from, and an object's saved state (for undo and
// cloning) are all made and read here through each class's dxfFields().
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "arx/dbmain.h"

namespace kelhost::dxf {

// A new object of the class with that DXF name (any case); null when the
// host has no such class.
std::unique_ptr<AcDbObject> NewObjectOfType(const std::wstring& dxfName);
// The same for an entity whose integer groups pick among the classes that
// share its DXF name: a POLYLINE or VERTEX with the 3D bit in group 70
// (8, 32), an INSERT with more than one column (70) or row (71), an array,
// a DIMENSION by its kind (70's low bits: 0 rotated, 1 aligned, others
// null).
// intGroup gives a group's value, or fallback when the entity lacks it.
std::unique_ptr<AcDbObject> NewObjectOfType(const std::wstring& dxfName,
                                            const std::function<long(int code, long fallback)>& intGroup);
// The same for names in UTF-8, as a file gives them.
std::unique_ptr<AcDbObject> NewObjectOfType(std::string_view dxfName);
std::unique_ptr<AcDbObject> NewObjectOfType(std::string_view dxfName,
                                            const std::function<long(int code, long fallback)>& intGroup);

// The object's list: -1 name, 0 type, 5 handle, its extension dictionary
// (102 groups), 330 owner, its groups; then, when apps is given, -3 and the
// xdata of the applications matching the RTSTR patterns of apps. Null when
// out of memory.
resbuf* ObjectToList(const AcDbObject* object, const resbuf* apps);

// The object's whole state (its list with all its xdata) and back.
resbuf* SaveState(const AcDbObject* object);
bool RestoreState(AcDbObject* object, const resbuf* state);

// Where an entity list's own groups end: the -3 node or null.
const resbuf* XDataSentinel(const resbuf* list);

}  // namespace kelhost::dxf
