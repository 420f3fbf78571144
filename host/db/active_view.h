// The view of the drawing's current viewport. It lives in the first
// "*Active" record of the viewport table, as the platform keeps it, so a
// saved drawing keeps its view; the view variables (VIEWCTR, VIEWSIZE,
// VIEWDIR, TARGET, VIEWMODE, LENSLENGTH, FRONTZ, BACKZ) and the drawing
// aids placed in the viewport (SNAPMODE, GRIDMODE, SNAPANG) read and write
// that record. A drawing without such a record keeps them in its header
// store instead.
#pragma once

#include "arx/acge.h"
#include "db/header_vars.h"

class AcDbDatabase;
class AcDbViewportTableRecord;

namespace kelhost::db {

struct DatabaseState;

struct ActiveView {
  AcGePoint2d center{210.0, 148.5};  // display coordinates (DCS)
  double height = 297.0;             // VIEWSIZE
  double width = 297.0;              // as the record keeps it (height times its aspect ratio)
  AcGePoint3d target;                // WCS
  AcGeVector3d direction = AcGeVector3d::kZAxis;  // WCS, from the target towards the viewer
  double twist = 0.0, lens = 50.0, front = 0.0, back = 0.0;
  short mode = 0;  // VIEWMODE bits: 1 perspective, 2 front clip, 4 back clip, 8 UCS follow, 16 front clip not at eye
};

// The current viewport's record (not opened), or null.
AcDbViewportTableRecord* ActiveViewportRecord(const DatabaseState& s);
// The record's view, or a new drawing's when there is no record.
ActiveView GetActiveView(const DatabaseState& s);
// Writes the view into the record, opened for write (so the undo journal
// sees the change). False when the drawing has no active viewport record
// or it cannot be opened.
bool SetActiveView(AcDbDatabase* db, const ActiveView& view);

// The header variables placed in the viewport (HeaderPlace::kViewport),
// as the platform reports them (points in the current UCS). False when
// the drawing has no active viewport record.
bool GetViewportVar(const DatabaseState& s, const HeaderVarDef& def, HeaderValue& out);
bool PutViewportVar(AcDbDatabase* db, const HeaderVarDef& def, const HeaderValue& value);

}  // namespace kelhost::db
