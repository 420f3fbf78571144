// Headless user interface: message boxes answer at once; tests can read
// what they showed.
#pragma once

#include <string>
#include <vector>

namespace kelhost {
struct ShownMessageBox {
  std::wstring text;
  std::wstring caption;
  unsigned type = 0;
};
// Every message box shown since the last clear, oldest first.
const std::vector<ShownMessageBox>& ShownMessageBoxes();
void ClearShownMessageBoxes();
void RecordMessageBox(const std::wstring& text, const std::wstring& caption, unsigned type);
}  // namespace kelhost
