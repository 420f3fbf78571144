// Handles and object ids, and their ads_name form.
#include <functional>

#include "db/stub.h"

AcDbHandle::AcDbHandle(const ACHAR* hex) {
  if (!hex || !*hex) return;
  Adesk::UInt64 v = 0;
  int digits = 0;
  for (const ACHAR* p = hex; *p; ++p) {
    int d;
    if (*p >= L'0' && *p <= L'9') d = *p - L'0';
    else if (*p >= L'a' && *p <= L'f') d = *p - L'a' + 10;
    else if (*p >= L'A' && *p <= L'F') d = *p - L'A' + 10;
    else return;
    if (++digits > 16) return;
    v = (v << 4) | static_cast<Adesk::UInt64>(d);
  }
  mValue = v;
}

bool AcDbHandle::getIntoAsciiBuffer(ACHAR* buffer, size_t bufferLength) const {
  ACHAR digits[17];
  int n = 0;
  Adesk::UInt64 v = mValue;
  do {
    int d = static_cast<int>(v & 0xF);
    digits[n++] = static_cast<ACHAR>(d < 10 ? L'0' + d : L'A' + d - 10);
    v >>= 4;
  } while (v);
  if (!buffer || bufferLength < static_cast<size_t>(n) + 1) return false;
  for (int i = 0; i < n; ++i) buffer[i] = digits[n - 1 - i];
  buffer[n] = 0;
  return true;
}

const AcDbObjectId AcDbObjectId::kNull;

bool AcDbObjectId::isValid() const { return kelhost::db::IsLiveStub(mStub) && mStub->object; }
bool AcDbObjectId::isErased() const { return isValid() && mStub->erased; }
AcDbDatabase* AcDbObjectId::database() const { return isValid() ? mStub->db : nullptr; }
AcDbHandle AcDbObjectId::handle() const { return isValid() ? AcDbHandle(mStub->handle) : AcDbHandle(); }

AcDbObjectId& AcDbObjectId::setFromOldId(Adesk::LongPtr oldId) {
  mStub = reinterpret_cast<AcDbStub*>(oldId);
  return *this;
}

bool AcDbObjectId::operator<(const AcDbObjectId& o) const { return std::less<AcDbStub*>()(mStub, o.mStub); }

Acad::ErrorStatus acdbGetAdsName(ads_name objName, AcDbObjectId objId) {
  if (!objName) return Acad::eInvalidInput;
  objName[0] = objId.asOldId();
  objName[1] = 0;
  return objId.isNull() ? Acad::eNullObjectId : Acad::eOk;
}

Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& objId, const ads_name objName) {
  objId.setNull();
  if (!objName) return Acad::eInvalidInput;
  AcDbObjectId id;
  id.setFromOldId(objName[0]);
  if (!id.isValid()) return Acad::eInvalidAdsName;
  objId = id;
  return Acad::eOk;
}
