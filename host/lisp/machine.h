// The interpreter's state and evaluation core, shared by the special forms
// and the families of built-in functions.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

#include "kelhost/lisp.h"
#include "lisp/value.h"

namespace kelhost::lisp {

// An AutoLISP error on its way to whoever handles it: a top-level call,
// vl-catch-all-apply, or load with an onfailure value.
struct LispError {
  std::wstring message;
  bool reported;  // already printed or given to *error*
};

struct Interpreter::Impl {
  Impl();
  ~Impl();

  std::shared_ptr<Symbol> intern(const std::wstring& name);  // any case
  ValuePtr truth(bool b) const { return b ? ValuePtr(symT) : nullptr; }

  void defineBuiltin(const wchar_t* name, BuiltinFn fn, int minArgs, int maxArgs);
  void defineSpecial(const wchar_t* name, SpecialFn fn);

  ValuePtr eval(const ValuePtr& form);
  ValuePtr evalForms(const ValuePtr& forms);  // each in turn; the last value
  // Calls a function value; a symbol stands for its value, a list starting
  // with LAMBDA (or a defun-q list) for the function it describes.
  ValuePtr apply(const ValuePtr& fn, Args& args);
  std::shared_ptr<USubr> makeFunction(const std::wstring& name, const ValuePtr& params, const ValuePtr& body);

  // Reports (unless inside vl-catch-all-apply) and abandons.
  [[noreturn]] void raise(const std::wstring& message);
  // "bad argument type: <what><value>": what is e.g. L"numberp: " or L"stringp ".
  [[noreturn]] void badArgument(const wchar_t* what, const ValuePtr& v);
  // Prints "\n; error: ..." or calls *error* with the message.
  void report(const std::wstring& message);

  // One evaluation step (or allocated cell) against Options::maxSteps.
  void step(std::uint64_t units = 1);
  // prin1 (escape) or princ text of a value, within the step budget.
  std::wstring printed(const ValuePtr& v, bool escape = true);
  void write(const std::wstring& text);

  std::unordered_map<std::wstring, std::shared_ptr<Symbol>> symbols;
  std::shared_ptr<Symbol> symT, symQuote, symLambda, symSlash, symError, symQuiet;
  std::function<void(const std::wstring&)> output;
  ExternalHandler* handler = nullptr;
  Options options;
  std::vector<std::weak_ptr<ExSubr>> externals;
  std::vector<std::wstring> loadingDirs;  // directories of the files being loaded

  // The functions being called, outermost first (vl-bt); null for a call
  // of a function value that no symbol names.
  std::vector<const Symbol*> callStack;
  // vl-bb-set's blackboard: values shared by every document's namespace.
  std::unordered_map<std::wstring, ValuePtr> blackboard;

  int catchDepth = 0;          // active vl-catch-all-apply (and load onfailure) frames
  bool inErrorHandler = false;  // *error* is running
  bool lastWasVoid = false;     // the latest value came from an external acedRetVoid
  int entryDepth = 0;
  int depth = 0;
  std::uint64_t steps = 0;
  const char* stackFloor = nullptr;  // lowest frame address evaluation may reach

 private:
  ValuePtr evalCall(const ValuePtr& form);
  ValuePtr applyUser(USubr& fn, Args& args);
  ValuePtr applyExternal(ExSubr& fn, Args& args);
};

// Nested evaluation: guards the native stack and the platform's depth.
class DepthGuard {
 public:
  explicit DepthGuard(Machine& m);
  ~DepthGuard() { --mMachine.depth; }
  DepthGuard(const DepthGuard&) = delete;
  DepthGuard& operator=(const DepthGuard&) = delete;

 private:
  Machine& mMachine;
};

// A call on the call stack while it runs.
class CallRecord {
 public:
  CallRecord(Machine& m, const Symbol* fn) : mMachine(m), mDepth(m.callStack.size()) { m.callStack.push_back(fn); }
  // Back to the depth it found (commands on fibers may interleave calls).
  ~CallRecord() {
    if (mMachine.callStack.size() > mDepth) mMachine.callStack.resize(mDepth);
  }
  CallRecord(const CallRecord&) = delete;
  CallRecord& operator=(const CallRecord&) = delete;

 private:
  Machine& mMachine;
  size_t mDepth;
};

// Dynamic binding of function arguments and locals: the previous values
// come back when the scope ends, by return or by error.
class Bindings {
 public:
  Bindings() = default;
  ~Bindings();
  Bindings(const Bindings&) = delete;
  Bindings& operator=(const Bindings&) = delete;
  // A symbol bound twice keeps its first binding.
  void bind(const std::shared_ptr<Symbol>& sym, ValuePtr value);

 private:
  std::vector<std::pair<std::shared_ptr<Symbol>, ValuePtr>> mSaved;
};

// Errors inside are handed to the catcher instead of being reported.
class CatchScope {
 public:
  explicit CatchScope(Machine& m) : mMachine(m) { ++mMachine.catchDepth; }
  ~CatchScope() { --mMachine.catchDepth; }
  CatchScope(const CatchScope&) = delete;
  CatchScope& operator=(const CatchScope&) = delete;

 private:
  Machine& mMachine;
};

// A call into the interpreter from outside (the console, acedInvoke,
// acedGetSym...): fresh error state, and the stack floor of this thread.
class EntryScope {
 public:
  explicit EntryScope(Machine& m);
  ~EntryScope();
  EntryScope(const EntryScope&) = delete;
  EntryScope& operator=(const EntryScope&) = delete;

 private:
  Machine& mMachine;
  int mCatchDepth;
  bool mInErrorHandler;
  const char* mStackFloor;
};

// Typed arguments with the platform's "bad argument type" errors.
std::int32_t IntArg(Machine& m, const ValuePtr& v);
double NumArg(Machine& m, const ValuePtr& v);
const std::wstring& StrArg(Machine& m, const ValuePtr& v);
std::shared_ptr<Symbol> SymArg(Machine& m, const ValuePtr& v);
// A proper list's elements ("bad argument type: listp ..." otherwise).
Args ListArg(Machine& m, const ValuePtr& v);

// Registration of each family of built-ins.
void RegisterSpecialForms(Machine& m);
void RegisterListBuiltins(Machine& m);
void RegisterMathBuiltins(Machine& m);
void RegisterPredicateBuiltins(Machine& m);
void RegisterStringBuiltins(Machine& m);
void RegisterSequenceBuiltins(Machine& m);
void RegisterControlBuiltins(Machine& m);
void RegisterOutputBuiltins(Machine& m);
void RegisterFileBuiltins(Machine& m);
void RegisterLoadBuiltins(Machine& m);
void RegisterGeometryBuiltins(Machine& m);
void RegisterEntityBuiltins(Machine& m);
void RegisterSysvarBuiltins(Machine& m);
void RegisterSelectionBuiltins(Machine& m);
void RegisterCommandBuiltins(Machine& m);
void RegisterInputBuiltins(Machine& m);
void RegisterDialogBuiltins(Machine& m);
void RegisterSessionBuiltins(Machine& m);
void RegisterRegistryBuiltins(Machine& m);
void RegisterFileSystemBuiltins(Machine& m);
void RegisterScreenBuiltins(Machine& m);
void RegisterPickBuiltins(Machine& m);
void RegisterPropertyBuiltins(Machine& m);
void RegisterStandardDialogBuiltins(Machine& m);

}  // namespace kelhost::lisp
