// Host application services: facts about the program the module runs in.
#pragma once

#include "adsdef.h"

class AcDbHostApplicationServices {
 public:
  virtual ~AcDbHostApplicationServices();
  // Registry root of the product, without the hive, e.g.
  // "Software\Autodesk\AutoCAD\R20.0\ACAD-E001:804".
  virtual const ACHAR* getRegistryProductRootKey() const;
  virtual const ACHAR* getUserRegistryProductRootKey() const;
  virtual const ACHAR* getMachineRegistryProductRootKey() const;
  virtual const ACHAR* product() const;
  virtual const ACHAR* program() const;
};
AcDbHostApplicationServices* acdbHostApplicationServices();
