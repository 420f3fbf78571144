// The system beep of a program without a loudspeaker of its own: the
// terminal's bell, when there is a terminal.
#include <unistd.h>

#include <cstdio>

#include "arx/win32.h"
#include "kelhost/ui.h"

namespace kelhost {
namespace {
int gBeeps = 0;
}  // namespace

int BeepCount() { return gBeeps; }
}  // namespace kelhost

BOOL MessageBeep(UINT) {
  ++kelhost::gBeeps;
  if (isatty(fileno(stderr))) {
    std::fputc('\a', stderr);
    std::fflush(stderr);
  }
  return TRUE;
}
