// kelcad: the headless CAD console. Starts the host with the embedded
// default drawing, loads KELCAD.arx, then runs expressions and scripts in
// order, or an interactive prompt.
#include <unistd.h>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "arx/dbapserv.h"
#include "console.h"
#include "kelhost/drawing_files.h"
#include "kelhost/host.h"
#include "kelhost/text.h"
#include "options.h"
#include "plot_options.h"

namespace {

std::string ExecutableDir() {
  char buf[PATH_MAX];
  ssize_t n = readlink("/proc/self/exe", buf, sizeof buf - 1);
  if (n <= 0) return ".";
  std::string path(buf, static_cast<size_t>(n));
  return path.substr(0, path.find_last_of('/'));
}

bool Exists(const std::string& path) { return access(path.c_str(), R_OK) == 0; }

// --module, then $KELCAD_ARX, then the installed module, then the one of
// the build tree this console was built with.
std::string FindModule(const kelcad_console::Options& o) {
  if (!o.module.empty()) return o.module;
  if (const char* env = std::getenv("KELCAD_ARX")) return env;
  std::string installed = ExecutableDir() + "/" KELCAD_MODULE_INSTALL_RELPATH;
  if (Exists(installed)) return installed;
  return KELCAD_MODULE_BUILD_PATH;
}

int Fatal(const std::string& text) {
  std::fprintf(stderr, "kelcad: %s\n", text.c_str());
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  kelcad_console::Options options;
  std::string error;
  if (!kelcad_console::ParseOptions(argc, argv, options, error)) {
    std::fprintf(stderr, "kelcad: %s\n%s", error.c_str(), kelcad_console::Usage());
    return 2;
  }
  if (options.help) {
    std::fputs(kelcad_console::Usage(), stdout);
    return 0;
  }
  if (options.version) {
    std::puts("kelcad " KELCAD_VERSION);
    return 0;
  }
  // Plot settings are checked before anything runs.
  kelhost::plot::Settings plotSettings;
  if (!options.plot.empty() && !kelcad_console::PlotSettingsOf(options, plotSettings, error)) {
    std::fprintf(stderr, "kelcad: %s\n", error.c_str());
    return 2;
  }
  kelhost::Host& host = kelhost::Host::instance();
  std::wstring why;
  // The drawing is open before anything runs; one that cannot be read
  // stops the console with nothing run.
  if (!options.drawing.empty() &&
      !kelhost::ReadDrawingFile(acdbHostApplicationServices()->workingDatabase(),
                                kelhost::FromUtf8(options.drawing), why))
    return Fatal(kelhost::ToUtf8(why));
  if (!host.loadModule(FindModule(options), &why)) return Fatal(kelhost::ToUtf8(why));
  for (const std::string& extra : options.arx)
    if (!host.loadModule(extra, &why)) {
      host.unloadAll();
      return Fatal(kelhost::ToUtf8(why));
    }

  kelcad_console::Console console;
  if (!options.input.empty()) {
    if (!console.useAnswerFile(options.input)) {
      host.unloadAll();
      return Fatal("cannot read the answers file " + options.input);
    }
  } else {
    console.useStandardInput();
  }
  for (const auto& step : options.steps) {
    switch (step.kind) {
      case kelcad_console::Step::kEval: console.evalExpressions(step.text); break;
      case kelcad_console::Step::kLisp: console.loadLisp(step.text); break;
      case kelcad_console::Step::kCommandScript: console.runCommandScript(step.text); break;
    }
  }
  if (options.steps.empty()) console.commandPrompt();
  bool saved = true;
  if (!options.save.empty())
    saved = kelhost::WriteDrawingFile(acdbHostApplicationServices()->workingDatabase(),
                                      kelhost::FromUtf8(options.save), why);
  std::wstring plotError;
  const bool plotted =
      options.plot.empty() || kelhost::plot::PlotDrawing(acdbHostApplicationServices()->workingDatabase(),
                                                         plotSettings, kelhost::FromUtf8(options.plot), plotError);
  host.unloadAll();
  if (!host.atLineStart()) host.writeCommandLine(L"\n");
  std::fflush(stdout);
  if (!saved) return Fatal(kelhost::ToUtf8(why));
  if (!plotted) return Fatal(kelhost::ToUtf8(plotError));
  // An AutoLISP error, input that ended inside a command, or an object
  // some call left open fails the run.
  return console.failed() || host.disciplineViolations() > 0 ? 1 : 0;
}
