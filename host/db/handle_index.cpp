#include "db/handle_index.h"

namespace kelhost::db {

// Fibonacci hashing: consecutive handles, the usual case, spread evenly.
std::size_t HandleIndex::slotOf(Adesk::UInt64 handle) const {
  return static_cast<std::size_t>((handle * 0x9E3779B97F4A7C15ULL) >> (64 - mBits));
}

AcDbStub* HandleIndex::lookup(Adesk::UInt64 handle) const {
  if (mSlots.empty()) return nullptr;
  const std::size_t mask = mSlots.size() - 1;
  for (std::size_t i = slotOf(handle);; i = (i + 1) & mask) {
    AcDbStub* stub = mSlots[i];
    if (!stub) return nullptr;
    if (stub->handle == handle) return stub;
  }
}

void HandleIndex::insert(AcDbStub* stub) {
  // At most three quarters full, so that probes stay short.
  if (4 * (mCount + 1) > 3 * mSlots.size()) grow();
  const std::size_t mask = mSlots.size() - 1;
  std::size_t i = slotOf(stub->handle);
  while (mSlots[i]) i = (i + 1) & mask;
  mSlots[i] = stub;
  ++mCount;
}

void HandleIndex::grow() {
  std::vector<AcDbStub*> old;
  old.swap(mSlots);
  mBits = old.empty() ? 6 : mBits + 1;
  mSlots.assign(std::size_t{1} << mBits, nullptr);
  const std::size_t mask = mSlots.size() - 1;
  for (AcDbStub* stub : old) {
    if (!stub) continue;
    std::size_t i = slotOf(stub->handle);
    while (mSlots[i]) i = (i + 1) & mask;
    mSlots[i] = stub;
  }
}

}  // namespace kelhost::db
