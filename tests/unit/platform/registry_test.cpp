#include <gtest/gtest.h>

#include <cstdlib>
#include <cwchar>
#include <filesystem>
#include <string>

#include "arx/win32.h"
#include "temp_dir.h"

namespace {
// Points the registry at a file of the test's own.
class RegistryFile {
 public:
  explicit RegistryFile(const std::string& path) { setenv("KEL_REGISTRY_FILE", path.c_str(), 1); }
  ~RegistryFile() { unsetenv("KEL_REGISTRY_FILE"); }
};

LONG SetString(HKEY key, const wchar_t* name, const std::wstring& value) {
  return RegSetValueExW(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                        static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
}

std::wstring QueryString(HKEY key, const wchar_t* name) {
  wchar_t buffer[128] = {};
  DWORD size = sizeof buffer, type = 0;
  if (RegQueryValueExW(key, name, nullptr, &type, reinterpret_cast<BYTE*>(buffer), &size) != ERROR_SUCCESS)
    return L"<missing>";
  return type == REG_SZ ? std::wstring(buffer) : L"<not a string>";
}
}  // namespace

TEST(Registry, ValuesSurviveARestart) {
  TempDir dir;
  RegistryFile store(dir.file("nested/dir/registry.ini"));  // parent directories are created
  HKEY key = nullptr;
  DWORD disposition = 0;
  ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\Kel\\App", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key,
                            &disposition), ERROR_SUCCESS);
  EXPECT_EQ(disposition, static_cast<DWORD>(REG_CREATED_NEW_KEY));
  EXPECT_EQ(SetString(key, L"Path", L"C:\\Program Files\\Kel  "), ERROR_SUCCESS);
  EXPECT_EQ(SetString(key, nullptr, L"default \u4e2d"), ERROR_SUCCESS);
  EXPECT_EQ(SetString(key, L"odd=name; \"x\"", L"line1\nline2 100%"), ERROR_SUCCESS);
  DWORD count = 42;
  EXPECT_EQ(RegSetValueExW(key, L"Count", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&count), sizeof count),
            ERROR_SUCCESS);
  EXPECT_EQ(RegCloseKey(key), ERROR_SUCCESS);

  // A new process sees only the file: copy it elsewhere and read from there.
  std::filesystem::copy_file(dir.file("nested/dir/registry.ini"), dir.file("copy.ini"));
  RegistryFile restarted(dir.file("copy.ini"));
  ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, L"SOFTWARE\\kel\\APP", 0, KEY_READ, &key), ERROR_SUCCESS);
  EXPECT_EQ(QueryString(key, L"path"), L"C:\\Program Files\\Kel  ");
  EXPECT_EQ(QueryString(key, L""), L"default \u4e2d");
  EXPECT_EQ(QueryString(key, L"odd=name; \"x\""), L"line1\nline2 100%");
  DWORD value = 0, size = sizeof value, type = 0;
  EXPECT_EQ(RegQueryValueExW(key, L"COUNT", nullptr, &type, reinterpret_cast<BYTE*>(&value), &size), ERROR_SUCCESS);
  EXPECT_EQ(type, static_cast<DWORD>(REG_DWORD));
  EXPECT_EQ(value, 42u);
  EXPECT_EQ(RegCloseKey(key), ERROR_SUCCESS);
}

TEST(Registry, OpenQueryAndDeleteFollowWindowsStatuses) {
  TempDir dir;
  RegistryFile store(dir.file("registry.ini"));
  HKEY key = nullptr;
  EXPECT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, L"Software\\Absent", 0, KEY_READ, &key), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(key, nullptr);
  ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\A\\B", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key,
                            nullptr), ERROR_SUCCESS);
  HKEY parent = nullptr;
  EXPECT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, L"software\\a", 0, KEY_READ, &parent), ERROR_SUCCESS);  // implied
  DWORD disposition = 0;
  HKEY again = nullptr;
  EXPECT_EQ(RegCreateKeyExW(parent, L"B", 0, nullptr, 0, KEY_READ, nullptr, &again, &disposition), ERROR_SUCCESS);
  EXPECT_EQ(disposition, static_cast<DWORD>(REG_OPENED_EXISTING_KEY));

  EXPECT_EQ(SetString(again, L"v", L"x"), ERROR_ACCESS_DENIED);  // opened for reading only
  EXPECT_EQ(SetString(key, L"v", L"some text"), ERROR_SUCCESS);
  DWORD size = 0, type = 0;
  EXPECT_EQ(RegQueryValueExW(again, L"v", nullptr, &type, nullptr, &size), ERROR_SUCCESS);
  EXPECT_EQ(size, 10 * sizeof(wchar_t));  // with the terminator
  wchar_t small[3];
  size = sizeof small;
  EXPECT_EQ(RegQueryValueExW(again, L"v", nullptr, nullptr, reinterpret_cast<BYTE*>(small), &size), ERROR_MORE_DATA);
  EXPECT_EQ(size, 10 * sizeof(wchar_t));
  EXPECT_EQ(RegQueryValueExW(again, L"none", nullptr, nullptr, nullptr, &size), ERROR_FILE_NOT_FOUND);
  DWORD badSize = 3;
  EXPECT_EQ(RegSetValueExW(key, L"d", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&badSize), 3),
            ERROR_INVALID_PARAMETER);
  EXPECT_EQ(RegDeleteValueW(key, L"V"), ERROR_SUCCESS);
  EXPECT_EQ(RegDeleteValueW(key, L"v"), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(QueryString(again, L"v"), L"<missing>");

  EXPECT_EQ(RegCloseKey(again), ERROR_SUCCESS);
  EXPECT_EQ(RegCloseKey(parent), ERROR_SUCCESS);
  EXPECT_EQ(RegCloseKey(key), ERROR_SUCCESS);
  EXPECT_EQ(RegCloseKey(key), ERROR_INVALID_HANDLE);  // already closed
  EXPECT_EQ(RegCloseKey(HKEY_CURRENT_USER), ERROR_SUCCESS);
  EXPECT_EQ(SetString(key, L"v", L"x"), ERROR_INVALID_HANDLE);
}
