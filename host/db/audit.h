// The host's check of a drawing's integrity (what the AUDIT command looks
// at first): every live object's references, owner and extension
// dictionary name live objects of the same drawing, and each entity is
// held by the block that owns it. Tests and the clone code's checks use
// it; nothing is repaired.
#pragma once

#include <string>
#include <vector>

class AcDbDatabase;

namespace kelhost::db {

// One line per problem (handle, class and what is wrong); empty when the
// drawing is sound.
std::vector<std::wstring> AuditReferences(const AcDbDatabase* db);

}  // namespace kelhost::db
