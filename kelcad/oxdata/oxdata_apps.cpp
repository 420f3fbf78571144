// OxData: the applications with xdata on an object, listed, removed by
// pattern, and the object's whole data.
#include "kelcad/oxdata/oxdata.h"
#include "kelcad/resbuf/rbchain.h"

bool OxData::DeleteXData(const wchar_t* pattern, CStringArray& removed) {
  CString upperPattern = pattern != nullptr && *pattern != L'\0' ? pattern : L"*";
  upperPattern.MakeUpper();
  AcDbObject* object = nullptr;
  m_ErrorStatus = acdbOpenObject(object, m_ObjectId, AcDb::kForWrite);
  if (m_ErrorStatus != Acad::eOk) return false;
  resbuf* xdata = object->xData();
  // A chain of bare (1001 name) groups removes those applications' data.
  resbuf* names = nullptr;
  resbuf** tail = &names;
  for (const resbuf* rb = xdata; rb != nullptr; rb = rb->rbnext) {
    if (rb->restype != 1001 || rb->resval.rstring == nullptr) continue;
    CString upperName = rb->resval.rstring;
    upperName.MakeUpper();
    if (acutWcMatch(upperName, upperPattern) != RTNORM) continue;
    resbuf* name = acutNewRb(1001);
    if (name == nullptr || acutNewString(rb->resval.rstring, name->resval.rstring) != RTNORM) {
      acutRelRb(name);
      continue;
    }
    removed.Add(rb->resval.rstring);
    *tail = name;
    tail = &name->rbnext;
  }
  if (names != nullptr) m_ErrorStatus = object->setXData(names);
  object->close();
  acutRelRb(names);
  acutRelRb(xdata);
  return true;
}

bool OxData::DeleteXData() {
  CStringArray removed;
  return DeleteXData(L"*", removed);
}

int OxData::GetAllAppName(CStringArray& names) {
  names.RemoveAll();
  AcDbObject* object = nullptr;
  m_ErrorStatus = acdbOpenObject(object, m_ObjectId, AcDb::kForRead);
  if (m_ErrorStatus != Acad::eOk) return -1;
  resbuf* xdata = object->xData();
  object->close();
  for (const resbuf* rb = xdata; rb != nullptr; rb = rb->rbnext)
    if (rb->restype == 1001) names.Add(rb->resval.rstring != nullptr ? rb->resval.rstring : L"");
  acutRelRb(xdata);
  return static_cast<int>(names.GetSize());
}

resbuf* OxData::GetAllResBuf() {
  resbuf* all = GetResBuf();
  if (all == nullptr) return nullptr;
  // xData() gives every application's groups in the order of their names.
  KEL::AppendRb(all, GetXResBuf(L""));
  return all;
}
