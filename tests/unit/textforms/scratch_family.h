// A private initialisation-settings file, debugger-output file and
// command line for one test: the debug switches and tolerances are read
// from the scratch file, the debugger output lands in the scratch log, and
// what reaches the command line is captured. Every variable is restored
// afterwards.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "kelcad/kelcad.h"
#include "kelhost/host.h"
#include "kelhost/text.h"
#include "kelhost/ui.h"

class ScratchFamily : public ::testing::Test {
 protected:
  void SetUp() override {
    for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "KEL_LOCAL_DIR", "KEL_INIT_INI",
                             "KEL_SYS_INI", "KEL_USER_INI", "KEL_GC_INI", "KEL_REGISTRY_FILE", "KEL_DEBUG_LOG"}) {
      const char* value = getenv(name);
      saved[name] = value ? std::optional<std::string>(value) : std::nullopt;
      unsetenv(name);
    }
    char pattern[] = "/tmp/kelcad-textforms-XXXXXX";
    ASSERT_NE(mkdtemp(pattern), nullptr);
    root = pattern;
    std::filesystem::create_directories(root + "/home");
    std::filesystem::create_directories(root + "/local");
    setenv("HOME", (root + "/home").c_str(), 1);
    setenv("XDG_CONFIG_HOME", (root + "/home/.config").c_str(), 1);
    setenv("KEL_LOCAL_DIR", (root + "/local/").c_str(), 1);
    setenv("KEL_INIT_INI", (root + "/local/KelInit.ini").c_str(), 1);
    setenv("KEL_SYS_INI", (root + "/local/KelSys.ini").c_str(), 1);
    setenv("KEL_USER_INI", (root + "/local/KelUser.ini").c_str(), 1);
    setenv("KEL_REGISTRY_FILE", (root + "/home/registry.ini").c_str(), 1);
    setenv("KEL_DEBUG_LOG", (root + "/debug.log").c_str(), 1);
    kelhost::Host::instance().setCommandLineSink([this](const std::wstring& text) { commandLine += text; });
    kelhost::ClearShownMessageBoxes();
  }

  void TearDown() override {
    kelhost::Host::instance().setCommandLineSink(nullptr);
    kelhost::ClearShownMessageBoxes();
    for (const auto& [name, value] : saved)
      value ? setenv(name.c_str(), value->c_str(), 1) : unsetenv(name.c_str());
    std::error_code ignored;
    std::filesystem::remove_all(root, ignored);
  }

  // Replaces the whole initialisation settings file.
  void WriteInit(const std::string& bytes) const {
    std::ofstream(root + "/local/KelInit.ini", std::ios::binary | std::ios::trunc) << bytes;
  }

  // The debugger output since the last call (the log is then emptied).
  std::wstring TakeDebugOutput() const {
    const std::string path = root + "/debug.log";
    std::ifstream in(path, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    in.close();
    std::filesystem::remove(path);
    return kelhost::FromUtf8(bytes);
  }
  std::wstring TakeCommandLine() {
    std::wstring text;
    text.swap(commandLine);
    return text;
  }

  std::string root;
  std::wstring commandLine;

 private:
  std::map<std::string, std::optional<std::string>> saved;
};
