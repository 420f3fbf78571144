// What a drawing read from a file holds beyond the database's objects, kept
// so that saving gives it back: the CLASSES section, the BLOCK and ENDBLK
// entities of each block (their handles and the groups the block record
// does not model), the groups of block records the host does not model
// (a preview image), the persistent reactors of modelled objects, tables
// and sections it does not know.
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
  // BLOCK: its entity groups (layer, paper space) up to its AcDbBlockBegin
  // marker, and the groups after it other than name, flags, base point,
  // path and description.
  RawGroups beginEntity, beginOther;
  RawGroups endBody;      // ENDBLK: the groups after the owner
  RawGroups recordOther;  // BLOCK_RECORD: groups other than name, layout, units, 280, 281
};

struct FileExtras {
  std::string version;  // $ACADVER of the file read
  RawGroups classes;    // the CLASSES section's groups
  std::map<const AcDbStub*, BlockExtras> blocks;  // by the block record
  std::vector<RawGroups> unknownTables;          // TABLE ... ENDTAB
  std::vector<std::pair<std::string, RawGroups>> otherSections;  // THUMBNAILIMAGE, ACDSDATA
  // 102 {ACAD_REACTORS ... } of modelled objects, by object.
  std::map<const AcDbStub*, RawGroups> reactors;
};

// The database's extras (made empty on first use).
FileExtras& ExtrasOf(AcDbDatabase* db);

}  // namespace kelhost::dxf
