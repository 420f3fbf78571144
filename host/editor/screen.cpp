#include "editor/screen.h"

#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>

namespace kelhost::editor {
namespace {

constexpr int kLargest = 32767;  // a slide's coordinates are 15-bit

bool ParseDimension(const std::string& text, int& out) {
  if (text.empty() || text.size() > 5 || text.find_first_not_of("0123456789") != std::string::npos) return false;
  const int n = std::stoi(text);
  if (n < 1 || n > kLargest) return false;
  out = n;
  return true;
}

bool Parse(const std::string& text, ScreenSize& out) {
  const size_t x = text.find_first_of("xX");
  if (x == std::string::npos) return false;
  ScreenSize s;
  if (!ParseDimension(text.substr(0, x), s.width) || !ParseDimension(text.substr(x + 1), s.height)) return false;
  out = s;
  return true;
}

void ReportOnce(const std::string& text) {
  static std::mutex lock;
  static std::string reported;
  std::lock_guard<std::mutex> hold(lock);
  if (reported == text) return;
  reported = text;
  std::fprintf(stderr, "kelcad: KELCAD_SCREENSIZE \"%s\" is not WIDTHxHEIGHT (1 to %d pixels each); using %dx%d\n",
               text.c_str(), kLargest, ScreenSize().width, ScreenSize().height);
}

}  // namespace

ScreenSize Screen() {
  ScreenSize s;
  const char* env = std::getenv("KELCAD_SCREENSIZE");
  if (env && *env && !Parse(env, s)) ReportOnce(env);
  return s;
}

double ScreenAspect() {
  const ScreenSize s = Screen();
  return static_cast<double>(s.width) / s.height;
}

}  // namespace kelhost::editor
