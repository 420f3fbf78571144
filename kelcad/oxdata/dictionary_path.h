// Dictionary paths: names separated by backslashes, each one nested
// dictionary below a root (an extension dictionary or the named-object
// dictionary).
#pragma once

#include "kelcad/platform.h"

namespace KEL {
namespace DictionaryPath {

// Paths are read into a buffer of this many characters: a longer path
// (with its terminator) is refused.
constexpr size_t kPathBuffer = 260;

// The names of a path, read into a buffer of kPathBuffer characters whose
// backslashes become terminators (so no name is copied again); empty
// names are skipped.
class Names {
 public:
  // False, with no names, for a path too long. A null path has no names.
  bool Read(const wchar_t* path);
  const wchar_t* const* begin() const { return mNames; }
  const wchar_t* const* end() const { return mNames + mCount; }

 private:
  wchar_t mBuffer[kPathBuffer];
  const wchar_t* mNames[kPathBuffer / 2 + 1];
  size_t mCount = 0;
};

// Walks the names from root. With create, a missing level is made (an
// AcDbDictionary added under the name) and the walk goes on in it;
// without, the walk ends at the deepest dictionary reached and complete
// (when given) tells whether every level was there. Null, with the
// status in es, when a level cannot be opened or made or root is null.
AcDbObjectId Walk(AcDbObjectId root, const Names& names, bool create, Acad::ErrorStatus& es,
                  bool* complete = nullptr);

// The entry key of the dictionary dict: eOk with its id, else the status
// of the open or the lookup (eKeyNotFound).
Acad::ErrorStatus Lookup(AcDbObjectId dict, const wchar_t* key, AcDbObjectId& entry);

}  // namespace DictionaryPath
}  // namespace KEL
