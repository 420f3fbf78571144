// KELCAD: the C++ library that the module KELCAD.arx exports to the other
// modules of the application family. Sibling modules include only this
// header and link against the module (CMake: KELCAD::kelcad).
#pragma once

#include "kelcad/platform.h"

#include "kelbase/kelbase.h"

#include "kelcad/api/cadvar.h"
#include "kelcad/api/inifile.h"
#include "kelcad/entry/editor_reactor.h"
#include "kelcad/entry/gc_fields.h"
#include "kelcad/entry/settings.h"
#include "kelcad/entry/tolerance.h"
#include "kelcad/resbuf/rbchain.h"
