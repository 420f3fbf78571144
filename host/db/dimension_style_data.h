// The style data a dimension draws with: its style record's variables with
// the dimension's own values (its DSTYLE overrides) over them.
#pragma once

#include <memory>

#include "arx/dbsymtb.h"

namespace kelhost::db {

// Every variable of from (reals, integers, records, DIMPOST/DIMAPOST) into
// to, which is open for write or not in a database.
void CopyDimStyleData(const AcDbDimStyleTableRecord& from, AcDbDimStyleTableRecord& to);

// A record in no database holding the data: the style's (a new drawing's
// Standard values when style is null or not a style), then each of the
// dimension's own values (dimension may be null).
std::unique_ptr<AcDbDimStyleTableRecord> EffectiveDimStyle(AcDbObjectId style, const AcDbObject* dimension);

}  // namespace kelhost::db
