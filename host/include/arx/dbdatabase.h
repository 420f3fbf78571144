// AcDbDatabase: one drawing. A new database holds what a new drawing has:
// the nine symbol tables with their standard records, the named-object
// dictionary with its standard entries, and the header variables.
#pragma once

#include <memory>

#include "dbidmap.h"
#include "dbmain.h"
#include "gemat3d.h"

// Share modes of readDwgFile (the C library's names on the platform).
#ifndef _SH_DENYRW
#define _SH_DENYRW 0x10
#define _SH_DENYWR 0x20
#define _SH_DENYRD 0x30
#define _SH_DENYNO 0x40
#endif

class AcDbSymbolTable;
class AcDbBlockTable;
class AcDbLayerTable;
class AcDbLinetypeTable;
class AcDbTextStyleTable;
class AcDbDimStyleTable;
class AcDbViewTable;
class AcDbUCSTable;
class AcDbViewportTable;
class AcDbRegAppTable;
class AcDbDictionary;

namespace kelhost::db {
struct DatabaseState;
}

class AcDbDatabase : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbDatabase);
  // With buildDefaultDrawing the database holds a new drawing's contents;
  // without, it is empty (for a reader to fill).
  explicit AcDbDatabase(bool buildDefaultDrawing = true, bool noDocument = false);
  ~AcDbDatabase() override;
  AcDbDatabase(const AcDbDatabase&) = delete;
  AcDbDatabase& operator=(const AcDbDatabase&) = delete;

  Acad::ErrorStatus getBlockTable(AcDbBlockTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getLayerTable(AcDbLayerTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getLinetypeTable(AcDbLinetypeTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getTextStyleTable(AcDbTextStyleTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getDimStyleTable(AcDbDimStyleTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getViewTable(AcDbViewTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getUCSTable(AcDbUCSTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getViewportTable(AcDbViewportTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getRegAppTable(AcDbRegAppTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getSymbolTable(AcDbBlockTable*& t, AcDb::OpenMode m = AcDb::kForRead) { return getBlockTable(t, m); }
  Acad::ErrorStatus getSymbolTable(AcDbLayerTable*& t, AcDb::OpenMode m = AcDb::kForRead) { return getLayerTable(t, m); }
  Acad::ErrorStatus getSymbolTable(AcDbLinetypeTable*& t, AcDb::OpenMode m = AcDb::kForRead) { return getLinetypeTable(t, m); }
  Acad::ErrorStatus getSymbolTable(AcDbTextStyleTable*& t, AcDb::OpenMode m = AcDb::kForRead) { return getTextStyleTable(t, m); }
  Acad::ErrorStatus getSymbolTable(AcDbDimStyleTable*& t, AcDb::OpenMode m = AcDb::kForRead) { return getDimStyleTable(t, m); }
  Acad::ErrorStatus getSymbolTable(AcDbViewTable*& t, AcDb::OpenMode m = AcDb::kForRead) { return getViewTable(t, m); }
  Acad::ErrorStatus getSymbolTable(AcDbUCSTable*& t, AcDb::OpenMode m = AcDb::kForRead) { return getUCSTable(t, m); }
  Acad::ErrorStatus getSymbolTable(AcDbViewportTable*& t, AcDb::OpenMode m = AcDb::kForRead) { return getViewportTable(t, m); }
  Acad::ErrorStatus getSymbolTable(AcDbRegAppTable*& t, AcDb::OpenMode m = AcDb::kForRead) { return getRegAppTable(t, m); }
  Acad::ErrorStatus getNamedObjectsDictionary(AcDbDictionary*& dict, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getGroupDictionary(AcDbDictionary*& dict, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getLayoutDictionary(AcDbDictionary*& dict, AcDb::OpenMode mode = AcDb::kForRead);

  AcDbObjectId blockTableId() const;
  AcDbObjectId layerTableId() const;
  AcDbObjectId linetypeTableId() const;
  AcDbObjectId textStyleTableId() const;
  AcDbObjectId dimStyleTableId() const;
  AcDbObjectId viewTableId() const;
  AcDbObjectId UCSTableId() const;
  AcDbObjectId viewportTableId() const;
  AcDbObjectId regAppTableId() const;
  AcDbObjectId namedObjectsDictionaryId() const;
  AcDbObjectId groupDictionaryId() const;
  AcDbObjectId layoutDictionaryId() const;
  AcDbObjectId byLayerLinetype() const;
  AcDbObjectId byBlockLinetype() const;
  AcDbObjectId continuousLinetype() const;
  AcDbObjectId layerZero() const;
  // The block of the current space (model space unless TILEMODE is 0).
  AcDbObjectId currentSpaceId() const;
  AcDbObjectId modelSpaceId() const;
  AcDbObjectId paperSpaceId() const;

  // Adds an object without an owner; it stays open for write for the
  // caller to close. eAlreadyInDb for an object of a database.
  Acad::ErrorStatus addAcDbObject(AcDbObject* object);
  Acad::ErrorStatus addAcDbObject(AcDbObjectId& id, AcDbObject* object);
  // The id of a handle (erased objects included). eUnknownHandle when no
  // object has it (createIfNotFound is not supported: eNotApplicable).
  Acad::ErrorStatus getAcDbObjectId(AcDbObjectId& retId, bool createIfNotFound, const AcDbHandle& objHandle,
                                    Adesk::UInt32 xRefId = 0);
  // The next handle to be given.
  AcDbHandle handseed() const;

  // Copies between drawings, as INSERT and WBLOCK make them: entities with
  // the layers, linetypes, text styles, dimension styles, blocks and
  // registered applications they use, every reference translated to the
  // receiving drawing's object. A database made without its drawing
  // (AcDbDatabase(false)) receives a new drawing's contents first.
  //
  // insert: the model space of pDb becomes the block pBlockName of this
  // drawing, based at pDb's INSBASE; a block of that name already here is
  // redefined (its references stay and show the new contents). Records
  // whose names this drawing already has stay as they are; anonymous
  // blocks are renamed. pDb is left as it was whatever
  // preserveSourceDatabase says. eInvalidInput for a bad name, a null,
  // empty or same database, or a layout's block; eSelfReference when pDb
  // has a block named pBlockName. On failure nothing has changed here.
  Acad::ErrorStatus insert(AcDbObjectId& blockId, const ACHAR* pBlockName, AcDbDatabase* pDb,
                           bool preserveSourceDatabase = true);
  // The model space of pDb copied into this drawing's model space, each
  // entity transformed by xform (the entities of a drawing inserted
  // exploded).
  Acad::ErrorStatus insert(const AcGeMatrix3d& xform, AcDbDatabase* pDb, bool preserveSourceDatabase = true);
  // wblock: a new drawing (the caller deletes it) holding copies of this
  // drawing's entities in its model space, with what they use; records of
  // the same name as the new drawing's standard ones (layer 0, Standard,
  // ...) take this drawing's state. From entities of one space of this
  // drawing (eWrongDatabase for another drawing's, eNotAnEntity for other
  // objects), INSBASE basePoint; from a block (not a layout's), INSBASE
  // its origin; or the whole drawing: model and paper space, the header
  // variables and the current layer and styles (records no entity or
  // variable uses are left out). pOutputDb is null on failure.
  Acad::ErrorStatus wblock(AcDbDatabase*& pOutputDb, const AcDbObjectIdArray& outObjIds, const AcGePoint3d& basePoint);
  Acad::ErrorStatus wblock(AcDbDatabase*& pOutputDb, AcDbObjectId blockId);
  Acad::ErrorStatus wblock(AcDbDatabase*& pOutputDb);

  // Cloning (dbidmap.h; the behaviour of records whose names the receiving
  // drawing has is the one db/object_copier.h describes).
  //
  // deepCloneObjects: copies of objects of this drawing, with what they
  // own (a block's entities, an extension dictionary and its entries), put
  // in owner, of this drawing: entities into a block table record, records
  // into their table (a record keeps its name, so only an anonymous block
  // can be cloned beside its original: eDuplicateRecordName), objects into
  // a dictionary under their own key (eDuplicateKey when it has it). What
  // the copies point at and is not cloned stays as it is.
  //
  // wblockCloneObjects: copies of objects of one drawing (this one, or the
  // drawing this one receives into: either may be the one called) put in
  // owner of another, with the records they name and what those hold
  // (layers and their linetypes, text styles, dimension styles and their
  // text styles, blocks, dimension blocks, registered applications), each
  // record whose name owner's drawing has handled as drc says. References
  // to what was not copied become null.
  //
  // Both: every object copied or matched is paired in idMap (the objects
  // asked for marked primary); iterate it with AcDbIdMappingIter. With
  // deferXlation the references among copies wait for the next call with
  // the same map (the last call leaves it false). A map that served other
  // drawings is refused (eInvalidIdMap). eWrongDatabase for objects of
  // different drawings or an owner of the wrong one; eWasErased for an
  // erased object; eWrongObjectType for an object the owner cannot hold;
  // eInvalidOwnerObject for an owner that holds nothing. On any failure
  // the receiving drawing is as it was before the first call of the
  // operation: nothing half-copied is left.
  Acad::ErrorStatus deepCloneObjects(AcDbObjectIdArray& objectIds, AcDbObjectId& owner, AcDbIdMapping& idMap,
                                     bool deferXlation = false);
  Acad::ErrorStatus wblockCloneObjects(AcDbObjectIdArray& objectIds, AcDbObjectId& owner, AcDbIdMapping& idMap,
                                       AcDb::DuplicateRecordCloning drc, bool deferXlation = false);
  // Takes back an operation whose translation was deferred.
  void abortDeepClone(AcDbIdMapping& idMap);

  // Drawing files (the host keeps drawings as DXF). readDwgFile replaces
  // this database's contents with the drawing read; a ".dwg" or ".dwt"
  // name falls back to the ".dxf" of the same name. The share mode, the
  // code-page conversion and the password have nothing to do for a DXF.
  // eFileNotFound, or eBadDwgHeader for a malformed file (the database is
  // then unchanged). saveAs writes DXF 2013 atomically (eFileAccessErr
  // when it cannot). getFilename: the file read or last saved (empty for a
  // drawing made in memory).
  Acad::ErrorStatus readDwgFile(const ACHAR* fileName, int shmode = _SH_DENYWR, bool bAllowCPConversion = false,
                                const wchar_t* wszPassword = nullptr);
  Acad::ErrorStatus saveAs(const ACHAR* fileName);
  Acad::ErrorStatus getFilename(const ACHAR*& pOutput) const;

  // Header variables that objects use.
  AcDbObjectId clayer() const;
  Acad::ErrorStatus setClayer(AcDbObjectId layer);
  AcDbObjectId celtype() const;
  Acad::ErrorStatus setCeltype(AcDbObjectId linetype);
  Adesk::UInt16 cecolorIndex() const;
  Acad::ErrorStatus setCecolorIndex(Adesk::UInt16 index);
  double celtscale() const;
  Acad::ErrorStatus setCeltscale(double scale);
  AcDb::LineWeight celweight() const;
  Acad::ErrorStatus setCelweight(AcDb::LineWeight weight);
  AcDbObjectId textstyle() const;
  Acad::ErrorStatus setTextstyle(AcDbObjectId style);
  AcDbObjectId dimstyle() const;
  Acad::ErrorStatus setDimstyle(AcDbObjectId style);
  double textsize() const;
  Acad::ErrorStatus setTextsize(double size);
  double ltscale() const;
  Acad::ErrorStatus setLtscale(double scale);
  bool tilemode() const;
  Acad::ErrorStatus setTilemode(bool mode);

  kelhost::db::DatabaseState& state() { return *mState; }
  const kelhost::db::DatabaseState& state() const { return *mState; }

 private:
  std::unique_ptr<kelhost::db::DatabaseState> mState;
};
