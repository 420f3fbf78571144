// Typed reads and writes of system variables through module-held buffers.
#include "kelcad/api/sysvar_access.h"

#include <string>

namespace KEL {

namespace {

// Reads and most writes share this buffer.
resbuf gVar;
// Text written with SetCADVar lives here while acedSetVar reads it.
std::wstring gText;
// Where GetCADVar(name, AcGePoint3d&) keeps what it read.
AcGePoint3d gPoint;
// SetCADVar(name, ads_point) has its own buffer and copies only x into
// it, so y and z are never written: the family's callers send whole
// points through the AcGePoint3d form.
resbuf gPointVar;

int Read(const wchar_t* name) {
  gVar.rbnext = nullptr;
  return acedGetVar(name, &gVar);
}

// A successful read hands over the text of a string variable whatever the
// caller wanted: it is not kept.
void ReleaseReadText(int status) {
  if (status == RTNORM && gVar.restype == RTSTR) {
    acad_free(gVar.resval.rstring);
    gVar.resval.rstring = nullptr;
  }
}

int Write(const wchar_t* name, resbuf& rb) {
  rb.rbnext = nullptr;
  return acedSetVar(name, &rb);
}

}  // namespace

int GetCADVar(const wchar_t* name, int& v) {
  const int status = Read(name);
  if (status == RTNORM) v = gVar.resval.rint;
  ReleaseReadText(status);
  return status;
}

int GetCADVar(const wchar_t* name, double& v) {
  const int status = Read(name);
  if (status == RTNORM) v = gVar.resval.rreal;
  ReleaseReadText(status);
  return status;
}

int GetCADVar(const wchar_t* name, CString& v) {
  const int status = Read(name);
  if (status == RTNORM && gVar.restype == RTSTR) v = gVar.resval.rstring != nullptr ? gVar.resval.rstring : L"";
  ReleaseReadText(status);
  return status;
}

int GetCADVar(const wchar_t* name, ads_point v) {
  const int status = Read(name);
  if (status == RTNORM)
    for (int i = 0; i < 3; ++i) v[i] = gVar.resval.rpoint[i];
  ReleaseReadText(status);
  return status;
}

int GetCADVar(const wchar_t* name, AcGePoint3d& v) {
  (void)v;
  const int status = Read(name);
  if (status == RTNORM) gPoint = AcGePoint3d(gVar.resval.rpoint[0], gVar.resval.rpoint[1], gVar.resval.rpoint[2]);
  ReleaseReadText(status);
  return status;
}

int GetCADIntVar(const wchar_t* name) {
  int v = 0;
  return GetCADVar(name, v) == RTNORM ? v : -1;
}

double GetCADDblVar(const wchar_t* name) {
  double v = 0.0;
  return GetCADVar(name, v) == RTNORM ? v : -1.0;
}

CString GetCADStrVar(const wchar_t* name) {
  CString v;
  return GetCADVar(name, v) == RTNORM ? v : CString();
}

AcGePoint3d GetCADPtVar(const wchar_t* name) {
  AcGePoint3d v(0.0, 0.0, 0.0);
  GetCADVar(name, v);
  return v;
}

int SetCADVar(const wchar_t* name, const wchar_t* v) {
  if (v == nullptr) return RTERROR;
  try {
    gText = v;
  } catch (...) {
    return RTERROR;
  }
  gVar.restype = RTSTR;
  gVar.resval.rstring = &gText[0];
  return Write(name, gVar);
}

int SetCADVar(const wchar_t* name, int v) {
  gVar.restype = RTSHORT;
  gVar.resval.rint = static_cast<short>(v);
  return Write(name, gVar);
}

int SetCADVar(const wchar_t* name, double v) {
  gVar.restype = RTREAL;
  gVar.resval.rreal = v;
  return Write(name, gVar);
}

int SetCADVar(const wchar_t* name, ads_point v) {
  gPointVar.restype = RT3DPOINT;
  gPointVar.resval.rpoint[0] = v[0];
  return Write(name, gPointVar);
}

int SetCADVar(const wchar_t* name, AcGePoint3d v) {
  gVar.restype = RT3DPOINT;
  gVar.resval.rpoint[0] = v.x;
  gVar.resval.rpoint[1] = v.y;
  gVar.resval.rpoint[2] = v.z;
  return Write(name, gVar);
}

}  // namespace KEL
