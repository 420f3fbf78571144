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

// (kelsib_oxdata ent): a value kept on the entity and one in the drawing
// through the module's object data store, read back as a list
// (text count-of-applications record-value).
int OxDataValues() {
  const resbuf* args = acedGetArgs();
  if (args == nullptr || args->restype != RTENAME) return acedRetNil();
  ads_name ent;
  ads_name_set(args->resval.rlname, ent);
  OxData data(ent);
  data.SetxData(L"KELSIB", 1000, L"sibling", 1);
  OxData::SetDWGxRecord(L"KELSIB\\DATA", L"COUNT", 70, 42);
  CString text;
  CStringArray apps;
  int count = 0;
  data.GetxData(L"KELSIB", 1000, text, 1);
  OxData::GetDWGxRecord(L"KELSIB\\DATA", L"COUNT", 70, count);
  resbuf* list = acutBuildList(RTSTR, text.GetString(), RTSHORT, data.GetAllAppName(apps), RTSHORT, count, RTNONE);
  acedRetList(list);
  acutRelRb(list);
  return RTNORM;
}

// (kelsib_arc): the kernel's records written field by field, as the
// family's modules write them: the angle of (0 2) on an upper half arc,
// T when it lies on the arc, and how often that arc crosses a circle.
int Arc() {
  atype upper = {{0, 0, 0}, 2.0, 0.0, 3.14159};
  circ right = {{2, 0, 0}, 2.0};
  const double top[3] = {0, 2, 0};
  double crossings[2][3];
  resbuf* list = acutBuildList(RTREAL, gl_ang_ptcirc(top, &upper), gl_ptarc(upper.start, upper.end, top, &upper) ? RTT : RTNIL,
                               RTSHORT, gl_intcc_pln(crossings, &upper, &right), RTNONE);
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
      acedDefun(L"kelsib_oxdata", 4);
      acedDefun(L"kelsib_arc", 5);
      acedDefun(L"kelsib_draw", 6);
      break;
    case AcRx::kUnloadDwgMsg:
      acedUndef(L"kelsib_check", 1);
      acedUndef(L"kelsib_area", 2);
      acedUndef(L"kelsib_vars", 3);
      acedUndef(L"kelsib_oxdata", 4);
      acedUndef(L"kelsib_arc", 5);
      acedUndef(L"kelsib_draw", 6);
      break;
    case AcRx::kInvkSubrMsg:
      if (acedGetFunCode() == 1) Check();
      if (acedGetFunCode() == 2) Area();
      if (acedGetFunCode() == 3) Vars();
      if (acedGetFunCode() == 4) OxDataValues();
      if (acedGetFunCode() == 5) Arc();
      if (acedGetFunCode() == 6) kelsib::Draw();
      break;
    default:
      break;
  }
  return AcRx::kRetOK;
}

extern "C" __attribute__((visibility("default"))) int acrxGetApiVersion() { return ACRX_API_VERSION_MAJOR; }
