// A database's stubs by handle: open addressing over the stubs themselves
// (a slot is one pointer; the key is the stub's handle), so that lookups
// take constant time and an object costs a slot and a fraction.
#pragma once

#include <cstddef>
#include <vector>

#include "db/stub.h"

namespace kelhost::db {

class HandleIndex {
 public:
  // What find gives, read as a map's iterator is: ->first the handle,
  // ->second the stub; equal to end() when the handle is not indexed.
  class Found {
   public:
    struct Entry {
      Adesk::UInt64 first;
      AcDbStub* second;
    };
    Found() = default;
    explicit Found(AcDbStub* stub) : mEntry{stub ? stub->handle : 0, stub} {}
    const Entry* operator->() const { return &mEntry; }
    bool operator==(const Found& o) const { return mEntry.second == o.mEntry.second; }
    bool operator!=(const Found& o) const { return mEntry.second != o.mEntry.second; }

   private:
    Entry mEntry{0, nullptr};
  };

  // The stub of a handle, or null.
  AcDbStub* lookup(Adesk::UInt64 handle) const;
  Found find(Adesk::UInt64 handle) const { return Found(lookup(handle)); }
  Found end() const { return Found(); }
  std::size_t count(Adesk::UInt64 handle) const { return lookup(handle) ? 1 : 0; }
  std::size_t size() const { return mCount; }
  // Indexes a stub under its handle, which must not be indexed yet.
  void insert(AcDbStub* stub);

 private:
  std::size_t slotOf(Adesk::UInt64 handle) const;
  void grow();
  std::vector<AcDbStub*> mSlots;
  std::size_t mCount = 0;
  unsigned mBits = 0;
};

}  // namespace kelhost::db
