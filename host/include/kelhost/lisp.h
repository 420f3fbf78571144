// The AutoLISP interpreter of a document: reader, evaluator, built-ins, and
// the doorway through which external (EXRXSUBR) functions are called.
#pragma once

#include <functional>
#include <memory>
#include <string>

struct resbuf;

namespace kelhost::lisp {

// What an external function gave back.
struct ExternalResult {
  // True when the function set no value (acedRetVoid): code sees nil and
  // the prompt prints nothing.
  bool isVoid = true;
  // The value as a chain in the platform's list protocol (described at
  // the end of Interpreter); owned by the interpreter after return. Null
  // with isVoid false means nil.
  resbuf* value = nullptr;
};

// Called for every call of an external function.
class ExternalHandler {
 public:
  virtual ~ExternalHandler() = default;
  // args: the call's arguments converted to a chain (null for none); the
  // interpreter owns and releases it after the call. Each argument is one
  // item of the list protocol below; a list of two or three numbers is an
  // RTPOINT / RT3DPOINT (reals, from integers too), an integer within 16
  // bits RTSHORT, a larger one RTLONG, and a symbol other than T travels
  // as RTSTR holding its upper-case name. A function, file or error object
  // has no chain form: calling with one is the AutoLISP error "bad argument
  // type: <value>" and the handler is not called.
  virtual ExternalResult invoke(void* owner, int code, const std::wstring& name, resbuf* args) = 0;
};

// What the interpreter may do beyond pure evaluation. The defaults are the
// platform's; a fuzzer or a sandboxed caller narrows them.
struct Options {
  bool allowFiles = true;         // open, load and findfile reach the file system
  bool allowSetenv = true;        // setenv changes the process environment
  unsigned long long maxSteps = 0;  // evaluation steps and allocated cells per
                                    // call into the interpreter (evalSource,
                                    // evalOne, loadFile...); 0: no limit
};

// Outcome of evaluating one top-level expression.
struct Outcome {
  bool ok = true;            // false: an AutoLISP error abandoned it
  bool printable = true;     // false: nothing is echoed at the prompt
  std::wstring valueText;    // the value in prin1 form (when ok)
  std::wstring error;        // the error message (when !ok), without "; error: "
};

class Interpreter {
 public:
  Interpreter();
  ~Interpreter();
  Interpreter(const Interpreter&) = delete;
  Interpreter& operator=(const Interpreter&) = delete;

  // Command-line text written by princ, prin1, print, prompt, terpri and
  // the error reports ("\n; error: ..." when *error* is not set).
  void setOutput(std::function<void(const std::wstring&)> sink);
  void setExternalHandler(ExternalHandler* handler);
  void setOptions(const Options& options);
  // True while an expression is being evaluated (a prompt asked from
  // AutoLISP code cannot evaluate another one).
  bool evaluating() const;

  // Reads and evaluates every expression of source in order, calling
  // onEach after each top-level expression. Stops at the first error
  // (reader or evaluation) and returns false then.
  bool evalSource(const std::wstring& source, const std::function<void(const Outcome&)>& onEach);
  // Evaluates one expression text and returns its outcome (reader errors
  // included).
  Outcome evalOne(const std::wstring& source);
  // Evaluates one expression text and gives its value as a chain in the
  // list protocol below (*value: a new chain the caller releases; an RTNIL
  // node for nil). Errors are reported as usual; *value is null then, and
  // also for a value that has no chain form (a function).
  Outcome evalToChain(const std::wstring& source, resbuf** value);
  // Same as (load path): the value of the last expression, errors
  // reported as by load.
  Outcome loadFile(const std::wstring& familyPath);

  // External functions (acedDefun/acedUndef): the symbol (case-insensitive)
  // is bound to an EXRXSUBR value carrying owner and code. Calling one with
  // no handler set, or after its definition was removed, is the error
  // "no function definition: NAME" (also through a copy of the value).
  bool defineExternal(const std::wstring& name, void* owner, int code);
  // Removes the binding when it is the EXRXSUBR of that code.
  bool undefineExternal(const std::wstring& name, int code);
  // The owner's functions stop working wherever they are kept, and the
  // symbols that name them are cleared.
  void undefineAllOf(void* owner);

  // Symbols as chains (acedGetSym/acedPutSym). getSymbol returns a new
  // chain the caller releases (RTNIL node for nil), or null when the name
  // is not a valid symbol or the value has no chain form (a function).
  // putSymbol converts the chain as described below; false for an
  // invalid name or a malformed chain.
  resbuf* getSymbol(const std::wstring& name);
  bool putSymbol(const std::wstring& name, const resbuf* value);

  // Calls an AutoLISP function (acedInvoke): args holds the function name
  // (RTSTR) followed by its arguments in the list protocol; *result
  // receives a new chain the caller releases (RTNIL node for nil). RTNORM,
  // or RTERROR when the call failed (the error is reported as usual).
  int invoke(const resbuf* args, resbuf** result);

  // Value chains follow the platform's list protocol: RTSTR string,
  // RTREAL real, RTSHORT/RTLONG integer, RTPOINT (x y), RT3DPOINT (x y z),
  // RTENAME/RTPICKS names, RTNIL nil, RTT T, RTLB..RTLE a list, RTLB a
  // RTDOTE b RTLE a dotted pair; a node with a DXF group code becomes
  // (code . value), (code x y z) for points; several nodes at top level
  // form a list, a single node is its value. RTVOID and RTNONE nodes carry
  // nothing. A chain whose lists do not nest is refused (for a result: the
  // AutoLISP error "bad list in result chain").

  struct Impl;

 private:
  std::unique_ptr<Impl> mImpl;
};

}  // namespace kelhost::lisp
