// An ASCII DXF file split into groups, each with the line its code is on.
// Codes, numbers and text encoding are checked here so that everything
// after can trust the values.
#pragma once

#include <string>
#include <vector>

#include "dxf/raw_group.h"

namespace kelhost::dxf {

struct Token {
  int code;
  std::string value;
  size_t line;  // 1-based line of the group code
};

// Splits bytes into groups. A drawing older than 2007 (AC1021) that is not
// valid UTF-8 is taken as Windows-1252, as such files are written in the
// system code page; a newer one must be UTF-8. False with a message
// naming the line on the first fault.
bool Tokenize(const std::string& bytes, std::vector<Token>& tokens, std::wstring& error);

// Whether the bytes are well-formed UTF-8.
bool IsValidUtf8(const std::string& bytes);

}  // namespace kelhost::dxf
