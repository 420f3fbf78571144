// The answers of a command call given as a result-buffer chain (acedCmdS,
// acedCommandS, AutoLISP's command after its arguments were converted).
#pragma once

#include <vector>

#include "arx/adsdef.h"
#include "editor/requests.h"

namespace kelhost::editor {

// RTSTR is text ("" Enter, "\\" a pause for the user), RTNONE Enter,
// RTREAL and RTANG a number, RTSHORT and RTLONG an integer, RTPOINT and
// RT3DPOINT a point, RTENAME an entity, RTPICKS a selection set, and
// RTLB RTENAME point RTLE an entity with its pick point; RTNIL, RTT and
// RTVOID are skipped. False for anything else.
bool TokensFromChain(const resbuf* chain, std::vector<Token>& tokens);
// One value (as AutoLISP gives it when an answer is an expression).
bool TokenFromChain(const resbuf* chain, Token& token);

}  // namespace kelhost::editor
