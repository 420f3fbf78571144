// The saved set of system variables and the functions that use it.
#include "kelcad/api/cadvar.h"

#include "kelcad/api/sysvar_access.h"
#include "kelcad/entry/module_state.h"

toKelCadVar::toKelCadVar()
    : angDir(0),
      angBase(0.0),
      blipMode(0),
      ceColor(0),
      cmdEcho(0),
      edgeMode(0),
      elevation(0.0),
      filletRad(0.0),
      unusedReal(0.0),
      plineWid(0.0),
      snapAng(0.0),
      thickness(0.0) {
  Save();
}

namespace {

// An integer field takes the variable's 16-bit value: CECOLOR, which the
// platform gives as text, therefore saves a meaningless number that its
// restore then cannot write back.
void ReadInto(const wchar_t* name, Adesk::Int32& field) {
  int v = 0;
  if (KEL::GetCADVar(name, v) == RTNORM) field = v;
}

void ReadInto(const wchar_t* name, double& field) { KEL::GetCADVar(name, field); }

void ReadInto(const wchar_t* name, CString& field) { KEL::GetCADVar(name, field); }

}  // namespace

void toKelCadVar::Save() {
  ReadInto(L"ANGDIR", angDir);
  ReadInto(L"ANGBASE", angBase);
  ReadInto(L"BLIPMODE", blipMode);
  ReadInto(L"CECOLOR", ceColor);
  ReadInto(L"CELTYPE", ceLType);
  ReadInto(L"CLAYER", cLayer);
  ReadInto(L"CMDECHO", cmdEcho);
  ReadInto(L"EDGEMODE", edgeMode);
  ReadInto(L"ELEVATION", elevation);
  ReadInto(L"FILLETRAD", filletRad);
  ReadInto(L"PLINEWID", plineWid);
  ReadInto(L"SNAPANG", snapAng);
  ReadInto(L"THICKNESS", thickness);
  ReadInto(L"Textstyle", textStyle);
}

void toKelCadVar::Restore() {
  KEL::SetCADVar(L"ANGDIR", static_cast<int>(angDir));
  KEL::SetCADVar(L"ANGBASE", angBase);
  KEL::SetCADVar(L"BLIPMODE", static_cast<int>(blipMode));
  KEL::SetCADVar(L"CECOLOR", static_cast<int>(ceColor));
  KEL::SetCADVar(L"CELTYPE", static_cast<const wchar_t*>(ceLType));
  KEL::SetCADVar(L"CLAYER", static_cast<const wchar_t*>(cLayer));
  KEL::SetCADVar(L"CMDECHO", static_cast<int>(cmdEcho));
  KEL::SetCADVar(L"EDGEMODE", static_cast<int>(edgeMode));
  KEL::SetCADVar(L"ELEVATION", elevation);
  KEL::SetCADVar(L"FILLETRAD", filletRad);
  KEL::SetCADVar(L"PLINEWID", plineWid);
  KEL::SetCADVar(L"SNAPANG", snapAng);
  KEL::SetCADVar(L"THICKNESS", thickness);
  KEL::SetCADVar(L"Textstyle", static_cast<const wchar_t*>(textStyle));
}

void toKelCadVar::SetZero() {
  KEL::SetCADVar(L"CMDECHO", 0);
  KEL::SetCADVar(L"BLIPMODE", 0);
  KEL::SetCADVar(L"ANGDIR", 0);
  KEL::SetCADVar(L"EDGEMODE", 0);
  KEL::SetCADVar(L"ANGBASE", 0.0);
  KEL::SetCADVar(L"SNAPANG", 0.0);
  KEL::SetCADVar(L"THICKNESS", 0.0);
  KEL::SetCADVar(L"ELEVATION", 0.0);
  KEL::SetCADVar(L"CELTYPE", L"BYLAYER");
  KEL::SetCADVar(L"CECOLOR", L"BYLAYER");
}

namespace KEL {

void SaveCADVar() {
  if (toKelCadVar* set = SavedCadVarSet()) set->Save();
}

void RestoreCADVar() {
  if (toKelCadVar* set = SavedCadVarSet()) set->Restore();
}

void Set0() {
  if (toKelCadVar* set = SavedCadVarSet()) {
    set->Save();
    set->SetZero();
  }
}

}  // namespace KEL
