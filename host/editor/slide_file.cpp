#include "editor/slide_file.h"

#include <cmath>
#include <cstdint>

namespace kelhost::editor {
namespace {

constexpr int kVectorOffset = 0xFB, kEnd = 0xFC, kFill = 0xFD, kCommonEnd = 0xFE, kColor = 0xFF;

bool FitsOffset(int d) { return d >= -128 && d <= 127; }

}  // namespace

SlideEncoder::SlideEncoder(int width, int height) {
  mBytes.append("AutoCAD Slide\r\n\x1a", 16);
  mBytes.push_back('\0');
  byte(86);  // type
  byte(2);   // level
  word(width - 1);
  word(height - 1);
  // Square pixels: the area's aspect ratio is its pixels' ratio.
  const auto aspect = static_cast<std::uint32_t>(std::lround(static_cast<double>(width) / height * 1e7));
  for (int i = 0; i < 4; ++i) byte(static_cast<int>((aspect >> (8 * i)) & 0xFF));
  word(2);       // hardware fill
  word(0x1234);  // test number: tells a reader the byte order
}

void SlideEncoder::byte(int value) { mBytes.push_back(static_cast<char>(value & 0xFF)); }

void SlideEncoder::word(int value) {
  byte(value);
  byte(value >> 8);
}

void SlideEncoder::color(int index) {
  if (index == mColor) return;
  mColor = index;
  byte(index);
  byte(kColor);
}

// Each vector is written the cheapest way the last point allows. A vector
// written whole or by offsets is given from its second point, so that the
// last point is where the next segment of a chain starts.
void SlideEncoder::vector(Pixel from, Pixel to) {
  if (mHaveLast && !(mLast == from) && to == mLast) std::swap(from, to);
  if (mHaveLast && from == mLast && FitsOffset(to.x - from.x) && FitsOffset(to.y - from.y)) {
    byte(to.x - from.x);
    byte(kCommonEnd);
    byte(to.y - from.y);
    mLast = to;
    return;
  }
  if (mHaveLast && FitsOffset(to.x - mLast.x) && FitsOffset(to.y - mLast.y) && FitsOffset(from.x - mLast.x) &&
      FitsOffset(from.y - mLast.y)) {
    byte(to.x - mLast.x);
    byte(kVectorOffset);
    byte(to.y - mLast.y);
    byte(from.x - mLast.x);
    byte(from.y - mLast.y);
    mLast = to;
    return;
  }
  word(to.x);
  word(to.y);
  word(from.x);
  word(from.y);
  mLast = to;
  mHaveLast = true;
}

// A fill sequence: a start record (the vertex count, a negative y), the
// vertices, an end record (a negative y).
void SlideEncoder::fill(const std::vector<Pixel>& vertices) {
  if (vertices.size() < 3 || vertices.size() > 10) return;
  auto record = [this](int x, int y) {
    byte(0);
    byte(kFill);
    word(x);
    word(y);
  };
  record(static_cast<int>(vertices.size()), -1);
  for (const Pixel& p : vertices) record(p.x, p.y);
  record(0, -1);
}

std::string SlideEncoder::finish() {
  byte(0);
  byte(kEnd);
  return mBytes;
}

}  // namespace kelhost::editor
