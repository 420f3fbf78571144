// Compiled shape fonts (.shx): the platform's own stroke fonts. Three
// layouts share one shape language: "shapes 1.0/1.1" (characters numbered
// by their code in the drawing's code page, degree, plus-minus and
// diameter signs as shapes 256-258), "unifont 1.0" (numbered by Unicode)
// and "bigfont 1.0" (the double-byte codes of an East Asian code page).
// Shape 0 names the font and gives the height of its capitals ("above")
// in vector units: that height becomes the text height.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>

#include "text/font.h"

namespace kelhost::text {

class ShapeFont : public Font {
 public:
  enum class Layout { kShapes, kUnifont, kBigfont };

  // Reads a compiled shape file held in bytes (path only names it). Null,
  // with the reason in *error, for anything that is not one.
  static std::unique_ptr<ShapeFont> Parse(const std::string& path, const std::string& bytes, std::string* error);
  static std::unique_ptr<ShapeFont> Open(const std::string& path, std::string* error);

  Layout layout() const { return mLayout; }
  const std::string& fontName() const { return mName; }
  int above() const { return mAbove; }
  int below() const { return mBelow; }
  size_t shapeCount() const { return mShapes.size(); }
  // The code page a big font's numbers come from (an iconv name); it
  // follows the font's name: "chineset" Big5, Japanese fonts Shift-JIS,
  // Korean ones CP949, every other GBK (the simplified Chinese fonts
  // such as gbcbig.shx).
  const std::string& codePage() const { return mCodePage; }

  bool outline(char32_t c, GlyphPath& path) override;
  // The shape a character is drawn with; 0 when the font has none.
  unsigned shapeNumberOf(char32_t c) const;

 protected:
  bool loadMetrics(char32_t c, GlyphMetrics& metrics) override;

 private:
  ShapeFont(const std::string& path, Layout layout);
  struct Pen;
  bool draw(unsigned number, Pen& pen, int depth) const;

  Layout mLayout;
  std::string mName;
  int mAbove = 0, mBelow = 0;
  std::string mCodePage;
  std::unordered_map<unsigned, std::string> mShapes;  // number -> drawing bytes
};

}  // namespace kelhost::text
