// DIESEL: text in which each $(function,argument,...) is replaced by its
// value. Functions: + - * / = < > != <= >= and or xor fix eq if getvar
// getenv upper strlen substr index nth rtos angtos edtime eval. A wrong
// call gives "$?" (with the name of an unknown function: "$?(name)").
#pragma once

#include <string>

namespace kelhost::lisp {
std::wstring EvaluateDiesel(const std::wstring& text);
}  // namespace kelhost::lisp
