// What the jig tests share: a fresh drawing as the working database, the
// command line captured, the user's answers given as lines, and a small
// jig that drags a line's end.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>

#include "arx/arxheaders.h"
#include "db/stub.h"
#include "editor/jig_samples.h"
#include "editor/user_input.h"
#include "kelhost/editor.h"
#include "kelhost/host.h"
#include "kelhost/lisp.h"

class JigTest : public ::testing::Test {
 protected:
  void SetUp() override {
    db = std::make_unique<AcDbDatabase>();
    acdbHostApplicationServices()->setWorkingDatabase(db.get());
    openAtStart = kelhost::db::OpenObjectCount();
    kelhost::Host::instance().setCommandLineSink([this](const std::wstring& t) { out += t; });
  }
  void TearDown() override {
    kelhost::editor::SetBaseInput(nullptr);
    kelhost::editor::ResetInputState();
    EXPECT_EQ(kelhost::db::OpenObjectCount(), openAtStart) << "objects left open";
    kelhost::Host::instance().setCommandLineSink(nullptr);
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    db.reset();
  }
  // The user's answers, one a line; after them the input ends (cancel).
  void answers(const std::string& lines) {
    input = lines;
    std::FILE* f = input.empty() ? nullptr : fmemopen(input.data(), input.size(), "r");
    if (f) kelhost::editor::SetInputFile(f, true);
    else kelhost::editor::SetBaseInput(nullptr);
  }
  size_t modelSpaceEntities() {
    AcDbBlockTableRecord* ms = nullptr;
    if (acdbOpenObject(ms, db->modelSpaceId(), AcDb::kForRead) != Acad::eOk) return 0;
    const size_t n = ms->entityIds().size();
    ms->close();
    return n;
  }
  const std::vector<kelhost::editor::JigSample>& samples() { return kelhost::editor::JigSamples(); }

  std::unique_ptr<AcDbDatabase> db;
  int openAtStart = 0;
  std::wstring out;
  std::string input;
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
