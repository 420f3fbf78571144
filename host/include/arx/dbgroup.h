// Groups: named, ordered sets of entities kept in the group dictionary.
#pragma once

#include <string>
#include <vector>

#include "dbmain.h"

class AcDbGroup : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbGroup);
  AcDbGroup() = default;
  explicit AcDbGroup(const ACHAR* description, bool selectable = true);

  const ACHAR* description() const { return mDescription.c_str(); }
  Acad::ErrorStatus setDescription(const ACHAR* text);
  bool isSelectable() const { return mSelectable; }
  Acad::ErrorStatus setSelectable(bool selectable);
  bool isAnonymous() const { return mUnnamed; }
  Acad::ErrorStatus setAnonymous();

  // eAlreadyInGroup for an entity that is in it; eNullObjectId.
  Acad::ErrorStatus append(AcDbObjectId id);
  Acad::ErrorStatus append(const AcDbObjectIdArray& ids);
  // eNotInGroup.
  Acad::ErrorStatus remove(AcDbObjectId id);
  Acad::ErrorStatus clear();
  bool has(const AcDbEntity* entity) const;
  bool has(AcDbObjectId id) const;
  Adesk::UInt32 numEntities() const { return static_cast<Adesk::UInt32>(mEntities.size()); }
  Adesk::UInt32 allEntityIds(AcDbObjectIdArray& ids) const;

 protected:
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  std::wstring mDescription;
  std::vector<AcDbObjectId> mEntities;
  bool mSelectable = true;
  bool mUnnamed = false;
};
