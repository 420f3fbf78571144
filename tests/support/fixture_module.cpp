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

// A transient entity that says where it is each time it is drawn.
class FixMarker : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(FixMarker);
  AcGePoint3d at;

 protected:
  Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override {
    acutPrintf(L"[draw %g,%g%s]", at.x, at.y, wd->isDragging() ? L" dragging" : L"");
    const AcGePoint3d line[2] = {AcGePoint3d::kOrigin, at};
    wd->geometry().polyline(2, line);
    return Adesk::kTrue;
  }
};

// Drags the marker from point to point until Enter; "Reset" puts it back
// at the origin.
class FixJig : public AcEdJig {
 public:
  DragStatus sampler() override {
    setUserInputControls(static_cast<UserInputControls>(kNullResponseAccepted | kAccept3dCoordinates));
    setKeywordList(L"Reset");
    AcGePoint3d p;
    const DragStatus s = acquirePoint(p, AcGePoint3d::kOrigin);
    if (s != kNormal) return s;
    if (p.isEqualTo(marker.at)) return kNoChange;
    mNext = p;
    return kNormal;
  }
  Adesk::Boolean update() override {
    acutPrintf(L"[update]");
    marker.at = mNext;
    return Adesk::kTrue;
  }
  AcDbEntity* entity() const override { return const_cast<FixMarker*>(&marker); }
  FixMarker marker;

 private:
  AcGePoint3d mNext;
};

void FixJigCommand() {
  FixJig jig;
  jig.setDispPrompt(L"\nMarker point or [%s]: ", L"Reset");
  int points = 0;
  AcEdJig::DragStatus s;
  for (;;) {
    s = jig.drag();
    if (s == AcEdJig::kNormal) {
      ++points;
    } else if (s == AcEdJig::kKW1) {
      jig.marker.at = AcGePoint3d::kOrigin;
      acutPrintf(L"[reset]");
    } else {
      break;
    }
  }
  acutPrintf(L"\n[jig %s after %d points]", s == AcEdJig::kNull ? L"accepted" : L"cancelled", points);
}

ACRX_NO_CONS_DEFINE_MEMBERS(FixMarker, AcDbEntity)

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
      acedRegCmds->addCommand(L"FIXGRP", L"FIXJIG", L"FIXJIG", ACRX_CMD_MODAL, FixJigCommand);
      FixMarker::rxInit();
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
      acedDefun(L"fix_unload_self", 8);
      break;
    case AcRx::kUnloadDwgMsg:
      Log(L"unload-dwg");
      for (int code = 1; code <= 8; ++code) {
        static const wchar_t* names[] = {L"fix_echo", L"fix_void", L"fix_int",   L"fix_str",
                                         L"fix_code", L"fix_leak", L"fix_close", L"fix_unload_self"};
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
        case 8: acedRetInt(acedArxUnload(L"fixture_module")); break;
        default: break;
      }
      break;
    default:
      break;
  }
  return AcRx::kRetOK;
}

extern "C" __attribute__((visibility("default"))) int acrxGetApiVersion() { return ACRX_API_VERSION_MAJOR; }
