// What programs draw straight onto the screen (grdraw, grvecs, grtext):
// temporary graphics that the next redraw of the view takes away. The
// headless host has no screen; it keeps them so that they can be looked
// at, as a person would look at the screen.
#pragma once

#include <string>
#include <vector>

namespace kelhost::ads {

struct TemporaryVector {
  double from[3];
  double to[3];
  int color;       // ACI; -1 draws by complementing what it crosses
  bool highlight;  // drawn dashed
};

void AddTemporaryVector(const TemporaryVector& v);
const std::vector<TemporaryVector>& TemporaryVectors();
// A redraw of the whole view.
void ClearTemporaryGraphics();

// grtext's areas: box -1 the status line, -2 the coordinates, 0 and up
// the screen menu's boxes.
void SetScreenText(int box, const std::wstring& text);
std::wstring ScreenText(int box);

}  // namespace kelhost::ads
