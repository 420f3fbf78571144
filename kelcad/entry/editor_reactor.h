// The module's editor reactor: while switched on from AutoLISP it turns
// running object snaps off for the duration of the watched commands
// (by default LINE, PLINE, INSERT and TEXT).
#pragma once

#include "kelcad/platform.h"

class KelEditorReactor : public AcEditorReactor {
 public:
  // With attach true the reactor adds itself to the editor; when the
  // editor cannot be found it stays detached. The watched-command list is
  // read from the system settings ("cmdreactor"/"cmd") either way.
  explicit KelEditorReactor(bool attach);
  ~KelEditorReactor() override;
  KelEditorReactor(const KelEditorReactor&) = delete;
  KelEditorReactor& operator=(const KelEditorReactor&) = delete;

  bool isAttached() const { return mAttached; }
  // Upper case, as read when the reactor was made.
  const CString& watchedCommands() const { return mWatchedCommands; }

  // The command notifications keep the base class's empty behaviour until
  // the object-snap handling is added; savedSnapMode and snapChanged are
  // its state.
  Adesk::Int32 savedSnapMode() const { return mSavedSnapMode; }
  bool snapChanged() const { return mSnapChanged; }

 private:
  bool mAttached = false;
  Adesk::Int32 mSavedSnapMode = 0;
  bool mSnapChanged = false;
  CString mWatchedCommands;
};
