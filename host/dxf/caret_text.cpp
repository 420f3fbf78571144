#include "dxf/caret_text.h"

namespace kelhost::dxf {
namespace {
bool Special(char c) { return static_cast<unsigned char>(c) < 0x20 || c == '^'; }
}  // namespace

bool NeedsCarets(std::string_view text) {
  for (char c : text)
    if (Special(c)) return true;
  return false;
}

std::size_t CaretSpelledSize(std::string_view text) {
  std::size_t n = text.size();
  for (char c : text) n += Special(c) ? 1 : 0;
  return n;
}

char* SpellCarets(std::string_view text, char* out) {
  for (char c : text) {
    if (!Special(c)) {
      *out++ = c;
      continue;
    }
    *out++ = '^';
    *out++ = c == '^' ? ' ' : static_cast<char>(c + 0x40);
  }
  return out;
}

std::string ReadCarets(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    const char next = i + 1 < text.size() ? text[i + 1] : '\0';
    if (c == '^' && next == ' ') {
      out += '^';
      ++i;
    } else if (c == '^' && next >= '@' && next <= '_') {
      out += static_cast<char>(next - 0x40);
      ++i;
    } else {
      out += c;
    }
  }
  return out;
}

}  // namespace kelhost::dxf
