// A block's flags, description, path, units and layout come from its
// BLOCK_RECORD and BLOCK groups, show through the block record's API and
// are written back as they were.
#include "ads/entity_make.h"
#include "dxf_sections.h"

namespace {

Groups Record(const char* handle, const char* name, const Groups& rest) {
  Groups g = {{0, "BLOCK_RECORD"}, {5, handle}, {330, "1"}, {100, "AcDbSymbolTableRecord"},
              {100, "AcDbBlockTableRecord"}, {2, name}};
  g.insert(g.end(), rest.begin(), rest.end());
  return g;
}

Groups Block(const char* handle, const char* owner, const char* name, const Groups& rest) {
  Groups g = {{0, "BLOCK"}, {5, handle}, {330, owner}, {100, "AcDbEntity"}, {8, "0"}, {100, "AcDbBlockBegin"},
              {2, name}};
  g.insert(g.end(), rest.begin(), rest.end());
  return g;
}

Groups EndBlock(const char* handle, const char* owner) {
  return {{0, "ENDBLK"}, {5, handle}, {330, owner}, {100, "AcDbEntity"}, {8, "0"}, {100, "AcDbBlockEnd"}};
}

std::string BlocksDrawing() {
  Groups tables = {{0, "TABLE"}, {2, "BLOCK_RECORD"}, {5, "1"}, {330, "0"}, {100, "AcDbSymbolTable"}, {70, "3"}};
  for (const Groups& r : {Record("1F", "*Model_Space", {{340, "0"}, {70, "0"}, {280, "1"}, {281, "0"}}),
                          Record("30", "DOOR", {{340, "0"}, {70, "4"}, {280, "0"}, {281, "1"}, {310, "0A0B0C"}}),
                          Record("31", "*U7", {{340, "0"}, {70, "0"}, {280, "1"}, {281, "0"}}),
                          Record("32", "BASE", {{340, "0"}, {70, "6"}, {280, "1"}, {281, "0"}})})
    tables.insert(tables.end(), r.begin(), r.end());
  tables.push_back({0, "ENDTAB"});
  Groups blocks;
  for (const Groups& b :
       {Block("40", "1F", "*Model_Space", {{70, "0"}, {10, "0.0"}, {20, "0.0"}, {30, "0.0"}, {3, "*Model_Space"}, {1, ""}}),
        EndBlock("41", "1F"),
        Block("42", "30", "DOOR", {{70, "2"}, {10, "1.0"}, {20, "2.0"}, {30, "0.0"}, {3, "DOOR"}, {1, ""}, {4, "单扇门"}}),
        Groups{{0, "ATTDEF"}, {5, "43"}, {330, "30"}, {8, "0"}, {10, "0.0"}, {20, "0.0"}, {30, "0.0"}, {40, "1.0"},
               {1, ""}, {3, "Width"}, {2, "W"}, {70, "0"}},
        EndBlock("44", "30"),
        Block("45", "31", "*U7", {{70, "1"}, {10, "0.0"}, {20, "0.0"}, {30, "0.0"}, {3, "*U7"}, {1, ""}}),
        EndBlock("46", "31"),
        Block("47", "32", "BASE", {{70, "4"}, {10, "0.0"}, {20, "0.0"}, {30, "0.0"}, {3, "BASE"},
                                   {1, "C:\\图纸\\底图.dwg"}}),
        EndBlock("48", "32")})
    blocks.insert(blocks.end(), b.begin(), b.end());
  return DxfFile({Section("TABLES", tables), Section("BLOCKS", blocks), Section("ENTITIES", {}),
                  Section("OBJECTS", {})});
}

AcDbBlockTableRecord* BlockNamed(AcDbDatabase* db, const wchar_t* name) {
  auto* table = kelhost::db::PeekAs<AcDbBlockTable>(db->blockTableId());
  AcDbObjectId id;
  if (!table || table->getAt(name, id) != Acad::eOk) return nullptr;
  return kelhost::db::PeekAs<AcDbBlockTableRecord>(id);
}

}  // namespace

TEST_F(DxfFileTest, BlockRecordsReadTheirFlagsUnitsAndDescriptionAndWriteThemBack) {
  const std::string in = BlocksDrawing();
  writeText("in.dxf", in);
  ASSERT_EQ(db->readDwgFile(wpath("in.dxf").c_str()), Acad::eOk);
  AcDbBlockTableRecord* door = BlockNamed(db.get(), L"DOOR");
  AcDbBlockTableRecord* anonymous = BlockNamed(db.get(), L"*U7");
  AcDbBlockTableRecord* xref = BlockNamed(db.get(), L"BASE");
  ASSERT_TRUE(door && anonymous && xref);
  const ACHAR* text = nullptr;
  EXPECT_TRUE(door->hasAttributeDefinitions());
  EXPECT_FALSE(door->isAnonymous());
  EXPECT_EQ(door->comments(text), Acad::eOk);
  EXPECT_STREQ(text, L"单扇门");
  EXPECT_EQ(door->origin(), AcGePoint3d(1, 2, 0));
  EXPECT_EQ(door->blockInsertUnits(), AcDb::kUnitsMillimeters);
  EXPECT_FALSE(door->explodable());
  EXPECT_EQ(door->blockScaling(), AcDbBlockTableRecord::kUniform);
  EXPECT_TRUE(anonymous->isAnonymous());
  EXPECT_TRUE(xref->isFromExternalReference());
  EXPECT_FALSE(xref->isFromOverlayReference());
  EXPECT_EQ(xref->pathName(text), Acad::eOk);
  EXPECT_STREQ(text, L"C:\\图纸\\底图.dwg");
  EXPECT_EQ(xref->blockInsertUnits(), AcDb::kUnitsMeters);
  // tblsearch shows every flag and an external reference's path.
  EXPECT_EQ(eval(L"(cdr (assoc 70 (tblsearch \"BLOCK\" \"BASE\")))"), L"4");
  EXPECT_EQ(eval(L"(= (cdr (assoc 1 (tblsearch \"BLOCK\" \"BASE\"))) \"C:\\\\图纸\\\\底图.dwg\")"), L"T");
  EXPECT_EQ(eval(L"(assoc 1 (tblsearch \"BLOCK\" \"DOOR\"))"), L"nil");
  // The layouts' blocks are linked to their layouts once the file is read.
  EXPECT_TRUE(BlockNamed(db.get(), ACDB_MODEL_SPACE)->isLayout());
  EXPECT_FALSE(door->isLayout());

  ASSERT_EQ(db->saveAs(wpath("out.dxf").c_str()), Acad::eOk);
  const Groups before = ParseGroups(in), after = ParseGroups(readText("out.dxf"));
  for (const char* h : {"30", "31", "32", "42", "45", "47"}) EXPECT_EQ(ItemOf(after, h), ItemOf(before, h)) << h;
  // Model space now names its layout.
  EXPECT_NE(ValueOf(ItemOf(after, "1F"), 340), "0");
}

TEST_F(DxfFileTest, BlockRecordSettersCheckTheirInput) {
  AcDbBlockTable* table = nullptr;
  ASSERT_EQ(db->getBlockTable(table, AcDb::kForWrite), Acad::eOk);
  auto* block = new AcDbBlockTableRecord;
  block->setName(L"PART");
  AcDbObjectId blockId;
  ASSERT_EQ(table->add(blockId, block), Acad::eOk);
  table->close();
  EXPECT_EQ(block->setBlockInsertUnits(static_cast<AcDb::UnitsValue>(99)), Acad::eOutOfRange);
  EXPECT_EQ(block->setLayoutId(db->layerZero()), Acad::eInvalidInput);
  EXPECT_EQ(block->setComments(nullptr), Acad::eInvalidInput);
  EXPECT_EQ(block->setIsFromOverlayReference(true), Acad::eNotApplicable);  // not an external reference
  // A constant attribute definition asks nothing of a reference.
  const double origin[3] = {0, 0, 0};
  resbuf* list = acutBuildList(RTDXF0, L"ATTDEF", 10, origin, 40, 1.0, 1, L"A", 3, L"", 2, L"REV", 70, 2, RTNONE);
  std::unique_ptr<AcDbObject> made;
  std::vector<kelhost::dxf::GroupFiler::PendingRecord> pending;
  ASSERT_EQ(kelhost::ads::ReadEntityList(list, made, pending), RTNORM);
  acutRelRb(list);
  auto* constant = AcDbAttributeDefinition::cast(made.get());
  ASSERT_TRUE(constant && constant->isConstant());
  AcDbObjectId id;
  ASSERT_EQ(block->appendAcDbEntity(id, constant), Acad::eOk);
  made.release()->close();
  EXPECT_FALSE(block->hasAttributeDefinitions());
  auto* asked = new AcDbAttributeDefinition(AcGePoint3d::kOrigin, L"", L"NO", L"Number?");
  ASSERT_EQ(block->appendAcDbEntity(id, asked), Acad::eOk);
  asked->close();
  EXPECT_TRUE(block->hasAttributeDefinitions());
  block->close();
  // Closed, it can no longer be changed.
  EXPECT_EQ(kelhost::db::PeekAs<AcDbBlockTableRecord>(blockId)->setExplodable(false), Acad::eNotOpenForWrite);
}
