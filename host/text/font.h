// A font the host measures and draws text with: a TrueType (or OpenType)
// font read through FreeType, or a compiled shape font (.shx). Glyph
// metrics are cached per character on first use: measuring a line is then
// a table lookup per character.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "text/glyph.h"

namespace kelhost::text {

class Font {
 public:
  enum class Kind { kTrueType, kShape, kBigShape };

  Font(std::string path, Kind kind) : mPath(std::move(path)), mKind(kind) {}
  virtual ~Font() = default;
  Font(const Font&) = delete;
  Font& operator=(const Font&) = delete;

  const std::string& path() const { return mPath; }
  // The file's name without its directory, as messages show it.
  std::string fileName() const;
  Kind kind() const { return mKind; }
  bool isShapeFont() const { return mKind != Kind::kTrueType; }

  // The metrics of a character, or null when the font has no glyph for it.
  // The pointer stays valid as long as the font.
  const GlyphMetrics* glyph(char32_t c);
  // The outline of a character in text-height units, pen at the origin.
  // False when the font has no glyph for it.
  virtual bool outline(char32_t c, GlyphPath& path) = 0;

 protected:
  // Reads a character's metrics from the font; false when it has none.
  virtual bool loadMetrics(char32_t c, GlyphMetrics& metrics) = 0;

 private:
  struct Entry {
    GlyphMetrics metrics;
    enum : std::uint8_t { kUnknown, kMissing, kPresent } state = kUnknown;
  };
  using Page = std::array<Entry, 256>;
  static constexpr char32_t kLastCode = 0x10FFFF;

  std::string mPath;
  Kind mKind;
  std::vector<std::unique_ptr<Page>> mPages;  // by code >> 8, made on demand
};

}  // namespace kelhost::text
