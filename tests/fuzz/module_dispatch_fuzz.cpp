// Drives the module's dispatcher as AutoLISP would, but with argument
// chains no program could be trusted to avoid: every code of the table
// (and some outside it), every result-buffer type, lists nested deep,
// huge strings, infinities and subnormals, the entity names and the
// selection set of a small drawing, names of erased entities and names
// that mean nothing. After every call nothing may be left open, no
// command may be left waiting, and the result must be a chain the
// interpreter can take.
//
// Files are fenced off: the family's directories and the working
// directory are a private temporary directory, and strings never hold a
// separator, a drive, "..", "%" or "~", so no path leads out of it.
#include <fuzzer/FuzzedDataProvider.h>
#include <unistd.h>

#include <array>
#include <cmath>
#include <cwchar>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "app/app_state.h"
#include "arx/arxheaders.h"
#include "fuzz_flags.h"
#include "db/stub.h"
#include "editor/command_processor.h"
#include "editor/user_input.h"
#include "kelhost/editor.h"
#include "kelhost/host.h"
#include "kelhost/lisp.h"
#include "kelhost/sysvars.h"
#include "lisp/external_calls.h"

namespace {

char gDir[] = "/tmp/kelcad_dispatch_fuzz_XXXXXX";
void RemoveDir() { std::filesystem::remove_all(gDir); }
void UnloadModules() { kelhost::Host::instance().unloadAll(); }
void* gModule = nullptr;

constexpr int kMaxCode = 151;  // 0 and 150, 151 lie outside the table

// Chains are built front to back.
class ChainBuilder {
 public:
  ~ChainBuilder() { acutRelRb(mHead); }
  resbuf* add(short type) {
    resbuf* rb = acutNewRb(type);
    if (!rb) std::abort();
    *mTail = rb;
    mTail = &rb->rbnext;
    return rb;
  }
  void addString(short type, const std::wstring& text) {
    resbuf* rb = add(RTSTR);
    rb->resval.rstring = static_cast<wchar_t*>(std::malloc((text.size() + 1) * sizeof(wchar_t)));
    if (!rb->resval.rstring) std::abort();
    std::wmemcpy(rb->resval.rstring, text.c_str(), text.size() + 1);
    rb->restype = type;
  }
  resbuf* head() const { return mHead; }

 private:
  resbuf* mHead = nullptr;
  resbuf** mTail = &mHead;
};

// The small drawing every input starts from.
struct Drawing {
  std::unique_ptr<AcDbDatabase> db;
  std::vector<std::array<std::int64_t, 2>> names;  // entities, the last one erased
  ads_name set{};
};

void Make(const wchar_t* list, Drawing& d) {
  resbuf* value = nullptr;
  kelhost::Host::instance().lisp().evalToChain(list, &value);
  if (value && value->restype == RTENAME) d.names.push_back({value->resval.rlname[0], value->resval.rlname[1]});
  acutRelRb(value);
}

void NewDrawing(Drawing& d) {
  d.db = std::make_unique<AcDbDatabase>();
  acdbHostApplicationServices()->setWorkingDatabase(d.db.get());
  d.names.clear();
  Make(L"(entmakex '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 10.0 5.0 0.0)))", d);
  Make(L"(entmakex '((0 . \"CIRCLE\") (8 . \"WALLS\") (10 3.0 4.0 0.0) (40 . 2.5)))", d);
  Make(L"(entmakex '((0 . \"ARC\") (10 0.0 0.0 0.0) (40 . 4.0) (50 . 0.5) (51 . 2.5)))", d);
  Make(L"(entmakex '((0 . \"TEXT\") (10 1.0 1.0 0.0) (40 . 2.5) (1 . \"门A\")))", d);
  Make(L"(entmakex '((0 . \"LWPOLYLINE\") (100 . \"AcDbEntity\") (100 . \"AcDbPolyline\") (90 . 3) (70 . 1) "
       L"(10 0.0 0.0) (42 . 0.5) (10 8.0 0.0) (10 8.0 6.0)))",
       d);
  Make(L"(entmakex '((0 . \"POINT\") (10 2.0 2.0 0.0)))", d);
  Make(L"(progn (setq e (entmakex '((0 . \"LINE\") (10 1.0 0.0 0.0) (11 2.0 0.0 0.0)))) (entdel e) e)", d);
  if (acedSSGet(L"X", nullptr, nullptr, nullptr, d.set) != RTNORM) d.set[0] = d.set[1] = 0;
}

double Real(FuzzedDataProvider& in) {
  switch (in.ConsumeIntegralInRange(0, 9)) {
    case 0: return std::numeric_limits<double>::infinity();
    case 1: return -std::numeric_limits<double>::infinity();
    case 2: return std::nan("");
    case 3: return 1e-320;
    case 4: return std::numeric_limits<double>::max();
    case 5: return -0.0;
    case 6: return in.ConsumeFloatingPoint<double>();
    default: return in.ConsumeFloatingPointInRange<double>(-1000.0, 1000.0);
  }
}

// Text that cannot name a path outside the working directory.
std::wstring Text(FuzzedDataProvider& in) {
  static const wchar_t kAlphabet[] = L"abcXYZ019 _-*?,;=[]\"'()\n\t#@&|<>门中文";
  const size_t alphabet = sizeof kAlphabet / sizeof kAlphabet[0] - 1;
  std::wstring text;
  if (in.ConsumeIntegralInRange(0, 40) == 0) {  // huge
    text.assign(in.ConsumeIntegralInRange<size_t>(1000, 300000), kAlphabet[in.ConsumeIntegralInRange<size_t>(0, alphabet - 1)]);
    return text;
  }
  const size_t n = in.ConsumeIntegralInRange<size_t>(0, 24);
  for (size_t i = 0; i < n; ++i) {
    const int pick = in.ConsumeIntegralInRange(0, static_cast<int>(alphabet));
    // A dot only between two other characters: "a.b", never "." or "..".
    if (pick == static_cast<int>(alphabet)) {
      if (!text.empty() && text.back() != L'.') text += L'.';
      continue;
    }
    text += kAlphabet[pick];
  }
  if (!text.empty() && text.back() == L'.') text += L'x';
  return text;
}

void Name(FuzzedDataProvider& in, const Drawing& d, resbuf* rb) {
  const size_t pick = in.ConsumeIntegralInRange<size_t>(0, d.names.size());
  if (pick < d.names.size()) {
    rb->resval.rlname[0] = d.names[pick][0];
    rb->resval.rlname[1] = d.names[pick][1];
  } else {
    rb->resval.rlname[0] = in.ConsumeIntegral<std::int64_t>();
    rb->resval.rlname[1] = in.ConsumeIntegral<std::int64_t>();
  }
}

void Point(FuzzedDataProvider& in, resbuf* rb, bool threeD) {
  rb->resval.rpoint[0] = Real(in);
  rb->resval.rpoint[1] = Real(in);
  rb->resval.rpoint[2] = threeD ? Real(in) : 0.0;
}

void Argument(FuzzedDataProvider& in, const Drawing& d, ChainBuilder& chain, int depth);

// A list as the interpreter hands one over: RTLB, items, RTLE; a dotted
// pair has RTDOTE before its last item.
void List(FuzzedDataProvider& in, const Drawing& d, ChainBuilder& chain, int depth) {
  chain.add(RTLB);
  const int items = in.ConsumeIntegralInRange(0, 4);
  for (int i = 0; i < items; ++i) Argument(in, d, chain, depth + 1);
  if (items > 0 && in.ConsumeBool()) {
    chain.add(RTDOTE);
    Argument(in, d, chain, depth + 1);
  }
  chain.add(RTLE);
}

void Argument(FuzzedDataProvider& in, const Drawing& d, ChainBuilder& chain, int depth) {
  switch (in.ConsumeIntegralInRange(0, 16)) {
    case 0: chain.add(RTSHORT)->resval.rint = in.ConsumeIntegral<short>(); break;
    case 1: chain.add(RTLONG)->resval.rlong = in.ConsumeIntegral<std::int32_t>(); break;
    case 2:
    case 3: chain.add(RTREAL)->resval.rreal = Real(in); break;
    case 4:
    case 5: chain.addString(RTSTR, Text(in)); break;
    case 6: Point(in, chain.add(RTPOINT), false); break;
    case 7: Point(in, chain.add(RT3DPOINT), true); break;
    case 8: Name(in, d, chain.add(RTENAME)); break;
    case 9: {
      resbuf* rb = chain.add(RTPICKS);
      rb->resval.rlname[0] = in.ConsumeBool() ? d.set[0] : in.ConsumeIntegral<std::int64_t>();
      rb->resval.rlname[1] = d.set[1];
      break;
    }
    case 10: chain.add(RTT); break;
    case 11: chain.add(RTNIL); break;
    case 12: chain.add(in.ConsumeBool() ? RTANG : RTORINT)->resval.rreal = Real(in); break;
    case 13:
      if (depth < 8) List(in, d, chain, depth);
      else chain.add(RTNIL);
      break;
    case 14: {  // a list nested far deeper than any program writes
      const int levels = in.ConsumeIntegralInRange(1, 100000);
      for (int i = 0; i < levels; ++i) chain.add(RTLB);
      chain.add(RTSHORT)->resval.rint = 1;
      for (int i = 0; i < levels; ++i) chain.add(RTLE);
      break;
    }
    case 15: {  // a long flat list of points, as polylines pass them
      const int count = in.ConsumeIntegralInRange(0, 3000);
      chain.add(RTLB);
      for (int i = 0; i < count; ++i) Point(in, chain.add(RT3DPOINT), true);
      chain.add(RTLE);
      break;
    }
    default: chain.add(RTVOID); break;
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
  PreferPlainScheduling(argc, argv);
  if (!mkdtemp(gDir) || chdir(gDir) != 0) std::abort();
  std::atexit(RemoveDir);
  const std::string root = gDir;
  for (const char* sub : {"install", "local", "work", "common", "home"}) std::filesystem::create_directories(root + "/" + sub);
  setenv("HOME", (root + "/home").c_str(), 1);
  setenv("XDG_CONFIG_HOME", (root + "/home/.config").c_str(), 1);
  setenv("ACAD", gDir, 1);
  setenv("KEL_INSTALL_DIR", (root + "/install/").c_str(), 1);
  setenv("KEL_LOCAL_DIR", (root + "/local/").c_str(), 1);
  setenv("KEL_WORK_DIR", (root + "/work/").c_str(), 1);
  setenv("KEL_COMMON_DIR", (root + "/common/").c_str(), 1);
  setenv("KEL_INIT_INI", (root + "/install/KelInit.ini").c_str(), 1);
  setenv("KEL_SYS_INI", (root + "/install/KelSys.ini").c_str(), 1);
  setenv("KEL_USER_INI", (root + "/local/KelUser.ini").c_str(), 1);
  setenv("KEL_GC_INI", (root + "/work/Project.ini").c_str(), 1);
  setenv("KEL_REGISTRY_FILE", (root + "/home/registry.ini").c_str(), 1);
  unsetenv("ACADCurrentProfiles");
  unsetenv("SoftwareProfileKey");
  kelhost::Host::instance().setCommandLineSink([](const std::wstring&) {});
  kelhost::lisp::Options options;
  options.allowFiles = false;
  options.allowSetenv = false;
  options.maxSteps = 100000;
  kelhost::Host::instance().lisp().setOptions(options);
  kelhost::editor::SetInputFile(nullptr, false);
  std::wstring error;
  if (!kelhost::Host::instance().loadModule(KELCAD_MODULE_PATH, &error)) std::abort();
  std::atexit(UnloadModules);
  gModule = kelhost::app::FindModuleByName(L"KELCAD.arx");
  if (!gModule) std::abort();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 8192) return 0;
  FuzzedDataProvider in(data, size);
  Drawing d;
  NewDrawing(d);
  kelhost::sysvars::ResetSession();
  kelhost::editor::ResetInputState();
  const int open = kelhost::db::OpenObjectCount();
  const int violations = kelhost::Host::instance().disciplineViolations();
  for (int call = 0; call < 16 && in.remaining_bytes() > 0; ++call) {
    const int code = in.ConsumeIntegralInRange(0, kMaxCode);
    ChainBuilder chain;
    const int count = in.ConsumeIntegralInRange(0, 6);
    for (int i = 0; i < count; ++i) Argument(in, d, chain, 0);
    kelhost::lisp::ExternalResult result =
        kelhost::lispbridge::ModuleCalls().invoke(gModule, code, L"fuzzed", chain.head());
    acutRelRb(result.value);
    kelhost::editor::CancelWaitingCommands();
    if (kelhost::db::OpenObjectCount() != open || kelhost::Host::instance().disciplineViolations() != violations ||
        !kelhost::editor::ActiveCommands().empty())
      std::abort();
  }
  acedSSFree(d.set);
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  return 0;
}
