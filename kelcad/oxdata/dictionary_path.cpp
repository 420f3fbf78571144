// Walking and making dictionary paths.
#include "kelcad/oxdata/dictionary_path.h"

#include <cwchar>

namespace KEL {
namespace DictionaryPath {

bool Names::Read(const wchar_t* path) {
  mCount = 0;
  if (path == nullptr) return true;
  const size_t length = wcslen(path);
  if (length >= kPathBuffer) return false;
  wmemcpy(mBuffer, path, length + 1);
  wchar_t* name = mBuffer;
  for (;;) {
    while (*name == L'\\') ++name;
    if (*name == L'\0') return true;
    mNames[mCount++] = name;
    wchar_t* end = wcschr(name, L'\\');
    if (end == nullptr) return true;
    *end = L'\0';
    name = end + 1;
  }
}

namespace {

// Adds a new dictionary under name to the dictionary dict; its id.
Acad::ErrorStatus AddDictionary(AcDbObjectId dict, const wchar_t* name, AcDbObjectId& made) {
  AcDbDictionary* parent = nullptr;
  Acad::ErrorStatus es = acdbOpenObject(parent, dict, AcDb::kForWrite);
  if (es != Acad::eOk) return es;
  auto* child = new AcDbDictionary();
  es = parent->setAt(name, child, made);
  if (es == Acad::eOk)
    child->close();
  else
    delete child;
  parent->close();
  return es;
}

}  // namespace

AcDbObjectId Walk(AcDbObjectId root, const Names& names, bool create, Acad::ErrorStatus& es,
                  bool* complete) {
  if (complete != nullptr) *complete = false;
  if (root.isNull()) {
    es = Acad::eNullObjectId;
    return AcDbObjectId::kNull;
  }
  es = Acad::eOk;
  AcDbObjectId current = root;
  for (const wchar_t* name : names) {
    AcDbObjectId next;
    es = Lookup(current, name, next);
    if (es == Acad::eKeyNotFound) {
      if (!create) {
        es = Acad::eOk;
        return current;
      }
      es = AddDictionary(current, name, next);
    }
    if (es != Acad::eOk) return AcDbObjectId::kNull;
    current = next;
  }
  if (complete != nullptr) *complete = true;
  return current;
}

Acad::ErrorStatus Lookup(AcDbObjectId dict, const wchar_t* key, AcDbObjectId& entry) {
  AcDbDictionary* dictionary = nullptr;
  Acad::ErrorStatus es = acdbOpenObject(dictionary, dict, AcDb::kForRead);
  if (es != Acad::eOk) return es;
  es = dictionary->getAt(key, entry);
  dictionary->close();
  return es;
}

}  // namespace DictionaryPath
}  // namespace KEL
