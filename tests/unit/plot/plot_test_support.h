// What the plot tests share: a scratch directory, pictures read from PNG
// files (cairo), and PDF pages rasterised by pdftoppm.
#pragma once

#include <cairo.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>

namespace plot_tests {

class ScratchDir {
 public:
  ScratchDir() {
    char pattern[] = "/tmp/kelplot-XXXXXX";
    const char* made = mkdtemp(pattern);
    mPath = made ? made : "/tmp";
  }
  ~ScratchDir() {
    if (mPath != "/tmp") std::system(("rm -rf '" + mPath + "'").c_str());
  }
  ScratchDir(const ScratchDir&) = delete;
  ScratchDir& operator=(const ScratchDir&) = delete;
  std::string file(const std::string& name) const { return mPath + "/" + name; }

 private:
  std::string mPath;
};

inline bool ReadFile(const std::string& path, std::string& bytes) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  std::ostringstream s;
  s << in.rdbuf();
  bytes = s.str();
  return true;
}

// A PNG's pixels. Ink is anything darker than a light grey on any channel.
class Image {
 public:
  explicit Image(const std::string& path) : mSurface(cairo_image_surface_create_from_png(path.c_str())) {}
  ~Image() { cairo_surface_destroy(mSurface); }
  Image(Image&& other) noexcept : mSurface(other.mSurface) { other.mSurface = nullptr; }
  Image(const Image&) = delete;
  Image& operator=(const Image&) = delete;

  bool ok() const { return mSurface && cairo_surface_status(mSurface) == CAIRO_STATUS_SUCCESS; }
  int width() const { return ok() ? cairo_image_surface_get_width(mSurface) : 0; }
  int height() const { return ok() ? cairo_image_surface_get_height(mSurface) : 0; }
  // 0xRRGGBB; white outside the picture.
  std::uint32_t rgbAt(int x, int y) const {
    if (!ok() || x < 0 || y < 0 || x >= width() || y >= height()) return 0xFFFFFF;
    cairo_surface_flush(mSurface);
    const unsigned char* row = cairo_image_surface_get_data(mSurface) + y * cairo_image_surface_get_stride(mSurface);
    std::uint32_t v;
    std::memcpy(&v, row + 4 * x, 4);
    return v & 0xFFFFFF;
  }
  bool inkAt(int x, int y) const {
    const std::uint32_t v = rgbAt(x, y);
    return ((v >> 16) & 255) < 200 || ((v >> 8) & 255) < 200 || (v & 255) < 200;
  }
  // Any ink within r pixels of (x, y).
  bool inkNear(double x, double y, int r) const {
    const int cx = static_cast<int>(x), cy = static_cast<int>(y);
    for (int dy = -r; dy <= r; ++dy)
      for (int dx = -r; dx <= r; ++dx)
        if (inkAt(cx + dx, cy + dy)) return true;
    return false;
  }
  // Inked pixels in the rectangle from (x0, y0) to (x1, y1), ends excluded.
  int inkCount(int x0, int y0, int x1, int y1) const {
    int n = 0;
    for (int y = y0; y < y1; ++y)
      for (int x = x0; x < x1; ++x) n += inkAt(x, y);
    return n;
  }

 private:
  cairo_surface_t* mSurface;
};

// The first page of a PDF at dpi, through pdftoppm.
inline Image Rasterise(const std::string& pdf, int dpi) {
  const std::string base = pdf + "-page";
  const std::string command = "pdftoppm -png -r " + std::to_string(dpi) + " -singlefile '" + pdf + "' '" + base + "'";
  if (std::system(command.c_str()) != 0) return Image("");
  return Image(base + ".png");
}

}  // namespace plot_tests
