// Xrecords: arbitrary group-code data kept in dictionaries.
#pragma once

#include "dbmain.h"

class AcDbXrecord : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbXrecord);
  AcDbXrecord() = default;
  ~AcDbXrecord() override;

  // *ppRb receives a copy of the data the caller releases (null when
  // empty).
  Acad::ErrorStatus rbChain(resbuf** ppRb, AcDbDatabase* auxDb = nullptr) const;
  // Copies the chain in. Group codes must be DXF codes an xrecord can
  // hold: not 0, 5, 100, 105 or 1000 and above, nor a result-type code
  // (eInvalidResBuf). Needs write access.
  Acad::ErrorStatus setFromRbChain(const resbuf& pRb, AcDbDatabase* auxDb = nullptr);
  bool isXlateReferences() const { return mXlate; }
  void setXlateReferences(bool translate) { mXlate = translate; }

 protected:
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  resbuf* mData = nullptr;
  short mMergeStyle = 1;
  bool mXlate = true;
};
