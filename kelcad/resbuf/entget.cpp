// Reading an entity's data list, and single values from it.
#include "kelcad/resbuf/rbchain.h"

namespace KEL {

resbuf* EntGetRb(ads_name ent, const wchar_t* appName) {
  if (!appName || !*appName) return acdbEntGet(ent);
  resbuf* apps = acutBuildList(RTSTR, appName, RTNONE);
  if (!apps) return nullptr;
  resbuf* list = acdbEntGetX(ent, apps);
  acutRelRb(apps);
  return list;
}

namespace {
// Runs copy on the first node of the list with that code.
template <class Copy>
bool WithGroup(ads_name ent, short code, const wchar_t* appName, Copy copy) {
  resbuf* list = EntGetRb(ent, appName);
  if (!list) return false;
  resbuf* node = GetRbXDXF(list, code);
  if (node) copy(node);
  acutRelRb(list);
  return node != nullptr;
}
}  // namespace

bool EntGetData(ads_name ent, short code, int& value, const wchar_t* appName) {
  return WithGroup(ent, code, appName, [&value](const resbuf* rb) { value = rb->resval.rint; });
}

bool EntGetData(ads_name ent, short code, long& value, const wchar_t* appName) {
  return WithGroup(ent, code, appName, [&value](const resbuf* rb) { value = rb->resval.rlong; });
}

bool EntGetData(ads_name ent, short code, double& value, const wchar_t* appName) {
  return WithGroup(ent, code, appName, [&value](const resbuf* rb) { value = rb->resval.rreal; });
}

bool EntGetData(ads_name ent, short code, CString& value, const wchar_t* appName) {
  return WithGroup(ent, code, appName, [&value](const resbuf* rb) { value = rb->resval.rstring ? rb->resval.rstring : L""; });
}

bool EntGetData(ads_name ent, short code, ads_point value, const wchar_t* appName) {
  return WithGroup(ent, code, appName, [value](const resbuf* rb) { copyAdsPt(value, rb->resval.rpoint); });
}

}  // namespace KEL
