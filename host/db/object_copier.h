// Copying objects from one drawing into another, as INSERT of a drawing
// and WBLOCK do: entities together with every record they name (layers
// and their linetypes, linetypes, text styles, dimension styles and their
// text styles, blocks and what those blocks hold) and the applications of
// their xdata, each reference translated to the target's object.
//
// A record whose name the target already has either stays the target's
// (Duplicates::kKeepTarget: INSERT merges so) or takes the source's state
// (kTakeSource: a drawing written by WBLOCK keeps the source's layer 0).
// Anonymous blocks (*U, *D, ...) always become new blocks with a free name
// of the same kind. Model space and paper space are never copied as
// blocks.
//
// Until commit() the copier can take everything back: if a copy fails
// halfway (or the caller gives up), the destructor erases what was made
// and restores what was changed, so the target is as it was.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "arx/dbdatabase.h"
#include "arx/dbents.h"
#include "arx/dbsymtb.h"
#include "arx/gemat3d.h"
#include "db/copy_translator.h"

namespace kelhost::db {

class ObjectCopier : private CopyTranslator {
 public:
  enum class Duplicates { kKeepTarget, kTakeSource };

  // Both databases must hold a drawing (their tables made).
  ObjectCopier(AcDbDatabase* source, AcDbDatabase* target, Duplicates duplicates);
  ~ObjectCopier() override;
  ObjectCopier(const ObjectCopier&) = delete;
  ObjectCopier& operator=(const ObjectCopier&) = delete;

  // Copies of the source entities (not erased, in order) appended to a
  // block of the target, each transformed by xform first.
  Acad::ErrorStatus copyEntities(const std::vector<AcDbObjectId>& entities, AcDbObjectId targetBlock,
                                 const AcGeMatrix3d& xform = AcGeMatrix3d::kIdentity);
  // A block of the target named name with copies of the entities, based at
  // origin: a new block, or the target's block of that name redefined (its
  // old entities erased, references to it kept). eInvalidInput for a
  // layout's block; eSelfReference when the source has a block of that
  // name (the copy would hold a reference to itself).
  Acad::ErrorStatus copyAsBlock(const std::vector<AcDbObjectId>& entities, const std::wstring& name,
                                const AcGePoint3d& origin, AcDbObjectId& block);
  // The target's record standing for a source record, copied when needed.
  Acad::ErrorStatus copyRecord(AcDbObjectId sourceRecord, AcDbObjectId& targetRecord);

  // The target's object for a source object copied or matched; null when
  // there is none.
  AcDbObjectId lookup(AcDbObjectId source) const;
  // Keeps what was copied: the copier no longer takes it back.
  void commit();

 private:
  // CopyTranslator: how the copies find their references.
  AcDbDatabase* target() const override { return mTarget; }
  AcDbObjectId record(AcDbObjectId targetTable, const wchar_t* name) override;
  AcDbObjectId reference(int code, AcDbObjectId source) override;
  bool application(const wchar_t* name) override;

  // Copies made ready to append (their references already in the target).
  Acad::ErrorStatus makeCopies(const std::vector<AcDbObjectId>& entities, const AcGeMatrix3d& xform,
                               std::vector<std::pair<AcDbObjectId, std::unique_ptr<AcDbEntity>>>& copies);
  Acad::ErrorStatus appendCopies(std::vector<std::pair<AcDbObjectId, std::unique_ptr<AcDbEntity>>>& copies,
                                 AcDbObjectId targetBlock);
  Acad::ErrorStatus newRecord(const AcDbSymbolTableRecord& source, AcDbObjectId targetTable, AcDbObjectId& made);
  Acad::ErrorStatus takeSourceState(const AcDbSymbolTableRecord& source, AcDbObjectId existing);
  // The block's live entities erased, to be brought back if the copy fails.
  Acad::ErrorStatus emptyBlock(AcDbObjectId block);
  // The object's state kept, to be restored if the copy fails.
  bool keepState(AcDbObjectId id);
  void failWith(Acad::ErrorStatus es);
  void takeBack();

  AcDbDatabase* mSource;
  AcDbDatabase* mTarget;
  Duplicates mDuplicates;
  std::unordered_map<AcDbStub*, AcDbObjectId> mMap;
  // The first failure met while a copy looked for its references.
  Acad::ErrorStatus mStatus = Acad::eOk;
  // What to take back: objects made, states changed, entities erased.
  std::vector<AcDbObjectId> mMade;
  std::vector<std::pair<AcDbObjectId, resbuf*>> mChanged;
  std::vector<AcDbObjectId> mErased;
};

}  // namespace kelhost::db
