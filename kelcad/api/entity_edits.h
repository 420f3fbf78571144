// Small changes to one entity: each opens it, changes or reads it and
// closes it again before returning.
#pragma once

#include "kelcad/platform.h"

namespace KEL {

// Erases the entity: true when it was opened for write and erased.
bool Erase(AcDbObjectId id);
// Erases each entity; the number of ids that could not be erased (0: all
// were).
int Erase(const AcArray<AcDbObjectId>& ids);

// Shows the entity highlighted / normally again; true when the entity
// answered eOk.
bool Highlight(AcDbObjectId id, const AcDbFullSubentPath& path = AcDbFullSubentPath(), int highlightAll = 0);
bool Unhighlight(AcDbObjectId id, const AcDbFullSubentPath& path = AcDbFullSubentPath(), int highlightAll = 0);

// Makes the entity visible or invisible; true when done.
bool Visible(AcDbObjectId id, bool show);
// visible receives whether the entity is visible; false only when it
// cannot be opened.
bool IsVisible(AcDbObjectId id, bool& visible);
// erased receives isErased(). An erased entity does not open, so it
// answers false: the call tells erased and unknown ids apart from live
// ones, not from each other.
bool IsErased(AcDbObjectId id, bool& erased);
// The handle as hexadecimal text (at most 31 characters); false when the
// object cannot be opened.
bool GetHandle(AcDbObjectId id, CString& handle);
// Sets the colour index of the entity and its subentities (0 by block,
// 256 by layer); true when set.
bool SetEntColorIndex(AcDbObjectId id, Adesk::UInt16 colour);

// A dimension's own text height (DIMTXT) and text style (DIMTXSTY). The
// status of the open (eNotThatKindOfClass for an entity that is no
// dimension) or of the change.
Acad::ErrorStatus SetEntTxtHigh(AcDbObjectId id, double height);
Acad::ErrorStatus SetEntTxtStyle(AcDbObjectId id, AcDbObjectId style);
// The style by name (KEL::GetTxtStyleIDbyName): a name that is not found
// sets the null style, which draws in the drawing's current text style.
Acad::ErrorStatus SetEntTxtStyle(AcDbObjectId id, CString styleName);

// The dimension style / text style of that name in the working database,
// without regard to case. A name that is not found gives eOk with id null:
// test the id. Other statuses come from the table calls.
Acad::ErrorStatus GetDimStyleIDbyName(CString name, AcDbObjectId& id);
Acad::ErrorStatus GetTxtStyleIDbyName(CString name, AcDbObjectId& id);

}  // namespace KEL
