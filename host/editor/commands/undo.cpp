// UNDO, U and REDO: the journal's commands (editor/undo_journal.h).
// Each step undone is named on the command line after the answer, as the
// platform does ("Command: U LINE"); so are the marks met and the end of
// the journal.
#include "arx/adsdef.h"
#include "editor/builtin_commands.h"
#include "editor/undo_journal.h"

namespace kelhost::editor {
namespace {

using undo::Control;
using undo::Met;

const wchar_t* OnOff(bool on) { return on ? L"On" : L"Off"; }
const wchar_t* YesNo(bool yes) { return yes ? L"Yes" : L"No"; }

const wchar_t* ControlName(Control c) {
  switch (c) {
    case Control::kNone: return L"None";
    case Control::kOne: return L"One";
    default: return L"All";
  }
}

// Undoes up to count steps; a mark, the start of an open group or the
// start of the journal ends it. Back asks for no count (-1).
void UndoSteps(CommandContext& c, int count) {
  for (int i = 0; count < 0 || i < count; ++i) {
    std::wstring name;
    switch (undo::UndoOne(name)) {
      case Met::kStep: c.print(L" " + name); break;
      case Met::kMark: c.print(L" Mark encountered"); return;
      case Met::kGroupStart: return;
      case Met::kNothing: c.print(L" Everything has been undone"); return;
    }
  }
}

bool AskYesNo(CommandContext& c, const std::wstring& question, bool current) {
  Answer a = c.askKeyword(question + L" [Yes/No] <" + YesNo(current) + L">: ", L"Yes No");
  return a.status == RTKWORD ? a.text == L"Yes" : current;
}

// The Control option; also what UNDO asks first when undo is off.
void AskControl(CommandContext& c) {
  Answer a = c.askKeyword(L"\nEnter an UNDO control option [All/None/One/Combine/Layer] <All>: ",
                          L"All None One Combine Layer");
  const std::wstring choice = a.status == RTKWORD ? a.text : L"All";
  if (choice == L"All") undo::SetControl(Control::kAll);
  else if (choice == L"None") undo::SetControl(Control::kNone);
  else if (choice == L"One") undo::SetControl(Control::kOne);
  else if (choice == L"Combine") undo::SetCombineZoomPan(AskYesNo(c, L"\nCombine zoom and pan operations?", undo::CombineZoomPan()));
  else undo::SetCombineLayer(AskYesNo(c, L"\nCombine layer property operations?", undo::CombineLayer()));
}

void Back(CommandContext& c) {
  if (undo::Marks() == 0) {
    Answer a = c.askKeyword(L"\nThis will undo everything. OK? <Y>: ", L"Yes No");
    if (a.status == RTKWORD && a.text == L"No") return;
  }
  UndoSteps(c, -1);
}

void RunUndo(CommandContext& c) {
  // Whatever UNDO does, REDO then brings back only what it undoes.
  undo::StartUndoing();
  c.print(std::wstring(L"\nCurrent settings: Auto = ") + OnOff(undo::AutoOn()) +
          L", Control = " + ControlName(undo::CurrentControl()) + L", Combine = " + YesNo(undo::CombineZoomPan()) +
          L", Layer = " + YesNo(undo::CombineLayer()));
  if (undo::CurrentControl() == Control::kNone) return AskControl(c);
  // With Control One only a single step and Control are offered. Group is
  // the older name of BEgin, still accepted.
  const bool one = undo::CurrentControl() == Control::kOne;
  Answer a = c.askInt(one ? L"\nEnter the number of operations to undo or [Control] <1>: "
                          : L"\nEnter the number of operations to undo or [Auto/Control/BEgin/End/Mark/Back] <1>: ",
                      one ? L"Control" : L"Auto Control BEgin End Mark Back Group", kNoZero | kNoNegative);
  if (a.status != RTKWORD) return UndoSteps(c, a.status == RTNORM ? a.integer : 1);
  if (a.text == L"Auto") {
    Answer on = c.askKeyword(std::wstring(L"\nEnter UNDO Auto mode [ON/OFF] <") + OnOff(undo::AutoOn()) + L">: ",
                             L"ON OFF");
    if (on.status == RTKWORD) undo::SetAuto(on.text == L"ON");
  } else if (a.text == L"Control") {
    AskControl(c);
  } else if (a.text == L"BEgin" || a.text == L"Group") {
    undo::Begin();
  } else if (a.text == L"End") {
    undo::End();
  } else if (a.text == L"Mark") {
    undo::Mark();
  } else {
    Back(c);
  }
}

void RunU(CommandContext& c) {
  if (undo::CurrentControl() == Control::kNone) {
    c.print(L"\nU command disabled. Use UNDO command to turn it on");
    return;
  }
  undo::StartUndoing();
  UndoSteps(c, 1);
}

// REDO brings back what the U or UNDO just before it undid.
void RunRedo(CommandContext& c) {
  if (!undo::CanRedo()) {
    c.print(L" Everything has been redone");
    return;
  }
  for (const std::wstring& name : undo::Redo()) c.print(L" " + name);
}

}  // namespace

KELHOST_BUILTIN_COMMAND(Undo, {L"UNDO", RunUndo});
KELHOST_BUILTIN_COMMAND(U, {L"U", RunU});
KELHOST_BUILTIN_COMMAND(Redo, {L"REDO", RunRedo});

}  // namespace kelhost::editor
