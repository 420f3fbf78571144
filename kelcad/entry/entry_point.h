// The entry points the CAD program (or the host's loader) looks up in the
// module by name.
#pragma once

#include "kelcad/platform.h"

// Application messages; always answers kRetOK.
ACRX_EXPORT_ENTRY AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg, void* appId);
// The major version of the platform API the module was built for.
ACRX_EXPORT_ENTRY int acrxGetApiVersion();
// The DLL entry: extension-module set-up on attach, its end on detach.
ACRX_EXPORT_ENTRY BOOL DllMain(HINSTANCE instance, DWORD reason, void* reserved);
