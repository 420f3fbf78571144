// The object data store under test: a fresh drawing as the working
// database, the command line and message boxes captured, and no object
// left open by any test.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "arx/arxheaders.h"
#include "db/stub.h"
#include "kelcad/api/drawing_in_use.h"
#include "kelcad/kelcad.h"
#include "kelhost/host.h"
#include "kelhost/ui.h"

class OxDataTest : public ::testing::Test {
 protected:
  void SetUp() override {
    db = std::make_unique<AcDbDatabase>();
    acdbHostApplicationServices()->setWorkingDatabase(db.get());
    OxData::m_pCurDWG = nullptr;
    KEL::ForgetCurrentDrawing();
    kelhost::ClearShownMessageBoxes();
    kelhost::Host::instance().setCommandLineSink([this](const std::wstring& text) { out += text; });
    openAtStart = kelhost::db::OpenObjectCount();
  }
  void TearDown() override {
    EXPECT_EQ(kelhost::db::OpenObjectCount(), openAtStart) << "objects left open";
    kelhost::Host::instance().setCommandLineSink(nullptr);
    OxData::m_pCurDWG = nullptr;
    KEL::ForgetCurrentDrawing();
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    db.reset();
  }

  // A line in model space of the working drawing.
  AcDbObjectId AddLine(double x = 0.0) {
    AcDbBlockTableRecord* space = nullptr;
    EXPECT_EQ(acdbOpenObject(space, db->modelSpaceId(), AcDb::kForWrite), Acad::eOk);
    auto* line = new AcDbLine(AcGePoint3d(x, 0, 0), AcGePoint3d(x, 10, 0));
    AcDbObjectId id;
    EXPECT_EQ(space->appendAcDbEntity(id, line), Acad::eOk);
    line->close();
    space->close();
    return id;
  }

  static void NameOf(AcDbObjectId id, ads_name name) { ASSERT_EQ(acdbGetAdsName(name, id), Acad::eOk); }

  // The chain in a short text form: "(1001 APP)(1070 5)(1040 2.5)...".
  static std::wstring Text(const resbuf* chain) {
    std::wstring text;
    for (const resbuf* rb = chain; rb != nullptr; rb = rb->rbnext) {
      text += L"(" + std::to_wstring(rb->restype) + L" ";
      switch (KEL::GetDXFCodeDataType(rb->restype)) {
        case RTSTR: text += rb->resval.rstring != nullptr ? rb->resval.rstring : L"<null>"; break;
        case RTSHORT: text += std::to_wstring(rb->resval.rint); break;
        case RTLONG: text += std::to_wstring(rb->resval.rlong); break;
        case RTREAL: text += Number(rb->resval.rreal); break;
        case RT3DPOINT:
          text += Number(rb->resval.rpoint[0]) + L"," + Number(rb->resval.rpoint[1]) + L"," +
                  Number(rb->resval.rpoint[2]);
          break;
        default: text += L"?"; break;
      }
      text += L")";
    }
    return text;
  }
  static std::wstring Number(double value) {
    wchar_t buffer[32];
    swprintf(buffer, 32, L"%g", value);
    return buffer;
  }
  // The object's xdata (all applications, or one) in text form.
  static std::wstring XData(AcDbObjectId id, const wchar_t* app = nullptr) {
    AcDbObject* object = nullptr;
    if (acdbOpenObject(object, id, AcDb::kForRead) != Acad::eOk) return L"<shut>";
    resbuf* xdata = object->xData(app);
    object->close();
    std::wstring text = Text(xdata);
    acutRelRb(xdata);
    return text;
  }
  bool Registered(const wchar_t* app) const {
    AcDbRegAppTable* table = nullptr;
    if (db->getRegAppTable(table, AcDb::kForRead) != Acad::eOk) return false;
    const bool has = table->has(app);
    table->close();
    return has;
  }
  static std::vector<std::wstring> Boxes() {
    std::vector<std::wstring> texts;
    for (const auto& box : kelhost::ShownMessageBoxes()) texts.push_back(box.text);
    return texts;
  }

  std::unique_ptr<AcDbDatabase> db;
  std::wstring out;
  int openAtStart = 0;
};
