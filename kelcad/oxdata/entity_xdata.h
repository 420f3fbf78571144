// Xdata of entities by their names: which applications an entity carries,
// and the list-driven editor of an entity's groups and one application's
// xdata.
#pragma once

#include "kelcad/platform.h"

namespace KEL {

// 1 when the name of any application with xdata on the entity matches the
// wildcard pattern (acutWcMatch; null: "*"), else 0.
int EntHaveAppName(ads_name ent, const wchar_t* pattern);
// appName is the query (a name or a pattern) and the answer: the stored
// name of the first application found. False, appName unchanged, when the
// entity has no such xdata.
bool GetEntAppName(ads_name ent, CString& appName);

// Edits an entity from a list: (entity-name application-or-nil code value
// code value ...). Codes below 1000 replace the entity's first group of
// the code or are appended; codes from 1000 up replace the application's
// first group of the code or go in before its first 1002 brace group (they
// are skipped without an application). With an application and no pairs
// the application's xdata is emptied. 1 when the entity was changed; 0,
// after "\n (KZSJXZ)参数错!" for a wrong list, when it was not.
int KZSJXZ(resbuf* args);

}  // namespace KEL
