// Selection filters compiled into a tree of tests over entity lists.
#include "ads/ssget_filter.h"

#include <cmath>
#include <string>
#include <vector>

#include "arx/acutads.h"
#include "kelhost/resbuf_kinds.h"
#include "kelhost/text.h"

namespace kelhost::ads {
namespace {

using Node = std::unique_ptr<SelectionFilter>;

// The value an entity has for a group its list leaves out.
bool ImpliedGroup(int code, resbuf& out) {
  out.rbnext = nullptr;
  out.restype = static_cast<short>(code);
  switch (code) {
    case 62: out.resval.rint = 256; return true;  // BYLAYER
    case 67: out.resval.rint = 0; return true;    // model space
    case 6: out.resval.rstring = const_cast<wchar_t*>(L"BYLAYER"); return true;
    case 39: out.resval.rreal = 0.0; return true;
    case 210:
      out.resval.rpoint[0] = out.resval.rpoint[1] = 0.0;
      out.resval.rpoint[2] = 1.0;
      return true;
    default: return false;
  }
}

bool CompareNumbers(const std::wstring& op, double a, double b) {
  if (op == L"*") return true;
  if (op == L"=") return a == b;
  if (op == L"!=" || op == L"/=" || op == L"<>") return a != b;
  if (op == L"<") return a < b;
  if (op == L"<=") return a <= b;
  if (op == L">") return a > b;
  if (op == L">=") return a >= b;
  const long long x = std::llround(a), mask = std::llround(b);
  if (op == L"&") return (x & mask) != 0;
  if (op == L"&=") return (x & mask) == mask;
  return false;
}

bool IsNumberOperator(const std::wstring& op) {
  static const wchar_t* kOps[] = {L"*", L"=", L"!=", L"/=", L"<>", L"<", L"<=", L">", L">=", L"&", L"&="};
  for (const wchar_t* k : kOps)
    if (op == k) return true;
  return false;
}

double NumberValue(const resbuf* rb) {
  switch (ResbufKind(rb->restype)) {
    case RbKind::kReal: return rb->resval.rreal;
    case RbKind::kShort: return rb->resval.rint;
    case RbKind::kLong: return rb->resval.rlong;
    case RbKind::kInt64: return static_cast<double>(rb->resval.mnInt64);
    default: return 0.0;
  }
}

std::wstring Trimmed(const std::wstring& text) {
  const size_t b = text.find_first_not_of(L" \t");
  if (b == std::wstring::npos) return L"";
  return text.substr(b, text.find_last_not_of(L" \t") - b + 1);
}

std::vector<std::wstring> SplitCommas(const std::wstring& text) {
  std::vector<std::wstring> parts;
  size_t start = 0;
  for (;;) {
    const size_t comma = text.find(L',', start);
    parts.push_back(Trimmed(text.substr(start, comma == std::wstring::npos ? std::wstring::npos : comma - start)));
    if (comma == std::wstring::npos) return parts;
    start = comma + 1;
  }
}

// One group of the filter, with the relational operator before it ("="
// when none): true when some group of the entity with that code passes.
class GroupTest : public SelectionFilter {
 public:
  GroupTest(const resbuf* group, std::wstring op) : mCode(group->restype), mKind(ResbufKind(group->restype)), mOp(std::move(op)) {
    mValue = *group;
    mValue.rbnext = nullptr;
    if (mKind == RbKind::kString) mText = ToUpper(group->resval.rstring ? group->resval.rstring : L"");
  }
  bool valid() const {
    if (mKind == RbKind::kString) return mOp == L"=" || mOp == L"!=" || mOp == L"/=" || mOp == L"<>" || mOp == L"*";
    if (mKind == RbKind::kPoint) {
      const auto ops = SplitCommas(mOp);
      if (ops.size() == 1 && (ops[0] == L"&" || ops[0] == L"&=")) return false;
      for (const auto& op : ops)
        if (!IsNumberOperator(op) || op == L"&" || op == L"&=") return false;
      return ops.size() == 1 || ops.size() == 3;
    }
    return mKind == RbKind::kReal || mKind == RbKind::kShort || mKind == RbKind::kLong || mKind == RbKind::kInt64 ||
           mKind == RbKind::kName ? IsNumberOperator(mOp) : false;
  }
  bool matches(const resbuf* list) const override {
    if (mOp == L"*") return true;
    bool found = false;
    for (const resbuf* rb = list; rb && rb->restype != -3; rb = rb->rbnext) {
      if (rb->restype != mCode) continue;
      found = true;
      if (test(rb)) return true;
    }
    resbuf implied{};
    return !found && ImpliedGroup(mCode, implied) && test(&implied);
  }

 private:
  bool test(const resbuf* rb) const {
    switch (mKind) {
      case RbKind::kString: {
        const bool match = acutWcMatch(ToUpper(rb->resval.rstring ? rb->resval.rstring : L"").c_str(), mText.c_str()) == RTNORM;
        return mOp == L"=" ? match : !match;
      }
      case RbKind::kPoint: {
        const auto ops = SplitCommas(mOp);
        if (ops.size() == 1 && ops[0] == L"=") {
          for (int i = 0; i < 3; ++i)
            if (rb->resval.rpoint[i] != mValue.resval.rpoint[i]) return false;
          return true;
        }
        if (ops.size() == 1) {  // a distance test between the points
          double d2 = 0;
          for (int i = 0; i < 3; ++i) d2 += std::pow(rb->resval.rpoint[i] - mValue.resval.rpoint[i], 2);
          return CompareNumbers(ops[0], std::sqrt(d2), 0.0);
        }
        for (int i = 0; i < 3; ++i)
          if (!CompareNumbers(ops[static_cast<size_t>(i)], rb->resval.rpoint[i], mValue.resval.rpoint[i])) return false;
        return true;
      }
      case RbKind::kName: {
        const bool same = rb->resval.rlname[0] == mValue.resval.rlname[0] && rb->resval.rlname[1] == mValue.resval.rlname[1];
        return mOp == L"=" ? same : (mOp == L"!=" || mOp == L"/=" || mOp == L"<>") ? !same : false;
      }
      default: return CompareNumbers(mOp, NumberValue(rb), NumberValue(&mValue));
    }
  }

  int mCode;
  RbKind mKind;
  std::wstring mOp;
  resbuf mValue{};
  std::wstring mText;
};

// -3 with application-name patterns: the entity has xdata of each.
class XDataTest : public SelectionFilter {
 public:
  explicit XDataTest(std::vector<std::wstring> apps) : mApps(std::move(apps)) {}
  bool matches(const resbuf* list) const override {
    const resbuf* rb = list;
    while (rb && rb->restype != -3) rb = rb->rbnext;
    for (const std::wstring& pattern : mApps) {
      bool found = false;
      for (const resbuf* x = rb; x && !found; x = x->rbnext)
        found = x->restype == 1001 && x->resval.rstring &&
                acutWcMatch(ToUpper(x->resval.rstring).c_str(), pattern.c_str()) == RTNORM;
      if (!found) return false;
    }
    return true;
  }

 private:
  std::vector<std::wstring> mApps;
};

enum class Op { kAnd, kOr, kXor, kNot };

class Group : public SelectionFilter {
 public:
  Group(Op op, std::vector<Node> items) : mOp(op), mItems(std::move(items)) {}
  bool matches(const resbuf* list) const override {
    switch (mOp) {
      case Op::kAnd:
        for (const Node& n : mItems)
          if (!n->matches(list)) return false;
        return true;
      case Op::kOr:
        for (const Node& n : mItems)
          if (n->matches(list)) return true;
        return false;
      case Op::kXor: return mItems[0]->matches(list) != mItems[1]->matches(list);
      case Op::kNot: return !mItems[0]->matches(list);
    }
    return false;
  }

 private:
  Op mOp;
  std::vector<Node> mItems;
};

// <AND AND> <OR OR> <XOR XOR> <NOT NOT>: never a relational operator,
// even out of place.
bool IsGroupingWord(const std::wstring& op) {
  for (const wchar_t* word : {L"AND", L"OR", L"XOR", L"NOT"})
    if (op == std::wstring(L"<") + word || op == std::wstring(word) + L">") return true;
  return false;
}

// The deepest grouping a filter may hold. Deeper filters are refused as
// malformed: parsing, matching and freeing the compiled tree each recurse
// once per level.
constexpr int kMaxGroupingDepth = 256;

class Parser {
 public:
  explicit Parser(const resbuf* rb) : mRb(rb) {}

  // Items up to the closing operator (or the end, at the top level).
  bool items(const wchar_t* closing, std::vector<Node>& out) {
    while (mRb) {
      if (mRb->restype == -4) {
        const std::wstring op = ToUpper(mRb->resval.rstring ? mRb->resval.rstring : L"");
        if (closing && op == closing) {
          mRb = mRb->rbnext;
          return true;
        }
        Node node;
        if (IsGroupingWord(op) ? !grouping(op, node) : !relational(op, node)) return false;
        out.push_back(std::move(node));
        continue;
      }
      if (mRb->restype == -3) {
        Node node = xdata();
        if (!node) return false;
        out.push_back(std::move(node));
        continue;
      }
      Node node = group(L"=");
      if (!node) return false;
      out.push_back(std::move(node));
    }
    return closing == nullptr;
  }

 private:
  bool grouping(const std::wstring& op, Node& node) {
    static const struct {
      const wchar_t* open;
      const wchar_t* close;
      Op op;
      size_t minItems, maxItems;
    } kGroups[] = {{L"<AND", L"AND>", Op::kAnd, 1, 100000},
                   {L"<OR", L"OR>", Op::kOr, 1, 100000},
                   {L"<XOR", L"XOR>", Op::kXor, 2, 2},
                   {L"<NOT", L"NOT>", Op::kNot, 1, 1}};
    for (const auto& g : kGroups) {
      if (op != g.open) continue;
      if (mDepth >= kMaxGroupingDepth) return false;
      mRb = mRb->rbnext;
      std::vector<Node> inner;
      ++mDepth;
      const bool closed = items(g.close, inner);
      --mDepth;
      if (!closed || inner.size() < g.minItems || inner.size() > g.maxItems) return false;
      node = std::make_unique<Group>(g.op, std::move(inner));
      return true;
    }
    return false;
  }

  bool relational(const std::wstring& op, Node& node) {
    mRb = mRb->rbnext;
    if (!mRb || mRb->restype == -4 || mRb->restype == -3) return false;
    node = group(op);
    return node != nullptr;
  }

  Node group(const std::wstring& op) {
    auto test = std::make_unique<GroupTest>(mRb, op);
    if (mRb->restype == -1 || !test->valid()) return nullptr;
    mRb = mRb->rbnext;
    return test;
  }

  Node xdata() {
    std::vector<std::wstring> apps;
    for (mRb = mRb->rbnext; mRb && mRb->restype == 1001; mRb = mRb->rbnext)
      apps.push_back(ToUpper(mRb->resval.rstring ? mRb->resval.rstring : L""));
    if (apps.empty()) return nullptr;
    return std::make_unique<XDataTest>(std::move(apps));
  }

  const resbuf* mRb;
  int mDepth = 0;
};

}  // namespace

std::unique_ptr<SelectionFilter> SelectionFilter::Compile(const resbuf* filter) {
  Parser parser(filter);
  std::vector<Node> items;
  if (!parser.items(nullptr, items)) return nullptr;
  return std::make_unique<Group>(Op::kAnd, std::move(items));
}

}  // namespace kelhost::ads
