// A scratch directory for one test, removed with everything in it.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

class TempDir {
 public:
  TempDir() {
    const char* base = std::getenv("TMPDIR");
    std::string pattern = std::string(base && *base ? base : "/tmp") + "/kelplatformXXXXXX";
    char* made = mkdtemp(pattern.data());
    mPath = made ? made : "";
  }
  ~TempDir() {
    std::error_code ec;
    if (!mPath.empty()) std::filesystem::remove_all(mPath, ec);
  }
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::string& path() const { return mPath; }
  std::string file(const std::string& name) const { return mPath + "/" + name; }
  std::wstring wfile(const std::string& name) const {
    std::string f = file(name);
    return std::wstring(f.begin(), f.end());  // test paths are ASCII
  }

  static void Write(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
  }
  static std::string Read(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  }

 private:
  std::string mPath;
};
