// The two sameness tests of AutoLISP, used by eq and equal and by every
// function that searches a list (assoc, member, vl-position...).
#pragma once

#include "lisp/value.h"

namespace kelhost::lisp {

// eq: the same object; numbers, strings and entity names by value.
bool Eq(const ValuePtr& a, const ValuePtr& b);
// equal: the same structure; numbers within fuzz of each other. With a
// machine, each comparison counts against its step budget (lists that
// share structure can take exponential time).
bool Equal(const ValuePtr& a, const ValuePtr& b, double fuzz = 0.0, Machine* m = nullptr);

}  // namespace kelhost::lisp
