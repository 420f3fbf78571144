#include "editor/commands/block_choice.h"

#include <vector>

#include "arx/acdbads.h"
#include "arx/dbsymtb.h"
#include "db/stub.h"
#include "editor/commands/drawing_file_names.h"
#include "editor/commands/insert_units.h"
#include "kelhost/text.h"

namespace kelhost::editor {
namespace {

// The platform's report of a file not found, with where it looked.
void ReportMissing(CommandContext& c, const std::wstring& file, const std::vector<std::wstring>& searched) {
  std::wstring shown = file;
  if (FileBaseName(shown) == shown) shown += L".dwg";
  c.print(L"\n\"" + shown + L"\": Can't find file in search path:");
  for (const std::wstring& dir : searched) c.print(L"\n  " + dir);
}

}  // namespace

AcDbObjectId FindPlaceableBlock(AcDbDatabase* db, const std::wstring& name) {
  auto* table = db::PeekAs<AcDbBlockTable>(db->blockTableId());
  AcDbObjectId id;
  if (!table || name.empty() || table->getAt(name.c_str(), id) != Acad::eOk) return AcDbObjectId::kNull;
  auto* block = db::PeekAs<AcDbBlockTableRecord>(id);
  return block && !block->isLayout() ? id : AcDbObjectId::kNull;
}

std::wstring DefineBlockFromFile(AcDbDatabase* db, const std::wstring& name, const std::wstring& path,
                                 AcDbObjectId& block) {
  block.setNull();
  AcDbDatabase source(false, true);
  if (source.readDwgFile(path.c_str()) != Acad::eOk) return L"Drawing file is not valid.";
  switch (db->insert(block, name.c_str(), &source)) {
    case Acad::eOk: {
      // The block remembers the units its drawing was made in.
      AcDbBlockTableRecord* record = nullptr;
      if (acdbOpenObject(record, block, AcDb::kForWrite) == Acad::eOk) {
        record->setBlockInsertUnits(DrawingUnits(&source));
        record->close();
      }
      return L"";
    }
    case Acad::eSelfReference: return L"Block " + name + L" references itself\n*Invalid*";
    case Acad::eInvalidInput: return L"Invalid block name.";
    default: return L"The drawing could not be inserted.";
  }
}

bool ChooseBlock(CommandContext& c, AcDbDatabase* db, const std::wstring& answer, BlockChoice& choice) {
  std::wstring text = answer;
  choice = BlockChoice{};
  if (!text.empty() && text[0] == L'*') {
    choice.exploded = true;
    text.erase(0, 1);
  }
  // "name=file": the block, redefined from the file ("name=": the file of
  // the block's name).
  std::wstring name, file;
  const size_t eq = text.find(L'=');
  if (eq != std::wstring::npos) {
    name = Unquoted(text.substr(0, eq));
    file = Unquoted(text.substr(eq + 1));
    if (file.empty()) file = name;
  } else if (NamesAFile(Unquoted(text))) {
    file = Unquoted(text);
    name = FileBaseName(file);
  } else {
    name = Unquoted(text);
  }
  if (name.empty() || acdbSNValid(name.c_str(), 0) != RTNORM) {
    c.print(L"\nInvalid block name.");
    return false;
  }
  // (A valid name never names a layout's block: those begin with '*'.)
  const AcDbObjectId existing = FindPlaceableBlock(db, name);
  if (!existing.isNull() && file.empty()) {
    choice.block = existing;
    choice.name = name;
    return true;
  }
  if (file.empty()) file = name;
  std::vector<std::wstring> searched;
  const std::wstring path = FindDrawingFile(file, &searched);
  if (path.empty()) {
    ReportMissing(c, file, searched);
    return false;
  }
  if (!existing.isNull()) {
    // A block the drawing has (named by "=" or by a file's name): redefined
    // only when the user says so.
    Answer a = c.askKeyword(L"\nBlock \"" + name + L"\" already exists. Redefine it? [Yes/No] <N>: ", L"Yes No");
    if (!(a.status == RTKWORD && a.text == L"Yes")) {
      choice.block = existing;
      choice.name = name;
      return true;
    }
  }
  AcDbObjectId block;
  const std::wstring why = DefineBlockFromFile(db, name, path, block);
  if (!why.empty()) {
    c.print(L"\n" + why);
    return false;
  }
  if (!existing.isNull()) c.print(L"\nBlock " + name + L" redefined");
  choice.block = block;
  choice.name = name;
  return true;
}

}  // namespace kelhost::editor
