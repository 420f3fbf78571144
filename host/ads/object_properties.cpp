#include "ads/object_properties.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <memory>

#include "arx/dbblkref.h"
#include "arx/dbdatabase.h"
#include "arx/dbents.h"
#include "arx/dbmtext.h"
#include "arx/dbsymtb.h"
#include "db/stub.h"
#include "kelhost/text.h"

namespace kelhost::ads {

PropertyValue PropertyValue::Integer(long v, PropertyType t) {
  PropertyValue p;
  p.type = t;
  p.integer = v;
  return p;
}
PropertyValue PropertyValue::Real(double v, PropertyType t) {
  PropertyValue p;
  p.type = t;
  p.real = v;
  return p;
}
PropertyValue PropertyValue::Point(const AcGePoint3d& pt) {
  PropertyValue p;
  p.type = PropertyType::kPoint;
  p.point = pt;
  return p;
}
PropertyValue PropertyValue::Text(std::wstring s) {
  PropertyValue p;
  p.type = PropertyType::kString;
  p.text = std::move(s);
  return p;
}

namespace {

using V = PropertyValue;
using T = PropertyType;
using ES = Acad::ErrorStatus;
constexpr double kTwoPi = 6.28318530717958647692;

// A string the platform hands over to be released.
std::wstring Taken(ACHAR* s) {
  std::wstring out = s ? s : L"";
  std::free(s);
  return out;
}

AcGePoint3d AsPoint(const AcGeVector3d& v) { return {v.x, v.y, v.z}; }
AcGeVector3d AsVector(const AcGePoint3d& p) { return {p.x, p.y, p.z}; }

std::wstring RecordName(AcDbObjectId id) {
  const ACHAR* name = nullptr;
  if (auto* rec = db::PeekAs<AcDbSymbolTableRecord>(id)) rec->getName(name);
  return name ? name : L"";
}

// A property of objects of class C (and those derived from it; exactly C
// when exact is set).
template <class C>
PropertyDef Prop(const wchar_t* name, const wchar_t* activeX, T type, std::function<V(const C*)> get,
                 std::function<ES(C*, const V&)> set = {}, bool exact = false) {
  PropertyDef def;
  def.name = name;
  def.activeXName = activeX;
  def.type = type;
  def.appliesTo = [exact](const AcDbObject* o) {
    return exact ? o && o->isA() == C::desc() : C::cast(o) != nullptr;
  };
  def.get = [get](const AcDbObject* o) { return get(static_cast<const C*>(o)); };
  if (set) def.set = [set](AcDbObject* o, const V& v) { return set(static_cast<C*>(o), v); };
  return def;
}

double Normalized(double a) {
  a = std::fmod(a, kTwoPi);
  return a < 0 ? a + kTwoPi : a;
}

std::vector<PropertyDef> MakeDefs() {
  std::vector<PropertyDef> d;
  // Every entity.
  d.push_back(Prop<AcDbObject>(L"Handle", L"Handle", T::kString, [](const AcDbObject* o) {
    ACHAR buf[32] = {0};
    o->objectId().handle().getIntoAsciiBuffer(buf, 32);
    return V::Text(buf);
  }));
  d.push_back(Prop<AcDbEntity>(
      L"Layer", L"Layer", T::kString, [](const AcDbEntity* e) { return V::Text(Taken(e->layer())); },
      [](AcDbEntity* e, const V& v) { return e->setLayer(v.text.c_str()); }));
  d.push_back(Prop<AcDbEntity>(
      L"Color", L"Color", T::kInteger, [](const AcDbEntity* e) { return V::Integer(e->colorIndex()); },
      [](AcDbEntity* e, const V& v) {
        return v.integer < 0 || v.integer > 256 ? Acad::eOutOfRange
                                                : e->setColorIndex(static_cast<Adesk::UInt16>(v.integer));
      }));
  d.push_back(Prop<AcDbEntity>(
      L"Linetype", L"Linetype", T::kString, [](const AcDbEntity* e) { return V::Text(Taken(e->linetype())); },
      [](AcDbEntity* e, const V& v) { return e->setLinetype(v.text.c_str()); }));
  d.push_back(Prop<AcDbEntity>(
      L"LinetypeScale", L"LinetypeScale", T::kReal, [](const AcDbEntity* e) { return V::Real(e->linetypeScale()); },
      [](AcDbEntity* e, const V& v) { return v.real > 0 ? e->setLinetypeScale(v.real) : Acad::eInvalidInput; }));
  d.push_back(Prop<AcDbEntity>(
      L"LineWeight", L"Lineweight", T::kInteger, [](const AcDbEntity* e) { return V::Integer(e->lineWeight()); },
      [](AcDbEntity* e, const V& v) { return e->setLineWeight(static_cast<AcDb::LineWeight>(v.integer)); }));
  d.push_back(Prop<AcDbEntity>(
      L"Visible", L"Visible", T::kBoolean,
      [](const AcDbEntity* e) { return V::Integer(e->visibility() == AcDb::kVisible, T::kBoolean); },
      [](AcDbEntity* e, const V& v) { return e->setVisibility(v.integer ? AcDb::kVisible : AcDb::kInvisible); }));

  // Lines.
  d.push_back(Prop<AcDbLine>(
      L"StartPoint", L"StartPoint", T::kPoint, [](const AcDbLine* l) { return V::Point(l->startPoint()); },
      [](AcDbLine* l, const V& v) { return l->setStartPoint(v.point); }));
  d.push_back(Prop<AcDbLine>(
      L"EndPoint", L"EndPoint", T::kPoint, [](const AcDbLine* l) { return V::Point(l->endPoint()); },
      [](AcDbLine* l, const V& v) { return l->setEndPoint(v.point); }));
  d.push_back(Prop<AcDbLine>(L"Length", L"Length", T::kReal, [](const AcDbLine* l) {
    return V::Real(l->startPoint().distanceTo(l->endPoint()));
  }));
  d.push_back(Prop<AcDbLine>(L"Angle", L"Angle", T::kAngle, [](const AcDbLine* l) {
    const AcGePoint3d a = l->startPoint(), b = l->endPoint();
    return V::Real(Normalized(std::atan2(b.y - a.y, b.x - a.x)), T::kAngle);
  }));
  d.push_back(Prop<AcDbLine>(L"Delta", L"Delta", T::kPoint, [](const AcDbLine* l) {
    const AcGePoint3d a = l->startPoint(), b = l->endPoint();
    return V::Point(AcGePoint3d(b.x - a.x, b.y - a.y, b.z - a.z));
  }));
  d.push_back(Prop<AcDbLine>(
      L"Thickness", L"Thickness", T::kReal, [](const AcDbLine* l) { return V::Real(l->thickness()); },
      [](AcDbLine* l, const V& v) { return l->setThickness(v.real); }));
  d.push_back(Prop<AcDbLine>(
      L"Normal", L"Normal", T::kPoint, [](const AcDbLine* l) { return V::Point(AsPoint(l->normal())); },
      [](AcDbLine* l, const V& v) { return l->setNormal(AsVector(v.point)); }));

  // Circles, and arcs (which are circles with angles).
  d.push_back(Prop<AcDbCircle>(
      L"Center", L"Center", T::kPoint, [](const AcDbCircle* c) { return V::Point(c->center()); },
      [](AcDbCircle* c, const V& v) { return c->setCenter(v.point); }));
  d.push_back(Prop<AcDbCircle>(
      L"Radius", L"Radius", T::kReal, [](const AcDbCircle* c) { return V::Real(c->radius()); },
      [](AcDbCircle* c, const V& v) { return v.real > 0 ? c->setRadius(v.real) : Acad::eInvalidInput; }));
  d.push_back(Prop<AcDbCircle>(
      L"Thickness", L"Thickness", T::kReal, [](const AcDbCircle* c) { return V::Real(c->thickness()); },
      [](AcDbCircle* c, const V& v) { return c->setThickness(v.real); }));
  d.push_back(Prop<AcDbCircle>(
      L"Normal", L"Normal", T::kPoint, [](const AcDbCircle* c) { return V::Point(AsPoint(c->normal())); },
      [](AcDbCircle* c, const V& v) { return c->setNormal(AsVector(v.point)); }));
  d.push_back(Prop<AcDbCircle>(
      L"Diameter", L"Diameter", T::kReal, [](const AcDbCircle* c) { return V::Real(2 * c->radius()); },
      [](AcDbCircle* c, const V& v) { return v.real > 0 ? c->setRadius(v.real / 2) : Acad::eInvalidInput; },
      true));
  d.push_back(Prop<AcDbCircle>(
      L"Circumference", L"Circumference", T::kReal, [](const AcDbCircle* c) { return V::Real(kTwoPi * c->radius()); },
      [](AcDbCircle* c, const V& v) { return v.real > 0 ? c->setRadius(v.real / kTwoPi) : Acad::eInvalidInput; },
      true));
  d.push_back(Prop<AcDbCircle>(
      L"Area", L"Area", T::kReal, [](const AcDbCircle* c) { return V::Real(kTwoPi / 2 * c->radius() * c->radius()); },
      {}, true));
  d.push_back(Prop<AcDbArc>(
      L"StartAngle", L"StartAngle", T::kAngle, [](const AcDbArc* a) { return V::Real(a->startAngle(), T::kAngle); },
      [](AcDbArc* a, const V& v) { return a->setStartAngle(v.real); }));
  d.push_back(Prop<AcDbArc>(
      L"EndAngle", L"EndAngle", T::kAngle, [](const AcDbArc* a) { return V::Real(a->endAngle(), T::kAngle); },
      [](AcDbArc* a, const V& v) { return a->setEndAngle(v.real); }));
  d.push_back(Prop<AcDbArc>(L"TotalAngle", L"TotalAngle", T::kAngle, [](const AcDbArc* a) {
    return V::Real(Normalized(a->endAngle() - a->startAngle()), T::kAngle);
  }));
  d.push_back(Prop<AcDbArc>(L"Length", L"ArcLength", T::kReal, [](const AcDbArc* a) {
    return V::Real(a->radius() * Normalized(a->endAngle() - a->startAngle()));
  }));

  // Curves: their ends.
  auto curveEnd = [](bool start) {
    return [start](const AcDbCurve* c) {
      AcGePoint3d p;
      if (start) c->getStartPoint(p);
      else c->getEndPoint(p);
      return V::Point(p);
    };
  };
  d.push_back(Prop<AcDbArc>(L"StartPoint", L"StartPoint", T::kPoint,
                            [curveEnd](const AcDbArc* a) { return curveEnd(true)(a); }));
  d.push_back(Prop<AcDbArc>(L"EndPoint", L"EndPoint", T::kPoint,
                            [curveEnd](const AcDbArc* a) { return curveEnd(false)(a); }));

  // Lightweight polylines.
  d.push_back(Prop<AcDbPolyline>(
      L"Closed", L"Closed", T::kBoolean, [](const AcDbPolyline* p) { return V::Integer(p->isClosed(), T::kBoolean); },
      [](AcDbPolyline* p, const V& v) {
        p->setClosed(v.integer != 0);
        return Acad::eOk;
      }));
  d.push_back(Prop<AcDbPolyline>(
      L"ConstantWidth", L"ConstantWidth", T::kReal,
      [](const AcDbPolyline* p) {
        double w = 0.0;
        p->getConstantWidth(w);
        return V::Real(w);
      },
      [](AcDbPolyline* p, const V& v) { return v.real >= 0 ? p->setConstantWidth(v.real) : Acad::eInvalidInput; }));
  d.push_back(Prop<AcDbPolyline>(
      L"Elevation", L"Elevation", T::kReal, [](const AcDbPolyline* p) { return V::Real(p->elevation()); },
      [](AcDbPolyline* p, const V& v) {
        p->setElevation(v.real);
        return Acad::eOk;
      }));
  d.push_back(Prop<AcDbPolyline>(
      L"Thickness", L"Thickness", T::kReal, [](const AcDbPolyline* p) { return V::Real(p->thickness()); },
      [](AcDbPolyline* p, const V& v) { return p->setThickness(v.real); }));
  d.push_back(Prop<AcDbPolyline>(
      L"Normal", L"Normal", T::kPoint, [](const AcDbPolyline* p) { return V::Point(AsPoint(p->normal())); },
      [](AcDbPolyline* p, const V& v) { return p->setNormal(AsVector(v.point)); }));
  d.push_back(Prop<AcDbPolyline>(L"Length", L"Length", T::kReal, [](const AcDbPolyline* p) {
    double end = 0.0, length = 0.0;
    if (p->getEndParam(end) == Acad::eOk) p->getDistAtParam(end, length);
    return V::Real(length);
  }));
  d.push_back(Prop<AcDbPolyline>(L"NumberOfVertices", L"NumberOfVertices", T::kInteger, [](const AcDbPolyline* p) {
    return V::Integer(static_cast<long>(p->numVerts()));
  }));

  // Points.
  d.push_back(Prop<AcDbPoint>(
      L"Position", L"Coordinates", T::kPoint, [](const AcDbPoint* p) { return V::Point(p->position()); },
      [](AcDbPoint* p, const V& v) { return p->setPosition(v.point); }));
  d.push_back(Prop<AcDbPoint>(
      L"Thickness", L"Thickness", T::kReal, [](const AcDbPoint* p) { return V::Real(p->thickness()); },
      [](AcDbPoint* p, const V& v) { return p->setThickness(v.real); }));

  // Single-line text.
  d.push_back(Prop<AcDbText>(
      L"TextString", L"TextString", T::kString, [](const AcDbText* t) { return V::Text(t->textStringConst()); },
      [](AcDbText* t, const V& v) { return t->setTextString(v.text.c_str()); }));
  d.push_back(Prop<AcDbText>(
      L"Position", L"InsertionPoint", T::kPoint, [](const AcDbText* t) { return V::Point(t->position()); },
      [](AcDbText* t, const V& v) { return t->setPosition(v.point); }));
  d.push_back(Prop<AcDbText>(
      L"AlignmentPoint", L"TextAlignmentPoint", T::kPoint, [](const AcDbText* t) { return V::Point(t->alignmentPoint()); },
      [](AcDbText* t, const V& v) { return t->setAlignmentPoint(v.point); }));
  d.push_back(Prop<AcDbText>(
      L"Height", L"Height", T::kReal, [](const AcDbText* t) { return V::Real(t->height()); },
      [](AcDbText* t, const V& v) { return v.real > 0 ? t->setHeight(v.real) : Acad::eInvalidInput; }));
  d.push_back(Prop<AcDbText>(
      L"Rotation", L"Rotation", T::kAngle, [](const AcDbText* t) { return V::Real(t->rotation(), T::kAngle); },
      [](AcDbText* t, const V& v) { return t->setRotation(v.real); }));
  d.push_back(Prop<AcDbText>(
      L"WidthFactor", L"ScaleFactor", T::kReal, [](const AcDbText* t) { return V::Real(t->widthFactor()); },
      [](AcDbText* t, const V& v) { return v.real > 0 ? t->setWidthFactor(v.real) : Acad::eInvalidInput; }));
  d.push_back(Prop<AcDbText>(
      L"Oblique", L"ObliqueAngle", T::kAngle, [](const AcDbText* t) { return V::Real(t->oblique(), T::kAngle); },
      [](AcDbText* t, const V& v) { return t->setOblique(v.real); }));
  d.push_back(Prop<AcDbText>(
      L"TextStyleName", L"StyleName", T::kString, [](const AcDbText* t) { return V::Text(RecordName(t->textStyle())); },
      [](AcDbText* t, const V& v) {
        auto* table = db::PeekAs<AcDbSymbolTable>(t->database() ? t->database()->textStyleTableId() : AcDbObjectId());
        AcDbObjectId style;
        if (!table || table->getAt(v.text.c_str(), style) != Acad::eOk) return Acad::eKeyNotFound;
        return t->setTextStyle(style);
      }));
  d.push_back(Prop<AcDbText>(
      L"HorizontalMode", L"HorizontalAlignment", T::kInteger,
      [](const AcDbText* t) { return V::Integer(t->horizontalMode()); },
      [](AcDbText* t, const V& v) {
        return v.integer < 0 || v.integer > 5 ? Acad::eOutOfRange
                                              : t->setHorizontalMode(static_cast<AcDb::TextHorzMode>(v.integer));
      }));
  d.push_back(Prop<AcDbText>(
      L"VerticalMode", L"VerticalAlignment", T::kInteger, [](const AcDbText* t) { return V::Integer(t->verticalMode()); },
      [](AcDbText* t, const V& v) {
        return v.integer < 0 || v.integer > 3 ? Acad::eOutOfRange
                                              : t->setVerticalMode(static_cast<AcDb::TextVertMode>(v.integer));
      }));
  d.push_back(Prop<AcDbText>(
      L"Thickness", L"Thickness", T::kReal, [](const AcDbText* t) { return V::Real(t->thickness()); },
      [](AcDbText* t, const V& v) { return t->setThickness(v.real); }));

  // Multiline text.
  d.push_back(Prop<AcDbMText>(
      L"Contents", L"TextString", T::kString, [](const AcDbMText* t) { return V::Text(Taken(t->contents())); },
      [](AcDbMText* t, const V& v) {
        t->setContents(v.text.c_str());
        return Acad::eOk;
      }));
  d.push_back(Prop<AcDbMText>(
      L"Location", L"InsertionPoint", T::kPoint, [](const AcDbMText* t) { return V::Point(t->location()); },
      [](AcDbMText* t, const V& v) { return t->setLocation(v.point); }));
  d.push_back(Prop<AcDbMText>(
      L"TextHeight", L"Height", T::kReal, [](const AcDbMText* t) { return V::Real(t->textHeight()); },
      [](AcDbMText* t, const V& v) { return v.real > 0 ? t->setTextHeight(v.real) : Acad::eInvalidInput; }));
  d.push_back(Prop<AcDbMText>(
      L"Width", L"Width", T::kReal, [](const AcDbMText* t) { return V::Real(t->width()); },
      [](AcDbMText* t, const V& v) { return v.real >= 0 ? t->setWidth(v.real) : Acad::eInvalidInput; }));
  d.push_back(Prop<AcDbMText>(
      L"Rotation", L"Rotation", T::kAngle, [](const AcDbMText* t) { return V::Real(t->rotation(), T::kAngle); },
      [](AcDbMText* t, const V& v) { return t->setRotation(v.real); }));

  // Block references.
  d.push_back(Prop<AcDbBlockReference>(
      L"Position", L"InsertionPoint", T::kPoint, [](const AcDbBlockReference* b) { return V::Point(b->position()); },
      [](AcDbBlockReference* b, const V& v) { return b->setPosition(v.point); }));
  d.push_back(Prop<AcDbBlockReference>(
      L"Rotation", L"Rotation", T::kAngle, [](const AcDbBlockReference* b) { return V::Real(b->rotation(), T::kAngle); },
      [](AcDbBlockReference* b, const V& v) { return b->setRotation(v.real); }));
  const wchar_t* scaleNames[3][2] = {
      {L"ScaleFactors/X", L"XScaleFactor"}, {L"ScaleFactors/Y", L"YScaleFactor"}, {L"ScaleFactors/Z", L"ZScaleFactor"}};
  for (int axis = 0; axis < 3; ++axis) {
    d.push_back(Prop<AcDbBlockReference>(
        scaleNames[axis][0], scaleNames[axis][1], T::kReal,
        [axis](const AcDbBlockReference* b) {
          const AcGeVector3d s = b->scaleFactors();
          return V::Real(axis == 0 ? s.x : axis == 1 ? s.y : s.z);
        },
        [axis](AcDbBlockReference* b, const V& v) {
          AcGeVector3d s = b->scaleFactors();
          (axis == 0 ? s.x : axis == 1 ? s.y : s.z) = v.real;
          return b->setScaleFactors(s);
        }));
  }
  d.push_back(Prop<AcDbBlockReference>(L"BlockName", L"Name", T::kString, [](const AcDbBlockReference* b) {
    return V::Text(RecordName(b->blockTableRecord()));
  }));
  d.push_back(Prop<AcDbBlockReference>(
      L"Normal", L"Normal", T::kPoint, [](const AcDbBlockReference* b) { return V::Point(AsPoint(b->normal())); },
      [](AcDbBlockReference* b, const V& v) { return b->setNormal(AsVector(v.point)); }));
  return d;
}

const std::vector<PropertyDef>& Defs() {
  static const std::vector<PropertyDef> defs = MakeDefs();
  return defs;
}

}  // namespace

std::vector<const PropertyDef*> PropertiesOf(const AcDbObject* object) {
  std::vector<const PropertyDef*> found;
  if (!object) return found;
  for (const PropertyDef& def : Defs())
    if (def.appliesTo(object)) found.push_back(&def);
  std::stable_sort(found.begin(), found.end(),
                   [](const PropertyDef* a, const PropertyDef* b) { return std::wcscmp(a->name, b->name) < 0; });
  return found;
}

const PropertyDef* FindProperty(const AcDbObject* object, std::wstring_view name) {
  if (!object) return nullptr;
  const std::wstring wanted(name);
  for (const PropertyDef& def : Defs())
    if ((EqualNoCase(def.name, wanted) || EqualNoCase(def.activeXName, wanted)) && def.appliesTo(object)) return &def;
  return nullptr;
}

const wchar_t* PropertyTypeName(PropertyType type) {
  switch (type) {
    case PropertyType::kInteger: return L"int";
    case PropertyType::kBoolean: return L"bool";
    case PropertyType::kReal: return L"double";
    case PropertyType::kAngle: return L"double";
    case PropertyType::kPoint: return L"AcGePoint3d";
    default: return L"AcString";
  }
}

std::wstring PropertyText(const PropertyValue& v) {
  auto fixed = [](double x) {
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.6f", x);
    return std::wstring(buf, buf + std::char_traits<char>::length(buf));
  };
  switch (v.type) {
    case PropertyType::kInteger:
    case PropertyType::kBoolean: return std::to_wstring(v.integer);
    case PropertyType::kReal:
    case PropertyType::kAngle: return fixed(v.real);
    case PropertyType::kPoint: return fixed(v.point.x) + L" " + fixed(v.point.y) + L" " + fixed(v.point.z);
    default: return v.text;
  }
}

}  // namespace kelhost::ads
