// An interpreter with its command-line output captured, for the tests of
// the AutoLISP layer.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "kelhost/lisp.h"

class LispTest : public ::testing::Test {
 protected:
  LispTest() {
    lisp.setOutput([this](const std::wstring& text) { out += text; });
  }

  // The prin1 form of the value, or "ERROR: message".
  std::wstring eval(const std::wstring& source) {
    kelhost::lisp::Outcome o = lisp.evalOne(source);
    return o.ok ? o.valueText : L"ERROR: " + o.error;
  }

  // Evaluates every expression; the value of the last one.
  std::wstring run(const std::wstring& source) {
    std::wstring last;
    lisp.evalSource(source, [&](const kelhost::lisp::Outcome& o) {
      last = o.ok ? o.valueText : L"ERROR: " + o.error;
    });
    return last;
  }

  kelhost::lisp::Interpreter lisp;
  std::wstring out;
};
