// The objects every drawing has beyond its symbol tables: the group and
// layout dictionaries, a layout for model space ("Model") and for paper
// space ("Layout1") each linked both ways with its block, the "Standard"
// multiline style and the "Normal" plot style name (the default of
// ACAD_PLOTSTYLENAME).
#pragma once

class AcDbDatabase;

namespace kelhost::db {

// Adds whichever of them the database lacks (a new drawing, a file from an
// older release); objects already there are kept as they are. Every object
// of the database must be closed.
void EnsureStandardObjects(AcDbDatabase* db);

}  // namespace kelhost::db
