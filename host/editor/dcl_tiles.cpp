#include "editor/dcl_tiles.h"

#include <cwctype>
#include <set>

#include "app/support_path.h"
#include "kelhost/paths.h"
#include "kelhost/text.h"

namespace kelhost::editor::dcl {
namespace {

const std::set<std::wstring>& BuiltIns() {
  static const std::set<std::wstring> types = {
      L"dialog",      L"row",          L"column",       L"boxed_row",  L"boxed_column", L"radio_row",
      L"radio_column", L"boxed_radio_row", L"boxed_radio_column", L"concatenation", L"paragraph", L"button",
      L"edit_box",    L"image",        L"image_button", L"list_box",   L"popup_list",   L"radio_button",
      L"slider",      L"spacer",       L"text",         L"text_part",  L"toggle",       L"default_dcl_settings"};
  return types;
}

// The standard tiles, written for this host after the platform's
// description of its base definitions.
const wchar_t kBaseDefinitions[] = LR"dcl(
retirement_button : button { fixed_width = true; width = 8; alignment = centered; }
ok_button : retirement_button { label = "OK"; key = "accept"; is_default = true; }
cancel_button : retirement_button { label = "Cancel"; key = "cancel"; is_cancel = true; }
help_button : retirement_button { label = "&Help"; key = "help"; is_help = true; }
info_button : retirement_button { label = "&Info..."; key = "info"; }
errtile : text { label = ""; key = "error"; width = 35; is_error_tile = true; }
spacer_0 : spacer { height = 0; width = 0; horizontal_margin = none; vertical_margin = none; }
spacer_1 : spacer { height = 1; width = 1; horizontal_margin = none; vertical_margin = none; }
ok_only : column { fixed_width = true; alignment = centered; : ok_button { is_cancel = true; } }
ok_cancel : column { : row { fixed_width = true; alignment = centered; ok_button; : spacer { width = 2; } cancel_button; } }
ok_cancel_help : column {
  : row { fixed_width = true; alignment = centered; ok_button; : spacer { width = 2; } cancel_button;
          : spacer { width = 2; } help_button; } }
ok_cancel_help_info : column {
  : row { fixed_width = true; alignment = centered; ok_button; : spacer { width = 2; } cancel_button;
          : spacer { width = 2; } help_button; : spacer { width = 2; } info_button; } }
ok_cancel_help_errtile : column { ok_cancel_help; errtile; }
)dcl";

const std::wstring kEmpty;

// A prototype chain or tile tree deeper than this is a cycle or abuse.
constexpr int kMaxResolveDepth = 2 * kMaxNesting;

bool Undefined(const Node& node, Error& error) {
  error.file = node.file;
  error.line = node.line;
  error.message = L"undefined tile";
  error.symbol = node.prototype;
  return false;
}

std::wstring Lower(const std::wstring& s) {
  std::wstring out = s;
  for (wchar_t& c : out) c = static_cast<wchar_t>(std::towlower(c));
  return out;
}

// @include: beside the including file, else on the support path.
bool ReadInclude(const std::wstring& name, const std::wstring& fromFile, std::wstring& path, std::wstring& text) {
  std::wstring candidate = name;
  if (!app::HasDirectoryPart(name)) {
    const size_t slash = fromFile.find_last_of(L"/\\");
    if (slash != std::wstring::npos && app::IsRegularFile(fromFile.substr(0, slash + 1) + name))
      candidate = fromFile.substr(0, slash + 1) + name;
    else if (auto found = app::FindSupportFile(name))
      candidate = *found;
  }
  std::string bytes;
  if (!ReadWholeFile(NativePath(candidate), bytes)) return false;
  if (bytes.compare(0, 3, "\xEF\xBB\xBF") == 0) bytes.erase(0, 3);
  path = candidate;
  text = FromUtf8(bytes);
  return true;
}

}  // namespace

bool IsBuiltInTile(const std::wstring& type) { return BuiltIns().count(type) != 0; }

const std::wstring& Tile::attribute(const std::wstring& name) const {
  auto it = attributes.find(name);
  return it == attributes.end() ? kEmpty : it->second;
}

bool Tile::flag(const std::wstring& name) const { return Lower(attribute(name)) == L"true"; }

namespace {

class Resolver {
 public:
  Resolver(const std::map<std::wstring, const Node*>& own, Error& error) : mOwn(own), mError(error) {}

  bool resolve(const Node& node, Tile& tile, int depth) {
    if (depth > kMaxResolveDepth) {
      mError.file = node.file;
      mError.line = node.line;
      mError.message = L"tiles nested too deeply";
      mError.symbol = node.prototype;
      return false;
    }
    if (IsBuiltInTile(node.prototype)) {
      tile.type = node.prototype;
    } else {
      const Node* base = find(node.prototype);
      if (!base) return Undefined(node, mError);
      if (!resolve(*base, tile, depth + 1)) return false;
    }
    tile.line = node.line;
    tile.file = node.file;
    if (node.reference) return true;
    for (const Attribute& a : node.attributes) tile.attributes[Lower(a.name)] = a.value;
    for (const Node& child : node.children) {
      Tile made;
      if (!resolve(child, made, depth + 1)) return false;
      tile.children.push_back(std::move(made));
    }
    return true;
  }

 private:
  // The file's own definitions first, then the standard ones.
  const Node* find(const std::wstring& name) const {
    auto it = mOwn.find(name);
    if (it != mOwn.end()) return it->second;
    return baseNode(name);
  }
  static const Node* baseNode(const std::wstring& name);

  const std::map<std::wstring, const Node*>& mOwn;
  Error& mError;
};

}  // namespace

bool DclLibrary::read(const std::wstring& text, const std::wstring& file, Error& error) {
  std::vector<Node> definitions;
  if (!ParseDcl(text, file, definitions, error, ReadInclude)) return false;
  std::map<std::wstring, const Node*> byName;
  for (const Node& n : definitions) byName[n.name] = &n;  // a later definition wins
  Resolver resolver(byName, error);
  for (const Node& n : definitions) {
    Tile check;
    if (!resolver.resolve(n, check, 0)) return false;
  }
  mDefinitions = std::move(definitions);
  mByName.clear();
  for (const Node& n : mDefinitions) mByName[n.name] = &n;
  return true;
}

bool DclLibrary::defines(const std::wstring& name) const { return mByName.count(name) != 0; }

bool DclLibrary::make(const std::wstring& name, Tile& tile, Error& error) const {
  auto it = mByName.find(name);
  if (it == mByName.end()) return false;
  Resolver resolver(mByName, error);
  tile = Tile();
  return resolver.resolve(*it->second, tile, 0);
}

namespace {

struct BaseDefinitions {
  std::vector<Node> nodes;
  std::map<std::wstring, const Node*> byName;
  BaseDefinitions() {
    Error error;
    ParseDcl(kBaseDefinitions, L"base.dcl", nodes, error);
    for (const Node& n : nodes) byName[n.name] = &n;
  }
};

}  // namespace

const Node* Resolver::baseNode(const std::wstring& name) {
  static const BaseDefinitions base;
  auto it = base.byName.find(name);
  return it == base.byName.end() ? nullptr : it->second;
}

}  // namespace kelhost::editor::dcl
