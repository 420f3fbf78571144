#include "editor/undo_step.h"

#include <cstdio>
#include <cstring>
#include <unordered_map>

#include "arx/dbsymtb.h"
#include "db/database_state.h"
#include "dxf/access.h"
#include "dxf/packed_state.h"
#include "kelhost/text.h"

namespace kelhost::editor::undo {
namespace {

constexpr std::uint8_t kErased = 1, kErasedWithOwner = 2;

std::uint8_t FlagsOf(const AcDbStub* stub) {
  return static_cast<std::uint8_t>((stub->erased ? kErased : 0) | (stub->erasedWithOwner ? kErasedWithOwner : 0));
}

void SetFlags(AcDbStub* stub, std::uint8_t flags) {
  stub->erased = (flags & kErased) != 0;
  stub->erasedWithOwner = (flags & kErasedWithOwner) != 0;
}

// A saved state that no longer reads back is a fault of the class's
// description, not of the user's input: say so where developers look.
void ReportUnreadable(const AcDbStub* stub) {
  const AcRxClass* cls = stub->object ? stub->object->isA() : nullptr;
  std::fprintf(stderr, "kelcad: undo could not restore object %llX (%s)\n",
               static_cast<unsigned long long>(stub->handle), ToUtf8(cls ? cls->dxfName() : nullptr).c_str());
}

}  // namespace

std::unique_ptr<std::uint8_t[]> SavedObject::Bytes(std::uint8_t flags, const std::uint8_t* state, std::size_t size) {
  const auto length = static_cast<std::uint32_t>(size + 1);
  std::unique_ptr<std::uint8_t[]> bytes(new std::uint8_t[4 + length]);
  std::memcpy(bytes.get(), &length, 4);
  bytes[4] = flags;
  if (size) std::memcpy(bytes.get() + 5, state, size);
  return bytes;
}

std::uint32_t SavedObject::length() const {
  std::uint32_t n;
  std::memcpy(&n, mBytes.get(), 4);
  return n;
}

SavedObject SavedObject::Created(AcDbStub* stub) { return SavedObject(stub, nullptr); }

SavedObject SavedObject::Now(AcDbStub* stub, std::vector<std::uint8_t>& scratch) {
  if (!stub->object || !dxf::PackState(stub->object.get(), scratch)) return FlagsNow(stub);
  return SavedObject(stub, Bytes(FlagsOf(stub), scratch.data(), scratch.size()));
}

SavedObject SavedObject::FlagsNow(AcDbStub* stub) { return SavedObject(stub, Bytes(FlagsOf(stub), nullptr, 0)); }

SavedObject SavedObject::putBack(std::vector<std::uint8_t>& scratch) const {
  AcDbObject* object = mStub->object.get();
  // Whoever follows the drawing's changes (the extents) hears of this one
  // as of any write.
  if (object) db::NotifyBeforeWrite(object);
  auto* record = AcDbSymbolTableRecord::cast(object);
  const std::wstring previousName = record ? dxf::Access::name(record) : std::wstring();
  SavedObject replaced = hasState() ? Now(mStub, scratch) : FlagsNow(mStub);
  if (created()) {
    SetFlags(mStub, kErased);
  } else {
    if (hasState() && object && !dxf::UnpackState(object, state(), length() - 1)) ReportUnreadable(mStub);
    SetFlags(mStub, flags());
  }
  if (record) dxf::Access::reindex(record, previousName);
  return replaced;
}

bool SavedObject::needed(std::vector<std::uint8_t>& scratch) {
  if (created()) return !mStub->erased;
  const bool sameFlags = flags() == FlagsOf(mStub);
  if (hasState()) {
    const bool packed = mStub->object && dxf::PackState(mStub->object.get(), scratch);
    if (packed && scratch.size() == length() - 1 && std::memcmp(scratch.data(), state(), scratch.size()) == 0) {
      if (sameFlags) return false;
      mBytes = Bytes(flags(), nullptr, 0);
    }
    return true;
  }
  return !sameFlags;
}

void SavedObject::absorb(SavedObject&& later) {
  if (created() || hasState() || !later.hasState()) return;
  mBytes = Bytes(flags(), later.state(), later.length() - 1);
}

Step Step::undo(AcDbDatabase* db, std::vector<std::uint8_t>& scratch) const {
  Step redo;
  redo.kind = kind;
  redo.name = name;
  redo.objects.reserve(objects.size());
  for (auto it = objects.rbegin(); it != objects.rend(); ++it) redo.objects.push_back(it->putBack(scratch));
  if (header && db) redo.header = std::make_unique<HeaderRecord>(header->putBack(db));
  return redo;
}

bool Step::compact(const db::DatabaseState& now, std::vector<std::uint8_t>& scratch) {
  std::size_t kept = 0;
  for (std::size_t i = 0; i < objects.size(); ++i) {
    if (!objects[i].needed(scratch)) continue;
    if (kept != i) objects[kept] = std::move(objects[i]);
    ++kept;
  }
  objects.erase(objects.begin() + static_cast<std::ptrdiff_t>(kept), objects.end());
  objects.shrink_to_fit();
  if (header && !header->keepChanges(now)) header.reset();
  return !empty();
}

void Step::absorb(Step&& later) {
  std::unordered_map<AcDbStub*, std::size_t> at;
  at.reserve(objects.size() + later.objects.size());
  for (std::size_t i = 0; i < objects.size(); ++i) at.emplace(objects[i].stub(), i);
  for (SavedObject& saved : later.objects) {
    auto found = at.find(saved.stub());
    if (found != at.end()) {
      objects[found->second].absorb(std::move(saved));
    } else {
      at.emplace(saved.stub(), objects.size());
      objects.push_back(std::move(saved));
    }
  }
  if (!header) header = std::move(later.header);
  else if (later.header) header->absorb(std::move(*later.header));
}

}  // namespace kelhost::editor::undo
