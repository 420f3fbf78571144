// OxData: values in xrecords along dictionary paths, under an object's
// extension dictionary and under the drawing's named-object dictionary.
#include "kelcad/oxdata/dictionary_path.h"
#include "kelcad/oxdata/oxdata.h"
#include "kelcad/oxdata/value_nodes.h"

namespace {

using KEL::DictionaryPath::Lookup;
using KEL::DictionaryPath::Names;
using KEL::DictionaryPath::Walk;

bool HasText(const wchar_t* text) { return text != nullptr && *text != L'\0'; }

// What no record can take: no key, a negative index, a value of another
// kind than the code's, a path too long.
template <class T>
bool Refused(const wchar_t* key, short code, const T& value, int index, const wchar_t* path,
             Names& names) {
  return !HasText(key) || index < 0 || !KEL::ValueNodes::Fits(code, value) || !names.Read(path);
}

// Whether a new record holding the value at index takes the chain.
template <class T>
bool NewRecordTakes(short code, const T& value, int index) {
  resbuf* chain = nullptr;
  resbuf* node = KEL::ValueNodes::FindOrAppend(chain, code, index);
  AcDbXrecord probe;
  const bool takes =
      node != nullptr && KEL::ValueNodes::Store(node, value) && probe.setFromRbChain(*chain) == Acad::eOk;
  acutRelRb(chain);
  return takes;
}

// The chain of the xrecord record (null for an empty one).
Acad::ErrorStatus ReadChain(AcDbObjectId record, resbuf*& chain) {
  chain = nullptr;
  AcDbXrecord* xrecord = nullptr;
  Acad::ErrorStatus es = acdbOpenObject(xrecord, record, AcDb::kForRead);
  if (es != Acad::eOk) return es;
  es = xrecord->rbChain(&chain);
  xrecord->close();
  return es;
}

Acad::ErrorStatus WriteChain(AcDbObjectId record, const resbuf* chain) {
  AcDbXrecord* xrecord = nullptr;
  Acad::ErrorStatus es = acdbOpenObject(xrecord, record, AcDb::kForWrite);
  if (es != Acad::eOk) return es;
  es = xrecord->setFromRbChain(*chain);
  xrecord->close();
  return es;
}

// The record key in the dictionary the path resolves to; null when the
// path is refused or cannot be walked, or there is no such record.
AcDbObjectId FindRecord(AcDbObjectId root, const wchar_t* path, const wchar_t* key, Acad::ErrorStatus& es) {
  Names names;
  if (!names.Read(path)) {
    es = Acad::eInvalidInput;
    return AcDbObjectId::kNull;
  }
  const AcDbObjectId dict = Walk(root, names, false, es);
  AcDbObjectId record;
  if (!dict.isNull()) es = Lookup(dict, key, record);
  return es == Acad::eOk ? record : AcDbObjectId::kNull;
}

// The drawing of the drawing-level records.
AcDbDatabase* RecordsDrawing() {
  AcDbDatabase* db = OxData::GetCurDWGPtr();
  return db != nullptr ? db : acdbHostApplicationServices()->workingDatabase();
}

// The named-object dictionary of the records' drawing; its status.
Acad::ErrorStatus NamedObjects(AcDbObjectId& dict) {
  AcDbDatabase* db = RecordsDrawing();
  if (db == nullptr) return Acad::eNoDatabase;
  dict = db->namedObjectsDictionaryId();
  return dict.isNull() ? Acad::eNullObjectId : Acad::eOk;
}

Acad::ErrorStatus EraseRecord(AcDbObjectId record) {
  AcDbObject* object = nullptr;
  Acad::ErrorStatus es = acdbOpenObject(object, record, AcDb::kForWrite);
  if (es != Acad::eOk) return es;
  es = object->erase();
  object->close();
  return es;
}

}  // namespace

AcDbObjectId OxData::SetMDirection(AcDbObjectId root, const wchar_t* path) {
  Names names;
  Acad::ErrorStatus es = Acad::eOk;
  return names.Read(path) ? Walk(root, names, true, es) : AcDbObjectId::kNull;
}

AcDbObjectId OxData::GetMDirection(AcDbObjectId root, const wchar_t* path) {
  Names names;
  Acad::ErrorStatus es = Acad::eOk;
  return names.Read(path) ? Walk(root, names, false, es) : AcDbObjectId::kNull;
}

// An existing record is read, changed and written back. A new one gets
// its data before the missing dictionaries and the record itself are
// added, so that a chain the record refuses leaves the drawing as it was.
template <class T>
Acad::ErrorStatus OxData::SetxRecordTemplate(AcDbObjectId root, const wchar_t* path, const wchar_t* key, short code,
                                             const T& value, int index) {
  Names names;
  if (Refused(key, code, value, index, path, names)) return Acad::eInvalidInput;
  Acad::ErrorStatus es = Acad::eOk;
  bool complete = false;
  const AcDbObjectId reached = Walk(root, names, false, es, &complete);
  if (reached.isNull()) return es;
  // With every level there, the innermost dictionary stays open from the
  // lookup of the key to the adding of a new record.
  AcDbDictionary* dictionary = nullptr;
  AcDbObjectId record;
  resbuf* chain = nullptr;
  if (complete) {
    es = acdbOpenObject(dictionary, reached, AcDb::kForRead);
    if (es != Acad::eOk) return es;
    if (dictionary->getAt(key, record) == Acad::eOk) {
      dictionary->close();
      dictionary = nullptr;
      es = ReadChain(record, chain);
      if (es != Acad::eOk) return es;
    }
  }
  resbuf* node = KEL::ValueNodes::FindOrAppend(chain, code, index);
  if (node == nullptr || !KEL::ValueNodes::Store(node, value)) {
    if (dictionary != nullptr) dictionary->close();
    acutRelRb(chain);
    return Acad::eOutOfMemory;
  }
  if (!record.isNull()) {
    es = WriteChain(record, chain);
    acutRelRb(chain);
    return es;
  }
  auto* xrecord = new AcDbXrecord();
  es = xrecord->setFromRbChain(*chain);
  acutRelRb(chain);
  if (es == Acad::eOk && dictionary != nullptr) {
    es = dictionary->upgradeOpen();
  } else if (es == Acad::eOk) {
    // The missing levels are made only now, when the record holds its data.
    const AcDbObjectId dict = Walk(root, names, true, es);
    if (!dict.isNull()) es = acdbOpenObject(dictionary, dict, AcDb::kForWrite);
  }
  if (es == Acad::eOk) es = dictionary->setAt(key, xrecord, record);
  if (dictionary != nullptr) dictionary->close();
  if (es == Acad::eOk)
    xrecord->close();
  else
    delete xrecord;
  return es;
}

Acad::ErrorStatus OxData::UpdatexRecordTemplate(AcDbObjectId root, const wchar_t* path, const wchar_t* key,
                                                const resbuf* chain) {
  if (chain == nullptr) return Acad::eInvalidInput;
  Acad::ErrorStatus es = Acad::eOk;
  const AcDbObjectId record = FindRecord(root, path, key, es);
  if (record.isNull()) return es;
  return WriteChain(record, chain);
}

template <class T>
int OxData::GetxRecordTemplate(AcDbObjectId root, const wchar_t* path, const wchar_t* key, short code, T& value,
                               int index) {
  if (!KEL::ValueNodes::Fits(code, value)) return -1;
  Acad::ErrorStatus es = Acad::eOk;
  const AcDbObjectId record = FindRecord(root, path, key, es);
  resbuf* chain = nullptr;
  if (record.isNull() || ReadChain(record, chain) != Acad::eOk) return -1;
  const int found = KEL::ValueNodes::ReadAt(chain, code, index, value);
  acutRelRb(chain);
  return found;
}

// The object's extension dictionary, made first when create is set (the
// status of making one that exists is of no interest).
AcDbObjectId OxData::ExtensionDictionary(bool create) {
  AcDbObject* object = nullptr;
  m_ErrorStatus = acdbOpenObject(object, m_ObjectId, create ? AcDb::kForWrite : AcDb::kForRead);
  if (m_ErrorStatus != Acad::eOk) return AcDbObjectId::kNull;
  if (create) object->createExtensionDictionary();
  const AcDbObjectId dict = object->extensionDictionary();
  object->close();
  return dict;
}

template <class T>
bool OxData::SetObjectRecord(const wchar_t* key, short code, const T& value, int index, const wchar_t* path) {
  if (!IsOK(AcDb::kForRead) || !IsOK(AcDb::kForWrite)) return false;
  // Checked before the extension dictionary is made: a refused value
  // leaves the object as it was.
  Names names;
  if (Refused(key, code, value, index, path, names)) {
    m_ErrorStatus = Acad::eInvalidInput;
    return false;
  }
  AcDbObjectId dict = ExtensionDictionary(false);
  if (dict.isNull() && !NewRecordTakes(code, value, index)) {
    m_ErrorStatus = Acad::eInvalidResBuf;
    return false;
  }
  if (dict.isNull()) dict = ExtensionDictionary(true);
  if (dict.isNull()) return false;
  m_ErrorStatus = SetxRecordTemplate(dict, path, key, code, value, index);
  return m_ErrorStatus == Acad::eOk;
}

// Without an extension dictionary, or when it cannot be opened, the
// answer is the object's status: 0 (eOk) for an object that has none.
template <class T>
int OxData::GetObjectRecord(const wchar_t* key, short code, T& value, int index, const wchar_t* path) {
  if (!HasText(key)) return -1;
  if (!IsOK(AcDb::kForRead)) return -1;
  const AcDbObjectId dict = ExtensionDictionary(false);
  if (dict.isNull()) return m_ErrorStatus;
  AcDbObject* probe = nullptr;
  m_ErrorStatus = acdbOpenObject(probe, dict, AcDb::kForRead);
  if (m_ErrorStatus != Acad::eOk) return m_ErrorStatus;
  probe->close();
  return GetxRecordTemplate(dict, path, key, code, value, index);
}

bool OxData::SetxRecord(const wchar_t* key, short code, const wchar_t* value, int index, const wchar_t* path) {
  return SetObjectRecord(key, code, value, index, path);
}
bool OxData::SetxRecord(const wchar_t* key, short code, int value, int index, const wchar_t* path) {
  return SetObjectRecord(key, code, value, index, path);
}
bool OxData::SetxRecord(const wchar_t* key, short code, long value, int index, const wchar_t* path) {
  return SetObjectRecord(key, code, value, index, path);
}
bool OxData::SetxRecord(const wchar_t* key, short code, double value, int index, const wchar_t* path) {
  return SetObjectRecord(key, code, value, index, path);
}
bool OxData::SetxRecord(const wchar_t* key, short code, const double* point, int index, const wchar_t* path) {
  return SetObjectRecord(key, code, point, index, path);
}

int OxData::GetxRecord(const wchar_t* key, short code, CString& value, int index, const wchar_t* path) {
  return GetObjectRecord(key, code, value, index, path);
}
int OxData::GetxRecord(const wchar_t* key, short code, int& value, int index, const wchar_t* path) {
  return GetObjectRecord(key, code, value, index, path);
}
int OxData::GetxRecord(const wchar_t* key, short code, long& value, int index, const wchar_t* path) {
  return GetObjectRecord(key, code, value, index, path);
}
int OxData::GetxRecord(const wchar_t* key, short code, double& value, int index, const wchar_t* path) {
  return GetObjectRecord(key, code, value, index, path);
}
int OxData::GetxRecord(const wchar_t* key, short code, double (&point)[3], int index, const wchar_t* path) {
  return GetObjectRecord(key, code, point, index, path);
}

resbuf* OxData::GetxRecordResBuf(const wchar_t* key, const wchar_t* path) {
  if (!HasText(key) || !IsOK(AcDb::kForRead)) return nullptr;
  const AcDbObjectId dict = ExtensionDictionary(false);
  if (dict.isNull()) return nullptr;
  const AcDbObjectId record = FindRecord(dict, path, key, m_ErrorStatus);
  resbuf* chain = nullptr;
  if (!record.isNull()) m_ErrorStatus = ReadChain(record, chain);
  return chain;
}

bool OxData::DeletexRecord(const wchar_t* key, const wchar_t* path) {
  if (!IsOK(AcDb::kForRead)) return false;
  const AcDbObjectId dict = ExtensionDictionary(false);
  if (dict.isNull()) return m_ErrorStatus == Acad::eOk;
  Names names;
  if (!names.Read(path)) {
    m_ErrorStatus = Acad::eInvalidInput;
    return false;
  }
  const AcDbObjectId record = FindRecord(dict, path, key, m_ErrorStatus);
  if (record.isNull()) return true;
  m_ErrorStatus = EraseRecord(record);
  return m_ErrorStatus == Acad::eOk;
}

// ---- records of the drawing ------------------------------------------------

template <class T>
bool OxData::SetDrawingRecord(const wchar_t* path, const wchar_t* key, short code, const T& value, int index) {
  AcDbObjectId named;
  m_DWGErrorStatus = NamedObjects(named);
  if (m_DWGErrorStatus != Acad::eOk) return false;
  m_DWGErrorStatus = SetxRecordTemplate(named, path, key, code, value, index);
  return m_DWGErrorStatus == Acad::eOk;
}

// 0, not -1, when the named-object dictionary cannot be had.
template <class T>
int OxData::GetDrawingRecord(const wchar_t* path, const wchar_t* key, short code, T& value, int index) {
  if (!HasText(key)) return -1;
  if (RecordsDrawing() == nullptr) {
    m_DWGErrorStatus = Acad::eNoDatabase;
    return -1;
  }
  AcDbObjectId named;
  m_DWGErrorStatus = NamedObjects(named);
  if (m_DWGErrorStatus != Acad::eOk) return 0;
  return GetxRecordTemplate(named, path, key, code, value, index);
}

bool OxData::SetDWGxRecord(const wchar_t* path, const wchar_t* key, short code, const wchar_t* value, int index) {
  return SetDrawingRecord(path, key, code, value, index);
}
bool OxData::SetDWGxRecord(const wchar_t* path, const wchar_t* key, short code, int value, int index) {
  return SetDrawingRecord(path, key, code, value, index);
}
bool OxData::SetDWGxRecord(const wchar_t* path, const wchar_t* key, short code, long value, int index) {
  return SetDrawingRecord(path, key, code, value, index);
}
bool OxData::SetDWGxRecord(const wchar_t* path, const wchar_t* key, short code, double value, int index) {
  return SetDrawingRecord(path, key, code, value, index);
}
bool OxData::SetDWGxRecord(const wchar_t* path, const wchar_t* key, short code, const double* point, int index) {
  return SetDrawingRecord(path, key, code, point, index);
}

int OxData::GetDWGxRecord(const wchar_t* path, const wchar_t* key, short code, CString& value, int index) {
  return GetDrawingRecord(path, key, code, value, index);
}
int OxData::GetDWGxRecord(const wchar_t* path, const wchar_t* key, short code, int& value, int index) {
  return GetDrawingRecord(path, key, code, value, index);
}
int OxData::GetDWGxRecord(const wchar_t* path, const wchar_t* key, short code, long& value, int index) {
  return GetDrawingRecord(path, key, code, value, index);
}
int OxData::GetDWGxRecord(const wchar_t* path, const wchar_t* key, short code, double& value, int index) {
  return GetDrawingRecord(path, key, code, value, index);
}
int OxData::GetDWGxRecord(const wchar_t* path, const wchar_t* key, short code, double (&point)[3], int index) {
  return GetDrawingRecord(path, key, code, point, index);
}

resbuf* OxData::GetDWGxRecordResBuf(const wchar_t* path, const wchar_t* key) {
  AcDbObjectId named;
  m_DWGErrorStatus = NamedObjects(named);
  if (m_DWGErrorStatus != Acad::eOk || !HasText(key)) return nullptr;
  const AcDbObjectId record = FindRecord(named, path, key, m_DWGErrorStatus);
  resbuf* chain = nullptr;
  if (!record.isNull()) m_DWGErrorStatus = ReadChain(record, chain);
  return chain;
}

// Nothing to erase (a missing level or record) is success.
bool OxData::DeleteDWGxRecord(const wchar_t* path, const wchar_t* key) {
  AcDbObjectId named;
  m_DWGErrorStatus = NamedObjects(named);
  if (m_DWGErrorStatus != Acad::eOk) return false;
  Names names;
  if (!names.Read(path)) {
    m_DWGErrorStatus = Acad::eInvalidInput;
    return false;
  }
  Acad::ErrorStatus lookup = Acad::eOk;
  const AcDbObjectId record = FindRecord(named, path, key, lookup);
  if (record.isNull()) return true;
  m_DWGErrorStatus = EraseRecord(record);
  return m_DWGErrorStatus == Acad::eOk;
}
