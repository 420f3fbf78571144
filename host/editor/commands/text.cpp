// TEXT (also DTEXT and -TEXT): one line of text, as the command-line form
// asks for it: the start point or another justification's point (any
// justification may be typed there directly, "M" for Middle), or Justify
// and Style; the height when the style has none (TEXTSIZE, which the
// answer sets); the rotation; then the text, spaces and all. An empty
// line draws nothing. Enter at the first prompt puts the new line below
// the last text drawn, with its settings. The justification chosen stays
// the default for the next text of the drawing, as the style (TEXTSTYLE)
// does.
#include <cmath>
#include <memory>

#include "ads/entity_names.h"
#include "arx/acedads.h"
#include "arx/acutads.h"
#include "arx/dbsymtb.h"
#include "db/mtext_layout.h"
#include "editor/builtin_commands.h"
#include "editor/commands/draw_prompts.h"
#include "editor/commands/drawing_support.h"
#include "editor/commands/plane_entities.h"
#include "editor/commands/text_justification.h"

namespace kelhost::editor {
namespace {

struct Style {
  AcDbObjectId id;
  std::wstring name = L"Standard";
  std::wstring font;
  double height = 0.0, widthFactor = 1.0, oblique = 0.0;
};

// What the next TEXT of a drawing starts from.
struct TextState {
  AcDbDatabase* db = nullptr;
  const Justification* justification = nullptr;
  double rotation = 0.0;  // from the UCS X axis
  bool haveLast = false;  // the last text, for Enter at the first prompt
  AcGePoint2d point, second;
  double z = 0.0, height = 0.0, lineAngle = 0.0;
};
TextState gState;

TextState& State() {
  if (gState.db != ads::WorkingDb()) {
    gState = TextState{};
    gState.db = ads::WorkingDb();
  }
  if (!gState.justification) gState.justification = &LeftJustification();
  return gState;
}

double RealVar(const wchar_t* name, double fallback) {
  resbuf rb{};
  return acedGetVar(name, &rb) == RTNORM && rb.restype == RTREAL ? rb.resval.rreal : fallback;
}

bool ReadStyle(AcDbObjectId id, Style& s) {
  AcDbTextStyleTableRecord* r = nullptr;
  if (acdbOpenObject(r, id, AcDb::kForRead) != Acad::eOk) return false;
  s.id = id;
  s.name = r->getName();
  const ACHAR* font = nullptr;
  r->fileName(font);
  s.font = font ? font : L"";
  s.height = r->textSize();
  s.widthFactor = r->xScale() > 0 ? r->xScale() : 1.0;
  s.oblique = r->obliquingAngle();
  r->close();
  return true;
}

Style CurrentStyle() {
  Style s;
  if (AcDbDatabase* db = ads::WorkingDb()) ReadStyle(db->textstyle(), s);
  return s;
}

void PrintSettings(CommandContext& c) {
  const Style s = CurrentStyle();
  const double height = s.height > 0 ? s.height : RealVar(L"TEXTSIZE", 2.5);
  c.print(L"\nCurrent text style:  \"" + s.name + L"\"  Text height:  " + DistanceText(height) +
          L"  Annotative:  No  Justify:  " + State().justification->keyword);
}

std::vector<Style> StylesMatching(const std::wstring& pattern) {
  std::vector<Style> found;
  AcDbDatabase* db = ads::WorkingDb();
  AcDbTextStyleTable* table = nullptr;
  if (!db || acdbOpenObject(table, db->textStyleTableId(), AcDb::kForRead) != Acad::eOk) return found;
  AcDbSymbolTableIterator* it = nullptr;
  if (table->newIterator(it) == Acad::eOk) {
    for (; !it->done(); it->step()) {
      AcDbObjectId id;
      Style s;
      if (it->getRecordId(id) == Acad::eOk && ReadStyle(id, s) &&
          acutWcMatch(s.name.c_str(), pattern.c_str()) == RTNORM)
        found.push_back(s);
    }
    delete it;
  }
  table->close();
  return found;
}

void ListStyles(CommandContext& c) {
  const Answer a = c.askString(L"\nEnter text style(s) to list <*>: ");
  const std::wstring pattern = a.text.empty() ? L"*" : a.text;
  c.print(L"\nText styles:\n");
  for (const Style& s : StylesMatching(pattern)) {
    c.print(L"\nStyle name: \"" + s.name + L"\"  Font files: " + s.font + L"\n   Height: " + DistanceText(s.height) +
            L"  Width factor: " + DistanceText(s.widthFactor) + L"  Obliquing angle: " + AngleText(s.oblique) +
            L"\n   Generation: Normal\n");
  }
  c.print(L"\nCurrent text style:  " + CurrentStyle().name);
}

// The Style option: a style of the drawing becomes TEXTSTYLE.
void ChooseStyle(CommandContext& c) {
  for (;;) {
    const std::wstring current = CurrentStyle().name;
    const Answer a = c.askString(L"\nEnter style name or [?]" + Default(current) + L": ");
    if (a.text.empty()) return;
    if (a.text == L"?") {
      ListStyles(c);
      continue;
    }
    resbuf rb{};
    rb.restype = RTSTR;
    rb.resval.rstring = const_cast<ACHAR*>(a.text.c_str());
    if (a.text.find_first_of(L"*?") == std::wstring::npos && acedSetVar(L"TEXTSTYLE", &rb) == RTNORM) return;
    // The platform's wording could not be confirmed; this says what happened.
    c.print(L"\nCannot find text style \"" + a.text + L"\".");
  }
}

// The text itself: spaces belong to it; an empty line is none.
std::wstring AskText(CommandContext& c) { return c.askString(L"\nEnter text: ", true).text; }

struct Placement {
  const Justification* justification;
  AcGePoint2d point, second;
  double z = 0.0, height = 0.0, rotation = 0.0;
};

// Makes the text; the height and the baseline's angle it got.
void MakeText(Placement& p, const Style& style, const std::wstring& text) {
  double height = p.height, widthFactor = style.widthFactor, rotation = p.rotation;
  AcGePoint2d position = p.point;
  const Justification& j = *p.justification;
  if (TakesBaseline(j)) {
    const double length = (p.second - p.point).length();
    rotation = AngleOf(p.second - p.point);
    // Align scales the height to the baseline, Fit stretches the width.
    if (j.horz == AcDb::kTextAlign)
      height = length / TextLength(text, 1.0, widthFactor);
    else
      widthFactor = length / TextLength(text, height, 1.0);
  } else if (j.horz != AcDb::kTextLeft || j.vert != AcDb::kTextBase) {
    position = TextPosition(j, p.point, text, height, widthFactor, rotation);
  }
  auto entity =
      std::make_unique<AcDbText>(PlaneToWorld(position, p.z), text.c_str(), style.id, height, OcsAngleOf(rotation));
  entity->setNormal(PlaneNormal());
  entity->setWidthFactor(widthFactor);
  entity->setOblique(style.oblique);
  entity->setHorizontalMode(j.horz);
  entity->setVerticalMode(j.vert);
  if (j.horz != AcDb::kTextLeft || j.vert != AcDb::kTextBase)
    entity->setAlignmentPoint(PlaneToWorld(TakesBaseline(j) ? p.second : p.point, p.z));
  AppendToCurrentSpace(std::move(entity));
  p.height = height;
  p.rotation = rotation;
}

// The points of the justification, after the prompt that offered options.
void AskPoints(CommandContext& c, Placement& p, const Answer* given) {
  const Answer first = given ? *given : c.askPoint(std::wstring(p.justification->pointPrompt) + L": ", L"", kNoNull);
  p.point = AcGePoint2d(first.point[0], first.point[1]);
  p.z = first.point[2];
  if (!TakesBaseline(*p.justification)) return;
  for (;;) {
    const Answer second = c.askPoint(L"\nSpecify second endpoint of text baseline: ", L"", kNoNull, first.point);
    p.second = AcGePoint2d(second.point[0], second.point[1]);
    if (!(p.second - p.point).isZeroLength()) return;
    c.print(L"\n*Invalid*");
  }
}

void RunText(CommandContext& c) {
  TextState& state = State();
  PrintSettings(c);
  Placement p;
  bool below = false;
  for (;;) {
    p.justification = state.justification;
    const Answer a = c.askPoint(std::wstring(p.justification->pointPrompt) + L" or [Justify/Style]: ",
                                L"Justify Style " + JustificationKeywords());
    if (a.status == RTNORM) {
      AskPoints(c, p, &a);
      break;
    }
    if (a.status == RTNONE) {
      if (!state.haveLast) continue;
      below = true;
      break;
    }
    if (a.text == L"Style") {
      ChooseStyle(c);
      PrintSettings(c);
      continue;
    }
    const Justification* chosen = FindJustification(a.text);
    if (!chosen) {
      const Answer j =
          c.askKeyword(L"\nEnter an option [Left/Center/Right/Align/Middle/Fit/TL/TC/TR/ML/MC/MR/BL/BC/BR]: ",
                       JustificationKeywords(), kNoNull);
      chosen = FindJustification(j.text);
    }
    state.justification = p.justification = chosen;
    AskPoints(c, p, nullptr);
    break;
  }
  const Style style = CurrentStyle();
  if (below) {
    // The next line: the last one's points moved down by a line's pitch.
    p.justification = state.justification;
    p.height = state.height;
    p.rotation = state.lineAngle;
    p.z = state.z;
    const AcGeVector2d down = Direction(state.lineAngle - 3.14159265358979323846 / 2) * db::LinePitch(p.height, 1.0);
    p.point = state.point + down;
    p.second = state.second + down;
  } else {
    p.height = style.height;
    if (!(p.height > 0) && p.justification->horz != AcDb::kTextAlign) {
      const double fallback = RealVar(L"TEXTSIZE", 2.5);
      const double base[3] = {p.point.x, p.point.y, p.z};
      const Answer h =
          c.askDist(L"\nSpecify height" + Default(DistanceText(fallback)) + L": ", L"", kNoZero | kNoNegative, base);
      p.height = h.status == RTNORM ? h.real : fallback;
      resbuf rb{};
      rb.restype = RTREAL;
      rb.resval.rreal = p.height;
      acedSetVar(L"TEXTSIZE", &rb);
    }
    if (!(p.height > 0)) p.height = RealVar(L"TEXTSIZE", 2.5);
    p.rotation = state.rotation;
    if (!TakesBaseline(*p.justification)) {
      const double base[3] = {p.point.x, p.point.y, p.z};
      const double shown = p.rotation - RealVar(L"ANGBASE", 0.0);
      const Answer r = AskDirection(
          c, L"\nSpecify rotation angle of text" + Default(AngleText(NormalizedAngle(shown))) + L": ", base);
      if (r.status == RTNORM) p.rotation = r.real;
      state.rotation = p.rotation;
    }
  }
  const std::wstring text = AskText(c);
  if (text.empty()) return;
  MakeText(p, style, text);
  state.haveLast = true;
  state.point = p.point;
  state.second = p.second;
  state.z = p.z;
  state.height = p.height;
  state.lineAngle = p.rotation;
}

}  // namespace

KELHOST_BUILTIN_COMMAND(Text, {L"TEXT", RunText, /*hasDialog*/ true});
KELHOST_BUILTIN_COMMAND(DText, {L"DTEXT", RunText, /*hasDialog*/ true});

}  // namespace kelhost::editor
