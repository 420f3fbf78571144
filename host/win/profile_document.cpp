// Parsing, lookup and line-preserving edits of INI files.
#include "win/profile_document.h"

#include "kelhost/text.h"

namespace kelhost {
namespace {
std::wstring Trim(const std::wstring& s) {
  size_t b = 0, e = s.size();
  while (b < e && IsBlankChar(s[b])) ++b;
  while (e > b && IsBlankChar(s[e - 1])) --e;
  return s.substr(b, e - b);
}

std::wstring Decode(const std::string& bytes) {
  const unsigned char* d = reinterpret_cast<const unsigned char*>(bytes.data());
  size_t n = bytes.size();
  std::wstring text;
  if (n >= 2 && d[0] == 0xFF && d[1] == 0xFE) text = FromUtf16(d + 2, n - 2, false);
  else if (n >= 2 && d[0] == 0xFE && d[1] == 0xFF) text = FromUtf16(d + 2, n - 2, true);
  else text = FromUtf8(bytes);
  // Byte-order marks (a UTF-8 one, or repeated ones) carry no text.
  size_t marks = 0;
  while (marks < text.size() && text[marks] == 0xFEFF) ++marks;
  return text.erase(0, marks);
}
}  // namespace

ProfileDocument::Line ProfileDocument::Classify(const std::wstring& text) {
  Line line;
  line.text = text;
  std::wstring t = Trim(text);
  if (t.empty()) {
    line.kind = Kind::kBlank;
  } else if (t[0] == L';' || t[0] == L'#') {
    line.kind = Kind::kComment;
  } else if (t[0] == L'[') {
    line.kind = Kind::kSection;
    size_t close = t.rfind(L']');
    line.name = Trim(close == std::wstring::npos || close == 0 ? t.substr(1) : t.substr(1, close - 1));
  } else {
    size_t eq = t.find(L'=');
    if (eq == std::wstring::npos) {
      line.kind = Kind::kOther;
    } else {
      line.kind = Kind::kEntry;
      line.name = Trim(t.substr(0, eq));
      line.rawValue = Trim(t.substr(eq + 1));
    }
  }
  return line;
}

ProfileDocument ProfileDocument::Parse(const std::string& bytes) {
  ProfileDocument doc;
  std::wstring text = Decode(bytes);
  bool endingSeen = false;
  size_t start = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] != L'\n' && text[i] != L'\r') continue;
    bool crlf = text[i] == L'\r' && i + 1 < text.size() && text[i + 1] == L'\n';
    if (!endingSeen) {
      doc.mCrlf = crlf;
      endingSeen = true;
    }
    doc.mLines.push_back(Classify(text.substr(start, i - start)));
    if (crlf) ++i;
    start = i + 1;
  }
  if (start < text.size()) doc.mLines.push_back(Classify(text.substr(start)));
  return doc;
}

std::string ProfileDocument::Serialize() const {
  std::wstring text;
  const wchar_t* eol = mCrlf ? L"\r\n" : L"\n";
  for (const Line& line : mLines) {
    text += line.text;
    text += eol;
  }
  return ToUtf8(text);
}

std::wstring ProfileDocument::UnquoteValue(const std::wstring& rawValue) {
  std::wstring v = Trim(rawValue);
  if (v.size() >= 2 && (v[0] == L'"' || v[0] == L'\'') && v.back() == v[0]) return v.substr(1, v.size() - 2);
  return v;
}

bool ProfileDocument::Storable(const std::wstring& section, const wchar_t* key, const wchar_t* value,
                               std::wstring& stored, std::wstring& why) {
  auto hasBreak = [](const std::wstring& t) { return t.find_first_of(L"\r\n") != std::wstring::npos; };
  auto trimmable = [](const std::wstring& t) { return !t.empty() && Trim(t) != t; };
  if (section.empty() || hasBreak(section) || trimmable(section))
    return why = L"a section name must be one line without blanks at its ends", false;
  if (key) {
    const std::wstring k = key;
    if (k.empty() || hasBreak(k) || trimmable(k) || k.find(L'=') != std::wstring::npos || k[0] == L';' || k[0] == L'#' ||
        k[0] == L'[')
      return why = L"a key must be one line without '=', blanks at its ends or a leading ';', '#' or '['", false;
  }
  stored = value ? value : L"";
  if (hasBreak(stored)) return why = L"a value must be one line", false;
  if (UnquoteValue(stored) != stored) stored = L"\"" + stored + L"\"";
  return true;
}

size_t ProfileDocument::FindSection(const std::wstring& section, size_t& end) const {
  for (size_t i = 0; i < mLines.size(); ++i) {
    if (mLines[i].kind != Kind::kSection || !EqualNoCase(mLines[i].name, section)) continue;
    end = i + 1;
    while (end < mLines.size() && mLines[end].kind != Kind::kSection) ++end;
    return i;
  }
  end = 0;
  return std::wstring::npos;
}

size_t ProfileDocument::FindKey(size_t header, size_t end, const std::wstring& key) const {
  for (size_t i = header + 1; i < end; ++i)
    if (mLines[i].kind == Kind::kEntry && EqualNoCase(mLines[i].name, key)) return i;
  return std::wstring::npos;
}

std::vector<std::wstring> ProfileDocument::SectionNames() const {
  std::vector<std::wstring> names;
  for (const Line& line : mLines) {
    if (line.kind != Kind::kSection || line.name.empty()) continue;
    bool seen = false;
    for (const std::wstring& n : names) seen = seen || EqualNoCase(n, line.name);
    if (!seen) names.push_back(line.name);
  }
  return names;
}

bool ProfileDocument::HasSection(const std::wstring& section) const {
  size_t end;
  return FindSection(section, end) != std::wstring::npos;
}

std::vector<std::pair<std::wstring, std::wstring>> ProfileDocument::Entries(const std::wstring& section) const {
  std::vector<std::pair<std::wstring, std::wstring>> entries;
  size_t end;
  size_t header = FindSection(section, end);
  if (header == std::wstring::npos) return entries;
  for (size_t i = header + 1; i < end; ++i) {
    const Line& line = mLines[i];
    if (line.kind != Kind::kEntry || FindKey(header, end, line.name) != i) continue;  // first duplicate wins
    entries.emplace_back(line.name, UnquoteValue(line.rawValue));
  }
  return entries;
}

std::vector<std::wstring> ProfileDocument::EntryLines(const std::wstring& section) const {
  std::vector<std::wstring> lines;
  size_t end;
  size_t header = FindSection(section, end);
  if (header == std::wstring::npos) return lines;
  for (size_t i = header + 1; i < end; ++i)
    if (mLines[i].kind == Kind::kEntry) lines.push_back(mLines[i].name + L"=" + mLines[i].rawValue);
  return lines;
}

bool ProfileDocument::Find(const std::wstring& section, const std::wstring& key, std::wstring& value) const {
  size_t end;
  size_t header = FindSection(section, end);
  if (header == std::wstring::npos) return false;
  size_t at = FindKey(header, end, key);
  if (at == std::wstring::npos) return false;
  value = UnquoteValue(mLines[at].rawValue);
  return true;
}

void ProfileDocument::Set(const std::wstring& section, const std::wstring& key, const std::wstring& value) {
  size_t end;
  size_t header = FindSection(section, end);
  if (header == std::wstring::npos) {
    mLines.push_back(Classify(L"[" + section + L"]"));
    mLines.push_back(Classify(key + L"=" + value));
    return;
  }
  size_t at = FindKey(header, end, key);
  if (at != std::wstring::npos) {
    mLines[at] = Classify(mLines[at].name + L"=" + value);  // the file's spelling of the key stays
    return;
  }
  size_t insertAt = header + 1;
  for (size_t i = header + 1; i < end; ++i)
    if (mLines[i].kind == Kind::kEntry) insertAt = i + 1;
  mLines.insert(mLines.begin() + static_cast<std::ptrdiff_t>(insertAt), Classify(key + L"=" + value));
}

bool ProfileDocument::AddSection(const std::wstring& section) {
  if (HasSection(section)) return false;
  mLines.push_back(Classify(L"[" + section + L"]"));
  return true;
}

bool ProfileDocument::DeleteKey(const std::wstring& section, const std::wstring& key) {
  size_t end;
  size_t header = FindSection(section, end);
  if (header == std::wstring::npos) return false;
  size_t at = FindKey(header, end, key);
  if (at == std::wstring::npos) return false;
  mLines.erase(mLines.begin() + static_cast<std::ptrdiff_t>(at));
  return true;
}

bool ProfileDocument::DeleteSection(const std::wstring& section) {
  size_t end;
  size_t header = FindSection(section, end);
  if (header == std::wstring::npos) return false;
  mLines.erase(mLines.begin() + static_cast<std::ptrdiff_t>(header), mLines.begin() + static_cast<std::ptrdiff_t>(end));
  return true;
}
}  // namespace kelhost
