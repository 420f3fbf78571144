#include "editor/dcl_syntax.h"

#include <cwctype>

namespace kelhost::editor::dcl {
namespace {

enum class Kind { kEnd, kName, kString, kNumber, kColon, kOpen, kClose, kEquals, kSemicolon, kAt, kBad };

struct Token {
  Kind kind = Kind::kEnd;
  std::wstring text;
  int line = 1;
};

class Lexer {
 public:
  explicit Lexer(const std::wstring& text) : mText(text) {}

  // False for an unterminated comment or string (the token says where).
  Token next() {
    Token t;
    if (!skipBlanks()) {
      t.kind = Kind::kBad;
      t.line = mLine;
      return t;
    }
    t.line = mLine;
    if (mPos >= mText.size()) return t;
    const wchar_t c = mText[mPos];
    if (std::iswalpha(c) || c == L'_') {
      const size_t start = mPos;
      while (mPos < mText.size() && (std::iswalnum(mText[mPos]) || mText[mPos] == L'_')) ++mPos;
      t.kind = Kind::kName;
      t.text = mText.substr(start, mPos - start);
      return t;
    }
    if (std::iswdigit(c) || ((c == L'-' || c == L'+' || c == L'.') && mPos + 1 < mText.size() &&
                             (std::iswdigit(mText[mPos + 1]) || mText[mPos + 1] == L'.'))) {
      const size_t start = mPos++;
      while (mPos < mText.size() && (std::iswdigit(mText[mPos]) || mText[mPos] == L'.')) ++mPos;
      t.kind = Kind::kNumber;
      t.text = mText.substr(start, mPos - start);
      return t;
    }
    if (c == L'"') return string(t);
    ++mPos;
    t.text = std::wstring(1, c);
    switch (c) {
      case L':': t.kind = Kind::kColon; break;
      case L'{': t.kind = Kind::kOpen; break;
      case L'}': t.kind = Kind::kClose; break;
      case L'=': t.kind = Kind::kEquals; break;
      case L';': t.kind = Kind::kSemicolon; break;
      case L'@': t.kind = Kind::kAt; break;
      default: t.kind = Kind::kBad; break;
    }
    return t;
  }

 private:
  bool skipBlanks() {
    while (mPos < mText.size()) {
      const wchar_t c = mText[mPos];
      if (c == L'\n') {
        ++mLine;
        ++mPos;
      } else if (std::iswspace(c)) {
        ++mPos;
      } else if (mText.compare(mPos, 2, L"//") == 0) {
        while (mPos < mText.size() && mText[mPos] != L'\n') ++mPos;
      } else if (mText.compare(mPos, 2, L"/*") == 0) {
        const size_t end = mText.find(L"*/", mPos + 2);
        if (end == std::wstring::npos) return false;
        for (size_t i = mPos; i < end; ++i)
          if (mText[i] == L'\n') ++mLine;
        mPos = end + 2;
      } else {
        return true;
      }
    }
    return true;
  }

  Token string(Token& t) {
    ++mPos;
    while (mPos < mText.size() && mText[mPos] != L'"') {
      wchar_t c = mText[mPos++];
      if (c == L'\n') break;  // a string ends on its line
      if (c == L'\\' && mPos < mText.size()) {
        const wchar_t e = mText[mPos++];
        c = e == L'n' ? L'\n' : e == L't' ? L'\t' : e;
      }
      t.text += c;
    }
    if (mPos >= mText.size() || mText[mPos] != L'"') {
      t.kind = Kind::kBad;
      t.text = L"\"" + t.text;
      return t;
    }
    ++mPos;
    t.kind = Kind::kString;
    return t;
  }

  const std::wstring& mText;
  size_t mPos = 0;
  int mLine = 1;
};

class Parser {
 public:
  Parser(const std::wstring& text, const std::wstring& file, Error& error, IncludeResolver includes, int includeDepth)
      : mLexer(text), mFile(file), mError(error), mIncludes(includes), mIncludeDepth(includeDepth) {
    advance();
  }

  bool file(std::vector<Node>& definitions) {
    while (mToken.kind != Kind::kEnd) {
      if (mToken.kind == Kind::kAt) {
        if (!include(definitions)) return false;
        continue;
      }
      if (mToken.kind == Kind::kSemicolon) {
        advance();
        continue;
      }
      Node node;
      node.line = mToken.line;
      node.file = mFile;
      if (mToken.kind != Kind::kName) return fail();
      node.name = mToken.text;
      advance();
      if (mToken.kind != Kind::kColon) return fail();
      advance();
      if (mToken.kind != Kind::kName) return fail();
      node.prototype = mToken.text;
      advance();
      if (mToken.kind == Kind::kOpen) {
        advance();
        if (!body(node, 1)) return false;
      } else if (mToken.kind == Kind::kSemicolon) {
        advance();
      } else {
        return fail();
      }
      definitions.push_back(std::move(node));
    }
    return true;
  }

 private:
  void advance() { mToken = mLexer.next(); }

  bool fail(const wchar_t* message = L"syntax error") {
    mError.file = mFile;
    mError.line = mToken.line;
    mError.message = message;
    mError.symbol = mToken.kind == Kind::kString ? L"\"" + mToken.text + L"\"" : mToken.text;
    return false;
  }

  bool include(std::vector<Node>& definitions) {
    advance();
    if (mToken.kind != Kind::kName || mToken.text != L"include") return fail();
    advance();
    if (mToken.kind != Kind::kString) return fail();
    const Token name = mToken;
    if (mIncludeDepth + 1 > kMaxIncludeDepth) return fail(L"@include nested too deeply");
    std::wstring path, text;
    if (!mIncludes || !mIncludes(name.text, mFile, path, text)) return fail(L"cannot open the @include file");
    advance();
    return ParseDcl(text, path, definitions, mError, mIncludes, mIncludeDepth + 1);
  }

  // Attributes and children up to the closing brace.
  bool body(Node& node, int depth) {
    if (depth > kMaxNesting) return fail(L"tiles nested too deeply");
    for (;;) {
      switch (mToken.kind) {
        case Kind::kClose:
          advance();
          return true;
        case Kind::kSemicolon:
          advance();
          break;
        case Kind::kColon: {
          advance();
          if (mToken.kind != Kind::kName) return fail();
          Node child;
          child.prototype = mToken.text;
          child.line = mToken.line;
          child.file = mFile;
          advance();
          if (mToken.kind == Kind::kOpen) {
            advance();
            if (!body(child, depth + 1)) return false;
          } else if (mToken.kind != Kind::kSemicolon) {
            return fail();
          }
          node.children.push_back(std::move(child));
          break;
        }
        case Kind::kName: {
          const Token name = mToken;
          advance();
          if (mToken.kind == Kind::kSemicolon) {
            Node child;
            child.prototype = name.text;
            child.reference = true;
            child.line = name.line;
            child.file = mFile;
            node.children.push_back(std::move(child));
            advance();
            break;
          }
          if (mToken.kind != Kind::kEquals) return fail();
          advance();
          if (mToken.kind != Kind::kString && mToken.kind != Kind::kNumber && mToken.kind != Kind::kName)
            return fail();
          node.attributes.push_back(Attribute{name.text, mToken.text, mToken.kind == Kind::kString, name.line});
          advance();
          if (mToken.kind != Kind::kSemicolon) return fail();
          advance();
          break;
        }
        default:
          return fail();
      }
    }
  }

  Lexer mLexer;
  const std::wstring& mFile;
  Error& mError;
  IncludeResolver mIncludes;
  int mIncludeDepth;
  Token mToken;
};

}  // namespace

std::wstring Error::text() const {
  std::wstring t = L"Error in dialog file\n\"" + file + L"\", line " + std::to_wstring(line) + L":\n" + message;
  if (!symbol.empty()) t += L"\nSymbol: " + (symbol[0] == L'"' ? symbol : L"\"" + symbol + L"\"") + L".";
  return t;
}

bool ParseDcl(const std::wstring& text, const std::wstring& file, std::vector<Node>& definitions, Error& error,
              IncludeResolver includes, int includeDepth) {
  Parser parser(text, file, error, includes, includeDepth);
  return parser.file(definitions);
}

}  // namespace kelhost::editor::dcl
