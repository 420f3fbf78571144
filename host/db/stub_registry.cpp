// The count of open objects, the objects still open, and the observer of
// writes.
#include <algorithm>

#include "arx/wformat.h"

#include "db/stub.h"
#include "db/stub_pool.h"

namespace kelhost::db {
namespace {
int gOpenCount = 0;
// Observers register from static initializers of other files: the list is
// made on first use, whatever the order of initialization.
std::vector<ObjectObserver*>& Observers() {
  static std::vector<ObjectObserver*> observers;
  return observers;
}
}  // namespace

AcDbObject* Peek(AcDbObjectId id) {
  AcDbStub* stub = id;
  return IsLiveStub(stub) ? stub->object.get() : nullptr;
}

int OpenObjectCount() { return gOpenCount; }

std::vector<std::wstring> DescribeOpenObjects() {
  std::vector<std::wstring> lines;
  ForEachLiveStub([&lines](const AcDbStub* stub) {
    if (!stub->writer && stub->readers == 0 && stub->notifiers == 0) return;
    std::wstring handle = WFormat(L"%llX", static_cast<unsigned long long>(stub->handle));
    const AcRxClass* cls = stub->object ? stub->object->isA() : nullptr;
    std::wstring how = stub->writer ? L"for write" : (stub->readers ? L"for read" : L"for notify");
    lines.push_back(handle + L" " + (cls && cls->dxfName() ? cls->dxfName() : L"?") + L" " + how);
  });
  return lines;
}
void AdjustOpenCount(int delta) { gOpenCount += delta; }

void AddObjectObserver(ObjectObserver* observer) {
  std::vector<ObjectObserver*>& all = Observers();
  if (observer && std::find(all.begin(), all.end(), observer) == all.end()) all.push_back(observer);
}
void RemoveObjectObserver(ObjectObserver* observer) {
  std::vector<ObjectObserver*>& all = Observers();
  all.erase(std::remove(all.begin(), all.end(), observer), all.end());
}
void NotifyBeforeWrite(AcDbObject* object) {
  for (ObjectObserver* o : Observers()) o->beforeWrite(object);
}
void NotifyAdded(AcDbObject* object) {
  for (ObjectObserver* o : Observers()) o->added(object);
}
void NotifyBeforeHeaderWrite(AcDbDatabase* db, const wchar_t* name) {
  for (ObjectObserver* o : Observers()) o->beforeHeaderWrite(db, name);
}
void NotifyDatabaseGoing(AcDbDatabase* db) {
  for (ObjectObserver* o : Observers()) o->databaseGoing(db);
}

}  // namespace kelhost::db
