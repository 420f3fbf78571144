#include "dxf/header_io.h"

#include <set>

#include "arx/adsdef.h"
#include "arx/dbsymtb.h"
#include "db/database_state.h"
#include "db/drawing_extents.h"
#include "db/header_vars.h"
#include "kelhost/text.h"

namespace kelhost::dxf {
namespace {

// Written from the file format itself, never kept.
const std::set<std::wstring> kFormatVars = {L"ACADVER", L"HANDSEED", L"DWGCODEPAGE", L"ACADMAINTVER"};
// Held in the database's own fields.
const std::set<std::wstring> kOwnVars = {L"CLAYER", L"CELTYPE", L"CECOLOR", L"CELTSCALE", L"CELWEIGHT", L"TEXTSTYLE",
                                         L"DIMSTYLE", L"TEXTSIZE", L"LTSCALE", L"TILEMODE"};

bool IsPointLead(int code) { return (code >= 10 && code <= 18) || (code >= 110 && code <= 112) || code == 210; }

db::HeaderValue ValueOf(const Token* first, const Token* end) {
  db::HeaderValue v;
  v.code = first->code;
  long long n = 0;
  if (IsPointLead(first->code)) {
    ParseReal(first->value, v.point[0]);
    int axes = 1;
    for (const Token* t = first + 1; t != end && axes < 3 && t->code == first->code + axes * 10; ++t, ++axes)
      ParseReal(t->value, v.point[axes]);
    v.type = axes == 3 ? RT3DPOINT : RTPOINT;
    return v;
  }
  switch (FileKindOf(first->code)) {
    case FileKind::kReal:
      v.type = RTREAL;
      ParseReal(first->value, v.real);
      break;
    case FileKind::kInt16:
    case FileKind::kBool:
      v.type = RTSHORT;
      ParseInteger(first->value, n);
      v.integer = static_cast<std::int32_t>(n);
      break;
    case FileKind::kInt32:
    case FileKind::kInt64:
      v.type = RTLONG;
      ParseInteger(first->value, n);
      v.integer = static_cast<std::int32_t>(n);
      break;
    default:
      v.type = RTSTR;
      v.text = FromUtf8(first->value);
  }
  return v;
}

void AppendValue(const db::HeaderValue& v, RawGroups& out) {
  switch (v.type) {
    case RTSHORT:
    case RTLONG: out.push_back({v.code, std::to_string(v.integer)}); break;
    case RTREAL: out.push_back({v.code, FormatReal(v.real)}); break;
    case RTPOINT:
    case RT3DPOINT:
      for (int axis = 0; axis < (v.type == RTPOINT ? 2 : 3); ++axis)
        out.push_back({v.code + axis * 10, FormatReal(v.point[axis])});
      break;
    default: out.push_back({v.code, ToUtf8(v.text)});
  }
}

template <class Record>
std::string RecordName(AcDbObjectId id) {
  auto* r = db::PeekAs<Record>(id);
  return r ? ToUtf8(r->getName()) : std::string();
}

AcDbObjectId FindRecord(AcDbObjectId table, const std::string& name) {
  auto* t = db::PeekAs<AcDbSymbolTable>(table);
  AcDbObjectId id;
  if (t) t->getAt(FromUtf8(name).c_str(), id);
  return id;
}

}  // namespace

bool ReadHeader(const TokenList& tokens, size_t first, size_t last, AcDbDatabase* db, OwnHeaderVars& own,
                std::wstring& error) {
  db::HeaderStore& store = db->state().headerVars;
  const Token* const end = tokens.data() + last;
  for (const Token* t = tokens.data() + first; t != end;) {
    if (t->code != 9 || t->value.size() < 2 || t->value[0] != '$') {
      error = L"line " + std::to_wstring(tokens.lineOf(*t)) + L": expected a header variable ($NAME under group 9)";
      return false;
    }
    const std::wstring name = ToUpper(FromUtf8(t->value.substr(1)));
    const Token* first = ++t;
    while (t != end && t->code != 9) ++t;
    if (first == t) continue;  // a variable without a value: nothing to keep
    if (kFormatVars.count(name)) {
      own[name] = first->value;
    } else if (kOwnVars.count(name)) {
      own[name] = first->value;
    } else {
      store[name] = ValueOf(first, t);
    }
  }
  return true;
}

void ApplyOwnHeaderVars(AcDbDatabase* db, const OwnHeaderVars& own) {
  auto text = [&own](const wchar_t* name) -> const std::string* {
    auto it = own.find(name);
    return it == own.end() ? nullptr : &it->second;
  };
  auto real = [&](const wchar_t* name, double& out) {
    const std::string* s = text(name);
    return s && ParseReal(*s, out);
  };
  auto integer = [&](const wchar_t* name, long long& out) {
    const std::string* s = text(name);
    return s && ParseInteger(*s, out);
  };
  if (const std::string* s = text(L"CLAYER")) db->setClayer(FindRecord(db->layerTableId(), *s));
  if (const std::string* s = text(L"CELTYPE")) db->setCeltype(FindRecord(db->linetypeTableId(), *s));
  if (const std::string* s = text(L"TEXTSTYLE")) db->setTextstyle(FindRecord(db->textStyleTableId(), *s));
  if (const std::string* s = text(L"DIMSTYLE")) db->setDimstyle(FindRecord(db->dimStyleTableId(), *s));
  double d = 0;
  long long n = 0;
  if (integer(L"CECOLOR", n) && n >= 0 && n <= 256) db->setCecolorIndex(static_cast<Adesk::UInt16>(n));
  if (integer(L"CELWEIGHT", n)) db->setCelweight(static_cast<AcDb::LineWeight>(n));
  if (real(L"CELTSCALE", d)) db->setCeltscale(d);
  if (real(L"TEXTSIZE", d)) db->setTextsize(d);
  if (real(L"LTSCALE", d)) db->setLtscale(d);
  if (integer(L"TILEMODE", n)) db->setTilemode(n != 0);
}

void WriteHeader(AcDbDatabase* db, std::uint64_t handseed, RawGroups& out) {
  auto var = [&out](const char* name, int code, const std::string& value) {
    out.push_back({9, name});
    out.push_back({code, value});
  };
  var("$ACADVER", 1, "AC1027");
  var("$DWGCODEPAGE", 3, "ANSI_1252");
  var("$HANDSEED", 5, HandleText(handseed));
  var("$CLAYER", 8, RecordName<AcDbLayerTableRecord>(db->clayer()));
  const std::string celtype = RecordName<AcDbLinetypeTableRecord>(db->celtype());
  var("$CELTYPE", 6, celtype.empty() ? "ByLayer" : celtype);
  var("$CECOLOR", 62, std::to_string(db->cecolorIndex()));
  var("$CELTSCALE", 40, FormatReal(db->celtscale()));
  var("$CELWEIGHT", 370, std::to_string(static_cast<int>(db->celweight())));
  var("$TEXTSTYLE", 7, RecordName<AcDbTextStyleTableRecord>(db->textstyle()));
  const std::string dimstyle = RecordName<AcDbDimStyleTableRecord>(db->dimstyle());
  if (!dimstyle.empty()) var("$DIMSTYLE", 2, dimstyle);
  var("$TEXTSIZE", 40, FormatReal(db->textsize()));
  var("$LTSCALE", 40, FormatReal(db->ltscale()));
  var("$TILEMODE", 70, db->tilemode() ? "1" : "0");

  // The drawing's other variables: the defined ones in their order (with
  // their defaults when never set), then whatever else a file gave. The
  // header's extents are the model space's.
  db::RefreshExtents(db, db->state().modelSpace);
  const db::DatabaseState& state = db->state();
  std::set<std::wstring> written;
  for (const db::HeaderVarDef& def : db::HeaderVarDefs()) {
    written.insert(def.name);
    if (def.place != db::HeaderPlace::kHeader) continue;
    out.push_back({9, "$" + ToUtf8(def.name)});
    AppendValue(db::GetHeaderVar(state, def), out);
  }
  for (const auto& entry : state.headerVars) {
    if (written.count(entry.first) || kFormatVars.count(entry.first) || kOwnVars.count(entry.first)) continue;
    out.push_back({9, "$" + ToUtf8(entry.first)});
    AppendValue(entry.second, out);
  }
}

}  // namespace kelhost::dxf
