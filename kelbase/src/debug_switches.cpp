// The debug switches, kept in section "Debug" of the initialisation
// settings and read from the file at every call (see kelbase/debug.h).
#include "kelbase/debug.h"

#include <cwchar>
#include <string>

#include "kelbase/directories.h"
#include "kelhost/text.h"

namespace {
const wchar_t kSection[] = L"Debug";

// Whole non-zero integers and the usual words for "on"; "0", "off", "no",
// empty text and anything unrecognised are off.
bool IsOn(const CString& stored) {
  CString text(stored);
  text.Trim();
  if (text.IsEmpty()) return false;
  for (const wchar_t* word : {L"true", L"yes", L"on"})
    if (kelhost::EqualNoCase(text.str(), word)) return true;
  wchar_t* end = nullptr;
  const long long value = std::wcstoll(text.GetString(), &end, 10);
  return end != nullptr && *end == L'\0' && value != 0;
}

bool Read(const wchar_t* key) { return IsOn(KEL::CInitSetting().GetSetting(key, L"0", kSection)); }

bool Write(const wchar_t* key, bool on) { return KEL::CInitSetting().SetSetting(key, on ? L"1" : L"0", kSection); }
}  // namespace

bool GetDSCommandLineToEXE() { return Read(L"CommandLineToEXE"); }
bool GetDSCommandLineToCAD() { return Read(L"CommandLineToCAD"); }
bool GetDSDialogToEXE() { return Read(L"DialogToEXE"); }
bool GetDSDialogToCAD() { return Read(L"DialogToCAD"); }
bool GetDSMacroToEXE() { return Read(L"MacroToEXE"); }
bool GetDSMacroToCAD() { return Read(L"MacroToCAD"); }
bool GetDSFormatLspList() { return Read(L"FormatLspList"); }

bool SetDSCommandLineToEXE(bool on) { return Write(L"CommandLineToEXE", on); }
bool SetDSCommandLineToCAD(bool on) { return Write(L"CommandLineToCAD", on); }
bool SetDSDialogToEXE(bool on) { return Write(L"DialogToEXE", on); }
bool SetDSDialogToCAD(bool on) { return Write(L"DialogToCAD", on); }
bool SetDSMacroToEXE(bool on) { return Write(L"MacroToEXE", on); }
bool SetDSMacroToCAD(bool on) { return Write(L"MacroToCAD", on); }
bool SetDSFormatLspList(bool on) { return Write(L"FormatLspList", on); }
