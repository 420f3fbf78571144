// The live stubs of every database, the count of open objects, and the
// observer of writes.
#include <unordered_set>

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
void AdjustOpenCount(int delta) { gOpenCount += delta; }

void SetObjectObserver(ObjectObserver* observer) { gObserver = observer; }
ObjectObserver* CurrentObjectObserver() { return gObserver; }

}  // namespace kelhost::db
