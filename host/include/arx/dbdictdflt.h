// A dictionary with a default entry (the plot style names of
// ACAD_PLOTSTYLENAME, "Normal" by default) and the placeholder object that
// such entries name.
#pragma once

#include "dbdict.h"

class AcDbDictionaryWithDefault : public AcDbDictionary {
 public:
  ACRX_DECLARE_MEMBERS(AcDbDictionaryWithDefault);
  AcDbObjectId defaultId() const { return mDefault; }
  Acad::ErrorStatus getDefaultId(AcDbObjectId& id) const {
    id = mDefault;
    return Acad::eOk;
  }
  // The default must be one of the dictionary's entries (eInvalidInput).
  Acad::ErrorStatus setDefaultId(const AcDbObjectId& id);

 protected:
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  AcDbObjectId mDefault;
};

// An object with no data of its own: it stands for a name.
class AcDbPlaceHolder : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbPlaceHolder);
};
