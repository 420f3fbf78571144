// Layouts and the standard objects: a new drawing has them, a file's are
// read and written back intact, a file without them gets them.
#include "dxf_sections.h"

namespace {

// A LAYOUT as the writer writes it, owned by the dictionary 1A.
Groups Layout(const char* handle, const Groups& reactors, const char* name, const char* tab, const char* block,
              const char* paper, const char* units, const char* rotation) {
  Groups g = {{0, "LAYOUT"}, {5, handle}};
  g.insert(g.end(), reactors.begin(), reactors.end());
  const Groups rest = {
      {330, "1A"}, {100, "AcDbPlotSettings"}, {1, ""}, {2, "none_device"}, {4, paper}, {6, ""}, {40, "7.5"},
      {41, "20.0"}, {42, "7.5"}, {43, "20.0"}, {44, "841.0"}, {45, "594.0"}, {46, "0.0"}, {47, "0.0"}, {48, "0.0"},
      {49, "0.0"}, {140, "0.0"}, {141, "0.0"}, {142, "1.0"}, {143, "1.0"}, {70, "688"}, {72, units}, {73, rotation},
      {74, "5"}, {7, ""}, {75, "16"}, {76, "0"}, {77, "2"}, {78, "300"}, {147, "1.0"}, {148, "0.0"}, {149, "0.0"},
      {100, "AcDbLayout"}, {1, name}, {70, "1"}, {71, tab}, {10, "0.0"}, {20, "0.0"}, {11, "841.0"}, {21, "594.0"},
      {12, "0.0"}, {22, "0.0"}, {32, "0.0"}, {14, "1e+20"}, {24, "1e+20"}, {34, "1e+20"}, {15, "-1e+20"},
      {25, "-1e+20"}, {35, "-1e+20"}, {146, "0.0"}, {13, "0.0"}, {23, "0.0"}, {33, "0.0"}, {16, "1.0"}, {26, "0.0"},
      {36, "0.0"}, {17, "0.0"}, {27, "1.0"}, {37, "0.0"}, {76, "1"}, {330, block}};
  g.insert(g.end(), rest.begin(), rest.end());
  return g;
}

// Three layouts; paper space's record does not name its layout.
std::string LayoutsDrawing() {
  const Groups classes = {{0, "CLASS"}, {1, "LAYOUT"}, {2, "AcDbLayout"}, {3, "ObjectDBX Classes"},
                          {90, "0"}, {91, "3"}, {280, "0"}, {281, "0"}};
  Groups tables = {{0, "TABLE"}, {2, "BLOCK_RECORD"}, {5, "1"}, {330, "0"}, {100, "AcDbSymbolTable"}, {70, "3"}};
  const char* records[][3] = {{"1F", "*Model_Space", "22"}, {"1E", "*Paper_Space", "0"}, {"1D", "*Paper_Space0", "24"}};
  for (const auto& r : records) {
    const Groups g = {{0, "BLOCK_RECORD"}, {5, r[0]}, {330, "1"}, {100, "AcDbSymbolTableRecord"},
                      {100, "AcDbBlockTableRecord"}, {2, r[1]}, {340, r[2]}, {70, "0"}, {280, "1"}, {281, "0"}};
    tables.insert(tables.end(), g.begin(), g.end());
  }
  tables.push_back({0, "ENDTAB"});
  Groups blocks;
  const char* begins[][4] = {{"40", "41", "1F", "*Model_Space"}, {"42", "43", "1E", "*Paper_Space"},
                             {"44", "45", "1D", "*Paper_Space0"}};
  for (const auto& b : begins) {
    const Groups g = {{0, "BLOCK"}, {5, b[0]}, {330, b[2]}, {8, "0"}, {2, b[3]}, {70, "0"}, {10, "0.0"},
                      {20, "0.0"}, {30, "0.0"}, {3, b[3]}, {0, "ENDBLK"}, {5, b[1]}, {330, b[2]}, {8, "0"}};
    blocks.insert(blocks.end(), g.begin(), g.end());
  }
  Groups objects = {{0, "DICTIONARY"}, {5, "C"}, {330, "0"}, {100, "AcDbDictionary"}, {281, "1"},
                    {3, "ACAD_LAYOUT"}, {350, "1A"},
                    {0, "DICTIONARY"}, {5, "1A"}, {330, "C"}, {100, "AcDbDictionary"}, {281, "1"},
                    {3, "Layout1"}, {350, "23"}, {3, "Model"}, {350, "22"}, {3, "图纸A"}, {350, "24"}};
  const Groups reactor = {{102, "{ACAD_REACTORS"}, {330, "1A"}, {102, "}"}};
  const Groups deadReactor = {{102, "{ACAD_REACTORS"}, {330, "1A"}, {330, "99"}, {102, "}"}};
  for (const Groups& l : {Layout("22", reactor, "Model", "0", "1F", "A3", "1", "0"),
                          Layout("23", deadReactor, "Layout1", "1", "1E", "A3", "1", "0"),
                          Layout("24", reactor, "图纸A", "2", "1D", "ISO_A1_(841.00_x_594.00_MM)", "0", "1")})
    objects.insert(objects.end(), l.begin(), l.end());
  return DxfFile({Section("CLASSES", classes), Section("TABLES", tables), Section("BLOCKS", blocks),
                  Section("ENTITIES", {}), Section("OBJECTS", objects)});
}

AcDbLayout* LayoutNamed(AcDbDatabase* db, const wchar_t* name) {
  auto* dict = kelhost::db::PeekAs<AcDbDictionary>(db->layoutDictionaryId());
  AcDbObjectId id;
  if (!dict || dict->getAt(name, id) != Acad::eOk) return nullptr;
  return kelhost::db::PeekAs<AcDbLayout>(id);
}

size_t Count(const Groups& file, int code, const std::string& value) {
  size_t n = 0;
  for (const auto& g : file) n += g.first == code && g.second == value;
  return n;
}

}  // namespace

TEST_F(DxfFileTest, ANewDrawingHasItsLayoutsAndStandardObjects) {
  AcDbLayout* model = LayoutNamed(db.get(), L"Model");
  AcDbLayout* paper = LayoutNamed(db.get(), L"Layout1");
  ASSERT_TRUE(model && paper);
  EXPECT_EQ(model->getBlockTableRecordId(), db->modelSpaceId());
  EXPECT_EQ(paper->getBlockTableRecordId(), db->paperSpaceId());
  EXPECT_EQ(kelhost::db::PeekAs<AcDbBlockTableRecord>(db->modelSpaceId())->getLayoutId(), model->objectId());
  EXPECT_EQ(kelhost::db::PeekAs<AcDbBlockTableRecord>(db->paperSpaceId())->getLayoutId(), paper->objectId());
  EXPECT_EQ(paper->ownerId(), db->layoutDictionaryId());
  EXPECT_TRUE(model->modelType());
  EXPECT_FALSE(paper->modelType());
  EXPECT_EQ(model->getTabOrder(), 0);
  EXPECT_EQ(paper->getTabOrder(), 1);

  // Walking ACAD_LAYOUT from AutoLISP finds both, in key order.
  EXPECT_EQ(eval(L"(setq d (cdr (assoc -1 (dictsearch (namedobjdict) \"ACAD_LAYOUT\")))"
                 L"      names (list (cdr (assoc 1 (member '(100 . \"AcDbLayout\") (dictnext d T))))"
                 L"                  (cdr (assoc 1 (member '(100 . \"AcDbLayout\") (dictnext d))))"
                 L"                  (dictnext d)))"),
            L"(\"Layout1\" \"Model\" nil)");

  // Plot style names default to "Normal"; multilines to "Standard".
  const std::wstring names = L"(dictsearch (namedobjdict) \"ACAD_PLOTSTYLENAME\")";
  EXPECT_EQ(eval(L"(cdr (assoc 0 " + names + L"))"), L"\"ACDBDICTIONARYWDFLT\"");
  EXPECT_EQ(eval(L"(cdr (assoc 340 " + names + L"))"), eval(L"(cdr (assoc 350 " + names + L"))"));
  EXPECT_EQ(eval(L"(cdr (assoc 0 (dictsearch (cdr (assoc -1 " + names + L")) \"Normal\")))"),
            L"\"ACDBPLACEHOLDER\"");
  EXPECT_EQ(eval(L"(cdr (assoc 2 (dictsearch (cdr (assoc -1 (dictsearch (namedobjdict) \"ACAD_MLINESTYLE\")))"
                 L" \"Standard\")))"),
            L"\"Standard\"");

  EXPECT_EQ(paper->setLayoutName(L"Sheet"), Acad::eNotOpenForWrite);  // closed
  AcDbLayout* open = nullptr;
  ASSERT_EQ(acdbOpenObject(open, paper->objectId(), AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(open->setLayoutName(L""), Acad::eInvalidInput);
  EXPECT_EQ(open->setBlockTableRecordId(db->layerZero()), Acad::eInvalidInput);
  open->close();
}

TEST_F(DxfFileTest, LayoutsReadFromAFileAreLinkedAndWrittenBackIntact) {
  const std::string in = LayoutsDrawing();
  writeText("in.dxf", in);
  ASSERT_EQ(db->readDwgFile(wpath("in.dxf").c_str()), Acad::eOk);
  AcDbLayout* sheet = LayoutNamed(db.get(), L"图纸A");
  ASSERT_NE(sheet, nullptr);
  const ACHAR* media = nullptr;
  sheet->getCanonicalMediaName(media);
  EXPECT_STREQ(media, L"ISO_A1_(841.00_x_594.00_MM)");
  EXPECT_EQ(sheet->plotPaperUnits(), AcDbPlotSettings::kInches);
  EXPECT_EQ(sheet->plotRotation(), AcDbPlotSettings::k90degrees);
  EXPECT_EQ(sheet->getTabOrder(), 2);
  auto* sheetBlock = kelhost::db::PeekAs<AcDbBlockTableRecord>(sheet->getBlockTableRecordId());
  ASSERT_NE(sheetBlock, nullptr);
  EXPECT_STREQ(sheetBlock->getName(), L"*Paper_Space0");
  EXPECT_TRUE(sheetBlock->isLayout());
  // Paper space's record did not name its layout: the layout naming it is
  // linked rather than a new one made.
  EXPECT_EQ(kelhost::db::PeekAs<AcDbBlockTableRecord>(db->paperSpaceId())->getLayoutId(),
            LayoutNamed(db.get(), L"Layout1")->objectId());
  EXPECT_EQ(kelhost::db::PeekAs<AcDbDictionary>(db->layoutDictionaryId())->numEntries(), 3u);

  ASSERT_EQ(db->saveAs(wpath("out.dxf").c_str()), Acad::eOk);
  const Groups before = ParseGroups(in), after = ParseGroups(readText("out.dxf"));
  EXPECT_EQ(ItemOf(after, "24"), ItemOf(before, "24"));
  EXPECT_EQ(ItemOf(after, "22"), ItemOf(before, "22"));
  // A reactor whose object is gone is left out.
  const Groups layout1 = ItemOf(after, "23");
  EXPECT_EQ(Count(layout1, 330, "99"), 0u);
  EXPECT_EQ(Count(layout1, 102, "{ACAD_REACTORS"), 1u);
  EXPECT_EQ(ValueOf(ItemOf(after, "1E"), 340), "23");
  EXPECT_EQ(Count(after, 0, "LAYOUT"), 3u);
  EXPECT_EQ(Count(after, 1, "LAYOUT"), 1u);  // the file's CLASS, not another
}

TEST_F(DxfFileTest, AFileWithoutLayoutsGetsThemOnce) {
  writeText("r12.dxf", Dxf({{0, "SECTION"}, {2, "ENTITIES"}, {0, "POINT"}, {8, "0"}, {10, "1"}, {20, "2"},
                            {30, "0"}, {0, "ENDSEC"}, {0, "EOF"}}));
  ASSERT_EQ(db->readDwgFile(wpath("r12.dxf").c_str()), Acad::eOk);
  AcDbLayout* model = LayoutNamed(db.get(), L"Model");
  ASSERT_NE(model, nullptr);
  EXPECT_EQ(kelhost::db::PeekAs<AcDbBlockTableRecord>(db->modelSpaceId())->getLayoutId(), model->objectId());
  EXPECT_NE(LayoutNamed(db.get(), L"Layout1"), nullptr);
  EXPECT_NE(eval(L"(dictsearch (namedobjdict) \"ACAD_PLOTSTYLENAME\")"), L"nil");

  saveAndReopen("first.dxf");
  ASSERT_EQ(db->saveAs(wpath("second.dxf").c_str()), Acad::eOk);
  const Groups first = ParseGroups(readText("first.dxf"));
  EXPECT_EQ(Count(first, 0, "LAYOUT"), 2u);
  EXPECT_EQ(Count(first, 1, "LAYOUT"), 1u);  // its CLASS
  EXPECT_EQ(readText("second.dxf"), readText("first.dxf"));
}
