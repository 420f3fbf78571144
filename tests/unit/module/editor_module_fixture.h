// The module's editor functions under test: a fresh drawing as the working
// database, the session's system variables at their defaults, no pending
// command-line input and no recorded window calls, before and after each
// test.
#pragma once

#include <memory>
#include <string>

#include "arx/arxheaders.h"
#include "editor/user_input.h"
#include "family_environment.h"
#include "kelhost/sysvars.h"
#include "kelhost/ui.h"

class EditorModuleTest : public FamilyEnvironment {
 protected:
  void SetUp() override {
    FamilyEnvironment::SetUp();
    drawing = std::make_unique<AcDbDatabase>();
    acdbHostApplicationServices()->setWorkingDatabase(drawing.get());
    Fresh();
  }
  void TearDown() override {
    FamilyEnvironment::TearDown();
    Fresh();
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    drawing.reset();
  }
  static void Fresh() {
    kelhost::sysvars::ResetSession();
    kelhost::editor::ResetInputState();
    kelhost::ClearWindowCalls();
  }

  // (getvar name) in print form.
  std::wstring Var(const std::wstring& name) { return Eval(L"(getvar \"" + name + L"\")"); }
  // True when the expression ran and gave nothing to show.
  static bool Void(const std::wstring& text) {
    const auto outcome = kelhost::Host::instance().lisp().evalOne(text);
    return outcome.ok && !outcome.printable;
  }
  // Read-only variables (UNDOCTL, EXTMIN, ...) as the host sets them.
  static void HostVar(const wchar_t* name, int v) {
    resbuf rb{};
    rb.restype = RTSHORT;
    rb.resval.rint = static_cast<short>(v);
    ASSERT_EQ(kelhost::sysvars::SetHostVar(name, &rb), RTNORM);
  }
  static void HostVar(const wchar_t* name, double x, double y, double z) {
    resbuf rb{};
    rb.restype = RT3DPOINT;
    rb.resval.rpoint[0] = x;
    rb.resval.rpoint[1] = y;
    rb.resval.rpoint[2] = z;
    ASSERT_EQ(kelhost::sysvars::SetHostVar(name, &rb), RTNORM);
  }
  // A layer record as a drawing file would have it.
  std::wstring MakeLayer(const std::wstring& name, int flags, int color) {
    return Eval(L"(entmake (list '(0 . \"LAYER\") '(100 . \"AcDbSymbolTableRecord\") '(100 . \"AcDbLayerTableRecord\")"
                L" (cons 2 \"" + name + L"\") (cons 70 " + std::to_wstring(flags) + L") (cons 62 " +
                std::to_wstring(color) + L") '(6 . \"Continuous\")))");
  }

  std::unique_ptr<AcDbDatabase> drawing;
};
