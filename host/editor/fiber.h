// A command that waits for input it has not been given yet must keep its
// place while AutoLISP goes on: (command "PLINE" p1) returns to the
// program with PLINE still asking, and the next (command p2) carries on
// where it stopped. Each built-in command therefore runs on a fiber of its
// own: a stack that can be left in the middle and resumed later, on the
// same thread.
#pragma once

#include <functional>
#include <memory>

namespace kelhost::editor {

class Fiber {
 public:
  // The body runs at the first resume(); it must not let an exception
  // escape (whatever escapes ends the process).
  explicit Fiber(std::function<void()> body);
  ~Fiber();  // only a finished fiber, or one never started, may be destroyed
  Fiber(const Fiber&) = delete;
  Fiber& operator=(const Fiber&) = delete;

  // Runs the fiber until it suspends or its body returns.
  void resume();
  // Called on the fiber: back to whoever resumed it.
  static void suspend();
  // The fiber running now, or null on the thread's own stack.
  static Fiber* current();

  bool finished() const;
  bool started() const;

  // The lowest address the code on this fiber may use (for stack checks).
  const char* stackLow() const;

  struct State;

 private:
  std::unique_ptr<State> mState;
};

// The lowest usable stack address where the caller runs: the current
// fiber's stack, else null (the thread's own stack: ask the thread).
const char* CurrentFiberStackLow();

}  // namespace kelhost::editor
