// The one description of an object's DXF groups. Each class's dxfFields()
// walks its groups through a GroupFiler: a writer turns them into a chain
// (entity lists, saved states, files), a reader fills the object from a
// chain (entmake, entmod, restored states, files).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "arx/dbdatabase.h"

namespace kelhost::dxf {

enum class Presence {
  kAlways,         // always written; a reader uses the default when absent
  kUnlessDefault,  // written only when it differs from the default
  kRequired,       // always written; a reader fails when absent
};

class GroupFiler {
 public:
  explicit GroupFiler(AcDbDatabase* db) : mDb(db) {}
  virtual ~GroupFiler() = default;
  GroupFiler(const GroupFiler&) = delete;
  GroupFiler& operator=(const GroupFiler&) = delete;

  virtual bool reading() const = 0;
  // A reader that leaves absent groups as they are (entmod) instead of
  // setting their defaults.
  virtual bool keepsAbsent() const { return false; }
  // A writer that keeps what refers to erased objects too (a dictionary's
  // entries of erased objects), so that a state saved for undo brings them
  // back where they were when the object is unerased.
  virtual bool keepsErased() const { return false; }
  AcDbDatabase* database() const { return mDb; }

  // A subclass marker (100): the groups that follow belong to it.
  virtual void subclass(const wchar_t* marker) = 0;
  virtual void text(int code, std::wstring& v, const wchar_t* def, Presence p) = 0;
  virtual void real(int code, double& v, double def, Presence p) = 0;
  virtual void point(int code, AcGePoint3d& v, Presence p) = 0;
  virtual void point2d(int code, AcGePoint2d& v, Presence p) = 0;
  virtual void vector(int code, AcGeVector3d& v, const AcGeVector3d& def, Presence p) = 0;
  virtual void int16(int code, short& v, short def, Presence p) = 0;
  virtual void int32(int code, std::int32_t& v, std::int32_t def, Presence p) = 0;
  // A reference to another object (codes 330-369, 390-399).
  virtual void id(int code, AcDbObjectId& v, Presence p) = 0;
  // A symbol-table record named by its name (layer 8, linetype 6, text
  // style 7, ...). A reader with createMissing queues a new record of that
  // name (see pendingRecords); otherwise an unknown name fails.
  virtual void record(int code, AcDbObjectId& v, AcDbObjectId table, const wchar_t* def, Presence p,
                      bool createMissing) = 0;
  // The table's record of that name (without regard to case), or null:
  // how a reader finds the records that groups name. A reader that copies
  // objects from another drawing finds the copies here.
  virtual AcDbObjectId findRecord(AcDbObjectId table, const wchar_t* name);
  // Free-form data (an xrecord's): every remaining group of the section.
  virtual void chain(resbuf*& data) = 0;
  // A run of records each led by leadCode (polyline vertices). A writer
  // is told count and returns it; a reader returns how many it finds.
  // enterRecord(i) confines the following groups to record i.
  virtual size_t beginRepeat(int leadCode, size_t count) = 0;
  virtual void enterRecord(size_t index) = 0;
  virtual void endRepeat() = 0;

  // A reader's verdict: the first problem found, naming the group.
  bool failed() const { return !mError.empty(); }
  const std::wstring& error() const { return mError; }
  void fail(const std::wstring& message) {
    if (mError.empty()) mError = message;
  }

  // Records a reader found missing and may create (table, name, where the
  // new id goes).
  struct PendingRecord {
    AcDbObjectId table;
    std::wstring name;
    AcDbObjectId* target;
  };
  std::vector<PendingRecord> pendingRecords;

 private:
  AcDbDatabase* mDb;
  std::wstring mError;
};

}  // namespace kelhost::dxf
