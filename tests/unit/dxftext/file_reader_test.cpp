// Reading an object straight from a file's tokens gives what reading the
// same groups as an entity list gives (the way files were read before):
// the same values, the same failures, the same records named.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "arx/arxheaders.h"
#include "db/stub.h"
#include "dxf/access.h"
#include "dxf/codec.h"
#include "dxf/dxf_tokens.h"
#include "dxf/file_filer.h"
#include "dxf/list_filer.h"
#include "kelhost/text.h"

namespace {

using namespace kelhost::dxf;

class FileReaderTest : public ::testing::Test {
 protected:
  void SetUp() override {
    db = std::make_unique<AcDbDatabase>();
    acdbHostApplicationServices()->setWorkingDatabase(db.get());
    addLayer(L"A-WALL");
  }
  void TearDown() override {
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    db.reset();
  }

  AcDbObjectId addLayer(const wchar_t* name) {
    AcDbLayerTable* table = nullptr;
    EXPECT_EQ(db->getLayerTable(table, AcDb::kForWrite), Acad::eOk);
    auto* layer = new AcDbLayerTableRecord;
    layer->setName(name);
    AcDbObjectId id;
    EXPECT_EQ(table->add(id, layer), Acad::eOk);
    layer->close();
    table->close();
    return id;
  }

  // An object's own groups (after the owner) read both ways: the entity
  // list of each result, or "failed: why".
  struct Both {
    std::string fromTokens, fromList;
    AcDbObjectId layerFromTokens, layerFromList;
  };
  Both readBoth(const std::string& type, const std::string& body) {
    TokenList tokens;
    std::wstring error;
    const std::string bytes = body + "  0\nEOF\n";
    EXPECT_TRUE(Tokenize(bytes, tokens, error)) << ToUtf8(error);
    const Token* end = tokens.data() + tokens.size() - 1;
    auto resolve = [](std::uint64_t) { return AcDbObjectId(); };
    Both both;

    std::unique_ptr<AcDbObject> a = NewObjectOfType(kelhost::FromUtf8(type));
    FileReader direct(db.get(), tokens.data(), end, resolve);
    Access::fields(a.get(), direct);
    both.fromTokens = describe(a.get(), direct);

    RawGroups raw;
    for (const Token* t = tokens.data(); t != end; ++t) raw.push_back({t->code, t->value});
    for (RawGroup& g : raw)
      if (g.code >= 50 && g.code <= 58) g.value = DegreesToRadiansText(g.value);
    resbuf* chain = nullptr;
    EXPECT_TRUE(GroupsToChain(raw.data(), raw.data() + raw.size(), resolve, chain));
    std::vector<const resbuf*> groups;
    for (const resbuf* rb = chain; rb; rb = rb->rbnext) groups.push_back(rb);
    std::unique_ptr<AcDbObject> b = NewObjectOfType(kelhost::FromUtf8(type));
    ListReader fromList(db.get(), groups, false);
    Access::fields(b.get(), fromList);
    acutRelRb(chain);
    both.fromList = describe(b.get(), fromList);
    if (auto* e = AcDbEntity::cast(a.get())) both.layerFromTokens = e->layerId();
    if (auto* e = AcDbEntity::cast(b.get())) both.layerFromList = e->layerId();
    return both;
  }

  static std::string describe(AcDbObject* object, const GroupFiler& reader) {
    if (reader.failed()) return "failed: " + ToUtf8(reader.error());
    std::string text;
    for (const auto& p : reader.pendingRecords) text += "pending " + ToUtf8(p.name) + "\n";
    resbuf* list = ObjectToList(object, nullptr);
    RawGroups groups;
    ChainToGroups(list, groups);
    acutRelRb(list);
    for (const RawGroup& g : groups) text += std::to_string(g.code) + "=" + g.value + "\n";
    return text;
  }

  static std::string ToUtf8(const std::wstring& s) { return kelhost::ToUtf8(s); }

  std::unique_ptr<AcDbDatabase> db;
};

TEST_F(FileReaderTest, EntitiesReadAsTheirEntityLists) {
  const std::pair<const char*, const char*> cases[] = {
      {"LINE",
       "100\nAcDbEntity\n  8\nA-WALL\n 62\n1\n100\nAcDbLine\n 10\n1.25\n 20\n1234.333333333333\n 30\n0.0\n"
       " 11\n-7\n 21\n8.5e2\n 31\n0\n210\n0\n220\n0\n230\n-1\n"},
      {"ARC",
       "100\nAcDbEntity\n  8\n0\n100\nAcDbCircle\n 10\n5\n 20\n6\n 30\n0\n 40\n2.5\n100\nAcDbArc\n 50\n30\n 51\n"
       "-270.000000001\n"},
      {"TEXT",
       "100\nAcDbEntity\n  8\na-wall\n100\nAcDbText\n 10\n1\n 20\n2\n 30\n0\n 40\n2.5\n  1\nRaum \xc3\xa4 \xe4\xb8\xad\n 50\n45\n"
       "100\nAcDbText\n"},
      {"LWPOLYLINE",
       "100\nAcDbEntity\n  8\nNEW-LAYER\n100\nAcDbPolyline\n 90\n3\n 70\n1\n 43\n0.5\n 10\n0\n 20\n0\n 42\n0.25\n"
       " 10\n2\n 20\n0\n 10\n2\n 20\n1.5\n 91\n7\n"},
      // Without subclass markers (older files) and with groups in odd order.
      {"CIRCLE", " 40\n3\n 10\n1\n 20\n2\n  8\nA-WALL\n 39\n0.5\n"},
      {"POINT", "100\nAcDbEntity\n  8\n0\n100\nAcDbPoint\n 10\n1e-3\n 20\n1e14\n 30\n-0.0\n 50\n90\n"},
      // A group the class does not know, and a zero-length normal.
      {"LINE", "100\nAcDbEntity\n  8\n0\n999\nnote\n100\nAcDbLine\n 10\n0\n 20\n0\n 30\n0\n 11\n1\n 21\n1\n 31\n1\n"},
      {"CIRCLE", "100\nAcDbEntity\n  8\n0\n100\nAcDbCircle\n 10\n0\n 20\n0\n 30\n0\n 40\n1\n210\n0\n220\n0\n230\n0\n"},
  };
  for (const auto& [type, body] : cases) {
    const Both both = readBoth(type, body);
    EXPECT_EQ(both.fromTokens, both.fromList) << type << "\n" << body;
    EXPECT_EQ(both.layerFromTokens, both.layerFromList) << type;
  }
}

TEST_F(FileReaderTest, RecordsFoundAgainFollowTheTable) {
  const std::string body = "100\nAcDbEntity\n  8\nSTAIRS\n100\nAcDbLine\n";
  const AcDbObjectId first = addLayer(L"STAIRS");
  EXPECT_EQ(readBoth("LINE", body).layerFromTokens, first);
  EXPECT_EQ(readBoth("LINE", "100\nAcDbEntity\n  8\nstairs\n100\nAcDbLine\n").layerFromTokens, first);

  // The layer goes and another takes its name: the name finds the new one.
  AcDbObject* layer = nullptr;
  ASSERT_EQ(acdbOpenObject(layer, first, AcDb::kForWrite), Acad::eOk);
  ASSERT_EQ(layer->erase(), Acad::eOk);
  layer->close();
  const AcDbObjectId second = addLayer(L"STAIRS");
  const Both again = readBoth("LINE", body);
  EXPECT_EQ(again.layerFromTokens, second);
  EXPECT_EQ(again.layerFromList, second);

  // A drawing of its own, with a layer of that name: its layer, not the
  // one of a database gone.
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  db = std::make_unique<AcDbDatabase>();
  acdbHostApplicationServices()->setWorkingDatabase(db.get());
  const AcDbObjectId third = addLayer(L"STAIRS");
  EXPECT_EQ(readBoth("LINE", body).layerFromTokens, third);
}

TEST_F(FileReaderTest, FailuresReadTheSame) {
  // A text without its required string, a vertex count without vertices.
  const std::pair<const char*, const char*> cases[] = {
      {"TEXT", "100\nAcDbEntity\n  8\n0\n100\nAcDbText\n 10\n1\n 20\n2\n 30\n0\n 40\n2.5\n"},
      {"LINE", "100\nAcDbEntity\n  8\nBAD|NAME\n100\nAcDbLine\n"},
  };
  for (const auto& [type, body] : cases) {
    const Both both = readBoth(type, body);
    EXPECT_EQ(both.fromTokens, both.fromList) << type;
    EXPECT_EQ(both.fromTokens.rfind("failed: ", 0), 0u) << both.fromTokens;
  }
}

}  // namespace
