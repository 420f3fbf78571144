// The one seam between the module and the platform. On Windows with the
// real SDK the platform's own headers are used; everywhere else the
// headless host's declarations of the same interface.
#pragma once

#if defined(_WIN32) && !defined(KELCAD_HEADLESS)
#include <afxwin.h>
#include <afxext.h>
#include "arxHeaders.h"
#include "AcExtensionModule.h"
#else
#include "arx/arxheaders.h"
#endif
