#include "ads/number_reader.h"

#include <charconv>
#include <string>

namespace kelhost::units {

bool ReadNumber(Cursor& c, double& v, bool& integral) {
  size_t start = c.i;
  while (IsDigit(c.peek())) ++c.i;
  integral = true;
  if (c.peek() == L'.') {
    integral = false;
    ++c.i;
    while (IsDigit(c.peek())) ++c.i;
  }
  if (c.i == start || (c.i == start + 1 && c.s[start] == L'.')) {
    c.i = start;
    return false;
  }
  if (c.peek() == L'e' || c.peek() == L'E') {
    size_t mark = c.i++;
    if (c.peek() == L'+' || c.peek() == L'-') ++c.i;
    if (!IsDigit(c.peek())) {
      c.i = mark;
    } else {
      integral = false;
      while (IsDigit(c.peek())) ++c.i;
    }
  }
  std::string ascii(c.s.begin() + static_cast<long>(start), c.s.begin() + static_cast<long>(c.i));
  return std::from_chars(ascii.data(), ascii.data() + ascii.size(), v).ec == std::errc();
}

}  // namespace kelhost::units
