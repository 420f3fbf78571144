// vl-registry-read, -write, -delete and -descendents over the platform's
// registry calls (the host keeps the registry in a file of its own). A
// key is written from its hive: "HKEY_CURRENT_USER\\Software\\...".
#include <cstring>
#include <cwchar>
#include <vector>

#include "arx/win32.h"
#include "kelhost/text.h"
#include "lisp/machine.h"

namespace kelhost::lisp {
namespace {

// The hive a key starts with, and the rest of it; null for no hive.
HKEY SplitKey(const std::wstring& key, std::wstring& rest) {
  const size_t slash = key.find(L'\\');
  const std::wstring hive = ToUpper(key.substr(0, slash));
  rest = slash == std::wstring::npos ? L"" : key.substr(slash + 1);
  if (hive == L"HKEY_CURRENT_USER" || hive == L"HKCU") return HKEY_CURRENT_USER;
  if (hive == L"HKEY_LOCAL_MACHINE" || hive == L"HKLM") return HKEY_LOCAL_MACHINE;
  if (hive == L"HKEY_CLASSES_ROOT" || hive == L"HKCR") return HKEY_CLASSES_ROOT;
  return nullptr;
}

// An open key, closed when it goes.
class Key {
 public:
  Key(const std::wstring& path, bool create) {
    std::wstring rest;
    HKEY hive = SplitKey(path, rest);
    if (!hive) return;
    if (create)
      RegCreateKeyExW(hive, rest.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &mKey, nullptr);
    else
      RegOpenKeyExW(hive, rest.c_str(), 0, KEY_ALL_ACCESS, &mKey);
  }
  ~Key() {
    if (mKey) RegCloseKey(mKey);
  }
  Key(const Key&) = delete;
  Key& operator=(const Key&) = delete;
  HKEY get() const { return mKey; }

 private:
  HKEY mKey = nullptr;
};

const wchar_t* ValueNameArg(Machine& m, Args& a, size_t i) {
  return a.size() > i && a[i] ? StrArg(m, a[i]).c_str() : L"";
}

// (vl-registry-read key [name]): a string or an integer; nil when absent.
ValuePtr RegistryRead(Machine& m, Args& a) {
  const std::wstring& path = StrArg(m, a[0]);
  const wchar_t* name = ValueNameArg(m, a, 1);
  Key key(path, false);
  if (!key.get()) return nullptr;
  DWORD type = REG_NONE, size = 0;
  if (RegQueryValueExW(key.get(), name, nullptr, &type, nullptr, &size) != ERROR_SUCCESS) return nullptr;
  std::vector<BYTE> data(size + sizeof(wchar_t));
  if (RegQueryValueExW(key.get(), name, nullptr, &type, data.data(), &size) != ERROR_SUCCESS) return nullptr;
  if (type == REG_DWORD) {
    DWORD v = 0;
    std::memcpy(&v, data.data(), sizeof v);
    return MakeInt(static_cast<std::int32_t>(v));
  }
  std::wstring text(size / sizeof(wchar_t), L'\0');
  std::memcpy(text.data(), data.data(), text.size() * sizeof(wchar_t));
  while (!text.empty() && text.back() == L'\0') text.pop_back();
  return MakeStr(text);
}

// (vl-registry-write key [name value]): the value written (a string or
// an integer), nil on failure.
ValuePtr RegistryWrite(Machine& m, Args& a) {
  const std::wstring& path = StrArg(m, a[0]);
  const wchar_t* name = ValueNameArg(m, a, 1);
  ValuePtr value = a.size() > 2 ? a[2] : MakeStr(L"");
  if (!Is(value, Kind::Int)) StrArg(m, value);
  Key key(path, true);
  if (!key.get()) return nullptr;
  LONG rc;
  if (Is(value, Kind::Int)) {
    const DWORD v = static_cast<DWORD>(As<IntValue>(value)->value);
    rc = RegSetValueExW(key.get(), name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&v), sizeof v);
  } else {
    const std::wstring& text = As<StrValue>(value)->value;
    rc = RegSetValueExW(key.get(), name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                        static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
  }
  return rc == ERROR_SUCCESS ? value : nullptr;
}

// (vl-registry-delete key [name]): a value, or a key without subkeys.
ValuePtr RegistryDelete(Machine& m, Args& a) {
  const std::wstring& path = StrArg(m, a[0]);
  if (a.size() > 1 && a[1]) {
    const std::wstring& name = StrArg(m, a[1]);
    Key key(path, false);
    return m.truth(key.get() && RegDeleteValueW(key.get(), name.c_str()) == ERROR_SUCCESS);
  }
  std::wstring rest;
  HKEY hive = SplitKey(path, rest);
  return m.truth(hive && RegDeleteKeyW(hive, rest.c_str()) == ERROR_SUCCESS);
}

// (vl-registry-descendents key [value-names]): the subkeys' names, or
// with value-names the values' names ("" for the default value).
ValuePtr RegistryDescendents(Machine& m, Args& a) {
  const std::wstring& path = StrArg(m, a[0]);
  const bool values = a.size() > 1 && a[1];
  Key key(path, false);
  if (!key.get()) return nullptr;
  ListBuilder out;
  for (DWORD i = 0;; ++i) {
    wchar_t name[512];
    DWORD length = 512;
    const LONG rc = values ? RegEnumValueW(key.get(), i, name, &length, nullptr, nullptr, nullptr, nullptr)
                           : RegEnumKeyExW(key.get(), i, name, &length, nullptr, nullptr, nullptr, nullptr);
    if (rc == ERROR_NO_MORE_ITEMS) break;
    if (rc == ERROR_SUCCESS) out.add(MakeStr(name));
  }
  return out.take();
}

}  // namespace

void RegisterRegistryBuiltins(Machine& m) {
  m.defineBuiltin(L"VL-REGISTRY-READ", RegistryRead, 1, 2);
  m.defineBuiltin(L"VL-REGISTRY-WRITE", RegistryWrite, 1, 3);
  m.defineBuiltin(L"VL-REGISTRY-DELETE", RegistryDelete, 1, 2);
  m.defineBuiltin(L"VL-REGISTRY-DESCENDENTS", RegistryDescendents, 1, 2);
}

}  // namespace kelhost::lisp
