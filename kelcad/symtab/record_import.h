// The work behind CImportDWT, shared by its five kinds of record: finding
// a record by name in a symbol table, erasing it, copying it from one
// drawing into another, and the names the import-all forms leave alone.
#pragma once

#include <vector>

#include "kelcad/platform.h"

namespace KEL {
namespace RecordImport {

enum class Kind { kTextStyle, kDimStyle, kLayer, kLinetype, kBlock };

// The table of kind in db, opened in mode (the caller closes it).
Acad::ErrorStatus OpenTable(AcDbDatabase* db, Kind kind, AcDbSymbolTable*& table, AcDb::OpenMode mode);

// The standard records an import of all records skips: "Standard",
// "ISO-25", "0", "ByBlock"/"ByLayer"/"Continuous" (exact case), and every
// block name containing "Model_Space" or "Paper_Space".
bool SkippedByImportAll(Kind kind, const wchar_t* name);

// The names of the records of kind in db, in table order; false when the
// table cannot be read (a template that was never read has none).
bool RecordNames(AcDbDatabase* db, Kind kind, std::vector<CString>& names);

// Erases the first record of kind in db named name (any case). Its id goes
// to erased (null when nothing was erased). The erase status, or the
// status of the last record opened when none matched.
Acad::ErrorStatus Remove(Kind kind, const wchar_t* name, AcDbDatabase* db, AcDbObjectId* erased);

// A record of the source copied into the target (a text style, dimension
// style, layer or linetype: cloned out of the source and added to the
// target's table, which brings what it names along; a block: a new record
// filled with copies of the source block's entities). With replace the
// target's record of that name is erased first, and brought back when the
// copy fails, so that a failure leaves the target as it was.
Acad::ErrorStatus Import(Kind kind, AcDbDatabase* source, AcDbDatabase* target, const wchar_t* name,
                         AcDbObjectId& newId, bool replace);

}  // namespace RecordImport
}  // namespace KEL
