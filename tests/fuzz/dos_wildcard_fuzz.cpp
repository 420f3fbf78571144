// Feeds arbitrary patterns and names to the directory search's wildcard
// matcher: it must never crash, and the rules that hold for every pattern
// must hold.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "kelhost/text.h"
#include "win/dos_wildcard.h"

namespace {
void Check(bool ok) {
  if (!ok) std::abort();
}

// The directory search never matches longer patterns or names.
constexpr std::size_t kLongest = 259;
}  // namespace

// Input: the pattern, a zero byte, the name (both UTF-8).
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const std::size_t split = bytes.find('\0');
  std::wstring pattern = kelhost::FromUtf8(bytes.substr(0, split));
  std::wstring name = split == std::string::npos ? std::wstring() : kelhost::FromUtf8(bytes.substr(split + 1));
  if (pattern.size() > kLongest) pattern.resize(kLongest);
  if (name.size() > kLongest) name.resize(kLongest);
  const kelhost::DosWildcard wildcard(pattern);
  const bool matched = wildcard.Matches(name);

  // A pattern without wildcards finds the name it spells.
  if (pattern.find_first_of(L"*?") == std::wstring::npos) {
    Check(wildcard.Matches(pattern));
  }
  // Case never decides a match.
  Check(matched == wildcard.Matches(kelhost::ToUpper(name)));
  // "*" and "*.*" take every name.
  Check(kelhost::DosWildcard(L"*").Matches(name));
  Check(kelhost::DosWildcard(L"*.*").Matches(name));
  // A star in front takes whatever the name had in front.
  if (matched && !pattern.empty() && pattern[0] != L'*' && pattern[0] != L'.')
    Check(kelhost::DosWildcard(L"*" + pattern).Matches(L"x" + name));
  return 0;
}
