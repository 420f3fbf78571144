#include "app/command_stack.h"

#include <memory>
#include <vector>

#include "kelhost/text.h"

namespace kelhost::app {
namespace {

std::wstring Upper(const ACHAR* s) { return ToUpper(s ? s : L""); }

class Command : public AcEdCommand {
 public:
  Command(std::wstring group, std::wstring global, std::wstring local, Adesk::Int32 flags, AcRxFunctionPtr fn)
      : mGroup(std::move(group)), mGlobal(std::move(global)), mLocal(std::move(local)), mFlags(flags), mFn(fn) {}
  void commandUndef(bool undefIt) override { mUndefined = undefIt; }
  Adesk::Int32 commandFlags() const override { return mFlags; }
  AcRxFunctionPtr functionAddr() const override { return mFn; }
  const ACHAR* globalName() const override { return mGlobal.c_str(); }
  const ACHAR* localName() const override { return mLocal.c_str(); }
  const std::wstring& group() const { return mGroup; }
  bool undefined() const { return mUndefined; }

 private:
  std::wstring mGroup, mGlobal, mLocal;
  Adesk::Int32 mFlags;
  AcRxFunctionPtr mFn;
  bool mUndefined = false;
};

class HostCommandStack : public AcEdCommandStack {
 public:
  Acad::ErrorStatus addCommand(const ACHAR* group, const ACHAR* global, const ACHAR* local,
                               Adesk::Int32 flags, AcRxFunctionPtr fn, AcEdUIContext*, int, void*,
                               AcEdCommand** ret) override {
    if (!group || !global || !*global || !fn) return Acad::eInvalidInput;
    std::wstring g = Upper(group), name = Upper(global);
    for (auto& c : mCommands)
      if (c->group() == g && Upper(c->globalName()) == name) return Acad::eDuplicateKey;
    mCommands.push_back(std::make_unique<Command>(g, name, Upper(local && *local ? local : global), flags, fn));
    if (ret) *ret = mCommands.back().get();
    return Acad::eOk;
  }
  AcEdCommand* lookupGlobalCmd(const ACHAR* name) override { return find(name, true, false); }
  AcEdCommand* lookupLocalCmd(const ACHAR* name) override { return find(name, false, true); }
  AcEdCommand* lookupCmd(const ACHAR* name, bool globalFlag) override {
    return find(name, globalFlag, !globalFlag);
  }
  Acad::ErrorStatus removeCmd(const ACHAR* group, const ACHAR* global) override {
    std::wstring g = Upper(group), name = Upper(global);
    for (auto it = mCommands.begin(); it != mCommands.end(); ++it)
      if ((*it)->group() == g && Upper((*it)->globalName()) == name) {
        mCommands.erase(it);
        return Acad::eOk;
      }
    return Acad::eKeyNotFound;
  }
  Acad::ErrorStatus removeGroup(const ACHAR* group) override {
    std::wstring g = Upper(group);
    size_t before = mCommands.size();
    for (auto it = mCommands.begin(); it != mCommands.end();)
      it = (*it)->group() == g ? mCommands.erase(it) : it + 1;
    return before == mCommands.size() ? Acad::eKeyNotFound : Acad::eOk;
  }

  // Typed names match global names, and local ones unless "_" asked for
  // the global name.
  AcEdCommand* findTyped(const std::wstring& name, bool globalOnly) { return find(name.c_str(), true, !globalOnly); }

 private:
  Command* find(const ACHAR* name, bool global, bool local) {
    std::wstring n = Upper(name);
    for (auto it = mCommands.rbegin(); it != mCommands.rend(); ++it) {
      Command& c = **it;
      if (c.undefined()) continue;
      if ((global && c.globalName() == n) || (local && c.localName() == n)) return &c;
    }
    return nullptr;
  }
  std::vector<std::unique_ptr<Command>> mCommands;
};

HostCommandStack& Stack() {
  static HostCommandStack stack;
  return stack;
}

}  // namespace

AcEdCommandStack& CommandStack() { return Stack(); }

AcEdCommand* FindRegisteredCommand(const std::wstring& upperName, bool globalOnly) {
  return Stack().findTyped(upperName, globalOnly);
}

}  // namespace kelhost::app
