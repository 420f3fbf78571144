#include "editor/commands/draw_prompts.h"

#include <cmath>
#include <cstdio>
#include <string>

#include "arx/acedads.h"
#include "arx/acutads.h"
#include "editor/answers.h"

namespace kelhost::editor {
namespace {

int ShortVar(const wchar_t* name, int fallback) {
  resbuf rb{};
  return acedGetVar(name, &rb) == RTNORM && rb.restype == RTSHORT ? rb.resval.rint : fallback;
}

}  // namespace

std::wstring DistanceText(double value) {
  // Prompts show every decimal place of LUPREC: DIMZIN, which acutRToS
  // honours, is for dimensions.
  const int units = ShortVar(L"LUNITS", 2), precision = ShortVar(L"LUPREC", 4);
  if (units == 2 && precision >= 0 && precision <= 8 && std::isfinite(value)) {
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.*f", precision, value);
    std::string text(buf);
    if (text[0] == '-' && text.find_first_of("123456789") == std::string::npos) text.erase(0, 1);  // no "-0.0000"
    return std::wstring(text.begin(), text.end());
  }
  ACHAR buf[128];
  return acutRToS(value, -1, -1, buf, 128) == RTNORM ? buf : std::to_wstring(value);
}

std::wstring AngleText(double radians) {
  ACHAR buf[128];
  return acutAngToS(radians, -1, -1, buf, 128) == RTNORM ? buf : std::to_wstring(radians);
}

std::wstring Default(const std::wstring& text) { return L" <" + text + L">"; }

Answer AskDirection(CommandContext& c, const std::wstring& prompt, const double* base, const std::wstring& keywords,
                    int flags) {
  Request r;
  r.want = Want::kOrient;
  r.prompt = prompt;
  r.keywords = Keywords(keywords);
  r.flags = flags;
  if (base) {
    r.hasBase = true;
    for (int i = 0; i < 3; ++i) r.base[i] = base[i];
  }
  return c.ask(r);
}

double AskIncludedAngle(CommandContext& c, const std::wstring& prompt, const double* base) {
  // An angle prompt folds its answer into a full turn; the sign matters
  // here, so the answer is read as text.
  Request probe;
  probe.want = Want::kAngle;
  probe.hasBase = base != nullptr;
  for (;;) {
    const Answer a = c.askString(prompt);
    double p[3], angle = 0;
    // acutAngToF folds into one turn: read the magnitude, keep the sign.
    const size_t start = a.text.find_first_not_of(L" \t");
    const bool negative = start != std::wstring::npos && a.text[start] == L'-';
    const std::wstring magnitude = negative ? a.text.substr(start + 1) : a.text;
    if (!magnitude.empty() && acutAngToF(magnitude.c_str(), -1, &angle) == RTNORM) {
      resbuf rb{};
      const bool clockwise = acedGetVar(L"ANGDIR", &rb) == RTNORM && rb.restype == RTSHORT && rb.resval.rint == 1;
      if (negative) angle = -angle;
      return clockwise ? -angle : angle;
    }
    if (base && !a.text.empty() && ParsePoint(a.text, p)) return std::atan2(p[1] - base[1], p[0] - base[0]);
    c.print(L"\n" + WrongAnswerMessage(probe));
  }
}

}  // namespace kelhost::editor
