// A drawing made through AutoLISP saves and reads back with its content:
// entity kinds, Chinese text on a new layer, xdata, a dictionary with an
// xrecord, header variables and handles.
#include "dxf_fixture.h"

namespace {

const wchar_t* kMakeDrawing[] = {
    L"(regapp \"KELAPP\")",
    L"(entmake '((0 . \"LINE\") (8 . \"墙体\") (10 0.0 0.0 0.0) (11 10.5 20.25 0.0) (62 . 1)))",
    L"(entmake '((0 . \"CIRCLE\") (10 5.0 5.0 0.0) (40 . 2.5)))",
    L"(entmake '((0 . \"ARC\") (10 1.0 2.0 0.0) (40 . 3.0) (50 . 0.5) (51 . 2.0)))",
    L"(entmake '((0 . \"TEXT\") (8 . \"墙体\") (10 1.0 1.0 0.0) (40 . 3.5) (1 . \"中文标注\")"
    L" (-3 (\"KELAPP\" (1000 . \"附加\") (1040 . 1.25) (1070 . 7)))))",
    L"(entmake '((0 . \"LWPOLYLINE\") (100 . \"AcDbEntity\") (100 . \"AcDbPolyline\") (90 . 3) (70 . 1)"
    L" (10 0.0 0.0) (10 4.0 0.0) (10 4.0 3.0)))",
    L"(dictadd (namedobjdict) \"KEL_DATA\" (entmakex '((0 . \"DICTIONARY\") (100 . \"AcDbDictionary\"))))",
    L"(dictadd (cdr (assoc -1 (dictsearch (namedobjdict) \"KEL_DATA\"))) \"ROW1\""
    L" (entmakex '((0 . \"XRECORD\") (100 . \"AcDbXrecord\") (1 . \"数据\") (40 . 0.1) (70 . 3))))",
};

void MakeDrawing(DxfFileTest& t, std::wstring (DxfFileTest::*eval)(const std::wstring&)) {
  for (const wchar_t* expr : kMakeDrawing) {
    const std::wstring result = (t.*eval)(expr);
    ASSERT_EQ(result.find(L"error"), std::wstring::npos) << kelhost::ToUtf8(expr) << " -> " << kelhost::ToUtf8(result);
    ASSERT_NE(result, L"nil") << kelhost::ToUtf8(expr);
  }
}

}  // namespace

class RoundTrip : public DxfFileTest {
 public:
  using DxfFileTest::eval;
};

TEST_F(RoundTrip, EntitiesLayersXdataAndDictionariesComeBack) {
  MakeDrawing(*this, &RoundTrip::eval);
  const std::wstring lineBefore = eval(L"(cdr (assoc 5 (entget (entnext))))");
  saveAndReopen();

  std::vector<std::wstring> types;
  for (AcDbObjectId id : modelSpace()) types.push_back(kelhost::db::Peek(id)->isA()->dxfName());
  EXPECT_EQ(types, (std::vector<std::wstring>{L"LINE", L"CIRCLE", L"ARC", L"TEXT", L"LWPOLYLINE"}));

  // Handles are kept, so references made before the save still hold.
  EXPECT_EQ(eval(L"(cdr (assoc 5 (entget (entnext))))"), lineBefore);
  EXPECT_EQ(eval(L"(cdr (assoc 11 (entget (entnext))))"), L"(10.5 20.25 0.0)");
  EXPECT_EQ(eval(L"(cdr (assoc 62 (entget (entnext))))"), L"1");
  EXPECT_EQ(eval(L"(cdr (assoc 8 (entget (entnext))))"), L"\"墙体\"");
  EXPECT_EQ(eval(L"(cdr (assoc 70 (tblsearch \"LAYER\" \"墙体\")))"), L"0");
  EXPECT_EQ(eval(L"(cdr (assoc 40 (entget (entnext (entnext)))))"), L"2.5");
  EXPECT_EQ(eval(L"(cdr (assoc 51 (entget (entnext (entnext (entnext))))))"), L"2.0");
  // Files hold angles in degrees, entity lists in radians.
  EXPECT_NE(readText("drawing.dxf").find(" 51\n114.591559026165\n"), std::string::npos);

  const std::wstring text = L"(entget (entnext (entnext (entnext (entnext)))) '(\"KELAPP\"))";
  EXPECT_EQ(eval(L"(cdr (assoc 1 " + text + L"))"), L"\"中文标注\"");
  EXPECT_EQ(eval(L"(cadr (assoc -3 " + text + L"))"),
            L"(\"KELAPP\" (1000 . \"附加\") (1040 . 1.25) (1070 . 7))");

  EXPECT_EQ(eval(L"(length (vl-remove-if-not '(lambda (g) (= (car g) 10)) (entget (entlast))))"), L"3");
  EXPECT_EQ(eval(L"(cdr (assoc 70 (entget (entlast))))"), L"1");

  const std::wstring row =
      L"(dictsearch (cdr (assoc -1 (dictsearch (namedobjdict) \"KEL_DATA\"))) \"ROW1\")";
  EXPECT_EQ(eval(L"(cdr (assoc 1 " + row + L"))"), L"\"数据\"");
  EXPECT_EQ(eval(L"(cdr (assoc 70 " + row + L"))"), L"3");
  EXPECT_NE(eval(L"(tblsearch \"APPID\" \"KELAPP\")"), L"nil");
}

TEST_F(RoundTrip, ControlCharactersAndCaretsInTextSurviveAsCaretSpellings) {
  ASSERT_NE(eval(L"(entmake '((0 . \"TEXT\") (10 0.0 0.0 0.0) (40 . 1.0) (1 . \"a\\nb^c\\td\")))"), L"nil");
  saveAndReopen();
  // Each group is still one line: the line feed and the tab are spelled.
  EXPECT_NE(readText("drawing.dxf").find("\n  1\na^Jb^ c^Id\n"), std::string::npos);
  EXPECT_EQ(eval(L"(= (cdr (assoc 1 (entget (entlast)))) \"a\\nb^c\\td\")"), L"T");
}

TEST_F(RoundTrip, SavingTwiceGivesTheSameFileAndNewHandlesStayAboveTheSeed) {
  MakeDrawing(*this, &RoundTrip::eval);
  saveAndReopen("first.dxf");
  ASSERT_EQ(db->saveAs(wpath("second.dxf").c_str()), Acad::eOk);
  EXPECT_EQ(readText("first.dxf"), readText("second.dxf"));

  // The written handle nextHandle ($HANDSEED) lies above every handle in the file.
  const std::string text = readText("second.dxf");
  const size_t at = text.find("$HANDSEED\n  5\n");
  ASSERT_NE(at, std::string::npos);
  const unsigned long long nextHandle = std::stoull(text.substr(at + 14, text.find('\n', at + 14) - at - 14), nullptr, 16);
  std::istringstream lines(text.substr(text.find("ENDSEC")));  // objects, after the header
  std::string code, value;
  unsigned long long highest = 0;
  while (std::getline(lines, code) && std::getline(lines, value))
    if (code == "  5" || code == "105") highest = std::max(highest, std::stoull(value, nullptr, 16));
  EXPECT_GT(nextHandle, highest);

  // A new entity takes a handle no object of the file has.
  ASSERT_EQ(eval(L"(entmake '((0 . \"POINT\") (10 1.0 1.0 0.0)))").find(L"error"), std::wstring::npos);
  const std::wstring handle = eval(L"(cdr (assoc 5 (entget (entlast))))");
  EXPECT_GE(std::stoull(kelhost::ToUtf8(handle.substr(1, handle.size() - 2)), nullptr, 16), nextHandle);
}

TEST_F(RoundTrip, HeaderVariablesKnownAndUnknownSurvive) {
  ASSERT_EQ(eval(L"(entmake '((0 . \"LINE\") (8 . \"轴线\") (10 0.0 0.0 0.0) (11 1.0 1.0 0.0)))").find(L"error"),
            std::wstring::npos);
  AcDbObjectId axis;
  AcDbLayerTable* layers = nullptr;
  ASSERT_EQ(db->getLayerTable(layers), Acad::eOk);
  ASSERT_EQ(layers->getAt(L"轴线", axis), Acad::eOk);
  layers->close();
  ASSERT_EQ(db->setClayer(axis), Acad::eOk);
  ASSERT_EQ(db->setTextsize(7.5), Acad::eOk);
  ASSERT_EQ(db->setCecolorIndex(3), Acad::eOk);
  saveAndReopen();
  EXPECT_EQ(kelhost::db::PeekAs<AcDbLayerTableRecord>(db->clayer())->getName(), std::wstring(L"轴线"));
  EXPECT_EQ(db->textsize(), 7.5);
  EXPECT_EQ(db->cecolorIndex(), 3);

  // Variables the host does not know are written back as they were read.
  writeText("in.dxf", Dxf(Drawing2013({})));
  ASSERT_EQ(db->readDwgFile(wpath("in.dxf").c_str()), Acad::eOk);
  ASSERT_EQ(db->saveAs(wpath("out.dxf").c_str()), Acad::eOk);
  const std::string out = readText("out.dxf");
  EXPECT_NE(out.find("$CUSTOMVAR\n  1\nkept\n"), std::string::npos);
  EXPECT_NE(out.find("$USERI3\n 70\n42\n"), std::string::npos);
  EXPECT_NE(out.find("$ACADVER\n  1\nAC1027\n"), std::string::npos);
}
