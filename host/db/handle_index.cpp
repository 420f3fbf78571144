#include "db/handle_index.h"

namespace kelhost::db {

// Handles are given in runs of consecutive numbers: within a run of the
// table's size they take consecutive slots (lookups in handle order, the
// usual order, touch memory in order), and each run starts at a place of
// its own (Fibonacci hashing of the run's number), so that handles far
// apart or evenly spaced do not pile up.
std::size_t HandleIndex::slotOf(Adesk::UInt64 handle) const {
  const std::size_t mask = (std::size_t{1} << mBits) - 1;
  const Adesk::UInt64 run = handle >> mBits;
  return static_cast<std::size_t>(handle + ((run * 0x9E3779B97F4A7C15ULL) >> (64 - mBits))) & mask;
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
