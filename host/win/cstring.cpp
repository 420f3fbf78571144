// CString with the semantics of the platform's MFC class: out-of-range
// arguments are clamped rather than rejected, searches answer -1 when
// nothing is found, and counts are returned where MFC returns them.
#include <algorithm>
#include <cwchar>

#include "arx/afx.h"
#include "arx/wformat.h"
#include "kelhost/text.h"

namespace {
bool InSet(wchar_t ch, const wchar_t* set) { return set && ch != 0 && std::wcschr(set, ch) != nullptr; }
}  // namespace

CString::CString(const wchar_t* s) {
  if (s) m = s;
}

CString::CString(const wchar_t* s, int length) {
  if (s && length > 0) m.assign(s, static_cast<size_t>(length));
}

CString::CString(const char* utf8) : m(kelhost::FromUtf8(utf8)) {}

CString::CString(wchar_t ch, int repeat) {
  if (repeat > 0) m.assign(static_cast<size_t>(repeat), ch);
}

CString& CString::operator=(const wchar_t* s) {
  std::wstring copy = s ? std::wstring(s) : std::wstring();  // s may point into m
  m.swap(copy);
  return *this;
}

CString& CString::operator=(wchar_t ch) {
  m.assign(1, ch);
  return *this;
}

// The buffer is the string itself, grown with nulls to minLength; the
// length seen before ReleaseBuffer is that of the buffer.
wchar_t* CString::GetBuffer(int minLength) {
  if (minLength > 0 && static_cast<size_t>(minLength) > m.size()) m.resize(static_cast<size_t>(minLength));
  return &m[0];
}

wchar_t* CString::GetBufferSetLength(int length) {
  m.resize(length > 0 ? static_cast<size_t>(length) : 0);
  return &m[0];
}

void CString::ReleaseBuffer(int newLength) {
  size_t n = newLength < 0 ? std::wcslen(m.c_str()) : static_cast<size_t>(newLength);
  if (n < m.size()) m.resize(n);
}

CString CString::Left(int count) const {
  if (count <= 0) return CString();
  return CString(m.substr(0, static_cast<size_t>(count)));
}

CString CString::Right(int count) const {
  if (count <= 0) return CString();
  size_t n = std::min(m.size(), static_cast<size_t>(count));
  return CString(m.substr(m.size() - n));
}

CString CString::Mid(int first) const { return Mid(first, GetLength()); }

CString CString::Mid(int first, int count) const {
  if (first < 0) first = 0;
  if (count <= 0 || static_cast<size_t>(first) >= m.size()) return CString();
  return CString(m.substr(static_cast<size_t>(first), static_cast<size_t>(count)));
}

CString CString::SpanIncluding(const wchar_t* charSet) const {
  if (!charSet) return CString();
  return Left(static_cast<int>(std::wcsspn(m.c_str(), charSet)));
}

CString CString::SpanExcluding(const wchar_t* charSet) const {
  if (!charSet) return *this;
  return Left(static_cast<int>(std::wcscspn(m.c_str(), charSet)));
}

// MFC's rule: skip leading delimiters, return the run up to the next one and
// move start past that delimiter; when nothing is left, start becomes -1
// and the token is empty. Without delimiters the rest of the string is
// returned and start is left alone.
CString CString::Tokenize(const wchar_t* tokens, int& start) const {
  if (start < 0) {
    start = -1;
    return CString();
  }
  const size_t length = m.size();
  if (!tokens || !*tokens) {
    if (static_cast<size_t>(start) < length) return Mid(start);
  } else if (static_cast<size_t>(start) < length) {
    size_t from = static_cast<size_t>(start);
    while (from < length && InSet(m[from], tokens)) ++from;
    if (from < length) {
      size_t until = from;
      while (until < length && !InSet(m[until], tokens)) ++until;
      start = static_cast<int>(until + 1);
      return CString(m.substr(from, until - from));
    }
  }
  start = -1;
  return CString();
}

int CString::Find(wchar_t ch, int start) const {
  if (start < 0 || static_cast<size_t>(start) >= m.size()) return -1;
  size_t at = m.find(ch, static_cast<size_t>(start));
  return at == std::wstring::npos ? -1 : static_cast<int>(at);
}

int CString::Find(const wchar_t* sub, int start) const {
  if (!sub || start < 0 || static_cast<size_t>(start) > m.size()) return -1;
  size_t at = m.find(sub, static_cast<size_t>(start));
  return at == std::wstring::npos ? -1 : static_cast<int>(at);
}

int CString::ReverseFind(wchar_t ch) const {
  size_t at = m.rfind(ch);
  return at == std::wstring::npos ? -1 : static_cast<int>(at);
}

int CString::FindOneOf(const wchar_t* charSet) const {
  if (!charSet) return -1;
  for (size_t i = 0; i < m.size(); ++i)
    if (InSet(m[i], charSet)) return static_cast<int>(i);
  return -1;
}

CString& CString::MakeUpper() {
  m = kelhost::ToUpper(m);
  return *this;
}

CString& CString::MakeLower() {
  m = kelhost::ToLower(m);
  return *this;
}

CString& CString::MakeReverse() {
  std::reverse(m.begin(), m.end());
  return *this;
}

CString& CString::Trim() { return TrimRight().TrimLeft(); }
CString& CString::Trim(wchar_t ch) { return TrimRight(ch).TrimLeft(ch); }
CString& CString::Trim(const wchar_t* chars) { return TrimRight(chars).TrimLeft(chars); }

CString& CString::TrimLeft() {
  size_t i = 0;
  while (i < m.size() && kelhost::IsBlankChar(m[i])) ++i;
  m.erase(0, i);
  return *this;
}

CString& CString::TrimLeft(wchar_t ch) {
  size_t i = 0;
  while (i < m.size() && m[i] == ch) ++i;
  m.erase(0, i);
  return *this;
}

CString& CString::TrimLeft(const wchar_t* chars) {
  if (!chars || !*chars) return *this;
  size_t i = 0;
  while (i < m.size() && InSet(m[i], chars)) ++i;
  m.erase(0, i);
  return *this;
}

CString& CString::TrimRight() {
  size_t n = m.size();
  while (n > 0 && kelhost::IsBlankChar(m[n - 1])) --n;
  m.resize(n);
  return *this;
}

CString& CString::TrimRight(wchar_t ch) {
  size_t n = m.size();
  while (n > 0 && m[n - 1] == ch) --n;
  m.resize(n);
  return *this;
}

CString& CString::TrimRight(const wchar_t* chars) {
  if (!chars || !*chars) return *this;
  size_t n = m.size();
  while (n > 0 && InSet(m[n - 1], chars)) --n;
  m.resize(n);
  return *this;
}

int CString::Replace(wchar_t oldCh, wchar_t newCh) {
  if (oldCh == newCh) return 0;
  int count = 0;
  for (wchar_t& c : m)
    if (c == oldCh) {
      c = newCh;
      ++count;
    }
  return count;
}

int CString::Replace(const wchar_t* oldStr, const wchar_t* newStr) {
  if (!oldStr || !*oldStr) return 0;
  const std::wstring from(oldStr);
  const std::wstring to(newStr ? newStr : L"");
  std::wstring out;
  int count = 0;
  size_t pos = 0;
  for (size_t at; (at = m.find(from, pos)) != std::wstring::npos; pos = at + from.size()) {
    out.append(m, pos, at - pos);
    out += to;
    ++count;
  }
  if (count == 0) return 0;
  out.append(m, pos, std::wstring::npos);
  m.swap(out);
  return count;
}

int CString::Remove(wchar_t ch) {
  size_t before = m.size();
  m.erase(std::remove(m.begin(), m.end(), ch), m.end());
  return static_cast<int>(before - m.size());
}

int CString::Insert(int index, wchar_t ch) {
  if (index < 0) index = 0;
  size_t at = std::min(m.size(), static_cast<size_t>(index));
  m.insert(at, 1, ch);
  return GetLength();
}

int CString::Insert(int index, const wchar_t* s) {
  if (index < 0) index = 0;
  if (s && *s) {
    std::wstring copy(s);  // s may point into m
    size_t at = std::min(m.size(), static_cast<size_t>(index));
    m.insert(at, copy);
  }
  return GetLength();
}

int CString::Delete(int index, int count) {
  if (index < 0) index = 0;
  if (count > 0 && static_cast<size_t>(index) < m.size()) m.erase(static_cast<size_t>(index), static_cast<size_t>(count));
  return GetLength();
}

int CString::Compare(const wchar_t* s) const {
  int r = std::wcscmp(m.c_str(), s ? s : L"");
  return r < 0 ? -1 : (r > 0 ? 1 : 0);
}

int CString::CompareNoCase(const wchar_t* s) const {
  const wchar_t* a = m.c_str();
  const wchar_t* b = s ? s : L"";
  for (;; ++a, ++b) {
    wchar_t x = kelhost::ToUpperChar(*a), y = kelhost::ToUpperChar(*b);
    if (x != y) return x < y ? -1 : 1;
    if (x == 0) return 0;
  }
}

void CString::Format(const wchar_t* format, ...) {
  va_list ap;
  va_start(ap, format);
  FormatV(format, ap);
  va_end(ap);
}

void CString::FormatV(const wchar_t* format, va_list args) { m = kelhost::WFormatV(format, args); }

void CString::AppendFormat(const wchar_t* format, ...) {
  va_list ap;
  va_start(ap, format);
  m += kelhost::WFormatV(format, ap);
  va_end(ap);
}
