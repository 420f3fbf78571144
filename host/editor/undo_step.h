// One undo step: what the objects it touched were before it, and the
// header variables it changed; undoing it puts them back and gives the
// step that puts back what they replaced (REDO's).
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "db/stub.h"
#include "editor/undo_header.h"

namespace kelhost::editor::undo {

// One object as it was before a step: nothing for an object the step
// created (undoing the step erases it), else its erased flags and, unless
// the step left its groups as they were, its packed state. Bytes are
// allocated to size: [length 4][flags 1][state].
class SavedObject {
 public:
  static SavedObject Created(AcDbStub* stub);
  // The object's flags and state now; scratch is a reused buffer.
  static SavedObject Now(AcDbStub* stub, std::vector<std::uint8_t>& scratch);
  static SavedObject FlagsNow(AcDbStub* stub);

  AcDbStub* stub() const { return mStub; }
  bool created() const { return !mBytes; }

  // Puts the saved state back; returns what it replaced.
  SavedObject putBack(std::vector<std::uint8_t>& scratch) const;
  // As the step ends: false when the object is as saved (or was created
  // and erased again within the step), so the step needs nothing for it;
  // the packed state is dropped when only the flags changed.
  bool needed(std::vector<std::uint8_t>& scratch);
  // Merging steps: this (the earlier) stays, taking the later one's
  // groups when it held only flags.
  void absorb(SavedObject&& later);

 private:
  SavedObject(AcDbStub* stub, std::unique_ptr<std::uint8_t[]> bytes) : mStub(stub), mBytes(std::move(bytes)) {}
  static std::unique_ptr<std::uint8_t[]> Bytes(std::uint8_t flags, const std::uint8_t* state, std::size_t size);
  std::uint32_t length() const;
  std::uint8_t flags() const { return mBytes[4]; }
  bool hasState() const { return mBytes && length() > 1; }
  const std::uint8_t* state() const { return mBytes.get() + 5; }

  AcDbStub* mStub;
  std::unique_ptr<std::uint8_t[]> mBytes;
};

struct Step {
  enum Kind : std::uint8_t { kChanges, kMark, kGroupStart };
  Kind kind = kChanges;
  std::wstring name;
  std::vector<SavedObject> objects;  // in the order first touched
  std::unique_ptr<HeaderRecord> header;

  bool empty() const { return objects.empty() && !header; }
  // Puts back the objects (the last touched first), then the header of
  // db; returns the step that puts back what was replaced. scratch: a
  // buffer to reuse.
  Step undo(AcDbDatabase* db, std::vector<std::uint8_t>& scratch) const;
  // Drops what the step left as it was; false when nothing is left.
  bool compact(const db::DatabaseState& now, std::vector<std::uint8_t>& scratch);
  // Merges a later step into this one: the earliest state of each object
  // and of the header stays.
  void absorb(Step&& later);
};

}  // namespace kelhost::editor::undo
