#include "app/arx_loading.h"

#include <cstdio>

#include "app/app_state.h"
#include "app/module_loader.h"
#include "app/support_path.h"
#include "arx/acedads.h"
#include "arx/acutads.h"
#include "kelhost/host.h"
#include "kelhost/paths.h"
#include "kelhost/text.h"

namespace kelhost::app {
namespace {

std::wstring BaseName(const std::wstring& name) {
  const size_t sep = name.find_last_of(L"/\\");
  return sep == std::wstring::npos ? name : name.substr(sep + 1);
}

bool HasExtension(const std::wstring& name) { return BaseName(name).find(L'.') != std::wstring::npos; }

bool EndsWithArx(const std::wstring& name) {
  return name.size() >= 4 && EqualNoCase(name.substr(name.size() - 4), L".arx");
}

bool Refused(const std::wstring& why) {
  std::fprintf(stderr, "kelcad: %s\n", ToUtf8(why).c_str());
  return false;
}

}  // namespace

std::wstring ArxFileName(const std::wstring& name) {
  const std::wstring base = BaseName(name);
  return HasExtension(base) ? base : base + L".arx";
}

std::optional<std::wstring> FindArxFile(const std::wstring& name) {
  if (name.empty()) return std::nullopt;
  if (EndsWithArx(name)) return FindSupportFile(name);
  if (HasExtension(name))
    if (auto found = FindSupportFile(name)) return found;
  return FindSupportFile(name + L".arx");
}

bool IsArxLoaded(const std::wstring& name) { return FindModuleByName(ArxFileName(name)) != nullptr; }

bool LoadArx(const std::wstring& name) {
  if (IsArxLoaded(name)) return Refused(ArxFileName(name) + L" is already loaded");
  const std::optional<std::wstring> file = FindArxFile(name);
  if (!file) return Refused(L"cannot find " + ArxFileName(name) + L" (" + name + L")");
  std::wstring why;
  return Host::instance().loadModule(NativePath(*file), &why) || Refused(why);
}

bool UnloadArx(const std::wstring& name) {
  LoadedModule* module = FindModuleByName(ArxFileName(name));
  // Its code is running: unloading it now would pull that code away.
  if (module && module->messaging > 0) return Refused(module->fileName + L" is busy and cannot be unloaded");
  std::wstring why;
  return UnloadModule(ToUtf8(ArxFileName(name)), false, &why) || Refused(why);
}

}  // namespace kelhost::app

resbuf* acedArxLoaded() {
  try {
    resbuf* head = nullptr;
    resbuf** tail = &head;
    for (auto& m : kelhost::app::Modules()) {
      resbuf* rb = acutNewRb(RTSTR);
      if (!rb) break;
      acutNewString(m->fileName.c_str(), rb->resval.rstring);
      *tail = rb;
      tail = &rb->rbnext;
    }
    return head;
  } catch (...) {
    return nullptr;
  }
}

int acedArxLoad(const ACHAR* app) {
  if (!app || !*app) return RTERROR;
  try {
    return kelhost::app::LoadArx(app) ? RTNORM : RTERROR;
  } catch (...) {
    return RTERROR;
  }
}

int acedArxUnload(const ACHAR* app) {
  if (!app || !*app) return RTERROR;
  try {
    return kelhost::app::UnloadArx(app) ? RTNORM : RTERROR;
  } catch (...) {
    return RTERROR;
  }
}
