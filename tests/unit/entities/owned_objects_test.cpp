// Objects owned outright follow their owner: a heavy polyline's vertices
// and SEQEND, a block reference's attributes, an extension dictionary and
// its entries are erased and unerased with it; entdel works on main
// entities only; entnext and ssget never reach what an erased owner owns.
// Sub-entities given to an owner not yet in a database join with it.
#include <string>

#include "../database/database_fixture.h"
#include "entity_test_helpers.h"
#include "arx/dbxrecrd.h"

namespace {
using entity_tests::LastId;

const wchar_t* kTriangle =
    L"(progn (entmake '((0 . \"POLYLINE\") (66 . 1) (70 . 1)))"
    L" (entmake '((0 . \"VERTEX\") (10 0.0 0.0 0.0)))"
    L" (entmake '((0 . \"VERTEX\") (10 4.0 0.0 0.0)))"
    L" (entmake '((0 . \"VERTEX\") (10 0.0 3.0 0.0)))"
    L" (entmake '((0 . \"SEQEND\"))))";

const wchar_t* kTaggedBlockAndInsert =
    L"(progn (entmake '((0 . \"BLOCK\") (2 . \"TAG\") (70 . 2) (10 0.0 0.0 0.0)))"
    L" (entmake '((0 . \"CIRCLE\") (10 0.0 0.0 0.0) (40 . 1.0)))"
    L" (entmake '((0 . \"ATTDEF\") (10 0.0 0.0 0.0) (40 . 0.5) (1 . \"\") (3 . \"No?\") (2 . \"NO\") (70 . 0)))"
    L" (entmake '((0 . \"ENDBLK\")))"
    L" (entmake '((0 . \"INSERT\") (66 . 1) (2 . \"TAG\") (10 5.0 5.0 0.0)))"
    L" (entmake '((0 . \"ATTRIB\") (10 5.0 5.0 0.0) (40 . 0.5) (1 . \"A1\") (2 . \"NO\") (70 . 0)))"
    L" (entmake '((0 . \"ATTRIB\") (10 5.0 6.0 0.0) (40 . 0.5) (1 . \"A2\") (2 . \"NO\") (70 . 0)))"
    L" (entmake '((0 . \"SEQEND\"))))";

// Erases (or unerases) an object through its own erase().
Acad::ErrorStatus Erase(AcDbObjectId id, bool erasing = true) {
  AcDbObject* obj = nullptr;
  Acad::ErrorStatus es = acdbOpenObject(obj, id, AcDb::kForWrite, true);
  if (es != Acad::eOk) return es;
  es = obj->erase(erasing);
  obj->close();
  return es;
}

}  // namespace

class OwnedObjects : public DrawingTest {
 protected:
  // The ids a complex entity owns, vertices or attributes then SEQEND.
  std::vector<AcDbObjectId> partsOf(AcDbObjectId id) {
    std::vector<AcDbObjectId> ids;
    AcDbObject* obj = kelhost::db::Peek(id);
    if (auto* pl = AcDb2dPolyline::cast(obj)) {
      ids = pl->vertexIds();
      ids.push_back(pl->sequenceEndId());
    } else if (auto* ref = AcDbBlockReference::cast(obj)) {
      ids = ref->attributeIds();
      ids.push_back(ref->sequence().end);
    }
    return ids;
  }
  int erasedCount(const std::vector<AcDbObjectId>& ids) {
    int n = 0;
    for (const AcDbObjectId& id : ids) n += id.isErased() ? 1 : 0;
    return n;
  }
};

TEST_F(OwnedObjects, VerticesAndSeqendGoAndComeBackWithTheirPolyline) {
  ASSERT_NE(eval(kTriangle), L"nil");
  const AcDbObjectId pl = LastId();
  const std::vector<AcDbObjectId> parts = partsOf(pl);
  ASSERT_EQ(parts.size(), 4u);

  ASSERT_EQ(Erase(pl), Acad::eOk);
  EXPECT_EQ(erasedCount(parts), 4);
  ASSERT_EQ(Erase(pl, false), Acad::eOk);
  EXPECT_EQ(erasedCount(parts), 0);

  // A vertex erased on its own stays erased when its polyline comes back.
  ASSERT_EQ(Erase(parts[1]), Acad::eOk);
  ASSERT_EQ(Erase(pl), Acad::eOk);
  EXPECT_EQ(erasedCount(parts), 4);
  ASSERT_EQ(Erase(pl, false), Acad::eOk);
  EXPECT_TRUE(parts[1].isErased());
  EXPECT_EQ(erasedCount(parts), 1);
  AcDbCurve* curve = nullptr;
  ASSERT_EQ(acdbOpenObject(curve, pl, AcDb::kForRead), Acad::eOk);
  double end = 0;
  curve->getEndParam(end);
  EXPECT_DOUBLE_EQ(end, 2.0) << "two vertices left, closed";
  curve->close();
}

TEST_F(OwnedObjects, EntdelTogglesAMainEntityWithWhatItOwnsAndRefusesSubentities) {
  ASSERT_NE(eval(kTaggedBlockAndInsert), L"nil");
  const AcDbObjectId ref = LastId();
  const std::vector<AcDbObjectId> parts = partsOf(ref);
  ASSERT_EQ(parts.size(), 3u);
  eval(L"(setq ins (entlast) att (entnext ins))");

  EXPECT_EQ(eval(L"(entdel att)"), L"nil") << "an attribute is not deleted on its own";
  EXPECT_EQ(eval(L"(entdel (entnext att))"), L"nil");
  EXPECT_EQ(erasedCount(parts), 0);

  EXPECT_EQ(eval(L"(eq (entdel ins) ins)"), L"T");
  EXPECT_EQ(erasedCount(parts), 3);
  EXPECT_EQ(eval(L"(entget att)"), L"nil");
  EXPECT_EQ(eval(L"(entdel ins)"), eval(L"ins"));
  EXPECT_EQ(erasedCount(parts), 0);
  EXPECT_EQ(eval(L"(cdr (assoc 1 (entget att)))"), L"\"A1\"");
}

TEST_F(OwnedObjects, EntnextAndSsgetPassOverAnErasedOwnersParts) {
  eval(L"(entmake '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 1.0 0.0 0.0)))");
  ASSERT_NE(eval(kTriangle), L"nil");
  eval(L"(setq pl (entlast))");
  eval(L"(entmake '((0 . \"POINT\") (10 9.0 9.0 0.0)))");
  eval(L"(entdel pl)");
  // From the line the walk goes straight to the point; from the erased
  // polyline too, not into its erased vertices.
  EXPECT_EQ(eval(L"(cdr (assoc 0 (entget (entnext (entnext)))))"), L"\"POINT\"");
  EXPECT_EQ(eval(L"(cdr (assoc 0 (entget (entnext pl))))"), L"\"POINT\"");
  EXPECT_EQ(eval(L"(sslength (ssget \"X\"))"), L"2");
  EXPECT_EQ(eval(L"(ssget \"X\" '((0 . \"VERTEX,SEQEND,POLYLINE\")))"), L"nil");
  eval(L"(entdel pl)");
  EXPECT_EQ(eval(L"(cdr (assoc 0 (entget (entnext pl))))"), L"\"VERTEX\"");
  EXPECT_EQ(eval(L"(sslength (ssget \"X\"))"), L"3") << "vertices are never selected";
}

TEST_F(OwnedObjects, ExtensionDictionaryAndItsEntriesFollowTheirObject) {
  eval(L"(entmake '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 1.0 0.0 0.0)))");
  const AcDbObjectId line = LastId();
  AcDbObject* obj = nullptr;
  ASSERT_EQ(acdbOpenObject(obj, line, AcDb::kForWrite), Acad::eOk);
  ASSERT_EQ(obj->createExtensionDictionary(), Acad::eOk);
  const AcDbObjectId xdict = obj->extensionDictionary();
  obj->close();
  AcDbDictionary* dict = nullptr;
  ASSERT_EQ(acdbOpenObject(dict, xdict, AcDb::kForWrite), Acad::eOk);
  AcDbObjectId record;
  auto* xrec = new AcDbXrecord;
  ASSERT_EQ(dict->setAt(L"DATA", xrec, record), Acad::eOk);
  xrec->close();
  dict->close();

  ASSERT_EQ(Erase(line), Acad::eOk);
  EXPECT_TRUE(xdict.isErased());
  EXPECT_TRUE(record.isErased());
  ASSERT_EQ(Erase(line, false), Acad::eOk);
  EXPECT_FALSE(xdict.isErased());
  EXPECT_FALSE(record.isErased());
  // The entity list names the dictionary again once it is back.
  EXPECT_NE(eval(L"(assoc 360 (entget (entlast)))"), L"nil");
}

TEST_F(OwnedObjects, VerticesGivenBeforeTheDatabaseJoinWithThePolyline) {
  AcGePoint3dArray points;
  points.append(AcGePoint3d(0, 0, 0));
  points.append(AcGePoint3d(3, 0, 0));
  points.append(AcGePoint3d(3, 4, 0));
  auto* pl = new AcDb2dPolyline(AcDb::k2dSimplePoly, points, 2.0, false);
  // A polyline outside the database already has its geometry.
  double length = 0, end = 0;
  ASSERT_EQ(pl->getEndParam(end), Acad::eOk);
  pl->getDistAtParam(end, length);
  EXPECT_DOUBLE_EQ(length, 7.0);
  EXPECT_TRUE(pl->vertexIds().empty());
  auto* extra = new AcDb2dVertex(AcGePoint3d(0, 4, 0));
  AcDbObjectId none;
  EXPECT_EQ(pl->appendVertex(none, extra), Acad::eOk);
  EXPECT_TRUE(none.isNull());
  EXPECT_EQ(pl->appendVertex(extra), Acad::eAlreadyInDb) << "the same vertex twice";

  const int openBefore = kelhost::db::OpenObjectCount();
  AcDbBlockTableRecord* ms = nullptr;
  ASSERT_EQ(acdbOpenObject(ms, db->modelSpaceId(), AcDb::kForWrite), Acad::eOk);
  AcDbObjectId id;
  ASSERT_EQ(ms->appendAcDbEntity(id, pl), Acad::eOk);
  ms->close();
  EXPECT_EQ(kelhost::db::OpenObjectCount(), openBefore + 1) << "only the polyline is left open";
  ASSERT_EQ(pl->vertexIds().size(), 4u);
  EXPECT_TRUE(pl->sequence().pending.empty());
  EXPECT_FALSE(pl->sequenceEndId().isNull());
  pl->close();
  // The walk and the lists see the vertices in order, on the polyline's layer.
  EXPECT_EQ(eval(L"(cdr (assoc 10 (entget (entnext (entnext (entnext (entlast)))))))"), L"(3.0 4.0 2.0)");
  EXPECT_EQ(eval(L"(cdr (assoc 0 (entget (entnext (entnext (entnext (entnext (entnext (entlast)))))))))"),
            L"\"SEQEND\"");
  EXPECT_EQ(eval(L"(cdr (assoc 8 (entget (entnext (entlast)))))"), eval(L"(cdr (assoc 8 (entget (entlast))))"));

  // A polyline never added takes its vertices with it (checked by the
  // leak checker under the sanitizers).
  AcDb3dPolyline unused(AcDb::k3dSimplePoly, points, true);
  EXPECT_TRUE(unused.isClosed());
}
