#include "editor/selection.h"

#include <algorithm>

#include "ads/entity_names.h"
#include "arx/acedads.h"
#include "arx/acutads.h"

namespace kelhost::editor {
namespace {

const wchar_t kSelectionKeywords[] =
    L"Window Last Crossing BOX ALL Fence WPolygon CPolygon Group Add Remove Multiple Previous Undo AUto SIngle";

void AddSet(const std::int64_t name[2], std::vector<AcDbObjectId>& chosen) {
  Adesk::Int32 n = 0;
  if (acedSSLength(name, &n) != RTNORM) return;
  for (Adesk::Int32 i = 0; i < n; ++i) {
    ads_name e;
    if (acedSSName(name, i, e) == RTNORM) chosen.push_back(ads::IdOfName(e));
  }
}

void AddMode(const wchar_t* mode, std::vector<AcDbObjectId>& chosen) {
  ads_name set;
  if (acedSSGet(mode, nullptr, nullptr, nullptr, set) != RTNORM) return;
  AddSet(set, chosen);
  acedSSFree(set);
}

}  // namespace

std::vector<AcDbObjectId> SelectObjects(CommandContext& c, const std::wstring& prompt) {
  std::vector<AcDbObjectId> chosen;
  for (;;) {
    Request r;
    r.want = Want::kEntity;
    r.prompt = prompt;
    r.keywords = Keywords(kSelectionKeywords);
    Answer a = c.ask(r);
    if (a.status == RTNONE) break;
    std::vector<AcDbObjectId> found;
    if (a.status == RTNORM && a.isSet) AddSet(a.name, found);
    else if (a.status == RTNORM && a.hasName) found.push_back(ads::IdOfName(a.name));
    else if (a.status == RTKWORD && a.text == L"Last") AddMode(L"L", found);
    else if (a.status == RTKWORD && a.text == L"ALL") AddMode(L"X", found);
    else if (a.status == RTKWORD && a.text == L"Previous") AddMode(L"P", found);
    size_t added = 0;
    for (const AcDbObjectId& id : found)
      if (std::find(chosen.begin(), chosen.end(), id) == chosen.end()) {
        chosen.push_back(id);
        ++added;
      }
    if (a.status == RTNORM || a.status == RTKWORD) {
      c.print(L"\n" + std::to_wstring(found.size()) + L" found");
      if (added < found.size()) c.print(L" (" + std::to_wstring(found.size() - added) + L" duplicate)");
      c.print(L", " + std::to_wstring(chosen.size()) + L" total");
    }
  }
  return chosen;
}

}  // namespace kelhost::editor
