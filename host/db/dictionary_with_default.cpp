// Dictionaries with a default entry, and placeholders.
#include "arx/dbdictdflt.h"
#include "db/rx_define.h"
#include "db/setters.h"
#include "dxf/group_filer.h"

KELHOST_RX_DEFINE(AcDbDictionaryWithDefault, AcDbDictionary, L"ACDBDICTIONARYWDFLT")
KELHOST_RX_DEFINE(AcDbPlaceHolder, AcDbObject, L"ACDBPLACEHOLDER")

Acad::ErrorStatus AcDbDictionaryWithDefault::setDefaultId(const AcDbObjectId& id) {
  if (!has(id)) return Acad::eInvalidInput;
  KELHOST_SET(mDefault, id);
}

void AcDbDictionaryWithDefault::dxfFields(kelhost::dxf::GroupFiler& f) {
  AcDbDictionary::dxfFields(f);
  f.subclass(L"AcDbDictionaryWithDefault");
  f.id(340, mDefault, kelhost::dxf::Presence::kAlways);
}
