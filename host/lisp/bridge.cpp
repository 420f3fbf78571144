// The ACED side of the AutoLISP bridge: external functions defined by the
// application being messaged, their arguments and return values, symbols.
#include <cstdarg>
#include <cstring>

#include "ads/rbkind.h"
#include "app/app_state.h"
#include "app/command_line.h"
#include "arx/acdbads.h"
#include "arx/acedads.h"
#include "arx/acutads.h"
#include "arx/afx.h"
#include "arx/wformat.h"
#include "kelhost/host.h"
#include "kelhost/lisp.h"
#include "lisp/external_calls.h"

using kelhost::Host;
using kelhost::lispbridge::CallFrame;
using kelhost::lispbridge::CurrentFrame;

namespace {

// Replaces the current call's value; returns RTERROR outside a call.
int SetResult(resbuf* value, bool isVoid = false) {
  CallFrame* frame = CurrentFrame();
  if (!frame) {
    acutRelRb(value);
    return RTERROR;
  }
  acutRelRb(frame->result);
  frame->result = value;
  frame->isVoid = isVoid;
  return RTNORM;
}

resbuf* NewNode(int type) { return acutNewRb(type); }

}  // namespace

int acedDefun(const ACHAR* name, int code) {
  kelhost::app::LoadedModule* module = kelhost::app::CurrentModule();
  if (!name || !*name || !module) return RTERROR;
  return Host::instance().lisp().defineExternal(name, module, code) ? RTNORM : RTERROR;
}

int acedUndef(const ACHAR* name, int code) {
  if (!name) return RTERROR;
  return Host::instance().lisp().undefineExternal(name, code) ? RTNORM : RTERROR;
}

int acedRegFunc(int (*fhdl)(void), int code) {
  kelhost::app::LoadedModule* module = kelhost::app::CurrentModule();
  if (!module) return RTERROR;
  kelhost::lispbridge::RegisterDirectHandler(module, code, fhdl);
  return RTNORM;
}

int acedGetFunCode() {
  CallFrame* frame = CurrentFrame();
  return frame ? frame->code : RTERROR;
}

resbuf* acedGetArgs() {
  CallFrame* frame = CurrentFrame();
  return frame ? frame->args : nullptr;
}

int acedRetVoid() { return SetResult(nullptr, true); }
int acedRetNil() { return SetResult(nullptr); }
int acedRetT() { return SetResult(NewNode(RTT)); }

int acedRetInt(int value) {
  resbuf* rb = NewNode(RTLONG);
  if (!rb) return RTERROR;
  rb->resval.rlong = value;
  return SetResult(rb);
}

int acedRetReal(ads_real value) {
  resbuf* rb = NewNode(RTREAL);
  if (!rb) return RTERROR;
  rb->resval.rreal = value;
  return SetResult(rb);
}

int acedRetPoint(const ads_point pt) {
  resbuf* rb = NewNode(RT3DPOINT);
  if (!rb) return RTERROR;
  ads_point_set(pt, rb->resval.rpoint);
  return SetResult(rb);
}

int acedRetStr(const ACHAR* s) {
  resbuf* rb = NewNode(RTSTR);
  if (!rb) return RTERROR;
  acutNewString(s ? s : L"", rb->resval.rstring);
  return SetResult(rb);
}

int acedRetName(const ads_name name, int type) {
  if (type != RTENAME && type != RTPICKS) return RTERROR;
  resbuf* rb = NewNode(type);
  if (!rb) return RTERROR;
  ads_name_set(name, rb->resval.rlname);
  return SetResult(rb);
}

// The chain becomes an AutoLISP list; the caller keeps its own chain.
int acedRetList(const resbuf* rbuf) {
  if (!rbuf) return SetResult(nullptr);
  resbuf* head = nullptr;
  resbuf** tail = &head;
  for (const resbuf* rb = rbuf; rb; rb = rb->rbnext) {
    resbuf* node = kelhost::rb::CopyNode(rb);
    if (!node) {
      acutRelRb(head);
      return RTERROR;
    }
    *tail = node;
    tail = &node->rbnext;
  }
  // A single node still makes a list: wrap it in RTLB/RTLE.
  resbuf* lb = NewNode(RTLB);
  resbuf* le = NewNode(RTLE);
  if (!lb || !le) {
    acutRelRb(lb);
    acutRelRb(le);
    acutRelRb(head);
    return RTERROR;
  }
  lb->rbnext = head;
  *tail = le;
  return SetResult(lb);
}

int acedRetVal(const resbuf* rbuf) {
  if (!rbuf) return RTERROR;
  resbuf* node = kelhost::rb::CopyNode(rbuf);
  return node ? SetResult(node) : RTERROR;
}

int acedGetSym(const ACHAR* sname, resbuf** value) {
  if (!sname || !value) return RTERROR;
  *value = Host::instance().lisp().getSymbol(sname);
  return *value ? RTNORM : RTERROR;
}

int acedPutSym(const ACHAR* sname, resbuf* value) {
  if (!sname) return RTERROR;
  return Host::instance().lisp().putSymbol(sname, value) ? RTNORM : RTERROR;
}

int acutPrintf(const ACHAR* format, ...) {
  if (!format) return 0;
  va_list args;
  va_start(args, format);
  std::wstring text = kelhost::WFormatV(format, args);
  va_end(args);
  kelhost::app::WriteCommandLine(text);
  return static_cast<int>(text.size());
}

int acedPrompt(const ACHAR* str) {
  if (!str) return RTERROR;
  kelhost::app::WriteCommandLine(str);
  return RTNORM;
}

int acedAlert(const ACHAR* str) {
  AfxMessageBox(str ? str : L"", MB_OK);
  return RTNORM;
}

// The platform reports an application's failure on the command line under
// its own heading.
void acdbFail(const ACHAR* str) {
  kelhost::app::WriteCommandLine(std::wstring(L"\nApplication ERROR: ") + (str ? str : L"") + L"\n");
}

// Calls the AutoLISP function named by the first node with the rest of
// the chain as its arguments.
int acedInvoke(const resbuf* args, resbuf** result) {
  if (!result) return RTERROR;
  *result = nullptr;
  return Host::instance().lisp().invoke(args, result);
}
