// User input from AutoLISP: initget, getpoint, getcorner, getdist,
// getangle, getorient, getreal, getint, getstring, getkword and entsel.
// Each is the application call of the same name, so AutoLISP and
// applications see the same prompts, conditions and answers: Enter gives
// nil, a keyword its name, and cancel the error "Function cancelled".
#include "arx/acedads.h"
#include "lisp/machine.h"

namespace kelhost::lisp {
namespace {

// The documented result buffers of the text calls.
constexpr size_t kTextBuffer = 133;

ValuePtr PointValue(const ads_point p) {
  ListBuilder b;
  for (int i = 0; i < 3; ++i) b.add(MakeReal(p[i]));
  return b.take();
}

// A 2D or 3D point argument (a 2D point lies at z 0).
void PointArg(Machine& m, const ValuePtr& v, ads_point p) {
  Args items;
  if (!IsCons(v) || !ListElements(v, items) || items.size() < 2 || items.size() > 3) m.badArgument(L"2D/3D point: ", v);
  p[2] = 0.0;
  for (size_t k = 0; k < items.size(); ++k) {
    if (!IsNumber(items[k])) m.badArgument(L"2D/3D point: ", v);
    p[k] = NumberOf(items[k]);
  }
}

// ([pt] [msg]): the base point comes first; a lone string is the message.
struct PointPrompt {
  bool hasBase = false;
  ads_point base = {0, 0, 0};
  std::wstring msg;
  bool hasMsg = false;
  const double* basePtr() const { return hasBase ? base : nullptr; }
  const ACHAR* prompt() const { return hasMsg ? msg.c_str() : nullptr; }
};

PointPrompt PointAndMessage(Machine& m, Args& a, bool baseRequired) {
  PointPrompt pp;
  size_t i = 0;
  if (baseRequired || a.size() == 2 || (a.size() == 1 && !Is(a[0], Kind::Str))) {
    if (a[0] || baseRequired) {
      PointArg(m, a[0], pp.base);
      pp.hasBase = true;
    }
    i = 1;
  }
  if (i < a.size()) {
    pp.msg = StrArg(m, a[i]);
    pp.hasMsg = true;
  }
  return pp;
}

const ACHAR* MessageArg(Machine& m, Args& a, std::wstring& holder) {
  if (a.empty()) return nullptr;
  holder = StrArg(m, a[0]);
  return holder.c_str();
}

// What every input function makes of the call's status.
ValuePtr InputResult(Machine& m, int status, ValuePtr value) {
  switch (status) {
    case RTNORM: return value;
    case RTKWORD: {
      ACHAR text[kTextBuffer] = {0};
      acedGetInput(text, kTextBuffer);  // a longer text is cut to the buffer
      return MakeStr(text);
    }
    case RTCAN: m.raise(L"Function cancelled");
    default: return nullptr;  // Enter, or nothing picked
  }
}

ValuePtr InitGet(Machine& m, Args& a) {
  int bits = 0;
  std::wstring keywords;
  size_t i = 0;
  if (i < a.size() && !Is(a[i], Kind::Str)) bits = IntArg(m, a[i++]);
  if (i < a.size()) keywords = StrArg(m, a[i++]);
  if (i < a.size()) m.badArgument(L"stringp ", a[i]);  // the keywords come last
  acedInitGet(bits, keywords.c_str());
  return nullptr;
}

ValuePtr GetPoint(Machine& m, Args& a) {
  const PointPrompt pp = PointAndMessage(m, a, false);
  ads_point p;
  const int status = acedGetPoint(pp.basePtr(), pp.prompt(), p);
  return InputResult(m, status, status == RTNORM ? PointValue(p) : nullptr);
}

ValuePtr GetCorner(Machine& m, Args& a) {
  const PointPrompt pp = PointAndMessage(m, a, true);
  ads_point p;
  const int status = acedGetCorner(pp.basePtr(), pp.prompt(), p);
  return InputResult(m, status, status == RTNORM ? PointValue(p) : nullptr);
}

template <int (*Call)(const ads_point, const ACHAR*, ads_real*)>
ValuePtr GetMeasure(Machine& m, Args& a) {
  const PointPrompt pp = PointAndMessage(m, a, false);
  ads_real v = 0;
  const int status = Call(pp.basePtr(), pp.prompt(), &v);
  return InputResult(m, status, MakeReal(v));
}

ValuePtr GetReal(Machine& m, Args& a) {
  std::wstring msg;
  ads_real v = 0;
  const int status = acedGetReal(MessageArg(m, a, msg), &v);
  return InputResult(m, status, MakeReal(v));
}

ValuePtr GetInt(Machine& m, Args& a) {
  std::wstring msg;
  int v = 0;
  const int status = acedGetInt(MessageArg(m, a, msg), &v);
  return InputResult(m, status, MakeInt(v));
}

// (getstring [cr] [msg]): with one argument a string is the message.
ValuePtr GetString(Machine& m, Args& a) {
  bool spaces = false;
  std::wstring msg;
  const ACHAR* prompt = nullptr;
  if (a.size() == 2 || (a.size() == 1 && !Is(a[0], Kind::Str))) spaces = a[0] != nullptr;
  if (a.size() == 2 || (a.size() == 1 && Is(a[0], Kind::Str))) {
    msg = StrArg(m, a.back());
    prompt = msg.c_str();
  }
  ACHAR text[kTextBuffer];
  const int status = acedGetString(spaces ? 1 : 0, prompt, text);
  // Enter gives the empty string, which programs test for.
  return InputResult(m, status, status == RTNORM ? MakeStr(text) : nullptr);
}

ValuePtr GetKword(Machine& m, Args& a) {
  std::wstring msg;
  ACHAR text[kTextBuffer];
  const int status = acedGetKword(MessageArg(m, a, msg), text, kTextBuffer);
  return InputResult(m, status == RTINPUTTRUNCATED ? RTNORM : status, MakeStr(text));
}

ValuePtr EntSel(Machine& m, Args& a) {
  std::wstring msg;
  ads_name name;
  ads_point p;
  const int status = acedEntSel(MessageArg(m, a, msg), name, p);
  if (status != RTNORM) return InputResult(m, status, nullptr);
  ListBuilder b;
  b.add(std::make_shared<NameValue>(Kind::Ename, name));
  b.add(PointValue(p));
  return b.take();
}

}  // namespace

void RegisterInputBuiltins(Machine& m) {
  m.defineBuiltin(L"INITGET", InitGet, 0, 2);
  m.defineBuiltin(L"GETPOINT", GetPoint, 0, 2);
  m.defineBuiltin(L"GETCORNER", GetCorner, 1, 2);
  m.defineBuiltin(L"GETDIST", GetMeasure<acedGetDist>, 0, 2);
  m.defineBuiltin(L"GETANGLE", GetMeasure<acedGetAngle>, 0, 2);
  m.defineBuiltin(L"GETORIENT", GetMeasure<acedGetOrient>, 0, 2);
  m.defineBuiltin(L"GETREAL", GetReal, 0, 1);
  m.defineBuiltin(L"GETINT", GetInt, 0, 1);
  m.defineBuiltin(L"GETSTRING", GetString, 0, 2);
  m.defineBuiltin(L"GETKWORD", GetKword, 0, 1);
  m.defineBuiltin(L"ENTSEL", EntSel, 0, 1);
}

}  // namespace kelhost::lisp
