// The LISP function table, its registration per drawing and the dispatch
// of calls by function code.
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "app/app_state.h"
#include "family_environment.h"
#include "kelcad/entry/lisp_table.h"
#include "kelcad/kelcad.h"
#include "kelhost/ui.h"

namespace {

using LispRegistry = FamilyEnvironment;

TEST(LispTable, NamesCodesAndSharedHandlers) {
  const KEL::LispFunctionRow* rows = KEL::LispFunctionTable();
  std::set<std::wstring> names;
  for (int i = 0; i < KEL::kLispFunctionCount; ++i) {
    names.insert(rows[i].name);
    EXPECT_EQ(rows[i].registerAsFunction, 0) << i;
    EXPECT_NE(rows[i].handler, nullptr) << i;
  }
  EXPECT_EQ(names.size(), 149u);
  EXPECT_STREQ(KEL::LispFunctionName(1), L"kel_findfile");
  EXPECT_STREQ(KEL::LispFunctionName(56), L"kel_setgcinipath");
  EXPECT_STREQ(KEL::LispFunctionName(76), L"mkins");
  EXPECT_STREQ(KEL::LispFunctionName(149), L"KEL_drag_key");
  EXPECT_EQ(KEL::LispFunctionName(0), nullptr);
  EXPECT_EQ(KEL::LispFunctionName(150), nullptr);
  EXPECT_EQ(rows[76 - 1].handler, rows[89 - 1].handler);    // mkins, kel_mkins
  EXPECT_EQ(rows[91 - 1].handler, rows[103 - 1].handler);   // kel_getsoftpath, kel_getinstalldir
  EXPECT_NE(rows[4 - 1].handler, rows[68 - 1].handler);
}

TEST_F(LispRegistry, EveryNameIsDefinedPerDrawingAndRemovedWithIt) {
  ASSERT_TRUE(LoadModule());
  const KEL::LispFunctionRow* rows = KEL::LispFunctionTable();
  for (int i = 0; i < KEL::kLispFunctionCount; ++i)
    EXPECT_EQ(Eval(std::wstring(L"(type ") + rows[i].name + L")"), L"EXRXSUBR") << rows[i].name;
  UnloadModule();
  EXPECT_EQ(Eval(L"(type kel_help)"), L"nil");
  EXPECT_EQ(Eval(L"(type KEL_drag_key)"), L"nil");
}

TEST_F(LispRegistry, FunctionsNotBuiltYetSayLoudlyThatTheyAreMissing) {
  ASSERT_TRUE(LoadModule());
  EXPECT_EQ(Printed(L"(kel_blockinfo \"x\")"), L"\nkel_blockinfo: not available in this build");
  EXPECT_EQ(Printed(L"(KEL_drag_key)"), L"\nKEL_drag_key: not available in this build");
}

// Codes the table does not hold, sent as the platform would send them.
TEST_F(LispRegistry, CodesOutsideTheTableAreRefusedSilently) {
  ASSERT_TRUE(LoadModule());
  void* owner = kelhost::app::FindModuleByName(L"KELCAD.arx");
  ASSERT_NE(owner, nullptr);
  auto& lisp = kelhost::Host::instance().lisp();
  for (int code : {0, -3, 150, 151, 70000}) {
    const std::wstring name = L"kel_code_" + std::to_wstring(code < 0 ? -code : code);
    ASSERT_TRUE(lisp.defineExternal(name, owner, code));
    out.clear();
    const auto outcome = lisp.evalOne(L"(" + name + L")");
    EXPECT_TRUE(outcome.ok) << code;
    EXPECT_FALSE(outcome.printable) << code;  // the void result set before dispatch
    EXPECT_EQ(out, L"") << code;
  }
}

// The listing itself is compared byte for byte by the module_help scenario.
TEST_F(LispRegistry, HtmlHelpShowsItsBoxAndReturnsNothing) {
  ASSERT_TRUE(LoadModule());
  kelhost::ClearShownMessageBoxes();
  const auto outcome = kelhost::Host::instance().lisp().evalOne(L"(kelhtmlhelp \"ignored\" 1)");
  EXPECT_TRUE(outcome.ok);
  EXPECT_FALSE(outcome.printable);
  ASSERT_EQ(kelhost::ShownMessageBoxes().size(), 1u);
  EXPECT_EQ(kelhost::ShownMessageBoxes()[0].text, L"KELPKelHtmlHelp");
  EXPECT_EQ(kelhost::ShownMessageBoxes()[0].type, MB_OK);
}

}  // namespace
