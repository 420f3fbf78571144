// Opening and closing objects by id: modes, statuses, readers and writers,
// erase, handles.
#include "database_fixture.h"

namespace {

class ObjectStore : public DrawingTest {
 protected:
  // A line in model space, closed.
  AcDbObjectId addLine() {
    AcDbBlockTableRecord* ms = nullptr;
    EXPECT_EQ(acdbOpenObject(ms, db->modelSpaceId(), AcDb::kForWrite), Acad::eOk);
    auto* line = new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 0));
    AcDbObjectId id;
    EXPECT_EQ(ms->appendAcDbEntity(id, line), Acad::eOk);
    EXPECT_TRUE(line->isWriteEnabled());
    line->close();
    ms->close();
    return id;
  }
};

TEST_F(ObjectStore, OpenModesAndTheirStatuses) {
  AcDbObjectId id = addLine();
  AcDbObject *r1 = nullptr, *r2 = nullptr, *w = nullptr;
  ASSERT_EQ(acdbOpenObject(r1, id, AcDb::kForRead), Acad::eOk);
  ASSERT_EQ(acdbOpenObject(r2, id, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(r1, r2);  // readers share the one object
  EXPECT_EQ(kelhost::db::OpenObjectCount(), openAtStart + 2);
  EXPECT_EQ(acdbOpenObject(w, id, AcDb::kForWrite), Acad::eWasOpenedForRead);
  EXPECT_EQ(w, nullptr);
  EXPECT_EQ(r1->upgradeOpen(), Acad::eHadMultipleReaders);
  r2->close();
  EXPECT_EQ(r1->upgradeOpen(), Acad::eOk);
  EXPECT_TRUE(r1->isWriteEnabled());
  EXPECT_EQ(acdbOpenObject(w, id, AcDb::kForRead), Acad::eWasOpenedForWrite);
  EXPECT_EQ(acdbOpenObject(w, id, AcDb::kForWrite), Acad::eWasOpenedForWrite);
  EXPECT_EQ(r1->close(), Acad::eOk);
  EXPECT_EQ(r1->close(), Acad::eNotApplicable);  // not open any more
  EXPECT_EQ(kelhost::db::OpenObjectCount(), openAtStart);
}

TEST_F(ObjectStore, BadIdsAndWrongClassesAreRefused) {
  AcDbObject* obj = nullptr;
  EXPECT_EQ(acdbOpenObject(obj, AcDbObjectId::kNull, AcDb::kForRead), Acad::eNullObjectId);
  AcDbObjectId bogus;
  bogus.setFromOldId(0x1234);
  EXPECT_FALSE(bogus.isValid());
  EXPECT_EQ(acdbOpenObject(obj, bogus, AcDb::kForRead), Acad::eInvalidObjectId);
  ads_name name = {0x1234, 0};
  AcDbObjectId fromName;
  EXPECT_EQ(acdbGetObjectId(fromName, name), Acad::eInvalidAdsName);

  AcDbObjectId id = addLine();
  AcDbCircle* circle = nullptr;
  EXPECT_EQ(acdbOpenObject(circle, id, AcDb::kForWrite), Acad::eNotThatKindOfClass);
  EXPECT_EQ(circle, nullptr);
  AcDbCurve* curve = nullptr;
  ASSERT_EQ(acdbOpenObject(curve, id, AcDb::kForRead), Acad::eOk);  // a line is a curve
  EXPECT_TRUE(curve->isKindOf(AcDbLine::desc()));
  EXPECT_EQ(AcDbCircle::cast(curve), nullptr);
  curve->close();
}

TEST_F(ObjectStore, EraseAndUnerase) {
  AcDbObjectId id = addLine();
  AcDbObject* obj = nullptr;
  ASSERT_EQ(acdbOpenObject(obj, id, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(obj->erase(), Acad::eNotOpenForWrite);
  obj->close();
  ASSERT_EQ(acdbOpenObject(obj, id, AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(obj->erase(false), Acad::eWasNotErased);
  EXPECT_EQ(obj->erase(), Acad::eOk);
  EXPECT_EQ(obj->erase(), Acad::eWasErased);
  obj->close();
  EXPECT_TRUE(id.isErased());
  EXPECT_EQ(acdbOpenObject(obj, id, AcDb::kForRead), Acad::eWasErased);
  ASSERT_EQ(acdbOpenObject(obj, id, AcDb::kForWrite, true), Acad::eOk);
  EXPECT_EQ(obj->erase(false), Acad::eOk);
  obj->close();
  EXPECT_FALSE(id.isErased());

  // The drawing's own structure stays.
  ASSERT_EQ(acdbOpenObject(obj, db->layerZero(), AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(obj->erase(), Acad::eCannotBeErasedByCaller);
  obj->close();
}

TEST_F(ObjectStore, HandlesAreUniqueHexAndFindTheirObjects) {
  AcDbObjectId a = addLine(), b = addLine();
  EXPECT_LT(static_cast<Adesk::UInt64>(a.handle()), static_cast<Adesk::UInt64>(b.handle()));
  ACHAR text[20];
  ASSERT_TRUE(b.handle().getIntoAsciiBuffer(text, 20));
  EXPECT_EQ(AcDbHandle(text), b.handle());
  AcDbObjectId found;
  EXPECT_EQ(db->getAcDbObjectId(found, false, AcDbHandle(text)), Acad::eOk);
  EXPECT_EQ(found, b);
  EXPECT_EQ(db->getAcDbObjectId(found, false, AcDbHandle(0xFFFFFu, 0u)), Acad::eUnknownHandle);

  EXPECT_EQ(AcDbHandle(L"1F").low(), 0x1Fu);
  EXPECT_TRUE(AcDbHandle(L"1G").isNull());
  EXPECT_TRUE(AcDbHandle(L"12345678901234567").isNull());  // 17 digits
  ACHAR tiny[2];
  EXPECT_FALSE(AcDbHandle(0x1Fu, 0u).getIntoAsciiBuffer(tiny, 2));
  ads_name name;
  EXPECT_EQ(acdbGetAdsName(name, b), Acad::eOk);
  EXPECT_EQ(acdbGetObjectId(found, name), Acad::eOk);
  EXPECT_EQ(found, b);
}

TEST_F(ObjectStore, ObjectsOfADatabaseThatIsGoneAreInvalid) {
  AcDbObjectId id;
  {
    AcDbDatabase other;
    id = other.layerZero();
    EXPECT_TRUE(id.isValid());
    AcDbObject* obj = nullptr;
    ASSERT_EQ(acdbOpenObject(obj, id, AcDb::kForRead), Acad::eOk);
    // Destroyed while open: it no longer counts as open.
  }
  EXPECT_FALSE(id.isValid());
  EXPECT_EQ(kelhost::db::OpenObjectCount(), openAtStart);
}

TEST_F(ObjectStore, AppendingTakesTheDatabaseDefaults) {
  AcDbLayerTable* layers = nullptr;
  ASSERT_EQ(db->getLayerTable(layers, AcDb::kForWrite), Acad::eOk);
  auto* red = new AcDbLayerTableRecord;
  EXPECT_EQ(red->setName(L"Red"), Acad::eOk);
  AcDbObjectId redId;
  ASSERT_EQ(layers->add(redId, red), Acad::eOk);
  red->close();
  auto* dup = new AcDbLayerTableRecord;
  dup->setName(L"RED");
  EXPECT_EQ(layers->add(dup), Acad::eDuplicateRecordName);
  delete dup;
  layers->close();
  ASSERT_EQ(db->setClayer(redId), Acad::eOk);

  AcDbObjectId id = [this] {
    AcDbBlockTableRecord* ms = nullptr;
    acdbOpenObject(ms, db->modelSpaceId(), AcDb::kForWrite);
    AcDbObjectId made;
    auto* c = new AcDbCircle(AcGePoint3d(1, 1, 0), AcGeVector3d::kZAxis, 2.0);
    ms->appendAcDbEntity(made, c);
    c->close();
    ms->close();
    return made;
  }();
  AcDbEntity* ent = nullptr;
  ASSERT_EQ(acdbOpenAcDbEntity(ent, id, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(ent->layerId(), redId);
  EXPECT_EQ(ent->blockId(), db->modelSpaceId());
  ACHAR* layerName = ent->layer();
  EXPECT_STREQ(layerName, L"Red");
  std::free(layerName);
  ent->close();
}

}  // namespace
