#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "editor/fiber.h"

using kelhost::editor::Fiber;

TEST(Fiber, SuspendsAndResumesWhereItStopped) {
  std::string trace;
  Fiber f([&] {
    trace += "a";
    Fiber::suspend();
    trace += "b";
    Fiber::suspend();
    trace += "c";
  });
  EXPECT_FALSE(f.started());
  f.resume();
  EXPECT_EQ(trace, "a");
  EXPECT_FALSE(f.finished());
  f.resume();
  EXPECT_EQ(trace, "ab");
  f.resume();
  EXPECT_EQ(trace, "abc");
  EXPECT_TRUE(f.finished());
  f.resume();  // a finished fiber stays finished
  EXPECT_EQ(trace, "abc");
}

TEST(Fiber, NestedFibersReturnToTheirOwnResumer) {
  std::string trace;
  Fiber inner([&] {
    trace += "i1";
    EXPECT_NE(Fiber::current(), nullptr);
    Fiber::suspend();
    trace += "i2";
  });
  Fiber outer([&] {
    trace += "o1";
    inner.resume();
    trace += "o2";
    Fiber::suspend();
    inner.resume();
    trace += "o3";
  });
  outer.resume();
  EXPECT_EQ(trace, "o1i1o2");
  EXPECT_EQ(Fiber::current(), nullptr);
  outer.resume();
  EXPECT_EQ(trace, "o1i1o2i2o3");
  EXPECT_TRUE(inner.finished());
  EXPECT_TRUE(outer.finished());
}

TEST(Fiber, ExceptionsStayOnTheirFiberAndItsStackIsItsOwn) {
  bool caught = false;
  const char* low = nullptr;
  Fiber f([&] {
    low = kelhost::editor::CurrentFiberStackLow();
    try {
      throw std::runtime_error("inside");
    } catch (const std::runtime_error&) {
      caught = true;
    }
  });
  f.resume();
  EXPECT_TRUE(caught);
  EXPECT_EQ(low, f.stackLow());
  EXPECT_EQ(kelhost::editor::CurrentFiberStackLow(), nullptr);
}

TEST(Fiber, ManyFibersOneAfterAnotherReuseStacks) {
  int sum = 0;
  for (int i = 0; i < 2000; ++i) {
    Fiber f([&] { sum += i; });
    f.resume();
    ASSERT_TRUE(f.finished());
  }
  EXPECT_EQ(sum, 1999 * 2000 / 2);
}
