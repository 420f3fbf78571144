// Complex entities (heavy polylines, block references with attributes):
// appending their sub-entities and closing the run with a SEQEND.
#pragma once

#include <vector>

#include "arx/dbpoly.h"

namespace kelhost::db {

// Adds item to the database as the next sub-entity of owner (resident and
// open for write); item gets owner's properties unless it has a layer, and
// stays open for write. The first item brings the SEQEND. An owner not in
// a database keeps item among its pending sub-entities (id stays null).
Acad::ErrorStatus AppendToSequence(AcDbEntity* owner, AcDbSubentSequence& seq, AcDbEntity* item, AcDbObjectId& id);

// Adds the pending sub-entities of an owner that has just joined a
// database (and is open for write), closing each.
void CommitPendingSubentities(AcDbObject* owner);

// The sub-entities that count: those in the database not erased, then the
// pending ones, in order (no open state changes).
std::vector<AcDbEntity*> LiveSubentities(const AcDbSubentSequence& seq);

// The live sub-entities of kind T ready to change: those in the database
// opened for write (all or none: status tells why not), the pending ones
// as they are. Whatever was opened is closed with this.
template <class T>
class WritableSubentities {
 public:
  explicit WritableSubentities(const AcDbSubentSequence& seq) {
    for (const AcDbObjectId& id : seq.items) {
      if (id.isErased()) continue;
      T* item = nullptr;
      status = acdbOpenObject(item, id, AcDb::kForWrite);
      if (status != Acad::eOk) return;
      mOpened.push_back(item);
    }
    for (const auto& held : seq.pending)
      if (T* item = T::cast(held.get())) mPending.push_back(item);
  }
  ~WritableSubentities() {
    for (T* item : mOpened) item->close();
  }
  WritableSubentities(const WritableSubentities&) = delete;
  WritableSubentities& operator=(const WritableSubentities&) = delete;
  std::vector<T*> all() const {
    std::vector<T*> out = mOpened;
    out.insert(out.end(), mPending.begin(), mPending.end());
    return out;
  }
  Acad::ErrorStatus status = Acad::eOk;

 private:
  std::vector<T*> mOpened, mPending;
};

// The sequence of a complex entity, or null for any other object.
AcDbSubentSequence* SequenceOf(AcDbObject* object);

}  // namespace kelhost::db
