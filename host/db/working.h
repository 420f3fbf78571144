// The document's database as the host manages it.
#pragma once

class AcDbDatabase;

namespace kelhost::db {
// A database being destroyed stops being the working one.
void DatabaseGoing(AcDbDatabase* database);
// Replaces the document's drawing with a new one (made on next use).
void NewDocumentDatabase();
// The document's own drawing (made on first use), whichever database is
// the working one.
AcDbDatabase* DocumentDrawing();
// The platform's state with no document open: while on, the working
// database is null unless code made a database the working one.
void SetZeroDocumentState(bool on);
}  // namespace kelhost::db
