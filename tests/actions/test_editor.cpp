#include "actions/editor.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kp {
namespace {

ActionFields Fields(int code) {
  ActionFields f;
  f.action = code - 1;
  f.button = "Home";
  return f;
}

Project TwoButtons() {
  Project p;
  p.ButtonCount = 2;
  p.button(1).sBName = "One";
  p.button(2).sBName = "Two";
  p.iCurBtn = 2;
  return p;
}

TEST(ActionEditorPanels, EachCommandShowsItsOwnFields) {
  EXPECT_TRUE(PanelsFor(2).move);
  EXPECT_FALSE(PanelsFor(3).move);
  for (int i : {3, 4, 7, 8}) EXPECT_TRUE(PanelsFor(i).setLabel) << i;
  for (int i : {0, 1, 2, 5, 6, 9}) EXPECT_FALSE(PanelsFor(i).setLabel) << i;
  for (int i = 0; i < 10; ++i) {
    EXPECT_EQ(PanelsFor(i).hexColor, i == 4 || i == 8) << i;
    EXPECT_EQ(PanelsFor(i).buttonNumber, i != 5) << i;
    EXPECT_EQ(PanelsFor(i).timer, i == 5) << i;
    EXPECT_EQ(PanelsFor(i).javaScript, i == 6) << i;
    EXPECT_EQ(PanelsFor(i).label, i != 7) << i;
    EXPECT_EQ(PanelsFor(i).blink, i == 9) << i;
  }
}

TEST(ActionEditorAdd, ColourOfOtherThanSixCharactersMakesNoCommand) {
  ActionFields f = Fields(kActSetColor);
  f.label = "FF00";
  EXPECT_EQ(PrepareCommand(f, true).verdict, AddVerdict::Nothing);
  f.label = "";
  EXPECT_EQ(PrepareCommand(f, true).verdict, AddVerdict::Nothing);
  f.label = "zz00zz";  // not checked for digits
  const AddResult r = PrepareCommand(f, true);
  EXPECT_EQ(r.verdict, AddVerdict::Ready);
  EXPECT_EQ(r.command, "5 Home 1 zz00zz");
}

TEST(ActionEditorAdd, CommandsOnAButtonNeedButtonsWaitAndJavaScriptDoNot) {
  for (int code = 1; code <= 10; ++code) {
    ActionFields f = Fields(code);
    f.label = "FF8000";
    f.script = "go()";
    const AddVerdict v = PrepareCommand(f, false).verdict;
    if (code == kActWait || code == kActCallJavaScript) EXPECT_EQ(v, AddVerdict::Ready) << code;
    else EXPECT_EQ(v, AddVerdict::NoButtons) << code;
  }
}

TEST(ActionEditorAdd, EmptyLabelBecomesOneBlankInTheFieldAndTheCommand) {
  ActionFields f = Fields(kActSetLabel);
  f.stateIndex = 1;
  const AddResult r = PrepareCommand(f, true);
  EXPECT_TRUE(r.labelBlanked);
  EXPECT_EQ(f.label, " ");
  EXPECT_EQ(r.command, "4 Home 2 &!0");
}

TEST(ActionEditorAdd, EmptyJavaScriptMakesNoCommand) {
  ActionFields f = Fields(kActCallJavaScript);
  EXPECT_EQ(PrepareCommand(f, true).verdict, AddVerdict::Nothing);
  f.script = "a b";
  EXPECT_EQ(PrepareCommand(f, true).command, "7 0 a&!0b");
}

TEST(ProgramEditorLists, AddReplaceRemoveAndMovesKeepTheProgramText) {
  ProgramEditor e;
  e.Load("1 A;6 250;");
  e.Add("2 B");
  EXPECT_EQ(e.Program(), "1 A;6 250;2 B;");
  EXPECT_TRUE(e.Replace(1, "6 300"));
  EXPECT_FALSE(e.Replace(3, "6 1"));
  EXPECT_FALSE(e.Replace(-1, "6 1"));
  EXPECT_EQ(e.Program(), "1 A;6 300;2 B;");
  EXPECT_EQ(e.Up(2), 1);
  EXPECT_EQ(e.Program(), "1 A;2 B;6 300;");
  EXPECT_EQ(e.Up(0), -1);
  EXPECT_EQ(e.Up(-1), -1);
  EXPECT_EQ(e.Down(0), 1);
  EXPECT_EQ(e.Program(), "2 B;1 A;6 300;");
  EXPECT_EQ(e.Down(2), -1);
  EXPECT_EQ(e.Down(-1), -1);
  const ActionTexts t;
  EXPECT_EQ(e.Remove(1, t), 1);
  EXPECT_EQ(e.Program(), "2 B;6 300;");
  EXPECT_EQ(e.Remove(1, t), -1);  // the last row: nothing stays selected
  EXPECT_EQ(e.Remove(5, t), -1);
  EXPECT_EQ(e.Program(), "2 B;");
  EXPECT_EQ(e.Remove(0, t), -1);
  EXPECT_EQ(e.Program(), "");
  EXPECT_TRUE(e.Commands().empty());
}

TEST(ProgramEditorLists, PasteAppendsAndReplacesNothing) {
  ProgramEditor e;
  e.Load("1 A;");
  e.Paste("10 Gone 5 100;6 200;");
  EXPECT_EQ(e.Program(), "1 A;10 Gone 5 100;6 200;");
  const auto lines = e.Lines(ActionTexts{});
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(lines[1], "Blink: Gone  ->  times:5 delay:100ms");
}

TEST(ProgramEditorLists, UnknownCodeStaysInTheProgramButNotInTheLines) {
  ProgramEditor e;
  e.Load("1 A;42 x;6 100;");
  EXPECT_EQ(e.Commands().size(), 3u);
  EXPECT_EQ(e.Lines(ActionTexts{}), (std::vector<std::string>{"Show: A", "Wait: 100 ms"}));
  EXPECT_EQ(e.Program(), "1 A;42 x;6 100;");
}

TEST(ProgramStore, ButtonKeyWritesEverySelectedButtonAndNoOther) {
  Project p = TwoButtons();
  p.button(1).ProgramOVER = "6 1;";
  ASSERT_EQ(ProgramToEdit("ProgramOVER", p), std::optional<std::string>(""));
  p.iCurBtn = 1;
  EXPECT_EQ(ProgramToEdit("ProgramOVER", p), std::optional<std::string>("6 1;"));
  EXPECT_TRUE(StoreProgram("ProgramOVER", "1 One;", p, {2}));
  EXPECT_EQ(p.button(1).ProgramOVER, "6 1;");
  EXPECT_EQ(p.button(2).ProgramOVER, "1 One;");
  EXPECT_FALSE(p.bProjectSaved);
  EXPECT_TRUE(StoreProgram("ProgramOVER", "", p, {1, 2}));
  EXPECT_EQ(p.button(1).ProgramOVER, "");
  EXPECT_EQ(p.button(2).ProgramOVER, "");
}

TEST(ProgramStore, AppletKeyWritesTheAppletRecordUnknownKeyNothing) {
  Project p = TwoButtons();
  EXPECT_TRUE(StoreProgram("AppletProgramOUT", "6 5;", p, {1}));
  EXPECT_EQ(p.AppletProgramOUT, "6 5;");
  EXPECT_EQ(p.button(1).ProgramUP, "");
  EXPECT_EQ(ProgramToEdit("AppletProgramOUT", p), std::optional<std::string>("6 5;"));
  p.bProjectSaved = true;
  EXPECT_FALSE(StoreProgram("ProgramSIDE", "6 5;", p, {1}));
  EXPECT_TRUE(p.bProjectSaved);
  EXPECT_EQ(ProgramToEdit("ProgramSIDE", p), std::nullopt);
}

}  // namespace
}  // namespace kp
