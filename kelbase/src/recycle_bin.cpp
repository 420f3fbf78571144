// The user's trash as the Linux desktops keep it (the freedesktop.org
// trash), so that file managers list, restore and empty what the family's
// programs throw away.
#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <string>

#include "file_problems.h"
#include "kelbase/files.h"
#include "kelhost/paths.h"

namespace KEL {

namespace {

using kelbase::ErrnoText;
using kelbase::NoteProblem;

std::string ParentOf(const std::string& path) {
  const size_t slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

std::string BaseName(const std::string& path) {
  const size_t slash = path.rfind('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

// The directory exists (made with mode 0700 when missing) and is a real
// directory, not a link to one.
bool EnsurePrivateDirectory(const std::string& path) {
  if (::mkdir(path.c_str(), 0700) != 0 && errno != EEXIST) return false;
  struct stat st;
  return ::lstat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

// A native directory path with its missing levels (ordinary modes).
bool EnsureNativeTree(const std::string& path) {
  for (size_t end = path.find('/', 1);; end = path.find('/', end + 1)) {
    const std::string level = path.substr(0, end);
    if (::mkdir(level.c_str(), 0777) != 0 && errno != EEXIST) return false;
    if (end == std::string::npos) break;
  }
  struct stat st;
  return ::stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

bool EnsureTrashLayout(const std::string& trash) {
  return EnsurePrivateDirectory(trash) && EnsurePrivateDirectory(trash + "/files") &&
         EnsurePrivateDirectory(trash + "/info");
}

// $XDG_DATA_HOME/Trash when XDG_DATA_HOME is absolute, else
// ~/.local/share/Trash; the levels above Trash are made as needed.
std::string HomeTrash() {
  std::string dataHome;
  const char* xdg = std::getenv("XDG_DATA_HOME");
  if (xdg != nullptr && xdg[0] == '/') {
    dataHome = xdg;
  } else {
    const char* home = std::getenv("HOME");
    std::string homeDir = home != nullptr && *home != '\0' ? home : std::string();
    if (homeDir.empty()) {
      if (const passwd* account = ::getpwuid(::getuid())) homeDir = account->pw_dir != nullptr ? account->pw_dir : "";
    }
    if (homeDir.empty()) return std::string();
    dataHome = homeDir + "/.local/share";
  }
  if (!EnsureNativeTree(dataHome)) return std::string();
  const std::string trash = kelbase::CanonicalPath(dataHome) + "/Trash";
  return EnsureTrashLayout(trash) ? trash : std::string();
}

// The top directory of the file system that holds path: the highest
// directory above it on the same device.
std::string TopDirectoryOf(const std::string& canonicalParent, dev_t device) {
  std::string top = canonicalParent;
  while (top != "/") {
    const std::string up = ParentOf(top);
    struct stat st;
    if (::stat(up.c_str(), &st) != 0 || st.st_dev != device) break;
    top = up;
  }
  return top;
}

// $topdir/.Trash/<uid> when an administrator made $topdir/.Trash (a real
// directory with the sticky bit), else $topdir/.Trash-<uid>.
std::string TopDirectoryTrash(const std::string& top) {
  const std::string base = top == "/" ? std::string() : top;
  const std::string uid = std::to_string(::getuid());
  struct stat shared;
  const std::string sharedTrash = base + "/.Trash";
  if (::lstat(sharedTrash.c_str(), &shared) == 0 && S_ISDIR(shared.st_mode) && (shared.st_mode & S_ISVTX) != 0) {
    const std::string mine = sharedTrash + "/" + uid;
    if (EnsureTrashLayout(mine)) return mine;
  }
  const std::string own = base + "/.Trash-" + uid;
  struct stat st;
  if (EnsureTrashLayout(own) && ::lstat(own.c_str(), &st) == 0 && st.st_uid == ::getuid()) return own;
  return std::string();
}

// RFC 2396 escaping of the bytes of a path, '/' kept.
std::string UrlEncoded(const std::string& path) {
  static const char kHex[] = "0123456789ABCDEF";
  std::string out;
  for (const unsigned char c : path) {
    const bool plain = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '/' ||
                       c == '-' || c == '_' || c == '.' || c == '~';
    if (plain) {
      out += static_cast<char>(c);
    } else {
      out += '%';
      out += kHex[c >> 4];
      out += kHex[c & 0x0F];
    }
  }
  return out;
}

std::string DeletionDate() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  ::localtime_r(&now, &local);
  char text[32];
  std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &local);
  return text;
}

bool WriteAll(int fd, const std::string& bytes) {
  size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) return false;
    done += static_cast<size_t>(n);
  }
  return true;
}

// Reserves a name in the trash by creating its info file exclusively:
// "name", then "name.2", "name.3", ... until neither the info file nor an
// item of that name exists. Returns the name, or empty on failure (errno
// set).
std::string ReserveName(const std::string& trash, const std::string& name, const std::string& info) {
  constexpr int kMostTries = 100000;
  for (int n = 1; n <= kMostTries; ++n) {
    const std::string candidate = n == 1 ? name : name + "." + std::to_string(n);
    const std::string infoPath = trash + "/info/" + candidate + ".trashinfo";
    const int fd = ::open(infoPath.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (fd < 0) {
      if (errno == EEXIST) continue;
      return std::string();
    }
    struct stat st;
    const bool taken = ::lstat((trash + "/files/" + candidate).c_str(), &st) == 0;
    const bool written = !taken && WriteAll(fd, info);
    const int savedErrno = errno;
    ::close(fd);
    if (written) return candidate;
    ::unlink(infoPath.c_str());
    if (!taken) {
      errno = savedErrno;
      return std::string();
    }
  }
  errno = EEXIST;
  return std::string();
}

}  // namespace

bool MoveToRecycleBin(const wchar_t* path, CString* problem) {
  std::string native = kelhost::NativePath(path);
  while (native.size() > 1 && native.back() == '/') native.pop_back();
  struct stat item;
  if (native.empty() || ::lstat(native.c_str(), &item) != 0) {
    NoteProblem(problem, L"要删除的文件不存在", native, native.empty() ? std::string() : ErrnoText(errno));
    return false;
  }
  const std::string name = BaseName(native);
  const std::string parent = kelbase::CanonicalPath(ParentOf(native));
  if (name == "." || name == ".." || name.empty() || parent.empty()) {
    NoteProblem(problem, L"不能放入回收站", native, "");
    return false;
  }
  const std::string original = (parent == "/" ? std::string() : parent) + "/" + name;

  std::string trash = HomeTrash();
  struct stat trashStat;
  if (trash.empty() || ::stat(trash.c_str(), &trashStat) != 0 || trashStat.st_dev != item.st_dev) {
    trash = TopDirectoryTrash(TopDirectoryOf(parent, item.st_dev));
  }
  if (trash.empty()) {
    NoteProblem(problem, L"找不到可用的回收站", original, "");
    return false;
  }
  const std::string info = "[Trash Info]\nPath=" + UrlEncoded(original) + "\nDeletionDate=" + DeletionDate() + "\n";
  const std::string slot = ReserveName(trash, name, info);
  if (slot.empty()) {
    NoteProblem(problem, L"不能放入回收站", original, ErrnoText(errno));
    return false;
  }
  if (::rename(native.c_str(), (trash + "/files/" + slot).c_str()) != 0) {
    const int err = errno;
    ::unlink((trash + "/info/" + slot + ".trashinfo").c_str());
    NoteProblem(problem, L"不能放入回收站", original, ErrnoText(err));
    return false;
  }
  return true;
}

}  // namespace KEL
