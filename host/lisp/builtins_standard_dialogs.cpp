// The platform's standard dialogs, answered from the input stream as the
// headless dialogs are (one line each; Enter is OK with what the dialog
// shows, "^C" is Cancel): getfiled (a file name), acad_colordlg (a colour
// number or name), acad_truecolordlg (the same, or "r,g,b"). An answer a
// dialog cannot take is reported on standard error and the next line is
// read. menucmd: DIESEL expressions; no menus are loaded.
#include <sys/stat.h>

#include <cstdio>
#include <cwctype>

#include "arx/dbcolor.h"
#include "editor/user_input.h"
#include "kelhost/paths.h"
#include "kelhost/text.h"
#include "lisp/diesel.h"
#include "lisp/machine.h"

namespace kelhost::lisp {
namespace {

// The next answer: false for Cancel (or the end of the input).
bool NextAnswer(std::wstring& text) {
  const editor::ReadInput in = editor::NextInput(true, false);
  if (in.token.kind == editor::Token::kCancel) return false;
  text = in.token.kind == editor::Token::kText ? in.token.text
         : in.token.kind == editor::Token::kEnter ? std::wstring() : in.token.asText();
  return true;
}

void Refuse(const wchar_t* dialog, const std::wstring& answer, const wchar_t* why) {
  const std::string line = ToUtf8(std::wstring(dialog) + L": \"" + answer + L"\" " + why + L"\n");
  std::fwrite(line.data(), 1, line.size(), stderr);
}

std::wstring Trimmed(const std::wstring& s) {
  size_t a = 0, b = s.size();
  while (a < b && std::iswspace(s[a])) ++a;
  while (b > a && std::iswspace(s[b - 1])) --b;
  return s.substr(a, b - a);
}

bool HasExtension(const std::wstring& name) {
  const size_t dot = name.rfind(L'.');
  const size_t slash = name.find_last_of(L"\\/");
  return dot != std::wstring::npos && (slash == std::wstring::npos || dot > slash);
}

// (getfiled title default ext flags): flags 1 asks for a new file (any
// name), otherwise the file must exist; 4 takes any extension, otherwise
// ext is added to a name without one.
ValuePtr GetFiled(Machine& m, Args& a) {
  StrArg(m, a[0]);
  const std::wstring& fallback = StrArg(m, a[1]);
  const std::wstring& ext = StrArg(m, a[2]);
  const std::int32_t flags = IntArg(m, a[3]);
  for (;;) {
    std::wstring name;
    if (!NextAnswer(name)) return nullptr;
    name = Trimmed(name);
    if (name.empty()) name = fallback;
    if (name.empty()) {
      Refuse(L"getfiled", name, L"names no file");
      continue;
    }
    if (!HasExtension(name) && !(flags & 4) && !ext.empty() && ext != L"*") name += L"." + ext;
    struct stat st;
    const bool exists = ::stat(NativePath(name).c_str(), &st) == 0 && !S_ISDIR(st.st_mode);
    if (!(flags & 1) && !exists) {
      Refuse(L"getfiled", name, L"is no file");
      continue;
    }
    return MakeStr(name);
  }
}

// A colour typed as a number (0 BYBLOCK to 256 BYLAYER) or a name.
int ColorNumber(const std::wstring& text) {
  static const wchar_t* kNamed[] = {L"RED", L"YELLOW", L"GREEN", L"CYAN", L"BLUE", L"MAGENTA", L"WHITE"};
  const std::wstring upper = ToUpper(Trimmed(text));
  if (upper == L"BYLAYER") return 256;
  if (upper == L"BYBLOCK") return 0;
  for (int i = 0; i < 7; ++i)
    if (upper == kNamed[i]) return i + 1;
  if (upper.empty() || upper.size() > 3 || upper.find_first_not_of(L"0123456789") != std::wstring::npos) return -1;
  const int n = std::stoi(upper);
  return n <= 256 ? n : -1;
}

// (acad_colordlg color [allowbylayer]): the colour chosen; nil for Cancel.
ValuePtr ColorDlg(Machine& m, Args& a) {
  const std::int32_t initial = IntArg(m, a[0]);
  const bool byAllowed = a.size() < 2 || a[1];
  for (;;) {
    std::wstring text;
    if (!NextAnswer(text)) return nullptr;
    const int color = Trimmed(text).empty() ? initial : ColorNumber(text);
    if (color < 0 || color > 256 || (!byAllowed && (color == 0 || color == 256))) {
      Refuse(L"acad_colordlg", text, L"is no colour the dialog offers");
      continue;
    }
    return MakeInt(color);
  }
}

// The colour index whose palette colour is nearest to rgb.
int NearestIndex(std::int32_t rgb) {
  const int r = (rgb >> 16) & 255, g = (rgb >> 8) & 255, b = rgb & 255;
  int best = 7;
  long bestDistance = -1;
  for (int i = 1; i < 256; ++i) {
    const Adesk::UInt32 c = AcCmEntityColor::lookUpRGB(static_cast<Adesk::UInt8>(i));
    const long dr = static_cast<long>((c >> 16) & 255) - r, dg = static_cast<long>((c >> 8) & 255) - g,
               db = static_cast<long>(c & 255) - b;
    const long d = dr * dr + dg * dg + db * db;
    if (bestDistance < 0 || d < bestDistance) {
      bestDistance = d;
      best = i;
    }
  }
  return best;
}

ValuePtr Pair(int code, ValuePtr value) { return MakeCons(MakeInt(code), std::move(value)); }

// "r,g,b" as a 24-bit colour; -1 for anything else.
std::int32_t ParseRgb(const std::wstring& text) {
  int parts[3];
  size_t at = 0;
  const std::wstring s = Trimmed(text);
  for (int i = 0; i < 3; ++i) {
    size_t used = 0;
    try {
      parts[i] = std::stoi(s.substr(at), &used);
    } catch (...) {
      return -1;
    }
    if (used == 0 || parts[i] < 0 || parts[i] > 255) return -1;
    at += used;
    if (i < 2) {
      if (at >= s.size() || s[at] != L',') return -1;
      ++at;
    }
  }
  return at == s.size() ? (parts[0] << 16) | (parts[1] << 8) | parts[2] : -1;
}

// (acad_truecolordlg color [allowbylayer [bylayercolor]]): color is
// (62 . index) or (420 . rgb); the result ((62 . index)) or, for a true
// colour, ((62 . nearest-index) (420 . rgb)); nil for Cancel.
ValuePtr TrueColorDlg(Machine& m, Args& a) {
  if (!IsCons(a[0]) || !Is(AsCons(a[0])->car, Kind::Int) || !Is(AsCons(a[0])->cdr, Kind::Int))
    m.badArgument(L"consp ", a[0]);
  const int code = As<IntValue>(AsCons(a[0])->car)->value;
  const std::int32_t value = As<IntValue>(AsCons(a[0])->cdr)->value;
  if (code != 62 && code != 420) m.raise(L"bad argument value: " + m.printed(a[0]));
  const bool byAllowed = a.size() < 2 || a[1];
  for (;;) {
    std::wstring text;
    if (!NextAnswer(text)) return nullptr;
    ListBuilder out;
    std::int32_t rgb = -1;
    int index;
    if (Trimmed(text).empty()) {
      if (code == 420) rgb = value;
      index = code == 62 ? value : NearestIndex(value);
    } else if ((rgb = ParseRgb(text)) >= 0) {
      index = NearestIndex(rgb);
    } else {
      index = ColorNumber(text);
    }
    if (index < 0 || index > 256 || (!byAllowed && (index == 0 || index == 256))) {
      Refuse(L"acad_truecolordlg", text, L"is no colour the dialog offers");
      continue;
    }
    out.add(Pair(62, MakeInt(index)));
    if (rgb >= 0) out.add(Pair(420, MakeInt(rgb)));
    return out.take();
  }
}

// (menucmd text): "M=expression" evaluates a DIESEL expression; menus
// themselves are not loaded in a session without a screen, so every other
// menu command has nothing to show, change or ask about.
ValuePtr MenuCmd(Machine& m, Args& a) {
  const std::wstring& text = StrArg(m, a[0]);
  if (text.size() >= 2 && (text[0] == L'M' || text[0] == L'm') && text[1] == L'=') return MakeStr(EvaluateDiesel(text.substr(2)));
  return nullptr;
}

}  // namespace

void RegisterStandardDialogBuiltins(Machine& m) {
  m.defineBuiltin(L"GETFILED", GetFiled, 4, 4);
  m.defineBuiltin(L"ACAD_COLORDLG", ColorDlg, 1, 2);
  m.defineBuiltin(L"ACAD_TRUECOLORDLG", TrueColorDlg, 1, 3);
  m.defineBuiltin(L"MENUCMD", MenuCmd, 1, 1);
}

}  // namespace kelhost::lisp
