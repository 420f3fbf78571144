// Whether a module of the family is loaded into the CAD program.
#include "kelbase/software.h"

namespace KEL {
namespace {
// The part of a path after its last separator, either kind.
CString FileNamePart(const CString& path) {
  const int slash = path.ReverseFind(L'/');
  const int backslash = path.ReverseFind(L'\\');
  const int last = slash > backslash ? slash : backslash;
  return last < 0 ? path : path.Mid(last + 1);
}

// "RNXGXLib" and "rnxgxlib.arx" both name "RNXGXLIB.ARX".
CString CanonicalModuleName(const wchar_t* moduleName) {
  CString name = FileNamePart(CString(moduleName));
  name.Trim();
  if (name.IsEmpty()) return name;
  name.MakeUpper();
  if (name.GetLength() < 4 || name.Right(4) != L".ARX") name += L".ARX";
  return name;
}
}  // namespace

bool IsLoadedArx(const wchar_t* moduleName) {
  if (moduleName == nullptr) return false;
  const CString wanted = CanonicalModuleName(moduleName);
  if (wanted.IsEmpty()) return false;

  resbuf* loaded = acedArxLoaded();
  bool found = false;
  for (const resbuf* node = loaded; node != nullptr && node->restype == RTSTR; node = node->rbnext) {
    if (node->resval.rstring != nullptr && FileNamePart(CString(node->resval.rstring)).CompareNoCase(wanted) == 0) {
      found = true;
      break;
    }
  }
  if (loaded != nullptr) acutRelRb(loaded);
  return found;
}
}  // namespace KEL
