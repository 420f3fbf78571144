// Heavy polylines and block references with attributes read from files
// become the host's own entities with their vertices, attributes and
// SEQEND, each under its handle, and are written back in the same shape.
#include "dxf/kept_object.h"
#include "dxf_sections.h"

namespace {

// A door block holding a 2D polyline, and in model space: a closed 2D
// polyline with a bulge and a vertex with xdata, a 3D polyline and a
// reference to the door with one attribute.
std::string ComplexDrawing() {
  const Groups blocks = {
      {0, "BLOCK"}, {5, "D1"}, {8, "0"}, {2, "DOOR"}, {70, "0"}, {10, "0.0"}, {20, "0.0"}, {30, "0.0"}, {3, "DOOR"},
      {0, "POLYLINE"}, {5, "D2"}, {8, "0"}, {66, "1"}, {10, "0.0"}, {20, "0.0"}, {30, "0.0"}, {70, "0"},
      {0, "VERTEX"}, {5, "D3"}, {8, "0"}, {10, "0.0"}, {20, "0.0"}, {30, "0.0"},
      {0, "VERTEX"}, {5, "D4"}, {8, "0"}, {10, "1.0"}, {20, "2.0"}, {30, "0.0"},
      {0, "SEQEND"}, {5, "D5"}, {8, "0"},
      {0, "ENDBLK"}, {5, "D6"}, {8, "0"}};
  const Groups entities = {
      {0, "POLYLINE"}, {5, "A2"}, {100, "AcDbEntity"}, {8, "PL"}, {66, "1"}, {100, "AcDb2dPolyline"},
      {10, "0.0"}, {20, "0.0"}, {30, "0.0"}, {70, "1"},
      {0, "VERTEX"}, {5, "A3"}, {100, "AcDbEntity"}, {8, "PL"}, {100, "AcDbVertex"}, {100, "AcDb2dVertex"},
      {10, "0.0"}, {20, "0.0"}, {30, "0.0"}, {42, "0.5"}, {70, "0"},
      {0, "VERTEX"}, {5, "A4"}, {8, "PL"}, {10, "4.0"}, {20, "0.0"}, {30, "0.0"}, {70, "0"},
      {1001, "ACAD"}, {1000, "顶点"},
      {0, "SEQEND"}, {5, "A5"}, {8, "PL"},
      {0, "POLYLINE"}, {5, "B2"}, {8, "0"}, {66, "1"}, {10, "0.0"}, {20, "0.0"}, {30, "0.0"}, {70, "8"},
      {0, "VERTEX"}, {5, "B3"}, {8, "0"}, {10, "1.0"}, {20, "2.0"}, {30, "3.0"}, {70, "32"},
      {0, "VERTEX"}, {5, "B4"}, {8, "0"}, {10, "4.0"}, {20, "5.0"}, {30, "6.0"}, {70, "32"},
      {0, "SEQEND"}, {5, "B5"}, {8, "0"},
      {0, "INSERT"}, {5, "C2"}, {8, "0"}, {66, "1"}, {2, "DOOR"}, {10, "5.0"}, {20, "5.0"}, {30, "0.0"},
      {0, "ATTRIB"}, {5, "C3"}, {8, "0"}, {10, "5.0"}, {20, "4.0"}, {30, "0.0"}, {40, "1.0"}, {1, "甲-01"},
      {2, "NO"}, {70, "0"},
      {0, "SEQEND"}, {5, "C4"}, {8, "0"}};
  return DxfFile({Section("BLOCKS", blocks), Section("ENTITIES", entities), Section("OBJECTS", {})});
}

// Type, handle and owner of the items that follow the item with handle h,
// up to and with the SEQEND.
std::vector<std::string> Followers(const Groups& file, const std::string& h) {
  std::vector<std::string> out;
  bool after = false;
  for (const Groups& item : Items(file)) {
    if (after) {
      out.push_back(item[0].second + " " + ValueOf(item, 5) + " " + ValueOf(item, 330));
      if (item[0].second == "SEQEND") break;
    }
    after = after || ValueOf(item, 5) == h;
  }
  return out;
}

}  // namespace

TEST_F(DxfFileTest, HeavyPolylinesAndAttributesAreModelledUnderTheirHandles) {
  writeText("in.dxf", ComplexDrawing());
  ASSERT_EQ(db->readDwgFile(wpath("in.dxf").c_str()), Acad::eOk);
  const std::vector<AcDbObjectId> ms = modelSpace();
  ASSERT_EQ(ms.size(), 3u);
  auto* flat = kelhost::db::PeekAs<AcDb2dPolyline>(ms[0]);
  auto* spatial = kelhost::db::PeekAs<AcDb3dPolyline>(ms[1]);
  auto* door = kelhost::db::PeekAs<AcDbBlockReference>(ms[2]);
  ASSERT_TRUE(flat && spatial && door);
  EXPECT_TRUE(flat->isClosed());
  ASSERT_EQ(flat->vertexIds().size(), 2u);
  EXPECT_EQ(kelhost::db::PeekAs<AcDb2dVertex>(flat->vertexIds()[0])->bulge(), 0.5);
  EXPECT_EQ(kelhost::db::PeekAs<AcDb2dVertex>(flat->vertexIds()[1])->ownerId(), ms[0]);
  ASSERT_EQ(spatial->vertexIds().size(), 2u);
  EXPECT_EQ(kelhost::db::PeekAs<AcDb3dPolylineVertex>(spatial->vertexIds()[1])->position(), AcGePoint3d(4, 5, 6));
  ASSERT_EQ(door->attributeIds().size(), 1u);

  // Entity lists see them as the file named them, walking to the SEQEND.
  EXPECT_EQ(eval(L"(cdr (assoc 330 (entget (handent \"A4\"))))"), eval(L"(handent \"A2\")"));
  EXPECT_EQ(eval(L"(entnext (handent \"A2\"))"), eval(L"(handent \"A3\")"));
  EXPECT_EQ(eval(L"(entnext (handent \"A4\"))"), eval(L"(handent \"A5\")"));
  EXPECT_EQ(eval(L"(cdr (assoc 1000 (cdadr (assoc -3 (entget (handent \"A4\") '(\"ACAD\"))))))"), L"\"顶点\"");
  EXPECT_EQ(eval(L"(cdr (assoc 1 (entget (entnext (handent \"C2\")))))"), L"\"甲-01\"");
  EXPECT_EQ(eval(L"(cdr (assoc 0 (entget (entnext (handent \"D2\")))))"), L"\"VERTEX\"");

  // Written back: each follower after its entity, owned by it.
  ASSERT_EQ(db->saveAs(wpath("out.dxf").c_str()), Acad::eOk);
  const std::string out = readText("out.dxf");
  const Groups groups = ParseGroups(out);
  EXPECT_EQ(Followers(groups, "A2"), (std::vector<std::string>{"VERTEX A3 A2", "VERTEX A4 A2", "SEQEND A5 A2"}));
  EXPECT_EQ(Followers(groups, "B2"), (std::vector<std::string>{"VERTEX B3 B2", "VERTEX B4 B2", "SEQEND B5 B2"}));
  EXPECT_EQ(Followers(groups, "C2"), (std::vector<std::string>{"ATTRIB C3 C2", "SEQEND C4 C2"}));
  EXPECT_EQ(Followers(groups, "D2"), (std::vector<std::string>{"VERTEX D3 D2", "VERTEX D4 D2", "SEQEND D5 D2"}));
  EXPECT_EQ(ValueOf(ItemOf(groups, "A3"), 42), "0.5");
  EXPECT_EQ(ValueOf(ItemOf(groups, "C2"), 66), "1");
  ASSERT_EQ(db->readDwgFile(wpath("out.dxf").c_str()), Acad::eOk);
  ASSERT_EQ(db->saveAs(wpath("again.dxf").c_str()), Acad::eOk);
  EXPECT_EQ(readText("again.dxf"), out);
}

TEST_F(DxfFileTest, AFollowerThatDoesNotReadKeepsItsWholeEntityVerbatim) {
  const Groups entities = {
      // A 3D vertex (32) in a 2D polyline.
      {0, "POLYLINE"}, {5, "E2"}, {8, "0"}, {66, "1"}, {10, "0.0"}, {20, "0.0"}, {30, "0.0"}, {70, "0"},
      {0, "VERTEX"}, {5, "E3"}, {8, "0"}, {10, "1.0"}, {20, "1.0"}, {30, "0.0"}, {70, "0"},
      {0, "VERTEX"}, {5, "E4"}, {8, "0"}, {10, "2.0"}, {20, "1.0"}, {30, "0.0"}, {70, "32"},
      {0, "SEQEND"}, {5, "E5"}, {8, "0"},
      // An attribute without its tag.
      {0, "INSERT"}, {5, "F2"}, {8, "0"}, {66, "1"}, {2, "*U1"}, {10, "0.0"}, {20, "0.0"}, {30, "0.0"},
      {0, "ATTRIB"}, {5, "F3"}, {8, "0"}, {10, "0.0"}, {20, "0.0"}, {30, "0.0"}, {40, "1.0"}, {1, "x"},
      {0, "SEQEND"}, {5, "F4"}, {8, "0"},
      {0, "POINT"}, {5, "F5"}, {8, "0"}, {10, "0.0"}, {20, "0.0"}, {30, "0.0"}};
  const Groups blocks = {{0, "BLOCK"}, {5, "F6"}, {8, "0"}, {2, "*U1"}, {70, "1"}, {10, "0.0"}, {20, "0.0"},
                         {30, "0.0"}, {3, "*U1"}, {0, "ENDBLK"}, {5, "F7"}, {8, "0"}};
  const std::string in = DxfFile({Section("BLOCKS", blocks), Section("ENTITIES", entities), Section("OBJECTS", {})});
  writeText("in.dxf", in);
  ASSERT_EQ(db->readDwgFile(wpath("in.dxf").c_str()), Acad::eOk);
  const std::vector<AcDbObjectId> ms = modelSpace();
  ASSERT_EQ(ms.size(), 3u);
  EXPECT_NE(kelhost::dxf::KeptDataOf(kelhost::db::Peek(ms[0])), nullptr);
  EXPECT_NE(kelhost::dxf::KeptDataOf(kelhost::db::Peek(ms[1])), nullptr);
  // Nothing of them was made: no vertex or attribute under their handles.
  for (const wchar_t* h : {L"E3", L"E4", L"E5", L"F3", L"F4"})
    EXPECT_EQ(eval(std::wstring(L"(handent \"") + h + L"\")"), L"nil") << kelhost::ToUtf8(h);
  EXPECT_EQ(eval(L"(entnext (handent \"E2\"))"), eval(L"(handent \"F2\")"));

  ASSERT_EQ(db->saveAs(wpath("out.dxf").c_str()), Acad::eOk);
  const Groups before = ParseGroups(in), after = ParseGroups(readText("out.dxf"));
  for (const char* h : {"E3", "E4", "E5", "F3", "F4"}) EXPECT_EQ(ItemOf(after, h), ItemOf(before, h)) << h;
}

TEST_F(DxfFileTest, SequencesWithoutFollowersStayWellFormed) {
  // A polyline made without vertices gets the SEQEND a file needs; an
  // insert whose 66 promised attributes it does not have loses no SEQEND
  // to model space.
  AcDbBlockTableRecord* ms = nullptr;
  ASSERT_EQ(acdbOpenObject(ms, db->modelSpaceId(), AcDb::kForWrite), Acad::eOk);
  auto* empty = new AcDb2dPolyline;
  ASSERT_EQ(ms->appendAcDbEntity(empty), Acad::eOk);
  empty->close();
  ms->close();
  saveAndReopen("empty.dxf");
  ASSERT_EQ(modelSpace().size(), 1u);
  auto* polyline = kelhost::db::PeekAs<AcDb2dPolyline>(modelSpace()[0]);
  ASSERT_NE(polyline, nullptr);
  EXPECT_FALSE(polyline->sequenceEndId().isNull());

  const Groups entities = {{0, "INSERT"}, {5, "1A2"}, {8, "0"}, {66, "1"}, {2, "*U1"}, {10, "0.0"}, {20, "0.0"},
                           {30, "0.0"}, {0, "SEQEND"}, {5, "1A3"}, {8, "0"}};
  const Groups blocks = {{0, "BLOCK"}, {5, "F6"}, {8, "0"}, {2, "*U1"}, {70, "1"}, {10, "0.0"}, {20, "0.0"},
                         {30, "0.0"}, {3, "*U1"}, {0, "ENDBLK"}, {5, "F7"}, {8, "0"}};
  writeText("insert.dxf", DxfFile({Section("BLOCKS", blocks), Section("ENTITIES", entities)}));
  ASSERT_EQ(db->readDwgFile(wpath("insert.dxf").c_str()), Acad::eOk);
  ASSERT_EQ(db->saveAs(wpath("insert-out.dxf").c_str()), Acad::eOk);
  ASSERT_EQ(db->readDwgFile(wpath("insert-out.dxf").c_str()), Acad::eOk);
  ASSERT_EQ(modelSpace().size(), 1u);
  EXPECT_NE(kelhost::db::PeekAs<AcDbBlockReference>(modelSpace()[0]), nullptr);
}
