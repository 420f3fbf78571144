// What an AcDbDatabase holds: every object's stub in the order made, the
// handle index, the ids of its tables and standard records, its header
// variables, and the walking positions of tblnext and dictnext.
#pragma once

#include <unordered_map>

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "arx/dbdatabase.h"
#include "db/active_view.h"
#include "db/handle_index.h"
#include "db/header_vars.h"
#include "db/stub.h"
#include "db/stub_pool.h"

namespace kelhost::dxf {
struct FileExtras;
}

namespace kelhost::db {

enum class Table { kBlock, kLayer, kLinetype, kTextStyle, kDimStyle, kView, kUcs, kViewport, kRegApp, kCount };

// A stub of the database, as its list holds it (the pool owns the stub).
class StubRef {
 public:
  explicit StubRef(AcDbStub* stub) : mStub(stub) {}
  AcDbStub* get() const { return mStub; }
  AcDbStub* operator->() const { return mStub; }
  AcDbStub& operator*() const { return *mStub; }

 private:
  AcDbStub* mStub;
};

struct DatabaseState {
  StubPool pool;                // owns the stubs and, through them, the objects
  std::deque<StubRef> stubs;    // in the order the objects were added
  HandleIndex byHandle;
  Adesk::UInt64 nextHandle = 1;

  AcDbObjectId tables[static_cast<int>(Table::kCount)];
  AcDbObjectId namedObjects, groups, layouts;
  AcDbObjectId byLayer, byBlock, continuous, layerZero, modelSpace, paperSpace;

  // Header variables.
  AcDbObjectId clayer, celtype, textstyle, dimstyle;
  Adesk::UInt16 cecolor = 256;
  double celtscale = 1.0, textsize = 2.5, ltscale = 1.0;
  Adesk::Int16 celweight = AcDb::kLnWtByLayer;
  bool tilemode = true;
  // The other header variables (see header_vars.h).
  HeaderStore headerVars;
  // Views the editor showed before the current one, oldest first (ZOOM
  // Previous).
  std::vector<ActiveView> previousViews;
  // EXTMIN and EXTMAX as last worked out, for the space extentsSpace;
  // stale once an object changed since (db/drawing_extents.h).
  bool extentsStale = true;
  AcDbObjectId extentsSpace;
  // The file the drawing was read from (empty for one made in memory).
  std::wstring fileName;
  // What a drawing file held that has no object of its own (dxf/file_extras.h).
  std::shared_ptr<dxf::FileExtras> fileExtras;

  // Dimension blocks: the dimension each *D block is drawn for (null when
  // several draw with it), complete for the stubs counted when it was last
  // built; and the number the next new *D block may take.
  std::unordered_map<AcDbStub*, AcDbStub*> dimBlockDrawnFor;
  size_t dimBlocksIndexedAt = 0;
  int nextDimBlock = 1;

  // AutoLISP walking positions: the last record tblnext gave per table,
  // and the last key dictnext gave per dictionary.
  std::map<AcDbStub*, AcDbObjectId> tableCursor;
  std::map<AcDbStub*, std::wstring> dictCursor;

  // Adds an object (not yet in a database) under a new handle, or under
  // the given one when it is free. The object is open for write.
  AcDbStub* add(AcDbDatabase* db, AcDbObject* object, Adesk::UInt64 handle = 0);
};

// Gives a database object its stub (the database's friend access).
void Attach(AcDbObject* object, AcDbStub* stub);

// Fills a database with a new drawing's tables, records and dictionaries.
void BuildDefaultDrawing(AcDbDatabase* db);

}  // namespace kelhost::db
