// A new drawing's contents: the nine symbol tables with their standard
// records, the named-object dictionary with its standard entries (the
// layouts "Model" and "Layout1" among them), and the current layer,
// linetype, text style and dimension style. The drawing is metric (ISO-25
// is the current dimension style).
#include "arx/dbdict.h"
#include "arx/dbsymtb.h"
#include "db/database_state.h"
#include "db/dimstyle_vars.h"
#include "db/standard_objects.h"
#include "dxf/access.h"

namespace kelhost::db {
namespace {

AcDbObjectId AddTable(AcDbDatabase* db, AcDbSymbolTable* table) {
  AcDbObjectId id;
  db->addAcDbObject(id, table);
  table->close();
  return id;
}

// Adds the record (named) to the table; a hook may set it up while it is
// still open for write.
template <class Record, class Setup>
AcDbObjectId AddRecord(AcDbObjectId tableId, const wchar_t* name, Setup setup) {
  AcDbSymbolTable* table = nullptr;
  AcDbObjectId id;
  if (acdbOpenObject(table, tableId, AcDb::kForWrite) != Acad::eOk) return id;
  auto* record = new Record;
  record->setName(name);
  if (table->add(id, record) == Acad::eOk) {
    setup(record);
    record->close();
  } else {
    delete record;
  }
  table->close();
  return id;
}

template <class Record>
AcDbObjectId AddRecord(AcDbObjectId tableId, const wchar_t* name) {
  return AddRecord<Record>(tableId, name, [](Record*) {});
}

AcDbObjectId AddDictionary(AcDbObjectId ownerId, const wchar_t* key) {
  AcDbDictionary* owner = nullptr;
  AcDbObjectId id;
  if (acdbOpenObject(owner, ownerId, AcDb::kForWrite) != Acad::eOk) return id;
  auto* dict = new AcDbDictionary;
  if (owner->setAt(key, dict, id) == Acad::eOk) dict->close();
  else delete dict;
  owner->close();
  return id;
}

}  // namespace

void BuildDefaultDrawing(AcDbDatabase* db) {
  DatabaseState& s = db->state();
  auto table = [&s](Table t) -> AcDbObjectId& { return s.tables[static_cast<int>(t)]; };
  table(Table::kBlock) = AddTable(db, new AcDbBlockTable);
  table(Table::kLayer) = AddTable(db, new AcDbLayerTable);
  table(Table::kTextStyle) = AddTable(db, new AcDbTextStyleTable);
  table(Table::kLinetype) = AddTable(db, new AcDbLinetypeTable);
  table(Table::kView) = AddTable(db, new AcDbViewTable);
  table(Table::kUcs) = AddTable(db, new AcDbUCSTable);
  table(Table::kViewport) = AddTable(db, new AcDbViewportTable);
  table(Table::kRegApp) = AddTable(db, new AcDbRegAppTable);
  table(Table::kDimStyle) = AddTable(db, new AcDbDimStyleTable);

  auto* nod = new AcDbDictionary;
  db->addAcDbObject(s.namedObjects, nod);
  nod->close();

  s.byBlock = AddRecord<AcDbLinetypeTableRecord>(table(Table::kLinetype), L"ByBlock");
  s.byLayer = AddRecord<AcDbLinetypeTableRecord>(table(Table::kLinetype), L"ByLayer");
  s.continuous = AddRecord<AcDbLinetypeTableRecord>(table(Table::kLinetype), L"Continuous",
                                                    [](AcDbLinetypeTableRecord* r) { r->setComments(L"Solid line"); });
  const AcDbObjectId continuous = s.continuous;
  s.layerZero = AddRecord<AcDbLayerTableRecord>(table(Table::kLayer), L"0", [continuous](AcDbLayerTableRecord* r) {
    r->setLinetypeObjectId(continuous);
  });
  s.textstyle = AddRecord<AcDbTextStyleTableRecord>(table(Table::kTextStyle), L"Standard",
                                                   [](AcDbTextStyleTableRecord* r) { r->setFileName(L"txt"); });
  const AcDbObjectId standardText = s.textstyle;
  AddRecord<AcDbDimStyleTableRecord>(table(Table::kDimStyle), L"Standard",
                                     [standardText](AcDbDimStyleTableRecord* r) { r->setDimtxsty(standardText); });
  s.dimstyle = AddRecord<AcDbDimStyleTableRecord>(table(Table::kDimStyle), L"ISO-25",
                                                  [standardText](AcDbDimStyleTableRecord* r) {
                                                    UseMetricDimDefaults(r);
                                                    r->setDimtxsty(standardText);
                                                  });
  s.modelSpace = AddRecord<AcDbBlockTableRecord>(table(Table::kBlock), ACDB_MODEL_SPACE);
  s.paperSpace = AddRecord<AcDbBlockTableRecord>(table(Table::kBlock), ACDB_PAPER_SPACE);
  AddRecord<AcDbViewportTableRecord>(table(Table::kViewport), L"*Active");
  AddRecord<AcDbRegAppTableRecord>(table(Table::kRegApp), L"ACAD");

  // Dictionaries the program keeps its styles and settings in; the host
  // leaves them empty (no materials, visual styles, scales or table styles
  // are drawn with).
  for (const wchar_t* key : {L"ACAD_COLOR", L"ACAD_MATERIAL", L"ACAD_MLEADERSTYLE", L"ACAD_PLOTSETTINGS",
                             L"ACAD_SCALELIST", L"ACAD_TABLESTYLE", L"ACAD_VISUALSTYLE"})
    AddDictionary(s.namedObjects, key);
  EnsureStandardObjects(db);

  s.clayer = s.layerZero;
  s.celtype = s.byLayer;
}

}  // namespace kelhost::db
