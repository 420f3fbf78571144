// The program's windows as applications reach them: the main frame and the
// current document's drawing window. Characters sent to either as WM_CHAR
// are typed on the command line: Escape (27) cancels what is pending, 13
// is Enter, any other character is typed as it is.
#pragma once

#include "afx.h"

// The main window (the same window as AfxGetMainWnd).
CMDIFrameWnd* acedGetAcadFrame();
HWND adsw_acadMainWnd();
// The current document's window.
HWND adsw_acadDocWnd();
