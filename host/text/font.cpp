#include "text/font.h"

namespace kelhost::text {

void GlyphPath::transform(double sx, double sy, double dx, double dy) {
  for (size_t i = 0; i + 1 < coords.size(); i += 2) {
    coords[i] = coords[i] * sx + dx;
    coords[i + 1] = coords[i + 1] * sy + dy;
  }
}

std::string Font::fileName() const {
  const size_t slash = mPath.find_last_of('/');
  return slash == std::string::npos ? mPath : mPath.substr(slash + 1);
}

const GlyphMetrics* Font::glyph(char32_t c) {
  if (c > kLastCode) return nullptr;
  const size_t page = c >> 8;
  if (mPages.empty()) mPages.resize((kLastCode >> 8) + 1);
  if (!mPages[page]) mPages[page] = std::make_unique<Page>();
  Entry& e = (*mPages[page])[c & 0xFF];
  if (e.state == Entry::kUnknown) e.state = loadMetrics(c, e.metrics) ? Entry::kPresent : Entry::kMissing;
  return e.state == Entry::kPresent ? &e.metrics : nullptr;
}

}  // namespace kelhost::text
