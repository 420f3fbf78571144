// Section and key lists of a settings file, through INISetting so that
// every file shares one reading of the format.
#include "kelbase/inilists.h"

#include "kelbase/files.h"
#include "kelbase/inisetting.h"

namespace KEL {

namespace {
bool AnyKeyEmpty(const CStringArray& keys) {
  for (int i = 0; i < keys.GetSize(); ++i) {
    if (keys[i].IsEmpty()) return true;
  }
  return false;
}
}  // namespace

bool ReadIni(const wchar_t* section, CStringArray& keys, CStringArray& values, const wchar_t* file) {
  values.RemoveAll();
  if (section == nullptr || file == nullptr) return false;
  const INISetting settings(file);
  if (keys.IsEmpty()) {
    CStringArray found;
    if (!settings.GetAllKeysAndValues(section, found, values)) return false;
    keys.Copy(found);
    return !keys.IsEmpty();
  }
  if (!IsExist(file)) return false;
  for (int i = 0; i < keys.GetSize(); ++i) values.Add(settings.GetSetting(keys[i], L"", section));
  return true;
}

bool WriteIni(const wchar_t* section, const CStringArray& keys, const CStringArray& values, const wchar_t* file) {
  if (section == nullptr || *section == L'\0' || file == nullptr || *file == L'\0') return false;
  if (keys.IsEmpty() || keys.GetSize() != values.GetSize() || AnyKeyEmpty(keys)) return false;
  INISetting settings(file);
  for (int i = 0; i < keys.GetSize(); ++i) {
    if (!settings.SetSetting(keys[i], values[i], section)) return false;
  }
  return true;
}

bool DeleteIni(const wchar_t* section, const CStringArray& keys, const wchar_t* file) {
  if (section == nullptr || *section == L'\0' || !IsExist(file) || AnyKeyEmpty(keys)) return false;
  INISetting settings(file);
  if (keys.IsEmpty()) return settings.DeleteSection(section);
  for (int i = 0; i < keys.GetSize(); ++i) {
    if (!settings.DeleteKey(keys[i], section)) return false;
  }
  return true;
}

}  // namespace KEL
