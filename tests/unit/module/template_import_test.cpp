// CImportDWT: records copied from a template by name (any case) or all at
// once, the standard records the all forms leave alone, the refusal of a
// name the drawing has unless replacing, bad templates and names, and a
// failure halfway leaving the drawing as it was.
#include <gtest/gtest.h>

#include "db/audit.h"
#include "db/stub.h"
#include "editor_module_fixture.h"
#include "kelcad/entry/extra_lisp_functions.h"
#include "kelcad/kelcad.h"

namespace {

const std::wstring kShipped = kelhost::FromUtf8(KELCAD_SOURCE_DIR "/data/template/kelstd.dwt");

class TemplateImport : public EditorModuleTest {
 protected:
  void TearDown() override {
    for (AcDbDatabase* db : sources) delete db;  // the importer leaves its sources to its caller
    EXPECT_EQ(kelhost::db::OpenObjectCount(), 0) << "objects left open";
    EditorModuleTest::TearDown();
  }
  CImportDWT Importer(const std::wstring& path) {
    CImportDWT importer(path.c_str());
    sources.push_back(importer.m_pSourceDB);
    return importer;
  }
  // The record's id in db's table of that kind (by name), null when absent.
  template <class Table>
  static AcDbObjectId Record(AcDbDatabase* db, const wchar_t* name) {
    Table* table = nullptr;
    AcDbObjectId id;
    if (db->getSymbolTable(table, AcDb::kForRead) != Acad::eOk) return id;
    table->getAt(name, id);
    table->close();
    return id;
  }
  template <class Record>
  static Record* Peek(AcDbObjectId id) {
    AcDbObject* object = nullptr;
    if (acdbOpenObject(object, id, AcDb::kForRead) != Acad::eOk) return nullptr;
    object->close();  // the host keeps it alive with its drawing
    return Record::cast(object);
  }
  static std::wstring Name(AcDbObjectId id) {
    auto* record = Peek<AcDbSymbolTableRecord>(id);
    return record ? record->getName() : L"";
  }
  static std::vector<std::wstring> Names(const AcDbObjectIdArray& ids) {
    std::vector<std::wstring> names;
    for (int i = 0; i < ids.length(); ++i) names.push_back(Name(ids[i]));
    return names;
  }
  static int EntityCount(AcDbObjectId blockId) {
    auto* block = Peek<AcDbBlockTableRecord>(blockId);
    if (block == nullptr) return -1;
    AcDbBlockTableRecordIterator* it = nullptr;
    block->newIterator(it);
    int n = 0;
    for (it->start(); !it->done(); it->step()) ++n;
    delete it;
    return n;
  }
  void ExpectSound() {
    for (const std::wstring& problem : kelhost::db::AuditReferences(drawing.get()))
      ADD_FAILURE() << kelhost::ToUtf8(problem);
  }
  void SetLayerColor(const wchar_t* name, int color) {
    AcDbLayerTableRecord* layer = nullptr;
    ASSERT_EQ(acdbOpenObject(layer, Record<AcDbLayerTable>(drawing.get(), name), AcDb::kForWrite), Acad::eOk);
    layer->setColorIndex(static_cast<Adesk::UInt16>(color));
    layer->close();
  }
  int LayerColor(const wchar_t* name) {
    auto* layer = Peek<AcDbLayerTableRecord>(Record<AcDbLayerTable>(drawing.get(), name));
    return layer ? layer->colorIndex() : -1;
  }

  std::vector<AcDbDatabase*> sources;
};

TEST_F(TemplateImport, ARecordIsFoundWhateverTheCaseAndBringsWhatItNames) {
  CImportDWT importer = Importer(kShipped);
  EXPECT_EQ(importer.m_pResultDB, drawing.get()) << "the working drawing by default";
  AcDbObjectId id;
  out.clear();
  ASSERT_EQ(importer.ImportTextStyle(L"kel-hz", id, false), Acad::eOk);
  EXPECT_EQ(out, L"\nImport TextStyle OK0");
  EXPECT_EQ(Name(id), L"KEL-HZ") << "the template's spelling";
  const ACHAR* bigFont = nullptr;
  Peek<AcDbTextStyleTableRecord>(id)->bigFontFileName(bigFont);
  EXPECT_EQ(std::wstring(bigFont), L"gbcbig.shx");

  out.clear();
  ASSERT_EQ(importer.ImportDimStyle(L"Kel-Dim100", id, false), Acad::eOk);
  EXPECT_EQ(out, L"") << "only text styles report success";
  auto* dim = Peek<AcDbDimStyleTableRecord>(id);
  ASSERT_NE(dim, nullptr);
  EXPECT_EQ(dim->dimscale(), 100.0);
  EXPECT_EQ(Name(dim->dimtxsty()), L"KEL-DIM");
  EXPECT_EQ(dim->dimtxsty().database(), drawing.get());

  ASSERT_EQ(importer.ImportLayer(L"u-anno-axis", id, false), Acad::eOk);
  const AcDbObjectId center = Peek<AcDbLayerTableRecord>(id)->linetypeObjectId();
  EXPECT_EQ(Name(center), L"CENTER");
  EXPECT_EQ(center.database(), drawing.get());
  ExpectSound();
}

TEST_F(TemplateImport, TheAllFormsLeaveTheStandardRecordsAlone) {
  // The template's own standard records differ from the drawing's, so a
  // copy of any of them would show.
  auto* source = new AcDbDatabase;
  sources.push_back(source);
  {
    AcDbLayerTable* layers = nullptr;
    ASSERT_EQ(source->getLayerTable(layers, AcDb::kForRead), Acad::eOk);
    AcDbLayerTableRecord* zero = nullptr;
    ASSERT_EQ(layers->getAt(L"0", zero, AcDb::kForWrite), Acad::eOk);
    zero->setColorIndex(5);
    zero->close();
    layers->close();
  }
  CImportDWT importer = Importer(kShipped);
  AcDbObjectIdArray ids;
  out.clear();
  EXPECT_EQ(importer.ImportLinetypeAll(ids, false), Acad::eOk);
  EXPECT_EQ(Names(ids), (std::vector<std::wstring>{L"CENTER", L"DASHED", L"HIDDEN", L"PHANTOM", L"DOT", L"DASHDOT"}));
  EXPECT_EQ(out, L"") << "ByBlock, ByLayer and Continuous are never tried";
  ids.setLogicalLength(0);
  EXPECT_EQ(importer.ImportTextStyleAll(ids, false), Acad::eOk);
  EXPECT_EQ(Names(ids).front(), L"KEL-HZ");
  EXPECT_EQ(out.find(L"Standard"), std::wstring::npos);
  // ISO-25 is skipped; the template's Standard dimension style is not.
  ids.setLogicalLength(0);
  out.clear();
  EXPECT_EQ(importer.ImportDimStyleAll(ids, false), Acad::eOk) << "the last record tried";
  EXPECT_EQ(out, L"\nImport Standard error:" + std::to_wstring(Acad::eDuplicateRecordName));
  EXPECT_EQ(Names(ids), (std::vector<std::wstring>{L"KEL-DIM", L"KEL-DIM50", L"KEL-DIM100"}));
  ids.setLogicalLength(0);
  out.clear();
  EXPECT_EQ(importer.ImportBlockAll(ids, false), Acad::eOk);
  EXPECT_EQ(Names(ids), (std::vector<std::wstring>{L"sztq_0", L"szhql", L"KEL-DZBZ", L"KEL-BG"}));
  EXPECT_EQ(out, L"") << "model and paper space are never tried";
  EXPECT_EQ(EntityCount(ids[0]), 13);
  EXPECT_EQ(Peek<AcDbBlockTableRecord>(ids[0])->origin(), AcGePoint3d(180, 0, 0));

  // Layer 0 of a template whose 0 is blue: the drawing's stays white.
  importer.m_pSourceDB = source;
  ids.setLogicalLength(0);
  EXPECT_EQ(importer.ImportLayerAll(ids, false), Acad::eOk);
  EXPECT_EQ(ids.length(), 0);
  EXPECT_EQ(LayerColor(L"0"), 7);
  ExpectSound();
}

TEST_F(TemplateImport, ANameTheDrawingHasIsRefusedUnlessReplaced) {
  Eval(L"(entmake '((0 . \"LAYER\") (2 . \"PP-COM\") (70 . 0) (62 . 1) (6 . \"Continuous\")))");
  const AcDbObjectId mine = Record<AcDbLayerTable>(drawing.get(), L"PP-COM");
  Eval(L"(entmake '((0 . \"LINE\") (8 . \"PP-COM\") (10 0.0 0.0) (11 1.0 1.0)))");
  CImportDWT importer = Importer(kShipped);
  AcDbObjectId id;
  EXPECT_EQ(importer.ImportLayer(L"pp-com", id, false), Acad::eDuplicateRecordName);
  EXPECT_EQ(LayerColor(L"PP-COM"), 1);
  AcDbObjectIdArray ids;
  out.clear();
  EXPECT_EQ(importer.ImportLayerAll(ids, false), Acad::eOk) << "PP-COM is not the last layer";
  EXPECT_EQ(out, L"\nImport PP-COM error:" + std::to_wstring(Acad::eDuplicateRecordName));
  EXPECT_EQ(ids.length(), 9);

  // A text style the drawing has: the message carries the add's status.
  out.clear();
  EXPECT_EQ(importer.ImportTextStyle(L"KEL-HZ", id, false), Acad::eOk);
  EXPECT_EQ(importer.ImportTextStyle(L"KEL-HZ", id, false), Acad::eDuplicateRecordName);
  EXPECT_EQ(out, L"\nImport TextStyle OK0\nImport TextStyle OK" + std::to_wstring(Acad::eDuplicateRecordName));

  // Replacing: the drawing's record goes, the template's comes.
  ASSERT_EQ(importer.ImportLayer(L"PP-COM", id, true), Acad::eOk);
  EXPECT_NE(id, mine);
  EXPECT_TRUE(mine.isErased());
  EXPECT_EQ(LayerColor(L"PP-COM"), 7);

  // Removing by name, any case; a name the drawing lacks erases nothing.
  EXPECT_EQ(CImportDWT::RemoveLayer(L"pp-com", drawing.get()), Acad::eOk);
  EXPECT_TRUE(id.isErased());
  EXPECT_EQ(CImportDWT::RemoveLayer(L"NOSUCH", drawing.get()), Acad::eOk);
  EXPECT_EQ(CImportDWT::RemoveLayer(L"0", nullptr), Acad::eInvalidInput);
}

TEST_F(TemplateImport, AnUnreadableTemplateOrAMissingNameGivesInvalidInput) {
  CImportDWT importer = Importer(kelhost::FromUtf8(root) + L"/nothing.dwt");
  ASSERT_NE(importer.m_pSourceDB, nullptr) << "an empty source";
  AcDbObjectId id;
  AcDbObjectIdArray ids;
  EXPECT_EQ(importer.ImportTextStyle(L"KEL-HZ", id, false), Acad::eInvalidInput);
  EXPECT_EQ(importer.ImportDimStyle(L"KEL-DIM", id, false), Acad::eInvalidInput);
  EXPECT_EQ(importer.ImportLayer(L"PP-COM", id, true), Acad::eInvalidInput);
  EXPECT_EQ(importer.ImportLinetype(L"CENTER", id, false), Acad::eInvalidInput);
  EXPECT_EQ(importer.ImportBlock(L"sztq_0", id, false), Acad::eInvalidInput);
  EXPECT_EQ(importer.ImportLayerAll(ids, false), Acad::eInvalidInput);
  EXPECT_EQ(importer.ImportBlockAll(ids, false), Acad::eInvalidInput);

  EXPECT_FALSE(importer.SetDWTFileName((kelhost::FromUtf8(root) + L"/other.dwt").c_str()));
  sources.push_back(importer.m_pSourceDB);
  EXPECT_TRUE(importer.SetDWTFileName(kShipped.c_str()));
  sources.push_back(importer.m_pSourceDB);
  EXPECT_EQ(importer.ImportBlock(L"NOSUCH", id, false), Acad::eInvalidInput);
  EXPECT_EQ(importer.ImportLayer(L"", id, false), Acad::eInvalidInput);

  // No drawing to import into, or no template at all.
  AcDbDatabase* none = nullptr;
  CImportDWT copy(importer);
  EXPECT_EQ(copy.m_pSourceDB, importer.m_pSourceDB);
  copy.SetResultDataBase(none);
  EXPECT_EQ(copy.ImportLayer(L"PP-COM", id, false), Acad::eInvalidInput);
  EXPECT_EQ(copy.ImportBlockAll(ids, false), Acad::eInvalidInput);
  CImportDWT empty;
  EXPECT_EQ(empty.m_pSourceDB, nullptr);
  EXPECT_EQ(empty.ImportTextStyleAll(ids, false), Acad::eInvalidInput);
  ExpectSound();
}

TEST_F(TemplateImport, ABlockTakesTheDrawingsClashingLayersAndAFailureLeavesNothingBehind) {
  Eval(L"(entmake '((0 . \"LAYER\") (2 . \"U-ANNO-TTLB\") (70 . 0) (62 . 2) (6 . \"Continuous\")))");
  CImportDWT importer = Importer(kShipped);
  AcDbObjectId id, again;
  ASSERT_EQ(importer.ImportBlock(L"SZHQL", id, false), Acad::eOk);
  EXPECT_EQ(Name(id), L"szhql");
  EXPECT_EQ(EntityCount(id), 12);
  EXPECT_EQ(LayerColor(L"U-ANNO-TTLB"), 2) << "the drawing's layer is kept";
  EXPECT_FALSE(Record<AcDbLayerTable>(drawing.get(), L"U-ANNO-TEXT").isNull()) << "a missing layer comes along";
  EXPECT_EQ(importer.ImportBlock(L"szhql", again, false), Acad::eDuplicateRecordName);
  ExpectSound();

  // The layer table held open: the title block's entities cannot bring
  // their layers, so neither the block nor anything of it stays.
  AcDbLayerTable* layers = nullptr;
  ASSERT_EQ(drawing->getLayerTable(layers, AcDb::kForWrite), Acad::eOk);
  AcDbObjectId failed;
  EXPECT_NE(importer.ImportBlock(L"KEL-BG", failed, false), Acad::eOk);
  EXPECT_TRUE(failed.isNull());
  layers->close();
  EXPECT_TRUE(Record<AcDbBlockTable>(drawing.get(), L"KEL-BG").isNull());
  EXPECT_TRUE(Record<AcDbLayerTable>(drawing.get(), L"U-ANNO-SYMB").isNull());
  ExpectSound();

  // Replacing a block when no block can be made: the one there is back
  // whole.
  AcDbBlockTable* blocks = nullptr;
  ASSERT_EQ(drawing->getBlockTable(blocks, AcDb::kForWrite), Acad::eOk);
  EXPECT_NE(importer.ImportBlock(L"szhql", failed, true), Acad::eOk);
  blocks->close();
  const AcDbObjectId back = Record<AcDbBlockTable>(drawing.get(), L"szhql");
  EXPECT_EQ(back, id);
  EXPECT_EQ(EntityCount(back), 12);
  ExpectSound();
}

// The two AutoLISP names live beside the function table: defined with each
// drawing, called straight through their handlers, gone with the drawing.
TEST_F(TemplateImport, TheLispNamesComeAndGoWithTheDrawing) {
  ASSERT_TRUE(LoadModule());
  const KEL::ExtraLispFunction* rows = KEL::ExtraLispFunctions();
  ASSERT_EQ(KEL::ExtraLispFunctionCount(), 2);
  for (int i = 0; i < KEL::ExtraLispFunctionCount(); ++i) {
    EXPECT_GT(rows[i].code, 150) << "beyond every code the table's dispatch accepts";
    EXPECT_EQ(Eval(std::wstring(L"(type ") + rows[i].name + L")"), L"EXRXSUBR");
  }
  Eval(L"(setq shipped \"" + kShipped + L"\")");
  EXPECT_EQ(Eval(L"(type (kel_importdwt shipped \"LTYPE\" \"center\"))"), L"ENAME");
  EXPECT_EQ(Eval(L"(cdr (assoc 2 (entget (car (kel_importdwtall shipped \"block\")))))"), L"\"sztq_0\"");
  EXPECT_EQ(Printed(L"(kel_importdwtall shipped \"LAYER\" 1)"), L"\nError:kel_importdwtall(replace).");
  UnloadModule();
  EXPECT_EQ(Eval(L"(type kel_importdwt)"), L"nil");
  EXPECT_EQ(Eval(L"(type kel_importdwtall)"), L"nil");
}

}  // namespace
