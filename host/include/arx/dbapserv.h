// Host application services: facts about the program the module runs in.
#pragma once

#include "adsdef.h"

class AcDbDatabase;

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
  // The database of the open document (made on first use); code that
  // works on "the current drawing" uses it.
  virtual AcDbDatabase* workingDatabase() const;
  virtual void setWorkingDatabase(AcDbDatabase* database);
};
AcDbHostApplicationServices* acdbHostApplicationServices();

// The platform's shorthand for the working database.
#define acdbCurDwg() (acdbHostApplicationServices()->workingDatabase())
