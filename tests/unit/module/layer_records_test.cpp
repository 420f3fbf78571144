// layerInfo and KEL::CreateLayer: the snapshot and what each operation
// changes, their deliberate quirks, and the colour matching they use.
#include <gtest/gtest.h>

#include "db/stub.h"
#include "editor_module_fixture.h"
#include "kelcad/kelcad.h"

namespace {

class LayerRecords : public EditorModuleTest {
 protected:
  void SetUp() override {
    EditorModuleTest::SetUp();
    KEL::SetCurDWGPtr(nullptr);
  }
  void TearDown() override {
    EXPECT_EQ(kelhost::db::OpenObjectCount(), 0) << "objects left open";
    EditorModuleTest::TearDown();
  }
  std::wstring Layer(const std::wstring& name, int code) {
    return Eval(L"(cdr (assoc " + std::to_wstring(code) + L" (tblsearch \"LAYER\" \"" + name + L"\")))");
  }
  int Layers() { return std::stoi(Eval(L"(progn (setq n 0 r (tblnext \"LAYER\" T)) (while r (setq n (1+ n) r (tblnext \"LAYER\"))) n)")); }
};

TEST_F(LayerRecords, SnapshotIsReadOnceAndSettersKeepItInStep) {
  MakeLayer(L"Pipe", 5, 3);  // frozen and locked, green
  layerInfo pipe(L"PIPE", false);
  EXPECT_TRUE(pipe.IsExist());
  EXPECT_TRUE(pipe.IsFrozen());
  EXPECT_TRUE(pipe.IsLocked());
  EXPECT_FALSE(pipe.IsOff());
  EXPECT_EQ(std::wstring(pipe.Name()), L"PIPE") << "the name as the caller gave it";
  EXPECT_EQ(std::wstring(pipe.GetLineTypeName()), L"Continuous");
  EXPECT_EQ(pipe.GetColorIndex(), 3);
  EXPECT_FALSE(pipe.IsColorByLayer());

  // The accessors give the snapshot, not the drawing.
  Eval(L"(command \"_.LAYER\" \"_THAW\" \"Pipe\" \"\")");
  EXPECT_TRUE(pipe.IsFrozen());
  EXPECT_TRUE(pipe.SetIsFrozen(false));
  EXPECT_TRUE(pipe.SetIsOff(true));
  EXPECT_TRUE(pipe.SetIsLocked(false));
  EXPECT_FALSE(pipe.IsFrozen());
  EXPECT_EQ(Layer(L"Pipe", 70), L"0");
  EXPECT_EQ(Layer(L"Pipe", 62), L"-3") << "off: the colour's sign";

  EXPECT_TRUE(pipe.SetCurLayer());
  EXPECT_EQ(Var(L"CLAYER"), L"\"Pipe\"");
  EXPECT_EQ(Layer(L"Pipe", 62), L"3");
}

TEST_F(LayerRecords, MadeOnRequestOnceAndNeverForAnEmptyName) {
  const int before = Layers();
  layerInfo made(L"New1", true);
  EXPECT_TRUE(made.IsExist());
  layerInfo again(L"new1", true);
  EXPECT_TRUE(again.IsExist());
  EXPECT_EQ(Layers(), before + 1);
  layerInfo missing(L"Other", false);
  EXPECT_FALSE(missing.IsExist());
  EXPECT_EQ(missing.GetErrorStatus(), Acad::eKeyNotFound);

  layerInfo empty(L"", true);
  EXPECT_FALSE(empty.IsExist());
  EXPECT_FALSE(empty.SetIsOff(true));
  EXPECT_FALSE(empty.SetIsFrozen(true));
  EXPECT_FALSE(empty.SetIsLocked(true));
  EXPECT_FALSE(empty.SetColorIndex(1));
  EXPECT_EQ(empty.SetColor(RGB(255, 0, 0)), 0);
  EXPECT_EQ(empty.GetColorIndex(), -1);
  EXPECT_FALSE(empty.SetLineTypeName(L"X"));
  EXPECT_FALSE(empty.Rename(L"X"));
  EXPECT_FALSE(empty.Erase(false));
  EXPECT_FALSE(empty.SetCurLayer());
  EXPECT_EQ(empty.GetRecordPtr(AcDb::kForRead), nullptr);
  EXPECT_EQ(Layers(), before + 1);

  layerInfo bad(L"a<b", true);
  EXPECT_FALSE(bad.IsExist());
  EXPECT_EQ(Layers(), before + 1);
}

TEST_F(LayerRecords, ColourIndexRangeAndRgbMatching) {
  layerInfo layer(L"C1", true);
  EXPECT_FALSE(layer.SetColorIndex(257));
  EXPECT_FALSE(layer.SetColorIndex(-1));
  EXPECT_TRUE(layer.SetColorIndex(256));
  EXPECT_TRUE(layer.IsColorByLayer());
  EXPECT_EQ(Layer(L"C1", 62), L"7") << "a layer keeps an index colour";
  EXPECT_TRUE(layer.SetColorIndex(0));
  EXPECT_TRUE(layer.IsColorByBlock());

  EXPECT_EQ(layer.SetColor(RGB(255, 0, 0)), 1);
  EXPECT_EQ(layer.SetColor(RGB(0, 0, 255)), 5);
  EXPECT_EQ(layer.SetColor(RGB(160, 0, 0)), 12) << "nearest to 165,0,0";
  EXPECT_EQ(Layer(L"C1", 62), L"12");
  EXPECT_EQ(layer.GetColorIndex(), 12);
  EXPECT_EQ(KEL::IsStandardCADColor(RGB(255, 255, 255)), 7);
  EXPECT_EQ(KEL::IsStandardCADColor(RGB(132, 132, 132)), 252);
  EXPECT_EQ(KEL::IsStandardCADColor(RGB(1, 2, 3)), -1);
  EXPECT_EQ(KEL::GetCADColorIndexNearest(RGB(0, 0, 0)), 18) << "38,0,0 is the first of the darkest";
  EXPECT_EQ(KEL::GetCADColorIndexNearest(RGB(128, 128, 129)), 8);

  // The record gone: the snapshot still takes the colour, and says so.
  Eval(L"(entdel (tblobjname \"LAYER\" \"C1\"))");
  EXPECT_TRUE(layer.SetColorIndex(4));
}

TEST_F(LayerRecords, RenameKeepsTheOldNameSoLaterCallsFail) {
  layerInfo layer(L"Old", true);
  EXPECT_FALSE(layer.Rename(L""));
  EXPECT_TRUE(layer.Rename(L"Renamed"));
  EXPECT_EQ(std::wstring(layer.Name()), L"Old");
  EXPECT_FALSE(layer.SetIsOff(true));
  EXPECT_EQ(Layer(L"Renamed", 2), L"\"Renamed\"");
  layerInfo zero(L"0", false);
  EXPECT_FALSE(zero.Rename(L"Zero")) << "layer 0 keeps its name";
  EXPECT_EQ(zero.GetErrorStatus(), Acad::eIllegalReplacement);
}

TEST_F(LayerRecords, LinetypeNameRenamesTheLinetypeItself) {
  Eval(L"(entmake '((0 . \"LTYPE\") (100 . \"AcDbSymbolTableRecord\") (100 . \"AcDbLinetypeTableRecord\") "
       L"(2 . \"DASH1\") (70 . 0) (3 . \"\") (72 . 65) (73 . 2) (40 . 1.0) (49 . 0.5) (74 . 0) (49 . -0.5) (74 . 0)))");
  Eval(L"(entmake '((0 . \"LAYER\") (100 . \"AcDbSymbolTableRecord\") (100 . \"AcDbLayerTableRecord\") "
       L"(2 . \"Hid\") (70 . 0) (62 . 1) (6 . \"DASH1\")))");
  Eval(L"(entmake '((0 . \"LINE\") (6 . \"DASH1\") (10 0.0 0.0 0.0) (11 1.0 0.0 0.0)))");
  layerInfo hid(L"Hid", false);
  EXPECT_EQ(std::wstring(hid.GetLineTypeName()), L"DASH1");
  EXPECT_TRUE(hid.SetLineTypeName(L"DASH2"));
  EXPECT_EQ(std::wstring(hid.GetLineTypeName()), L"DASH2");
  EXPECT_EQ(Eval(L"(tblsearch \"LTYPE\" \"DASH1\")"), L"nil");
  EXPECT_EQ(Eval(L"(cdr (assoc 6 (entget (entlast))))"), L"\"DASH2\"") << "the entity follows";
  layerInfo plain(L"0", false);
  EXPECT_FALSE(plain.SetLineTypeName(L"X")) << "Continuous keeps its name";

  // CreateLayer sets the linetype name the same way.
  EXPECT_TRUE(KEL::CreateLayer(L"Hid", L"DASH3", 2, true));
  EXPECT_EQ(Layer(L"Hid", 6), L"\"DASH3\"");
  EXPECT_EQ(Layer(L"Hid", 62), L"2");
  EXPECT_EQ(Var(L"CLAYER"), L"\"Hid\"");
  EXPECT_FALSE(KEL::CreateLayer(L"Fresh", L"DASH9", -1, false)) << "its Continuous cannot be renamed";
  EXPECT_EQ(Layer(L"Fresh", 62), L"7");
  EXPECT_FALSE(KEL::CreateLayer(L"", L"DASH9", 1, false));
}

TEST_F(LayerRecords, EraseWithItsEntitiesInModelSpaceOnly) {
  layerInfo layer(L"Gone", true);
  Eval(L"(entmake '((0 . \"LINE\") (8 . \"Gone\") (10 0.0 0.0 0.0) (11 1.0 0.0 0.0)))");
  Eval(L"(entmake '((0 . \"LINE\") (8 . \"Gone\") (67 . 1) (10 0.0 0.0 0.0) (11 1.0 0.0 0.0)))");
  Eval(L"(entmake '((0 . \"LINE\") (8 . \"Kept\") (10 0.0 0.0 0.0) (11 1.0 0.0 0.0)))");
  layer.SetIsFrozen(true);
  EXPECT_FALSE(layerInfo::DeleteAllEntity(L""));
  EXPECT_TRUE(layerInfo::DeleteAllEntity(L"K*"));
  EXPECT_EQ(Eval(L"(sslength (ssget \"X\"))"), L"2");
  EXPECT_TRUE(layer.Erase(true));
  EXPECT_EQ(Eval(L"(sslength (ssget \"X\" '((8 . \"Gone\"))))"), L"1") << "paper space is left alone";
  EXPECT_EQ(Eval(L"(tblsearch \"LAYER\" \"Gone\")"), L"nil");
}

TEST_F(LayerRecords, CurrentDrawingPointerChoosesTheTable) {
  AcDbDatabase side;
  KEL::SetCurDWGPtr(&side);
  layerInfo there(L"OnlyThere", true);
  EXPECT_TRUE(there.IsExist());
  KEL::SetCurDWGPtr(nullptr);
  EXPECT_FALSE(layerInfo(L"OnlyThere", false).IsExist());
  AcDbLayerTableRecord* record = layerInfo::GetLayerTableRecordPtr(L"0", AcDb::kForRead, nullptr);
  ASSERT_NE(record, nullptr);
  EXPECT_EQ(record->database(), drawing.get());
  record->close();
}

}  // namespace
