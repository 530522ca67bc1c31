// Copying the last panel edit to the other states of the selected buttons.
#include <gtest/gtest.h>

#include "project/button_record.h"
#include "properties/button_panel_copy.h"
#include "properties/panel_model.h"
#include "tests/support/test_env.h"

namespace kp::test {
namespace {

Project ThreeButtons(TestEnv& t) {
  Project p;
  SetDefaultMainParams(p);
  for (int i = 0; i < 3; ++i) AddNewButton(p, t.env);
  p.bProjectSaved = true;
  return p;
}

TEST(CopyToStates, WithStateOverTheCopyWritesStates1And3AndLeaves2) {
  TestEnv t;
  Project p = ThreeButtons(t);
  p.sState = "OVER";
  p.button(1).Label[2] = "as it was";
  p.iLast_Change = LastChange::Label;
  PanelControls c;
  c.txtLabel = "Next";
  ASSERT_TRUE(CopyLastChangeToStates(p, {1}, c));
  EXPECT_EQ(p.button(1).Label[1], "Next");
  EXPECT_EQ(p.button(1).Label[3], "Next");
  EXPECT_EQ(p.button(1).Label[2], "as it was");
  EXPECT_FALSE(p.bProjectSaved);
}

TEST(CopyToStates, AButtonNotSelectedAtTheTimeOfTheCopyIsLeftAlone) {
  TestEnv t;
  Project p = ThreeButtons(t);
  // The edit was made with 1 and 2 selected; only 2 is selected now.
  WritePanelValue(p, {1, 2}, PanelControl::txtLabel, "Edited");
  p.iLast_Change = LastChange::Label;
  PanelControls c;
  c.txtLabel = "Edited";
  ASSERT_TRUE(CopyLastChangeToStates(p, {2}, c));
  EXPECT_EQ(p.button(2).Label[3], "Edited");
  EXPECT_EQ(p.button(1).Label[3], "Button 1");
  EXPECT_EQ(p.button(3).Label[3], "Button 3");
}

TEST(CopyToStates, Code11OnAButtonWithAutoColourOnlyInState3ChangesBorderColorInState3Alone) {
  TestEnv t;
  Project p = ThreeButtons(t);
  tButton& b = p.button(1);
  b.BorderAutoColor[1] = false;
  b.BorderAutoColor[2] = false;
  b.BorderAutoColor[3] = true;
  b.BorderColor[1] = 111;
  b.BorderColor[2] = 222;
  b.BorderColor[3] = 333;
  p.sState = "UP";
  p.iLast_Change = LastChange::BackColor;
  PanelControls c;
  c.picBackColor = 0x00FF00;
  ASSERT_TRUE(CopyLastChangeToStates(p, {1}, c));
  EXPECT_EQ(b.BackColor[2], 0x00FF00);
  EXPECT_EQ(b.BackColor[3], 0x00FF00);
  EXPECT_EQ(b.BorderColor[2], 222);
  EXPECT_EQ(b.BorderColor[3], 0x00FF00);
  EXPECT_EQ(b.BorderColor[1], 111);
}

TEST(CopyToStates, CodeZeroDoesNothing) {
  TestEnv t;
  Project p = ThreeButtons(t);
  const tButton before = p.button(1);
  PanelControls c;
  c.txtLabel = "X";
  EXPECT_TRUE(CopyLastChangeToStates(p, {1}, c));
  EXPECT_EQ(p.button(1), before);
  EXPECT_TRUE(p.bProjectSaved);
}

TEST(CopyToStates, AutoColourTakesTheFaceColourOrThePanelsBorderColour) {
  TestEnv t;
  Project p = ThreeButtons(t);
  p.iLast_Change = LastChange::BorderAutoColor;
  PanelControls c;
  c.chkBorderAutoColor = false;
  c.picBorderColor = 4242;
  ASSERT_TRUE(CopyLastChangeToStates(p, {1}, c));
  EXPECT_FALSE(p.button(1).BorderAutoColor[2]);
  EXPECT_EQ(p.button(1).BorderColor[2], 4242);
  c.chkBorderAutoColor = true;
  ASSERT_TRUE(CopyLastChangeToStates(p, {1}, c));
  EXPECT_EQ(p.button(1).BorderColor[3], p.button(1).BackColor[3]);
}

TEST(CopyToStates, ManualTextPositionCopiesFlagAndBothNumbers) {
  TestEnv t;
  Project p = ThreeButtons(t);
  p.sState = "DOWN";
  p.iLast_Change = LastChange::PositionText;
  PanelControls c;
  c.chkPositionText = true;
  c.txtLabelPosX = " 7 ";
  c.txtLabelPosY = "8.5";
  ASSERT_TRUE(CopyLastChangeToStates(p, {2}, c));
  EXPECT_TRUE(p.button(2).PositionText[1]);
  EXPECT_EQ(p.button(2).LabelPosX[1], 7);
  EXPECT_EQ(p.button(2).LabelPosY[2], 8);  // half to even
  EXPECT_FALSE(p.button(2).PositionText[3]);
}

TEST(CopyToStates, AValueThatIsNoNumberStopsTheCopyAndKeepsWhatWasWritten) {
  TestEnv t;
  Project p = ThreeButtons(t);
  p.sState = "UP";
  p.iLast_Change = LastChange::FontSize;
  PanelControls c;
  c.lsFontSize = "large";
  EXPECT_FALSE(CopyLastChangeToStates(p, {1}, c));
  EXPECT_EQ(p.button(1).FontSize[2], 10);
}

TEST(CopyToStates, ImageOffsetCopiesBothNumbersAndTheStyle) {
  TestEnv t;
  Project p = ThreeButtons(t);
  p.iLast_Change = LastChange::ImgOffset;
  PanelControls c;
  c.txtImgX = "3";
  c.txtImgY = "-4";
  c.cmbImgStyle = 1;
  ASSERT_TRUE(CopyLastChangeToStates(p, {3}, c));
  EXPECT_EQ(p.button(3).ImgX[2], 3);
  EXPECT_EQ(p.button(3).ImgY[3], -4);
  EXPECT_EQ(p.button(3).ImgStyle[3], 1);
  EXPECT_EQ(p.button(3).ImgStyle[1], 0);
}

TEST(CopyToStates, ACodeAbove32DoesNothingToTheButtons) {
  TestEnv t;
  Project p = ThreeButtons(t);
  const tButton before = p.button(1);
  p.iLast_Change = 40;
  EXPECT_TRUE(CopyLastChangeToStates(p, {1}, PanelControls{}));
  EXPECT_EQ(p.button(1), before);
}

TEST(ControlNumber, ReadsBlanksAndFractionsButNotWords) {
  i16 v = 0;
  EXPECT_TRUE(ControlNumber(" 12 ", v));
  EXPECT_EQ(v, 12);
  EXPECT_TRUE(ControlNumber("2.5", v));
  EXPECT_EQ(v, 2);
  EXPECT_FALSE(ControlNumber("", v));
  EXPECT_FALSE(ControlNumber("1e9", v));
  EXPECT_FALSE(ControlNumber("twelve", v));
}

}  // namespace
}  // namespace kp::test
