// Facts about the program the module runs in. The product root key is the
// one of the CAD program generation the family targets (R20.0, Chinese
// edition); the user and machine roots are the same path.
#include "arx/dbapserv.h"

namespace {
constexpr const ACHAR* kProductRootKey = L"Software\\Autodesk\\AutoCAD\\R20.0\\ACAD-E001:804";
}

AcDbHostApplicationServices::~AcDbHostApplicationServices() = default;
const ACHAR* AcDbHostApplicationServices::getRegistryProductRootKey() const { return kProductRootKey; }
const ACHAR* AcDbHostApplicationServices::getUserRegistryProductRootKey() const { return kProductRootKey; }
const ACHAR* AcDbHostApplicationServices::getMachineRegistryProductRootKey() const { return kProductRootKey; }
const ACHAR* AcDbHostApplicationServices::product() const { return L"KELCAD headless host"; }
const ACHAR* AcDbHostApplicationServices::program() const { return L"kelcad"; }

AcDbHostApplicationServices* acdbHostApplicationServices() {
  static AcDbHostApplicationServices services;
  return &services;
}
