// A real number kept in the initialisation settings, read from the file
// only when the file may have changed. The tolerances are asked for in the
// inner loops of the geometry code, where reading and parsing the file on
// every call would dominate.
#pragma once

#include <string>

#include "kelcad/platform.h"

namespace kelbase {
class CachedRealSetting {
 public:
  // defaultText is converted like a stored value when the key is absent.
  CachedRealSetting(const wchar_t* section, const wchar_t* key, const wchar_t* defaultText);
  double Value();

 private:
  // The identity and times of the settings file, or of its directory when
  // the file is missing (all zero when neither exists).
  struct FileStamp {
    bool exists = false;
    unsigned long long device = 0, inode = 0, size = 0;
    long long modifiedSec = 0, modifiedNsec = 0, changedSec = 0, changedNsec = 0;
    bool operator==(const FileStamp& other) const;
  };
  static FileStamp StampOf(const std::string& nativePath);
  // File times are coarse: two writes within one tick can leave the same
  // stamp. A file changed in the last few seconds is therefore read again.
  static bool IsSettled(const FileStamp& stamp);

  const wchar_t* mSection;
  const wchar_t* mKey;
  const wchar_t* mDefault;
  bool mValid = false;
  CString mPath;
  std::string mNativePath;
  FileStamp mStamp;
  unsigned long mWriteCount = 0;
  double mValue = 0.0;
};
}  // namespace kelbase
