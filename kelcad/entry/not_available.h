// The one place where functions that this build does not have yet answer:
// each prints "\n<name>: not available in this build" on the command line.
// Work that brings a function removes it from here.
#pragma once

namespace KEL {

void ReportNotAvailable(const wchar_t* name);

// The handler of every AutoLISP function not built yet: reports the
// registered name of the function being called and returns nil.
int LispNotAvailable();

}  // namespace KEL
