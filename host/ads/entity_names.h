// Shared by the entity-list functions: the working database, names to
// ids, and the tables by their AutoLISP names.
#pragma once

#include <string>

#include "arx/dbdatabase.h"
#include "arx/dbsymtb.h"

namespace kelhost::ads {

AcDbDatabase* WorkingDb();
// The id an ads_name names; null for a null pointer or an invalid name.
AcDbObjectId IdOfName(const ads_name name);
void NameOfId(AcDbObjectId id, ads_name name);
// "LAYER", "LTYPE", "STYLE", "DIMSTYLE", "BLOCK", "VIEW", "UCS", "VPORT",
// "APPID" (any case) in the working database; null for another name.
AcDbObjectId TableByName(const ACHAR* tableName);

}  // namespace kelhost::ads
