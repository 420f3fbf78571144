// File-system helpers of the family (paths in the family's Windows form).
#pragma once

namespace KEL {
// True when the file or directory exists (GetFileAttributesW; the path is
// mapped to the native file system, components matched in any case). A
// null or empty path does not exist.
bool IsExist(const wchar_t* path);
}  // namespace KEL
