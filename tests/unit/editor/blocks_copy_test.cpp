// Copies between drawings (AcDbDatabase::insert and wblock): the records
// entities name come along and every reference lands in the receiving
// drawing; records it already has are kept (insert) or take the source's
// state (wblock); anonymous blocks are renamed; a failure halfway leaves
// the receiving drawing as it was.
#include "blocks_drawing.h"
#include "blocks_fixture.h"
#include "db/header_vars.h"

namespace {

// How many live records a table has.
size_t LiveRecords(AcDbObjectId tableId) {
  auto* table = kelhost::db::PeekAs<AcDbSymbolTable>(tableId);
  AcDbSymbolTableIterator* it = nullptr;
  table->newIterator(it);
  size_t n = 0;
  for (; !it->done(); it->step()) ++n;
  delete it;
  return n;
}

class BlocksCopyTest : public BlocksTest {
 protected:
  // Every record and object an entity refers to is the target's.
  void expectInTarget(const AcDbEntity* e) {
    ASSERT_NE(e, nullptr);
    EXPECT_EQ(e->database(), db.get());
    EXPECT_EQ(e->layerId().database(), db.get()) << e->isA()->name();
    EXPECT_EQ(e->linetypeId().isNull() ? db.get() : e->linetypeId().database(), db.get());
  }
};

TEST_F(BlocksCopyTest, InsertBringsNestedBlocksRecordsAndAttributesKeepingTheTargetsRecords) {
  Source src = MakeSource();
  AcDbObjectId wall;
  {
    auto* mine = new AcDbLayerTableRecord;
    mine->setColorIndex(5);
    wall = addRecord(db->layerTableId(), mine, L"wall");
  }
  const Adesk::UInt64 sourceSeed = src.db->handseed();
  AcDbObjectId outer;
  ASSERT_EQ(db->insert(outer, L"OUTER", src.db.get()), Acad::eOk);
  ASSERT_EQ(outer, block(db.get(), L"OUTER"));
  EXPECT_TRUE(peek<AcDbBlockTableRecord>(outer)->origin().isEqualTo(AcGePoint3d(10, 20, 0)));
  EXPECT_EQ(static_cast<Adesk::UInt64>(src.db->handseed()), sourceSeed) << "the source was changed";

  const std::vector<AcDbEntity*> parts = entities(outer);
  ASSERT_EQ(parts.size(), 4u);
  for (const AcDbEntity* e : parts) expectInTarget(e);
  // The target's own WALL stays as it was; DASHED comes with its dashes.
  EXPECT_EQ(parts[2]->layerId(), wall);
  EXPECT_EQ(peek<AcDbLayerTableRecord>(wall)->colorIndex(), 5);
  auto* dashed = peek<AcDbLinetypeTableRecord>(parts[2]->linetypeId());
  ASSERT_NE(dashed, nullptr);
  EXPECT_EQ(nameOf(dashed->objectId()), L"DASHED");
  EXPECT_EQ(dashed->numDashes(), 2);
  EXPECT_DOUBLE_EQ(dashed->dashLengthAt(1), -2.5);
  // The xdata's application is registered in the target.
  EXPECT_FALSE(record<AcDbRegAppTable>(db.get(), db->regAppTableId(), L"KELAPP").isNull());
  resbuf* xdata = parts[2]->xData(L"KELAPP");
  ASSERT_NE(xdata, nullptr);
  EXPECT_STREQ(xdata->rbnext->resval.rstring, L"mark");
  acutRelRb(xdata);

  auto* text = AcDbText::cast(parts[0]);
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(nameOf(text->textStyle()), L"ROMANS");
  EXPECT_EQ(text->textStyle().database(), db.get());

  // The nested block came as a block of the target, with its attribute.
  auto* ref = AcDbBlockReference::cast(parts[1]);
  ASSERT_NE(ref, nullptr);
  EXPECT_EQ(ref->blockTableRecord(), block(db.get(), L"INNER"));
  const std::vector<AcDbEntity*> inner = entities(ref->blockTableRecord());
  ASSERT_EQ(inner.size(), 2u);
  EXPECT_EQ(inner[0]->layerId(), wall);
  expectInTarget(inner[1]);
  ASSERT_EQ(ref->attributeIds().size(), 1u);
  auto* attribute = peek<AcDbAttribute>(ref->attributeIds()[0]);
  ASSERT_NE(attribute, nullptr);
  EXPECT_STREQ(attribute->textStringConst(), L"D-7");
  EXPECT_STREQ(attribute->tagConst(), L"NO");
  expectInTarget(attribute);

  auto* dim = AcDbDimension::cast(parts[3]);
  ASSERT_NE(dim, nullptr);
  EXPECT_EQ(dim->dimBlockId().database(), db.get());
  EXPECT_FALSE(entities(dim->dimBlockId()).empty());
  // Its style came along, pointing at the copied text style.
  auto* family = peek<AcDbDimStyleTableRecord>(dim->dimensionStyle());
  ASSERT_NE(family, nullptr);
  EXPECT_EQ(family->database(), db.get());
  EXPECT_EQ(nameOf(family->objectId()), L"FAMILY");
  EXPECT_EQ(family->dimtxsty(), text->textStyle());
  EXPECT_EQ(family->dimtxt(), 3.5);
}

TEST_F(BlocksCopyTest, AnonymousBlocksGetNamesOfTheirOwn) {
  append(db->modelSpaceId(),
         new AcDbRotatedDimension(0.0, AcGePoint3d(0, 0, 0), AcGePoint3d(3, 0, 0), AcGePoint3d(1, 2, 0)));
  ASSERT_FALSE(block(db.get(), L"*D1").isNull());
  Source src = MakeSource();
  ASSERT_EQ(nameOf(peek<AcDbDimension>(src.dim)->dimBlockId()), L"*D1");
  const size_t before = entities(block(db.get(), L"*D1")).size();
  AcDbObjectId outer;
  ASSERT_EQ(db->insert(outer, L"OUTER", src.db.get()), Acad::eOk);
  auto* dim = AcDbDimension::cast(entities(outer)[3]);
  EXPECT_EQ(nameOf(dim->dimBlockId()), L"*D2");
  EXPECT_EQ(entities(block(db.get(), L"*D1")).size(), before) << "the target's own *D1 was touched";
}

TEST_F(BlocksCopyTest, FailureHalfwayLeavesTheTargetAsItWas) {
  Source src = MakeSource();
  const size_t styles = LiveRecords(db->textStyleTableId()), blocks = LiveRecords(db->blockTableId());
  // The layer table held open for read: WALL cannot be added, after
  // ROMANS and INNER were.
  AcDbLayerTable* layers = nullptr;
  ASSERT_EQ(db->getLayerTable(layers, AcDb::kForRead), Acad::eOk);
  AcDbObjectId outer;
  EXPECT_EQ(db->insert(outer, L"OUTER", src.db.get()), Acad::eWasOpenForRead);
  layers->close();
  EXPECT_TRUE(outer.isNull());
  EXPECT_EQ(LiveRecords(db->textStyleTableId()), styles);
  EXPECT_EQ(LiveRecords(db->blockTableId()), blocks);
  EXPECT_TRUE(block(db.get(), L"INNER").isNull());
  EXPECT_TRUE(layer(db.get(), L"WALL").isNull());
  EXPECT_TRUE(entities(db->modelSpaceId()).empty());

  // Then it works, and a second insert redefines the block in place.
  ASSERT_EQ(db->insert(outer, L"OUTER", src.db.get()), Acad::eOk);
  const AcDbObjectId user = append(db->modelSpaceId(), new AcDbBlockReference(AcGePoint3d::kOrigin, outer));
  const AcDbObjectId firstLine = entities(outer)[2]->objectId();
  AcDbObjectId again;
  ASSERT_EQ(db->insert(again, L"outer", src.db.get()), Acad::eOk);
  EXPECT_EQ(again, outer);
  EXPECT_TRUE(firstLine.isErased());
  EXPECT_EQ(entities(outer).size(), 4u);
  EXPECT_EQ(peek<AcDbBlockReference>(user)->blockTableRecord(), outer);
}

TEST_F(BlocksCopyTest, BadSourcesAndNamesAreRefused) {
  Source src = MakeSource();
  AcDbObjectId id;
  EXPECT_EQ(db->insert(id, L"INNER", src.db.get()), Acad::eSelfReference);
  EXPECT_EQ(db->insert(id, L"A<B", src.db.get()), Acad::eInvalidInput);
  EXPECT_EQ(db->insert(id, L"X", db.get()), Acad::eInvalidInput);
  AcDbDatabase unread(false, true);
  EXPECT_EQ(db->insert(id, L"X", &unread), Acad::eInvalidInput);
  EXPECT_EQ(db->insert(id, L"*Model_Space", src.db.get()), Acad::eInvalidInput);
  EXPECT_TRUE(block(db.get(), L"INNER").isNull());
  EXPECT_TRUE(layer(db.get(), L"WALL").isNull());

  // A database made without a drawing receives one first.
  AcDbDatabase empty(false, true);
  ASSERT_EQ(empty.insert(id, L"OUTER", src.db.get()), Acad::eOk);
  EXPECT_EQ(entities(id).size(), 4u);
  EXPECT_FALSE(layer(&empty, L"WALL").isNull());
  EXPECT_FALSE(empty.layerZero().isNull());
}

TEST_F(BlocksCopyTest, WblockWritesWhatTheObjectsUseWithTheSourcesStandardRecords) {
  Source src = MakeSource();
  AcDbLayerTableRecord* zero = nullptr;
  ASSERT_EQ(acdbOpenObject(zero, src.db->layerZero(), AcDb::kForWrite), Acad::eOk);
  zero->setColorIndex(3);
  zero->close();
  AcDbObjectIdArray ids;
  ids.append(src.ref);
  ids.append(src.line);
  AcDbDatabase* out = nullptr;
  ASSERT_EQ(src.db->wblock(out, ids, AcGePoint3d(4, 5, 6)), Acad::eOk);
  std::unique_ptr<AcDbDatabase> written(out);
  const std::vector<AcDbEntity*> parts = entities(written->modelSpaceId());
  ASSERT_EQ(parts.size(), 2u);
  EXPECT_EQ(parts[0]->database(), written.get());
  EXPECT_FALSE(block(written.get(), L"INNER").isNull());
  EXPECT_EQ(nameOf(parts[1]->layerId()), L"WALL");
  EXPECT_EQ(peek<AcDbLayerTableRecord>(written->layerZero())->colorIndex(), 3);
  EXPECT_TRUE(record<AcDbTextStyleTable>(written.get(), written->textStyleTableId(), L"ROMANS").isNull())
      << "a style nothing written uses";
  const kelhost::db::HeaderValue base =
      kelhost::db::GetHeaderVar(written->state(), *kelhost::db::FindHeaderVarDef(L"INSBASE"));
  EXPECT_EQ(base.point[0], 4);
  EXPECT_EQ(base.point[2], 6);
  EXPECT_FALSE(src.line.isErased()) << "wblock itself erases nothing";

  // A text style that only a dimension style names comes along with it.
  AcDbObjectIdArray dims;
  dims.append(src.dim);
  ASSERT_EQ(src.db->wblock(out, dims, AcGePoint3d::kOrigin), Acad::eOk);
  written.reset(out);
  auto* family = peek<AcDbDimStyleTableRecord>(peek<AcDbDimension>(entities(written->modelSpaceId())[0]->objectId())->dimensionStyle());
  ASSERT_NE(family, nullptr);
  EXPECT_EQ(family->database(), written.get());
  EXPECT_EQ(nameOf(family->dimtxsty()), L"ROMANS");
  EXPECT_EQ(family->dimtxsty().database(), written.get());

  // A block: its entities in model space, based at its origin.
  ASSERT_EQ(src.db->wblock(out, src.inner), Acad::eOk);
  written.reset(out);
  EXPECT_EQ(entities(written->modelSpaceId()).size(), 2u);
  EXPECT_EQ(kelhost::db::GetHeaderVar(written->state(), *kelhost::db::FindHeaderVarDef(L"INSBASE")).point[0], 1);

  // The whole drawing: both spaces, the header and the current layer.
  src.db->setClayer(src.wall);
  src.db->setLtscale(2.5);
  ASSERT_EQ(src.db->wblock(out), Acad::eOk);
  written.reset(out);
  EXPECT_EQ(entities(written->modelSpaceId()).size(), 4u);
  EXPECT_EQ(nameOf(written->clayer()), L"WALL");
  EXPECT_EQ(written->ltscale(), 2.5);

  // Objects of another drawing, and objects that are not entities.
  AcDbObjectIdArray foreign;
  foreign.append(db->layerZero());
  EXPECT_EQ(src.db->wblock(out, foreign, AcGePoint3d::kOrigin), Acad::eWrongDatabase);
  EXPECT_EQ(out, nullptr);
  AcDbObjectIdArray record;
  record.append(src.wall);
  EXPECT_EQ(src.db->wblock(out, record, AcGePoint3d::kOrigin), Acad::eNotAnEntity);
}

}  // namespace
