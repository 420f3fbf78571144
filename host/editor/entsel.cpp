// acedEntSel: one object picked with a point. A missed pick and Enter both
// fail; ERRNO tells them apart, as the platform's programs expect.
#include "arx/acedads.h"
#include "editor/input_calls.h"

namespace {

// ERRNO values of the platform for entsel.
constexpr short kPickFailed = 7;
constexpr short kNullPick = 52;

void SetErrno(short value) {
  resbuf rb{};
  rb.restype = RTSHORT;
  rb.resval.rint = value;
  acedSetVar(L"ERRNO", &rb);
}

int EntSel(const ACHAR* str, ads_name entres, ads_point ptres) {
  using namespace kelhost::editor;
  if (!entres || !ptres) {
    SetInitGet(0, L"");
    return RTERROR;
  }
  const Answer a = AskUser(Want::kEntity, str ? str : L"\nSelect object: ");
  switch (a.status) {
    case RTNORM:
      entres[0] = a.name[0];
      entres[1] = a.name[1];
      for (int i = 0; i < 3; ++i) ptres[i] = a.point[i];
      return RTNORM;
    case RTNONE:
      SetErrno(kNullPick);
      return RTERROR;
    case RTERROR:
      SetErrno(kPickFailed);
      return RTERROR;
    default:
      return a.status;  // RTKWORD, RTCAN
  }
}

}  // namespace

int acedEntSel(const ACHAR* str, ads_name entres, ads_point ptres) {
  try {
    return EntSel(str, entres, ptres);
  } catch (...) {
    return RTERROR;
  }
}
