// Xdata chains: a 1001 group naming a registered application, then that
// application's groups (1000-1071), then the next application.
#pragma once

#include "arx/dbmain.h"

namespace kelhost::db {

constexpr long kXDataLimit = 16383;

// eOk, or why the chain cannot be xdata of an object in db: eInvalidResBuf
// (no leading 1001, a code outside 1000-1071, unbalanced 1002 braces),
// eRegappIdNotFound (an application not registered).
Acad::ErrorStatus CheckXData(AcDbDatabase* db, const resbuf* xdata);
// The bytes a chain takes as xdata: per group its code (2), then strings
// as a length (2) and UTF-16 units (2 each), binary chunks as a length
// (1) and bytes, names and handles 8, points 24, reals 8, 1070 2, 1071 4.
long XDataSize(const resbuf* xdata);
// current with each application of update replaced (or removed when it
// has no groups), new applications after the others. A new chain.
resbuf* MergeXData(const resbuf* current, const resbuf* update);
// The part of xdata for applications matching a pattern (acutWcMatch,
// without regard to case); a new chain.
resbuf* SelectXData(const resbuf* xdata, const wchar_t* pattern);

}  // namespace kelhost::db
