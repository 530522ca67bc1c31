#include <gtest/gtest.h>

#include "core/edit_history.h"
#include "core/model.h"

namespace kp {
namespace {

// A small project: n buttons named and placed apart.
Project Sample(int n) {
  Project p;
  SetDefaultMainParams(p);
  for (int i = 1; i <= n; ++i) {
    tButton& b = p.button(i);
    b.sBName = "Button " + std::to_string(i);
    b.x = static_cast<i16>(10 * i);
    b.y = 5;
    b.Width = 40;
    b.Height = 20;
    b.Label = {{"up", "over", "down"}};
  }
  p.ButtonCount = static_cast<i16>(n);
  p.iCurBtn = 1;
  return p;
}

TEST(EditHistory, NothingChangedRecordsNoStep) {
  Project p = Sample(3);
  EditHistory h;
  h.Reset(p);
  EXPECT_FALSE(h.Commit(p, "Nothing"));
  EXPECT_FALSE(h.CanUndo());
  EXPECT_EQ(h.UndoName(), "");
}

TEST(EditHistory, UndoAndRedoOfAMoveRestoreBothSides) {
  Project p = Sample(3);
  const Project original = p;
  EditHistory h;
  h.Reset(p);
  p.button(2).x = 77;
  p.button(3).y = 9;
  p.bProjectSaved = false;
  ASSERT_TRUE(h.Commit(p));
  EXPECT_EQ(h.UndoName(), "Move 2 Buttons");
  const Project moved = p;

  HistoryChange c = h.Undo(p);
  EXPECT_TRUE(c.done);
  EXPECT_EQ(c.buttons, (std::vector<int>{2, 3}));
  EXPECT_FALSE(c.applet);
  EXPECT_EQ(p.Btn, original.Btn);
  EXPECT_TRUE(p.bProjectSaved);
  EXPECT_EQ(h.RedoName(), "Move 2 Buttons");

  h.Redo(p);
  EXPECT_EQ(p.Btn, moved.Btn);
  EXPECT_FALSE(p.bProjectSaved);
}

TEST(EditHistory, StepsAreNamedAfterWhatChanged) {
  Project p = Sample(2);
  EditHistory h;
  h.Reset(p);
  p.button(1).Width = 50;
  h.Commit(p);
  EXPECT_EQ(h.UndoName(), "Resize Button");
  p.button(1).sBName = "Home";
  h.Commit(p);
  EXPECT_EQ(h.UndoName(), "Rename Button");
  p.button(2).FontColor[2] = 255;
  h.Commit(p);
  EXPECT_EQ(h.UndoName(), "Change Button");
  p.button(3).sBName = "Button 3";
  p.ButtonCount = 3;
  h.Commit(p);
  EXPECT_EQ(h.UndoName(), "Add Button");
  p.ButtonCount = 1;
  h.Commit(p);
  EXPECT_EQ(h.UndoName(), "Delete 2 Buttons");
  p.sHTMLbefore = "<html>";
  h.Commit(p);
  EXPECT_EQ(h.UndoName(), "Change Page Blocks");
  p.AppletWidth = 300;
  h.Commit(p);
  EXPECT_EQ(h.UndoName(), "Resize Applet");
  p.bClip = !p.bClip;
  h.Commit(p);
  EXPECT_EQ(h.UndoName(), "Change Applet Options");
  p.AppletProgramStart = "1 x";
  h.Commit(p, "Own Name");
  EXPECT_EQ(h.UndoName(), "Own Name");
}

TEST(EditHistory, EveryKindOfFieldComesBack) {
  Project p = Sample(2);
  const Project original = p;
  EditHistory h;
  h.Reset(p);
  tButton& b = p.button(2);
  b.Label[3] = "a much longer label than fits in a short string buffer";
  b.PositionText[2] = true;
  b.BackColor[1] = RGB(1, 2, 3);
  b.Radio = true;
  b.ShowHand = true;
  b.ProgramCHECK = "5 Button&!01";
  b.ImgY[3] = -4;
  p.sHTMLafter = "</body>";
  p.iTipDelay = 999;
  p.cTipTextColor = RGB(200, 100, 50);
  p.bPreLoad = !p.bPreLoad;
  ASSERT_TRUE(h.Commit(p));
  const Project changed = p;
  HistoryChange c = h.Undo(p);
  EXPECT_TRUE(c.applet);
  EXPECT_EQ(p.button(2), original.button(2));
  EXPECT_EQ(p.sHTMLafter, original.sHTMLafter);
  EXPECT_EQ(p.iTipDelay, original.iTipDelay);
  EXPECT_EQ(p.cTipTextColor, original.cTipTextColor);
  EXPECT_EQ(p.bPreLoad, original.bPreLoad);
  h.Redo(p);
  EXPECT_EQ(p.button(2), changed.button(2));
  EXPECT_EQ(p.sHTMLafter, "</body>");
  EXPECT_EQ(p.iTipDelay, 999);
  EXPECT_EQ(p.bPreLoad, changed.bPreLoad);
}

TEST(EditHistory, DeleteAndOrderComeBackWithTheCount) {
  Project p = Sample(3);
  const Project original = p;
  EditHistory h;
  h.Reset(p);
  // Delete button 1: the records move down one.
  p.button(1) = p.button(2);
  p.button(2) = p.button(3);
  p.ButtonCount = 2;
  h.Commit(p);
  HistoryChange c = h.Undo(p);
  EXPECT_EQ(c.countBefore, 2);
  EXPECT_EQ(c.countAfter, 3);
  EXPECT_EQ(p.ButtonCount, 3);
  for (int i = 1; i <= 3; ++i) EXPECT_EQ(p.button(i), original.button(i)) << i;
}

TEST(EditHistory, ANewChangeAfterUndoDropsTheRedoSteps) {
  Project p = Sample(2);
  EditHistory h;
  h.Reset(p);
  p.button(1).x = 1;
  h.Commit(p);
  p.button(1).x = 2;
  h.Commit(p);
  h.Undo(p);
  ASSERT_TRUE(h.CanRedo());
  p.button(2).y = 50;
  h.Commit(p);
  EXPECT_FALSE(h.CanRedo());
  EXPECT_EQ(h.StepCount(), 2u);
  h.Undo(p);
  h.Undo(p);
  EXPECT_EQ(p.button(1).x, 10);
  EXPECT_EQ(p.button(2).y, 5);
}

TEST(EditHistory, SavedStateFollowsTheCursor) {
  Project p = Sample(2);
  EditHistory h;
  h.Reset(p);
  p.button(1).x = 1;
  h.Commit(p);
  h.MarkSaved(p);
  p.bProjectSaved = true;
  p.button(1).x = 2;
  p.bProjectSaved = false;
  h.Commit(p);
  EXPECT_FALSE(h.AtSaved());
  h.Undo(p);
  EXPECT_TRUE(p.bProjectSaved);
  h.Undo(p);
  EXPECT_FALSE(p.bProjectSaved);
  // A new change here makes the saved state unreachable.
  p.button(2).x = 3;
  h.Commit(p);
  h.Undo(p);
  EXPECT_FALSE(p.bProjectSaved);
}

TEST(EditHistory, PendingChangesBecomeAStepBeforeUndo) {
  Project p = Sample(1);
  EditHistory h;
  h.Reset(p);
  p.button(1).Tip = "typed";
  h.Undo(p);
  EXPECT_EQ(p.button(1).Tip, "");
  EXPECT_TRUE(h.CanRedo());
  h.Redo(p);
  EXPECT_EQ(p.button(1).Tip, "typed");
}

TEST(EditHistory, KeepsTheLimitDroppingTheOldest) {
  Project p = Sample(1);
  EditHistory h(200);
  h.Reset(p);
  for (int k = 1; k <= 250; ++k) {
    p.button(1).x = static_cast<i16>(k);
    ASSERT_TRUE(h.Commit(p));
  }
  EXPECT_EQ(h.StepCount(), 200u);
  int undone = 0;
  while (h.CanUndo()) {
    h.Undo(p);
    ++undone;
  }
  EXPECT_EQ(undone, 200);
  EXPECT_EQ(p.button(1).x, 50);
  // The saved state (before step 1) fell off the front.
  EXPECT_FALSE(p.bProjectSaved);
}

TEST(EditHistory, CurrentButtonGoesBackWithTheStep) {
  Project p = Sample(3);
  EditHistory h;
  h.Reset(p);
  p.iCurBtn = 3;
  p.button(3).x = 99;
  h.Commit(p);
  h.Undo(p);
  EXPECT_EQ(p.iCurBtn, 1);
  h.Redo(p);
  EXPECT_EQ(p.iCurBtn, 3);
}

TEST(EditHistory, StepsHoldOnlyWhatChanged) {
  Project p = Sample(1001);
  EditHistory h;
  h.Reset(p);
  for (int k = 0; k < 200; ++k) {
    p.button(1 + k % 1001).x = static_cast<i16>(k + 500);
    h.Commit(p);
  }
  EXPECT_EQ(h.StepCount(), 200u);
  // Two numbers a step, far below a copy of one button record each.
  EXPECT_LT(h.StepBytes(), 200u * 400u);
  EXPECT_LT(h.MemoryBytes(), 50u * 1024u * 1024u);
}

TEST(EditHistory, WhatARedrawWritesBackIsNoStep) {
  Project p = Sample(2);
  EditHistory h;
  h.Reset(p);
  p.button(1).Label[1] = "longer";
  h.Commit(p);
  h.Undo(p);
  // The redraw centres the label again.
  p.button(1).LabelPosX[1] = 7;
  h.Absorb(p);
  EXPECT_FALSE(h.Commit(p));
  EXPECT_TRUE(h.CanRedo());
  h.Redo(p);
  EXPECT_EQ(p.button(1).Label[1], "longer");
}

TEST(EditHistory, SelectionGoesBackWithTheStep) {
  Project p = Sample(3);
  EditHistory h;
  h.Reset(p);
  h.Commit(p, {}, {1, 3});
  p.button(1).x = 1;
  p.button(3).x = 2;
  h.Commit(p, {}, {2});
  HistoryChange c = h.Undo(p);
  EXPECT_EQ(c.selection, (std::vector<int>{1, 3}));
  c = h.Redo(p);
  EXPECT_EQ(c.selection, (std::vector<int>{2}));
}

TEST(EditHistory, SlotsByNameCountThreePerState) {
  EXPECT_EQ(ButtonSlotOf("sBName"), 0);
  EXPECT_EQ(ButtonSlotOf("x"), 1);
  EXPECT_EQ(ButtonSlotOf("Label"), 5);
  EXPECT_EQ(ButtonSlotOf("PositionText"), 8);
  EXPECT_EQ(ButtonSlotOf("nothing"), -1);
  EXPECT_EQ(AppletSlotOf("AppletWidth"), 0);
}

TEST(EditHistory, WordsCountButtons) {
  EXPECT_EQ(WordFor("Move Button", "Move %1 Buttons", 1), "Move Button");
  EXPECT_EQ(WordFor("Move Button", "Move %1 Buttons", 12), "Move 12 Buttons");
}

}  // namespace
}  // namespace kp
