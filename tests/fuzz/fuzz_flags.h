// libFuzzer flags a target sets for itself, from LLVMFuzzerInitialize
// (which runs before libFuzzer reads its flags).
#pragma once

#include <cstring>
#include <vector>

// Entropic scheduling weighs every coverage counter after every run; over
// the whole host and module that costs more than the run itself. It stays
// off unless the command line asks for it.
inline void PreferPlainScheduling(int* argc, char*** argv) {
  for (int i = 1; i < *argc; ++i)
    if (std::strncmp((*argv)[i], "-entropic=", 10) == 0) return;
  static char flag[] = "-entropic=0";
  static std::vector<char*> args;
  args.assign(*argv, *argv + *argc);
  args.insert(args.begin() + 1, flag);
  args.push_back(nullptr);
  *argv = args.data();
  ++*argc;
}
