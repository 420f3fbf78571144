#include "editor/input_sources.h"

#include <optional>
#include <string>

#include "app/support_path.h"
#include "kelhost/paths.h"
#include "kelhost/text.h"

namespace kelhost::editor {

LineSource::LineSource(std::FILE* file, bool own) : mFile(file), mOwn(own) {}

LineSource::~LineSource() {
  if (mOwn && mFile) std::fclose(mFile);
}

bool ReadBalancedLines(const std::function<bool(std::wstring&)>& readLine, std::wstring& text) {
  if (!readLine(text)) return false;
  const size_t start = text.find_first_not_of(L" \t");
  if (start == std::wstring::npos || text[start] != L'(') return true;
  std::wstring more;
  while (OpenParentheses(text) > 0 && readLine(more)) text += L"\n" + more;
  return true;
}

bool LineSource::read(std::wstring& text, bool) {
  return ReadBalancedLines([this](std::wstring& line) { return readLine(line); }, text);
}

bool LineSource::readLine(std::wstring& text) {
  if (!mFile) return false;
  std::string bytes;
  int c;
  bool any = false;
  while ((c = std::fgetc(mFile)) != EOF) {
    any = true;
    if (c == '\n') break;
    bytes += static_cast<char>(c);
  }
  if (!any) return false;
  if (!bytes.empty() && bytes.back() == '\r') bytes.pop_back();
  text = FromUtf8(bytes);
  return true;
}

bool ScriptSource::read(std::wstring& text, bool spaces) {
  // Comment lines are skipped whole.
  while (mAtLineStart && mPos < mText.size() && mText[mPos] == L';') {
    const size_t end = mText.find(L'\n', mPos);
    mPos = end == std::wstring::npos ? mText.size() : end + 1;
  }
  if (mPos >= mText.size()) return false;
  text.clear();
  if (mText[mPos] == L'(') {
    // An AutoLISP expression, over as many lines as it takes.
    size_t end = mPos;
    int depth = 0;
    std::wstring expr;
    while (end < mText.size()) {
      expr += mText[end++];
      if (mText[end - 1] == L')' || mText[end - 1] == L'"' || mText[end - 1] == L'\n') {
        depth = OpenParentheses(expr);
        if (depth <= 0) break;
      }
    }
    text = expr;
    mPos = end;
    // The space or line end after it ends the answer.
    if (mPos < mText.size() && mText[mPos] == L'\r') ++mPos;
    mAtLineStart = mPos < mText.size() && mText[mPos] == L'\n';
    if (mPos < mText.size() && (mText[mPos] == L' ' || mText[mPos] == L'\n')) ++mPos;
    return true;
  }
  size_t end = mPos;
  while (end < mText.size() && mText[end] != L'\n' && (spaces || mText[end] != L' ')) ++end;
  text = mText.substr(mPos, end - mPos);
  if (!text.empty() && text.back() == L'\r') text.pop_back();
  mAtLineStart = end < mText.size() && mText[end] == L'\n';
  mPos = end < mText.size() ? end + 1 : end;
  return true;
}

std::unique_ptr<ScriptSource> OpenScript(const std::wstring& familyPath) {
  std::string bytes;
  if (!ReadWholeFile(NativePath(familyPath), bytes)) return nullptr;
  if (bytes.compare(0, 3, "\xEF\xBB\xBF") == 0) bytes.erase(0, 3);
  return std::make_unique<ScriptSource>(FromUtf8(bytes));
}

namespace {

bool HasExtension(const std::wstring& name) {
  const size_t sep = name.find_last_of(L"/\\");
  return name.find(L'.', sep == std::wstring::npos ? 0 : sep + 1) != std::wstring::npos;
}

bool EndsWithScr(const std::wstring& name) {
  return name.size() >= 4 && EqualNoCase(name.substr(name.size() - 4), L".scr");
}

}  // namespace

std::unique_ptr<ScriptSource> FindScript(const std::wstring& name, std::wstring& message) {
  const std::wstring withScr = EndsWithScr(name) ? name : name + L".scr";
  std::optional<std::wstring> file;
  if (HasExtension(name)) file = app::FindSupportFile(name);
  if (!file) file = app::FindSupportFile(withScr);
  std::unique_ptr<ScriptSource> script = file ? OpenScript(*file) : nullptr;
  if (!script) message = L"Cannot find script file \"" + (HasExtension(name) ? name : withScr) + L"\".";
  return script;
}

int OpenParentheses(const std::wstring& text) {
  int depth = 0;
  bool inString = false;
  for (size_t i = 0; i < text.size(); ++i) {
    const wchar_t c = text[i];
    if (inString) {
      if (c == L'\\') ++i;
      else if (c == L'"') inString = false;
    } else if (c == L'"') {
      inString = true;
    } else if (c == L';') {
      if (i + 1 < text.size() && text[i + 1] == L'|') {
        const size_t end = text.find(L"|;", i + 2);
        if (end == std::wstring::npos) return depth + 1;  // block comment still open
        i = end + 1;
      } else {
        const size_t end = text.find(L'\n', i);
        if (end == std::wstring::npos) break;
        i = end;
      }
    } else if (c == L'(') {
      ++depth;
    } else if (c == L')') {
      --depth;
    }
  }
  return inString ? depth + 1 : depth;
}

}  // namespace kelhost::editor
