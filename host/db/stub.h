// The database's record of one object: its handle, the object itself, and
// who has it open. An AcDbObjectId points at one of these.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "arx/dbmain.h"

class AcDbStub {
 public:
  AcDbDatabase* db = nullptr;
  Adesk::UInt64 handle = 0;
  std::size_t order = 0;  // position in the database's list of stubs
  std::unique_ptr<AcDbObject> object;
  unsigned short readers = 0;
  unsigned short notifiers = 0;
  bool writer = false;
  bool erased = false;
  bool erasedWithOwner = false;  // erased because its owner was: unerased with it
  // The undo journal already holds the object's state from before the step
  // it is recording (cleared when that step closes).
  bool undoRecorded = false;
};

namespace kelhost::db {

// Whether a stub belongs to a live database (see StubPool); an id whose
// stub does not names nothing.
bool IsLiveStub(const AcDbStub* stub);

// The object behind an id without opening it (the host's own readers), or
// null for an invalid id.
AcDbObject* Peek(AcDbObjectId id);
template <class T>
T* PeekAs(AcDbObjectId id) {
  return T::cast(Peek(id));
}

// Objects opened (or added) and not yet closed, over all databases.
int OpenObjectCount();
void AdjustOpenCount(int delta);
// One line per object still open: handle, DXF name and how it is open.
std::vector<std::wstring> DescribeOpenObjects();

// Told before an object is opened for write (or changed as if it were)
// and after an object joins a database: where the undo journal records
// prior states and the drawing's extents learn that they changed. Also
// told before one of a database's header variables changes (the
// database's own setters, acedSetVar, the host's SetHostVar; name in upper
// case) and as a database goes.
class ObjectObserver {
 public:
  virtual ~ObjectObserver() = default;
  virtual void beforeWrite(AcDbObject* object) = 0;
  virtual void added(AcDbObject* object) = 0;
  virtual void beforeHeaderWrite(AcDbDatabase* db, const wchar_t* name) { (void)db, (void)name; }
  virtual void databaseGoing(AcDbDatabase* db) { (void)db; }
};
// Observers are told in the order they were added.
void AddObjectObserver(ObjectObserver* observer);
void RemoveObjectObserver(ObjectObserver* observer);
void NotifyBeforeWrite(AcDbObject* object);
void NotifyAdded(AcDbObject* object);
void NotifyBeforeHeaderWrite(AcDbDatabase* db, const wchar_t* name);
void NotifyDatabaseGoing(AcDbDatabase* db);

}  // namespace kelhost::db
