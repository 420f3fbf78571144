// Tiles resolved against their prototypes: a dialog as the runtime shows
// it. A tile takes its type from the built-in tile its prototype chain
// starts at (button, edit_box, row, dialog, ...), its attributes from
// every prototype, the nearest winning, and its children from every level.
// The standard tiles users expect from the platform's base definitions
// (ok_only, ok_cancel, ok_cancel_help, ok_cancel_help_info,
// ok_cancel_help_errtile, ok_button, cancel_button, help_button,
// info_button, retirement_button, errtile, spacer_0, spacer_1,
// default_dcl_settings) are always there: OK has the key "accept" and is
// the default button, Cancel the key "cancel" and answers Escape.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "editor/dcl_syntax.h"

namespace kelhost::editor::dcl {

struct Tile {
  std::wstring type;  // the built-in tile it is
  std::map<std::wstring, std::wstring> attributes;  // by lower-case name
  std::vector<Tile> children;
  int line = 0;
  std::wstring file;

  const std::wstring& attribute(const std::wstring& name) const;  // "" when not set
  bool flag(const std::wstring& name) const;                       // set to true
  const std::wstring& key() const { return attribute(L"key"); }
};

bool IsBuiltInTile(const std::wstring& type);

// The definitions of one .dcl file (and the files it includes), checked
// when read: every prototype and tile it names must be defined.
class DclLibrary {
 public:
  // False with the first error; nothing is kept then.
  bool read(const std::wstring& text, const std::wstring& file, Error& error);
  // Makes the tile tree of a definition; false when the file has no
  // definition of that name.
  bool make(const std::wstring& name, Tile& tile, Error& error) const;
  bool defines(const std::wstring& name) const;

 private:
  std::vector<Node> mDefinitions;
  std::map<std::wstring, const Node*> mByName;
};

}  // namespace kelhost::editor::dcl
