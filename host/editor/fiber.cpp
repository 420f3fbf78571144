// Fibers on ucontext with stacks of their own (mapped with a guard page and
// kept for reuse, since a script may run a hundred thousand commands), told
// to AddressSanitizer when it watches the stacks.
#include "editor/fiber.h"

#include <sys/mman.h>
#include <ucontext.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <vector>

#if defined(__SANITIZE_ADDRESS__)
#define KELHOST_FIBER_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KELHOST_FIBER_ASAN 1
#endif
#endif
#ifdef KELHOST_FIBER_ASAN
#include <sanitizer/common_interface_defs.h>
#endif

namespace kelhost::editor {
namespace {

// Enough for a command that evaluates AutoLISP or reads a drawing file;
// pages are only committed when touched.
constexpr size_t kStackSize = size_t{8} << 20;
constexpr size_t kKeptStacks = 4;

size_t PageSize() {
  static const size_t page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
  return page;
}

// A mapping: guard page at the bottom, then the usable stack.
struct Stack {
  char* base = nullptr;  // start of the mapping (the guard page)
  char* low() const { return base + PageSize(); }
  size_t size() const { return kStackSize; }
};

std::vector<Stack>& KeptStacks() {
  static thread_local std::vector<Stack> kept;
  return kept;
}

Stack TakeStack() {
  auto& kept = KeptStacks();
  if (!kept.empty()) {
    Stack s = kept.back();
    kept.pop_back();
    return s;
  }
  const size_t total = kStackSize + PageSize();
  void* p = mmap(nullptr, total, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (p == MAP_FAILED) {
    std::fputs("kelhost: no memory for a command's stack\n", stderr);
    std::abort();
  }
  mprotect(p, PageSize(), PROT_NONE);
  return Stack{static_cast<char*>(p)};
}

void GiveBackStack(Stack s) {
  auto& kept = KeptStacks();
  if (kept.size() < kKeptStacks) {
    kept.push_back(s);
    return;
  }
  munmap(s.base, kStackSize + PageSize());
}

thread_local Fiber* gCurrent = nullptr;
thread_local Fiber::State* gStarting = nullptr;

}  // namespace

struct Fiber::State {
  std::function<void()> body;
  Stack stack;
  ucontext_t context{};
  ucontext_t resumer{};
  Fiber* self = nullptr;
  bool started = false;
  bool finished = false;
#ifdef KELHOST_FIBER_ASAN
  void* fakeStack = nullptr;            // the side that switched away keeps its fake stack here
  const void* resumerBottom = nullptr;  // the resumer's stack, learnt on arrival
  size_t resumerSize = 0;
#endif

  static void Entry();
  void switchToResumer(bool dying);
};

#ifdef KELHOST_FIBER_ASAN
void Fiber::State::switchToResumer(bool dying) {
  __sanitizer_start_switch_fiber(dying ? nullptr : &fakeStack, resumerBottom, resumerSize);
  swapcontext(&context, &resumer);
  __sanitizer_finish_switch_fiber(fakeStack, &resumerBottom, &resumerSize);
}
#else
void Fiber::State::switchToResumer(bool) { swapcontext(&context, &resumer); }
#endif

void Fiber::State::Entry() {
  State* s = gStarting;
  gStarting = nullptr;
#ifdef KELHOST_FIBER_ASAN
  __sanitizer_finish_switch_fiber(nullptr, &s->resumerBottom, &s->resumerSize);
#endif
  s->body();
  s->finished = true;
  s->switchToResumer(true);
  // A finished fiber is never resumed.
  std::abort();
}

Fiber::Fiber(std::function<void()> body) : mState(std::make_unique<State>()) {
  mState->body = std::move(body);
  mState->self = this;
}

Fiber::~Fiber() {
  if (mState->started && !mState->finished) {
    std::fputs("kelhost: a suspended command's fiber was destroyed\n", stderr);
    std::abort();
  }
  if (mState->stack.base) GiveBackStack(mState->stack);
}

void Fiber::resume() {
  State* s = mState.get();
  if (s->finished) return;
  if (!s->started) {
    s->started = true;
    s->stack = TakeStack();
    getcontext(&s->context);
    s->context.uc_stack.ss_sp = s->stack.low();
    s->context.uc_stack.ss_size = s->stack.size();
    s->context.uc_link = nullptr;
    makecontext(&s->context, &State::Entry, 0);
    gStarting = s;
  }
  Fiber* previous = gCurrent;
  gCurrent = this;
#ifdef KELHOST_FIBER_ASAN
  void* fake = nullptr;
  __sanitizer_start_switch_fiber(&fake, s->stack.low(), s->stack.size());
  swapcontext(&s->resumer, &s->context);
  __sanitizer_finish_switch_fiber(fake, nullptr, nullptr);
#else
  swapcontext(&s->resumer, &s->context);
#endif
  gCurrent = previous;
}

void Fiber::suspend() {
  Fiber* f = gCurrent;
  if (!f) return;
  f->mState->switchToResumer(false);
}

Fiber* Fiber::current() { return gCurrent; }
bool Fiber::finished() const { return mState->finished; }
bool Fiber::started() const { return mState->started; }
const char* Fiber::stackLow() const { return mState->stack.base ? mState->stack.low() : nullptr; }

const char* CurrentFiberStackLow() { return gCurrent ? gCurrent->stackLow() : nullptr; }

}  // namespace kelhost::editor
