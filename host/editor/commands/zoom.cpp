// ZOOM (also -ZOOM, and 'ZOOM inside another command): the view's
// magnification and place. The headless editor has no cursor to drag:
// Enter at the first prompt (real time) says how real-time zoom ends and
// leaves the view as it is; Dynamic shows its view box where the view
// already is, so it also leaves the view as it is.
#include <algorithm>
#include <cmath>
#include <cwchar>
#include <string>

#include "ads/entity_names.h"
#include "ads/units.h"
#include "arx/acedads.h"
#include "arx/acutads.h"
#include "arx/dbents.h"
#include "db/database_state.h"
#include "db/drawing_extents.h"
#include "editor/builtin_commands.h"
#include "editor/view.h"
#include "kelhost/text.h"

namespace kelhost::editor {
namespace {

const wchar_t kFirstPrompt[] =
    L"\nSpecify corner of window, enter a scale factor (nX or nXP), or\n"
    L"[All/Center/Dynamic/Extents/Previous/Scale/Window/Object] <real time>: ";
const wchar_t kOptions[] = L"All Center Dynamic Extents Previous Scale Window Object";
const wchar_t kWrongFirstAnswer[] = L"\nPoint or option keyword required.";

// A display-plane box that grows as points are added.
struct DisplayBox {
  double lo[2] = {0, 0}, hi[2] = {0, 0};
  bool empty = true;
  void add(const double p[2]) {
    for (int i = 0; i < 2; ++i) {
      lo[i] = empty ? p[i] : std::min(lo[i], p[i]);
      hi[i] = empty ? p[i] : std::max(hi[i], p[i]);
    }
    empty = false;
  }
  // The eight corners of a world box as they lie on the display plane.
  void add(const AcDbExtents& wcs) {
    const AcGePoint3d a = wcs.minPoint(), b = wcs.maxPoint();
    for (int k = 0; k < 8; ++k) {
      const double w[3] = {k & 1 ? b.x : a.x, k & 2 ? b.y : a.y, k & 4 ? b.z : a.z};
      double d[2];
      WorldToDisplay(w, d);
      add(d);
    }
  }
};

// A scale factor: n (relative to the limits), nX (to the current view) or
// nXP (to paper space; in model space the same as nX).
struct Scale {
  double factor = 1.0;
  bool ofView = false;
};

bool ParseScale(const std::wstring& typed, Scale& out) {
  std::wstring text = ToUpper(typed);
  const size_t b = text.find_first_not_of(L" \t"), e = text.find_last_not_of(L" \t");
  if (b == std::wstring::npos) return false;
  text = text.substr(b, e - b + 1);
  Scale s;
  for (const wchar_t* suffix : {L"XP", L"X"}) {
    const size_t n = std::wcslen(suffix);
    if (text.size() > n && text.compare(text.size() - n, n, suffix) == 0) {
      text.erase(text.size() - n);
      s.ofView = true;
      break;
    }
  }
  if (acutDisToF(text.c_str(), 2, &s.factor) != RTNORM || !(s.factor > 0) || !std::isfinite(s.factor)) return false;
  out = s;
  return true;
}

bool PointVar(const wchar_t* name, double p[3]) {
  resbuf rb{};
  if (acedGetVar(name, &rb) != RTNORM || (rb.restype != RTPOINT && rb.restype != RT3DPOINT)) return false;
  for (int i = 0; i < 3; ++i) p[i] = rb.restype == RTPOINT && i == 2 ? 0.0 : rb.resval.rpoint[i];
  return true;
}

// The drawing limits (a world rectangle) on the display plane.
DisplayBox Limits() {
  DisplayBox box;
  double lo[3], hi[3];
  if (PointVar(L"LIMMIN", lo) && PointVar(L"LIMMAX", hi)) box.add(AcDbExtents(AcGePoint3d(lo[0], lo[1], 0), AcGePoint3d(hi[0], hi[1], 0)));
  return box;
}

// What the current space draws.
DisplayBox Drawn() {
  DisplayBox box;
  AcDbDatabase* db = ads::WorkingDb();
  AcDbExtents wcs;
  if (db && db::SpaceExtents(db, db->currentSpaceId(), wcs)) box.add(wcs);
  return box;
}

bool PlanView() {
  AcDbDatabase* db = ads::WorkingDb();
  if (!db) return true;
  const AcGeVector3d d = db::GetActiveView(db->state()).direction;
  return std::fabs(d.x) < 1e-10 && std::fabs(d.y) < 1e-10;
}

void Show(const DisplayBox& box) {
  if (!box.empty) ShowViewBox(ViewAround(box.lo, box.hi));
}

// All: the limits and whatever is drawn beyond them (in a plan view; in
// any other view the same as Extents).
void ZoomAll() {
  DisplayBox box = Drawn();
  if (PlanView() || box.empty) {
    const DisplayBox limits = Limits();
    if (!limits.empty) {
      box.add(limits.lo);
      box.add(limits.hi);
    }
  }
  Show(box);
}

// Extents: what is drawn; the limits when nothing is.
void ZoomExtents() {
  const DisplayBox box = Drawn();
  Show(box.empty ? Limits() : box);
}

void ZoomScale(const Scale& s) {
  ViewBox view = CurrentViewBox();
  if (s.ofView) {
    view.height /= s.factor;
  } else {
    const DisplayBox limits = Limits();
    if (limits.empty) return;
    view.height = ViewAround(limits.lo, limits.hi).height / s.factor;
  }
  ShowViewBox(view);
}

void ZoomWindow(const double first[3], const double second[3]) {
  DisplayBox box;
  double d[2];
  UcsToDisplay(first, false, d);
  box.add(d);
  UcsToDisplay(second, false, d);
  box.add(d);
  Show(box);
}

void AskWindow(CommandContext& c) {
  const Answer first = c.askPoint(L"\nSpecify first corner: ");
  if (first.status != RTNORM) return;
  const Answer second = c.askCorner(L"\nSpecify opposite corner: ", first.point);
  if (second.status == RTNORM) ZoomWindow(first.point, second.point);
}

void ZoomCenter(CommandContext& c) {
  ViewBox view = CurrentViewBox();
  const Answer center = c.askPoint(L"\nSpecify center point: ");
  if (center.status == RTNORM) UcsToDisplay(center.point, false, view.center);
  Request r;
  r.want = Want::kDist;
  r.prompt = L"\nEnter magnification or height <" + units::PromptDistance(view.height) + L">: ";
  r.flags = kArbitrary | kNoZero | kNoNegative;
  for (;;) {
    const Answer a = c.ask(r);
    if (a.status == RTNORM) {
      view.height = a.real;
      break;
    }
    Scale s;
    if (a.text.empty()) break;  // Enter: the height stays
    if (ParseScale(a.text, s)) {
      view.height = s.ofView ? view.height / s.factor : s.factor;
      break;
    }
    c.print(L"\nRequires numeric distance or two points.");
  }
  ShowViewBox(view);
}

void AskScale(CommandContext& c) {
  for (;;) {
    const Answer a = c.askKeyword(L"\nEnter a scale factor (nX or nXP): ", L"", kArbitrary);
    if (a.text.empty()) return;
    Scale s;
    if (ParseScale(a.text, s)) return ZoomScale(s);
    c.print(L"\nRequires numeric value.");
  }
}

void ZoomObjects(CommandContext& c) {
  DisplayBox box;
  for (const AcDbObjectId& id : c.selectObjects()) {
    AcDbEntity* e = nullptr;
    if (acdbOpenAcDbEntity(e, id, AcDb::kForRead) != Acad::eOk) continue;
    AcDbExtents ext;
    if (e->getGeomExtents(ext) == Acad::eOk && !ext.isEmpty()) box.add(ext);
    e->close();
  }
  Show(box);
}

void RunZoom(CommandContext& c) {
  for (;;) {
    const Answer a = c.askPoint(kFirstPrompt, kOptions, kArbitrary);
    if (a.status == RTNORM) {
      const Answer second = c.askCorner(L"\nSpecify opposite corner: ", a.point);
      if (second.status == RTNORM) ZoomWindow(a.point, second.point);
      return;
    }
    const std::wstring& option = a.text;
    Scale scale;
    if (option.empty()) {
      c.print(L"\nPress ESC or ENTER to exit, or right-click to display shortcut menu.");
    } else if (option == L"All") {
      ZoomAll();
    } else if (option == L"Center") {
      ZoomCenter(c);
    } else if (option == L"Dynamic") {
      // The view box starts where the view is, and nothing moves it.
    } else if (option == L"Extents") {
      ZoomExtents();
    } else if (option == L"Previous") {
      if (!ShowPreviousView()) c.print(L"\nNo previous view saved.");
    } else if (option == L"Scale") {
      AskScale(c);
    } else if (option == L"Window") {
      AskWindow(c);
    } else if (option == L"Object") {
      ZoomObjects(c);
    } else if (ParseScale(option, scale)) {
      ZoomScale(scale);
    } else {
      c.print(kWrongFirstAnswer);
      continue;
    }
    return;
  }
}

}  // namespace

KELHOST_BUILTIN_COMMAND(Zoom, {L"ZOOM", RunZoom, /*hasDialog*/ true, /*transparent*/ true});

}  // namespace kelhost::editor
