// Loading applications by name: acedArxLoad, acedArxUnload and
// acedArxLoaded, and AutoLISP's arxload, arxunload, arx and autoarxload,
// watched with the fixture application.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "arx/arxheaders.h"
#include "editor/user_input.h"
#include "kelhost/host.h"
#include "kelhost/lisp.h"

namespace {

std::string DirectoryOf(const std::string& path) { return path.substr(0, path.find_last_of('/')); }

class ArxFunctions : public ::testing::Test {
 protected:
  void SetUp() override {
    const char* acad = std::getenv("ACAD");
    if (acad) savedAcad = acad;
    hadAcad = acad != nullptr;
    setenv("ACAD", ("/nonexistent;" + DirectoryOf(FIXTURE_MODULE_PATH)).c_str(), 1);
    kelhost::Host::instance().setCommandLineSink([this](const std::wstring& t) { out += t; });
  }
  void TearDown() override {
    kelhost::Host::instance().unloadAll();
    kelhost::Host::instance().setCommandLineSink(nullptr);
    kelhost::Host::instance().lisp().evalOne(L"(foreach s '(c:fixcmd c:fix_none c:mine) (set s nil))");
    kelhost::editor::ResetInputState();
    unsetenv("FIXTURE_LOCKED");
    if (hadAcad) setenv("ACAD", savedAcad.c_str(), 1);
    else unsetenv("ACAD");
  }
  std::wstring eval(const std::wstring& text) {
    auto outcome = kelhost::Host::instance().lisp().evalOne(text);
    return outcome.ok ? outcome.valueText : L"error: " + outcome.error;
  }
  std::wstring loaded() { return eval(L"(arx)"); }

  std::wstring out;
  std::string savedAcad;
  bool hadAcad = false;
};

TEST_F(ArxFunctions, TheCallsFindABareNameOnTheSupportPathWithOrWithoutArx) {
  EXPECT_EQ(acedArxLoad(L"fixture_module"), RTNORM);
  resbuf* names = acedArxLoaded();
  ASSERT_NE(names, nullptr);
  EXPECT_STREQ(names->resval.rstring, L"fixture_module.arx");
  EXPECT_EQ(names->rbnext, nullptr);
  acutRelRb(names);
  EXPECT_EQ(acedArxLoad(L"fixture_module.arx"), RTERROR);  // already loaded
  EXPECT_EQ(acedArxUnload(L"FIXTURE_MODULE"), RTNORM);     // any case, ".arx" left off
  EXPECT_EQ(acedArxLoaded(), nullptr);
  EXPECT_EQ(acedArxUnload(L"fixture_module"), RTERROR);    // no longer loaded
  EXPECT_EQ(acedArxLoad(L"no_such_module"), RTERROR);
  EXPECT_EQ(acedArxLoad(L"/nonexistent/fixture_module.arx"), RTERROR);  // a path is not searched
  EXPECT_EQ(acedArxLoad(L"" FIXTURE_MODULE_PATH), RTNORM);
  EXPECT_EQ(out, L"[attach][init][load-dwg][unload-dwg][unload-app][detach][attach][init][load-dwg]");
}

TEST_F(ArxFunctions, ArxloadGivesTheNameBackOrFailsAsTheLoadFunctionDoes) {
  EXPECT_EQ(eval(L"(arxload \"Fixture_Module\")"), L"\"Fixture_Module\"");
  EXPECT_EQ(loaded(), L"(\"fixture_module.arx\")");
  EXPECT_EQ(eval(L"(arxload \"fixture_module\")"), L"error: ARXLOAD failed");
  EXPECT_EQ(eval(L"(arxload \"missing\" \"not there\")"), L"\"not there\"");
  EXPECT_EQ(eval(L"(arxload \"missing\" (lambda () 'called))"), L"CALLED");
  EXPECT_EQ(eval(L"(arxload 12)"), L"error: bad argument type: stringp 12");
  EXPECT_EQ(loaded(), L"(\"fixture_module.arx\")");
}

TEST_F(ArxFunctions, ArxunloadFailsForAnApplicationNotLoadedLockedOrRunning) {
  EXPECT_EQ(eval(L"(arxunload \"fixture_module\")"), L"error: ARXUNLOAD failed");
  EXPECT_EQ(eval(L"(arxunload \"fixture_module\" 'nope)"), L"NOPE");
  ASSERT_EQ(eval(L"(arxload \"fixture_module\")"), L"\"fixture_module\"");
  EXPECT_EQ(eval(L"(fix_unload_self)"), std::to_wstring(RTERROR));  // its own call is running
  EXPECT_EQ(eval(L"(arxunload \"fixture_module.arx\")"), L"\"fixture_module.arx\"");
  EXPECT_EQ(loaded(), L"nil");
  setenv("FIXTURE_LOCKED", "1", 1);
  ASSERT_EQ(eval(L"(arxload \"fixture_module\")"), L"\"fixture_module\"");
  EXPECT_EQ(eval(L"(arxunload \"fixture_module\" \"locked\")"), L"\"locked\"");
  EXPECT_EQ(loaded(), L"(\"fixture_module.arx\")");
}

TEST_F(ArxFunctions, AutoarxloadStubsLoadTheApplicationOnFirstUseThenRunTheCommand) {
  eval(L"(defun c:mine () 'mine)");
  EXPECT_EQ(eval(L"(autoarxload \"fixture_module\" '(\"FIXCMD\" \"FIX_NONE\" \"MINE\"))"), L"nil");
  EXPECT_EQ(eval(L"(type c:fixcmd)"), L"USUBR");
  EXPECT_EQ(eval(L"(c:mine)"), L"MINE");  // a command already defined keeps its definition
  EXPECT_EQ(loaded(), L"nil");
  out.clear();
  eval(L"(c:fixcmd)");
  EXPECT_EQ(loaded(), L"(\"fixture_module.arx\")");
  EXPECT_EQ(out, L"[attach][init][load-dwg]\nFIXCMD[fixcmd]");
  out.clear();
  eval(L"(c:fixcmd)");  // loaded already: just the command
  EXPECT_EQ(out, L"\nFIXCMD[fixcmd]");
  out.clear();
  eval(L"(c:fix_none)");  // the application defines no such command
  EXPECT_EQ(out, L"\nUnknown command \"FIX_NONE\".  Press F1 for help.");
}

TEST_F(ArxFunctions, AnAutoarxloadStubForAMissingFileSaysWhereItLooked) {
  eval(L"(autoarxload \"nowhere\" '(\"FIXCMD\"))");
  out.clear();
  auto outcome = kelhost::Host::instance().lisp().evalOne(L"(c:fixcmd)");
  EXPECT_TRUE(outcome.ok);
  EXPECT_FALSE(outcome.printable);
  EXPECT_EQ(out,
            L"\nThe file nowhere(.lsp/.exe/.arx) was not found in your search path folders."
            L"\nCheck the installation of the support files and try again.");
  EXPECT_EQ(eval(L"(autoarxload \"x\" \"FIXCMD\")"), L"error: bad argument type: listp \"FIXCMD\"");
}

}  // namespace
