// ACUT utility calls: result-buffer allocation, list building, printing.
#pragma once

#include <cstddef>

#include "adsdef.h"

// The platform's allocator, the C heap: strings of result buffers that a
// call hands over (acedGetVar's, for one) are released with acad_free.
void* acad_malloc(size_t size);
void acad_free(void* p);

// A new node of the given type, value zeroed; null when out of memory.
resbuf* acutNewRb(int type);
// Releases the whole chain from rb on, with the strings and binary buffers
// that its nodes own (by the value kind of each node's type code).
int acutRelRb(resbuf* rb);
// Copies src into a new string allocated with the platform's allocator;
// *dst receives it (null for a null src). Returns a status code.
int acutNewString(const ACHAR* src, ACHAR*& dst);
// Builds a chain from (type, value) pairs terminated by 0 or RTNONE. The
// value follows the kind of the code (result type or DXF group): a double
// for reals and angles; a pointer to three doubles for points; an int for
// shorts (60-79, 170-179, 270-299, 370-389, 400-409, 1060-1070, RTSHORT)
// and for 32-bit longs (90-99, 420-459, 1071, RTLONG); a long long for
// 160-169 and RTINT64; a wide string, copied, for strings; a pointer to an
// ads_name for names (-1, -2, 330-369, 390-399, RTENAME, RTPICKS); a
// pointer to an ads_binary, whose bytes are copied, for binary chunks
// (310-319, 1004). RTLB, RTLE, RTDOTE, RTNIL, RTT and -3 take no value.
// RTDXF0 takes a string and makes the group-0 node (type code 0). An
// unknown code or a null pointer releases what was built and gives null.
resbuf* acutBuildList(int rtype, ...);
// Prints to the command line; the format follows the platform's wide
// convention (%s takes a wide string).
int acutPrintf(const ACHAR* format, ...);
// Formats into buffer, which (as on the platform) must be large enough for
// the text and its terminator. Returns the number of characters written.
int acutSPrintf(ACHAR* buffer, const ACHAR* format, ...);

int acutPolar(const ads_point pt, ads_real angle, ads_real dist, ads_point result);
ads_real acutAngle(const ads_point pt1, const ads_point pt2);
ads_real acutDistance(const ads_point pt1, const ads_point pt2);
int acutCvUnit(ads_real value, const ACHAR* oldunit, const ACHAR* newunit, ads_real* result);
int acutWcMatch(const ACHAR* string, const ACHAR* pattern);
int acutRToS(ads_real val, int unit, int prec, ACHAR* str, size_t nBufLen);
int acutAngToS(ads_real val, int unit, int prec, ACHAR* str, size_t nBufLen);
int acutDisToF(const ACHAR* str, int unit, ads_real* v);
// An angle typed in any unit mode (unit -1: AUNITS for a bare number) to
// radians: RTNORM, or RTERROR for text that is no angle.
int acutAngToF(const ACHAR* str, int unit, ads_real* v);
