#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cwchar>
#include <filesystem>

#include "arx/win32.h"
#include "kelhost/paths.h"
#include "temp_dir.h"

namespace {
std::wstring Wide(const std::string& s) { return std::wstring(s.begin(), s.end()); }

// The family's form of a native path: drive, backslashes.
std::wstring FamilyForm(const std::string& native) {
  std::wstring w = L"D:" + Wide(native);
  for (wchar_t& c : w)
    if (c == L'/') c = L'\\';
  return w;
}
}  // namespace

TEST(NativePath, MapsSeparatorsDriveAndCase) {
  TempDir dir;
  std::filesystem::create_directories(dir.file("Data/SubDir"));
  TempDir::Write(dir.file("Data/SubDir/File.TXT"), "x");
  TempDir::Write(dir.file("Data/\xE4\xB8\xAD\xC3\x89.ini"), "y");  // "中É.ini"
  EXPECT_EQ(kelhost::NativePath(FamilyForm(dir.path()) + L"\\data\\SUBDIR\\file.txt"),
            dir.file("Data/SubDir/File.TXT"));
  EXPECT_EQ(kelhost::NativePath(FamilyForm(dir.path()) + L"\\DATA\\\u4e2d\u00e9.INI"),
            dir.file("Data/\xE4\xB8\xAD\xC3\x89.ini"));  // case mapped beyond ASCII
  // Components that match nothing are kept as written, and so is the rest.
  EXPECT_EQ(kelhost::NativePath(FamilyForm(dir.path()) + L"\\data\\New\\Sub\\x.txt"), dir.file("Data/New/Sub/x.txt"));
  EXPECT_EQ(kelhost::NativePath(FamilyForm(dir.path()) + L"\\DATA\\"), dir.file("Data/"));
  EXPECT_EQ(kelhost::NativePath(L"relative\\Name.txt"), "relative/Name.txt");
  EXPECT_EQ(kelhost::NativePath(L"C:"), "");
  EXPECT_EQ(kelhost::NativePath(static_cast<const wchar_t*>(nullptr)), "");
}

TEST(NativePath, PrefersAnExactMatchAndIsDeterministicAmongCaseTwins) {
  TempDir dir;
  TempDir::Write(dir.file("twin"), "lower");
  TempDir::Write(dir.file("TWIN"), "upper");
  TempDir::Write(dir.file("Twin"), "mixed");
  EXPECT_EQ(kelhost::NativePath(Wide(dir.file("twin"))), dir.file("twin"));
  EXPECT_EQ(kelhost::NativePath(Wide(dir.file("tWIN"))), dir.file("TWIN"));  // smallest in byte order
}

TEST(WholeFile, AtomicWriteReplacesContentAndLeavesNoTemporary) {
  TempDir dir;
  const std::string path = dir.file("out.bin");
  const std::string bytes("a\0b\xFF", 4);
  ASSERT_TRUE(kelhost::WriteFileAtomically(path, bytes));
  ASSERT_TRUE(kelhost::WriteFileAtomically(path, bytes + bytes));
  std::string read;
  ASSERT_TRUE(kelhost::ReadWholeFile(path, read));
  EXPECT_EQ(read, bytes + bytes);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.path()), std::filesystem::directory_iterator()), 1);
  EXPECT_FALSE(kelhost::WriteFileAtomically(dir.file("missing/out.bin"), bytes));
  EXPECT_FALSE(kelhost::WriteFileAtomically(dir.path(), bytes));  // a directory is not replaced
  EXPECT_FALSE(kelhost::ReadWholeFile(dir.file("absent"), read));
  EXPECT_FALSE(kelhost::ReadWholeFile(dir.path(), read));
}

TEST(FileCalls, AttributesDirectoriesAndLastError) {
  TempDir dir;
  const std::wstring base = FamilyForm(dir.path());
  EXPECT_TRUE(CreateDirectoryW((base + L"\\Made").c_str(), nullptr));
  EXPECT_FALSE(CreateDirectoryW((base + L"\\made").c_str(), nullptr));  // same directory, other case
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ALREADY_EXISTS));
  EXPECT_FALSE(CreateDirectoryW((base + L"\\a\\b").c_str(), nullptr));
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_PATH_NOT_FOUND));
  EXPECT_EQ(GetFileAttributesW((base + L"\\MADE").c_str()), static_cast<DWORD>(FILE_ATTRIBUTE_DIRECTORY));
  TempDir::Write(dir.file("Made/f.txt"), "data");
  EXPECT_EQ(GetFileAttributesW((base + L"\\made\\F.TXT").c_str()) & FILE_ATTRIBUTE_DIRECTORY, 0u);
  EXPECT_EQ(GetFileAttributesW((base + L"\\nothing").c_str()), INVALID_FILE_ATTRIBUTES);
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
  EXPECT_EQ(GetFileAttributesW((base + L"\\no\\thing").c_str()), INVALID_FILE_ATTRIBUTES);
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_PATH_NOT_FOUND));
  EXPECT_FALSE(RemoveDirectoryW((base + L"\\made").c_str()));
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_DIR_NOT_EMPTY));
  EXPECT_FALSE(DeleteFileW((base + L"\\made").c_str()));  // a directory is not a file
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ACCESS_DENIED));
  EXPECT_TRUE(DeleteFileW((base + L"\\made\\f.txt").c_str()));
  EXPECT_FALSE(DeleteFileW((base + L"\\made\\f.txt").c_str()));
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
  EXPECT_TRUE(RemoveDirectoryW((base + L"\\made").c_str()));
  EXPECT_EQ(GetFileAttributesW((base + L"\\Made").c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST(FileCalls, CopyAndMoveRespectExistingTargets) {
  TempDir dir;
  const std::wstring base = FamilyForm(dir.path());
  TempDir::Write(dir.file("src.txt"), "source");
  TempDir::Write(dir.file("other.txt"), "other");
  EXPECT_TRUE(CopyFileW((base + L"\\SRC.txt").c_str(), (base + L"\\copy.txt").c_str(), TRUE));
  EXPECT_EQ(TempDir::Read(dir.file("copy.txt")), "source");
  EXPECT_FALSE(CopyFileW((base + L"\\src.txt").c_str(), (base + L"\\other.txt").c_str(), TRUE));
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_FILE_EXISTS));
  EXPECT_TRUE(CopyFileW((base + L"\\src.txt").c_str(), (base + L"\\OTHER.TXT").c_str(), FALSE));
  EXPECT_EQ(TempDir::Read(dir.file("other.txt")), "source");
  EXPECT_FALSE(CopyFileW((base + L"\\none.txt").c_str(), (base + L"\\x.txt").c_str(), FALSE));
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
  EXPECT_FALSE(MoveFileW((base + L"\\src.txt").c_str(), (base + L"\\copy.txt").c_str()));  // no replacing
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ALREADY_EXISTS));
  EXPECT_TRUE(MoveFileW((base + L"\\src.txt").c_str(), (base + L"\\moved.txt").c_str()));
  EXPECT_EQ(TempDir::Read(dir.file("moved.txt")), "source");
  EXPECT_FALSE(std::filesystem::exists(dir.file("src.txt")));
}

TEST(FileCalls, WideOpenMapsThePathAndMode) {
  TempDir dir;
  TempDir::Write(dir.file("Text.txt"), "\xEF\xBB\xBFh\xC3\xA9llo\n");
  const std::wstring family = FamilyForm(dir.path()) + L"\\TEXT.TXT";
  FILE* f = _wfopen(family.c_str(), L"rt, ccs=UTF-8");
  ASSERT_NE(f, nullptr);
  wchar_t line[32];
  ASSERT_NE(std::fgetws(line, 32, f), nullptr);
  EXPECT_STREQ(line, L"h\u00e9llo\n");  // UTF-8 decoded, byte-order mark skipped
  std::fclose(f);
  f = _wfopen(family.c_str(), L"ab");
  ASSERT_NE(f, nullptr);
  std::fputs("more", f);
  std::fclose(f);
  EXPECT_EQ(TempDir::Read(dir.file("Text.txt")), "\xEF\xBB\xBFh\xC3\xA9llo\nmore");
  f = _wfopen((FamilyForm(dir.path()) + L"\\New.txt").c_str(), L"w,ccs=UNICODE");
  ASSERT_NE(f, nullptr);
  std::fputws(L"\u4e2d\n", f);
  std::fclose(f);
  EXPECT_EQ(TempDir::Read(dir.file("New.txt")), "\xE4\xB8\xAD\n");
  EXPECT_EQ(_wfopen(family.c_str(), L"q"), nullptr);
  EXPECT_EQ(_wfopen(family.c_str(), L"r,bogus"), nullptr);
  EXPECT_EQ(_wfopen(nullptr, L"r"), nullptr);
}

TEST(Environment, UsesTheBufferRulesOfWindows) {
  ASSERT_TRUE(SetEnvironmentVariableW(L"KEL_PLATFORM_TEST", L"\u4e2d\u6587 value"));
  wchar_t small[4];
  EXPECT_EQ(GetEnvironmentVariableW(L"KEL_PLATFORM_TEST", small, 4), 9u);  // size needed with the null
  EXPECT_EQ(GetEnvironmentVariableW(L"KEL_PLATFORM_TEST", nullptr, 0), 9u);
  wchar_t buffer[16];
  EXPECT_EQ(GetEnvironmentVariableW(L"KEL_PLATFORM_TEST", buffer, 16), 8u);
  EXPECT_STREQ(buffer, L"\u4e2d\u6587 value");
  EXPECT_STREQ(std::getenv("KEL_PLATFORM_TEST"), "\xE4\xB8\xAD\xE6\x96\x87 value");  // UTF-8 underneath
  ASSERT_TRUE(SetEnvironmentVariableW(L"KEL_PLATFORM_TEST", nullptr));
  EXPECT_EQ(GetEnvironmentVariableW(L"KEL_PLATFORM_TEST", buffer, 16), 0u);
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ENVVAR_NOT_FOUND));
  EXPECT_FALSE(SetEnvironmentVariableW(L"A=B", L"x"));
}

TEST(CrtStrings, CaseInsensitiveCallsAreUnicodeAware) {
  EXPECT_EQ(_wcsicmp(L"Caf\u00c9", L"cAf\u00e9"), 0);
  EXPECT_LT(_wcsicmp(L"abc", L"ABD"), 0);
  EXPECT_GT(_wcsicmp(L"abcd", L"ABC"), 0);
  EXPECT_EQ(_wcsnicmp(L"PREfix-1", L"prefix-2", 6), 0);
  EXPECT_NE(_wcsnicmp(L"PREfix-1", L"prefix-2", 8), 0);
  wchar_t s[] = L"Mixed \u00e9";
  EXPECT_STREQ(_wcsupr(s), L"MIXED \u00c9");
  EXPECT_STREQ(_wcslwr(s), L"mixed \u00e9");
  EXPECT_EQ(_wcsupr(nullptr), nullptr);
}

TEST(DebugOutput, AppendsToTheLogFileWhenNamed) {
  TempDir dir;
  setenv("KEL_DEBUG_LOG", dir.file("debug.log").c_str(), 1);
  OutputDebugStringW(L"first \u4e2d\n");
  OutputDebugStringW(L"second\n");
  OutputDebugStringW(nullptr);
  unsetenv("KEL_DEBUG_LOG");
  EXPECT_EQ(TempDir::Read(dir.file("debug.log")), "first \xE4\xB8\xAD\nsecond\n");
}
