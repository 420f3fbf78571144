// The colour index table and AcCmColor.
#include <array>

#include "arx/dbcolor.h"

namespace {

using Rgb = Adesk::UInt32;

constexpr Rgb Pack(int r, int g, int b) {
  return (static_cast<Rgb>(r) << 16) | (static_cast<Rgb>(g) << 8) | static_cast<Rgb>(b);
}

// Indices 10-249: 24 hues (10, 20, ... 240) of five shades each (full
// brightness, then 165, 127, 76 and 38 of 255), each shade followed by its
// paler form (halfway to the shade's grey of the same brightness). A hue
// is given as the step of each of red, green and blue on its shade's ramp
// (0 nothing of it, 4 all of it).
constexpr int kHueSteps[24][3] = {
    {4, 0, 0}, {4, 1, 0}, {4, 2, 0}, {4, 3, 0}, {4, 4, 0}, {3, 4, 0}, {2, 4, 0}, {1, 4, 0},
    {0, 4, 0}, {0, 4, 1}, {0, 4, 2}, {0, 4, 3}, {0, 4, 4}, {0, 3, 4}, {0, 2, 4}, {0, 1, 4},
    {0, 0, 4}, {1, 0, 4}, {2, 0, 4}, {3, 0, 4}, {4, 0, 4}, {4, 0, 3}, {4, 0, 2}, {4, 0, 1},
};
// The ramps of the five shades: the channel's value at each step, for the
// full colour and for its paler form.
constexpr int kFullRamp[5][5] = {
    {0, 63, 127, 191, 255}, {0, 41, 82, 124, 165}, {0, 31, 63, 95, 127}, {0, 19, 38, 57, 76}, {0, 9, 19, 28, 38},
};
constexpr int kPaleRamp[5][5] = {
    {127, 159, 191, 223, 255}, {82, 103, 124, 145, 165}, {63, 79, 95, 111, 127},
    {38, 47, 57, 66, 76},      {19, 23, 28, 33, 38},
};

std::array<Rgb, 256> BuildTable() {
  std::array<Rgb, 256> t{};
  const Rgb head[10] = {Pack(0, 0, 0),       Pack(255, 0, 0),     Pack(255, 255, 0),   Pack(0, 255, 0),
                        Pack(0, 255, 255),   Pack(0, 0, 255),     Pack(255, 0, 255),   Pack(255, 255, 255),
                        Pack(128, 128, 128), Pack(192, 192, 192)};
  for (int i = 0; i < 10; ++i) t[i] = head[i];
  for (int hue = 0; hue < 24; ++hue) {
    const int* step = kHueSteps[hue];
    for (int shade = 0; shade < 5; ++shade) {
      const int index = 10 + hue * 10 + shade * 2;
      const int* full = kFullRamp[shade];
      const int* pale = kPaleRamp[shade];
      t[index] = Pack(full[step[0]], full[step[1]], full[step[2]]);
      t[index + 1] = Pack(pale[step[0]], pale[step[1]], pale[step[2]]);
    }
  }
  const int greys[6] = {51, 91, 132, 173, 214, 255};
  for (int i = 0; i < 6; ++i) t[250 + i] = Pack(greys[i], greys[i], greys[i]);
  return t;
}

}  // namespace

Adesk::UInt32 AcCmEntityColor::lookUpRGB(Adesk::UInt8 colorIndex) {
  static const std::array<Rgb, 256> table = BuildTable();
  return table[colorIndex];
}

Acad::ErrorStatus AcCmEntityColor::setRGB(Adesk::UInt8 red, Adesk::UInt8 green, Adesk::UInt8 blue) {
  mMethod = kByColor;
  mValue = Pack(red, green, blue);
  return Acad::eOk;
}

Acad::ErrorStatus AcCmEntityColor::setColorIndex(Adesk::Int16 colorIndex) {
  if (colorIndex < 0 || colorIndex > 256) return Acad::eOutOfRange;
  mMethod = colorIndex == 0 ? kByBlock : colorIndex == 256 ? kByLayer : kByACI;
  mValue = static_cast<Adesk::UInt32>(colorIndex);
  return Acad::eOk;
}

Adesk::Int16 AcCmEntityColor::colorIndex() const {
  return mMethod == kByColor ? 7 : static_cast<Adesk::Int16>(mValue);
}

Adesk::UInt32 AcCmEntityColor::rgb() const {
  if (mMethod == kByColor) return mValue;
  return mMethod == kByACI ? lookUpRGB(static_cast<Adesk::UInt8>(mValue)) : 0;
}

AcCmColor::ColorMethod AcCmColor::colorMethod() const {
  if (isByLayer()) return kByLayer;
  if (isByBlock()) return kByBlock;
  return kByACI;
}

Acad::ErrorStatus AcCmColor::setColorIndex(Adesk::UInt16 colorIndex) {
  if (colorIndex > 256) return Acad::eOutOfRange;
  mIndex = colorIndex;
  return Acad::eOk;
}

Adesk::UInt32 AcCmColor::rgb() const {
  return isByACI() ? AcCmEntityColor::lookUpRGB(static_cast<Adesk::UInt8>(mIndex)) : 0;
}
Adesk::UInt8 AcCmColor::red() const { return static_cast<Adesk::UInt8>(rgb() >> 16); }
Adesk::UInt8 AcCmColor::green() const { return static_cast<Adesk::UInt8>(rgb() >> 8); }
Adesk::UInt8 AcCmColor::blue() const { return static_cast<Adesk::UInt8>(rgb()); }
