// Result-buffer nodes: allocation, release and list building with the
// platform's ownership rules. Strings and binary chunks are allocated with
// malloc, as the platform's allocator is the C heap: an application may
// free() a node's string itself and leave the pointer null.
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>

#include "ads/build_list.h"
#include "arx/acutads.h"
#include "kelhost/resbuf_kinds.h"

namespace kelhost {
// Value kinds of the result-type codes and of the DXF group codes as
// entity lists, xdata and filters hold them. The X code of a coordinate
// group is a point; its Y and Z codes only exist in DXF files.
RbKind ResbufKind(int t) {
  switch (t) {
    case RTNONE: case RTVOID: case RTLB: case RTLE: case RTDOTE: case RTNIL: case RTT: case RTMODELESS:
      return RbKind::kNone;
    case RTREAL: case RTANG: case RTORINT: return RbKind::kReal;
    case RTPOINT: case RT3DPOINT: return RbKind::kPoint;
    case RTSHORT: return RbKind::kShort;
    case RTLONG: return RbKind::kLong;
    case RTINT64: return RbKind::kInt64;
    case RTSTR: case RTDXF0: return RbKind::kString;
    case RTENAME: case RTPICKS: return RbKind::kName;
    case -5: case -3: return RbKind::kNone;     // reactor chain, xdata sentinel
    case -4: return RbKind::kString;            // filter operator
    case -2: case -1: return RbKind::kName;
    default: break;
  }
  if (t >= 0 && t <= 9) return RbKind::kString;
  if (t >= 10 && t <= 19) return RbKind::kPoint;
  if (t >= 20 && t <= 59) return RbKind::kReal;
  if (t >= 60 && t <= 79) return RbKind::kShort;
  if (t >= 90 && t <= 99) return RbKind::kLong;
  if ((t >= 100 && t <= 102) || t == 105) return RbKind::kString;
  if (t >= 110 && t <= 119) return RbKind::kPoint;
  if (t >= 120 && t <= 149) return RbKind::kReal;
  if (t >= 160 && t <= 169) return RbKind::kInt64;
  if (t >= 170 && t <= 179) return RbKind::kShort;
  if (t >= 210 && t <= 219) return RbKind::kPoint;
  if (t >= 220 && t <= 239) return RbKind::kReal;
  if (t >= 270 && t <= 299) return RbKind::kShort;  // 290-299 are booleans held as shorts
  if (t >= 300 && t <= 309) return RbKind::kString;
  if (t >= 310 && t <= 319) return RbKind::kBinary;
  if (t >= 320 && t <= 329) return RbKind::kString;  // handles as text
  if (t >= 330 && t <= 369) return RbKind::kName;    // object ids
  if (t >= 370 && t <= 389) return RbKind::kShort;
  if (t >= 390 && t <= 399) return RbKind::kName;
  if (t >= 400 && t <= 409) return RbKind::kShort;
  if (t >= 410 && t <= 419) return RbKind::kString;
  if (t >= 420 && t <= 429) return RbKind::kLong;
  if (t >= 430 && t <= 439) return RbKind::kString;
  if (t >= 440 && t <= 459) return RbKind::kLong;
  if (t >= 460 && t <= 469) return RbKind::kReal;
  if (t >= 470 && t <= 479) return RbKind::kString;
  if (t == 480 || t == 481) return RbKind::kName;
  if (t == 999) return RbKind::kString;
  if (t == 1004) return RbKind::kBinary;
  if (t >= 1000 && t <= 1009) return RbKind::kString;
  if (t >= 1010 && t <= 1019) return RbKind::kPoint;
  if (t >= 1020 && t <= 1059) return RbKind::kReal;
  if (t >= 1060 && t <= 1070) return RbKind::kShort;
  if (t == 1071) return RbKind::kLong;
  return RbKind::kUnknown;
}

const resbuf* FirstNonFinite(const resbuf* chain) {
  for (const resbuf* rb = chain; rb; rb = rb->rbnext) {
    switch (ResbufKind(rb->restype)) {
      case RbKind::kReal:
        if (!std::isfinite(rb->resval.rreal)) return rb;
        break;
      case RbKind::kPoint:
        for (double v : rb->resval.rpoint)
          if (!std::isfinite(v)) return rb;
        break;
      default: break;
    }
  }
  return nullptr;
}
}  // namespace kelhost

void* acad_malloc(size_t size) { return std::malloc(size); }
void acad_free(void* p) { std::free(p); }

resbuf* acutNewRb(int type) {
  resbuf* rb = static_cast<resbuf*>(std::calloc(1, sizeof(resbuf)));
  if (!rb) return nullptr;
  rb->restype = static_cast<short>(type);
  return rb;  // calloc zeroed the value: null string, empty binary chunk
}

int acutRelRb(resbuf* rb) {
  while (rb) {
    resbuf* next = rb->rbnext;
    switch (kelhost::ResbufKind(rb->restype)) {
      case kelhost::RbKind::kString: std::free(rb->resval.rstring); break;
      case kelhost::RbKind::kBinary: std::free(rb->resval.rbinary.buf); break;
      default: break;
    }
    std::free(rb);
    rb = next;
  }
  return RTNORM;
}

int acutNewString(const ACHAR* src, ACHAR*& dst) {
  dst = nullptr;
  if (!src) return RTNORM;
  size_t n = std::wcslen(src) + 1;
  dst = static_cast<ACHAR*>(std::malloc(n * sizeof(ACHAR)));
  if (!dst) return RTERROR;
  std::wmemcpy(dst, src, n);
  return RTNORM;
}

namespace {
struct Args {
  va_list ap;
};

void Complain(const char* what, int code) {
  std::fprintf(stderr, "acutBuildList: %s (type code %d); no list built\n", what, code);
}

// Fills node from the next argument by the node's kind; false (with a
// message) when the argument cannot be used.
bool TakeValue(resbuf* node, int code, kelhost::RbKind kind, Args& a) {
  using kelhost::RbKind;
  switch (kind) {
    case RbKind::kNone: return true;
    case RbKind::kReal: node->resval.rreal = va_arg(a.ap, double); return true;
    case RbKind::kShort: node->resval.rint = static_cast<short>(va_arg(a.ap, int)); return true;
    case RbKind::kLong: node->resval.rlong = static_cast<Adesk::Int32>(va_arg(a.ap, int)); return true;
    case RbKind::kInt64: node->resval.mnInt64 = va_arg(a.ap, long long); return true;
    case RbKind::kPoint: {
      const double* p = va_arg(a.ap, const double*);
      if (!p) return Complain("null point", code), false;
      std::memcpy(node->resval.rpoint, p, sizeof node->resval.rpoint);
      return true;
    }
    case RbKind::kName: {
      const std::int64_t* n = va_arg(a.ap, const std::int64_t*);
      if (!n) return Complain("null name", code), false;
      node->resval.rlname[0] = n[0];
      node->resval.rlname[1] = n[1];
      return true;
    }
    case RbKind::kString: {
      const ACHAR* s = va_arg(a.ap, const ACHAR*);
      if (!s) return Complain("null string", code), false;
      if (acutNewString(s, node->resval.rstring) != RTNORM) return Complain("out of memory", code), false;
      return true;
    }
    case RbKind::kBinary: {
      const ads_binary* b = va_arg(a.ap, const ads_binary*);
      if (!b || b->clen < 0 || (b->clen > 0 && !b->buf)) return Complain("bad binary chunk", code), false;
      if (b->clen > 0) {
        node->resval.rbinary.buf = static_cast<char*>(std::malloc(static_cast<size_t>(b->clen)));
        if (!node->resval.rbinary.buf) return Complain("out of memory", code), false;
        std::memcpy(node->resval.rbinary.buf, b->buf, static_cast<size_t>(b->clen));
      }
      node->resval.rbinary.clen = b->clen;
      return true;
    }
    case RbKind::kUnknown: break;
  }
  Complain("unknown type code", code);
  return false;
}
}  // namespace

// Value arguments by kind: reals a double; points a pointer to three
// doubles; shorts an int; longs a 32-bit int; 64-bit codes a long long;
// strings a wide string (copied); names a pointer to an ads_name; binary
// chunks (310-319, 1004) a pointer to an ads_binary whose bytes are copied.
// RTDXF0 makes the group-0 node of an entity list (type code 0).
namespace kelhost::ads {
resbuf* BuildListV(int rtype, va_list ap) {
  Args a;
  va_copy(a.ap, ap);
  resbuf* head = nullptr;
  resbuf* tail = nullptr;
  for (int code = rtype; code != 0 && code != RTNONE; code = va_arg(a.ap, int)) {
    kelhost::RbKind kind = kelhost::ResbufKind(code);
    resbuf* node = acutNewRb(code == RTDXF0 ? 0 : code);
    if (!node || !TakeValue(node, code, kind, a)) {
      if (!node) Complain("out of memory", code);
      acutRelRb(node);
      acutRelRb(head);
      head = nullptr;
      break;
    }
    if (tail) tail->rbnext = node; else head = node;
    tail = node;
  }
  va_end(a.ap);
  return head;
}
}  // namespace kelhost::ads

resbuf* acutBuildList(int rtype, ...) {
  va_list ap;
  va_start(ap, rtype);
  resbuf* head = kelhost::ads::BuildListV(rtype, ap);
  va_end(ap);
  return head;
}
