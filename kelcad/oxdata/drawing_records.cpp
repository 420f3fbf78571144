// The fixed two-level drawing records.
#include "kelcad/oxdata/drawing_records.h"

#include "kelcad/api/drawing_in_use.h"
#include "kelcad/resbuf/rbchain.h"

namespace KEL {

namespace {

constexpr int kLongestName = 31;

bool NameFits(const CString& name) { return name.GetLength() >= 1 && name.GetLength() <= kLongestName; }

// Both names 1 to 31 characters; the first wrong one is shown.
bool NamesFit(const CString& dictName, const CString& recName) {
  if (!NameFits(dictName)) {
    AfxMessageBox(L"字典名不合法!");
    return false;
  }
  if (!NameFits(recName)) {
    AfxMessageBox(L"记录名不合法!");
    return false;
  }
  return true;
}

// The 1-based position of the first group whose code has no kind, or 0.
int FirstUnknownCode(const resbuf* chain) {
  int position = 1;
  for (const resbuf* rb = chain; rb != nullptr; rb = rb->rbnext, ++position)
    if (GetDXFCodeDataType(rb->restype) == RTNONE) return position;
  return 0;
}

// The entry name of the dictionary dict (open in any mode), open in mode.
template <class T>
Acad::ErrorStatus OpenEntry(AcDbDictionary* dict, const wchar_t* name, T*& entry, AcDb::OpenMode mode) {
  entry = nullptr;
  AcDbObject* object = nullptr;
  Acad::ErrorStatus es = dict->getAt(name, object, mode);
  if (es != Acad::eOk) return es;
  entry = T::cast(object);
  if (entry != nullptr) return Acad::eOk;
  object->close();
  return Acad::eNotThatKindOfClass;
}

// Adds (or replaces) the record; the record takes the chain before
// anything is added, so a refused chain changes nothing.
bool StoreRecord(AcDbDictionary* named, const CString& dictName, const CString& recName, const resbuf* chain) {
  AcDbDictionary* level = nullptr;
  Acad::ErrorStatus es = OpenEntry(named, dictName, level, AcDb::kForWrite);
  AcDbXrecord* record = nullptr;
  if (es == Acad::eOk) {
    es = OpenEntry(level, recName, record, AcDb::kForWrite);
    if (es == Acad::eOk) {
      es = record->setFromRbChain(*chain);
      record->close();
      level->close();
      return es == Acad::eOk;
    }
    if (es != Acad::eKeyNotFound) {
      level->close();
      return false;
    }
  } else if (es != Acad::eKeyNotFound) {
    return false;
  }
  auto* made = new AcDbXrecord();
  if (made->setFromRbChain(*chain) != Acad::eOk) {
    delete made;
    if (level != nullptr) level->close();
    return false;
  }
  AcDbObjectId id;
  if (level == nullptr) {
    level = new AcDbDictionary();
    if (named->setAt(dictName, level, id) != Acad::eOk) {
      delete level;
      delete made;
      return false;
    }
  }
  es = level->setAt(recName, made, id);
  if (es == Acad::eOk)
    made->close();
  else
    delete made;
  level->close();
  return es == Acad::eOk;
}

}  // namespace

int SetXRecord(CString dictName, CString recName, resbuf* chain) {
  AcDbDatabase* db = DrawingInUse();
  if (db == nullptr) return -1;
  if (!NamesFit(dictName, recName)) return -1;
  if (chain == nullptr) {
    RemoveXRecord(dictName, recName);
    return 2;
  }
  if (const int position = FirstUnknownCode(chain)) {
    CString message;
    message.Format(L"%d 组扩展记录组码不合法", position);
    AfxMessageBox(message);
    return -1;
  }
  AcDbDictionary* named = nullptr;
  if (db->getNamedObjectsDictionary(named, AcDb::kForWrite) != Acad::eOk) return -1;
  const bool stored = StoreRecord(named, dictName, recName, chain);
  named->close();
  return stored ? 1 : -1;
}

bool GetXRecord(CString dictName, CString recName, resbuf*& out) {
  out = nullptr;
  AcDbDatabase* db = DrawingInUse();
  if (db == nullptr || !NamesFit(dictName, recName)) return false;
  AcDbDictionary* named = nullptr;
  if (db->getNamedObjectsDictionary(named, AcDb::kForRead) != Acad::eOk) return false;
  AcDbDictionary* level = nullptr;
  if (OpenEntry(named, dictName, level, AcDb::kForRead) == Acad::eOk) {
    AcDbXrecord* record = nullptr;
    if (OpenEntry(level, recName, record, AcDb::kForRead) == Acad::eOk) {
      record->rbChain(&out);
      record->close();
    }
    level->close();
  }
  named->close();
  return true;
}

bool RemoveXRecord(CString dictName, CString recName) {
  AcDbDatabase* db = DrawingInUse();
  if (db == nullptr) return false;
  AcDbDictionary* named = nullptr;
  if (db->getNamedObjectsDictionary(named, AcDb::kForWrite) != Acad::eOk) return false;
  AcDbDictionary* level = nullptr;
  const Acad::ErrorStatus es = OpenEntry(named, dictName, level, AcDb::kForWrite);
  named->close();
  if (es == Acad::eKeyNotFound) return true;
  if (es != Acad::eOk) return false;
  if (level->has(recName)) level->remove(recName);
  level->close();
  return true;
}

}  // namespace KEL
