// Settings written through the private-profile calls read back as they
// were written, or are refused with the file left as it was.
#include <gtest/gtest.h>

#include <string>

#include "arx/win32.h"
#include "temp_dir.h"

namespace {

std::wstring Get(const wchar_t* section, const wchar_t* key, const std::wstring& file) {
  wchar_t buffer[256];
  GetPrivateProfileStringW(section, key, L"<absent>", buffer, 256, file.c_str());
  return buffer;
}

const char kBefore[] = "[Setting]\nKey=old\n";

TEST(ProfileRoundTrip, WhatCannotBeReadBackIsRefusedAndTheFileKept) {
  TempDir dir;
  const std::wstring f = dir.wfile("user.ini");
  const struct {
    const wchar_t* section;
    const wchar_t* key;
    const wchar_t* value;
  } refused[] = {
      {L"Setting", L"Key", L"v1\n[Other]\nx=1"},  // would inject a section
      {L"Setting", L"Key", L"v1\r\nx=1"},
      {L"Setting", L"a=b", L"v"},
      {L"Setting", L" Key", L"v"},
      {L"Setting", L"Key\t", L"v"},
      {L"Setting", L";Key", L"v"},
      {L"Setting", L"#Key", L"v"},
      {L"Setting", L"[Key", L"v"},
      {L"Setting", L"Ke\ny", L"v"},
      {L"Setting", L"", L"v"},
      {L"Set\nting", L"Key", L"v"},
      {L" Setting ", L"Key", L"v"},
  };
  for (const auto& c : refused) {
    TempDir::Write(dir.file("user.ini"), kBefore);
    SetLastError(0);
    EXPECT_FALSE(WritePrivateProfileStringW(c.section, c.key, c.value, f.c_str())) << c.key << " " << c.value;
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    EXPECT_EQ(TempDir::Read(dir.file("user.ini")), kBefore) << c.key << " " << c.value;
  }
  EXPECT_EQ(Get(L"Other", L"x", f), L"<absent>");
}

TEST(ProfileRoundTrip, ValuesAReadWouldTrimOrUnquoteAreStoredQuoted) {
  TempDir dir;
  const std::wstring f = dir.wfile("user.ini");
  for (const wchar_t* value : {L"  padded  ", L"\"quoted\"", L"'single'", L"\"", L"tab\t", L"plain", L"", L"a=b;c",
                               L"\"mixed'", L"\u4E2D \u6587"}) {
    ASSERT_TRUE(WritePrivateProfileStringW(L"Setting", L"Key", value, f.c_str())) << value;
    EXPECT_EQ(Get(L"Setting", L"Key", f), value);
  }
  // A plain value is written as it is, for the family's other readers.
  ASSERT_TRUE(WritePrivateProfileStringW(L"Setting", L"Key", L"plain", f.c_str()));
  EXPECT_EQ(TempDir::Read(dir.file("user.ini")), "[Setting]\nKey=plain\n");
}

}  // namespace
