// How an object copied into another drawing finds what it refers to there:
// the records its groups name, the objects its ids point at, and the
// applications its xdata belongs to. The copier between databases
// (object_copier.h) answers; CopyEntity and CopyObject ask.
#pragma once

#include "arx/dbmain.h"

namespace kelhost::db {

class CopyTranslator {
 public:
  virtual ~CopyTranslator() = default;
  // The database the copies go to.
  virtual AcDbDatabase* target() const = 0;
  // The target's record standing for the source's record of that name in
  // the table of the same kind (table is the target's); null when there
  // is none, which fails the copy.
  virtual AcDbObjectId record(AcDbObjectId targetTable, const wchar_t* name) = 0;
  // The target's object standing for an object that a group (code) refers
  // to (every reference is asked, the target's own too); null when the
  // copy does without the reference.
  virtual AcDbObjectId reference(int code, AcDbObjectId source) = 0;
  // Whether an application of xdata is registered in the target
  // (registering it there when it is not yet).
  virtual bool application(const wchar_t* name) = 0;
};

}  // namespace kelhost::db
