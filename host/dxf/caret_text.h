// Control characters in a file's text values. A group's value is one line,
// so a text holding a line feed or another ASCII control character is
// written with the character spelled as a caret and a letter ("^J" for a
// line feed, "^@" for NUL ... "^_" for 31) and a caret itself as "^ "; a
// file being read gets the characters back.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kelhost::dxf {

// Whether the text needs spelling out, and how long it then is.
bool NeedsCarets(std::string_view text);
std::size_t CaretSpelledSize(std::string_view text);
// Writes the spelled-out text at out (CaretSpelledSize bytes); returns the end.
char* SpellCarets(std::string_view text, char* out);
// The text with its caret spellings turned back into characters; a caret
// followed by anything else stays as it is.
std::string ReadCarets(std::string_view text);

}  // namespace kelhost::dxf
