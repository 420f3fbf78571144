// The drawing commands' tests: a fresh drawing, commands run with their
// answers as command-s gives them (answers that run out cancel the
// command), the command line captured, and what the drawing holds after.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "ads/entity_names.h"
#include "arx/arxheaders.h"
#include "db/stub.h"
#include "editor/command_processor.h"
#include "editor/commands/continuation.h"
#include "kelhost/host.h"
#include "kelhost/sysvars.h"

class DrawCommandTest : public ::testing::Test {
 protected:
  using Token = kelhost::editor::Token;

  void SetUp() override {
    kelhost::sysvars::ResetSession();
    db = std::make_unique<AcDbDatabase>();
    acdbHostApplicationServices()->setWorkingDatabase(db.get());
    kelhost::editor::ForgetContinuation();
    openAtStart = kelhost::db::OpenObjectCount();
    kelhost::Host::instance().setCommandLineSink([this](const std::wstring& t) { out += t; });
  }
  void TearDown() override {
    EXPECT_EQ(kelhost::db::OpenObjectCount(), openAtStart) << "objects left open";
    kelhost::Host::instance().setCommandLineSink(nullptr);
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    db.reset();
    kelhost::sysvars::ResetSession();
  }

  // A command and its answers: text as typed, Token values as a program passes them.
  int Run(std::vector<Token> tokens) {
    return kelhost::editor::RunCommandCall(std::move(tokens), kelhost::editor::TokenFeed::WhenEmpty::kCancel);
  }
  static Token T(const wchar_t* text) { return Token::Text(text); }
  static Token Enter() { return Token::Of(Token::kEnter); }
  static Token Real(double v) {
    Token t = Token::Of(Token::kReal);
    t.value[0] = v;
    return t;
  }
  // An object picked at a point, as entsel gives it.
  static Token Pick(AcDbObjectId id, double x, double y) {
    Token t = Token::Of(Token::kPick);
    ads_name name;
    kelhost::ads::NameOfId(id, name);
    t.name[0] = name[0];
    t.name[1] = name[1];
    t.value[0] = x;
    t.value[1] = y;
    return t;
  }

  // The entities of model space, oldest first.
  std::vector<AcDbObjectId> Entities() const {
    std::vector<AcDbObjectId> ids;
    AcDbBlockTableRecord* space = nullptr;
    if (acdbOpenObject(space, db->modelSpaceId(), AcDb::kForRead) != Acad::eOk) return ids;
    AcDbBlockTableRecordIterator* it = nullptr;
    if (space->newIterator(it) == Acad::eOk) {
      for (; !it->done(); it->step()) {
        AcDbObjectId id;
        if (it->getEntityId(id) == Acad::eOk) ids.push_back(id);
      }
      delete it;
    }
    space->close();
    return ids;
  }
  AcDbObjectId Last() const {
    const std::vector<AcDbObjectId> ids = Entities();
    return ids.empty() ? AcDbObjectId::kNull : ids.back();
  }

  // Reads an entity of class E (fails the test for another class).
  template <class E>
  void Read(AcDbObjectId id, const std::function<void(const E&)>& look) const {
    AcDbEntity* e = nullptr;
    ASSERT_EQ(acdbOpenAcDbEntity(e, id, AcDb::kForRead), Acad::eOk);
    const E* typed = E::cast(e);
    EXPECT_NE(typed, nullptr) << "not the expected class";
    if (typed) look(*typed);
    e->close();
  }

  AcDbObjectId MakeLine(double x1, double y1, double x2, double y2) {
    EXPECT_EQ(Run({T(L"LINE"), Point(x1, y1), Point(x2, y2), Enter()}), RTNORM);
    return Last();
  }
  static Token Point(double x, double y) {
    Token t = Token::Of(Token::kPoint);
    t.dim = 2;
    t.value[0] = x;
    t.value[1] = y;
    return t;
  }

  double RealVar(const wchar_t* name) const {
    resbuf rb{};
    EXPECT_EQ(acedGetVar(name, &rb), RTNORM) << "no variable";
    return rb.restype == RTREAL ? rb.resval.rreal : rb.restype == RTSHORT ? rb.resval.rint : -1;
  }
  void SetReal(const wchar_t* name, double v) {
    resbuf rb{};
    rb.restype = RTREAL;
    rb.resval.rreal = v;
    ASSERT_EQ(acedSetVar(name, &rb), RTNORM);
  }

  std::unique_ptr<AcDbDatabase> db;
  int openAtStart = 0;
  std::wstring out;
};

// Points compared to a tolerance.
#define EXPECT_AT(p, px, py)        \
  do {                              \
    EXPECT_NEAR((p).x, (px), 1e-9); \
    EXPECT_NEAR((p).y, (py), 1e-9); \
  } while (0)
