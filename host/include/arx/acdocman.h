// Documents: the document manager and the open drawing's document. The
// headless host has one document, always current and active.
#pragma once

#include "acadstrc.h"
#include "acrx.h"

class AcDbDatabase;

class AcApDocument : public AcRxObject {
 public:
  // The drawing the document edits (whichever database is the working one).
  virtual AcDbDatabase* database() const = 0;
  // The drawing's file name with its directory ("Drawing1.dwg" for a new
  // drawing, as DWGPREFIX and DWGNAME give it).
  virtual const ACHAR* fileName() const = 0;
};

class AcApDocManager : public AcRxObject {
 public:
  virtual AcApDocument* curDocument() const = 0;
  virtual AcApDocument* mdiActiveDocument() const = 0;
  virtual int documentCount() const = 0;
  // Queues pszExecute as if typed on the target document's command line:
  // it runs once the current AutoLISP call or command returns to the
  // "Command:" prompt. A space or line end in it is Enter. bEchoString
  // false keeps what it answers off the command line. eInvalidInput for a
  // null string or a document that is not open; the activation flags have
  // nothing to do with a single document.
  virtual Acad::ErrorStatus sendStringToExecute(AcApDocument* pAcTargetDocument, const ACHAR* pszExecute,
                                                bool bActivate = true, bool bWrapUpInactiveDoc = false,
                                                bool bEchoString = true) = 0;
};

AcApDocManager* acDocManagerPtr();
#define acDocManager acDocManagerPtr()
