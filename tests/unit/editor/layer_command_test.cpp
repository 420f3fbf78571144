// LAYER: the answers the family's working-layer steps send, name lists
// and wildcards, the protection of the current layer, and the messages
// for names and linetypes that do not exist.
#include "blocks_fixture.h"

namespace {

class LayerCommandTest : public BlocksTest {
 protected:
  AcDbLayerTableRecord* layerRecord(const wchar_t* name) { return peek<AcDbLayerTableRecord>(layer(db.get(), name)); }
  void setFlags(const wchar_t* name, bool frozen, bool locked, bool off) {
    AcDbLayerTableRecord* l = nullptr;
    ASSERT_EQ(acdbOpenObject(l, layer(db.get(), name), AcDb::kForWrite), Acad::eOk);
    l->setIsFrozen(frozen);
    l->setIsLocked(locked);
    l->setIsOff(off);
    l->close();
  }
};

TEST_F(LayerCommandTest, WorkingLayerStepsThawUnlockTurnOnAndMakeCurrent) {
  // Missing: Make creates it with the platform's defaults and makes it current.
  ASSERT_EQ(command({L"LAYER", L"M", L"PP-COM", L""}), RTNORM);
  AcDbLayerTableRecord* pp = layerRecord(L"PP-COM");
  ASSERT_NE(pp, nullptr);
  EXPECT_EQ(db->clayer(), pp->objectId());
  EXPECT_EQ(pp->colorIndex(), 7);
  EXPECT_EQ(pp->linetypeObjectId(), db->continuousLinetype());
  EXPECT_EQ(eval(L"(getvar \"CLAYER\")"), L"\"PP-COM\"");

  // Frozen, locked and off while another layer is current: one LAYER
  // command thaws and unlocks, then ON and Set finish the steps.
  command({L"LAYER", L"S", L"0", L""});
  setFlags(L"PP-COM", true, true, true);
  EXPECT_EQ(eval(L"(cdr (assoc 70 (tblsearch \"LAYER\" \"PP-COM\")))"), L"5");
  ASSERT_EQ(command({L"LAYER", L"ON", L"PP-COM", L""}), RTNORM);
  ASSERT_EQ(command({L"LAYER", L"T", L"PP-COM", L"U", L"PP-COM", L""}), RTNORM);
  ASSERT_EQ(command({L"LAYER", L"S", L"PP-COM", L""}), RTNORM);
  EXPECT_FALSE(pp->isFrozen());
  EXPECT_FALSE(pp->isLocked());
  EXPECT_FALSE(pp->isOff());
  EXPECT_EQ(db->clayer(), pp->objectId());
  EXPECT_EQ(eval(L"(tblsearch \"LAYER\" \"PP-COM\")"),
            L"((0 . \"LAYER\") (2 . \"PP-COM\") (70 . 0) (62 . 7) (6 . \"Continuous\"))");
  // Every prompt and answer was shown (CMDECHO 1), starting with the current layer.
  EXPECT_TRUE(said(L"\nLAYER\nCurrent layer:  \"0\"\nEnter an option [?/Make/Set/New/Rename/ON/OFF/Color/Ltype/"
                   L"LWeight/TRansparency/MATerial/Plot/Freeze/Thaw/LOck/Unlock/stAte/Description/rEconcile]: T"
                   L"\nEnter name list of layer(s) to thaw: PP-COM"));
}

TEST_F(LayerCommandTest, NameListsTakeSeveralNamesAndWildcards) {
  ASSERT_EQ(command({L"LAYER", L"N", L"A1, A2 ,B1", L"C", L"3", L"a*", L""}), RTNORM);
  ASSERT_NE(layerRecord(L"B1"), nullptr);
  EXPECT_EQ(layerRecord(L"A1")->colorIndex(), 3);
  EXPECT_EQ(layerRecord(L"A2")->colorIndex(), 3);
  EXPECT_EQ(layerRecord(L"B1")->colorIndex(), 7);
  EXPECT_TRUE(said(L"Enter name list of layer(s) for color 3 (green) <0>: a*"));

  // A name that matches nothing is reported; the others are still changed.
  ASSERT_EQ(command({L"LAYER", L"F", L"ZZ,?1", L""}), RTNORM);
  EXPECT_TRUE(said(L"\nCannot find layer \"ZZ\"."));
  EXPECT_TRUE(layerRecord(L"A1")->isFrozen());
  EXPECT_TRUE(layerRecord(L"B1")->isFrozen());
  EXPECT_FALSE(layerRecord(L"A2")->isFrozen());

  // A colour with a minus sign turns the layers off; Enter means the current layer.
  ASSERT_EQ(command({L"LAYER", L"C", L"-red", L"A2", L"C", L"blue", L"", L""}), RTNORM);
  EXPECT_TRUE(layerRecord(L"A2")->isOff());
  EXPECT_EQ(layerRecord(L"A2")->colorIndex(), 1);
  EXPECT_EQ(layerRecord(L"0")->colorIndex(), 5);
  // New does not touch a layer that exists.
  command({L"LAYER", L"N", L"A2", L""});
  EXPECT_TRUE(said(L"\nLayer \"A2\" already exists."));
  EXPECT_EQ(layerRecord(L"A2")->colorIndex(), 1);
}

TEST_F(LayerCommandTest, CurrentLayerIsNeitherFrozenNorTurnedOffUnasked) {
  command({L"LAYER", L"N", L"W", L""});
  ASSERT_EQ(command({L"LAYER", L"F", L"*", L""}), RTNORM);
  EXPECT_TRUE(said(L"\nCannot freeze layer 0.  It is the CURRENT layer."));
  EXPECT_FALSE(layerRecord(L"0")->isFrozen());
  EXPECT_TRUE(layerRecord(L"W")->isFrozen());

  // A frozen layer cannot become current; an off one is turned on.
  ASSERT_EQ(command({L"LAYER", L"S", L"W", L""}), RTNORM);
  EXPECT_EQ(db->clayer(), db->layerZero());
  command({L"LAYER", L"T", L"W", L"OFF", L"W", L"S", L"W", L""});
  EXPECT_EQ(db->clayer(), layer(db.get(), L"W"));
  EXPECT_FALSE(layerRecord(L"W")->isOff());

  ASSERT_EQ(command({L"LAYER", L"OFF", L"W", L"", L""}), RTNORM);  // Enter: No
  EXPECT_TRUE(said(L"\nReally want layer W (the CURRENT layer) off? <N> "));
  EXPECT_FALSE(layerRecord(L"W")->isOff());
  ASSERT_EQ(command({L"LAYER", L"OFF", L"W", L"Y", L""}), RTNORM);
  EXPECT_TRUE(layerRecord(L"W")->isOff());
}

TEST_F(LayerCommandTest, UnknownNamesAndLinetypesChangeNothing) {
  ASSERT_EQ(command({L"LAYER", L"S", L"NOPE", L"L", L"DASHED", L""}), RTNORM);
  EXPECT_TRUE(said(L"\nCannot find layer \"NOPE\"."));
  EXPECT_TRUE(said(L"\nLinetype DASHED not found.  Use LINETYPE command to load it."));
  EXPECT_EQ(db->clayer(), db->layerZero());
  EXPECT_EQ(layerRecord(L"0")->linetypeObjectId(), db->continuousLinetype());

  // A loaded linetype and a lineweight taken to the nearest standard one.
  command({L"LAYER", L"N", L"X", L"L", L"ByBlock", L"X", L"LW", L"0.33", L"X", L""});
  EXPECT_EQ(layerRecord(L"X")->linetypeObjectId(), db->byBlockLinetype());
  EXPECT_EQ(layerRecord(L"X")->lineWeight(), AcDb::kLnWt035);
  EXPECT_TRUE(said(L"Enter name list of layers(s) for lineweight 0.35mm <0>: X"));

  // Bad names and options are refused without ending the command.
  ASSERT_EQ(command({L"LAYER", L"M", L"a<b", L"XX", L"A", L"N", L"", L""}), RTNORM);
  EXPECT_TRUE(said(L"\nInvalid layer name."));
  EXPECT_TRUE(said(L"\nInvalid option keyword."));
  EXPECT_TRUE(said(L"\nThe headless editor does not offer this option."));
  EXPECT_EQ(db->clayer(), db->layerZero());
}

TEST_F(LayerCommandTest, RenameListAndTheEndOfTheAnswers) {
  command({L"LAYER", L"N", L"OLD", L"R", L"OLD", L"NEW", L"R", L"0", L"Z", L""});
  EXPECT_NE(layerRecord(L"NEW"), nullptr);
  EXPECT_EQ(layerRecord(L"OLD"), nullptr);
  EXPECT_TRUE(said(L"\nCannot rename layer 0."));

  out.clear();
  command({L"LAYER", L"?", L"N*", L""});
  EXPECT_TRUE(said(L"\nNEW                             On"));
  EXPECT_FALSE(said(L"\n0        "));
  EXPECT_TRUE(said(L"\n\nCurrent layer:  \"0\""));

  // Answers that stop before the final Enter cancel the command; what was
  // done before stays done.
  EXPECT_EQ(command({L"LAYER", L"LO", L"NEW"}), RTCAN);
  EXPECT_TRUE(layerRecord(L"NEW")->isLocked());
}

}  // namespace
