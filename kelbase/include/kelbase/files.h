// File-system helpers of the family (paths in the family's Windows form).
#pragma once

namespace KEL {
// True when the file or directory exists.
bool IsExist(const wchar_t* path);
}  // namespace KEL
