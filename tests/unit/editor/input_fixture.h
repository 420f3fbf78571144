// A fresh drawing whose user answers come from a list, one per line, as an
// answer file gives them; the command line is captured in out.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "arx/acedads.h"
#include "editor/user_input.h"
#include "kelhost/sysvars.h"
#include "tests/unit/database/database_fixture.h"

class ListedAnswers : public kelhost::editor::InputSource {
 public:
  explicit ListedAnswers(std::vector<std::wstring> lines) : mLines(std::move(lines)) {}
  bool read(std::wstring& text, bool) override {
    if (mNext >= mLines.size()) return false;
    text = mLines[mNext++];
    return true;
  }

 private:
  std::vector<std::wstring> mLines;
  size_t mNext = 0;
};

class InputTest : public DrawingTest {
 protected:
  void SetUp() override {
    DrawingTest::SetUp();
    answers({});
  }
  void TearDown() override {
    kelhost::editor::ResetInputState();
    kelhost::editor::SetBaseInput(nullptr);
    DrawingTest::TearDown();
  }
  // The user's next answers; after the last the input ends (cancel).
  void answers(std::vector<std::wstring> lines) {
    kelhost::editor::ResetInputState();
    kelhost::editor::SetBaseInput(std::make_unique<ListedAnswers>(std::move(lines)));
    out.clear();
  }
  void setShort(const wchar_t* name, short value) {
    resbuf rb{};
    rb.restype = RTSHORT;
    rb.resval.rint = value;
    ASSERT_EQ(acedSetVar(name, &rb), RTNORM) << name;
  }
  void setReal(const wchar_t* name, double value) {
    resbuf rb{};
    rb.restype = RTREAL;
    rb.resval.rreal = value;
    ASSERT_EQ(acedSetVar(name, &rb), RTNORM) << name;
  }
  void setPoint(const wchar_t* name, double x, double y, double z) {
    resbuf rb{};
    rb.restype = RT3DPOINT;
    rb.resval.rpoint[0] = x;
    rb.resval.rpoint[1] = y;
    rb.resval.rpoint[2] = z;
    ASSERT_EQ(kelhost::sysvars::SetHostVar(name, &rb), RTNORM) << name;
  }
};
