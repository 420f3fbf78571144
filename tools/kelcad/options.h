// Command-line options of the console.
#pragma once

#include <string>
#include <vector>

namespace kelcad_console {

struct Step {
  enum Kind { kEval, kLisp, kCommandScript } kind;
  std::string text;  // the expression, or the file's path
};

struct Options {
  std::string drawing;           // --drawing FILE.dxf
  std::string save;              // --save FILE.dxf
  std::string input;             // --input ANSWERS
  std::vector<std::string> arx;  // --arx MODULE: further modules to load
  std::string module;            // --module PATH: the KELCAD module itself
  std::vector<Step> steps;       // --eval and scripts, in order
  // --plot FILE and its settings as given (checked when the plot is made).
  std::string plot, plotLayout, plotArea, plotScale, plotPaper, plotOrientation, plotDpi, plotMargin, plotStyle;
  bool help = false;
  bool version = false;
};

// False with a message when the arguments are not understood.
bool ParseOptions(int argc, char** argv, Options& options, std::string& error);
const char* Usage();

}  // namespace kelcad_console
