// Result-buffer lists over the base library's section and key access.
#include "kelcad/api/inifile.h"

#include "kelbase/kelbase.h"
#include "kelcad/entry/gc_fields.h"

namespace KEL {

namespace {

// The argument list as the functions read it: a given file name stands in
// a node of its own in front of the caller's list, and leaves with it.
class WorkingList {
 public:
  WorkingList(resbuf* args, const wchar_t* file) : mHead(args) {
    if (file == nullptr) return;
    mFront = acutNewRb(RTSTR);
    if (mFront == nullptr) {
      mHead = nullptr;  // out of memory: an empty list, refused like any other
      return;
    }
    acutNewString(file, mFront->resval.rstring);
    mFront->rbnext = args;
    mHead = mFront;
  }
  ~WorkingList() {
    if (mFront == nullptr) return;
    mFront->rbnext = nullptr;  // the caller's nodes stay the caller's
    acutRelRb(mFront);
  }
  WorkingList(const WorkingList&) = delete;
  WorkingList& operator=(const WorkingList&) = delete;

  const resbuf* head() const { return mHead; }

 private:
  resbuf* mHead;
  resbuf* mFront = nullptr;
};

bool IsText(const resbuf* rb) { return rb != nullptr && rb->restype == RTSTR && rb->resval.rstring != nullptr; }
bool IsNonEmptyText(const resbuf* rb) { return IsText(rb) && rb->resval.rstring[0] != L'\0'; }

// The section as the file knows it: upper-cased, then replaced by its full
// name when the project field map holds it.
CString FileSection(const wchar_t* section) {
  CString name(section);
  name.MakeUpper();
  CString fullName;
  if (TranslateGCField(name, fullName)) return fullName;
  return name;
}

void PrintDebugPairs(const wchar_t* what, const wchar_t* file, const CString& section, const CStringArray& keys,
                     const CStringArray& values) {
  if (!IsGCFieldDebug()) return;
  acutPrintf(L"\n %s [%s] %s", what, section.GetString(), file);
  for (int i = 0; i < keys.GetSize(); ++i)
    acutPrintf(L"\n   %s=%s", keys[i].GetString(), i < values.GetSize() ? values[i].GetString() : L"");
}

void Say(const wchar_t* message) { acutPrintf(L"%s", message); }

// A value node as the text written to the file; false for a kind that is
// not written (RTLONG included: only 16-bit integers are).
bool ValueText(const resbuf* rb, CString& text) {
  switch (rb->restype) {
    case RTREAL: text.Format(L"%.4f", rb->resval.rreal); return true;
    case RTSHORT: text.Format(L"%d", static_cast<int>(rb->resval.rint)); return true;
    case RTSTR: text = rb->resval.rstring != nullptr ? rb->resval.rstring : L""; return true;
    default: return false;
  }
}

// File and section of a list to change: the messages of a write on a
// wrong type.
bool CheckFileAndSection(const resbuf* list) {
  if (!IsNonEmptyText(list)) {
    Say(L"第一个参数类型错误！");
    return false;
  }
  if (!IsNonEmptyText(list->rbnext)) {
    Say(L"第二个参数类型错误！");
    return false;
  }
  return true;
}

}  // namespace

bool ReadIni(resbuf* args, CStringArray& keys, CStringArray& values, const wchar_t* file) {
  const WorkingList list(args, file);
  keys.RemoveAll();
  values.RemoveAll();
  const resbuf* fileNode = list.head();
  if (!IsText(fileNode) || !IsExist(fileNode->resval.rstring)) return false;
  const resbuf* sectionNode = fileNode->rbnext;
  if (!IsText(sectionNode)) return false;
  for (const resbuf* rb = sectionNode->rbnext; rb != nullptr; rb = rb->rbnext) {
    if (IsText(rb)) keys.Add(rb->resval.rstring);
  }
  const CString section = FileSection(sectionNode->resval.rstring);
  const wchar_t* path = fileNode->resval.rstring;
  if (sectionNode->rbnext == nullptr) {
    ReadIni(section, keys, values, path);  // an absent section simply reads nothing
  } else if (keys.IsEmpty() || !ReadIni(section, keys, values, path)) {
    return false;
  }
  PrintDebugPairs(L"ReadIni", path, section, keys, values);
  return true;
}

bool WriteIni(resbuf* args, const wchar_t* file) {
  const WorkingList list(args, file);
  if (!CheckFileAndSection(list.head())) return false;
  CStringArray keys, values;
  int count = 0;
  for (const resbuf* rb = list.head()->rbnext->rbnext; rb != nullptr; rb = rb->rbnext, ++count) {
    const bool isKey = count % 2 == 0;
    CString text;
    if (isKey ? !IsNonEmptyText(rb) : !ValueText(rb, text)) {
      Say(L"参数类型错误！");
      return false;
    }
    if (isKey)
      keys.Add(rb->resval.rstring);
    else
      values.Add(text);
  }
  if (count % 2 != 0) {
    Say(L"参数个数不配对！");
    return false;
  }
  if (count == 0) {
    Say(L"没有要写的键和值！");
    return false;
  }
  const wchar_t* path = list.head()->resval.rstring;
  const CString section = FileSection(list.head()->rbnext->resval.rstring);
  if (!WriteIni(section, keys, values, path)) {
    acutPrintf(L"写INI文件失败：%s", path);
    return false;
  }
  PrintDebugPairs(L"WriteIni", path, section, keys, values);
  return true;
}

bool DelIniItem(resbuf* args, const wchar_t* file) {
  const WorkingList list(args, file);
  if (!CheckFileAndSection(list.head())) return false;
  CStringArray keys;
  for (const resbuf* rb = list.head()->rbnext->rbnext; rb != nullptr; rb = rb->rbnext) {
    if (!IsNonEmptyText(rb)) {
      Say(L"参数类型错误！");
      return false;
    }
    keys.Add(rb->resval.rstring);
  }
  const wchar_t* path = list.head()->resval.rstring;
  if (!IsExist(path)) {
    acutPrintf(L"INI文件不存在：%s", path);
    return false;
  }
  const CString section = FileSection(list.head()->rbnext->resval.rstring);
  if (!DeleteIni(section, keys, path)) {
    acutPrintf(L"写INI文件失败：%s", path);
    return false;
  }
  if (IsGCFieldDebug()) {
    acutPrintf(L"\n DelIniItem [%s] %s", section.GetString(), path);
    for (int i = 0; i < keys.GetSize(); ++i) acutPrintf(L"\n   %s", keys[i].GetString());
  }
  return true;
}

}  // namespace KEL
