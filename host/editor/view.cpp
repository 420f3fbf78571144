#include "editor/view.h"

#include <algorithm>
#include <cmath>

#include "ads/entity_names.h"
#include "db/database_state.h"
#include "db/frames.h"
#include "editor/screen.h"

namespace kelhost::editor {
namespace {

AcDbDatabase* Drawing() { return ads::WorkingDb(); }

// Shows view, remembering the one it replaces.
bool Replace(AcDbDatabase* db, const db::ActiveView& view) {
  db::DatabaseState& s = db->state();
  const db::ActiveView before = db::GetActiveView(s);
  if (!db::SetActiveView(db, view)) return false;
  s.previousViews.push_back(before);
  if (s.previousViews.size() > kPreviousViewsKept) s.previousViews.erase(s.previousViews.begin());
  return true;
}

}  // namespace

double ViewBox::width() const { return height * ScreenAspect(); }

ViewBox CurrentViewBox() {
  ViewBox box;
  AcDbDatabase* db = Drawing();
  const db::ActiveView v = db ? db::GetActiveView(db->state()) : db::ActiveView();
  box.center[0] = v.center.x;
  box.center[1] = v.center.y;
  box.height = v.height;
  return box;
}

ViewBox ViewAround(const double lo[2], const double hi[2]) {
  ViewBox box;
  box.center[0] = (lo[0] + hi[0]) / 2;
  box.center[1] = (lo[1] + hi[1]) / 2;
  box.height = std::max(std::fabs(hi[1] - lo[1]), std::fabs(hi[0] - lo[0]) / ScreenAspect());
  if (!(box.height > 0)) box.height = CurrentViewBox().height;
  return box;
}

bool ShowViewBox(const ViewBox& box) {
  AcDbDatabase* db = Drawing();
  if (!db || !(box.height > 0) || !std::isfinite(box.height) || !std::isfinite(box.center[0]) ||
      !std::isfinite(box.center[1]))
    return false;
  db::ActiveView v = db::GetActiveView(db->state());
  v.center = AcGePoint2d(box.center[0], box.center[1]);
  v.height = box.height;
  v.width = box.width();
  return Replace(db, v);
}

bool ShowView(db::ActiveView view) {
  AcDbDatabase* db = Drawing();
  if (!db) return false;
  // Following the UCS is the viewport's setting, not the view's.
  const short follow = db::GetActiveView(db->state()).mode & 8;
  view.mode = static_cast<short>((view.mode & ~8) | follow);
  const double aspect = ScreenAspect();
  view.height = std::max(view.height, view.width / aspect);
  view.width = view.height * aspect;
  if (!(view.height > 0) || !std::isfinite(view.height) || !std::isfinite(view.center.x) ||
      !std::isfinite(view.center.y) || view.direction.isZeroLength())
    return false;
  return Replace(db, view);
}

bool ShowPreviousView() {
  AcDbDatabase* db = Drawing();
  if (!db) return false;
  db::DatabaseState& s = db->state();
  if (s.previousViews.empty()) return false;
  db::ActiveView v = s.previousViews.back();
  v.width = v.height * ScreenAspect();
  if (!db::SetActiveView(db, v)) return false;
  s.previousViews.pop_back();
  return true;
}

void UcsToDisplay(const double ucs[3], bool disp, double dcs[2]) {
  double world[3] = {ucs[0], ucs[1], ucs[2]}, out[3] = {ucs[0], ucs[1], ucs[2]};
  AcDbDatabase* db = Drawing();
  db::Frame f;
  if (db && db::UcsFrame(db->state(), f)) db::ToWorld(f, ucs, disp, world);
  if (db && db::DcsFrame(db->state(), f)) db::FromWorld(f, world, disp, out);
  dcs[0] = out[0];
  dcs[1] = out[1];
}

void WorldToDisplay(const double wcs[3], double dcs[2]) {
  double out[3] = {wcs[0], wcs[1], wcs[2]};
  AcDbDatabase* db = Drawing();
  db::Frame f;
  if (db && db::DcsFrame(db->state(), f)) db::FromWorld(f, wcs, false, out);
  dcs[0] = out[0];
  dcs[1] = out[1];
}

void ViewCornersInUcs(double lowerLeft[3], double upperRight[3]) {
  const ViewBox box = CurrentViewBox();
  const double half[2] = {box.width() / 2, box.height / 2};
  double corners[2][3] = {{box.center[0] - half[0], box.center[1] - half[1], 0.0},
                          {box.center[0] + half[0], box.center[1] + half[1], 0.0}};
  AcDbDatabase* db = Drawing();
  db::Frame dcs, ucs;
  const bool haveDcs = db && db::DcsFrame(db->state(), dcs);
  const bool haveUcs = db && db::UcsFrame(db->state(), ucs);
  for (auto& c : corners) {
    double world[3] = {c[0], c[1], c[2]};
    if (haveDcs) db::ToWorld(dcs, c, false, world);
    if (haveUcs) db::FromWorld(ucs, world, false, c);
    else std::copy(world, world + 3, c);
  }
  std::copy(corners[0], corners[0] + 3, lowerLeft);
  std::copy(corners[1], corners[1] + 3, upperRight);
}

}  // namespace kelhost::editor
