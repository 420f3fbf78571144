// LINE's options and continuation, ERASE, and entities drawn in a user
// coordinate system.
#include "draw_fixture.h"
#include "kelhost/sysvars.h"

namespace {

class LineEraseTest : public DrawCommandTest {
 protected:
  void ExpectLine(AcDbObjectId id, double x1, double y1, double x2, double y2) {
    Read<AcDbLine>(id, [&](const AcDbLine& l) {
      EXPECT_AT(l.startPoint(), x1, y1);
      EXPECT_AT(l.endPoint(), x2, y2);
    });
  }
};

TEST_F(LineEraseTest, UndoCloseAndContinuing) {
  ASSERT_EQ(Run({T(L"LINE"), T(L"0,0"), T(L"u"), T(L"10,0"), T(L"10,5"), T(L"u"), T(L"10,10"), T(L"c")}), RTNORM);
  EXPECT_NE(out.find(L"All segments already undone."), std::wstring::npos);
  const std::vector<AcDbObjectId> ids = Entities();
  ASSERT_EQ(ids.size(), 3u);
  ExpectLine(ids[1], 10, 0, 10, 10);
  ExpectLine(ids[2], 10, 10, 0, 0);
  // Enter continues from the end of the last line, with no length to ask.
  ASSERT_EQ(Run({T(L"LINE"), Enter(), T(L"-5,0"), Enter()}), RTNORM);
  ExpectLine(Last(), 0, 0, -5, 0);
  EXPECT_EQ(out.find(L"Length of line"), std::wstring::npos);
}

TEST_F(LineEraseTest, NothingToContinueInANewDrawing) {
  EXPECT_EQ(Run({T(L"LINE"), Enter()}), RTCAN);
  EXPECT_NE(out.find(L"No line or arc to continue."), std::wstring::npos);
  EXPECT_TRUE(Entities().empty());
}

TEST_F(LineEraseTest, EraseSelectedObjectsButNotThoseOnLockedLayers) {
  const AcDbObjectId a = MakeLine(0, 0, 1, 1), b = MakeLine(5, 5, 6, 6), c = MakeLine(9, 9, 8, 8);
  AcDbLayerTable* layers = nullptr;
  ASSERT_EQ(db->getLayerTable(layers, AcDb::kForWrite), Acad::eOk);
  auto* locked = new AcDbLayerTableRecord;
  locked->setName(L"Fixed");
  locked->setIsLocked(true);
  AcDbObjectId fixed;
  ASSERT_EQ(layers->add(fixed, locked), Acad::eOk);
  locked->close();
  layers->close();
  AcDbEntity* e = nullptr;
  ASSERT_EQ(acdbOpenAcDbEntity(e, c, AcDb::kForWrite), Acad::eOk);
  e->setLayer(fixed);
  e->close();
  ASSERT_EQ(Run({T(L"ERASE"), Pick(a, 0.5, 0.5), Pick(c, 8.5, 8.5), Enter()}), RTNORM);
  EXPECT_NE(out.find(L"\n1 was on a locked layer."), std::wstring::npos);
  const std::vector<AcDbObjectId> left = Entities();
  ASSERT_EQ(left.size(), 2u);
  EXPECT_EQ(left[0], b);
  EXPECT_EQ(left[1], c);
}

TEST_F(LineEraseTest, PointsAreInTheUcsAndEntitiesInTheWorld) {
  // A UCS moved to (100,0) and turned a quarter anticlockwise.
  resbuf org{}, xdir{}, ydir{};
  org.restype = xdir.restype = ydir.restype = RT3DPOINT;
  org.resval.rpoint[0] = 100;
  xdir.resval.rpoint[1] = 1;
  ydir.resval.rpoint[0] = -1;
  ASSERT_EQ(kelhost::sysvars::SetHostVar(L"UCSORG", &org), RTNORM);
  ASSERT_EQ(kelhost::sysvars::SetHostVar(L"UCSXDIR", &xdir), RTNORM);
  ASSERT_EQ(kelhost::sysvars::SetHostVar(L"UCSYDIR", &ydir), RTNORM);
  ASSERT_EQ(Run({T(L"LINE"), T(L"0,0"), T(L"10,0"), Enter()}), RTNORM);
  ExpectLine(Last(), 100, 0, 100, 10);
  ASSERT_EQ(Run({T(L"ARC"), T(L"c"), T(L"0,0"), T(L"10,0"), T(L"0,10")}), RTNORM);
  Read<AcDbArc>(Last(), [](const AcDbArc& a) {
    AcGePoint3d s, e;
    a.getStartPoint(s);
    a.getEndPoint(e);
    EXPECT_AT(s, 100, 10);
    EXPECT_AT(e, 90, 0);
  });
  ASSERT_EQ(Run({T(L"PLINE"), T(L"0,0"), T(L"10,0"), Enter()}), RTNORM);
  Read<AcDbPolyline>(Last(), [](const AcDbPolyline& p) {
    AcGePoint3d end;
    p.getPointAt(1, end);
    EXPECT_AT(end, 100, 10);
  });
}

}  // namespace
