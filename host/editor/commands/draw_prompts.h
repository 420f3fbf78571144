// Prompt pieces the drawing commands share: defaults shown the way the
// platform shows them ("<2.5000>" in the current units), directions and
// included angles.
#pragma once

#include <string>

#include "editor/command_context.h"

namespace kelhost::editor {

// A distance or an angle (radians) in the current units, as a default is shown.
std::wstring DistanceText(double value);
std::wstring AngleText(double radians);
// " <value>" for a prompt's default.
std::wstring Default(const std::wstring& text);

// A direction: typed in the current angle units (from ANGBASE, in the
// ANGDIR sense) or pointed at from base; the answer's real is the angle
// from the UCS X axis, anticlockwise.
Answer AskDirection(CommandContext& c, const std::wstring& prompt, const double* base,
                    const std::wstring& keywords = L"", int flags = 0);
// An included angle: its sign says which way it turns (positive in the
// ANGDIR sense), typed in the current angle units or pointed at from base
// (the direction of the point, from the UCS X axis). Asks again until it
// gets one.
double AskIncludedAngle(CommandContext& c, const std::wstring& prompt, const double* base);

}  // namespace kelhost::editor
