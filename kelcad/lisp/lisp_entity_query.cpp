// Entities from AutoLISP: setting a colour, testing a type, and the
// rectangle around entities.
#include <cwctype>
#include <string>

#include "kelcad/api/entity_bounds.h"
#include "kelcad/lisp/query_handlers.h"
#include "kelcad/lisp/usage_lines.h"

namespace KEL {
namespace Lisp {

namespace {

bool IsEntity(const resbuf* rb) { return rb != nullptr && rb->restype == RTENAME; }

bool SetColorIndex(const ads_name ent, int index) {
  AcDbObjectId id;
  if (acdbGetObjectId(id, ent) != Acad::eOk) return false;
  AcDbEntity* entity = nullptr;
  if (acdbOpenObject(entity, id, AcDb::kForWrite) != Acad::eOk) return false;
  const bool done = index >= 0 && entity->setColorIndex(static_cast<Adesk::UInt16>(index)) == Acad::eOk;
  entity->close();
  return done;
}

// The entity's type as its entity list names it ("LINE", "LWPOLYLINE"),
// empty when it has none.
std::wstring TypeName(const ads_name ent) {
  std::wstring type;
  resbuf* list = acdbEntGet(ent);
  for (const resbuf* rb = list; rb != nullptr; rb = rb->rbnext)
    if (rb->restype == 0 && rb->resval.rstring != nullptr) {
      type = rb->resval.rstring;
      break;
    }
  acutRelRb(list);
  return type;
}

// The pattern as wcmatch reads it: upper case, the full-width comma of
// Chinese input as the comma between alternatives.
std::wstring TypePattern(const wchar_t* pattern) {
  std::wstring out;
  for (const wchar_t* c = pattern; *c != L'\0'; ++c) out += *c == L'，' ? L',' : static_cast<wchar_t>(std::towupper(*c));
  return out;
}

}  // namespace

int KEL_SetEntColorIndex() {
  const resbuf* ent = acedGetArgs();
  const resbuf* index = ent != nullptr ? ent->rbnext : nullptr;
  if (!IsEntity(ent) || index == nullptr || index->restype != RTSHORT) {
    PrintUsageLines({L"\n (KEL_SetEntColorIndex) 参数错", L"\n (KEL_SetEntColorIndex 实体名 色号 )"});
    return RTNORM;
  }
  ReturnBool(SetColorIndex(ent->resval.rlname, index->resval.rint));
  return RTNORM;
}

int KEL_EntIsType() {
  const resbuf* ent = acedGetArgs();
  const resbuf* pattern = ent != nullptr ? ent->rbnext : nullptr;
  if (!IsEntity(ent) || pattern == nullptr || pattern->restype != RTSTR || pattern->resval.rstring == nullptr) {
    PrintUsageLines({L"\n (KEL_EntIsType) 参数错",
                     L"\n (KEL_EntIsType 实体名 类型串,可用通配符及可以用“，”隔开表示“或”的关系 )"});
    return RTNORM;
  }
  const std::wstring type = TypeName(ent->resval.rlname);
  ReturnBool(!type.empty() && acutWcMatch(type.c_str(), TypePattern(pattern->resval.rstring).c_str()) == RTNORM);
  return RTNORM;
}

namespace {

// A set of the entity names between a list's brackets (nested lists
// included); false, with no set left behind, when there is none.
bool SetOfListedNames(const resbuf* open, ads_name set) {
  if (acedSSAdd(nullptr, nullptr, set) != RTNORM) return false;
  int depth = 0;
  bool any = false;
  for (const resbuf* rb = open; rb != nullptr; rb = rb->rbnext) {
    if (rb->restype == RTLB) ++depth;
    if (rb->restype == RTLE && --depth == 0) break;
    if (rb->restype == RTENAME && acedSSAdd(rb->resval.rlname, set, set) == RTNORM) any = true;
  }
  if (!any) acedSSFree(set);
  return any;
}

}  // namespace

int KEL_GetSSRect() {
  const resbuf* arg = acedGetArgs();
  acedRetNil();
  ads_name listed = {0, 0};
  const bool isList = arg != nullptr && arg->restype == RTLB;
  const bool alone = arg != nullptr && (arg->restype == RTENAME || arg->restype == RTPICKS) && arg->rbnext == nullptr;
  if (isList ? !SetOfListedNames(arg, listed) : !alone) {
    acutPrintf(L"%s", L"参数传递错误!\n用法:(kel_GetSSRect 实体名或选择集名或实体名表)");
    return RTERROR;
  }
  double min[3], max[3];
  int measured = 0;
  if (isList) {
    measured = GetEntBound(listed, min, max);
    acedSSFree(listed);
  } else if (arg->restype == RTPICKS) {
    ads_name set;
    ads_name_set(arg->resval.rlname, set);
    measured = GetEntBound(set, min, max);
  } else {
    ads_name ent;
    ads_name_set(arg->resval.rlname, ent);
    AcDbExtents box;
    measured = GetEntBound(ent, box);
    for (int i = 0; i < 3; ++i) {
      min[i] = box.minPoint()[i];
      max[i] = box.maxPoint()[i];
    }
  }
  if (measured != 1) return RTERROR;
  ReturnPointPair(min, max);
  return RTNORM;
}

}  // namespace Lisp
}  // namespace KEL
