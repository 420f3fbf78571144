// load and findfile, and the process environment (getenv, setenv).
#include <vector>

#include "app/support_path.h"
#include "arx/win32.h"
#include "kelhost/paths.h"
#include "kelhost/text.h"
#include "lisp/loading.h"
#include "lisp/machine.h"
#include "lisp/printer.h"
#include "lisp/reader.h"

namespace kelhost::lisp {
namespace {

bool IsSeparator(wchar_t c) { return c == L'/' || c == L'\\'; }

std::wstring DirectoryOf(const std::wstring& path) {
  for (size_t k = path.size(); k > 0; --k)
    if (IsSeparator(path[k - 1])) return path.substr(0, k - 1);
  return L"";
}

std::wstring Join(const std::wstring& dir, const std::wstring& name) {
  if (dir.empty()) return name;
  return IsSeparator(dir.back()) ? dir + name : dir + L"/" + name;
}

std::optional<std::wstring> Environment(const std::wstring& name) {
  std::vector<wchar_t> buffer(256);
  for (;;) {
    DWORD n = GetEnvironmentVariableW(name.c_str(), buffer.data(), static_cast<DWORD>(buffer.size()));
    if (n == 0) return std::nullopt;
    if (n < buffer.size()) return std::wstring(buffer.data(), n);
    buffer.resize(n + 1);
  }
}

bool EndsWithNoCase(const std::wstring& s, const std::wstring& tail) {
  return s.size() >= tail.size() && EqualNoCase(s.substr(s.size() - tail.size()), tail);
}

ValuePtr Failed(Machine& m, const std::wstring& name, const ValuePtr* onFailure) {
  if (onFailure) return FailureValue(m, *onFailure);
  m.raise(L"LOAD failed: " + QuoteString(name));
}

ValuePtr EvaluateAll(Machine& m, Reader& reader) {
  ValuePtr last, form;
  for (;;) {
    try {
      if (!reader.next(form)) return last;
    } catch (const ReadError& e) {
      m.raise(e.message);
    }
    last = m.eval(form);
  }
}

ValuePtr Load(Machine& m, Args& a) {
  return LoadFile(m, StrArg(m, a[0]), a.size() > 1 ? &a[1] : nullptr);
}

ValuePtr Findfile(Machine& m, Args& a) {
  auto found = FindFile(m, StrArg(m, a[0]));
  return found ? MakeStr(*found) : nullptr;
}

ValuePtr Getenv(Machine& m, Args& a) {
  auto value = Environment(StrArg(m, a[0]));
  return value ? MakeStr(*value) : nullptr;
}

ValuePtr Setenv(Machine& m, Args& a) {
  const std::wstring& name = StrArg(m, a[0]);
  const std::wstring& value = StrArg(m, a[1]);
  if (!m.options.allowSetenv) m.raise(L"setenv is not allowed");
  if (name.empty() || !SetEnvironmentVariableW(name.c_str(), value.c_str()))
    m.raise(L"bad argument value: " + m.printed(a[0]));
  return a[1];
}

}  // namespace

ValuePtr FailureValue(Machine& m, const ValuePtr& onFailure) {
  if (Is(onFailure, Kind::Subr) || Is(onFailure, Kind::USubr) || Is(onFailure, Kind::ExSubr)) {
    Args none;
    return m.apply(onFailure, none);
  }
  return onFailure;
}

std::optional<std::wstring> FindFile(Machine& m, const std::wstring& name) {
  if (name.empty() || !m.options.allowFiles) return std::nullopt;
  if (auto found = app::FindSupportFile(name)) return found;
  if (app::HasDirectoryPart(name)) return std::nullopt;
  for (auto it = m.loadingDirs.rbegin(); it != m.loadingDirs.rend(); ++it)
    if (app::IsRegularFile(Join(*it, name))) return Join(*it, name);
  return std::nullopt;
}

ValuePtr LoadFile(Machine& m, const std::wstring& name, const ValuePtr* onFailure) {
  auto path = FindFile(m, name);
  if (!path && !EndsWithNoCase(name, L".lsp")) path = FindFile(m, name + L".lsp");
  std::string bytes;
  if (!path || !ReadWholeFile(NativePath(*path), bytes)) return Failed(m, name, onFailure);
  std::wstring text = FromUtf8(bytes);
  if (!text.empty() && text[0] == 0xFEFF) text.erase(0, 1);

  struct LoadingDir {
    Machine& m;
    LoadingDir(Machine& machine, std::wstring dir) : m(machine) { m.loadingDirs.push_back(std::move(dir)); }
    ~LoadingDir() { m.loadingDirs.pop_back(); }
  } loading(m, DirectoryOf(*path));
  Reader reader(m, std::move(text));
  if (!onFailure) return EvaluateAll(m, reader);
  {
    // With onfailure, an error inside the file makes load fail quietly.
    CatchScope scope(m);
    try {
      return EvaluateAll(m, reader);
    } catch (const LispError&) {
    }
  }
  return FailureValue(m, *onFailure);
}

void RegisterLoadBuiltins(Machine& m) {
  m.defineBuiltin(L"LOAD", Load, 1, 2);
  m.defineBuiltin(L"FINDFILE", Findfile, 1, 1);
  m.defineBuiltin(L"GETENV", Getenv, 1, 1);
  m.defineBuiltin(L"SETENV", Setenv, 2, 2);
  RegisterArxBuiltins(m);
}

}  // namespace kelhost::lisp
