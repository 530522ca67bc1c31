// Adding, duplicating, deleting, naming, the button clipboard, the default
// button, stacking and the Edit menu's state, on the model.
#include <gtest/gtest.h>

#include "core/conv.h"
#include "core/settings.h"
#include "project/button_record.h"
#include "properties/button_list_model.h"
#include "tests/support/test_env.h"

namespace kp::test {
namespace {

struct ListFixture {
  TestEnv t;
  Project p;
  NextPlacement next;
  ListFixture() { SetDefaultMainParams(p); }
  ListResult Add(PlacementGaps gaps = {}) { return AddButton(p, t.env, next, gaps); }
  // n buttons through the add command, answering OK at the warning.
  void AddMany(int n) {
    for (int i = 0; i < n; ++i) ASSERT_EQ(Add(), ListResult::Done);
  }
};

TEST(AddButton, TheFirstButtonOfAnEmptyAppletLiesAt10And10) {
  ListFixture f;
  EXPECT_EQ(f.Add(), ListResult::Done);
  EXPECT_EQ(f.p.ButtonCount, 1);
  EXPECT_EQ(f.p.iCurBtn, 1);
  EXPECT_EQ(f.p.button(1).x, 10);
  EXPECT_EQ(f.p.button(1).y, 10);
  EXPECT_EQ(f.p.button(1).sBName, "Button 1");
  EXPECT_FALSE(f.p.bProjectSaved);
}

TEST(AddButton, ANewButtonGoesBelowThePreviousWithATwoPixelGap) {
  ListFixture f;
  f.AddMany(2);
  EXPECT_EQ(f.p.button(2).x, 10);
  EXPECT_EQ(f.p.button(2).y, 10 + 40 + 2);
  EXPECT_EQ(f.p.button(2).sBName, "Button 2");
}

TEST(AddButton, WithGridAlignmentTheGapIsTheGridStep) {
  ListFixture f;
  f.AddMany(1);
  ASSERT_EQ(f.Add(GapsFor(true, 8, 15)), ListResult::Done);
  EXPECT_EQ(f.p.button(2).y, 10 + 40 + 15);
  EXPECT_EQ(GapsFor(false, 8, 15).x, 2);
  EXPECT_EQ(GapsFor(false, 8, 15).y, 2);
}

TEST(AddButton, AtTheBottomANewColumnStartsLevelWithTheTopmostButton) {
  ListFixture f;  // applet 420 x 180
  f.AddMany(4);   // y 10, 52, 94, 136; the next would end at 178 + 40 > 180
  EXPECT_EQ(f.p.button(4).y, 136);
  f.p.button(1).y = 6;
  ASSERT_EQ(f.Add(), ListResult::Done);
  EXPECT_EQ(f.p.button(5).y, 6);
  EXPECT_EQ(f.p.button(5).x, 10 + 100 + 2);
}

TEST(AddButton, BeyondTheRightEdgeTheNewColumnStartsAtX10) {
  ListFixture f;
  f.AddMany(1);
  f.p.button(1).x = 330;  // 330 + 100 + 2 + 100 > 420
  f.p.button(1).y = 150;  // 150 + 40 + 2 + 40 > 180
  ASSERT_EQ(f.Add(), ListResult::Done);
  EXPECT_EQ(f.p.button(2).x, 10);
  EXPECT_EQ(f.p.button(2).y, 150);
}

TEST(AddButton, APreviousButtonAtTheEdgeGivesTheDefaultPlace) {
  ListFixture f;
  f.AddMany(1);
  f.p.button(1).x = 0;
  f.p.button(1).y = 60;
  ASSERT_EQ(f.Add(), ListResult::Done);
  EXPECT_EQ(f.p.button(2).x, 10);
  EXPECT_EQ(f.p.button(2).y, 10);
}

TEST(AddButton, ThePopUpPlaceIsTakenRoundedAndUsedUp) {
  ListFixture f;
  f.AddMany(1);
  f.next = {50.5f, 61.5f};
  ASSERT_EQ(f.Add(), ListResult::Done);
  EXPECT_EQ(f.p.button(2).x, 50);  // half to even
  EXPECT_EQ(f.p.button(2).y, 62);
  EXPECT_EQ(f.next.x, 0);
  EXPECT_EQ(f.next.y, 0);
  ASSERT_EQ(f.Add(), ListResult::Done);
  EXPECT_EQ(f.p.button(3).x, 50);
  EXPECT_EQ(f.p.button(3).y, 62 + 40 + 2);
}

TEST(AddButton, The102ndButtonRaisesTheWarningOnceAndThe103rdDoesNot) {
  ListFixture f;
  f.AddMany(101);
  EXPECT_TRUE(f.t.prompter.shown.empty());
  ASSERT_EQ(f.Add(), ListResult::Done);
  ASSERT_EQ(f.t.prompter.shown.size(), 1u);
  EXPECT_EQ(f.t.prompter.Last().title, "Warning!");
  EXPECT_EQ(f.t.prompter.Last().buttons, Buttons::OKCancelDefaultCancel);
  EXPECT_EQ(f.t.prompter.Last().text,
            "Warning! Creation of more then 100 buttons requires a lot of RAM!\r\n\r\nIf you "
            "still need more buttons either use several applets (button projects)\r\nand put "
            "then into a single HTML file,\r\nor make sure you have enough available "
            "memory.\r\n\r\nPlease save your project frequently to avoid possible data "
            "loss!\r\n\r\nClick OK to create more buttons, or Cancel to stop.");
  ASSERT_EQ(f.Add(), ListResult::Done);
  EXPECT_EQ(f.t.prompter.shown.size(), 1u);
  EXPECT_EQ(f.p.ButtonCount, 103);
}

TEST(AddButton, CancelAtTheWarningChangesNothing) {
  ListFixture f;
  f.AddMany(101);
  f.p.iCurBtn = 5;
  f.p.bProjectSaved = true;
  f.t.prompter.answers = {Answer::Cancel};
  EXPECT_EQ(f.Add(), ListResult::Cancelled);
  EXPECT_EQ(f.p.ButtonCount, 101);
  EXPECT_EQ(f.p.iCurBtn, 5);
  EXPECT_TRUE(f.p.bProjectSaved);
  f.t.prompter.answers = {Answer::Cancel};
  EXPECT_EQ(DuplicateButton(f.p, f.t.env), ListResult::Cancelled);
  EXPECT_EQ(f.p.ButtonCount, 101);
}

TEST(AddButton, With1001ButtonsTheTwoLineRefusalShowsAndTheCountStays) {
  ListFixture f;
  f.p.ButtonCount = 1001;
  f.p.iCurBtn = 1001;
  EXPECT_EQ(f.Add(), ListResult::Refused);
  EXPECT_EQ(f.p.ButtonCount, 1001);
  ASSERT_EQ(f.t.prompter.shown.size(), 1u);
  EXPECT_EQ(f.t.prompter.Last().text,
            "Can't create more buttons on one applet.\r\nYou may use two applets and put them on "
            "one page instead.");
  EXPECT_EQ(DuplicateButton(f.p, f.t.env), ListResult::Refused);
  EXPECT_EQ(f.p.ButtonCount, 1001);
}

TEST(DuplicateButton, ACopyOfAButtonAtX0LandsAt10And10) {
  ListFixture f;
  f.AddMany(1);
  f.p.button(1).x = 0;
  f.p.button(1).y = 30;
  f.p.button(1).Label[2] = "copied";
  f.p.button(1).ProgramUP = "1 Button&!01;";
  ASSERT_EQ(DuplicateButton(f.p, f.t.env), ListResult::Done);
  EXPECT_EQ(f.p.ButtonCount, 2);
  EXPECT_EQ(f.p.iCurBtn, 2);
  EXPECT_EQ(f.p.button(2).x, 10);
  EXPECT_EQ(f.p.button(2).y, 10);
  EXPECT_EQ(f.p.button(2).Label[2], "copied");
  EXPECT_EQ(f.p.button(2).ProgramUP, "1 Button&!01;");  // still names the source
  EXPECT_EQ(f.p.button(2).sBName, "Button 2");
}

TEST(DuplicateButton, ACopyMovesFivePixelsUnlessItWouldLeaveTheApplet) {
  ListFixture f;
  f.AddMany(1);
  f.p.button(1).x = 20;
  f.p.button(1).y = 30;
  ASSERT_EQ(DuplicateButton(f.p, f.t.env), ListResult::Done);
  EXPECT_EQ(f.p.button(2).x, 25);
  EXPECT_EQ(f.p.button(2).y, 35);
  EXPECT_EQ(DuplicatePlacement(f.p, 370, 30).x, 10);  // 370 + 50 >= 420
  EXPECT_EQ(DuplicatePlacement(f.p, 20, 130).y, 10);  // 130 + 50 >= 180
  EXPECT_EQ(DuplicatePlacement(f.p, 20, -1).x, 10);
}

TEST(FreeName, NamesButton1AndButton3InUseGiveButton2) {
  ListFixture f;
  f.AddMany(2);
  f.p.button(2).sBName = "Button 3";
  EXPECT_EQ(Get_FREE_sBName(f.p, 0), "Button 2");
  ASSERT_EQ(f.Add(), ListResult::Done);
  EXPECT_EQ(f.p.button(3).sBName, "Button 2");
}

TEST(RemoveButton, RecordsAboveMoveDownAndTheFirstBecomesCurrent) {
  ListFixture f;
  f.AddMany(3);
  f.p.iCurBtn = 2;
  f.p.DOWNBtn = 3;
  f.p.bProjectSaved = true;
  ASSERT_TRUE(RemoveCurrentButton(f.p));
  EXPECT_EQ(f.p.ButtonCount, 2);
  EXPECT_EQ(f.p.iCurBtn, 1);
  EXPECT_EQ(f.p.button(1).sBName, "Button 1");
  EXPECT_EQ(f.p.button(2).sBName, "Button 3");
  EXPECT_EQ(f.p.DOWNBtn, 3);  // not adjusted
  EXPECT_FALSE(f.p.bProjectSaved);
}

TEST(RemoveButton, NothingHappensWithoutACurrentButton) {
  ListFixture f;
  f.AddMany(1);
  f.p.iCurBtn = 0;
  EXPECT_FALSE(RemoveCurrentButton(f.p));
  EXPECT_EQ(f.p.ButtonCount, 1);
  f.p.iCurBtn = 1;
  EXPECT_TRUE(RemoveCurrentButton(f.p));
  EXPECT_EQ(f.p.ButtonCount, 0);
  EXPECT_FALSE(RemoveCurrentButton(f.p));
}

TEST(ButtonNames, TheTrimmedNameGoesToEverySelectedButton) {
  ListFixture f;
  f.AddMany(3);
  f.p.bProjectSaved = true;
  EXPECT_EQ(SetButtonNames(f.p, {1, 3}, "  Home "), "Home");
  EXPECT_EQ(f.p.button(1).sBName, "Home");
  EXPECT_EQ(f.p.button(3).sBName, "Home");  // uniqueness is not enforced
  EXPECT_EQ(f.p.button(2).sBName, "Button 2");
  EXPECT_FALSE(f.p.bProjectSaved);
}

TEST(ButtonClipboard, PasteNeverOverwritesTheCurrentButtonItAlwaysAddsOne) {
  ListFixture f;
  f.AddMany(2);
  f.p.iCurBtn = 1;
  f.p.button(1).Label[1] = "source|label";
  ASSERT_TRUE(CopyButton(f.p, f.t.env));
  f.p.iCurBtn = 2;
  f.p.button(2).Label[1] = "keep me";
  ASSERT_EQ(f.Add(), ListResult::Done);
  ASSERT_TRUE(PasteOverCurrent(f.p, f.t.env));
  EXPECT_EQ(f.p.ButtonCount, 3);
  EXPECT_EQ(f.p.button(2).Label[1], "keep me");
  EXPECT_EQ(f.p.button(3).Label[1], "source|label");
  EXPECT_EQ(f.p.button(3).sBName, "Button 3");
  EXPECT_EQ(f.p.button(3).x, 10);  // the add's place, not the copy's
  EXPECT_EQ(f.p.button(3).y, 10 + 2 * 42);
}

TEST(ButtonClipboard, PasteWithNothingStoredLeavesTheAddedDefaultButton) {
  ListFixture f;
  f.AddMany(1);
  ASSERT_EQ(f.Add(), ListResult::Done);
  const tButton before = f.p.button(2);
  ASSERT_TRUE(PasteOverCurrent(f.p, f.t.env));
  EXPECT_EQ(f.p.button(2), before);
}

TEST(ButtonClipboard, TheCopyIsKeptInTheSettingsUnderBuffer) {
  ListFixture f;
  f.AddMany(1);
  ASSERT_TRUE(CopyButton(f.p, f.t.env));
  EXPECT_EQ(f.t.store.data[kSecParams]["_buffer"], ButtonRecordText(f.p.button(1)));
}

TEST(MakeDefault, WithNoButtonTheMessageIsNothingSelected) {
  ListFixture f;
  MakeDefaultButtonFromCurrent(f.p, f.t.env);
  ASSERT_EQ(f.t.prompter.shown.size(), 1u);
  EXPECT_EQ(f.t.prompter.Last().text, "Nothing selected");
  EXPECT_EQ(f.t.store.data[kSecParams].count("sDefaultBtn"), 0u);
}

TEST(MakeDefault, TheCurrentButtonBecomesTheRecordOfNewButtons) {
  ListFixture f;
  f.AddMany(1);
  f.p.button(1).BackColor[1] = 255;
  f.p.button(1).Width = 64;
  MakeDefaultButtonFromCurrent(f.p, f.t.env);
  ASSERT_EQ(f.t.prompter.shown.size(), 1u);
  EXPECT_EQ(f.t.prompter.Last().text,
            "Properties of this button will be used to create new ones.");
  ASSERT_EQ(f.Add(), ListResult::Done);
  EXPECT_EQ(f.p.button(2).BackColor[1], 255);
  EXPECT_EQ(f.p.button(2).Width, 64);
  EXPECT_EQ(f.p.button(2).sBName, "Button 2");
}

TEST(EditMenu, EntriesFollowTheCountTheCurrentButtonAndTheSelection) {
  ListFixture f;
  EditMenuState m = EditMenuStateOf(f.p, 0, "Delete");
  EXPECT_FALSE(m.align);
  EXPECT_FALSE(m.bringToFront);
  EXPECT_FALSE(m.sendBack);
  EXPECT_FALSE(m.cutCopyDuplicate);
  EXPECT_FALSE(m.remove);
  EXPECT_EQ(m.deleteCaption, "Delete");

  f.AddMany(3);
  f.p.iCurBtn = 3;
  m = EditMenuStateOf(f.p, 1, "Delete");
  EXPECT_TRUE(m.align);
  EXPECT_FALSE(m.bringToFront);  // the last button has no neighbour above
  EXPECT_TRUE(m.sendBack);
  EXPECT_TRUE(m.cutCopyDuplicate);
  EXPECT_TRUE(m.remove);
  EXPECT_EQ(m.deleteCaption, "Delete Button 3");

  f.p.iCurBtn = 1;
  m = EditMenuStateOf(f.p, 2, "Delete");
  EXPECT_TRUE(m.bringToFront);
  EXPECT_FALSE(m.sendBack);
  EXPECT_FALSE(m.cutCopyDuplicate);  // two rows selected
  EXPECT_FALSE(m.remove);
}

}  // namespace
}  // namespace kp::test
