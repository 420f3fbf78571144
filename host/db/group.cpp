// Groups: description (300), unnamed (70), selectable (71) and the member
// entities (340).
#include "arx/dbgroup.h"
#include "db/rx_define.h"
#include "dxf/group_filer.h"

using kelhost::dxf::Presence;

KELHOST_RX_DEFINE(AcDbGroup, AcDbObject, L"GROUP")

AcDbGroup::AcDbGroup(const ACHAR* description, bool selectable)
    : mDescription(description ? description : L""), mSelectable(selectable) {}

Acad::ErrorStatus AcDbGroup::setDescription(const ACHAR* text) {
  if (!writable()) return Acad::eNotOpenForWrite;
  mDescription = text ? text : L"";
  return Acad::eOk;
}

Acad::ErrorStatus AcDbGroup::setSelectable(bool selectable) {
  if (!writable()) return Acad::eNotOpenForWrite;
  mSelectable = selectable;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbGroup::setAnonymous() {
  if (!writable()) return Acad::eNotOpenForWrite;
  mUnnamed = true;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbGroup::append(AcDbObjectId id) {
  if (!writable()) return Acad::eNotOpenForWrite;
  if (id.isNull()) return Acad::eNullObjectId;
  if (has(id)) return Acad::eAlreadyInGroup;
  mEntities.push_back(id);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbGroup::append(const AcDbObjectIdArray& ids) {
  for (const AcDbObjectId& id : ids) {
    Acad::ErrorStatus es = append(id);
    if (es != Acad::eOk) return es;
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbGroup::remove(AcDbObjectId id) {
  if (!writable()) return Acad::eNotOpenForWrite;
  for (size_t i = 0; i < mEntities.size(); ++i)
    if (mEntities[i] == id) {
      mEntities.erase(mEntities.begin() + static_cast<long>(i));
      return Acad::eOk;
    }
  return Acad::eNotInGroup;
}

Acad::ErrorStatus AcDbGroup::clear() {
  if (!writable()) return Acad::eNotOpenForWrite;
  mEntities.clear();
  return Acad::eOk;
}

bool AcDbGroup::has(const AcDbEntity* entity) const { return entity && has(entity->objectId()); }

bool AcDbGroup::has(AcDbObjectId id) const {
  for (const AcDbObjectId& e : mEntities)
    if (e == id) return true;
  return false;
}

Adesk::UInt32 AcDbGroup::allEntityIds(AcDbObjectIdArray& ids) const {
  ids.removeAll();
  for (const AcDbObjectId& e : mEntities) ids.append(e);
  return static_cast<Adesk::UInt32>(mEntities.size());
}

void AcDbGroup::dxfFields(kelhost::dxf::GroupFiler& f) {
  f.subclass(L"AcDbGroup");
  f.text(300, mDescription, L"", Presence::kAlways);
  short unnamed = mUnnamed ? 1 : 0, selectable = mSelectable ? 1 : 0;
  f.int16(70, unnamed, 0, Presence::kAlways);
  f.int16(71, selectable, 1, Presence::kAlways);
  mUnnamed = unnamed != 0;
  mSelectable = selectable != 0;
  size_t n = f.beginRepeat(340, mEntities.size());
  if (f.reading() && !(n == 0 && f.keepsAbsent())) mEntities.assign(n, AcDbObjectId());
  for (size_t i = 0; i < n && i < mEntities.size(); ++i) {
    f.enterRecord(i);
    f.id(340, mEntities[i], Presence::kRequired);
  }
  f.endRepeat();
}
