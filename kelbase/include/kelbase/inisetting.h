// INISetting: one settings file of the family, read and written with the
// platform's private-profile semantics (sections and keys compared without
// regard to case, values trimmed, a missing file reads empty; UTF-8 and
// UTF-16 files with a byte-order mark read; written as UTF-8, atomically).
#pragma once

#include "kelcad/platform.h"

class INISetting {
 public:
  INISetting() = default;
  explicit INISetting(const wchar_t* filePath);

  void SetFilePath(const wchar_t* filePath);
  CString GetFilePath() const;

  // The stored text of key in section, or defaultValue when absent.
  CString GetSetting(const wchar_t* key, const wchar_t* defaultValue, const wchar_t* section) const;
  // False when the file could not be written.
  bool SetSetting(const wchar_t* key, const wchar_t* value, const wchar_t* section);
  // Every key of the section with its value, in file order. False when the
  // section is absent.
  bool GetAllKeysAndValues(const wchar_t* section, CStringArray& keys, CStringArray& values) const;
  // The names of every section, in file order.
  bool GetAllSections(CStringArray& sections) const;
  bool DeleteKey(const wchar_t* key, const wchar_t* section);
  bool DeleteSection(const wchar_t* section);

 private:
  CString mPath;
};
