// Curves and angles of the module's library: normalised angles, the
// parallel test, perpendicular feet, division and measurement, breaking,
// intersections, marker points and the largest fillet radius.
#include <gtest/gtest.h>

#include <cmath>

#include "db/stub.h"
#include "editor/command_processor.h"
#include "editor/undo.h"
#include "editor/undo_journal.h"
#include "editor_module_fixture.h"
#include "kelcad/kelcad.h"

namespace {

constexpr double kPi = 3.14159265358979323846;

class Curves : public EditorModuleTest {
 protected:
  void SetUp() override {
    EditorModuleTest::SetUp();
    ASSERT_TRUE(LoadModule());
  }
  void TearDown() override {
    EXPECT_EQ(kelhost::db::OpenObjectCount(), 0) << "objects left open";
    EditorModuleTest::TearDown();
  }
  // Appends the entity to model space and gives its id.
  AcDbObjectId Add(AcDbEntity* entity) {
    AcDbObjectId id;
    EXPECT_EQ(KEL::Append(entity, id), Acad::eOk);
    entity->close();
    return id;
  }
  AcDbObjectId Line(double x1, double y1, double x2, double y2) {
    return Add(new AcDbLine(AcGePoint3d(x1, y1, 0), AcGePoint3d(x2, y2, 0)));
  }
  static void Name(AcDbObjectId id, ads_name name) { ASSERT_EQ(acdbGetAdsName(name, id), Acad::eOk); }
  static bool Erased(AcDbObjectId id) {
    AcDbObject* o = nullptr;
    if (acdbOpenObject(o, id, AcDb::kForRead, true) != Acad::eOk) return false;
    const bool erased = o->isErased();
    o->close();
    return erased;
  }
  static std::wstring Kind(AcDbObjectId id) {
    AcDbEntity* e = nullptr;
    if (acdbOpenAcDbEntity(e, id, AcDb::kForRead) != Acad::eOk) return L"?";
    std::wstring name = e->isA()->name();
    e->close();
    return name;
  }
};

void ExpectPoint(const AcGePoint3d& p, double x, double y, double z = 0.0) {
  EXPECT_NEAR(p.x, x, 1e-9);
  EXPECT_NEAR(p.y, y, 1e-9);
  EXPECT_NEAR(p.z, z, 1e-9);
}

TEST(CurveAngles, NormalisationKeepsItsOneSidedRule) {
  EXPECT_DOUBLE_EQ(KEL::MakeAngleIn2PI(-kPi / 2), 3 * kPi / 2);
  EXPECT_DOUBLE_EQ(KEL::MakeAngleIn2PI(-5 * kPi), kPi);
  EXPECT_DOUBLE_EQ(KEL::MakeAngleIn2PI(2 * kPi), 2 * kPi);
  EXPECT_DOUBLE_EQ(KEL::MakeAngleIn2PI(7.0), 7.0);  // above a turn: left alone
  EXPECT_DOUBLE_EQ(KEL::TransAngleInPI(-kPi / 2), kPi / 2);
  EXPECT_DOUBLE_EQ(KEL::TransAngleInPI(kPi), 0.0);
  EXPECT_DOUBLE_EQ(KEL::TransAngleInPI(5 * kPi / 2), kPi / 2);
  EXPECT_NEAR(KEL::TransAngleInPI(-1e6), std::fmod(-1e6, kPi) + kPi, 1e-6);
}

TEST(CurveAngles, ParallelTestHasNoWrapAround) {
  const AcGePoint3d o(0, 0, 0);
  EXPECT_TRUE(KEL::IsLinesPX(o, AcGePoint3d(1, 1, 0), AcGePoint3d(5, 0, 0), AcGePoint3d(3, -2, 0), 1e-9));
  EXPECT_FALSE(KEL::IsLinesPX(o, AcGePoint3d(1, 0, 0), o, AcGePoint3d(1, 1, 0), 0.1));
  const AcGePoint3d almostX(std::cos(0.0001), std::sin(0.0001), 0);
  const AcGePoint3d almostBack(std::cos(kPi - 0.0001), std::sin(kPi - 0.0001), 0);
  EXPECT_FALSE(KEL::IsLinesPX(o, almostX, o, almostBack, 0.001));
  EXPECT_TRUE(KEL::IsLinesPX(o, almostX, o, almostBack, kPi));
}

TEST_F(Curves, FootOfThePerpendicularAndTheDegenerateLine) {
  const double p[3] = {3, 4, 0}, s[3] = {0, 0, 0}, e[3] = {10, 0, 0};
  double foot[3];
  EXPECT_FALSE(KEL::Qtyd(p, s, e, foot));
  EXPECT_DOUBLE_EQ(foot[0], 3.0);
  EXPECT_DOUBLE_EQ(foot[1], 0.0);
  const double same[3] = {2, 2, 2};
  EXPECT_TRUE(KEL::Qtyd(p, same, same, foot));
  EXPECT_EQ(foot[0], 2.0);
  EXPECT_EQ(foot[2], 2.0);
  // The tolerance is read at every call and weighed against the squared
  // length: a line 0.9 long counts as a point under a tolerance of 1.
  const double shortEnd[3] = {0.9, 0, 0};
  EXPECT_FALSE(KEL::Qtyd(p, s, shortEnd, foot));
  KEL::SetPointEQ(1.0);
  EXPECT_TRUE(KEL::Qtyd(p, s, shortEnd, foot));
  EXPECT_EQ(foot[0], 0.0);
}

TEST_F(Curves, DivisionSumsItsStepsAndMayLoseTheEnd) {
  AcArray<AcGePoint3d> points;
  ASSERT_TRUE(KEL::DivideCurve(points, Line(0, 0, 10, 0), 4));
  ASSERT_EQ(points.length(), 5);
  for (int i = 0; i < 5; ++i) ExpectPoint(points[i], 2.5 * i, 0);
  // 1 / 9 added nine times overshoots 1: the end point is not there.
  points.setLogicalLength(0);
  ASSERT_TRUE(KEL::DivideCurve(points, Line(0, 0, 1, 0), 9));
  EXPECT_EQ(points.length(), 9);
  points.setLogicalLength(0);
  ASSERT_TRUE(KEL::MeasureCurve(points, Line(0, 0, 10, 0), 3));
  ASSERT_EQ(points.length(), 4);
  ExpectPoint(points[3], 9, 0);
  double length = 0;
  const AcDbObjectId circle = Add(new AcDbCircle(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 1));
  ASSERT_TRUE(KEL::GetCurveLength(circle, length));
  EXPECT_NEAR(length, 2 * kPi, 1e-12);
}

TEST_F(Curves, WrongKindsAndEmptyCurvesGiveAnAnswer) {
  AcArray<AcGePoint3d> points;
  const AcDbObjectId text = Add(new AcDbText(AcGePoint3d(0, 0, 0), L"x"));
  double length = -1;
  EXPECT_FALSE(KEL::GetCurveLength(text, length));
  EXPECT_FALSE(KEL::DivideCurve(points, text, 3));
  EXPECT_FALSE(KEL::MeasureCurve(points, Line(0, 0, 1, 0), 0.0));
  EXPECT_FALSE(KEL::DivideCurve(points, Line(0, 0, 1, 0), -2));
  EXPECT_FALSE(KEL::DivideCurve(points, AcDbObjectId(), 2));
  EXPECT_TRUE(KEL::DivideCurve(points, Line(4, 4, 4, 4), 3));
  EXPECT_LE(points.length(), 1);
  AcGePoint3d out;
  EXPECT_FALSE(KEL::GetRightPointAtDist(text, AcGePoint3d(0, 0, 0), 1, out));
  ads_name name;
  Name(text, name);
  double a[3], b[3], c[3], angle, len;
  EXPECT_FALSE(KEL::GetARCVertex(name, a, b, c));
  EXPECT_FALSE(KEL::GetLAMarkPoint(name, a, b, c, angle, len));
}

TEST_F(Curves, BreakReplacesTheCurveWithItsPieces) {
  const AcDbObjectId line = Line(0, 0, 10, 0);
  AcArray<AcGePoint3d> at;
  at.append(AcGePoint3d(4, 0, 0));
  at.append(AcGePoint3d(50, 50, 0));  // off the line: ignored
  AcArray<AcDbObjectId> pieces;
  ASSERT_TRUE(KEL::Break(line, at, false, pieces));
  ASSERT_EQ(pieces.length(), 2);
  EXPECT_TRUE(Erased(line));
  double length = 0;
  ASSERT_TRUE(KEL::GetCurveLength(pieces[0], length));
  EXPECT_NEAR(length, 4, 1e-12);
  // In pairs, as BREAK's two points: the part between them goes.
  const AcDbObjectId circle = Add(new AcDbCircle(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 1));
  AcArray<AcGePoint3d> pair;
  pair.append(AcGePoint3d(0, 1, 0));
  pair.append(AcGePoint3d(1, 0, 0));
  pieces.setLogicalLength(0);
  ASSERT_TRUE(KEL::Break(circle, pair, true, pieces));
  ASSERT_EQ(pieces.length(), 1);
  EXPECT_EQ(Kind(pieces[0]), L"AcDbArc");
  ASSERT_TRUE(KEL::GetCurveLength(pieces[0], length));
  EXPECT_NEAR(length, 1.5 * kPi, 1e-9);
  // A polyline's bulge segment cut in the middle keeps its curvature.
  auto* pline = new AcDbPolyline();
  pline->addVertexAt(0, AcGePoint2d(0, 0), 1.0);  // a half circle to (2, 0)
  pline->addVertexAt(1, AcGePoint2d(2, 0));
  pline->addVertexAt(2, AcGePoint2d(2, 5));
  const AcDbObjectId pl = Add(pline);
  AcArray<AcGePoint3d> top;
  top.append(AcGePoint3d(1, -1, 0));
  pieces.setLogicalLength(0);
  ASSERT_TRUE(KEL::Break(pl, top, false, pieces));
  ASSERT_EQ(pieces.length(), 2);
  ASSERT_TRUE(KEL::GetCurveLength(pieces[0], length));
  EXPECT_NEAR(length, kPi / 2, 1e-9);
  ASSERT_TRUE(KEL::GetCurveLength(pieces[1], length));
  EXPECT_NEAR(length, kPi / 2 + 5, 1e-9);
  // Nothing to break at: refused, the curve stays.
  const AcDbObjectId kept = Line(0, 0, 1, 0);
  pieces.setLogicalLength(0);
  EXPECT_FALSE(KEL::Break(kept, AcArray<AcGePoint3d>(), false, pieces));
  EXPECT_FALSE(Erased(kept));
}

TEST_F(Curves, IntersectionsCountEachPointOnce) {
  AcArray<AcGePoint3d> points;
  EXPECT_EQ(KEL::IntersectWith(Line(0, 0, 10, 10), Line(0, 10, 10, 0), AcDb::kOnBothOperands, points), 1);
  ExpectPoint(points[0], 5, 5);
  // Parallel lines, and lines that meet only when extended.
  EXPECT_EQ(KEL::IntersectWith(Line(0, 0, 1, 0), Line(0, 1, 1, 1), AcDb::kExtendBoth, points), 0);
  EXPECT_EQ(KEL::IntersectWith(Line(0, 0, 1, 0), Line(5, 1, 5, 2), AcDb::kOnBothOperands, points), 0);
  EXPECT_EQ(KEL::IntersectWith(Line(0, 0, 1, 0), Line(5, 1, 5, 2), AcDb::kExtendBoth, points), 1);
  // A line through a polyline's vertex meets both its segments there.
  auto* pline = new AcDbPolyline();
  pline->addVertexAt(0, AcGePoint2d(0, 0));
  pline->addVertexAt(1, AcGePoint2d(2, 2));
  pline->addVertexAt(2, AcGePoint2d(4, 0));
  ads_name a, b;
  Name(Add(pline), a);
  Name(Line(2, 0, 2, 5), b);
  points.setLogicalLength(0);
  EXPECT_EQ(KEL::GetEntIntersect(a, b, points), 1);
  ExpectPoint(points[0], 2, 2);
  EXPECT_EQ(KEL::IntersectWith(AcDbObjectId(), Line(0, 0, 1, 0), AcDb::kOnBothOperands, points), -1);
}

TEST_F(Curves, ArcAndLineMarkerPoints) {
  ads_name arc, line;
  Name(Add(new AcDbArc(AcGePoint3d(1, 1, 0), 2, 0, kPi)), arc);
  double s[3], v[3], e[3];
  ASSERT_TRUE(KEL::GetARCVertex(arc, s, v, e));
  EXPECT_NEAR(s[0], 3, 1e-12);
  EXPECT_NEAR(v[1], 3, 1e-12);
  EXPECT_NEAR(e[0], -1, 1e-12);
  // A line drawn leftwards is labelled as if drawn rightwards.
  Name(Line(10, 0, 0, 0), line);
  double angle = -1, length = -1;
  ASSERT_TRUE(KEL::GetLAMarkPoint(line, s, v, e, angle, length));
  EXPECT_EQ(s[0], 5.0);
  EXPECT_NEAR(v[1], -1.0, 1e-12);  // left of the line as drawn
  EXPECT_NEAR(e[1], 1.0, 1e-12);
  EXPECT_NEAR(angle, 0.0, 1e-12);
  EXPECT_EQ(length, 10.0);
}

TEST_F(Curves, PointsTowardsTheRightAndSortedPoints) {
  AcGePoint3d out;
  ASSERT_TRUE(KEL::GetRightPointAtDist(Line(10, 0, 0, 0), AcGePoint3d(5, 1, 0), 2, out));
  ExpectPoint(out, 7, 0);
  ASSERT_TRUE(KEL::GetRightPointAtDist(Line(0, 0, 10, 0), AcGePoint3d(5, 0, 0), 2, out));
  ExpectPoint(out, 7, 0);
  EXPECT_FALSE(KEL::GetRightPointAtDist(Line(0, 0, 10, 0), AcGePoint3d(5, 0, 0), 6, out));

  CArray<AcGePoint3d, AcGePoint3d&> points;
  for (auto p : {AcGePoint3d(2, 1, 0), AcGePoint3d(1, 5, 0), AcGePoint3d(2, 0, 0), AcGePoint3d(0, 3, 0)}) points.Add(p);
  KEL::SortCArrayAcGePoint3d(0, points);
  EXPECT_EQ(points[0].x, 0.0);
  EXPECT_EQ(points[2], AcGePoint3d(2, 0, 0));  // ties by y
  KEL::SortCArrayAcGePoint3d(3, points);
  EXPECT_EQ(points[0].y, 5.0);
  EXPECT_EQ(points[3].y, 0.0);
  KEL::SortCArrayAcGePoint3d(9, points);
  EXPECT_EQ(points[0].y, 5.0);
}

TEST_F(Curves, LargestFilletRadiusIsOneFilletCanDraw) {
  ads_name e1, e2;
  Name(Line(0, 0, 10, 0), e1);
  Name(Line(0, 1, 0, 4), e2);  // reaches the corner only when extended
  const double p1[3] = {5, 0, 0}, p2[3] = {0, 2, 0};
  double r = 0;
  ASSERT_TRUE(KEL::js_f_max(e1, p1, e2, p2, r));
  EXPECT_NEAR(r, 4.0, 1e-9);
  EXPECT_EQ(Eval(L"t1"), L"4.0");
  EXPECT_EQ(Var(L"FILLETRAD"), L"4.0");
  // FILLET refuses a radius a little larger (a radius of 4 would use up
  // the shorter line) and draws one a little smaller.
  Eval(L"(setvar \"CMDECHO\" 0)");
  const std::wstring fillet = L"(command \"_.FILLET\" (list (entlast) '(0 2 0)) (list (entnext) '(5 0 0)))";
  Eval(L"(setvar \"FILLETRAD\" 4.001)");
  Eval(fillet);
  EXPECT_EQ(Eval(L"(cdr (assoc 0 (entget (entlast))))"), L"\"LINE\"");
  Eval(L"(setvar \"FILLETRAD\" 3.999)");
  Eval(fillet);
  EXPECT_EQ(Eval(L"(cdr (assoc 0 (entget (entlast))))"), L"\"ARC\"");

  out.clear();
  ads_name arc;
  Name(Add(new AcDbArc(AcGePoint3d(0, 0, 0), 10, -kPi / 2, kPi / 2)), arc);
  Name(Line(5, -20, 5, 20), e2);
  const double onArc[3] = {10, 0, 0}, onLine[3] = {5, 0, 0};
  ASSERT_TRUE(KEL::js_f_max(arc, onArc, e2, onLine, r));
  EXPECT_GT(r, 0.1);
  EXPECT_LT(r, 5.0);

  Name(Line(0, 5, 10, 5), e2);
  EXPECT_FALSE(KEL::js_f_max(e1, p1, e2, p2, r));
  Name(Add(new AcDbCircle(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 1)), e2);
  EXPECT_FALSE(KEL::js_f_max(e1, p1, e2, p2, r));
  EXPECT_FALSE(KEL::js_f_max(e2, p1, e1, p2, r));
  Name(Add(new AcDbArc(AcGePoint3d(0, 50, 0), 1, 0, kPi)), e2);
  EXPECT_FALSE(KEL::js_f_max(e1, p1, e2, p2, r));
  ads_name gone;
  Name(Line(0, 0, 1, 1), gone);
  acdbEntDel(gone);
  EXPECT_FALSE(KEL::js_f_max(gone, p1, e1, p2, r));
  EXPECT_EQ(out, L"\n两线平行\n(js_f_max)ENT2 必须是线或弧\n(js_f_max)ENT1 必须是线或弧\n两实体不相交"
                 L"\n(js_f_max)ENT1 无效");
}

TEST_F(Curves, LengthsFollowEveryChangeOfTheCurve) {
  auto* pline = new AcDbPolyline();
  pline->addVertexAt(0, AcGePoint2d(0, 0));
  pline->addVertexAt(1, AcGePoint2d(10, 0));
  const AcDbObjectId id = Add(pline);
  double length = 0;
  {
    // Asked while a reader holds it, and again after.
    AcDbPolyline* reader = nullptr;
    ASSERT_EQ(acdbOpenObject(reader, id, AcDb::kForRead), Acad::eOk);
    ASSERT_TRUE(KEL::GetCurveLength(id, length));
    reader->close();
  }
  EXPECT_EQ(length, 10.0);
  AcDbPolyline* writer = nullptr;
  ASSERT_EQ(acdbOpenObject(writer, id, AcDb::kForWrite), Acad::eOk);
  writer->addVertexAt(2, AcGePoint2d(10, 5));
  writer->close();
  ASSERT_TRUE(KEL::GetCurveLength(id, length));
  EXPECT_EQ(length, 15.0);
  // Through its entity list, and back through UNDO.
  Eval(L"(setq e (entlast) d (entget e))");
  kelhost::editor::undo::Reset();
  kelhost::editor::undo::ExpressionStarted();
  Eval(L"(entmod (subst '(10 20.0 0.0) '(10 10.0 5.0) d))");
  kelhost::editor::undo::ExpressionEnded();
  ASSERT_TRUE(KEL::GetCurveLength(id, length));
  EXPECT_NEAR(length, 20.0, 1e-12);
  kelhost::editor::RunTypedCommand(L"U");
  EXPECT_EQ(Eval(L"(cdr (assoc 10 (reverse (entget e))))"), L"(10.0 5.0)");
  ASSERT_TRUE(KEL::GetCurveLength(id, length));
  EXPECT_EQ(length, 15.0);
}

}  // namespace
