#include "actions/program.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/conv.h"
#include "core/model.h"

namespace kp {
namespace {

ActionFields Fields(int code) {
  ActionFields f;
  f.action = code - 1;
  return f;
}

// --- Program text -----------------------------------------------------------------

TEST(ActionProgram, EmptyProgramSplitsToNoCommandsAndJoinsBackToEmptyString) {
  const auto commands = SplitProgram("");
  EXPECT_TRUE(commands.empty());
  EXPECT_EQ(JoinProgram(commands), "");
}

TEST(ActionProgram, SplitGivesEachCommandBeforeItsSemicolon) {
  const auto commands = SplitProgram("1 Unnamed1;6 250;2 Unnamed2;");
  ASSERT_EQ(commands.size(), 3u);
  EXPECT_EQ(commands[0], "1 Unnamed1");
  EXPECT_EQ(commands[1], "6 250");
  EXPECT_EQ(commands[2], "2 Unnamed2");
}

TEST(ActionProgram, JoinPutsASemicolonAfterEveryCommandTheLastToo) {
  EXPECT_EQ(JoinProgram({"1 A", "6 250"}), "1 A;6 250;");
  EXPECT_EQ(JoinProgram({"1 A"}), "1 A;");
}

TEST(ActionProgram, ProgramThatLostItsFinalSemicolonLosesItsLastCommand) {
  const auto commands = SplitProgram("1 Unnamed1;2 Unnamed2");
  ASSERT_EQ(commands.size(), 1u);
  EXPECT_EQ(commands[0], "1 Unnamed1");
  EXPECT_EQ(JoinProgram(commands), "1 Unnamed1;");
  EXPECT_TRUE(SplitProgram("6 250").empty());
}

TEST(ActionProgram, EmptyCommandsBetweenSemicolonsAreKept) {
  const auto commands = SplitProgram(";;1 A;");
  ASSERT_EQ(commands.size(), 3u);
  EXPECT_EQ(commands[0], "");
  EXPECT_EQ(commands[1], "");
  EXPECT_EQ(commands[2], "1 A");
  EXPECT_EQ(JoinProgram(commands), ";;1 A;");
}

TEST(ActionProgram, SplitAndJoinRoundTripAProgramUnchanged) {
  const std::string program = "3 Unnamed1 10 -999 20+ -999 5 100;4 Unnamed1 2 Go&!0Home;7 0 x();";
  EXPECT_EQ(JoinProgram(SplitProgram(program)), program);
}

// --- Get token ----------------------------------------------------------------------

TEST(ActionGetToken, CountsTokensFromOne) {
  EXPECT_EQ(GetToken("3 Unnamed1 10 -999", 1), "3");
  EXPECT_EQ(GetToken("3 Unnamed1 10 -999", 2), "Unnamed1");
  EXPECT_EQ(GetToken("3 Unnamed1 10 -999", 4), "-999");
}

TEST(ActionGetToken, TwoBlanksInARowHoldAnEmptyToken) {
  EXPECT_EQ(GetToken("a  b", 1), "a");
  EXPECT_EQ(GetToken("a  b", 2), "");
  EXPECT_EQ(GetToken("a  b", 3), "b");
  EXPECT_EQ(GetToken(" a", 1), "");
  EXPECT_EQ(GetToken(" a", 2), "a");
}

TEST(ActionGetToken, TokenThatDoesNotExistIsEmpty) {
  EXPECT_EQ(GetToken("1 A", 3), "");
  EXPECT_EQ(GetToken("1 A", 0), "");
  EXPECT_EQ(GetToken("1 A", -1), "");
  EXPECT_EQ(GetToken("", 1), "");
  EXPECT_EQ(GetToken("", 2), "");
  EXPECT_EQ(GetToken("1 A ", 3), "");
}

// --- Edge cases of the command text ----------------------------------------------------

TEST(ActionCommand, LabelWithSemicolonIsStoredEscapedAndCommandEndsAtTheJoinedSemicolon) {
  ActionFields f = Fields(kActSetLabel);
  f.button = "Unnamed1";
  f.stateIndex = 0;
  f.label = "a;b";
  const std::string cmd = BuildCommand(f);
  EXPECT_EQ(cmd, "4 Unnamed1 1 a&!1b");
  const std::string program = JoinProgram({cmd});
  EXPECT_EQ(program, "4 Unnamed1 1 a&!1b;");
  const auto back = SplitProgram(program);
  ASSERT_EQ(back.size(), 1u);
  EXPECT_EQ(back[0], cmd);
  EXPECT_EQ(ReadCommand(back[0]).label, "a;b");
}

TEST(ActionCommand, ButtonNameWithBlankIsEscapedInCommandAndShownPlainInDisplayLine) {
  ActionFields f = Fields(kActShow);
  f.button = "My Button";
  const std::string cmd = BuildCommand(f);
  EXPECT_EQ(cmd, "1 My&!0Button");
  EXPECT_EQ(DisplayLine(cmd), std::optional<std::string>("Show: My Button"));
  EXPECT_EQ(ReadCommand(cmd).button, "My Button");
}

TEST(ActionCommand, MoveWithAllFieldsEmptyKeepsEverythingAndHasNoFrames) {
  ActionFields f = Fields(kActMove);
  f.button = "My Button";
  EXPECT_EQ(BuildCommand(f), "3 My&!0Button -999 -999 -999 -999 0 0");
  f.button = "Unnamed1";
  EXPECT_EQ(BuildCommand(f), "3 Unnamed1 -999 -999 -999 -999 0 0");
}

TEST(ActionCommand, MoveXTypedAsLetterGivesMinus999AndTrailingMinusStays) {
  ActionFields f = Fields(kActMove);
  f.button = "B";
  f.x = "x";
  f.y = "7-";
  EXPECT_EQ(BuildCommand(f), "3 B -999 7- -999 -999 0 0");
  EXPECT_EQ(MoveOperand("x"), "-999");
  EXPECT_EQ(MoveOperand("7-"), "7-");
}

TEST(ActionCommand, WaitWithNegativeGivesAbsoluteValueAndWithTextGivesDefault) {
  ActionFields f = Fields(kActWait);
  f.milliseconds = "-300";
  EXPECT_EQ(BuildCommand(f), "6 300");
  f.milliseconds = "abc";
  EXPECT_EQ(BuildCommand(f), "6 100");
}

TEST(ActionCommand, AfterRenamingAButtonACommandNamingItStillShowsTheOldName) {
  Project p;
  p.ButtonCount = 1;
  p.button(1).sBName = "Old Name";
  ActionFields f = Fields(kActHide);
  f.button = p.button(1).sBName;
  p.button(1).ProgramUP = JoinProgram({BuildCommand(f)});

  p.button(1).sBName = "New Name";

  EXPECT_EQ(p.button(1).ProgramUP, "2 Old&!0Name;");
  const auto lines = DisplayLines(p.button(1).ProgramUP);
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0], "Hide: Old Name");
  EXPECT_EQ(ReadCommand(SplitProgram(p.button(1).ProgramUP)[0]).button, "Old Name");
}

// --- The examples of the command table ---------------------------------------------------

struct TableExample {
  const char* name;
  ActionFields fields;
  const char* command;  // without ";"
  const char* display;
};

// Names the example in test output instead of dumping its bytes.
void PrintTo(const TableExample& e, std::ostream* os) { *os << e.command; }

std::vector<TableExample> TableExamples() {
  std::vector<TableExample> v;
  {
    ActionFields f = Fields(1);
    f.button = "Unnamed1";
    v.push_back({"Show", f, "1 Unnamed1", "Show: Unnamed1"});
  }
  {
    ActionFields f = Fields(2);
    f.button = "Unnamed1";
    v.push_back({"Hide", f, "2 Unnamed1", "Hide: Unnamed1"});
  }
  {
    ActionFields f = Fields(3);
    f.button = "Unnamed1";
    f.x = "10";
    f.width = "20+";
    f.frames = "5";
    f.frameDelay = "100";
    v.push_back({"Move", f, "3 Unnamed1 10 -999 20+ -999 5 100",
                 "Move: Unnamed1  ->  x:10 y:   width:20+ height:   f:5 d:100"});
  }
  {
    ActionFields f = Fields(4);
    f.button = "Unnamed1";
    f.stateIndex = 1;
    f.label = "Go Home";
    v.push_back({"SetLabel", f, "4 Unnamed1 2 Go&!0Home",
                 "Set Label: Unnamed1 [Mouse-Over]  ->  \"Go Home\""});
  }
  {
    ActionFields f = Fields(5);
    f.button = "Unnamed1";
    f.stateIndex = 0;
    f.label = "FF8000";
    v.push_back(
        {"SetColor", f, "5 Unnamed1 1 FF8000", "Set Color: Unnamed1 [Up State]  ->  FF8000"});
  }
  {
    ActionFields f = Fields(6);
    f.milliseconds = "250";
    v.push_back({"Wait", f, "6 250", "Wait: 250 ms"});
  }
  {
    ActionFields f = Fields(7);
    f.script = "alert('x')";
    v.push_back({"CallJavaScript", f, "7 0 alert('x')", "Call JavaScript: alert('x')"});
  }
  {
    ActionFields f = Fields(8);
    f.button = "Unnamed1";
    f.stateIndex = 2;
    v.push_back({"SetState", f, "8 Unnamed1 3", "Set State: Unnamed1  ->  [Down State]"});
  }
  {
    ActionFields f = Fields(9);
    f.button = "Unnamed1";
    f.stateIndex = 0;
    f.label = "000000";
    v.push_back({"BorderColor", f, "9 Unnamed1 1 000000",
                 "Border Color: Unnamed1 [Up State]  ->  000000"});
  }
  {
    ActionFields f = Fields(10);
    f.button = "Unnamed1";
    f.blinkCount = "5";
    f.blinkDelay = "100";
    v.push_back({"Blink", f, "10 Unnamed1 5 100", "Blink: Unnamed1  ->  times:5 delay:100ms"});
  }
  return v;
}

class ActionTableExample : public ::testing::TestWithParam<TableExample> {};

TEST_P(ActionTableExample, BuildsTheCommandFromTheFields) {
  EXPECT_EQ(BuildCommand(GetParam().fields), GetParam().command);
}

TEST_P(ActionTableExample, ReadsTheCommandBackIntoTheSameFields) {
  const ActionFields back = ReadCommand(GetParam().command);
  EXPECT_TRUE(back.known);
  EXPECT_EQ(back.action, GetParam().fields.action);
  EXPECT_TRUE(back == GetParam().fields);
  EXPECT_EQ(BuildCommand(back), GetParam().command);
}

TEST_P(ActionTableExample, ShowsItsDisplayLine) {
  EXPECT_EQ(DisplayLine(GetParam().command), std::optional<std::string>(GetParam().display));
}

INSTANTIATE_TEST_SUITE_P(CommandTable, ActionTableExample, ::testing::ValuesIn(TableExamples()),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(ActionDisplay, ProgramOfAllTableExamplesGivesOneLinePerCommandInOrder) {
  std::vector<std::string> commands;
  for (const auto& e : TableExamples()) commands.push_back(e.command);
  const auto lines = DisplayLines(JoinProgram(commands));
  const auto examples = TableExamples();
  ASSERT_EQ(lines.size(), examples.size());
  for (size_t i = 0; i < lines.size(); ++i) EXPECT_EQ(lines[i], examples[i].display);
}

// --- Operands -----------------------------------------------------------------------------

TEST(ActionOperand, MoveKeepsTrimmedWholeNumberWithOptionalTrailingSign) {
  EXPECT_EQ(MoveOperand("20+"), "20+");
  EXPECT_EQ(MoveOperand("20-"), "20-");
  EXPECT_EQ(MoveOperand("-20"), "-20");
  EXPECT_EQ(MoveOperand("  30 "), "30");
  EXPECT_EQ(MoveOperand("-999"), "-999");
}

TEST(ActionOperand, MoveTextThatIsNoWholeNumberIn16BitsGivesMinus999) {
  EXPECT_EQ(MoveOperand(""), "-999");
  EXPECT_EQ(MoveOperand("   "), "-999");
  EXPECT_EQ(MoveOperand("+"), "-999");
  EXPECT_EQ(MoveOperand("-"), "-999");
  EXPECT_EQ(MoveOperand("1.5"), "-999");
  EXPECT_EQ(MoveOperand("70000"), "-999");
  EXPECT_EQ(MoveOperand("70000+"), "-999");
  EXPECT_EQ(MoveOperand("5++"), "-999");
  EXPECT_EQ(MoveOperand("1 2"), "-999");
  EXPECT_EQ(MoveOperand("32767+"), "32767+");
}

TEST(ActionOperand, MoveFramesAndDelayAreAbsoluteWholeNumbersWithZeroOnFailure) {
  EXPECT_EQ(MoveCountOperand(""), "0");
  EXPECT_EQ(MoveCountOperand("abc"), "0");
  EXPECT_EQ(MoveCountOperand("-5"), "5");
  EXPECT_EQ(MoveCountOperand(" 7 "), "7");
  EXPECT_EQ(MoveCountOperand("70000"), "0");
  EXPECT_EQ(MoveCountOperand("2.5"), "0");

  ActionFields f = Fields(kActMove);
  f.button = "B";
  f.frames = "-5";
  f.frameDelay = "x";
  EXPECT_EQ(BuildCommand(f), "3 B -999 -999 -999 -999 5 0");
}

TEST(ActionOperand, WaitKeepsAFractionAndWritesWholeNumbersPlainly) {
  EXPECT_EQ(AbsNumberOperand("1.5", "100"), "1.5");
  EXPECT_EQ(AbsNumberOperand("300", "100"), "300");
  EXPECT_EQ(AbsNumberOperand(" 250 ", "100"), "250");
  EXPECT_EQ(AbsNumberOperand("100000", "100"), "100000");
  EXPECT_EQ(AbsNumberOperand("-0.25", "100"), "0.25");
  EXPECT_EQ(AbsNumberOperand("+40", "100"), "40");
  EXPECT_EQ(AbsNumberOperand("3.0", "100"), "3");
}

TEST(ActionOperand, WaitTextThatIsNoNumberGivesTheDefault) {
  EXPECT_EQ(AbsNumberOperand("", "100"), "100");
  EXPECT_EQ(AbsNumberOperand("abc", "100"), "100");
  EXPECT_EQ(AbsNumberOperand("12abc", "100"), "100");
  EXPECT_EQ(AbsNumberOperand("inf", "100"), "100");
  EXPECT_EQ(AbsNumberOperand("nan", "100"), "100");
  EXPECT_EQ(AbsNumberOperand("0x10", "100"), "100");
  EXPECT_EQ(AbsNumberOperand(".", "100"), "100");
  EXPECT_EQ(AbsNumberOperand("1e", "100"), "100");

  ActionFields f = Fields(kActWait);
  f.milliseconds = "";
  EXPECT_EQ(BuildCommand(f), "6 100");
  f.milliseconds = "1.5";
  EXPECT_EQ(BuildCommand(f), "6 1.5");
}

TEST(ActionOperand, BlinkUsesTheWaitConversionWithDefaultsFiveAndHundred) {
  ActionFields f = Fields(kActBlink);
  f.button = "B";
  EXPECT_EQ(BuildCommand(f), "10 B 5 100");
  f.blinkCount = "-3";
  f.blinkDelay = "2.5";
  EXPECT_EQ(BuildCommand(f), "10 B 3 2.5");
  f.blinkCount = "many";
  f.blinkDelay = "soon";
  EXPECT_EQ(BuildCommand(f), "10 B 5 100");
}

TEST(ActionOperand, SetLabelWithEmptyFieldWritesOneEscapedBlank) {
  ActionFields f = Fields(kActSetLabel);
  f.button = "B";
  f.stateIndex = 2;
  const std::string cmd = BuildCommand(f);
  EXPECT_EQ(cmd, "4 B 3 &!0");
  EXPECT_EQ(ReadCommand(cmd).label, " ");
  EXPECT_EQ(DisplayLine(cmd), std::optional<std::string>("Set Label: B [Down State]  ->  \" \""));
}

TEST(ActionOperand, CallJavaScriptSecondTokenIsAlwaysZeroWhateverButtonIsChosen) {
  ActionFields f = Fields(kActCallJavaScript);
  f.button = "Chosen Button";
  f.script = "go(1)";
  const std::string cmd = BuildCommand(f);
  EXPECT_EQ(cmd, "7 0 go(1)");
  EXPECT_EQ(GetToken(cmd, 2), "0");
  EXPECT_EQ(GetToken(cmd, 3), "go(1)");
}

TEST(ActionOperand, ScriptIsEscapedSoTheCommandHoldsNoBlankOrSemicolon) {
  ActionFields f = Fields(kActCallJavaScript);
  f.script = "alert(\"a b\"); x|y^z";
  const std::string cmd = BuildCommand(f);
  EXPECT_EQ(cmd, "7 0 alert(&!2a&!0b&!2)&!1&!0x&!3y&!4z");
  EXPECT_EQ(ReadCommand(cmd).script, f.script);
  EXPECT_EQ(DisplayLine(cmd), std::optional<std::string>("Call JavaScript: " + f.script));
}

TEST(ActionOperand, EveryUserTextOperandGoesThroughTheNameEscape) {
  const std::string name = "a\"b|c^d;e f";
  EXPECT_EQ(EscapeNameField(name), "a&!2b&!3c&!4d&!1e&!0f");
  for (int code : {1, 2, 3, 4, 5, 8, 9, 10}) {
    ActionFields f = Fields(code);
    f.button = name;
    f.label = "000000";
    EXPECT_EQ(GetToken(BuildCommand(f), 2), "a&!2b&!3c&!4d&!1e&!0f") << "code " << code;
  }
  ActionFields f = Fields(kActSetLabel);
  f.label = name;
  EXPECT_EQ(GetToken(BuildCommand(f), 4), "a&!2b&!3c&!4d&!1e&!0f");
}

TEST(ActionOperand, ColourIsWrittenAsItStandsWithoutEscapeOrCheck) {
  ActionFields f = Fields(kActSetColor);
  f.button = "B";
  f.stateIndex = 1;
  f.label = "gg00zz";
  EXPECT_EQ(BuildCommand(f), "5 B 2 gg00zz");
  f.action = kActBorderColor - 1;
  f.label = "FF00";
  EXPECT_EQ(BuildCommand(f), "9 B 2 FF00");
}

TEST(ActionOperand, StateIsTheSelectorIndexPlusOne) {
  ActionFields f = Fields(kActSetState);
  f.button = "B";
  for (int i = 0; i < 3; ++i) {
    f.stateIndex = i;
    EXPECT_EQ(GetToken(BuildCommand(f), 3), std::to_string(i + 1));
    EXPECT_EQ(ReadCommand(BuildCommand(f)).stateIndex, i);
  }
}

// --- Escapes ------------------------------------------------------------------------------------

TEST(ActionEscape, HtmlSpaceEntityWithItsSemicolonUnescapesToBlankAndSemicolon) {
  EXPECT_EQ(UnescapeField("x&nbsp;y"), "x ;y");
  ActionFields f = Fields(kActSetLabel);
  f.button = "B";
  f.label = "a&nbsp;b";
  const std::string cmd = BuildCommand(f);
  EXPECT_EQ(cmd, "4 B 1 a&nbsp&!1b");
  EXPECT_EQ(ReadCommand(cmd).label, "a ;b");
  EXPECT_EQ(DisplayLine(cmd), std::optional<std::string>("Set Label: B [Up State]  ->  \"a ;b\""));
}

TEST(ActionEscape, MoveOperandsAreReadBackWithoutUnescaping) {
  const ActionFields f = ReadCommand("3 B &!0 -999 5+ -999 x y");
  EXPECT_EQ(f.x, "&!0");
  EXPECT_EQ(f.y, "");
  EXPECT_EQ(f.width, "5+");
  EXPECT_EQ(f.height, "");
  EXPECT_EQ(f.frames, "x");
  EXPECT_EQ(f.frameDelay, "y");
}

// --- Display lines ---------------------------------------------------------------------------------

TEST(ActionDisplay, MoveShowsEachMinus999AmongPositionAndSizeAsTwoBlanks) {
  EXPECT_EQ(DisplayLine("3 B -999 -999 -999 -999 -999 -999"),
            std::optional<std::string>(
                "Move: B  ->  x:   y:   width:   height:   f:-999 d:-999"));
  EXPECT_EQ(DisplayLine("3 B -9990 -999+ 1 2 3 4"),
            std::optional<std::string>("Move: B  ->  x:-9990 y:-999+ width:1 height:2 f:3 d:4"));
}

TEST(ActionDisplay, FollowsTheInterfaceLanguageTexts) {
  ActionTexts t;
  t.actions[2] = "Bewegen";
  t.actions[7] = "Zustand";
  t.states[2] = "Gedrueckt";
  t.lblWidth = "Breite:";
  t.lblHeight = "Hoehe:";
  EXPECT_EQ(DisplayLine("3 Unnamed1 10 -999 20+ -999 5 100", t),
            std::optional<std::string>(
                "Bewegen: Unnamed1  ->  x:10 y:   Breite:20+ Hoehe:   f:5 d:100"));
  EXPECT_EQ(DisplayLine("8 Unnamed1 3", t),
            std::optional<std::string>("Zustand: Unnamed1  ->  [Gedrueckt]"));
}

TEST(ActionDisplay, MissingOperandsShowAsEmpty) {
  EXPECT_EQ(DisplayLine("4 B"), std::optional<std::string>("Set Label: B []  ->  \"\""));
  EXPECT_EQ(DisplayLine("1"), std::optional<std::string>("Show: "));
  EXPECT_EQ(DisplayLine("6"), std::optional<std::string>("Wait:  ms"));
  EXPECT_EQ(DisplayLine("10 B"), std::optional<std::string>("Blink: B  ->  times: delay:ms"));
  const ActionFields f = ReadCommand("4 B");
  EXPECT_TRUE(f.known);
  EXPECT_EQ(f.label, "");
  EXPECT_EQ(f.stateIndex, -1);
}

TEST(ActionDisplay, StateOutsideOneToThreeShowsAnEmptyStateName) {
  EXPECT_EQ(DisplayLine("8 B 4"), std::optional<std::string>("Set State: B  ->  []"));
  EXPECT_EQ(DisplayLine("5 B 0 FF0000"),
            std::optional<std::string>("Set Color: B []  ->  FF0000"));
}

TEST(ActionDisplay, UnknownCodeKeepsTheCommandInTheProgramButHasNoDisplayLine) {
  const std::string program = "1 A;11 B;0 C;x D;2 E;";
  const auto commands = SplitProgram(program);
  ASSERT_EQ(commands.size(), 5u);
  EXPECT_EQ(JoinProgram(commands), program);
  EXPECT_FALSE(DisplayLine("11 B").has_value());
  EXPECT_FALSE(DisplayLine("0 C").has_value());
  EXPECT_FALSE(DisplayLine("x D").has_value());
  EXPECT_FALSE(DisplayLine("").has_value());
  const auto lines = DisplayLines(program);
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0], "Show: A");
  EXPECT_EQ(lines[1], "Hide: E");
}

TEST(ActionRead, UnknownCodeSetsOnlyTheActionAndIsFlagged) {
  ActionFields f;
  f.button = "Kept";
  f.label = "Kept label";
  ReadCommandInto("11 B 2 x", f);
  EXPECT_FALSE(f.known);
  EXPECT_EQ(f.action, 10);
  EXPECT_EQ(f.button, "Kept");
  EXPECT_EQ(f.label, "Kept label");
  EXPECT_EQ(f.stateIndex, 0);
  EXPECT_EQ(BuildCommand(f), "");
}

TEST(ActionRead, KnownCodeLeavesTheFieldsItDoesNotUse) {
  ActionFields f;
  f.script = "kept()";
  f.milliseconds = "700";
  ReadCommandInto("1 Unnamed1", f);
  EXPECT_TRUE(f.known);
  EXPECT_EQ(f.action, 0);
  EXPECT_EQ(f.button, "Unnamed1");
  EXPECT_EQ(f.script, "kept()");
  EXPECT_EQ(f.milliseconds, "700");
}

TEST(ActionRead, WaitAndBlinkNumbersAreReadAsTheyStand) {
  EXPECT_EQ(ReadCommand("6 1.5").milliseconds, "1.5");
  const ActionFields f = ReadCommand("10 A&!0B 3 2.5");
  EXPECT_EQ(f.button, "A B");
  EXPECT_EQ(f.blinkCount, "3");
  EXPECT_EQ(f.blinkDelay, "2.5");
}

TEST(ActionRead, CallJavaScriptTakesOnlyTheThirdToken) {
  const ActionFields f = ReadCommand("7 Unnamed1 go() more");
  EXPECT_EQ(f.script, "go()");
  EXPECT_EQ(f.button, "");
}

// --- Generator's test, events ---------------------------------------------------------------------

TEST(ActionJavaScriptTest, AnyProgramHoldingSevenAndBlankCounts) {
  EXPECT_TRUE(HasJavaScriptCall("7 0 alert('x');"));
  EXPECT_TRUE(HasJavaScriptCall("1 A;7 0 go();"));
  EXPECT_TRUE(HasJavaScriptCall("3 Unnamed1 7 -999 -999 -999 0 0;"));
  EXPECT_TRUE(HasJavaScriptCall("1 Button7 ;"));
  EXPECT_FALSE(HasJavaScriptCall("1 Button7;2 A;"));
  EXPECT_FALSE(HasJavaScriptCall(""));
}

TEST(ActionEvents, TableHoldsTheTenKeysWithOwnerAndOfferedText) {
  ASSERT_EQ(kProgramEvents.size(), 10u);
  EXPECT_STREQ(kProgramEvents[0].key, "ProgramUP");
  EXPECT_STREQ(kProgramEvents[0].offered, " On Mouse Up");
  EXPECT_STREQ(kProgramEvents[1].offered, " On Entering Button");
  EXPECT_STREQ(kProgramEvents[2].offered, " On Leaving Button");
  EXPECT_STREQ(kProgramEvents[3].offered, " On Mouse Down");
  EXPECT_STREQ(kProgramEvents[4].offered, " On Check");
  EXPECT_STREQ(kProgramEvents[5].key, "ProgramUNCHECK");
  EXPECT_STREQ(kProgramEvents[5].offered, " On Uncheck");
  EXPECT_STREQ(kProgramEvents[6].key, "AppletProgramStart");
  EXPECT_STREQ(kProgramEvents[6].offered, "On Applet Start");
  EXPECT_STREQ(kProgramEvents[7].offered, "On Mouse Moving above the Applet");
  EXPECT_STREQ(kProgramEvents[8].offered, "On Mouse Clicking the Applet");
  EXPECT_STREQ(kProgramEvents[9].key, "AppletProgramOUT");
  EXPECT_STREQ(kProgramEvents[9].offered, "On Mouse Exiting the Applet");
  for (size_t i = 0; i < kProgramEvents.size(); ++i) {
    const auto& e = kProgramEvents[i];
    EXPECT_EQ(e.owner, i < 6 ? ProgramOwner::Button : ProgramOwner::Applet) << e.key;
    EXPECT_EQ(e.buttonField != nullptr, e.owner == ProgramOwner::Button) << e.key;
    EXPECT_EQ(e.appletField != nullptr, e.owner == ProgramOwner::Applet) << e.key;
  }
}

TEST(ActionEvents, KeyNamesTheProgramFieldOfButtonOrApplet) {
  Project p;
  tButton& b = p.button(1);
  EXPECT_EQ(ProgramField("ProgramUP", p, b), &b.ProgramUP);
  EXPECT_EQ(ProgramField("ProgramOVER", p, b), &b.ProgramOVER);
  EXPECT_EQ(ProgramField("ProgramLEAVE", p, b), &b.ProgramLEAVE);
  EXPECT_EQ(ProgramField("ProgramDOWN", p, b), &b.ProgramDOWN);
  EXPECT_EQ(ProgramField("ProgramCHECK", p, b), &b.ProgramCHECK);
  EXPECT_EQ(ProgramField("ProgramUNCHECK", p, b), &b.ProgramUNCHECK);
  EXPECT_EQ(ProgramField("AppletProgramStart", p, b), &p.AppletProgramStart);
  EXPECT_EQ(ProgramField("AppletProgramOVER", p, b), &p.AppletProgramOVER);
  EXPECT_EQ(ProgramField("AppletProgramDOWN", p, b), &p.AppletProgramDOWN);
  EXPECT_EQ(ProgramField("AppletProgramOUT", p, b), &p.AppletProgramOUT);
  EXPECT_EQ(ProgramField("ProgramOUT", p, b), nullptr);
  EXPECT_EQ(ProgramField("programup", p, b), nullptr);
  EXPECT_EQ(FindProgramEvent(""), nullptr);
}

}  // namespace
}  // namespace kp
