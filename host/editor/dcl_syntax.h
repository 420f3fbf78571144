// The Dialog Control Language as written in .dcl files: definitions of
// tiles ("name : prototype { attributes and children }"), children that
// derive from a prototype (": button { key = "ok"; }") or use a defined
// tile as it is ("ok_cancel;"), attributes ("label = "Name";"), comments
// (// and /* */) and @include "other.dcl". The parser only reads; tiles
// are resolved against their prototypes when a dialog is made
// (dcl_tiles.h).
#pragma once

#include <string>
#include <vector>

namespace kelhost::editor::dcl {

struct Attribute {
  std::wstring name;   // as written; attribute names are matched in lower case
  std::wstring value;  // a string's characters, or the number or word as written
  bool isString = false;
  int line = 0;
};

struct Node {
  std::wstring name;       // a definition's name; empty for a child tile
  std::wstring prototype;  // what it derives from (or, for a reference, uses)
  bool reference = false;  // "ok_cancel;": the defined tile as it is
  std::vector<Attribute> attributes;
  std::vector<Node> children;
  int line = 0;
  std::wstring file;  // where it was written (included files differ)
};

// Where a file went wrong, as the platform reports it.
struct Error {
  std::wstring file;
  int line = 0;
  std::wstring message;  // "syntax error", ...
  std::wstring symbol;   // the offending token, when there is one
  // "Error in dialog file\n"FILE", line N:\nMESSAGE\nSymbol: "X"."
  std::wstring text() const;
};

// Tiles nest at most this deep (braces), and @include at most this deep:
// deeper files are refused rather than read.
constexpr int kMaxNesting = 40;
constexpr int kMaxIncludeDepth = 8;

// Reads a file's definitions. includeResolver finds and reads an @include
// file (its path as reported, its text); false when it cannot be read.
using IncludeResolver = bool (*)(const std::wstring& name, const std::wstring& fromFile, std::wstring& path,
                                 std::wstring& text);
bool ParseDcl(const std::wstring& text, const std::wstring& file, std::vector<Node>& definitions, Error& error,
              IncludeResolver includes = nullptr, int includeDepth = 0);

}  // namespace kelhost::editor::dcl
