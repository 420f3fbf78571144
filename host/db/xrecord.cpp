// Xrecords: free-form DXF groups after the merge style (280).
#include "ads/rbkind.h"
#include "arx/acutads.h"
#include "arx/dbxrecrd.h"
#include "db/rx_define.h"
#include "dxf/group_filer.h"
#include "kelhost/resbuf_kinds.h"

using kelhost::dxf::Presence;

KELHOST_RX_DEFINE(AcDbXrecord, AcDbObject, L"XRECORD")

AcDbXrecord::~AcDbXrecord() { acutRelRb(mData); }

Acad::ErrorStatus AcDbXrecord::rbChain(resbuf** ppRb, AcDbDatabase*) const {
  if (!ppRb) return Acad::eInvalidInput;
  *ppRb = nullptr;
  if (!mData) return Acad::eOk;
  *ppRb = kelhost::rb::CopyChain(mData);
  return *ppRb ? Acad::eOk : Acad::eOutOfMemory;
}

Acad::ErrorStatus AcDbXrecord::setFromRbChain(const resbuf& pRb, AcDbDatabase*) {
  if (!writable()) return Acad::eNotOpenForWrite;
  for (const resbuf* rb = &pRb; rb; rb = rb->rbnext) {
    const int code = rb->restype;
    if (code <= 0 || code == 5 || code == 100 || code == 105 || code >= 1000 ||
        kelhost::ResbufKind(code) == kelhost::RbKind::kUnknown)
      return Acad::eInvalidResBuf;
  }
  resbuf* copy = kelhost::rb::CopyChain(&pRb);
  if (!copy) return Acad::eOutOfMemory;
  acutRelRb(mData);
  mData = copy;
  return Acad::eOk;
}

void AcDbXrecord::dxfFields(kelhost::dxf::GroupFiler& f) {
  f.subclass(L"AcDbXrecord");
  f.int16(280, mMergeStyle, 1, Presence::kAlways);
  f.chain(mData);
}
