// The document manager and the one open document.
#include <string>

#include "arx/acdocman.h"
#include "arx/acedads.h"
#include "arx/acutads.h"
#include "db/working.h"
#include "editor/user_input.h"

namespace kelhost::app {
namespace {

std::wstring TextVar(const wchar_t* name) {
  resbuf rb{};
  if (acedGetVar(name, &rb) != RTNORM || rb.restype != RTSTR) return L"";
  std::wstring text = rb.resval.rstring != nullptr ? rb.resval.rstring : L"";
  acad_free(rb.resval.rstring);
  return text;
}

class HostDocument : public AcApDocument {
 public:
  AcDbDatabase* database() const override { return db::DocumentDrawing(); }
  const ACHAR* fileName() const override {
    try {
      mFileName = TextVar(L"DWGPREFIX") + TextVar(L"DWGNAME");
    } catch (...) {
      mFileName.clear();
    }
    return mFileName.c_str();
  }

 private:
  mutable std::wstring mFileName;
};

class HostDocManager : public AcApDocManager {
 public:
  AcApDocument* curDocument() const override { return &mDocument; }
  AcApDocument* mdiActiveDocument() const override { return &mDocument; }
  int documentCount() const override { return 1; }
  Acad::ErrorStatus sendStringToExecute(AcApDocument* target, const ACHAR* text, bool, bool, bool echo) override {
    if (target != &mDocument || text == nullptr) return Acad::eInvalidInput;
    try {
      editor::QueueInput(text, echo, true);
    } catch (...) {
      return Acad::eOutOfMemory;
    }
    return Acad::eOk;
  }

 private:
  mutable HostDocument mDocument;
};

}  // namespace
}  // namespace kelhost::app

AcApDocManager* acDocManagerPtr() {
  static kelhost::app::HostDocManager manager;
  return &manager;
}
