// The legacy functions that test and measure entities: layer lists,
// layer and type tests, line length and end elevation, extended data,
// deleting lines and the parallel test.
#include <algorithm>
#include <cwctype>
#include <string>

#include "kelcad/api/curves.h"
#include "kelcad/entry/tolerance.h"
#include "kelcad/lisp/entmake_support.h"
#include "kelcad/lisp/legacy_handlers.h"
#include "kelcad/lisp/usage_lines.h"

namespace KEL {
namespace Lisp {

namespace {

std::wstring Upper(const wchar_t* text) {
  std::wstring s = text;
  std::transform(s.begin(), s.end(), s.begin(), [](wchar_t c) { return std::towupper(c); });
  return s;
}

// An entity's list, released with the scope; null for a name that is not
// an entity of the drawing.
class EntityList {
 public:
  explicit EntityList(const ads_name name, const resbuf* apps = nullptr)
      : mList(apps ? acdbEntGetX(name, apps) : acdbEntGet(name)) {}
  ~EntityList() { acutRelRb(mList); }
  EntityList(const EntityList&) = delete;
  EntityList& operator=(const EntityList&) = delete;
  explicit operator bool() const { return mList != nullptr; }
  const resbuf* find(int code) const {
    for (const resbuf* rb = mList; rb; rb = rb->rbnext)
      if (rb->restype == code) return rb;
    return nullptr;
  }
  bool point(int code, ads_point p) const {
    const resbuf* rb = find(code);
    for (int i = 0; i < 3; ++i) p[i] = rb ? rb->resval.rpoint[i] : 0.0;
    return rb != nullptr;
  }
  bool isType(const wchar_t* type) const {
    const resbuf* rb = find(0);
    return rb && wcscmp(rb->resval.rstring, type) == 0;
  }

 private:
  resbuf* mList;
};

// T when the text of the entity's group code matches the upper-cased
// pattern; nil otherwise, the entity's list unreadable included.
int MatchGroup(const wchar_t* name, int code) {
  const resbuf* args = acedGetArgs();
  acedRetNil();
  const resbuf* a[2];
  const std::wstring prefix = std::wstring(L"\nError:") + name;
  const std::wstring none = prefix + L"没输入参数.", first = prefix + L"参数1(ent name).",
                     second = prefix + L"参数2(string).";
  if (!CheckPositional(args, none.c_str(),
                       {{ArgKind::kEntity, first.c_str()}, {ArgKind::kText, second.c_str()}}, Fail, a))
    return kLegacyFailed;
  EntityList list(a[0]->resval.rlname);
  const resbuf* value = list ? list.find(code) : nullptr;
  ReturnBool(value && value->restype == code &&
             acutWcMatch(value->resval.rstring, Upper(a[1]->resval.rstring).c_str()) == RTNORM);
  return RTNORM;
}

}  // namespace

// (getlay [pattern]): the names of the layers that match the upper-cased
// pattern ("*" by default), in the order of the layer table.
int GetLay() {
  const resbuf* args = acedGetArgs();
  acedRetNil();
  if (args != nullptr && !IsTextArg(args)) {
    Fail(L"\ngetlay(string)");
    return 1;
  }
  const std::wstring pattern = Upper(args ? args->resval.rstring : L"*");
  resbuf* names = nullptr;
  resbuf* last = nullptr;
  for (resbuf* record = acdbTblNext(L"LAYER", 1); record != nullptr; record = acdbTblNext(L"LAYER", 0)) {
    for (const resbuf* rb = record; rb; rb = rb->rbnext) {
      if (rb->restype != 2 || acutWcMatch(rb->resval.rstring, pattern.c_str()) != RTNORM) continue;
      resbuf* node = acutBuildList(RTSTR, rb->resval.rstring, RTNONE);
      if (node == nullptr) break;
      (last ? last->rbnext : names) = node;
      last = node;
    }
    acutRelRb(record);
  }
  if (names != nullptr) {
    acedRetList(names);
    acutRelRb(names);
  }
  return RTNORM;
}

int IfLay() { return MatchGroup(L"if_lay", 8); }
int IfLx() { return MatchGroup(L"if_lx", 0); }

// (linecd ent length): T unless length exceeds the distance between the
// entity's groups 10 and 11 (whatever the entity is).
int LineCd() {
  const resbuf* args = acedGetArgs();
  acedRetT();
  const resbuf* a[2];
  if (!CheckPositional(args, L"\nError:linecd没输入参数.",
                       {{ArgKind::kEntity, L"\nError:linecd参数1(ent name)."},
                        {ArgKind::kNumber, L"\nError:linecd参数2(real,int)."}},
                       Fail, a))
    return kLegacyFailed;
  EntityList list(a[0]->resval.rlname);
  if (!list) {
    Fail(L"\nError:linecd当前图形中没有给定Entity.");
    return kLegacyFailed;
  }
  ads_point start, end;
  list.point(10, start);
  list.point(11, end);
  if (NumberOf(a[1]) > acutDistance(start, end)) acedRetNil();
  return RTNORM;
}

// (getlbg line point): the elevation of the line's end nearer the point
// (the start on a tie); 0.0 for an entity that is not a LINE.
int GetLbg() {
  const resbuf* args = acedGetArgs();
  acedRetReal(0.0);
  const resbuf* a[2];
  if (!CheckPositional(args, L"\nError:getlbg没输入参数.",
                       {{ArgKind::kEntity, L"\nError:getlbg参数1(ent name)."},
                        {ArgKind::kPoint, L"\nError:getlbg参数2(point)."}},
                       Fail, a))
    return kLegacyFailed;
  EntityList list(a[0]->resval.rlname);
  if (!list) {
    Fail(L"\nError:mline当前图形中没有给定Entity.");
    return kLegacyFailed;
  }
  if (!list.isType(L"LINE")) return kLegacyFailed;
  ads_point start, end;
  list.point(10, start);
  list.point(11, end);
  const double* pt = a[1]->resval.rpoint;
  acedRetReal(acutDistance(pt, end) < acutDistance(pt, start) ? end[2] : start[2]);
  return RTNORM;
}

// (appft ent app): T when the entity carries extended data of the
// application, else nil.
int AppFt() {
  const resbuf* args = acedGetArgs();
  acedRetNil();
  const resbuf* a[2];
  if (!CheckPositional(args, L"\nError:appft没输入参数.",
                       {{ArgKind::kEntity, L"\nError:appft参数1(ent name)."},
                        {ArgKind::kText, L"\nError:appft参数2(string)."}},
                       Fail, a))
    return kLegacyFailed;
  resbuf app{};
  app.restype = RTSTR;
  app.resval.rstring = a[1]->resval.rstring;
  EntityList list(a[0]->resval.rlname, &app);
  if (!list) {
    Fail(L"\nError:appft当前图形中没有给定Entity.");
    return kLegacyFailed;
  }
  ReturnBool(list.find(-3) != nullptr);
  return RTNORM;
}

// (del_ln layer): erases every LINE of the drawing on the layers that
// match the upper-cased pattern.
int DelLn() {
  const resbuf* args = acedGetArgs();
  acedRetVoid();
  if (!IsTextArg(args)) {
    Fail(L"\nError:del_ln没输入参数.");
    return kLegacyFailed;
  }
  const std::wstring layer = Upper(args->resval.rstring);
  resbuf* filter = acutBuildList(RTDXF0, L"LINE", 8, layer.c_str(), RTNONE);
  ads_name set;
  const int found = acedSSGet(L"X", nullptr, nullptr, filter, set);
  acutRelRb(filter);
  if (found != RTNORM) return RTNORM;  // no line there
  ads_name member;
  for (long i = 0; acedSSName(set, i, member) == RTNORM; ++i) acdbEntDel(member);
  acedSSFree(set);
  return RTNORM;
}

namespace {

// The two ends of a LINE.
bool LineEnds(const EntityList& list, AcGePoint3d& start, AcGePoint3d& end) {
  if (!list.isType(L"LINE")) return false;
  ads_point s, e;
  list.point(10, s);
  list.point(11, e);
  start.set(s[0], s[1], s[2]);
  end.set(e[0], e[1], e[2]);
  return true;
}

}  // namespace

// (pxft line1 line2 tol): the older form of kel_islinespx.
int PxFt() {
  acutPrintf(L"\n 请使用新版本的 KEL_IsLinesPX 函数\n");
  const resbuf* args = acedGetArgs();
  acedRetNil();
  const resbuf* a[3];
  if (!CheckPositional(args, L"\nError:pxft没输入参数.",
                       {{ArgKind::kEntity, L"\nError:pxft参数1(ent name)."},
                        {ArgKind::kEntity, L"\nError:pxft参数2(ent name)."},
                        {ArgKind::kReal, L"\nError:pxft参数3(real)."}},
                       Fail, a))
    return kLegacyFailed;
  EntityList first(a[0]->resval.rlname);
  if (!first) {
    Fail(L"\nError:pxft当前图形中没有给定Entity_1.");
    return kLegacyFailed;
  }
  EntityList second(a[1]->resval.rlname);
  if (!second) {
    Fail(L"\nError:pxft当前图形中没有给定Entity_2.");
    return kLegacyFailed;
  }
  AcGePoint3d a1, a2, b1, b2;
  if (!LineEnds(first, a1, a2) || !LineEnds(second, b1, b2)) {
    Fail(L"\nError:pxft Entities MUST BE Line.!");
    return kLegacyFailed;
  }
  ReturnBool(IsLinesPX(a1, a2, b1, b2, a[2]->resval.rreal));
  return RTNORM;
}

// (kel_islinespx line1 line2 [tol]): T when the lines are parallel within
// tol (radians; the vector tolerance by default).
int KEL_IsLinesPX() {
  const resbuf* args = acedGetArgs();
  acedRetNil();
  const resbuf* other = args ? args->rbnext : nullptr;
  const resbuf* tol = other ? other->rbnext : nullptr;
  const bool shaped = args && args->restype == RTENAME && other && other->restype == RTENAME &&
                      (tol == nullptr || (IsNumberArg(tol) && tol->rbnext == nullptr));
  AcGePoint3d a1, a2, b1, b2;
  if (shaped) {
    EntityList first(args->resval.rlname), second(other->resval.rlname);
    if (LineEnds(first, a1, a2) && LineEnds(second, b1, b2)) {
      ReturnBool(IsLinesPX(a1, a2, b1, b2, tol ? NumberOf(tol) : GetVectorEQ()));
      return RTNORM;
    }
  }
  PrintUsageLines({L"\n KEL_IsLinesPX", L"\n 功能：判断两条直线是否平行",
                   L"\n 用法：KEL_IsLinesPX 直线1 直线2 [角度容差]", L"\n 返回：平行 T ,不平行 nil"});
  return RTNORM;
}

}  // namespace Lisp
}  // namespace KEL
