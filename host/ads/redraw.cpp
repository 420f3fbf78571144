// Redrawing: the headless host has no screen, so a redraw checks that it
// names something drawable and keeps the highlighting it asks for; a
// redraw of the whole view takes away the temporary graphics.
#include "arx/arxheaders.h"
#include "ads/temporary_graphics.h"
#include "db/highlight.h"

int acedRedraw(const ads_name ent, int mode) {
  if (!ent || ads_name_nil(ent)) {  // the whole view
    kelhost::ads::ClearTemporaryGraphics();
    return RTNORM;
  }
  if (mode < 1 || mode > 4) return RTERROR;
  AcDbObjectId id;
  if (acdbGetObjectId(id, ent) != Acad::eOk) return RTERROR;
  AcDbEntity* entity = nullptr;
  if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) return RTERROR;
  entity->close();
  if (mode == 3 || mode == 4) kelhost::db::SetHighlighted(id, mode == 3);
  return RTNORM;
}
