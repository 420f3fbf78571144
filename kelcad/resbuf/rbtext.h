// Result-buffer chains, point arrays and byte buffers as text, for the
// command line and for diagnostics. Two forms of a chain:
//   the DXF form (dxfToStr, RbToStr, printResbufChain): every node as a
//     dotted pair of its group code and its value with English labels,
//     "\n(10 . (1, 2, 0))";
//   the AutoLISP form (RbToStrEx): the chain as AutoLISP source text, or
//     one labelled line per node when the base library's switch
//     GetDSFormatLspList() is on.
// Value kinds are those of KEL::GetDXFCodeDataType. RbToStr and
// PtArrayToStr return text in a module-owned buffer that the next call
// overwrites: copy it before calling again. None of them is reentrant.
#pragma once

#include "kelcad/platform.h"

namespace KEL {

// The code (restype, "%d") and the labelled value of one node, by the
// value kind of its type code.
void dxfToStr(const resbuf* rb, CString& code, CString& value);
// "\n(code . value)" for each node, concatenated; empty text for null.
const wchar_t* RbToStr(const resbuf* rb);
// Prints each node on the command line as "\n(code . value)".
void printResbufChain(const resbuf* rb);

// The chain in the AutoLISP form, or labelled (see above); empty for null.
// Reals use a short form: 0.0 below KEL::ZERO(), else at most 5 decimals
// without trailing zeros (12.0, 12.5, 0.12346). Entity data with xdata
// gives its pairs, then (-3 (1001 . "APP") ...) and the whole wrapped in
// one more pair of parentheses. The text is built in a buffer of 163840
// characters; a chain whose text does not fit ends the process with a
// message on standard error (exit status 1), never a cut text.
CString RbToStrEx(const resbuf* rb);

// A numbered table of the points: a header line with the column names,
// then one line per point, numbered from 0.
const wchar_t* PtArrayToStr(const AcArray<AcGePoint2d>& points);
const wchar_t* PtArrayToStr(const AcArray<AcGePoint3d>& points);

// out becomes the bytes as upper-case hexadecimal, two digits each ("0AFF"
// for 10 and 255); a count of 0 or less, or null bytes, gives empty text.
// Returns out's text.
const wchar_t* bytesToHexStr(const char* bytes, int count, CString& out);

}  // namespace KEL
