#include "dxf/dxf_tokens.h"

#include <cstring>

#include "dxf/caret_text.h"
#include "dxf/eight_digits.h"
#include "dxf/huge_pages.h"

namespace kelhost::dxf {
namespace {

std::wstring AtLine(size_t line, const std::wstring& what) { return L"line " + std::to_wstring(line) + L": " + what; }

std::wstring Quoted(std::string_view bytes) {
  std::wstring out = L"\"";
  for (unsigned char c : bytes.substr(0, 40)) out += c < 0x20 || c > 0x7e ? L'?' : static_cast<wchar_t>(c);
  return out + (bytes.size() > 40 ? L"...\"" : L"\"");
}

void AppendUtf8(unsigned cp, std::string& out) {
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
}

// Windows-1252 to UTF-8 (the 0x80-0x9F block has its own characters).
std::string FromCp1252(std::string_view bytes) {
  static const char16_t k80[32] = {0x20AC, 0x81, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
                                   0x2039, 0x0152, 0x8D, 0x017D, 0x8F, 0x90, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
                                   0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D, 0x017E, 0x0178};
  std::string out;
  for (unsigned char c : bytes) {
    AppendUtf8(c >= 0x80 && c < 0xA0 ? k80[c - 0x80] : c, out);
  }
  return out;
}

// Older files write characters outside their code page as \U+XXXX.
std::string DecodeUnicodeEscapes(std::string_view text) {
  std::string out;
  for (size_t i = 0; i < text.size(); ++i) {
    std::uint64_t cp = 0;
    if (text.compare(i, 3, "\\U+") == 0 && i + 7 <= text.size() && ParseHandle(text.substr(i + 3, 4), cp) &&
        text.substr(i + 3, 4).find(' ') == std::string_view::npos && !(cp >= 0xD800 && cp <= 0xDFFF)) {
      AppendUtf8(static_cast<unsigned>(cp), out);
      i += 6;
    } else {
      out += text[i];
    }
  }
  return out;
}

bool CheckValue(const Token& t, std::uint32_t valueLine, FileKind kind, std::wstring& error) {
  long long n = 0;
  double d = 0;
  switch (kind) {
    case FileKind::kReal:
      if (ParseReal(t.value, d)) return true;
      break;
    case FileKind::kInt16:
    case FileKind::kBool:
      if (ParseInteger(t.value, n)) {
        if (n >= -32768 && n <= 65535) return true;
        error = AtLine(valueLine, L"value " + Quoted(t.value) + L" out of range for group " + std::to_wstring(t.code));
        return false;
      }
      break;
    case FileKind::kInt32:
      if (ParseInteger(t.value, n)) {
        if (n >= -2147483648LL && n <= 4294967295LL) return true;
        error = AtLine(valueLine, L"value " + Quoted(t.value) + L" out of range for group " + std::to_wstring(t.code));
        return false;
      }
      break;
    case FileKind::kInt64:
      if (ParseInteger(t.value, n)) return true;
      break;
    default:
      return true;
  }
  error = AtLine(valueLine, L"bad number " + Quoted(t.value) + L" for group " + std::to_wstring(t.code));
  return false;
}

// Whether text is certain to read as a real: plain decimal digits with at
// most a sign and a point, short enough that the value is neither too
// large nor too small for a double. Most values are; checking the form
// costs less than reading the number, which is left to the object's reader.
bool SurelyReal(std::string_view text) {
  if (text.empty() || text.size() > 300) return false;
  const size_t n = text.size();
  size_t i = text[0] == '-' ? 1 : 0;
  bool digit = false;
  auto digits = [&] {
    for (; n - i >= 8 && AllDigits(EightBytes(text.data() + i)); i += 8) digit = true;
    for (; i < n && text[i] >= '0' && text[i] <= '9'; ++i) digit = true;
  };
  digits();
  if (i < n && text[i] == '.') {
    ++i;
    digits();
  }
  return digit && i == n;
}

// A group code line: blanks, decimal digits, blanks, as nearly every file
// writes it; anything else is left to ParseInteger.
bool ParseCode(std::string_view text, long long& code) {
  size_t i = 0, n = text.size();
  while (i < n && (text[i] == ' ' || text[i] == '\t')) ++i;
  const size_t first = i;
  long long v = 0;
  for (; i < n && i - first < 9 && text[i] >= '0' && text[i] <= '9'; ++i) v = v * 10 + (text[i] - '0');
  const size_t last = i;
  while (i < n && (text[i] == ' ' || text[i] == '\t')) ++i;
  if (last > first && i == n) {
    code = v;
    return true;
  }
  return ParseInteger(text, code);
}

// Where the next line feed is at or after from (end when none). Lines are
// short: eight bytes at a time beats a library call per line.
const char* FindLineFeed(const char* from, const char* end) {
  constexpr std::uint64_t kOnes = 0x0101010101010101ULL, kHighs = 0x8080808080808080ULL;
  constexpr std::uint64_t kFeeds = kOnes * '\n';
  const char* p = from;
  for (; end - p >= 8; p += 8) {
    std::uint64_t word;
    std::memcpy(&word, p, 8);
    const std::uint64_t x = word ^ kFeeds;  // a zero byte where a line feed is
    // The lowest flag marks the first zero byte (bytes are in memory order
    // on this little-endian target).
    if (const std::uint64_t found = (x - kOnes) & ~x & kHighs) return p + __builtin_ctzll(found) / 8;
  }
  for (; p < end; ++p)
    if (*p == '\n') return p;
  return end;
}

// Room for the groups, so that the list seldom moves.
void ReserveTokens(TokenList& tokens, size_t size) {
  // A group takes ten bytes or more in nearly every file (not yet used
  // memory costs nothing).
  tokens.reserve(size / 8 + 16);
  AdviseHugePages(tokens.data(), tokens.capacity() * sizeof(Token));
}

// Whether any byte is outside ASCII: only then can text need decoding.
bool HasHighBytes(std::string_view bytes) {
  const char* p = bytes.data();
  const char* end = p + bytes.size();
  for (; end - p >= 8; p += 8) {
    std::uint64_t word;
    std::memcpy(&word, p, 8);
    if (word & 0x8080808080808080ULL) return true;
  }
  for (; p < end; ++p)
    if (static_cast<unsigned char>(*p) >= 0x80) return true;
  return false;
}

// The version decides the text encoding: a file from before 2007, or one
// without a version (a bare R12 file), is in a code page.
bool IsLegacy(const TokenList& tokens) {
  for (size_t i = 0; i + 1 < tokens.size() && i < 64; ++i)
    if (tokens[i].code == 9 && tokens[i].value == "$ACADVER") return tokens[i + 1].value < "AC1021";
  return true;
}

bool DecodeText(TokenList& tokens, bool highBytes, std::wstring& error) {
  const bool legacy = IsLegacy(tokens);
  if (!highBytes && !legacy) return true;
  for (Token& t : tokens) {
    if (highBytes && !IsValidUtf8(t.value)) {
      if (!legacy) {
        error = AtLine(tokens.lineOf(t) + 1, L"invalid UTF-8 text");
        return false;
      }
      t.value = tokens.keep(FromCp1252(t.value), tokens.lineOf(t));
    }
    if (legacy && FileKindOf(t.code) == FileKind::kText && t.value.find("\\U+") != std::string_view::npos)
      t.value = tokens.keep(DecodeUnicodeEscapes(t.value), tokens.lineOf(t));
  }
  for (auto* marks : {&tokens.starts, &tokens.handles})
    for (TokenList::Mark& m : *marks) m.value = tokens[m.index].value;
  return true;
}

}  // namespace

std::uint32_t TokenList::lineOf(const Token& t) const {
  const char* value = t.value.data();
  if (value >= mSource.data() && value <= mSource.data() + mSource.size()) {
    // The value's line is one more than the line feeds before it; the
    // code's is the one before. Counted from the place asked about last,
    // so that asking about groups in file order takes one pass in all.
    if (!mCountedTo) mCountedTo = mSource.data(), mFeedsBefore = 0;
    for (; mCountedTo < value; ++mCountedTo) mFeedsBefore += *mCountedTo == '\n';
    for (; mCountedTo > value; --mCountedTo) mFeedsBefore -= mCountedTo[-1] == '\n';
    return mFeedsBefore;
  }
  auto kept = mKeptLines.find(value);
  return kept == mKeptLines.end() ? 0 : kept->second;
}

bool IsValidUtf8(std::string_view s) {
  const auto* p = reinterpret_cast<const unsigned char*>(s.data());
  const auto* end = p + s.size();
  while (p < end) {
    unsigned c = *p;
    int more;
    unsigned cp;
    if (c < 0x80) {
      ++p;
      continue;
    } else if ((c & 0xE0) == 0xC0) {
      more = 1, cp = c & 0x1F;
    } else if ((c & 0xF0) == 0xE0) {
      more = 2, cp = c & 0x0F;
    } else if ((c & 0xF8) == 0xF0) {
      more = 3, cp = c & 0x07;
    } else {
      return false;
    }
    if (end - p <= more) return false;
    for (int i = 1; i <= more; ++i) {
      if ((p[i] & 0xC0) != 0x80) return false;
      cp = (cp << 6) | (p[i] & 0x3F);
    }
    static const unsigned kMin[] = {0, 0x80, 0x800, 0x10000};
    if (cp < kMin[more] || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return false;
    p += more + 1;
  }
  return true;
}

bool Tokenize(const std::string& bytes, TokenList& tokens, std::wstring& error) {
  tokens.clear();
  tokens.starts.clear();
  tokens.handles.clear();
  tokens.setSource(bytes);
  static const char kBinary[] = "AutoCAD Binary DXF";
  if (bytes.compare(0, sizeof kBinary - 1, kBinary) == 0) {
    error = L"line 1: binary DXF is not supported (save the drawing as ASCII DXF)";
    return false;
  }
  // Lines are counted in 32 bits; no text file of that many lines fits in
  // memory here anyway.
  if (bytes.size() >= 0xFFFFFFFFu) {
    error = L"line 1: the file is too large";
    return false;
  }
  const char* const data = bytes.data();
  const size_t size = bytes.size();
  ReserveTokens(tokens, size);
  size_t pos = bytes.compare(0, 3, "\xEF\xBB\xBF") == 0 ? 3 : 0;
  std::uint32_t line = 0;
  auto nextLine = [&](std::string_view& out) {
    if (pos >= size) return false;
    const size_t eol = static_cast<size_t>(FindLineFeed(data + pos, data + size) - data);
    size_t len = eol - pos;
    if (len && data[pos + len - 1] == '\r') --len;
    out = std::string_view(data + pos, len);
    pos = eol + 1;
    ++line;
    return true;
  };
  // The code line as nearly every file writes it: up to three blanks, up
  // to four digits, the line's end. Anything else takes the general way.
  auto quickCode = [&](long long& code) {
    const char* p = data + pos;
    const char* const end = data + size;
    for (int blanks = 0; p < end && *p == ' ' && blanks < 3; ++blanks) ++p;
    const char* const digits = p;
    int v = 0;
    for (; p < end && p - digits < 4 && static_cast<unsigned char>(*p - '0') < 10; ++p) v = v * 10 + (*p - '0');
    if (p == digits) return false;
    if (p < end && *p == '\r') ++p;
    if (p == end || *p != '\n') return false;
    code = v;
    pos = static_cast<size_t>(p - data) + 1;
    ++line;
    return true;
  };
  const FileKind* const kinds = FileKinds();
  std::string_view codeText, value;
  while (pos < size) {
    long long code = 0;
    if (quickCode(code)) {
      codeText = {};
    } else if (!nextLine(codeText)) {
      break;
    }
    const std::uint32_t codeLine = line;
    if (codeText.data() && !ParseCode(codeText, code)) {
      // Blank lines after EOF are harmless.
      if (codeText.find_first_not_of(" \t") == std::string_view::npos && !tokens.empty() && tokens.back().code == 0 &&
          tokens.back().value == "EOF")
        continue;
      error = AtLine(codeLine, L"bad group code " + Quoted(codeText));
      return false;
    }
    const FileKind kind = code < 0 || code >= kFileCodes ? FileKind::kInvalid : kinds[code];
    if (kind == FileKind::kInvalid) {
      error = AtLine(codeLine, L"unknown group code " + std::to_wstring(code));
      return false;
    }
    if (!nextLine(value)) {
      error = AtLine(codeLine, L"the file ends in the middle of a group (truncated)");
      return false;
    }
    if (kind == FileKind::kText && value.find('^') != std::string_view::npos)
      value = tokens.keep(ReadCarets(value), codeLine);
    const auto index = static_cast<std::uint32_t>(tokens.size());
    if (code == 0) tokens.starts.push_back({index, 0, value});
    else if (code == 5 || code == 105) tokens.handles.push_back({index, static_cast<int>(code), value});
    tokens.push_back(Token{value, static_cast<int>(code)});
    const bool numeric = kind != FileKind::kText && kind != FileKind::kHandle && kind != FileKind::kBinary;
    if (numeric && !(kind == FileKind::kReal && SurelyReal(value)) && !CheckValue(tokens.back(), line, kind, error))
      return false;
    if (code == 0 && value == "EOF") break;
  }
  return DecodeText(tokens, HasHighBytes(std::string_view(data, size)), error);
}

}  // namespace kelhost::dxf
