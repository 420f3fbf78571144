// Forms whose arguments are not evaluated first: quoting, assignment,
// function definition, sequencing, conditionals and loops.
#include "lisp/machine.h"
#include "lisp/printer.h"

namespace kelhost::lisp {
namespace {

Args Forms(Machine& m, const ValuePtr& forms) {
  Args items;
  if (!ListElements(forms, items)) m.raise(L"bad list: " + m.printed(forms));
  return items;
}

void CheckCount(Machine& m, const Args& forms, size_t lo, size_t hi) {
  if (forms.size() < lo) m.raise(L"too few arguments");
  if (forms.size() > hi) m.raise(L"too many arguments");
}

ValuePtr Rest(const ValuePtr& forms, size_t skip) {
  ValuePtr p = forms;
  for (size_t i = 0; i < skip && IsCons(p); ++i) p = AsCons(p)->cdr;
  return p;
}

ValuePtr Quote(Machine& m, const ValuePtr& forms) {
  Args f = Forms(m, forms);
  CheckCount(m, f, 1, 1);
  return f[0];
}

bool IsLambdaForm(Machine& m, const ValuePtr& v) {
  return IsCons(v) && AsCons(v)->car == m.symLambda && IsCons(AsCons(v)->cdr);
}

// Like quote, except that a lambda expression becomes its function.
ValuePtr Function(Machine& m, const ValuePtr& forms) {
  Args f = Forms(m, forms);
  CheckCount(m, f, 1, 1);
  if (IsLambdaForm(m, f[0])) {
    Cons* lambdaArgs = AsCons(AsCons(f[0])->cdr);
    return m.makeFunction(L"", lambdaArgs->car, lambdaArgs->cdr);
  }
  return f[0];
}

ValuePtr Setq(Machine& m, const ValuePtr& forms) {
  Args f = Forms(m, forms);
  if (f.empty() || f.size() % 2 != 0) m.raise(L"too few arguments");
  ValuePtr value;
  for (size_t i = 0; i < f.size(); i += 2) {
    auto sym = SymArg(m, f[i]);
    value = m.eval(f[i + 1]);
    sym->value = value;
  }
  return value;
}

ValuePtr Defun(Machine& m, const ValuePtr& forms) {
  Args f = Forms(m, forms);
  CheckCount(m, f, 2, static_cast<size_t>(-1));
  auto name = SymArg(m, f[0]);
  name->value = m.makeFunction(name->name, f[1], Rest(forms, 2));
  return name;
}

// The function kept as a list (params body...) that code may inspect.
ValuePtr DefunQ(Machine& m, const ValuePtr& forms) {
  Args f = Forms(m, forms);
  CheckCount(m, f, 2, static_cast<size_t>(-1));
  auto name = SymArg(m, f[0]);
  m.makeFunction(name->name, f[1], nullptr);  // validates the parameters
  name->value = Rest(forms, 1);
  return name;
}

ValuePtr Lambda(Machine& m, const ValuePtr& forms) {
  Args f = Forms(m, forms);
  CheckCount(m, f, 1, static_cast<size_t>(-1));
  return m.makeFunction(L"", f[0], Rest(forms, 1));
}

ValuePtr Progn(Machine& m, const ValuePtr& forms) { return m.evalForms(forms); }

ValuePtr If(Machine& m, const ValuePtr& forms) {
  Args f = Forms(m, forms);
  CheckCount(m, f, 2, 3);
  if (m.eval(f[0])) return m.eval(f[1]);
  return f.size() == 3 ? m.eval(f[2]) : nullptr;
}

ValuePtr Cond(Machine& m, const ValuePtr& forms) {
  for (const ValuePtr& clause : Forms(m, forms)) {
    if (!IsCons(clause)) m.badArgument(L"listp ", clause);
    ValuePtr test = m.eval(AsCons(clause)->car);
    if (!test) continue;
    if (!AsCons(clause)->cdr) return test;
    return m.evalForms(AsCons(clause)->cdr);
  }
  return nullptr;
}

ValuePtr While(Machine& m, const ValuePtr& forms) {
  Args f = Forms(m, forms);
  CheckCount(m, f, 1, static_cast<size_t>(-1));
  ValuePtr body = Rest(forms, 1);
  ValuePtr result;
  for (;;) {
    m.step();
    if (!m.eval(f[0])) break;
    if (body) result = m.evalForms(body);
  }
  return result;
}

ValuePtr Repeat(Machine& m, const ValuePtr& forms) {
  Args f = Forms(m, forms);
  CheckCount(m, f, 1, static_cast<size_t>(-1));
  std::int32_t count = IntArg(m, m.eval(f[0]));
  ValuePtr body = Rest(forms, 1);
  ValuePtr result;
  for (std::int32_t i = 0; i < count; ++i) {
    m.step();
    result = m.evalForms(body);
  }
  return result;
}

ValuePtr Foreach(Machine& m, const ValuePtr& forms) {
  Args f = Forms(m, forms);
  CheckCount(m, f, 2, static_cast<size_t>(-1));
  auto name = SymArg(m, f[0]);
  ValuePtr list = m.eval(f[1]);
  if (list && !IsCons(list)) m.badArgument(L"listp ", list);
  ValuePtr body = Rest(forms, 2);
  Bindings scope;
  scope.bind(name, nullptr);
  ValuePtr result;
  for (ValuePtr p = list; p; p = AsCons(p)->cdr) {
    if (!IsCons(p)) m.raise(L"bad list: " + m.printed(list));
    m.step();
    name->value = AsCons(p)->car;
    result = m.evalForms(body);
  }
  return result;
}

ValuePtr And(Machine& m, const ValuePtr& forms) {
  for (const ValuePtr& f : Forms(m, forms))
    if (!m.eval(f)) return nullptr;
  return m.truth(true);
}

ValuePtr Or(Machine& m, const ValuePtr& forms) {
  for (const ValuePtr& f : Forms(m, forms))
    if (m.eval(f)) return m.truth(true);
  return nullptr;
}

}  // namespace

void RegisterSpecialForms(Machine& m) {
  m.defineSpecial(L"QUOTE", Quote);
  m.defineSpecial(L"FUNCTION", Function);
  m.defineSpecial(L"SETQ", Setq);
  m.defineSpecial(L"DEFUN", Defun);
  m.defineSpecial(L"DEFUN-Q", DefunQ);
  m.defineSpecial(L"LAMBDA", Lambda);
  m.defineSpecial(L"PROGN", Progn);
  m.defineSpecial(L"IF", If);
  m.defineSpecial(L"COND", Cond);
  m.defineSpecial(L"WHILE", While);
  m.defineSpecial(L"REPEAT", Repeat);
  m.defineSpecial(L"FOREACH", Foreach);
  m.defineSpecial(L"AND", And);
  m.defineSpecial(L"OR", Or);
}

}  // namespace kelhost::lisp
