// Files nested a million deep: brace groups before an entity's own groups
// and nested xdata lists. The reader walks them without recursing; the
// drawing opens, saves and opens again.
#include "dxf_fixture.h"

namespace {

constexpr int kMillion = 1000000;

std::string Repeated(const std::string& groups, int times) {
  std::string out;
  out.reserve(groups.size() * static_cast<size_t>(times));
  for (int i = 0; i < times; ++i) out += groups;
  return out;
}

std::string LineWith(const std::string& head, const std::string& tail) {
  return "0\nLINE\n5\nA1\n" + head + "100\nAcDbEntity\n8\n0\n100\nAcDbLine\n10\n0\n20\n0\n30\n0\n11\n1\n21\n1\n31\n0\n" + tail;
}

std::string DrawingWith(const std::string& entity) {
  const std::string empty = Dxf(Drawing2013({}));
  const std::string marker = "ENTITIES\n";
  std::string text = empty;
  text.insert(text.find(marker) + marker.size(), entity);
  return text;
}

}  // namespace

TEST_F(DxfFileTest, DeeplyNestedGroupsAreReadWithoutRecursing) {
  const struct {
    const char* what;
    std::string text;
  } cases[] = {
      {"brace groups", DrawingWith(LineWith(Repeated("102\n{NEST\n", kMillion) + Repeated("102\n}\n", kMillion), ""))},
      {"xdata lists", DrawingWith(LineWith("", "1001\nACAD\n" + Repeated("1002\n{\n", kMillion) + Repeated("1002\n}\n", kMillion)))},
  };
  for (const auto& c : cases) {
    writeText("deep.dxf", c.text);
    std::wstring error;
    auto other = std::make_unique<AcDbDatabase>(false);
    ASSERT_TRUE(kelhost::ReadDrawingFile(other.get(), wpath("deep.dxf"), error)) << c.what << ": " << kelhost::ToUtf8(error);
    acdbHostApplicationServices()->setWorkingDatabase(other.get());
    db = std::move(other);
    EXPECT_EQ(eval(L"(cdr (assoc 0 (entget (handent \"A1\"))))"), L"\"LINE\"") << c.what;
    saveAndReopen("again.dxf");
    EXPECT_EQ(eval(L"(cdr (assoc 11 (entget (handent \"A1\"))))"), L"(1.0 1.0 0.0)") << c.what;
  }
}
