#include "input_line.h"

namespace kelcad_console {

int OpenParens(const std::wstring& text) {
  int depth = 0;
  bool inString = false;
  for (size_t i = 0; i < text.size(); ++i) {
    wchar_t c = text[i];
    if (inString) {
      if (c == L'\\') ++i;
      else if (c == L'"') inString = false;
    } else if (c == L'"') {
      inString = true;
    } else if (c == L';') {
      if (i + 1 < text.size() && text[i + 1] == L'|') {
        size_t end = text.find(L"|;", i + 2);
        if (end == std::wstring::npos) return depth + 1;  // block comment still open
        i = end + 1;
      } else {
        size_t end = text.find(L'\n', i);
        if (end == std::wstring::npos) break;
        i = end;
      }
    } else if (c == L'(') {
      ++depth;
    } else if (c == L')') {
      --depth;
    }
  }
  return inString ? depth + 1 : depth;
}

bool IsLispInput(const std::wstring& line) {
  for (wchar_t c : line) {
    if (c == L' ' || c == L'\t') continue;
    return c == L'(' || c == L'!' || c == L'\'' || c == L';';
  }
  return false;
}

}  // namespace kelcad_console
