// Objects and entities the host does not model, kept as a file gave them:
// their DXF type and their groups verbatim (with any followers such as a
// polyline's vertices), so that saving writes them back unchanged.
#pragma once

#include <string>

#include "arx/dbmain.h"
#include "dxf/raw_group.h"

namespace kelhost::dxf {

// What a kept object or entity holds besides the common state.
struct KeptData {
  std::wstring type;   // the DXF type (0 group)
  RawGroups reactors;  // the 102 {ACAD_REACTORS ... } block, verbatim
  RawGroups body;      // every group after the owner, before the xdata
  // Entities that follow the head in the file (VERTEX..., ATTRIB...,
  // SEQEND): each begins with its 0 group.
  RawGroups followers;
};

class KeptObject : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(KeptObject);
  explicit KeptObject(KeptData data);
  const KeptData& kept() const { return mData; }
  KeptData& kept() { return mData; }

 protected:
  void dxfFields(GroupFiler& filer) override;

 private:
  KeptData mData;
  AcRxClass* mClass;
};

class KeptEntity : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(KeptEntity);
  explicit KeptEntity(KeptData data);
  const KeptData& kept() const { return mData; }
  KeptData& kept() { return mData; }

 protected:
  void dxfFields(GroupFiler& filer) override;

 private:
  KeptData mData;
  AcRxClass* mClass;
};

// The kept data of an object, or null when the host models it.
const KeptData* KeptDataOf(const AcDbObject* object);

}  // namespace kelhost::dxf
