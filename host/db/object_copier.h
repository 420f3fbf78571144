// The one cloning mechanism: INSERT of a drawing, WBLOCK, deepCloneObjects,
// wblockCloneObjects and the objects' own deepClone and wblockClone.
//
// Within one drawing (Mode::kDeep) objects are copied with what they own
// (a block's entities, an object's extension dictionary and its entries);
// the records and other objects they merely point at stay theirs. Into
// another drawing (Mode::kWblock) the records the copies name come along
// too (layers and their linetypes, linetypes, text styles, dimension
// styles and their text styles, blocks and what they hold) and so do the
// applications of their xdata. A record whose name the target already has
// is treated as the duplicate-record cloning says: kDrcIgnore keeps the
// target's (INSERT merges so), kDrcReplace gives the target's record the
// source's state (its id stays: whatever refers to it now sees the
// source's state), kDrcMangleName and kDrcXrefMangleName bring every
// incoming record under a new name ($0$NAME, DRAWING$0$NAME, the number
// rising until the name is free), kDrcUnmangleName takes such a $n$
// prefix off and then keeps the target's record as kDrcIgnore does. Layer
// 0 and the linetypes ByBlock, ByLayer and Continuous are never renamed,
// and under the renaming modes stand for the target's own. Anonymous
// blocks (*U, *D, ...) always become new blocks with a free name of their
// kind; model and paper space stand for the target's.
//
// Every object copied or matched goes into the id map (key the source,
// value the target's object). References among the copies are translated
// through it: as each copy is read where the map already knows the
// object, and at the end (translate()) for the copies that pointed at
// objects not yet copied then. What the map does not know stays as it is
// within one drawing and becomes null in another.
//
// Until commit() the copier can take everything back: if a copy fails
// halfway (or the caller gives up), takeBack() (and the destructor)
// erases what was made and restores what was changed, so the target is as
// it was.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "arx/dbdatabase.h"
#include "arx/dbdict.h"
#include "arx/dbents.h"
#include "arx/dbidmap.h"
#include "arx/dbsymtb.h"
#include "arx/gemat3d.h"
#include "db/copy_translator.h"

namespace kelhost::db {

class ObjectCopier : private CopyTranslator {
 public:
  enum class Mode { kDeep, kWblock };

  // Both databases must hold a drawing (their tables made). The map
  // receives the pairs; it must outlive the copier.
  ObjectCopier(AcDbDatabase* source, AcDbDatabase* target, Mode mode, AcDb::DuplicateRecordCloning drc,
               AcDbIdMapping& map);
  ~ObjectCopier() override;
  ObjectCopier(const ObjectCopier&) = delete;
  ObjectCopier& operator=(const ObjectCopier&) = delete;

  // The operation a map records: the drawings, the kind and the duplicate
  // rule it was started with; the copier of a call whose translation was
  // deferred, kept in the map until the next call takes it.
  static void start(AcDbIdMapping& map, AcDbDatabase* source, AcDbDatabase* target, AcDb::DeepCloneType context,
                    AcDb::DuplicateRecordCloning drc);
  static std::unique_ptr<ObjectCopier> takePending(AcDbIdMapping& map);
  static void keepPending(AcDbIdMapping& map, std::unique_ptr<ObjectCopier> copier);

  AcDbDatabase* source() const { return mSource; }
  AcDbDatabase* targetDatabase() const { return mTarget; }
  Mode mode() const { return mMode; }

  // The objects asked for (all of the source), cloned into owner (of the
  // target): entities into a block table record, records into a table of
  // their kind, other objects into a dictionary under the key their own
  // dictionary gives them. eWasErased for an erased object,
  // eWrongObjectType for one the owner cannot hold, eInvalidOwnerObject for
  // an owner that holds nothing.
  Acad::ErrorStatus clonePrimaries(const std::vector<AcDbObjectId>& ids, AcDbObjectId owner);
  // One object cloned into an owner the caller has open for write (a
  // block table record, a symbol table, a dictionary): the clone stays
  // open for write. With any other owner (or none) the clone is made
  // outside the database for the caller to add. Only for one object.
  Acad::ErrorStatus cloneOne(const AcDbObject& source, AcDbObject* openOwner, bool primary, AcDbObject*& clone);

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
  Acad::ErrorStatus copyRecord(AcDbObjectId sourceRecord, AcDbObjectId& targetRecord, bool primary = false);

  // A clone made outside any database (cloneOne with no owner) of a source
  // object, about to join the target: what it names is brought into the
  // target and its references translated.
  Acad::ErrorStatus adopt(AcDbObject& clone);

  // Translates the references of the copies that pointed at objects not
  // copied yet when they were made.
  Acad::ErrorStatus translate();

  // The target's object for a source object copied or matched; null when
  // there is none.
  AcDbObjectId lookup(AcDbObjectId source) const;
  // Keeps what was copied: the copier no longer takes it back.
  void commit();
  // Erases what was made, restores what was changed, and forgets the
  // pairs this copier put in the map.
  void takeBack();

 private:
  // CopyTranslator: how the copies find their references.
  AcDbDatabase* target() const override { return mTarget; }
  AcDbObjectId record(AcDbObjectId targetTable, const wchar_t* name) override;
  AcDbObjectId reference(int code, AcDbObjectId source) override;
  bool application(const wchar_t* name) override;

  using Copies = std::vector<std::pair<AcDbObjectId, std::unique_ptr<AcDbEntity>>>;
  // Copies made ready to append (their references already in the target
  // as far as the map knows them); which of them still need translating.
  Acad::ErrorStatus makeCopies(const std::vector<AcDbObjectId>& entities, const AcGeMatrix3d& xform, Copies& copies,
                               std::vector<bool>& unresolved);
  Acad::ErrorStatus appendCopies(Copies& copies, const std::vector<bool>& unresolved, AcDbBlockTableRecord* block,
                                 bool primary);
  Acad::ErrorStatus appendCopies(Copies& copies, const std::vector<bool>& unresolved, AcDbObjectId targetBlock,
                                 bool primary);
  // A copy of a non-entity object: a dictionary without its entries (they
  // are cloned into it after); whether it still needs translating.
  Acad::ErrorStatus copyObject(const AcDbObject& source, std::unique_ptr<AcDbObject>& copy, bool& unresolved);
  // What an object owns, cloned for its clone (open for write): its
  // extension dictionary; a dictionary's entries.
  Acad::ErrorStatus cloneOwned(const AcDbObject& source, AcDbObject& clone);
  Acad::ErrorStatus cloneEntries(const AcDbDictionary& source, AcDbDictionary& clone);
  // A source object into a dictionary of the target (open for write) under
  // key, the dictionary's duplicate rule applied.
  Acad::ErrorStatus cloneIntoDictionary(const AcDbObject& source, AcDbDictionary& owner, const std::wstring& key,
                                        bool primary, AcDbObjectId& made);
  Acad::ErrorStatus newRecord(const AcDbSymbolTableRecord& source, AcDbObjectId targetTable, const std::wstring& name,
                              bool primary, AcDbObjectId& made);
  Acad::ErrorStatus takeSourceState(const AcDbSymbolTableRecord& source, AcDbObjectId existing);
  // The name an incoming record takes under the renaming modes.
  std::wstring mangledName(AcDbObjectId targetTable, const std::wstring& name) const;
  // The block's live entities erased, to be brought back if the copy fails.
  Acad::ErrorStatus emptyBlock(AcDbObjectId block);
  // The object's state kept, to be restored if the copy fails.
  bool keepState(AcDbObjectId id);
  void pair(AcDbObjectId key, AcDbObjectId value, bool cloned, bool primary);
  void made(AcDbObjectId id, bool unresolved);
  void failWith(Acad::ErrorStatus es);

  AcDbDatabase* mSource;
  AcDbDatabase* mTarget;
  Mode mMode;
  AcDb::DuplicateRecordCloning mDrc;
  AcDbIdMapping& mMap;
  // The first failure met while a copy looked for its references.
  Acad::ErrorStatus mStatus = Acad::eOk;
  // Set when the copy being read kept a reference the map did not know.
  bool mUnresolved = false;
  // Reading the copies again at the end: only the map translates.
  bool mTranslating = false;
  // Copies to translate at the end.
  std::vector<AcDbObjectId> mPending;
  // What to take back: objects made, states changed, entities erased,
  // pairs put in the map.
  std::vector<AcDbObjectId> mMade;
  std::vector<std::pair<AcDbObjectId, resbuf*>> mChanged;
  std::vector<AcDbObjectId> mErased;
  std::vector<AcDbObjectId> mKeys;
};

// Clones made outside any database from an object of some drawing (the
// objects' deepClone with an owner that cannot hold them): when one joins
// another drawing (a table's add, a block's appendAcDbEntity, a
// dictionary's setAt), what it names comes along. Forget is the object's
// destructor's.
void RememberForeignClone(const AcDbObject* clone, AcDbDatabase* source);
void ForgetForeignClone(const AcDbObject* clone);
// Called as object joins db: translates a remembered clone of another
// drawing (kDrcIgnore for the records it names). eOk for anything else.
Acad::ErrorStatus AdoptForeignClone(AcDbObject* object, AcDbDatabase* db);

}  // namespace kelhost::db
