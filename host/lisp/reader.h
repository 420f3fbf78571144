// The AutoLISP reader: text to values, one top-level expression at a time.
#pragma once

#include <string>

#include "lisp/value.h"

namespace kelhost::lisp {

// Malformed input, with the platform's message ("malformed list on input").
struct ReadError {
  std::wstring message;
};

class Reader {
 public:
  Reader(Machine& m, std::wstring text) : mMachine(m), mText(std::move(text)) {}
  // The next expression; false at the end of the text. Throws ReadError.
  // Nesting is kept on the heap, so any depth of parentheses reads.
  bool next(ValuePtr& out);

 private:
  enum class Token { End, Open, Close, Quote, Dot, Atom };
  Token token(ValuePtr& atom);
  void skipBlanksAndComments();
  ValuePtr readString();
  ValuePtr readAtom();

  Machine& mMachine;
  std::wstring mText;
  size_t mPos = 0;
};

// A number token of the reader ("12", "-.5", "1e3"); integers beyond 32
// bits read as reals, as on the platform.
bool ParseNumber(const std::wstring& token, ValuePtr& out);
// Text that reads back as one symbol (not a number, not nil, no
// delimiters), as names handed to acedDefun or acedGetSym must be.
bool IsSymbolName(const std::wstring& name);

}  // namespace kelhost::lisp
