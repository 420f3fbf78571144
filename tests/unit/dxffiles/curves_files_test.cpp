// Ellipses and splines in DXF files: written and read back to the same
// geometry and groups, read from the forms other programs write, and a
// spline whose data cannot make a curve kept as it was read.
#include <cmath>

#include "dxf_fixture.h"

class CurveFiles : public DxfFileTest {
 protected:
  // The entity's own groups from its subclass marker on, as AutoLISP prints them.
  std::wstring ownGroups(const wchar_t* handle, const wchar_t* marker) {
    return eval(std::wstring(L"(member '(100 . \"") + marker + L"\") (entget (handent \"" + handle + L"\")))");
  }
};

namespace {

template <class T>
T* Open(AcDbObjectId id) {
  T* obj = nullptr;
  EXPECT_EQ(acdbOpenObject(obj, id, AcDb::kForRead), Acad::eOk);
  return obj;
}

// The point 70% of the way along the curve's parameter range.
AcGePoint3d Inside(AcDbObjectId id) {
  AcGePoint3d p;
  if (auto* c = Open<AcDbCurve>(id)) {
    double s = 0, e = 0;
    c->getStartParam(s);
    c->getEndParam(e);
    c->getPointAtParam(0.3 * s + 0.7 * e, p);
    c->close();
  }
  return p;
}

}  // namespace

TEST_F(CurveFiles, EllipsesAndSplinesSurviveASaveAndARead) {
  for (const wchar_t* list :
       {L"((0 . \"ELLIPSE\") (10 1.0 2.0 3.0) (11 0.0 3.0 4.0) (210 1.0 0.0 0.0) (40 . 0.25) (41 . 1.0) (42 . 5.0))",
        L"((0 . \"SPLINE\") (71 . 2) (40 . 0.0) (40 . 0.0) (40 . 0.0) (40 . 1.0) (40 . 1.0) (40 . 1.0)"
        L" (41 . 1.0) (41 . 0.5) (41 . 1.0) (10 1.0 0.0 0.0) (10 1.0 1.0 0.5) (10 0.0 1.0 0.0))",
        L"((0 . \"SPLINE\") (71 . 3) (11 0.0 0.0 0.0) (11 2.0 1.0 0.0) (11 4.0 -1.0 0.0) (11 6.0 0.0 0.0)"
        L" (12 1.0 0.0 0.0) (13 0.0 -1.0 0.0))"})
    ASSERT_NE(eval(std::wstring(L"(entmake '") + list + L")"), L"nil") << list;
  const std::vector<AcDbObjectId> made = modelSpace();
  ASSERT_EQ(made.size(), 3u);
  std::vector<std::wstring> handles, groups;
  std::vector<AcGePoint3d> before;
  for (size_t i = 0; i < made.size(); ++i) {
    ACHAR h[20];
    kelhost::db::Peek(made[i])->objectHandle().getIntoAsciiBuffer(h, 20);
    handles.push_back(h);
    groups.push_back(ownGroups(h, i == 0 ? L"AcDbEllipse" : L"AcDbSpline"));
    before.push_back(Inside(made[i]));
  }
  saveAndReopen();
  const std::vector<AcDbObjectId> read = modelSpace();
  ASSERT_EQ(read.size(), 3u);
  for (size_t i = 0; i < read.size(); ++i) {
    EXPECT_EQ(ownGroups(handles[i].c_str(), i == 0 ? L"AcDbEllipse" : L"AcDbSpline"), groups[i]) << i;
    EXPECT_LE(Inside(read[i]).distanceTo(before[i]), 1e-9) << i;
  }
  // The file spells the groups out as the DXF reference lists them.
  const std::string text = readText("drawing.dxf");
  EXPECT_NE(text.find("AcDbEllipse\n 10\n1.0\n 20\n2.0\n 30\n3.0\n 11\n0.0\n 21\n3.0\n 31\n4.0\n210\n1.0\n220\n0.0\n"
                      "230\n0.0\n 40\n0.25\n 41\n1.0\n 42\n5.0\n"),
            std::string::npos);
  // Weights made the spline rational (4); three points always lie in a plane (8).
  EXPECT_NE(text.find(" 70\n12\n 71\n2\n 72\n6\n 73\n3\n 74\n0\n 40\n0.0\n"), std::string::npos);
}

TEST_F(CurveFiles, CurvesAsOtherProgramsWriteThemAreModelled) {
  // An ellipse and a spline given only by fit points, as ezdxf writes one.
  writeText("in.dxf",
            Dxf(Drawing2013({{0, "ELLIPSE"}, {5, "A1"}, {100, "AcDbEntity"}, {8, "0"}, {100, "AcDbEllipse"},
                             {10, "0.0"}, {20, "0.0"}, {30, "0.0"}, {11, "3.0"}, {21, "0.0"}, {31, "0.0"},
                             {40, "0.5"}, {41, "0.0"}, {42, "6.283185307179586"},
                             {0, "SPLINE"}, {5, "A2"}, {100, "AcDbEntity"}, {8, "0"}, {100, "AcDbSpline"},
                             {70, "8"}, {71, "3"}, {72, "0"}, {73, "0"}, {74, "3"}, {44, "1e-10"},
                             {11, "0.0"}, {21, "0.0"}, {31, "0.0"}, {11, "5.0"}, {21, "5.0"}, {31, "0.0"},
                             {11, "10.0"}, {21, "0.0"}, {31, "0.0"}})));
  ASSERT_EQ(db->readDwgFile(wpath("in.dxf").c_str()), Acad::eOk);
  const std::vector<AcDbObjectId> ids = modelSpace();
  ASSERT_EQ(ids.size(), 2u);
  auto* e = Open<AcDbEllipse>(ids[0]);
  ASSERT_NE(e, nullptr);
  EXPECT_TRUE(e->isClosed());
  EXPECT_NEAR(e->minorAxis().y, 1.5, 1e-12);
  e->close();
  auto* s = Open<AcDbSpline>(ids[1]);
  ASSERT_NE(s, nullptr);
  EXPECT_EQ(s->numControlPoints(), 5);
  double t = 0;
  EXPECT_EQ(s->getParamAtPoint(AcGePoint3d(5, 5, 0), t), Acad::eOk);
  s->close();
  EXPECT_EQ(eval(L"(cdr (assoc 73 (entget (handent \"A2\"))))"), L"5");
}

TEST_F(CurveFiles, ASplineThatCannotBeACurveIsKeptAsRead) {
  // Group 72 promises 9 knots where 8 follow.
  const std::vector<std::pair<int, std::string>> bad = {
      {0, "SPLINE"}, {5, "A1"}, {100, "AcDbEntity"}, {8, "0"}, {100, "AcDbSpline"}, {70, "8"}, {71, "3"},
      {72, "9"},     {73, "4"}, {74, "0"},           {40, "0.0"}, {40, "0.0"}, {40, "0.0"}, {40, "0.0"},
      {40, "1.0"},   {40, "1.0"}, {40, "1.0"},       {40, "1.0"}, {10, "0.0"}, {20, "0.0"}, {30, "0.0"},
      {10, "1.0"},   {20, "1.0"}, {30, "0.0"},       {10, "2.0"}, {20, "-1.0"}, {30, "0.0"}, {10, "3.0"},
      {20, "0.0"},   {30, "0.0"}};
  writeText("bad.dxf", Dxf(Drawing2013(bad)));
  ASSERT_EQ(db->readDwgFile(wpath("bad.dxf").c_str()), Acad::eOk);
  const std::vector<AcDbObjectId> ids = modelSpace();
  ASSERT_EQ(ids.size(), 1u);
  AcDbObject* kept = kelhost::db::Peek(ids[0]);
  EXPECT_EQ(std::wstring(kept->isA()->dxfName()), L"SPLINE");
  EXPECT_EQ(AcDbSpline::cast(kept), nullptr);
  ASSERT_EQ(db->saveAs(wpath("out.dxf").c_str()), Acad::eOk);
  const std::string out = readText("out.dxf");
  EXPECT_NE(out.find(" 72\n9\n 73\n4\n 74\n0\n 40\n0.0\n"), std::string::npos);
  EXPECT_NE(out.find(" 10\n2.0\n 20\n-1.0\n 30\n0.0\n"), std::string::npos);
}
