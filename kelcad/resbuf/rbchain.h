// Result-buffer chains: the value kind of a group code, and the helpers
// that measure, walk, search, splice, copy and build resbuf chains.
// None of them prints or keeps state. Chains handed back are the caller's
// to release with acutRelRb; functions that splice take over the nodes
// given to them as each comment says. "Index" counts from 0 at the head.
#pragma once

#include "kelcad/platform.h"

namespace KEL {

// The value kind (a result type code) a node with this group code holds:
// RTSTR, RTREAL, RTSHORT, RTLONG, RT3DPOINT, RTENAME, 1004 for a binary
// chunk, the code itself for codes that read as unsigned above 4999 (result
// types and negative sentinels other than -1), otherwise RTNONE.
int GetDXFCodeDataType(int code);

// Links tail after the last node of head (head becomes tail when null).
// Takes over tail; returns head.
resbuf* AppendRb(resbuf*& head, resbuf* tail);
int GetRbLength(const resbuf* rb);
// The node at index n; null when the chain is shorter or n is negative.
resbuf* GetRbNth(resbuf* rb, short n);
// The first node whose restype is code, or null.
resbuf* GetRbXDXF(resbuf* rb, int code);
bool GetRbXDXF(resbuf* rb, int code, resbuf*& found);
// The index of the first node with that code, counted in 16 bits;
// RTERROR when there is none.
short GetRbXDXFIndex(const resbuf* rb, short code);

// Inserts the chain ins after the node at index n (a negative n inserts
// after the head). RTERROR, with nothing changed, when n is not below the
// chain's length or head is null. Takes over ins on success.
int InsertRbAfterN(resbuf*& head, resbuf* ins, short n);
// Releases the node at index n and puts the chain repl (may be null) in
// its place. The head is passed by value and cannot be replaced: n 0 (or
// below) gives RTERROR. Takes over repl on success.
int ReplaceRbAfterN(resbuf* head, resbuf* repl, short n);
// ReplaceRbAfterN at the index of the first node with that code. A match at
// the head, or at the index whose 16-bit pattern is RTERROR, fails.
int ReplaceRbAfterXDXF(resbuf* head, resbuf* repl, short code);

// Keeps a list of integer-keyed pairs (an RTSHORT key node followed by its
// value node). pair is a key node followed by its value node. When no node
// of the chain carries the key's value, the whole pair is appended (and
// taken over). When one does, only pair's successor chain takes the place
// of that node's value node: the old value node and the key node pair are
// detached and stay with the caller, who releases them. False when pair is
// not an RTSHORT node.
bool ModifyRbIntNode(resbuf*& head, resbuf* pair);

// A copy of one node (its rbnext null), by the value kind of its restype;
// null for a kind that has no copy rule. The copy of a 1004 binary chunk
// owns a copy of the bytes but keeps the clen that acutNewRb gave it.
resbuf* duplicateResbufNode(const resbuf* rb);
// A copy of the whole chain; nodes that have no copy rule are skipped.
resbuf* duplicateResbufChain(const resbuf* rb);
// A copy from start up to and including end (or the end of the chain).
resbuf* duplicateResbufChain(const resbuf* start, const resbuf* end);
resbuf* tailOfResbufChain(resbuf* rb);

// A chain of RT3DPOINT nodes, one per point; null for an empty array.
resbuf* ptArrayToResbuf(const AcArray<AcGePoint3d>& points);

void copyAdsPt(ads_point dst, const ads_point src);
void copyEname(ads_name dst, const ads_name src);

// The entity's data list (acdbEntGet) when appName is null or empty;
// otherwise the list with that application's xdata (acdbEntGetX). The
// caller releases the result; null when the entity cannot be read.
resbuf* EntGetRb(ads_name ent, const wchar_t* appName = nullptr);
// The value of the first group with that code in the entity's list (as
// EntGetRb reads it) copied into value; false, with value unchanged, when
// there is no list or no such group. The int form reads the 16-bit rint.
bool EntGetData(ads_name ent, short code, int& value, const wchar_t* appName = nullptr);
bool EntGetData(ads_name ent, short code, long& value, const wchar_t* appName = nullptr);
bool EntGetData(ads_name ent, short code, double& value, const wchar_t* appName = nullptr);
bool EntGetData(ads_name ent, short code, CString& value, const wchar_t* appName = nullptr);
bool EntGetData(ads_name ent, short code, ads_point value, const wchar_t* appName = nullptr);

}  // namespace KEL
