// AcEdJig driven by the user's answers: each drag asks once at the drag
// prompt (through the same prompter as every other prompt, so answers come
// from a command call, the input file, a script or queued text), the
// sampler's acquire call gets the answer, update() and the entity's
// worldDraw follow, and the sample is recorded.
#include "arx/dbjig.h"

#include <cstdarg>

#include "arx/acedads.h"
#include "arx/dbapserv.h"
#include "arx/dbdatabase.h"
#include "arx/dbmain.h"
#include "arx/dbsymtb.h"
#include "arx/wformat.h"
#include "editor/command_processor.h"
#include "editor/commands/drawing_support.h"
#include "editor/jig_samples.h"
#include "editor/prompter.h"
#include "gi/recorder.h"
#include "kelhost/sysvars.h"

namespace kelhost::editor {
namespace {

std::vector<JigSample>& Samples() {
  static std::vector<JigSample> samples;
  return samples;
}

AcDbDatabase* WorkingDb() {
  AcDbHostApplicationServices* services = acdbHostApplicationServices();
  return services ? services->workingDatabase() : nullptr;
}

// A point from the world to the user's coordinate system.
void ToUcs(const AcGePoint3d& wcs, double ucs[3]) {
  resbuf from{}, to{};
  from.restype = to.restype = RTSHORT;
  from.resval.rint = 0;
  to.resval.rint = 1;
  ads_point p = {wcs.x, wcs.y, wcs.z};
  if (acedTrans(p, &from, &to, 0, ucs) != RTNORM)
    for (int i = 0; i < 3; ++i) ucs[i] = p[i];
}

double Elevation() {
  resbuf rb{};
  return acedGetVar(L"ELEVATION", &rb) == RTNORM && rb.restype == RTREAL ? rb.resval.rreal : 0.0;
}

// An entity that was never given a layer takes the drawing's current
// properties, as the platform's jigs give them.
void GiveDefaults(AcDbEntity* entity) {
  AcDbDatabase* db = WorkingDb();
  if (entity && db && entity->layerId().isNull()) entity->setDatabaseDefaults(db);
}

}  // namespace

const std::vector<JigSample>& JigSamples() { return Samples(); }

}  // namespace kelhost::editor

using kelhost::editor::Answer;
using kelhost::editor::Request;
using kelhost::editor::Want;

struct AcEdJig::Impl {
  std::wstring prompt;
  std::wstring keywords;
  int controls = 0;
  CursorType cursor = kNoSpecialCursor;
  // What the sampler's acquire call got during the drag under way.
  bool acquired = false;
  DragStatus acquiredStatus = kNormal;

  int flagsFor(Want want) const {
    using namespace kelhost::editor;
    int flags = 0;
    if (!(controls & kNullResponseAccepted)) flags |= kNoNull;
    if (controls & kNoZeroResponseAccepted) flags |= kNoZero;
    if (controls & kNoNegativeResponseAccepted) flags |= kNoNegative;
    if (controls & kNoDwgLimitsChecking) flags |= kNoLimits;
    if (controls & kAcceptOtherInputString) flags |= kArbitrary;
    if (want == Want::kDist && !(controls & kAccept3dCoordinates)) flags |= kIgnoreZ;
    return flags;
  }

  // A distance or an angle, set only when the drag went as normal.
  DragStatus acquireReal(Want want, const AcGePoint3d* base, double& value) {
    Answer a;
    const DragStatus s = acquire(want, base, a);
    if (s == kNormal) value = a.real;
    return s;
  }

  // One answer at the drag prompt. Typed coordinates are not governed by
  // ORTHOMODE, as on the platform, so kGovernedByOrthoMode changes nothing.
  DragStatus acquire(Want want, const AcGePoint3d* base, Answer& answer) {
    Request r;
    r.want = want;
    r.prompt = prompt;
    r.flags = flagsFor(want);
    r.keywords = kelhost::editor::Keywords(keywords);
    if (base) {
      r.hasBase = true;
      kelhost::editor::ToUcs(*base, r.base);
    }
    kelhost::editor::RunningCommand* command = kelhost::editor::ExecutingCommand();
    resbuf lastPoint{};
    const bool keepLastPoint = (controls & kDontUpdateLastPoint) && acedGetVar(L"LASTPOINT", &lastPoint) == RTNORM;
    answer = kelhost::editor::Ask(r, command && !command->echo);
    if (keepLastPoint) kelhost::sysvars::SetHostVar(L"LASTPOINT", &lastPoint);
    acquired = true;
    acquiredStatus = statusOf(answer);
    if (acquiredStatus == kCancel && !(controls & kDontEchoCancelForCtrlC)) kelhost::editor::Say(L"*Cancel*");
    return acquiredStatus;
  }

  DragStatus statusOf(const Answer& a) const {
    switch (a.status) {
      case RTNORM: return kNormal;
      case RTNONE: return kNull;
      case RTKWORD: {
        // Enter where any text is taken comes back as empty text.
        if (a.text.empty() && (controls & kNullResponseAccepted)) return kNull;
        const kelhost::editor::Keywords list(keywords);
        const auto& words = list.words();
        for (size_t i = 0; i < words.size(); ++i)
          if (words[i].global == a.text) return static_cast<DragStatus>(kKW1 + static_cast<int>(i));
        return kOther;  // text that is no keyword (kAcceptOtherInputString)
      }
      default: return kCancel;
    }
  }

  AcGePoint3d worldPoint(const Answer& a) const {
    double ucs[3] = {a.point[0], a.point[1], a.point[2]};
    if (!(controls & kAccept3dCoordinates)) ucs[2] = kelhost::editor::Elevation();
    return kelhost::editor::ToWorld(ucs);
  }
};

AcEdJig::AcEdJig() : mImpl(new Impl) { kelhost::editor::Samples().clear(); }

AcEdJig::~AcEdJig() { delete mImpl; }

AcEdJig::DragStatus AcEdJig::drag() {
  try {
    mImpl->acquired = false;
    kelhost::editor::GiveDefaults(entity());
    const DragStatus sampled = sampler();
    // A sampler that asked for nothing has nothing more to wait for.
    if (!mImpl->acquired) return sampled;
    if (mImpl->acquiredStatus == kCancel) return kCancel;
    if (mImpl->acquiredStatus != kNormal) return sampled;  // Enter, a keyword, other text: no sample
    kelhost::editor::JigSample sample;
    sample.status = sampled;
    DragStatus result = sampled;
    if (sampled == kNormal) {
      sample.updated = true;
      if (!update()) result = kOther;
    } else if (sampled == kNoChange) {
      result = kNormal;  // the final sample is where the entity already is
    }
    if (sampled == kNormal || sampled == kNoChange) {
      if (AcDbEntity* shown = entity()) {
        kelhost::gi::DrawOptions options;
        options.dragging = true;
        sample.picture = kelhost::gi::Draw(*shown, options);
      }
    }
    kelhost::editor::Samples().push_back(std::move(sample));
    return result;
  } catch (...) {
    return kCancel;
  }
}

AcEdJig::DragStatus AcEdJig::drag(const AcEdDragStyle&) { return drag(); }

AcEdJig::DragStatus AcEdJig::sampler() { return kNormal; }

Adesk::Boolean AcEdJig::update() { return Adesk::kTrue; }

AcDbEntity* AcEdJig::entity() const { return nullptr; }

AcDbObjectId AcEdJig::append() {
  try {
    AcDbEntity* e = entity();
    AcDbDatabase* db = kelhost::editor::WorkingDb();
    if (!e || !db || e->isDatabaseResident()) return AcDbObjectId::kNull;
    kelhost::editor::GiveDefaults(e);
    AcDbBlockTableRecord* space = nullptr;
    if (acdbOpenObject(space, db->currentSpaceId(), AcDb::kForWrite) != Acad::eOk) return AcDbObjectId::kNull;
    AcDbObjectId id;
    const Acad::ErrorStatus es = space->appendAcDbEntity(id, e);
    space->close();
    if (es != Acad::eOk) return AcDbObjectId::kNull;
    e->close();
    return id;
  } catch (...) {
    return AcDbObjectId::kNull;
  }
}

const ACHAR* AcEdJig::keywordList() { return mImpl->keywords.c_str(); }

void AcEdJig::setKeywordList(const ACHAR* keywords) { mImpl->keywords = keywords ? keywords : L""; }

const ACHAR* AcEdJig::dispPrompt() { return mImpl->prompt.c_str(); }

void AcEdJig::setDispPrompt(const ACHAR* format, ...) {
  if (!format) {
    mImpl->prompt.clear();
    return;
  }
  va_list args;
  va_start(args, format);
  try {
    mImpl->prompt = kelhost::WFormatV(format, args);
  } catch (...) {
    mImpl->prompt.clear();
  }
  va_end(args);
}

AcEdJig::DragStatus AcEdJig::acquirePoint(AcGePoint3d& point) {
  Answer a;
  const DragStatus s = mImpl->acquire(Want::kPoint, nullptr, a);
  if (s == kNormal) point = mImpl->worldPoint(a);
  return s;
}

AcEdJig::DragStatus AcEdJig::acquirePoint(AcGePoint3d& point, const AcGePoint3d& basePoint) {
  Answer a;
  const DragStatus s = mImpl->acquire(Want::kPoint, &basePoint, a);
  if (s == kNormal) point = mImpl->worldPoint(a);
  return s;
}

AcEdJig::DragStatus AcEdJig::acquireDist(double& distance) {
  return mImpl->acquireReal(Want::kDist, nullptr, distance);
}

AcEdJig::DragStatus AcEdJig::acquireDist(double& distance, const AcGePoint3d& basePoint) {
  return mImpl->acquireReal(Want::kDist, &basePoint, distance);
}

AcEdJig::DragStatus AcEdJig::acquireAngle(double& angle) { return mImpl->acquireReal(Want::kAngle, nullptr, angle); }

AcEdJig::DragStatus AcEdJig::acquireAngle(double& angle, const AcGePoint3d& basePoint) {
  return mImpl->acquireReal(Want::kAngle, &basePoint, angle);
}

AcEdJig::CursorType AcEdJig::specialCursorType() { return mImpl->cursor; }

void AcEdJig::setSpecialCursorType(CursorType type) { mImpl->cursor = type; }

AcEdJig::UserInputControls AcEdJig::userInputControls() {
  return static_cast<UserInputControls>(mImpl->controls);
}

void AcEdJig::setUserInputControls(UserInputControls controls) { mImpl->controls = controls; }
