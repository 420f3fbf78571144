// FindFirstFileW / FindNextFileW / FindClose on a scratch tree.
#include <dirent.h>

#include "arx/win32.h"
#include "scratch_tree.h"

namespace {

using FindFile = ScratchTree;

// Every name the search yields, in order; the error code that ended it.
std::vector<std::wstring> Find(const std::wstring& pattern, DWORD* endError = nullptr) {
  std::vector<std::wstring> names;
  WIN32_FIND_DATAW data;
  HANDLE search = FindFirstFileW(pattern.c_str(), &data);
  if (search == INVALID_HANDLE_VALUE) {
    if (endError) *endError = GetLastError();
    return names;
  }
  do names.push_back(data.cFileName);
  while (FindNextFileW(search, &data));
  if (endError) *endError = GetLastError();
  EXPECT_TRUE(FindClose(search));
  return names;
}

std::vector<std::wstring> Sorted(std::vector<std::wstring> names) {
  std::sort(names.begin(), names.end());
  return names;
}

TEST_F(FindFile, FamilyPatternsFindNamesInAnyCaseInDirectoryOrder) {
  Write("Blocks/Frame A3.dwg");
  Write("Blocks/frame_a4.DWG");
  Write("Blocks/notes.txt");
  MakeDir("Blocks/Sub.dwg");

  DWORD end = 0;
  const std::wstring pattern = Wide("blocks") + L"\\FRAME*.dwg";
  EXPECT_EQ(Sorted(Find(pattern, &end)), (std::vector<std::wstring>{L"Frame A3.dwg", L"frame_a4.DWG"}));
  EXPECT_EQ(end, static_cast<DWORD>(ERROR_NO_MORE_FILES));
  // Directories match like files; "." and ".." come with a bare star.
  EXPECT_EQ(Sorted(Find(Wide("Blocks") + L"\\*.dwg")),
            (std::vector<std::wstring>{L"Frame A3.dwg", L"Sub.dwg", L"frame_a4.DWG"}));
  EXPECT_EQ(Sorted(Find(Wide("Blocks") + L"\\*")),
            (std::vector<std::wstring>{L".", L"..", L"Frame A3.dwg", L"Sub.dwg", L"frame_a4.DWG", L"notes.txt"}));

  // The order is the directory's own, as readdir yields it.
  std::vector<std::wstring> expected;
  DIR* dir = opendir(Path("Blocks").c_str());
  ASSERT_NE(dir, nullptr);
  while (const dirent* entry = readdir(dir)) expected.push_back(kelhost::FromUtf8(entry->d_name));
  closedir(dir);
  EXPECT_EQ(Find(Wide("Blocks") + L"/*.*"), expected);
}

TEST_F(FindFile, FailuresTellAMissingDirectoryFromNoMatch) {
  MakeDir("empty");
  DWORD error = 0;
  EXPECT_TRUE(Find(Wide("empty") + L"\\*.lsp", &error).empty());
  EXPECT_EQ(error, static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
  EXPECT_TRUE(Find(Wide("missing") + L"\\*.lsp", &error).empty());
  EXPECT_EQ(error, static_cast<DWORD>(ERROR_PATH_NOT_FOUND));
  EXPECT_TRUE(Find(Wide("empty") + L"\\", &error).empty());  // no name to match
  EXPECT_EQ(error, static_cast<DWORD>(ERROR_FILE_NOT_FOUND));

  WIN32_FIND_DATAW data;
  EXPECT_EQ(FindFirstFileW(nullptr, &data), INVALID_HANDLE_VALUE);
  EXPECT_EQ(FindNextFileW(nullptr, &data), FALSE);
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_HANDLE));
  HANDLE search = FindFirstFileW((Wide("empty") + L"\\*").c_str(), &data);
  ASSERT_NE(search, INVALID_HANDLE_VALUE);
  EXPECT_TRUE(FindClose(search));
  EXPECT_FALSE(FindClose(search));  // a closed search is refused, not reused
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_HANDLE));
}

TEST_F(FindFile, RecordsDescribeFilesDirectoriesAndLinks) {
  Write("d/data.bin", std::string(70000, 'z'));
  MakeDir("d/sub");
  ASSERT_EQ(symlink(Path("d/sub").c_str(), Path("d/link").c_str()), 0);
  ASSERT_EQ(chmod(Path("d/data.bin").c_str(), 0444), 0);

  WIN32_FIND_DATAW data;
  HANDLE search = FindFirstFileW((Wide("d") + L"\\DATA.BIN").c_str(), &data);
  ASSERT_NE(search, INVALID_HANDLE_VALUE);
  EXPECT_STREQ(data.cFileName, L"data.bin");
  EXPECT_EQ(data.nFileSizeLow, 70000u);
  EXPECT_EQ(data.nFileSizeHigh, 0u);
  EXPECT_EQ(data.dwFileAttributes, static_cast<DWORD>(FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_READONLY));
  // 2020-01-01 lies between these FILETIME values and now.
  const std::uint64_t written = (static_cast<std::uint64_t>(data.ftLastWriteTime.dwHighDateTime) << 32) |
                                data.ftLastWriteTime.dwLowDateTime;
  EXPECT_GT(written, 132223104000000000ULL);
  FindClose(search);

  search = FindFirstFileW((Wide("d") + L"\\sub").c_str(), &data);
  ASSERT_NE(search, INVALID_HANDLE_VALUE);
  EXPECT_EQ(data.dwFileAttributes, static_cast<DWORD>(FILE_ATTRIBUTE_DIRECTORY));
  FindClose(search);
  search = FindFirstFileW((Wide("d") + L"\\link").c_str(), &data);
  ASSERT_NE(search, INVALID_HANDLE_VALUE);
  EXPECT_EQ(data.dwFileAttributes, static_cast<DWORD>(FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT));
  FindClose(search);
}

}  // namespace
