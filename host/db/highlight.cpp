// Highlighting: the headless host has no screen, so it keeps which
// entities are shown highlighted for whoever asks (tests, the editor).
#include <set>

#include "arx/dbmain.h"
#include "db/highlight.h"
#include "kelhost/ui.h"

const AcDbFullSubentPath kNullSubent;

namespace kelhost::db {
namespace {
std::set<AcDbObjectId>& Highlighted() {
  static std::set<AcDbObjectId> ids;
  return ids;
}
}  // namespace

void SetHighlighted(AcDbObjectId id, bool on) {
  if (on)
    Highlighted().insert(id);
  else
    Highlighted().erase(id);
}
}  // namespace kelhost::db

bool kelhost::IsHighlighted(AcDbObjectId id) { return db::Highlighted().count(id) != 0 && id.isValid(); }

Acad::ErrorStatus AcDbEntity::highlight(const AcDbFullSubentPath&, const Adesk::Boolean) const {
  if (!isDatabaseResident()) return Acad::eNotInDatabase;
  kelhost::db::SetHighlighted(objectId(), true);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::unhighlight(const AcDbFullSubentPath&, const Adesk::Boolean) const {
  if (!isDatabaseResident()) return Acad::eNotInDatabase;
  kelhost::db::SetHighlighted(objectId(), false);
  return Acad::eOk;
}
