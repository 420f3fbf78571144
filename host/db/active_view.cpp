#include "db/active_view.h"

#include <cmath>
#include <string>

#include "arx/dbsymtb.h"
#include "db/database_state.h"
#include "db/frames.h"

namespace kelhost::db {
namespace {

// A point or direction of the view (WCS) as the UCS sees it, and back.
void WorldToUcs(const DatabaseState& s, const double wcs[3], bool disp, double out[3]) {
  Frame ucs;
  if (UcsFrame(s, ucs)) FromWorld(ucs, wcs, disp, out);
  else for (int i = 0; i < 3; ++i) out[i] = wcs[i];
}
void UcsToWorld(const DatabaseState& s, const double p[3], bool disp, double out[3]) {
  Frame ucs;
  if (UcsFrame(s, ucs)) ToWorld(ucs, p, disp, out);
  else for (int i = 0; i < 3; ++i) out[i] = p[i];
}

void ApplyMode(AcDbViewportTableRecord* r, short mode) {
  r->setPerspectiveEnabled(mode & 1);
  r->setFrontClipEnabled(mode & 2);
  r->setBackClipEnabled(mode & 4);
  r->setUcsFollowMode(mode & 8);
  r->setFrontClipAtEye(!(mode & 16));
}

short ModeOf(const AcDbViewportTableRecord* r) {
  return static_cast<short>((r->perspectiveEnabled() ? 1 : 0) | (r->frontClipEnabled() ? 2 : 0) |
                            (r->backClipEnabled() ? 4 : 0) | (r->ucsFollowMode() ? 8 : 0) |
                            (r->frontClipAtEye() ? 0 : 16));
}

// Runs change on the record opened for write.
template <class Change>
bool WithRecordOpen(AcDbDatabase* db, Change change) {
  AcDbViewportTableRecord* peeked = ActiveViewportRecord(db->state());
  if (!peeked) return false;
  AcDbViewportTableRecord* r = nullptr;
  if (acdbOpenObject(r, peeked->objectId(), AcDb::kForWrite) != Acad::eOk) return false;
  const bool ok = change(r);
  r->close();
  return ok;
}

// A drawing read from a file that had no active viewport gets one when
// its view is first set.
void AddActiveViewportRecord(AcDbDatabase* db) {
  AcDbViewportTable* table = nullptr;
  if (db->getViewportTable(table, AcDb::kForWrite) != Acad::eOk) return;
  auto* record = new AcDbViewportTableRecord;
  record->setName(L"*Active");
  if (table->add(record) == Acad::eOk) record->close();
  else delete record;
  table->close();
}

}  // namespace

AcDbViewportTableRecord* ActiveViewportRecord(const DatabaseState& s) {
  const auto* table = PeekAs<AcDbViewportTable>(s.tables[static_cast<int>(Table::kViewport)]);
  AcDbObjectId id;
  if (!table || table->getAt(L"*Active", id) != Acad::eOk) return nullptr;
  return PeekAs<AcDbViewportTableRecord>(id);
}

ActiveView GetActiveView(const DatabaseState& s) {
  ActiveView v;
  const AcDbViewportTableRecord* r = ActiveViewportRecord(s);
  if (!r) return v;
  v.center = r->centerPoint();
  v.height = r->height();
  v.width = r->width();
  v.target = r->target();
  v.direction = r->viewDirection();
  v.twist = r->viewTwist();
  v.lens = r->lensLength();
  v.front = r->frontClipDistance();
  v.back = r->backClipDistance();
  v.mode = ModeOf(r);
  return v;
}

bool SetActiveView(AcDbDatabase* db, const ActiveView& v) {
  if (!ActiveViewportRecord(db->state())) AddActiveViewportRecord(db);
  return WithRecordOpen(db, [&v](AcDbViewportTableRecord* r) {
    r->setCenterPoint(v.center);
    r->setHeight(v.height);
    r->setWidth(v.width);
    r->setTarget(v.target);
    r->setViewDirection(v.direction);
    r->setViewTwist(v.twist);
    r->setLensLength(v.lens);
    r->setFrontClipDistance(v.front);
    r->setBackClipDistance(v.back);
    ApplyMode(r, v.mode);
    return true;
  });
}

bool GetViewportVar(const DatabaseState& s, const HeaderVarDef& def, HeaderValue& out) {
  const AcDbViewportTableRecord* r = ActiveViewportRecord(s);
  if (!r) return false;
  out = DefaultHeaderValue(def);
  const std::wstring name = def.name;
  if (name == L"VIEWCTR") {
    Frame dcs;
    const double center[3] = {r->centerPoint().x, r->centerPoint().y, 0.0};
    double wcs[3] = {center[0], center[1], center[2]};
    if (DcsFrame(s, dcs)) ToWorld(dcs, center, false, wcs);
    WorldToUcs(s, wcs, false, out.point);
  } else if (name == L"VIEWDIR") {
    const double d[3] = {r->viewDirection().x, r->viewDirection().y, r->viewDirection().z};
    WorldToUcs(s, d, true, out.point);
  } else if (name == L"TARGET") {
    const double t[3] = {r->target().x, r->target().y, r->target().z};
    WorldToUcs(s, t, false, out.point);
  } else if (name == L"VIEWSIZE") {
    out.real = r->height();
  } else if (name == L"LENSLENGTH") {
    out.real = r->lensLength();
  } else if (name == L"VIEWTWIST") {
    out.real = r->viewTwist();
  } else if (name == L"FRONTZ") {
    out.real = r->frontClipDistance();
  } else if (name == L"BACKZ") {
    out.real = r->backClipDistance();
  } else if (name == L"VIEWMODE") {
    out.integer = ModeOf(r);
  } else if (name == L"SNAPMODE") {
    out.integer = r->snapEnabled() ? 1 : 0;
  } else if (name == L"GRIDMODE") {
    out.integer = r->gridEnabled() ? 1 : 0;
  } else if (name == L"SNAPANG") {
    out.real = r->snapAngle();
  } else {
    return false;
  }
  return true;
}

bool PutViewportVar(AcDbDatabase* db, const HeaderVarDef& def, const HeaderValue& value) {
  const std::wstring name = def.name;
  const DatabaseState& s = db->state();
  return WithRecordOpen(db, [&](AcDbViewportTableRecord* r) {
    if (name == L"VIEWCTR") {
      double wcs[3], dcsPoint[3];
      UcsToWorld(s, value.point, false, wcs);
      Frame dcs;
      if (!DcsFrame(s, dcs)) return false;
      FromWorld(dcs, wcs, false, dcsPoint);
      r->setCenterPoint(AcGePoint2d(dcsPoint[0], dcsPoint[1]));
    } else if (name == L"VIEWDIR") {
      double d[3];
      UcsToWorld(s, value.point, true, d);
      const AcGeVector3d dir(d[0], d[1], d[2]);
      if (dir.isZeroLength()) return false;
      r->setViewDirection(dir);
    } else if (name == L"TARGET") {
      double t[3];
      UcsToWorld(s, value.point, false, t);
      r->setTarget(AcGePoint3d(t[0], t[1], t[2]));
    } else if (name == L"VIEWSIZE") {
      if (!(value.real > 0)) return false;
      r->setHeight(value.real);  // the record keeps its aspect ratio
    } else if (name == L"LENSLENGTH") {
      if (!(value.real > 0)) return false;
      r->setLensLength(value.real);
    } else if (name == L"VIEWTWIST") {
      r->setViewTwist(value.real);
    } else if (name == L"FRONTZ") {
      r->setFrontClipDistance(value.real);
    } else if (name == L"BACKZ") {
      r->setBackClipDistance(value.real);
    } else if (name == L"VIEWMODE") {
      ApplyMode(r, static_cast<short>(value.integer));
    } else if (name == L"SNAPMODE") {
      r->setSnapEnabled(value.integer != 0);
    } else if (name == L"GRIDMODE") {
      r->setGridEnabled(value.integer != 0);
    } else if (name == L"SNAPANG") {
      r->setSnapAngle(value.real);
    } else {
      return false;
    }
    return true;
  });
}

}  // namespace kelhost::db
