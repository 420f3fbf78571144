// Dialogs as programs run them, answered from the input stream: AutoLISP's
// dialog functions, the answers' forms, the standard buttons, nested and
// terminated dialogs, and the C calls with their callbacks.
#include <gtest/gtest.h>

#include "../editor/editor_fixture.h"
#include "../platform/temp_dir.h"
#include "kelhost/ui.h"

namespace {

const char kSettings[] = R"(
settings : dialog {
  label = "Settings";
  : edit_box { key = "name"; value = "pier"; edit_limit = 6; }
  : toggle { key = "snap"; }
  : radio_column { key = "unit";
    : radio_button { key = "mm"; value = "1"; }
    : radio_button { key = "m"; }
  }
  : button { key = "more"; label = "More..."; }
  : button { key = "off"; is_enabled = false; }
  ok_cancel;
}
inner : dialog { : button { key = "stop"; } ok_only; }
)";

class DialogTest : public EditorTest {
 protected:
  void SetUp() override {
    EditorTest::SetUp();
    TempDir::Write(dir.file("settings.dcl"), kSettings);
    const std::wstring load = L"(setq id (load_dialog \"" + dir.wfile("settings") + L"\"))";
    ASSERT_NE(eval(load), L"-1");
  }
  // Runs a program with the user's answers; what it printed.
  std::wstring run(const std::wstring& program, const std::wstring& lines) {
    answers(lines);
    out.clear();
    kelhost::Host::instance().lisp().evalSource(program, nullptr);
    return out;
  }
  TempDir dir;
};

TEST_F(DialogTest, AnswersSetTilesAndPressButtons) {
  const std::wstring program = LR"lsp(
(new_dialog "settings" id)
(action_tile "name" "(princ (strcat \"\\nname \" $value \" \" (itoa $reason)))")
(action_tile "more" "(princ (strcat \"\\npressed \" $key))")
(action_tile "unit" "(princ (strcat \"\\nunit \" $value))")
(action_tile "accept" "(setq got (list (get_tile \"name\") (get_tile \"snap\") (get_tile \"unit\"))) (done_dialog 5)")
(princ (strcat "\nstatus " (itoa (start_dialog))))
(princ got)
)lsp";
  EXPECT_EQ(run(program, L"name=abutment\nsnap\nunit=m\nmore\n\n"),
            L"\nname abutme 2\nunit m\npressed more\nstatus 5(abutme 1 m)");
  // The edit box kept at most edit_limit characters.
}

TEST_F(DialogTest, TheStandardButtonsEndTheDialog) {
  const std::wstring program = L"(new_dialog \"settings\" id)(setq s (start_dialog))";
  run(program, L"\n");  // Enter: the default button, OK
  EXPECT_EQ(eval(L"s"), L"1");
  run(program, L"cancel\n");
  EXPECT_EQ(eval(L"s"), L"0");
  run(program, L"^C\n");  // Escape: the cancel button
  EXPECT_EQ(eval(L"s"), L"0");
  run(program, L"snap=1\n");  // the input ends: cancelled
  EXPECT_EQ(eval(L"s"), L"0");
  // An OK with an action of its own that does not end the dialog keeps it.
  run(L"(new_dialog \"settings\" id)(action_tile \"accept\" \"(setq n (1+ n))\")(setq n 0 s (start_dialog))",
      L"accept\naccept\ncancel\n");
  EXPECT_EQ(eval(L"n"), L"2");
  EXPECT_EQ(eval(L"s"), L"0");
  // The dialog is gone: the tile functions find nothing.
  EXPECT_EQ(eval(L"(get_tile \"name\")"), L"nil");
  EXPECT_EQ(eval(L"(start_dialog)"), L"nil");
}

TEST_F(DialogTest, AnswersATileCannotTakeAreSkipped) {
  testing::internal::CaptureStderr();
  run(L"(new_dialog \"settings\" id)(mode_tile \"more\" 1)(setq s (start_dialog) v (get_tile \"snap\"))",
      L"nosuch\nmore\noff\nsnap=2\naccept=3\nunit=km\n\n");
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "dialog \"settings\": no tile \"nosuch\"\n"
            "dialog \"settings\": tile \"more\" is disabled\n"
            "dialog \"settings\": tile \"off\" is disabled\n"
            "dialog \"settings\": tile \"snap\" takes 0 or 1\n"
            "dialog \"settings\": tile \"accept\" takes no value\n"
            "dialog \"settings\": tile \"unit\" has no radio button \"km\"\n");
  EXPECT_EQ(eval(L"s"), L"1");
}

TEST_F(DialogTest, ProgramsSetAndReadTilesBeforeTheDialogShows) {
  run(LR"lsp((new_dialog "settings" id)
(setq a (set_tile "name" "deck") b (set_tile "unit" "m") c (set_tile "nosuch" "x"))
(setq d (list (get_tile "name") (get_tile "mm") (get_tile "m") (get_tile "unit") (get_tile "snap")))
(setq e (action_tile "nosuch" "(princ)"))
(setq pos (done_dialog 3) s (start_dialog)))lsp",
      L"");
  EXPECT_EQ(eval(L"(list a b c e)"), L"(\"deck\" \"m\" nil nil)");
  EXPECT_EQ(eval(L"d"), L"(\"deck\" \"0\" \"1\" \"m\" \"0\")");
  EXPECT_EQ(eval(L"s"), L"3");  // ended before it was shown
  EXPECT_EQ(eval(L"pos"), L"(-1 -1)");
}

TEST_F(DialogTest, NestedDialogsAndTermDialog) {
  const std::wstring program = LR"lsp(
(new_dialog "settings" id)
(action_tile "more" "(new_dialog \"inner\" id) (action_tile \"stop\" \"(term_dialog)\") (setq inner (start_dialog))")
(setq outer (start_dialog)))lsp";
  run(program, L"more\n\n\n");  // the inner dialog's OK, then the outer's
  EXPECT_EQ(eval(L"(list inner outer)"), L"(1 1)");
  run(program, L"more\nstop\n");
  EXPECT_EQ(eval(L"(list inner outer)"), L"(-1 -1)");
}

TEST_F(DialogTest, AnErrorInAnActionIsReportedAndTheDialogGoesOn) {
  const std::wstring printed =
      run(L"(new_dialog \"settings\" id)(action_tile \"more\" \"(car 1)\")(setq s (start_dialog))", L"more\n\n");
  EXPECT_EQ(printed, L"\n; error: bad argument type: consp 1");
  EXPECT_EQ(eval(L"s"), L"1");
}

TEST_F(DialogTest, BrokenFilesAndDialogsAreReportedAndNotShown) {
  kelhost::ClearShownMessageBoxes();
  TempDir::Write(dir.file("broken.dcl"), "b : dialog {\n  : button { key = \"x\" }\n  ok_only;\n}\n");
  TempDir::Write(dir.file("trap.dcl"), "trap : dialog {\n  : button { key = \"x\"; }\n}\n");
  EXPECT_EQ(eval(L"(load_dialog \"" + dir.wfile("broken.dcl") + L"\")"), L"-1");
  EXPECT_EQ(eval(L"(load_dialog \"" + dir.wfile("nothere") + L"\")"), L"-1");
  const std::wstring trap = eval(L"(load_dialog \"" + dir.wfile("trap") + L"\")");
  EXPECT_EQ(eval(L"(new_dialog \"trap\" " + trap + L")"), L"nil");
  EXPECT_EQ(eval(L"(new_dialog \"nosuch\" id)"), L"nil");
  EXPECT_EQ(eval(L"(new_dialog \"settings\" 999)"), L"nil");
  const auto& boxes = kelhost::ShownMessageBoxes();
  ASSERT_EQ(boxes.size(), 2u);
  EXPECT_EQ(boxes[0].text, L"Error in dialog file\n\"" + dir.wfile("broken.dcl") + L"\", line 2:\nsyntax error\nSymbol: \"}\".");
  EXPECT_EQ(boxes[1].text,
            L"Error in dialog file\n\"" + dir.wfile("trap.dcl") + L"\", line 1:\nDialog has neither an OK nor a CANCEL button.");
  EXPECT_EQ(eval(L"(unload_dialog id)"), L"nil");
  EXPECT_EQ(eval(L"(new_dialog \"settings\" id)"), L"nil");  // unloaded
  EXPECT_EQ(eval(L"(new_dialog 1 id)"), L"error: bad argument type: stringp 1");
}

// ------------------------------------------------------------------ the C calls

struct Seen {
  std::wstring events;
  ads_hdlg dialog = nullptr;
};
Seen seen;

void OnTile(ads_callback_packet* p) {
  seen.events += std::wstring(p->value) + L"/" + std::to_wstring(p->reason) + L";";
  if (p->client_data) seen.events += static_cast<const wchar_t*>(p->client_data);
  wchar_t label[16];
  if (ads_get_attr_string(p->tile, L"LABEL", label, 16) == RTNORM) seen.events += label;
}
void OnAccept(ads_callback_packet* p) { ads_done_dialog(p->dialog, 7); }
void OnAnything(ads_callback_packet* p) { seen.events += L"default;"; }

TEST_F(DialogTest, TheCCallsRunCallbacks) {
  int id = 0;
  ASSERT_EQ(ads_load_dialog(dir.wfile("settings").c_str(), &id), RTNORM);
  ads_hdlg d = nullptr;
  ASSERT_EQ(ads_new_dialog(L"settings", id, OnAnything, &d), RTNORM);
  ASSERT_NE(d, nullptr);
  wchar_t data[] = L"[data]";
  EXPECT_EQ(ads_action_tile(d, L"name", OnTile), RTNORM);
  EXPECT_EQ(ads_action_tile(d, L"more", OnTile), RTNORM);
  EXPECT_EQ(ads_client_data_tile(d, L"more", data), RTNORM);
  EXPECT_EQ(ads_action_tile(d, L"accept", OnAccept), RTNORM);
  EXPECT_EQ(ads_set_tile(d, L"name", L"abc"), RTNORM);
  EXPECT_EQ(ads_set_tile(d, L"nosuch", L"x"), RTERROR);
  wchar_t value[3];
  EXPECT_EQ(ads_get_tile(d, L"name", value, 3), RTNORM);
  EXPECT_STREQ(value, L"ab");  // cut to fit
  EXPECT_EQ(ads_mode_tile(d, L"name", 9), RTERROR);

  answers(L"name=xy\nmore\nsnap\n\n");
  seen = Seen();
  int status = -9;
  ASSERT_EQ(ads_start_dialog(d, &status), RTNORM);
  EXPECT_EQ(status, 7);
  EXPECT_EQ(seen.events, L"xy/2;/1;[data]More...default;");
  // The dialog is gone.
  EXPECT_EQ(ads_set_tile(d, L"name", L"x"), RTERROR);
  EXPECT_EQ(ads_start_dialog(d, &status), RTERROR);

  ads_hdlg none = reinterpret_cast<ads_hdlg>(1);
  EXPECT_EQ(ads_new_dialog(L"nosuch", id, NULLCB, &none), RTERROR);
  EXPECT_EQ(none, nullptr);
  EXPECT_EQ(ads_new_dialog(nullptr, id, NULLCB, &none), RTERROR);
  EXPECT_EQ(ads_unload_dialog(id), RTNORM);
  EXPECT_EQ(ads_unload_dialog(id), RTERROR);
  EXPECT_EQ(ads_load_dialog(nullptr, &id), RTERROR);
  EXPECT_LT(id, 0);
}

}  // namespace
