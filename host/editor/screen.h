// The headless screen: a drawing area of a fixed size in pixels, set by
// the environment variable KELCAD_SCREENSIZE=WIDTHxHEIGHT (each 1 to
// 32767; "1600x900"), 1920x1080 when unset or not of that form. SCREENSIZE
// reports it; the view's width is its height times the screen's aspect
// ratio; MSLIDE draws on it.
#pragma once

namespace kelhost::editor {

struct ScreenSize {
  int width = 1920;
  int height = 1080;
};

// Read from the environment each time (a bad value is reported once on
// standard error).
ScreenSize Screen();
// Width over height.
double ScreenAspect();

}  // namespace kelhost::editor
