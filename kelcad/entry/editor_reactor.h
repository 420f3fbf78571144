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

  // While the module's switch is on, a command whose name occurs anywhere
  // in the watched list text (a plain substring: "IN" and "SERT" match the
  // default list too) turns OSMODE to 0, keeping its value and publishing
  // it to AutoLISP as "kel_pub_osmode_value". U forgets the kept value.
  void commandWillStart(const ACHAR* cmdStr) override;
  // Puts the kept OSMODE back, once. A failed command is not heard: OSMODE
  // stays 0 until the next watched command ends.
  void commandEnded(const ACHAR* cmdStr) override;
  void commandCancelled(const ACHAR* cmdStr) override;

  // OSMODE as it was when the watched command started, and whether it is
  // still to be put back.
  Adesk::Int32 savedSnapMode() const { return mSavedSnapMode; }
  bool snapChanged() const { return mSnapChanged; }

 private:
  void restoreSnapMode();

  bool mAttached = false;
  Adesk::Int32 mSavedSnapMode = 0;
  bool mSnapChanged = false;
  CString mWatchedCommands;
};
