// The host's side of the platform protocol, watched through a fixture
// application: message order, external calls and their conversions,
// commands, locking.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "arx/arxheaders.h"
#include "kelhost/host.h"
#include "kelhost/lisp.h"

namespace {

class ModuleProtocol : public ::testing::Test {
 protected:
  void SetUp() override {
    kelhost::Host::instance().setCommandLineSink([this](const std::wstring& t) { out += t; });
  }
  void TearDown() override {
    kelhost::Host::instance().unloadAll();
    kelhost::Host::instance().setCommandLineSink(nullptr);
    unsetenv("FIXTURE_LOCKED");
  }
  bool load() { return kelhost::Host::instance().loadModule(FIXTURE_MODULE_PATH, &error); }
  std::wstring eval(const std::wstring& text) {
    auto outcome = kelhost::Host::instance().lisp().evalOne(text);
    return outcome.ok ? outcome.valueText : L"error: " + outcome.error;
  }
  std::wstring out, error;
};

TEST_F(ModuleProtocol, MessagesArriveInThePlatformsOrder) {
  ASSERT_TRUE(load()) << std::string(error.begin(), error.end());
  EXPECT_EQ(out, L"[attach][init][load-dwg]");
  out.clear();
  kelhost::Host::instance().unloadAll();
  EXPECT_EQ(out, L"[unload-dwg][unload-app][detach]");
  EXPECT_TRUE(kelhost::Host::instance().loadedModules().empty());
}

TEST_F(ModuleProtocol, ArgumentsAndValuesFollowTheListProtocol) {
  ASSERT_TRUE(load());
  EXPECT_EQ(eval(L"(fix_echo 1 70000 2.5 \"s\" '(1 2) '(1 2 3) '(4 . 5) nil T)"),
            L"(1 70000 2.5 \"s\" (1.0 2.0) (1.0 2.0 3.0) (4 . 5) nil T)");
  EXPECT_EQ(eval(L"(fix_echo '(1 (2 3) \"x\"))"), L"((1 (2.0 3.0) \"x\"))");
  EXPECT_EQ(eval(L"(fix_int)"), L"100000");
  EXPECT_EQ(eval(L"(fix_str)"), L"\"\x4e2d\x6587 text\"");
  EXPECT_EQ(eval(L"(fix_code)"), L"5");
  EXPECT_EQ(eval(L"(type fix_echo)"), L"EXRXSUBR");
}

TEST_F(ModuleProtocol, AFunctionThatSetsNoValueIsNilToCodeAndQuietAtThePrompt) {
  ASSERT_TRUE(load());
  auto outcome = kelhost::Host::instance().lisp().evalOne(L"(fix_void)");
  EXPECT_TRUE(outcome.ok);
  EXPECT_FALSE(outcome.printable);
  EXPECT_EQ(eval(L"(null (fix_void))"), L"T");
}

TEST_F(ModuleProtocol, RetCallsOutsideACallAreRefused) {
  EXPECT_EQ(acedRetInt(1), RTERROR);
  EXPECT_EQ(acedGetFunCode(), RTERROR);
  EXPECT_EQ(acedGetArgs(), nullptr);
  EXPECT_EQ(acedDefun(L"nobody", 1), RTERROR);  // no application is being messaged
}

TEST_F(ModuleProtocol, CommandsRunByGlobalOrLocalNameAndLeaveWithTheirGroup) {
  ASSERT_TRUE(load());
  out.clear();
  EXPECT_TRUE(kelhost::Host::instance().runCommand(L"fixcmd"));
  EXPECT_TRUE(kelhost::Host::instance().runCommand(L"_FIXCMD"));
  EXPECT_TRUE(kelhost::Host::instance().runCommand(L"FixLocal"));
  EXPECT_FALSE(kelhost::Host::instance().runCommand(L"_FIXLOCAL"));  // "_" asks for the global name
  EXPECT_EQ(out, L"[fixcmd][fixcmd][fixcmd]\nUnknown command \"_FIXLOCAL\".  Press F1 for help.");
  EXPECT_EQ(acedRegCmds->addCommand(L"FIXGRP", L"FIXCMD", L"X", 0, [] {}), Acad::eDuplicateKey);
  kelhost::Host::instance().unloadAll();
  EXPECT_FALSE(kelhost::Host::instance().isCommand(L"FIXCMD"));
  EXPECT_EQ(eval(L"(boundp 'fix_echo)"), L"nil");
}

TEST_F(ModuleProtocol, ACallThatLeavesAnObjectOpenIsReported) {
  ASSERT_TRUE(load());
  kelhost::Host& host = kelhost::Host::instance();
  const int before = host.disciplineViolations();
  eval(L"(fix_echo 1)");
  EXPECT_EQ(host.disciplineViolations(), before);
  testing::internal::CaptureStderr();
  eval(L"(fix_leak)");
  std::string report = testing::internal::GetCapturedStderr();
  EXPECT_EQ(host.disciplineViolations(), before + 1);
  EXPECT_EQ(host.openObjectCount(), 1);
  EXPECT_NE(report.find("(FIX_LEAK) left 1 object(s) open"), std::string::npos) << report;
  EXPECT_NE(report.find("DICTIONARY for read"), std::string::npos) << report;
  eval(L"(fix_close)");
  EXPECT_EQ(host.openObjectCount(), 0);
}

TEST_F(ModuleProtocol, ALockedApplicationStaysUntilExit) {
  setenv("FIXTURE_LOCKED", "1", 1);
  ASSERT_TRUE(load());
  EXPECT_FALSE(kelhost::Host::instance().unloadModule(FIXTURE_MODULE_PATH, &error));
  EXPECT_NE(error.find(L"locked"), std::wstring::npos);
  resbuf* loaded = acedArxLoaded();
  ASSERT_NE(loaded, nullptr);
  EXPECT_STREQ(loaded->resval.rstring, L"fixture_module.arx");
  acutRelRb(loaded);
}

TEST_F(ModuleProtocol, AFileThatIsNotAnApplicationIsRefusedWithAReason) {
  EXPECT_FALSE(kelhost::Host::instance().loadModule("/nonexistent/x.arx", &error));
  EXPECT_NE(error.find(L"cannot load"), std::wstring::npos);
  EXPECT_FALSE(kelhost::Host::instance().loadModule(KELHOST_LIBRARY_PATH, &error));
  EXPECT_NE(error.find(L"not an application"), std::wstring::npos);
}

}  // namespace

namespace {

TEST(LispBridge, InvokeCallsAFunctionByNameWithTheRestAsArguments) {
  resbuf* args = acutBuildList(RTSTR, L"strcat", RTSTR, L"ab", RTSTR, L"cd", 0);
  resbuf* result = nullptr;
  ASSERT_EQ(acedInvoke(args, &result), RTNORM);
  ASSERT_NE(result, nullptr);
  EXPECT_EQ(result->restype, RTSTR);
  EXPECT_STREQ(result->resval.rstring, L"abcd");
  acutRelRb(result);
  acutRelRb(args);
}

TEST(LispBridge, SymbolsRoundTripThroughChains) {
  resbuf* value = acutBuildList(RTREAL, 2.5, RTSTR, L"x", 0);
  ASSERT_EQ(acedPutSym(L"bridge_sym", value), RTNORM);
  acutRelRb(value);
  resbuf* back = nullptr;
  ASSERT_EQ(acedGetSym(L"BRIDGE_SYM", &back), RTNORM);
  ASSERT_NE(back, nullptr);
  EXPECT_EQ(back->restype, RTLB);
  acutRelRb(back);
  EXPECT_EQ(kelhost::Host::instance().lisp().evalOne(L"bridge_sym").valueText, L"(2.5 \"x\")");
}

}  // namespace
