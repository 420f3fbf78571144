#include "lisp/value.h"

namespace kelhost::lisp {

// Lists may be millions of cells long or nested as deeply as a program
// cares to build them: unlink them with a work list instead of letting the
// destructors recurse.
Cons::~Cons() {
  auto uniqueCons = [](const ValuePtr& v) { return v && v->kind == Kind::Cons && v.use_count() == 1; };
  if (!uniqueCons(car) && !uniqueCons(cdr)) return;
  std::vector<ValuePtr> pending;
  pending.push_back(std::move(car));
  pending.push_back(std::move(cdr));
  while (!pending.empty()) {
    ValuePtr v = std::move(pending.back());
    pending.pop_back();
    if (uniqueCons(v)) {
      Cons* c = AsCons(v);
      if (c->car) pending.push_back(std::move(c->car));
      if (c->cdr) pending.push_back(std::move(c->cdr));
    }
  }
}

FileValue::~FileValue() {
  if (fp) std::fclose(fp);
}

ValuePtr MakeInt(std::int32_t v) { return std::make_shared<IntValue>(v); }
ValuePtr MakeReal(double v) { return std::make_shared<RealValue>(v); }
ValuePtr MakeStr(std::wstring v) { return std::make_shared<StrValue>(std::move(v)); }
ValuePtr MakeCons(ValuePtr car, ValuePtr cdr) { return std::make_shared<Cons>(std::move(car), std::move(cdr)); }

double NumberOf(const ValuePtr& v) {
  return v->kind == Kind::Int ? static_cast<double>(As<IntValue>(v)->value) : As<RealValue>(v)->value;
}

void ListBuilder::add(ValuePtr v) {
  ValuePtr cell = MakeCons(std::move(v), nullptr);
  Cons* c = AsCons(cell);
  if (mTail)
    mTail->cdr = std::move(cell);
  else
    mHead = std::move(cell);
  mTail = c;
}

void ListBuilder::setTail(ValuePtr v) {
  if (mTail)
    mTail->cdr = std::move(v);
  else
    mHead = std::move(v);
}

ValuePtr ListBuilder::take() {
  mTail = nullptr;
  return std::move(mHead);
}

ValuePtr ListOf(const Args& items) {
  ListBuilder b;
  for (const ValuePtr& v : items) b.add(v);
  return b.take();
}

bool ListElements(const ValuePtr& list, Args& out) {
  ValuePtr cur = list;
  while (cur) {
    if (cur->kind != Kind::Cons) return false;
    out.push_back(AsCons(cur)->car);
    cur = AsCons(cur)->cdr;
  }
  return true;
}

}  // namespace kelhost::lisp
