#include "editor/prompter.h"

#include "app/command_line.h"
#include "arx/acedads.h"
#include "arx/acutads.h"
#include "editor/answers.h"
#include "editor/command_processor.h"
#include "editor/command_tokens.h"
#include "editor/user_input.h"
#include "kelhost/host.h"
#include "kelhost/lisp.h"
#include "kelhost/sysvars.h"

namespace kelhost::editor {
namespace {

// An answer as it arrived.
struct Arrival {
  Token token;
  bool typed = false;   // the user gave it
  bool echoed = false;  // and the terminal showed it
};

// AutoLISP given as an answer: its value stands for what was typed.
Token Evaluated(const std::wstring& text) {
  const std::wstring source = text[0] == L'!' ? text.substr(1) : text;
  resbuf* value = nullptr;
  lisp::Outcome o = Host::instance().lisp().evalToChain(source, &value);
  Token t;
  if (!o.ok || !value || !TokenFromChain(value, t)) t = Token::Text(o.ok ? o.valueText : text);
  acutRelRb(value);
  return t;
}

void RememberPoint(const double p[3]) {
  resbuf rb{};
  rb.restype = RT3DPOINT;
  for (int i = 0; i < 3; ++i) rb.resval.rpoint[i] = p[i];
  sysvars::SetHostVar(L"LASTPOINT", &rb);
}

}  // namespace

void Say(const std::wstring& text) { app::WriteCommandLine(text); }

Answer Ask(const Request& r, bool quiet) {
  bool shown = false;
  auto show = [&] {
    if (!shown) Say(r.prompt);
    shown = true;
  };
  for (;;) {
    RunningCommand* command = ExecutingCommand();
    TokenFeed* feed = command ? command->feed : nullptr;
    Arrival in;
    if (feed && feed->next(in.token)) {
      if (!quiet) show();
    } else if (feed && feed->whenEmpty() == TokenFeed::WhenEmpty::kWait && command->fiber &&
               !command->transparent && Fiber::current() == command->fiber.get()) {
      if (!quiet) show();
      WaitForAnswers(*command);  // a new call, or the user, feeds it now
      continue;
    } else if (feed && feed->whenEmpty() == TokenFeed::WhenEmpty::kCancel && !command->application &&
               !command->transparent) {
      in.token = Token::Of(Token::kCancel);
    } else {
      in.token = Token::Of(Token::kPause);
    }
    if (in.token.kind == Token::kPause) {
      show();
      ReadInput read = NextInput(r.spaces, false);
      in.token = read.token;
      in.typed = true;
      in.echoed = read.echoed;
    }
    const bool visible = shown;
    std::wstring typedText = in.token.kind == Token::kText ? in.token.text : L"";
    // 'NAME runs a transparent command, from a call's answers too.
    if (in.token.kind == Token::kText && r.want != Want::kString && typedText.size() > 1 && typedText[0] == L'\'') {
      if (IsTransparentCommand(typedText.substr(1))) {
        if (visible && !in.echoed) Say(typedText);
        RunTransparentCommand(typedText.substr(1));
        shown = false;
        continue;
      }
    }
    if (in.typed && in.token.kind == Token::kText && r.want != Want::kString && !typedText.empty()) {
      if (typedText[0] == L'(' || typedText[0] == L'!') {
        if (visible && !in.echoed) Say(typedText);
        in.echoed = true;
        // A prompt that AutoLISP code asked cannot run AutoLISP itself.
        if (Host::instance().lisp().evaluating()) {
          Say(L"\nCan't reenter LISP.");
          shown = false;
          continue;
        }
        in.token = Evaluated(typedText);
      }
    }
    Answer a;
    std::wstring message;
    Resolution res = Resolve(r, in.token, a, message);
    // What was given shows after the prompt, as typed (or as the call gave
    // text and numbers).
    if (visible && !in.echoed) {
      if (in.typed) Say(in.token.kind == Token::kText ? in.token.text : L"");
      else if (in.token.kind == Token::kText || in.token.kind == Token::kReal || in.token.kind == Token::kInt)
        Say(in.token.asText());
    }
    if (res == Resolution::kNeedsSecondPoint) {
      Request second;
      second.want = Want::kPoint;
      second.prompt = L"\nSpecify second point: ";
      second.hasBase = true;
      for (int i = 0; i < 3; ++i) second.base[i] = a.point[i];
      const double first[3] = {a.point[0], a.point[1], a.point[2]};
      Answer b = Ask(second, quiet);
      if (b.status == RTCAN) return b;
      if (b.status != RTNORM) {
        Say(L"\n" + WrongAnswerMessage(r));
        shown = false;
        continue;
      }
      res = ResolveSecondPoint(r, first, b.point, a, message);
    }
    if (res == Resolution::kRefused) {
      if (!shown) show();
      Say(L"\n" + message);
      shown = false;
      continue;
    }
    if (a.status == RTNORM && (r.want == Want::kPoint || r.want == Want::kCorner)) RememberPoint(a.point);
    return a;
  }
}

}  // namespace kelhost::editor
