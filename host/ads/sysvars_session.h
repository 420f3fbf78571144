// Session system variables: those that belong to the program rather than
// to a drawing (kept while the host runs, never saved with a drawing).
#pragma once

#include <string>

#include "db/header_vars.h"

namespace kelhost::sysvars {

// The definition of an upper-case name, or null.
const db::HeaderVarDef* FindSessionDef(std::wstring_view upperName);
db::HeaderValue GetSessionVar(const db::HeaderVarDef& def);
void PutSessionVar(const db::HeaderVarDef& def, const db::HeaderValue& value);
void ResetSessionVars();

}  // namespace kelhost::sysvars
