// What a drawing read from a file holds beyond the database's objects, kept
// so that saving gives it back: the CLASSES section, the BLOCK and ENDBLK
// entities of each block (their handles and groups), the groups of block
// records the host does not model, tables and sections it does not know.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "dxf/raw_group.h"

class AcDbDatabase;
class AcDbStub;

namespace kelhost::dxf {

struct BlockExtras {
  std::uint64_t beginHandle = 0, endHandle = 0;
  RawGroups beginBody, endBody;  // groups after the owner (BLOCK, ENDBLK)
  RawGroups recordBody;          // the block record's groups after its name
};

struct FileExtras {
  std::string version;  // $ACADVER of the file read
  RawGroups classes;    // the CLASSES section's groups
  std::map<const AcDbStub*, BlockExtras> blocks;  // by the block record
  std::vector<RawGroups> unknownTables;          // TABLE ... ENDTAB
  std::vector<std::pair<std::string, RawGroups>> otherSections;  // THUMBNAILIMAGE, ACDSDATA
};

// The database's extras (made empty on first use).
FileExtras& ExtrasOf(AcDbDatabase* db);

}  // namespace kelhost::dxf
