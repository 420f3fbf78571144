// The Windows subset the module and the base library call: basic types,
// environment, private-profile (INI) files, file attributes and directory
// operations, the registry, debugger output and message boxes, and a few
// C runtime calls. Every path argument may be in the family's Windows form
// (backslashes, any case); the host maps it to the native file system.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cwchar>

typedef int BOOL;
typedef unsigned char BYTE;
typedef std::uint16_t WORD;
typedef std::uint32_t DWORD;
typedef std::int32_t LONG;
typedef std::uint32_t UINT;
typedef wchar_t WCHAR;
typedef wchar_t TCHAR;
typedef const wchar_t* LPCWSTR;
typedef wchar_t* LPWSTR;
typedef const wchar_t* LPCTSTR;
typedef wchar_t* LPTSTR;
typedef const char* LPCSTR;
typedef void* HANDLE;
typedef void* HWND;
typedef void* HMODULE;
typedef void* HINSTANCE;
typedef struct HKEY__* HKEY;
typedef DWORD REGSAM;
// A colour as Windows gives it: red in the low byte, then green, then blue.
typedef DWORD COLORREF;

#ifndef TRUE
#define TRUE 1
#define FALSE 0
#endif
#define MAX_PATH 260
#define RGB(r, g, b) \
  ((COLORREF)(((BYTE)(r)) | ((WORD)((BYTE)(g)) << 8) | (((DWORD)(BYTE)(b)) << 16)))
#define GetRValue(rgb) ((BYTE)(rgb))
#define GetGValue(rgb) ((BYTE)(((WORD)(rgb)) >> 8))
#define GetBValue(rgb) ((BYTE)((rgb) >> 16))
#define WINAPI
#define APIENTRY

#define DLL_PROCESS_DETACH 0
#define DLL_PROCESS_ATTACH 1
#define DLL_THREAD_ATTACH 2
#define DLL_THREAD_DETACH 3

// Environment (the process environment, UTF-8 on this host).
// Returns the length without the terminator, or the size needed including
// it when the buffer is too small, or 0 when the variable is absent.
DWORD GetEnvironmentVariableW(LPCWSTR name, LPWSTR buffer, DWORD size);
// A null value deletes the variable.
BOOL SetEnvironmentVariableW(LPCWSTR name, LPCWSTR value);

// Private-profile files with Windows semantics: sections and keys compared
// without regard to case, values trimmed, a missing file reads as empty.
// Files with a UTF-8 or UTF-16 byte-order mark are read; writes go out as
// UTF-8 through a temporary file and a rename.
DWORD GetPrivateProfileStringW(LPCWSTR section, LPCWSTR key, LPCWSTR defaultValue,
                               LPWSTR buffer, DWORD size, LPCWSTR fileName);
UINT GetPrivateProfileIntW(LPCWSTR section, LPCWSTR key, int defaultValue, LPCWSTR fileName);
// key=value strings, each null-terminated, the list ending in an extra null
// (values as in the file: blanks around '=' removed, quotes kept).
DWORD GetPrivateProfileSectionW(LPCWSTR section, LPWSTR buffer, DWORD size, LPCWSTR fileName);
DWORD GetPrivateProfileSectionNamesW(LPWSTR buffer, DWORD size, LPCWSTR fileName);
// A null key deletes the section; a null value deletes the key.
BOOL WritePrivateProfileStringW(LPCWSTR section, LPCWSTR key, LPCWSTR value, LPCWSTR fileName);

// Files and directories.
#define INVALID_FILE_ATTRIBUTES ((DWORD)-1)
#define FILE_ATTRIBUTE_READONLY 0x00000001
#define FILE_ATTRIBUTE_HIDDEN 0x00000002
#define FILE_ATTRIBUTE_DIRECTORY 0x00000010
#define FILE_ATTRIBUTE_ARCHIVE 0x00000020
#define FILE_ATTRIBUTE_NORMAL 0x00000080
DWORD GetFileAttributesW(LPCWSTR fileName);
BOOL CreateDirectoryW(LPCWSTR path, void* securityAttributes);
BOOL RemoveDirectoryW(LPCWSTR path);
BOOL DeleteFileW(LPCWSTR fileName);
BOOL MoveFileW(LPCWSTR from, LPCWSTR to);
BOOL CopyFileW(LPCWSTR from, LPCWSTR to, BOOL failIfExists);

// Directory searches. The pattern is a directory path and a last component
// that may hold '*' and '?', matched as the platform matches long names:
// without regard to case, "*.*" matching every name, a '?' matching one
// character other than '.' (or nothing before a '.' or at the end), a
// trailing '.' meaning "no extension". Entries come in the order the
// directory yields them, "." and ".." included when they match. A symbolic
// link is reported with FILE_ATTRIBUTE_REPARSE_POINT (and the directory
// bit when it leads to a directory). Failures: ERROR_FILE_NOT_FOUND when
// nothing matches, ERROR_PATH_NOT_FOUND when the directory is missing,
// ERROR_INVALID_NAME for a last component of MAX_PATH characters or more;
// FindNextFileW ends with ERROR_NO_MORE_FILES.
#define FILE_ATTRIBUTE_REPARSE_POINT 0x00000400
struct FILETIME {
  DWORD dwLowDateTime;   // 100-nanosecond intervals since 1 January 1601 (UTC)
  DWORD dwHighDateTime;
};
struct WIN32_FIND_DATAW {
  DWORD dwFileAttributes;
  FILETIME ftCreationTime;
  FILETIME ftLastAccessTime;
  FILETIME ftLastWriteTime;
  DWORD nFileSizeHigh;
  DWORD nFileSizeLow;
  DWORD dwReserved0;
  DWORD dwReserved1;
  WCHAR cFileName[MAX_PATH];
  WCHAR cAlternateFileName[14];  // no short names on this host: always empty
};
typedef WIN32_FIND_DATAW* LPWIN32_FIND_DATAW;
#define INVALID_HANDLE_VALUE ((HANDLE)(std::intptr_t)-1)
HANDLE FindFirstFileW(LPCWSTR pattern, LPWIN32_FIND_DATAW data);
BOOL FindNextFileW(HANDLE search, LPWIN32_FIND_DATAW data);
BOOL FindClose(HANDLE search);
// The calling thread's last error, set by the calls of this header.
DWORD GetLastError();
void SetLastError(DWORD error);
#define ERROR_SUCCESS 0L
#define ERROR_FILE_NOT_FOUND 2L
#define ERROR_PATH_NOT_FOUND 3L
#define ERROR_ACCESS_DENIED 5L
#define ERROR_NO_MORE_ITEMS 259L
#define ERROR_INVALID_HANDLE 6L
#define ERROR_NOT_ENOUGH_MEMORY 8L
#define ERROR_NO_MORE_FILES 18L
#define ERROR_WRITE_FAULT 29L
#define ERROR_READ_FAULT 30L
#define ERROR_FILE_EXISTS 80L
#define ERROR_INVALID_PARAMETER 87L
#define ERROR_INSUFFICIENT_BUFFER 122L
#define ERROR_INVALID_NAME 123L
#define ERROR_DIR_NOT_EMPTY 145L
#define ERROR_ALREADY_EXISTS 183L
#define ERROR_ENVVAR_NOT_FOUND 203L
#define ERROR_MORE_DATA 234L
#define ERROR_DIRECTORY 267L

// The registry: a persistent file-backed store on this host (the file is
// KEL_REGISTRY_FILE, else $XDG_CONFIG_HOME/kelcad/registry.ini, else
// ~/.config/kelcad/registry.ini). REG_SZ, REG_EXPAND_SZ and REG_DWORD
// values; string sizes are in bytes of this host's 4-byte wchar_t.
#define HKEY_CLASSES_ROOT ((HKEY)(std::uintptr_t)0x80000000u)
#define HKEY_CURRENT_USER ((HKEY)(std::uintptr_t)0x80000001u)
#define HKEY_LOCAL_MACHINE ((HKEY)(std::uintptr_t)0x80000002u)
#define KEY_QUERY_VALUE 0x0001
#define KEY_SET_VALUE 0x0002
#define KEY_CREATE_SUB_KEY 0x0004
#define KEY_READ 0x20019
#define KEY_WRITE 0x20006
#define KEY_ALL_ACCESS 0xF003F
#define REG_NONE 0
#define REG_SZ 1
#define REG_EXPAND_SZ 2
#define REG_DWORD 4
#define REG_OPTION_NON_VOLATILE 0
#define REG_CREATED_NEW_KEY 1
#define REG_OPENED_EXISTING_KEY 2
LONG RegOpenKeyExW(HKEY key, LPCWSTR subKey, DWORD options, REGSAM desired, HKEY* result);
LONG RegCreateKeyExW(HKEY key, LPCWSTR subKey, DWORD reserved, LPWSTR cls, DWORD options,
                     REGSAM desired, void* security, HKEY* result, DWORD* disposition);
// A null or empty name is the key's default (unnamed) value.
LONG RegSetValueExW(HKEY key, LPCWSTR valueName, DWORD reserved, DWORD type, const BYTE* data, DWORD size);
LONG RegQueryValueExW(HKEY key, LPCWSTR valueName, DWORD* reserved, DWORD* type, BYTE* data, DWORD* size);
LONG RegDeleteValueW(HKEY key, LPCWSTR valueName);
LONG RegCloseKey(HKEY key);
// Deletes a key that has no subkeys (ERROR_ACCESS_DENIED when it has).
LONG RegDeleteKeyW(HKEY key, LPCWSTR subKey);
// The index-th subkey's name, and the index-th value's name (lengths in
// characters without the terminator); ERROR_NO_MORE_ITEMS past the last.
LONG RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, DWORD* nameLength, DWORD* reserved, LPWSTR cls,
                   DWORD* classLength, FILETIME* lastWrite);
LONG RegEnumValueW(HKEY key, DWORD index, LPWSTR name, DWORD* nameLength, DWORD* reserved, DWORD* type,
                   BYTE* data, DWORD* dataSize);

// Debugger output: standard error, or the file named by KEL_DEBUG_LOG.
void OutputDebugStringW(LPCWSTR text);

// Message boxes (headless; see AfxMessageBox).
#define MB_OK 0x0u
#define MB_OKCANCEL 0x1u
#define MB_ABORTRETRYIGNORE 0x2u
#define MB_YESNOCANCEL 0x3u
#define MB_YESNO 0x4u
#define MB_RETRYCANCEL 0x5u
#define MB_CANCELTRYCONTINUE 0x6u
#define MB_ICONERROR 0x10u
#define MB_ICONQUESTION 0x20u
#define MB_ICONWARNING 0x30u
#define MB_ICONINFORMATION 0x40u
#define IDOK 1
#define IDCANCEL 2
#define IDABORT 3
#define IDRETRY 4
#define IDIGNORE 5
#define IDYES 6
#define IDNO 7
int MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type);
// The system's sounds. The headless host rings the terminal's bell when
// standard error is one, and counts the sounds (kelhost/ui.h).
BOOL MessageBeep(UINT type);

DWORD GetTickCount();
void Sleep(DWORD milliseconds);

// Windows and their messages. The headless host has no screen: a window is
// a CWnd stand-in (afx.h) that keeps whether it is shown and enabled, and
// the program's own windows take typed characters into the command line.
// A handle that names no live window is refused (FALSE, or 0 from
// SendMessageW).
typedef std::uintptr_t WPARAM;
typedef std::intptr_t LPARAM;
typedef std::intptr_t LRESULT;
#define WM_KEYDOWN 0x0100
#define WM_KEYUP 0x0101
#define WM_CHAR 0x0102
#define SW_HIDE 0
#define SW_SHOWNORMAL 1
#define SW_NORMAL 1
#define SW_SHOWMINIMIZED 2
#define SW_SHOWMAXIMIZED 3
#define SW_MAXIMIZE 3
#define SW_SHOWNOACTIVATE 4
#define SW_SHOW 5
#define SW_MINIMIZE 6
#define SW_SHOWMINNOACTIVE 7
#define SW_SHOWNA 8
#define SW_RESTORE 9
#define SW_SHOWDEFAULT 10
// Delivers the message to the window at once and returns its answer.
LRESULT SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
// Headless: the message is delivered at once as well.
BOOL PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
BOOL IsWindow(HWND window);
// Nonzero when the window was visible before the call.
BOOL ShowWindow(HWND window, int showCommand);
// Nonzero when the window was disabled before the call.
BOOL EnableWindow(HWND window, BOOL enable);
BOOL BringWindowToTop(HWND window);
BOOL SetForegroundWindow(HWND window);
BOOL IsWindowVisible(HWND window);
BOOL IsWindowEnabled(HWND window);

// C runtime calls of the Windows family.
inline double _wtof(const wchar_t* s) { return s ? std::wcstod(s, nullptr) : 0.0; }
inline int _wtoi(const wchar_t* s) { return s ? static_cast<int>(std::wcstol(s, nullptr, 10)) : 0; }
inline long _wtol(const wchar_t* s) { return s ? std::wcstol(s, nullptr, 10) : 0; }
int _wcsicmp(const wchar_t* a, const wchar_t* b);
int _wcsnicmp(const wchar_t* a, const wchar_t* b, size_t n);
wchar_t* _wcsupr(wchar_t* s);
wchar_t* _wcslwr(wchar_t* s);
// Opens a file by a family path; the mode may carry ",ccs=UTF-8" and the
// like, which this host accepts and ignores (files are UTF-8).
FILE* _wfopen(const wchar_t* fileName, const wchar_t* mode);
#ifndef _countof
#define _countof(a) (sizeof(a) / sizeof((a)[0]))
#endif
