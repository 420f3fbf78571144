// Feeds arbitrary bytes, as a command script, to the editor on a fresh
// drawing: commands with wrong, missing and cancelled answers, AutoLISP
// at the prompt and as answers, transparent commands. It must never crash,
// hang, leak or leave an object open. Files are fenced off: the fuzzer
// works in a directory of its own, and AutoLISP may not reach files.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "arx/arxheaders.h"
#include "db/stub.h"
#include "editor/command_processor.h"
#include "editor/input_sources.h"
#include "editor/user_input.h"
#include "kelhost/editor.h"
#include "kelhost/host.h"
#include "kelhost/lisp.h"
#include "kelhost/sysvars.h"
#include "kelhost/text.h"

namespace {
char gDir[] = "/tmp/kelcad_script_fuzz_XXXXXX";
void RemoveDir() { std::filesystem::remove_all(gDir); }
}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  if (!mkdtemp(gDir) || chdir(gDir) != 0) std::abort();
  std::atexit(RemoveDir);
  setenv("ACAD", gDir, 1);
  kelhost::Host::instance().setCommandLineSink([](const std::wstring&) {});
  kelhost::lisp::Options options;
  options.allowFiles = false;
  options.allowSetenv = false;
  options.maxSteps = 100000;
  kelhost::Host::instance().lisp().setOptions(options);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 4096) return 0;  // long scripts only repeat what short ones do
  auto db = std::make_unique<AcDbDatabase>();
  acdbHostApplicationServices()->setWorkingDatabase(db.get());
  kelhost::sysvars::ResetSession();
  kelhost::editor::ResetInputState();
  kelhost::editor::SetInputFile(nullptr, false);
  const int open = kelhost::db::OpenObjectCount();
  const std::wstring text = kelhost::FromUtf8(std::string(reinterpret_cast<const char*>(data), size));
  kelhost::editor::PushScript(std::make_unique<kelhost::editor::ScriptSource>(text));
  kelhost::editor::RunCommandLoop();
  kelhost::editor::CancelWaitingCommands();
  if (!kelhost::editor::ActiveCommands().empty() || kelhost::db::OpenObjectCount() != open) std::abort();
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  return 0;
}
