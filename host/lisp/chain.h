// AutoLISP values as result-buffer chains and back, in the platform's list
// protocol (see kelhost/lisp.h).
#pragma once

#include <string>

#include "arx/adsdef.h"
#include "lisp/value.h"

namespace kelhost::lisp {

// The arguments of an external call, one after the other (null for none).
// False, with the reason, for a value that has no chain form (a function,
// a file...); nothing is left allocated then.
bool ArgsToChain(Machine& m, const Args& args, resbuf*& chain, std::wstring& error);
// One value; nil is a single RTNIL node.
bool ValueToChain(Machine& m, const ValuePtr& v, resbuf*& chain, std::wstring& error);

// The values at the top level of a chain (RTLB..RTLE nest into lists).
bool ChainToItems(Machine& m, const resbuf* chain, Args& items, std::wstring& error);
// No value: nil; one: that value; several: a list of them.
bool ChainToValue(Machine& m, const resbuf* chain, ValuePtr& out, std::wstring& error);

// Releases a chain when the scope ends.
class ChainHolder {
 public:
  explicit ChainHolder(resbuf* chain = nullptr) : mChain(chain) {}
  ~ChainHolder();
  ChainHolder(const ChainHolder&) = delete;
  ChainHolder& operator=(const ChainHolder&) = delete;
  resbuf* get() const { return mChain; }
  resbuf* release() {
    resbuf* c = mChain;
    mChain = nullptr;
    return c;
  }

 private:
  resbuf* mChain;
};

}  // namespace kelhost::lisp
