// A fresh drawing with a fresh undo journal for each test: commands typed
// at the prompt with their answers, AutoLISP evaluated at the prompt (one
// undo step each, as the console makes it), the command line captured,
// and a fingerprint of everything undo must put back.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "arx/arxheaders.h"
#include "db/stub.h"
#include "editor/command_processor.h"
#include "editor/undo.h"
#include "editor/undo_journal.h"
#include "editor/user_input.h"
#include "kelhost/editor.h"
#include "kelhost/host.h"
#include "kelhost/lisp.h"
#include "kelhost/sysvars.h"

class UndoTest : public ::testing::Test {
 protected:
  // Answers as a file of answers gives them: one a line, shown on the
  // command line as they are read; when they run out, input ends.
  class Answers : public kelhost::editor::InputSource {
   public:
    explicit Answers(std::deque<std::wstring>& lines) : mLines(lines) {}
    bool read(std::wstring& text, bool) override {
      if (mLines.empty()) return false;
      text = mLines.front();
      mLines.pop_front();
      return true;
    }

   private:
    std::deque<std::wstring>& mLines;
  };

  void SetUp() override {
    db = std::make_unique<AcDbDatabase>();
    acdbHostApplicationServices()->setWorkingDatabase(db.get());
    kelhost::sysvars::ResetSession();
    kelhost::editor::undo::Reset();
    kelhost::editor::ResetInputState();
    kelhost::editor::SetBaseInput(std::make_unique<Answers>(answers));
    openAtStart = kelhost::db::OpenObjectCount();
    kelhost::Host::instance().setCommandLineSink([this](const std::wstring& t) { out += t; });
    lisp(LR"((defun undo-test-fingerprint (/ e l)
               (setq e (entnext))
               (while e (setq l (cons (entget e '("*")) l) e (entnext e)))
               (foreach table '("LAYER" "LTYPE" "STYLE" "BLOCK")
                 (setq e (tblnext table T))
                 (while e (setq l (cons (entget (tblobjname table (cdr (assoc 2 e))) '("*")) l)
                                e (tblnext table))))
               (setq e (dictnext (namedobjdict) T))
               (while e (setq l (cons e l) e (dictnext (namedobjdict))))
               (cons (mapcar 'getvar '("CLAYER" "CECOLOR" "CELTYPE" "TEXTSTYLE" "TEXTSIZE" "LTSCALE" "ANGBASE"
                                       "USERI1" "USERR1" "PDMODE"))
                     (reverse l))))",
         false);
    kelhost::editor::undo::Reset();
  }

  void TearDown() override {
    EXPECT_EQ(kelhost::db::OpenObjectCount(), openAtStart) << "objects left open";
    kelhost::editor::SetBaseInput(nullptr);
    kelhost::Host::instance().setCommandLineSink(nullptr);
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    db.reset();
    kelhost::sysvars::ResetSession();
  }

  // A command typed at the prompt, answered by lines.
  void type(const std::wstring& command, std::initializer_list<std::wstring> lines = {}) {
    answers.assign(lines.begin(), lines.end());
    out.clear();
    kelhost::editor::RunTypedCommand(command);
  }

  // AutoLISP typed at the prompt (its own undo step); the printed value,
  // or "error: ..." when it failed.
  std::wstring lisp(const std::wstring& text, bool clearOut = true) {
    if (clearOut) out.clear();
    kelhost::editor::undo::ExpressionStarted();
    kelhost::lisp::Outcome o = kelhost::Host::instance().lisp().evalOne(text);
    kelhost::editor::undo::ExpressionEnded();
    return o.ok ? o.valueText : L"error: " + o.error;
  }

  // Everything undo puts back that the tests look at: every entity's and
  // every record's list with its xdata, the named objects, the drawing's
  // variables. Read outside any step.
  std::wstring fingerprint() {
    kelhost::lisp::Outcome o = kelhost::Host::instance().lisp().evalOne(L"(undo-test-fingerprint)");
    return o.ok ? o.valueText : L"error: " + o.error;
  }

  int live(const std::wstring& type) {
    return std::stoi(lisp(L"(if (setq s (ssget \"X\" '((0 . \"" + type + L"\")))) (sslength s) 0)", false));
  }

  int undoctl() { return std::stoi(lisp(L"(getvar \"UNDOCTL\")", false)); }

  std::unique_ptr<AcDbDatabase> db;
  std::deque<std::wstring> answers;
  int openAtStart = 0;
  std::wstring out;
};
