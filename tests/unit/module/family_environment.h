// A private set of the family's directories and settings files for one
// test, laid out as the console's scenarios have them, with the module
// loaded through the host's loader and the command line captured. Every
// variable the test may touch is restored afterwards.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "kelhost/host.h"
#include "kelhost/lisp.h"
#include "kelhost/text.h"

class FamilyEnvironment : public ::testing::Test {
 protected:
  void SetUp() override {
    for (const char* name : {"HOME", "XDG_CONFIG_HOME", "KEL_INSTALL_DIR", "KEL_LOCAL_DIR", "KEL_WORK_DIR",
                             "KEL_COMMON_DIR", "KEL_ACAD14_DIR", "KEL_INIT_INI", "KEL_SYS_INI", "KEL_USER_INI",
                             "KEL_GC_INI", "KEL_REGISTRY_FILE", "ACADCurrentProfiles", "SoftwareProfileKey"}) {
      const char* value = getenv(name);
      saved[name] = value ? std::optional<std::string>(value) : std::nullopt;
      unsetenv(name);
    }
    char pattern[] = "/tmp/kelcad-module-test-XXXXXX";
    ASSERT_NE(mkdtemp(pattern), nullptr);
    root = pattern;
    for (const char* dir : {"install", "local", "work", "common", "home"})
      std::filesystem::create_directories(root + "/" + dir);
    Set("HOME", root + "/home");
    Set("XDG_CONFIG_HOME", root + "/home/.config");
    Set("KEL_INSTALL_DIR", root + "/install/");
    Set("KEL_LOCAL_DIR", root + "/local/");
    Set("KEL_WORK_DIR", root + "/work/");
    Set("KEL_COMMON_DIR", root + "/common/");
    Set("KEL_INIT_INI", root + "/install/KelInit.ini");
    Set("KEL_SYS_INI", root + "/install/KelSys.ini");
    Set("KEL_USER_INI", root + "/local/KelUser.ini");
    Set("KEL_GC_INI", root + "/work/Project.ini");
    Set("KEL_REGISTRY_FILE", root + "/home/registry.ini");
    kelhost::Host::instance().setCommandLineSink([this](const std::wstring& text) { out += text; });
  }

  void TearDown() override {
    kelhost::Host::instance().unloadAll();
    kelhost::Host::instance().setCommandLineSink(nullptr);
    for (const auto& [name, value] : saved)
      value ? setenv(name.c_str(), value->c_str(), 1) : unsetenv(name.c_str());
    std::error_code ignored;
    std::filesystem::remove_all(root, ignored);
  }

  static void Set(const char* name, const std::string& value) { setenv(name, value.c_str(), 1); }

  // relative is below the temporary root, e.g. "install/KelInit.ini".
  void WriteFile(const std::string& relative, const std::string& bytes) const {
    std::filesystem::create_directories(std::filesystem::path(root + "/" + relative).parent_path());
    std::ofstream(root + "/" + relative, std::ios::binary) << bytes;
  }
  std::string ReadFile(const std::string& relative) const {
    std::ifstream in(root + "/" + relative, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  }

  bool LoadModule() {
    std::wstring error;
    const bool loaded = kelhost::Host::instance().loadModule(KELCAD_MODULE_PATH, &error);
    EXPECT_TRUE(loaded) << kelhost::ToUtf8(error);
    return loaded;
  }
  void UnloadModule() { kelhost::Host::instance().unloadAll(); }

  // The value of one expression in print form, or "error: ..."; and what
  // an expression printed on the command line.
  std::wstring Eval(const std::wstring& text) {
    const auto outcome = kelhost::Host::instance().lisp().evalOne(text);
    return outcome.ok ? outcome.valueText : L"error: " + outcome.error;
  }
  std::wstring Printed(const std::wstring& text) {
    out.clear();
    kelhost::Host::instance().lisp().evalOne(text);
    return out;
  }

  std::string root;
  std::wstring out;

 private:
  std::map<std::string, std::optional<std::string>> saved;
};
