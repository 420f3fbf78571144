// An ASCII DXF file split into groups, each with the line its code is on.
// Codes, numbers and text encoding are checked here so that everything
// after can trust the values.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "dxf/raw_group.h"

namespace kelhost::dxf {

// A group's value (UTF-8): a view of the file's bytes, or of text the
// tokenizer decoded. Reads as a std::string_view and converts to a
// std::string where one is needed.
class TokenText : public std::string_view {
 public:
  TokenText() = default;
  TokenText(std::string_view text) : std::string_view(text) {}  // NOLINT: a view is a value's text
  operator std::string() const { return std::string(data(), size()); }
  TokenText substr(size_type pos = 0, size_type count = npos) const { return std::string_view::substr(pos, count); }
};

struct Token {
  int code;
  std::uint32_t line;  // 1-based line of the group code
  TokenText value;
};

// The groups of a file. Values view the file's bytes, which must outlive
// the list, or text the list keeps (older files' code page and \U+XXXX
// escapes decoded, control characters spelled with carets read back).
class TokenList : public std::vector<Token> {
 public:
  // Keeps text and gives a view of it that lasts as long as the list.
  std::string_view keep(std::string text) {
    mKept.push_back(std::move(text));
    return mKept.back();
  }

  // A group the reader looks for first: where it is, its code and value.
  struct Mark {
    std::uint32_t index;
    int code;
    TokenText value;
  };
  // The 0 groups (each starts a section, an entity, an object, ...) and
  // the handle groups (5, and 105 that a dimension style has), in file
  // order: the reader goes from one to the next without passing over, or
  // even loading, the groups between.
  std::vector<Mark> starts, handles;

 private:
  std::deque<std::string> mKept;
};

// Splits bytes into groups. A drawing older than 2007 (AC1021) that is not
// valid UTF-8 is taken as Windows-1252, as such files are written in the
// system code page; a newer one must be UTF-8. False with a message
// naming the line on the first fault.
bool Tokenize(const std::string& bytes, TokenList& tokens, std::wstring& error);
// The tokens view the bytes: a temporary would leave them dangling.
bool Tokenize(std::string&& bytes, TokenList& tokens, std::wstring& error) = delete;

// Whether the bytes are well-formed UTF-8.
bool IsValidUtf8(std::string_view bytes);

}  // namespace kelhost::dxf
