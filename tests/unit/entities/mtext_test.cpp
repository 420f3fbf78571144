// Multiline text: the plain text behind the formatting codes, long contents
// in 250-character chunks, the direction given as 11 or 50, the estimated
// size and box, transformations (a mirrored text stays readable) and
// explosion into single-line texts.
#include <cmath>
#include <cstdlib>
#include <memory>

#include "../database/database_fixture.h"
#include "entity_test_helpers.h"
#include "db/mtext_codes.h"

namespace {
using entity_tests::kPi;
using entity_tests::Owned;
using entity_tests::LastId;
using entity_tests::AddToModelSpace;
}  // namespace

TEST(MTextCodes, PlainTextDropsFormattingAndReadsSymbols) {
  using kelhost::db::MTextPlainText;
  EXPECT_EQ(MTextPlainText(L"{\\fArial|b1|i0;Hello}\\Pworld"), L"Hello\nworld");
  EXPECT_EQ(MTextPlainText(L"%%c20 %%D %%p0.1 100%%%"), L"\u220520 \u00B0 \u00B10.1 100%");
  EXPECT_EQ(MTextPlainText(L"1\\S1^2; 3\\S3/4; \\S+0.1#-0.2;"), L"11/2 33/4 +0.1/-0.2");
  EXPECT_EQ(MTextPlainText(L"\\H2.5x;Big\\~\\C1;red \\Lunder\\l\\A1;\\T1.1;\\Q10;\\W0.8; x"), L"Big red under x");
  EXPECT_EQ(MTextPlainText(L"a\\\\b \\{not a group\\}"), L"a\\b {not a group}");
  EXPECT_EQ(MTextPlainText(L"\\U+4E2D\\U+6587 %%065"), L"中文 A");
  EXPECT_EQ(MTextPlainText(L"line\\Ncolumn\\Xbelow"), L"line\ncolumn\nbelow");
  // Unknown codes stay as written; a code without its ';' takes the rest.
  EXPECT_EQ(MTextPlainText(L"C:\\temp %%z"), L"C:\\temp %%z");
  EXPECT_EQ(MTextPlainText(L"x\\fArial"), L"x");
  EXPECT_EQ(MTextPlainText(L"\\"), L"\\");
}

class MText : public DrawingTest {};

TEST_F(MText, LongContentsTravelIn250CharacterChunks) {
  // 250 characters fit group 1; one more starts a group 3.
  std::wstring exact(250, L'x'), longer = std::wstring(250, L'甲') + std::wstring(250, L'乙') + L"尾";
  for (const std::wstring* contents : {&exact, &longer}) {
    auto* m = new AcDbMText;
    m->setContents(contents->c_str());
    const AcDbObjectId id = AddToModelSpace(db.get(), m);
    ads_name name;
    acdbGetAdsName(name, id);
    resbuf* list = acdbEntGet(name);
    std::vector<std::wstring> threes, ones;
    for (const resbuf* rb = list; rb; rb = rb->rbnext) {
      if (rb->restype == 3) threes.push_back(rb->resval.rstring);
      if (rb->restype == 1) ones.push_back(rb->resval.rstring);
    }
    ASSERT_EQ(ones.size(), 1u);
    if (contents == &exact) {
      EXPECT_TRUE(threes.empty());
      EXPECT_EQ(ones[0], exact);
    } else {
      ASSERT_EQ(threes.size(), 2u);
      EXPECT_EQ(threes[0], std::wstring(250, L'甲'));
      EXPECT_EQ(threes[1], std::wstring(250, L'乙'));
      EXPECT_EQ(ones[0], L"尾");
    }
    // The list makes the same text again.
    ASSERT_EQ(acdbEntMake(list), RTNORM);
    acutRelRb(list);
    AcDbMText* again = nullptr;
    ASSERT_EQ(acdbOpenObject(again, LastId(), AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(Owned(again->contents()), *contents);
    again->close();
  }
}

TEST_F(MText, DirectionComesAsVectorOrAngleAndKeepsItsForm) {
  // 50 alone: the angle (radians in a list), given back as 50.
  eval(L"(entmake '((0 . \"MTEXT\") (10 1.0 1.0 0.0) (1 . \"a\") (50 . 0.5235987755982988)))");
  EXPECT_EQ(eval(L"(assoc 11 (entget (entlast)))"), L"nil");
  EXPECT_EQ(eval(L"(rtos (cdr (assoc 50 (entget (entlast)))) 2 6)"), L"\"0.523599\"");
  AcDbMText* m = nullptr;
  ASSERT_EQ(acdbOpenObject(m, LastId(), AcDb::kForRead), Acad::eOk);
  EXPECT_NEAR(m->direction().x, std::sqrt(3.0) / 2, 1e-12);
  EXPECT_NEAR(m->direction().y, 0.5, 1e-12);
  m->close();
  // 11 wins over 50; it is projected into the text's plane.
  eval(L"(entmake '((0 . \"MTEXT\") (10 1.0 1.0 0.0) (1 . \"a\") (11 0.0 2.0 5.0) (50 . 1.0)))");
  EXPECT_EQ(eval(L"(cdr (assoc 11 (entget (entlast))))"), L"(0.0 1.0 0.0)");
  EXPECT_EQ(eval(L"(assoc 50 (entget (entlast)))"), L"nil");
  // A direction along the normal is refused, as is a bad attachment.
  EXPECT_EQ(eval(L"(entmake '((0 . \"MTEXT\") (10 0.0 0.0 0.0) (1 . \"a\") (11 0.0 0.0 1.0)))"), L"nil");
  EXPECT_EQ(eval(L"(entmake '((0 . \"MTEXT\") (10 0.0 0.0 0.0) (1 . \"a\") (71 . 10)))"), L"nil");
  EXPECT_EQ(eval(L"(entmake '((0 . \"MTEXT\") (10 0.0 0.0 0.0) (1 . \"a\") (44 . 9.0)))"), L"nil");
  EXPECT_EQ(eval(L"(entmake '((0 . \"MTEXT\") (1 . \"no location\")))"), L"nil");

  // A new normal keeps the angle in the new plane.
  AcDbMText text;
  EXPECT_EQ(text.setRotation(kPi / 2), Acad::eOk);
  EXPECT_NEAR(text.direction().y, 1.0, 1e-12);
  EXPECT_EQ(text.setNormal(AcGeVector3d(0, 0, -1)), Acad::eOk);
  EXPECT_NEAR(text.rotation(), kPi / 2, 1e-12);
  EXPECT_NEAR(text.direction().dotProduct(AcGeVector3d(0, 0, -1)), 0.0, 1e-12);
  EXPECT_EQ(text.setDirection(AcGeVector3d(0, 0, 3)), Acad::eInvalidInput);
}

TEST_F(MText, EntmodKeepsUnmodelledGroupsAndChangesWhatItGives) {
  eval(L"(entmake '((0 . \"MTEXT\") (100 . \"AcDbEntity\") (100 . \"AcDbMText\") (10 0.0 0.0 0.0) (40 . 2.0)"
       L" (1 . \"before\") (90 . 1) (63 . 3) (45 . 1.5) (42 . 7.0)))");
  EXPECT_EQ(eval(L"(cdr (assoc 63 (entget (entlast))))"), L"3");
  EXPECT_EQ(eval(L"(cdr (assoc 42 (entget (entlast))))"), L"7.0");
  eval(L"(setq e (entget (entlast)) e (subst '(1 . \"after\") (assoc 1 e) e))");
  EXPECT_NE(eval(L"(entmod e)"), L"nil");
  EXPECT_EQ(eval(L"(cdr (assoc 1 (entget (entlast))))"), L"\"after\"");
  EXPECT_EQ(eval(L"(cdr (assoc 90 (entget (entlast))))"), L"1") << "background fill kept";
  EXPECT_EQ(eval(L"(cdr (assoc 40 (entget (entlast))))"), L"2.0");
  AcDbMText* m = nullptr;
  ASSERT_EQ(acdbOpenObject(m, LastId(), AcDb::kForWrite), Acad::eOk);
  m->setContents(L"changed");
  m->close();
  EXPECT_EQ(eval(L"(assoc 42 (entget (entlast)))"), L"nil") << "a measured size no longer holds";
  EXPECT_EQ(eval(L"(cdr (assoc 45 (entget (entlast))))"), L"1.5");
}

TEST_F(MText, SizeAndBoxFollowLinesHeightAndAttachment) {
  AcDbMText m;
  m.setTextHeight(2.0);
  m.setContents(L"AB\\P{\\H3;中文}");
  // Narrow characters 0.7 of the height, wide ones the height; lines 5/3
  // of the height apart.
  EXPECT_NEAR(m.actualWidth(), 4.0, 1e-12);
  EXPECT_NEAR(m.actualHeight(), 2.0 + 2.0 * 5 / 3, 1e-12);
  m.setLineSpacingFactor(2.0);
  EXPECT_NEAR(m.actualHeight(), 2.0 + 2.0 * 10 / 3, 1e-12);
  m.setLineSpacingFactor(1.0);

  m.setLocation(AcGePoint3d(10, 20, 0));
  AcDbExtents ext;
  ASSERT_EQ(m.getGeomExtents(ext), Acad::eOk);  // top left: the box hangs right and down
  EXPECT_NEAR(ext.minPoint().x, 10, 1e-12);
  EXPECT_NEAR(ext.maxPoint().x, 14, 1e-12);
  EXPECT_NEAR(ext.maxPoint().y, 20, 1e-12);
  EXPECT_NEAR(ext.minPoint().y, 20 - m.actualHeight(), 1e-12);
  // Bottom right, turned a quarter: the text runs up to the location, its
  // lines stacked towards -X.
  m.setAttachment(AcDbMText::kBottomRight);
  m.setRotation(kPi / 2);
  ASSERT_EQ(m.getGeomExtents(ext), Acad::eOk);
  EXPECT_NEAR(ext.minPoint().y, 16, 1e-9);
  EXPECT_NEAR(ext.maxPoint().y, 20, 1e-9);
  EXPECT_NEAR(ext.minPoint().x, 10 - m.actualHeight(), 1e-9);
  EXPECT_NEAR(ext.maxPoint().x, 10, 1e-9);

  // A reference width wraps at spaces, and between wide characters.
  AcDbMText wrapped;
  wrapped.setTextHeight(1.0);
  wrapped.setContents(L"aaa bbb ccc");
  wrapped.setWidth(5.0);  // "aaa bbb" is 4.9 wide
  EXPECT_NEAR(wrapped.actualWidth(), 4.9, 1e-12);
  EXPECT_NEAR(wrapped.actualHeight(), 1.0 + 5.0 / 3, 1e-12);
  wrapped.setContents(L"中文中文中文");
  wrapped.setWidth(2.5);
  EXPECT_NEAR(wrapped.actualWidth(), 2.0, 1e-12);
  EXPECT_NEAR(wrapped.actualHeight(), 1.0 + 2 * 5.0 / 3, 1e-12);
  EXPECT_EQ(wrapped.setWidth(-1), Acad::eInvalidInput);
  EXPECT_EQ(wrapped.setTextHeight(0), Acad::eInvalidInput);
  EXPECT_EQ(wrapped.setAttachment(static_cast<AcDbMText::AttachmentPoint>(0)), Acad::eInvalidInput);
  EXPECT_EQ(wrapped.setLineSpacingFactor(0.1), Acad::eInvalidInput);
}

TEST_F(MText, TransformsScaleAndMirrorReadably) {
  AcDbMText m;
  m.setTextHeight(2.0);
  m.setWidth(10.0);
  m.setLocation(AcGePoint3d(5, 1, 0));
  m.setRotation(kPi / 6);
  AcGeMatrix3d turnAndGrow = AcGeMatrix3d::rotation(kPi / 2, AcGeVector3d::kZAxis) * AcGeMatrix3d::scaling(3.0);
  ASSERT_EQ(m.transformBy(turnAndGrow), Acad::eOk);
  EXPECT_NEAR(m.location().x, -3, 1e-9);
  EXPECT_NEAR(m.location().y, 15, 1e-9);
  EXPECT_NEAR(m.textHeight(), 6.0, 1e-12);
  EXPECT_NEAR(m.width(), 30.0, 1e-12);
  EXPECT_NEAR(m.rotation(), kPi / 6 + kPi / 2, 1e-9);

  // Mirrored in the Y axis: the text would run backwards, so it is turned
  // round and reads left to right at -30 degrees.
  AcDbMText t;
  t.setLocation(AcGePoint3d(4, 0, 0));
  t.setRotation(kPi / 6);
  ASSERT_EQ(t.transformBy(AcGeMatrix3d::mirroring(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis)), Acad::eOk);
  EXPECT_NEAR(t.location().x, -4, 1e-12);
  EXPECT_NEAR(t.rotation(), 2 * kPi - kPi / 6, 1e-9);
  EXPECT_NEAR(t.normal().z, 1.0, 1e-12);
  // Mirrored in the X axis it already reads forwards.
  t.setRotation(kPi / 6);
  ASSERT_EQ(t.transformBy(AcGeMatrix3d::mirroring(AcGePoint3d::kOrigin, AcGeVector3d::kYAxis)), Acad::eOk);
  EXPECT_NEAR(t.rotation(), 2 * kPi - kPi / 6, 1e-9);

  AcGeMatrix3d squash;
  squash.entry[1][1] = 0.5;
  EXPECT_EQ(t.transformBy(squash), Acad::eCannotScaleNonUniformly);
}

TEST_F(MText, ExplodesIntoOneTextPerLine) {
  auto* m = new AcDbMText;
  m->setTextHeight(1.0);
  m->setLocation(AcGePoint3d(0, 10, 0));
  m->setAttachment(AcDbMText::kTopCenter);
  m->setContents(L"first\\P\\Psecond line");
  m->setDatabaseDefaults(db.get());
  m->setColorIndex(3);
  const AcDbObjectId id = AddToModelSpace(db.get(), m);
  AcDbMText* text = nullptr;
  ASSERT_EQ(acdbOpenObject(text, id, AcDb::kForRead), Acad::eOk);
  AcDbVoidPtrArray parts;
  ASSERT_EQ(text->explode(parts), Acad::eOk);
  text->close();
  ASSERT_EQ(parts.length(), 2) << "the empty line gives nothing";
  auto* first = AcDbText::cast(static_cast<AcDbEntity*>(parts[0]));
  auto* second = AcDbText::cast(static_cast<AcDbEntity*>(parts[1]));
  ASSERT_TRUE(first && second);
  EXPECT_STREQ(first->textStringConst(), L"first");
  EXPECT_STREQ(second->textStringConst(), L"second line");
  EXPECT_EQ(first->horizontalMode(), AcDb::kTextCenter);
  EXPECT_EQ(first->colorIndex(), 3);
  // Baselines: a height below the top, then two line pitches further down.
  EXPECT_NEAR(first->alignmentPoint().y, 9.0, 1e-12);
  EXPECT_NEAR(second->alignmentPoint().y, 9.0 - 2 * 5.0 / 3, 1e-12);
  EXPECT_NEAR(first->alignmentPoint().x, 0.0, 1e-12);
  for (void* p : parts) delete static_cast<AcDbEntity*>(p);
}

TEST_F(MText, SettersNeedWriteAccess) {
  auto* m = new AcDbMText;
  m->setContents(L"x");
  const AcDbObjectId id = AddToModelSpace(db.get(), m);
  AcDbMText* text = nullptr;
  ASSERT_EQ(acdbOpenObject(text, id, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(text->setLocation(AcGePoint3d(1, 1, 1)), Acad::eNotOpenForWrite);
  EXPECT_EQ(text->setContents(L"y"), 0);
  EXPECT_EQ(text->transformBy(AcGeMatrix3d::scaling(2)), Acad::eNotOpenForWrite);
  EXPECT_EQ(Owned(text->contents()), L"x");
  // A new text takes the drawing's text size until it has its own.
  EXPECT_NEAR(text->textHeight(), db->textsize(), 1e-12);
  text->close();
}
