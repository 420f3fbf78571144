// The MFC subset the module and the base library use: CString (wide),
// CStringArray, CArray, message boxes and the extension-module frame.
#pragma once

#include <cstdarg>
#include <string>
#include <vector>

#include "win32.h"

class CString {
 public:
  CString() = default;
  CString(const CString&) = default;
  CString(CString&&) noexcept = default;
  CString(const wchar_t* s);
  CString(const wchar_t* s, int length);
  CString(const char* utf8);  // narrow text is UTF-8 on this host
  CString(wchar_t ch, int repeat = 1);
  CString(const std::wstring& s) : m(s) {}
  CString& operator=(const CString&) = default;
  CString& operator=(CString&&) noexcept = default;
  CString& operator=(const wchar_t* s);
  CString& operator=(wchar_t ch);

  int GetLength() const { return static_cast<int>(m.size()); }
  bool IsEmpty() const { return m.empty(); }
  void Empty() { m.clear(); }
  wchar_t GetAt(int i) const { return m[static_cast<size_t>(i)]; }
  void SetAt(int i, wchar_t ch) { m[static_cast<size_t>(i)] = ch; }
  wchar_t operator[](int i) const { return GetAt(i); }
  operator const wchar_t*() const { return m.c_str(); }
  const wchar_t* GetString() const { return m.c_str(); }
  const std::wstring& str() const { return m; }

  // A writable buffer of at least minLength characters (plus terminator);
  // ReleaseBuffer(-1) takes the length up to the first null. Until
  // ReleaseBuffer, GetLength() reports the buffer's length.
  wchar_t* GetBuffer(int minLength = 0);
  wchar_t* GetBufferSetLength(int length);
  void ReleaseBuffer(int newLength = -1);

  CString Left(int count) const;
  CString Right(int count) const;
  CString Mid(int first) const;
  CString Mid(int first, int count) const;
  CString SpanIncluding(const wchar_t* charSet) const;
  CString SpanExcluding(const wchar_t* charSet) const;
  CString Tokenize(const wchar_t* tokens, int& start) const;

  int Find(wchar_t ch, int start = 0) const;
  int Find(const wchar_t* sub, int start = 0) const;
  int ReverseFind(wchar_t ch) const;
  int FindOneOf(const wchar_t* charSet) const;

  CString& MakeUpper();
  CString& MakeLower();
  CString& MakeReverse();
  CString& Trim();
  CString& Trim(wchar_t ch);
  CString& Trim(const wchar_t* chars);
  CString& TrimLeft();
  CString& TrimLeft(wchar_t ch);
  CString& TrimLeft(const wchar_t* chars);
  CString& TrimRight();
  CString& TrimRight(wchar_t ch);
  CString& TrimRight(const wchar_t* chars);
  int Replace(wchar_t oldCh, wchar_t newCh);
  int Replace(const wchar_t* oldStr, const wchar_t* newStr);
  int Remove(wchar_t ch);
  int Insert(int index, wchar_t ch);
  int Insert(int index, const wchar_t* s);
  int Delete(int index, int count = 1);

  int Compare(const wchar_t* s) const;
  int CompareNoCase(const wchar_t* s) const;

  // Formats with the platform's wide convention (see wformat.h).
  void Format(const wchar_t* format, ...);
  void FormatV(const wchar_t* format, va_list args);
  void AppendFormat(const wchar_t* format, ...);
  void Append(const wchar_t* s) { if (s) m += s; }
  void AppendChar(wchar_t ch) { m += ch; }

  CString& operator+=(const CString& s) { m += s.m; return *this; }
  CString& operator+=(const wchar_t* s) { if (s) m += s; return *this; }
  CString& operator+=(wchar_t ch) { m += ch; return *this; }

  friend CString operator+(const CString& a, const CString& b) { return CString(a.m + b.m); }
  friend CString operator+(const CString& a, const wchar_t* b) { CString r(a); r += b; return r; }
  friend CString operator+(const wchar_t* a, const CString& b) { CString r(a); r += b; return r; }
  friend CString operator+(const CString& a, wchar_t ch) { CString r(a); r += ch; return r; }
  friend CString operator+(wchar_t ch, const CString& b) { CString r(ch); r += b; return r; }

  friend bool operator==(const CString& a, const CString& b) { return a.m == b.m; }
  friend bool operator==(const CString& a, const wchar_t* b) { return a.Compare(b) == 0; }
  friend bool operator==(const wchar_t* a, const CString& b) { return b.Compare(a) == 0; }
  friend bool operator!=(const CString& a, const CString& b) { return a.m != b.m; }
  friend bool operator!=(const CString& a, const wchar_t* b) { return a.Compare(b) != 0; }
  friend bool operator!=(const wchar_t* a, const CString& b) { return b.Compare(a) != 0; }
  friend bool operator<(const CString& a, const CString& b) { return a.m < b.m; }

 private:
  std::wstring m;
};
typedef CString CStringW;

// Indexed array, the platform's CArray<TYPE, ARG_TYPE>.
template <class TYPE, class ARG_TYPE = const TYPE&>
class CArray {
 public:
  int GetSize() const { return static_cast<int>(m.size()); }
  int GetCount() const { return GetSize(); }
  int GetUpperBound() const { return GetSize() - 1; }
  bool IsEmpty() const { return m.empty(); }
  void SetSize(int n, int growBy = -1) { m.resize(static_cast<size_t>(n < 0 ? 0 : n)); }
  void RemoveAll() { m.clear(); }
  TYPE GetAt(int i) const { return m[static_cast<size_t>(i)]; }
  TYPE& ElementAt(int i) { return m[static_cast<size_t>(i)]; }
  void SetAt(int i, ARG_TYPE v) { m[static_cast<size_t>(i)] = v; }
  void SetAtGrow(int i, ARG_TYPE v) {
    if (i >= GetSize()) SetSize(i + 1);
    m[static_cast<size_t>(i)] = v;
  }
  TYPE& operator[](int i) { return m[static_cast<size_t>(i)]; }
  const TYPE& operator[](int i) const { return m[static_cast<size_t>(i)]; }
  TYPE* GetData() { return m.data(); }
  const TYPE* GetData() const { return m.data(); }
  int Add(ARG_TYPE v) { m.push_back(v); return GetSize() - 1; }
  int Append(const CArray& other) {
    int first = GetSize();
    m.insert(m.end(), other.m.begin(), other.m.end());
    return first;
  }
  void Copy(const CArray& other) { m = other.m; }
  void InsertAt(int i, ARG_TYPE v, int count = 1) { m.insert(m.begin() + i, static_cast<size_t>(count), v); }
  void RemoveAt(int i, int count = 1) { m.erase(m.begin() + i, m.begin() + i + count); }

 private:
  std::vector<TYPE> m;
};

class CStringArray : public CArray<CString, const CString&> {
 public:
  int Add(const wchar_t* s) { return CArray<CString, const CString&>::Add(CString(s)); }
  int Add(const CString& s) { return CArray<CString, const CString&>::Add(s); }
};

// Message boxes are headless: "[caption] text" goes to standard error as
// UTF-8 (and to the host's record of shown boxes, kelhost/ui.h) and the box
// answers with its default button: OK, or Yes for Yes/No boxes. The caption
// of AfxMessageBox is the program's name, "AutoCAD".
int AfxMessageBox(const wchar_t* text, UINT type = MB_OK, UINT helpId = 0);

// Extension-DLL frame. The host's loader calls the module's DllMain.
struct AFX_EXTENSION_MODULE {
  bool bInitialized = false;
  HMODULE hModule = nullptr;
  HMODULE hResource = nullptr;
};
BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HMODULE module);
void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL all = FALSE);
class CDynLinkLibrary {
 public:
  // Created with new by a module's DllMain; AfxTermExtensionModule deletes it.
  explicit CDynLinkLibrary(AFX_EXTENSION_MODULE& state, BOOL system = FALSE);
  virtual ~CDynLinkLibrary();
  CDynLinkLibrary(const CDynLinkLibrary&) = delete;
  CDynLinkLibrary& operator=(const CDynLinkLibrary&) = delete;
  AFX_EXTENSION_MODULE* moduleState() const { return mState; }
  static int liveCount();  // libraries created and not yet destroyed

 private:
  AFX_EXTENSION_MODULE* mState;
};
void AfxEnableControlContainer();
HINSTANCE AfxGetResourceHandle();
void AfxSetResourceHandle(HINSTANCE h);
// The AutoCAD UI library's per-module initialisation.
void InitAcUiDLL();

// Windows are headless stand-ins: a CWnd is a live window from its
// construction to its destruction, its handle (m_hWnd) names it for the
// Win32 calls of win32.h, and it keeps whether it is shown and enabled.
// ShowWindow, EnableWindow, BringWindowToTop and SetForegroundWindow are
// recorded for tests (kelhost/ui.h). A new window is hidden and enabled;
// the program's own windows (adsw_acadMainWnd, adsw_acadDocWnd,
// acedGetAcadFrame) are shown and take typed characters (WM_CHAR) into the
// command line.
class CWnd {
 public:
  CWnd();
  virtual ~CWnd();
  CWnd(const CWnd&) = delete;
  CWnd& operator=(const CWnd&) = delete;

  // The window of a handle; null for a handle that names no live window.
  static CWnd* FromHandle(HWND hWnd);
  HWND GetSafeHwnd() const { return m_hWnd; }

  // Nonzero when the window was visible before the call.
  BOOL ShowWindow(int nCmdShow);
  // Nonzero when the window was disabled before the call.
  BOOL EnableWindow(BOOL bEnable = TRUE);
  void BringWindowToTop();
  BOOL SetForegroundWindow();
  BOOL IsWindowVisible() const { return mVisible ? TRUE : FALSE; }
  BOOL IsWindowEnabled() const { return mEnabled ? TRUE : FALSE; }

  // Both deliver the message to WindowProc at once.
  LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
  BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

  int MessageBox(const wchar_t* text, const wchar_t* caption = nullptr, UINT type = MB_OK);

  HWND m_hWnd;

 protected:
  // A window that starts shown (the program's own).
  explicit CWnd(bool shown);
  // Messages the window does not handle answer 0.
  virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);

 private:
  bool mVisible;
  bool mEnabled = true;
};

class CFrameWnd : public CWnd {
 public:
  CFrameWnd() = default;

 protected:
  explicit CFrameWnd(bool shown) : CWnd(shown) {}
};

class CMDIFrameWnd : public CFrameWnd {
 public:
  CMDIFrameWnd() = default;

 protected:
  explicit CMDIFrameWnd(bool shown) : CFrameWnd(shown) {}
};

// The program's main window (the one acedGetAcadFrame gives).
CWnd* AfxGetMainWnd();
