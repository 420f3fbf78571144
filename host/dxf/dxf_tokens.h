// An ASCII DXF file split into groups. Codes, numbers and text encoding
// are checked here so that everything after can trust the values.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "dxf/raw_group.h"

namespace kelhost::dxf {

// A group's value (UTF-8): a view of the file's bytes, or of text the
// tokenizer decoded. Reads as a std::string_view and converts to a
// std::string where one is needed. A file has millions of groups: the
// view is packed with its group's code into 16 bytes (see Token).
#pragma pack(push, 4)
class TokenText {
 public:
  TokenText() = default;
  TokenText(std::string_view text)  // NOLINT: a view is a value's text
      : mData(text.data()), mSize(static_cast<std::uint32_t>(text.size())) {}
  operator std::string_view() const { return {mData, mSize}; }
  operator std::string() const { return std::string(mData, mSize); }
  const char* data() const { return mData; }
  size_t size() const { return mSize; }
  bool empty() const { return mSize == 0; }
  char operator[](size_t i) const { return mData[i]; }
  template <class T>
  size_t find(const T& what, size_t from = 0) const {
    return std::string_view(*this).find(what, from);
  }
  TokenText substr(size_t pos = 0, size_t count = std::string_view::npos) const {
    return std::string_view(*this).substr(pos, count);
  }
  friend bool operator==(const TokenText& a, std::string_view b) { return std::string_view(a) == b; }
  friend bool operator!=(const TokenText& a, std::string_view b) { return std::string_view(a) != b; }
  friend bool operator<(const TokenText& a, std::string_view b) { return std::string_view(a) < b; }

 private:
  const char* mData = nullptr;
  std::uint32_t mSize = 0;  // the tokenizer refuses files of 4 GB or more
};

struct Token {
  TokenText value;
  int code;
};
#pragma pack(pop)
static_assert(sizeof(Token) == 16, "a group takes 16 bytes");

// The groups of a file. Values view the file's bytes, which must outlive
// the list, or text the list keeps (older files' code page and \U+XXXX
// escapes decoded, control characters spelled with carets read back).
class TokenList : public std::vector<Token> {
 public:
  // The bytes the values view (set by Tokenize).
  void setSource(std::string_view bytes) {
    mSource = bytes;
    mCountedTo = nullptr;
  }
  // Keeps text read from the group whose code is on that line, and gives
  // a view of it that lasts as long as the list.
  std::string_view keep(std::string text, std::uint32_t line) {
    mKept.push_back(std::move(text));
    mKeptLines[mKept.back().data()] = line;
    return mKept.back();
  }
  // The 1-based line of a group's code. Worked out only when a message
  // names it: counting line feeds up to the value (which starts the next
  // line) costs nothing while the file reads well.
  std::uint32_t lineOf(const Token& t) const;

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
  std::string_view mSource;
  mutable const char* mCountedTo = nullptr;  // line feeds before it: mFeedsBefore
  mutable std::uint32_t mFeedsBefore = 0;
  std::deque<std::string> mKept;
  std::unordered_map<const char*, std::uint32_t> mKeptLines;
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
