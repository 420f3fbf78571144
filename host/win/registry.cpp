// The registry as a persistent INI file. The file is KEL_REGISTRY_FILE,
// else $XDG_CONFIG_HOME/kelcad/registry.ini, else
// ~/.config/kelcad/registry.ini. Its layout:
//
//   [HKEY_CURRENT_USER\Software\Vendor\Product]
//   @="sz:text of the default value"
//   Count="dword:42"
//
// One section per key (the full path, hive name first); one line per value:
// the value's name ("@" for the default, unnamed value) and, in quotes, its
// type ("sz", "expand_sz" or "dword") and data. '%', control characters
// and, in names, the characters the INI syntax uses are written as %XX.
// A key exists when its section or a section below it exists. Every change
// rewrites the file atomically.
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <set>
#include <string>
#include <vector>

#include "arx/win32.h"
#include "kelhost/paths.h"
#include "kelhost/text.h"
#include "win/profile_document.h"

namespace {
using kelhost::ProfileDocument;

struct OpenKey {
  std::wstring path;
  REGSAM access;
};

std::set<OpenKey*>& OpenKeys() {
  static std::set<OpenKey*> keys;
  return keys;
}

std::string RegistryFile() {
  if (const char* f = std::getenv("KEL_REGISTRY_FILE"); f && *f) return kelhost::NativePath(kelhost::FromUtf8(f));
  if (const char* x = std::getenv("XDG_CONFIG_HOME"); x && *x) return std::string(x) + "/kelcad/registry.ini";
  std::string home;
  if (const char* h = std::getenv("HOME"); h && *h) {
    home = h;
  } else if (const struct passwd* pw = getpwuid(getuid()); pw && pw->pw_dir) {
    home = pw->pw_dir;
  } else {
    home = ".";
  }
  return home + "/.config/kelcad/registry.ini";
}

void MakeParentDirectories(const std::string& file) {
  for (size_t slash = file.find('/', 1); slash != std::string::npos; slash = file.find('/', slash + 1))
    ::mkdir(file.substr(0, slash).c_str(), 0777);  // existing ones fail harmlessly
}

ProfileDocument LoadStore() {
  std::string bytes;
  kelhost::ReadWholeFile(RegistryFile(), bytes);
  return ProfileDocument::Parse(bytes);
}

LONG SaveStore(const ProfileDocument& doc) {
  std::string file = RegistryFile();
  MakeParentDirectories(file);
  return kelhost::WriteFileAtomically(file, doc.Serialize()) ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
}

bool MustEscape(wchar_t c, bool inName) {
  if (c == L'%' || c < 0x20 || c == 0x7F) return true;
  if (!inName) return false;
  return std::wcschr(L"=[];#\"'@ \t", c) != nullptr;
}

std::wstring Escape(const std::wstring& s, bool inName) {
  std::wstring out;
  for (wchar_t c : s) {
    if (MustEscape(c, inName)) {
      static const wchar_t kHex[] = L"0123456789ABCDEF";
      unsigned v = static_cast<unsigned>(c) & 0xFFu;  // only ASCII is ever escaped
      out += L'%';
      out += kHex[v >> 4];
      out += kHex[v & 0xFu];
    } else {
      out += c;
    }
  }
  return out;
}

int HexDigit(wchar_t c) {
  if (c >= L'0' && c <= L'9') return c - L'0';
  if (c >= L'A' && c <= L'F') return c - L'A' + 10;
  if (c >= L'a' && c <= L'f') return c - L'a' + 10;
  return -1;
}

std::wstring Unescape(const std::wstring& s) {
  std::wstring out;
  for (size_t i = 0; i < s.size(); ++i) {
    if (s[i] == L'%' && i + 2 < s.size() && HexDigit(s[i + 1]) >= 0 && HexDigit(s[i + 2]) >= 0) {
      out += static_cast<wchar_t>(HexDigit(s[i + 1]) * 16 + HexDigit(s[i + 2]));
      i += 2;
    } else {
      out += s[i];
    }
  }
  return out;
}

std::wstring ValueName(LPCWSTR name) { return name && *name ? Escape(name, true) : std::wstring(L"@"); }

const wchar_t* RootName(HKEY key) {
  if (key == HKEY_CLASSES_ROOT) return L"HKEY_CLASSES_ROOT";
  if (key == HKEY_CURRENT_USER) return L"HKEY_CURRENT_USER";
  if (key == HKEY_LOCAL_MACHINE) return L"HKEY_LOCAL_MACHINE";
  return nullptr;
}

// The path and access rights behind a handle; false for a handle that is
// neither a hive nor open.
bool Resolve(HKEY key, std::wstring& path, REGSAM& access) {
  if (const wchar_t* root = RootName(key)) {
    path = root;
    access = KEY_ALL_ACCESS;
    return true;
  }
  OpenKey* open = reinterpret_cast<OpenKey*>(key);
  if (!key || OpenKeys().count(open) == 0) return false;
  path = open->path;
  access = open->access;
  return true;
}

// parent + "\" + subKey with empty components dropped.
std::wstring JoinKey(const std::wstring& parent, LPCWSTR subKey) {
  std::wstring path = parent;
  if (!subKey) return path;
  std::wstring part;
  for (const wchar_t* p = subKey;; ++p) {
    if (*p == L'\\' || *p == 0) {
      if (!part.empty()) path += L"\\" + Escape(part, false);
      part.clear();
      if (*p == 0) break;
    } else {
      part += *p;
    }
  }
  return path;
}

bool KeyExists(const ProfileDocument& doc, const std::wstring& path) {
  if (path.find(L'\\') == std::wstring::npos) return true;  // a hive
  const std::wstring prefix = kelhost::ToUpper(path) + L"\\";
  for (const std::wstring& section : doc.SectionNames()) {
    if (kelhost::EqualNoCase(section, path)) return true;
    if (kelhost::ToUpper(section).compare(0, prefix.size(), prefix) == 0) return true;
  }
  return false;
}

HKEY NewHandle(const std::wstring& path, REGSAM access) {
  OpenKey* key = new OpenKey{path, access};
  OpenKeys().insert(key);
  return reinterpret_cast<HKEY>(key);
}

// Reads "type:data" of a stored value.
bool ReadValue(const ProfileDocument& doc, const std::wstring& path, LPCWSTR name, DWORD& type, std::wstring& data) {
  std::wstring stored;
  if (!doc.Find(path, ValueName(name), stored)) return false;
  size_t colon = stored.find(L':');
  if (colon == std::wstring::npos) return false;
  std::wstring tag = stored.substr(0, colon);
  if (tag == L"sz") type = REG_SZ;
  else if (tag == L"expand_sz") type = REG_EXPAND_SZ;
  else if (tag == L"dword") type = REG_DWORD;
  else return false;
  data = Unescape(stored.substr(colon + 1));
  return true;
}
}  // namespace

LONG RegOpenKeyExW(HKEY key, LPCWSTR subKey, DWORD, REGSAM desired, HKEY* result) {
  if (!result) return ERROR_INVALID_PARAMETER;
  *result = nullptr;
  std::wstring parent;
  REGSAM parentAccess;
  if (!Resolve(key, parent, parentAccess)) return ERROR_INVALID_HANDLE;
  std::wstring path = JoinKey(parent, subKey);
  if (!KeyExists(LoadStore(), path)) return ERROR_FILE_NOT_FOUND;
  *result = NewHandle(path, desired);
  return ERROR_SUCCESS;
}

LONG RegCreateKeyExW(HKEY key, LPCWSTR subKey, DWORD, LPWSTR, DWORD, REGSAM desired, void*, HKEY* result,
                     DWORD* disposition) {
  if (!result) return ERROR_INVALID_PARAMETER;
  *result = nullptr;
  std::wstring parent;
  REGSAM parentAccess;
  if (!Resolve(key, parent, parentAccess)) return ERROR_INVALID_HANDLE;
  std::wstring path = JoinKey(parent, subKey);
  ProfileDocument doc = LoadStore();
  bool existed = KeyExists(doc, path);
  if (!existed) {
    doc.AddSection(path);
    if (LONG rc = SaveStore(doc); rc != ERROR_SUCCESS) return rc;
  }
  if (disposition) *disposition = existed ? REG_OPENED_EXISTING_KEY : REG_CREATED_NEW_KEY;
  *result = NewHandle(path, desired);
  return ERROR_SUCCESS;
}

// Strings are sized in bytes of wchar_t (4 here) and may or may not carry
// their terminator.
LONG RegSetValueExW(HKEY key, LPCWSTR valueName, DWORD, DWORD type, const BYTE* data, DWORD size) {
  std::wstring path;
  REGSAM access;
  if (!Resolve(key, path, access)) return ERROR_INVALID_HANDLE;
  if (!(access & KEY_SET_VALUE)) return ERROR_ACCESS_DENIED;
  if (!data && size > 0) return ERROR_INVALID_PARAMETER;
  std::wstring stored;
  if (type == REG_SZ || type == REG_EXPAND_SZ) {
    std::wstring text;
    const size_t count = size / sizeof(wchar_t);
    for (size_t i = 0; i < count; ++i) {
      wchar_t c;
      std::memcpy(&c, data + i * sizeof(wchar_t), sizeof c);
      if (c == 0) break;
      text += c;
    }
    stored = std::wstring(type == REG_SZ ? L"sz:" : L"expand_sz:") + Escape(text, false);
  } else if (type == REG_DWORD) {
    if (size != sizeof(DWORD) || !data) return ERROR_INVALID_PARAMETER;
    DWORD v;
    std::memcpy(&v, data, sizeof v);
    stored = L"dword:" + std::to_wstring(v);
  } else {
    return ERROR_INVALID_PARAMETER;  // this store keeps strings and DWORDs only
  }
  ProfileDocument doc = LoadStore();
  doc.Set(path, ValueName(valueName), L"\"" + stored + L"\"");
  return SaveStore(doc);
}

LONG RegQueryValueExW(HKEY key, LPCWSTR valueName, DWORD*, DWORD* type, BYTE* data, DWORD* size) {
  std::wstring path;
  REGSAM access;
  if (!Resolve(key, path, access)) return ERROR_INVALID_HANDLE;
  if (!(access & KEY_QUERY_VALUE)) return ERROR_ACCESS_DENIED;
  if (data && !size) return ERROR_INVALID_PARAMETER;
  DWORD storedType = REG_NONE;
  std::wstring text;
  if (!ReadValue(LoadStore(), path, valueName, storedType, text)) return ERROR_FILE_NOT_FOUND;
  std::basic_string<BYTE> bytes;
  if (storedType == REG_DWORD) {
    DWORD v = static_cast<DWORD>(std::wcstoul(text.c_str(), nullptr, 10));
    bytes.assign(reinterpret_cast<const BYTE*>(&v), sizeof v);
  } else {
    bytes.assign(reinterpret_cast<const BYTE*>(text.c_str()), (text.size() + 1) * sizeof(wchar_t));
  }
  if (type) *type = storedType;
  if (!size) return ERROR_SUCCESS;
  const DWORD needed = static_cast<DWORD>(bytes.size());
  if (data && *size < needed) {
    *size = needed;
    return ERROR_MORE_DATA;
  }
  if (data) std::memcpy(data, bytes.data(), needed);
  *size = needed;
  return ERROR_SUCCESS;
}

LONG RegDeleteValueW(HKEY key, LPCWSTR valueName) {
  std::wstring path;
  REGSAM access;
  if (!Resolve(key, path, access)) return ERROR_INVALID_HANDLE;
  if (!(access & KEY_SET_VALUE)) return ERROR_ACCESS_DENIED;
  ProfileDocument doc = LoadStore();
  if (!doc.DeleteKey(path, ValueName(valueName))) return ERROR_FILE_NOT_FOUND;
  return SaveStore(doc);
}

LONG RegCloseKey(HKEY key) {
  if (RootName(key)) return ERROR_SUCCESS;  // the hives are never really opened
  OpenKey* open = reinterpret_cast<OpenKey*>(key);
  if (!key || OpenKeys().erase(open) == 0) return ERROR_INVALID_HANDLE;
  delete open;
  return ERROR_SUCCESS;
}

namespace {
// The names of a key's direct subkeys (unescaped, in the store's order,
// each once) and of its values.
std::vector<std::wstring> SubkeyNames(const ProfileDocument& doc, const std::wstring& path) {
  std::vector<std::wstring> names;
  const std::wstring prefix = kelhost::ToUpper(path) + L"\\";
  for (const std::wstring& section : doc.SectionNames()) {
    if (kelhost::ToUpper(section).compare(0, prefix.size(), prefix) != 0) continue;
    std::wstring rest = section.substr(prefix.size());
    rest = rest.substr(0, rest.find(L'\\'));
    if (rest.empty()) continue;
    const std::wstring name = Unescape(rest);
    bool seen = false;
    for (const std::wstring& n : names) seen = seen || kelhost::EqualNoCase(n, name);
    if (!seen) names.push_back(name);
  }
  return names;
}

LONG CopyName(const std::wstring& name, LPWSTR out, DWORD* length) {
  if (!out || !length) return ERROR_INVALID_PARAMETER;
  if (*length <= name.size()) {
    *length = static_cast<DWORD>(name.size() + 1);
    return ERROR_MORE_DATA;
  }
  std::wmemcpy(out, name.c_str(), name.size() + 1);
  *length = static_cast<DWORD>(name.size());
  return ERROR_SUCCESS;
}
}  // namespace

LONG RegDeleteKeyW(HKEY key, LPCWSTR subKey) {
  std::wstring parent;
  REGSAM access;
  if (!Resolve(key, parent, access)) return ERROR_INVALID_HANDLE;
  const std::wstring path = JoinKey(parent, subKey);
  if (path.find(L'\\') == std::wstring::npos) return ERROR_ACCESS_DENIED;  // a hive
  ProfileDocument doc = LoadStore();
  if (!KeyExists(doc, path)) return ERROR_FILE_NOT_FOUND;
  if (!SubkeyNames(doc, path).empty()) return ERROR_ACCESS_DENIED;
  std::wstring stored = path;
  for (const std::wstring& section : doc.SectionNames())
    if (kelhost::EqualNoCase(section, path)) stored = section;
  doc.DeleteSection(stored);
  return SaveStore(doc);
}

LONG RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, DWORD* nameLength, DWORD*, LPWSTR, DWORD*, FILETIME*) {
  std::wstring path;
  REGSAM access;
  if (!Resolve(key, path, access)) return ERROR_INVALID_HANDLE;
  const std::vector<std::wstring> names = SubkeyNames(LoadStore(), path);
  if (index >= names.size()) return ERROR_NO_MORE_ITEMS;
  return CopyName(names[index], name, nameLength);
}

LONG RegEnumValueW(HKEY key, DWORD index, LPWSTR name, DWORD* nameLength, DWORD*, DWORD* type, BYTE*, DWORD*) {
  std::wstring path;
  REGSAM access;
  if (!Resolve(key, path, access)) return ERROR_INVALID_HANDLE;
  const ProfileDocument doc = LoadStore();
  std::wstring section = path;
  for (const std::wstring& s : doc.SectionNames())
    if (kelhost::EqualNoCase(s, path)) section = s;
  const auto entries = doc.Entries(section);
  if (index >= entries.size()) return ERROR_NO_MORE_ITEMS;
  const std::wstring& stored = entries[index].first;
  if (type) {
    std::wstring data;
    DWORD t = REG_NONE;
    ReadValue(doc, section, stored == L"@" ? L"" : Unescape(stored).c_str(), t, data);
    *type = t;
  }
  return CopyName(stored == L"@" ? std::wstring() : Unescape(stored), name, nameLength);
}
