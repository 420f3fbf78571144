// The working database: the drawing of the host's one open document,
// unless code made another database the working one.
#include "arx/dbapserv.h"
#include "arx/dbdatabase.h"
#include "db/working.h"

namespace {
AcDbDatabase* gOverride = nullptr;
bool gZeroDocument = false;

// Made on first use and kept for the life of the process (reachable, so
// no destruction order to worry about at exit).
AcDbDatabase*& DocumentDatabase() {
  static AcDbDatabase* db = nullptr;
  return db;
}
}  // namespace

AcDbDatabase* AcDbHostApplicationServices::workingDatabase() const {
  if (gOverride) return gOverride;
  if (gZeroDocument) return nullptr;
  return kelhost::db::DocumentDrawing();
}

// Null (or the document's own database) makes the document's drawing the
// working one again.
void AcDbHostApplicationServices::setWorkingDatabase(AcDbDatabase* database) {
  gOverride = database == DocumentDatabase() ? nullptr : database;
}

namespace kelhost::db {
void DatabaseGoing(AcDbDatabase* database) {
  if (gOverride == database) gOverride = nullptr;
}

AcDbDatabase* DocumentDrawing() {
  AcDbDatabase*& db = DocumentDatabase();
  if (!db) db = new AcDbDatabase(true, false);
  return db;
}

void SetZeroDocumentState(bool on) { gZeroDocument = on; }

void NewDocumentDatabase() {
  AcDbDatabase*& db = DocumentDatabase();
  AcDbDatabase* old = db;
  db = nullptr;
  delete old;
}
}  // namespace kelhost::db
