// The platform's matching of long file names against a search pattern
// ('*' and '?'), as FindFirstFileW applies it to the last component of a
// path. The pattern is first rewritten the way the platform does it:
//   "*.*"                    matches every name (it means "*")
//   '*' before a '.'         runs only up to the name's last '.'
//   '?'                      one character other than '.'; at a '.' or the
//                            end of the name it (and the '?'s after it)
//                            matches nothing, so "ab?" finds "ab"
//   '.' before '*', '?' or   a '.' or the end of the name, so "a.*" finds
//   the end of the pattern   "a" and "*." finds names without a '.'
// Characters are compared without regard to case.
#pragma once

#include <string>
#include <vector>

namespace kelhost {

class DosWildcard {
 public:
  explicit DosWildcard(const std::wstring& pattern);
  // Time and memory grow with the product of the two lengths; the
  // directory search keeps both below MAX_PATH.
  bool Matches(const std::wstring& name) const;

 private:
  enum class Kind { kLiteral, kStar, kStarToLastDot, kQuestion, kDotOrEnd };
  struct Token {
    Kind kind;
    wchar_t ch;  // upper case, for kLiteral
  };
  std::vector<Token> mTokens;
};

}  // namespace kelhost
