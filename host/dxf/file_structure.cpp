#include "dxf/file_structure.h"

#include "arx/dbdatabase.h"
#include "arx/dbdict.h"
#include "dxf/kept_object.h"

namespace kelhost::dxf {
namespace {

// Adds key to the dictionary named dictKey of the named-object dictionary
// when missing, as an object of the given DXF type with the given groups.
void EnsureEntry(AcDbDatabase* db, const wchar_t* dictKey, const wchar_t* key, const wchar_t* type, RawGroups body) {
  AcDbDictionary* nod = nullptr;
  if (db->getNamedObjectsDictionary(nod, AcDb::kForRead) != Acad::eOk) return;
  AcDbObjectId dictId;
  const bool found = nod->getAt(dictKey, dictId) == Acad::eOk;
  nod->close();
  AcDbDictionary* dict = nullptr;
  if (!found || acdbOpenObject(dict, dictId, AcDb::kForRead) != Acad::eOk) return;
  const bool has = dict->has(key);
  dict->close();
  if (has || acdbOpenObject(dict, dictId, AcDb::kForWrite) != Acad::eOk) return;
  KeptData data;
  data.type = type;
  data.body = std::move(body);
  auto* object = new KeptObject(std::move(data));
  AcDbObjectId id;
  if (dict->setAt(key, object, id) == Acad::eOk) object->close();
  else delete object;
  dict->close();
}

}  // namespace

void CompleteForFile(AcDbDatabase* db) {
  EnsureEntry(db, L"ACAD_PLOTSTYLENAME", L"Normal", L"ACDBPLACEHOLDER", {});
}

}  // namespace kelhost::dxf
