// The HEADER section: variables read into the database's header store (and
// the fields the database keeps itself), and written back from them.
#pragma once

#include <map>
#include <string>

#include "dxf/dxf_tokens.h"

class AcDbDatabase;

namespace kelhost::dxf {

// The variables the database holds in fields of its own ($CLAYER, ...),
// read as text by name (without '$') for the reader to apply once the
// tables exist.
using OwnHeaderVars = std::map<std::wstring, std::string>;

// Reads tokens [first, last) of the HEADER section: every variable goes to
// the header store, except the database's own, which go to own.
bool ReadHeader(const TokenList& tokens, size_t first, size_t last, AcDbDatabase* db, OwnHeaderVars& own,
                std::wstring& error);

// Sets the database's own variables from what the file said (records by
// name; unknown names keep the defaults).
void ApplyOwnHeaderVars(AcDbDatabase* db, const OwnHeaderVars& own);

// The HEADER section's groups (between SECTION/HEADER and ENDSEC).
void WriteHeader(AcDbDatabase* db, std::uint64_t handseed, RawGroups& out);

}  // namespace kelhost::dxf
