// An object opened for the length of a scope: closed when the scope ends,
// whatever way it ends.
#pragma once

#include "kelcad/platform.h"

namespace KEL {

template <class T>
class Opened {
 public:
  Opened(AcDbObjectId id, AcDb::OpenMode mode) {
    if (acdbOpenObject(mObject, id, mode) != Acad::eOk) mObject = nullptr;
  }
  ~Opened() {
    if (mObject) mObject->close();
  }
  Opened(const Opened&) = delete;
  Opened& operator=(const Opened&) = delete;

  explicit operator bool() const { return mObject != nullptr; }
  T* operator->() const { return mObject; }
  T* get() const { return mObject; }

 private:
  T* mObject = nullptr;
};

// The id behind an entity name (null when the name names nothing).
inline AcDbObjectId IdOfName(const ads_name name) {
  AcDbObjectId id;
  if (acdbGetObjectId(id, name) != Acad::eOk) return AcDbObjectId();
  return id;
}

}  // namespace KEL
