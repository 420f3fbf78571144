// Colours: AcCmEntityColor's colour index table (the 256 RGB values the
// platform publishes for its colour indices) and AcCmColor, a colour by
// index or by layer / by block as entities and layers carry it.
#pragma once

#include "acadstrc.h"
#include "adsdef.h"

class AcCmEntityColor {
 public:
  enum ColorMethod { kByLayer = 0xC0, kByBlock = 0xC1, kByColor = 0xC2, kByACI = 0xC3 };

  AcCmEntityColor() = default;  // by layer
  ColorMethod colorMethod() const { return mMethod; }
  // A true colour (kByColor).
  Acad::ErrorStatus setRGB(Adesk::UInt8 red, Adesk::UInt8 green, Adesk::UInt8 blue);
  // 0 by block, 256 by layer, 1-255 an index colour; eOutOfRange otherwise.
  Acad::ErrorStatus setColorIndex(Adesk::Int16 colorIndex);
  // The index of an index colour (0 by block, 256 by layer; 7 for a true colour).
  Adesk::Int16 colorIndex() const;
  // The components a true or index colour shows (0 for by layer and by block).
  Adesk::UInt8 red() const { return static_cast<Adesk::UInt8>(rgb() >> 16); }
  Adesk::UInt8 green() const { return static_cast<Adesk::UInt8>(rgb() >> 8); }
  Adesk::UInt8 blue() const { return static_cast<Adesk::UInt8>(rgb()); }
  bool isByColor() const { return mMethod == kByColor; }
  // The RGB value of a colour index as 0x00RRGGBB (red in bits 16-23,
  // green 8-15, blue 0-7). Index 0 (by block) gives black; 7 and 255 are
  // white. Indices 1-9 are the standard colours, 10-249 the 24 hues in
  // five shades each, every shade also in a paler form, and 250-255 greys.
  static Adesk::UInt32 lookUpRGB(Adesk::UInt8 colorIndex);

 private:
  Adesk::UInt32 rgb() const;
  ColorMethod mMethod = kByLayer;
  Adesk::UInt32 mValue = 256;  // the index, or 0x00RRGGBB for a true colour
};

class AcCmColor {
 public:
  enum ColorMethod { kByLayer = 0xC0, kByBlock = 0xC1, kByACI = 0xC3 };

  AcCmColor() = default;  // by layer

  ColorMethod colorMethod() const;
  // 0 is by block, 256 by layer, 1-255 a colour of the index table.
  Adesk::UInt16 colorIndex() const { return mIndex; }
  // eOutOfRange above 256; the colour is then unchanged.
  Acad::ErrorStatus setColorIndex(Adesk::UInt16 colorIndex);
  bool isByLayer() const { return mIndex == 256; }
  bool isByBlock() const { return mIndex == 0; }
  bool isByACI() const { return mIndex >= 1 && mIndex <= 255; }
  // The RGB components of an index colour (0 for by layer and by block).
  Adesk::UInt8 red() const;
  Adesk::UInt8 green() const;
  Adesk::UInt8 blue() const;

  bool operator==(const AcCmColor& other) const { return mIndex == other.mIndex; }
  bool operator!=(const AcCmColor& other) const { return mIndex != other.mIndex; }

 private:
  Adesk::UInt32 rgb() const;
  Adesk::UInt16 mIndex = 256;
};
