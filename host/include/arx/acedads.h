// ACED calls of the AutoLISP bridge: external functions, their arguments
// and return values, and AutoLISP symbols.
#pragma once

#include "adsdef.h"

// Defines an external AutoLISP function for the calling application in the
// current document, under a function code the application chooses.
int acedDefun(const ACHAR* pszName, int nFuncNum);
int acedUndef(const ACHAR* pszName, int nFuncNum);
// Associates a function with a code so AutoLISP calls it directly.
int acedRegFunc(int (*fhdl)(void), int fcode);
// The code of the external function being invoked; RTERROR outside a call.
int acedGetFunCode();
// The argument list of the current external call. The host owns it and
// releases it when the call returns: do not release it.
resbuf* acedGetArgs();

int acedRetInt(int ival);
int acedRetReal(ads_real rval);
int acedRetPoint(const ads_point pt);
int acedRetStr(const ACHAR* s);
int acedRetName(const ads_name aname, int type);
int acedRetList(const resbuf* rbuf);  // the list is copied; the caller keeps it
int acedRetVal(const resbuf* rbuf);
int acedRetNil();
int acedRetT();
int acedRetVoid();

// Symbol values: a copy the caller releases; puts copy the given chain.
int acedGetSym(const ACHAR* sname, resbuf** value);
int acedPutSym(const ACHAR* sname, resbuf* value);

// Calls an AutoLISP function: args holds the function name (RTSTR) and
// its arguments; *result receives a chain the caller releases.
int acedInvoke(const resbuf* args, resbuf** result);

// Loaded modules: a chain of RTSTR file names (caller releases).
resbuf* acedArxLoaded();
int acedArxLoad(const ACHAR* app);
int acedArxUnload(const ACHAR* app);

int acedAlert(const ACHAR* str);
int acedPrompt(const ACHAR* str);
