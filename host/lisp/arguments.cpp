// Typed access to built-in arguments, with the platform's messages.
#include "lisp/machine.h"

namespace kelhost::lisp {

std::int32_t IntArg(Machine& m, const ValuePtr& v) {
  if (!Is(v, Kind::Int)) m.badArgument(L"fixnump: ", v);
  return As<IntValue>(v)->value;
}

double NumArg(Machine& m, const ValuePtr& v) {
  if (!IsNumber(v)) m.badArgument(L"numberp: ", v);
  return NumberOf(v);
}

const std::wstring& StrArg(Machine& m, const ValuePtr& v) {
  if (!Is(v, Kind::Str)) m.badArgument(L"stringp ", v);
  return As<StrValue>(v)->value;
}

std::shared_ptr<Symbol> SymArg(Machine& m, const ValuePtr& v) {
  if (!Is(v, Kind::Sym)) m.badArgument(L"symbolp ", v);
  return std::static_pointer_cast<Symbol>(v);
}

Args ListArg(Machine& m, const ValuePtr& v) {
  Args items;
  if (v && !IsCons(v)) m.badArgument(L"listp ", v);
  if (!ListElements(v, items)) m.raise(L"bad list: " + m.printed(v));
  m.step(items.size());
  return items;
}

}  // namespace kelhost::lisp
