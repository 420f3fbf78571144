// The module's entry points: the application messages of the CAD program
// and the API version it checks before loading the module.
#include "kelcad/entry/entry_point.h"
#include "kelcad/entry/extra_lisp_functions.h"
#include "kelcad/entry/lisp_table.h"
#include "kelcad/entry/module_state.h"
#include "kelcad/platform.h"

ACRX_EXPORT_ENTRY AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg, void* appId) {
  // Nothing may escape to the CAD program; every message answers kRetOK.
  try {
    switch (msg) {
      case AcRx::kInitAppMsg:
        KEL::StartUpModule(appId);
        break;
      case AcRx::kUnloadAppMsg:
        KEL::UnloadModule();
        break;
      case AcRx::kLoadDwgMsg:
        KEL::RegisterLispFunctions();
        KEL::RegisterExtraLispFunctions();
        break;
      case AcRx::kUnloadDwgMsg:
        KEL::UnregisterLispFunctions();
        KEL::UnregisterExtraLispFunctions();
        break;
      case AcRx::kInvkSubrMsg:
        KEL::DispatchLispFunction();
        break;
      default:
        break;
    }
  } catch (...) {
  }
  return AcRx::kRetOK;
}

// The major version of the platform API the module was built against.
ACRX_EXPORT_ENTRY int acrxGetApiVersion() { return ACRX_API_VERSION_MAJOR; }
