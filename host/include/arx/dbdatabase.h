// AcDbDatabase: one drawing. A new database holds what a new drawing has:
// the nine symbol tables with their standard records, the named-object
// dictionary with its standard entries, and the header variables.
#pragma once

#include <memory>

#include "dbmain.h"

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

  // Drawing files (the host keeps drawings as DXF). readDwgFile replaces
  // this database's contents with the drawing read; a ".dwg" name falls
  // back to the ".dxf" of the same name. eFileNotFound, or eBadDwgHeader
  // for a malformed file (the database is then unchanged). saveAs writes
  // DXF 2013 atomically (eFileAccessErr when it cannot).
  Acad::ErrorStatus readDwgFile(const ACHAR* fileName);
  Acad::ErrorStatus saveAs(const ACHAR* fileName);

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
