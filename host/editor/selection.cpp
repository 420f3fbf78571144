#include "editor/selection.h"

#include <algorithm>

#include "ads/entity_names.h"
#include "ads/selection_sets.h"
#include "arx/acedads.h"
#include "arx/dbdict.h"
#include "arx/dbgroup.h"
#include "db/stub.h"
#include "editor/picking.h"
#include "editor/region_selection.h"

namespace kelhost::editor {

const wchar_t kSelectionKeywords[] =
    L"Window Last Crossing BOX ALL Fence WPolygon CPolygon Group Add Remove Multiple Previous Undo AUto SIngle "
    L"SUbobject Object";

namespace {

// "1 was ..." / "3 were ...".
std::wstring Counted(size_t n, const wchar_t* what) {
  return L"\n" + std::to_wstring(n) + (n == 1 ? L" was " : L" were ") + what;
}

bool Contains(const std::vector<AcDbObjectId>& ids, const AcDbObjectId& id) {
  return std::find(ids.begin(), ids.end(), id) != ids.end();
}

AcDbObjectId IdOf(const std::int64_t name[2]) {
  const ads_name n = {name[0], name[1]};
  return ads::IdOfName(n);
}

// The state of one "Select objects:" session.
class Selector {
 public:
  Selector(SelectionDialog& dialog, const SelectionOptions& options) : mDialog(dialog), mOptions(options) {}

  SelectionResult run() {
    for (;;) {
      Request r = request(Want::kSelect, mRemoving ? L"\nRemove objects: " : mOptions.prompt, kSelectionKeywords);
      const Answer a = mDialog.ask(r);
      if (a.status == RTCAN) return cancelled();
      if (a.status == RTNONE) {
        if (mMultiple.empty()) break;
        takeMultiplePicks();
        continue;
      }
      std::vector<AcDbObjectId> found;
      if (!gather(a, found)) {
        if (mCancelled) return cancelled();
        continue;  // a mode was switched, or nothing was designated
      }
      apply(found);
      if (mSingle && !found.empty()) break;
    }
    if (!mChosen.empty()) ads::SetPreviousSelection(mChosen);
    return {RTNORM, mChosen};
  }

 private:
  struct Step {
    std::vector<AcDbObjectId> added, removed;
  };

  static Request request(Want want, const std::wstring& prompt, const wchar_t* keywords = L"",
                         const AcGePoint3d* base = nullptr) {
    Request r;
    r.want = want;
    r.prompt = prompt;
    r.keywords = Keywords(keywords);
    r.flags = kNoLimits;  // windows and fences may reach beyond the limits
    if (base) {
      r.hasBase = true;
      r.base[0] = base->x;
      r.base[1] = base->y;
      r.base[2] = base->z;
    }
    return r;
  }

  SelectionResult cancelled() { return {RTCAN, {}}; }

  // A point answer; false when there was none (Enter) or the user cancelled.
  bool askPoint(Want want, const std::wstring& prompt, AcGePoint3d& p, const AcGePoint3d* base = nullptr,
                const wchar_t* keywords = L"", bool* keyword = nullptr) {
    const Answer a = mDialog.ask(request(want, prompt, keywords, base));
    if (a.status == RTCAN) mCancelled = true;
    if (keyword) *keyword = a.status == RTKWORD;
    if (a.status != RTNORM) return false;
    p.set(a.point[0], a.point[1], a.point[2]);
    return true;
  }

  bool window(bool crossing, bool byDirection, std::vector<AcDbObjectId>& found) {
    AcGePoint3d first;
    if (!askPoint(Want::kPoint, L"\nSpecify first corner: ", first)) return false;
    return oppositeCorner(first, crossing, byDirection, found);
  }

  // Left to right a window, right to left a crossing window, when the
  // direction decides (BOX and windows started by a pick).
  bool oppositeCorner(const AcGePoint3d& first, bool crossing, bool byDirection, std::vector<AcDbObjectId>& found) {
    AcGePoint3d second;
    if (!askPoint(Want::kCorner, L"\nSpecify opposite corner: ", second, &first)) return false;
    if (byDirection) crossing = second.x < first.x;
    found = EntitiesInBox(first, second, crossing);
    return true;
  }

  bool polygon(Region region, std::vector<AcDbObjectId>& found) {
    std::vector<AcGePoint3d> points(1);
    const wchar_t* first = region == Region::kFence ? L"\nFirst fence point: " : L"\nFirst polygon point: ";
    if (!askPoint(Want::kPoint, first, points[0])) return false;
    for (;;) {
      AcGePoint3d next;
      bool undo = false;
      if (askPoint(Want::kPoint, L"\nSpecify endpoint of line or [Undo]: ", next, &points.back(), L"Undo", &undo)) {
        points.push_back(next);
      } else if (undo) {
        if (points.size() > 1) points.pop_back();
      } else {
        if (mCancelled) return false;
        break;
      }
    }
    found = EntitiesInRegion(points, region);
    return true;
  }

  bool group(std::vector<AcDbObjectId>& found) {
    const Answer a = mDialog.ask(request(Want::kString, L"\nEnter group name: "));
    if (a.status == RTCAN) mCancelled = true;
    if (a.status != RTNORM || a.text.empty()) return false;
    AcDbDatabase* db = ads::WorkingDb();
    AcDbObjectId groupId;
    const auto* dict = db ? db::PeekAs<AcDbDictionary>(db->groupDictionaryId()) : nullptr;
    const auto* grp = dict && dict->getAt(a.text.c_str(), groupId) == Acad::eOk ? db::PeekAs<AcDbGroup>(groupId)
                                                                                 : nullptr;
    if (!grp) {
      mDialog.print(L"\nGroup \"" + a.text + L"\" has not been defined.");
      return false;
    }
    AcDbObjectIdArray ids;
    grp->allEntityIds(ids);
    for (int i = 0; i < ids.length(); ++i) found.push_back(ids[i]);
    return true;
  }

  void pick(const AcGePoint3d& p, std::vector<AcDbObjectId>& found) {
    const double at[3] = {p.x, p.y, p.z};
    if (mOptions.wholeAperture) {
      found = PickAllAt(at);
    } else {
      const AcDbObjectId id = PickIdAt(at);
      if (!id.isNull()) found.push_back(id);
    }
  }

  // What the answer designates; false when it designated nothing to report.
  bool gather(const Answer& a, std::vector<AcDbObjectId>& found) {
    if (a.status == RTNORM && a.isSet) {
      if (const auto* members = ads::SelectionSetMembers(a.name)) found = *members;
      return true;
    }
    if (a.status == RTNORM && a.hasName) {
      found.push_back(IdOf(a.name));
      return true;
    }
    if (a.status == RTNORM) {
      const AcGePoint3d p(a.point[0], a.point[1], a.point[2]);
      if (!mMultipleMode) {
        pick(p, found);
        if (found.empty() && mOptions.impliedWindows) return oppositeCorner(p, false, true, found);
        return true;
      }
      mMultiple.push_back(p);
      return false;
    }
    if (a.status != RTKWORD) return false;
    const std::wstring& k = a.text;
    if (k == L"Window") return window(false, false, found);
    if (k == L"Crossing") return window(true, false, found);
    if (k == L"BOX") return window(false, true, found);
    if (k == L"Fence") return polygon(Region::kFence, found);
    if (k == L"WPolygon") return polygon(Region::kInside, found);
    if (k == L"CPolygon") return polygon(Region::kCrossing, found);
    if (k == L"Group") return group(found);
    if (k == L"ALL") found = SelectableEntities();
    else if (k == L"Previous") found = ads::PreviousSelection();
    else if (k == L"Last") {
      const AcDbObjectId last = LastSelectable();
      if (!last.isNull()) found.push_back(last);
    } else {
      switchMode(k);
      return false;
    }
    return true;
  }

  void switchMode(const std::wstring& k) {
    if (k == L"Add") mRemoving = false;
    else if (k == L"Remove") mRemoving = true;
    else if (k == L"Multiple") mMultipleMode = true;
    else if (k == L"SIngle") mSingle = true;
    else if (k == L"AUto") mMultipleMode = false;
    else if (k == L"Undo") undo();
    // SUbobject and Object: a host without solids has no sub-objects.
  }

  void undo() {
    if (mHistory.empty()) return;
    const Step step = mHistory.back();
    mHistory.pop_back();
    for (const AcDbObjectId& id : step.added) mChosen.erase(std::find(mChosen.begin(), mChosen.end(), id));
    for (const AcDbObjectId& id : step.removed) mChosen.push_back(id);
  }

  void takeMultiplePicks() {
    std::vector<AcDbObjectId> found;
    for (const AcGePoint3d& p : mMultiple) {
      std::vector<AcDbObjectId> here;
      pick(p, here);
      for (const AcDbObjectId& id : here)
        if (!Contains(found, id)) found.push_back(id);
    }
    mMultiple.clear();
    mMultipleMode = false;
    apply(found);
  }

  // Reports what was found and adds it to (or removes it from) the set.
  void apply(std::vector<AcDbObjectId> found) {
    std::vector<AcDbObjectId> unique;
    for (const AcDbObjectId& id : found)
      if (!Contains(unique, id)) unique.push_back(id);
    size_t elsewhere = 0, filtered = 0;
    std::vector<AcDbObjectId> taken;
    for (const AcDbObjectId& id : unique) {
      if (!InCurrentSpace(id)) ++elsewhere;
      else if (mOptions.accept && !mOptions.accept(id)) ++filtered;
      else taken.push_back(id);
    }
    const size_t before = mChosen.size();
    Step step;
    std::wstring text = L"\n" + std::to_wstring(unique.size()) + L" found";
    if (mRemoving) {
      for (const AcDbObjectId& id : taken) {
        auto it = std::find(mChosen.begin(), mChosen.end(), id);
        if (it == mChosen.end()) continue;
        mChosen.erase(it);
        step.removed.push_back(id);
      }
      if (!unique.empty())
        text += L", " + std::to_wstring(step.removed.size()) + L" removed, " + std::to_wstring(mChosen.size()) +
                L" total";
    } else {
      size_t duplicates = 0;
      for (const AcDbObjectId& id : taken) {
        if (Contains(mChosen, id)) {
          ++duplicates;
          continue;
        }
        mChosen.push_back(id);
        step.added.push_back(id);
      }
      if (duplicates) text += L" (" + std::to_wstring(duplicates) + (duplicates == 1 ? L" duplicate)" : L" duplicates)");
      if (!unique.empty() && (before > 0 || duplicates)) text += L", " + std::to_wstring(mChosen.size()) + L" total";
    }
    mDialog.print(text);
    if (elsewhere) mDialog.print(Counted(elsewhere, L"not in current space."));
    if (filtered) mDialog.print(Counted(filtered, L"filtered out."));
    mHistory.push_back(std::move(step));
  }

  SelectionDialog& mDialog;
  const SelectionOptions& mOptions;
  std::vector<AcDbObjectId> mChosen;
  std::vector<Step> mHistory;
  std::vector<AcGePoint3d> mMultiple;  // picks of Multiple, taken at Enter
  bool mRemoving = false;
  bool mMultipleMode = false;
  bool mSingle = mOptions.single;
  bool mCancelled = false;
};

// A built-in command's dialog: its prompts and its command-line text.
class CommandDialog : public SelectionDialog {
 public:
  explicit CommandDialog(CommandContext& c) : mContext(c) {}
  Answer ask(const Request& request) override { return mContext.ask(request); }
  void print(const std::wstring& text) override { mContext.print(text); }

 private:
  CommandContext& mContext;
};

}  // namespace

SelectionResult SelectObjects(SelectionDialog& dialog, const SelectionOptions& options) {
  return Selector(dialog, options).run();
}

std::vector<AcDbObjectId> SelectObjects(CommandContext& c, const std::wstring& prompt) {
  CommandDialog dialog(c);
  SelectionOptions options;
  options.prompt = prompt;
  return SelectObjects(dialog, options).ids;
}

}  // namespace kelhost::editor
