// KELCAD: the C++ library that the module KELCAD.arx exports to the other
// modules of the application family. Sibling modules include only this
// header and link against the module (CMake: KELCAD::kelcad).
#pragma once

#include "kelcad/platform.h"

#include "kelbase/kelbase.h"

#include "kelcad/api/app_windows.h"
#include "kelcad/api/cadvar.h"
#include "kelcad/api/command_line.h"
#include "kelcad/api/current_drawing.h"
#include "kelcad/api/inifile.h"
#include "kelcad/api/module_info.h"
#include "kelcad/api/sysvar_access.h"
#include "kelcad/api/undo_groups.h"
#include "kelcad/api/zoom.h"
#include "kelcad/entry/diagnostic.h"
#include "kelcad/entry/editor_reactor.h"
#include "kelcad/entry/gc_fields.h"
#include "kelcad/entry/settings.h"
#include "kelcad/entry/tolerance.h"
#include "kelcad/geom/coord_trans.h"
#include "kelcad/geom/entities.h"
#include "kelcad/geom/plane.h"
#include "kelcad/geom/pline_readers.h"
#include "kelcad/geom/polygon.h"
#include "kelcad/geom/records.h"
#include "kelcad/geom/tangent_circles.h"
#include "kelcad/oxdata/drawing_records.h"
#include "kelcad/oxdata/entity_xdata.h"
#include "kelcad/oxdata/oxdata.h"
#include "kelcad/resbuf/rbchain.h"
#include "kelcad/resbuf/rbtext.h"
