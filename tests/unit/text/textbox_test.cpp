// acedTextBox and AutoLISP's textbox: the groups a list gives or the style
// supplies, the generation flags and oblique angle, shape fonts from the
// support path, and the widths of the substituted and TrueType fonts
// checked against FreeType's own reading of those fonts.
#include <gtest/gtest.h>

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_TRUETYPE_TABLES_H

#include <cmath>
#include <cstdlib>

#include "../editor/editor_fixture.h"
#include "../platform/temp_dir.h"
#include "shape_file_builder.h"
#include "text/font_library.h"

namespace {

using shapetest::ShapeCode;

// A character as FreeType reads it from a font file, in text-height units.
struct Reference {
  double advance = 0, xMin = 0, xMax = 0;
};

class FreeTypeFont {
 public:
  // cap: the text height is the capitals' height (else the em square).
  FreeTypeFont(const std::string& path, bool cap) {
    FT_Init_FreeType(&mLibrary);
    if (FT_New_Face(mLibrary, path.c_str(), 0, &mFace) != 0) return;
    // The capitals' height: the OS/2 table's when it gives one, else how
    // high "H" reaches.
    const auto* os2 = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(mFace, FT_SFNT_OS2));
    mUnits = mFace->units_per_EM;
    if (cap && os2 && os2->version >= 2 && os2->sCapHeight > 0) mUnits = os2->sCapHeight;
    else if (cap && FT_Load_Char(mFace, 'H', FT_LOAD_NO_SCALE) == 0) mUnits = mFace->glyph->metrics.horiBearingY;
  }
  ~FreeTypeFont() {
    if (mFace) FT_Done_Face(mFace);
    FT_Done_FreeType(mLibrary);
  }
  Reference of(char32_t c) const {
    Reference r;
    if (!mFace || FT_Load_Char(mFace, c, FT_LOAD_NO_SCALE | FT_LOAD_NO_HINTING) != 0) return r;
    r.advance = mFace->glyph->metrics.horiAdvance / mUnits;
    r.xMin = mFace->glyph->metrics.horiBearingX / mUnits;
    r.xMax = (mFace->glyph->metrics.horiBearingX + mFace->glyph->metrics.width) / mUnits;
    return r;
  }

 private:
  FT_Library mLibrary = nullptr;
  FT_Face mFace = nullptr;
  double mUnits = 1;
};

// The ink width of a line whose characters all lay down ink.
double InkWidth(const std::vector<Reference>& chars, double height) {
  double pen = 0;
  for (size_t i = 0; i + 1 < chars.size(); ++i) pen += chars[i].advance;
  return (pen + chars.back().xMax - chars.front().xMin) * height;
}

class TextBoxTest : public EditorTest {
 protected:
  void SetUp() override {
    EditorTest::SetUp();
    const char* acad = std::getenv("ACAD");
    mOldAcad = acad ? acad : "";
    setenv("ACAD", fonts.path().c_str(), 1);
    TempDir::Write(fonts.file("kt_uni.shx"), shapetest::Unifont("KT", 10, 3, {
        {' ', ShapeCode({2, 0x60, 0})},                                   // 0.6 wide, no ink
        {'L', ShapeCode({2, 8, 0, 10, 1, 0xAC, 0x60, 2, 8, 2, 0, 0})},  // 0.8 wide, ink 0.6 by 1
        {'g', ShapeCode({2, 8, 0, -3, 1, 0x64, 2, 8, 4, -3, 0})},       // ink from -0.3 to 0.3
        {0xB0, ShapeCode({2, 8, 0, 8, 1, 0x22, 2, 8, 2, -10, 0})},      // a degree sign high up
    }));
    TempDir::Write(fonts.file("kt_big.shx"),
                   shapetest::Bigfont("KTBIG", 8, {{0xD6D0, ShapeCode({0x80, 0x84, 0x88, 0x8C, 2, 8, 10, 0, 0})}}));
    addStyle(L"KT", L"kt_uni", L"", 0.0);
    addStyle(L"KT5", L"kt_uni.shx", L"", 5.0);
    addStyle(L"KTBIG", L"kt_uni", L"kt_big.shx", 0.0);
    addStyle(L"HZ", L"gbenor.shx", L"gbcbig.shx", 0.0);
    addStyle(L"TT", L"DejaVuSans.ttf", L"", 0.0);
  }
  void TearDown() override {
    if (mOldAcad.empty()) unsetenv("ACAD");
    else setenv("ACAD", mOldAcad.c_str(), 1);
    EditorTest::TearDown();
  }
  void addStyle(const wchar_t* name, const wchar_t* font, const wchar_t* big, double height) {
    AcDbTextStyleTable* table = nullptr;
    ASSERT_EQ(db->getTextStyleTable(table, AcDb::kForWrite), Acad::eOk);
    auto* record = new AcDbTextStyleTableRecord;
    record->setName(name);
    record->setFileName(font);
    record->setBigFontFileName(big);
    record->setTextSize(height);
    AcDbObjectId id;
    if (table->add(id, record) == Acad::eOk) record->close();
    else delete record;
    table->close();
  }
  // acedTextBox of a list built by acutBuildList's arguments.
  template <typename... Groups>
  int box(ads_point ll, ads_point ur, Groups... groups) {
    resbuf* list = acutBuildList(groups..., 0);
    const int rc = acedTextBox(list, ll, ur);
    acutRelRb(list);
    return rc;
  }
  void expectBox(const ads_point ll, const ads_point ur, double x0, double y0, double x1, double y1) {
    EXPECT_NEAR(ll[0], x0, 1e-9);
    EXPECT_NEAR(ll[1], y0, 1e-9);
    EXPECT_NEAR(ur[0], x1, 1e-9);
    EXPECT_NEAR(ur[1], y1, 1e-9);
    EXPECT_EQ(ll[2], 0.0);
    EXPECT_EQ(ur[2], 0.0);
  }

  TempDir fonts;

 private:
  std::string mOldAcad;
};

TEST_F(TextBoxTest, ShapeFontBoxFollowsHeightWidthObliqueAndFlags) {
  ads_point ll, ur;
  // "LL": 0.8 + 0.6 wide, 1 high, times the height 2.
  ASSERT_EQ(box(ll, ur, 1, L"LL", 7, L"KT", 40, 2.0), RTNORM);
  expectBox(ll, ur, 0, 0, 2.8, 2.0);
  ASSERT_EQ(box(ll, ur, 1, L"LL", 7, L"KT", 40, 2.0, 41, 1.5), RTNORM);
  expectBox(ll, ur, 0, 0, 4.2, 2.0);
  // Leaning 45 degrees moves the top right by the height.
  ASSERT_EQ(box(ll, ur, 1, L"LL", 7, L"KT", 40, 2.0, 51, std::atan(1.0)), RTNORM);
  expectBox(ll, ur, 0, 0, 4.8, 2.0);
  // Backwards: to the left of the insertion point; upside down: below it.
  ASSERT_EQ(box(ll, ur, 1, L"LL", 7, L"KT", 40, 2.0, 71, 2), RTNORM);
  expectBox(ll, ur, -2.8, 0, 0, 2.0);
  ASSERT_EQ(box(ll, ur, 1, L"LL", 7, L"KT", 40, 2.0, 71, 6), RTNORM);
  expectBox(ll, ur, -2.8, -2.0, 0, 0);
  // A descender goes below the baseline; blanks lay no ink (the ones in
  // front move it along).
  ASSERT_EQ(box(ll, ur, 1, L"  Lg  ", 7, L"KT", 40, 1.0), RTNORM);
  expectBox(ll, ur, 1.2, -0.3, 2.0, 1.0);
}

TEST_F(TextBoxTest, LeftOutGroupsComeFromTheStyleAndTheDrawing) {
  ads_point ll, ur;
  // The style's fixed height.
  ASSERT_EQ(box(ll, ur, 1, L"L", 7, L"KT5"), RTNORM);
  expectBox(ll, ur, 0, 0, 3.0, 5.0);
  // The current style and TEXTSIZE.
  resbuf rb{};
  rb.restype = RTSTR;
  rb.resval.rstring = const_cast<wchar_t*>(L"KT");
  ASSERT_EQ(acedSetVar(L"TEXTSTYLE", &rb), RTNORM);
  rb.restype = RTREAL;
  rb.resval.rreal = 4.0;
  ASSERT_EQ(acedSetVar(L"TEXTSIZE", &rb), RTNORM);
  ASSERT_EQ(box(ll, ur, 1, L"L"), RTNORM);
  expectBox(ll, ur, 0, 0, 2.4, 4.0);
  // An attribute definition is measured by its tag.
  ASSERT_EQ(box(ll, ur, RTDXF0, L"ATTDEF", 1, L"LLLL", 2, L"L", 7, L"KT", 40, 1.0), RTNORM);
  expectBox(ll, ur, 0, 0, 0.6, 1.0);
  // %%d is the font's degree sign.
  ASSERT_EQ(box(ll, ur, 1, L"%%d", 7, L"KT", 40, 1.0), RTNORM);
  expectBox(ll, ur, 0, 0.8, 0.2, 1.0);
  // Nothing to show: two zero points.
  ASSERT_EQ(box(ll, ur, 1, L"", 7, L"KT"), RTNORM);
  expectBox(ll, ur, 0, 0, 0, 0);
}

TEST_F(TextBoxTest, BadListsAreRefused) {
  ads_point ll, ur;
  EXPECT_EQ(acedTextBox(nullptr, ll, ur), RTERROR);
  EXPECT_EQ(box(ll, ur, 7, L"KT", 40, 1.0), RTERROR);              // no string
  EXPECT_EQ(box(ll, ur, RTDXF0, L"ATTDEF", 1, L"x", 7, L"KT"), RTERROR);  // an attdef without its tag
  EXPECT_EQ(box(ll, ur, 1, L"x", 7, L"NOSUCH"), RTERROR);          // no such style
  EXPECT_EQ(eval(L"(textbox '((1 . \"L\") (7 . \"NOSUCH\")))"), L"nil");
  EXPECT_EQ(eval(L"(textbox '((1 . \"LL\") (7 . \"KT\") (40 . 2.0)))"), L"((0.0 0.0 0.0) (2.8 2.0 0.0))");
  EXPECT_EQ(eval(L"(textbox 5)"), L"error: bad argument type: listp 5");
}

TEST_F(TextBoxTest, BigFontDrawsTheDoubleByteCharacters) {
  ads_point ll, ur;
  // L (0.8) then 中 from the big font: a square of the text height.
  ASSERT_EQ(box(ll, ur, 1, L"L\u4E2D", 7, L"KTBIG", 40, 2.0), RTNORM);
  expectBox(ll, ur, 0, 0, 3.6, 2.0);
}

TEST_F(TextBoxTest, WidthsAgreeWithTheFontsFreeTypeReads) {
  using kelhost::text::CjkSubstitute;
  using kelhost::text::LatinSubstitute;
  ASSERT_NE(LatinSubstitute(), nullptr);
  ASSERT_NE(CjkSubstitute(), nullptr);
  const FreeTypeFont latin(LatinSubstitute()->path(), true), cjk(CjkSubstitute()->path(), false);
  ads_point ll, ur;

  // Standard's txt.shx is not on this machine: the Latin substitute.
  ASSERT_EQ(box(ll, ur, 1, L"Width 42", 40, 2.5), RTNORM);
  std::vector<Reference> chars;
  for (char32_t c : std::u32string(U"Width 42")) chars.push_back(latin.of(c));
  EXPECT_NEAR(ur[0] - ll[0], InkWidth(chars, 2.5), 1e-9);
  ads_point capsLow, capsHigh;
  ASSERT_EQ(box(capsLow, capsHigh, 1, L"HI", 40, 2.5), RTNORM);
  EXPECT_NEAR(capsHigh[1], 2.5, 1e-9);  // capitals fill the height
  ads_point again1, again2;
  ASSERT_EQ(box(again1, again2, 1, L"Width 42", 40, 2.5), RTNORM);
  EXPECT_EQ(again2[0], ur[0]);

  // A TrueType style: its own font.
  const FreeTypeFont dejavu("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf", true);
  ASSERT_EQ(box(ll, ur, 1, L"Width 42", 7, L"TT", 40, 2.5), RTNORM);
  chars.clear();
  for (char32_t c : std::u32string(U"Width 42")) chars.push_back(dejavu.of(c));
  EXPECT_NEAR(ur[0] - ll[0], InkWidth(chars, 2.5), 1e-9);

  // A Chinese big-font style whose fonts are missing: Latin letters from
  // the Latin substitute, Chinese characters from the CJK one, a full
  // text height wide.
  ASSERT_EQ(box(ll, ur, 1, L"AB\u4E2D\u6587", 7, L"HZ", 40, 3.0), RTNORM);
  chars = {latin.of(U'A'), latin.of(U'B'), cjk.of(U'\u4E2D'), cjk.of(U'\u6587')};
  EXPECT_NEAR(ur[0] - ll[0], InkWidth(chars, 3.0), 1e-9);
  EXPECT_NEAR(cjk.of(U'\u4E2D').advance, 1.0, 0.01);
}

TEST_F(TextBoxTest, AMissingFontIsReplacedAndSaidOnce) {
  addStyle(L"GONE", L"kt_gone_font", L"", 0.0);
  ads_point ll, ur;
  testing::internal::CaptureStderr();
  ASSERT_EQ(box(ll, ur, 1, L"x", 7, L"GONE"), RTNORM);
  ASSERT_EQ(box(ll, ur, 1, L"y", 7, L"GONE"), RTNORM);
  const std::string said = testing::internal::GetCapturedStderr();
  EXPECT_EQ(said, "Substituting [" + kelhost::text::LatinSubstitute()->fileName() + "] for [kt_gone_font.shx].\n");

  // FONTALT names the stand-in for a missing shape font when it is found.
  addStyle(L"GONE2", L"kt_gone_too", L"", 0.0);
  resbuf rb{};
  rb.restype = RTSTR;
  rb.resval.rstring = const_cast<wchar_t*>(L"kt_uni");
  ASSERT_EQ(acedSetVar(L"FONTALT", &rb), RTNORM);
  testing::internal::CaptureStderr();
  ASSERT_EQ(box(ll, ur, 1, L"L", 7, L"GONE2", 40, 1.0), RTNORM);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "Substituting [kt_uni.shx] for [kt_gone_too.shx].\n");
  expectBox(ll, ur, 0, 0, 0.6, 1.0);
}

}  // namespace

// A TEXT entity's extents come from the same fonts as textbox's box, so
// what a program measures and what ZOOM Extents or a bound sees agree.
TEST_F(TextBoxTest, TextExtentsUseTheStyleFonts) {
  auto* text = new AcDbText(AcGePoint3d(10, 5, 0), L"LL", AcDbObjectId::kNull, 2.0, 0.0);
  AcDbTextStyleTable* table = nullptr;
  ASSERT_EQ(db->getTextStyleTable(table, AcDb::kForRead), Acad::eOk);
  AcDbObjectId kt;
  ASSERT_EQ(table->getAt(L"KT", kt), Acad::eOk);
  table->close();
  text->setDatabaseDefaults(db.get());
  text->setTextStyle(kt);
  AcDbBlockTable* blocks = nullptr;
  ASSERT_EQ(db->getBlockTable(blocks, AcDb::kForRead), Acad::eOk);
  AcDbBlockTableRecord* model = nullptr;
  ASSERT_EQ(blocks->getAt(ACDB_MODEL_SPACE, model, AcDb::kForWrite), Acad::eOk);
  blocks->close();
  ASSERT_EQ(model->appendAcDbEntity(text), Acad::eOk);
  model->close();
  AcDbExtents extents;
  ASSERT_EQ(text->getGeomExtents(extents), Acad::eOk);
  EXPECT_NEAR(extents.minPoint().x, 10.0, 1e-9);
  EXPECT_NEAR(extents.maxPoint().x, 12.8, 1e-9);  // "LL" in KT: 2.8 wide at height 2
  EXPECT_NEAR(extents.maxPoint().y, 7.0, 1e-9);
  text->close();
}
