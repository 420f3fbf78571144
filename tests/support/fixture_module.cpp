// A small application used by the host's tests: it reports every message
// it receives on the command line and offers a few external functions and
// commands, so tests can watch the platform's protocol from outside.
// Scenario tests load it with ";; args: --arx @fixture@".
#include <cstdlib>

#include "arx/arxheaders.h"

namespace {

void Log(const wchar_t* what) { acutPrintf(L"[%s]", what); }

void FixCommand() { Log(L"fixcmd"); }

// IN: a command named inside the list of commands that the KELCAD module's
// editor reactor watches by default ("LINE,PLINE,INSERT,TEXT"). It shows
// OSMODE as it runs and, when the AutoLISP symbol fix_in_then names a
// command, runs that command inside itself.
void InCommand() {
  resbuf snap{};
  if (acedGetVar(L"OSMODE", &snap) == RTNORM) acutPrintf(L"[IN: OSMODE %d]", snap.resval.rint);
  resbuf* then = nullptr;
  if (acedGetSym(L"fix_in_then", &then) == RTNORM && then != nullptr && then->restype == RTSTR)
    acedCommandS(RTSTR, then->resval.rstring, RTNONE);
  acutRelRb(then);
}

// (fix_echo args...): gives its arguments back as a list.
void Echo() { acedRetList(acedGetArgs()); }

// (fix_leak) opens the named-object dictionary and keeps it open, breaking
// the discipline on purpose; (fix_close) closes it again.
AcDbObject* gLeaked = nullptr;
void Leak() {
  if (!gLeaked) acdbOpenObject(gLeaked, acdbCurDwg()->namedObjectsDictionaryId(), AcDb::kForRead);
}
void CloseLeaked() {
  if (gLeaked) gLeaked->close();
  gLeaked = nullptr;
}

}  // namespace

extern "C" __attribute__((visibility("default"))) int DllMain(void*, unsigned reason, void*) {
  Log(reason == DLL_PROCESS_ATTACH ? L"attach" : L"detach");
  return 1;
}

extern "C" __attribute__((visibility("default"))) AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg, void* appId) {
  switch (msg) {
    case AcRx::kInitAppMsg:
      Log(L"init");
      if (!std::getenv("FIXTURE_LOCKED")) acrxDynamicLinker->unlockApplication(appId);
      acrxDynamicLinker->registerAppMDIAware(appId);
      acedRegCmds->addCommand(L"FIXGRP", L"FIXCMD", L"FIXLOCAL", ACRX_CMD_TRANSPARENT, FixCommand);
      acedRegCmds->addCommand(L"FIXGRP", L"IN", L"IN", ACRX_CMD_MODAL, InCommand);
      break;
    case AcRx::kUnloadAppMsg:
      Log(L"unload-app");
      acedRegCmds->removeGroup(L"FIXGRP");
      break;
    case AcRx::kLoadDwgMsg:
      Log(L"load-dwg");
      acedDefun(L"fix_echo", 1);
      acedDefun(L"fix_void", 2);
      acedDefun(L"fix_int", 3);
      acedDefun(L"fix_str", 4);
      acedDefun(L"fix_code", 5);
      acedDefun(L"fix_leak", 6);
      acedDefun(L"fix_close", 7);
      break;
    case AcRx::kUnloadDwgMsg:
      Log(L"unload-dwg");
      for (int code = 1; code <= 7; ++code) {
        static const wchar_t* names[] = {L"fix_echo", L"fix_void", L"fix_int", L"fix_str",
                                         L"fix_code", L"fix_leak", L"fix_close"};
        acedUndef(names[code - 1], code);
      }
      break;
    case AcRx::kInvkSubrMsg:
      switch (acedGetFunCode()) {
        case 1: Echo(); break;
        case 2: acedRetVoid(); break;
        case 3: acedRetInt(100000); break;
        case 4: acedRetStr(L"\x4e2d\x6587 text"); break;
        case 5: acedRetInt(acedGetFunCode()); break;
        case 6: Leak(); break;
        case 7: CloseLeaked(); break;
        default: break;
      }
      break;
    default:
      break;
  }
  return AcRx::kRetOK;
}

extern "C" __attribute__((visibility("default"))) int acrxGetApiVersion() { return ACRX_API_VERSION_MAJOR; }
