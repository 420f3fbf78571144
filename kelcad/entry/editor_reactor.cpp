// Construction and removal of the module's editor reactor.
#include "kelcad/entry/editor_reactor.h"

#include "kelcad/entry/settings.h"

namespace {

AcEditor* FindEditor() {
  AcRxDictionary* registry = acrxSysRegistry();
  return registry != nullptr ? AcEditor::cast(registry->at(ACRX_EDITOR)) : nullptr;
}

}  // namespace

KelEditorReactor::KelEditorReactor(bool attach) {
  if (attach) {
    if (AcEditor* editor = FindEditor()) {
      editor->addReactor(this);
      mAttached = true;
    }
  }
  mWatchedCommands = KEL::SysINI().GetSetting(L"cmd", L"LINE,PLINE,INSERT,TEXT", L"cmdreactor");
  mWatchedCommands.MakeUpper();
}

KelEditorReactor::~KelEditorReactor() {
  if (!mAttached) return;
  if (AcEditor* editor = FindEditor()) editor->removeReactor(this);
}
