// The editor and its reactors: notifications of commands and AutoLISP
// evaluations.
#pragma once

#include "acrx.h"

class AcEditorReactor : public AcRxObject {
 public:
  virtual void commandWillStart(const ACHAR* cmdStr) {}
  virtual void commandEnded(const ACHAR* cmdStr) {}
  virtual void commandCancelled(const ACHAR* cmdStr) {}
  virtual void commandFailed(const ACHAR* cmdStr) {}
  virtual void lispWillStart(const ACHAR* firstLine) {}
  virtual void lispEnded() {}
  virtual void lispCancelled() {}
};

class AcEditor : public AcRxObject {
 public:
  static AcEditor* cast(AcRxObject* obj) { return dynamic_cast<AcEditor*>(obj); }
  virtual void addReactor(AcEditorReactor* reactor) = 0;
  virtual void removeReactor(AcEditorReactor* reactor) = 0;
};
#define acedEditor AcEditor::cast(acrxSysRegistry()->at(ACRX_EDITOR))
