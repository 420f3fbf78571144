// The named properties of the drawing's objects: each property is
// described once, with the name programs read it by (getpropertyvalue,
// dumpallproperties), its ActiveX name (vla-get-*, vlax-get-property),
// its type, how to read it and, unless it is read-only, how to change it.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "arx/acadstrc.h"
#include "arx/acge.h"

class AcDbObject;

namespace kelhost::ads {

enum class PropertyType {
  kInteger,  // a 16- or 32-bit integer
  kBoolean,  // 0 or 1
  kReal,     // a distance or number
  kAngle,    // radians
  kPoint,    // a 3D point (or vector)
  kString,
};

struct PropertyValue {
  PropertyType type = PropertyType::kInteger;
  long integer = 0;
  double real = 0.0;
  AcGePoint3d point;
  std::wstring text;

  static PropertyValue Integer(long v, PropertyType t = PropertyType::kInteger);
  static PropertyValue Real(double v, PropertyType t = PropertyType::kReal);
  static PropertyValue Point(const AcGePoint3d& p);
  static PropertyValue Text(std::wstring s);
};

struct PropertyDef {
  const wchar_t* name;        // as getpropertyvalue and dumpallproperties know it
  const wchar_t* activeXName;  // as the ActiveX interface knows it
  PropertyType type;
  std::function<bool(const AcDbObject*)> appliesTo;
  std::function<PropertyValue(const AcDbObject*)> get;
  // Empty for a read-only property. The object is open for write; the
  // value has the property's type already.
  std::function<Acad::ErrorStatus(AcDbObject*, const PropertyValue&)> set;
  bool readOnly() const { return !set; }
};

// The properties of an object, sorted by name.
std::vector<const PropertyDef*> PropertiesOf(const AcDbObject* object);
// A property of the object by its name or its ActiveX name, in any case;
// null when it has none.
const PropertyDef* FindProperty(const AcDbObject* object, std::wstring_view name);
// The value as text, as dumpallproperties shows it.
std::wstring PropertyText(const PropertyValue& value);
// The type's name as dumpallproperties shows it.
const wchar_t* PropertyTypeName(PropertyType type);

}  // namespace kelhost::ads
