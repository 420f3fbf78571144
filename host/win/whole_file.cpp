// Whole-file reads and atomic whole-file writes on native paths.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
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

// The temporary file lives in the target's directory so that the final
// rename stays on one file system and is atomic; readers see either the old
// content or the new, never a part.
bool WriteFileAtomically(const std::string& nativePath, const std::string& bytes) {
  if (nativePath.empty() || nativePath.back() == '/') return false;
  static std::atomic<unsigned> counter{0};
  const std::string temp = nativePath + ".tmp" + std::to_string(::getpid()) + "_" + std::to_string(counter++);
  int fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (fd < 0) return false;
  struct stat old;
  if (::stat(nativePath.c_str(), &old) == 0) {
    if (S_ISDIR(old.st_mode)) {
      ::close(fd);
      ::unlink(temp.c_str());
      return false;
    }
    (void)::fchmod(fd, old.st_mode & 07777);  // keep the file's permissions
  }
  bool ok = WriteAll(fd, bytes) && ::fsync(fd) == 0;
  ok = (::close(fd) == 0) && ok;
  if (ok) ok = ::rename(temp.c_str(), nativePath.c_str()) == 0;
  if (!ok) {
    int saved = errno;
    ::unlink(temp.c_str());
    errno = saved;
    return false;
  }
  // Make the rename itself durable.
  int dir = ::open(DirectoryOf(nativePath).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (dir >= 0) {
    (void)::fsync(dir);
    ::close(dir);
  }
  return true;
}
}  // namespace kelhost
