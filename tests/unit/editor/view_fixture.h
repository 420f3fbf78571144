// A fresh drawing on the default headless screen, commands run as
// (command ...) runs them, and the view and extents variables read back.
#pragma once

#include <cstdlib>
#include <string>

#include "arx/acedads.h"
#include "editor/command_processor.h"
#include "kelhost/sysvars.h"
#include "tests/unit/database/database_fixture.h"

class ViewTest : public DrawingTest {
 protected:
  void SetUp() override {
    unsetenv("KELCAD_SCREENSIZE");
    DrawingTest::SetUp();
    kelhost::sysvars::ResetSession();
  }
  void TearDown() override {
    kelhost::editor::CancelWaitingCommands();
    unsetenv("KELCAD_SCREENSIZE");
    kelhost::sysvars::ResetSession();
    DrawingTest::TearDown();
  }

  // (command args...): the command's answers as AutoLISP writes them.
  std::wstring command(const std::wstring& args) { return eval(L"(command " + args + L")"); }

  resbuf var(const wchar_t* name) {
    resbuf rb{};
    EXPECT_EQ(acedGetVar(name, &rb), RTNORM) << name;
    return rb;
  }
  AcGePoint3d point(const wchar_t* name) {
    const resbuf rb = var(name);
    return AcGePoint3d(rb.resval.rpoint[0], rb.resval.rpoint[1], rb.restype == RTPOINT ? 0.0 : rb.resval.rpoint[2]);
  }
  double real(const wchar_t* name) { return var(name).resval.rreal; }

  // The view as VIEWCTR and VIEWSIZE give it.
  void expectView(double cx, double cy, double height) {
    const AcGePoint3d c = point(L"VIEWCTR");
    EXPECT_NEAR(c.x, cx, 1e-9);
    EXPECT_NEAR(c.y, cy, 1e-9);
    EXPECT_NEAR(real(L"VIEWSIZE"), height, 1e-9);
  }

  // A line in model space on layer (made when missing) in colour.
  AcDbObjectId line(double x0, double y0, double x1, double y1, const wchar_t* layer = L"0", int color = 256) {
    const std::wstring list = L"(list '(0 . \"LINE\") (cons 8 \"" + std::wstring(layer) + L"\") (list 10 " +
                              num(x0) + L" " + num(y0) + L" 0.0) (list 11 " + num(x1) + L" " + num(y1) +
                              L" 0.0) (cons 62 " + std::to_wstring(color) + L"))";
    EXPECT_EQ(eval(L"(entmake " + list + L")").find(L"error"), std::wstring::npos);
    return lastEntity();
  }
  void setLayer(const wchar_t* name, bool off, bool frozen) {
    AcDbLayerTable* table = nullptr;
    ASSERT_EQ(db->getLayerTable(table, AcDb::kForRead), Acad::eOk);
    AcDbObjectId id;
    table->getAt(name, id);
    table->close();
    AcDbLayerTableRecord* layer = nullptr;
    ASSERT_EQ(acdbOpenObject(layer, id, AcDb::kForWrite), Acad::eOk);
    layer->setIsOff(off);
    layer->setIsFrozen(frozen);
    layer->close();
  }
  AcDbObjectId lastEntity() {
    ads_name e;
    EXPECT_EQ(acdbEntLast(e), RTNORM);
    AcDbObjectId id;
    acdbGetObjectId(id, e);
    return id;
  }
  static std::wstring num(double v) { return std::to_wstring(v); }

  static constexpr double kAspect = 1920.0 / 1080.0;  // the default screen's
};
