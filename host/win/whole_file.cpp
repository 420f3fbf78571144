// Whole-file reads and atomic whole-file writes on native paths.
#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>

#include "kelhost/paths.h"

namespace kelhost {
namespace {
bool WriteAll(int fd, const std::string& bytes) {
  size_t done = 0;
  while (done < bytes.size()) {
    ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
    if (n < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    done += static_cast<size_t>(n);
  }
  return true;
}

std::string DirectoryOf(const std::string& path) {
  size_t slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}
}  // namespace

bool ReadWholeFile(const std::string& nativePath, std::string& bytes) {
  bytes.clear();
  int fd = ::open(nativePath.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return false;
  struct stat st;
  if (fstat(fd, &st) != 0 || S_ISDIR(st.st_mode)) {
    ::close(fd);
    return false;
  }
  char chunk[65536];
  for (;;) {
    ssize_t n = ::read(fd, chunk, sizeof chunk);
    if (n < 0) {
      if (errno == EINTR) continue;
      ::close(fd);
      bytes.clear();
      return false;
    }
    if (n == 0) break;
    bytes.append(chunk, static_cast<size_t>(n));
  }
  ::close(fd);
  return true;
}

namespace {
// Temporary files of a save are named after the file they become, the
// process that writes them and a count, "NAME.kelcad-save-PID-N.tmp", in
// the same directory. A save that is killed leaves its file behind under
// that name; the next save to the same place removes it once no process of
// that number is alive any more.
const char kTempMark[] = ".kelcad-save-";
const char kTempEnd[] = ".tmp";

std::string BaseNameOf(const std::string& path) {
  const size_t slash = path.rfind('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

// The file a path finally names: symbolic links followed, each relative
// one from the directory of the link. The path itself when it is no link
// (or does not exist yet); a dangling link names the file to create.
std::string FinalTarget(const std::string& path) {
  std::string current = path;
  for (int hops = 0; hops < 40; ++hops) {
    struct stat st;
    if (::lstat(current.c_str(), &st) != 0 || !S_ISLNK(st.st_mode)) return current;
    std::string link(4096, '\0');
    const ssize_t n = ::readlink(current.c_str(), link.data(), link.size());
    if (n <= 0 || static_cast<size_t>(n) >= link.size()) return current;
    link.resize(static_cast<size_t>(n));
    current = link[0] == '/' ? link : DirectoryOf(current) + "/" + link;
  }
  return current;  // a loop of links: the open below reports it
}

bool ProcessIsGone(long pid) { return pid > 0 && ::kill(static_cast<pid_t>(pid), 0) != 0 && errno == ESRCH; }

// Removes what earlier saves to target left: this process's own, and those
// of processes that no longer run.
void RemoveLeftovers(const std::string& target) {
  const std::string prefix = BaseNameOf(target) + kTempMark;
  DIR* dir = ::opendir(DirectoryOf(target).c_str());
  if (!dir) return;
  while (const struct dirent* entry = ::readdir(dir)) {
    const std::string name = entry->d_name;
    if (name.compare(0, prefix.size(), prefix) != 0 || name.size() < prefix.size() + sizeof kTempEnd ||
        name.compare(name.size() - (sizeof kTempEnd - 1), sizeof kTempEnd - 1, kTempEnd) != 0)
      continue;
    char* end = nullptr;
    const long pid = std::strtol(name.c_str() + prefix.size(), &end, 10);
    if (!end || *end != '-') continue;
    if (pid == static_cast<long>(::getpid()) || ProcessIsGone(pid))
      (void)::unlink((DirectoryOf(target) + "/" + name).c_str());
  }
  ::closedir(dir);
}

bool Fail(int error) {
  errno = error;
  return false;
}
}  // namespace

// The temporary file lives in the target's directory so that the final
// rename stays on one file system and is atomic; readers see either the old
// content or the new, never a part. Through a symbolic link the file it
// names is replaced, and the link stays.
bool WriteFileAtomically(const std::string& nativePath, const std::string& bytes) {
  if (nativePath.empty() || nativePath.back() == '/') return Fail(EISDIR);
  const std::string target = FinalTarget(nativePath);
  struct stat old;
  const bool exists = ::stat(target.c_str(), &old) == 0;
  if (exists && S_ISDIR(old.st_mode)) return Fail(EISDIR);
  RemoveLeftovers(target);
  static std::atomic<unsigned> counter{0};
  const std::string temp = target + kTempMark + std::to_string(::getpid()) + "-" + std::to_string(counter++) + kTempEnd;
  int fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (fd < 0) return false;
  if (exists) (void)::fchmod(fd, old.st_mode & 07777);  // keep the file's permissions
  bool ok = WriteAll(fd, bytes) && ::fsync(fd) == 0;
  int saved = errno;
  ok = (::close(fd) == 0) && ok;
  if (ok) ok = ::rename(temp.c_str(), target.c_str()) == 0;
  if (!ok) {
    if (errno != 0) saved = errno;
    ::unlink(temp.c_str());
    return Fail(saved);
  }
  // Make the rename itself durable.
  int dir = ::open(DirectoryOf(target).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (dir >= 0) {
    (void)::fsync(dir);
    ::close(dir);
  }
  return true;
}

std::wstring WriteErrorText(int error) {
  switch (error) {
    case EACCES:
    case EPERM: return L"permission denied";
    case ENOSPC: return L"no space left on the device";
    case EDQUOT: return L"the disk quota is used up";
    case EISDIR: return L"a directory is in the way";
    case ENOTDIR: return L"a file is in the way of a folder of the path";
    case ENOENT: return L"the folder does not exist";
    case EROFS: return L"the file system is read-only";
    case ELOOP: return L"the symbolic links go round in a loop";
    case ENAMETOOLONG: return L"the name is too long";
    case EIO: return L"an input/output error";
    default: {
      const char* text = std::strerror(error);
      return std::wstring(text, text + std::strlen(text));  // ASCII in the C locale
    }
  }
}
}  // namespace kelhost
