// Colours by RGB against the platform's colour index table.
#include "kelbase/colors.h"

namespace KEL {
namespace {

// Squared distance between a COLORREF and a table colour (0x00RRGGBB).
long DistanceSquared(COLORREF rgb, Adesk::UInt32 table) {
  const long dr = static_cast<long>(GetRValue(rgb)) - static_cast<long>((table >> 16) & 0xFF);
  const long dg = static_cast<long>(GetGValue(rgb)) - static_cast<long>((table >> 8) & 0xFF);
  const long db = static_cast<long>(GetBValue(rgb)) - static_cast<long>(table & 0xFF);
  return dr * dr + dg * dg + db * db;
}

}  // namespace

int IsStandardCADColor(COLORREF rgb) {
  for (int index = 1; index <= 255; ++index)
    if (DistanceSquared(rgb, AcCmEntityColor::lookUpRGB(static_cast<Adesk::UInt8>(index))) == 0) return index;
  return -1;
}

int GetCADColorIndexNearest(COLORREF rgb) {
  int nearest = 1;
  long best = -1;
  for (int index = 1; index <= 255; ++index) {
    const long d = DistanceSquared(rgb, AcCmEntityColor::lookUpRGB(static_cast<Adesk::UInt8>(index)));
    if (best < 0 || d < best) {
      best = d;
      nearest = index;
    }
  }
  return nearest;
}

}  // namespace KEL
