// The button text record kept in the settings: copy, paste, default button.
#include <gtest/gtest.h>

#include "core/conv.h"
#include "core/settings.h"
#include "project/button_record.h"
#include "tests/project/project_fixture.h"

namespace kp::test {
namespace {

TEST(ButtonRecord, NewButtonFromBuiltInRecordHasTheTableValuesAndItsFreeName) {
  TestEnv t;
  Project p = MakeProject(t, 2);
  const tButton& b = p.button(2);
  EXPECT_EQ(b.sBName, "Button 2");
  EXPECT_EQ(b.Label[1], "Button 2");
  EXPECT_EQ(b.Label[3], "Button 2");
  EXPECT_EQ(b.Width, 100);
  EXPECT_EQ(b.Height, 40);
  EXPECT_EQ(b.Target, "_self");
  EXPECT_TRUE(b.ShowHand);
  EXPECT_EQ(b.BackColor[1], 8388608);
  EXPECT_EQ(b.BackColor[2], 16711680);
  EXPECT_EQ(b.FontColor[2], 16777215);
  EXPECT_EQ(b.Font[1], "arial");
  EXPECT_EQ(b.FontStyle[3], 1);
  EXPECT_EQ(b.LabelPosX[1], 24);
  EXPECT_EQ(b.LabelPosY[1], 25);
  EXPECT_EQ(b.LabelPosX[2], 24);
  EXPECT_EQ(b.LabelPosX[3], 25);
  EXPECT_EQ(b.BorderStyle[2], 1);
  EXPECT_EQ(b.BorderStyle[3], 2);
  EXPECT_EQ(b.BorderShade[1], 25);
  EXPECT_TRUE(b.BorderAutoColor[2]);
  EXPECT_EQ(b.TFrameColor[1], 32768);
  EXPECT_EQ(b.TFrameColor[2], 8421504);
  EXPECT_EQ(b.FadeColor[1], 65535);
  EXPECT_EQ(b.FrameColor[3], 255);
  EXPECT_FALSE(b.noBackGround[1]);
  EXPECT_FALSE(b.Radio);
  EXPECT_FALSE(p.bProjectSaved);
}

TEST(ButtonRecord, RecordOfADefaultButtonIsTheBuiltInTextWithItsOwnLabelsAndName) {
  TestEnv t;
  Project p = MakeProject(t, 1);
  std::string expected = ReplaceAll(kBuiltInDefaultButton, "||||||_self|",
                                    "||||||_self|");  // fields 4-6 hold the name
  expected = std::string("0|0|100|40|Button 1|Button 1|Button 1|||_self|1||1|") +
             std::string(kBuiltInDefaultButton).substr(std::string("0|0|100|40||||||_self|1||1|").size());
  expected = ReplaceAll(expected, "|UnNamed|", "|Button&!01|");
  EXPECT_EQ(ButtonRecordText(p.button(1)), expected);
}

TEST(ButtonRecord, PastingKeepsThePositionTheAddCommandGave) {
  TestEnv t;
  Project p = MakeProject(t, 2);
  p.button(1).x = 1;
  p.button(1).y = 2;
  p.button(1).Width = 55;
  WriteToREgistry(p, t.env, 1, "_buffer");
  p.button(2).x = 50;
  p.button(2).y = 60;
  EXPECT_EQ(MakeDefaultButton(p, t.env, 2, false, "_buffer"), RecordResult::Applied);
  EXPECT_EQ(p.button(2).x, 50);
  EXPECT_EQ(p.button(2).y, 60);
  EXPECT_EQ(p.button(2).Width, 55);
  EXPECT_EQ(p.button(2).sBName, "Button 2");
}

TEST(ButtonRecord, PasteWithNothingCopiedLeavesTheNewButtonAsAdded) {
  TestEnv t;
  Project p = MakeProject(t, 1);
  tButton before = p.button(1);
  EXPECT_EQ(MakeDefaultButton(p, t.env, 1, false, "_buffer"), RecordResult::NothingStored);
  EXPECT_EQ(p.button(1), before);
  EXPECT_EQ(t.prompter.CountMsg(), 0);
}

TEST(ButtonRecord, EmptyDefaultRecordAppliesNothingAndLeavesTheTargetUnchanged) {
  TestEnv t;
  Project p = MakeProject(t, 1);
  p.button(1).sBName = "Keep";
  tButton before = p.button(1);
  t.store.Set(kSecParams, "sDefaultBtn", "");
  EXPECT_EQ(MakeDefaultButton(p, t.env, 1, false, ""), RecordResult::Applied);
  EXPECT_EQ(p.button(1), before);
  t.store.Set(kSecParams, "sDefaultBtn", "no separators here");
  EXPECT_EQ(MakeDefaultButton(p, t.env, 1, true, ""), RecordResult::Applied);
  EXPECT_EQ(p.button(1), before);
}

TEST(ButtonRecord, LabelWithBarIsStoredEscapedAndPastedBack) {
  TestEnv t;
  Project p = MakeProject(t, 2);
  p.button(1).Label[2] = "a|b";
  WriteToREgistry(p, t.env, 1, "_buffer");
  EXPECT_NE(t.store.Get(kSecParams, "_buffer")->find("|a&!3b|"), std::string::npos);
  MakeDefaultButton(p, t.env, 2, false, "_buffer");
  EXPECT_EQ(p.button(2).Label[2], "a|b");
}

TEST(ButtonRecord, TargetWithBarStaysEscapedAfterCopyAndPaste) {
  TestEnv t;
  Project p = MakeProject(t, 2);
  p.button(1).Target = "x|y";
  WriteToREgistry(p, t.env, 1, "_buffer");
  MakeDefaultButton(p, t.env, 2, false, "_buffer");
  EXPECT_EQ(p.button(2).Target, "x&!3y");
}

TEST(ButtonRecord, UnparsableNumberTriggersTheRestoreNotADefault) {
  TestEnv t;
  Project p = MakeProject(t, 1);
  std::string damaged = ReplaceAll(kBuiltInDefaultButton, "0|0|100|", "0|0|abc|");
  t.store.Set(kSecParams, "sDefaultBtn", damaged);
  EXPECT_EQ(MakeDefaultButton(p, t.env, 1, false, ""), RecordResult::ProcessEnds);
  ASSERT_EQ(t.prompter.CountMsg(), 2);
  EXPECT_EQ(t.prompter.shown[0].text,
            "Registry settings are currupted. Program will try to restore previous settings.");
  EXPECT_EQ(t.prompter.shown[1].text, "Settings restored. Please restart the program.");
  EXPECT_EQ(*t.store.Get(kSecParams, "sDefaultBtn"), kBuiltInDefaultButton);
}

TEST(ButtonRecord, DamagedNumberPastField99FallsBackInstead) {
  TestEnv t;
  Project p = MakeProject(t, 1);
  std::string rec = ButtonRecordText(p.button(1));
  t.store.Set(kSecParams, "sDefaultBtn", WithField(rec, 100, "zz"));
  EXPECT_EQ(MakeDefaultButton(p, t.env, 1, false, ""), RecordResult::Applied);
  EXPECT_EQ(p.button(1).ImgX[1], 0);
}

TEST(ButtonRecord, TransparencyIsWrittenAsDigitsOnlyAndReadBack) {
  TestEnv t;
  Project p = MakeProject(t, 2);
  p.button(1).noBackGround[1] = true;
  p.button(1).noBackGround[3] = true;
  std::string rec = ButtonRecordText(p.button(1));
  EXPECT_EQ(FieldOf(rec, 11), "13");
  EXPECT_EQ(FieldOf(rec, 10), "1");
  WriteToREgistry(p, t.env, 1, "_buffer");
  MakeDefaultButton(p, t.env, 2, false, "_buffer");
  EXPECT_TRUE(p.button(2).noBackGround[1]);
  EXPECT_FALSE(p.button(2).noBackGround[2]);
  EXPECT_TRUE(p.button(2).noBackGround[3]);
}

TEST(ButtonRecord, FilesAreKeptAsFullPathsInTheRecord) {
  TestEnv t;
  Project p = MakeProject(t, 1);
  p.button(1).Image[1] = "/pics/a b.gif";
  EXPECT_EQ(FieldOf(ButtonRecordText(p.button(1)), 13), "/pics/a b.gif");
}

TEST(ButtonRecord, MakeDefaultButtonStoresTheCurrentButtonForNewOnes) {
  TestEnv t;
  Project p = MakeProject(t, 1);
  p.button(1).BackColor[1] = 123;
  p.button(1).Label[1] = "Mine";
  ASSERT_TRUE(WriteToREgistry(p, t.env, 1, ""));
  AddNewButton(p, t.env);
  EXPECT_EQ(p.button(2).BackColor[1], 123);
  // A stored record keeps its own labels; only the built-in one names them.
  EXPECT_EQ(p.button(2).Label[1], "Mine");
  EXPECT_EQ(p.button(2).sBName, "Button 2");
}

TEST(ButtonRecord, FailedWriteShowsTheRoutineAndButtonNumber) {
  TestEnv t;
  Project p = MakeProject(t, 1);
  t.store.failWrites = true;
  EXPECT_FALSE(WriteToREgistry(p, t.env, 1, "_buffer"));
  EXPECT_TRUE(StartsWith(t.prompter.Last().text, "Error on WriteToREgistry(1)"));
}

TEST(ButtonModel, AddRefusesAt1001ButtonsAndTheCountNeverReaches1002) {
  TestEnv t;
  Project p = MakeProject(t, 0);
  for (int i = 0; i < kMaxButtons; ++i) ASSERT_GT(AddNewButton(p, t.env), 0);
  EXPECT_EQ(p.ButtonCount, 1001);
  EXPECT_EQ(AddNewButton(p, t.env), 0);
  EXPECT_EQ(p.ButtonCount, 1001);
  EXPECT_EQ(t.prompter.Last().text,
            "Can't create more buttons on one applet.\r\nYou may use two applets and put them on "
            "one page instead.");
}

TEST(ButtonModel, FreeNameSkipsNamesInUseButNotTheButtonsOwn) {
  TestEnv t;
  Project p = MakeProject(t, 3);
  p.button(1).sBName = "Button 2";
  p.button(2).sBName = "Button 1";
  EXPECT_EQ(Get_FREE_sBName(p, 3), "Button 3");
  p.button(3).sBName = "Button 3";
  EXPECT_EQ(Get_FREE_sBName(p, 3), "Button 3");
  EXPECT_EQ(Get_FREE_sBName(p, 0), "Button 4");
}

}  // namespace
}  // namespace kp::test
