// Debugger output: with no debugger to talk to, the text goes to standard
// error, or is appended to the file named by KEL_DEBUG_LOG.
#include <cstdio>
#include <cstdlib>
#include <string>

#include "arx/win32.h"
#include "kelhost/paths.h"
#include "kelhost/text.h"

void OutputDebugStringW(LPCWSTR text) {
  if (!text) return;
  std::string bytes = kelhost::ToUtf8(text);
  const char* log = std::getenv("KEL_DEBUG_LOG");
  if (log && *log) {
    std::string path = kelhost::NativePath(kelhost::FromUtf8(log));
    if (FILE* f = std::fopen(path.c_str(), "ab")) {
      std::fwrite(bytes.data(), 1, bytes.size(), f);
      std::fclose(f);
      return;
    }
  }
  std::fwrite(bytes.data(), 1, bytes.size(), stderr);
  std::fflush(stderr);
}
