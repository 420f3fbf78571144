// ACDB calls available before the drawing database: error reporting.
#pragma once

#include "adsdef.h"

// Prints an application error message on the command line.
void acdbFail(const ACHAR* str);
