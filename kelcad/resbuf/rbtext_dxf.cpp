// The DXF form of result-buffer chains: each node as a dotted pair of its
// group code and a labelled value.
#include <string>

#include "kelcad/resbuf/rbchain.h"
#include "kelcad/resbuf/rbtext.h"

namespace KEL {
namespace {
// The platform's long is 32 bits: names print their first word's low half.
unsigned long FirstWord(const resbuf* rb) { return static_cast<unsigned long>(rb->resval.rlname[0]) & 0xFFFFFFFFul; }

// Entity-name groups say what kind of reference the name is.
const wchar_t* NameFormat(int code) {
  if (code >= 330 && code <= 339) return L"<Soft Pointer: %8lx>";
  if (code >= 340 && code <= 349) return L"<Hard Pointer: %8lx>";
  if (code >= 350 && code <= 359) return L"<Soft Ownership: %8lx>";
  if (code >= 360 && code <= 369) return L"<Hard Ownership: %8lx>";
  if (code >= 390 && code <= 398) return L"<Hard Pointer: %8lx>";
  return L"<Entity Name: %8lx>";
}
}  // namespace

const wchar_t* bytesToHexStr(const char* bytes, int count, CString& out) {
  out.Empty();
  if (bytes != nullptr)
    for (int i = 0; i < count; ++i) out.AppendFormat(L"%02hX", static_cast<unsigned char>(bytes[i]));
  return out.GetString();
}

void dxfToStr(const resbuf* rb, CString& code, CString& value) {
  code.Empty();
  value.Empty();
  if (rb == nullptr) return;
  const int type = rb->restype;
  code.Format(L"%d", type);
  const ads_u_val& v = rb->resval;
  switch (GetDXFCodeDataType(type)) {
    case RTREAL: value.Format(L"%g", v.rreal); break;
    case RTPOINT: value.Format(L"(%g, %g)", v.rpoint[X], v.rpoint[Y]); break;
    case RTSHORT: value.Format(L"%d", static_cast<int>(v.rint)); break;
    case RTSTR:
      if (v.rstring == nullptr) value = L"(NULL)";
      else value.Format(L"\"%s\"", v.rstring);
      break;
    case RTENAME: value.Format(NameFormat(type), FirstWord(rb)); break;
    case RTPICKS: value.Format(L"<Selection Set: %8lx>", FirstWord(rb)); break;
    case RT3DPOINT: value.Format(L"(%g, %g, %g)", v.rpoint[X], v.rpoint[Y], v.rpoint[Z]); break;
    case RTLONG: value.Format(L"%ld", static_cast<long>(v.rlong)); break;
    case RTLB: value = L"List Begin"; break;
    case RTLE: value = L"List End"; break;
    case RTNIL: value = L"NIL"; break;
    case RTT: value = L"T"; break;
    case 1004: {
      CString hex;
      value.Format(L"Binary Chunk: \"%s\"", bytesToHexStr(v.rbinary.buf, v.rbinary.clen, hex));
      break;
    }
    case -6: value = L"Extension Dictionary"; break;
    case -5: value = L"Persistent Reactors"; break;
    case -4: value.Format(L"Conditional Operator: \"%s\"", v.rstring); break;
    case -3: value = L"Start of Xdata"; break;
    case -2: value.Format(L"<Entity Name Reference: %8lx>", FirstWord(rb)); break;
    default: value = L"*Unknown*"; break;
  }
}

const wchar_t* RbToStr(const resbuf* rb) {
  static CString text;
  text.Empty();
  CString code, value;
  for (; rb != nullptr; rb = rb->rbnext) {
    dxfToStr(rb, code, value);
    text.AppendFormat(L"\n(%s . %s)", code.GetString(), value.GetString());
  }
  return text.GetString();
}

void printResbufChain(const resbuf* rb) {
  CString code, value;
  for (; rb != nullptr; rb = rb->rbnext) {
    dxfToStr(rb, code, value);
    acutPrintf(L"\n(%s . %s)", code.GetString(), value.GetString());
  }
}
}  // namespace KEL
