// Commands run by an application: the subroutine forms, whose command
// starts and ends within the call.
#pragma once

#include "adsdef.h"

class AcApDocument;

// Pairs of a result-type code and its value (as acutBuildList takes
// them), ended by 0 or RTNONE: the command name, then its answers. RTSTR
// "" is Enter, RTSTR "\\" lets the user answer that prompt. RTNORM when the
// command ran; RTCAN when it was cancelled (a command the answers did not
// finish included); RTREJ for an unknown command; RTERROR for a bad list.
int acedCommandS(int rtype, ...);
// The same with the answers as a chain (an RTNONE node is Enter as well).
int acedCmdS(const resbuf* rb, bool forFutureUse = false, AcApDocument* pForFutureUse = nullptr);
