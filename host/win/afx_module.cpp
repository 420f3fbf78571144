// The MFC extension-module frame: module state, the CDynLinkLibrary chain
// (which AfxTermExtensionModule deletes, as MFC does), the resource handle
// and the UI library's start-up.
#include <algorithm>
#include <vector>

#include "arx/afx.h"
#include "kelhost/ui.h"

namespace {
std::vector<CDynLinkLibrary*>& Libraries() {
  static std::vector<CDynLinkLibrary*> libraries;
  return libraries;
}

// Stands for the host program's own resources until a module sets its own.
char gHostInstance;
HINSTANCE gResourceHandle = &gHostInstance;
int gInitAcUiCalls = 0;
bool gControlContainer = false;
}  // namespace

BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HMODULE module) {
  if (state.bInitialized) return TRUE;  // MFC allows the call once per load
  state.hModule = module;
  state.hResource = module;
  state.bInitialized = true;
  return TRUE;
}

// Deletes the CDynLinkLibrary objects made for this module (or all with
// all=TRUE): modules create them with new and never delete them.
void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL all) {
  std::vector<CDynLinkLibrary*> doomed;
  for (CDynLinkLibrary* lib : Libraries())
    if (all || lib->moduleState() == &state) doomed.push_back(lib);
  for (CDynLinkLibrary* lib : doomed) delete lib;
  state.bInitialized = false;
}

CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE& state, BOOL) : mState(&state) {
  Libraries().push_back(this);
}

CDynLinkLibrary::~CDynLinkLibrary() {
  auto& libs = Libraries();
  libs.erase(std::remove(libs.begin(), libs.end(), this), libs.end());
}

int CDynLinkLibrary::liveCount() { return static_cast<int>(Libraries().size()); }

void AfxEnableControlContainer() { gControlContainer = true; }

HINSTANCE AfxGetResourceHandle() { return gResourceHandle; }
void AfxSetResourceHandle(HINSTANCE h) { gResourceHandle = h; }

void InitAcUiDLL() { ++gInitAcUiCalls; }

namespace kelhost {
int InitAcUiDLLCallCount() { return gInitAcUiCalls; }
bool ControlContainerEnabled() { return gControlContainer; }
}  // namespace kelhost
