// The fifteen justifications of single-line text and where each puts the
// text. A text entity keeps two points: its position (the left end of
// the baseline) and its alignment point (the point the user gave, for any
// justification but Left; the second baseline end for Align and Fit). The
// position follows from the alignment point and the text's extent, which
// the host estimates as its text layout does (no fonts here); the bottom
// of text lies a third of the height below the baseline, as with the
// platform's txt font.
#pragma once

#include <string>
#include <vector>

#include "arx/acge.h"
#include "arx/dbmain.h"

namespace kelhost::editor {

struct Justification {
  const wchar_t* keyword;  // "Left", "Center", ..., "TL", ..., "BR"
  AcDb::TextHorzMode horz;
  AcDb::TextVertMode vert;
  const wchar_t* pointPrompt;  // "\nSpecify center point of text"
};

const std::vector<Justification>& Justifications();
// By keyword (as the keyword list returns it); null for none.
const Justification* FindJustification(const std::wstring& keyword);
const Justification& LeftJustification();
// Align and Fit take the two ends of the baseline.
bool TakesBaseline(const Justification& j);
// "Left Center Right Align Middle Fit TL TC TR ML MC MR BL BC BR".
std::wstring JustificationKeywords();

// The position (left end of the baseline) of text aligned at a point.
AcGePoint2d TextPosition(const Justification& j, const AcGePoint2d& alignment, const std::wstring& text, double height,
                         double widthFactor, double rotation);
// The length of the text's baseline at that height and width factor.
double TextLength(const std::wstring& text, double height, double widthFactor);

}  // namespace kelhost::editor
