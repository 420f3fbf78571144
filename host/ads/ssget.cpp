// acedSSGet: every selection mode, each narrowed by a filter. The modes
// that need a user ("Select objects:", ":S") ask through the editor like
// a command's selection; the others read the drawing directly.
#include <algorithm>
#include <memory>
#include <mutex>
#include <vector>

#include "ads/entity_names.h"
#include "ads/selection_sets.h"
#include "ads/ssget_filter.h"
#include "arx/acdbads.h"
#include "arx/acedads.h"
#include "arx/acutads.h"
#include "arx/dbsymtb.h"
#include "db/database_state.h"
#include "editor/picking.h"
#include "editor/prompter.h"
#include "editor/region_selection.h"
#include "editor/selection.h"
#include "kelhost/text.h"

namespace kelhost::ads {
namespace {

struct RememberedSets {
  std::mutex lock;
  std::vector<AcDbObjectId> previous;
  std::vector<AcDbObjectId> pickfirst;
};

RememberedSets& Remembered() {
  static RememberedSets sets;
  return sets;
}

std::vector<AcDbObjectId> LiveOf(const std::vector<AcDbObjectId>& ids) {
  AcDbDatabase* db = WorkingDb();
  std::vector<AcDbObjectId> live;
  for (const AcDbObjectId& id : ids)
    if (db && db::Peek(id) && !id.isErased() && id.database() == db) live.push_back(id);
  return live;
}

// Entities of the layouts (model and paper space), newest first.
std::vector<AcDbObjectId> LayoutEntities(AcDbDatabase* db) {
  std::vector<AcDbObjectId> ids;
  auto& stubs = db->state().stubs;
  for (auto it = stubs.rbegin(); it != stubs.rend(); ++it) {
    const AcDbObjectId id(it->get());
    const AcDbEntity* entity = AcDbEntity::cast(db::Peek(id));
    if (!entity || id.isErased()) continue;
    const AcDbObjectId owner = entity->ownerId();
    if (owner == db->modelSpaceId() || owner == db->paperSpaceId()) ids.push_back(id);
  }
  return ids;
}

bool Passes(const SelectionFilter* filter, AcDbObjectId id) {
  if (!filter) return true;
  ads_name name;
  NameOfId(id, name);
  resbuf* apps = acutBuildList(RTSTR, L"*", RTNONE);
  resbuf* list = acdbEntGetX(name, apps);
  const bool ok = list && filter->matches(list);
  acutRelRb(list);
  acutRelRb(apps);
  return ok;
}

bool OnLockedLayer(AcDbObjectId id) {
  const AcDbEntity* e = AcDbEntity::cast(db::Peek(id));
  const auto* layer = e ? db::PeekAs<AcDbLayerTableRecord>(e->layerId()) : nullptr;
  return layer && layer->isLocked();
}

// A mode string: letters naming the mode, ":x" options, "+." or "." for
// picks only, and "_" before any of it.
struct Mode {
  std::wstring name;
  bool single = false;         // :S
  bool wholeAperture = false;  // :E
  bool rejectLocked = false;   // :L
  bool picksOnly = false;      // +. or .
};

bool ParseMode(const ACHAR* str, Mode& mode) {
  const std::wstring s = str ? ToUpper(str) : L"";
  size_t i = 0;
  while (i < s.size() && s[i] == L'_') ++i;
  while (i < s.size()) {
    const wchar_t c = s[i];
    if (c == L':' && i + 1 < s.size()) {
      switch (s[i + 1]) {
        case L'S': mode.single = true; break;
        case L'E': mode.wholeAperture = true; break;
        case L'L': mode.rejectLocked = true; break;
        case L'D':  // duplicates: a set holds each object once anyway
        case L'N':  // nested and sub-object detail: nothing more to give
        case L'R':  // long transactions: there are none
        case L'U':
        case L'V': break;
        default: return false;
      }
      i += 2;
    } else if (c == L'+' || c == L'.') {
      mode.picksOnly = true;
      ++i;
    } else if (c >= L'A' && c <= L'Z') {
      mode.name += c;
      ++i;
    } else {
      return false;
    }
  }
  return true;
}

// The points of a chain of RTPOINT / RT3DPOINT nodes.
bool ChainPoints(const void* pt1, std::vector<AcGePoint3d>& points) {
  for (const resbuf* rb = static_cast<const resbuf*>(pt1); rb; rb = rb->rbnext) {
    if (rb->restype != RTPOINT && rb->restype != RT3DPOINT) return false;
    points.emplace_back(rb->resval.rpoint[0], rb->resval.rpoint[1],
                        rb->restype == RT3DPOINT ? rb->resval.rpoint[2] : 0.0);
  }
  return !points.empty();
}

AcGePoint3d PointOf(const void* pt) {
  const double* p = static_cast<const double*>(pt);
  return {p[0], p[1], p[2]};
}

// "Select objects:" asked of the user (or of the running command's call).
class PromptDialog : public editor::SelectionDialog {
 public:
  editor::Answer ask(const editor::Request& request) override {
    editor::Answer a = editor::Ask(request);
    if (a.status == RTCAN) editor::Say(L"*Cancel*");
    return a;
  }
  void print(const std::wstring& text) override { editor::Say(text); }
};

enum class Found { kSome, kNone, kCancelled, kBadCall };

Found Gather(const Mode& mode, const void* pt1, const void* pt2, const std::function<bool(AcDbObjectId)>& accept,
             std::vector<AcDbObjectId>& found) {
  AcDbDatabase* db = WorkingDb();
  const std::wstring& m = mode.name;
  if (m.empty() && pt1) {
    const double* at = static_cast<const double*>(pt1);
    if (mode.wholeAperture) {
      found = editor::PickAllAt(at);
    } else {
      const AcDbObjectId id = editor::PickIdAt(at);
      if (!id.isNull()) found.push_back(id);
    }
  } else if (m.empty()) {
    PromptDialog dialog;
    editor::SelectionOptions options;
    options.single = mode.single;
    options.wholeAperture = mode.wholeAperture;
    options.impliedWindows = !mode.picksOnly;
    options.accept = accept;
    const editor::SelectionResult r = editor::SelectObjects(dialog, options);
    if (r.status == RTCAN) return Found::kCancelled;
    found = r.ids;
  } else if (m == L"X") {
    found = LayoutEntities(db);
  } else if (m == L"A") {
    found = editor::SelectableEntities();
  } else if (m == L"W" || m == L"C") {
    if (!pt1 || !pt2) return Found::kBadCall;
    found = editor::EntitiesInBox(PointOf(pt1), PointOf(pt2), m == L"C");
  } else if (m == L"F" || m == L"WP" || m == L"CP") {
    std::vector<AcGePoint3d> points;
    if (!ChainPoints(pt1, points)) return Found::kBadCall;
    const editor::Region region =
        m == L"F" ? editor::Region::kFence : m == L"WP" ? editor::Region::kInside : editor::Region::kCrossing;
    found = editor::EntitiesInRegion(points, region);
  } else if (m == L"L") {
    const AcDbObjectId last = editor::LastSelectable();
    if (!last.isNull()) found.push_back(last);
  } else if (m == L"P") {
    found = PreviousSelection();
  } else if (m == L"I") {
    found = PickfirstSelection();
  } else {
    return Found::kBadCall;
  }
  return found.empty() ? Found::kNone : Found::kSome;
}

// What ssnamex tells of a set made from points given to ssget.
SelectionHow HowChosen(const Mode& mode, const void* pt1, const void* pt2) {
  SelectionHow how;
  const std::wstring& m = mode.name;
  if (m.empty() && pt1) {
    how.method = 1;
    how.points.push_back(PointOf(pt1));
  } else if ((m == L"W" || m == L"C") && pt1 && pt2) {
    const AcGePoint3d a = PointOf(pt1), b = PointOf(pt2);
    how.method = m == L"W" ? 2 : 3;
    how.points = {a, AcGePoint3d(b.x, a.y, a.z), b, AcGePoint3d(a.x, b.y, a.z)};
  } else if (m == L"WP" || m == L"CP" || m == L"F") {
    if (ChainPoints(pt1, how.points)) how.method = m == L"WP" ? 2 : m == L"CP" ? 3 : 4;
  }
  return how;
}

int SSGet(const ACHAR* str, const void* pt1, const void* pt2, const resbuf* filter, ads_name ss) {
  AcDbDatabase* db = WorkingDb();
  Mode mode;
  if (!ss || !db || !ParseMode(str, mode)) return RTERROR;
  std::unique_ptr<SelectionFilter> compiled;
  if (filter && !(compiled = SelectionFilter::Compile(filter))) return RTERROR;
  auto accept = [&](AcDbObjectId id) {
    return Passes(compiled.get(), id) && !(mode.rejectLocked && OnLockedLayer(id));
  };
  std::vector<AcDbObjectId> found;
  switch (Gather(mode, pt1, pt2, accept, found)) {
    case Found::kCancelled: return RTCAN;
    case Found::kBadCall: return RTERROR;
    default: break;
  }
  std::vector<AcDbObjectId> chosen;
  for (const AcDbObjectId& id : found)
    if (accept(id)) chosen.push_back(id);
  if (chosen.empty()) return RTERROR;
  SetPreviousSelection(chosen);
  SelectionHow how = HowChosen(mode, pt1, pt2);
  how.members.insert(chosen.begin(), chosen.end());
  NewSelectionSet(std::move(chosen), ss);
  if (how.method) SetSelectionHow(ss, std::move(how));
  return RTNORM;
}

int SSSetFirst(const ads_name pset) {
  std::vector<AcDbObjectId> ids;
  if (pset && !ads_name_nil(pset)) {
    const auto* members = SelectionSetMembers(pset);
    if (!members) return RTERROR;
    ids = *members;
  }
  SetPickfirstSelection(std::move(ids));
  return RTNORM;
}

int SSGetFirst(resbuf** gset, resbuf** pset) {
  if (!gset || !pset) return RTERROR;
  *gset = nullptr;
  *pset = nullptr;
  std::vector<AcDbObjectId> ids = PickfirstSelection();
  if (ids.empty()) return RTNORM;
  resbuf* rb = acutNewRb(RTPICKS);
  if (!rb) return RTERROR;
  NewSelectionSet(std::move(ids), rb->resval.rlname);
  *pset = rb;
  return RTNORM;
}

}  // namespace

std::vector<AcDbObjectId> PreviousSelection() {
  std::lock_guard<std::mutex> hold(Remembered().lock);
  return LiveOf(Remembered().previous);
}

void SetPreviousSelection(std::vector<AcDbObjectId> ids) {
  std::lock_guard<std::mutex> hold(Remembered().lock);
  Remembered().previous = std::move(ids);
}

std::vector<AcDbObjectId> PickfirstSelection() {
  std::lock_guard<std::mutex> hold(Remembered().lock);
  return LiveOf(Remembered().pickfirst);
}

void SetPickfirstSelection(std::vector<AcDbObjectId> ids) {
  std::lock_guard<std::mutex> hold(Remembered().lock);
  Remembered().pickfirst = std::move(ids);
}

}  // namespace kelhost::ads

int acedSSGet(const ACHAR* str, const void* pt1, const void* pt2, const resbuf* filter, ads_name ss) {
  try {
    return kelhost::ads::SSGet(str, pt1, pt2, filter, ss);
  } catch (...) {
    return RTERROR;
  }
}

int acedSSSetFirst(const ads_name pset, const ads_name unused) {
  try {
    if (unused && !ads_name_nil(unused)) return RTERROR;
    return kelhost::ads::SSSetFirst(pset);
  } catch (...) {
    return RTERROR;
  }
}

int acedSSGetFirst(resbuf** gset, resbuf** pset) {
  try {
    return kelhost::ads::SSGetFirst(gset, pset);
  } catch (...) {
    return RTERROR;
  }
}
