// OxData: values in an object's xdata and in its entity list.
#include "kelcad/oxdata/oxdata.h"
#include "kelcad/oxdata/value_nodes.h"
#include "kelcad/resbuf/rbchain.h"

namespace {

bool HasText(const wchar_t* text) { return text != nullptr && *text != L'\0'; }

// Registers the application in the object's own drawing, which need not
// be the working one. A name the table already holds is left alone.
void RegisterApplication(AcDbDatabase* db, const wchar_t* app) {
  if (db == nullptr) return;
  AcDbRegAppTable* table = nullptr;
  if (db->getRegAppTable(table, AcDb::kForRead) != Acad::eOk) return;
  const bool known = table->has(app);
  table->close();
  if (known || db->getRegAppTable(table, AcDb::kForWrite) != Acad::eOk) return;
  auto* record = new AcDbRegAppTableRecord();
  if (record->setName(app) == Acad::eOk && table->add(record) == Acad::eOk)
    record->close();
  else
    delete record;
  table->close();
}

// The chain (1001 app) that starts an application's xdata.
resbuf* ApplicationHead(const wchar_t* app) {
  resbuf* head = acutNewRb(1001);
  if (head != nullptr && acutNewString(app, head->resval.rstring) != RTNORM) {
    acutRelRb(head);
    return nullptr;
  }
  return head;
}

}  // namespace

resbuf* OxData::GetXResBuf(const wchar_t* app) {
  AcDbObject* object = nullptr;
  m_ErrorStatus = acdbOpenObject(object, m_ObjectId, AcDb::kForRead);
  if (m_ErrorStatus != Acad::eOk) return nullptr;
  resbuf* xdata = object->xData(HasText(app) ? app : nullptr);
  object->close();
  return xdata;
}

resbuf* OxData::GetResBuf() {
  ads_name name;
  m_ErrorStatus = acdbGetAdsName(name, m_ObjectId);
  return m_ErrorStatus == Acad::eOk ? acdbEntGet(name) : nullptr;
}

template <class T>
bool OxData::SetDataTemplate(const wchar_t* app, short code, const T& value, int index) {
  if (!KEL::ValueNodes::Fits(code, value) || index < 0) {
    m_ErrorStatus = Acad::eInvalidInput;
    return false;
  }
  if (!HasText(app)) {
    if (!IsOK(AcDb::kForRead) || !IsOK(AcDb::kForWrite)) return false;
    resbuf* list = GetResBuf();
    if (list == nullptr) return false;
    resbuf* node = KEL::ValueNodes::FindOrAppend(list, code, index);
    const bool done = node != nullptr && KEL::ValueNodes::Store(node, value) && UpdateDataTemplate(app, list);
    acutRelRb(list);
    return done;
  }
  // Xdata: one open for write serves the read of the chain and its update.
  AcDbObject* object = nullptr;
  m_ErrorStatus = acdbOpenObject(object, m_ObjectId, AcDb::kForWrite);
  if (m_ErrorStatus != Acad::eOk) return false;
  resbuf* chain = object->xData(app);
  if (code == 1001 || chain == nullptr) RegisterApplication(object->database(), app);
  if (chain == nullptr) chain = ApplicationHead(app);
  resbuf* node = chain != nullptr ? KEL::ValueNodes::FindOrAppend(chain, code, index) : nullptr;
  if (node == nullptr || !KEL::ValueNodes::Store(node, value))
    m_ErrorStatus = Acad::eOutOfMemory;
  else
    m_ErrorStatus = object->setXData(chain);
  object->close();
  acutRelRb(chain);
  return m_ErrorStatus == Acad::eOk;
}

template <class T>
int OxData::GetDataTemplate(const wchar_t* app, short code, T& value, int index) {
  if (!KEL::ValueNodes::Fits(code, value)) {
    m_ErrorStatus = Acad::eInvalidInput;
    return -1;
  }
  resbuf* chain = nullptr;
  if (HasText(app)) {
    AcDbObject* object = nullptr;
    m_ErrorStatus = acdbOpenObject(object, m_ObjectId, AcDb::kForRead);
    if (m_ErrorStatus != Acad::eOk) return -1;
    chain = object->xData(app);
    object->close();
  } else {
    if (!IsOK(AcDb::kForRead)) return -1;
    chain = GetResBuf();
  }
  const int found = KEL::ValueNodes::ReadAt(chain, code, index, value);
  acutRelRb(chain);
  return found;
}

bool OxData::UpdateDataTemplate(const wchar_t* app, resbuf* chain) {
  if (HasText(app)) {
    AcDbObject* object = nullptr;
    m_ErrorStatus = acdbOpenObject(object, m_ObjectId, AcDb::kForWrite);
    if (m_ErrorStatus != Acad::eOk) return false;
    m_ErrorStatus = object->setXData(chain);
    object->close();
    return m_ErrorStatus == Acad::eOk;
  }
  ads_name name;
  m_ErrorStatus = acdbGetAdsName(name, m_ObjectId);
  if (m_ErrorStatus != Acad::eOk) return false;
  const int modified = acdbEntMod(chain);
  if (modified == RTNORM) acdbEntUpd(name);
  return modified == RTNORM;
}

bool OxData::SetxData(const wchar_t* app, short code, const wchar_t* value, int index) {
  return SetDataTemplate(app, code, value, index);
}
bool OxData::SetxData(const wchar_t* app, short code, int value, int index) {
  return SetDataTemplate(app, code, value, index);
}
bool OxData::SetxData(const wchar_t* app, short code, long value, int index) {
  return SetDataTemplate(app, code, value, index);
}
bool OxData::SetxData(const wchar_t* app, short code, double value, int index) {
  return SetDataTemplate(app, code, value, index);
}
bool OxData::SetxData(const wchar_t* app, short code, const double* point, int index) {
  return SetDataTemplate(app, code, point, index);
}
bool OxData::SetxData(const wchar_t* app, short code, const std::int64_t* name, int index) {
  return SetDataTemplate(app, code, name, index);
}

int OxData::GetxData(const wchar_t* app, short code, CString& value, int index) {
  return GetDataTemplate(app, code, value, index);
}
int OxData::GetxData(const wchar_t* app, short code, int& value, int index) {
  return GetDataTemplate(app, code, value, index);
}
int OxData::GetxData(const wchar_t* app, short code, long& value, int index) {
  return GetDataTemplate(app, code, value, index);
}
int OxData::GetxData(const wchar_t* app, short code, double& value, int index) {
  return GetDataTemplate(app, code, value, index);
}
int OxData::GetxData(const wchar_t* app, short code, double (&point)[3], int index) {
  return GetDataTemplate(app, code, point, index);
}
int OxData::GetxData(const wchar_t* app, short code, std::int64_t (&name)[2], int index) {
  return GetDataTemplate(app, code, name, index);
}

bool OxData::DeleteXData(const wchar_t* app, short code, int index) {
  if (index < -1) return false;
  if (!HasText(app)) return true;
  AcDbObject* object = nullptr;
  m_ErrorStatus = acdbOpenObject(object, m_ObjectId, AcDb::kForWrite);
  if (m_ErrorStatus != Acad::eOk) return false;
  resbuf* chain = object->xData(app);
  if (chain == nullptr) {
    object->close();
    return true;
  }
  // The leading 1001 group counts among its code's groups but has no
  // predecessor and always stays.
  int count = chain->restype == code ? 1 : 0;
  for (resbuf* prev = chain; prev->rbnext != nullptr;) {
    resbuf* rb = prev->rbnext;
    if (rb->restype != code) {
      prev = rb;
      continue;
    }
    const bool remove = index == -1 || count == index;
    ++count;
    if (!remove) {
      prev = rb;
      continue;
    }
    prev->rbnext = rb->rbnext;
    rb->rbnext = nullptr;
    acutRelRb(rb);
  }
  m_ErrorStatus = object->setXData(chain);
  object->close();
  acutRelRb(chain);
  return m_ErrorStatus == Acad::eOk;
}
