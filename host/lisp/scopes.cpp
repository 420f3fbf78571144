// Scopes of evaluation: nesting depth and the native stack, dynamic
// bindings, and the state of a call into the interpreter from outside.
#include <pthread.h>

#include "editor/fiber.h"
#include "lisp/machine.h"

namespace kelhost::lisp {
namespace {

// What AutoLISP reports when a program recurses without end.
const wchar_t kStackMessage[] = L"Hard error occurred *** internal stack limit reached (simulated)";
// Nesting the platform allows before that message; the native stack is
// checked as well, since frames differ in size between builds.
constexpr int kMaxDepth = 20000;
// Extra room for *error* to run after the limit was hit.
constexpr int kHandlerDepth = 2000;

// The lowest usable address of this thread's stack, or null if unknown.
const char* QueryStackLow() {
  pthread_attr_t attr;
  if (pthread_getattr_np(pthread_self(), &attr) != 0) return nullptr;
  void* addr = nullptr;
  size_t size = 0;
  int rc = pthread_attr_getstack(&attr, &addr, &size);
  pthread_attr_destroy(&attr);
  return rc == 0 ? static_cast<const char*>(addr) : nullptr;
}

}  // namespace

DepthGuard::DepthGuard(Machine& m) : mMachine(m) {
  const char* here = static_cast<const char*>(__builtin_frame_address(0));
  const bool handler = m.inErrorHandler;
  // Leave room for the native work below the deepest guarded frame, and
  // for *error* itself once the limit is reached.
  const size_t reserve = handler ? 96 * 1024 : 256 * 1024;
  const bool nativeFull = m.stackFloor && here < m.stackFloor + reserve;
  if (nativeFull || m.depth >= (handler ? kMaxDepth + kHandlerDepth : kMaxDepth)) m.raise(kStackMessage);
  ++m.depth;
}

Bindings::~Bindings() {
  for (auto it = mSaved.rbegin(); it != mSaved.rend(); ++it) it->first->value = std::move(it->second);
}

void Bindings::bind(const std::shared_ptr<Symbol>& sym, ValuePtr value) {
  for (const auto& saved : mSaved)
    if (saved.first == sym) return;
  mSaved.emplace_back(sym, std::move(sym->value));
  sym->value = std::move(value);
}

EntryScope::EntryScope(Machine& m)
    : mMachine(m), mCatchDepth(m.catchDepth), mInErrorHandler(m.inErrorHandler), mStackFloor(m.stackFloor) {
  const bool outermost = m.entryDepth++ == 0;
  if (outermost) {
    m.steps = 0;
    m.depth = 0;
  }
  // A command's fiber has a stack of its own: an entry made there measures
  // against that stack, and the one it came from gets its floor back on exit.
  const char* fiberLow = editor::CurrentFiberStackLow();
  if (outermost || fiberLow) {
    const char* here = static_cast<const char*>(__builtin_frame_address(0));
    thread_local const char* threadLow = QueryStackLow();
    const char* low = fiberLow ? fiberLow : threadLow;
    // Never plan on more than 64 MB, nor on less than 1 MB when the
    // thread's stack cannot be asked.
    constexpr size_t kMaxUse = size_t{64} << 20;
    if (!low)
      m.stackFloor = here - (size_t{1} << 20);
    else
      m.stackFloor = static_cast<size_t>(here - low) > kMaxUse ? here - kMaxUse : low;
  }
  m.catchDepth = 0;
  m.inErrorHandler = false;
}

EntryScope::~EntryScope() {
  mMachine.catchDepth = mCatchDepth;
  mMachine.inErrorHandler = mInErrorHandler;
  mMachine.stackFloor = mStackFloor;
  --mMachine.entryDepth;
}

}  // namespace kelhost::lisp
