// The command stack: commands registered by applications in groups.
#pragma once

#include "acadstrc.h"
#include "acrx.h"

#define ACRX_CMD_MODAL 0x00000000
#define ACRX_CMD_TRANSPARENT 0x00000001
#define ACRX_CMD_USEPICKSET 0x00000002
#define ACRX_CMD_REDRAW 0x00000004
#define ACRX_CMD_NOPERSPECTIVE 0x00000008
#define ACRX_CMD_NOMULTIPLE 0x00000010
#define ACRX_CMD_NOTILEMODE 0x00000020
#define ACRX_CMD_NOPAPERSPACE 0x00000040
#define ACRX_CMD_NOOEM 0x00000100
#define ACRX_CMD_UNDEFINED 0x00000200
#define ACRX_CMD_INPROGRESS 0x00000400
#define ACRX_CMD_DEFUN 0x00000800
#define ACRX_CMD_NONEWSTACK 0x00010000
#define ACRX_CMD_NOINTERNALLOCK 0x00020000
#define ACRX_CMD_DOCREADLOCK 0x00080000
#define ACRX_CMD_DOCEXCLUSIVELOCK 0x00100000
#define ACRX_CMD_SESSION 0x00200000
#define ACRX_CMD_INTERRUPTIBLE 0x00400000
#define ACRX_CMD_NOHISTORY 0x00800000

typedef void (*AcRxFunctionPtr)();
class AcEdUIContext;

class AcEdCommand : public AcRxObject {
 public:
  virtual void commandUndef(bool undefIt) = 0;
  virtual Adesk::Int32 commandFlags() const = 0;
  virtual AcRxFunctionPtr functionAddr() const = 0;
  virtual const ACHAR* globalName() const = 0;
  virtual const ACHAR* localName() const = 0;
};

class AcEdCommandStack : public AcRxObject {
 public:
  static AcEdCommandStack* cast(AcRxObject* obj) { return dynamic_cast<AcEdCommandStack*>(obj); }
  // eOk, or eDuplicateKey when the global name is already in the group.
  virtual Acad::ErrorStatus addCommand(const ACHAR* cmdGroupName, const ACHAR* cmdGlobalName,
                         const ACHAR* cmdLocalName, Adesk::Int32 commandFlags,
                         AcRxFunctionPtr FunctionAddr, AcEdUIContext* UIContext = nullptr,
                         int fcode = -1, void* hResourceHandle = nullptr,
                         AcEdCommand** cmdPtrRet = nullptr) = 0;
  virtual AcEdCommand* lookupGlobalCmd(const ACHAR* cmdName) = 0;
  virtual AcEdCommand* lookupLocalCmd(const ACHAR* cmdName) = 0;
  virtual AcEdCommand* lookupCmd(const ACHAR* cmdName, bool globalFlag) = 0;
  virtual Acad::ErrorStatus removeCmd(const ACHAR* cmdGroupName, const ACHAR* cmdGlobalName) = 0;
  virtual Acad::ErrorStatus removeGroup(const ACHAR* groupName) = 0;
};
#define acedRegCmds AcEdCommandStack::cast(acrxSysRegistry()->at(ACRX_COMMAND_DOCK))
