#include "kelcad/symtab/import_dwt.h"

#include "kelcad/symtab/record_import.h"

namespace {

using KEL::RecordImport::Kind;

// A new empty database holding the drawing read from path (or nothing,
// when it cannot be read); the read's status in status.
AcDbDatabase* ReadTemplate(const wchar_t* path, Acad::ErrorStatus& status) {
  auto* db = new AcDbDatabase(false, false);
  status = path != nullptr ? db->readDwgFile(path, _SH_DENYWR, false, nullptr) : Acad::eInvalidInput;
  return db;
}

// Every record of the source's table that is not a standard one, through
// the single-record import of the same kind.
Acad::ErrorStatus ImportAll(CImportDWT& importer, Kind kind,
                            Acad::ErrorStatus (CImportDWT::*importOne)(CString, AcDbObjectId&, bool),
                            AcDbObjectIdArray& newIds, bool replace) {
  if (importer.m_pSourceDB == nullptr || importer.m_pResultDB == nullptr) return Acad::eInvalidInput;
  std::vector<CString> names;
  if (!KEL::RecordImport::RecordNames(importer.m_pSourceDB, kind, names)) return Acad::eInvalidInput;
  Acad::ErrorStatus last = Acad::eOk;
  for (const CString& name : names) {
    if (KEL::RecordImport::SkippedByImportAll(kind, name)) continue;
    AcDbObjectId id;
    last = (importer.*importOne)(name, id, replace);
    if (last != Acad::eOk)
      acutPrintf(L"\nImport %s error:%d", name.GetString(), static_cast<int>(last));
    else
      newIds.append(id);
  }
  return last;
}

}  // namespace

CImportDWT::CImportDWT()
    : m_pSourceDB(nullptr), m_pResultDB(acdbHostApplicationServices()->workingDatabase()) {}

CImportDWT::CImportDWT(const wchar_t* path) : CImportDWT() {
  Acad::ErrorStatus ignored = Acad::eOk;
  m_pSourceDB = ReadTemplate(path, ignored);
}

CImportDWT::~CImportDWT() {}

bool CImportDWT::SetDWTFileName(const wchar_t* path) {
  Acad::ErrorStatus status = Acad::eOk;
  m_pSourceDB = ReadTemplate(path, status);
  return status == Acad::eOk;
}

void CImportDWT::SetResultDataBase(AcDbDatabase*& db) { m_pResultDB = db; }

Acad::ErrorStatus CImportDWT::ImportTextStyle(CString name, AcDbObjectId& newId, bool replace) {
  return KEL::RecordImport::Import(Kind::kTextStyle, m_pSourceDB, m_pResultDB, name, newId, replace);
}
Acad::ErrorStatus CImportDWT::ImportDimStyle(CString name, AcDbObjectId& newId, bool replace) {
  return KEL::RecordImport::Import(Kind::kDimStyle, m_pSourceDB, m_pResultDB, name, newId, replace);
}
Acad::ErrorStatus CImportDWT::ImportLayer(CString name, AcDbObjectId& newId, bool replace) {
  return KEL::RecordImport::Import(Kind::kLayer, m_pSourceDB, m_pResultDB, name, newId, replace);
}
Acad::ErrorStatus CImportDWT::ImportLinetype(CString name, AcDbObjectId& newId, bool replace) {
  return KEL::RecordImport::Import(Kind::kLinetype, m_pSourceDB, m_pResultDB, name, newId, replace);
}
Acad::ErrorStatus CImportDWT::ImportBlock(CString name, AcDbObjectId& newId, bool replace) {
  return KEL::RecordImport::Import(Kind::kBlock, m_pSourceDB, m_pResultDB, name, newId, replace);
}

Acad::ErrorStatus CImportDWT::ImportTextStyleAll(AcDbObjectIdArray& newIds, bool replace) {
  return ImportAll(*this, Kind::kTextStyle, &CImportDWT::ImportTextStyle, newIds, replace);
}
Acad::ErrorStatus CImportDWT::ImportDimStyleAll(AcDbObjectIdArray& newIds, bool replace) {
  return ImportAll(*this, Kind::kDimStyle, &CImportDWT::ImportDimStyle, newIds, replace);
}
Acad::ErrorStatus CImportDWT::ImportLayerAll(AcDbObjectIdArray& newIds, bool replace) {
  return ImportAll(*this, Kind::kLayer, &CImportDWT::ImportLayer, newIds, replace);
}
Acad::ErrorStatus CImportDWT::ImportLinetypeAll(AcDbObjectIdArray& newIds, bool replace) {
  return ImportAll(*this, Kind::kLinetype, &CImportDWT::ImportLinetype, newIds, replace);
}
Acad::ErrorStatus CImportDWT::ImportBlockAll(AcDbObjectIdArray& newIds, bool replace) {
  return ImportAll(*this, Kind::kBlock, &CImportDWT::ImportBlock, newIds, replace);
}

Acad::ErrorStatus CImportDWT::RemoveTextStyle(CString name, AcDbDatabase* db) {
  return KEL::RecordImport::Remove(Kind::kTextStyle, name, db, nullptr);
}
Acad::ErrorStatus CImportDWT::RemoveDimStyle(CString name, AcDbDatabase* db) {
  return KEL::RecordImport::Remove(Kind::kDimStyle, name, db, nullptr);
}
Acad::ErrorStatus CImportDWT::RemoveLayer(CString name, AcDbDatabase* db) {
  return KEL::RecordImport::Remove(Kind::kLayer, name, db, nullptr);
}
Acad::ErrorStatus CImportDWT::RemoveLinetype(CString name, AcDbDatabase* db) {
  return KEL::RecordImport::Remove(Kind::kLinetype, name, db, nullptr);
}
Acad::ErrorStatus CImportDWT::RemoveBlock(CString name, AcDbDatabase* db) {
  return KEL::RecordImport::Remove(Kind::kBlock, name, db, nullptr);
}
