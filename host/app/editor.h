// The editor: reactors added by applications hear of commands.
#pragma once

#include <string>

#include "arx/aced_editor.h"

namespace kelhost::app {
AcEditor& Editor();
void NotifyCommandWillStart(const std::wstring& globalName);
void NotifyCommandEnded(const std::wstring& globalName);
void NotifyCommandCancelled(const std::wstring& globalName);
void NotifyCommandFailed(const std::wstring& globalName);
}  // namespace kelhost::app
