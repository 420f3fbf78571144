#include "plot/drawing_settings.h"

#include "arx/dbdatabase.h"
#include "db/database_state.h"
#include "db/header_vars.h"

namespace kelhost::plot {

double DrawingSetting(AcDbDatabase* db, const wchar_t* name, double fallback) {
  if (const db::HeaderVarDef* def = db::FindHeaderVarDef(name)) {
    const db::HeaderValue v = db::GetHeaderVar(db->state(), *def);
    return v.type == RTREAL ? v.real : v.integer;
  }
  const auto& store = db->state().headerVars;
  auto it = store.find(name);
  if (it == store.end()) return fallback;
  return it->second.type == RTREAL ? it->second.real : it->second.integer;
}

}  // namespace kelhost::plot
