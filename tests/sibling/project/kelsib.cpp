// A sibling module of the family: it links KELCAD's exported library and
// offers AutoLISP functions that use it.
#include "kelsib.h"

namespace {

// (kelsib_check p1 p2): the number of arguments as the module's chain
// helpers count them, and whether the points are equal in plan.
int Check() {
  resbuf* args = acedGetArgs();
  if (KEL::GetRbLength(args) != 2 || args->restype != RT3DPOINT || args->rbnext->restype != RT3DPOINT) {
    acutPrintf(L"\nkelsib_check: two 3D points expected");
    return acedRetNil();
  }
  resbuf* count = acutNewRb(RTSHORT);
  count->resval.rint = static_cast<short>(KEL::GetRbLength(args) + 1);
  count->rbnext = acutNewRb(KEL::IsPoint2dEQ(args->resval.rpoint, args->rbnext->resval.rpoint, -1.0) ? RTT : RTNIL);
  acedRetList(count);
  acutRelRb(count);
  return RTNORM;
}

// (kelsib_area p1 p2 ...): the area the points enclose, by the module's
// geometry kernel.
int Area() { return acedRetReal(acs_js_area(acedGetArgs())); }

// (kelsib_vars): OSMODE as the module reads it, then CMDECHO in the
// module's drafting state and after its saved set gave the user's back.
int Vars() {
  const int osmode = KEL::GetCADIntVar(L"OSMODE");
  KEL::Set0();
  const int drafting = KEL::GetCADIntVar(L"CMDECHO");
  KEL::RestoreCADVar();
  resbuf* list = acutBuildList(RTSHORT, osmode, RTSHORT, drafting, RTSHORT, KEL::GetCADIntVar(L"CMDECHO"), RTNONE);
  acedRetList(list);
  acutRelRb(list);
  return RTNORM;
}

}  // namespace

extern "C" __attribute__((visibility("default"))) AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg, void* appId) {
  switch (msg) {
    case AcRx::kInitAppMsg:
      acrxDynamicLinker->unlockApplication(appId);
      acrxDynamicLinker->registerAppMDIAware(appId);
      break;
    case AcRx::kLoadDwgMsg:
      acedDefun(L"kelsib_check", 1);
      acedDefun(L"kelsib_area", 2);
      acedDefun(L"kelsib_vars", 3);
      acedDefun(L"kelsib_draw", 4);
      break;
    case AcRx::kUnloadDwgMsg:
      acedUndef(L"kelsib_check", 1);
      acedUndef(L"kelsib_area", 2);
      acedUndef(L"kelsib_vars", 3);
      acedUndef(L"kelsib_draw", 4);
      break;
    case AcRx::kInvkSubrMsg:
      if (acedGetFunCode() == 1) Check();
      if (acedGetFunCode() == 2) Area();
      if (acedGetFunCode() == 3) Vars();
      if (acedGetFunCode() == 4) kelsib::Draw();
      break;
    default:
      break;
  }
  return AcRx::kRetOK;
}

extern "C" __attribute__((visibility("default"))) int acrxGetApiVersion() { return ACRX_API_VERSION_MAJOR; }
