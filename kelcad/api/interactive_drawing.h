// Drawing driven by the user's answers: inserting a block drawing at the
// points given, and making a slide and a block drawing of a window's
// entities.
#pragma once

#include "kelcad/platform.h"

namespace KEL {

// Sets REGENMODE to regenMode, then, for every point the user gives at
// "\n回车返回 / <请选取块插入点>:", asks the scale ("\n输入块比例<%.2f>:",
// positive; Enter keeps the last one, 1.00 at first), prints
// "\n输入块旋转角度<0.0>:" and inserts the drawing name.dwg there with
// INSERT, whose rotation prompt the user answers. Ends at an answer that
// is not a point (Enter, cancel, the end of input), sets REGENMODE to 1
// and returns true.
bool InsertBlock(CString name, int regenMode);

// Asks a base point ("\n选块插入点 / 回车不做:"), prints
// "\n请窗选要做块的实体(整体在内):" and asks a window ("\n窗口第一点 /
// 回车不做:", "\n窗口第二点 / 回车不做:"); the entities inside it are
// shown zoomed to the window in the slide base.sld (MSLIDE), then written
// to the drawing base.dwg with WBLOCK (which takes them out of this
// drawing), replacing a drawing of that name, all within one undo group.
// False, with nothing made, when an answer is not a point or the window
// holds nothing; true otherwise.
bool CreateSlide(CString base);

}  // namespace KEL
