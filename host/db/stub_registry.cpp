// The live stubs of every database, the count of open objects, and the
// observer of writes.
#include <unordered_set>

#include "arx/wformat.h"

#include "db/stub.h"

namespace kelhost::db {
namespace {
// Never destroyed: databases may outlive static destruction's order.
std::unordered_set<const AcDbStub*>& LiveStubs() {
  static auto* stubs = new std::unordered_set<const AcDbStub*>;
  return *stubs;
}
int gOpenCount = 0;
ObjectObserver* gObserver = nullptr;
}  // namespace

bool IsLiveStub(const AcDbStub* stub) { return stub && LiveStubs().count(stub) != 0; }
void RegisterStub(const AcDbStub* stub) { LiveStubs().insert(stub); }
void ForgetStub(const AcDbStub* stub) { LiveStubs().erase(stub); }

AcDbObject* Peek(AcDbObjectId id) {
  AcDbStub* stub = id;
  return IsLiveStub(stub) ? stub->object.get() : nullptr;
}

int OpenObjectCount() { return gOpenCount; }

std::vector<std::wstring> DescribeOpenObjects() {
  std::vector<std::wstring> lines;
  for (const AcDbStub* stub : LiveStubs()) {
    if (!stub->writer && stub->readers == 0 && stub->notifiers == 0) continue;
    std::wstring handle = WFormat(L"%llX", static_cast<unsigned long long>(stub->handle));
    const AcRxClass* cls = stub->object ? stub->object->isA() : nullptr;
    std::wstring how = stub->writer ? L"for write" : (stub->readers ? L"for read" : L"for notify");
    lines.push_back(handle + L" " + (cls && cls->dxfName() ? cls->dxfName() : L"?") + L" " + how);
  }
  return lines;
}
void AdjustOpenCount(int delta) { gOpenCount += delta; }

void SetObjectObserver(ObjectObserver* observer) { gObserver = observer; }
ObjectObserver* CurrentObjectObserver() { return gObserver; }

}  // namespace kelhost::db
