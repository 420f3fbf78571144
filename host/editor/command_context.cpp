#include "editor/command_context.h"

#include <unordered_map>

#include "arx/adsdef.h"
#include "editor/command_processor.h"
#include "editor/prompter.h"
#include "editor/selection.h"

namespace kelhost::editor {
namespace {

// Commands ask with the same few keyword lists over and over: read each
// list once.
const Keywords& KeywordsOf(const std::wstring& list) {
  static std::unordered_map<std::wstring, Keywords> parsed;
  auto it = parsed.find(list);
  if (it == parsed.end()) it = parsed.emplace(list, Keywords(list)).first;
  return it->second;
}

Request Make(Want want, std::wstring prompt, const std::wstring& keywords, int flags, const double* base) {
  Request r;
  r.want = want;
  r.prompt = std::move(prompt);
  if (!keywords.empty()) r.keywords = KeywordsOf(keywords);
  r.flags = flags;
  if (base) {
    r.hasBase = true;
    for (int i = 0; i < 3; ++i) r.base[i] = base[i];
  }
  return r;
}

}  // namespace

Answer CommandContext::ask(const Request& request) {
  Answer a;
  if (mCommand.transparent) {
    // A transparent command's prompts start with ">>" (after their line feeds).
    Request marked = request;
    const size_t at = marked.prompt.find_first_not_of(L'\n');
    marked.prompt.insert(at == std::wstring::npos ? marked.prompt.size() : at, L">>");
    a = Ask(marked, !mCommand.echo);
  } else {
    a = Ask(request, !mCommand.echo);
  }
  if (a.status == RTCAN) throw CommandCancelled{};
  return a;
}

Answer CommandContext::askPoint(std::wstring prompt, const std::wstring& keywords, int flags,
                                const double* base) {
  return ask(Make(Want::kPoint, std::move(prompt), keywords, flags, base));
}
Answer CommandContext::askCorner(std::wstring prompt, const double base[3], int flags) {
  return ask(Make(Want::kCorner, std::move(prompt), L"", flags, base));
}
Answer CommandContext::askDist(std::wstring prompt, const std::wstring& keywords, int flags,
                               const double* base) {
  return ask(Make(Want::kDist, std::move(prompt), keywords, flags, base));
}
Answer CommandContext::askAngle(std::wstring prompt, const std::wstring& keywords, int flags,
                                const double* base) {
  return ask(Make(Want::kAngle, std::move(prompt), keywords, flags, base));
}
Answer CommandContext::askReal(std::wstring prompt, const std::wstring& keywords, int flags) {
  return ask(Make(Want::kReal, std::move(prompt), keywords, flags, nullptr));
}
Answer CommandContext::askInt(std::wstring prompt, const std::wstring& keywords, int flags) {
  return ask(Make(Want::kInt, std::move(prompt), keywords, flags, nullptr));
}
Answer CommandContext::askKeyword(std::wstring prompt, const std::wstring& keywords, int flags) {
  return ask(Make(Want::kKword, std::move(prompt), keywords, flags, nullptr));
}
Answer CommandContext::askString(std::wstring prompt, bool spaces) {
  Request r = Make(Want::kString, std::move(prompt), L"", 0, nullptr);
  r.spaces = spaces;
  return ask(r);
}
Answer CommandContext::askEntity(std::wstring prompt, const std::wstring& keywords) {
  return ask(Make(Want::kEntity, std::move(prompt), keywords, 0, nullptr));
}

std::vector<AcDbObjectId> CommandContext::selectObjects(const std::wstring& prompt) {
  return SelectObjects(*this, prompt);
}

void CommandContext::print(const std::wstring& text) {
  if (mCommand.echo) Say(text);
}

bool CommandContext::echoes() const { return mCommand.echo; }

const std::wstring& CommandContext::name() const { return mCommand.global; }

bool CommandContext::transparent() const { return mCommand.transparent; }

void CommandContext::cancel() { throw CommandCancelled{}; }

void CommandContext::fail(const std::wstring& message) {
  if (!message.empty()) print(message);
  throw CommandFailed{};
}

}  // namespace kelhost::editor
