// The command processor: commands started by calls, by the user and by
// applications; waiting for answers; cancel; the reactors and the
// variables that watch commands.
#include <string>
#include <vector>

#include "arx/acdocman.h"
#include "editor/builtin_commands.h"
#include "editor/command_tokens.h"
#include "editor_fixture.h"

using kelhost::editor::RunCommandCall;
using kelhost::editor::Token;
using kelhost::editor::TokenFeed;

namespace {

using namespace kelhost::editor;

// A command with a dialog form, and one that fails.
void RunDialogForm(CommandContext& c) { c.print(L"\ncommand-line form"); }
void RunFailing(CommandContext& c) {
  c.askPoint(L"\nPoint: ");
  c.fail(L"\nThat did not work.");
}
// Asks for one point and shows the transparent command's effect.
void RunTransparentProbe(CommandContext& c) { c.print(L"\n[probe]"); }

KELHOST_BUILTIN_COMMAND(TestDialog, {L"KTESTDIALOG", RunDialogForm, true, false});
KELHOST_BUILTIN_COMMAND(TestFailing, {L"KTESTFAIL", RunFailing, false, false});
KELHOST_BUILTIN_COMMAND(TestProbe, {L"KTESTPROBE", RunTransparentProbe, false, true});

std::vector<Token> Texts(std::initializer_list<const wchar_t*> texts) {
  std::vector<Token> tokens;
  for (const wchar_t* t : texts) tokens.push_back(std::wstring(t) == L"\\" ? Token::Of(Token::kPause) : Token::Text(t));
  return tokens;
}

class Recorder : public AcEditorReactor {
 public:
  void commandWillStart(const ACHAR* c) override { log += L"start:" + std::wstring(c) + L" "; }
  void commandEnded(const ACHAR* c) override { log += L"ended:" + std::wstring(c) + L" "; }
  void commandCancelled(const ACHAR* c) override { log += L"cancelled:" + std::wstring(c) + L" "; }
  void commandFailed(const ACHAR* c) override { log += L"failed:" + std::wstring(c) + L" "; }
  std::wstring log;
};

class Processor : public EditorTest {
 protected:
  void SetUp() override {
    EditorTest::SetUp();
    acedEditor->addReactor(&reactor);
  }
  void TearDown() override {
    acedEditor->removeReactor(&reactor);
    EditorTest::TearDown();
  }
  std::wstring var(const wchar_t* name) { return eval(std::wstring(L"(getvar \"") + name + L"\")"); }
  Recorder reactor;
};

}  // namespace

TEST_F(Processor, ACommandCallLeavesItsCommandWaitingForTheNextCall) {
  EXPECT_EQ(RunCommandCall(Texts({L"LINE", L"0,0"}), TokenFeed::WhenEmpty::kWait), RTNORM);
  EXPECT_TRUE(CommandWaiting());
  EXPECT_EQ(var(L"CMDNAMES"), L"\"LINE\"");
  EXPECT_EQ(var(L"CMDACTIVE"), L"1");
  EXPECT_EQ(RunCommandCall(Texts({L"5,0", L"5,5"}), TokenFeed::WhenEmpty::kWait), RTNORM);
  EXPECT_EQ(entityCount(), 2);  // each segment is made as it is given
  EXPECT_EQ(RunCommandCall(Texts({L""}), TokenFeed::WhenEmpty::kWait), RTNORM);
  EXPECT_FALSE(CommandWaiting());
  EXPECT_EQ(var(L"CMDNAMES"), L"\"\"");
  EXPECT_EQ(reactor.log, L"start:LINE ended:LINE ");
}

TEST_F(Processor, ASubroutineCallCancelsTheCommandItDoesNotFinish) {
  EXPECT_EQ(RunCommandCall(Texts({L"LINE", L"0,0"}), TokenFeed::WhenEmpty::kCancel), RTCAN);
  EXPECT_FALSE(CommandWaiting());
  EXPECT_EQ(entityCount(), 0);
  EXPECT_EQ(reactor.log, L"start:LINE cancelled:LINE ");
  const ads_point a = {0, 0, 0}, b = {3, 4, 0};
  EXPECT_EQ(acedCommandS(RTSTR, L"_.LINE", RTPOINT, a, RT3DPOINT, b, RTSTR, L"", RTNONE), RTNORM);
  EXPECT_EQ(entityCount(), 1);
  resbuf* chain = acutBuildList(RTSTR, L"line", RTSTR, L"1,1", RTSTR, L"2,2", RTNONE);
  ASSERT_NE(chain, nullptr);
  resbuf* enter = acutNewRb(RTNONE);
  chain->rbnext->rbnext->rbnext = enter;  // an RTNONE node is Enter in a chain
  EXPECT_EQ(acedCmdS(chain), RTNORM);
  acutRelRb(chain);
  EXPECT_EQ(entityCount(), 2);
}

TEST_F(Processor, UnknownNamesAreRefusedWithThePlatformsMessage) {
  EXPECT_EQ(RunCommandCall(Texts({L"NOSUCH", L"1"}), TokenFeed::WhenEmpty::kCancel), RTREJ);
  EXPECT_EQ(out, L"\nUnknown command \"NOSUCH\".  Press F1 for help.");
  EXPECT_FALSE(RunTypedCommand(L"-LINE"));  // LINE has no dialog, so no "-" form
  EXPECT_TRUE(RunTypedCommand(L"-ktestdialog"));
  EXPECT_TRUE(RunTypedCommand(L"_.KTestDialog"));
  EXPECT_TRUE(IsCommandName(L"._LINE"));
  EXPECT_FALSE(IsCommandName(L"LINEX"));
}

TEST_F(Processor, CmdechoHidesThePromptsOfCallsButNotOfTypedCommands) {
  eval(L"(setvar \"CMDECHO\" 0)");
  out.clear();
  RunCommandCall(Texts({L"LINE", L"0,0", L"1,0", L""}), TokenFeed::WhenEmpty::kWait);
  EXPECT_EQ(out, L"");
  answers(L"2,2\n3,3\n\n");
  RunTypedCommand(L"LINE");
  EXPECT_EQ(out,
            L"\nSpecify first point: 2,2\nSpecify next point or [Undo]: 3,3\nSpecify next point or [Undo]: ");
  eval(L"(setvar \"CMDECHO\" 1)");
  out.clear();
  RunCommandCall(Texts({L"line", L"0,0", L"1,0", L""}), TokenFeed::WhenEmpty::kWait);
  EXPECT_EQ(out, L"\nline\nSpecify first point: 0,0\nSpecify next point or [Undo]: 1,0\n"
                 L"Specify next point or [Undo]: ");
}

TEST_F(Processor, PauseHandsThePromptToTheUserEvenWithoutEcho) {
  eval(L"(setvar \"CMDECHO\" 0)");
  answers(L"7,7\n");
  EXPECT_EQ(RunCommandCall(Texts({L"LINE", L"0,0", L"\\", L""}), TokenFeed::WhenEmpty::kCancel), RTNORM);
  EXPECT_EQ(entityCount(), 1);
  EXPECT_EQ(out, L"\nSpecify next point or [Undo]: 7,7");
}

TEST_F(Processor, WrongAnswersAreRefusedAndTheEndOfInputCancels) {
  answers(L"here\n0,0\n(list 4 3)\n");
  EXPECT_TRUE(RunTypedCommand(L"LINE"));
  EXPECT_EQ(out, L"\nSpecify first point: here\nInvalid point.\nSpecify first point: 0,0"
                 L"\nSpecify next point or [Undo]: (list 4 3)\nSpecify next point or [Undo]: \n*Cancel*");
  EXPECT_EQ(entityCount(), 1);  // the segment given before the cancel stays
  EXPECT_TRUE(InputEndedInsideCommand());
  EXPECT_EQ(reactor.log, L"start:LINE cancelled:LINE ");
}

TEST_F(Processor, AFailedCommandTellsTheReactors) {
  answers(L"1,1\n");
  RunTypedCommand(L"KTESTFAIL");
  EXPECT_EQ(reactor.log, L"start:KTESTFAIL failed:KTESTFAIL ");
  EXPECT_NE(out.find(L"That did not work."), std::wstring::npos);
}

TEST_F(Processor, ATransparentCommandRunsInsideAPromptWithTheSameAnswers) {
  EXPECT_EQ(RunCommandCall(Texts({L"LINE", L"'ktestprobe", L"0,0", L"1,1", L""}), TokenFeed::WhenEmpty::kCancel),
            RTNORM);
  EXPECT_EQ(reactor.log, L"start:LINE start:KTESTPROBE ended:KTESTPROBE ended:LINE ");
  reactor.log.clear();
  answers(L"'ktestprobe\n0,0\n1,1\n\n");
  out.clear();
  RunTypedCommand(L"LINE");
  EXPECT_EQ(entityCount(), 2);
  EXPECT_EQ(out, L"\nSpecify first point: 'ktestprobe\n[probe]\nResuming LINE command.\nSpecify first point: 0,0"
                 L"\nSpecify next point or [Undo]: 1,1\nSpecify next point or [Undo]: ");
  EXPECT_EQ(reactor.log, L"start:LINE start:KTESTPROBE ended:KTESTPROBE ended:LINE ");
  EXPECT_FALSE(RunTransparentCommand(L"LINE"));  // not a transparent command
}

TEST_F(Processor, CommandOfAutoLispWaitsAndGetsTheNextCallsAnswers) {
  EXPECT_EQ(eval(L"(command \"_line\" '(0 0))"), L"nil");
  EXPECT_TRUE(CommandWaiting());
  EXPECT_EQ(eval(L"(vl-cmdf '(3 0) \"\")"), L"T");
  EXPECT_FALSE(CommandWaiting());
  EXPECT_EQ(entityCount(), 1);
  EXPECT_EQ(eval(L"(command \"line\" '(0 0))"), L"nil");
  EXPECT_EQ(eval(L"(command)"), L"nil");  // Escape
  EXPECT_FALSE(CommandWaiting());
  EXPECT_EQ(eval(L"(command-s \"line\" '(0 0) '(1 1) \"\")"), L"nil");
  EXPECT_EQ(entityCount(), 2);
  EXPECT_EQ(eval(L"(command-s \"line\" '(0 0))"), L"error: Function cancelled");
  EXPECT_EQ(entityCount(), 2);
}

TEST_F(Processor, TextSentToExecuteWaitsUntilAutoLispReturns) {
  answers(L"5,5\n");
  ASSERT_EQ(acDocManager->sendStringToExecute(acDocManager->curDocument(), L"(setq later 1) ", true, false, false),
            Acad::eOk);
  // A prompt asked while AutoLISP runs reads the user, not the queued text.
  EXPECT_EQ(eval(L"(getpoint)"), L"(5.0 5.0 0.0)");
  EXPECT_EQ(eval(L"later"), L"nil");
  EXPECT_TRUE(EvaluateAtPrompt(L"(princ)", false));
  EXPECT_EQ(eval(L"later"), L"1");
}
