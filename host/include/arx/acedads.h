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
// Brings the display up to date (the graphics queue is flushed). The
// headless host counts the calls (kelhost/ui.h).
void acedUpdateDisplay();

// System variables (any case). acedGetVar fills result (a string value is
// a new copy the caller releases with free): RTNORM, RTERROR for an
// unknown name or a null argument. acedSetVar: RTNORM; RTERROR for an
// unknown name; RTREJ when the variable is read-only or the value has the
// wrong type or is out of range (nothing changes then).
int acedGetVar(const ACHAR* sym, resbuf* result);
int acedSetVar(const ACHAR* sym, const resbuf* val);

// Selection sets. A set's name is an ads_name (RTPICKS); word 0 numbers
// the set. acedSSGet modes: "X" every entity of the drawing, "W"/"C" the
// entities of the current space inside / crossing the window pt1-pt2
// (points are ads_real[3]), "L" the last entity, "P" the previous set
// ("_" prefixes allowed); an optional filter list narrows any mode. Sets
// from "X", "W" and "C" list the newest entity first. RTNORM with a new
// set in ss, RTERROR when nothing is selected or the arguments are bad.
int acedSSGet(const ACHAR* str, const void* pt1, const void* pt2, const resbuf* filter, ads_name ss);
int acedSSFree(const ads_name sname);
int acedSSLength(const ads_name sname, Adesk::Int32* len);
// With ename and sname null a new empty set; with sname null a new set of
// ename; otherwise ename is added to sname (result is sname).
int acedSSAdd(const ads_name ename, const ads_name sname, ads_name result);
int acedSSDel(const ads_name ename, const ads_name ss);
int acedSSMemb(const ads_name ename, const ads_name ss);
int acedSSName(const ads_name ss, Adesk::Int32 i, ads_name entres);

// Translates a point (or, with disp nonzero, a displacement) between
// coordinate systems. from and to: RTSHORT 0 (WCS), 1 (current UCS) or 2
// (display coordinates of the current view); RTENAME (the entity's object
// coordinate system); RT3DPOINT (the object coordinate system of that
// extrusion direction). RTNORM, RTERROR for a bad system or argument.
int acedTrans(const ads_point pt, const resbuf* from, const resbuf* to, int disp, ads_point result);

// Redraws an entity (mode 1 redraw, 2 undraw, 3 highlight, 4 unhighlight)
// or, with a null name, the whole view. The headless host has no screen:
// it checks the arguments: RTNORM, or RTERROR for a name that is not an
// entity of the drawing or a mode outside 1..4.
int acedRedraw(const ads_name ent, int mode);
