// Runtime classes: names and the parent chain that isKindOf and cast walk.
#include "arx/acrx.h"

AcRxClass::AcRxClass(const ACHAR* name, const ACHAR* dxfName, AcRxClass* parent)
    : mName(name), mDxfName(dxfName), mParent(parent) {}

bool AcRxClass::isDerivedFrom(const AcRxClass* other) const {
  for (const AcRxClass* c = this; c; c = c->mParent)
    if (c == other) return true;
  return false;
}

AcRxClass* AcRxObject::desc() {
  static AcRxClass cls(L"AcRxObject", L"", nullptr);
  return &cls;
}

AcRxClass* AcRxObject::isA() const { return AcRxObject::desc(); }

bool AcRxObject::isKindOf(const AcRxClass* aClass) const { return isA()->isDerivedFrom(aClass); }
