// The applet options' decisions without windows.
#include <gtest/gtest.h>

#include "core/settings.h"
#include "properties/applet_options.h"
#include "tests/support/test_env.h"

namespace kp::test {
namespace {

TEST(AppletSize, AWholeNumberIsHeldToTenAndThirtyTwoThousand) {
  EXPECT_EQ(AppletSizeOf("5", 300), 10);
  EXPECT_EQ(AppletSizeOf("500", 300), 500);
  EXPECT_EQ(AppletSizeOf(" 40000 ", 300), 32000);
  EXPECT_EQ(AppletSizeOf("99999999999", 300), 32000);
  EXPECT_EQ(AppletSizeOf("-4", 300), 10);
}

TEST(AppletSize, TextThatIsNoNumberKeepsTheCurrentValue) {
  EXPECT_EQ(AppletSizeOf("abc", 300), 300);
  EXPECT_EQ(AppletSizeOf("", 300), 300);
  EXPECT_EQ(AppletSizeOf("-", 300), 300);
  EXPECT_EQ(AppletSizeOf("12px", 300), 300);
}

TEST(BackImg, ANameInAnEmptyListSelectsTile) {
  const BackImgList l = BackImgTextChanged("a.gif", -1);
  EXPECT_EQ(l.index, 2);
  EXPECT_TRUE(l.enabled);
  EXPECT_EQ(l.style, 3);
}

TEST(BackImg, AChosenStyleStaysAndNoNameClearsIt) {
  EXPECT_EQ(BackImgTextChanged("a.gif", 1).style, 2);
  const BackImgList none = BackImgTextChanged("", 1);
  EXPECT_EQ(none.index, -1);
  EXPECT_FALSE(none.enabled);
  EXPECT_EQ(none.style, 0);
}

TEST(BackImg, TheOffsetControlIsHiddenForCenterAndForNoStyle) {
  EXPECT_FALSE(BgOffsetVisible(-1));
  EXPECT_FALSE(BgOffsetVisible(1));
  EXPECT_TRUE(BgOffsetVisible(0));
  EXPECT_TRUE(BgOffsetVisible(2));
  EXPECT_TRUE(BgOffsetVisible(3));
}

TEST(AppletFade, SwappingTwiceRestoresBothColours) {
  Project p;
  p.BackGround = 1;
  p.cFadeColor = 2;
  SwapAppletColours(p);
  EXPECT_EQ(p.BackGround, 2);
  EXPECT_EQ(p.cFadeColor, 1);
  EXPECT_FALSE(p.bProjectSaved);
  SwapAppletColours(p);
  EXPECT_EQ(p.BackGround, 1);
  EXPECT_EQ(p.cFadeColor, 2);
}

TEST(SpecialOptions, TheFieldsRoundTripThroughTheRecord) {
  Project p;
  SetDefaultMainParams(p);
  SpecialOptions o = SpecialOptionsOf(p);
  o.txtTipDelay = "700";
  o.chkTipBold = o.chkTipItalic = true;
  o.optUnusualRepaint = true;
  o.optDirections = 3;
  EXPECT_TRUE(StoreSpecialOptions(p, o).empty());
  EXPECT_EQ(p.iTipDelay, 700);
  EXPECT_EQ(p.iTipFontStyle, 3);
  EXPECT_EQ(p.bUnusualRepaint, -1);
  EXPECT_EQ(SpecialOptionsOf(p), o);
}

TEST(SpecialOptions, ABadNumberIsToldAndTheFieldsAfterItAreStillRead) {
  Project p;
  SetDefaultMainParams(p);
  SpecialOptions o = SpecialOptionsOf(p);
  o.txtTipBorderWidth = "wide";
  o.txtTipDelay = "70000";
  o.txtiScStep = "9";
  const std::vector<std::string> told = StoreSpecialOptions(p, o);
  ASSERT_EQ(told.size(), 2u);
  EXPECT_EQ(told[0], "Type mismatch");
  EXPECT_EQ(told[1], "Overflow");
  EXPECT_EQ(p.iTipBorderWidth, 1);
  EXPECT_EQ(p.iTipDelay, 300);
  EXPECT_EQ(p.iScStep, 9);
}

TEST(SpecialOptions, TheDefaultsAreTheDocumentedOnes) {
  const SpecialOptions d = SpecialDefaults();
  EXPECT_EQ(d.pic_cLoadingFont, RGB(0, 0, 255));
  EXPECT_EQ(d.picTipBackColor, RGB(255, 255, 0));
  EXPECT_EQ(d.txtTipHideAfter, "2500");
  EXPECT_TRUE(d.chk_Bold_LoadingFont);
  EXPECT_TRUE(d.chkClip);
  EXPECT_TRUE(d.chkPreLoad);
  EXPECT_EQ(d.txtiScStep, "1");
}

TEST(AdvancedOptions, TheDontKeysHoldTheOppositeOfTheBox) {
  TestEnv t;
  AdvancedOptions o = AdvancedOptionsOf(t.env);
  EXPECT_EQ(o, AdvancedDefaults());
  o.chkSomeFilesWarning = false;
  o.chkKeepDesignOnTop = true;
  StoreAdvancedOptions(t.env, o);
  EXPECT_EQ(GetParam(t.env, "DontShowSomeFilesWarning"), "1");
  EXPECT_EQ(GetParam(t.env, "DontShowReadyForUpload"), "0");
  EXPECT_EQ(GetParam(t.env, "frmDesignOnTop"), "1");
  EXPECT_EQ(GetParam(t.env, "AutoTile"), "1");
  EXPECT_EQ(AdvancedOptionsOf(t.env), o);
}

TEST(Descent, BadNumbersBecomeZero) {
  Project p;
  StoreDescent(p, "3", "x");
  EXPECT_EQ(p.iDescentX, 3);
  EXPECT_EQ(p.iDescentY, 0);
  EXPECT_FALSE(p.bProjectSaved);
}

TEST(ButtonSpecial, WritesTheStateOfEverySelectedButtonAndNamesItsCode) {
  Project p;
  SetDefaultMainParams(p);
  p.ButtonCount = 3;
  p.sState = "OVER";
  const WriteOutcome w = WriteSpecialValue(p, {1, 3}, SpecialControl::txtThick, "4");
  EXPECT_EQ(w.written, (std::vector<int>{1, 3}));
  EXPECT_EQ(w.code, 19);
  EXPECT_EQ(p.button(1).TFrameThick[2], 4);
  EXPECT_EQ(p.button(3).TFrameThick[2], 4);
  EXPECT_EQ(p.button(2).TFrameThick[2], 0);
  EXPECT_EQ(p.button(1).TFrameThick[1], 0);
}

TEST(ButtonSpecial, NothingIsWrittenWhileAProjectLoads) {
  Project p;
  p.ButtonCount = 1;
  p.bReady = false;
  EXPECT_FALSE(WriteSpecialValue(p, {1}, SpecialControl::cmbLight, "1").ran);
  EXPECT_FALSE(p.button(1).TFrameLight[1]);
}

TEST(ButtonSpecial, TheFrameIsNotRedrawnAndTheSwapFollowsAnAutoBorderColour) {
  EXPECT_FALSE(SpecialRedraws(SpecialControl::picFrameColor));
  EXPECT_FALSE(SpecialRedraws(SpecialControl::txtFrameThick));
  EXPECT_TRUE(SpecialRedraws(SpecialControl::txtShade));
  Project p;
  p.ButtonCount = 2;
  p.sState = "DOWN";
  p.button(1).BackColor[3] = 5;
  p.button(1).FadeColor[3] = 6;
  p.button(1).BorderAutoColor[3] = true;
  p.button(2).BackColor[3] = 7;
  p.button(2).FadeColor[3] = 8;
  const WriteOutcome w = SwapButtonColours(p, {1, 2});
  EXPECT_EQ(w.code, 28);
  EXPECT_EQ(p.button(1).BackColor[3], 6);
  EXPECT_EQ(p.button(1).BorderColor[3], 6);
  EXPECT_EQ(p.button(2).BackColor[3], 8);
  EXPECT_EQ(p.button(2).FadeColor[3], 7);
}

}  // namespace
}  // namespace kp::test
