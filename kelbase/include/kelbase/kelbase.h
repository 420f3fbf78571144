// The family base library: everything it offers the module.
#pragma once

#include "kelbase/colors.h"
#include "kelbase/debug.h"
#include "kelbase/directories.h"
#include "kelbase/files.h"
#include "kelbase/inilists.h"
#include "kelbase/inisetting.h"
#include "kelbase/software.h"
#include "kelbase/strings.h"
#include "kelbase/tolerance.h"
