// A fresh drawing as the working database, the command line captured, and
// the user's answers given as text (one per line); nothing may be left open
// or waiting when a test ends.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>

#include "arx/arxheaders.h"
#include "db/stub.h"
#include "editor/command_processor.h"
#include "editor/user_input.h"
#include "kelhost/editor.h"
#include "kelhost/host.h"
#include "kelhost/lisp.h"
#include "kelhost/sysvars.h"
#include "kelhost/text.h"

class EditorTest : public ::testing::Test {
 protected:
  void SetUp() override {
    db = std::make_unique<AcDbDatabase>();
    acdbHostApplicationServices()->setWorkingDatabase(db.get());
    kelhost::sysvars::ResetSession();
    kelhost::editor::ResetInputState();
    answers(L"");
    openAtStart = kelhost::db::OpenObjectCount();
    kelhost::Host::instance().setCommandLineSink([this](const std::wstring& t) { out += t; });
  }
  void TearDown() override {
    kelhost::editor::CancelWaitingCommands();
    EXPECT_TRUE(kelhost::editor::ActiveCommands().empty()) << "a command is still running";
    EXPECT_EQ(kelhost::db::OpenObjectCount(), openAtStart) << "objects left open";
    kelhost::Host::instance().setCommandLineSink(nullptr);
    kelhost::editor::SetInputFile(nullptr, false);
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    db.reset();
  }
  // The user's answers from now on, one per line; after them the input ends.
  void answers(const std::wstring& lines) {
    mAnswers = kelhost::ToUtf8(lines);
    std::FILE* f = mAnswers.empty() ? nullptr : fmemopen(mAnswers.data(), mAnswers.size(), "r");
    kelhost::editor::SetInputFile(f, f != nullptr);
  }
  // The printed value, or "error: ..." when evaluation failed.
  std::wstring eval(const std::wstring& text) {
    auto outcome = kelhost::Host::instance().lisp().evalOne(text);
    return outcome.ok ? outcome.valueText : L"error: " + outcome.error;
  }
  int entityCount() {
    AcDbBlockTableRecord* space = nullptr;
    if (acdbOpenObject(space, db->modelSpaceId(), AcDb::kForRead) != Acad::eOk) return -1;
    int n = 0;
    for (const AcDbObjectId& id : space->entityIds())
      if (!id.isErased()) ++n;
    space->close();
    return n;
  }

  std::unique_ptr<AcDbDatabase> db;
  int openAtStart = 0;
  std::wstring out;

 private:
  std::string mAnswers;
};
