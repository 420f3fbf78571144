// The applications with xdata on an entity.
#include "kelcad/oxdata/entity_xdata.h"

namespace KEL {

namespace {

// The entity's list with the xdata of the applications matching pattern,
// and its first 1001 group (null when there is none).
resbuf* ListWithXData(ads_name ent, const wchar_t* pattern, const resbuf*& firstApp) {
  firstApp = nullptr;
  resbuf query{};
  query.restype = RTSTR;
  query.resval.rstring = const_cast<ACHAR*>(pattern);
  resbuf* list = acdbEntGetX(ent, &query);
  const resbuf* rb = list;
  while (rb != nullptr && rb->restype != -3) rb = rb->rbnext;
  while (rb != nullptr && rb->restype != 1001) rb = rb->rbnext;
  firstApp = rb;
  return list;
}

}  // namespace

int EntHaveAppName(ads_name ent, const wchar_t* pattern) {
  const resbuf* app = nullptr;
  resbuf* list = ListWithXData(ent, L"*", app);
  int found = 0;
  for (; app != nullptr && found == 0; app = app->rbnext)
    if (app->restype == 1001 && app->resval.rstring != nullptr &&
        acutWcMatch(app->resval.rstring, pattern != nullptr ? pattern : L"*") == RTNORM)
      found = 1;
  acutRelRb(list);
  return found;
}

bool GetEntAppName(ads_name ent, CString& appName) {
  const resbuf* app = nullptr;
  resbuf* list = ListWithXData(ent, appName, app);
  const bool found = app != nullptr;
  if (found) appName = app->resval.rstring != nullptr ? app->resval.rstring : L"";
  acutRelRb(list);
  return found;
}

}  // namespace KEL
