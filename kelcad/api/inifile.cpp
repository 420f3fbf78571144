// Section and key reads of a settings file, through the family's
// INISetting so that every file shares one reading of the format.
#include "kelcad/api/inifile.h"

#include "kelbase/kelbase.h"

namespace KEL {

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

}  // namespace KEL
