// Typing on the CAD program's command line, and bringing its display up to
// date.
#pragma once

namespace KEL {

// Sends Escape twice to the document window, which cancels whatever
// waits on the command line. False when there is no document window.
bool ClearAcadCmdLine();
// Types text into the document window character by character, then Enter
// when enter is true. False when there is no document window.
bool SendMsgToAcad(const wchar_t* text, bool enter);
// Queues text to the current document (activating it, echoing the text):
// it runs once the current AutoLISP call or command returns. With enter
// an Enter is typed after it.
void SendStringToExecute(const wchar_t* text, bool enter);
// Asks the display to show the drawing's latest changes. False when there
// is no current drawing (the one given to SetCurDWGPtr, else the working
// database).
bool FlushAcadGraphicsQueue();

}  // namespace KEL
