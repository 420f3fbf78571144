// MSLIDE: the slide file read back record by record, its header, and the
// vectors, fills and colours of what the view shows.
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "kelhost/text.h"
#include "view_fixture.h"

namespace {

struct Vector {
  int color, x0, y0, x1, y1;
};

// A slide as a reader that follows the documented format sees it.
struct Slide {
  std::string id;
  int type = 0, level = 0, highX = 0, highY = 0, fill = 0, test = 0;
  std::uint32_t aspect = 0;
  std::vector<Vector> vectors;
  std::vector<std::vector<std::pair<int, int>>> fills;
  std::vector<int> fillColors;
  bool ended = false;
  std::string error;
};

Slide Read(const std::string& bytes) {
  Slide s;
  if (bytes.size() < 31) {
    s.error = "short header";
    return s;
  }
  auto u8 = [&bytes](size_t i) { return static_cast<unsigned char>(bytes[i]); };
  auto u16 = [&](size_t i) { return u8(i) | (u8(i + 1) << 8); };
  auto s16 = [&](size_t i) { return static_cast<int>(static_cast<std::int16_t>(u16(i))); };
  auto s8 = [&](size_t i) { return static_cast<int>(static_cast<signed char>(bytes[i])); };
  s.id = bytes.substr(0, 17);
  s.type = u8(17);
  s.level = u8(18);
  s.highX = u16(19);
  s.highY = u16(21);
  s.aspect = static_cast<std::uint32_t>(u16(23)) | (static_cast<std::uint32_t>(u16(25)) << 16);
  s.fill = u16(27);
  s.test = u16(29);
  int color = -1, lastX = 0, lastY = 0;
  std::vector<std::pair<int, int>> polygon;
  int polygonLeft = -1;
  for (size_t i = 31; i + 1 < bytes.size();) {
    const int kind = u8(i + 1);
    if (kind < 0x80) {  // a whole vector; its from point becomes the last point
      s.vectors.push_back({color, u16(i), u16(i + 2), u16(i + 4), u16(i + 6)});
      lastX = u16(i);
      lastY = u16(i + 2);
      i += 8;
    } else if (kind == 0xFB) {  // offsets from the last point; the from point becomes it
      const Vector v{color, lastX + s8(i), lastY + s8(i + 2), lastX + s8(i + 3), lastY + s8(i + 4)};
      s.vectors.push_back(v);
      lastX = v.x0;
      lastY = v.y0;
      i += 5;
    } else if (kind == 0xFE) {  // from the last point; the to point becomes it
      const Vector v{color, lastX, lastY, lastX + s8(i), lastY + s8(i + 2)};
      s.vectors.push_back(v);
      lastX = v.x1;
      lastY = v.y1;
      i += 3;
    } else if (kind == 0xFF) {
      color = u8(i);
      i += 2;
    } else if (kind == 0xFD) {
      const int x = s16(i + 2), y = s16(i + 4);
      if (y < 0 && polygonLeft < 0) {
        polygonLeft = x;
        polygon.clear();
      } else if (y < 0) {
        if (polygonLeft != 0) s.error = "fill count";
        s.fills.push_back(polygon);
        s.fillColors.push_back(color);
        polygonLeft = -1;
      } else {
        polygon.emplace_back(x, y);
        --polygonLeft;
      }
      i += 6;
    } else if (kind == 0xFC) {
      s.ended = i + 2 == bytes.size();
      break;
    } else {
      s.error = "record type " + std::to_string(kind);
      break;
    }
  }
  return s;
}

class Mslide : public ViewTest {
 protected:
  void SetUp() override {
    ViewTest::SetUp();
    dir = std::filesystem::temp_directory_path() / ("kelcad_slide_" + std::to_string(getpid()));
    std::filesystem::create_directories(dir);
  }
  void TearDown() override {
    std::filesystem::remove_all(dir);
    ViewTest::TearDown();
  }
  std::wstring path(const char* name) const { return kelhost::FromUtf8((dir / name).string()); }
  std::string bytes(const char* name) const {
    std::ifstream in(dir / name, std::ios::binary);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
  }
  // A 200 x 100 pixel screen showing (0,0)-(200,100): a drawing unit per pixel.
  void unitPixels() {
    setenv("KELCAD_SCREENSIZE", "200x100", 1);
    command(L"\"ZOOM\" \"W\" \"0,0\" \"200,100\"");
  }
  std::filesystem::path dir;
};

bool Near(int a, int b) { return std::abs(a - b) <= 1; }

TEST_F(Mslide, HeaderDescribesTheScreen) {
  unitPixels();
  command(L"\"MSLIDE\" \"" + path("empty") + L"\"");
  const Slide s = Read(bytes("empty.sld"));  // the extension was added
  ASSERT_EQ(s.error, "");
  EXPECT_EQ(s.id, std::string("AutoCAD Slide\r\n\x1a\0", 17));
  EXPECT_EQ(s.type, 86);
  EXPECT_EQ(s.level, 2);
  EXPECT_EQ(s.highX, 199);
  EXPECT_EQ(s.highY, 99);
  EXPECT_EQ(s.aspect, 20000000u);
  EXPECT_EQ(s.test, 0x1234);
  EXPECT_TRUE(s.ended);
  EXPECT_TRUE(s.vectors.empty());
}

TEST_F(Mslide, VectorsShowWhatTheViewShowsInItsColours) {
  unitPixels();
  line(10, 10, 110, 60, L"0", 1);
  line(-50, 50, 50, 50, L"0", 2);      // half outside: cut at the edge
  line(300, 0, 400, 100, L"0", 4);     // outside the view: not drawn
  line(20, 80, 40, 80, L"UNSEEN", 5);  // on a layer that is off
  setLayer(L"UNSEEN", true, false);
  eval(L"(entmake '((0 . \"CIRCLE\") (10 150.0 50.0 0.0) (40 . 20.0) (62 . 3)))");
  command(L"\"MSLIDE\" \"" + path("lines.sld") + L"\"");
  const Slide s = Read(bytes("lines.sld"));
  ASSERT_EQ(s.error, "");
  ASSERT_FALSE(s.vectors.empty());
  EXPECT_EQ(s.vectors.front().color, 1);  // a colour comes before the first vector

  auto has = [&s](int color, int x0, int y0, int x1, int y1) {
    for (const Vector& v : s.vectors)
      if (v.color == color && ((Near(v.x0, x0) && Near(v.y0, y0) && Near(v.x1, x1) && Near(v.y1, y1)) ||
                               (Near(v.x0, x1) && Near(v.y0, y1) && Near(v.x1, x0) && Near(v.y1, y0))))
        return true;
    return false;
  };
  EXPECT_TRUE(has(1, 10, 10, 110, 60));
  EXPECT_TRUE(has(2, 0, 50, 50, 50));
  int circle = 0;
  for (const Vector& v : s.vectors) {
    EXPECT_NE(v.color, 4);
    EXPECT_NE(v.color, 5);
    EXPECT_LE(v.x0, 199);
    EXPECT_LE(v.y0, 99);
    if (v.color != 3) continue;
    ++circle;
    EXPECT_NEAR(std::hypot(v.x0 - 150, v.y0 - 50), 20, 1.5);
    EXPECT_NEAR(std::hypot(v.x1 - 150, v.y1 - 50), 20, 1.5);
  }
  EXPECT_GE(circle, 12);  // within half a pixel of a 20-pixel circle
}

TEST_F(Mslide, WidePolylinesAreFilledAndTextIsItsBox) {
  unitPixels();
  eval(L"(entmake '((0 . \"LWPOLYLINE\") (100 . \"AcDbEntity\") (62 . 6) (100 . \"AcDbPolyline\") (90 . 2)"
       L" (70 . 0) (43 . 10.0) (10 20.0 20.0) (10 120.0 20.0)))");
  eval(L"(entmake '((0 . \"TEXT\") (10 20.0 60.0 0.0) (40 . 10.0) (1 . \"Hi\") (62 . 2)))");
  command(L"\"MSLIDE\" \"" + path("filled.sld") + L"\"");
  const Slide s = Read(bytes("filled.sld"));
  ASSERT_EQ(s.error, "");
  ASSERT_EQ(s.fills.size(), 1u);
  EXPECT_EQ(s.fillColors[0], 6);
  ASSERT_EQ(s.fills[0].size(), 4u);
  for (const auto& corner : s.fills[0]) {
    EXPECT_TRUE(Near(corner.first, 20) || Near(corner.first, 120));
    EXPECT_TRUE(Near(corner.second, 15) || Near(corner.second, 25));
  }
  int outline = 0, box = 0;
  for (const Vector& v : s.vectors) {
    if (v.color == 6) ++outline;
    if (v.color == 2) {
      ++box;
      EXPECT_TRUE(Near(v.y0, 60) || Near(v.y0, 70));
      EXPECT_GE(v.x0, 19);
    }
  }
  EXPECT_EQ(outline, 4);
  EXPECT_EQ(box, 4);

  // Without FILLMODE only the outline is drawn.
  eval(L"(setvar \"FILLMODE\" 0)");
  command(L"\"MSLIDE\" \"" + path("outlined.sld") + L"\"");
  const Slide outlined = Read(bytes("outlined.sld"));
  EXPECT_TRUE(outlined.fills.empty());
  EXPECT_EQ(outlined.vectors.size(), s.vectors.size());
}

TEST_F(Mslide, NameDefaultsToTheDrawingsAndAWrongPlaceFails) {
  command(L"\"MSLIDE\" \"" + path("missing/dir/x") + L"\"");
  EXPECT_NE(out.find(L"\nUnable to create slide file "), std::wstring::npos);
  EXPECT_FALSE(std::filesystem::exists(dir / "missing"));

  out.clear();
  const auto here = std::filesystem::current_path();
  std::filesystem::current_path(dir);
  command(L"\"MSLIDE\" \"\"");
  std::filesystem::current_path(here);
  EXPECT_NE(out.find(L"\nEnter name of slide file to create <Drawing1>: "), std::wstring::npos);
  EXPECT_EQ(Read(bytes("Drawing1.sld")).error, "");
}

}  // namespace
