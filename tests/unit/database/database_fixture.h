// A fresh drawing as the working database for each test, AutoLISP
// evaluation against it, and the discipline check: nothing left open.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "arx/arxheaders.h"
#include "db/stub.h"
#include "kelhost/host.h"
#include "kelhost/lisp.h"

class DrawingTest : public ::testing::Test {
 protected:
  void SetUp() override {
    db = std::make_unique<AcDbDatabase>();
    acdbHostApplicationServices()->setWorkingDatabase(db.get());
    openAtStart = kelhost::db::OpenObjectCount();
    kelhost::Host::instance().setCommandLineSink([this](const std::wstring& t) { out += t; });
  }
  void TearDown() override {
    EXPECT_EQ(kelhost::db::OpenObjectCount(), openAtStart) << "objects left open";
    kelhost::Host::instance().setCommandLineSink(nullptr);
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    db.reset();
  }
  // The printed value, or "error: ..." when evaluation failed.
  std::wstring eval(const std::wstring& text) {
    auto outcome = kelhost::Host::instance().lisp().evalOne(text);
    return outcome.ok ? outcome.valueText : L"error: " + outcome.error;
  }
  // How many objects the database holds (its next handle moves with each).
  Adesk::UInt64 handseed() const { return static_cast<Adesk::UInt64>(db->handseed()); }

  std::unique_ptr<AcDbDatabase> db;
  int openAtStart = 0;
  std::wstring out;
};
