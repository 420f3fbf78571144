// A scratch directory tree for one test, with HOME and XDG_DATA_HOME (the
// user's trash) pointed into it and restored afterwards.
#pragma once

#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "kelhost/text.h"

class ScratchTree : public ::testing::Test {
 protected:
  void SetUp() override {
    char pattern[] = "/tmp/kelcad-files-test-XXXXXX";
    ASSERT_NE(mkdtemp(pattern), nullptr);
    root = pattern;
    for (const char* name : {"HOME", "XDG_DATA_HOME", "KEL_REGISTRY_FILE"}) {
      const char* value = getenv(name);
      saved[name] = value ? std::optional<std::string>(value) : std::nullopt;
    }
    MakeDir("home");
    setenv("HOME", (root + "/home").c_str(), 1);
    setenv("XDG_DATA_HOME", (root + "/data").c_str(), 1);
    setenv("KEL_REGISTRY_FILE", (root + "/registry.ini").c_str(), 1);
  }

  void TearDown() override {
    for (const auto& [name, value] : saved) value ? setenv(name.c_str(), value->c_str(), 1) : unsetenv(name.c_str());
    std::error_code ignored;
    std::filesystem::permissions(root, std::filesystem::perms::owner_all, ignored);
    std::filesystem::remove_all(root, ignored);
  }

  // Paths below the scratch root; Wide gives the family's form of them.
  std::string Path(const std::string& relative) const { return root + "/" + relative; }
  std::wstring Wide(const std::string& relative) const { return kelhost::FromUtf8(Path(relative)); }
  std::string MakeDir(const std::string& relative) const {
    std::filesystem::create_directories(Path(relative));
    return Path(relative);
  }
  std::string Write(const std::string& relative, const std::string& bytes = "x") const {
    std::filesystem::create_directories(std::filesystem::path(Path(relative)).parent_path());
    std::ofstream(Path(relative), std::ios::binary) << bytes;
    return Path(relative);
  }
  static std::string Read(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  }
  bool Exists(const std::string& relative) const {
    struct stat st;
    return ::lstat(Path(relative).c_str(), &st) == 0;
  }
  // The names in a directory below the root, sorted.
  std::vector<std::string> List(const std::string& relative) const {
    std::vector<std::string> names;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(Path(relative), ignored))
      names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
  }

  std::string root;

 private:
  std::map<std::string, std::optional<std::string>> saved;
};
