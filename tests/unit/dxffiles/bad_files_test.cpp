// Malformed files are refused with a message naming the line, and the
// database keeps what it had.
#include "dxf_fixture.h"

namespace {

struct BadCase {
  const char* what;
  std::string text;
  const char* message;  // part of the message, line included
};

std::string Good() { return Dxf(Drawing2013({{0, "POINT"}, {5, "A1"}, {8, "0"}, {10, "1"}, {20, "2"}, {30, "3"}})); }

std::string Replace(std::string text, const std::string& from, const std::string& to) {
  text.replace(text.find(from), from.size(), to);
  return text;
}

}  // namespace

TEST_F(DxfFileTest, MalformedFilesAreRefusedNamingTheLine) {
  ASSERT_EQ(eval(L"(entmake '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 1.0 1.0 0.0)))").find(L"error"), std::wstring::npos);
  const std::string good = Good();
  const std::vector<BadCase> cases = {
      {"truncated in a group", good.substr(0, good.find("POINT") + 6) + "10\n", "the file ends in the middle"},
      {"truncated after a group", good.substr(0, good.find("POINT") + 6), "no ENDSEC"},
      {"no EOF", good.substr(0, good.rfind("0\nEOF")), "without EOF"},
      {"bad number", Replace(good, "20\n2\n", "20\n2.x\n"), "bad number \"2.x\" for group 20"},
      {"bad integer", Replace(good, "70\n42\n", "70\nlots\n"), "line 16: bad number \"lots\""},
      {"out of range", Replace(good, "70\n42\n", "70\n99999999\n"), "out of range"},
      {"bad code", Replace(good, "10\n1\n", "1x\n1\n"), "bad group code"},
      {"unknown code", Replace(good, "10\n1\n", "1500\n1\n"), "unknown group code 1500"},
      {"unknown section", Replace(good, "2\nENTITIES", "2\nSTUFF"), "unknown section \"STUFF\""},
      {"duplicate handle", Replace(good, "0\nENDSEC\n0\nSECTION\n2\nOBJECTS",
                                   "0\nCIRCLE\n5\nA1\n8\n0\n10\n0\n20\n0\n30\n0\n40\n1\n0\nENDSEC\n0\nSECTION\n2\nOBJECTS"),
       "duplicate handle A1"},
      {"duplicate handle far above the others",
       Replace(good, "0\nENDSEC\n0\nSECTION\n2\nOBJECTS",
               "0\nCIRCLE\n5\nFFFFFFF1\n8\n0\n10\n0\n20\n0\n30\n0\n40\n1\n"
               "0\nCIRCLE\n5\nFFFFFFF1\n8\n0\n10\n0\n20\n0\n30\n0\n40\n1\n0\nENDSEC\n0\nSECTION\n2\nOBJECTS"),
       "duplicate handle FFFFFFF1"},
      {"invalid UTF-8", Replace(good, "1\nkept", "1\nke\xFFpt"), "line 20: invalid UTF-8"},
      {"binary", "AutoCAD Binary DXF\r\n\x1a", "binary DXF"},
      {"empty", "", "without EOF"},
      {"entity outside a section", "0\nLINE\n0\nEOF\n", "line 1: expected SECTION"},
      {"absurd count", Replace(good, "0\nPOINT", "0\nLWPOLYLINE\n8\n0\n90\n2000000000\n10\n0\n20\n0\n10\n1\n20\n1\n0\nPOINT"),
       "LWPOLYLINE claims 2000000000 vertices but has 2"},
      {"duplicate section", Replace(good, "2\nOBJECTS", "2\nENTITIES"), "appears twice"},
  };
  for (const BadCase& c : cases) {
    writeText("bad.dxf", c.text);
    std::wstring error;
    EXPECT_FALSE(kelhost::ReadDrawingFile(db.get(), wpath("bad.dxf"), error)) << c.what;
    EXPECT_NE(kelhost::ToUtf8(error).find(c.message), std::string::npos) << c.what << ": " << kelhost::ToUtf8(error);
    EXPECT_EQ(kelhost::ToUtf8(error).find(path("bad.dxf")), 0u) << c.what;
    EXPECT_EQ(db->readDwgFile(wpath("bad.dxf").c_str()), Acad::eBadDwgHeader) << c.what;
    // The drawing is the one it was.
    ASSERT_EQ(modelSpace().size(), 1u) << c.what;
    EXPECT_EQ(eval(L"(cdr (assoc 0 (entget (entnext))))"), L"\"LINE\"") << c.what;
  }
}

TEST_F(DxfFileTest, AHandleFarAboveTheOthersIsKeptAndNewHandlesGoAboveIt) {
  writeText("far.dxf", Replace(Good(), "5\nA1\n", "5\nFFFFFFF0\n"));
  std::wstring error;
  ASSERT_TRUE(kelhost::ReadDrawingFile(db.get(), wpath("far.dxf"), error)) << kelhost::ToUtf8(error);
  EXPECT_EQ(eval(L"(cdr (assoc 5 (entget (entnext))))"), L"\"FFFFFFF0\"");
  ASSERT_EQ(eval(L"(entmake '((0 . \"POINT\") (10 1.0 1.0 0.0)))").find(L"error"), std::wstring::npos);
  const std::wstring handle = eval(L"(cdr (assoc 5 (entget (entlast))))");
  ASSERT_GT(handle.size(), 2u);
  EXPECT_GT(std::stoull(kelhost::ToUtf8(handle.substr(1, handle.size() - 2)), nullptr, 16), 0xFFFFFFF0ull);
}

TEST_F(DxfFileTest, DwgNamesFallBackToDxfAndMissingFilesAreReported) {
  EXPECT_EQ(db->readDwgFile(wpath("nothing.dwg").c_str()), Acad::eFileNotFound);
  EXPECT_EQ(db->readDwgFile(L""), Acad::eInvalidInput);
  writeText("plan.dxf", Good());
  ASSERT_EQ(db->readDwgFile(wpath("plan.dwg").c_str()), Acad::eOk);
  EXPECT_EQ(eval(L"(cdr (assoc 10 (entget (entnext))))"), L"(1.0 2.0 3.0)");
  // A file that cannot be written is refused and nothing is left behind.
  EXPECT_EQ(db->saveAs(wpath("no/such/dir/out.dxf").c_str()), Acad::eFileAccessErr);
}
