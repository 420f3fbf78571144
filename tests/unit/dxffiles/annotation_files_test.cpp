// Annotation entities in drawing files: long multiline text in chunks,
// its rotation in degrees, dimensions with their blocks, and the
// dimensions the host does not model kept as the file gave them.
#include <cmath>
#include <cstdlib>

#include "db/database_state.h"
#include "dxf_fixture.h"

namespace {
constexpr double kPi = 3.14159265358979323846;

// The file's text with the first occurrence of from replaced.
std::string Replaced(std::string text, const std::string& from, const std::string& to) {
  const size_t at = text.find(from);
  if (at != std::string::npos) text.replace(at, from.size(), to);
  return text;
}

// The groups of the first entity of that type in a DXF text, from its 0 group.
std::string EntityText(const std::string& dxf, const std::string& type) {
  const size_t at = dxf.find("  0\n" + type + "\n");
  if (at == std::string::npos) return "";
  const size_t end = dxf.find("  0\n", at + 4);
  return dxf.substr(at, end - at);
}
}  // namespace

class AnnotationFiles : public DxfFileTest {};

TEST_F(AnnotationFiles, MultilineTextKeepsLongContentsAndItsAngleInDegrees) {
  std::wstring chinese;
  for (int i = 0; i < 300; ++i) chinese += static_cast<wchar_t>(L'一' + i);
  auto* m = new AcDbMText;
  m->setContents(chinese.c_str());
  m->setTextHeight(3.5);
  AcDbBlockTableRecord* ms = nullptr;
  ASSERT_EQ(acdbOpenObject(ms, db->modelSpaceId(), AcDb::kForWrite), Acad::eOk);
  ASSERT_EQ(ms->appendAcDbEntity(m), Acad::eOk);
  m->close();
  ms->close();
  ASSERT_NE(eval(L"(entmake '((0 . \"MTEXT\") (10 1.0 2.0 0.0) (1 . \"转\") (50 . 0.5235987755982988)))"), L"nil");
  ASSERT_NO_FATAL_FAILURE(saveAndReopen());

  const std::string file = readText("drawing.dxf");
  const std::string first = EntityText(file, "MTEXT");
  EXPECT_NE(first.find("  3\n"), std::string::npos) << "the first 250 characters in group 3";
  const std::string second = EntityText(file.substr(file.find(first) + first.size()), "MTEXT");
  EXPECT_NE(second.find(" 50\n30.0\n"), std::string::npos) << second;
  EXPECT_EQ(second.find(" 11\n"), std::string::npos);

  std::vector<AcDbObjectId> ids = modelSpace();
  ASSERT_EQ(ids.size(), 2u);
  AcDbMText* text = nullptr;
  ASSERT_EQ(acdbOpenObject(text, ids[0], AcDb::kForRead), Acad::eOk);
  ACHAR* contents = text->contents();
  EXPECT_EQ(std::wstring(contents), chinese);
  std::free(contents);
  EXPECT_NEAR(text->textHeight(), 3.5, 1e-12);
  text->close();
  ASSERT_EQ(acdbOpenObject(text, ids[1], AcDb::kForRead), Acad::eOk);
  EXPECT_NEAR(text->rotation(), kPi / 6, 1e-12);
  text->close();
}

TEST_F(AnnotationFiles, DimensionsComeBackWithTheirBlocksUnchanged) {
  ASSERT_NE(eval(L"(entmake '((0 . \"DIMENSION\") (10 0.0 5.0 0.0) (70 . 0) (13 0.0 0.0 0.0) (14 10.0 0.0 0.0)))"),
            L"nil");
  ASSERT_NE(eval(L"(entmake '((0 . \"DIMENSION\") (10 0.0 5.0 0.0) (70 . 1) (1 . \"<> mm\") (13 0.0 0.0 0.0)"
                 L" (14 3.0 4.0 0.0)))"),
            L"nil");
  // Entity names change with the database; the rest stays.
  const wchar_t* lists =
      L"(mapcar '(lambda (e) (vl-remove-if '(lambda (g) (member (car g) '(-1 330))) (entget e)))"
      L" (list (entnext) (entlast)))";
  const std::wstring before = eval(lists);
  ASSERT_NO_FATAL_FAILURE(saveAndReopen());
  EXPECT_EQ(eval(lists), before);
  std::vector<AcDbObjectId> ids = modelSpace();
  ASSERT_EQ(ids.size(), 2u);
  EXPECT_TRUE(AcDbRotatedDimension::cast(kelhost::db::Peek(ids[0])));
  EXPECT_TRUE(AcDbAlignedDimension::cast(kelhost::db::Peek(ids[1])));
  // Opened and closed unchanged, a dimension read from a file keeps its block.
  const size_t objects = db->state().stubs.size();
  AcDbDimension* dim = nullptr;
  ASSERT_EQ(acdbOpenObject(dim, ids[1], AcDb::kForWrite), Acad::eOk);
  const AcDbObjectId block = dim->dimBlockId();
  dim->close();
  EXPECT_EQ(db->state().stubs.size(), objects);
  auto* btr = kelhost::db::PeekAs<AcDbBlockTableRecord>(block);
  ASSERT_NE(btr, nullptr);
  int texts = 0;
  for (AcDbObjectId id : btr->entityIds()) {
    if (auto* m = kelhost::db::PeekAs<AcDbMText>(id)) {
      ACHAR* shown = m->contents();
      EXPECT_STREQ(shown, L"5 mm");
      std::free(shown);
      ++texts;
    }
  }
  EXPECT_EQ(texts, 1);
}

TEST_F(AnnotationFiles, UnmodelledDimensionKindsAreKeptVerbatim) {
  ASSERT_NE(eval(L"(entmake '((0 . \"DIMENSION\") (10 0.0 5.0 0.0) (70 . 1) (13 0.0 0.0 0.0) (14 3.0 4.0 0.0)))"),
            L"nil");
  ASSERT_EQ(db->saveAs(wpath("made.dxf").c_str()), Acad::eOk);
  const std::string made = readText("made.dxf");
  const std::string dimension = EntityText(made, "DIMENSION");
  ASSERT_NE(dimension.find(" 70\n33\n"), std::string::npos);
  // An angular kind (2), and a dimension whose block the file lacks.
  const std::string angular = Replaced(dimension, " 70\n33\n", " 70\n34\n");
  const std::string orphan = Replaced(dimension, "  2\n*D1\n", "  2\n*D77\n");
  for (const std::string* variant : {&angular, &orphan}) {
    writeText("variant.dxf", Replaced(made, dimension, *variant));
    auto other = std::make_unique<AcDbDatabase>(false);
    std::wstring error;
    ASSERT_TRUE(kelhost::ReadDrawingFile(other.get(), wpath("variant.dxf"), error)) << kelhost::ToUtf8(error);
    acdbHostApplicationServices()->setWorkingDatabase(other.get());
    db = std::move(other);
    std::vector<AcDbObjectId> ids = modelSpace();
    ASSERT_EQ(ids.size(), 1u);
    EXPECT_EQ(AcDbDimension::cast(kelhost::db::Peek(ids[0])), nullptr);
    EXPECT_STREQ(kelhost::db::Peek(ids[0])->isA()->dxfName(), L"DIMENSION");
    ASSERT_EQ(db->saveAs(wpath("again.dxf").c_str()), Acad::eOk);
    EXPECT_EQ(EntityText(readText("again.dxf"), "DIMENSION"), *variant);
  }
}
