// Umbrella of the platform interface implemented by the headless host.
#pragma once

#include "adsdef.h"
#include "acadstrc.h"
#include "acutads.h"
#include "acedads.h"
#include "acdbads.h"
#include "acrx.h"
#include "accmd.h"
#include "dbapserv.h"
#include "aced_editor.h"
#include "acge.h"
#include "acarray.h"
#include "win32.h"
#include "afx.h"
