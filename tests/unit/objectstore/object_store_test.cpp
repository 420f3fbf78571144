// The object store: stubs in their pool, ids checked against live
// databases, handles found in any number and order, entnext through
// every entity, and a drawing read into a database taking its place.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "arx/arxheaders.h"
#include "db/database_state.h"
#include "db/stub.h"
#include "kelhost/drawing_files.h"
#include "kelhost/text.h"

namespace {

class ObjectStoreTest : public ::testing::Test {
 protected:
  void SetUp() override {
    db = std::make_unique<AcDbDatabase>();
    acdbHostApplicationServices()->setWorkingDatabase(db.get());
  }
  void TearDown() override {
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    db.reset();
  }

  // Lines in model space, each closed; their ids in order.
  std::vector<AcDbObjectId> addLines(int count) {
    std::vector<AcDbObjectId> ids;
    AcDbBlockTableRecord* space = nullptr;
    EXPECT_EQ(acdbOpenObject(space, db->modelSpaceId(), AcDb::kForWrite), Acad::eOk);
    for (int i = 0; i < count; ++i) {
      auto* line = new AcDbLine(AcGePoint3d(i, 0, 0), AcGePoint3d(i, 1, 0));
      AcDbObjectId id;
      EXPECT_EQ(space->appendAcDbEntity(id, line), Acad::eOk);
      line->close();
      ids.push_back(id);
    }
    space->close();
    return ids;
  }

  static bool NameIsValid(Adesk::LongPtr value) {
    ads_name name = {value, 0};
    AcDbObjectId id;
    return acdbGetObjectId(id, name) == Acad::eOk;
  }

  std::unique_ptr<AcDbDatabase> db;
};

TEST_F(ObjectStoreTest, HandlesAreFoundInAnyNumberAndOrder) {
  auto& state = db->state();
  // Handles a file may hold: sparse, unordered, near the top of the range.
  std::mt19937_64 rng(5);
  std::set<std::uint64_t> used;
  std::vector<std::pair<std::uint64_t, AcDbObjectId>> made;
  for (int i = 0; i < 30000; ++i) {
    std::uint64_t h = i % 3 == 0 ? rng() : (i % 3 == 1 ? 0x100000 + static_cast<std::uint64_t>(i) : rng() >> 40);
    if (h == 0 || used.count(h) || state.byHandle.count(h)) continue;
    used.insert(h);
    AcDbStub* stub = state.add(db.get(), new AcDbXrecord, h);
    stub->object->close();
    ASSERT_EQ(stub->handle, h);
    made.emplace_back(h, AcDbObjectId(stub));
  }
  for (const auto& [h, id] : made) {
    AcDbObjectId found;
    ASSERT_EQ(db->getAcDbObjectId(found, false, AcDbHandle(h)), Acad::eOk) << std::hex << h;
    ASSERT_EQ(found, id);
  }
  AcDbObjectId none;
  std::uint64_t absent = 0x7777;
  while (used.count(absent) || state.byHandle.count(absent)) ++absent;
  EXPECT_EQ(db->getAcDbObjectId(none, false, AcDbHandle(absent)), Acad::eUnknownHandle);
  EXPECT_TRUE(none.isNull());

  // A handle already taken is not taken twice: the object gets a new one.
  const std::uint64_t taken = made.front().first;
  AcDbStub* again = state.add(db.get(), new AcDbXrecord, taken);
  again->object->close();
  EXPECT_NE(again->handle, taken);
  AcDbObjectId first;
  ASSERT_EQ(db->getAcDbObjectId(first, false, AcDbHandle(taken)), Acad::eOk);
  EXPECT_EQ(first, made.front().second);
}

TEST_F(ObjectStoreTest, IdsNameObjectsOnlyWhileTheirDatabaseLives) {
  const std::vector<AcDbObjectId> ids = addLines(20000);  // stubs in many chunks
  for (size_t i = 0; i < ids.size(); i += 101) {
    EXPECT_TRUE(ids[i].isValid());
    EXPECT_TRUE(NameIsValid(ids[i].asOldId()));
  }
  // Not stubs: numbers, addresses inside a stub, just past the last one.
  const auto last = ids.back().asOldId();
  for (Adesk::LongPtr bogus : {Adesk::LongPtr{1}, Adesk::LongPtr{0x1000}, last + 8, last + 1,
                               static_cast<Adesk::LongPtr>(last + sizeof(AcDbStub)), Adesk::LongPtr{-16}})
    EXPECT_FALSE(NameIsValid(bogus)) << std::hex << bogus;

  auto other = std::make_unique<AcDbDatabase>();
  const AcDbObjectId otherLayer = other->layerZero();
  EXPECT_TRUE(otherLayer.isValid());
  other.reset();
  EXPECT_FALSE(otherLayer.isValid());
  EXPECT_FALSE(NameIsValid(otherLayer.asOldId()));
  EXPECT_EQ(kelhost::db::Peek(otherLayer), nullptr);
  for (size_t i = 0; i < ids.size(); i += 997) EXPECT_TRUE(ids[i].isValid());  // this one lives on
}

TEST_F(ObjectStoreTest, EntnextWalksEveryEntityInOrder) {
  const std::vector<AcDbObjectId> ids = addLines(9000);
  ads_name name = {0, 0}, next;
  size_t seen = 0;
  while (acdbEntNext(seen ? name : nullptr, next) == RTNORM) {
    ASSERT_LT(seen, ids.size());
    AcDbObjectId id;
    ASSERT_EQ(acdbGetObjectId(id, next), Acad::eOk);
    ASSERT_EQ(id, ids[seen]);
    name[0] = next[0];
    name[1] = next[1];
    ++seen;
  }
  EXPECT_EQ(seen, ids.size());
  ads_name lastName;
  ASSERT_EQ(acdbEntLast(lastName), RTNORM);
  EXPECT_EQ(lastName[0], ids.back().asOldId());
}

TEST_F(ObjectStoreTest, ObjectsLeftOpenAreListedOverDatabases) {
  const std::vector<AcDbObjectId> ids = addLines(3);
  auto other = std::make_unique<AcDbDatabase>();
  AcDbObject* mine = nullptr;
  AcDbObject* theirs = nullptr;
  ASSERT_EQ(acdbOpenObject(mine, ids[1], AcDb::kForRead), Acad::eOk);
  ASSERT_EQ(acdbOpenObject(theirs, other->layerZero(), AcDb::kForWrite), Acad::eOk);
  std::vector<std::wstring> open = kelhost::db::DescribeOpenObjects();
  std::sort(open.begin(), open.end());
  ACHAR handle[20];
  ids[1].handle().getIntoAsciiBuffer(handle, 20);
  ACHAR layerHandle[20];
  other->layerZero().handle().getIntoAsciiBuffer(layerHandle, 20);
  std::vector<std::wstring> expected = {std::wstring(handle) + L" LINE for read",
                                        std::wstring(layerHandle) + L" LAYER for write"};
  std::sort(expected.begin(), expected.end());
  EXPECT_EQ(open, expected);
  mine->close();
  theirs->close();
  EXPECT_TRUE(kelhost::db::DescribeOpenObjects().empty());
}

TEST_F(ObjectStoreTest, ADrawingReadTakesTheDatabasesPlace) {
  char dir[] = "/tmp/kel_store_XXXXXX";
  ASSERT_NE(mkdtemp(dir), nullptr);
  const std::string file = std::string(dir) + "/lines.dxf";
  const std::vector<AcDbObjectId> before = addLines(5);
  std::wstring error;
  ASSERT_TRUE(kelhost::WriteDrawingFile(db.get(), kelhost::FromUtf8(file), error)) << kelhost::ToUtf8(error);

  // Read into a database holding something else: its old objects go.
  auto target = std::make_unique<AcDbDatabase>();
  const AcDbObjectId oldLayer = target->layerZero();
  ASSERT_TRUE(kelhost::ReadDrawingFile(target.get(), kelhost::FromUtf8(file), error)) << kelhost::ToUtf8(error);
  EXPECT_FALSE(oldLayer.isValid());
  AcDbObjectId found;
  ASSERT_EQ(target->getAcDbObjectId(found, false, before[2].handle()), Acad::eOk);
  EXPECT_TRUE(found.isValid());
  EXPECT_EQ(found.database(), target.get());
  EXPECT_NE(found, before[2]);
  EXPECT_TRUE(before[2].isValid());  // the drawing written from lives on
  target.reset();
  EXPECT_FALSE(found.isValid());
  std::remove(file.c_str());
  rmdir(dir);
}

}  // namespace
