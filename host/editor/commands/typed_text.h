// Text as the commands read it from their prompts.
#pragma once

#include <string>

#include "kelhost/text.h"

namespace kelhost::editor {

// Without the blanks around it.
inline std::wstring Trimmed(const std::wstring& s) {
  size_t b = 0, e = s.size();
  while (b < e && IsBlankChar(s[b])) ++b;
  while (e > b && IsBlankChar(s[e - 1])) --e;
  return s.substr(b, e - b);
}

}  // namespace kelhost::editor
