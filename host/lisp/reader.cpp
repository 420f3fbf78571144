#include "lisp/reader.h"

#include <charconv>
#include <limits>
#include <vector>

#include "kelhost/text.h"
#include "lisp/machine.h"

namespace kelhost::lisp {
namespace {

const wchar_t kMalformedList[] = L"malformed list on input";
const wchar_t kMisplacedDot[] = L"misplaced dot on input";

bool IsDelimiter(wchar_t c) {
  return c == L'(' || c == L')' || c == L'\'' || c == L'"' || c == L';' || IsBlankChar(c);
}

bool IsDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

// An open list, or a quote waiting for the expression it applies to.
struct Frame {
  bool quote = false;
  ListBuilder items;
  bool hasItems = false;
  bool dotted = false;
  bool gotTail = false;
};

}  // namespace

bool ParseNumber(const std::wstring& token, ValuePtr& out) {
  size_t i = 0, n = token.size();
  bool negative = false;
  if (i < n && (token[i] == L'+' || token[i] == L'-')) negative = token[i++] == L'-';
  size_t intDigits = 0, fracDigits = 0;
  while (i < n && IsDigit(token[i])) ++i, ++intDigits;
  bool point = i < n && token[i] == L'.';
  if (point) {
    ++i;
    while (i < n && IsDigit(token[i])) ++i, ++fracDigits;
  }
  if (intDigits + fracDigits == 0) return false;
  bool exponent = i < n && (token[i] == L'e' || token[i] == L'E');
  if (exponent) {
    ++i;
    if (i < n && (token[i] == L'+' || token[i] == L'-')) ++i;
    size_t expDigits = 0;
    while (i < n && IsDigit(token[i])) ++i, ++expDigits;
    if (expDigits == 0) return false;
  }
  if (i != n) return false;
  // Only ASCII remains: parse the narrow copy without the C locale's say.
  std::string ascii(token.begin() + (token[0] == L'+' || token[0] == L'-' ? 1 : 0), token.end());
  if (!point && !exponent) {
    long long v = 0;
    auto res = std::from_chars(ascii.data(), ascii.data() + ascii.size(), v);
    if (res.ec == std::errc()) {
      if (negative) v = -v;
      if (v >= std::numeric_limits<std::int32_t>::min() && v <= std::numeric_limits<std::int32_t>::max()) {
        out = MakeInt(static_cast<std::int32_t>(v));
        return true;
      }
    }
  }
  double d = 0;
  auto res = std::from_chars(ascii.data(), ascii.data() + ascii.size(), d);
  if (res.ec == std::errc::result_out_of_range)
    d = std::numeric_limits<double>::infinity();  // tiny values come back as 0 already
  out = MakeReal(negative ? -d : d);
  return true;
}

bool IsSymbolName(const std::wstring& name) {
  if (name.empty() || name == L"." || EqualNoCase(name, L"nil")) return false;
  for (wchar_t c : name)
    if (IsDelimiter(c)) return false;
  ValuePtr number;
  return !ParseNumber(name, number);
}

void Reader::skipBlanksAndComments() {
  const size_t n = mText.size();
  while (mPos < n) {
    wchar_t c = mText[mPos];
    if (IsBlankChar(c)) {
      ++mPos;
    } else if (c == L';') {
      if (mPos + 1 < n && mText[mPos + 1] == L'|') {  // ;| inline comment |;
        size_t end = mText.find(L"|;", mPos + 2);
        mPos = end == std::wstring::npos ? n : end + 2;
      } else {
        size_t end = mText.find(L'\n', mPos);
        mPos = end == std::wstring::npos ? n : end + 1;
      }
    } else {
      return;
    }
  }
}

ValuePtr Reader::readString() {
  std::wstring s;
  ++mPos;  // the opening quote
  const size_t n = mText.size();
  for (;;) {
    if (mPos >= n) throw ReadError{L"malformed string on input"};
    wchar_t c = mText[mPos++];
    if (c == L'"') break;
    if (c != L'\\') {
      s += c;
      continue;
    }
    if (mPos >= n) throw ReadError{L"malformed string on input"};
    wchar_t e = mText[mPos++];
    switch (e) {
      case L'n': s += L'\n'; break;
      case L'r': s += L'\r'; break;
      case L't': s += L'\t'; break;
      case L'e': s += static_cast<wchar_t>(27); break;
      default:
        if (e >= L'0' && e <= L'7') {  // \nnn: up to three octal digits
          int code = e - L'0';
          for (int k = 0; k < 2 && mPos < n && mText[mPos] >= L'0' && mText[mPos] <= L'7'; ++k)
            code = code * 8 + (mText[mPos++] - L'0');
          s += static_cast<wchar_t>(code);
        } else {
          s += e;  // \\ \" and any other character stand for themselves
        }
    }
  }
  mMachine.step(s.size() / 16 + 1);
  return MakeStr(std::move(s));
}

ValuePtr Reader::readAtom() {
  size_t start = mPos;
  while (mPos < mText.size() && !IsDelimiter(mText[mPos])) ++mPos;
  std::wstring token = mText.substr(start, mPos - start);
  ValuePtr number;
  if (ParseNumber(token, number)) return number;
  if (EqualNoCase(token, L"nil")) return nullptr;
  return mMachine.intern(token);
}

Reader::Token Reader::token(ValuePtr& atom) {
  skipBlanksAndComments();
  if (mPos >= mText.size()) return Token::End;
  switch (mText[mPos]) {
    case L'(': ++mPos; return Token::Open;
    case L')': ++mPos; return Token::Close;
    case L'\'': ++mPos; return Token::Quote;
    case L'"': atom = readString(); return Token::Atom;
    default: break;
  }
  if (mText[mPos] == L'.' && (mPos + 1 >= mText.size() || IsDelimiter(mText[mPos + 1]))) {
    ++mPos;
    return Token::Dot;
  }
  atom = readAtom();
  return Token::Atom;
}

bool Reader::next(ValuePtr& out) {
  std::vector<Frame> stack;
  for (;;) {
    ValuePtr datum;
    switch (token(datum)) {
      case Token::End:
        if (stack.empty()) return false;
        throw ReadError{kMalformedList};
      case Token::Open:
        stack.emplace_back();
        continue;
      case Token::Quote:
        stack.emplace_back();
        stack.back().quote = true;
        continue;
      case Token::Dot: {
        if (stack.empty()) throw ReadError{kMisplacedDot};
        Frame& f = stack.back();
        if (f.quote || !f.hasItems || f.dotted) throw ReadError{kMisplacedDot};
        f.dotted = true;
        continue;
      }
      case Token::Close: {
        if (stack.empty()) throw ReadError{L"extra right paren on input"};
        Frame& f = stack.back();
        if (f.quote) throw ReadError{kMalformedList};
        if (f.dotted && !f.gotTail) throw ReadError{kMisplacedDot};
        datum = f.items.take();
        stack.pop_back();
        break;
      }
      case Token::Atom:
        break;
    }
    // Hand the finished expression to the frames waiting for it.
    for (;;) {
      if (stack.empty()) {
        out = std::move(datum);
        return true;
      }
      Frame& f = stack.back();
      if (f.quote) {
        stack.pop_back();
        datum = MakeCons(mMachine.symQuote, MakeCons(std::move(datum), nullptr));
        continue;
      }
      if (f.dotted) {
        if (f.gotTail) throw ReadError{kMisplacedDot};
        f.items.setTail(std::move(datum));
        f.gotTail = true;
      } else {
        f.items.add(std::move(datum));
        f.hasItems = true;
      }
      break;
    }
  }
}

}  // namespace kelhost::lisp
