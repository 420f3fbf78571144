// The screen functions: grread reads the user's input as events, grdraw,
// grvecs and grtext draw temporary graphics and texts (kept by
// ads/temporary_graphics.h, as there is no screen), redraw takes them
// away or redraws objects.
//
// grread's events come from the input stream, one line each: a point
// "x,y[,z]" is a pick (3 (x y z)); Enter is the key code 13 (2 13); "^C"
// cancels; any other line is typed, one key (2 code) per call.
#include <deque>

#include "ads/temporary_graphics.h"
#include "arx/acedads.h"
#include "editor/answers.h"
#include "editor/user_input.h"
#include "lisp/machine.h"

namespace kelhost::lisp {
namespace {

ValuePtr PointValue(const double p[3]) {
  ListBuilder b;
  for (int i = 0; i < 3; ++i) b.add(MakeReal(p[i]));
  return b.take();
}

void PointArg(Machine& m, const ValuePtr& v, double p[3]) {
  Args items;
  if (!IsCons(v) || !ListElements(v, items) || items.size() < 2 || items.size() > 3) m.badArgument(L"2D/3D point: ", v);
  p[2] = 0.0;
  for (size_t k = 0; k < items.size(); ++k) {
    if (!IsNumber(items[k])) m.badArgument(L"2D/3D point: ", v);
    p[k] = NumberOf(items[k]);
  }
}

ValuePtr Event(int type, ValuePtr value) {
  ListBuilder b;
  b.add(MakeInt(type));
  b.add(std::move(value));
  return b.take();
}

// Keys typed but not read yet.
std::deque<wchar_t>& PendingKeys() {
  static std::deque<wchar_t> keys;
  return keys;
}

// (grread [track [allkeys [cursor]]])
ValuePtr GrRead(Machine& m, Args& a) {
  if (a.size() > 1 && a[1]) IntArg(m, a[1]);
  if (a.size() > 2 && a[2]) IntArg(m, a[2]);
  std::deque<wchar_t>& keys = PendingKeys();
  if (!keys.empty()) {
    const wchar_t c = keys.front();
    keys.pop_front();
    return Event(2, MakeInt(static_cast<std::int32_t>(c)));
  }
  const editor::ReadInput in = editor::NextInput(true, false);
  const editor::Token& t = in.token;
  switch (t.kind) {
    case editor::Token::kCancel: m.raise(L"Function cancelled");
    case editor::Token::kEnter: return Event(2, MakeInt(13));
    case editor::Token::kPoint:
    case editor::Token::kPick: return Event(3, PointValue(t.value));
    default: break;
  }
  const std::wstring text = t.kind == editor::Token::kText ? t.text : t.asText();
  double p[3] = {0, 0, 0};
  if (editor::ParsePoint(text, p)) return Event(3, PointValue(p));
  for (size_t i = 1; i < text.size(); ++i) keys.push_back(text[i]);
  return Event(2, MakeInt(text.empty() ? 13 : static_cast<std::int32_t>(text[0])));
}

// (grdraw from to color [highlight])
ValuePtr GrDraw(Machine& m, Args& a) {
  ads::TemporaryVector v{};
  PointArg(m, a[0], v.from);
  PointArg(m, a[1], v.to);
  v.color = IntArg(m, a[2]);
  v.highlight = a.size() > 3 && a[3] && !(Is(a[3], Kind::Int) && As<IntValue>(a[3])->value == 0);
  ads::AddTemporaryVector(v);
  return nullptr;
}

// A point through a 4x4 transformation given as a list of rows.
void Transform(const double matrix[4][4], double p[3]) {
  double out[3];
  for (int r = 0; r < 3; ++r)
    out[r] = matrix[r][0] * p[0] + matrix[r][1] * p[1] + matrix[r][2] * p[2] + matrix[r][3];
  for (int i = 0; i < 3; ++i) p[i] = out[i];
}

// (grvecs (color from to [color] from to ...) [matrix]): a color applies
// to the vectors after it; a negative one highlights them.
ValuePtr GrVecs(Machine& m, Args& a) {
  const Args items = ListArg(m, a[0]);
  double matrix[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
  const bool transform = a.size() > 1 && a[1];
  if (transform) {
    const Args rows = ListArg(m, a[1]);
    if (rows.size() != 4) m.badArgument(L"transformation matrix: ", a[1]);
    for (int r = 0; r < 4; ++r) {
      Args cols;
      if (!ListElements(rows[static_cast<size_t>(r)], cols) || cols.size() != 4)
        m.badArgument(L"transformation matrix: ", a[1]);
      for (int c = 0; c < 4; ++c) matrix[r][c] = NumArg(m, cols[static_cast<size_t>(c)]);
    }
  }
  std::vector<ads::TemporaryVector> vectors;
  int color = 7;
  for (size_t k = 0; k < items.size();) {
    if (Is(items[k], Kind::Int)) {
      color = As<IntValue>(items[k])->value;
      ++k;
      continue;
    }
    if (k + 1 >= items.size()) m.badArgument(L"2D/3D point: ", items[k]);
    ads::TemporaryVector v{};
    PointArg(m, items[k], v.from);
    PointArg(m, items[k + 1], v.to);
    if (transform) {
      Transform(matrix, v.from);
      Transform(matrix, v.to);
    }
    v.color = color < 0 ? -color : color;
    v.highlight = color < 0;
    vectors.push_back(v);
    k += 2;
  }
  for (const auto& v : vectors) ads::AddTemporaryVector(v);
  return nullptr;
}

// (grtext [box text [highlight]]): the status line (-1) and coordinates
// (-2) take any text; there is no screen menu (boxes 0 and up).
ValuePtr GrText(Machine& m, Args& a) {
  if (a.empty()) return nullptr;
  if (a.size() < 2) m.raise(L"too few arguments");
  const std::int32_t box = IntArg(m, a[0]);
  const std::wstring& text = StrArg(m, a[1]);
  if (a.size() > 2 && a[2]) IntArg(m, a[2]);
  if (box != -1 && box != -2) return nullptr;
  ads::SetScreenText(box, text);
  return a[1];
}

// (redraw [ename [mode]])
ValuePtr Redraw(Machine& m, Args& a) {
  ads_name name = {0, 0};
  int mode = 1;
  if (!a.empty() && a[0]) {
    if (!Is(a[0], Kind::Ename)) m.badArgument(L"lentityp ", a[0]);
    name[0] = As<NameValue>(a[0])->name[0];
    name[1] = As<NameValue>(a[0])->name[1];
  }
  if (a.size() > 1 && a[1]) mode = IntArg(m, a[1]);
  acedRedraw(name, mode);
  return nullptr;
}

}  // namespace

void RegisterScreenBuiltins(Machine& m) {
  m.defineBuiltin(L"GRREAD", GrRead, 0, 3);
  m.defineBuiltin(L"GRDRAW", GrDraw, 3, 4);
  m.defineBuiltin(L"GRVECS", GrVecs, 1, 2);
  m.defineBuiltin(L"GRTEXT", GrText, 0, 3);
  m.defineBuiltin(L"REDRAW", Redraw, 0, 2);
}

}  // namespace kelhost::lisp
