// EXTMIN and EXTMAX stay exact: they follow additions, changes (shrinking
// as well as growing) and erasures, leave out what frozen layers hide,
// and are what a saved drawing's header says.
#include <filesystem>
#include <fstream>
#include <sstream>

#include "kelhost/text.h"
#include "view_fixture.h"

namespace {

class Extents : public ViewTest {
 protected:
  void expectExtents(double x0, double y0, double x1, double y1) {
    const AcGePoint3d lo = point(L"EXTMIN"), hi = point(L"EXTMAX");
    EXPECT_NEAR(lo.x, x0, 1e-9);
    EXPECT_NEAR(lo.y, y0, 1e-9);
    EXPECT_NEAR(hi.x, x1, 1e-9);
    EXPECT_NEAR(hi.y, y1, 1e-9);
  }
  void expectEmpty() {
    const AcGePoint3d lo = point(L"EXTMIN"), hi = point(L"EXTMAX");
    EXPECT_EQ(lo, AcGePoint3d(1e20, 1e20, 1e20));
    EXPECT_EQ(hi, AcGePoint3d(-1e20, -1e20, -1e20));
  }
};

TEST_F(Extents, FollowAdditionsChangesAndErasures) {
  expectEmpty();
  const AcDbObjectId first = line(0, 0, 10, 5);
  expectExtents(0, 0, 10, 5);
  const AcDbObjectId second = line(-3, 2, 4, 20);
  expectExtents(-3, 0, 10, 20);

  // Moving the second line in shrinks the box: the platform would keep
  // the old corners until a regeneration.
  AcDbLine* l = nullptr;
  ASSERT_EQ(acdbOpenObject(l, second, AcDb::kForWrite), Acad::eOk);
  l->setStartPoint(AcGePoint3d(1, 1, 0));
  expectExtents(0, 0, 10, 20);  // read while the line is still open
  l->setEndPoint(AcGePoint3d(2, 2, 0));
  l->close();
  expectExtents(0, 0, 10, 5);

  AcDbEntity* e = nullptr;
  ASSERT_EQ(acdbOpenAcDbEntity(e, first, AcDb::kForWrite), Acad::eOk);
  e->erase();
  e->close();
  expectExtents(1, 1, 2, 2);
  ASSERT_EQ(acdbOpenAcDbEntity(e, second, AcDb::kForWrite), Acad::eOk);
  e->erase();
  e->close();
  expectEmpty();
}

TEST_F(Extents, FrozenLayersAreLeftOutAndTextCounts) {
  line(0, 0, 10, 10);
  line(50, 50, 60, 60, L"HIDDEN");
  expectExtents(0, 0, 60, 60);
  setLayer(L"HIDDEN", true, false);  // off: still part of the drawing's extents
  expectExtents(0, 0, 60, 60);
  setLayer(L"HIDDEN", false, true);
  expectExtents(0, 0, 10, 10);

  // Text takes its height and its characters' estimated widths.
  eval(L"(entmake '((0 . \"TEXT\") (10 20.0 0.0 0.0) (40 . 5.0) (1 . \"ABCD\")))");
  const AcGePoint3d hi = point(L"EXTMAX");
  EXPECT_GT(hi.x, 30.0);
  EXPECT_NEAR(point(L"EXTMIN").y, 0.0, 1e-12);
}

TEST_F(Extents, SavedHeaderHasTheCurrentExtents) {
  line(1, 2, 30, 40);
  const AcDbObjectId id = lastEntity();
  AcDbLine* l = nullptr;
  ASSERT_EQ(acdbOpenObject(l, id, AcDb::kForWrite), Acad::eOk);
  l->setEndPoint(AcGePoint3d(5, 6, 7));
  l->close();

  const auto dir = std::filesystem::temp_directory_path() / ("kelcad_extents_" + std::to_string(getpid()));
  std::filesystem::create_directories(dir);
  const std::string file = (dir / "x.dxf").string();
  ASSERT_EQ(db->saveAs(kelhost::FromUtf8(file).c_str()), Acad::eOk);
  std::ifstream in(file, std::ios::binary);
  std::stringstream text;
  text << in.rdbuf();
  std::filesystem::remove_all(dir);
  EXPECT_NE(text.str().find("$EXTMIN\n 10\n1.0\n 20\n2.0\n 30\n0.0\n"), std::string::npos);
  EXPECT_NE(text.str().find("$EXTMAX\n 10\n5.0\n 20\n6.0\n 30\n7.0\n"), std::string::npos);
}

}  // namespace
