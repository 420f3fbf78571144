// AcEdJig driven by the user's answers: one sample per answer, the drag
// statuses the platform reports, the user input controls, and the entity
// that stays out of the database until append().
#include <cmath>

#include "jig_test_support.h"

namespace {

constexpr double kPi = 3.14159265358979323846;

TEST_F(JigTest, FiveScriptedPointsAreFiveSamplesAndTheEntityStaysOutOfTheDatabase) {
  answers(L"1,1\n2,2\n3,3\n4,4\n5,5\n\n");
  const AcDbHandle nextHandle = db->handseed();
  LineJig jig(AcGePoint3d(0, 0, 0), AcEdJig::kNullResponseAccepted);
  int normal = 0;
  AcEdJig::DragStatus s;
  while ((s = jig.drag()) == AcEdJig::kNormal) ++normal;
  EXPECT_EQ(s, AcEdJig::kNull);
  EXPECT_EQ(normal, 5);
  EXPECT_EQ(jig.updates, 5);
  ASSERT_EQ(samples().size(), 5u);
  for (size_t k = 0; k < 5; ++k) {
    const kelhost::editor::JigSample& sample = samples()[k];
    EXPECT_EQ(sample.status, AcEdJig::kNormal);
    EXPECT_TRUE(sample.updated);
    ASSERT_EQ(sample.picture.size(), 1u);
    const kelhost::gi::Primitive& p = sample.picture[0];
    EXPECT_EQ(p.kind, kelhost::gi::Primitive::kPolyline);
    ASSERT_EQ(p.points.size(), 2u);
    EXPECT_TRUE(p.points[0].isEqualTo(AcGePoint3d(0, 0, 0)));
    EXPECT_TRUE(p.points[1].isEqualTo(AcGePoint3d(k + 1.0, k + 1.0, 0)));
    EXPECT_EQ(p.properties.layer, db->clayer());  // the jig gave the new line the current layer
  }
  EXPECT_FALSE(jig.line()->isDatabaseResident());
  EXPECT_EQ(entityCount(), 0);
  EXPECT_EQ(db->handseed(), nextHandle);
  EXPECT_EQ(out, L"\nTo point: 1,1\nTo point: 2,2\nTo point: 3,3\nTo point: 4,4\nTo point: 5,5\nTo point: ");
}

TEST_F(JigTest, TheSamePointAgainIsNoChangeAndStillAcceptsTheDrag) {
  answers(L"2,3\n2,3\n");
  LineJig jig(AcGePoint3d(0, 0, 0));
  EXPECT_EQ(jig.drag(), AcEdJig::kNormal);
  EXPECT_EQ(jig.drag(), AcEdJig::kNormal);
  EXPECT_EQ(jig.updates, 1);
  ASSERT_EQ(samples().size(), 2u);
  EXPECT_EQ(samples()[1].status, AcEdJig::kNoChange);
  EXPECT_FALSE(samples()[1].updated);
  ASSERT_EQ(samples()[1].picture.size(), 1u);  // shown where it already was
  EXPECT_TRUE(samples()[1].picture[0].points[1].isEqualTo(AcGePoint3d(2, 3, 0)));
}

TEST_F(JigTest, EnterIsNullOnlyWhenTheJigAcceptsIt) {
  answers(L"\n7,7\n\n");
  LineJig refusing(AcGePoint3d(0, 0, 0));
  EXPECT_EQ(refusing.drag(), AcEdJig::kNormal);  // Enter refused, then the point
  EXPECT_EQ(out, L"\nTo point: \nInvalid point.\nTo point: 7,7");
  LineJig accepting(AcGePoint3d(0, 0, 0), AcEdJig::kNullResponseAccepted);
  EXPECT_EQ(accepting.drag(), AcEdJig::kNull);
  EXPECT_EQ(accepting.updates, 0);
  EXPECT_TRUE(samples().empty());
}

TEST_F(JigTest, KeywordsComeBackInListOrderAndOtherTextOnlyWhenAllowed) {
  answers(L"u\nCLOSE\n_Undo\nhello\n");
  LineJig jig(AcGePoint3d(0, 0, 0), AcEdJig::kAcceptOtherInputString);
  jig.setKeywordList(L"Close Undo");
  EXPECT_STREQ(jig.keywordList(), L"Close Undo");
  EXPECT_EQ(jig.drag(), AcEdJig::kKW2);
  EXPECT_EQ(jig.drag(), AcEdJig::kKW1);
  EXPECT_EQ(jig.drag(), AcEdJig::kKW2);
  EXPECT_EQ(jig.drag(), AcEdJig::kOther);
  EXPECT_TRUE(samples().empty());
  EXPECT_EQ(jig.updates, 0);
}

TEST_F(JigTest, CancelAndTheEndOfInputCancelTheDrag) {
  answers(L"^C\n^C\n");
  LineJig echoing(AcGePoint3d(0, 0, 0));
  EXPECT_EQ(echoing.drag(), AcEdJig::kCancel);
  EXPECT_EQ(out, L"\nTo point: *Cancel*");
  out.clear();
  LineJig quiet(AcGePoint3d(0, 0, 0), AcEdJig::kDontEchoCancelForCtrlC);
  EXPECT_EQ(quiet.drag(), AcEdJig::kCancel);
  EXPECT_EQ(out, L"\nTo point: ");
  EXPECT_EQ(quiet.drag(), AcEdJig::kCancel);  // no more input
  EXPECT_EQ(quiet.updates, 0);
}

TEST_F(JigTest, AnUpdateThatFailsEndsTheDragWithOther) {
  answers(L"4,4\n");
  LineJig jig(AcGePoint3d(0, 0, 0));
  jig.updateAnswer = false;
  EXPECT_EQ(jig.drag(), AcEdJig::kOther);
  ASSERT_EQ(samples().size(), 1u);
  EXPECT_TRUE(samples()[0].updated);
}

// Asks for a distance or an angle, from a base point or not.
class ValueJig : public AcEdJig {
 public:
  enum What { kDist, kDistFromBase, kAngle, kAngleFromBase };
  ValueJig(What what, int controls) : mWhat(what), mControls(controls) {}
  DragStatus sampler() override {
    setUserInputControls(static_cast<UserInputControls>(mControls));
    const AcGePoint3d base(1, 1, 0);
    switch (mWhat) {
      case kDist: return acquireDist(value);
      case kDistFromBase: return acquireDist(value, base);
      case kAngle: return acquireAngle(value);
      default: return acquireAngle(value, base);
    }
  }
  double value = -99.0;

 private:
  What mWhat;
  int mControls;
};

TEST_F(JigTest, DistancesAndAnglesAreTypedOrMeasuredFromTheBasePoint) {
  answers(L"2.5\n4,5\n-1\n3\n0,0\n3,4\n1,3\n90\n");
  ValueJig typed(ValueJig::kDist, 0);
  EXPECT_EQ(typed.drag(), AcEdJig::kNormal);
  EXPECT_DOUBLE_EQ(typed.value, 2.5);
  ValueJig fromBase(ValueJig::kDistFromBase, AcEdJig::kNoNegativeResponseAccepted);
  EXPECT_EQ(fromBase.drag(), AcEdJig::kNormal);
  EXPECT_DOUBLE_EQ(fromBase.value, 5.0);  // (1,1) to (4,5)
  EXPECT_EQ(fromBase.drag(), AcEdJig::kNormal);  // -1 refused, then 3
  EXPECT_DOUBLE_EQ(fromBase.value, 3.0);
  EXPECT_NE(out.find(L"Value must be positive."), std::wstring::npos) << out;
  ValueJig twoPoints(ValueJig::kDist, 0);
  EXPECT_EQ(twoPoints.drag(), AcEdJig::kNormal);  // a first point, then the second
  EXPECT_DOUBLE_EQ(twoPoints.value, 5.0);
  EXPECT_NE(out.find(L"Specify second point: 3,4"), std::wstring::npos) << out;
  ValueJig angle(ValueJig::kAngleFromBase, 0);
  EXPECT_EQ(angle.drag(), AcEdJig::kNormal);
  EXPECT_NEAR(angle.value, kPi / 2, 1e-12);
  ValueJig typedAngle(ValueJig::kAngle, 0);
  EXPECT_EQ(typedAngle.drag(), AcEdJig::kNormal);
  EXPECT_NEAR(typedAngle.value, kPi / 2, 1e-12);
}

TEST_F(JigTest, ThreeDimensionalPointsAndTheLastPointFollowTheControls) {
  answers(L"1,2,3\n4,5,6\n7,8\n");
  LineJig flat(AcGePoint3d(0, 0, 0));
  flat.drag();
  EXPECT_TRUE(flat.line()->endPoint().isEqualTo(AcGePoint3d(1, 2, 0)));
  LineJig solid(AcGePoint3d(0, 0, 0), AcEdJig::kAccept3dCoordinates);
  solid.drag();
  EXPECT_TRUE(solid.line()->endPoint().isEqualTo(AcGePoint3d(4, 5, 6)));
  resbuf last{};
  ASSERT_EQ(acedGetVar(L"LASTPOINT", &last), RTNORM);
  EXPECT_DOUBLE_EQ(last.resval.rpoint[0], 4.0);
  LineJig keeping(AcGePoint3d(0, 0, 0), AcEdJig::kDontUpdateLastPoint);
  keeping.drag();
  ASSERT_EQ(acedGetVar(L"LASTPOINT", &last), RTNORM);
  EXPECT_DOUBLE_EQ(last.resval.rpoint[0], 4.0);  // 7,8 did not become the last point
}

TEST_F(JigTest, SettingsReadBackAsSet) {
  LineJig jig(AcGePoint3d(0, 0, 0));
  jig.setDispPrompt(L"\nPick %s %d <%.1f>: ", L"corner", 2, 1.5);
  EXPECT_STREQ(jig.dispPrompt(), L"\nPick corner 2 <1.5>: ");
  jig.setUserInputControls(static_cast<AcEdJig::UserInputControls>(224));
  EXPECT_EQ(jig.userInputControls(), AcEdJig::kNoZeroResponseAccepted | AcEdJig::kNoNegativeResponseAccepted |
                                         AcEdJig::kAccept3dCoordinates);
  EXPECT_EQ(jig.specialCursorType(), AcEdJig::kNoSpecialCursor);
  jig.setSpecialCursorType(AcEdJig::kRubberBand);
  EXPECT_EQ(jig.specialCursorType(), AcEdJig::kRubberBand);
}

TEST_F(JigTest, AppendAddsTheDraggedEntityToTheCurrentSpaceClosed) {
  answers(L"3,0\n");
  AcDbLayerTable* layers = nullptr;
  ASSERT_EQ(acdbOpenObject(layers, db->layerTableId(), AcDb::kForWrite), Acad::eOk);
  auto* record = new AcDbLayerTableRecord;
  record->setName(L"DRAG");
  AcDbObjectId layerId;
  ASSERT_EQ(layers->add(layerId, record), Acad::eOk);
  record->close();
  layers->close();
  ASSERT_EQ(db->setClayer(layerId), Acad::eOk);
  LineJig jig(AcGePoint3d(0, 0, 0));
  ASSERT_EQ(jig.drag(), AcEdJig::kNormal);
  const AcDbObjectId id = jig.append();
  ASSERT_FALSE(id.isNull());
  EXPECT_EQ(entityCount(), 1);
  AcDbLine* line = nullptr;
  ASSERT_EQ(acdbOpenObject(line, id, AcDb::kForRead), Acad::eOk);
  EXPECT_TRUE(line->endPoint().isEqualTo(AcGePoint3d(3, 0, 0)));
  EXPECT_EQ(line->layerId(), layerId);
  line->close();
  EXPECT_TRUE(jig.append().isNull());  // already in the database
}

// The point comes from a command call's values, the prompt from the jig.
void JiggingCommand() {
  LineJig jig(AcGePoint3d(0, 0, 0), AcEdJig::kNullResponseAccepted);
  while (jig.drag() == AcEdJig::kNormal) {
  }
  acutPrintf(L"\n%d samples", static_cast<int>(kelhost::editor::JigSamples().size()));
}

TEST_F(JigTest, ACommandCallsAnswersDriveAJigInItsCommand) {
  ASSERT_EQ(acedRegCmds->addCommand(L"JIGTEST", L"TJIG", L"TJIG", ACRX_CMD_MODAL, JiggingCommand), Acad::eOk);
  kelhost::Host::instance().lisp().evalOne(L"(command \"TJIG\" '(1 2) \"3,4\" \"\")");
  acedRegCmds->removeGroup(L"JIGTEST");
  EXPECT_EQ(samples().size(), 2u);
  EXPECT_NE(out.find(L"\nTo point: \nTo point: 3,4\nTo point: \n2 samples"), std::wstring::npos) << out;
}

}  // namespace
