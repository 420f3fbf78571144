// Xdata of registered applications, through AutoLISP and through
// AcDbObject, and extension dictionaries.
#include "database_fixture.h"

namespace {

using XData = DrawingTest;

TEST_F(XData, RegisteredApplicationsOnly) {
  EXPECT_EQ(eval(L"(regapp \"KEL_APP\")"), L"\"KEL_APP\"");
  EXPECT_EQ(eval(L"(regapp \"kel_app\")"), L"nil");  // already there
  EXPECT_EQ(eval(L"(regapp \"bad*name\")"), L"nil");
  eval(L"(setq e (entmakex '((0 . \"POINT\") (10 0 0 0) (-3 (\"KEL_APP\" (1000 . \"甲\") (1070 . 7) (1010 1 2 3))))))");
  EXPECT_EQ(eval(L"(assoc -3 (entget e '(\"KEL_APP\")))"),
            L"(-3 (\"KEL_APP\" (1000 . \"甲\") (1070 . 7) (1010 1.0 2.0 3.0)))");
  EXPECT_EQ(eval(L"(assoc -3 (entget e))"), L"nil");  // only when asked for
  EXPECT_EQ(eval(L"(assoc -3 (entget e '(\"kel_*\")))"), L"(-3 (\"KEL_APP\" (1000 . \"甲\") (1070 . 7) (1010 1.0 2.0 3.0)))");
  EXPECT_EQ(eval(L"(assoc -3 (entget e '(\"OTHER\")))"), L"nil");
  // An application that is not registered makes the whole list fail.
  const Adesk::UInt64 before = handseed();
  EXPECT_EQ(eval(L"(entmake '((0 . \"POINT\") (10 0 0 0) (-3 (\"NOT_REGISTERED\" (1000 . \"x\")))))"), L"nil");
  EXPECT_EQ(eval(L"(entmake '((0 . \"POINT\") (10 0 0 0) (-3 (\"KEL_APP\" (1002 . \"{\") (1000 . \"x\")))))"), L"nil");
  EXPECT_EQ(handseed(), before);
}

TEST_F(XData, EntmodReplacesOneApplicationAndKeepsTheOthers) {
  eval(L"(regapp \"A1\")");
  eval(L"(regapp \"A2\")");
  eval(L"(setq e (entmakex '((0 . \"POINT\") (10 0 0 0) (-3 (\"A1\" (1000 . \"one\")) (\"A2\" (1070 . 2))))))");
  eval(L"(entmod (list (cons -1 e) '(-3 (\"A1\" (1040 . 1.5)))))");
  EXPECT_EQ(eval(L"(assoc -3 (entget e '(\"*\")))"), L"(-3 (\"A1\" (1040 . 1.5)) (\"A2\" (1070 . 2)))");
  eval(L"(entmod (list (cons -1 e) '(-3 (\"A2\"))))");  // an application alone loses its data
  EXPECT_EQ(eval(L"(assoc -3 (entget e '(\"*\")))"), L"(-3 (\"A1\" (1040 . 1.5)))");
  EXPECT_EQ(eval(L"(entmod (list (cons -1 e) '(-3 (\"NOPE\" (1000 . \"x\")))))"), L"nil");
  EXPECT_EQ(eval(L"(assoc -3 (entget e '(\"*\")))"), L"(-3 (\"A1\" (1040 . 1.5)))");
}

TEST_F(XData, SizeAndRoom) {
  eval(L"(regapp \"SZ\")");
  eval(L"(setq e (entmakex '((0 . \"POINT\") (10 0 0 0))))");
  EXPECT_EQ(eval(L"(xdroom e)"), L"16383");
  const std::wstring small = eval(L"(xdsize '((\"SZ\" (1000 . \"ab\"))))");
  const std::wstring larger = eval(L"(xdsize '(-3 (\"SZ\" (1000 . \"abcd\"))))");
  ASSERT_NE(small, L"nil");
  EXPECT_EQ(std::stol(larger) - std::stol(small), 4);  // two more UTF-16 units
  EXPECT_EQ(eval(L"(xdsize '((\"UNKNOWN\" (1000 . \"ab\"))))"), L"nil");
  eval(L"(entmod (list (cons -1 e) '(-3 (\"SZ\" (1000 . \"ab\")))))");
  EXPECT_EQ(eval(L"(+ (xdroom e) (xdsize '((\"SZ\" (1000 . \"ab\")))))"), L"16383");
  // Beyond the limit nothing is stored.
  eval(L"(progn (setq big \"\") (repeat 250 (setq big (strcat big \"x\"))))");
  eval(L"(progn (setq lst (list \"SZ\")) (repeat 40 (setq lst (append lst (list (cons 1000 big))))))");
  EXPECT_EQ(eval(L"(entmod (list (cons -1 e) (list -3 lst)))"), L"nil");
  EXPECT_EQ(eval(L"(xdroom e)"), eval(L"(- 16383 (xdsize '((\"SZ\" (1000 . \"ab\")))))"));
}

TEST_F(XData, ObjectInterfaceChecksAccessAndApplications) {
  AcDbRegAppTable* apps = nullptr;
  ASSERT_EQ(db->getRegAppTable(apps, AcDb::kForWrite), Acad::eOk);
  auto* app = new AcDbRegAppTableRecord;
  app->setName(L"CPP_APP");
  ASSERT_EQ(apps->add(app), Acad::eOk);
  app->close();
  apps->close();

  AcDbLayerTableRecord* layer = nullptr;
  ASSERT_EQ(acdbOpenObject(layer, db->layerZero(), AcDb::kForRead), Acad::eOk);
  resbuf* data = acutBuildList(1001, L"CPP_APP", 1000, L"v", RTNONE);
  EXPECT_EQ(layer->setXData(data), Acad::eNotOpenForWrite);
  ASSERT_EQ(layer->upgradeOpen(), Acad::eOk);
  EXPECT_EQ(layer->setXData(data), Acad::eOk);
  resbuf* wrong = acutBuildList(1001, L"MISSING", 1000, L"v", RTNONE);
  EXPECT_EQ(layer->setXData(wrong), Acad::eRegappIdNotFound);
  resbuf* headless = acutBuildList(1000, L"v", RTNONE);
  EXPECT_EQ(layer->setXData(headless), Acad::eInvalidResBuf);
  resbuf* back = layer->xData(L"cpp_app");
  ASSERT_NE(back, nullptr);
  EXPECT_EQ(back->restype, 1001);
  ASSERT_NE(back->rbnext, nullptr);
  EXPECT_STREQ(back->rbnext->resval.rstring, L"v");
  EXPECT_EQ(layer->xData(L"OTHER"), nullptr);
  acutRelRb(back);
  acutRelRb(data);
  acutRelRb(wrong);
  acutRelRb(headless);

  // Extension dictionary: made once, shown in the entity list, released
  // only when empty.
  EXPECT_EQ(layer->createExtensionDictionary(), Acad::eOk);
  EXPECT_EQ(layer->createExtensionDictionary(), Acad::eAlreadyInDb);
  AcDbObjectId xdict = layer->extensionDictionary();
  EXPECT_FALSE(xdict.isNull());
  layer->close();
  ads_name name;
  acdbGetAdsName(name, db->layerZero());
  resbuf* list = acdbEntGet(name);
  ASSERT_NE(list, nullptr);
  bool sawXdict = false;
  for (resbuf* rb = list; rb; rb = rb->rbnext)
    if (rb->restype == 360) sawXdict = rb->resval.rlname[0] == xdict.asOldId();
  EXPECT_TRUE(sawXdict);
  acutRelRb(list);

  AcDbDictionary* dict = nullptr;
  ASSERT_EQ(acdbOpenObject(dict, xdict, AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(dict->ownerId(), db->layerZero());
  auto* rec = new AcDbXrecord;
  AcDbObjectId recId;
  ASSERT_EQ(dict->setAt(L"DATA", rec, recId), Acad::eOk);
  rec->close();
  dict->close();
  ASSERT_EQ(acdbOpenObject(layer, db->layerZero(), AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(layer->releaseExtensionDictionary(), Acad::eContainerNotEmpty);
  layer->close();
}

}  // namespace
