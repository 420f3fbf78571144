#include "editor/erased_objects.h"

namespace kelhost::editor {
namespace {
std::vector<AcDbObjectId>& Last() {
  static std::vector<AcDbObjectId> last;
  return last;
}
}  // namespace

void RememberErased(std::vector<AcDbObjectId> ids) { Last() = std::move(ids); }
const std::vector<AcDbObjectId>& LastErased() { return Last(); }

}  // namespace kelhost::editor
