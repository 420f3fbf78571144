// Calls of external AutoLISP functions into the modules that defined them,
// and the call frames the ACED bridge reads and writes during such a call.
#pragma once

#include "arx/adsdef.h"
#include "kelhost/lisp.h"

namespace kelhost::lispbridge {

// The frame of the external call in progress.
struct CallFrame {
  int code = 0;
  resbuf* args = nullptr;      // owned by the interpreter
  bool isVoid = true;          // acedRetVoid (also the state before any acedRet*)
  resbuf* result = nullptr;    // owned here until handed to the interpreter
};
// Null outside an external call.
CallFrame* CurrentFrame();

// Direct handlers registered with acedRegFunc, per module and code.
void RegisterDirectHandler(void* owner, int code, int (*fn)());
// Forgets a module's direct handlers when it is unloaded.
void ForgetOwner(void* owner);

lisp::ExternalHandler& ModuleCalls();

}  // namespace kelhost::lispbridge
