// AcRx runtime: application messages, the runtime object root, the system
// registry and the dynamic linker.
#pragma once

#include "adsdef.h"

namespace AcRx {
enum AppMsgCode {
  kNullMsg = 0,
  kInitAppMsg = 1,
  kUnloadAppMsg = 2,
  kLoadDwgMsg = 3,
  kUnloadDwgMsg = 4,
  kInvkSubrMsg = 5,
  kCfgMsg = 6,
  kEndMsg = 7,
  kQuitMsg = 8,
  kSaveMsg = 9,
  kDependencyMsg = 10,
  kNoDependencyMsg = 11,
  kOleUnloadAppMsg = 12,
  kPreQuitMsg = 13,
  kInitDialogMsg = 14,
  kEndDialogMsg = 15,
  kSuspendMsg = 16,
  kInitTabGroupMsg = 17,
  kEndTabGroupMsg = 18,
};
enum AppRetCode { kRetOK = 0, kRetError = 3 };
}  // namespace AcRx

// Root of the runtime class tree; objects in the system registry derive
// from it and are told apart with the classes' cast().
class AcRxClass;
class AcRxObject {
 public:
  virtual ~AcRxObject();
  // Runtime class: every class of the database layer describes itself
  // with an AcRxClass (its name, DXF name and parent).
  static AcRxClass* desc();
  virtual AcRxClass* isA() const;
  bool isKindOf(const AcRxClass* aClass) const;
};

class AcRxClass : public AcRxObject {
 public:
  AcRxClass(const ACHAR* name, const ACHAR* dxfName, AcRxClass* parent);
  const ACHAR* name() const { return mName; }
  const ACHAR* dxfName() const { return mDxfName; }
  AcRxClass* myParent() const { return mParent; }
  bool isDerivedFrom(const AcRxClass* other) const;

 private:
  const ACHAR* mName;
  const ACHAR* mDxfName;
  AcRxClass* mParent;
};

// Defines the members ACRX_DECLARE_MEMBERS declares, for an application's
// own classes: the runtime class (made the first time it is asked for, so
// rxInit only makes sure it exists) and isA. The DXF form names the class
// in drawing files; the host keeps its name only.
#define ACRX_NO_CONS_DEFINE_MEMBERS(CLASS_NAME, PARENT_CLASS)                     \
  AcRxClass* CLASS_NAME::desc() {                                                 \
    static AcRxClass cls(L"" #CLASS_NAME, L"", PARENT_CLASS::desc());             \
    return &cls;                                                                  \
  }                                                                               \
  AcRxClass* CLASS_NAME::isA() const { return CLASS_NAME::desc(); }               \
  void CLASS_NAME::rxInit() { CLASS_NAME::desc(); }
#define ACRX_DXF_DEFINE_MEMBERS(CLASS_NAME, PARENT_CLASS, DWG_VERSION, MAINTENANCE_VERSION, PROXY_FLAGS, \
                                DXF_NAME, APP)                                                         \
  AcRxClass* CLASS_NAME::desc() {                                                                      \
    static AcRxClass cls(L"" #CLASS_NAME, L"" #DXF_NAME, PARENT_CLASS::desc());                        \
    return &cls;                                                                                       \
  }                                                                                                    \
  AcRxClass* CLASS_NAME::isA() const { return CLASS_NAME::desc(); }                                    \
  void CLASS_NAME::rxInit() { CLASS_NAME::desc(); }

// Classes are linked to their parents as they are made: nothing is left
// to build, and a class lives as long as the process.
inline void acrxBuildClassHierarchy() {}
inline void deleteAcRxClass(AcRxClass*) {}

// The system registry: named service objects of the host.
class AcRxDictionary : public AcRxObject {
 public:
  virtual AcRxObject* at(const ACHAR* key) const = 0;
};
AcRxDictionary* acrxSysRegistry();

#define ACRX_DYNAMIC_LINKER L"DynamicLinker"
#define ACRX_COMMAND_DOCK L"ACAD_REGISTERED_COMMANDS"
#define ACRX_EDITOR L"AcEditor"

class AcRxDynamicLinker : public AcRxObject {
 public:
  static AcRxDynamicLinker* cast(AcRxObject* obj) { return dynamic_cast<AcRxDynamicLinker*>(obj); }
  virtual bool unlockApplication(void* appId) const = 0;
  virtual bool lockApplication(void* appId) const = 0;
  virtual bool isApplicationLocked(const ACHAR* name) const = 0;
  virtual bool registerAppMDIAware(void* appId) const = 0;
  virtual bool registerAppNotMDIAware(void* appId) const = 0;
  virtual bool loadModule(const ACHAR* fileName, bool printit, bool asCmd = false) = 0;
  virtual bool unloadModule(const ACHAR* fileName, bool asCmd = false) = 0;
};
#define acrxDynamicLinker AcRxDynamicLinker::cast(acrxSysRegistry()->at(ACRX_DYNAMIC_LINKER))

// The API version an application reports; the host refuses modules built
// for another.
#define ACRX_API_VERSION_MAJOR 20
#define ACRX_API_VERSION_MINOR 0

// Every module exports these two with C linkage.
#define ACRX_EXPORT_ENTRY extern "C" __attribute__((visibility("default")))
