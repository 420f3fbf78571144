#include "dxf/codec.h"

#include <cstdint>
#include <string_view>
#include <type_traits>
#include <vector>

#include "ads/rbkind.h"
#include "arx/acutads.h"
#include "arx/dbblkref.h"
#include "arx/dbdict.h"
#include "arx/dbdim.h"
#include "arx/dbdictdflt.h"
#include "arx/dbelipse.h"
#include "arx/dbents.h"
#include "arx/dbgroup.h"
#include "arx/dbshape.h"
#include "arx/dbspline.h"
#include "arx/dblayout.h"
#include "arx/dbxrecrd.h"
#include "db/stub.h"
#include "db/xdata.h"
#include "dxf/access.h"
#include "dxf/list_filer.h"
#include "kelhost/text.h"

namespace kelhost::dxf {
namespace {

template <class T>
std::unique_ptr<AcDbObject> Make() {
  return std::make_unique<T>();
}

struct Kind {
  const wchar_t* name;
  std::unique_ptr<AcDbObject> (*make)();
};

const Kind kKinds[] = {
    {L"LINE", Make<AcDbLine>},          {L"CIRCLE", Make<AcDbCircle>},
    {L"ARC", Make<AcDbArc>},            {L"POINT", Make<AcDbPoint>},
    {L"TEXT", Make<AcDbText>},          {L"LWPOLYLINE", Make<AcDbPolyline>},
    {L"LAYER", Make<AcDbLayerTableRecord>}, {L"LTYPE", Make<AcDbLinetypeTableRecord>},
    {L"STYLE", Make<AcDbTextStyleTableRecord>}, {L"DIMSTYLE", Make<AcDbDimStyleTableRecord>},
    {L"VIEW", Make<AcDbViewTableRecord>}, {L"UCS", Make<AcDbUCSTableRecord>},
    {L"VPORT", Make<AcDbViewportTableRecord>}, {L"APPID", Make<AcDbRegAppTableRecord>},
    {L"BLOCK_RECORD", Make<AcDbBlockTableRecord>}, {L"DICTIONARY", Make<AcDbDictionary>},
    {L"XRECORD", Make<AcDbXrecord>},    {L"GROUP", Make<AcDbGroup>},
    // A POLYLINE or VERTEX list with the 3D bit (8 / 32 in group 70) is a
    // 3D polyline or its vertex: see NewEntityForList.
    {L"POLYLINE", Make<AcDb2dPolyline>}, {L"VERTEX", Make<AcDb2dVertex>},
    {L"SEQEND", Make<AcDbSequenceEnd>}, {L"INSERT", Make<AcDbBlockReference>},
    {L"ATTRIB", Make<AcDbAttribute>},   {L"ATTDEF", Make<AcDbAttributeDefinition>},
    {L"ELLIPSE", Make<AcDbEllipse>},    {L"SPLINE", Make<AcDbSpline>},
    {L"MTEXT", Make<AcDbMText>},        {L"SHAPE", Make<AcDbShape>},
    // A DIMENSION is rotated unless group 70 says otherwise (see below).
    {L"DIMENSION", Make<AcDbRotatedDimension>},
    {L"LAYOUT", Make<AcDbLayout>},      {L"PLOTSETTINGS", Make<AcDbPlotSettings>},
    {L"ACDBDICTIONARYWDFLT", Make<AcDbDictionaryWithDefault>}, {L"ACDBPLACEHOLDER", Make<AcDbPlaceHolder>},
};

// The kind named so, in any case of its ASCII letters (every DXF type
// name is ASCII); null when there is none. Works on wide and UTF-8 names
// alike, so that a file's type needs no conversion.
template <class Char>
const Kind* FindKind(const Char* name, size_t length) {
  for (const Kind& k : kKinds) {
    size_t i = 0;
    for (; i < length && k.name[i]; ++i) {
      const auto c = static_cast<std::uint32_t>(static_cast<std::make_unsigned_t<Char>>(name[i]));
      const std::uint32_t upper = c >= 'a' && c <= 'z' ? c - ('a' - 'A') : c;
      if (upper != static_cast<std::uint32_t>(k.name[i])) break;
    }
    if (i == length && !k.name[i]) return &k;
  }
  return nullptr;
}

// The class among those sharing a kind's DXF name that the integer groups
// pick.
std::unique_ptr<AcDbObject> MakeOfKind(const Kind* kind, const std::function<long(int code, long fallback)>& intGroup) {
  if (!kind) return nullptr;
  const std::wstring_view name = kind->name;
  if (name == L"POLYLINE" && (intGroup(70, 0) & 8)) return std::make_unique<AcDb3dPolyline>();
  if (name == L"VERTEX" && (intGroup(70, 0) & 32)) return std::make_unique<AcDb3dPolylineVertex>();
  if (name == L"INSERT" && (intGroup(70, 1) > 1 || intGroup(71, 1) > 1)) return std::make_unique<AcDbMInsertBlock>();
  // A dimension's kind is group 70's low bits; the kinds the host does not
  // model have no class (a file keeps them verbatim, entmake refuses them).
  if (name == L"DIMENSION") {
    switch (intGroup(70, 0) & 0x0F) {
      case 0: return std::make_unique<AcDbRotatedDimension>();
      case 1: return std::make_unique<AcDbAlignedDimension>();
      case 3: return std::make_unique<AcDbDiametricDimension>();
      case 4: return std::make_unique<AcDbRadialDimension>();
      case 6: return std::make_unique<AcDbOrdinateDimension>();
      default: return nullptr;
    }
  }
  return kind->make();
}

}  // namespace

std::unique_ptr<AcDbObject> NewObjectOfType(const std::wstring& dxfName) {
  const Kind* kind = FindKind(dxfName.data(), dxfName.size());
  return kind ? kind->make() : nullptr;
}

std::unique_ptr<AcDbObject> NewObjectOfType(const std::wstring& dxfName,
                                            const std::function<long(int code, long fallback)>& intGroup) {
  return MakeOfKind(FindKind(dxfName.data(), dxfName.size()), intGroup);
}

std::unique_ptr<AcDbObject> NewObjectOfType(std::string_view dxfName) {
  const Kind* kind = FindKind(dxfName.data(), dxfName.size());
  return kind ? kind->make() : nullptr;
}

std::unique_ptr<AcDbObject> NewObjectOfType(std::string_view dxfName,
                                            const std::function<long(int code, long fallback)>& intGroup) {
  return MakeOfKind(FindKind(dxfName.data(), dxfName.size()), intGroup);
}

const resbuf* XDataSentinel(const resbuf* list) {
  for (const resbuf* rb = list; rb; rb = rb->rbnext)
    if (rb->restype == -3) return rb;
  return nullptr;
}

resbuf* ObjectToList(const AcDbObject* object, const resbuf* apps) {
  if (!object) return nullptr;
  auto* obj = const_cast<AcDbObject*>(object);  // a writer only reads the object
  ListWriter w(obj->database());
  w.addName(-1, obj->objectId());
  w.addText(0, obj->isA()->dxfName());
  ACHAR handle[20] = L"0";
  obj->objectHandle().getIntoAsciiBuffer(handle, 20);
  const AcDbObjectId xdict = obj->extensionDictionary();
  const bool hasXdict = !xdict.isNull() && !xdict.isErased();
  if (hasXdict) {
    w.addText(5, handle);
    w.addText(102, L"{ACAD_XDICTIONARY");
    w.addName(360, xdict);
    w.addText(102, L"}");
    w.addName(330, obj->ownerId());
  } else {
    w.addName(330, obj->ownerId());
    w.addText(5, handle);
  }
  Access::fields(obj, w);
  if (apps) {
    // Each application whose name matches one of the patterns, in the
    // object's order.
    bool any = false;
    for (const resbuf* app = Access::xdata(obj); app;) {
      const resbuf* end = app->rbnext;
      while (end && end->restype != 1001) end = end->rbnext;
      const std::wstring name = ToUpper(app->resval.rstring ? app->resval.rstring : L"");
      bool match = false;
      for (const resbuf* p = apps; p && !match; p = p->rbnext)
        match = p->restype == RTSTR && p->resval.rstring &&
                acutWcMatch(name.c_str(), ToUpper(p->resval.rstring).c_str()) == RTNORM;
      if (match) {
        if (!any) w.add(-3);
        any = true;
        for (const resbuf* rb = app; rb != end; rb = rb->rbnext) {
          resbuf* one = rb::CopyNode(rb);
          if (!one) {
            w.fail(L"out of memory");
            break;
          }
          resbuf* chain = one;
          w.chain(chain);
          acutRelRb(one);
        }
      }
      app = end;
    }
  }
  return w.take();
}

resbuf* SaveState(const AcDbObject* object) {
  static resbuf all = [] {
    resbuf rb{};
    rb.restype = RTSTR;
    rb.resval.rstring = const_cast<ACHAR*>(L"*");
    return rb;
  }();
  return ObjectToList(object, &all);
}

bool RestoreState(AcDbObject* object, const resbuf* state) {
  std::vector<const resbuf*> groups;
  const resbuf* sentinel = XDataSentinel(state);
  AcDbObjectId owner, xdict;
  bool header = true;  // before the first subclass marker
  for (const resbuf* rb = state; rb && rb != sentinel; rb = rb->rbnext) {
    if (rb->restype == 100) header = false;
    if (!header) {
      groups.push_back(rb);
      continue;
    }
    switch (rb->restype) {
      case 330: owner.setFromOldId(rb->resval.rlname[0]); break;
      case 360: xdict.setFromOldId(rb->resval.rlname[0]); break;
      default: break;  // -1, 0, 5, 102: identity, not state
    }
  }
  ListReader reader(object->database(), groups, false);
  Access::fields(object, reader);
  if (reader.failed()) return false;
  Access::setOwner(object, owner);
  Access::setExtensionDictionary(object, xdict);
  acutRelRb(Access::xdata(object));
  Access::xdata(object) = sentinel ? rb::CopyChain(sentinel->rbnext) : nullptr;
  return true;
}

}  // namespace kelhost::dxf
