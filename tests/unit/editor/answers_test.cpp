// Reading answers as prompts want them: keywords, typed points and
// numbers in the drawing's units, angles, and the initget conditions with
// the platform's messages.
#include "editor/answers.h"

#include <cmath>

#include "arx/acutads.h"
#include "tests/unit/editor/input_fixture.h"

namespace {

using kelhost::editor::Answer;
using kelhost::editor::Keywords;
using kelhost::editor::Request;
using kelhost::editor::Resolution;
using kelhost::editor::Token;
using kelhost::editor::Want;

constexpr double kPi = 3.14159265358979323846;

class AnswersTest : public InputTest {
 protected:
  // The answer to typed text, or "refused: <message>".
  Answer resolve(Want want, const std::wstring& typed, int flags = 0, const std::wstring& keywords = L"") {
    Request r;
    r.want = want;
    r.flags = flags;
    r.keywords = Keywords(keywords);
    Answer a;
    std::wstring message;
    refusal.clear();
    if (Resolve(r, Token::Text(typed), a, message) == Resolution::kRefused) refusal = message;
    return a;
  }
  std::wstring refusal;
};

TEST(KeywordsTest, AbbreviationsFullWordsAndGlobalNames) {
  const Keywords k(L"LType Color,C eXit line Two-pi");
  EXPECT_EQ(k.match(L"lt"), L"LType");
  EXPECT_EQ(k.match(L"LTY"), L"LType");
  EXPECT_EQ(k.match(L"ltype"), L"LType");
  EXPECT_EQ(k.match(L"l"), L"");        // shorter than the capitals
  EXPECT_EQ(k.match(L"ltypes"), L"");   // longer than the word
  EXPECT_EQ(k.match(L"c"), L"Color");   // the abbreviation after the comma
  EXPECT_EQ(k.match(L"COLO"), L"Color");
  EXPECT_EQ(k.match(L"x"), L"eXit");    // capitals need not lead
  EXPECT_EQ(k.match(L"exit"), L"eXit");
  EXPECT_EQ(k.match(L"ex"), L"");
  EXPECT_EQ(k.match(L"lin"), L"");      // no capitals: the whole word
  EXPECT_EQ(k.match(L"LINE"), L"line");
  EXPECT_EQ(k.match(L"t"), L"Two-pi");

  // Local names answer with the global ones; "_" reaches the global ones.
  const Keywords de(L"Ja Nein _ Yes No");
  EXPECT_EQ(de.match(L"j"), L"Yes");
  EXPECT_EQ(de.match(L"nein"), L"No");
  EXPECT_EQ(de.match(L"_Y"), L"Yes");
  EXPECT_EQ(de.match(L"_no"), L"No");
  EXPECT_EQ(de.match(L"_ja"), L"");
  EXPECT_EQ(de.match(L"yes"), L"");
  EXPECT_EQ(de.match(L"_"), L"");
}

TEST_F(AnswersTest, TypedPointsInEveryForm) {
  double p[3];
  ASSERT_TRUE(kelhost::editor::ParsePoint(L"1,2,3", p));
  EXPECT_DOUBLE_EQ(p[2], 3);
  setReal(L"ELEVATION", 7.5);
  ASSERT_TRUE(kelhost::editor::ParsePoint(L" -1.5,2 ", p));  // a 2D point lies at the elevation
  EXPECT_DOUBLE_EQ(p[0], -1.5);
  EXPECT_DOUBLE_EQ(p[2], 7.5);

  setPoint(L"LASTPOINT", 10, 20, 1);
  ASSERT_TRUE(kelhost::editor::ParsePoint(L"@3,4", p));  // a 2D offset keeps the z
  EXPECT_DOUBLE_EQ(p[0], 13);
  EXPECT_DOUBLE_EQ(p[1], 24);
  EXPECT_DOUBLE_EQ(p[2], 1);
  ASSERT_TRUE(kelhost::editor::ParsePoint(L"@", p));
  EXPECT_DOUBLE_EQ(p[1], 20);
  ASSERT_TRUE(kelhost::editor::ParsePoint(L"@5<90", p));
  EXPECT_NEAR(p[0], 10, 1e-12);
  EXPECT_NEAR(p[1], 25, 1e-12);
  ASSERT_TRUE(kelhost::editor::ParsePoint(L"2<180", p));  // polar from the origin
  EXPECT_NEAR(p[0], -2, 1e-12);
  EXPECT_NEAR(p[2], 7.5, 1e-12);
  ASSERT_TRUE(kelhost::editor::ParsePoint(L"2<0,5", p));  // cylindrical
  EXPECT_NEAR(p[0], 2, 1e-12);
  EXPECT_NEAR(p[2], 5, 1e-12);
  ASSERT_TRUE(kelhost::editor::ParsePoint(L"2<90<90", p));  // spherical: straight up
  EXPECT_NEAR(p[0], 0, 1e-12);
  EXPECT_NEAR(p[2], 2, 1e-12);

  // Polar angles follow ANGBASE and ANGDIR.
  setReal(L"ANGBASE", kPi / 2);
  setShort(L"ANGDIR", 1);
  ASSERT_TRUE(kelhost::editor::ParsePoint(L"1<90", p));  // 90 clockwise from north: east
  EXPECT_NEAR(p[0], 1, 1e-12);
  EXPECT_NEAR(p[1], 0, 1e-12);
  setReal(L"ANGBASE", 0);
  setShort(L"ANGDIR", 0);

  // Coordinates in the drawing's linear units.
  setShort(L"LUNITS", 4);
  ASSERT_TRUE(kelhost::editor::ParsePoint(L"1'6\",2", p));
  EXPECT_DOUBLE_EQ(p[0], 18);
  setShort(L"LUNITS", 2);

  // "*" gives world coordinates, which land in the UCS as they must.
  setPoint(L"UCSORG", 10, 0, 0);
  ASSERT_TRUE(kelhost::editor::ParsePoint(L"*1,2,0", p));
  EXPECT_NEAR(p[0], -9, 1e-12);
  ASSERT_TRUE(kelhost::editor::ParsePoint(L"1,2,0", p));
  EXPECT_NEAR(p[0], 1, 1e-12);

  for (const wchar_t* bad : {L"", L"1", L"1,2,3,4", L"a,b", L"@x", L"1<", L"<30", L"1,,2", L"*"})
    EXPECT_FALSE(kelhost::editor::ParsePoint(bad, p)) << bad;
}

TEST_F(AnswersTest, NumbersAndTheirConditions) {
  EXPECT_EQ(resolve(Want::kInt, L"42").integer, 42);
  EXPECT_EQ(resolve(Want::kInt, L"+7").integer, 7);
  resolve(Want::kInt, L"2.5");
  EXPECT_EQ(refusal, L"Requires an integer value.");
  resolve(Want::kInt, L"40000");
  EXPECT_EQ(refusal, L"Requires an integer between -32768 and 32767.");
  resolve(Want::kInt, L"0", kelhost::editor::kNoZero);
  EXPECT_EQ(refusal, L"Value must be nonzero.");
  resolve(Want::kReal, L"-1", kelhost::editor::kNoNegative);
  EXPECT_EQ(refusal, L"Value must be positive.");
  resolve(Want::kDist, L"0", kelhost::editor::kNoZero | kelhost::editor::kNoNegative);
  EXPECT_EQ(refusal, L"Value must be positive and nonzero.");
  EXPECT_DOUBLE_EQ(resolve(Want::kReal, L"1.5e2").real, 150);
  resolve(Want::kReal, L"x");
  EXPECT_EQ(refusal, L"Requires numeric value.");
  resolve(Want::kDist, L"x");
  EXPECT_EQ(refusal, L"Requires numeric distance or two points.");

  // Arbitrary input comes last: numbers are still checked, the rest is text.
  resolve(Want::kInt, L"-3", kelhost::editor::kArbitrary | kelhost::editor::kNoNegative);
  EXPECT_EQ(refusal, L"Value must be positive.");
  Answer a = resolve(Want::kInt, L"many", kelhost::editor::kArbitrary);
  EXPECT_EQ(a.status, RTKWORD);
  EXPECT_EQ(a.text, L"many");

  // Keywords are read before numbers.
  a = resolve(Want::kInt, L"2", 0, L"2 Last");
  EXPECT_EQ(a.status, RTKWORD);
  EXPECT_EQ(a.text, L"2");
}

TEST_F(AnswersTest, EnterFollowsNullAndArbitraryBits) {
  Request r;
  r.want = Want::kPoint;
  Answer a;
  std::wstring message;
  const Token enter = Token::Of(Token::kEnter);
  ASSERT_EQ(Resolve(r, enter, a, message), Resolution::kDone);
  EXPECT_EQ(a.status, RTNONE);
  r.flags = kelhost::editor::kArbitrary;  // arbitrary alone keeps Enter as Enter
  Resolve(r, enter, a, message);
  EXPECT_EQ(a.status, RTNONE);
  r.flags = kelhost::editor::kNoNull;
  EXPECT_EQ(Resolve(r, enter, a, message), Resolution::kRefused);
  EXPECT_EQ(message, L"Invalid point.");
  r.flags = kelhost::editor::kNoNull | kelhost::editor::kArbitrary;  // then Enter is the empty text
  Resolve(r, enter, a, message);
  EXPECT_EQ(a.status, RTKWORD);
  EXPECT_EQ(a.text, L"");
  r.want = Want::kString;
  r.flags = 0;
  Resolve(r, enter, a, message);
  EXPECT_EQ(a.status, RTNORM);
}

TEST_F(AnswersTest, AnglesFromBaseAndDirection) {
  // ANGBASE north, ANGDIR clockwise: the platform's own table.
  setReal(L"ANGBASE", kPi / 2);
  setShort(L"ANGDIR", 1);
  const struct {
    const wchar_t* typed;
    double angle, orient;
  } rows[] = {{L"0", 0.0, kPi / 2}, {L"-90", kPi / 2, kPi}, {L"180", kPi, 1.5 * kPi}, {L"90", 1.5 * kPi, 0.0}};
  for (const auto& row : rows) {
    EXPECT_NEAR(resolve(Want::kAngle, row.typed).real, row.angle, 1e-12) << row.typed;
    EXPECT_NEAR(resolve(Want::kOrient, row.typed).real, row.orient, 1e-12) << row.typed;
  }
  // Two points: the direction between them, measured the same way.
  Request r;
  r.want = Want::kAngle;
  Answer a;
  std::wstring message;
  const double from[3] = {0, 0, 0}, to[3] = {0, 5, 0};
  ASSERT_EQ(ResolveSecondPoint(r, from, to, a, message), Resolution::kDone);
  EXPECT_NEAR(a.real, 0.0, 1e-12);
  r.want = Want::kOrient;
  ResolveSecondPoint(r, from, to, a, message);
  EXPECT_NEAR(a.real, kPi / 2, 1e-12);
  resolve(Want::kAngle, L"0", kelhost::editor::kNoZero);
  EXPECT_EQ(refusal, L"Value must be nonzero.");
  resolve(Want::kAngle, L"east-ish");
  EXPECT_EQ(refusal, L"Requires valid numeric angle or second point.");
}

TEST_F(AnswersTest, DistancesInThePlaneWithTheIgnoreZBit) {
  Request r;
  r.want = Want::kDist;
  Answer a;
  std::wstring message;
  const double from[3] = {0, 0, 0}, to[3] = {3, 4, 12};
  ResolveSecondPoint(r, from, to, a, message);
  EXPECT_DOUBLE_EQ(a.real, 13);
  r.flags = kelhost::editor::kIgnoreZ;
  ResolveSecondPoint(r, from, to, a, message);
  EXPECT_DOUBLE_EQ(a.real, 5);
  // Without a base the first point asks for a second one.
  EXPECT_EQ(Resolve(r, Token::Text(L"1,1"), a, message), Resolution::kNeedsSecondPoint);
}

TEST_F(AnswersTest, LimitsAndDirectDistance) {
  setShort(L"LIMCHECK", 1);
  resolve(Want::kPoint, L"500,10");
  EXPECT_EQ(refusal, L"**Outside limits");
  EXPECT_EQ(resolve(Want::kPoint, L"500,10", kelhost::editor::kNoLimits).status, RTNORM);
  EXPECT_EQ(resolve(Want::kPoint, L"100,100").status, RTNORM);
  setShort(L"LIMCHECK", 0);
  EXPECT_EQ(resolve(Want::kPoint, L"500,10").status, RTNORM);

  // A number at a point prompt with a base is a distance from it, unless
  // arbitrary input takes it first.
  Request r;
  r.want = Want::kPoint;
  r.hasBase = true;
  r.base[0] = 1;
  r.base[1] = 2;
  Answer a;
  std::wstring message;
  Resolve(r, Token::Text(L"5"), a, message);
  EXPECT_EQ(a.status, RTNORM);
  EXPECT_DOUBLE_EQ(a.point[0], 6);
  EXPECT_DOUBLE_EQ(a.point[1], 2);
  r.flags = kelhost::editor::kArbitrary;
  Resolve(r, Token::Text(L"5"), a, message);
  EXPECT_EQ(a.status, RTKWORD);
  r.flags |= kelhost::editor::kDirectDistance;
  Resolve(r, Token::Text(L"5"), a, message);
  EXPECT_EQ(a.status, RTNORM);
  r.hasBase = false;
  r.flags = 0;
  EXPECT_EQ(Resolve(r, Token::Text(L"5"), a, message), Resolution::kRefused);
  EXPECT_EQ(message, L"Invalid point.");
}

TEST(AngleTextTest, EveryUnitReducedToOneTurn) {
  ads_real v = 0;
  auto angle = [&](const wchar_t* text, int unit) {
    v = -1;
    return acutAngToF(text, unit, &v) == RTNORM ? v : -1.0;
  };
  EXPECT_NEAR(angle(L"45", 0), kPi / 4, 1e-12);
  EXPECT_NEAR(angle(L"45.0000", 3), 45 - 14 * kPi, 1e-9);  // radians, reduced to one turn
  EXPECT_NEAR(angle(L"-90", 0), 1.5 * kPi, 1e-12);
  EXPECT_NEAR(angle(L"360", 0), 0.0, 1e-12);
  EXPECT_NEAR(angle(L"45d30'", 1), 45.5 * kPi / 180, 1e-12);
  EXPECT_NEAR(angle(L"30'", 0), 0.5 * kPi / 180, 1e-12);
  EXPECT_NEAR(angle(L"100", 2), kPi / 2, 1e-12);
  EXPECT_NEAR(angle(L"100g", 0), kPi / 2, 1e-12);  // a number may name its unit
  EXPECT_NEAR(angle(L"1.5r", 0), 1.5, 1e-12);
  EXPECT_NEAR(angle(L"N45d0'0\"E", 4), kPi / 4, 1e-12);
  EXPECT_NEAR(angle(L"S 45d E", 4), 1.75 * kPi, 1e-12);
  EXPECT_NEAR(angle(L"W", 4), kPi, 1e-12);
  for (const wchar_t* bad : {L"", L"abc", L"45x", L"30'45d", L"N100dE", L"1.2.3"})
    EXPECT_EQ(acutAngToF(bad, 0, &v), RTERROR) << bad;
  EXPECT_EQ(acutAngToF(L"45", 5, &v), RTERROR);
}

}  // namespace
