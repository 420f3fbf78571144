#include "dxf/raw_group.h"

#include <cerrno>
#include <cinttypes>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "arx/acutads.h"
#include "db/stub.h"
#include "kelhost/resbuf_kinds.h"
#include "kelhost/text.h"

namespace kelhost::dxf {

FileKind FileKindOf(int code) {
  if (code >= 0 && code <= 9) return FileKind::kText;
  if (code >= 10 && code <= 59) return FileKind::kReal;
  if (code >= 60 && code <= 79) return FileKind::kInt16;
  if (code >= 90 && code <= 99) return FileKind::kInt32;
  if (code == 100 || code == 101 || code == 102) return FileKind::kText;
  if (code == 105) return FileKind::kHandle;
  if (code >= 110 && code <= 149) return FileKind::kReal;
  if (code >= 160 && code <= 169) return FileKind::kInt64;
  if (code >= 170 && code <= 179) return FileKind::kInt16;
  if (code >= 210 && code <= 239) return FileKind::kReal;
  if (code >= 270 && code <= 289) return FileKind::kInt16;
  if (code >= 290 && code <= 299) return FileKind::kBool;
  if (code >= 300 && code <= 309) return FileKind::kText;
  if (code >= 310 && code <= 319) return FileKind::kBinary;
  if (code >= 320 && code <= 369) return FileKind::kHandle;
  if (code >= 370 && code <= 389) return FileKind::kInt16;
  if (code >= 390 && code <= 399) return FileKind::kHandle;
  if (code >= 400 && code <= 409) return FileKind::kInt16;
  if (code >= 410 && code <= 419) return FileKind::kText;
  if (code >= 420 && code <= 429) return FileKind::kInt32;
  if (code >= 430 && code <= 439) return FileKind::kText;
  if (code >= 440 && code <= 459) return FileKind::kInt32;
  if (code >= 460 && code <= 469) return FileKind::kReal;
  if (code >= 470 && code <= 479) return FileKind::kText;
  if (code == 480 || code == 481) return FileKind::kHandle;
  if (code == 999) return FileKind::kText;
  if (code == 1004) return FileKind::kBinary;
  if (code >= 1000 && code <= 1009) return FileKind::kText;
  if (code >= 1010 && code <= 1059) return FileKind::kReal;
  if (code >= 1060 && code <= 1070) return FileKind::kInt16;
  if (code == 1071) return FileKind::kInt32;
  return FileKind::kInvalid;
}

std::string FormatReal(double v) {
  char buf[40];
  for (int precision = 15; precision <= 17; ++precision) {
    std::snprintf(buf, sizeof buf, "%.*g", precision, v);
    if (std::strtod(buf, nullptr) == v) break;
  }
  std::string s = buf;
  // Always a decimal point, as DXF writers do, so the value reads as real.
  if (s.find_first_of(".eEn") == std::string::npos) s += ".0";
  return s;
}

namespace {
std::string Trimmed(const std::string& text) {
  size_t b = text.find_first_not_of(" \t");
  if (b == std::string::npos) return "";
  size_t e = text.find_last_not_of(" \t");
  return text.substr(b, e - b + 1);
}
}  // namespace

bool ParseReal(const std::string& text, double& out) {
  const std::string t = Trimmed(text);
  if (t.empty()) return false;
  char* end = nullptr;
  errno = 0;
  out = std::strtod(t.c_str(), &end);
  return end && *end == '\0' && std::isfinite(out) && errno != ERANGE;
}

bool ParseInteger(const std::string& text, long long& out) {
  const std::string t = Trimmed(text);
  if (t.empty()) return false;
  char* end = nullptr;
  errno = 0;
  out = std::strtoll(t.c_str(), &end, 10);
  return end && *end == '\0' && errno != ERANGE;
}

bool ParseHandle(const std::string& text, std::uint64_t& out) {
  const std::string t = Trimmed(text);
  if (t.empty() || t.size() > 16) return false;
  out = 0;
  for (char c : t) {
    int d;
    if (c >= '0' && c <= '9') d = c - '0';
    else if (c >= 'a' && c <= 'f') d = c - 'a' + 10;
    else if (c >= 'A' && c <= 'F') d = c - 'A' + 10;
    else return false;
    out = out * 16 + static_cast<std::uint64_t>(d);
  }
  return true;
}

std::string HandleText(std::uint64_t handle) {
  char buf[20];
  std::snprintf(buf, sizeof buf, "%" PRIX64, handle);
  return buf;
}

int PointLeadOf(int code) {
  auto lead = [](int c, int x0, int x1) { return c >= x0 && c <= x1; };
  if (lead(code, 20, 28) || lead(code, 30, 38)) return 10 + code % 10;
  if (lead(code, 120, 122) || lead(code, 130, 132)) return 110 + code % 10;
  if (code == 220 || code == 230) return 210;
  if (lead(code, 1020, 1023) || lead(code, 1030, 1033)) return 1010 + code % 10;
  return 0;
}

namespace {
bool IsPointLead(int code) {
  return (code >= 10 && code <= 18) || (code >= 110 && code <= 112) || code == 210 || (code >= 1010 && code <= 1013);
}

bool HexToBinary(const std::string& hex, resbuf* rb) {
  const std::string t = Trimmed(hex);
  if (t.size() % 2 || t.size() / 2 > 32767) return false;
  const size_t n = t.size() / 2;
  rb->resval.rbinary.clen = static_cast<short>(n);
  rb->resval.rbinary.buf = nullptr;
  if (n == 0) return true;
  auto* buf = static_cast<char*>(std::malloc(n));
  if (!buf) return false;
  for (size_t i = 0; i < n; ++i) {
    std::uint64_t byte = 0;
    if (!ParseHandle(t.substr(2 * i, 2), byte)) {
      std::free(buf);
      return false;
    }
    buf[i] = static_cast<char>(byte);
  }
  rb->resval.rbinary.buf = buf;
  return true;
}
}  // namespace

bool GroupsToChain(const RawGroup* begin, const RawGroup* end, const ResolveHandle& resolve, resbuf*& chain) {
  chain = nullptr;
  resbuf** tail = &chain;
  auto fail = [&chain] {
    acutRelRb(chain);
    chain = nullptr;
    return false;
  };
  for (const RawGroup* g = begin; g != end; ++g) {
    resbuf* rb = acutNewRb(g->code);
    if (!rb) return fail();
    *tail = rb;
    tail = &rb->rbnext;
    double d = 0;
    long long n = 0;
    if (IsPointLead(g->code)) {
      ParseReal(g->value, rb->resval.rpoint[0]);
      const int lead = g->code;
      // Y and Z follow as their own groups in a file.
      for (int axis = 1; axis <= 2; ++axis) {
        const int code = lead + axis * 10;
        if (g + 1 != end && g[1].code == code) {
          ++g;
          ParseReal(g->value, rb->resval.rpoint[axis]);
        }
      }
      continue;
    }
    switch (ResbufKind(g->code)) {
      case RbKind::kReal:
        ParseReal(g->value, d);
        rb->resval.rreal = d;
        break;
      case RbKind::kShort:
        ParseInteger(g->value, n);
        rb->resval.rint = static_cast<short>(n);
        break;
      case RbKind::kLong:
        ParseInteger(g->value, n);
        rb->resval.rlong = static_cast<std::int32_t>(n);
        break;
      case RbKind::kInt64:
        ParseInteger(g->value, n);
        rb->resval.mnInt64 = n;
        break;
      case RbKind::kName: {
        std::uint64_t h = 0;
        AcDbObjectId id;
        if (ParseHandle(g->value, h) && h != 0) id = resolve(h);
        rb->resval.rlname[0] = id.asOldId();
        rb->resval.rlname[1] = 0;
        break;
      }
      case RbKind::kBinary:
        if (!HexToBinary(g->value, rb)) return fail();
        break;
      case RbKind::kString:
        if (acutNewString(FromUtf8(g->value).c_str(), rb->resval.rstring) != RTNORM) return fail();
        break;
      default:
        break;
    }
  }
  return true;
}

void AppendNode(const resbuf* rb, RawGroups& out) {
  const int code = rb->restype;
  if (IsPointLead(code)) {
    out.push_back({code, FormatReal(rb->resval.rpoint[0])});
    out.push_back({code + 10, FormatReal(rb->resval.rpoint[1])});
    out.push_back({code + 20, FormatReal(rb->resval.rpoint[2])});
    return;
  }
  switch (ResbufKind(code)) {
    case RbKind::kReal: out.push_back({code, FormatReal(rb->resval.rreal)}); break;
    case RbKind::kShort: out.push_back({code, std::to_string(rb->resval.rint)}); break;
    case RbKind::kLong: out.push_back({code, std::to_string(rb->resval.rlong)}); break;
    case RbKind::kInt64: out.push_back({code, std::to_string(static_cast<long long>(rb->resval.mnInt64))}); break;
    case RbKind::kName: {
      AcDbObjectId id;
      id.setFromOldId(rb->resval.rlname[0]);
      AcDbStub* stub = id;
      out.push_back({code, db::IsLiveStub(stub) ? HandleText(stub->handle) : "0"});
      break;
    }
    case RbKind::kBinary: {
      static const char kHex[] = "0123456789ABCDEF";
      std::string hex;
      for (short i = 0; i < rb->resval.rbinary.clen; ++i) {
        const auto b = static_cast<unsigned char>(rb->resval.rbinary.buf[i]);
        hex += kHex[b >> 4];
        hex += kHex[b & 15];
      }
      out.push_back({code, hex});
      break;
    }
    case RbKind::kString: out.push_back({code, ToUtf8(rb->resval.rstring)}); break;
    default: break;
  }
}

void ChainToGroups(const resbuf* chain, RawGroups& out) {
  for (const resbuf* rb = chain; rb; rb = rb->rbnext) AppendNode(rb, out);
}

}  // namespace kelhost::dxf
