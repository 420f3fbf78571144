// Long-name wildcard matching of the platform's directory searches.
#include "win/dos_wildcard.h"

#include "kelhost/text.h"

namespace kelhost {

DosWildcard::DosWildcard(const std::wstring& pattern) {
  if (pattern == L"*.*") {
    mTokens.push_back({Kind::kStar, 0});
    return;
  }
  for (size_t i = 0; i < pattern.size(); ++i) {
    const wchar_t ch = pattern[i];
    const wchar_t next = i + 1 < pattern.size() ? pattern[i + 1] : 0;
    if (ch == L'*') {
      mTokens.push_back({next == L'.' ? Kind::kStarToLastDot : Kind::kStar, 0});
    } else if (ch == L'?') {
      mTokens.push_back({Kind::kQuestion, 0});
    } else if (ch == L'.' && (next == 0 || next == L'*' || next == L'?')) {
      mTokens.push_back({Kind::kDotOrEnd, 0});
    } else {
      mTokens.push_back({Kind::kLiteral, ToUpperChar(ch)});
    }
  }
}

// Dynamic programming from the ends: at[p][n] says whether the tokens from
// p on match the name from n on. Patterns and names are short (a few
// hundred characters at most), so the table is small.
bool DosWildcard::Matches(const std::wstring& rawName) const {
  const std::wstring name = ToUpper(rawName);
  const size_t tokenCount = mTokens.size();
  const size_t length = name.size();
  const size_t lastDot = name.rfind(L'.');  // npos when there is none
  const size_t width = length + 1;
  std::vector<char> at((tokenCount + 1) * width, 0);
  auto cell = [&](size_t p, size_t n) -> char& { return at[p * width + n]; };
  cell(tokenCount, length) = 1;

  for (size_t p = tokenCount; p-- > 0;) {
    const Token& token = mTokens[p];
    for (size_t n = length + 1; n-- > 0;) {
      const bool more = n < length;
      bool ok = false;
      switch (token.kind) {
        case Kind::kLiteral:
          ok = more && name[n] == token.ch && cell(p + 1, n + 1);
          break;
        case Kind::kStar:
          ok = cell(p + 1, n) || (more && cell(p, n + 1));
          break;
        case Kind::kStarToLastDot:
          ok = cell(p + 1, n) || (more && n != lastDot && cell(p, n + 1));
          break;
        case Kind::kQuestion:
          if (more && name[n] != L'.') {
            ok = cell(p + 1, n + 1);
          } else {
            size_t after = p;
            while (after < tokenCount && mTokens[after].kind == Kind::kQuestion) ++after;
            ok = cell(after, n);
          }
          break;
        case Kind::kDotOrEnd:
          ok = more ? name[n] == L'.' && cell(p + 1, n + 1) : cell(p + 1, n);
          break;
      }
      cell(p, n) = ok ? 1 : 0;
    }
  }
  return cell(0, 0) != 0;
}

}  // namespace kelhost
