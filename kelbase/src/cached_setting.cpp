#include "cached_setting.h"

#include <sys/stat.h>

#include <ctime>

#include "kelbase/directories.h"
#include "kelbase/inisetting.h"
#include "kelhost/paths.h"
#include "profile_reader.h"

namespace kelbase {
bool CachedRealSetting::FileStamp::operator==(const FileStamp& other) const {
  return exists == other.exists && device == other.device && inode == other.inode && size == other.size &&
         modifiedSec == other.modifiedSec && modifiedNsec == other.modifiedNsec && changedSec == other.changedSec &&
         changedNsec == other.changedNsec;
}

CachedRealSetting::FileStamp CachedRealSetting::StampOf(const std::string& nativePath) {
  FileStamp stamp;
  if (nativePath.empty()) return stamp;
  struct stat info {};
  stamp.exists = ::stat(nativePath.c_str(), &info) == 0;
  // A missing file is watched through its directory, whose times change
  // when an entry is added (perhaps under a name in another case).
  if (!stamp.exists) {
    const size_t slash = nativePath.rfind('/');
    const std::string parent = slash == std::string::npos ? "." : nativePath.substr(0, slash == 0 ? 1 : slash);
    if (::stat(parent.c_str(), &info) != 0) return stamp;
  }
  stamp.device = info.st_dev;
  stamp.inode = info.st_ino;
  stamp.size = static_cast<unsigned long long>(info.st_size);
  stamp.modifiedSec = info.st_mtim.tv_sec;
  stamp.modifiedNsec = info.st_mtim.tv_nsec;
  stamp.changedSec = info.st_ctim.tv_sec;
  stamp.changedNsec = info.st_ctim.tv_nsec;
  return stamp;
}

bool CachedRealSetting::IsSettled(const FileStamp& stamp) {
  const long long now = static_cast<long long>(std::time(nullptr));
  return now - stamp.modifiedSec >= 2 && now - stamp.changedSec >= 2;
}

CachedRealSetting::CachedRealSetting(const wchar_t* section, const wchar_t* key, const wchar_t* defaultText)
    : mSection(section), mKey(key), mDefault(defaultText) {}

double CachedRealSetting::Value() {
  const CString path = KEL::InitINIFilePath();
  const unsigned long writeCount = SettingsWriteCount();
  // Mapping a family path costs more than the rest of a cached reading, so
  // the last mapping is checked first and renewed only when it is stale.
  if (mValid && path == mPath && writeCount == mWriteCount) {
    const FileStamp stamp = StampOf(mNativePath);
    if (stamp == mStamp && IsSettled(stamp)) return mValue;
  }

  mNativePath = path.IsEmpty() ? std::string() : kelhost::NativePath(path.str());
  const FileStamp stamp = StampOf(mNativePath);
  const INISetting settings(path);
  mValue = _wtof(settings.GetSetting(mKey, mDefault, mSection));
  mPath = path;
  mStamp = stamp;
  mWriteCount = writeCount;
  mValid = true;
  return mValue;
}
}  // namespace kelbase
