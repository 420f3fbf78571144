#include <gtest/gtest.h>

#include <dirent.h>

#include <string>
#include <vector>

#include "arx/win32.h"
#include "temp_dir.h"
#include "win/profile_document.h"

namespace {
std::wstring Get(const wchar_t* section, const wchar_t* key, const std::wstring& file, const wchar_t* def = L"DEF") {
  wchar_t buffer[256];
  GetPrivateProfileStringW(section, key, def, buffer, 256, file.c_str());
  return buffer;
}

// The strings of a double-null list.
std::vector<std::wstring> List(const wchar_t* buffer) {
  std::vector<std::wstring> items;
  for (const wchar_t* p = buffer; *p; p += items.back().size() + 1) items.emplace_back(p);
  return items;
}

int EntriesIn(const std::string& dir) {
  int n = 0;
  if (DIR* d = opendir(dir.c_str())) {
    while (struct dirent* e = readdir(d)) n += e->d_name[0] != '.';
    closedir(d);
  }
  return n;
}

const char kSample[] =
    "; settings of the application\r\n"
    "[General]\r\n"
    "  Name = \"  quoted value  \" \r\n"
    "Single='x'\r\n"
    "Mismatched=\"abc'\r\n"
    "no equals sign here\r\n"
    "# another comment\r\n"
    "Count=42\r\n"
    "count=99\r\n"
    "\r\n"
    "[Other]\r\n"
    "Key=other\r\n"
    "[general]\r\n"
    "Late=hidden\r\n";
}  // namespace

TEST(PrivateProfile, ReadsWithWindowsRules) {
  TempDir dir;
  TempDir::Write(dir.file("a.ini"), kSample);
  const std::wstring f = dir.wfile("a.ini");
  EXPECT_EQ(Get(L"general", L"NAME", f), L"  quoted value  ");
  EXPECT_EQ(Get(L"General", L"Single", f), L"x");
  EXPECT_EQ(Get(L"General", L"Mismatched", f), L"\"abc'");
  EXPECT_EQ(Get(L"General", L"Count", f), L"42");            // first duplicate wins
  EXPECT_EQ(Get(L"General", L"no equals sign here", f), L"DEF");
  EXPECT_EQ(Get(L"General", L"; settings of the application", f), L"DEF");
  EXPECT_EQ(Get(L"General", L"Late", f), L"DEF");            // only the first [General] counts
  EXPECT_EQ(Get(L"Other", L"key", f), L"other");
  EXPECT_EQ(Get(L"Missing", L"Key", f, L"fallback   "), L"fallback");  // trailing blanks of the default go
  EXPECT_EQ(GetPrivateProfileIntW(L"General", L"Count", 7, f.c_str()), 42u);
  EXPECT_EQ(GetPrivateProfileIntW(L"General", L"Name", 7, f.c_str()), 0u);  // not a number
  EXPECT_EQ(GetPrivateProfileIntW(L"General", L"Absent", 7, f.c_str()), 7u);
  EXPECT_EQ(Get(L"General", L"Count", dir.wfile("missing.ini")), L"DEF");  // a missing file reads empty
}

TEST(PrivateProfile, ListsSectionsKeysAndSectionLines) {
  TempDir dir;
  TempDir::Write(dir.file("a.ini"), kSample);
  const std::wstring f = dir.wfile("a.ini");
  wchar_t buffer[256];
  DWORD n = GetPrivateProfileSectionNamesW(buffer, 256, f.c_str());
  EXPECT_EQ(List(buffer), (std::vector<std::wstring>{L"General", L"Other"}));
  EXPECT_EQ(n, 14u);  // "General\0Other\0" without the final null
  EXPECT_EQ(GetPrivateProfileStringW(nullptr, nullptr, L"", buffer, 256, f.c_str()), 14u);
  GetPrivateProfileStringW(L"GENERAL", nullptr, L"", buffer, 256, f.c_str());
  EXPECT_EQ(List(buffer), (std::vector<std::wstring>{L"Name", L"Single", L"Mismatched", L"Count"}));
  GetPrivateProfileSectionW(L"general", buffer, 256, f.c_str());
  EXPECT_EQ(List(buffer), (std::vector<std::wstring>{L"Name=\"  quoted value  \"", L"Single='x'",
                                                     L"Mismatched=\"abc'", L"Count=42", L"count=99"}));
  EXPECT_EQ(GetPrivateProfileSectionW(L"Nothing", buffer, 256, f.c_str()), 0u);
  EXPECT_EQ(buffer[0], 0);
}

TEST(PrivateProfile, BufferTooSmallFollowsWindows) {
  TempDir dir;
  TempDir::Write(dir.file("a.ini"), "[S]\nkey=0123456789\n[T]\n");
  const std::wstring f = dir.wfile("a.ini");
  wchar_t buffer[8];
  EXPECT_EQ(GetPrivateProfileStringW(L"S", L"key", L"", buffer, 5, f.c_str()), 4u);  // size - 1
  EXPECT_STREQ(buffer, L"0123");
  EXPECT_EQ(GetPrivateProfileSectionNamesW(buffer, 4, f.c_str()), 2u);  // size - 2, two nulls
  EXPECT_EQ(buffer[0], L'S');
  EXPECT_EQ(buffer[2], 0);
  EXPECT_EQ(buffer[3], 0);
  EXPECT_EQ(GetPrivateProfileSectionNamesW(buffer, 5, f.c_str()), 4u);  // "S\0T\0" + final null fits
  EXPECT_EQ(GetPrivateProfileStringW(L"S", L"key", L"", nullptr, 5, f.c_str()), 0u);
  EXPECT_EQ(GetPrivateProfileStringW(L"S", L"key", L"", buffer, 0, f.c_str()), 0u);
}

TEST(PrivateProfile, ReadsUtf16AndUtf8FilesWithByteOrderMarks) {
  TempDir dir;
  const std::u16string text = u"[\u8BBE\u7F6E]\r\nKey=\u503C \U0001F600\r\n";
  std::string le = "\xFF\xFE", be = "\xFE\xFF";
  for (char16_t u : text) {
    le += static_cast<char>(u & 0xFF);
    le += static_cast<char>(u >> 8);
    be += static_cast<char>(u >> 8);
    be += static_cast<char>(u & 0xFF);
  }
  TempDir::Write(dir.file("le.ini"), le);
  TempDir::Write(dir.file("be.ini"), be);
  TempDir::Write(dir.file("bom8.ini"), "\xEF\xBB\xBF[\xE8\xAE\xBE\xE7\xBD\xAE]\nKey=\xE5\x80\xBC \xF0\x9F\x98\x80\n");
  for (const char* name : {"le.ini", "be.ini", "bom8.ini"})
    EXPECT_EQ(Get(L"\u8BBE\u7F6E", L"key", dir.wfile(name)), L"\u503C \U0001F600") << name;
  // Writing converts the file to UTF-8 without a mark.
  ASSERT_TRUE(WritePrivateProfileStringW(L"\u8BBE\u7F6E", L"New", L"1", dir.wfile("le.ini").c_str()));
  EXPECT_EQ(TempDir::Read(dir.file("le.ini")),
            "[\xE8\xAE\xBE\xE7\xBD\xAE]\r\nKey=\xE5\x80\xBC \xF0\x9F\x98\x80\r\nNew=1\r\n");
}

TEST(PrivateProfile, WritesKeepTheRestOfTheFile) {
  TempDir dir;
  const std::string path = dir.file("w.ini");
  TempDir::Write(path, "; head\n[A]\nx=1\n; inside\ny=2\n\n[B]\nz=3\n");
  const std::wstring f = dir.wfile("w.ini");
  ASSERT_TRUE(WritePrivateProfileStringW(L"a", L"X", L"one", f.c_str()));     // replaced in place, key spelling kept
  ASSERT_TRUE(WritePrivateProfileStringW(L"A", L"new", L"n", f.c_str()));     // after the section's last key
  ASSERT_TRUE(WritePrivateProfileStringW(L"C", L"k", L"v", f.c_str()));       // new section at the end
  EXPECT_EQ(TempDir::Read(path), "; head\n[A]\nx=one\n; inside\ny=2\nnew=n\n\n[B]\nz=3\n[C]\nk=v\n");
  ASSERT_TRUE(WritePrivateProfileStringW(L"A", L"y", nullptr, f.c_str()));    // delete a key
  ASSERT_TRUE(WritePrivateProfileStringW(L"b", nullptr, nullptr, f.c_str())); // delete a section
  EXPECT_EQ(TempDir::Read(path), "; head\n[A]\nx=one\n; inside\nnew=n\n\n[C]\nk=v\n");
  EXPECT_TRUE(WritePrivateProfileStringW(L"Absent", L"k", nullptr, f.c_str()));  // nothing to delete
  EXPECT_EQ(EntriesIn(dir.path()), 1);  // no temporary file left behind
}

TEST(PrivateProfile, NewFilesAndFailures) {
  TempDir dir;
  const std::wstring f = dir.wfile("fresh.ini");
  ASSERT_TRUE(WritePrivateProfileStringW(L"S", L"k", L"  spaced  ", f.c_str()));
  // Quoted, so that the blanks read back.
  EXPECT_EQ(TempDir::Read(dir.file("fresh.ini")), "[S]\nk=\"  spaced  \"\n");
  EXPECT_EQ(Get(L"S", L"k", f), L"  spaced  ");
  // Missing directories are not created.
  EXPECT_FALSE(WritePrivateProfileStringW(L"S", L"k", L"v", dir.wfile("no/such/dir.ini").c_str()));
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_PATH_NOT_FOUND));
  EXPECT_FALSE(WritePrivateProfileStringW(nullptr, L"k", L"v", f.c_str()));
  // A Windows-form path with the wrong case reaches the same file.
  std::wstring windowsForm = L"C:" + f.substr(0, f.rfind(L'/')) + L"\\FRESH.INI";
  for (wchar_t& c : windowsForm)
    if (c == L'/') c = L'\\';
  EXPECT_EQ(Get(L"s", L"K", windowsForm), L"  spaced  ");
}

TEST(ProfileDocument, SerializeIsStableAfterOneRoundTrip) {
  const std::string odd = "x=1\r[B]\n\xFF\xFE" "k = v\r\n[A\n=empty key\n";
  std::string once = kelhost::ProfileDocument::Parse(odd).Serialize();
  EXPECT_EQ(kelhost::ProfileDocument::Parse(once).Serialize(), once);
  kelhost::ProfileDocument doc = kelhost::ProfileDocument::Parse(once);
  std::wstring value;
  EXPECT_TRUE(doc.Find(L"A", L"", value));  // "[A" without ']' still names section A
  EXPECT_EQ(value, L"empty key");
  EXPECT_FALSE(doc.Find(L"", L"x", value));  // keys before any section belong to none
}
