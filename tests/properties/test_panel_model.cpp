// The button panel's write path on the model: guards, conversions, the
// state written, the last-change codes and the name warnings.
#include <gtest/gtest.h>

#include "core/settings.h"
#include "project/button_record.h"
#include "properties/panel_model.h"
#include "tests/support/test_env.h"

namespace kp::test {
namespace {

// A project of n default buttons, saved, with state UP.
Project MakeButtons(TestEnv& t, int n) {
  Project p;
  SetDefaultMainParams(p);
  for (int i = 0; i < n; ++i) AddNewButton(p, t.env);
  p.bProjectSaved = true;
  return p;
}

TEST(PanelWritePath, TypingALabelWritesAllSelectedButtonsInTheCurrentStateOnly) {
  TestEnv t;
  Project p = MakeButtons(t, 4);
  p.sState = "OVER";
  WriteOutcome w = WritePanelValue(p, {1, 2, 3}, PanelControl::txtLabel, "Go");
  EXPECT_TRUE(w.ran);
  EXPECT_EQ(w.written, (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(w.code, LastChange::Label);
  for (int i = 1; i <= 3; ++i) {
    EXPECT_EQ(p.button(i).Label[2], "Go");
    EXPECT_EQ(p.button(i).Label[1], "Button " + std::to_string(i));
    EXPECT_EQ(p.button(i).Label[3], "Button " + std::to_string(i));
  }
  EXPECT_EQ(p.button(4).Label[2], "Button 4");
  EXPECT_FALSE(p.bProjectSaved);
}

TEST(PanelWritePath, NothingIsWrittenWhileThePanelIsBeingFilled) {
  TestEnv t;
  Project p = MakeButtons(t, 1);
  p.bFillingPanel = true;
  WriteOutcome w = WritePanelValue(p, {1}, PanelControl::txtLabel, "X");
  EXPECT_FALSE(w.ran);
  EXPECT_EQ(p.button(1).Label[1], "Button 1");
  EXPECT_TRUE(p.bProjectSaved);
}

TEST(PanelWritePath, StyleListsSoundBoxesAndImageOffsetsAlsoWaitForTheLoadToEnd) {
  TestEnv t;
  Project p = MakeButtons(t, 1);
  p.bReady = false;
  for (PanelControl c : {PanelControl::cmbBorderStyle, PanelControl::cmbImgStyle,
                         PanelControl::chkSoundLoop, PanelControl::chkSoundStop,
                         PanelControl::txtImgX, PanelControl::txtImgY})
    EXPECT_FALSE(WritePanelValue(p, {1}, c, "1").ran) << RuleOf(c).name;
  EXPECT_EQ(p.button(1).BorderStyle[1], 1);
  EXPECT_EQ(p.button(1).ImgStyle[1], 0);
  EXPECT_FALSE(p.button(1).SoundLoop[1]);
  // The label does not wait for bReady.
  EXPECT_TRUE(WritePanelValue(p, {1}, PanelControl::txtLabel, "L").ran);
  EXPECT_EQ(p.button(1).Label[1], "L");
}

TEST(PanelWritePath, FontSizeIsHeldBetween3And999WithDefault10) {
  EXPECT_EQ(FontSizeOf("12"), 12);
  EXPECT_EQ(FontSizeOf("1"), 3);
  EXPECT_EQ(FontSizeOf("5000"), 999);
  EXPECT_EQ(FontSizeOf("big"), 10);
  EXPECT_EQ(FontSizeOf(""), 10);
}

TEST(PanelWritePath, BorderWidthAndShadeFallBackTo7And25) {
  TestEnv t;
  Project p = MakeButtons(t, 1);
  p.button(1).BorderWidth[1] = 3;
  WritePanelValue(p, {1}, PanelControl::txtBorderWidth, "x");
  EXPECT_EQ(p.button(1).BorderWidth[1], 7);
  WritePanelValue(p, {1}, PanelControl::txtBorderShade, "");
  EXPECT_EQ(p.button(1).BorderShade[1], 25);
  // Above the scroll bar's range the typed value stays in the model.
  WritePanelValue(p, {1}, PanelControl::txtBorderWidth, "1200");
  EXPECT_EQ(p.button(1).BorderWidth[1], 1200);
}

TEST(PanelWritePath, GeometryConversionsUseTheirDefaultsAndWidthIsAbsolute) {
  EXPECT_EQ(PositionOf("abc"), 10);
  EXPECT_EQ(PositionOf("-4"), -4);
  EXPECT_EQ(ButtonWidthOf("-30"), 30);
  EXPECT_EQ(ButtonWidthOf(""), 100);
  EXPECT_EQ(ButtonHeightOf("x"), 50);
  EXPECT_EQ(ButtonHeightOf("-32768"), 32767);
  EXPECT_EQ(LabelPosOf("?"), 0);
  EXPECT_EQ(ImageOffsetOf("7"), 7);
}

TEST(PanelWritePath, TypingAWidthWithTwoRowsSelectedWritesBothAndAsksForAMove) {
  TestEnv t;
  Project p = MakeButtons(t, 3);
  WriteOutcome w = WritePanelValue(p, {1, 3}, PanelControl::txtWidth, "77");
  EXPECT_EQ(w.written, (std::vector<int>{1, 3}));
  EXPECT_EQ(p.button(1).Width, 77);
  EXPECT_EQ(p.button(3).Width, 77);
  EXPECT_EQ(p.button(2).Width, 100);
  EXPECT_EQ(RuleOf(PanelControl::txtWidth).redraw, PanelRedraw::Move);
  EXPECT_EQ(w.code, 0);  // geometry has no last-change code
}

TEST(PanelWritePath, FieldsThatAreNotPerStateIgnoreTheState) {
  TestEnv t;
  Project p = MakeButtons(t, 1);
  p.sState = "DOWN";
  WritePanelValue(p, {1}, PanelControl::txtURL, "  page.htm ");
  WritePanelValue(p, {1}, PanelControl::lsTarget, "_top");
  WritePanelValue(p, {1}, PanelControl::txtStatus, " s ");
  WritePanelValue(p, {1}, PanelControl::chkHidden, "1");
  WritePanelValue(p, {1}, PanelControl::chkShowHand, "0");
  WritePanelValue(p, {1}, PanelControl::chkRadio, "1");
  const tButton& b = p.button(1);
  EXPECT_EQ(b.URL, "page.htm");
  EXPECT_EQ(b.Target, "_top");
  EXPECT_EQ(b.Status, " s ");
  EXPECT_EQ(b.Hidden, 1);
  EXPECT_FALSE(b.ShowHand);
  EXPECT_TRUE(b.Radio);
}

TEST(PanelWritePath, EveryControlLeavesItsOwnLastChangeCode) {
  EXPECT_EQ(RuleOf(PanelControl::txtLabel).code, 1);
  EXPECT_EQ(RuleOf(PanelControl::chkCenterText).code, 2);
  EXPECT_EQ(RuleOf(PanelControl::chkPositionText).code, 3);
  EXPECT_EQ(RuleOf(PanelControl::txtLabelPosX).code, 3);
  EXPECT_EQ(RuleOf(PanelControl::txtLabelPosY).code, 3);
  EXPECT_EQ(RuleOf(PanelControl::lsFont).code, 4);
  EXPECT_EQ(RuleOf(PanelControl::lsFontSize).code, 5);
  EXPECT_EQ(RuleOf(PanelControl::imgBold).code, 6);
  EXPECT_EQ(RuleOf(PanelControl::imgItalic).code, 7);
  EXPECT_EQ(RuleOf(PanelControl::txtImage).code, 8);
  EXPECT_EQ(RuleOf(PanelControl::cmbImgStyle).code, 9);
  EXPECT_EQ(RuleOf(PanelControl::txtSound).code, 10);
  EXPECT_EQ(RuleOf(PanelControl::picBackColor).code, 11);
  EXPECT_EQ(RuleOf(PanelControl::picFontColor).code, 12);
  EXPECT_EQ(RuleOf(PanelControl::cmbBorderStyle).code, 13);
  EXPECT_EQ(RuleOf(PanelControl::chkBorderAutoColor).code, 14);
  EXPECT_EQ(RuleOf(PanelControl::txtBorderWidth).code, 15);
  EXPECT_EQ(RuleOf(PanelControl::txtBorderShade).code, 16);
  EXPECT_EQ(RuleOf(PanelControl::picBorderColor).code, 17);
  EXPECT_EQ(RuleOf(PanelControl::chkSoundStop).code, 29);
  EXPECT_EQ(RuleOf(PanelControl::chkSoundLoop).code, 30);
  EXPECT_EQ(RuleOf(PanelControl::chkTransparent).code, 31);
  EXPECT_EQ(RuleOf(PanelControl::txtImgX).code, 32);
  EXPECT_EQ(RuleOf(PanelControl::txtImgY).code, 32);
  for (PanelControl c : {PanelControl::txtURL, PanelControl::lsTarget, PanelControl::txtStatus,
                         PanelControl::txtTip, PanelControl::txtX, PanelControl::txtY,
                         PanelControl::txtWidth, PanelControl::txtHeight, PanelControl::chkHidden,
                         PanelControl::chkShowHand, PanelControl::chkRadio})
    EXPECT_EQ(RuleOf(c).code, 0) << RuleOf(c).name;
}

TEST(PanelWritePath, SoundAndLinkFieldsAreNotRedrawnButFacesAre) {
  EXPECT_EQ(RuleOf(PanelControl::txtSound).redraw, PanelRedraw::None);
  EXPECT_EQ(RuleOf(PanelControl::txtURL).redraw, PanelRedraw::None);
  EXPECT_EQ(RuleOf(PanelControl::lsTarget).redraw, PanelRedraw::None);
  EXPECT_EQ(RuleOf(PanelControl::chkHidden).redraw, PanelRedraw::None);
  EXPECT_EQ(RuleOf(PanelControl::txtImage).redraw, PanelRedraw::InPlace);
  EXPECT_EQ(RuleOf(PanelControl::chkTransparent).redraw, PanelRedraw::InPlace);
  EXPECT_EQ(RuleOf(PanelControl::txtX).redraw, PanelRedraw::Move);
}

TEST(PanelWritePath, ColoursChecksAndListIndexesReachTheirFields) {
  TestEnv t;
  Project p = MakeButtons(t, 1);
  p.sState = "DOWN";
  WritePanelValue(p, {1}, PanelControl::picFontColor, "255");
  WritePanelValue(p, {1}, PanelControl::picBackColor, "65280");
  WritePanelValue(p, {1}, PanelControl::picBorderColor, "16711680");
  WritePanelValue(p, {1}, PanelControl::cmbBorderStyle, "4");
  WritePanelValue(p, {1}, PanelControl::chkBorderAutoColor, "0");
  WritePanelValue(p, {1}, PanelControl::chkTransparent, "1");
  WritePanelValue(p, {1}, PanelControl::cmbImgStyle, "2");
  WritePanelValue(p, {1}, PanelControl::imgItalic, "3");
  WritePanelValue(p, {1}, PanelControl::chkPositionText, "1");
  WritePanelValue(p, {1}, PanelControl::txtLabelPosX, "12");
  WritePanelValue(p, {1}, PanelControl::txtImage, " /pics/a.gif ");
  WritePanelValue(p, {1}, PanelControl::chkSoundLoop, "1");
  const tButton& b = p.button(1);
  EXPECT_EQ(b.FontColor[3], 255);
  EXPECT_EQ(b.BackColor[3], 65280);
  EXPECT_EQ(b.BorderColor[3], 16711680);
  EXPECT_EQ(b.BorderStyle[3], 4);
  EXPECT_FALSE(b.BorderAutoColor[3]);
  EXPECT_TRUE(b.BorderAutoColor[1]);
  EXPECT_TRUE(b.noBackGround[3]);
  EXPECT_FALSE(b.noBackGround[1]);
  EXPECT_EQ(b.ImgStyle[3], 2);
  EXPECT_EQ(b.FontStyle[3], 3);
  EXPECT_TRUE(b.PositionText[3]);
  EXPECT_EQ(b.LabelPosX[3], 12);
  EXPECT_EQ(b.Image[3], "/pics/a.gif");
  EXPECT_TRUE(b.SoundLoop[3]);
}

TEST(PanelWritePath, AStateNameThatIsNoStateWritesNoPerStateField) {
  TestEnv t;
  Project p = MakeButtons(t, 1);
  p.sState = "up";
  WriteOutcome w = WritePanelValue(p, {1}, PanelControl::txtLabel, "Z");
  EXPECT_TRUE(w.written.empty());
  for (int s = 1; s <= 3; ++s) EXPECT_EQ(p.button(1).Label[s], "Button 1");
  WritePanelValue(p, {1}, PanelControl::txtTip, "tip");
  EXPECT_EQ(p.button(1).Tip, "tip");
}

TEST(PanelWritePath, RowsBeyondTheButtonCountAreLeftAlone) {
  TestEnv t;
  Project p = MakeButtons(t, 2);
  WriteOutcome w = WritePanelValue(p, {2, 3, 0}, PanelControl::txtLabel, "Q");
  EXPECT_EQ(w.written, (std::vector<int>{2}));
  EXPECT_EQ(p.button(3).Label[1], "");
}

TEST(FontStyle, NumberOfTheTwoFlagsAndBack) {
  EXPECT_EQ(FontStyleOf(false, false), 0);
  EXPECT_EQ(FontStyleOf(true, false), 1);
  EXPECT_EQ(FontStyleOf(false, true), 2);
  EXPECT_EQ(FontStyleOf(true, true), 3);
  EXPECT_TRUE(IsBoldStyle(3));
  EXPECT_FALSE(IsBoldStyle(2));
  EXPECT_TRUE(IsItalicStyle(2));
  EXPECT_FALSE(IsItalicStyle(1));
}

TEST(PanelNameWarnings, JavaScriptLinkRaisesNoWarningButABlankInALinkDoes) {
  TestEnv t;
  CheckPanelName(t.env, PanelControl::txtURL, "javascript:alert(1)");
  CheckPanelName(t.env, PanelControl::txtURL, "javascript:alert('a b')");
  EXPECT_TRUE(t.prompter.shown.empty());
  CheckPanelName(t.env, PanelControl::txtURL, "a b.htm");
  ASSERT_EQ(t.prompter.shown.size(), 1u);
  EXPECT_EQ(t.prompter.Last().title, "Warning! Strange chars...");
  EXPECT_EQ(t.prompter.Last().text,
            "This file name contains spaces!\r\nMost web servers do not support such file "
            "names.\r\nPlease consider to rename your file.");
}

TEST(PanelNameWarnings, TheLinkIsTestedWholeAndForBackslashes) {
  TestEnv t;
  CheckPanelName(t.env, PanelControl::txtURL, "my pages/index.htm");
  CheckPanelName(t.env, PanelControl::txtURL, "pages\\index.htm");
  ASSERT_EQ(t.prompter.shown.size(), 2u);
  EXPECT_EQ(t.prompter.shown[1].text,
            "This file name contains backlash!\r\nUnlike Windows most web servers use '/' "
            "instead of '\\' .\r\nPlease consider to correct your file path.");
}

TEST(PanelNameWarnings, ImageAndSoundTestTheFileNamePartWithoutTheBackslashTest) {
  TestEnv t;
  CheckPanelName(t.env, PanelControl::txtImage, "/my pics/a.gif");
  CheckPanelName(t.env, PanelControl::txtImage, "C:\\pics\\a.gif");
  CheckPanelName(t.env, PanelControl::txtSound, "C:\\snd\\click.au");
  EXPECT_TRUE(t.prompter.shown.empty());
  CheckPanelName(t.env, PanelControl::txtSound, "/snd/my click.au");
  ASSERT_EQ(t.prompter.shown.size(), 1u);
  EXPECT_EQ(t.prompter.Last().text.substr(0, 31), "This file name contains spaces!");
}

TEST(PanelNameWarnings, TargetWithADotGivesTheFrameNameAdvice) {
  TestEnv t;
  CheckPanelName(t.env, PanelControl::lsTarget, "main.htm");
  ASSERT_EQ(t.prompter.shown.size(), 1u);
  EXPECT_EQ(t.prompter.Last().text,
            "Dots, comas and other special chars are illigal in Target name.\r\nYou should "
            "input the name of the frame here not the file name.\r\nName of the frame can be "
            "found in your HTML page, it should look like: <frame name=\"main\"...");
}

TEST(PanelNameWarnings, AWarningSwitchedOffStaysOff) {
  TestEnv t;
  t.store.data[kSecParams]["Warn_Space_in_FileName"] = "0";
  CheckPanelName(t.env, PanelControl::txtURL, "a b.htm");
  EXPECT_TRUE(t.prompter.shown.empty());
}

TEST(InitiallyPressed, TheBoxGivesTheShownButtonOrNone) {
  TestEnv t;
  Project p = MakeButtons(t, 3);
  p.iCurBtn = 2;
  SetDOWNBtn(p, true);
  EXPECT_EQ(p.DOWNBtn, 2);
  EXPECT_FALSE(p.bProjectSaved);
  SetDOWNBtn(p, false);
  EXPECT_EQ(p.DOWNBtn, 0);
}

TEST(PanelCaptions, DeleteEntryAndFrameNameTheButton) {
  EXPECT_EQ(DeleteCaption("Delete", "Button 3"), "Delete Button 3");
  EXPECT_EQ(PropertiesCaption("Properties for ", "Home"), "Properties for Home");
}

}  // namespace
}  // namespace kp::test
