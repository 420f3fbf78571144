// ACDB calls available before the drawing database: error reporting.
#pragma once

#include "adsdef.h"

// Prints an application error message on the command line.
void acdbFail(const ACHAR* str);

// Intersection of the lines from1-to1 and from2-to2 (in 3D: they must
// meet). With teston nonzero the point must lie on both segments. RTNORM
// with the point in result; RTNONE when there is none (parallel, skew, or
// off a segment); RTERROR for missing arguments.
int acdbInters(const ads_point from1, const ads_point to1, const ads_point from2, const ads_point to2, int teston,
               ads_point result);

// Entity lists: an object's data as a chain of DXF groups. Names are
// ads_names of the working database's objects.
//
// The object's list (-1 name, 0 type, owner, handle, its groups); null for
// an invalid or erased name, or an object open for write.
resbuf* acdbEntGet(const ads_name ent);
// The same, followed by the xdata (-3, then each 1001 application whose
// name matches one of the RTSTR patterns of args, acutWcMatch style).
resbuf* acdbEntGetX(const ads_name ent, const resbuf* args);
// Makes an entity (into model space, or paper space with 67 = 1), a
// symbol-table record, or an object without an owner, from a list that
// starts with its 0 group (a -1 group before it is ignored). RTNORM; on a
// bad list RTREJ (nothing is added).
int acdbEntMake(const resbuf* ent);
// Like acdbEntMake; result receives the new object's name.
int acdbEntMakeX(const resbuf* ent, ads_name result);
// Changes the object named by the list's -1 group to the list's values
// (groups left out keep their values; type and handle cannot change).
// RTNORM or RTERROR (nothing is changed then).
int acdbEntMod(const resbuf* ent);
// Regenerates an entity on screen: nothing to draw here, the name is only
// checked. RTNORM or RTERROR.
int acdbEntUpd(const ads_name ent);
// Erases an entity, or unerases it when it is erased. RTNORM or RTERROR.
int acdbEntDel(const ads_name ent);
// The last entity of the drawing (model or paper space, not erased).
int acdbEntLast(ads_name result);
// With a null ent the first entity, else the one after ent. RTERROR at
// the end.
int acdbEntNext(const ads_name ent, ads_name result);
// The object of a hexadecimal handle (erased ones too). RTERROR when no
// object has it.
int acdbHandEnt(const ACHAR* handle, ads_name entres);

// Symbol tables by name ("LAYER", "LTYPE", "STYLE", "DIMSTYLE", "BLOCK",
// "VIEW", "UCS", "VPORT", "APPID"): the record's list without its name,
// handle, owner and subclass groups; null when absent. setnext makes
// acdbTblNext continue after the record found.
resbuf* acdbTblSearch(const ACHAR* tblname, const ACHAR* sym, int setnext);
// The next record of the table (the first after rewind or at the start);
// null after the last.
resbuf* acdbTblNext(const ACHAR* tblname, int rewind);
int acdbTblObjName(const ACHAR* tblname, const ACHAR* sym, ads_name result);
// Registers an application name: RTNORM, RTERROR when it is already
// registered or not a valid name.
int acdbRegApp(const ACHAR* appname);
int acdbNamedObjDict(ads_name result);
// Dictionary entries: the entry's list, or null.
resbuf* acdbDictSearch(const ads_name dict, const ACHAR* sym, int setnext);
resbuf* acdbDictNext(const ads_name dict, int rewind);
// Adds an object without an owner (made by acdbEntMakeX) under a new key.
int acdbDictAdd(const ads_name dict, const ACHAR* sym, const ads_name newobj);
// Removes the entry (the object stays, without an owner).
int acdbDictRemove(const ads_name dict, const ACHAR* sym);
int acdbDictRename(const ads_name dict, const ACHAR* oldsym, const ACHAR* newsym);

// Xdata room: bytes an entity's xdata may still take, and the size a list
// of xdata (with or without its -3 group) takes. RTNORM or RTERROR.
int acdbXdRoom(const ads_name ent, long* result);
int acdbXdSize(const resbuf* rb, long* result);
// A valid symbol-table name (extended names): RTNORM, else RTERROR. With
// pipetest 1 a vertical bar is allowed inside the name.
int acdbSNValid(const ACHAR* tbstr, int pipetest);
