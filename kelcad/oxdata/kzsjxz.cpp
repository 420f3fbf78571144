// The list-driven editor of an entity's groups and one application's
// xdata.
#include "kelcad/oxdata/entity_xdata.h"

namespace KEL {

namespace {

int Refuse() {
  acutPrintf(L"%s", L"\n (KZSJXZ)参数错!");
  return 0;
}

bool In(int code, int low, int high) { return code >= low && code <= high; }

// The kind of value each code the editor takes needs; RTNONE for the
// codes it refuses.
int KindOfCode(int code) {
  if (In(code, 0, 8) || code == 1000 || code == 1005) return RTSTR;
  if (In(code, 10, 18) || code == 210 || In(code, 1010, 1013)) return RT3DPOINT;
  if (In(code, 38, 59) || In(code, 1040, 1042)) return RTREAL;
  if (code == 62 || code == 67 || In(code, 70, 78) || code == 1070) return RTSHORT;
  if (code == 1071) return RTLONG;
  return RTNONE;
}

// A new group of that code holding value, or null when the value is not
// of the code's kind (a number: a real, or an integer read as one).
resbuf* MakeGroup(int code, const resbuf* value) {
  const int kind = KindOfCode(code);
  const int type = value->restype;
  const bool fits = (kind == RTSTR && type == RTSTR) || (kind == RT3DPOINT && (type == RTPOINT || type == RT3DPOINT)) ||
                    (kind == RTREAL && (type == RTREAL || type == RTSHORT)) ||
                    (kind == RTSHORT && type == RTSHORT) || (kind == RTLONG && (type == RTSHORT || type == RTLONG));
  if (!fits) return nullptr;
  resbuf* group = acutNewRb(code);
  if (group == nullptr) return nullptr;
  switch (kind) {
    case RTSTR:
      if (acutNewString(value->resval.rstring != nullptr ? value->resval.rstring : L"", group->resval.rstring) !=
          RTNORM) {
        acutRelRb(group);
        return nullptr;
      }
      break;
    case RT3DPOINT:
      for (int i = 0; i < 3; ++i) group->resval.rpoint[i] = value->resval.rpoint[i];
      if (type == RTPOINT) group->resval.rpoint[Z] = 0.0;
      break;
    case RTREAL:
      group->resval.rreal = type == RTSHORT ? value->resval.rint : value->resval.rreal;
      break;
    case RTSHORT:
      group->resval.rint = value->resval.rint;
      break;
    default:
      group->resval.rlong = type == RTSHORT ? value->resval.rint : value->resval.rlong;
      break;
  }
  return group;
}

// Puts group in the place of the first group of its code in the chain
// starting after *from; false when there is none.
bool ReplaceFirst(resbuf** from, resbuf* group) {
  for (resbuf** link = from; *link != nullptr; link = &(*link)->rbnext) {
    if ((*link)->restype != group->restype) continue;
    resbuf* old = *link;
    group->rbnext = old->rbnext;
    *link = group;
    old->rbnext = nullptr;
    acutRelRb(old);
    return true;
  }
  return false;
}

// Links group in before the first group of code (0: none), else at the
// end.
void InsertBefore(resbuf** from, int code, resbuf* group) {
  resbuf** link = from;
  while (*link != nullptr && (code == 0 || (*link)->restype != code)) link = &(*link)->rbnext;
  group->rbnext = *link;
  *link = group;
}

// The xdata part of an application that has none yet.
resbuf* XDataStart(const wchar_t* app, bool withBraces) {
  return withBraces ? acutBuildList(-3, 1001, app, 1002, L"{", 1002, L"}", RTNONE)
                    : acutBuildList(-3, 1001, app, RTNONE);
}

// Whether the part after the -3 marker holds an application.
bool HasApplication(const resbuf* xdata) {
  for (const resbuf* rb = xdata; rb != nullptr; rb = rb->rbnext)
    if (rb->restype == 1001) return true;
  return false;
}

// The entity's list and the xdata part (from the -3 marker) apart.
struct EntityParts {
  resbuf* list = nullptr;
  resbuf* xdata = nullptr;
  ~EntityParts() {
    acutRelRb(list);
    acutRelRb(xdata);
  }
};

bool ReadParts(ads_name ent, const wchar_t* app, EntityParts& parts) {
  resbuf query{};
  query.restype = RTSTR;
  query.resval.rstring = const_cast<ACHAR*>(app);
  parts.list = app != nullptr ? acdbEntGetX(ent, &query) : acdbEntGet(ent);
  if (parts.list == nullptr) return false;
  for (resbuf** link = &parts.list; *link != nullptr; link = &(*link)->rbnext) {
    if ((*link)->restype != -3) continue;
    parts.xdata = *link;
    *link = nullptr;
    break;
  }
  return true;
}

}  // namespace

int KZSJXZ(resbuf* args) {
  if (args == nullptr || args->restype != RTENAME || args->rbnext == nullptr ||
      (args->rbnext->restype != RTSTR && args->rbnext->restype != RTNIL))
    return Refuse();
  const resbuf* appArg = args->rbnext;
  const wchar_t* app = appArg->restype == RTSTR ? appArg->resval.rstring : nullptr;
  if (appArg->restype == RTSTR && app == nullptr) app = L"";
  if (app != nullptr) {
    resbuf* record = acdbTblSearch(L"APPID", app, 0);
    if (record != nullptr) {
      acutRelRb(record);
    } else if (acdbRegApp(app) != RTNORM) {
      acutPrintf(L"\n (KZSJXZ)Can't register XDATA for %s.", app);
      return 0;
    }
  }
  EntityParts parts;
  if (!ReadParts(args->resval.rlname, app, parts)) return Refuse();
  const resbuf* pairs = appArg->rbnext;
  if (app != nullptr && (pairs == nullptr || !HasApplication(parts.xdata))) {
    acutRelRb(parts.xdata);
    parts.xdata = XDataStart(app, pairs != nullptr);
    if (parts.xdata == nullptr) return 0;
  }
  for (const resbuf* pair = pairs; pair != nullptr; pair = pair->rbnext->rbnext) {
    if (pair->restype != RTSHORT || pair->rbnext == nullptr) return Refuse();
    const int code = pair->resval.rint;
    if (KindOfCode(code) == RTNONE) return Refuse();
    resbuf* group = MakeGroup(code, pair->rbnext);
    if (group == nullptr) return Refuse();
    if (code < 1000) {
      if (!ReplaceFirst(&parts.list, group)) InsertBefore(&parts.list, 0, group);
    } else if (app != nullptr) {
      if (!ReplaceFirst(&parts.xdata, group)) InsertBefore(&parts.xdata, 1002, group);
    } else {
      acutRelRb(group);
    }
  }
  resbuf** tail = &parts.list;
  while (*tail != nullptr) tail = &(*tail)->rbnext;
  *tail = parts.xdata;
  parts.xdata = nullptr;
  return acdbEntMod(parts.list) == RTNORM ? 1 : 0;
}

}  // namespace KEL
