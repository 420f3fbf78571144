#include "dxf/raw_group.h"

#include <array>
#include <cstdlib>

#include "arx/acutads.h"
#include "db/stub.h"
#include "dxf/group_values.h"
#include "kelhost/text.h"

namespace kelhost::dxf {

namespace {
FileKind ClassifyCode(int code) {
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

}  // namespace

// Tables: files hold millions of groups.
namespace {
template <class Kind, Kind (*classify)(int)>
std::array<Kind, kFileCodes> Table() {
  std::array<Kind, kFileCodes> kinds{};
  for (int c = 0; c < kFileCodes; ++c) kinds[c] = classify(c);
  return kinds;
}
}  // namespace

const FileKind* FileKinds() {
  static const std::array<FileKind, kFileCodes> kKinds = Table<FileKind, ClassifyCode>();
  return kKinds.data();
}

FileKind FileKindOf(int code) { return code >= 0 && code < kFileCodes ? FileKinds()[code] : FileKind::kInvalid; }

const RbKind* FileResbufKinds() {
  static const std::array<RbKind, kFileCodes> kKinds = Table<RbKind, ResbufKind>();
  return kKinds.data();
}

RbKind FileResbufKind(int code) { return code >= 0 && code < kFileCodes ? FileResbufKinds()[code] : ResbufKind(code); }

int PointLeadOf(int code) {
  auto lead = [](int c, int x0, int x1) { return c >= x0 && c <= x1; };
  if (lead(code, 20, 28) || lead(code, 30, 38)) return 10 + code % 10;
  if (lead(code, 120, 122) || lead(code, 130, 132)) return 110 + code % 10;
  if (code == 220 || code == 230) return 210;
  if (lead(code, 1020, 1023) || lead(code, 1030, 1033)) return 1010 + code % 10;
  return 0;
}

bool HexToBinary(std::string_view hex, resbuf* rb) {
  const size_t b = hex.find_first_not_of(" \t");
  const std::string_view t = b == std::string_view::npos ? std::string_view() : hex.substr(b, hex.find_last_not_of(" \t") - b + 1);
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

namespace {
// Nodes of a new chain, each malloc'd as acutRelRb expects.
class ChainNodes {
 public:
  resbuf* newNode(int code) {
    resbuf* rb = acutNewRb(code);
    if (!rb) return nullptr;
    *mTail = rb;
    mTail = &rb->rbnext;
    return rb;
  }
  bool setText(resbuf* rb, std::string_view utf8) {
    return acutNewString(FromUtf8(std::string(utf8)).c_str(), rb->resval.rstring) == RTNORM;
  }
  bool setBinary(resbuf* rb, std::string_view hex) { return HexToBinary(hex, rb); }
  resbuf* head = nullptr;

 private:
  resbuf** mTail = &head;
};
}  // namespace

bool GroupsToChain(const RawGroup* begin, const RawGroup* end, const ResolveHandle& resolve, resbuf*& chain) {
  ChainNodes nodes;
  if (!ConvertGroups(begin, end, resolve, nodes)) {
    acutRelRb(nodes.head);
    chain = nullptr;
    return false;
  }
  chain = nodes.head;
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
