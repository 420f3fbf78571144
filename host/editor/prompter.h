// Asking for an answer: the prompt goes to the command line, the answer
// comes from the executing command's call or from the user, and a wrong
// answer is refused with the platform's message and the prompt asked
// again. AutoLISP typed as an answer ("(...)", "!sym") is evaluated, and a
// transparent command ('ZOOM) runs before the prompt is asked again.
#pragma once

#include "editor/requests.h"

namespace kelhost::editor {

// quiet: a command run by a call with CMDECHO 0; its prompt is shown only
// when the user has to answer it.
Answer Ask(const Request& request, bool quiet = false);

// Writes to the command line.
void Say(const std::wstring& text);

}  // namespace kelhost::editor
