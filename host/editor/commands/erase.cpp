// ERASE: erases the objects selected. Objects on locked layers stay, and
// the command says how many there were.
#include <string>

#include "arx/dbsymtb.h"
#include "editor/builtin_commands.h"

namespace kelhost::editor {
namespace {

bool OnLockedLayer(const AcDbEntity& e) {
  AcDbLayerTableRecord* layer = nullptr;
  if (acdbOpenObject(layer, e.layerId(), AcDb::kForRead) != Acad::eOk) return false;
  const bool locked = layer->isLocked();
  layer->close();
  return locked;
}

void RunErase(CommandContext& c) {
  int locked = 0;
  for (const AcDbObjectId& id : c.selectObjects()) {
    AcDbEntity* e = nullptr;
    if (acdbOpenAcDbEntity(e, id, AcDb::kForRead) != Acad::eOk) continue;
    if (OnLockedLayer(*e)) {
      ++locked;
    } else if (e->upgradeOpen() == Acad::eOk) {
      e->erase();
    }
    e->close();
  }
  if (locked == 1) c.print(L"\n1 was on a locked layer.");
  if (locked > 1) c.print(L"\n" + std::to_wstring(locked) + L" were on a locked layer.");
}

}  // namespace

KELHOST_BUILTIN_COMMAND(Erase, {L"ERASE", RunErase});

}  // namespace kelhost::editor
