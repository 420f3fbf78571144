// WBLOCK (and -WBLOCK): the command-line form. The output file (with the
// platform's question when it exists), then what to write: a block of the
// drawing, "=" (the block named as the file), "*" (the whole drawing,
// without the records nothing uses) or, with Enter, selected objects and
// an insertion base point. Selected objects are erased once the file is
// written, as the platform does; they are remembered for OOPS (and UNDO
// brings them back like any erase).
//
// The host writes DXF 2013, atomically. A name without extension means
// name.dwg, and a ".dwg" name writes the ".dxf" of the same name: what
// INSERT and readDwgFile find for that ".dwg" when they read it back.
#include <memory>
#include <vector>

#include "ads/entity_names.h"
#include "arx/dbdatabase.h"
#include "arx/dbsymtb.h"
#include "db/stub.h"
#include "editor/builtin_commands.h"
#include "editor/commands/block_choice.h"
#include "editor/commands/drawing_file_names.h"
#include "editor/commands/drawing_support.h"
#include "editor/erased_objects.h"
#include "kelhost/drawing_files.h"
#include "editor/commands/typed_text.h"
#include "kelhost/text.h"

namespace kelhost::editor {
namespace {

void RunWblock(CommandContext& c) {
  AcDbDatabase* db = ads::WorkingDb();
  if (!db) c.fail();
  const std::wstring typed = Unquoted(Trimmed(c.askString(L"\nEnter name of output file: ").text));
  if (typed.empty()) return;
  const std::wstring file = DrawingFileToWrite(typed);
  if (IsExistingFile(file)) {
    Answer a = c.askKeyword(L"\nA drawing with this name already exists.\nDo you want to replace it? <N> ", L"Yes No");
    if (!(a.status == RTKWORD && a.text == L"Yes")) return;
  }
  const std::wstring what =
      Trimmed(c.askString(L"\nEnter name of existing block or\n[= (block=output file)/* (whole drawing)] "
                       L"<define new drawing>: ")
               .text);
  AcDbDatabase* written = nullptr;
  Acad::ErrorStatus es = Acad::eOk;
  std::vector<AcDbObjectId> selected;
  if (what.empty()) {
    Answer base = c.askPoint(L"\nSpecify insertion base point: ");
    const double origin[3] = {0, 0, 0};
    const AcGePoint3d basePoint = ToWorld(base.status == RTNORM ? base.point : origin);
    selected = c.selectObjects();
    if (selected.empty()) return c.print(L"\nNo objects selected.");
    AcDbObjectIdArray ids;
    for (const AcDbObjectId& id : selected) ids.append(id);
    es = db->wblock(written, ids, basePoint);
  } else if (what == L"*") {
    es = db->wblock(written);
  } else {
    const std::wstring name = what == L"=" ? FileBaseName(typed) : what;
    const AcDbObjectId block = FindPlaceableBlock(db, name);
    if (block.isNull()) c.fail(L"\nBlock " + name + L" not found.");
    es = db->wblock(written, block);
  }
  std::unique_ptr<AcDbDatabase> drawing(written);
  if (es != Acad::eOk || !drawing) c.fail(L"\nThe objects could not be written.");
  std::wstring error;
  if (!WriteDrawingFile(drawing.get(), file, error)) c.fail(L"\nCannot write the file \"" + file + L"\".");
  if (!selected.empty()) {
    for (const AcDbObjectId& id : selected) EraseEntity(id);
    RememberErased(std::move(selected));
  }
}

}  // namespace

KELHOST_BUILTIN_COMMAND(Wblock, {L"WBLOCK", RunWblock, /*hasDialog*/ true, /*transparent*/ false});

}  // namespace kelhost::editor
