// INISetting: one settings file of the family, read and written with the
// platform's private-profile semantics (sections and keys compared without
// regard to case, values trimmed, a missing file reads empty; UTF-8 and
// UTF-16 files with a byte-order mark read; written as UTF-8, atomically).
// Values of any length are read whole. A setting with no file path reads
// every default and refuses every write.
#pragma once

#include "kelcad/platform.h"

class INISetting {
 public:
  INISetting() = default;
  explicit INISetting(const wchar_t* filePath);

  void SetFilePath(const wchar_t* filePath);
  CString GetFilePath() const;

  // The stored text of key in section, or defaultValue when absent (or when
  // key or section is null or empty; a null default reads as empty).
  CString GetSetting(const wchar_t* key, const wchar_t* defaultValue, const wchar_t* section) const;
  // A null value writes an empty one. False when the file could not be
  // written or key or section is null or empty, and (the file unchanged)
  // for what would not read back the same: line breaks, a key with '=',
  // names with blanks at their ends. A value with blanks at its ends or
  // within quotes is stored quoted and reads back as given.
  bool SetSetting(const wchar_t* key, const wchar_t* value, const wchar_t* section);
  // Every key of the section with its value, in file order (both trimmed,
  // the value unquoted as GetSetting unquotes it;
  // a line without '=' gives a key with an empty value; comment lines,
  // starting with ';', are left out). False, with both
  // arrays empty, when the section is absent; true for an empty section.
  bool GetAllKeysAndValues(const wchar_t* section, CStringArray& keys, CStringArray& values) const;
  // The names of every section, in file order. False when there are none
  // (a missing or empty file).
  bool GetAllSections(CStringArray& sections) const;
  // Removing what is not there succeeds; false when the file could not be
  // written or a name is null or empty.
  bool DeleteKey(const wchar_t* key, const wchar_t* section);
  bool DeleteSection(const wchar_t* section);

 private:
  CString mPath;
};
