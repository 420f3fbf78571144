// Object properties by name: getpropertyvalue, setpropertyvalue,
// ispropertyreadonly and dumpallproperties, over the one description of
// each object's properties (ads/object_properties.h).
#include "ads/entity_names.h"
#include "ads/object_properties.h"
#include "arx/acdbads.h"
#include "arx/dbmain.h"
#include "db/stub.h"
#include "lisp/machine.h"

namespace kelhost::lisp {
namespace {

using ads::PropertyType;
using ads::PropertyValue;

// The platform answers every refused property request so.
constexpr wchar_t kRequestError[] = L"ADS request error";

AcDbObjectId ObjectArg(Machine& m, const ValuePtr& v) {
  if (!Is(v, Kind::Ename)) m.badArgument(L"lentityp ", v);
  const AcDbObjectId id = ads::IdOfName(As<NameValue>(v)->name);
  if (id.isNull() || id.isErased() || !db::Peek(id)) m.raise(kRequestError);
  return id;
}

const ads::PropertyDef& PropertyArg(Machine& m, AcDbObjectId id, const ValuePtr& v) {
  const ads::PropertyDef* def = ads::FindProperty(db::Peek(id), StrArg(m, v));
  if (!def) m.raise(kRequestError);
  return *def;
}

ValuePtr ToLisp(const PropertyValue& v) {
  switch (v.type) {
    case PropertyType::kInteger:
    case PropertyType::kBoolean: return MakeInt(static_cast<std::int32_t>(v.integer));
    case PropertyType::kReal:
    case PropertyType::kAngle: return MakeReal(v.real);
    case PropertyType::kPoint: {
      ListBuilder b;
      b.add(MakeReal(v.point.x));
      b.add(MakeReal(v.point.y));
      b.add(MakeReal(v.point.z));
      return b.take();
    }
    default: return MakeStr(v.text);
  }
}

// The value as the property's type; false when it cannot be one.
bool FromLisp(const ValuePtr& v, PropertyType type, PropertyValue& out) {
  out.type = type;
  switch (type) {
    case PropertyType::kInteger:
      if (!Is(v, Kind::Int)) return false;
      out.integer = As<IntValue>(v)->value;
      return true;
    case PropertyType::kBoolean:
      if (Is(v, Kind::Int)) out.integer = As<IntValue>(v)->value != 0;
      else if (!v || Is(v, Kind::Sym)) out.integer = v != nullptr;
      else return false;
      return true;
    case PropertyType::kReal:
    case PropertyType::kAngle:
      if (!IsNumber(v)) return false;
      out.real = NumberOf(v);
      return true;
    case PropertyType::kPoint: {
      Args items;
      if (!ListElements(v, items) || items.size() < 2 || items.size() > 3) return false;
      double p[3] = {0, 0, 0};
      for (size_t k = 0; k < items.size(); ++k) {
        if (!IsNumber(items[k])) return false;
        p[k] = NumberOf(items[k]);
      }
      out.point.set(p[0], p[1], p[2]);
      return true;
    }
    default:
      if (!Is(v, Kind::Str)) return false;
      out.text = As<StrValue>(v)->value;
      return true;
  }
}

ValuePtr GetPropertyValue(Machine& m, Args& a) {
  const AcDbObjectId id = ObjectArg(m, a[0]);
  const ads::PropertyDef& def = PropertyArg(m, id, a[1]);
  return ToLisp(def.get(db::Peek(id)));
}

// (setpropertyvalue ename name value): nil; the change is made as any
// other change to the object (undone by UNDO).
ValuePtr SetPropertyValue(Machine& m, Args& a) {
  const AcDbObjectId id = ObjectArg(m, a[0]);
  const ads::PropertyDef& def = PropertyArg(m, id, a[1]);
  PropertyValue value;
  if (def.readOnly() || !FromLisp(a[2], def.type, value)) m.raise(kRequestError);
  AcDbObject* object = nullptr;
  if (acdbOpenObject(object, id, AcDb::kForWrite) != Acad::eOk || !object) m.raise(kRequestError);
  Acad::ErrorStatus status;
  try {
    status = def.set(object, value);
  } catch (...) {
    object->close();
    throw;
  }
  object->close();
  if (status != Acad::eOk) m.raise(kRequestError);
  return nullptr;
}

ValuePtr IsPropertyReadOnly(Machine& m, Args& a) {
  const AcDbObjectId id = ObjectArg(m, a[0]);
  return MakeInt(PropertyArg(m, id, a[1]).readOnly() ? 1 : 0);
}

// (dumpallproperties ename [context]): every property with its type and
// value on the command line.
ValuePtr DumpAllProperties(Machine& m, Args& a) {
  const AcDbObjectId id = ObjectArg(m, a[0]);
  if (a.size() > 1 && a[1]) IntArg(m, a[1]);
  const AcDbObject* object = db::Peek(id);
  std::wstring text = L"\nBegin dumping object (class: " + std::wstring(object->isA()->name()) + L")";
  for (const ads::PropertyDef* def : ads::PropertiesOf(object)) {
    text += L"\n" + std::wstring(def->name) + L" (type: " + ads::PropertyTypeName(def->type) + L")";
    if (def->readOnly()) text += L"  (RO)";
    text += L" = " + ads::PropertyText(def->get(object));
  }
  text += L"\nEnd object dump";
  m.write(text);
  return nullptr;
}

}  // namespace

void RegisterPropertyBuiltins(Machine& m) {
  m.defineBuiltin(L"GETPROPERTYVALUE", GetPropertyValue, 2, 2);
  m.defineBuiltin(L"SETPROPERTYVALUE", SetPropertyValue, 3, 3);
  m.defineBuiltin(L"ISPROPERTYREADONLY", IsPropertyReadOnly, 2, 2);
  m.defineBuiltin(L"DUMPALLPROPERTIES", DumpAllProperties, 1, 2);
}

}  // namespace kelhost::lisp
