// The DLL entry: the module is an MFC extension DLL of the CAD program.
#include <new>

#include "kelcad/entry/entry_point.h"
#include "kelcad/entry/module_state.h"
#include "kelcad/platform.h"

namespace {

AFX_EXTENSION_MODULE gExtensionModule;
bool gExtensionInitialised = false;
HINSTANCE gInstance = nullptr;
HINSTANCE gResourceHandle = nullptr;

}  // namespace

namespace KEL {
HINSTANCE ModuleInstance() { return gInstance; }
HINSTANCE ModuleResourceHandle() { return gResourceHandle; }
}  // namespace KEL

ACRX_EXPORT_ENTRY BOOL DllMain(HINSTANCE instance, DWORD reason, void* reserved) {
  if (reason == DLL_PROCESS_ATTACH) {
    gInstance = instance;
    if (!gExtensionInitialised && AfxInitExtensionModule(gExtensionModule, instance)) {
      gExtensionInitialised = true;
      gResourceHandle = AfxGetResourceHandle();
      // Joins the extension module to the library chain, which owns it.
      new (std::nothrow) CDynLinkLibrary(gExtensionModule);
    }
    InitAcUiDLL();
  } else if (reason == DLL_PROCESS_DETACH) {
    if (gExtensionInitialised) {
      AfxTermExtensionModule(gExtensionModule);
      gExtensionInitialised = false;
    }
  }
  return TRUE;
}
