// ACED calls of the AutoLISP bridge: external functions, their arguments
// and return values, and AutoLISP symbols.
#pragma once

#include <cstddef>

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

// Looks for a file as the platform looks for support files: as named,
// then (a bare name) in each directory of the support file search path
// (ACAD). The path found goes into result, which holds nBufLen characters:
// RTNORM; RTERROR when it is not found or does not fit.
int acedFindFile(const ACHAR* fname, ACHAR* result, size_t nBufLen);

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

// User input. Every call shows its prompt (none for a null prompt) and
// takes the answer from the running command's call or from the user, as a
// command's prompts do. Points are in the current UCS; a base point pt
// (null for none) starts a rubber band, and for distances and angles is
// the first of the two points. Return codes: RTNORM with the value in
// result; RTNONE for Enter; RTKWORD for a keyword or arbitrary text
// (acedGetInput gives it); RTCAN when cancelled; RTERROR for a bad call.

// The conditions of acedInitGet (val: these bits, or-ed). Those about the
// screen (dashed bands, UCS tracking, Z tracking, object snaps) are taken
// and change nothing in a host without one.
#define RSG_NONULL 0x0001      // Enter is refused
#define RSG_NOZERO 0x0002      // zero is refused
#define RSG_NONEG 0x0004       // a negative number is refused
#define RSG_NOLIM 0x0008       // points outside the limits even when LIMCHECK is on
#define RSG_DASH 0x0020        // dashed rubber band
#define RSG_2D 0x0040          // acedGetDist: the distance in the XY plane
#define RSG_OTHER 0x0080       // any text is taken (RTKWORD); with RSG_NONULL, Enter is ""
#define RSG_DDISTFIRST 0x0100  // a number at a point prompt is a distance before arbitrary text
#define RSG_TRACKUCS 0x0200
#define RSG_NOORTHOZ 0x0400
#define RSG_NOOSNAP 0x0800

// Sets the conditions and keywords (kwl, may be null) of the next input
// call only; it clears them whatever happens. Keywords are separated by
// spaces; capitals mark the shortest form ("LType") or the form follows a
// comma ("LTYPE,LT"); local names, "_", then the global names returned
// ("Ja Nein _ Yes No"). RTNORM.
int acedInitGet(int val, const ACHAR* kwl);
int acedGetPoint(const ads_point pt, const ACHAR* prompt, ads_point result);
// The other corner of a rectangle from pt (required).
int acedGetCorner(const ads_point pt, const ACHAR* prompt, ads_point result);
// A distance: a number in the current units, or two points.
int acedGetDist(const ads_point pt, const ACHAR* prompt, ads_real* result);
// An angle in radians measured from ANGBASE anticlockwise (typed in the
// current angle units, which follow ANGBASE and ANGDIR).
int acedGetAngle(const ads_point pt, const ACHAR* prompt, ads_real* result);
// The same, measured from east whatever ANGBASE and ANGDIR are.
int acedGetOrient(const ads_point pt, const ACHAR* prompt, ads_real* result);
int acedGetReal(const ACHAR* prompt, ads_real* result);
// An integer from -32768 to 32767.
int acedGetInt(const ACHAR* prompt, int* result);
// Text (Enter is RTNORM with ""). cronly nonzero: a space belongs to the
// text and only Enter ends it. The acedInitGet conditions do not apply.
// Without bufsize result holds at least 133 characters and receives at
// most 132; with bufsize, text that does not fit is cut and the call
// returns RTINPUTTRUNCATED.
int acedGetString(int cronly, const ACHAR* prompt, ACHAR* result);
int acedGetString(int cronly, const ACHAR* prompt, ACHAR* result, size_t bufsize);
// One of the keywords set by acedInitGet, as listed there (RTNORM);
// RTNONE for Enter; RTERROR when no keywords were set. Without bufsize
// result holds at least 132 characters.
int acedGetKword(const ACHAR* prompt, ACHAR* result);
int acedGetKword(const ACHAR* prompt, ACHAR* result, size_t bufsize);
// The keyword or arbitrary text of the input call just made, when it
// returned RTKWORD (RTNORM); RTERROR otherwise.
int acedGetInput(ACHAR* str);
int acedGetInput(ACHAR* str, size_t bufsize);
// An object picked with a point (default prompt "\nSelect object: "):
// RTNORM with its name and the pick point; RTERROR when nothing was picked
// (ERRNO 7) or for Enter (ERRNO 52); RTKWORD, RTCAN.
int acedEntSel(const ACHAR* str, ads_name entres, ads_point ptres);

// Selection sets. A set's name is an ads_name (RTPICKS); word 0 numbers
// the set. acedSSGet modes: "X" every entity of the drawing, "W"/"C" the
// entities of the current space inside / crossing the window pt1-pt2
// (points are ads_real[3]), "L" the last entity, "P" the previous set
// ("_" prefixes allowed); "F", "WP", "CP" the entities crossing the fence
// / inside / inside or crossing the polygon whose points (UCS) pt1 gives
// as a chain of RTPOINT or RT3DPOINT nodes; "I" the pick-first set; a
// null (or empty) str with pt1 the object picked at that point, and with
// no pt1 the "Select objects:" prompt (":S" for a single selection) until
// Enter. Only visible objects of the current space are taken, except by
// "X". An optional filter list narrows any mode. Sets from "X", "W" and "C"
// list the newest entity first. RTNORM with a new set in ss, RTERROR when
// nothing is selected or the arguments are bad, RTCAN when the user
// cancelled.
int acedSSGet(const ACHAR* str, const void* pt1, const void* pt2, const resbuf* filter, ads_name ss);
// The pick-first set (the objects selected when no command runs): pset a
// set to select, or null to select nothing (unused must be null). RTNORM;
// RTERROR for a name that is no set.
int acedSSSetFirst(const ads_name pset, const ads_name unused);
// *gset is null (grips on unselected objects are gone); *pset a new
// RTPICKS node holding a new set of the pick-first objects, or null when
// none is selected. The caller releases the nodes (acutRelRb) and the set.
int acedSSGetFirst(resbuf** gset, resbuf** pset);
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

// Measures single-line text: args is a TEXT, ATTDEF or ATTRIB entity list
// (entget's form) or just its string group (1; for an ATTDEF the tag, 2, is
// measured). Groups left out come from the style (7, else TEXTSTYLE):
// height 40 (the style's fixed height, else TEXTSIZE), width factor 41,
// oblique angle 51, generation flags 71 (2 backwards, 4 upside down).
// pt1 and pt2 receive the lower-left and upper-right corners of the box
// the characters' ink fills, relative to the insertion point, in the
// text's own coordinate system as if unrotated (z 0); text that shows
// nothing gives two zero points. RTNORM; RTERROR for a null argument, a
// list without the string, or a style the drawing does not have.
int acedTextBox(const resbuf* args, ads_point pt1, ads_point pt2);

// Redraws an entity (mode 1 redraw, 2 undraw, 3 highlight, 4 unhighlight)
// or, with a null name, the whole view. The headless host has no screen:
// it checks the arguments: RTNORM, or RTERROR for a name that is not an
// entity of the drawing or a mode outside 1..4.
int acedRedraw(const ads_name ent, int mode);
