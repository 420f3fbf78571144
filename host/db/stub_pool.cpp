#include "db/stub_pool.h"

#include <algorithm>
#include <cstdint>
#include <functional>

namespace kelhost::db {

// Chunks grow with the database, from a few dozen stubs (most databases
// are small) to a size that keeps the registry short for large ones.
struct StubPool::Chunk {
  explicit Chunk(std::size_t n) : stubs(new AcDbStub[n]), capacity(n) {}
  std::unique_ptr<AcDbStub[]> stubs;
  std::size_t capacity;
  std::size_t used = 0;
  bool registered = false;
};

namespace {

constexpr std::size_t kFirstChunk = 32;
constexpr std::size_t kLargestChunk = 8192;

// The registered chunks of every live database, ordered by address. Never
// destroyed: databases may outlive static destruction's order.
std::vector<const StubPool::Chunk*>& Registry() {
  static auto* chunks = new std::vector<const StubPool::Chunk*>;
  return *chunks;
}

// The chunk of the last stub found live: runs of lookups mostly stay in one.
const StubPool::Chunk* gLastHit = nullptr;

std::uintptr_t Address(const void* p) { return reinterpret_cast<std::uintptr_t>(p); }

bool Holds(const StubPool::Chunk* chunk, std::uintptr_t p) {
  const std::uintptr_t begin = Address(chunk->stubs.get());
  return p >= begin && p - begin < chunk->capacity * sizeof(AcDbStub);
}

bool IsStubOf(const StubPool::Chunk* chunk, std::uintptr_t p) {
  const std::uintptr_t offset = p - Address(chunk->stubs.get());
  return offset % sizeof(AcDbStub) == 0 && offset / sizeof(AcDbStub) < chunk->used;
}

bool ByAddress(const StubPool::Chunk* a, const StubPool::Chunk* b) {
  return Address(a->stubs.get()) < Address(b->stubs.get());
}

void Register(StubPool::Chunk* chunk) {
  auto& r = Registry();
  r.insert(std::upper_bound(r.begin(), r.end(), chunk, ByAddress), chunk);
  chunk->registered = true;
}

void Unregister(StubPool::Chunk* chunk) {
  if (!chunk->registered) return;
  if (gLastHit == chunk) gLastHit = nullptr;
  auto& r = Registry();
  auto it = std::lower_bound(r.begin(), r.end(), chunk, ByAddress);
  if (it != r.end() && *it == chunk) r.erase(it);
  chunk->registered = false;
}

}  // namespace

StubPool::StubPool() = default;
StubPool::StubPool(StubPool&& other) noexcept = default;

StubPool& StubPool::operator=(StubPool&& other) {
  if (this != &other) {
    release();
    mChunks = std::move(other.mChunks);
  }
  return *this;
}

StubPool::~StubPool() { release(); }

void StubPool::release() {
  forget();
  for (auto& chunk : mChunks)
    for (std::size_t i = 0; i < chunk->used; ++i) chunk->stubs[i].object.reset();
  mChunks.clear();
}

AcDbStub* StubPool::make() {
  if (mChunks.empty() || mChunks.back()->used == mChunks.back()->capacity) {
    const std::size_t n = mChunks.empty() ? kFirstChunk : std::min(mChunks.back()->capacity * 2, kLargestChunk);
    mChunks.push_back(std::make_unique<Chunk>(n));
    Register(mChunks.back().get());
  }
  Chunk& chunk = *mChunks.back();
  return &chunk.stubs[chunk.used++];
}

void StubPool::forget() {
  for (auto& chunk : mChunks) Unregister(chunk.get());
}

bool IsLiveStub(const AcDbStub* stub) {
  if (!stub) return false;
  const std::uintptr_t p = Address(stub);
  if (gLastHit && Holds(gLastHit, p)) return IsStubOf(gLastHit, p);
  // The last chunk starting at or before the stub.
  const auto& r = Registry();
  auto it = std::upper_bound(r.begin(), r.end(), p,
                             [](std::uintptr_t a, const StubPool::Chunk* c) { return a < Address(c->stubs.get()); });
  if (it == r.begin()) return false;
  const StubPool::Chunk* chunk = *--it;
  if (!Holds(chunk, p) || !IsStubOf(chunk, p)) return false;
  gLastHit = chunk;
  return true;
}

void ForEachLiveStubImpl(void (*visit)(AcDbStub*, void*), void* context) {
  for (const StubPool::Chunk* chunk : Registry())
    for (std::size_t i = 0; i < chunk->used; ++i) visit(&chunk->stubs[i], context);
}

}  // namespace kelhost::db
