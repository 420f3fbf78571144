// Where a database's stubs live: in chunks that the pool owns, so that a
// stub costs no allocation of its own and an id can be checked against the
// chunks of live databases without a per-object index.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "db/stub.h"

namespace kelhost::db {

class StubPool {
 public:
  StubPool();
  StubPool(StubPool&& other) noexcept;
  StubPool& operator=(StubPool&& other);
  StubPool(const StubPool&) = delete;
  StubPool& operator=(const StubPool&) = delete;
  // Deletes the objects in the order they were made.
  ~StubPool();

  // A new stub, live until forget() (or the pool goes).
  AcDbStub* make();
  // The pool's stubs stop being live: ids of them name nothing from now on.
  void forget();

  struct Chunk;

 private:
  void release();
  std::vector<std::unique_ptr<Chunk>> mChunks;
};

// Calls visit(AcDbStub*) for every live stub of every database.
void ForEachLiveStubImpl(void (*visit)(AcDbStub*, void*), void* context);
template <class Visit>
void ForEachLiveStub(Visit visit) {
  ForEachLiveStubImpl([](AcDbStub* stub, void* context) { (*static_cast<Visit*>(context))(stub); }, &visit);
}

}  // namespace kelhost::db
