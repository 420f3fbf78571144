#include "plot/entity_colour.h"

#include "arx/dbcolor.h"

namespace kelhost::plot {

std::uint32_t PlottedRgb(int colorIndex) {
  if (colorIndex < 1 || colorIndex > 255 || colorIndex == 7) return 0;
  return AcCmEntityColor::lookUpRGB(static_cast<Adesk::UInt8>(colorIndex));
}

}  // namespace kelhost::plot
