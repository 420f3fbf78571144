// What the jig tests share: the editor's fixture (a fresh drawing, the
// command line captured, the user's answers), the samples of the latest
// jig, and a small jig that drags a line's end.
#pragma once

#include <vector>

#include "editor/jig_samples.h"
#include "editor_fixture.h"

// The editor's fixture, with the samples of the latest jig.
class JigTest : public EditorTest {
 protected:
  const std::vector<kelhost::editor::JigSample>& samples() { return kelhost::editor::JigSamples(); }
};

// Drags the end of a line from a base point: the sampler answers kNoChange
// when the point is where the end already is.
class LineJig : public AcEdJig {
 public:
  explicit LineJig(const AcGePoint3d& base, int controls = 0)
      : mLine(new AcDbLine(base, base)), mBase(base), mControls(controls) {
    setDispPrompt(L"\nTo point: ");
  }
  ~LineJig() override {
    if (!mLine->isDatabaseResident()) delete mLine;
  }
  DragStatus sampler() override {
    setUserInputControls(static_cast<UserInputControls>(mControls));
    AcGePoint3d p;
    const DragStatus s = acquirePoint(p, mBase);
    if (s != kNormal) return s;
    if (p.isEqualTo(mLine->endPoint())) return kNoChange;
    mEnd = p;
    return kNormal;
  }
  Adesk::Boolean update() override {
    ++updates;
    mLine->setEndPoint(mEnd);
    return updateAnswer;
  }
  AcDbEntity* entity() const override { return mLine; }
  AcDbLine* line() const { return mLine; }

  int updates = 0;
  bool updateAnswer = true;

 private:
  AcDbLine* mLine;
  AcGePoint3d mBase, mEnd;
  int mControls;
};
