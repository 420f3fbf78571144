#include "dxf/dxf_tokens.h"

#include <cstring>

namespace kelhost::dxf {
namespace {

std::wstring AtLine(size_t line, const std::wstring& what) { return L"line " + std::to_wstring(line) + L": " + what; }

std::wstring Quoted(const std::string& bytes) {
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
std::string FromCp1252(const std::string& bytes) {
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
std::string DecodeUnicodeEscapes(const std::string& text) {
  std::string out;
  for (size_t i = 0; i < text.size(); ++i) {
    std::uint64_t cp = 0;
    if (text.compare(i, 3, "\\U+") == 0 && i + 7 <= text.size() && ParseHandle(text.substr(i + 3, 4), cp) &&
        text.substr(i + 3, 4).find(' ') == std::string::npos && !(cp >= 0xD800 && cp <= 0xDFFF)) {
      AppendUtf8(static_cast<unsigned>(cp), out);
      i += 6;
    } else {
      out += text[i];
    }
  }
  return out;
}

bool Numeric(FileKind k) {
  return k == FileKind::kReal || k == FileKind::kInt16 || k == FileKind::kInt32 || k == FileKind::kInt64 ||
         k == FileKind::kBool;
}

bool CheckValue(const Token& t, FileKind kind, std::wstring& error) {
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
        error = AtLine(t.line + 1, L"value " + Quoted(t.value) + L" out of range for group " + std::to_wstring(t.code));
        return false;
      }
      break;
    case FileKind::kInt32:
      if (ParseInteger(t.value, n)) {
        if (n >= -2147483648LL && n <= 4294967295LL) return true;
        error = AtLine(t.line + 1, L"value " + Quoted(t.value) + L" out of range for group " + std::to_wstring(t.code));
        return false;
      }
      break;
    case FileKind::kInt64:
      if (ParseInteger(t.value, n)) return true;
      break;
    default:
      return true;
  }
  error = AtLine(t.line + 1, L"bad number " + Quoted(t.value) + L" for group " + std::to_wstring(t.code));
  return false;
}

}  // namespace

bool IsValidUtf8(const std::string& s) {
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

bool Tokenize(const std::string& bytes, std::vector<Token>& tokens, std::wstring& error) {
  tokens.clear();
  static const char kBinary[] = "AutoCAD Binary DXF";
  if (bytes.compare(0, sizeof kBinary - 1, kBinary) == 0) {
    error = L"line 1: binary DXF is not supported (save the drawing as ASCII DXF)";
    return false;
  }
  size_t pos = bytes.compare(0, 3, "\xEF\xBB\xBF") == 0 ? 3 : 0;
  size_t line = 0;
  auto nextLine = [&](std::string& out) {
    if (pos >= bytes.size()) return false;
    size_t eol = bytes.find('\n', pos);
    if (eol == std::string::npos) eol = bytes.size();
    out.assign(bytes, pos, eol - pos);
    if (!out.empty() && out.back() == '\r') out.pop_back();
    pos = eol + 1;
    ++line;
    return true;
  };
  std::string codeText, value;
  while (nextLine(codeText)) {
    const size_t codeLine = line;
    long long code = 0;
    if (!ParseInteger(codeText, code)) {
      // Blank lines after EOF are harmless.
      if (codeText.find_first_not_of(" \t") == std::string::npos && !tokens.empty() && tokens.back().code == 0 &&
          tokens.back().value == "EOF")
        continue;
      error = AtLine(codeLine, L"bad group code " + Quoted(codeText));
      return false;
    }
    const FileKind kind = code < 0 || code > 1071 ? FileKind::kInvalid : FileKindOf(static_cast<int>(code));
    if (kind == FileKind::kInvalid) {
      error = AtLine(codeLine, L"unknown group code " + std::to_wstring(code));
      return false;
    }
    if (!nextLine(value)) {
      error = AtLine(codeLine, L"the file ends in the middle of a group (truncated)");
      return false;
    }
    Token t{static_cast<int>(code), std::move(value), codeLine};
    if (Numeric(kind) && !CheckValue(t, kind, error)) return false;
    tokens.push_back(std::move(t));
    if (tokens.back().code == 0 && tokens.back().value == "EOF") break;
  }

  // The version decides the text encoding; a file without one (a bare
  // R12 file) is from before UTF-8.
  bool legacy = true;
  for (size_t i = 0; i + 1 < tokens.size() && i < 64; ++i)
    if (tokens[i].code == 9 && tokens[i].value == "$ACADVER") {
      legacy = tokens[i + 1].value < "AC1021";
      break;
    }
  for (Token& t : tokens) {
    if (!IsValidUtf8(t.value)) {
      if (!legacy) {
        error = AtLine(t.line + 1, L"invalid UTF-8 text");
        return false;
      }
      t.value = FromCp1252(t.value);
    }
    if (legacy && FileKindOf(t.code) == FileKind::kText && t.value.find("\\U+") != std::string::npos)
      t.value = DecodeUnicodeEscapes(t.value);
  }
  return true;
}

}  // namespace kelhost::dxf
