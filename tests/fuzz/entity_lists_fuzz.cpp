// Entity lists and selection filters as programs hand them to acdbEntMake,
// acdbEntMakeX, acdbEntMod and acedSSGet: types the host knows and some it
// does not, groups of every kind with values at the edges of what a double
// holds, complex entities in and out of order, xdata with nested braces,
// filters with every -4 operator nested deep. Each call either does its
// work or refuses; nothing is left open, and a drawing built so always
// saves and opens again.
#include <fuzzer/FuzzedDataProvider.h>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <cstdint>
#include <cstdlib>
#include <cwchar>
#include <filesystem>
#include <limits>
#include <memory>
#include <string>

#include "arx/arxheaders.h"
#include "fuzz_flags.h"
#include "db/stub.h"
#include "dxf/dxf_file.h"
#include "dxf/file_structure.h"
#include "kelhost/host.h"
#include "kelhost/lisp.h"
#include "kelhost/resbuf_kinds.h"
#include "kelhost/sysvars.h"
#include "kelhost/text.h"

namespace {

char gDir[] = "/tmp/kelcad_entity_lists_fuzz_XXXXXX";
void RemoveDir() { std::filesystem::remove_all(gDir); }

class ChainBuilder {
 public:
  ~ChainBuilder() { acutRelRb(mHead); }
  resbuf* add(int code) {
    resbuf* rb = acutNewRb(RTSHORT);
    if (!rb) std::abort();
    rb->restype = static_cast<short>(code);
    *mTail = rb;
    mTail = &rb->rbnext;
    return rb;
  }
  void addText(int code, const std::wstring& text) {
    resbuf* rb = add(code);
    rb->resval.rstring = static_cast<wchar_t*>(std::malloc((text.size() + 1) * sizeof(wchar_t)));
    if (!rb->resval.rstring) std::abort();
    std::wmemcpy(rb->resval.rstring, text.c_str(), text.size() + 1);
  }
  resbuf* head() const { return mHead; }

 private:
  resbuf* mHead = nullptr;
  resbuf** mTail = &mHead;
};

const wchar_t* const kTypes[] = {L"LINE", L"CIRCLE", L"ARC", L"POINT", L"TEXT", L"MTEXT", L"LWPOLYLINE", L"POLYLINE",
                                 L"VERTEX", L"SEQEND", L"INSERT", L"ATTRIB", L"ATTDEF", L"BLOCK", L"ENDBLK",
                                 L"ELLIPSE", L"SPLINE", L"DIMENSION", L"SOLID", L"SHAPE", L"LAYER", L"STYLE",
                                 L"LTYPE", L"DIMSTYLE", L"APPID", L"DICTIONARY", L"XRECORD", L"GROUP", L"HATCH",
                                 L"NOTATYPE", L""};
const int kCodes[] = {1,  2,  3,  5,  6,  7,  8,  10, 11, 12, 13, 38, 39, 40, 41, 42, 43, 44, 48, 50, 51, 62,
                      66, 67, 70, 71, 72, 73, 74, 75, 90, 91, 100, 102, 210, 280, 281, 290, 300, 330, 340, 350, 360, 370, 420};
const wchar_t* const kOperators[] = {L"<AND", L"AND>", L"<OR", L"OR>", L"<XOR", L"XOR>", L"<NOT", L"NOT>",
                                     L"=",    L"!=",   L"<",   L">",   L"<=",   L">=",   L"&",    L"&=",
                                     L"*",    L"/=",   L">,<,*", L"=,=,=", L"bogus"};

template <class T, size_t N>
const T& Pick(FuzzedDataProvider& in, const T (&items)[N]) {
  return items[in.ConsumeIntegralInRange<size_t>(0, N - 1)];
}

double Real(FuzzedDataProvider& in) {
  switch (in.ConsumeIntegralInRange(0, 11)) {
    case 0: return std::numeric_limits<double>::infinity();
    case 1: return std::nan("");
    case 2: return 1e-320;
    case 3: return -4.9e-324;
    case 4: return std::numeric_limits<double>::max();
    case 5: return -std::numeric_limits<double>::max();
    case 6: return std::numeric_limits<double>::min();
    case 7: return in.ConsumeFloatingPoint<double>();
    default: return in.ConsumeFloatingPointInRange<double>(-100.0, 100.0);
  }
}

std::wstring Text(FuzzedDataProvider& in) {
  static const wchar_t kAlphabet[] = L"aZ0 *?,.#@~[]-_{}`\\\"^门";
  std::wstring text;
  if (in.ConsumeIntegralInRange(0, 60) == 0) return std::wstring(in.ConsumeIntegralInRange<size_t>(256, 70000), L'x');
  const size_t n = in.ConsumeIntegralInRange<size_t>(0, 12);
  for (size_t i = 0; i < n; ++i) text += Pick(in, kAlphabet);
  return text;
}

// One group with a value of its code's kind.
void Group(FuzzedDataProvider& in, ChainBuilder& chain, int code, ads_name last) {
  switch (kelhost::ResbufKind(code)) {
    case kelhost::RbKind::kReal: chain.add(code)->resval.rreal = Real(in); break;
    case kelhost::RbKind::kPoint: {
      resbuf* rb = chain.add(code);
      for (double& v : rb->resval.rpoint) v = Real(in);
      break;
    }
    case kelhost::RbKind::kShort: chain.add(code)->resval.rint = in.ConsumeIntegral<short>(); break;
    case kelhost::RbKind::kLong: chain.add(code)->resval.rlong = in.ConsumeIntegral<std::int32_t>(); break;
    case kelhost::RbKind::kInt64: chain.add(code)->resval.mnInt64 = in.ConsumeIntegral<std::int64_t>(); break;
    case kelhost::RbKind::kString: chain.addText(code, Text(in)); break;
    case kelhost::RbKind::kName: {
      resbuf* rb = chain.add(code);
      rb->resval.rlname[0] = in.ConsumeBool() ? last[0] : in.ConsumeIntegral<std::int64_t>();
      rb->resval.rlname[1] = last[1];
      break;
    }
    default: chain.add(RTNONE); break;
  }
}

void XData(FuzzedDataProvider& in, ChainBuilder& chain) {
  chain.add(-3);
  chain.addText(1001, in.ConsumeBool() ? L"KELAPP" : Text(in));
  const int groups = in.ConsumeIntegralInRange(0, 8);
  for (int i = 0; i < groups; ++i) {
    static const int kXCodes[] = {1000, 1002, 1002, 1003, 1005, 1010, 1011, 1040, 1041, 1070, 1071, 1001};
    const int code = Pick(in, kXCodes);
    if (code == 1002) chain.addText(code, in.ConsumeBool() ? L"{" : L"}");
    else if (code == 1001) chain.addText(code, L"KELAPP");
    else Group(in, chain, code, nullptr);
  }
}

void EntityList(FuzzedDataProvider& in, ChainBuilder& chain, ads_name last) {
  chain.addText(0, Pick(in, kTypes));
  const int groups = in.ConsumeIntegralInRange(0, 14);
  for (int i = 0; i < groups; ++i) Group(in, chain, Pick(in, kCodes), last);
  if (in.ConsumeIntegralInRange(0, 4) == 0) XData(in, chain);
}

void Filter(FuzzedDataProvider& in, ChainBuilder& chain, ads_name last) {
  const int items = in.ConsumeIntegralInRange(0, 16);
  for (int i = 0; i < items; ++i) {
    switch (in.ConsumeIntegralInRange(0, 5)) {
      case 0:
      case 1: chain.addText(-4, Pick(in, kOperators)); break;
      case 2: {  // deep grouping, balanced or not
        const wchar_t* open = Pick(in, kOperators);
        const int depth = in.ConsumeIntegralInRange(1, 3000);
        for (int k = 0; k < depth; ++k) chain.addText(-4, open);
        Group(in, chain, Pick(in, kCodes), last);
        const wchar_t* close = in.ConsumeBool() ? Pick(in, kOperators) : open;
        for (int k = 0; k < depth; ++k) chain.addText(-4, close);
        break;
      }
      case 3: XData(in, chain); break;
      default: Group(in, chain, in.ConsumeBool() ? 0 : Pick(in, kCodes), last); break;
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
  PreferPlainScheduling(argc, argv);
  if (!mkdtemp(gDir) || chdir(gDir) != 0) std::abort();
  std::atexit(RemoveDir);
  setenv("ACAD", gDir, 1);
  kelhost::Host::instance().setCommandLineSink([](const std::wstring&) {});
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 4096) return 0;
  FuzzedDataProvider in(data, size);
  auto db = std::make_unique<AcDbDatabase>();
  acdbHostApplicationServices()->setWorkingDatabase(db.get());
  kelhost::sysvars::ResetSession();
  kelhost::Host::instance().lisp().evalOne(
      L"(progn (regapp \"KELAPP\") (entmake '((0 . \"CIRCLE\") (10 1.0 2.0 0.0) (40 . 3.0))))");
  const int open = kelhost::db::OpenObjectCount();
  ads_name last = {0, 0};
  acdbEntLast(last);
  for (int call = 0; call < 12 && in.remaining_bytes() > 0; ++call) {
    ChainBuilder chain;
    switch (in.ConsumeIntegralInRange(0, 3)) {
      case 0:
        EntityList(in, chain, last);
        acdbEntMake(chain.head());
        break;
      case 1: {
        EntityList(in, chain, last);
        ads_name made;
        if (acdbEntMakeX(chain.head(), made) == RTNORM) acdbEntLast(last);
        break;
      }
      case 2: {  // the last entity's own list, groups changed and added
        resbuf* list = acdbEntGet(last);
        for (resbuf* rb = list; rb && rb->restype != -3; rb = rb->rbnext) {
          if (rb->restype == -1 || !in.ConsumeBool()) continue;
          ChainBuilder one;
          Group(in, one, rb->restype, last);
          const kelhost::RbKind kind = kelhost::ResbufKind(rb->restype);
          if (kind == kelhost::RbKind::kReal || kind == kelhost::RbKind::kPoint || kind == kelhost::RbKind::kShort ||
              kind == kelhost::RbKind::kLong || kind == kelhost::RbKind::kInt64)
            rb->resval = one.head()->resval;
        }
        ChainBuilder extra;
        EntityList(in, extra, last);
        resbuf* tail = list;
        while (tail && tail->rbnext) tail = tail->rbnext;
        if (tail) {
          tail->rbnext = extra.head()->rbnext;  // without the 0 group
          extra.head()->rbnext = nullptr;
        }
        acdbEntMod(list);
        acutRelRb(list);
        break;
      }
      default: {
        Filter(in, chain, last);
        ads_name set;
        if (acedSSGet(L"X", nullptr, nullptr, chain.head(), set) == RTNORM) acedSSFree(set);
        break;
      }
    }
    if (kelhost::db::OpenObjectCount() != open) std::abort();
  }
  // What was made saves, and the text opens again (as a file would, with
  // neither the disk nor its syncing in the way).
  kelhost::dxf::CompleteForFile(db.get());
  std::string text;
  std::wstring error;
  if (!kelhost::dxf::WriteDxf(db.get(), text, error)) {
    std::fprintf(stderr, "save failed: %s\n", kelhost::ToUtf8(error).c_str());
    std::abort();
  }
  auto reopened = std::make_unique<AcDbDatabase>(false, true);
  if (!kelhost::dxf::ReadDxf(text, reopened.get(), error)) {
    std::fprintf(stderr, "reopening failed: %s\n", kelhost::ToUtf8(error).c_str());
    std::abort();
  }
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  return 0;
}
