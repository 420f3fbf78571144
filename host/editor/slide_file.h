// Slide files (.sld) as MSLIDE writes them, in the format of Release 9 and
// later: a 31-byte header (the identification "AutoCAD Slide" CR LF ^Z
// NUL, type 86, level 2, the drawing area's highest pixel column and row,
// its aspect ratio times 10,000,000, hardware fill 2, the test number
// 1234 hex), then records of two-byte fields whose high byte is the record
// type: vectors (from and to point), offset vectors and common-endpoint
// vectors (offsets from the last point), solid fills, colour changes, and
// the end record. Two-byte fields are written low byte first, as the test
// number shows; pixel (0,0) is the lower-left corner.
#pragma once

#include <string>
#include <vector>

namespace kelhost::editor {

struct Pixel {
  int x = 0, y = 0;
  bool operator==(const Pixel& o) const { return x == o.x && y == o.y; }
};

class SlideEncoder {
 public:
  // The drawing area in pixels (1 to 32767 each way).
  SlideEncoder(int width, int height);
  // What follows is drawn in colour index (0-255); a record only when the
  // colour changes.
  void color(int index);
  // Points within the drawing area.
  void vector(Pixel from, Pixel to);
  // A filled polygon of 3 to 10 vertices (others are ignored).
  void fill(const std::vector<Pixel>& vertices);
  // The file's bytes, with the end record.
  std::string finish();

 private:
  void word(int value);
  void byte(int value);
  std::string mBytes;
  int mColor = -1;
  bool mHaveLast = false;
  Pixel mLast;
};

}  // namespace kelhost::editor
