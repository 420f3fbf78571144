#include "dxf/file_extras.h"

#include "db/database_state.h"

namespace kelhost::dxf {

FileExtras& ExtrasOf(AcDbDatabase* db) {
  auto& extras = db->state().fileExtras;
  if (!extras) extras = std::make_shared<FileExtras>();
  return *extras;
}

}  // namespace kelhost::dxf
