#include "editor/command_tokens.h"

namespace kelhost::editor {
namespace {

void SetName(Token& t, const resbuf* rb) {
  t.name[0] = rb->resval.rlname[0];
  t.name[1] = rb->resval.rlname[1];
}

// One item from rb; rb moves past it. False when it is not an answer.
bool ReadItem(const resbuf*& rb, Token& t, bool& skip) {
  skip = false;
  switch (rb->restype) {
    case RTSTR: {
      const std::wstring text = rb->resval.rstring ? rb->resval.rstring : L"";
      t = text == L"\\" ? Token::Of(Token::kPause) : Token::Text(text);
      break;
    }
    case RTNONE: t = Token::Of(Token::kEnter); break;
    case RTREAL:
    case RTANG:
      t = Token::Of(Token::kReal);
      t.value[0] = rb->resval.rreal;
      break;
    case RTSHORT:
      t = Token::Of(Token::kInt);
      t.integer = rb->resval.rint;
      break;
    case RTLONG:
      t = Token::Of(Token::kInt);
      t.integer = rb->resval.rlong;
      break;
    case RTPOINT:
    case RT3DPOINT:
      t = Token::Of(Token::kPoint);
      t.dim = rb->restype == RTPOINT ? 2 : 3;
      for (int i = 0; i < 3; ++i) t.value[i] = i < t.dim ? rb->resval.rpoint[i] : 0.0;
      break;
    case RTENAME:
      t = Token::Of(Token::kEname);
      SetName(t, rb);
      break;
    case RTPICKS:
      t = Token::Of(Token::kPickset);
      SetName(t, rb);
      break;
    case RTLB: {
      // (ename point): what entsel gives, passed where an object is picked.
      const resbuf* e = rb->rbnext;
      const resbuf* p = e ? e->rbnext : nullptr;
      const resbuf* end = p ? p->rbnext : nullptr;
      if (!e || e->restype != RTENAME || !p || (p->restype != RTPOINT && p->restype != RT3DPOINT) || !end ||
          end->restype != RTLE)
        return false;
      t = Token::Of(Token::kPick);
      SetName(t, e);
      t.dim = p->restype == RTPOINT ? 2 : 3;
      for (int i = 0; i < 3; ++i) t.value[i] = i < t.dim ? p->resval.rpoint[i] : 0.0;
      rb = end;
      break;
    }
    case RTNIL:
    case RTT:
    case RTVOID: skip = true; break;
    default: return false;
  }
  rb = rb->rbnext;
  return true;
}

}  // namespace

bool TokensFromChain(const resbuf* chain, std::vector<Token>& tokens) {
  for (const resbuf* rb = chain; rb;) {
    Token t;
    bool skip = false;
    if (!ReadItem(rb, t, skip)) return false;
    if (!skip) tokens.push_back(std::move(t));
  }
  return true;
}

bool TokenFromChain(const resbuf* chain, Token& token) {
  if (!chain) return false;
  const resbuf* rb = chain;
  bool skip = false;
  if (!ReadItem(rb, token, skip) || rb) return false;
  if (skip) token = Token::Of(Token::kEnter);  // nil answers like Enter
  return true;
}

}  // namespace kelhost::editor
