// The undo journal: the steps U, UNDO and REDO walk. A step holds, for
// every object of the drawing that it created, erased or opened for
// write, the state the object had before the step (packed; dropped again
// when the step left the object as it was), and the header variables it
// changed. Undoing a step puts those states back and keeps what it
// replaced, which is what REDO puts back.
//
// Steps:
// - a command (those it runs join it); the commands that do not change
//   the drawing (U, UNDO, REDO, the query, save and slide commands) make
//   none;
// - an AutoLISP expression at the prompt: what it changes outside any
//   command is one step; each command it runs is a step of its own, as on
//   the platform, where a program that wants its commands undone together
//   brackets them with UNDO BEgin and End;
// - UNDO BEgin ... End: the steps between become one, named GROUP;
// - UNDO Mark: a mark that UNDO Back goes back to.
// Consecutive ZOOM and PAN steps make one when Combine is on. Auto and
// Layer are kept and shown (UNDOCTL) only: Auto groups a menu macro's
// commands and Layer the layer dialog's changes, and the host has neither.
// Changes made when no command or expression runs (a program's start-up,
// a drawing being read) belong to no step and are not undone. The steps
// belong to the database that was the working one when they were made;
// a step of another database forgets them.
#pragma once

#include <string>
#include <vector>

namespace kelhost::editor::undo {

enum class Control { kAll, kNone, kOne };

// What undoing one entry from the top met.
enum class Met {
  kStep,        // a step, now undone
  kMark,        // a mark, now removed
  kGroupStart,  // the start of the open BEgin group: nothing further back
  kNothing,     // no step left
};

// The journal's UNDO settings and state, as commands and tests see them.
Control CurrentControl();
bool AutoOn();
bool CombineZoomPan();
bool CombineLayer();
bool GroupOpen();
int Marks();
// UNDOCTL: 1 on, 2 one step only, 4 Auto (with Control All), 8 a BEgin
// group open, 16 zoom and pan combined, 32 layer operations combined.
int ControlBits();

// None forgets every step; One keeps only the last.
void SetControl(Control control);
void SetAuto(bool on);
void SetCombineZoomPan(bool on);
void SetCombineLayer(bool on);
// BEgin (ending an open group first), End, Mark.
void Begin();
void End();
void Mark();

// A U or UNDO command starts: what it undoes replaces what REDO would
// bring back.
void StartUndoing();
// Undoes the top entry; name: the step's name for kStep.
Met UndoOne(std::wstring& name);
// Whether REDO has something to bring back; brings it back, giving the
// names of the steps redone in order.
bool CanRedo();
std::vector<std::wstring> Redo();

// Steps that can be undone (marks and group starts not counted).
int StepCount();
// Everything forgotten and the settings back to the session's defaults.
void Reset();

}  // namespace kelhost::editor::undo
