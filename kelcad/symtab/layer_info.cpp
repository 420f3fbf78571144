#include "kelcad/symtab/layer_info.h"

#include "kelbase/colors.h"
#include "kelcad/api/current_drawing.h"
#include "kelcad/api/model_space_erase.h"
#include "kelcad/api/sysvar_access.h"

namespace {

bool Empty(const wchar_t* text) { return text == nullptr || *text == L'\0'; }

// The name of a linetype record, empty when it cannot be read.
CString LinetypeName(AcDbObjectId id) {
  AcDbLinetypeTableRecord* linetype = nullptr;
  if (acdbOpenObject(linetype, id, AcDb::kForRead) != Acad::eOk) return CString();
  CString name(linetype->getName());
  linetype->close();
  return name;
}

}  // namespace

layerInfo::layerInfo(const wchar_t* name, bool create) {
  GetState(name, m_layer);
  if (!m_layer.exists && create) CreateLayer(name, m_layer);
}

layerInfo::~layerInfo() = default;

bool layerInfo::ReadyOK() { return !m_layer.name.IsEmpty() && m_layer.exists; }

void layerInfo::GetState(const wchar_t* name, layerStruct& s) {
  s.exists = false;
  s.name = name != nullptr ? name : L"";
  AcDbLayerTableRecord* record = GetLayerTableRecordPtr(name, AcDb::kForRead, &s.status);
  if (record == nullptr) return;
  s.exists = true;
  s.frozen = record->isFrozen();
  s.locked = record->isLocked();
  s.off = record->isOff();
  s.color = record->color();
  s.lineTypeName = LinetypeName(record->linetypeObjectId());
  record->close();
}

AcDbLayerTableRecord* layerInfo::GetLayerTableRecordPtr(const wchar_t* name, AcDb::OpenMode mode,
                                                        Acad::ErrorStatus* status) {
  AcDbDatabase* db = KEL::GetCurDWGPtr();
  if (db == nullptr || Empty(name)) return nullptr;
  AcDbLayerTable* table = nullptr;
  Acad::ErrorStatus es = db->getLayerTable(table, AcDb::kForRead);
  AcDbLayerTableRecord* record = nullptr;
  if (es == Acad::eOk) {
    es = table->getAt(name, record, mode);
    table->close();
  }
  if (status != nullptr) *status = es;
  return es == Acad::eOk ? record : nullptr;
}

bool layerInfo::CreateLayer(const wchar_t* name, layerStruct& s) {
  if (s.exists) return true;
  AcDbDatabase* db = KEL::GetCurDWGPtr();
  if (db == nullptr || Empty(name)) return false;
  AcDbLayerTable* table = nullptr;
  s.status = db->getLayerTable(table, AcDb::kForWrite);
  if (s.status != Acad::eOk) return false;
  auto* record = new AcDbLayerTableRecord;
  s.status = record->setName(name);
  if (s.status == Acad::eOk) s.status = table->add(record);
  if (s.status != Acad::eOk) {
    delete record;
    table->close();
    return false;
  }
  record->close();
  table->close();
  GetState(name, s);
  return s.exists;
}

bool layerInfo::DeleteAllEntity(const wchar_t* pattern) {
  if (Empty(pattern)) return false;
  auto matches = [pattern](const wchar_t* layer) { return acutWcMatch(layer, pattern) == RTNORM; };
  return KEL::EraseModelSpaceEntities(KEL::GetCurDWGPtr(), matches) == KEL::ModelSpaceWalk::kDone;
}

bool layerInfo::IsExist() { return m_layer.exists; }
bool layerInfo::IsFrozen() { return m_layer.frozen; }
bool layerInfo::IsLocked() { return m_layer.locked; }
bool layerInfo::IsOff() { return m_layer.off; }
CString layerInfo::Name() { return m_layer.name; }
CString layerInfo::GetLineTypeName() { return m_layer.lineTypeName; }
Acad::ErrorStatus layerInfo::GetErrorStatus() { return m_layer.status; }

bool layerInfo::IsColorByBlock() { return ReadyOK() && m_layer.color.isByBlock(); }
bool layerInfo::IsColorByLayer() { return ReadyOK() && m_layer.color.isByLayer(); }

AcDbLayerTableRecord* layerInfo::GetRecordPtr(AcDb::OpenMode mode) {
  if (!ReadyOK()) return nullptr;
  return GetLayerTableRecordPtr(m_layer.name, mode, &m_layer.status);
}

bool layerInfo::SetIsLocked(bool locked) {
  if (!ReadyOK()) return false;
  AcDbLayerTableRecord* record = GetLayerTableRecordPtr(m_layer.name, AcDb::kForWrite, &m_layer.status);
  if (record == nullptr) return false;
  record->setIsLocked(locked);
  record->close();
  m_layer.locked = locked;
  return true;
}

bool layerInfo::SetIsFrozen(bool frozen) {
  if (!ReadyOK()) return false;
  AcDbLayerTableRecord* record = GetLayerTableRecordPtr(m_layer.name, AcDb::kForWrite, &m_layer.status);
  if (record == nullptr) return false;
  record->setIsFrozen(frozen);
  record->close();
  m_layer.frozen = frozen;
  return true;
}

bool layerInfo::SetIsOff(bool off) {
  if (!ReadyOK()) return false;
  AcDbLayerTableRecord* record = GetLayerTableRecordPtr(m_layer.name, AcDb::kForWrite, &m_layer.status);
  if (record == nullptr) return false;
  record->setIsOff(off);
  record->close();
  m_layer.off = off;
  return true;
}

bool layerInfo::SetLineTypeName(const wchar_t* ltName) {
  if (Empty(ltName) || !ReadyOK()) return false;
  AcDbLayerTableRecord* record = GetLayerTableRecordPtr(m_layer.name, AcDb::kForWrite, &m_layer.status);
  if (record == nullptr) return false;
  const AcDbObjectId linetypeId = record->linetypeObjectId();
  record->close();
  AcDbLinetypeTableRecord* linetype = nullptr;
  m_layer.status = acdbOpenObject(linetype, linetypeId, AcDb::kForWrite);
  if (m_layer.status != Acad::eOk) return false;
  m_layer.status = linetype->setName(ltName);
  linetype->close();
  if (m_layer.status != Acad::eOk) return false;
  m_layer.lineTypeName = ltName;
  return true;
}

int layerInfo::GetColorIndex() {
  if (!ReadyOK()) return -1;
  AcDbLayerTableRecord* record = GetLayerTableRecordPtr(m_layer.name, AcDb::kForRead, &m_layer.status);
  if (record == nullptr) return -1;
  m_layer.color = record->color();
  record->close();
  return m_layer.color.colorIndex();
}

bool layerInfo::SetColorIndex(int index) {
  if (!ReadyOK() || index < 0 || index > 256) return false;
  m_layer.status = m_layer.color.setColorIndex(static_cast<Adesk::UInt16>(index));
  if (m_layer.status != Acad::eOk) return false;
  // A record that cannot be opened still counts as set: the snapshot is.
  AcDbLayerTableRecord* record = GetLayerTableRecordPtr(m_layer.name, AcDb::kForWrite, &m_layer.status);
  if (record != nullptr) {
    record->setColor(m_layer.color);
    record->close();
  }
  return true;
}

int layerInfo::SetColor(COLORREF rgb) {
  if (!ReadyOK()) return 0;
  int index = KEL::IsStandardCADColor(rgb);
  if (index == -1) index = KEL::GetCADColorIndexNearest(rgb);
  SetColorIndex(index);
  return index;
}

bool layerInfo::Rename(const wchar_t* newName) {
  if (Empty(newName) || !ReadyOK()) return false;
  AcDbLayerTableRecord* record = GetLayerTableRecordPtr(m_layer.name, AcDb::kForWrite, &m_layer.status);
  if (record == nullptr) return false;
  m_layer.status = record->setName(newName);
  record->close();
  return m_layer.status == Acad::eOk;
}

bool layerInfo::Erase(bool deleteEntities) {
  if (!ReadyOK()) return false;
  SetIsOff(false);
  SetIsFrozen(false);
  if (deleteEntities && !DeleteAllEntity(m_layer.name)) return false;
  AcDbLayerTableRecord* record = GetLayerTableRecordPtr(m_layer.name, AcDb::kForWrite, &m_layer.status);
  if (record == nullptr) return false;
  m_layer.status = record->erase(true);
  record->close();
  return m_layer.status == Acad::eOk;
}

bool layerInfo::SetCurLayer() {
  if (!ReadyOK()) return false;
  SetIsOff(false);
  SetIsFrozen(false);
  SetIsLocked(false);
  return KEL::SetCADVar(L"cLayer", m_layer.name.GetString()) == RTNORM;
}
