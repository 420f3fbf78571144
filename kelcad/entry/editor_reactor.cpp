// The module's editor reactor: running object snaps off while the watched
// commands run.
#include "kelcad/entry/editor_reactor.h"

#include "kelcad/api/sysvar_access.h"
#include "kelcad/entry/module_state.h"
#include "kelcad/entry/settings.h"

namespace {

// The AutoLISP symbol that tells the family's programs the user's OSMODE
// while a watched command runs with object snaps off.
const wchar_t kPublishedSnapMode[] = L"kel_pub_osmode_value";

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

void KelEditorReactor::commandWillStart(const ACHAR* cmdStr) {
  try {
    CString name(cmdStr != nullptr ? cmdStr : L"");
    name.MakeUpper();
    if (name == L"U") {
      // An undo step does not put the snap mode back afterwards.
      mSnapChanged = false;
      return;
    }
    if (!KEL::EditorReactorSwitchedOn() || mWatchedCommands.Find(name) < 0) return;
    int snapMode = 0;
    if (KEL::GetCADVar(L"OSMODE", snapMode) != RTNORM) return;
    mSnapChanged = true;
    mSavedSnapMode = snapMode;
    resbuf published{};
    published.restype = RTSHORT;
    published.resval.rint = static_cast<short>(snapMode);
    acedPutSym(kPublishedSnapMode, &published);
    KEL::SetCADVar(L"OSMODE", 0);
  } catch (...) {
    // Nothing escapes to the editor that notifies.
  }
}

void KelEditorReactor::commandEnded(const ACHAR*) { restoreSnapMode(); }

void KelEditorReactor::commandCancelled(const ACHAR*) { restoreSnapMode(); }

void KelEditorReactor::restoreSnapMode() {
  if (!mSnapChanged) return;
  mSnapChanged = false;
  KEL::SetCADVar(L"OSMODE", static_cast<int>(mSavedSnapMode));
}
