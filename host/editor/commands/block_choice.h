// The block INSERT places, from the name typed at its first prompt: a
// block of the drawing, or a drawing file that becomes one.
#pragma once

#include <string>

#include "arx/dbdatabase.h"
#include "editor/command_context.h"

namespace kelhost::editor {

struct BlockChoice {
  AcDbObjectId block;
  std::wstring name;       // the block's name (what INSNAME keeps)
  bool exploded = false;   // "*name": placed as separate entities
};

// The block of that name that INSERT and WBLOCK may take (not a layout's),
// or null.
AcDbObjectId FindPlaceableBlock(AcDbDatabase* db, const std::wstring& name);

// Reads the answer: "name" (a block of the drawing, else name.dwg found
// on the support path), "file.dwg" or "dir/file" (the file, whose base
// name names the block), "name=file" (the block redefined from the file;
// "name=" takes the file of the same name), each possibly after "*". A
// file becomes the block through AcDbDatabase::insert; a block that
// exists is redefined from a file only by the "=" form or, for a name
// that says where the file is, when the user agrees. False, after the
// platform's message, when there is no block to place.
bool ChooseBlock(CommandContext& c, AcDbDatabase* db, const std::wstring& answer, BlockChoice& choice);

// The block name from a drawing file: name's block, new or redefined
// with the file's model space. An empty status message on success;
// otherwise why not, as the command line says it.
std::wstring DefineBlockFromFile(AcDbDatabase* db, const std::wstring& name, const std::wstring& path,
                                 AcDbObjectId& block);

}  // namespace kelhost::editor
