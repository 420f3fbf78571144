// Block insertion and slides driven by the user's answers, and loading the
// family's other modules.
#include <gtest/gtest.h>

#include <deque>
#include <filesystem>

#include "db/stub.h"
#include "editor/input_sources.h"
#include "editor/user_input.h"
#include "editor_module_fixture.h"
#include "kelcad/kelcad.h"

namespace {

class Answers : public kelhost::editor::InputSource {
 public:
  explicit Answers(std::deque<std::wstring> lines) : mLines(std::move(lines)) {}
  bool read(std::wstring& text, bool) override {
    if (mLines.empty()) return false;
    text = mLines.front();
    mLines.pop_front();
    return true;
  }

 private:
  std::deque<std::wstring> mLines;
};

class InteractiveDrawing : public EditorModuleTest {
 protected:
  void TearDown() override {
    EXPECT_EQ(kelhost::db::OpenObjectCount(), 0) << "objects left open";
    kelhost::editor::SetBaseInput(nullptr);
    EditorModuleTest::TearDown();
  }
  void Answer(std::deque<std::wstring> lines) { kelhost::editor::SetBaseInput(std::make_unique<Answers>(std::move(lines))); }
  std::wstring Path(const std::string& relative) { return kelhost::FromUtf8(root + "/" + relative); }
  bool Exists(const std::string& relative) { return std::filesystem::exists(root + "/" + relative); }
  std::wstring Inserts() {
    return Eval(L"(if (setq s (ssget \"X\" '((0 . \"INSERT\")))) (progn (setq i 0 l nil) (repeat (sslength s) "
                L"(setq d (entget (ssname s i)) i (1+ i) l (cons (list (cdr (assoc 10 d)) (cdr (assoc 41 d)) "
                L"(cdr (assoc 50 d))) l))) (vl-sort l '(lambda (a b) (< (caar a) (caar b))))))");
  }
};

TEST_F(InteractiveDrawing, InsertBlockAsksScaleAndPointsUntilTheUserStops) {
  for (const char* name : {"work/b1.dxf", "work/b2.dxf"}) {
    AcDbDatabase block;
    AcDbObjectId id;
    KEL::SetCurDWGPtr(&block);
    ASSERT_TRUE(KEL::CreateLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0), id));
    KEL::SetCurDWGPtr(nullptr);
    ASSERT_EQ(block.saveAs(Path(name).c_str()), Acad::eOk);
  }
  Eval(L"(setvar \"REGENMODE\" 1)");
  // Enter keeps the scale; the rotation goes to INSERT's own prompt.
  Answer({L"5,5", L"", L"90", L""});
  out.clear();
  EXPECT_TRUE(KEL::InsertBlock(Path("work/b1").c_str(), 0));
  EXPECT_EQ(Var(L"REGENMODE"), L"1");
  EXPECT_EQ(out.rfind(L"\n回车返回 / <请选取块插入点>:5,5\n输入块比例<1.00>:\n输入块旋转角度<0.0>:", 0), 0u);
  // A scale given is the next round's default; input that ends at the
  // scale prompt ends the insertion with nothing half made.
  Answer({L"10,0", L"2", L"0", L"20,0"});
  out.clear();
  EXPECT_TRUE(KEL::InsertBlock(Path("work/b2").c_str(), 0));
  EXPECT_NE(out.find(L"\n输入块比例<2.00>:"), std::wstring::npos);
  EXPECT_EQ(Inserts(), L"(((5.0 5.0 0.0) nil 1.5708) ((10.0 0.0 0.0) 2.0 nil))");
  EXPECT_EQ(Var(L"REGENMODE"), L"1");
}

TEST_F(InteractiveDrawing, CreateSlideWritesSlideAndBlockOfTheWindow) {
  Eval(L"(entmake '((0 . \"LINE\") (10 1.0 1.0 0.0) (11 4.0 4.0 0.0)))");
  Eval(L"(entmake '((0 . \"CIRCLE\") (10 2.0 2.0 0.0) (40 . 1.0)))");
  Eval(L"(entmake '((0 . \"LINE\") (10 50.0 50.0 0.0) (11 60.0 60.0 0.0)))");
  Answer({L"0,0", L"0,0", L"10,10"});
  out.clear();
  EXPECT_TRUE(KEL::CreateSlide(Path("work/part").c_str()));
  EXPECT_TRUE(Exists("work/part.sld"));
  EXPECT_TRUE(Exists("work/part.dxf"));
  EXPECT_EQ(Eval(L"(sslength (ssget \"X\"))"), L"1") << "WBLOCK takes the window's entities out";
  EXPECT_NE(out.find(L"\n请窗选要做块的实体(整体在内):"), std::wstring::npos);
  {
    AcDbDatabase written(false);
    ASSERT_EQ(written.readDwgFile(Path("work/part.dxf").c_str()), Acad::eOk);
    AcDbBlockTableRecord* model = nullptr;
    ASSERT_EQ(acdbOpenObject(model, written.modelSpaceId(), AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(model->entityIds().size(), 2u);
    model->close();
  }

  // Again over the same files: the drawing is replaced.
  Eval(L"(entmake '((0 . \"CIRCLE\") (10 2.0 2.0 0.0) (40 . 1.5)))");
  Answer({L"0,0", L"0,0", L"10,10"});
  EXPECT_TRUE(KEL::CreateSlide(Path("work/part").c_str()));
  EXPECT_EQ(Eval(L"(sslength (ssget \"X\"))"), L"1");
  {
    AcDbDatabase written(false);
    ASSERT_EQ(written.readDwgFile(Path("work/part.dxf").c_str()), Acad::eOk);
    AcDbBlockTableRecord* model = nullptr;
    ASSERT_EQ(acdbOpenObject(model, written.modelSpaceId(), AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(model->entityIds().size(), 1u);
    model->close();
  }
}

TEST_F(InteractiveDrawing, CreateSlideMakesNothingWithoutAPointOrAnEntity) {
  Answer({L""});
  EXPECT_FALSE(KEL::CreateSlide(Path("work/none").c_str()));
  Answer({L"0,0", L"0,0", L"10,10"});  // an empty window
  EXPECT_FALSE(KEL::CreateSlide(Path("work/none").c_str()));
  Answer({L"0,0", L"0,0"});  // input ends at the second corner
  EXPECT_FALSE(KEL::CreateSlide(Path("work/none").c_str()));
  EXPECT_FALSE(Exists("work/none.sld"));
  EXPECT_FALSE(Exists("work/none.dxf"));
}

TEST_F(InteractiveDrawing, ModulesLoadOnceAndMissingFilesAreReported) {
  out.clear();
  EXPECT_EQ(std::wstring(KEL::LoadArx(Path("install/none.arx").c_str())), L"");
  EXPECT_EQ(out, L" ***没有找到要加载的ARX ： " + Path("install/none.arx") + L"\n");

  std::filesystem::create_directories(root + "/install/Sub");
  std::filesystem::copy_file(FIXTURE_MODULE_PATH, root + "/install/Sub/Helper.arx");
  EXPECT_FALSE(KEL::IsLoadedArx(L"helper"));
  const std::wstring expected = Path("install/") + L"Sub\\Helper.ARX";
  EXPECT_EQ(std::wstring(KEL::LoadDirArx(L"Sub", L"Helper")), expected);
  EXPECT_TRUE(KEL::IsLoadedArx(L"HELPER.ARX"));
  resbuf* before = acedArxLoaded();
  const int loaded = KEL::GetRbLength(before);
  acutRelRb(before);
  EXPECT_EQ(std::wstring(KEL::LoadDirArx(L"Sub", L"helper.arx")), Path("install/") + L"Sub\\helper.arx");
  resbuf* list = acedArxLoaded();
  EXPECT_EQ(KEL::GetRbLength(list), loaded) << "loaded once";
  acutRelRb(list);
}

TEST_F(InteractiveDrawing, SystemFilesAreCheckedAgainstTheInstallation) {
  ASSERT_TRUE(LoadModule());
  EXPECT_TRUE(KEL::CheckSystemFiles()) << "no section: nothing to miss";
  WriteFile("install/KelSys.ini", "[SystemFiles]\nA= data\\one.dat \nB=\n");
  EXPECT_FALSE(KEL::CheckSystemFiles());
  WriteFile("install/data/one.dat", "x");
  EXPECT_TRUE(KEL::CheckSystemFiles());

  KEL::SetSoftType(static_cast<KEL_SOFTTYPE>(7));
  EXPECT_EQ(KEL::GetSoftType(), 7);
}

}  // namespace
