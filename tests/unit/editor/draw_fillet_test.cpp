// FILLET: trimming and extending lines and arcs, the fillet arc, the
// settings, and the fillets that cannot be made.
#include <cmath>

#include "draw_fixture.h"

namespace {

constexpr double kPi = 3.14159265358979323846;

class FilletCommandTest : public DrawCommandTest {
 protected:
  void ExpectLine(AcDbObjectId id, double x1, double y1, double x2, double y2) {
    Read<AcDbLine>(id, [&](const AcDbLine& l) {
      EXPECT_AT(l.startPoint(), x1, y1);
      EXPECT_AT(l.endPoint(), x2, y2);
    });
  }
  void ExpectArc(AcDbObjectId id, double cx, double cy, double r, double from, double to) {
    Read<AcDbArc>(id, [&](const AcDbArc& a) {
      EXPECT_AT(a.center(), cx, cy);
      EXPECT_NEAR(a.radius(), r, 1e-9);
      EXPECT_NEAR(a.startAngle(), from, 1e-9);
      EXPECT_NEAR(a.endAngle(), to, 1e-9);
    });
  }
};

TEST_F(FilletCommandTest, CrossingLinesKeepThePickedPartsAndGetATangentArc) {
  const AcDbObjectId a = MakeLine(0, 0, 20, 0), b = MakeLine(10, -10, 10, 10);
  ASSERT_EQ(Run({T(L"FILLET"), T(L"r"), T(L"2"), Pick(a, 2, 0), Pick(b, 10, 8)}), RTNORM);
  ExpectLine(a, 0, 0, 8, 0);
  ExpectLine(b, 10, 2, 10, 10);
  ASSERT_EQ(Entities().size(), 3u);
  ExpectArc(Last(), 8, 2, 2, 3 * kPi / 2, 0);
  EXPECT_EQ(RealVar(L"FILLETRAD"), 2.0);
  EXPECT_NE(out.find(L"Current settings: Mode = TRIM, Radius = 0.0000\n"
                     L"Select first object or [Undo/Polyline/Radius/Trim/Multiple]: r\n"
                     L"Specify fillet radius <0.0000>: 2\n"
                     L"Select first object or [Undo/Polyline/Radius/Trim/Multiple]: "),
            std::wstring::npos);
  EXPECT_NE(out.find(L"Select second object or shift-select to apply corner or [Radius]: "), std::wstring::npos);
}

TEST_F(FilletCommandTest, ZeroRadiusExtendsLinesToTheirCorner) {
  const AcDbObjectId a = MakeLine(0, 0, 5, 0), b = MakeLine(10, 10, 10, 3);
  ASSERT_EQ(Run({T(L"FILLET"), Pick(a, 1, 0), Pick(b, 10, 9)}), RTNORM);
  ExpectLine(a, 0, 0, 10, 0);
  ExpectLine(b, 10, 10, 10, 0);
  EXPECT_EQ(Entities().size(), 2u);
}

TEST_F(FilletCommandTest, ImpossibleFilletsChangeNothing) {
  const AcDbObjectId a = MakeLine(0, 0, 5, 0), b = MakeLine(5, 1, 5, 3);
  SetReal(L"FILLETRAD", 4);
  Run({T(L"FILLET"), Pick(a, 1, 0), Pick(b, 5, 2)});
  EXPECT_NE(out.find(L"\nRadius is too large"), std::wstring::npos);
  ExpectLine(a, 0, 0, 5, 0);
  ExpectLine(b, 5, 1, 5, 3);
  // Parallel lines have no corner for a zero radius.
  SetReal(L"FILLETRAD", 0);
  const AcDbObjectId c = MakeLine(0, 10, 5, 10);
  Run({T(L"FILLET"), Pick(a, 1, 0), Pick(c, 1, 10)});
  EXPECT_NE(out.find(L"\nLines are parallel"), std::wstring::npos);
  EXPECT_EQ(Entities().size(), 3u);
  ExpectLine(c, 0, 10, 5, 10);
}

TEST_F(FilletCommandTest, ParallelLinesGetAHalfCircleAtThePickedEnd) {
  const AcDbObjectId a = MakeLine(0, 0, 10, 0), b = MakeLine(0, 4, 6, 4);
  SetReal(L"FILLETRAD", 1);
  ASSERT_EQ(Run({T(L"FILLET"), Pick(a, 9, 0), Pick(b, 5, 4)}), RTNORM);
  ExpectLine(a, 0, 0, 10, 0);
  ExpectLine(b, 0, 4, 10, 4);                         // extended to match the first
  ExpectArc(Last(), 10, 2, 2, 3 * kPi / 2, kPi / 2);  // bulging outwards
  EXPECT_EQ(RealVar(L"FILLETRAD"), 1.0);              // the radius setting is left alone
}

TEST_F(FilletCommandTest, NoTrimLeavesTheObjectsAndTheArcTakesTheirCommonLayer) {
  const AcDbObjectId a = MakeLine(0, 0, 20, 0), b = MakeLine(10, -10, 10, 10);
  ASSERT_EQ(Run({T(L"FILLET"), T(L"t"), T(L"n"), T(L"r"), T(L"2"), Pick(a, 2, 0), Pick(b, 10, 8)}), RTNORM);
  EXPECT_EQ(RealVar(L"TRIMMODE"), 0.0);
  ExpectLine(a, 0, 0, 20, 0);
  ExpectLine(b, 10, -10, 10, 10);
  Read<AcDbEntity>(Last(), [](const AcDbEntity& e) { EXPECT_EQ(e.layerId(), e.database()->clayer()); });
  // Both on another layer: the arc goes there too.
  AcDbLayerTable* layers = nullptr;
  ASSERT_EQ(db->getLayerTable(layers, AcDb::kForWrite), Acad::eOk);
  auto* record = new AcDbLayerTableRecord;
  record->setName(L"Walls");
  AcDbObjectId walls;
  ASSERT_EQ(layers->add(walls, record), Acad::eOk);
  record->close();
  layers->close();
  for (AcDbObjectId id : {a, b}) {
    AcDbEntity* e = nullptr;
    ASSERT_EQ(acdbOpenAcDbEntity(e, id, AcDb::kForWrite), Acad::eOk);
    e->setLayer(walls);
    e->close();
  }
  out.clear();
  ASSERT_EQ(Run({T(L"FILLET"), Pick(a, 18, 0), Pick(b, 10, -8)}), RTNORM);
  EXPECT_NE(out.find(L"Current settings: Mode = NOTRIM, Radius = 2.0000"), std::wstring::npos);
  Read<AcDbEntity>(Last(), [&](const AcDbEntity& e) { EXPECT_EQ(e.layerId(), walls); });
  ExpectArc(Last(), 12, -2, 2, kPi / 2, kPi);
}

TEST_F(FilletCommandTest, LineAndArc) {
  ASSERT_EQ(Run({T(L"ARC"), T(L"10,0"), T(L"0,10"), T(L"-10,0")}), RTNORM);
  const AcDbObjectId arc = Last(), line = MakeLine(12, -5, 12, 20);
  ASSERT_EQ(Run({T(L"FILLET"), T(L"r"), T(L"1"), Pick(arc, 7.0710678, 7.0710678), Pick(line, 12, 15)}), RTNORM);
  ExpectArc(arc, 0, 0, 10, 0, kPi);
  ExpectLine(line, 12, 0, 12, 20);
  ExpectArc(Last(), 11, 0, 1, kPi, 0);
  // Zero radius: the arc is extended round to meet the line.
  const AcDbObjectId low = MakeLine(-20, -6, 20, -6);
  ASSERT_EQ(Run({T(L"FILLET"), T(L"r"), T(L"0"), Pick(arc, -7.0710678, 7.0710678), Pick(low, -15, -6)}), RTNORM);
  ExpectArc(arc, 0, 0, 10, 0, kPi + std::asin(0.6));
  ExpectLine(low, -20, -6, -8, -6);
}

TEST_F(FilletCommandTest, MultipleUntilEnterWithUndo) {
  const AcDbObjectId a = MakeLine(0, 0, 5, 0), b = MakeLine(10, 10, 10, 3);
  const AcDbObjectId c = MakeLine(0, 20, 5, 20), d = MakeLine(10, 30, 10, 23);
  ASSERT_EQ(Run({T(L"FILLET"), T(L"m"), T(L"u"), Pick(a, 1, 0), Pick(b, 10, 9), Pick(c, 1, 20), Pick(d, 10, 29),
                 T(L"u"), Pick(a, 1, 0), Pick(c, 1, 20), Enter()}),
            RTNORM);
  EXPECT_NE(out.find(L"Command has been completely undone."), std::wstring::npos);
  ExpectLine(a, 0, 0, 10, 0);
  ExpectLine(b, 10, 10, 10, 0);
  ExpectLine(c, 0, 20, 5, 20);  // undone
  ExpectLine(d, 10, 30, 10, 23);
  EXPECT_NE(out.find(L"\nLines are parallel"), std::wstring::npos);  // and Multiple goes on after it
}

TEST_F(FilletCommandTest, PolylineRoundsItsCorners) {
  ASSERT_EQ(Run({T(L"PLINE"), T(L"0,0"), T(L"10,0"), T(L"10,10"), T(L"0,10"), T(L"c")}), RTNORM);
  const AcDbObjectId square = Last();
  Run({T(L"FILLET"), Pick(square, 5, 0)});
  EXPECT_NE(out.find(L"Cannot fillet that object."), std::wstring::npos);
  // A radius of 6 on sides of 10: every other corner finds its sides used up.
  ASSERT_EQ(Run({T(L"FILLET"), T(L"r"), T(L"6"), T(L"p"), Pick(square, 5, 0)}), RTNORM);
  EXPECT_NE(out.find(L"\n2 lines were filleted\n2 were too short"), std::wstring::npos);
  Read<AcDbPolyline>(square, [](const AcDbPolyline& p) {
    ASSERT_EQ(p.numVerts(), 6u);
    EXPECT_TRUE(p.isClosed());
    AcGePoint2d pt;
    double bulge = 0;
    p.getPointAt(0, pt);
    p.getBulgeAt(0, bulge);
    EXPECT_AT(pt, 0, 6);  // the start corner rounded: a quarter circle from (0,6) to (6,0)
    EXPECT_NEAR(bulge, std::tan(kPi / 8), 1e-12);
    p.getPointAt(1, pt);
    EXPECT_AT(pt, 6, 0);
    p.getPointAt(2, pt);
    EXPECT_AT(pt, 10, 0);  // a corner left as it was
  });
}

}  // namespace
