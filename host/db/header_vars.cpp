// The drawing's header variables: definitions with a new metric drawing's
// defaults, and reading them from the header store.
#include "db/header_vars.h"

#include <cwchar>
#include <string_view>
#include <unordered_map>

#include "ads/sysvar_catalog.h"
#include "arx/adsdef.h"
#include "db/active_view.h"
#include "db/database_state.h"
#include "db/dimstyle_vars.h"
#include "db/name_index.h"
#include "db/stub.h"

namespace kelhost::db {
namespace {

constexpr double kBig = 1e20;
constexpr double kAny = 1e300;
constexpr HeaderPlace H = HeaderPlace::kHeader;
constexpr HeaderPlace V = HeaderPlace::kViewport;

HeaderVarDef Short(const wchar_t* name, double value, double lo = 1, double hi = 0, HeaderPlace place = H) {
  return {name, RTSHORT, 70, place, false, lo, hi, {value, 0, 0}, nullptr};
}
HeaderVarDef Flag(const wchar_t* name, double value, HeaderPlace place = H) { return Short(name, value, 0, 1, place); }
HeaderVarDef Real(const wchar_t* name, double value, double lo = 1, double hi = 0, int code = 40, HeaderPlace place = H) {
  return {name, RTREAL, code, place, false, lo, hi, {value, 0, 0}, nullptr};
}
HeaderVarDef Point3(const wchar_t* name, double x, double y, double z, bool readOnly = false, HeaderPlace place = H) {
  return {name, RT3DPOINT, 10, place, readOnly, 1, 0, {x, y, z}, nullptr};
}
HeaderVarDef ReadOnly(HeaderVarDef def) {
  def.readOnly = true;
  return def;
}

// Held in the database's own fields or written from the file format:
// the DXF writer and reader treat them apart.
bool HeldElsewhere(const std::wstring& name) {
  static const wchar_t* const kNames[] = {L"ACADVER", L"HANDSEED", L"DWGCODEPAGE", L"ACADMAINTVER", L"CLAYER",
                                          L"CELTYPE", L"CECOLOR", L"CELTSCALE", L"CELWEIGHT", L"TEXTSTYLE",
                                          L"DIMSTYLE", L"TEXTSIZE", L"LTSCALE", L"TILEMODE"};
  for (const wchar_t* n : kNames)
    if (name == n) return true;
  return false;
}

// The dimension variables (the metric style's values) and the drawing's
// variables of the catalog that have no definition above.
void AddCatalogVars(std::vector<HeaderVarDef>& defs) {
  auto defined = [&defs](const wchar_t* name) {
    for (const HeaderVarDef& d : defs)
      if (std::wcscmp(d.name, name) == 0) return true;
    return false;
  };
  for (const DimVar& v : DimRealVars())
    if (!defined(v.name)) defs.push_back(Real(v.name, v.metric));
  for (const DimVar& v : DimIntVars()) {
    if (defined(v.name)) continue;
    HeaderVarDef def = Short(v.name, v.metric, -32768, 32767);
    const std::wstring name = v.name;
    if (name == L"DIMFXLON" || name == L"DIMTXTDIRECTION") def.code = 290;
    if (name == L"DIMASSOC") def.code = 280;
    defs.push_back(def);
  }
  for (const sysvars::CatalogVar& v : sysvars::Catalog()) {
    if ((v.place != 'H' && v.place != 'D') || HeldElsewhere(v.name) || defined(v.name.c_str())) continue;
    defs.push_back({v.name.c_str(), v.type, v.code, v.place == 'H' ? H : HeaderPlace::kDrawing, v.readOnly, v.lo, v.hi,
                    {v.value[0], v.value[1], v.value[2]}, v.type == RTSTR ? v.text.c_str() : nullptr});
  }
}

std::vector<HeaderVarDef> MakeDefs() {
  std::vector<HeaderVarDef> defs = {
      Real(L"ANGBASE", 0.0, 1, 0, 50),
      Flag(L"ANGDIR", 0),
      Short(L"AUNITS", 0, 0, 4),
      Short(L"AUPREC", 0, 0, 8),
      Flag(L"DIMSAH", 0),
      Real(L"DIMSCALE", 1.0, 0, kAny),
      Real(L"DIMTXT", 2.5, 0, kAny),
      Short(L"DIMZIN", 8, 0, 15),
      Real(L"ELEVATION", 0.0),
      Point3(L"EXTMIN", kBig, kBig, kBig, true),
      Point3(L"EXTMAX", -kBig, -kBig, -kBig, true),
      Real(L"FILLETRAD", 0.0, 0, kAny),
      Flag(L"FILLMODE", 1),
      Point3(L"INSBASE", 0, 0, 0),
      Flag(L"LIMCHECK", 0),
      {L"LIMMIN", RTPOINT, 10, H, false, 1, 0, {0, 0, 0}, nullptr},
      {L"LIMMAX", RTPOINT, 10, H, false, 1, 0, {420, 297, 0}, nullptr},
      Short(L"LUNITS", 2, 1, 5),
      Short(L"LUPREC", 4, 0, 8),
      Short(L"MEASUREMENT", 1, 0, 1),
      Flag(L"MIRRTEXT", 0),
      Flag(L"ORTHOMODE", 0),
      Short(L"PDMODE", 0, -32768, 32767),
      Real(L"PDSIZE", 0.0),
      Real(L"PLINEWID", 0.0, 0, kAny),
      Flag(L"PSLTSCALE", 1),
      Flag(L"REGENMODE", 1),
      Real(L"THICKNESS", 0.0),
      Point3(L"UCSORG", 0, 0, 0, true),
      Point3(L"UCSXDIR", 1, 0, 0, true),
      Point3(L"UCSYDIR", 0, 1, 0, true),
      Flag(L"UNITMODE", 0),
      // Drawing aids and the view live in the active viewport.
      Flag(L"SNAPMODE", 0, V),
      Flag(L"GRIDMODE", 0, V),
      Real(L"SNAPANG", 0.0, 1, 0, 50, V),
      ReadOnly(Point3(L"VIEWCTR", 210, 148.5, 0, true, V)),
      ReadOnly(Real(L"VIEWSIZE", 297.0, 1, 0, 40, V)),
      Point3(L"VIEWDIR", 0, 0, 1, true, V),
      ReadOnly(Short(L"VIEWMODE", 0, 1, 0, V)),
      Point3(L"TARGET", 0, 0, 0, true, V),
      ReadOnly(Real(L"FRONTZ", 0.0, 1, 0, 40, V)),
      ReadOnly(Real(L"BACKZ", 0.0, 1, 0, 40, V)),
      ReadOnly(Real(L"LENSLENGTH", 50.0, 1, 0, 40, V)),
      ReadOnly(Real(L"VIEWTWIST", 0.0, 1, 0, 50, V)),
  };
  const wchar_t* useri[] = {L"USERI1", L"USERI2", L"USERI3", L"USERI4", L"USERI5"};
  const wchar_t* userr[] = {L"USERR1", L"USERR2", L"USERR3", L"USERR4", L"USERR5"};
  for (const wchar_t* n : useri) defs.push_back(Short(n, 0, -32768, 32767));
  for (const wchar_t* n : userr) defs.push_back(Real(n, 0.0));
  AddCatalogVars(defs);
  return defs;
}

}  // namespace

const std::vector<HeaderVarDef>& HeaderVarDefs() {
  static const std::vector<HeaderVarDef> defs = MakeDefs();
  return defs;
}

const HeaderVarDef* FindHeaderVarDef(std::wstring_view upperName) {
  // Commands read variables at every prompt: look them up by hash.
  static const NameIndex<HeaderVarDef> index(HeaderVarDefs());
  return index.find(upperName);
}

HeaderValue DefaultHeaderValue(const HeaderVarDef& def) {
  HeaderValue v;
  v.type = def.type;
  v.code = def.code;
  switch (def.type) {
    case RTSHORT:
    case RTLONG: v.integer = static_cast<std::int32_t>(def.value[0]); break;
    case RTREAL: v.real = def.value[0]; break;
    case RTSTR: v.text = def.text ? def.text : L""; break;
    default:
      for (int i = 0; i < 3; ++i) v.point[i] = def.value[i];
  }
  return v;
}

HeaderValue GetHeaderVar(const DatabaseState& state, const HeaderVarDef& def) {
  HeaderValue fromViewport;
  if (def.place == HeaderPlace::kViewport && GetViewportVar(state, def, fromViewport)) return fromViewport;
  auto it = state.headerVars.find(std::wstring_view(def.name));
  // A value read from a file under another group code still counts when
  // its kind agrees.
  if (it != state.headerVars.end() && it->second.type == def.type) return it->second;
  return DefaultHeaderValue(def);
}

}  // namespace kelhost::db

namespace kelhost::db {

bool PutHeaderVar(AcDbDatabase* db, const HeaderVarDef& def, const HeaderValue& value) {
  if (def.place == HeaderPlace::kViewport && ActiveViewportRecord(db->state())) return PutViewportVar(db, def, value);
  NotifyBeforeHeaderWrite(db, def.name);  // the undo journal keeps the value it replaces
  db->state().headerVars[def.name] = value;
  return true;
}

}  // namespace kelhost::db
