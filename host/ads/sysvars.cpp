// acedGetVar and acedSetVar: the drawing's variables (the working
// database's header), the session's, and those computed from the state of
// the drawing or the program.
#include <chrono>
#include <cmath>
#include <ctime>
#include <functional>
#include <mutex>
#include <unordered_map>

#include "ads/entity_names.h"
#include "ads/sysvars_session.h"
#include "ads/units.h"
#include "arx/acedads.h"
#include "arx/acutads.h"
#include "arx/dbsymtb.h"
#include "db/database_state.h"
#include "kelhost/resbuf_kinds.h"
#include "db/name_index.h"
#include "db/drawing_extents.h"
#include "editor/command_processor.h"
#include "editor/screen.h"
#include "editor/user_input.h"
#include "editor/view.h"
#include "kelhost/sysvars.h"
#include "kelhost/text.h"

namespace kelhost::sysvars {
namespace {

using db::HeaderValue;
using db::HeaderVarDef;

// ------------------------------------------------------------ values and resbufs

int ToResbuf(const HeaderValue& v, resbuf* out) {
  out->restype = static_cast<short>(v.type);
  switch (v.type) {
    case RTSHORT: out->resval.rint = static_cast<short>(v.integer); return RTNORM;
    case RTLONG: out->resval.rlong = v.integer; return RTNORM;
    case RTREAL: out->resval.rreal = v.real; return RTNORM;
    case RTSTR: return acutNewString(v.text.c_str(), out->resval.rstring);
    case RTPOINT:
      out->resval.rpoint[0] = v.point[0];
      out->resval.rpoint[1] = v.point[1];
      out->resval.rpoint[2] = 0.0;
      return RTNORM;
    default:
      for (int i = 0; i < 3; ++i) out->resval.rpoint[i] = v.point[i];
      return RTNORM;
  }
}

bool InRange(const HeaderVarDef& def, double x) { return def.lo > def.hi || (x >= def.lo && x <= def.hi); }

// The value of rb as a value of def's type: RTNORM, or RTREJ for a value
// of the wrong kind or out of range.
int FromResbuf(const HeaderVarDef& def, const resbuf* rb, HeaderValue& out) {
  out = db::DefaultHeaderValue(def);
  switch (def.type) {
    case RTSHORT: {
      long x;
      if (rb->restype == RTSHORT) x = rb->resval.rint;
      else if (rb->restype == RTLONG) x = rb->resval.rlong;
      else return RTREJ;
      if (x < -32768 || x > 32767 || !InRange(def, static_cast<double>(x))) return RTREJ;
      out.integer = static_cast<std::int32_t>(x);
      return RTNORM;
    }
    case RTLONG: {
      long x;
      if (rb->restype == RTSHORT) x = rb->resval.rint;
      else if (rb->restype == RTLONG) x = rb->resval.rlong;
      else return RTREJ;
      if (!InRange(def, static_cast<double>(x))) return RTREJ;
      out.integer = static_cast<std::int32_t>(x);
      return RTNORM;
    }
    case RTREAL: {
      double x;
      if (rb->restype == RTREAL || rb->restype == RTANG) x = rb->resval.rreal;
      else if (rb->restype == RTSHORT) x = rb->resval.rint;
      else if (rb->restype == RTLONG) x = rb->resval.rlong;
      else return RTREJ;
      if (!std::isfinite(x) || !InRange(def, x)) return RTREJ;
      out.real = x;
      return RTNORM;
    }
    case RTSTR:
      if (rb->restype != RTSTR || !rb->resval.rstring) return RTREJ;
      out.text = rb->resval.rstring;
      return RTNORM;
    default:
      if (rb->restype != RTPOINT && rb->restype != RT3DPOINT) return RTREJ;
      for (int i = 0; i < 3; ++i) {
        out.point[i] = i == 2 && (rb->restype == RTPOINT || def.type == RTPOINT) ? 0.0 : rb->resval.rpoint[i];
        if (!std::isfinite(out.point[i])) return RTREJ;
      }
      return RTNORM;
  }
}

HeaderValue Short(int x) {
  HeaderValue v;
  v.type = RTSHORT;
  v.integer = x;
  return v;
}
HeaderValue Long(std::int32_t x) {
  HeaderValue v;
  v.type = RTLONG;
  v.integer = x;
  return v;
}
HeaderValue Real(double x) {
  HeaderValue v;
  v.type = RTREAL;
  v.real = x;
  return v;
}
HeaderValue Text(std::wstring s) {
  HeaderValue v;
  v.type = RTSTR;
  v.text = std::move(s);
  return v;
}

// ------------------------------------------------------------ computed variables

// When the session started: the clocks of MILLISECS, TDINDWG and TDUSRTIMER.
const std::chrono::steady_clock::time_point kSessionStart = std::chrono::steady_clock::now();

double SessionSeconds() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - kSessionStart).count();
}

std::mutex gNameLock;
std::wstring gDwgPrefix, gDwgName = L"Drawing1.dwg";

std::wstring RecordName(AcDbObjectId id) {
  const ACHAR* name = nullptr;
  if (auto* rec = db::PeekAs<AcDbSymbolTableRecord>(id)) rec->getName(name);
  return name ? name : L"";
}

// The live record of a table by name, or null.
AcDbObjectId RecordByName(AcDbObjectId table, const std::wstring& name) {
  AcDbObjectId id;
  auto* t = db::PeekAs<AcDbSymbolTable>(table);
  if (!t || name.empty() || t->getAt(name.c_str(), id) != Acad::eOk) return AcDbObjectId::kNull;
  return id;
}

std::wstring ColorText(int index) {
  if (index == 256) return L"BYLAYER";
  if (index == 0) return L"BYBLOCK";
  return std::to_wstring(index);
}

// "BYLAYER", "BYBLOCK", a number 1-255 or one of the seven named colours.
int ParseColor(const std::wstring& text) {
  static const wchar_t* kNamed[] = {L"RED", L"YELLOW", L"GREEN", L"CYAN", L"BLUE", L"MAGENTA", L"WHITE"};
  const std::wstring upper = ToUpper(text);
  if (upper == L"BYLAYER") return 256;
  if (upper == L"BYBLOCK") return 0;
  for (int i = 0; i < 7; ++i)
    if (upper == kNamed[i]) return i + 1;
  if (upper.empty() || upper.size() > 3 || upper.find_first_not_of(L"0123456789") != std::wstring::npos) return -1;
  const int n = std::stoi(upper);
  return n >= 1 && n <= 255 ? n : -1;
}

// The local time as a Julian date and as YYYYMMDD.HHMMSSmsec.
void Now(double& julian, double& calendar) {
  std::timespec ts{};
  std::timespec_get(&ts, TIME_UTC);
  std::tm local{};
  localtime_r(&ts.tv_sec, &local);
  const long ms = ts.tv_nsec / 1000000;
  const double dayFraction = (local.tm_hour * 3600.0 + local.tm_min * 60.0 + local.tm_sec + ms / 1000.0) / 86400.0;
  // The day number of the civil date, with the time as the fraction.
  const int a = (14 - (local.tm_mon + 1)) / 12;
  const long y = local.tm_year + 1900 + 4800 - a;
  const long m = local.tm_mon + 1 + 12 * a - 3;
  const long jdn = local.tm_mday + (153 * m + 2) / 5 + 365 * y + y / 4 - y / 100 + y / 400 - 32045;
  julian = static_cast<double>(jdn) + dayFraction;
  calendar = (local.tm_year + 1900) * 10000.0 + (local.tm_mon + 1) * 100.0 + local.tm_mday +
             (local.tm_hour * 10000000.0 + local.tm_min * 100000.0 + local.tm_sec * 1000.0 + ms) / 1e9;
}

bool IsWorldUcs(const db::DatabaseState& s) {
  const HeaderValue org = db::GetHeaderVar(s, *db::FindHeaderVarDef(L"UCSORG"));
  const HeaderValue x = db::GetHeaderVar(s, *db::FindHeaderVarDef(L"UCSXDIR"));
  const HeaderValue y = db::GetHeaderVar(s, *db::FindHeaderVarDef(L"UCSYDIR"));
  return org.point[0] == 0 && org.point[1] == 0 && org.point[2] == 0 && x.point[0] == 1 && x.point[1] == 0 &&
         x.point[2] == 0 && y.point[0] == 0 && y.point[1] == 1 && y.point[2] == 0;
}

HeaderValue ViewCorner(bool upperRight) {
  double lo[3], hi[3];
  editor::ViewCornersInUcs(lo, hi);
  HeaderValue v;
  v.type = RT3DPOINT;
  for (int i = 0; i < 3; ++i) v.point[i] = upperRight ? hi[i] : lo[i];
  return v;
}

HeaderValue Extents(AcDbDatabase* db, const wchar_t* name) {
  db::RefreshExtents(db, db->currentSpaceId());
  return db::GetHeaderVar(db->state(), *db::FindHeaderVarDef(name));
}

// A variable that is not simply stored: its getter, and its setter (null
// for a read-only one) returning RTNORM or RTREJ.
struct Computed {
  const wchar_t* name;
  std::function<HeaderValue(AcDbDatabase*)> get;
  std::function<int(AcDbDatabase*, const resbuf*)> set;
};

int SetRecord(AcDbObjectId table, const resbuf* rb, const std::function<Acad::ErrorStatus(AcDbObjectId)>& apply) {
  if (rb->restype != RTSTR || !rb->resval.rstring) return RTREJ;
  const AcDbObjectId id = RecordByName(table, rb->resval.rstring);
  return !id.isNull() && apply(id) == Acad::eOk ? RTNORM : RTREJ;
}

int SetPositive(const resbuf* rb, const std::function<Acad::ErrorStatus(double)>& apply) {
  double x;
  if (rb->restype == RTREAL) x = rb->resval.rreal;
  else if (rb->restype == RTSHORT) x = rb->resval.rint;
  else if (rb->restype == RTLONG) x = rb->resval.rlong;
  else return RTREJ;
  return std::isfinite(x) && x > 0 && apply(x) == Acad::eOk ? RTNORM : RTREJ;
}

const std::vector<Computed>& ComputedVars() {
  static const std::vector<Computed> vars = {
      {L"CLAYER", [](AcDbDatabase* db) { return Text(RecordName(db->clayer())); },
       [](AcDbDatabase* db, const resbuf* rb) {
         return SetRecord(db->layerTableId(), rb, [db](AcDbObjectId id) { return db->setClayer(id); });
       }},
      {L"CELTYPE", [](AcDbDatabase* db) { return Text(RecordName(db->celtype())); },
       [](AcDbDatabase* db, const resbuf* rb) {
         return SetRecord(db->linetypeTableId(), rb, [db](AcDbObjectId id) { return db->setCeltype(id); });
       }},
      {L"TEXTSTYLE", [](AcDbDatabase* db) { return Text(RecordName(db->textstyle())); },
       [](AcDbDatabase* db, const resbuf* rb) {
         return SetRecord(db->textStyleTableId(), rb, [db](AcDbObjectId id) { return db->setTextstyle(id); });
       }},
      // Set through the dimension-style command, never directly.
      {L"DIMSTYLE", [](AcDbDatabase* db) { return Text(RecordName(db->dimstyle())); }, nullptr},
      {L"CECOLOR", [](AcDbDatabase* db) { return Text(ColorText(db->cecolorIndex())); },
       [](AcDbDatabase* db, const resbuf* rb) {
         if (rb->restype != RTSTR || !rb->resval.rstring) return RTREJ;
         const int index = ParseColor(rb->resval.rstring);
         return index >= 0 && db->setCecolorIndex(static_cast<Adesk::UInt16>(index)) == Acad::eOk ? RTNORM : RTREJ;
       }},
      {L"CELTSCALE", [](AcDbDatabase* db) { return Real(db->celtscale()); },
       [](AcDbDatabase* db, const resbuf* rb) { return SetPositive(rb, [db](double x) { return db->setCeltscale(x); }); }},
      {L"LTSCALE", [](AcDbDatabase* db) { return Real(db->ltscale()); },
       [](AcDbDatabase* db, const resbuf* rb) { return SetPositive(rb, [db](double x) { return db->setLtscale(x); }); }},
      {L"TEXTSIZE", [](AcDbDatabase* db) { return Real(db->textsize()); },
       [](AcDbDatabase* db, const resbuf* rb) { return SetPositive(rb, [db](double x) { return db->setTextsize(x); }); }},
      {L"CELWEIGHT", [](AcDbDatabase* db) { return Short(static_cast<int>(db->celweight())); },
       [](AcDbDatabase* db, const resbuf* rb) {
         static const int kWeights[] = {-3, -2, -1, 0,  5,  9,  13, 15, 18,  20,  25,  30,  35,  40,
                                        50, 53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};
         if (rb->restype != RTSHORT) return RTREJ;
         for (int w : kWeights)
           if (w == rb->resval.rint) return db->setCelweight(static_cast<AcDb::LineWeight>(w)) == Acad::eOk ? RTNORM : RTREJ;
         return RTREJ;
       }},
      {L"TILEMODE", [](AcDbDatabase* db) { return Short(db->tilemode() ? 1 : 0); },
       [](AcDbDatabase* db, const resbuf* rb) {
         if (rb->restype != RTSHORT || (rb->resval.rint != 0 && rb->resval.rint != 1)) return RTREJ;
         db->setTilemode(rb->resval.rint == 1);
         return RTNORM;
       }},
      // The current layout: the model tab, or the one paper-space layout.
      {L"CTAB", [](AcDbDatabase* db) { return Text(db->tilemode() ? L"Model" : L"Layout1"); },
       [](AcDbDatabase* db, const resbuf* rb) {
         if (rb->restype != RTSTR || !rb->resval.rstring) return RTREJ;
         const std::wstring name = rb->resval.rstring;
         if (EqualNoCase(name, L"Model")) db->setTilemode(true);
         else if (EqualNoCase(name, L"Layout1")) db->setTilemode(false);
         else return RTREJ;
         return RTNORM;
       }},
      {L"WORLDUCS", [](AcDbDatabase* db) { return Short(IsWorldUcs(db->state()) ? 1 : 0); }, nullptr},
      {L"DWGNAME",
       [](AcDbDatabase*) {
         std::lock_guard<std::mutex> hold(gNameLock);
         return Text(gDwgName);
       },
       nullptr},
      {L"DWGPREFIX",
       [](AcDbDatabase*) {
         std::lock_guard<std::mutex> hold(gNameLock);
         return Text(gDwgPrefix);
       },
       nullptr},
      // The commands in progress, and what kind of activity they are.
      {L"CMDACTIVE",
       [](AcDbDatabase*) {
         int bits = 0;
         for (const editor::RunningCommand* c : editor::ActiveCommands()) {
           bits |= 1;
           if (c->transparent) bits |= 2;
           if (c->application) bits |= 64;
         }
         if (editor::ScriptDepth() > 0) bits |= 4;
         return Short(bits);
       },
       nullptr},
      {L"CMDNAMES",
       [](AcDbDatabase*) {
         std::wstring names;
         for (const editor::RunningCommand* c : editor::ActiveCommands()) names += (names.empty() ? L"" : L"'") + c->global;
         return Text(names);
       },
       nullptr},
      // The view's screen. The headless host has no display list to keep:
      // every view change regenerates, so the virtual screen is exactly
      // the area the view shows.
      {L"SCREENSIZE",
       [](AcDbDatabase*) {
         const editor::ScreenSize s = editor::Screen();
         HeaderValue v;
         v.type = RTPOINT;
         v.point[0] = s.width;
         v.point[1] = s.height;
         return v;
       },
       nullptr},
      {L"VSMIN", [](AcDbDatabase*) { return ViewCorner(false); }, nullptr},
      {L"VSMAX", [](AcDbDatabase*) { return ViewCorner(true); }, nullptr},
      // Worked out again after any change (db/drawing_extents.h).
      {L"EXTMIN", [](AcDbDatabase* db) { return Extents(db, L"EXTMIN"); }, nullptr},
      {L"EXTMAX", [](AcDbDatabase* db) { return Extents(db, L"EXTMAX"); }, nullptr},
      // Milliseconds the host has been running (wrapping as a 32-bit count).
      {L"MILLISECS",
       [](AcDbDatabase*) { return Long(static_cast<std::int32_t>(static_cast<std::int64_t>(SessionSeconds() * 1000) & 0x7FFFFFFF)); },
       nullptr},
      // Time in the drawing and on the user timer, in days (the drawing is
      // the session's).
      {L"TDINDWG", [](AcDbDatabase*) { return Real(SessionSeconds() / 86400.0); }, nullptr},
      {L"TDUSRTIMER", [](AcDbDatabase*) { return Real(SessionSeconds() / 86400.0); }, nullptr},
      // The current viewport: model space is viewport 2, paper space 1.
      {L"CVPORT", [](AcDbDatabase* db) { return Short(db->tilemode() ? 2 : 1); }, nullptr},
      {L"DATE",
       [](AcDbDatabase*) {
         double julian, calendar;
         Now(julian, calendar);
         return Real(julian);
       },
       nullptr},
      {L"CDATE",
       [](AcDbDatabase*) {
         double julian, calendar;
         Now(julian, calendar);
         return Real(calendar);
       },
       nullptr},
  };
  return vars;
}

const Computed* FindComputed(std::wstring_view upper) {
  static const db::NameIndex<Computed> index(ComputedVars());
  return index.find(upper);
}

// Drawing variables need a working database; session and computed ones
// that do not read the drawing work without.
// The upper-case name, in buf when it fits (variables' names are short).
std::wstring_view UpperName(const ACHAR* sym, wchar_t (&buf)[64], std::wstring& longName) {
  size_t n = 0;
  for (; sym[n]; ++n) {
    if (n == 63) {
      longName = ToUpper(sym);
      return longName;
    }
    buf[n] = ToUpperChar(sym[n]);
  }
  return std::wstring_view(buf, n);
}

int GetVar(const ACHAR* sym, resbuf* result) {
  if (!sym || !result) return RTERROR;
  wchar_t buf[64];
  std::wstring longName;
  const std::wstring_view upper = UpperName(sym, buf, longName);
  AcDbDatabase* db = ads::WorkingDb();
  const Computed* c = FindComputed(upper);
  if (!c)
    if (const HeaderVarDef* def = FindSessionDef(upper)) return ToResbuf(GetSessionVar(*def), result);
  if (!db) return RTERROR;
  if (c) return ToResbuf(c->get(db), result);
  if (const HeaderVarDef* def = db::FindHeaderVarDef(upper)) return ToResbuf(db::GetHeaderVar(db->state(), *def), result);
  return RTERROR;
}

int SetVar(const ACHAR* sym, const resbuf* val, bool asHost) {
  if (!sym || !val) return RTERROR;
  if (FirstNonFinite(val) == val) return RTREJ;
  wchar_t buf[64];
  std::wstring longName;
  const std::wstring_view upper = UpperName(sym, buf, longName);
  HeaderValue value;
  const Computed* computed = FindComputed(upper);
  if (const HeaderVarDef* def = computed ? nullptr : FindSessionDef(upper)) {
    if (def->readOnly && !asHost) return RTREJ;
    const int status = FromResbuf(*def, val, value);
    if (status == RTNORM) PutSessionVar(*def, value);
    return status;
  }
  AcDbDatabase* db = ads::WorkingDb();
  if (!db) return RTERROR;
  if (computed) return computed->set ? computed->set(db, val) : RTREJ;
  if (const HeaderVarDef* def = db::FindHeaderVarDef(upper)) {
    if (def->readOnly && !asHost) return RTREJ;
    const int status = FromResbuf(*def, val, value);
    if (status == RTNORM && !db::PutHeaderVar(db, *def, value)) return RTREJ;
    return status;
  }
  return RTERROR;
}

// Number and angle conversions follow the drawing's unit variables.

// Read straight from the drawing's header: every typed number asks.
const bool kUnitsFromVariables = [] {
  units::SetSettingsSource([] {
    units::Settings s;
    AcDbDatabase* db = ads::WorkingDb();
    if (!db) return s;
    static const HeaderVarDef* const defs[6] = {
        db::FindHeaderVarDef(L"LUNITS"), db::FindHeaderVarDef(L"LUPREC"), db::FindHeaderVarDef(L"AUNITS"),
        db::FindHeaderVarDef(L"AUPREC"), db::FindHeaderVarDef(L"DIMZIN"), db::FindHeaderVarDef(L"UNITMODE")};
    int* fields[6] = {&s.lunits, &s.luprec, &s.aunits, &s.auprec, &s.dimzin, &s.unitmode};
    for (int i = 0; i < 6; ++i)
      if (defs[i]) *fields[i] = db::GetHeaderVar(db->state(), *defs[i]).integer;
    return s;
  });
  return true;
}();

}  // namespace

void SetDrawingName(const std::wstring& prefix, const std::wstring& name) {
  std::lock_guard<std::mutex> hold(gNameLock);
  gDwgPrefix = prefix;
  gDwgName = name;
}

int SetHostVar(const ACHAR* name, const resbuf* value) { return SetVar(name, value, true); }

void ResetSession() {
  ResetSessionVars();
  SetDrawingName(L"", L"Drawing1.dwg");
}

}  // namespace kelhost::sysvars

int acedGetVar(const ACHAR* sym, resbuf* result) {
  try {
    return kelhost::sysvars::GetVar(sym, result);
  } catch (...) {
    return RTERROR;
  }
}

int acedSetVar(const ACHAR* sym, const resbuf* val) {
  try {
    return kelhost::sysvars::SetVar(sym, val, false);
  } catch (...) {
    return RTERROR;
  }
}
