#include "options.h"

#include <cstring>

namespace kelcad_console {

const char* Usage() {
  return "usage: kelcad [--drawing FILE.dxf] [--eval EXPR]... [SCRIPT.lsp]... [--script FILE.scr]...\n"
         "              [--input ANSWERS] [--save FILE.dxf] [--arx MODULE]... [--module KELCAD.arx]\n"
         "              [--plot FILE.pdf|.svg|.png [PLOT OPTIONS]]\n"
         "  --eval EXPR      evaluate an AutoLISP expression and echo its value\n"
         "  SCRIPT.lsp       load an AutoLISP file (values are not echoed)\n"
         "  --script FILE    run a command script (.scr) as the SCRIPT command does\n"
         "  --drawing FILE   open a drawing instead of the embedded default drawing\n"
         "  --save FILE      write the drawing as DXF when done\n"
         "  --input ANSWERS  the user's answers to prompts, one per line (default: standard input)\n"
         "  --arx MODULE     load a further module after KELCAD.arx\n"
         "  --module PATH    the KELCAD module to load (default: the installed one)\n"
         "  --plot FILE      plot the drawing when done, to PDF, SVG or PNG by the file's name\n"
         "  --plot-layout NAME         Model (the default) or a paper space layout\n"
         "  --plot-area AREA           extents, display, limits, layout, view:NAME or\n"
         "                             window:X1,Y1,X2,Y2 (default: extents; layout for a layout)\n"
         "  --plot-scale SCALE         fit, or plotted mm = drawing units as 1:100, 2=1 or 0.5\n"
         "                             (default: fit; 1:1 for a layout)\n"
         "  --plot-paper PAPER         A0 to A4 or WIDTHxHEIGHT in mm (default: A4)\n"
         "  --plot-orientation WAY     landscape (the default) or portrait\n"
         "  --plot-dpi N               dots per inch of a PNG, 10 to 2400 (default: 150)\n"
         "  --plot-margin MM           unprinted border on each side (default: 5)\n"
         "  --plot-style TABLE         monochrome.ctb plots black; acad.ctb (the default) in colour\n"
         "Without expressions or scripts, the Command: prompt reads standard input (with a\n"
         "terminal, interactively): command names, AutoLISP expressions and !symbol.\n";
}

bool ParseOptions(int argc, char** argv, Options& o, std::string& error) {
  for (int i = 1; i < argc; ++i) {
    const char* a = argv[i];
    // A file option's empty value names no file: refused as a missing one.
    auto value = [&](std::string& out, bool file = true) {
      if (i + 1 >= argc || (file && argv[i + 1][0] == '\0')) {
        error = std::string(a) + " needs a value";
        return false;
      }
      out = argv[++i];
      return true;
    };
    std::string v;
    if (!std::strcmp(a, "--help") || !std::strcmp(a, "-h")) {
      o.help = true;
    } else if (!std::strcmp(a, "--version")) {
      o.version = true;
    } else if (!std::strcmp(a, "--eval") || !std::strcmp(a, "-e")) {
      if (!value(v, false)) return false;
      o.steps.push_back({Step::kEval, v});
    } else if (!std::strcmp(a, "--script")) {
      if (!value(v)) return false;
      o.steps.push_back({Step::kCommandScript, v});
    } else if (!std::strcmp(a, "--drawing")) {
      if (!value(o.drawing)) return false;
    } else if (!std::strcmp(a, "--save")) {
      if (!value(o.save)) return false;
    } else if (!std::strcmp(a, "--input")) {
      if (!value(o.input)) return false;
    } else if (!std::strcmp(a, "--arx")) {
      if (!value(v)) return false;
      o.arx.push_back(v);
    } else if (!std::strcmp(a, "--module")) {
      if (!value(o.module)) return false;
    } else if (!std::strcmp(a, "--plot")) {
      if (!value(o.plot)) return false;
    } else if (!std::strncmp(a, "--plot-", 7)) {
      const std::string name = a + 7;
      std::string* field = name == "layout"        ? &o.plotLayout
                           : name == "area"        ? &o.plotArea
                           : name == "scale"       ? &o.plotScale
                           : name == "paper"       ? &o.plotPaper
                           : name == "orientation" ? &o.plotOrientation
                           : name == "dpi"         ? &o.plotDpi
                           : name == "margin"      ? &o.plotMargin
                           : name == "style"       ? &o.plotStyle
                                                   : nullptr;
      if (!field) {
        error = std::string("unknown option ") + a;
        return false;
      }
      if (!value(*field, false)) return false;
    } else if (a[0] == '-' && a[1] != '\0') {
      error = std::string("unknown option ") + a;
      return false;
    } else {
      o.steps.push_back({Step::kLisp, a});
    }
  }
  return true;
}

}  // namespace kelcad_console
