// Start-up symbols: project values, directories and tolerances.
#include "kelcad/entry/published_symbols.h"

#include "kelbase/kelbase.h"
#include "kelcad/entry/tolerance.h"

namespace KEL {

namespace {

// Each symbol is set from a one-node chain, released afterwards.
void PutSymbol(const wchar_t* name, resbuf* value) {
  if (value == nullptr) return;
  acedPutSym(name, value);
  acutRelRb(value);
}

void PutString(const wchar_t* name, const wchar_t* text) {
  resbuf* rb = acutNewRb(RTSTR);
  if (rb != nullptr) acutNewString(text, rb->resval.rstring);
  PutSymbol(name, rb);
}

void PutReal(const wchar_t* name, double value) {
  resbuf* rb = acutNewRb(RTREAL);
  if (rb != nullptr) rb->resval.rreal = value;
  PutSymbol(name, rb);
}

void PutShort(const wchar_t* name, short value) {
  resbuf* rb = acutNewRb(RTSHORT);
  if (rb != nullptr) rb->resval.rint = value;
  PutSymbol(name, rb);
}

void PutDirectory(const wchar_t* name, bool (*getDir)(CString&)) {
  CString dir;
  if (!getDir(dir)) dir.Empty();
  PutString(name, dir);
}

bool WorkDirCreated(CString& dir) { return GetWorkDir(dir, true); }

}  // namespace

void PublishGCSymbols() {
  CStringArray keys, values;
  CInitSetting().GetAllKeysAndValues(L"GC", keys, values);
  for (int i = 0; i < keys.GetSize() && i < values.GetSize(); ++i) {
    CStringArray parts;
    if (KELOLD::DisCommaString(values[i], parts, false) != 2 || parts.GetSize() != 2) continue;
    const CString name = L"GC::" + keys[i];
    if (parts[1].CompareNoCase(L"Double") == 0)
      PutReal(name, _wtof(parts[0]));
    else if (parts[1].CompareNoCase(L"Int") == 0)
      PutShort(name, static_cast<short>(_wtoi(parts[0])));
    else
      PutString(name, parts[0]);
  }
}

void PublishPathAndToleranceSymbols() {
  PutDirectory(L"%ACAD14Dir%", GetAcadR14Path);
  PutDirectory(L"%ACAD15Dir%", GetAcadR15Path);
  PutDirectory(L"%InstallDir%", GetInstallDir);
  PutDirectory(L"%LocalDir%", GetLocalDir);
  PutDirectory(L"%WorkDir%", WorkDirCreated);
  PutReal(L"%ZERO%", ZERO());
  PutReal(L"%DoubleEQ%", GetDoubleEQ());
  PutReal(L"%PointEQ%", GetPointEQ());
  PutReal(L"%VectorEQ%", GetVectorEQ());
}

}  // namespace KEL
