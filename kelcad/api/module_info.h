// What the module tells about itself: its version record and the text
// width factor the family's drawings use.
#pragma once

namespace KEL {

// "[revision]-[date]-[author]" from the module's version-control keywords,
// each with its "$Keyword:" label and closing "$" taken off. The text lives
// in a module-owned string.
const wchar_t* GetCADLibVersionNumber();

// The width factor for the family's text: "TextWidthFactor" of section
// "System" in the system settings (KEL::SysINI()); 1.0, the CAD program's
// own default, when it is absent or not above zero.
double GetTextWidthFactor();

}  // namespace KEL
