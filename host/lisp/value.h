// AutoLISP values: the data types the language knows, shared by reference.
// nil is the null pointer; T is the interned symbol T.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "kelhost/lisp.h"

namespace kelhost::lisp {

using Machine = Interpreter::Impl;

enum class Kind : std::uint8_t {
  Int,
  Real,
  Str,
  Sym,
  Cons,
  Subr,
  USubr,
  ExSubr,
  Ename,
  Pickset,
  File,
  CatchError,
};

struct Value {
  explicit Value(Kind k) : kind(k) {}
  virtual ~Value() = default;
  Value(const Value&) = delete;
  Value& operator=(const Value&) = delete;
  const Kind kind;
};

using ValuePtr = std::shared_ptr<Value>;
using Args = std::vector<ValuePtr>;

// A built-in function receives its evaluated arguments, already counted.
using BuiltinFn = ValuePtr (*)(Machine&, Args&);
// A special form receives the unevaluated rest of its form.
using SpecialFn = ValuePtr (*)(Machine&, const ValuePtr& forms);

struct IntValue : Value {
  explicit IntValue(std::int32_t v) : Value(Kind::Int), value(v) {}
  std::int32_t value;
};

struct RealValue : Value {
  explicit RealValue(double v) : Value(Kind::Real), value(v) {}
  double value;
};

struct StrValue : Value {
  explicit StrValue(std::wstring v) : Value(Kind::Str), value(std::move(v)) {}
  std::wstring value;
};

// Symbols carry their global (dynamically rebound) value.
struct Symbol : Value {
  explicit Symbol(std::wstring n) : Value(Kind::Sym), name(std::move(n)) {}
  std::wstring name;
  ValuePtr value;
};

struct Cons : Value {
  Cons(ValuePtr a, ValuePtr d) : Value(Kind::Cons), car(std::move(a)), cdr(std::move(d)) {}
  ~Cons() override;
  ValuePtr car;
  ValuePtr cdr;
};

struct Subr : Value {
  Subr(std::wstring n, BuiltinFn f, int lo, int hi)
      : Value(Kind::Subr), name(std::move(n)), fn(f), minArgs(lo), maxArgs(hi) {}
  Subr(std::wstring n, SpecialFn s) : Value(Kind::Subr), name(std::move(n)), special(s) {}
  std::wstring name;
  BuiltinFn fn = nullptr;
  SpecialFn special = nullptr;
  int minArgs = 0;
  int maxArgs = -1;  // -1: any number
};

// A function defined by defun or lambda.
struct USubr : Value {
  USubr() : Value(Kind::USubr) {}
  std::wstring name;  // empty for lambda
  std::vector<std::shared_ptr<Symbol>> params;
  std::vector<std::shared_ptr<Symbol>> locals;
  ValuePtr body;  // list of forms
};

// A function defined by an application through acedDefun.
struct ExSubr : Value {
  ExSubr(std::wstring n, void* o, int c) : Value(Kind::ExSubr), name(std::move(n)), owner(o), code(c) {}
  std::wstring name;
  void* owner;
  int code;
  bool defunct = false;  // undefined or its application unloaded
};

// Entity and selection-set names (ads_name words).
struct NameValue : Value {
  NameValue(Kind k, const std::int64_t n[2]) : Value(k), name{n[0], n[1]} {}
  std::int64_t name[2];
};

struct FileValue : Value {
  FileValue(std::wstring n, std::FILE* f, wchar_t m) : Value(Kind::File), name(std::move(n)), fp(f), mode(m) {}
  ~FileValue() override;
  std::wstring name;  // as given to open
  std::FILE* fp;      // null once closed
  wchar_t mode;       // 'r', 'w' or 'a'
  bool atStart = true;
};

struct CatchErrorValue : Value {
  explicit CatchErrorValue(std::wstring m) : Value(Kind::CatchError), message(std::move(m)) {}
  std::wstring message;
};

inline bool Is(const ValuePtr& v, Kind k) { return v && v->kind == k; }
inline bool IsCons(const ValuePtr& v) { return Is(v, Kind::Cons); }
inline bool IsNumber(const ValuePtr& v) { return v && (v->kind == Kind::Int || v->kind == Kind::Real); }

template <class T>
T* As(const ValuePtr& v) {
  return static_cast<T*>(v.get());
}
inline Cons* AsCons(const ValuePtr& v) { return static_cast<Cons*>(v.get()); }

ValuePtr MakeInt(std::int32_t v);
ValuePtr MakeReal(double v);
ValuePtr MakeStr(std::wstring v);
ValuePtr MakeCons(ValuePtr car, ValuePtr cdr);
double NumberOf(const ValuePtr& v);  // v must be Int or Real

// Builds a list front to back.
class ListBuilder {
 public:
  void add(ValuePtr v);
  void setTail(ValuePtr v);  // dotted end
  ValuePtr take();
  bool empty() const { return !mHead; }

 private:
  ValuePtr mHead;
  Cons* mTail = nullptr;
};

ValuePtr ListOf(const Args& items);
// Elements of a proper list; false for a dotted list or a non-list.
bool ListElements(const ValuePtr& list, Args& out);

}  // namespace kelhost::lisp
