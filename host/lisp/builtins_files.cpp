// open, close, read-line and read-char: UTF-8 text files reached through
// the family's path mapping.
#include "kelhost/paths.h"
#include "kelhost/text.h"
#include "lisp/files.h"
#include "lisp/machine.h"
#include "lisp/printer.h"

namespace kelhost::lisp {
namespace {

FileValue* OpenFile(Machine& m, const ValuePtr& v, bool forReading) {
  if (Is(v, Kind::File)) {
    FileValue* f = As<FileValue>(v);
    if (f->fp && (f->mode == L'r') == forReading) return f;
  }
  m.badArgument(L"streamp ", v);
}

// Skips a UTF-8 byte-order mark at the very start of a file.
void SkipBom(FileValue* f) {
  if (!f->atStart) return;
  f->atStart = false;
  int b0 = std::fgetc(f->fp);
  if (b0 == 0xEF) {
    int b1 = std::fgetc(f->fp);
    if (b1 == 0xBB) {
      int b2 = std::fgetc(f->fp);
      if (b2 == 0xBF) return;
      if (b2 != EOF) std::ungetc(b2, f->fp);
    }
    // Not a mark: start over (the file was just opened, so seeking works).
    std::fseek(f->fp, 0, SEEK_SET);
  } else if (b0 != EOF) {
    std::ungetc(b0, f->fp);
  }
}

ValuePtr Open(Machine& m, Args& a) {
  const std::wstring& name = StrArg(m, a[0]);
  const std::wstring& mode = StrArg(m, a[1]);
  if (a.size() > 2) StrArg(m, a[2]);  // the encoding: files are UTF-8 here
  if (!m.options.allowFiles) m.raise(L"file access is not allowed");
  wchar_t kind = mode.empty() ? 0 : static_cast<wchar_t>(ToLowerChar(mode[0]));
  const char* how = kind == L'r' ? "rb" : kind == L'w' ? "wb" : kind == L'a' ? "ab" : nullptr;
  if (!how || mode.size() != 1) m.raise(L"bad argument value: " + m.printed(a[1]));
  std::FILE* fp = std::fopen(NativePath(name).c_str(), how);
  if (!fp) return nullptr;
  return std::make_shared<FileValue>(name, fp, kind);
}

ValuePtr Close(Machine& m, Args& a) {
  if (!Is(a[0], Kind::File) || !As<FileValue>(a[0])->fp) m.badArgument(L"streamp ", a[0]);
  FileValue* f = As<FileValue>(a[0]);
  std::fclose(f->fp);
  f->fp = nullptr;
  return nullptr;
}

// A line without its end (LF or CR LF); nil at the end of the file. There
// is no keyboard on this host, so without a file the answer is nil.
ValuePtr ReadLine(Machine& m, Args& a) {
  if (a.empty() || !a[0]) return nullptr;
  FileValue* f = OpenFile(m, a[0], true);
  SkipBom(f);
  std::string bytes;
  int c;
  bool any = false;
  while ((c = std::fgetc(f->fp)) != EOF) {
    any = true;
    if (c == '\n') break;
    bytes += static_cast<char>(c);
  }
  if (!any) return nullptr;
  if (!bytes.empty() && bytes.back() == '\r') bytes.pop_back();
  m.step(bytes.size() / 16 + 1);
  return MakeStr(FromUtf8(bytes));
}

// The code of the next character (a UTF-8 sequence); nil at the end.
ValuePtr ReadChar(Machine& m, Args& a) {
  if (a.empty() || !a[0]) return nullptr;
  FileValue* f = OpenFile(m, a[0], true);
  SkipBom(f);
  int c = std::fgetc(f->fp);
  if (c == EOF) return nullptr;
  std::string bytes(1, static_cast<char>(c));
  int more = (c & 0xE0) == 0xC0 ? 1 : (c & 0xF0) == 0xE0 ? 2 : (c & 0xF8) == 0xF0 ? 3 : 0;
  for (int k = 0; k < more; ++k) {
    int next = std::fgetc(f->fp);
    if (next == EOF) break;
    if ((next & 0xC0) != 0x80) {
      std::ungetc(next, f->fp);
      break;
    }
    bytes += static_cast<char>(next);
  }
  std::wstring text = FromUtf8(bytes);
  return MakeInt(text.empty() ? 0 : static_cast<std::int32_t>(text[0]));
}

}  // namespace

void WriteToFile(Machine& m, const ValuePtr& file, const std::wstring& text) {
  FileValue* f = OpenFile(m, file, false);
  std::string bytes = ToUtf8(text);
  std::fwrite(bytes.data(), 1, bytes.size(), f->fp);
}

void RegisterFileBuiltins(Machine& m) {
  m.defineBuiltin(L"OPEN", Open, 2, 3);
  m.defineBuiltin(L"CLOSE", Close, 1, 1);
  m.defineBuiltin(L"READ-LINE", ReadLine, 0, 1);
  m.defineBuiltin(L"READ-CHAR", ReadChar, 0, 1);
}

}  // namespace kelhost::lisp
