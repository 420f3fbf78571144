#include "kelbase/inisetting.h"

#include "profile_reader.h"

namespace {
bool IsBlank(const wchar_t* text) { return text == nullptr || *text == L'\0'; }

bool SameTextNoCase(const std::wstring& a, const wchar_t* b) { return _wcsicmp(a.c_str(), b) == 0; }
}  // namespace

INISetting::INISetting(const wchar_t* filePath) { SetFilePath(filePath); }

void INISetting::SetFilePath(const wchar_t* filePath) { mPath = filePath != nullptr ? filePath : L""; }

CString INISetting::GetFilePath() const { return mPath; }

CString INISetting::GetSetting(const wchar_t* key, const wchar_t* defaultValue, const wchar_t* section) const {
  const wchar_t* fallback = defaultValue != nullptr ? defaultValue : L"";
  // A null key or section would make the platform list names instead.
  if (mPath.IsEmpty() || IsBlank(key) || IsBlank(section)) return CString(fallback);
  return kelbase::ReadProfileString(section, key, fallback, mPath);
}

bool INISetting::SetSetting(const wchar_t* key, const wchar_t* value, const wchar_t* section) {
  // A null key would delete the whole section: never by accident here.
  if (mPath.IsEmpty() || IsBlank(key) || IsBlank(section)) return false;
  const BOOL written = WritePrivateProfileStringW(section, key, value != nullptr ? value : L"", mPath);
  kelbase::NoteSettingsWritten();
  return written != FALSE;
}

bool INISetting::GetAllKeysAndValues(const wchar_t* section, CStringArray& keys, CStringArray& values) const {
  keys.RemoveAll();
  values.RemoveAll();
  if (mPath.IsEmpty() || IsBlank(section)) return false;
  const std::vector<std::wstring> lines = kelbase::ReadProfileSection(section, mPath);
  if (lines.empty()) {
    // An empty section is still there; only a missing one is a failure.
    for (const std::wstring& name : kelbase::ReadProfileSectionNames(mPath)) {
      if (SameTextNoCase(name, section)) return true;
    }
    return false;
  }
  for (const std::wstring& line : lines) {
    const size_t equals = line.find(L'=');
    CString key(line.substr(0, equals));
    CString value(equals == std::wstring::npos ? std::wstring() : line.substr(equals + 1));
    key.Trim();
    // The platform may hand over comment lines with the entries.
    if (key.IsEmpty() || key.GetAt(0) == L';') continue;
    keys.Add(key);
    // As a key read gives it: one pair of matching quotes removed.
    value.Trim();
    const int n = value.GetLength();
    if (n >= 2 && (value[0] == L'"' || value[0] == L'\'') && value[n - 1] == value[0]) value = value.Mid(1, n - 2);
    values.Add(value);
  }
  return true;
}

bool INISetting::GetAllSections(CStringArray& sections) const {
  sections.RemoveAll();
  if (mPath.IsEmpty()) return false;
  for (const std::wstring& name : kelbase::ReadProfileSectionNames(mPath)) sections.Add(CString(name));
  return !sections.IsEmpty();
}

bool INISetting::DeleteKey(const wchar_t* key, const wchar_t* section) {
  if (mPath.IsEmpty() || IsBlank(key) || IsBlank(section)) return false;
  const BOOL written = WritePrivateProfileStringW(section, key, nullptr, mPath);
  kelbase::NoteSettingsWritten();
  return written != FALSE;
}

bool INISetting::DeleteSection(const wchar_t* section) {
  if (mPath.IsEmpty() || IsBlank(section)) return false;
  const BOOL written = WritePrivateProfileStringW(section, nullptr, nullptr, mPath);
  kelbase::NoteSettingsWritten();
  return written != FALSE;
}
