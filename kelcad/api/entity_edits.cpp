#include "kelcad/api/entity_edits.h"

namespace KEL {

bool Erase(AcDbObjectId id) {
  AcDbEntity* entity = nullptr;
  if (acdbOpenObject(entity, id, AcDb::kForWrite) != Acad::eOk) return false;
  const Acad::ErrorStatus es = entity->erase(true);
  entity->close();
  return es == Acad::eOk;
}

int Erase(const AcArray<AcDbObjectId>& ids) {
  int failed = 0;
  for (int i = 0; i < ids.length(); ++i)
    if (!Erase(ids[i])) ++failed;
  return failed;
}

bool Highlight(AcDbObjectId id, const AcDbFullSubentPath& path, int highlightAll) {
  AcDbEntity* entity = nullptr;
  if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) return false;
  const Acad::ErrorStatus es = entity->highlight(path, highlightAll != 0);
  entity->close();
  return es == Acad::eOk;
}

bool Unhighlight(AcDbObjectId id, const AcDbFullSubentPath& path, int highlightAll) {
  AcDbEntity* entity = nullptr;
  if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) return false;
  const Acad::ErrorStatus es = entity->unhighlight(path, highlightAll != 0);
  entity->close();
  return es == Acad::eOk;
}

bool Visible(AcDbObjectId id, bool show) {
  AcDbEntity* entity = nullptr;
  if (acdbOpenObject(entity, id, AcDb::kForWrite) != Acad::eOk) return false;
  const Acad::ErrorStatus es = entity->setVisibility(show ? AcDb::kVisible : AcDb::kInvisible);
  entity->close();
  return es == Acad::eOk;
}

bool IsVisible(AcDbObjectId id, bool& visible) {
  AcDbEntity* entity = nullptr;
  if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) return false;
  visible = entity->visibility() == AcDb::kVisible;
  entity->close();
  return true;
}

bool IsErased(AcDbObjectId id, bool& erased) {
  AcDbEntity* entity = nullptr;
  if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) return false;
  erased = entity->isErased();
  entity->close();
  return true;
}

bool GetHandle(AcDbObjectId id, CString& handle) {
  AcDbObject* object = nullptr;
  if (acdbOpenObject(object, id, AcDb::kForRead) != Acad::eOk) return false;
  ACHAR text[32] = L"";
  object->objectHandle().getIntoAsciiBuffer(text, 32);
  object->close();
  handle = text;
  return true;
}

bool SetEntColorIndex(AcDbObjectId id, Adesk::UInt16 colour) {
  AcDbEntity* entity = nullptr;
  // Both opens are tried first, so that an entity held by a reader is
  // refused before anything changes.
  if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) return false;
  entity->close();
  if (acdbOpenObject(entity, id, AcDb::kForWrite) != Acad::eOk) return false;
  entity->close();
  if (acdbOpenObject(entity, id, AcDb::kForWrite) != Acad::eOk) return false;
  const Acad::ErrorStatus es = entity->setColorIndex(colour, true);
  entity->close();
  return es == Acad::eOk;
}

Acad::ErrorStatus SetEntTxtHigh(AcDbObjectId id, double height) {
  AcDbDimension* dim = nullptr;
  Acad::ErrorStatus es = acdbOpenObject(dim, id, AcDb::kForWrite);
  if (es != Acad::eOk) return es;
  es = dim->setDimtxt(height);
  dim->close();
  return es;
}

Acad::ErrorStatus SetEntTxtStyle(AcDbObjectId id, AcDbObjectId style) {
  AcDbDimension* dim = nullptr;
  Acad::ErrorStatus es = acdbOpenObject(dim, id, AcDb::kForWrite);
  if (es != Acad::eOk) return es;
  es = dim->setDimtxsty(style);
  dim->close();
  return es;
}

Acad::ErrorStatus SetEntTxtStyle(AcDbObjectId id, CString styleName) {
  AcDbObjectId style;
  const Acad::ErrorStatus es = GetTxtStyleIDbyName(styleName, style);
  if (es != Acad::eOk) return es;
  return SetEntTxtStyle(id, style);
}

namespace {

// The first record of the table whose name equals name without regard to
// case; a name not found leaves id null and answers eOk.
template <class Table>
Acad::ErrorStatus FindRecord(const CString& name, AcDbObjectId& id) {
  id.setNull();
  AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
  if (db == nullptr) return Acad::eNoDatabase;
  Table* table = nullptr;
  Acad::ErrorStatus es = db->getSymbolTable(table, AcDb::kForRead);
  if (es != Acad::eOk) return es;
  AcDbSymbolTableIterator* it = nullptr;
  es = table->newIterator(it);
  table->close();
  if (es != Acad::eOk) return es;
  for (; !it->done(); it->step()) {
    AcDbSymbolTableRecord* record = nullptr;
    if (it->getRecord(record, AcDb::kForRead) != Acad::eOk) continue;
    const bool same = name.CompareNoCase(record->getName()) == 0;
    if (same) id = record->objectId();
    record->close();
    if (same) break;
  }
  delete it;
  return Acad::eOk;
}

}  // namespace

Acad::ErrorStatus GetDimStyleIDbyName(CString name, AcDbObjectId& id) { return FindRecord<AcDbDimStyleTable>(name, id); }

Acad::ErrorStatus GetTxtStyleIDbyName(CString name, AcDbObjectId& id) { return FindRecord<AcDbTextStyleTable>(name, id); }

}  // namespace KEL
