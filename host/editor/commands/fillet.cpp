// FILLET: rounds the corner between two picked lines, arcs or circles
// with an arc of FILLETRAD (radius 0: the two are trimmed or extended to
// meet), trimming them when TRIMMODE is 1. Radius, Trim and Multiple
// change the settings; with Multiple the command goes on until Enter and
// Undo takes back the last fillet. A fillet that cannot be made says why
// and changes nothing (and, outside Multiple, ends the command as failed).
// The arc goes on the layer of the two objects when they share one, else
// on the current layer.
#include <vector>

#include "ads/entity_names.h"
#include "arx/acedads.h"
#include "editor/builtin_commands.h"
#include "editor/commands/draw_prompts.h"
#include "editor/commands/drawing_support.h"
#include "editor/commands/fillet_geometry.h"
#include "editor/commands/fillet_polyline.h"

namespace kelhost::editor {
namespace {

double FilletRad() {
  resbuf rb{};
  return acedGetVar(L"FILLETRAD", &rb) == RTNORM && rb.restype == RTREAL ? rb.resval.rreal : 0.0;
}

bool Trimming() {
  resbuf rb{};
  return !(acedGetVar(L"TRIMMODE", &rb) == RTNORM && rb.restype == RTSHORT && rb.resval.rint == 0);
}

void AskRadius(CommandContext& c) {
  const double current = FilletRad();
  const Answer a = c.askDist(L"\nSpecify fillet radius" + Default(DistanceText(current)) + L": ", L"", kNoNegative);
  if (a.status != RTNORM) return;
  resbuf rb{};
  rb.restype = RTREAL;
  rb.resval.rreal = a.real;
  acedSetVar(L"FILLETRAD", &rb);
}

void AskTrimMode(CommandContext& c) {
  const Answer a = c.askKeyword(
      L"\nEnter Trim mode option [Trim/No trim]" + Default(Trimming() ? L"Trim" : L"No trim") + L": ", L"Trim Notrim");
  if (a.status != RTKWORD) return;
  resbuf rb{};
  rb.restype = RTSHORT;
  rb.resval.rint = a.text == L"Trim" ? 1 : 0;
  acedSetVar(L"TRIMMODE", &rb);
}

// A picked object that can be filleted, or the keyword answered instead.
struct Pick {
  Answer answer;
  PlaneEntity entity;
  AcGePoint2d point;
};

Pick AskObject(CommandContext& c, const std::wstring& prompt, const std::wstring& keywords) {
  for (;;) {
    Pick p;
    p.answer = c.askEntity(prompt, keywords);
    if (p.answer.status == RTNONE || p.answer.status == RTKWORD) return p;
    if (p.answer.status != RTNORM || !p.answer.hasName || p.answer.isSet) continue;  // nothing there
    const ads_name name = {p.answer.name[0], p.answer.name[1]};
    if (!ReadPlaneEntity(ads::IdOfName(name), p.entity)) {
      // The platform's wording for this could not be confirmed.
      c.print(L"\nCannot fillet that object.");
      continue;
    }
    p.point = p.entity.curve().closestPoint(AcGePoint2d(p.answer.point[0], p.answer.point[1]));
    return p;
  }
}

// What a fillet changed, so that Multiple's Undo can put it back.
struct Done {
  PlaneEntity first, second;
  AcDbObjectId arc;
};

void SetLayer(AcDbObjectId id, AcDbObjectId layer) {
  AcDbEntity* e = nullptr;
  if (acdbOpenAcDbEntity(e, id, AcDb::kForWrite) != Acad::eOk) return;
  e->setLayer(layer);
  e->close();
}

Done Apply(const Fillet& f, const PlaneEntity& first, const PlaneEntity& second) {
  Done d{first, second, AcDbObjectId::kNull};
  if (Trimming()) {
    WritePlaneEntity(f.first);
    WritePlaneEntity(f.second);
  }
  if (f.hasArc) {
    d.arc = AppendToCurrentSpace(MakeArc(f.arc, first.z));
    if (!d.arc.isNull() && first.layer == second.layer) SetLayer(d.arc, first.layer);
  }
  return d;
}

// The Polyline option; true when a polyline was picked.
bool FilletPolyline(CommandContext& c) {
  for (;;) {
    const Answer a = c.askEntity(L"\nSelect 2D polyline or [Radius]: ", L"Radius");
    if (a.status == RTNONE) return false;
    if (a.status == RTKWORD) {
      AskRadius(c);
      continue;
    }
    if (a.status != RTNORM || !a.hasName || a.isSet) continue;
    const ads_name name = {a.name[0], a.name[1]};
    AcDbPolyline* pline = nullptr;
    if (acdbOpenObject(pline, ads::IdOfName(name), AcDb::kForWrite) != Acad::eOk) {
      c.print(L"\nCannot fillet that object.");
      continue;
    }
    const PolylineFillets done = FilletPolylineVertices(*pline, FilletRad());
    pline->close();
    c.print(L"\n" + std::to_wstring(done.filleted) +
            (done.filleted == 1 ? L" line was filleted" : L" lines were filleted"));
    if (done.tooShort > 0)
      c.print(L"\n" + std::to_wstring(done.tooShort) + (done.tooShort == 1 ? L" was too short" : L" were too short"));
    return true;
  }
}

// Multiple's Undo: the last fillet taken back.
void UndoLast(CommandContext& c, std::vector<Done>& done) {
  if (done.empty()) {
    c.print(L"\nCommand has been completely undone.");
    return;
  }
  WritePlaneEntity(done.back().first);
  WritePlaneEntity(done.back().second);
  if (!done.back().arc.isNull()) EraseEntity(done.back().arc);
  done.pop_back();
}

// An option of the first prompt; false when it ends the command (a
// polyline filleted outside Multiple).
bool Option(CommandContext& c, const std::wstring& keyword, bool& multiple, std::vector<Done>& done) {
  if (keyword == L"Radius")
    AskRadius(c);
  else if (keyword == L"Trim")
    AskTrimMode(c);
  else if (keyword == L"Multiple")
    multiple = true;
  else if (keyword == L"Polyline")
    return !FilletPolyline(c) || multiple;
  else
    UndoLast(c, done);
  return true;
}

std::wstring ProblemText(FilletProblem p) {
  switch (p) {
    case FilletProblem::kRadiusTooLarge:
      return L"\nRadius is too large";
    case FilletProblem::kParallel:
      return L"\nLines are parallel";
    default:
      return L"\n*Invalid*";
  }
}

void RunFillet(CommandContext& c) {
  c.print(L"\nCurrent settings: Mode = " + std::wstring(Trimming() ? L"TRIM" : L"NOTRIM") + L", Radius = " +
          DistanceText(FilletRad()));
  bool multiple = false;
  std::vector<Done> done;
  for (;;) {
    const Pick first = AskObject(c, L"\nSelect first object or [Undo/Polyline/Radius/Trim/Multiple]: ",
                                 L"Undo Polyline Radius Trim Multiple");
    if (first.answer.status == RTNONE) return;
    if (first.answer.status == RTKWORD) {
      if (!Option(c, first.answer.text, multiple, done)) return;
      continue;
    }
    Pick second;
    for (;;) {
      second = AskObject(c, L"\nSelect second object or shift-select to apply corner or [Radius]: ", L"Radius");
      if (second.answer.status != RTKWORD) break;
      AskRadius(c);
    }
    if (second.answer.status == RTNONE) return;
    Fillet f;
    const FilletProblem problem = MakeFillet(first.entity, first.point, second.entity, second.point, FilletRad(), f);
    if (problem != FilletProblem::kNone) {
      if (!multiple) c.fail(ProblemText(problem));
      c.print(ProblemText(problem));
      continue;
    }
    done.push_back(Apply(f, first.entity, second.entity));
    if (!multiple) return;
  }
}

}  // namespace

KELHOST_BUILTIN_COMMAND(Fillet, {L"FILLET", RunFillet});

}  // namespace kelhost::editor
