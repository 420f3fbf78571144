// WBLOCK: selected objects written as a drawing and read back the same,
// the block and whole-drawing forms, the question before a file is
// replaced, and a written drawing inserted into another drawing.
#include <fstream>
#include <sstream>

#include "blocks_drawing.h"
#include "blocks_fixture.h"
#include "dxf/codec.h"
#include "editor/erased_objects.h"
#include "kelhost/drawing_files.h"
#include "kelhost/resbuf_kinds.h"

namespace {

// An object's groups as text, without what names it or other objects
// (handles and ids differ between drawings; names of records do not).
std::vector<std::wstring> Groups(const AcDbObject* object) {
  std::vector<std::wstring> groups;
  resbuf* list = kelhost::dxf::ObjectToList(object, nullptr);
  for (const resbuf* rb = list; rb; rb = rb->rbnext) {
    const int code = rb->restype;
    if (code == -1 || code == 5 || code == 102 || (code >= 330 && code <= 369)) continue;
    std::wostringstream s;
    s << code << L" ";
    switch (kelhost::ResbufKind(code)) {
      case kelhost::RbKind::kString: s << rb->resval.rstring; break;
      case kelhost::RbKind::kReal: s << rb->resval.rreal; break;
      case kelhost::RbKind::kPoint: s << rb->resval.rpoint[0] << L"," << rb->resval.rpoint[1] << L"," << rb->resval.rpoint[2]; break;
      case kelhost::RbKind::kShort: s << rb->resval.rint; break;
      case kelhost::RbKind::kLong: s << rb->resval.rlong; break;
      default: break;
    }
    groups.push_back(s.str());
  }
  acutRelRb(list);
  return groups;
}

std::string Contents(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream s;
  s << in.rdbuf();
  return s.str();
}

class BlocksWblockTest : public BlocksTest {
 protected:
  void SetUp() override {
    BlocksTest::SetUp();
    src = BuildSource(db.get());
  }
  // The drawing a file holds, read as a drawing is read.
  std::unique_ptr<AcDbDatabase> readBack(const std::string& name) {
    auto read = std::make_unique<AcDbDatabase>(false, true);
    std::wstring error;
    EXPECT_TRUE(kelhost::ReadDrawingFile(read.get(), file(name), error)) << kelhost::ToUtf8(error);
    return read;
  }
  Source src;
};

TEST_F(BlocksWblockTest, SelectedObjectsRoundTripAndLeaveTheDrawing) {
  const std::vector<std::wstring> refGroups = Groups(peek<AcDbEntity>(src.ref));
  const std::vector<std::wstring> lineGroups = Groups(peek<AcDbEntity>(src.line));
  const std::vector<std::wstring> attributeGroups =
      Groups(peek<AcDbAttribute>(peek<AcDbBlockReference>(src.ref)->attributeIds()[0]));
  ASSERT_EQ(command({text(L"WBLOCK"), text(file("part")), text(L""), text(L"4,5"), entityToken(src.ref),
                     entityToken(src.line), text(L"")}),
            RTNORM);
  EXPECT_TRUE(said(L"\nEnter name of existing block or\n[= (block=output file)/* (whole drawing)] "
                   L"<define new drawing>: \nSpecify insertion base point: 4,5\nSelect objects: "));
  // A name without extension is a ".dwg", which the host writes as the ".dxf".
  ASSERT_TRUE(std::filesystem::exists(dir / "part.dxf"));
  EXPECT_FALSE(std::filesystem::exists(dir / "part.dwg"));
  // Taken away from the drawing, and remembered for OOPS.
  EXPECT_TRUE(src.ref.isErased());
  EXPECT_TRUE(src.line.isErased());
  EXPECT_FALSE(src.text.isErased());
  EXPECT_EQ(kelhost::editor::LastErased(), (std::vector<AcDbObjectId>{src.ref, src.line}));
  // U brings them back (the file stays).
  ASSERT_EQ(command({L"U"}), RTNORM);
  EXPECT_TRUE(said(L"U WBLOCK"));
  EXPECT_FALSE(src.ref.isErased());
  EXPECT_FALSE(src.line.isErased());

  std::unique_ptr<AcDbDatabase> read = readBack("part.dwg");
  const std::vector<AcDbEntity*> parts = entities(read->modelSpaceId());
  ASSERT_EQ(parts.size(), 2u);
  EXPECT_EQ(Groups(parts[0]), refGroups);
  EXPECT_EQ(Groups(parts[1]), lineGroups);
  auto* ref = AcDbBlockReference::cast(parts[0]);
  ASSERT_EQ(ref->attributeIds().size(), 1u);
  EXPECT_EQ(Groups(peek<AcDbAttribute>(ref->attributeIds()[0])), attributeGroups);
  // The records they use, as the drawing had them; none they do not use.
  EXPECT_EQ(Groups(peek<AcDbLayerTableRecord>(layer(read.get(), L"WALL"))),
            Groups(peek<AcDbLayerTableRecord>(src.wall)));
  const std::vector<AcDbEntity*> inner = entities(block(read.get(), L"INNER"));
  ASSERT_EQ(inner.size(), 2u);
  EXPECT_EQ(Groups(inner[0]), Groups(entities(src.inner)[0]));
  EXPECT_TRUE(record<AcDbTextStyleTable>(read.get(), read->textStyleTableId(), L"ROMANS").isNull());
  EXPECT_EQ(read->state().headerVars.at(L"INSBASE").point[0], 4);
  EXPECT_EQ(read->state().headerVars.at(L"INSBASE").point[1], 5);
}

TEST_F(BlocksWblockTest, BlocksWholeDrawingsAndTheReplaceQuestion) {
  ASSERT_EQ(command({L"WBLOCK", file("INNER.dwg"), L"="}), RTNORM);
  std::unique_ptr<AcDbDatabase> read = readBack("INNER.dxf");
  EXPECT_EQ(entities(read->modelSpaceId()).size(), 2u);
  EXPECT_FALSE(src.inner.isErased());

  // The file exists: No leaves it as it was, Yes replaces it.
  const std::string before = Contents(dir / "INNER.dxf");
  ASSERT_EQ(command({L"WBLOCK", file("INNER"), L"N"}), RTNORM);
  EXPECT_TRUE(said(L"\nA drawing with this name already exists.\nDo you want to replace it? <N> N"));
  EXPECT_EQ(Contents(dir / "INNER.dxf"), before);
  ASSERT_EQ(command({L"WBLOCK", file("INNER.dxf"), L"Y", L"*"}), RTNORM);
  read = readBack("INNER.dxf");
  EXPECT_EQ(entities(read->modelSpaceId()).size(), 4u);
  EXPECT_FALSE(record<AcDbTextStyleTable>(read.get(), read->textStyleTableId(), L"ROMANS").isNull());
  EXPECT_FALSE(src.line.isErased()) << "the whole drawing stays";

  ASSERT_EQ(command({L"WBLOCK", file("nope"), L"NOPE"}), RTNORM);
  EXPECT_TRUE(said(L"\nBlock NOPE not found."));
  EXPECT_FALSE(std::filesystem::exists(dir / "nope.dxf"));
  // A file that cannot be written.
  ASSERT_EQ(command({L"WBLOCK", file("no/such/dir/x"), L"*"}), RTNORM);
  EXPECT_TRUE(said(L"\nCannot write the file"));
}

TEST_F(BlocksWblockTest, WrittenDrawingInsertsIntoAnotherWithItsReferences) {
  ASSERT_EQ(command({text(L"WBLOCK"), text(file("part")), text(L""), text(L"0,0"), entityToken(src.ref),
                     entityToken(src.line), text(L"")}),
            RTNORM);
  // A new drawing: the part inserted by its ".dwg" name.
  auto other = std::make_unique<AcDbDatabase>();
  acdbHostApplicationServices()->setWorkingDatabase(other.get());
  eval(L"(setvar \"ATTREQ\" 0)");
  const int status = command({L"INSERT", file("part.dwg"), L"0,0", L"", L"", L""});
  acdbHostApplicationServices()->setWorkingDatabase(db.get());
  ASSERT_EQ(status, RTNORM);
  const AcDbObjectId part = block(other.get(), L"part");
  const std::vector<AcDbEntity*> parts = entities(part);
  ASSERT_EQ(parts.size(), 2u);
  // Every reference points inside the new drawing.
  for (const AcDbEntity* e : parts) {
    EXPECT_EQ(e->layerId().database(), other.get());
    EXPECT_EQ(e->linetypeId().database(), other.get());
  }
  EXPECT_EQ(AcDbBlockReference::cast(parts[0])->blockTableRecord(), block(other.get(), L"INNER"));
  EXPECT_EQ(nameOf(parts[1]->linetypeId()), L"DASHED");
  EXPECT_EQ(Groups(parts[1]), Groups(peek<AcDbEntity>(src.line)));
  other.reset();
}

}  // namespace
