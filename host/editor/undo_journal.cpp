#include "editor/undo_journal.h"

#include <algorithm>
#include <unordered_set>
#include <vector>

#include "arx/acutads.h"
#include "arx/dbapserv.h"
#include "db/database_state.h"
#include "dxf/access.h"
#include "editor/undo.h"
#include "editor/undo_step.h"
#include "kelhost/sysvars.h"

namespace kelhost::editor::undo {
namespace {

// Commands that leave the drawing as it is make no step: the journal's
// own, and those that query, save, plot or show. (WBLOCK is not one: it
// erases the objects it writes.)
bool MakesStep(const std::wstring& name) {
  static const std::unordered_set<std::wstring> kNone = {
      L"U",     L"UNDO",   L"REDO",      L"MREDO",  L"ABOUT",    L"AREA",   L"DIST",   L"ID",
      L"LIST",  L"HELP",   L"REDRAW",    L"REDRAWALL", L"REGEN", L"REGENALL", L"MSLIDE", L"VSLIDE",
      L"SAVE",  L"QSAVE",  L"SAVEAS",    L"OPEN",   L"NEW",      L"CLOSE",  L"PLOT",   L"EXPORT",
      L"DXFOUT", L"SCRIPT",   L"RSCRIPT", L"RESUME",  L"DELAY",  L"TEXTSCR", L"GRAPHSCR",
      L"STATUS", L"TIME",
  };
  return kNone.count(name) == 0;
}

bool IsJournalCommand(const std::wstring& name) { return name == L"U" || name == L"UNDO" || name == L"REDO"; }

bool IsZoomOrPan(const Step& s) { return s.kind == Step::kChanges && (s.name == L"ZOOM" || s.name == L"PAN"); }

AcDbDatabase* Working() { return acdbHostApplicationServices()->workingDatabase(); }

class Journal : public db::ObjectObserver {
 public:
  Journal() { db::AddObjectObserver(this); }

  // ---------------------------------------------------------- hooks
  void commandStarted(const std::wstring& name) {
    mCommands.push_back(false);
    if (mOpen == Open::kCommand) return;  // it joins the command running
    closeExpressionStep();
    if (!IsJournalCommand(name)) mRedo.clear();
    if (!MakesStep(name)) return;
    open(Open::kCommand, name, Working());
    mCommands.back() = true;
  }

  void commandEnded() {
    if (mCommands.empty()) return;
    const bool opened = mCommands.back();
    mCommands.pop_back();
    if (opened) close(true);
  }

  void expressionStarted() {
    if (mExpressions++ == 0) mExpressionDb = Working();
  }

  void expressionEnded() {
    if (mExpressions == 0) return;
    if (--mExpressions == 0) closeExpressionStep();
  }

  // ---------------------------------------------------------- observer
  void beforeWrite(AcDbObject* object) override { record(object, false); }
  void added(AcDbObject* object) override { record(object, true); }

  void beforeHeaderWrite(AcDbDatabase* database, const wchar_t* name) override {
    Step* step = recording(database);
    if (!step) return;
    if (!step->header) step->header = std::make_unique<HeaderRecord>();
    step->header->save(database->state(), name);
  }

  void databaseGoing(AcDbDatabase* database) override {
    if (database == mDb) forget();
    if (database == mOpenDb) {
      clearOpen();
      mOpenDb = nullptr;
    }
    if (database == mExpressionDb) mExpressionDb = nullptr;
  }

  // ---------------------------------------------------------- settings
  Control control = Control::kAll;
  bool autoOn = true, combineZoomPan = true, combineLayer = true;

  bool groupOpen() const { return mGroupStart != kNoGroup; }
  int marks() const { return mMarks; }

  int bits() const {
    int b = 0;
    if (control != Control::kNone) b |= 1;
    if (control == Control::kOne) b |= 2;
    if (control == Control::kAll && autoOn) b |= 4;
    if (groupOpen()) b |= 8;
    if (combineZoomPan) b |= 16;
    if (combineLayer) b |= 32;
    return b;
  }

  // UNDOCTL and UNDOMARKS belong to the journal: read-only for programs,
  // written whenever its settings, its open group or its marks change. The
  // session's defaults (53 and 0) are the journal's state at the start.
  void publish() const {
    resbuf rb{};
    rb.restype = RTSHORT;
    rb.resval.rint = static_cast<short>(bits());
    sysvars::SetHostVar(L"UNDOCTL", &rb);
    rb.resval.rint = static_cast<short>(std::min(mMarks, 32767));
    sysvars::SetHostVar(L"UNDOMARKS", &rb);
  }

  void setControl(Control c) {
    control = c;
    if (c == Control::kNone) {
      forget();
      clearOpen();
    } else if (c == Control::kOne) {
      keepLastStep();
    }
    publish();
  }

  // ---------------------------------------------------------- structure
  void begin() {
    closeExpressionStep();
    if (groupOpen()) end();
    mRedo.clear();
    Step start;
    start.kind = Step::kGroupStart;
    mGroupStart = mSteps.size();
    mSteps.push_back(std::move(start));
    publish();
  }

  void end() {
    closeExpressionStep();
    if (!groupOpen()) return;
    Step group;
    group.name = L"GROUP";
    for (std::size_t i = mGroupStart + 1; i < mSteps.size(); ++i) {
      Step& s = mSteps[i];
      if (s.kind == Step::kMark) --mMarks;  // marks inside a group do not outlive it
      else if (s.kind == Step::kChanges) group.absorb(std::move(s));
    }
    mSteps.resize(mGroupStart);
    mSteps.push_back(std::move(group));
    mGroupStart = kNoGroup;
    publish();
  }

  void mark() {
    closeExpressionStep();
    mRedo.clear();
    Step m;
    m.kind = Step::kMark;
    mSteps.push_back(std::move(m));
    ++mMarks;
    publish();
  }

  // ---------------------------------------------------------- undo, redo
  void startUndoing() {
    closeExpressionStep();
    mRedo.clear();
  }

  Met undoOne(std::wstring& name) {
    if (mSteps.empty()) return Met::kNothing;
    if (mSteps.size() - 1 == mGroupStart) return Met::kGroupStart;
    Step top = std::move(mSteps.back());
    mSteps.pop_back();
    if (top.kind == Step::kMark) {
      --mMarks;
      mRedo.push_back(std::move(top));
      publish();
      return Met::kMark;
    }
    name = top.name;
    mRedo.push_back(replay(top));
    return Met::kStep;
  }

  bool canRedo() const { return !mRedo.empty(); }

  std::vector<std::wstring> redo() {
    std::vector<std::wstring> names;
    std::vector<Step> undone = std::move(mRedo);
    mRedo.clear();
    for (auto it = undone.rbegin(); it != undone.rend(); ++it) {
      if (it->kind == Step::kMark) {
        mSteps.push_back(std::move(*it));
        ++mMarks;
        continue;
      }
      names.push_back(it->name);
      mSteps.push_back(replay(*it));
    }
    publish();
    return names;
  }

  int stepCount() const {
    return static_cast<int>(std::count_if(mSteps.begin(), mSteps.end(), [](const Step& s) { return s.kind == Step::kChanges; }));
  }

  void reset() {
    forget();
    clearOpen();
    mCommands.clear();
    mExpressions = 0;
    control = Control::kAll;
    autoOn = combineZoomPan = combineLayer = true;
    publish();
  }

 private:
  enum class Open { kNone, kCommand, kExpression };
  static constexpr std::size_t kNoGroup = static_cast<std::size_t>(-1);

  // The step being recorded for database, or null.
  Step* recording(AcDbDatabase* database) {
    if (mReplaying || control == Control::kNone || !database) return nullptr;
    if (mOpen == Open::kNone && mExpressions > 0 && mExpressionDb) open(Open::kExpression, L"GROUP", mExpressionDb);
    return mOpen != Open::kNone && database == mOpenDb ? &mStep : nullptr;
  }

  void record(AcDbObject* object, bool created) {
    AcDbStub* stub = dxf::Access::stub(object);
    if (!stub || stub->undoRecorded) return;
    Step* step = recording(object->database());
    if (!step) return;
    step->objects.push_back(created ? SavedObject::Created(stub) : SavedObject::Now(stub, mScratch));
    stub->undoRecorded = true;
  }

  void open(Open kind, const std::wstring& name, AcDbDatabase* database) {
    clearOpen();
    mOpen = kind;
    mOpenDb = database;
    mStep.kind = Step::kChanges;
    mStep.name = name;
  }

  // Forgets the step being recorded (its objects are no longer marked).
  void clearOpen() {
    for (const SavedObject& saved : mStep.objects) saved.stub()->undoRecorded = false;
    mStep = Step();
    mOpen = Open::kNone;
  }

  void closeExpressionStep() {
    if (mOpen == Open::kExpression) close(false);
  }

  // Ends the step being recorded: what it left unchanged is dropped; a
  // command is a step even when it changed nothing (U names it), an
  // expression only when it changed something.
  void close(bool evenEmpty) {
    if (mOpen == Open::kNone) return;
    AcDbDatabase* database = mOpenDb;
    Step step = std::move(mStep);
    for (const SavedObject& saved : step.objects) saved.stub()->undoRecorded = false;
    mStep = Step();
    mOpen = Open::kNone;
    if (control == Control::kNone || !database) return;
    const bool changed = step.compact(database->state(), mScratch);
    if (!changed && !evenEmpty) return;
    push(std::move(step), database);
  }

  void push(Step&& step, AcDbDatabase* database) {
    if (mDb && database != mDb) forget();
    mDb = database;
    mRedo.clear();
    if (combineZoomPan && IsZoomOrPan(step) && !mSteps.empty() && IsZoomOrPan(mSteps.back())) {
      mSteps.back().absorb(std::move(step));
      return;
    }
    mSteps.push_back(std::move(step));
    if (control == Control::kOne) keepLastStep();
  }

  // Undoes a step, giving the step that undoes that.
  Step replay(const Step& step) {
    mReplaying = true;
    Step back = step.undo(mDb, mScratch);
    mReplaying = false;
    return back;
  }

  void keepLastStep() {
    std::vector<Step> kept;
    for (auto it = mSteps.rbegin(); it != mSteps.rend(); ++it)
      if (it->kind == Step::kChanges) {
        kept.push_back(std::move(*it));
        break;
      }
    mSteps = std::move(kept);
    mMarks = 0;
    mGroupStart = kNoGroup;
    mRedo.clear();
  }

  void forget() {
    const bool had = !mSteps.empty();
    mSteps.clear();
    mRedo.clear();
    mMarks = 0;
    mGroupStart = kNoGroup;
    mDb = nullptr;
    if (had) publish();
  }

  std::vector<Step> mSteps;  // oldest first
  std::vector<Step> mRedo;   // what the last U or UNDO undid, in the order undone
  AcDbDatabase* mDb = nullptr;  // whose objects the steps hold
  std::size_t mGroupStart = kNoGroup;
  int mMarks = 0;

  Step mStep;  // being recorded
  Open mOpen = Open::kNone;
  AcDbDatabase* mOpenDb = nullptr;
  std::vector<bool> mCommands;  // per running command: whether it opened mStep
  int mExpressions = 0;
  AcDbDatabase* mExpressionDb = nullptr;
  bool mReplaying = false;
  std::vector<std::uint8_t> mScratch;
};

// Lives as long as the process (reachable: no order of destruction at
// exit to worry about).
Journal& J() {
  static Journal* journal = new Journal;
  return *journal;
}

}  // namespace

// The editor's hooks.
void CommandStarted(const std::wstring& name) { J().commandStarted(name); }
void CommandEnded(const std::wstring&) { J().commandEnded(); }
void ExpressionStarted() { J().expressionStarted(); }
void ExpressionEnded() { J().expressionEnded(); }

Control CurrentControl() { return J().control; }
bool AutoOn() { return J().autoOn; }
bool CombineZoomPan() { return J().combineZoomPan; }
bool CombineLayer() { return J().combineLayer; }
bool GroupOpen() { return J().groupOpen(); }
int Marks() { return J().marks(); }
int ControlBits() { return J().bits(); }

void SetControl(Control control) { J().setControl(control); }
void SetAuto(bool on) {
  J().autoOn = on;
  J().publish();
}
void SetCombineZoomPan(bool on) {
  J().combineZoomPan = on;
  J().publish();
}
void SetCombineLayer(bool on) {
  J().combineLayer = on;
  J().publish();
}
void Begin() { J().begin(); }
void End() { J().end(); }
void Mark() { J().mark(); }

void StartUndoing() { J().startUndoing(); }
Met UndoOne(std::wstring& name) { return J().undoOne(name); }
bool CanRedo() { return J().canRedo(); }
std::vector<std::wstring> Redo() { return J().redo(); }

int StepCount() { return J().stepCount(); }
void Reset() { J().reset(); }

}  // namespace kelhost::editor::undo
