// TEXT: justifications and their points, style and height, the text itself.
#include <cmath>
#include <cstdlib>

#include "draw_fixture.h"
#include "editor/commands/text_justification.h"

namespace {

constexpr double kPi = 3.14159265358979323846;

struct TextSeen {
  AcGePoint3d position, alignment;
  int horz = 0, vert = 0;
  double height = 0, rotation = 0, widthFactor = 0;
  std::wstring text;
};

class TextCommandTest : public DrawCommandTest {
 protected:
  TextSeen LastText() {
    TextSeen s;
    Read<AcDbText>(Last(), [&](const AcDbText& t) {
      s.position = t.position();
      s.alignment = t.alignmentPoint();
      s.horz = t.horizontalMode();
      s.vert = t.verticalMode();
      s.height = t.height();
      s.rotation = t.rotation();
      s.widthFactor = t.widthFactor();
      s.text = t.textStringConst();
    });
    return s;
  }
  // Text 2 high, unrotated, at 10,10 with a justification.
  TextSeen Justified(const wchar_t* keyword) {
    EXPECT_EQ(Run({T(L"TEXT"), T(keyword), T(L"10,10"), T(L"2"), T(L"0"), T(L"abcd")}), RTNORM);
    return LastText();
  }
};

TEST_F(TextCommandTest, LeftTextWithHeightRotationAndSpaces) {
  ASSERT_EQ(Run({T(L"TEXT"), T(L"1,2"), T(L"3.5"), T(L"30"), T(L"two  words ")}), RTNORM);
  const TextSeen s = LastText();
  EXPECT_AT(s.position, 1, 2);
  EXPECT_EQ(s.horz, 0);
  EXPECT_EQ(s.vert, 0);
  EXPECT_EQ(s.height, 3.5);
  EXPECT_NEAR(s.rotation, kPi / 6, 1e-12);
  EXPECT_EQ(s.text, L"two  words ");
  EXPECT_EQ(RealVar(L"TEXTSIZE"), 3.5);  // the height answered is the next default
  EXPECT_NE(out.find(L"Current text style:  \"Standard\"  Text height:  2.5000  Annotative:  No  Justify:  Left"),
            std::wstring::npos);
  EXPECT_NE(out.find(L"Specify start point of text or [Justify/Style]: "), std::wstring::npos);
  EXPECT_NE(out.find(L"Specify height <2.5000>: "), std::wstring::npos);
  EXPECT_NE(out.find(L"Specify rotation angle of text <0>: "), std::wstring::npos);
  // The next text offers that rotation; an empty line draws nothing.
  out.clear();
  ASSERT_EQ(Run({T(L"TEXT"), T(L"0,0"), Enter(), Enter(), Enter()}), RTNORM);
  EXPECT_NE(out.find(L"Specify rotation angle of text <30>: "), std::wstring::npos);
  EXPECT_EQ(Entities().size(), 1u);
}

TEST_F(TextCommandTest, EveryJustificationKeepsItsPointAndPlacesTheBaseline) {
  // "abcd" 2 high is estimated 5.6 long; the bottom lies 2/3 below the baseline.
  const double w = kelhost::editor::TextLength(L"abcd", 2, 1);
  EXPECT_NEAR(w, 5.6, 1e-12);
  struct Case {
    const wchar_t* keyword;
    int horz, vert;
    double dx, dy;  // position - alignment point
  } cases[] = {
      {L"c", 1, 0, -w / 2, 0},   {L"r", 2, 0, -w, 0},       {L"m", 4, 0, -w / 2, -1},       {L"tl", 0, 3, 0, -2},
      {L"tc", 1, 3, -w / 2, -2}, {L"tr", 2, 3, -w, -2},     {L"ml", 0, 2, 0, -1},           {L"mc", 1, 2, -w / 2, -1},
      {L"mr", 2, 2, -w, -1},     {L"bl", 0, 1, 0, 2.0 / 3}, {L"bc", 1, 1, -w / 2, 2.0 / 3}, {L"br", 2, 1, -w, 2.0 / 3},
  };
  for (const Case& c : cases) {
    const TextSeen s = Justified(c.keyword);
    EXPECT_EQ(s.horz, c.horz) << c.keyword;
    EXPECT_EQ(s.vert, c.vert) << c.keyword;
    EXPECT_AT(s.alignment, 10, 10);
    EXPECT_NEAR(s.position.x, 10 + c.dx, 1e-9) << c.keyword;
    EXPECT_NEAR(s.position.y, 10 + c.dy, 1e-9) << c.keyword;
  }
  // The justification is remembered, and Justify asks for it by name.
  EXPECT_NE(out.find(L"Justify:  BC\nSpecify bottom-center point of text or [Justify/Style]: "), std::wstring::npos);
  ASSERT_EQ(Run({T(L"TEXT"), T(L"j"), T(L"l"), T(L"0,0"), T(L"2"), T(L"0"), T(L"x")}), RTNORM);
  EXPECT_NE(out.find(L"Enter an option [Left/Center/Right/Align/Middle/Fit/TL/TC/TR/ML/MC/MR/BL/BC/BR]: l"),
            std::wstring::npos);
  EXPECT_EQ(LastText().horz, 0);
}

TEST_F(TextCommandTest, RotatedMiddleTextTurnsItsOffset) {
  ASSERT_EQ(Run({T(L"TEXT"), T(L"m"), T(L"0,0"), T(L"2"), T(L"90"), T(L"abcd")}), RTNORM);
  const TextSeen s = LastText();
  EXPECT_NEAR(s.position.x, 1, 1e-9);  // the offset (-w/2, -h/2) turned a quarter
  EXPECT_NEAR(s.position.y, -2.8, 1e-9);
}

TEST_F(TextCommandTest, AlignAndFitTakeTheBaseline) {
  ASSERT_EQ(Run({T(L"TEXT"), T(L"a"), T(L"0,0"), T(L"0,14"), T(L"abcd")}), RTNORM);
  TextSeen s = LastText();
  EXPECT_EQ(s.horz, 3);
  EXPECT_NEAR(s.height, 5, 1e-12);  // 14 long for four characters of 0.7 of the height
  EXPECT_NEAR(s.rotation, kPi / 2, 1e-12);
  EXPECT_AT(s.position, 0, 0);
  EXPECT_AT(s.alignment, 0, 14);
  ASSERT_EQ(Run({T(L"TEXT"), T(L"f"), T(L"0,0"), T(L"11.2,0"), T(L"2"), T(L"abcd")}), RTNORM);
  s = LastText();
  EXPECT_EQ(s.horz, 5);
  EXPECT_EQ(s.height, 2.0);
  EXPECT_NEAR(s.widthFactor, 2, 1e-12);
}

TEST_F(TextCommandTest, StyleWithHeightSkipsTheHeightPromptAndUnknownStylesAreRefused) {
  AcDbTextStyleTable* table = nullptr;
  ASSERT_EQ(db->getTextStyleTable(table, AcDb::kForWrite), Acad::eOk);
  auto* style = new AcDbTextStyleTableRecord;
  style->setName(L"Tall");
  style->setTextSize(7);
  style->setXScale(0.8);
  ASSERT_EQ(table->add(style), Acad::eOk);
  style->close();
  table->close();
  ASSERT_EQ(Run({T(L"TEXT"), T(L"s"), T(L"nosuch"), T(L"tall"), T(L"0,0"), T(L"0"), T(L"x")}), RTNORM);
  EXPECT_NE(out.find(L"Cannot find text style \"nosuch\"."), std::wstring::npos);
  EXPECT_NE(out.find(L"Current text style:  \"Tall\"  Text height:  7.0000"), std::wstring::npos);
  EXPECT_EQ(out.find(L"Specify height"), std::wstring::npos);
  const TextSeen s = LastText();
  EXPECT_EQ(s.height, 7.0);
  EXPECT_EQ(s.widthFactor, 0.8);
  resbuf rb{};
  ASSERT_EQ(acedGetVar(L"TEXTSTYLE", &rb), RTNORM);
  EXPECT_STREQ(rb.resval.rstring, L"Tall");
  std::free(rb.resval.rstring);
}

TEST_F(TextCommandTest, EnterAtTheStartPutsTheNextLineBelow) {
  ASSERT_EQ(Run({T(L"TEXT"), T(L"c"), T(L"10,10"), T(L"3"), T(L"0"), T(L"one")}), RTNORM);
  ASSERT_EQ(Run({T(L"DTEXT"), Enter(), T(L"two")}), RTNORM);
  const TextSeen s = LastText();
  EXPECT_AT(s.alignment, 10, 5);  // 5/3 of the height lower
  EXPECT_EQ(s.height, 3.0);
  EXPECT_EQ(s.horz, 1);
  EXPECT_EQ(Run({T(L"-TEXT"), T(L"0,0"), Enter(), Enter()}), RTCAN);  // no text yet: cancelled
  EXPECT_EQ(Entities().size(), 2u);
}

}  // namespace
