// Reading an answer as what a prompt asks for: points typed as x,y[,z],
// @dx,dy, @d<angle or d<angle; numbers and angles in the drawing's units;
// keywords; and the initget conditions, with the platform's message when
// an answer is refused.
#pragma once

#include <string>

#include "editor/requests.h"

namespace kelhost::editor {

enum class Resolution {
  kDone,               // answer is complete
  kRefused,            // message says why; the prompt is asked again
  kNeedsSecondPoint,   // a distance or angle given by its first point (in answer.point)
};

Resolution Resolve(const Request& request, const Token& token, Answer& answer, std::wstring& message);

// The distance or angle between the first point of a kNeedsSecondPoint
// answer and the second point, as the request wants it; the conditions
// of the request are checked as for a typed value.
Resolution ResolveSecondPoint(const Request& request, const double first[3], const double second[3], Answer& answer,
                              std::wstring& message);

// Typed point text (UCS): x,y[,z]; polar d<a, cylindrical d<a,z and
// spherical d<a<b (angles in the current units, from ANGBASE in the
// ANGDIR sense); "@" before any of them measures from LASTPOINT ("@"
// alone is LASTPOINT), "*" gives world coordinates, "#" insists on
// absolute ones. A 2D point takes the current ELEVATION. False when the
// text is not a point.
bool ParsePoint(const std::wstring& text, double point[3]);

// The prompt's text for the message the platform gives when an answer is
// missing or of the wrong kind.
std::wstring WrongAnswerMessage(const Request& request);

}  // namespace kelhost::editor
