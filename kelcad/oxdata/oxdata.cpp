// OxData: attaching an object and the statuses of the last operations.
#include "kelcad/oxdata/oxdata.h"

AcDbDatabase* OxData::m_pCurDWG = nullptr;
Acad::ErrorStatus OxData::m_DWGErrorStatus = Acad::eOk;

OxData::OxData() = default;

OxData::OxData(AcDbObjectId id) { Attach(id); }

OxData::OxData(ads_name ent) { Attach(ent); }

bool OxData::Attach(AcDbObjectId id) {
  m_ObjectId = AcDbObjectId::kNull;
  AcDbObject* object = nullptr;
  m_ErrorStatus = acdbOpenObject(object, id, AcDb::kForRead);
  if (m_ErrorStatus != Acad::eOk) return false;
  object->close();
  m_ObjectId = id;
  return true;
}

bool OxData::Attach(ads_name ent) {
  AcDbObjectId id;
  m_ErrorStatus = acdbGetObjectId(id, ent);
  if (m_ErrorStatus != Acad::eOk) {
    m_ObjectId = AcDbObjectId::kNull;
    return false;
  }
  return Attach(id);
}

bool OxData::IsOK(AcDb::OpenMode mode) {
  AcDbObject* object = nullptr;
  m_ErrorStatus = acdbOpenObject(object, m_ObjectId, mode);
  if (m_ErrorStatus != Acad::eOk) return false;
  object->close();
  return true;
}

const wchar_t* OxData::GetLastErrorText() const { return acadErrorStatusText(m_ErrorStatus); }

const wchar_t* OxData::GetDWGLastErrorText() { return acadErrorStatusText(m_DWGErrorStatus); }

AcDbDatabase* OxData::GetCurDWGPtr() { return m_pCurDWG; }
