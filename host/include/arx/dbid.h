// Object identity in a drawing database: the 64-bit handle that a drawing
// stores, and the session-only object id (a pointer to the database's stub
// of the object) that code passes around.
#pragma once

#include <cstddef>

#include "acadstrc.h"
#include "acarray.h"
#include "adsdef.h"

class AcDbStub;
class AcDbDatabase;

// A persistent handle: 64 bits, written in DXF as upper-case hexadecimal.
class AcDbHandle {
 public:
  AcDbHandle() = default;
  AcDbHandle(Adesk::UInt32 lo, Adesk::UInt32 hi) : mValue((static_cast<Adesk::UInt64>(hi) << 32) | lo) {}
  AcDbHandle(Adesk::UInt64 value) : mValue(value) {}  // NOLINT: the platform converts implicitly
  // Hexadecimal text; text that is not hexadecimal (or too long) gives the
  // null handle.
  explicit AcDbHandle(const ACHAR* hex);

  bool isNull() const { return mValue == 0; }
  void setNull() { mValue = 0; }
  Adesk::UInt32 low() const { return static_cast<Adesk::UInt32>(mValue); }
  Adesk::UInt32 high() const { return static_cast<Adesk::UInt32>(mValue >> 32); }
  operator Adesk::UInt64() const { return mValue; }
  AcDbHandle& operator++() { ++mValue; return *this; }
  AcDbHandle operator++(int) { AcDbHandle old = *this; ++mValue; return old; }
  bool operator==(const AcDbHandle& o) const { return mValue == o.mValue; }
  bool operator!=(const AcDbHandle& o) const { return mValue != o.mValue; }
  bool operator<(const AcDbHandle& o) const { return mValue < o.mValue; }
  // Writes the hexadecimal text (no leading zeros) into buffer; false when
  // the buffer is too small.
  bool getIntoAsciiBuffer(ACHAR* buffer, size_t bufferLength) const;

 private:
  Adesk::UInt64 mValue = 0;
};

// Identifies an object for the session. Ids of objects that were never
// made, or whose database is gone, are not valid: isValid() says so and the
// calls that need an object refuse them.
class AcDbObjectId {
 public:
  AcDbObjectId() = default;
  AcDbObjectId(AcDbStub* stub) : mStub(stub) {}  // NOLINT: as the platform's
  static const AcDbObjectId kNull;

  bool isNull() const { return mStub == nullptr; }
  void setNull() { mStub = nullptr; }
  // Names a live object of a database (erased objects included).
  bool isValid() const;
  bool isErased() const;
  AcDbDatabase* database() const;
  AcDbHandle handle() const;
  // The id as one integer (what an ads_name holds), and back. An integer
  // that names no live object gives an invalid id.
  Adesk::LongPtr asOldId() const { return reinterpret_cast<Adesk::LongPtr>(mStub); }
  AcDbObjectId& setFromOldId(Adesk::LongPtr oldId);

  bool operator==(const AcDbObjectId& o) const { return mStub == o.mStub; }
  bool operator!=(const AcDbObjectId& o) const { return mStub != o.mStub; }
  bool operator<(const AcDbObjectId& o) const;
  operator AcDbStub*() const { return mStub; }

 private:
  AcDbStub* mStub = nullptr;
};

typedef AcArray<AcDbObjectId> AcDbObjectIdArray;

// Conversions between object ids and the ads_name of entity lists.
Acad::ErrorStatus acdbGetAdsName(ads_name objName, AcDbObjectId objId);
Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& objId, const ads_name objName);
