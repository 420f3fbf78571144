// DeleteTree: a directory and everything below it. The walk goes through
// directory descriptors opened without following links, so a link inside
// the tree (or one swapped in while the walk runs) is removed as a link and
// nothing outside the tree is ever touched.
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <vector>

#include "file_problems.h"
#include "kelbase/files.h"
#include "kelhost/paths.h"

namespace KEL {

namespace {

using kelbase::ErrnoText;
using kelbase::NoteProblem;

// The names in the directory, "." and ".." left out.
bool ListEntries(int dirFd, std::vector<std::string>& names) {
  const int walkFd = ::dup(dirFd);
  if (walkFd < 0) return false;
  DIR* stream = ::fdopendir(walkFd);
  if (stream == nullptr) {
    ::close(walkFd);
    return false;
  }
  errno = 0;
  while (const dirent* entry = ::readdir(stream)) {
    const std::string name = entry->d_name;
    if (name != "." && name != "..") names.push_back(name);
  }
  const bool complete = errno == 0;
  ::closedir(stream);
  return complete;
}

bool RemoveBelow(int dirFd, const std::string& shownPath, CString* problem);

// One entry of the directory: a subdirectory is emptied and removed, any
// other entry (file, link, device, ...) unlinked.
bool RemoveEntry(int dirFd, const std::string& name, const std::string& shownPath, CString* problem) {
  const std::string shown = shownPath + "/" + name;
  struct stat st;
  if (::fstatat(dirFd, name.c_str(), &st, AT_SYMLINK_NOFOLLOW) != 0) {
    if (errno == ENOENT) return true;  // gone meanwhile
    NoteProblem(problem, L"不能删除", shown, ErrnoText(errno));
    return false;
  }
  if (S_ISDIR(st.st_mode)) {
    const int subFd = ::openat(dirFd, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (subFd >= 0) {
      const bool emptied = RemoveBelow(subFd, shown, problem);
      ::close(subFd);
      if (!emptied) return false;
      if (::unlinkat(dirFd, name.c_str(), AT_REMOVEDIR) == 0 || errno == ENOENT) return true;
      NoteProblem(problem, L"不能删除目录", shown, ErrnoText(errno));
      return false;
    }
    // Replaced by a link (or something else) since it was looked at:
    // remove whatever is there now as an entry, never follow it.
    if (errno != ELOOP && errno != ENOTDIR) {
      NoteProblem(problem, L"不能打开目录", shown, ErrnoText(errno));
      return false;
    }
  }
  if (::unlinkat(dirFd, name.c_str(), 0) == 0 || errno == ENOENT) return true;
  NoteProblem(problem, L"不能删除", shown, ErrnoText(errno));
  return false;
}

bool RemoveBelow(int dirFd, const std::string& shownPath, CString* problem) {
  std::vector<std::string> names;
  if (!ListEntries(dirFd, names)) {
    NoteProblem(problem, L"不能读取目录", shownPath, ErrnoText(errno));
    return false;
  }
  for (const std::string& name : names) {
    if (!RemoveEntry(dirFd, name, shownPath, problem)) return false;
  }
  return true;
}

}  // namespace

bool DeleteTree(const wchar_t* dir, bool toRecycleBin, CString* problem) {
  if (dir == nullptr || *dir == L'\0') {
    if (problem != nullptr) *problem = L"没有给出要删除的目录";
    return false;
  }
  std::string native = kelhost::NativePath(dir);
  while (native.size() > 1 && native.back() == '/') native.pop_back();
  const std::string last = native.substr(native.rfind('/') == std::string::npos ? 0 : native.rfind('/') + 1);
  if (last == "." || last == "..") {
    // Emptying "." and then failing to remove it would be the worst of both.
    NoteProblem(problem, L"请给出目录的名字，不能是 . 或 ..", native, "");
    return false;
  }
  struct stat st;
  if (::lstat(native.c_str(), &st) != 0) {
    if (errno == ENOENT) return true;  // nothing to delete
    NoteProblem(problem, L"不能删除目录", native, ErrnoText(errno));
    return false;
  }
  if (S_ISLNK(st.st_mode)) {
    // The name is a link: it goes, what it leads to stays.
    if (toRecycleBin) return MoveToRecycleBin(dir, problem);
    if (::unlink(native.c_str()) == 0) return true;
    NoteProblem(problem, L"不能删除", native, ErrnoText(errno));
    return false;
  }
  if (!S_ISDIR(st.st_mode)) {
    NoteProblem(problem, L"不是目录", native, "");
    return false;
  }
  const std::string canonical = kelbase::CanonicalPath(native);
  if (kelbase::IsProtectedDirectory(canonical)) {
    NoteProblem(problem, L"拒绝删除文件系统根目录或用户主目录", canonical.empty() ? native : canonical, "");
    return false;
  }
  if (toRecycleBin) return MoveToRecycleBin(dir, problem);

  const int dirFd = ::open(native.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
  if (dirFd < 0) {
    NoteProblem(problem, L"不能打开目录", native, ErrnoText(errno));
    return false;
  }
  const bool emptied = RemoveBelow(dirFd, native, problem);
  ::close(dirFd);
  if (!emptied) return false;
  if (::rmdir(native.c_str()) == 0) return true;
  NoteProblem(problem, L"不能删除目录", native, ErrnoText(errno));
  return false;
}

}  // namespace KEL
