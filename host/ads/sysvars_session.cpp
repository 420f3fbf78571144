// The session variables with the program's defaults.
#include "ads/sysvars_session.h"

#include <map>
#include <mutex>
#include <unordered_map>
#include <vector>

#include "ads/sysvar_catalog.h"
#include "arx/adsdef.h"
#include "db/name_index.h"

namespace kelhost::sysvars {
namespace {

using db::HeaderPlace;
using db::HeaderValue;
using db::HeaderVarDef;

HeaderVarDef Short(const wchar_t* name, double value, double lo, double hi, bool readOnly = false) {
  return {name, RTSHORT, 70, HeaderPlace::kHeader, readOnly, lo, hi, {value, 0, 0}, nullptr};
}
HeaderVarDef Real(const wchar_t* name, double value, double lo, double hi, bool readOnly = false) {
  return {name, RTREAL, 40, HeaderPlace::kHeader, readOnly, lo, hi, {value, 0, 0}, nullptr};
}
HeaderVarDef Text(const wchar_t* name, const wchar_t* value, bool readOnly = false) {
  return {name, RTSTR, 1, HeaderPlace::kHeader, readOnly, 1, 0, {0, 0, 0}, value};
}

std::vector<HeaderVarDef> MakeDefs();

// The program's variables of the catalog (kept in its settings or not
// saved at all) that have no definition of their own here, in the
// drawing's header or among the computed ones.
void AddCatalogVars(std::vector<HeaderVarDef>& defs) {
  auto defined = [&defs](const std::wstring& name) {
    for (const HeaderVarDef& d : defs)
      if (name == d.name) return true;
    return false;
  };
  for (const CatalogVar& v : Catalog()) {
    if ((v.place != 'R' && v.place != 'N') || defined(v.name) || db::FindHeaderVarDef(v.name)) continue;
    defs.push_back({v.name.c_str(), v.type, v.code, HeaderPlace::kHeader, v.readOnly, v.lo, v.hi,
                    {v.value[0], v.value[1], v.value[2]}, v.type == RTSTR ? v.text.c_str() : nullptr});
  }
}

std::vector<HeaderVarDef> MakeDefs() {
  std::vector<HeaderVarDef> defs = {
      Short(L"ATTDIA", 0, 0, 1),
      Short(L"ATTREQ", 1, 0, 1),
      Short(L"BLIPMODE", 0, 0, 1),
      // CIRCLE's default radius (0: none yet); the last circle's radius.
      Real(L"CIRCLERAD", 0.0, 0, 1e300),
      Short(L"CMDDIA", 1, 0, 1),
      Short(L"CMDECHO", 1, 0, 1),
      Short(L"EDGEMODE", 0, 0, 1),
      Short(L"ERRNO", 0, -32768, 32767),
      Short(L"EXPERT", 0, 0, 5),
      Short(L"FILEDIA", 1, 0, 1),
      // The font that stands in for a shape font that cannot be found.
      Text(L"FONTALT", L"simplex.shx"),
      Short(L"HIGHLIGHT", 1, 0, 1),
      Text(L"INSNAME", L""),
      // 16384 turns the running snaps off and keeps the others' bits.
      Short(L"OSMODE", 4133, 0, 32767),
      Short(L"PICKBOX", 3, 0, 50),
      Short(L"TRIMMODE", 1, 0, 1),
      Short(L"UNDOCTL", 53, 1, 0, true),
      Short(L"UNDOMARKS", 0, 1, 0, true),
      // The end angle of the last arc drawn, from the UCS X axis.
      Real(L"LASTANGLE", 0.0, 1, 0, true),
      {L"LASTPOINT", RT3DPOINT, 10, HeaderPlace::kHeader, false, 1, 0, {0, 0, 0}, nullptr},
      Text(L"USERS1", L""),
      Text(L"USERS2", L""),
      Text(L"USERS3", L""),
      Text(L"USERS4", L""),
      Text(L"USERS5", L""),
      Text(L"MENUNAME", L"acad", true),
      Text(L"ACADVER", L"20.1s (LMS Tech)", true),
      Text(L"PLATFORM", L"KELCAD headless host", true),
  };
  AddCatalogVars(defs);
  return defs;
}

const std::vector<HeaderVarDef>& Defs() {
  static const std::vector<HeaderVarDef> defs = MakeDefs();
  return defs;
}

std::mutex& Lock() {
  static std::mutex lock;
  return lock;
}

std::unordered_map<const HeaderVarDef*, HeaderValue>& Values() {
  static std::unordered_map<const HeaderVarDef*, HeaderValue> values;
  return values;
}

}  // namespace

const HeaderVarDef* FindSessionDef(std::wstring_view upperName) {
  static const db::NameIndex<HeaderVarDef> index(Defs());
  return index.find(upperName);
}

HeaderValue GetSessionVar(const HeaderVarDef& def) {
  std::lock_guard<std::mutex> hold(Lock());
  auto it = Values().find(&def);
  return it != Values().end() ? it->second : db::DefaultHeaderValue(def);
}

void PutSessionVar(const HeaderVarDef& def, const HeaderValue& value) {
  std::lock_guard<std::mutex> hold(Lock());
  Values()[&def] = value;
}

void ResetSessionVars() {
  std::lock_guard<std::mutex> hold(Lock());
  Values().clear();
}

}  // namespace kelhost::sysvars
