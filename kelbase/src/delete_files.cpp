// DeleteFiles: the files a wildcard pattern names, deleted or thrown away.
#include <string>
#include <vector>

#include "file_problems.h"
#include "kelbase/files.h"
#include "kelhost/paths.h"

namespace KEL {

namespace {
// The pattern's directory part, separator included ("" for none).
CString DirectoryPart(const wchar_t* pattern) {
  const CString text(pattern);
  const size_t slash = text.str().find_last_of(L"\\/");
  return slash == std::wstring::npos ? CString() : text.Left(static_cast<int>(slash) + 1);
}

// Names of the matching entries that are files (links count as files
// unless they lead to a directory), collected before anything changes so
// that deleting does not disturb the directory walk.
bool MatchingFiles(const wchar_t* pattern, std::vector<CString>& names) {
  WIN32_FIND_DATAW found;
  HANDLE search = FindFirstFileW(pattern, &found);
  if (search == INVALID_HANDLE_VALUE) {
    const DWORD error = GetLastError();
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;  // nothing to delete
  }
  do {
    if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) names.emplace_back(found.cFileName);
  } while (FindNextFileW(search, &found));
  const bool complete = GetLastError() == ERROR_NO_MORE_FILES;
  FindClose(search);
  return complete;
}
}  // namespace

bool DeleteFiles(const wchar_t* pattern, bool toRecycleBin, CString* problem) {
  if (pattern == nullptr || *pattern == L'\0') {
    if (problem != nullptr) *problem = L"没有给出要删除的文件";
    return false;
  }
  std::vector<CString> names;
  if (!MatchingFiles(pattern, names)) {
    kelbase::NoteProblem(problem, L"不能查找文件", kelhost::NativePath(pattern), "");
    return false;
  }
  const CString directory = DirectoryPart(pattern);
  bool allGone = true;
  for (const CString& name : names) {
    const CString path = directory + name;
    CString why;
    bool gone = false;
    if (toRecycleBin) {
      gone = MoveToRecycleBin(path, &why);
    } else {
      gone = DeleteFileW(path) != FALSE;
      if (!gone) {
        kelbase::NoteProblem(&why, L"不能删除文件", kelhost::NativePath(path.str()),
                             kelbase::Win32ErrorText(GetLastError()));
      }
    }
    // The first failure is reported; the other files are still tried.
    if (!gone && allGone && problem != nullptr) *problem = why;
    allGone = allGone && gone;
  }
  return allGone;
}

}  // namespace KEL
