// The KEL:: drawing functions: where entities go (the current drawing's
// model space, or a database's current space), what each maker makes,
// the small open-change-close edits, style lookups by name, the layer
// clean-ups and the UCS conversions.
#include <gtest/gtest.h>

#include <cmath>

#include "db/stub.h"
#include "db/working.h"
#include "editor_module_fixture.h"
#include "kelcad/kelcad.h"
#include "kelhost/ui.h"

namespace {

class DrawingApi : public EditorModuleTest {
 protected:
  void SetUp() override {
    EditorModuleTest::SetUp();
    KEL::SetCurDWGPtr(nullptr);
  }
  void TearDown() override {
    EXPECT_EQ(kelhost::db::OpenObjectCount(), 0) << "objects left open";
    KEL::SetCurDWGPtr(nullptr);
    EditorModuleTest::TearDown();
  }
  static int Count(AcDbDatabase* db, AcDbObjectId space) {
    AcDbBlockTableRecord* block = nullptr;
    if (acdbOpenObject(block, space, AcDb::kForRead) != Acad::eOk) return -1;
    const int n = static_cast<int>(block->entityIds().size());
    block->close();
    return n;
  }
  template <class T>
  static T* Peek(AcDbObjectId id) {
    return kelhost::db::PeekAs<T>(id);
  }
};

TEST_F(DrawingApi, AppendGoesToModelSpaceOfTheCurrentDrawingAndCurrentSpaceToTheWorkingOne) {
  AcDbDatabase side;
  ASSERT_TRUE(KEL::SetCurDWGPtr(&side));
  EXPECT_EQ(KEL::GetCurDWGPtr(), &side);
  auto* line = new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0));
  AcDbObjectId id;
  ASSERT_EQ(KEL::Append(line, id), Acad::eOk);
  EXPECT_TRUE(line->isWriteEnabled()) << "Append leaves the entity open for its caller";
  line->close();
  EXPECT_EQ(id.database(), &side);
  EXPECT_EQ(Count(&side, side.modelSpaceId()), 1);

  // addToCurrentSpace without a database: the working drawing, its
  // current space (paper space here), whatever the current drawing is.
  Eval(L"(setvar \"TILEMODE\" 0)");
  auto* circle = new AcDbCircle(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 1.0);
  EXPECT_EQ(KEL::addToCurrentSpaceAndClose(circle), Acad::eOk);
  EXPECT_EQ(Count(drawing.get(), drawing->paperSpaceId()), 1);
  EXPECT_EQ(Count(drawing.get(), drawing->modelSpaceId()), 0);
  AcDbBlockTableRecord* space = KEL::openCurrentSpaceBlock(AcDb::kForRead, drawing.get());
  ASSERT_NE(space, nullptr);
  EXPECT_EQ(space->objectId(), drawing->paperSpaceId());
  space->close();
  EXPECT_EQ(KEL::openCurrentSpaceBlock(AcDb::kForRead, nullptr), nullptr);

  // A refused append: the message, and the entity deleted (the sanitizers
  // see it go).
  auto* again = new AcDbLine;
  ASSERT_EQ(KEL::Append(again, id), Acad::eOk);
  again->close();
  AcDbLine* open = nullptr;
  ASSERT_EQ(acdbOpenObject(open, id, AcDb::kForRead), Acad::eOk);
  out.clear();
  EXPECT_EQ(KEL::addToCurrentSpace(open, &side), Acad::eAlreadyInDb);
  EXPECT_EQ(out, L"\nERROR: could not add entity to current space ");
  open->close();
  EXPECT_NE(KEL::addToCurrentSpaceAndClose(nullptr), Acad::eOk);
}

TEST_F(DrawingApi, NoDrawingAtAllIsStatus364AndMakersLeaveNothing) {
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  kelhost::db::SetZeroDocumentState(true);
  EXPECT_FALSE(KEL::SetCurDWGPtr(nullptr));
  EXPECT_EQ(KEL::GetCurDWGPtr(), nullptr);
  AcDbLine line;
  AcDbObjectId id;
  EXPECT_EQ(static_cast<int>(KEL::Append(&line, id)), 364);
  EXPECT_FALSE(KEL::CreateLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 1, 0), id));
  EXPECT_FALSE(KEL::CreateText(AcGePoint3d(0, 0, 0), L"x", id, 0.7));
  EXPECT_TRUE(id.isNull());
  EXPECT_EQ(KEL::addToCurrentSpace(&line), Acad::eInvalidInput);
  EXPECT_FALSE(KEL::CreateLayer(L"L1", L"DASHED", 1, false));
  EXPECT_FALSE(layerInfo::DeleteAllEntity(L"*"));
  kelhost::db::SetZeroDocumentState(false);
  acdbHostApplicationServices()->setWorkingDatabase(drawing.get());
}

TEST_F(DrawingApi, MakersMakeWhatTheyAreGiven) {
  AcDbObjectId id;
  ASSERT_TRUE(KEL::CreateLine(AcGePoint2d(1, 2), AcGePoint2d(3, 4), id));
  EXPECT_EQ(Peek<AcDbLine>(id)->endPoint(), AcGePoint3d(3, 4, 0));
  ASSERT_TRUE(KEL::CreateLine(id));
  EXPECT_EQ(Peek<AcDbLine>(id)->startPoint(), AcGePoint3d(0, 0, 0));

  ASSERT_TRUE(KEL::CreatePline(AcGePoint2d(0, 0), AcGePoint2d(5, 0), id));
  EXPECT_EQ(Peek<AcDbPolyline>(id)->numVerts(), 2u);
  AcArray<AcGePoint2d> points;
  points.append(AcGePoint2d(0, 0));
  points.append(AcGePoint2d(1, 1));
  ASSERT_TRUE(KEL::CreatePline(points, id));
  EXPECT_EQ(Peek<AcDbPolyline>(id)->numVerts(), 0u) << "the array form adds no vertices";

  ASSERT_TRUE(KEL::CreateCircle(AcGePoint3d(1, 1, 0), AcGeVector3d::kZAxis, 2.5, id));
  EXPECT_EQ(Peek<AcDbCircle>(id)->radius(), 2.5);
  ASSERT_TRUE(KEL::CreateText(AcGePoint3d(2, 3, 0), L"标高", id, 0.7));
  EXPECT_EQ(Peek<AcDbText>(id)->widthFactor(), 0.7);
  EXPECT_EQ(std::wstring(Peek<AcDbText>(id)->textStringConst()), L"标高");
  EXPECT_EQ(Count(drawing.get(), drawing->modelSpaceId()), 6);
}

TEST_F(DrawingApi, ThreeDPolylineStaysOpenForItsCallerWhenNotClosed) {
  AcArray<AcGePoint3d> points;
  points.append(AcGePoint3d(0, 0, 0));
  points.append(AcGePoint3d(1, 0, 1));
  points.append(AcGePoint3d(1, 1, 2));
  AcDbObjectId id;
  ASSERT_TRUE(KEL::Create3dPline(AcDb::k3dSimplePoly, points, id, 1));
  EXPECT_TRUE(Peek<AcDb3dPolyline>(id)->isClosed());
  EXPECT_EQ(kelhost::db::OpenObjectCount(), 0);

  ASSERT_TRUE(KEL::Create3dPline(AcDb::k3dSimplePoly, points, id, 0));
  AcDb3dPolyline* open = Peek<AcDb3dPolyline>(id);
  EXPECT_FALSE(open->isClosed());
  EXPECT_TRUE(open->isWriteEnabled());
  EXPECT_EQ(kelhost::db::OpenObjectCount(), 1);
  open->close();  // the caller's part
  ASSERT_TRUE(KEL::Create3dPline(id));
  EXPECT_TRUE(Peek<AcDb3dPolyline>(id)->vertexIds().empty());
}

TEST_F(DrawingApi, EditsOpenChangeAndCloseOneEntity) {
  AcDbObjectId a, b;
  ASSERT_TRUE(KEL::CreateLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0), a));
  ASSERT_TRUE(KEL::CreateLine(AcGePoint3d(0, 1, 0), AcGePoint3d(1, 1, 0), b));

  EXPECT_TRUE(KEL::Highlight(a));
  EXPECT_TRUE(kelhost::IsHighlighted(a));
  EXPECT_TRUE(KEL::Unhighlight(a, AcDbFullSubentPath(), 1));
  EXPECT_FALSE(kelhost::IsHighlighted(a));

  bool visible = true;
  EXPECT_TRUE(KEL::Visible(a, false));
  EXPECT_TRUE(KEL::IsVisible(a, visible));
  EXPECT_FALSE(visible);

  CString handle;
  ASSERT_TRUE(KEL::GetHandle(a, handle));
  ads_name n;
  acdbGetAdsName(n, a);
  resbuf* list = acdbEntGet(n);
  EXPECT_EQ(std::wstring(handle.GetString()), std::wstring(KEL::GetRbXDXF(list, 5)->resval.rstring));
  acutRelRb(list);

  EXPECT_TRUE(KEL::SetEntColorIndex(a, 3));
  EXPECT_EQ(Peek<AcDbLine>(a)->colorIndex(), 3);
  EXPECT_FALSE(KEL::SetEntColorIndex(a, 300));

  AcDbLine* reader = nullptr;
  ASSERT_EQ(acdbOpenObject(reader, b, AcDb::kForRead), Acad::eOk);
  EXPECT_FALSE(KEL::SetEntColorIndex(b, 1)) << "a reader holds it";
  reader->close();

  bool erased = false;
  EXPECT_TRUE(KEL::IsErased(a, erased));
  EXPECT_FALSE(erased);
  AcArray<AcDbObjectId> ids;
  ids.append(a);
  ids.append(AcDbObjectId::kNull);
  ids.append(b);
  EXPECT_EQ(KEL::Erase(ids), 1);
  EXPECT_FALSE(KEL::IsErased(a, erased)) << "an erased entity does not open";
  EXPECT_FALSE(KEL::Erase(a));
  EXPECT_FALSE(KEL::GetHandle(AcDbObjectId::kNull, handle));
}

TEST_F(DrawingApi, DimensionTextHeightAndStyleAreTheDimensionsOwn) {
  auto* dim = new AcDbRotatedDimension(0.0, AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 0), AcGePoint3d(5, 3, 0));
  AcDbObjectId id;
  ASSERT_EQ(KEL::Append(dim, id), Acad::eOk);
  dim->close();
  EXPECT_EQ(KEL::SetEntTxtHigh(id, 4.5), Acad::eOk);
  EXPECT_EQ(Peek<AcDbDimension>(id)->dimtxt(), 4.5);

  AcDbObjectId standard, missing;
  EXPECT_EQ(KEL::GetTxtStyleIDbyName(L"standard", standard), Acad::eOk);
  EXPECT_FALSE(standard.isNull());
  EXPECT_EQ(KEL::GetDimStyleIDbyName(L"STANDARD", missing), Acad::eOk);
  EXPECT_FALSE(missing.isNull());
  EXPECT_EQ(KEL::GetTxtStyleIDbyName(L"NoSuchStyle", missing), Acad::eOk);
  EXPECT_TRUE(missing.isNull()) << "an unknown name is eOk with a null id";

  EXPECT_EQ(KEL::SetEntTxtStyle(id, CString(L"Standard")), Acad::eOk);
  EXPECT_EQ(Peek<AcDbDimension>(id)->dimtxsty(), standard);
  EXPECT_EQ(KEL::SetEntTxtStyle(id, CString(L"NoSuchStyle")), Acad::eOk);
  EXPECT_TRUE(Peek<AcDbDimension>(id)->dimtxsty().isNull());

  AcDbObjectId line;
  ASSERT_TRUE(KEL::CreateLine(line));
  EXPECT_EQ(KEL::SetEntTxtHigh(line, 2.0), Acad::eNotThatKindOfClass);
  EXPECT_EQ(KEL::SetEntTxtStyle(line, standard), Acad::eNotThatKindOfClass);
}

TEST_F(DrawingApi, RemovingALayersEntitiesTouchesModelSpaceOnly) {
  Eval(L"(entmake '((0 . \"LINE\") (8 . \"Wall\") (10 0.0 0.0 0.0) (11 1.0 0.0 0.0)))");
  Eval(L"(entmake '((0 . \"CIRCLE\") (8 . \"WALL\") (10 0.0 0.0 0.0) (40 . 1.0)))");
  Eval(L"(entmake '((0 . \"LINE\") (8 . \"0\") (10 0.0 0.0 0.0) (11 1.0 0.0 0.0)))");
  Eval(L"(entmake '((0 . \"LINE\") (8 . \"WALL\") (67 . 1) (10 0.0 0.0 0.0) (11 1.0 0.0 0.0)))");
  EXPECT_TRUE(KEL::RemoveAllEntitiesOnLayer(L"wall"));
  EXPECT_EQ(Eval(L"(sslength (ssget \"X\" '((8 . \"WALL\"))))"), L"1");
  EXPECT_EQ(Eval(L"(sslength (ssget \"X\"))"), L"2");
  EXPECT_EQ(out, L"");
}

TEST_F(DrawingApi, EmptyGroupsGo) {
  Eval(L"(setq a (entmakex '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 1.0 0.0 0.0))))");
  Eval(L"(setq b (entmakex '((0 . \"LINE\") (10 0.0 1.0 0.0) (11 1.0 1.0 0.0))))");
  Eval(L"(dictadd (namedobjdict) \"x\" (entmakex '((0 . \"DICTIONARY\") (100 . \"AcDbDictionary\"))))");
  Eval(L"(dictadd (cdr (assoc -1 (dictsearch (namedobjdict) \"ACAD_GROUP\"))) \"KEEP\" (entmakex (list '(0 . \"GROUP\") "
       L"'(100 . \"AcDbGroup\") '(300 . \"\") '(70 . 0) '(71 . 1) (cons 340 a))))");
  Eval(L"(dictadd (cdr (assoc -1 (dictsearch (namedobjdict) \"ACAD_GROUP\"))) \"GONE\" (entmakex (list '(0 . \"GROUP\") "
       L"'(100 . \"AcDbGroup\") '(300 . \"\") '(70 . 0) '(71 . 1) (cons 340 b))))");
  Eval(L"(entdel b)");
  EXPECT_EQ(KEL::ClearInvalidGroup(), 1);
  EXPECT_NE(Eval(L"(dictsearch (cdr (assoc -1 (dictsearch (namedobjdict) \"ACAD_GROUP\"))) \"KEEP\")"), L"nil");
  EXPECT_EQ(Eval(L"(dictsearch (cdr (assoc -1 (dictsearch (namedobjdict) \"ACAD_GROUP\"))) \"GONE\")"), L"nil");
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  kelhost::db::SetZeroDocumentState(true);
  EXPECT_EQ(KEL::ClearInvalidGroup(), 0);
  kelhost::db::SetZeroDocumentState(false);
  acdbHostApplicationServices()->setWorkingDatabase(drawing.get());
}

TEST_F(DrawingApi, UcsConversionsFollowTheUserSystem) {
  // A UCS at (10,0,0) turned a quarter turn about Z.
  HostVar(L"UCSORG", 10, 0, 0);
  HostVar(L"UCSXDIR", 0, 1, 0);
  HostVar(L"UCSYDIR", -1, 0, 0);
  EXPECT_TRUE(KEL::ucs2wcsPt3(AcGePoint3d(1, 0, 0)).isEqualTo(AcGePoint3d(10, 1, 0)));
  const double world[3] = {10, 1, 0};
  EXPECT_TRUE(KEL::wcs2ucsPt3(world).isEqualTo(AcGePoint3d(1, 0, 0)));
  double p[3] = {0, 2, 5};
  KEL::ads_pt_u2w(p);
  EXPECT_NEAR(p[0], 8, 1e-12);
  EXPECT_NEAR(p[1], 0, 1e-12);
  EXPECT_NEAR(p[2], 5, 1e-12);
  AcArray<AcGePoint3d> pts;
  pts.append(AcGePoint3d(10, 1, 0));
  pts.append(AcGePoint3d(10, 0, 0));
  const AcArray<AcGePoint3d> ucs = KEL::wcs2ucsAry(pts);
  ASSERT_EQ(ucs.length(), 2);
  EXPECT_TRUE(ucs[0].isEqualTo(AcGePoint3d(1, 0, 0)));
  EXPECT_TRUE(ucs[1].isEqualTo(AcGePoint3d(0, 0, 0)));
  resbuf* chain = acutBuildList(RTSHORT, 7, RT3DPOINT, world, RTNONE);
  EXPECT_EQ(KEL::wcs2ucsRbRet(chain), chain);
  EXPECT_EQ(chain->resval.rint, 7);
  EXPECT_NEAR(chain->rbnext->resval.rpoint[0], 1, 1e-12);
  acutRelRb(chain);
  EXPECT_EQ(KEL::wcs2ucsRbRet(nullptr), nullptr);
  EXPECT_NEAR(KEL::ucsAngleXZ(120.0), 30.0, 1e-9);
  HostVar(L"UCSXDIR", 1, 0, 0);
  HostVar(L"UCSYDIR", 0, 1, 0);
  EXPECT_EQ(KEL::ucsAngleXZ(120.0), 120.0);
}

}  // namespace
