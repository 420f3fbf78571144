// Output to the command line or to an open file.
#include "lisp/files.h"
#include "lisp/machine.h"
#include "lisp/printer.h"

namespace kelhost::lisp {
namespace {

void Emit(Machine& m, Args& a, size_t fileIndex, const std::wstring& text) {
  if (a.size() > fileIndex && a[fileIndex])
    WriteToFile(m, a[fileIndex], text);
  else
    m.write(text);
}

// Without an argument these print nothing and return the null symbol, so
// that a function ending in (princ) exits quietly.
ValuePtr PrincFn(Machine& m, Args& a) {
  if (a.empty()) return m.symQuiet;
  Emit(m, a, 1, m.printed(a[0], false));
  return a[0];
}

ValuePtr Prin1Fn(Machine& m, Args& a) {
  if (a.empty()) return m.symQuiet;
  Emit(m, a, 1, m.printed(a[0]));
  return a[0];
}

ValuePtr PrintFn(Machine& m, Args& a) {
  if (a.empty()) return m.symQuiet;
  Emit(m, a, 1, L"\n" + m.printed(a[0]) + L" ");
  return a[0];
}

ValuePtr Prompt(Machine& m, Args& a) {
  m.write(StrArg(m, a[0]));
  return nullptr;
}

ValuePtr Terpri(Machine& m, Args&) {
  m.write(L"\n");
  return nullptr;
}

ValuePtr WriteLine(Machine& m, Args& a) {
  Emit(m, a, 1, StrArg(m, a[0]) + L"\n");
  return a[0];
}

ValuePtr WriteChar(Machine& m, Args& a) {
  std::int32_t code = IntArg(m, a[0]);
  if (code <= 0 || code > 0x10FFFF) m.raise(L"bad argument value: " + m.printed(a[0]));
  Emit(m, a, 1, std::wstring(1, static_cast<wchar_t>(code)));
  return a[0];
}

}  // namespace

void RegisterOutputBuiltins(Machine& m) {
  m.defineBuiltin(L"PRINC", PrincFn, 0, 2);
  m.defineBuiltin(L"PRIN1", Prin1Fn, 0, 2);
  m.defineBuiltin(L"PRINT", PrintFn, 0, 2);
  m.defineBuiltin(L"PROMPT", Prompt, 1, 1);
  m.defineBuiltin(L"TERPRI", Terpri, 0, 0);
  m.defineBuiltin(L"WRITE-LINE", WriteLine, 1, 2);
  m.defineBuiltin(L"WRITE-CHAR", WriteChar, 1, 2);
}

}  // namespace kelhost::lisp
