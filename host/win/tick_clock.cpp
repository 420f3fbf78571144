// Millisecond clock and sleep of the Windows family.
#include <cerrno>
#include <ctime>

#include "arx/win32.h"

// Milliseconds since an arbitrary start (boot), wrapping at 2^32 as the
// platform's counter does.
DWORD GetTickCount() {
  struct timespec ts;
  clock_gettime(CLOCK_MONOTONIC, &ts);
  unsigned long long ms = static_cast<unsigned long long>(ts.tv_sec) * 1000ull +
                          static_cast<unsigned long long>(ts.tv_nsec) / 1000000ull;
  return static_cast<DWORD>(ms);
}

void Sleep(DWORD milliseconds) {
  struct timespec ts;
  ts.tv_sec = static_cast<time_t>(milliseconds / 1000);
  ts.tv_nsec = static_cast<long>(milliseconds % 1000) * 1000000L;
  while (nanosleep(&ts, &ts) != 0 && errno == EINTR) {
  }
}
