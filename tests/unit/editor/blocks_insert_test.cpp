// INSERT: a drawing file found on the support path becomes a block with
// its nested blocks; the point, scale and rotation prompts with their
// options; the attribute prompts per ATTREQ; INSNAME; redefinition; and
// the messages when there is nothing to insert.
#include <cmath>

#include "blocks_drawing.h"
#include "blocks_fixture.h"
#include "kelhost/drawing_files.h"

namespace {

constexpr double kPi = 3.14159265358979323846;

class BlocksInsertTest : public BlocksTest {
 protected:
  // door.dxf in the test's directory: the family drawing plus two
  // attribute definitions in its model space, ROOM (prompt "Room name",
  // default R1, layer 0) and AREA (no prompt, no default, layer WALL).
  void writeDoor(const std::string& name = "door.dxf") {
    Source s = MakeSource();
    AcDbDatabase* d = s.db.get();
    auto* room = new AcDbAttributeDefinition(AcGePoint3d(2, 0, 0), L"R1", L"ROOM", L"Room name");
    room->setHeight(2.5);
    room->setDatabaseDefaults(d);
    append(d->modelSpaceId(), room);
    auto* area = new AcDbAttributeDefinition(AcGePoint3d(2, -4, 0), L"", L"AREA", L"");
    area->setHeight(2.5);
    area->setDatabaseDefaults(d);
    area->setLayer(s.wall);
    append(d->modelSpaceId(), area);
    std::wstring error;
    ASSERT_TRUE(kelhost::WriteDrawingFile(d, file(name), error)) << kelhost::ToUtf8(error);
  }
  void useDirectoryAsSupportPath() { setenv("ACAD", dir.c_str(), 1); }
  // The model space's last entity as a reference.
  AcDbBlockReference* lastReference() {
    const std::vector<AcDbEntity*> all = entities(db->modelSpaceId());
    return all.empty() ? nullptr : AcDbBlockReference::cast(all.back());
  }
  std::wstring insname() { return eval(L"(getvar \"INSNAME\")"); }
};

TEST_F(BlocksInsertTest, DrawingOnTheSupportPathBecomesABlockWithItsAttributes) {
  writeDoor();
  useDirectoryAsSupportPath();
  command({L"LAYER", L"M", L"PP-COM", L""});
  out.clear();
  ASSERT_EQ(command({L"INSERT", L"door", L"1,2", L"2", L"", L"90", L"", L"12 m2"}), RTNORM);
  EXPECT_EQ(out,
            L"\nINSERT"
            L"\nEnter block name or [?]: door"
            L"\nUnits: Millimeters   Conversion:    1.0000"
            L"\nSpecify insertion point or [Basepoint/Scale/X/Y/Z/Rotate]: 1,2"
            L"\nEnter X scale factor, specify opposite corner, or [Corner/XYZ] <1>: 2"
            L"\nEnter Y scale factor <use X scale factor>: "
            L"\nSpecify rotation angle <0>: 90"
            L"\nEnter attribute values"
            L"\nRoom name <R1>: "
            L"\nAREA: 12 m2");
  AcDbBlockReference* ref = lastReference();
  ASSERT_NE(ref, nullptr);
  const AcDbObjectId door = block(db.get(), L"door");
  ASSERT_EQ(ref->blockTableRecord(), door);
  EXPECT_TRUE(ref->position().isEqualTo(AcGePoint3d(1, 2, 0)));
  EXPECT_TRUE(ref->scaleFactors().isEqualTo(AcGeVector3d(2, 2, 2)));
  EXPECT_NEAR(ref->rotation(), kPi / 2, 1e-12);
  EXPECT_TRUE(peek<AcDbBlockTableRecord>(door)->origin().isEqualTo(AcGePoint3d(10, 20, 0)));
  // The nested block came along, and the file's layers.
  ASSERT_FALSE(block(db.get(), L"INNER").isNull());
  EXPECT_EQ(entities(block(db.get(), L"INNER")).size(), 2u);
  EXPECT_FALSE(layer(db.get(), L"WALL").isNull());

  ASSERT_EQ(ref->attributeIds().size(), 2u);
  auto* room = peek<AcDbAttribute>(ref->attributeIds()[0]);
  auto* area = peek<AcDbAttribute>(ref->attributeIds()[1]);
  EXPECT_STREQ(room->tagConst(), L"ROOM");
  EXPECT_STREQ(room->textStringConst(), L"R1");
  EXPECT_STREQ(area->textStringConst(), L"12 m2");
  // A definition on layer 0 gives an attribute on the reference's layer.
  EXPECT_EQ(nameOf(room->layerId()), L"PP-COM");
  EXPECT_EQ(nameOf(area->layerId()), L"WALL");
  // Placed by the reference: (2,0) from the base (10,20), scaled 2, turned 90 degrees.
  EXPECT_TRUE(room->position().isEqualTo(AcGePoint3d(1 + 40, 2 - 16, 0)))
      << room->position().x << "," << room->position().y;
  EXPECT_EQ(insname(), L"\"door\"");
}

TEST_F(BlocksInsertTest, AttreqZeroTakesDefaultsAndInsnameIsTheNextDefault) {
  writeDoor();
  useDirectoryAsSupportPath();
  eval(L"(setvar \"ATTREQ\" 0)");
  ASSERT_EQ(command({L"INSERT", L"door", L"0,0", L"", L"", L""}), RTNORM);
  EXPECT_FALSE(said(L"Enter attribute values"));
  out.clear();
  ASSERT_EQ(command({L"INSERT", L"", L"5,5", L"", L"", L""}), RTNORM);
  EXPECT_TRUE(said(L"\nEnter block name or [?] <door>: "));
  AcDbBlockReference* ref = lastReference();
  ASSERT_NE(ref, nullptr);
  EXPECT_TRUE(ref->position().isEqualTo(AcGePoint3d(5, 5, 0)));
  ASSERT_EQ(ref->attributeIds().size(), 2u);
  EXPECT_STREQ(peek<AcDbAttribute>(ref->attributeIds()[0])->textStringConst(), L"R1");
  EXPECT_EQ(entities(block(db.get(), L"door")).size(), 6u);
}

TEST_F(BlocksInsertTest, OptionsPresetScaleAndRotationOrTakeACorner) {
  writeDoor();
  eval(L"(setvar \"ATTREQ\" 0)");
  const std::wstring path = file("door.dxf");
  ASSERT_EQ(command({L"INSERT", path, L"S", L"3", L"R", L"45", L"0,0"}), RTNORM);
  EXPECT_TRUE(lastReference()->scaleFactors().isEqualTo(AcGeVector3d(3, 3, 3)));
  EXPECT_NEAR(lastReference()->rotation(), kPi / 4, 1e-12);

  ASSERT_EQ(command({L"INSERT", L"door", L"1,1", L"C", L"5,3", L"0"}), RTNORM);
  EXPECT_TRUE(lastReference()->scaleFactors().isEqualTo(AcGeVector3d(4, 2, 4)));
  // Its attributes follow: height by the Y scale, width by X over Y.
  auto* room = peek<AcDbAttribute>(lastReference()->attributeIds()[0]);
  EXPECT_DOUBLE_EQ(room->height(), 5.0);
  EXPECT_DOUBLE_EQ(room->widthFactor(), 2.0);
  EXPECT_TRUE(room->position().isEqualTo(AcGePoint3d(1 + 4 * (2 - 10), 1 + 2 * (0 - 20), 0)));
  ASSERT_EQ(command({L"INSERT", L"door", L"1,1", L"XYZ", L"2", L"-3", L"", L""}), RTNORM);
  EXPECT_TRUE(lastReference()->scaleFactors().isEqualTo(AcGeVector3d(2, -3, 2)));
  // A zero scale is refused and asked again.
  ASSERT_EQ(command({L"INSERT", L"door", L"1,1", L"0", L"7", L"", L""}), RTNORM);
  EXPECT_TRUE(said(L"\nValue must be nonzero."));
  EXPECT_TRUE(lastReference()->scaleFactors().isEqualTo(AcGeVector3d(7, 7, 7)));

  // Basepoint: a point of the block's own lands on the insertion point.
  ASSERT_EQ(command({L"INSERT", L"door", L"B", L"12,20", L"100,100", L"", L"", L""}), RTNORM);
  EXPECT_TRUE(lastReference()->position().isEqualTo(AcGePoint3d(98, 100, 0)));

  // "*name": the block's entities placed one by one.
  const size_t before = entities(db->modelSpaceId()).size();
  ASSERT_EQ(command({L"INSERT", L"*door", L"0,0", L"", L""}), RTNORM);
  const std::vector<AcDbEntity*> after = entities(db->modelSpaceId());
  ASSERT_EQ(after.size(), before + 6);
  const AcDbObjectId door = block(db.get(), L"door");
  for (size_t i = before; i < after.size(); ++i)
    if (auto* ref = AcDbBlockReference::cast(after[i])) {
      EXPECT_NE(ref->blockTableRecord(), door);
    }
}

TEST_F(BlocksInsertTest, RedefinitionAsksAndReferencesShowTheNewBlock) {
  writeDoor();
  useDirectoryAsSupportPath();
  eval(L"(setvar \"ATTREQ\" 0)");
  ASSERT_EQ(command({L"INSERT", L"door", L"0,0", L"", L"", L""}), RTNORM);
  const AcDbObjectId door = block(db.get(), L"door");
  AcDbBlockReference* first = lastReference();

  // The file changes: one circle.
  AcDbDatabase other;
  append(other.modelSpaceId(), new AcDbCircle(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 1.0));
  std::wstring error;
  ASSERT_TRUE(kelhost::WriteDrawingFile(&other, file("door.dxf"), error));

  // A bare name uses the drawing's block; "=" asks, and No keeps it.
  ASSERT_EQ(command({L"INSERT", L"door=", L"N", L"0,0", L"", L"", L""}), RTNORM);
  EXPECT_TRUE(said(L"\nBlock \"door\" already exists. Redefine it? [Yes/No] <N>: N"));
  EXPECT_EQ(entities(door).size(), 6u);
  ASSERT_EQ(command({L"INSERT", L"door=door", L"Y", L"0,0", L"", L"", L""}), RTNORM);
  EXPECT_TRUE(said(L"\nBlock door redefined"));
  EXPECT_EQ(block(db.get(), L"door"), door);
  ASSERT_EQ(entities(door).size(), 1u);
  EXPECT_NE(AcDbCircle::cast(entities(door)[0]), nullptr);
  EXPECT_EQ(first->blockTableRecord(), door);
}

TEST_F(BlocksInsertTest, NothingToInsertOrACancelMakesNoReference) {
  useDirectoryAsSupportPath();
  ASSERT_EQ(command({L"INSERT", L"nofile"}), RTNORM);
  EXPECT_TRUE(said(L"\n\"nofile.dwg\": Can't find file in search path:"));
  EXPECT_TRUE(said(L"\n  " + kelhost::FromUtf8(dir.string())));
  ASSERT_EQ(command({L"INSERT", L"a<b"}), RTNORM);
  EXPECT_TRUE(said(L"\nInvalid block name."));

  // A file that is no drawing.
  FILE* f = std::fopen((dir / "bad.dxf").c_str(), "w");
  std::fputs("0\nSECTION\n2\nENTITIES\n0\nLINE\n", f);
  std::fclose(f);
  ASSERT_EQ(command({L"INSERT", L"bad"}), RTNORM);
  EXPECT_TRUE(said(L"\nDrawing file is not valid."));
  EXPECT_TRUE(block(db.get(), L"bad").isNull());

  // Cancelled at the scale: the block stays defined, no reference is made.
  writeDoor();
  EXPECT_EQ(command({L"INSERT", L"door", L"0,0"}), RTCAN);
  EXPECT_FALSE(block(db.get(), L"door").isNull());
  EXPECT_TRUE(entities(db->modelSpaceId()).empty());
  EXPECT_EQ(insname(), L"\"\"");
}

TEST_F(BlocksInsertTest, UndoTakesBackTheBlockWithWhatItBroughtAndRedoBringsItAgain) {
  writeDoor();
  useDirectoryAsSupportPath();
  eval(L"(setvar \"ATTREQ\" 0)");
  ASSERT_EQ(command({L"INSERT", L"door", L"0,0", L"", L"", L""}), RTNORM);
  ASSERT_EQ(command({L"U"}), RTNORM);
  EXPECT_TRUE(block(db.get(), L"door").isNull());
  EXPECT_TRUE(block(db.get(), L"INNER").isNull());
  EXPECT_TRUE(layer(db.get(), L"WALL").isNull());
  EXPECT_TRUE(entities(db->modelSpaceId()).empty());
  ASSERT_EQ(command({L"REDO"}), RTNORM);
  ASSERT_NE(lastReference(), nullptr);
  EXPECT_EQ(lastReference()->blockTableRecord(), block(db.get(), L"door"));
  EXPECT_EQ(lastReference()->attributeIds().size(), 2u);
}

}  // namespace
