// A fresh drawing as the working database, AutoLISP against it, files in a
// temporary directory, and small DXF texts built from (code, value) pairs.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "arx/arxheaders.h"
#include "db/stub.h"
#include "kelhost/drawing_files.h"
#include "kelhost/host.h"
#include "kelhost/lisp.h"
#include "kelhost/text.h"

class DxfFileTest : public ::testing::Test {
 protected:
  void SetUp() override {
    char tmpl[] = "/tmp/kel_dxf_XXXXXX";
    ASSERT_NE(mkdtemp(tmpl), nullptr);
    dir = tmpl;
    db = std::make_unique<AcDbDatabase>();
    acdbHostApplicationServices()->setWorkingDatabase(db.get());
    openAtStart = kelhost::db::OpenObjectCount();
  }
  void TearDown() override {
    EXPECT_EQ(kelhost::db::OpenObjectCount(), openAtStart) << "objects left open";
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    db.reset();
    std::system(("rm -rf '" + dir + "'").c_str());
  }
  std::wstring eval(const std::wstring& text) {
    auto outcome = kelhost::Host::instance().lisp().evalOne(text);
    return outcome.ok ? outcome.valueText : L"error: " + outcome.error;
  }
  std::string path(const char* name) const { return dir + "/" + name; }
  std::wstring wpath(const char* name) const { return kelhost::FromUtf8(path(name)); }
  void writeText(const char* name, const std::string& text) const { std::ofstream(path(name), std::ios::binary) << text; }
  std::string readText(const char* name) const {
    std::ifstream in(path(name), std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
  }
  // Saves the working drawing and reads the file into a new database
  // that becomes the working one.
  void saveAndReopen(const char* name = "drawing.dxf") {
    ASSERT_EQ(db->saveAs(wpath(name).c_str()), Acad::eOk);
    auto other = std::make_unique<AcDbDatabase>(false);
    std::wstring error;
    ASSERT_TRUE(kelhost::ReadDrawingFile(other.get(), wpath(name), error)) << kelhost::ToUtf8(error);
    acdbHostApplicationServices()->setWorkingDatabase(other.get());
    db = std::move(other);
  }
  // Entities of model space, in order.
  std::vector<AcDbObjectId> modelSpace() const {
    auto* btr = kelhost::db::PeekAs<AcDbBlockTableRecord>(db->modelSpaceId());
    std::vector<AcDbObjectId> ids;
    if (btr)
      for (AcDbObjectId id : btr->entityIds())
        if (!id.isErased()) ids.push_back(id);
    return ids;
  }

  std::string dir;
  std::unique_ptr<AcDbDatabase> db;
  int openAtStart = 0;
};

// A DXF text from its groups.
inline std::string Dxf(const std::vector<std::pair<int, std::string>>& groups) {
  std::string out;
  for (const auto& g : groups) out += std::to_string(g.first) + "\n" + g.second + "\n";
  return out;
}

// A small but complete 2013 drawing: the given tables groups and entities
// between a header and the end.
inline std::vector<std::pair<int, std::string>> Drawing2013(const std::vector<std::pair<int, std::string>>& entities,
                                                            const std::vector<std::pair<int, std::string>>& objects = {}) {
  std::vector<std::pair<int, std::string>> g = {
      {0, "SECTION"}, {2, "HEADER"}, {9, "$ACADVER"}, {1, "AC1027"}, {9, "$HANDSEED"}, {5, "FFF"},
      {9, "$USERI3"}, {70, "42"},    {9, "$CUSTOMVAR"}, {1, "kept"}, {0, "ENDSEC"},
      {0, "SECTION"}, {2, "ENTITIES"}};
  g.insert(g.end(), entities.begin(), entities.end());
  g.push_back({0, "ENDSEC"});
  g.push_back({0, "SECTION"});
  g.push_back({2, "OBJECTS"});
  g.insert(g.end(), objects.begin(), objects.end());
  g.push_back({0, "ENDSEC"});
  g.push_back({0, "EOF"});
  return g;
}
