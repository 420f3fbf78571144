// The project field map loaded from a field file.
#include "kelcad/entry/gc_fields.h"

#include <map>
#include <string>
#include <vector>

#include "kelbase/kelbase.h"
#include "kelcad/api/inifile.h"

namespace KEL {

namespace {

struct FieldMapState {
  CString filePath;
  bool debug = false;
  CString projectFileName = L"Project.dat";
  std::map<std::wstring, CString> fullNames;  // keyed by the upper-case short name
  int takenOver = 0;                          // never reset: entries are taken once
  std::wstring projectFileNameCopy;
};

FieldMapState& State() {
  static FieldMapState state;
  return state;
}

// The field file's "Option" values are read with the platform's call and a
// buffer of the size the family has always used.
CString ReadOption(const wchar_t* key, const wchar_t* defaultValue, const wchar_t* file) {
  constexpr DWORD kOptionBufferSize = 40960;
  std::vector<wchar_t> buffer(kOptionBufferSize, L'\0');
  GetPrivateProfileStringW(L"Option", key, defaultValue, buffer.data(), kOptionBufferSize, file);
  return CString(buffer.data());
}

std::wstring Upper(const wchar_t* text) {
  CString upper(text);
  upper.MakeUpper();
  return upper.str();
}

}  // namespace

bool LoadGCFieldFile(const wchar_t* relativePath, CString& fullPath) {
  FieldMapState& state = State();
  CString installDir;
  if (!GetInstallDir(installDir)) installDir.Empty();
  state.filePath = installDir + (relativePath != nullptr ? relativePath : L"");
  fullPath = state.filePath;
  if (!IsExist(state.filePath)) return false;

  CString debug = ReadOption(L"Debug", L"False", state.filePath);
  debug.Trim();
  state.debug = debug.CompareNoCase(L"true") == 0;
  state.projectFileName = ReadOption(L"PrjIniFileName", L"Project.dat", state.filePath);

  CStringArray keys, values;
  ReadIni(L"SimpleName--FullName", keys, values, state.filePath);
  for (; state.takenOver < keys.GetSize() && state.takenOver < values.GetSize(); ++state.takenOver)
    state.fullNames.emplace(Upper(keys[state.takenOver]), values[state.takenOver]);
  return true;
}

bool TranslateGCField(const wchar_t* shortName, CString& fullName) {
  if (shortName == nullptr) return false;
  const auto& names = State().fullNames;
  const auto it = names.find(Upper(shortName));
  if (it == names.end()) return false;
  fullName = it->second;
  return true;
}

bool IsGCFieldDebug() { return State().debug; }

CString GCFieldFilePath() { return State().filePath; }

const wchar_t* GetGCSettingFileName() {
  FieldMapState& state = State();
  state.projectFileNameCopy = state.projectFileName.str();
  return state.projectFileNameCopy.c_str();
}

}  // namespace KEL
