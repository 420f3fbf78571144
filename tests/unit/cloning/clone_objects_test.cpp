// deepCloneObjects, wblockCloneObjects, the objects' own deepClone and
// wblockClone, and the id map: what comes along, how records whose names
// the receiving drawing has are treated, every reference landing in the
// receiving drawing, and a failure leaving that drawing as it was.
#include "../editor/blocks_drawing.h"
#include "db/audit.h"

namespace {

std::vector<AcDbIdPair> Pairs(const AcDbIdMapping& map) {
  std::vector<AcDbIdPair> pairs;
  AcDbIdMappingIter it(map);
  for (it.start(); !it.done(); it.next()) {
    AcDbIdPair p;
    EXPECT_TRUE(it.getMap(p));
    pairs.push_back(p);
  }
  return pairs;
}

AcDbIdPair PairOf(const AcDbIdMapping& map, AcDbObjectId key) {
  AcDbIdPair p(key, AcDbObjectId::kNull, false);
  EXPECT_TRUE(map.compute(p)) << "no pair";
  return p;
}

// How many live objects a drawing holds.
size_t LiveObjects(const AcDbDatabase* d) {
  size_t n = 0;
  for (const auto& stub : d->state().stubs) n += stub->erased ? 0 : 1;
  return n;
}

class CloneTest : public BlocksTest {
 protected:
  void SetUp() override {
    BlocksTest::SetUp();
    src = MakeSource();
    // A layer with a linetype of its own, and an extension dictionary on
    // the line holding an xrecord that points at the dimension.
    auto* hidden = new AcDbLayerTableRecord;
    hidden->setLinetypeObjectId(src.dashed);
    hiddenLayer = addRecord(src.db->layerTableId(), hidden, L"HIDDENL");
    AcDbEntity* line = nullptr;
    ASSERT_EQ(acdbOpenObject(line, src.line, AcDb::kForWrite), Acad::eOk);
    ASSERT_EQ(line->createExtensionDictionary(), Acad::eOk);
    const AcDbObjectId xdictId = line->extensionDictionary();
    line->close();
    AcDbDictionary* xdict = nullptr;
    ASSERT_EQ(acdbOpenObject(xdict, xdictId, AcDb::kForWrite), Acad::eOk);
    auto* note = new AcDbXrecord;
    ads_name dim;
    acdbGetAdsName(dim, src.dim);
    resbuf* data = acutBuildList(1, L"door", 340, dim, 0);
    ASSERT_EQ(note->setFromRbChain(*data), Acad::eOk);
    acutRelRb(data);
    ASSERT_EQ(xdict->setAt(L"NOTE", note, xrecord), Acad::eOk);
    note->close();
    xdict->close();
    // The receiving drawing's own WALL, blue.
    auto* mine = new AcDbLayerTableRecord;
    mine->setColorIndex(5);
    targetWall = addRecord(db->layerTableId(), mine, L"WALL");
  }
  void TearDown() override {
    src = Source();
    BlocksTest::TearDown();
  }
  void expectSound(const AcDbDatabase* d) {
    const std::vector<std::wstring> problems = kelhost::db::AuditReferences(d);
    for (const std::wstring& p : problems) ADD_FAILURE() << kelhost::ToUtf8(p);
  }
  AcDbObjectIdArray modelSpace() const {
    AcDbObjectIdArray ids;
    for (AcDbObjectId id : {src.text, src.ref, src.line, src.dim}) ids.append(id);
    return ids;
  }

  Source src;
  AcDbObjectId hiddenLayer, xrecord, targetWall;
};

TEST_F(CloneTest, WblockCloneObjectsBringsWhatTheEntitiesNameAndTranslatesEveryReference) {
  AcDbIdMapping map;
  AcDbObjectIdArray ids = modelSpace();
  AcDbObjectId owner = db->modelSpaceId();
  ASSERT_EQ(src.db->wblockCloneObjects(ids, owner, map, AcDb::kDrcIgnore), Acad::eOk);
  AcDbDatabase* d = nullptr;
  map.destDb(d);
  EXPECT_EQ(d, db.get());
  map.origDb(d);
  EXPECT_EQ(d, src.db.get());
  EXPECT_EQ(map.deepCloneContext(), AcDb::kDcWblkObjects);
  EXPECT_EQ(map.duplicateRecordCloning(), AcDb::kDrcIgnore);

  // The primaries are the four entities, cloned into model space in order.
  std::vector<AcDbObjectId> primaries;
  for (const AcDbIdPair& p : Pairs(map)) {
    EXPECT_EQ(p.value().database(), db.get());
    if (p.isPrimary()) primaries.push_back(p.key());
  }
  EXPECT_EQ(primaries, (std::vector<AcDbObjectId>{src.text, src.ref, src.line, src.dim}));
  const std::vector<AcDbEntity*> placed = entities(db->modelSpaceId());
  ASSERT_EQ(placed.size(), 4u);
  EXPECT_EQ(placed[2]->objectId(), PairOf(map, src.line).value());

  // WALL is the receiving drawing's (kept, not cloned); DASHED, ROMANS,
  // FAMILY and INNER came along, and so did the dimension's block.
  const AcDbIdPair wall = PairOf(map, src.wall);
  EXPECT_EQ(wall.value(), targetWall);
  EXPECT_FALSE(wall.isCloned());
  EXPECT_EQ(peek<AcDbLayerTableRecord>(targetWall)->colorIndex(), 5);
  EXPECT_EQ(placed[2]->layerId(), targetWall);
  EXPECT_EQ(nameOf(placed[2]->linetypeId()), L"DASHED");
  auto* family = peek<AcDbDimStyleTableRecord>(PairOf(map, src.family).value());
  ASSERT_NE(family, nullptr);
  EXPECT_EQ(family->dimtxsty(), PairOf(map, src.romans).value());
  const ACHAR* font = nullptr;
  peek<AcDbTextStyleTableRecord>(family->dimtxsty())->fileName(font);
  EXPECT_EQ(std::wstring(font), L"romans.shx");
  auto* dim = AcDbDimension::cast(placed[3]);
  ASSERT_NE(dim, nullptr);
  EXPECT_EQ(dim->dimensionStyle(), family->objectId());
  EXPECT_EQ(dim->dimBlockId().database(), db.get());
  EXPECT_NE(nameOf(dim->dimBlockId()), L"");
  const AcDbObjectId inner = block(db.get(), L"INNER");
  ASSERT_FALSE(inner.isNull());
  EXPECT_EQ(entities(inner).size(), 2u);
  EXPECT_EQ(entities(inner)[0]->layerId(), targetWall);

  // The line's extension dictionary came with it, its xrecord pointing at
  // the dimension's clone.
  auto* xdict = peek<AcDbDictionary>(placed[2]->extensionDictionary());
  ASSERT_NE(xdict, nullptr);
  EXPECT_EQ(xdict->ownerId(), placed[2]->objectId());
  AcDbObjectId note;
  ASSERT_EQ(xdict->getAt(L"NOTE", note), Acad::eOk);
  EXPECT_EQ(note, PairOf(map, xrecord).value());
  resbuf* data = nullptr;
  peek<AcDbXrecord>(note)->rbChain(&data);
  ASSERT_NE(data, nullptr);
  ASSERT_NE(data->rbnext, nullptr);
  AcDbObjectId pointed;
  pointed.setFromOldId(data->rbnext->resval.rlname[0]);
  EXPECT_EQ(pointed, dim->objectId());
  acutRelRb(data);
  expectSound(db.get());
  expectSound(src.db.get());
}

TEST_F(CloneTest, EveryDuplicateRecordModeTreatsAClashingLayerAsThePlatformDocuments) {
  // The source read from a file, so that the xref form has a drawing name.
  ASSERT_EQ(src.db->saveAs(file("tmpl.dxf").c_str()), Acad::eOk);
  auto tmpl = std::make_unique<AcDbDatabase>(false, false);
  ASSERT_EQ(tmpl->readDwgFile(file("tmpl.dwt").c_str(), _SH_DENYWR, false, nullptr), Acad::eOk);
  const AcDbObjectId wall = layer(tmpl.get(), L"WALL"), zero = tmpl->layerZero();
  const AcDbObjectId hidden = layer(tmpl.get(), L"HIDDENL");
  auto clone = [&](AcDbObjectId what, AcDb::DuplicateRecordCloning drc) {
    AcDbIdMapping map;
    AcDbObjectIdArray ids;
    ids.append(what);
    AcDbObjectId owner = db->layerTableId();
    EXPECT_EQ(tmpl->wblockCloneObjects(ids, owner, map, drc), Acad::eOk);
    AcDbIdPair p = PairOf(map, what);
    EXPECT_TRUE(p.isPrimary());
    return p;
  };

  AcDbIdPair p = clone(wall, AcDb::kDrcIgnore);
  EXPECT_EQ(p.value(), targetWall);
  EXPECT_FALSE(p.isCloned());
  EXPECT_EQ(peek<AcDbLayerTableRecord>(targetWall)->colorIndex(), 5);

  p = clone(wall, AcDb::kDrcMangleName);
  EXPECT_TRUE(p.isCloned());
  EXPECT_EQ(nameOf(p.value()), L"$0$WALL");
  EXPECT_EQ(nameOf(clone(wall, AcDb::kDrcMangleName).value()), L"$1$WALL");
  EXPECT_EQ(nameOf(clone(wall, AcDb::kDrcXrefMangleName).value()), L"tmpl$0$WALL");
  // Layer 0 keeps its name: the receiving drawing's stands for it.
  EXPECT_EQ(clone(zero, AcDb::kDrcMangleName).value(), db->layerZero());
  // A renamed layer's linetype comes renamed too.
  p = clone(hidden, AcDb::kDrcMangleName);
  EXPECT_EQ(nameOf(p.value()), L"$0$HIDDENL");
  EXPECT_EQ(nameOf(peek<AcDbLayerTableRecord>(p.value())->linetypeObjectId()), L"$0$DASHED");

  // Unmangling takes the prefix off: "$0$WALL" of the source is the
  // receiving drawing's WALL; "$3$DOOR" becomes a new DOOR.
  auto* mangled = new AcDbLayerTableRecord;
  const AcDbObjectId mangledWall = addRecord(tmpl->layerTableId(), mangled, L"$0$WALL");
  const AcDbObjectId mangledDoor = addRecord(tmpl->layerTableId(), new AcDbLayerTableRecord, L"$3$DOOR");
  EXPECT_EQ(clone(mangledWall, AcDb::kDrcUnmangleName).value(), targetWall);
  p = clone(mangledDoor, AcDb::kDrcUnmangleName);
  EXPECT_TRUE(p.isCloned());
  EXPECT_EQ(nameOf(p.value()), L"DOOR");

  // Replace: the receiving drawing's WALL (same id) takes the source's
  // colour; what referred to it still does.
  p = clone(wall, AcDb::kDrcReplace);
  EXPECT_EQ(p.value(), targetWall);
  EXPECT_TRUE(p.isCloned());
  EXPECT_EQ(peek<AcDbLayerTableRecord>(targetWall)->colorIndex(), 2);
  EXPECT_EQ(nameOf(targetWall), L"WALL");
  expectSound(db.get());
}

TEST_F(CloneTest, ImportingABlockAsAFamilyTemplateDoesKeepsTheBlocksLayersInTheTarget) {
  // A new record in the target, then the source block's entities cloned
  // into it with kDrcIgnore.
  AcDbObjectId made;
  {
    auto* rec = new AcDbBlockTableRecord;
    made = addRecord(db->blockTableId(), rec, L"INNER");
  }
  AcDbObjectIdArray ids;
  for (const AcDbObjectId& id : peek<AcDbBlockTableRecord>(src.inner)->entityIds()) ids.append(id);
  AcDbIdMapping map;
  ASSERT_EQ(db->wblockCloneObjects(ids, made, map, AcDb::kDrcIgnore), Acad::eOk);
  const std::vector<AcDbEntity*> parts = entities(made);
  ASSERT_EQ(parts.size(), 2u);
  EXPECT_EQ(parts[0]->layerId(), targetWall);
  EXPECT_EQ(std::wstring(AcDbAttributeDefinition::cast(parts[1])->tagConst()), L"NO");
  expectSound(db.get());
}

TEST_F(CloneTest, DeepCloneObjectsCopiesWithinOneDrawingWithWhatTheObjectsOwn) {
  AcDbIdMapping map;
  AcDbObjectIdArray ids;
  ids.append(src.line);
  AcDbObjectId owner = src.db->paperSpaceId();
  ASSERT_EQ(src.db->deepCloneObjects(ids, owner, map), Acad::eOk);
  auto* copy = peek<AcDbEntity>(PairOf(map, src.line).value());
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->ownerId(), src.db->paperSpaceId());
  // Records are pointed at, not owned: the same ones.
  EXPECT_EQ(copy->layerId(), src.wall);
  EXPECT_EQ(copy->linetypeId(), src.dashed);
  // The extension dictionary is owned: a new one, with a new xrecord that
  // still points at the dimension (not cloned: left as it was).
  const AcDbObjectId xdict = copy->extensionDictionary();
  ASSERT_FALSE(xdict.isNull());
  EXPECT_NE(xdict, peek<AcDbEntity>(src.line)->extensionDictionary());
  AcDbObjectId note;
  ASSERT_EQ(peek<AcDbDictionary>(xdict)->getAt(L"NOTE", note), Acad::eOk);
  EXPECT_NE(note, xrecord);
  resbuf* data = nullptr;
  peek<AcDbXrecord>(note)->rbChain(&data);
  AcDbObjectId pointed;
  pointed.setFromOldId(data->rbnext->resval.rlname[0]);
  EXPECT_EQ(pointed, src.dim);
  acutRelRb(data);
  expectSound(src.db.get());

  // Objects of another drawing, an owner of another, an entity for a table.
  AcDbIdMapping other;
  AcDbObjectId elsewhere = db->modelSpaceId();
  EXPECT_EQ(src.db->deepCloneObjects(ids, elsewhere, other), Acad::eWrongDatabase);
  AcDbObjectId layers = src.db->layerTableId();
  EXPECT_EQ(src.db->deepCloneObjects(ids, layers, other), Acad::eWrongObjectType);
  // A map that served other drawings is refused.
  AcDbObjectId ms = db->modelSpaceId();
  EXPECT_EQ(db->wblockCloneObjects(ids, ms, map, AcDb::kDrcIgnore), Acad::eInvalidIdMap);
}

TEST_F(CloneTest, DeferredTranslationWaitsForTheLastCallAndAnAbortTakesEverythingBack) {
  const size_t before = LiveObjects(db.get());
  {
    AcDbIdMapping map;
    AcDbObjectIdArray first, second;
    first.append(src.line);  // its xrecord points at the dimension, cloned by the second call
    second.append(src.dim);
    AcDbObjectId ms = db->modelSpaceId(), ps = db->paperSpaceId();
    ASSERT_EQ(src.db->wblockCloneObjects(first, ms, map, AcDb::kDrcIgnore, true), Acad::eOk);
    ASSERT_EQ(src.db->wblockCloneObjects(second, ps, map, AcDb::kDrcIgnore), Acad::eOk);
    AcDbObjectId note = PairOf(map, xrecord).value();
    resbuf* data = nullptr;
    peek<AcDbXrecord>(note)->rbChain(&data);
    AcDbObjectId pointed;
    pointed.setFromOldId(data->rbnext->resval.rlname[0]);
    acutRelRb(data);
    EXPECT_EQ(pointed, PairOf(map, src.dim).value());
    expectSound(db.get());
  }
  const size_t cloned = LiveObjects(db.get());
  EXPECT_GT(cloned, before);
  {
    AcDbIdMapping map;
    AcDbObjectIdArray ids = modelSpace();
    AcDbObjectId ms = db->modelSpaceId();
    ASSERT_EQ(src.db->wblockCloneObjects(ids, ms, map, AcDb::kDrcMangleName, true), Acad::eOk);
    EXPECT_GT(LiveObjects(db.get()), cloned);
    db->abortDeepClone(map);
    EXPECT_EQ(LiveObjects(db.get()), cloned);
    EXPECT_TRUE(Pairs(map).empty());
  }
  {
    // A map dropped before the last call takes its operation back too.
    AcDbIdMapping map;
    AcDbObjectIdArray ids = modelSpace();
    AcDbObjectId ms = db->modelSpaceId();
    ASSERT_EQ(src.db->wblockCloneObjects(ids, ms, map, AcDb::kDrcMangleName, true), Acad::eOk);
  }
  EXPECT_EQ(LiveObjects(db.get()), cloned);
  expectSound(db.get());
}

TEST_F(CloneTest, AFailureHalfwayLeavesTheTargetAsItWas) {
  const size_t before = LiveObjects(db.get());
  const Adesk::UInt64 nextHandle = db->handseed();
  // The text style table held open: ROMANS cannot be added, after DASHED,
  // INNER and its circle were.
  AcDbTextStyleTable* styles = nullptr;
  ASSERT_EQ(db->getTextStyleTable(styles, AcDb::kForWrite), Acad::eOk);
  AcDbIdMapping map;
  AcDbObjectIdArray ids;
  for (AcDbObjectId id : {src.line, src.ref, src.text}) ids.append(id);
  AcDbObjectId ms = db->modelSpaceId();
  EXPECT_NE(src.db->wblockCloneObjects(ids, ms, map, AcDb::kDrcReplace), Acad::eOk);
  styles->close();
  EXPECT_GT(static_cast<Adesk::UInt64>(db->handseed()), nextHandle) << "nothing was made before the failure";
  EXPECT_EQ(LiveObjects(db.get()), before);
  EXPECT_TRUE(entities(db->modelSpaceId()).empty());
  EXPECT_TRUE(block(db.get(), L"INNER").isNull());
  EXPECT_TRUE(record<AcDbLinetypeTable>(db.get(), db->linetypeTableId(), L"DASHED").isNull());
  EXPECT_EQ(peek<AcDbLayerTableRecord>(targetWall)->colorIndex(), 5) << "WALL kept the replaced state";
  EXPECT_TRUE(Pairs(map).empty());
  expectSound(db.get());
}

TEST_F(CloneTest, ARecordDeepClonedOutOfATemplateAndAddedElsewhereBringsWhatItNames) {
  // As a family's importer does: the record cloned with itself as owner,
  // then added to the receiving drawing's table.
  auto import = [&](AcDbObjectId recordId, AcDbObjectId tableId, AcDbObjectId& newId) {
    AcDbSymbolTableRecord* rec = nullptr;
    EXPECT_EQ(acdbOpenObject(rec, recordId, AcDb::kForRead), Acad::eOk);
    AcDbIdMapping map;
    AcDbObject* clone = nullptr;
    EXPECT_EQ(rec->deepClone(rec, clone, map, true), Acad::eOk);
    rec->close();
    EXPECT_NE(clone, nullptr);
    EXPECT_FALSE(clone->isDatabaseResident());
    AcDbSymbolTable* table = nullptr;
    EXPECT_EQ(acdbOpenObject(table, tableId, AcDb::kForWrite), Acad::eOk);
    const Acad::ErrorStatus es = table->add(newId, AcDbSymbolTableRecord::cast(clone));
    table->close();
    if (es == Acad::eOk) clone->close();
    else delete clone;
    return es;
  };
  AcDbObjectId id;
  ASSERT_EQ(import(hiddenLayer, db->layerTableId(), id), Acad::eOk);
  auto* dashed = peek<AcDbLinetypeTableRecord>(peek<AcDbLayerTableRecord>(id)->linetypeObjectId());
  ASSERT_NE(dashed, nullptr);
  EXPECT_EQ(dashed->database(), db.get());
  EXPECT_EQ(dashed->numDashes(), 2);
  ASSERT_EQ(import(src.family, db->dimStyleTableId(), id), Acad::eOk);
  EXPECT_EQ(nameOf(peek<AcDbDimStyleTableRecord>(id)->dimtxsty()), L"ROMANS");
  EXPECT_EQ(peek<AcDbDimStyleTableRecord>(id)->dimtxsty().database(), db.get());
  // A name the table has: the add refuses and nothing comes along.
  const size_t before = LiveObjects(db.get());
  EXPECT_EQ(import(src.wall, db->layerTableId(), id), Acad::eDuplicateRecordName);
  EXPECT_EQ(LiveObjects(db.get()), before);
  expectSound(db.get());

  // An entity cloned into a block open for write: the clone is open for
  // the caller to close; across drawings (wblockClone) what it names
  // comes along.
  AcDbBlockTableRecord* ms = nullptr;
  ASSERT_EQ(acdbOpenObject(ms, db->modelSpaceId(), AcDb::kForWrite), Acad::eOk);
  AcDbIdMapping map;
  AcDbObject* clone = nullptr;
  EXPECT_EQ(peek<AcDbEntity>(src.ref)->wblockClone(ms, clone, map, true), Acad::eOk);
  ms->close();
  ASSERT_NE(clone, nullptr);
  EXPECT_TRUE(clone->isWriteEnabled());
  EXPECT_EQ(nameOf(AcDbBlockReference::cast(clone)->blockTableRecord()), L"INNER");
  clone->close();
  AcDbBlockTableRecord* own = nullptr;
  ASSERT_EQ(acdbOpenObject(own, src.db->modelSpaceId(), AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(peek<AcDbEntity>(src.text)->deepClone(own, clone, map, true), Acad::eInvalidIdMap)
      << "the map serves other drawings";
  AcDbIdMapping fresh;
  ASSERT_EQ(peek<AcDbEntity>(src.text)->deepClone(own, clone, fresh, true), Acad::eOk);
  own->close();
  EXPECT_EQ(clone->ownerId(), src.db->modelSpaceId());
  clone->close();
  expectSound(db.get());
  expectSound(src.db.get());
}

TEST_F(CloneTest, ATemplateIsReadIntoAnEmptyDatabaseFromTheDxfOfItsName) {
  ASSERT_EQ(src.db->saveAs(file("family.dxf").c_str()), Acad::eOk);
  auto tmpl = std::make_unique<AcDbDatabase>(false, false);
  EXPECT_EQ(tmpl->readDwgFile(file("missing.dwt").c_str()), Acad::eFileNotFound);
  ASSERT_EQ(tmpl->readDwgFile(file("family.dwt").c_str()), Acad::eOk);
  const ACHAR* name = nullptr;
  tmpl->getFilename(name);
  EXPECT_EQ(std::wstring(name), file("family.dwt"));
  EXPECT_FALSE(layer(tmpl.get(), L"HIDDENL").isNull());
  auto dwg = std::make_unique<AcDbDatabase>(false, false);
  EXPECT_EQ(dwg->readDwgFile(file("family.dwg").c_str()), Acad::eOk);
  expectSound(tmpl.get());
}

}  // namespace

namespace {

TEST_F(CloneTest, TheAuditFindsAReferenceIntoAnotherDrawing) {
  expectSound(db.get());
  AcDbLayerTableRecord* wall = nullptr;
  ASSERT_EQ(acdbOpenObject(wall, targetWall, AcDb::kForWrite), Acad::eOk);
  wall->setLinetypeObjectId(src.dashed);
  wall->close();
  const std::vector<std::wstring> problems = kelhost::db::AuditReferences(db.get());
  ASSERT_EQ(problems.size(), 1u);
  EXPECT_NE(problems[0].find(L"another drawing"), std::wstring::npos) << kelhost::ToUtf8(problems[0]);
}

}  // namespace
