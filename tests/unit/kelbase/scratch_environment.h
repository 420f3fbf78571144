// A temporary directory and environment for one test: every variable the
// base library reads is cleared, and restored afterwards, so tests neither
// see nor touch the user's real settings.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "kelhost/text.h"

class ScratchEnvironment : public ::testing::Test {
 protected:
  void SetUp() override {
    char pattern[] = "/tmp/kelbase-test-XXXXXX";
    ASSERT_NE(mkdtemp(pattern), nullptr);
    root = pattern;
    for (const char* name : {"KEL_INSTALL_DIR", "KEL_LOCAL_DIR", "KEL_WORK_DIR", "KEL_COMMON_DIR", "KEL_ACAD14_DIR",
                             "KEL_ACAD15_DIR", "KEL_INIT_INI", "KEL_SYS_INI", "KEL_USER_INI", "KEL_GC_INI",
                             "XDG_DATA_HOME", "XDG_CONFIG_HOME", "KEL_REGISTRY_FILE", "HOME", "PATH"}) {
      const char* value = getenv(name);
      saved[name] = value ? std::optional<std::string>(value) : std::nullopt;
      unsetenv(name);
    }
    Set("HOME", root + "/home");
    Set("XDG_CONFIG_HOME", root + "/config");
    Set("KEL_REGISTRY_FILE", root + "/registry.ini");
    Set("KEL_LOCAL_DIR", root + "/local");
  }
  void TearDown() override {
    for (const auto& [name, value] : saved) {
      if (value) setenv(name.c_str(), value->c_str(), 1);
      else unsetenv(name.c_str());
    }
    std::error_code ignored;
    std::filesystem::remove_all(root, ignored);
  }

  static void Set(const char* name, const std::string& value) { setenv(name, value.c_str(), 1); }
  static void Unset(const char* name) { unsetenv(name); }
  // A native path as the wide text the library returns.
  static std::wstring Wide(const std::string& path) { return kelhost::FromUtf8(path); }
  std::string MakeDir(const std::string& relative) const {
    std::filesystem::create_directories(root + "/" + relative);
    return root + "/" + relative;
  }
  std::string WriteFile(const std::string& relative, const std::string& bytes) const {
    const std::string path = root + "/" + relative;
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
  }
  static std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  }

  std::string root;

 private:
  std::map<std::string, std::optional<std::string>> saved;
};
