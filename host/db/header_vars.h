// The drawing's header variables that have no field of their own in the
// database: their definitions (type, DXF group code, new-drawing default,
// read-only flag and range) and their values. Values live in the
// database's header store keyed by the upper-case name without '$'; a
// variable missing from the store has its default. A DXF reader keeps
// every $ variable it reads there (unknown ones included) so that the
// writer gives them back.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

class AcDbDatabase;

namespace kelhost::db {

struct DatabaseState;

// One value; type is the result-type code (RTSHORT, RTREAL, RTSTR,
// RTPOINT, RT3DPOINT), code the DXF group it is written under.
struct HeaderValue {
  int type = 0;
  int code = 0;
  std::int32_t integer = 0;
  double real = 0.0;
  double point[3] = {0.0, 0.0, 0.0};
  std::wstring text;
};

// Ordered by name; found by any string type without a copy.
using HeaderStore = std::map<std::wstring, HeaderValue, std::less<>>;

// Where a variable belongs when the drawing is saved.
enum class HeaderPlace {
  kHeader,    // the HEADER section
  kViewport,  // the active viewport's record (view and drawing aids)
  kDrawing,   // kept with the drawing, but not among a DXF file's header variables
};

struct HeaderVarDef {
  const wchar_t* name;
  int type;
  int code;
  HeaderPlace place;
  bool readOnly;
  // Accepted range of a number (inclusive); lo > hi: any value.
  double lo, hi;
  double value[3];  // default number or point
  const wchar_t* text;  // default string
};

// The variables a new (metric) drawing has, in the order the HEADER lists them.
const std::vector<HeaderVarDef>& HeaderVarDefs();
// The definition of an upper-case name, or null.
const HeaderVarDef* FindHeaderVarDef(std::wstring_view upperName);
HeaderValue DefaultHeaderValue(const HeaderVarDef& def);
// The stored value, else the default (a defined name must be given). A
// variable placed in the viewport comes from the active viewport record
// (db/active_view.h).
HeaderValue GetHeaderVar(const DatabaseState& state, const HeaderVarDef& def);
// Stores a value already checked against def, where the variable lives;
// false when the viewport record refuses it (a zero view direction or
// size) or cannot be opened.
bool PutHeaderVar(AcDbDatabase* db, const HeaderVarDef& def, const HeaderValue& value);

}  // namespace kelhost::db
