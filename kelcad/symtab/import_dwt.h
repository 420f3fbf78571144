// CImportDWT: copies named records (text styles, dimension styles, layers,
// linetypes, blocks) from a template drawing into a target drawing, one by
// name or all at once, optionally replacing records of the same name.
//
// The template is read into a database this object makes and never
// deletes: the destructor does nothing, so a caller that reads several
// templates (or calls SetDWTFileName more than once) releases the earlier
// sources itself, through m_pSourceDB.
#pragma once

#include "kelcad/platform.h"

class CImportDWT {
 public:
  // No template yet; the target is the working database.
  CImportDWT();
  // The target is the working database; the template path is read into a
  // new empty database (a failed read leaves it empty, silently).
  CImportDWT(const wchar_t* path);
  CImportDWT(const CImportDWT&) = default;
  CImportDWT& operator=(const CImportDWT&) = default;
  // Releases nothing (see above).
  ~CImportDWT();

  // Reads path into a new source database (the earlier one is not
  // released); true when the read succeeded.
  bool SetDWTFileName(const wchar_t* path);
  // The drawing the records go to.
  void SetResultDataBase(AcDbDatabase*& db);

  // One record by name (any case), its new id in newId; with replace the
  // target's record of that name is erased first. eInvalidInput without
  // both drawings or when the template has no such record; otherwise the
  // status of adding the copy (eDuplicateRecordName when the target keeps
  // a record of that name).
  Acad::ErrorStatus ImportTextStyle(CString name, AcDbObjectId& newId, bool replace);
  Acad::ErrorStatus ImportDimStyle(CString name, AcDbObjectId& newId, bool replace);
  Acad::ErrorStatus ImportLayer(CString name, AcDbObjectId& newId, bool replace);
  Acad::ErrorStatus ImportLinetype(CString name, AcDbObjectId& newId, bool replace);
  // A new block of the same name whose entities are copied from the
  // template's (records they use that the target has are kept).
  Acad::ErrorStatus ImportBlock(CString name, AcDbObjectId& newId, bool replace);

  // Every record of the template's table but the standard ones ("Standard"
  // style, "ISO-25" dimension style, layer "0", linetypes ByBlock, ByLayer
  // and Continuous, the model and paper space blocks), in table order; the
  // new ids are appended to newIds. The status of the last record tried
  // (eOk when none was).
  Acad::ErrorStatus ImportTextStyleAll(AcDbObjectIdArray& newIds, bool replace);
  Acad::ErrorStatus ImportDimStyleAll(AcDbObjectIdArray& newIds, bool replace);
  Acad::ErrorStatus ImportLayerAll(AcDbObjectIdArray& newIds, bool replace);
  Acad::ErrorStatus ImportLinetypeAll(AcDbObjectIdArray& newIds, bool replace);
  Acad::ErrorStatus ImportBlockAll(AcDbObjectIdArray& newIds, bool replace);

  // Erases the record name (any case) of db: the erase status, or the
  // status of the table walk when there is no such record.
  static Acad::ErrorStatus RemoveTextStyle(CString name, AcDbDatabase* db);
  static Acad::ErrorStatus RemoveDimStyle(CString name, AcDbDatabase* db);
  static Acad::ErrorStatus RemoveLayer(CString name, AcDbDatabase* db);
  static Acad::ErrorStatus RemoveLinetype(CString name, AcDbDatabase* db);
  static Acad::ErrorStatus RemoveBlock(CString name, AcDbDatabase* db);

  AcDbDatabase* m_pSourceDB;  // the template; null until a file is read
  AcDbDatabase* m_pResultDB;  // the target
};
