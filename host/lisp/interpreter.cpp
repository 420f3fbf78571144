// The interpreter's public face: evaluation entry points, external
// function bindings and symbol access for the ACED bridge.
#include <new>
#include <stdexcept>

#include "arx/acutads.h"
#include "kelhost/text.h"
#include "lisp/chain.h"
#include "lisp/loading.h"
#include "lisp/machine.h"
#include "lisp/printer.h"
#include "lisp/reader.h"

namespace kelhost::lisp {
namespace {

// Runs body; an AutoLISP error (already reported) or a native failure
// becomes a failed outcome. Nothing escapes to the caller.
template <class F>
bool Protected(Machine& m, Outcome& o, F&& body) {
  try {
    body();
    return true;
  } catch (const LispError& e) {
    o.error = e.message;
  } catch (const std::bad_alloc&) {
    o.error = L"insufficient memory";
    m.write(L"\n; error: " + o.error);
  } catch (const std::length_error&) {
    o.error = L"insufficient memory";
    m.write(L"\n; error: " + o.error);
  } catch (const std::exception&) {
    o.error = L"internal error";
    m.write(L"\n; error: " + o.error);
  }
  o.ok = false;
  return false;
}

// The value of a top-level expression; nothing is echoed for (princ) or
// for an external function that returned no value.
void SetValue(Machine& m, const ValuePtr& v, Outcome& o) {
  o.printable = !m.lastWasVoid && v != m.symQuiet;
  o.valueText = m.printed(v);
}

bool ReadNext(Machine& m, Reader& reader, ValuePtr& form) {
  try {
    return reader.next(form);
  } catch (const ReadError& e) {
    m.raise(e.message);
  }
}

std::shared_ptr<Symbol> FindSymbol(Machine& m, const std::wstring& name) {
  auto it = m.symbols.find(ToUpper(name));
  return it == m.symbols.end() ? nullptr : it->second;
}

}  // namespace

Interpreter::Interpreter() : mImpl(std::make_unique<Impl>()) {}
Interpreter::~Interpreter() = default;

void Interpreter::setOutput(std::function<void(const std::wstring&)> sink) { mImpl->output = std::move(sink); }
void Interpreter::setExternalHandler(ExternalHandler* handler) { mImpl->handler = handler; }
void Interpreter::setOptions(const Options& options) { mImpl->options = options; }

bool Interpreter::evaluating() const { return mImpl->depth > 0; }

bool Interpreter::evalSource(const std::wstring& source, const std::function<void(const Outcome&)>& onEach) {
  Machine& m = *mImpl;
  EntryScope entry(m);
  Reader reader(m, source);
  for (;;) {
    Outcome o;
    bool more = true;
    Protected(m, o, [&] {
      ValuePtr form;
      more = ReadNext(m, reader, form);
      if (more) SetValue(m, m.eval(form), o);
    });
    if (!more && o.ok) return true;
    if (onEach) onEach(o);
    if (!o.ok) return false;
  }
}

Outcome Interpreter::evalOne(const std::wstring& source) {
  Machine& m = *mImpl;
  EntryScope entry(m);
  Reader reader(m, source);
  Outcome o;
  Protected(m, o, [&] {
    ValuePtr form;
    if (ReadNext(m, reader, form))
      SetValue(m, m.eval(form), o);
    else
      o.printable = false;  // nothing but blanks and comments
  });
  return o;
}

Outcome Interpreter::evalToChain(const std::wstring& source, resbuf** value) {
  Machine& m = *mImpl;
  if (value) *value = nullptr;
  EntryScope entry(m);
  Reader reader(m, source);
  Outcome o;
  Protected(m, o, [&] {
    ValuePtr form;
    if (!ReadNext(m, reader, form)) {
      o.printable = false;
      return;
    }
    ValuePtr v = m.eval(form);
    SetValue(m, v, o);
    std::wstring error;
    resbuf* chain = nullptr;
    if (value && ValueToChain(m, v, chain, error)) *value = chain;
  });
  return o;
}

Outcome Interpreter::loadFile(const std::wstring& familyPath) {
  Machine& m = *mImpl;
  EntryScope entry(m);
  Outcome o;
  Protected(m, o, [&] { SetValue(m, LoadFile(m, familyPath, nullptr), o); });
  return o;
}

bool Interpreter::defineExternal(const std::wstring& name, void* owner, int code) {
  Machine& m = *mImpl;
  if (!IsSymbolName(name)) return false;
  auto sym = m.intern(name);
  auto fn = std::make_shared<ExSubr>(sym->name, owner, code);
  sym->value = fn;
  // Forget the records of functions no longer referenced anywhere.
  auto& all = m.externals;
  for (size_t k = 0; k < all.size();) {
    if (all[k].expired()) {
      all[k] = all.back();
      all.pop_back();
    } else {
      ++k;
    }
  }
  all.push_back(fn);
  return true;
}

bool Interpreter::undefineExternal(const std::wstring& name, int code) {
  auto sym = FindSymbol(*mImpl, name);
  if (!sym || !Is(sym->value, Kind::ExSubr) || As<ExSubr>(sym->value)->code != code) return false;
  As<ExSubr>(sym->value)->defunct = true;
  sym->value.reset();
  return true;
}

// The application is going: its functions stop working wherever their
// values were kept, and the symbols naming them are cleared.
void Interpreter::undefineAllOf(void* owner) {
  Machine& m = *mImpl;
  for (auto& weak : m.externals)
    if (auto fn = weak.lock())
      if (fn->owner == owner) fn->defunct = true;
  for (auto& entry : m.symbols) {
    ValuePtr& value = entry.second->value;
    if (Is(value, Kind::ExSubr) && As<ExSubr>(value)->owner == owner && As<ExSubr>(value)->name == entry.first)
      value.reset();
  }
}

resbuf* Interpreter::getSymbol(const std::wstring& name) {
  Machine& m = *mImpl;
  if (!IsSymbolName(name)) return nullptr;
  EntryScope entry(m);
  resbuf* chain = nullptr;
  std::wstring error;
  Outcome o;
  Protected(m, o, [&] {
    if (!ValueToChain(m, m.intern(name)->value, chain, error)) chain = nullptr;
  });
  return chain;
}

bool Interpreter::putSymbol(const std::wstring& name, const resbuf* value) {
  Machine& m = *mImpl;
  if (!IsSymbolName(name)) return false;
  EntryScope entry(m);
  ValuePtr v;
  std::wstring error;
  Outcome o;
  bool converted = false;
  Protected(m, o, [&] {
    converted = ChainToValue(m, value, v, error);
    if (converted) m.intern(name)->value = v;
  });
  return o.ok && converted;
}

int Interpreter::invoke(const resbuf* args, resbuf** result) {
  Machine& m = *mImpl;
  if (result) *result = nullptr;
  if (!result || !args || args->restype != RTSTR || !args->resval.rstring) return RTERROR;
  const std::wstring name = args->resval.rstring;
  if (!IsSymbolName(name)) return RTERROR;
  EntryScope entry(m);
  Outcome o;
  bool converted = false;
  Protected(m, o, [&] {
    Args callArgs;
    std::wstring error;
    if (!ChainToItems(m, args->rbnext, callArgs, error)) m.raise(error);
    auto sym = m.intern(name);
    if (!sym->value) m.raise(L"no function definition: " + sym->name);
    ValuePtr value = m.apply(sym->value, callArgs);
    converted = ValueToChain(m, value, *result, error);
  });
  return o.ok && converted ? RTNORM : RTERROR;
}

}  // namespace kelhost::lisp
