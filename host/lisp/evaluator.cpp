// The evaluation core: symbols, eval and apply, errors and their report,
// and the step budget.
#include <cstdio>

#include "kelhost/text.h"
#include "lisp/machine.h"
#include "lisp/printer.h"

namespace kelhost::lisp {

Interpreter::Impl::Impl() {
  symbols.reserve(512);  // the built-ins and then some, without rehashing
  symT = intern(L"T");
  symT->value = symT;
  symQuote = intern(L"QUOTE");
  symLambda = intern(L"LAMBDA");
  symSlash = intern(L"/");
  symError = intern(L"*ERROR*");
  // (princ) with no argument returns the null symbol: it prints as nothing.
  symQuiet = std::make_shared<Symbol>(L"");
  intern(L"PI")->value = MakeReal(3.14159265358979323846);
  // A command argument that lets the user answer the prompt.
  intern(L"PAUSE")->value = MakeStr(L"\\");
  RegisterSpecialForms(*this);
  RegisterListBuiltins(*this);
  RegisterMathBuiltins(*this);
  RegisterPredicateBuiltins(*this);
  RegisterStringBuiltins(*this);
  RegisterSequenceBuiltins(*this);
  RegisterControlBuiltins(*this);
  RegisterOutputBuiltins(*this);
  RegisterFileBuiltins(*this);
  RegisterLoadBuiltins(*this);
  RegisterGeometryBuiltins(*this);
  RegisterEntityBuiltins(*this);
  RegisterSysvarBuiltins(*this);
  RegisterSelectionBuiltins(*this);
  RegisterCommandBuiltins(*this);
  RegisterInputBuiltins(*this);
  RegisterDialogBuiltins(*this);
  RegisterSessionBuiltins(*this);
  RegisterRegistryBuiltins(*this);
  RegisterFileSystemBuiltins(*this);
  RegisterScreenBuiltins(*this);
  RegisterPickBuiltins(*this);
  RegisterPropertyBuiltins(*this);
  RegisterStandardDialogBuiltins(*this);
}

// Symbol values may refer back to their symbols (T is its own value): drop
// every value before the table goes.
Interpreter::Impl::~Impl() {
  for (auto& entry : symbols) entry.second->value.reset();
}

std::shared_ptr<Symbol> Interpreter::Impl::intern(const std::wstring& name) {
  std::wstring upper = ToUpper(name);
  auto it = symbols.find(upper);
  if (it != symbols.end()) return it->second;
  auto sym = std::make_shared<Symbol>(upper);
  symbols.emplace(upper, sym);
  return sym;
}

void Interpreter::Impl::defineBuiltin(const wchar_t* name, BuiltinFn fn, int minArgs, int maxArgs) {
  auto sym = intern(name);
  sym->value = std::make_shared<Subr>(sym->name, fn, minArgs, maxArgs);
}

void Interpreter::Impl::defineSpecial(const wchar_t* name, SpecialFn fn) {
  auto sym = intern(name);
  sym->value = std::make_shared<Subr>(sym->name, fn);
}

ValuePtr Interpreter::Impl::eval(const ValuePtr& form) {
  lastWasVoid = false;
  if (!form) return nullptr;
  switch (form->kind) {
    case Kind::Sym:
      step();
      return As<Symbol>(form)->value;
    case Kind::Cons:
      return evalCall(form);
    default:
      return form;
  }
}

ValuePtr Interpreter::Impl::evalForms(const ValuePtr& forms) {
  ValuePtr result;
  for (ValuePtr p = forms; p; p = AsCons(p)->cdr) {
    if (!IsCons(p)) raise(L"bad list: " + printed(forms));
    result = eval(AsCons(p)->car);
  }
  return result;
}

ValuePtr Interpreter::Impl::evalCall(const ValuePtr& form) {
  DepthGuard guard(*this);
  step();
  Cons* call = AsCons(form);
  CallRecord record(*this, Is(call->car, Kind::Sym) ? As<Symbol>(call->car) : nullptr);
  ValuePtr fn;
  if (Is(call->car, Kind::Sym)) {
    fn = As<Symbol>(call->car)->value;
    if (!fn) raise(L"no function definition: " + As<Symbol>(call->car)->name);
  } else if (IsCons(call->car)) {
    fn = eval(call->car);
  } else {
    fn = call->car;
  }
  if (Is(fn, Kind::Subr) && As<Subr>(fn)->special) return As<Subr>(fn)->special(*this, call->cdr);
  Args args;
  for (ValuePtr p = call->cdr; p; p = AsCons(p)->cdr) {
    if (!IsCons(p)) raise(L"bad list: " + printed(form));
    args.push_back(eval(AsCons(p)->car));
  }
  return apply(fn, args);
}

ValuePtr Interpreter::Impl::apply(const ValuePtr& fnRef, Args& args) {
  ValuePtr fn = fnRef;  // keeps a function alive that redefines itself
  lastWasVoid = false;
  if (fn) {
    switch (fn->kind) {
      case Kind::Subr: {
        Subr& s = *As<Subr>(fn);
        if (s.special) {
          // Reached through apply or mapcar: quote the values back into forms.
          ListBuilder forms;
          for (const ValuePtr& a : args) forms.add(MakeCons(symQuote, MakeCons(a, nullptr)));
          return s.special(*this, forms.take());
        }
        if (static_cast<int>(args.size()) < s.minArgs) raise(L"too few arguments");
        if (s.maxArgs >= 0 && static_cast<int>(args.size()) > s.maxArgs) raise(L"too many arguments");
        return s.fn(*this, args);
      }
      case Kind::USubr: {
        DepthGuard guard(*this);
        return applyUser(*As<USubr>(fn), args);
      }
      case Kind::ExSubr:
        return applyExternal(*As<ExSubr>(fn), args);
      case Kind::Sym: {
        ValuePtr value = As<Symbol>(fn)->value;
        if (!value) raise(L"no function definition: " + As<Symbol>(fn)->name);
        if (!Is(value, Kind::Sym)) return apply(value, args);
        break;
      }
      case Kind::Cons: {
        Cons* c = AsCons(fn);
        if (c->car == symLambda && IsCons(c->cdr)) {
          auto f = makeFunction(L"", AsCons(c->cdr)->car, AsCons(c->cdr)->cdr);
          return apply(f, args);
        }
        if (!c->car || IsCons(c->car)) {  // a defun-q list: (params body...)
          auto f = makeFunction(L"", c->car, c->cdr);
          return apply(f, args);
        }
        break;
      }
      default:
        break;
    }
  }
  raise(L"bad function: " + printed(fn));
}

ValuePtr Interpreter::Impl::applyUser(USubr& fn, Args& args) {
  if (args.size() < fn.params.size()) raise(L"too few arguments");
  if (args.size() > fn.params.size()) raise(L"too many arguments");
  Bindings scope;
  for (size_t i = 0; i < args.size(); ++i) scope.bind(fn.params[i], args[i]);
  for (const auto& local : fn.locals) scope.bind(local, nullptr);
  return evalForms(fn.body);
}

std::shared_ptr<USubr> Interpreter::Impl::makeFunction(const std::wstring& name, const ValuePtr& params,
                                                       const ValuePtr& body) {
  auto fn = std::make_shared<USubr>();
  fn->name = name;
  fn->body = body;
  bool locals = false;
  for (ValuePtr p = params; p; p = AsCons(p)->cdr) {
    if (!IsCons(p)) badArgument(L"listp ", params);
    const ValuePtr& item = AsCons(p)->car;
    if (!Is(item, Kind::Sym)) badArgument(L"symbolp ", item);
    if (item == symSlash) {
      locals = true;
      continue;
    }
    auto sym = std::static_pointer_cast<Symbol>(item);
    (locals ? fn->locals : fn->params).push_back(sym);
  }
  return fn;
}

void Interpreter::Impl::raise(const std::wstring& message) {
  if (catchDepth > 0) throw LispError{message, false};
  report(message);
  throw LispError{message, true};
}

void Interpreter::Impl::badArgument(const wchar_t* what, const ValuePtr& v) {
  raise(L"bad argument type: " + std::wstring(what) + printed(v));
}

// *error* runs where the error happened, so it still sees the locals of
// the functions being abandoned.
void Interpreter::Impl::report(const std::wstring& message) {
  ValuePtr handlerFn = symError->value;
  if (!handlerFn || inErrorHandler) {
    write(L"\n; error: " + message);
    return;
  }
  struct HandlerFlag {
    bool& flag;
    explicit HandlerFlag(bool& f) : flag(f) { flag = true; }
    ~HandlerFlag() { flag = false; }
  } running(inErrorHandler);
  try {
    Args args{MakeStr(message)};
    apply(handlerFn, args);
  } catch (const LispError&) {
    // An error inside *error* was printed as it happened.
  }
}

void Interpreter::Impl::step(std::uint64_t units) {
  if (!options.maxSteps) return;
  steps += units;
  if (steps > options.maxSteps) raise(L"evaluation limit reached");
}

std::wstring Interpreter::Impl::printed(const ValuePtr& v, bool escape) {
  std::wstring text;
  if (!options.maxSteps) {
    PrintValue(v, escape, text);
    return text;
  }
  // Sixteen characters to a step, as for other strings.
  const std::uint64_t left = steps < options.maxSteps ? options.maxSteps - steps : 0;
  if (!PrintValue(v, escape, text, static_cast<size_t>(left * 16))) step(left + 1);
  step(text.size() / 16);
  return text;
}

void Interpreter::Impl::write(const std::wstring& text) {
  if (text.empty()) return;
  if (output) {
    output(text);
  } else {
    std::string bytes = ToUtf8(text);
    std::fwrite(bytes.data(), 1, bytes.size(), stdout);
  }
}

}  // namespace kelhost::lisp
