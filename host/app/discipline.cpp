#include "app/discipline.h"

#include <cstdio>

#include "db/stub.h"
#include "kelhost/text.h"

namespace kelhost::app {
namespace {
int gViolations = 0;
}

void CheckNothingLeftOpen(int openBefore, const std::wstring& what) {
  int now = db::OpenObjectCount();
  if (now <= openBefore) return;
  ++gViolations;
  std::fprintf(stderr, "kelcad: %s left %d object(s) open:\n", ToUtf8(what).c_str(), now - openBefore);
  for (const std::wstring& line : db::DescribeOpenObjects()) std::fprintf(stderr, "  %s\n", ToUtf8(line).c_str());
}

int DisciplineViolations() { return gViolations; }

}  // namespace kelhost::app
