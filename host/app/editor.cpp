#include "app/editor.h"

#include <algorithm>
#include <vector>

namespace kelhost::app {
namespace {

class HostEditor : public AcEditor {
 public:
  void addReactor(AcEditorReactor* reactor) override {
    if (reactor && std::find(mReactors.begin(), mReactors.end(), reactor) == mReactors.end())
      mReactors.push_back(reactor);
  }
  void removeReactor(AcEditorReactor* reactor) override {
    mReactors.erase(std::remove(mReactors.begin(), mReactors.end(), reactor), mReactors.end());
  }
  // A reactor may remove itself while notified: walk a copy.
  template <class F>
  void each(F f) {
    std::vector<AcEditorReactor*> copy = mReactors;
    for (auto* r : copy)
      if (std::find(mReactors.begin(), mReactors.end(), r) != mReactors.end()) f(r);
  }

 private:
  std::vector<AcEditorReactor*> mReactors;
};

HostEditor& TheEditor() {
  static HostEditor editor;
  return editor;
}

}  // namespace

AcEditor& Editor() { return TheEditor(); }

void NotifyCommandWillStart(const std::wstring& name) {
  TheEditor().each([&](AcEditorReactor* r) { r->commandWillStart(name.c_str()); });
}
void NotifyCommandEnded(const std::wstring& name) {
  TheEditor().each([&](AcEditorReactor* r) { r->commandEnded(name.c_str()); });
}
void NotifyCommandCancelled(const std::wstring& name) {
  TheEditor().each([&](AcEditorReactor* r) { r->commandCancelled(name.c_str()); });
}

void NotifyCommandFailed(const std::wstring& name) {
  TheEditor().each([&](AcEditorReactor* r) { r->commandFailed(name.c_str()); });
}

}  // namespace kelhost::app
