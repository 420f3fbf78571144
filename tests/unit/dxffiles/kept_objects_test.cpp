// What the host does not model is written back as it was read: unknown
// entities and objects with their references, complex entities with their
// followers, unknown tables and CLASSES.
#include "dxf_fixture.h"

namespace {

// The groups of the item whose handle is h, as written ("code\nvalue\n"
// lines from its 0 group to the next).
std::string ItemText(const std::string& file, const std::string& handle) {
  const size_t h = file.find("\n  5\n" + handle + "\n");
  if (h == std::string::npos) return "";
  const size_t begin = file.rfind("\n  0\n", h);
  const size_t end = file.find("\n  0\n", h + 1);
  return file.substr(begin, end - begin);
}

}  // namespace

TEST_F(DxfFileTest, UnknownEntitiesAndObjectsAreWrittenBackVerbatim) {
  const auto text = Dxf(Drawing2013(
      {{0, "WIPEOUT"}, {5, "A1"}, {330, "1F"}, {100, "AcDbEntity"}, {8, "0"}, {100, "AcDbWipeout"},
       {90, "0"}, {10, "1.5"}, {20, "2.5"}, {30, "0.0"}, {340, "B2"}, {1001, "ACAD"}, {1000, "wipe"},
       // A polyface mesh (64): the host keeps meshes as they are.
       {0, "POLYLINE"}, {5, "A2"}, {8, "PL"}, {66, "1"}, {10, "0.0"}, {20, "0.0"}, {30, "0.0"}, {70, "64"},
       {0, "VERTEX"}, {5, "A3"}, {8, "PL"}, {10, "1.0"}, {20, "1.0"}, {30, "0.0"}, {70, "192"},
       {0, "VERTEX"}, {5, "A4"}, {8, "PL"}, {10, "2.0"}, {20, "0.0"}, {30, "0.0"}, {70, "192"},
       {0, "SEQEND"}, {5, "A5"}, {8, "PL"},
       {0, "LINE"}, {5, "A6"}, {102, "{ACAD_XDICTIONARY"}, {360, "B3"}, {102, "}"}, {8, "0"},
       {10, "0.0"}, {20, "0.0"}, {30, "0.0"}, {11, "3.0"}, {21, "4.0"}, {31, "0.0"}},
      {{0, "DICTIONARY"}, {5, "B1"}, {330, "0"}, {100, "AcDbDictionary"}, {3, "ACAD_GROUP"}, {350, "B4"},
       {0, "IMAGEDEF"}, {5, "B2"}, {102, "{ACAD_REACTORS"}, {330, "A1"}, {102, "}"}, {330, "B1"},
       {100, "AcDbRasterImageDef"}, {90, "0"}, {1, "底图.png"}, {10, "640.0"}, {20, "480.0"}, {280, "1"},
       {0, "DICTIONARY"}, {5, "B3"}, {330, "A6"}, {100, "AcDbDictionary"}, {280, "1"}, {3, "NOTE"}, {360, "B5"},
       {0, "DICTIONARY"}, {5, "B4"}, {330, "B1"}, {100, "AcDbDictionary"},
       {0, "XRECORD"}, {5, "B5"}, {330, "B3"}, {100, "AcDbXrecord"}, {1, "备注"}, {40, "2.5"}}));
  writeText("in.dxf", text);
  ASSERT_EQ(db->readDwgFile(wpath("in.dxf").c_str()), Acad::eOk);

  // The kept entities are in model space with the modelled one, in order.
  std::vector<std::wstring> types;
  for (AcDbObjectId id : modelSpace()) types.push_back(kelhost::db::Peek(id)->isA()->dxfName());
  EXPECT_EQ(types, (std::vector<std::wstring>{L"WIPEOUT", L"POLYLINE", L"LINE"}));
  // The line's extension dictionary holds the xrecord.
  EXPECT_EQ(eval(L"(cdr (assoc 1 (dictsearch (cdr (assoc 360 (entget (handent \"A6\")))) \"NOTE\")))"),
            L"\"备注\"");
  // A kept entity still shows its groups, references as names.
  EXPECT_EQ(eval(L"(cdr (assoc 340 (entget (handent \"A1\"))))"), eval(L"(handent \"B2\")"));

  ASSERT_EQ(db->saveAs(wpath("out.dxf").c_str()), Acad::eOk);
  const std::string out = readText("out.dxf");
  EXPECT_NE(ItemText(out, "A1").find(" 90\n0\n 10\n1.5\n 20\n2.5\n 30\n0.0\n340\nB2\n1001\nACAD\n1000\nwipe"),
            std::string::npos)
      << ItemText(out, "A1");
  EXPECT_NE(ItemText(out, "B2").find("102\n{ACAD_REACTORS\n330\nA1\n102\n}\n330\nB1\n"), std::string::npos);
  EXPECT_NE(ItemText(out, "B2").find("  1\n底图.png\n"), std::string::npos);
  for (const char* h : {"A2", "A3", "A4", "A5"}) EXPECT_NE(ItemText(out, h), "") << h;
  EXPECT_NE(out.find("VERTEX\n  5\nA4\n  8\nPL\n 10\n2.0\n"), std::string::npos);
  EXPECT_NE(ItemText(out, "A6").find("102\n{ACAD_XDICTIONARY\n360\nB3\n102\n}\n"), std::string::npos);

  // And the written file reads again to the same file.
  ASSERT_EQ(db->readDwgFile(wpath("out.dxf").c_str()), Acad::eOk);
  ASSERT_EQ(db->saveAs(wpath("again.dxf").c_str()), Acad::eOk);
  EXPECT_EQ(readText("again.dxf"), out);
}

TEST_F(DxfFileTest, OlderFilesWithoutTablesOrHandlesGetWhatADrawingNeeds) {
  // An R12 file with only entities, in the Windows code page.
  writeText("r12.dxf", Dxf({{0, "SECTION"}, {2, "HEADER"}, {9, "$ACADVER"}, {1, "AC1009"}, {0, "ENDSEC"},
                            {0, "SECTION"}, {2, "ENTITIES"},
                            {0, "LINE"}, {8, "WALLS"}, {10, "1"}, {20, "2"}, {30, "0"}, {11, "3"}, {21, "4"}, {31, "0"},
                            {0, "TEXT"}, {8, "0"}, {10, "0"}, {20, "0"}, {30, "0"}, {40, "2.5"}, {1, "Caf\xE9"},
                            {0, "ENDSEC"}, {0, "EOF"}}));
  ASSERT_EQ(db->readDwgFile(wpath("r12.dxf").c_str()), Acad::eOk);
  ASSERT_EQ(modelSpace().size(), 2u);
  EXPECT_EQ(eval(L"(cdr (assoc 8 (entget (entnext))))"), L"\"WALLS\"");
  EXPECT_NE(eval(L"(tblsearch \"LAYER\" \"WALLS\")"), L"nil");
  EXPECT_EQ(eval(L"(cdr (assoc 1 (entget (entlast))))"), L"\"Café\"");
  EXPECT_NE(eval(L"(tblsearch \"LTYPE\" \"CONTINUOUS\")"), L"nil");
  EXPECT_NE(eval(L"(dictsearch (namedobjdict) \"ACAD_GROUP\")"), L"nil");
  // Every object got a handle.
  EXPECT_NE(eval(L"(cdr (assoc 5 (entget (entnext))))"), L"nil");
}
