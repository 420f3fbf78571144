// Family paths (Windows form) to native paths, matching each missing
// component against its directory without regard to case.
#include "kelhost/paths.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <string>
#include <vector>

#include "kelhost/text.h"

namespace kelhost {
namespace {
bool Exists(const std::string& path) {
  struct stat st;
  return lstat(path.c_str(), &st) == 0;
}

// The entry of dir whose name equals name without regard to case; when
// several do (a case-sensitive file system allows it), the smallest in
// byte order, so the answer does not depend on directory order.
bool FindNoCase(const std::string& dir, const std::string& name, std::string& found) {
  DIR* d = opendir(dir.empty() ? "." : dir.c_str());
  if (!d) return false;
  const std::wstring wanted = ToUpper(FromUtf8(name));
  std::vector<std::string> matches;
  while (struct dirent* e = readdir(d)) {
    std::string entry = e->d_name;
    if (entry == "." || entry == "..") continue;
    if (entry.size() < wanted.size() || entry.size() > wanted.size() * 4) continue;  // cannot match
    if (ToUpper(FromUtf8(entry)) == wanted) matches.push_back(entry);
  }
  closedir(d);
  if (matches.empty()) return false;
  found = *std::min_element(matches.begin(), matches.end());
  return true;
}
}  // namespace

std::string NativePath(const wchar_t* familyPath) {
  return familyPath ? NativePath(std::wstring(familyPath)) : std::string();
}

std::string NativePath(const std::wstring& familyPath) {
  std::string path = ToUtf8(familyPath);
  std::replace(path.begin(), path.end(), '\\', '/');
  // "C:" (with or without a separator after it) names a drive: dropped.
  if (path.size() >= 2 && path[1] == ':' &&
      ((path[0] >= 'A' && path[0] <= 'Z') || (path[0] >= 'a' && path[0] <= 'z')))
    path.erase(0, 2);
  if (path.empty()) return path;

  const bool absolute = path[0] == '/';
  const bool trailingSlash = path.size() > 1 && path.back() == '/';
  std::vector<std::string> parts;
  size_t pos = 0;
  while (pos <= path.size()) {
    size_t next = path.find('/', pos);
    if (next == std::string::npos) next = path.size();
    if (next > pos) parts.push_back(path.substr(pos, next - pos));
    pos = next + 1;
  }

  std::string result = absolute ? "/" : "";
  bool parentExists = true;  // once a component is missing, keep the rest as written
  for (size_t i = 0; i < parts.size(); ++i) {
    const std::string& part = parts[i];
    std::string candidate = result + part;
    if (parentExists && part != "." && part != ".." && !Exists(candidate)) {
      std::string match;
      if (FindNoCase(result, part, match)) {
        candidate = result + match;
      } else {
        parentExists = false;
      }
    }
    result = candidate;
    if (i + 1 < parts.size() || trailingSlash) result += '/';
  }
  return result;
}
}  // namespace kelhost
