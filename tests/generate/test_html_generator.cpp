#include <gtest/gtest.h>

#include "core/conv.h"
#include "generate/html_generator.h"
#include "generate/js_caller.h"
#include "generate/param_encoding.h"
#include "project/project_file.h"
#include "tests/generate/generate_fixture.h"

namespace kp {
namespace {

using test::LineOf;
using test::Lines;
using test::PlainProject;
using test::RecordingView;
using test::TestEnv;
using test::TwoButtonExample;
using test::TwoButtonExampleBlock;

std::string Generate(Project& p, TestEnv& t, GeneratorState& st) {
  CodeBox box;
  MakeHTML(p, t.env, st, box);
  return box.text;
}

TEST(MakeHTML, TwoButtonExampleComesOutByteForByte) {
  TestEnv t;
  Project p = TwoButtonExample(t);
  GeneratorState st;
  CodeBox box;
  HTMLWindowActivate(p, t.env, st, box);
  const std::string expected = TwoButtonExampleBlock();
  EXPECT_EQ(box.text, expected);
  EXPECT_EQ(std::string(kHomePage), "https://kestrelpane.example/");
}

TEST(MakeHTML, PackingShortensTheExampleButtonFrom259To157Characters) {
  TestEnv t;
  Project p = TwoButtonExample(t);
  GeneratorState st;
  std::string text = Generate(p, t, st);
  ParamBuilder b;
  FileProbe probe(t.fs);
  BuildButtonLine(b, p, 1, probe);
  EXPECT_EQ(b.sParamLine.size(), 259u);
  EXPECT_EQ(LineOf(text, 5).size(), 157u);
}

TEST(MakeHTML, NoButtonsGivesTagCabbaseAndPWithCountZeroAndNoNumberedParameters) {
  TestEnv t;
  Project p = PlainProject(0);
  GeneratorState st;
  std::string text = Generate(p, t, st);
  auto lines = Lines(text);
  ASSERT_EQ(lines.size(), 7u);
  EXPECT_TRUE(StartsWith(lines[1], "<applet name="));
  EXPECT_EQ(lines[2], "<Param Name=\"cabbase\" value=\"KestrelPane.cab\">");
  EXPECT_TRUE(StartsWith(lines[3], "<Param Name=\"p\" value=\""));
  EXPECT_EQ(GetField(lines[3], "|", 8), "0");
  EXPECT_EQ(lines[4], DefaultHTMLalt());
  EXPECT_EQ(lines[5], "</applet>");
  EXPECT_EQ(lines[6], kEndComment);
  EXPECT_EQ(text.find("<Param Name=\"1\""), std::string::npos);
}

TEST(MakeHTML, WithoutJarTheCodeBaseQuoteIsFollowedDirectlyByWidth) {
  TestEnv t;
  Project p = PlainProject(1);
  GeneratorState st;
  st.bAddJAR = false;
  EXPECT_EQ(LineOf(Generate(p, t, st), 2),
            "<applet name=\"KestrelPane\" code=\"KestrelPane.class\" codebase=\".\" width=420 "
            "height=180>");
}

TEST(MakeHTML, EmptyCodeBaseIsWrittenAsDot) {
  TestEnv t;
  Project p = PlainProject(1);
  GeneratorState st;
  EXPECT_NE(LineOf(Generate(p, t, st), 2).find(" codebase=\".\""), std::string::npos);
  p.CodeBase = "../applet";
  EXPECT_NE(LineOf(Generate(p, t, st), 2).find(" codebase=\"../applet\""), std::string::npos);
}

TEST(MakeHTML, EmptyAlternativeHtmlAddsNoLineNotEvenABlankOne) {
  TestEnv t;
  Project p = PlainProject(1);
  p.sHTMLalt.clear();
  GeneratorState st;
  auto lines = Lines(Generate(p, t, st));
  ASSERT_EQ(lines.size(), 7u);
  EXPECT_TRUE(StartsWith(lines[4], "<Param Name=\"1\""));
  EXPECT_EQ(lines[5], "</applet>");
}

TEST(MakeHTML, MultiLineAlternativeHtmlStaysMultiLine) {
  TestEnv t;
  Project p = PlainProject(0);
  p.sHTMLalt = "<p>one</p>\r\n<p>two</p>";
  GeneratorState st;
  auto lines = Lines(Generate(p, t, st));
  EXPECT_EQ(lines[4], "<p>one</p>");
  EXPECT_EQ(lines[5], "<p>two</p>");
  EXPECT_EQ(lines[6], "</applet>");
}

TEST(MakeHTML, AttributesInFixedOrderWithMayscriptLast) {
  TestEnv t;
  Project p = PlainProject(1);
  p.AppletName = "Nav";
  p.CodeBase = "cls";
  p.AppletWidth = 600;
  p.AppletHeight = 40;
  GeneratorState st;
  st.bUseJSCaller = true;
  EXPECT_EQ(LineOf(Generate(p, t, st), 2),
            "<applet name=\"Nav\" code=\"KestrelPane.class\" codebase=\"cls\" "
            "archive=\"KestrelPane.jar\" width=600 height=40 MAYSCRIPT>");
}

TEST(MakeHTML, NamesAnUnnamedAppletForGood) {
  TestEnv t;
  Project p = PlainProject(1);
  ASSERT_TRUE(p.AppletName.empty());
  GeneratorState st;
  Generate(p, t, st);
  EXPECT_EQ(p.AppletName, "KestrelPane");
}

TEST(MakeHTML, UnescapesTheThreeFoldersInTheModelAndRefillsThePathBoxes) {
  TestEnv t;
  Project p = PlainProject(1);
  p.AppletName = "Nav";
  p.CodeBase = "my&!0code";
  p.ImgPath = "pics&nbsp";
  p.SndPath = "s&!3d";
  p.sOutputHTML = "/site/index.htm";
  GeneratorState st;
  RecordingView view;
  CodeBox box;
  MakeHTML(p, t.env, st, box, &view);
  EXPECT_EQ(p.CodeBase, "my code");
  EXPECT_EQ(p.ImgPath, "pics ");
  EXPECT_EQ(p.SndPath, "s|d");
  EXPECT_EQ(view.boxes.txtAppletName, "Nav");
  EXPECT_EQ(view.boxes.txtCodeBase, "my code");
  EXPECT_EQ(view.boxes.txtImgPath, "pics ");
  EXPECT_EQ(view.boxes.txtSndPath, "s|d");
  EXPECT_EQ(view.autoReplace, "/site/index.htm");
  EXPECT_NE(LineOf(box.text, 2).find("codebase=\"my code\""), std::string::npos);
}

TEST(MakeHTML, StateFlagsAroundAGeneration) {
  TestEnv t;
  Project p = PlainProject(1);
  GeneratorState st;
  ASSERT_TRUE(st.bHTMLStale);
  RecordingView view;
  CodeBox box;
  MakeHTML(p, t.env, st, box, &view);
  EXPECT_FALSE(st.bHTMLStale);
  EXPECT_FALSE(st.bGenerating);
  EXPECT_FALSE(view.busyNow);
  EXPECT_EQ(view.generations, 1);
}

TEST(MakeHTML, RewritesTheBoxRatherThanAppending) {
  TestEnv t;
  Project p = PlainProject(1);
  GeneratorState st;
  CodeBox box;
  box.text = "<html>\r\n</html>";
  MakeHTML(p, t.env, st, box);
  std::string first = box.text;
  MakeHTML(p, t.env, st, box);
  EXPECT_EQ(box.text, first);
  EXPECT_TRUE(StartsWith(first, BeginComment()));
}

TEST(MakeHTML, CallerBlockFollowsTheClosingTagWhenJavaScriptIsUsed) {
  TestEnv t;
  t.home.write("Kestrel.ini", "[JSCALLER]\r\nInit(\"AppletName\");\r\n[END OF JSCALLER]\r\n");
  Project p = PlainProject(1);
  p.button(1).URL = "javascript:go()";
  p.AppletName = "Nav";
  GeneratorState st;
  CodeBox box;
  HTMLWindowActivate(p, t.env, st, box);
  EXPECT_TRUE(st.bUseJSCaller);
  auto lines = Lines(box.text);
  ASSERT_GE(lines.size(), 4u);
  EXPECT_EQ(lines[lines.size() - 4], "</applet>");
  EXPECT_EQ(lines[lines.size() - 3], "");
  EXPECT_EQ(lines[lines.size() - 2], "Init(\"Nav\");");
  EXPECT_EQ(lines[lines.size() - 1], kEndComment);
  EXPECT_TRUE(EndsWith(lines[1], " MAYSCRIPT>"));
}

TEST(MakeHTML, LetsPendingEventsRunBeforeEachLine) {
  struct CountingPrompter : test::ScriptedPrompter {
    int events = 0;
    void ProcessEvents() override { ++events; }
  } prompter;
  TestEnv t;
  Env env{t.fs, t.store, prompter, t.view, t.home.path()};
  Project p = PlainProject(3);
  GeneratorState st;
  CodeBox box;
  MakeHTML(p, env, st, box);
  EXPECT_EQ(prompter.events, static_cast<int>(Lines(box.text).size()));
}

// --- Activation ------------------------------------------------------------------------------

TEST(HTMLWindow, ActivatingTwiceRegeneratesOnceAndAfterTheMainWindowAgain) {
  TestEnv t;
  Project p = PlainProject(1);
  GeneratorState st;
  RecordingView view;
  CodeBox box;
  HTMLWindowActivate(p, t.env, st, box, &view);
  HTMLWindowActivate(p, t.env, st, box, &view);
  EXPECT_EQ(view.generations, 1);
  MarkHTMLStale(st);  // the main window was activated in between
  HTMLWindowActivate(p, t.env, st, box, &view);
  EXPECT_EQ(view.generations, 2);
}

TEST(HTMLWindow, ProjectChangesReachTheBoxOnlyOnTheNextStaleActivation) {
  TestEnv t;
  Project p = PlainProject(1);
  GeneratorState st;
  CodeBox box;
  HTMLWindowActivate(p, t.env, st, box);
  std::string before = box.text;
  p.AppletWidth = 300;
  HTMLWindowActivate(p, t.env, st, box);
  EXPECT_EQ(box.text, before);
  MarkHTMLStale(st);
  HTMLWindowActivate(p, t.env, st, box);
  EXPECT_NE(box.text.find("width=300"), std::string::npos);
}

TEST(HTMLWindow, ActivationDuringAGenerationDoesNotStartAnother) {
  TestEnv t;
  Project p = PlainProject(1);
  GeneratorState st;
  st.bGenerating = true;
  RecordingView view;
  CodeBox box;
  HTMLWindowActivate(p, t.env, st, box, &view);
  EXPECT_EQ(view.generations, 0);
  EXPECT_TRUE(st.bHTMLStale);
}

TEST(HTMLWindow, UrlBeginningJavaScriptInCapitalsCountsButALeadingBlankDoesNot) {
  Project p = PlainProject(2);
  p.button(2).URL = "JavaScript:void(0)";
  EXPECT_TRUE(NeedsJSCaller(p));
  p.button(2).URL = " javascript:void(0)";
  EXPECT_FALSE(NeedsJSCaller(p));
}

TEST(HTMLWindow, SevenBlankInProgramUpAloneDoesNotTurnOnTheCaller) {
  Project p = PlainProject(1);
  p.button(1).ProgramUP = "7 alert(1);";
  p.button(1).ProgramCHECK = "7 alert(1);";
  p.button(1).ProgramUNCHECK = "7 alert(1);";
  EXPECT_FALSE(NeedsJSCaller(p));
  for (auto field : {&tButton::ProgramLEAVE, &tButton::ProgramOVER, &tButton::ProgramDOWN}) {
    Project q = PlainProject(1);
    q.button(1).*field = "7 alert(1);";
    EXPECT_TRUE(NeedsJSCaller(q));
  }
}

TEST(HTMLWindow, AppletProgramsAreSearchedForTheJavaScriptOpcode) {
  for (auto field : {&Project::AppletProgramStart, &Project::AppletProgramOVER,
                     &Project::AppletProgramOUT, &Project::AppletProgramDOWN}) {
    Project p = PlainProject(0);
    p.*field = "7 x;";
    EXPECT_TRUE(NeedsJSCaller(p));
  }
  EXPECT_FALSE(NeedsJSCaller(PlainProject(3)));
}

TEST(HTMLWindow, ActivationRecomputesTheCallerFlagEachTime) {
  TestEnv t;
  Project p = PlainProject(1);
  p.button(1).URL = "javascript:x()";
  GeneratorState st;
  CodeBox box;
  HTMLWindowActivate(p, t.env, st, box);
  EXPECT_TRUE(st.bUseJSCaller);
  p.button(1).URL = "x.htm";
  HTMLWindowActivate(p, t.env, st, box);
  EXPECT_FALSE(st.bUseJSCaller);
}

TEST(HTMLWindow, CaptionNamesTheProjectFile) {
  Project p;
  EXPECT_EQ(HTMLWindowCaption(p), "HTML Code");
  p.sProjectFile = "/home/me/Projects/Nav bar.kpn";
  EXPECT_EQ(HTMLWindowCaption(p), "HTML Code - Nav bar.kpn");
}

TEST(HTMLWindow, AddJarIsReadFromTheVersionSectionWithDefaultOn) {
  TestEnv t;
  EXPECT_TRUE(ReadAddJAR(t.env));
  t.store.Set("2.02", "bAddJAR", "0");
  EXPECT_FALSE(ReadAddJAR(t.env));
  t.store.Set("2.02", "bAddJAR", "yes");
  EXPECT_FALSE(ReadAddJAR(t.env));
  t.store.Set("2.02", "bAddJAR", "1");
  EXPECT_TRUE(ReadAddJAR(t.env));
}

// --- ScrollFirstButton -------------------------------------------------------------------------

Project Scattered() {
  Project p = PlainProject(3);
  // Button 1: bottom 40, right 110; 2: bottom 70, right 60; 3: bottom 70, right 300.
  p.button(1).x = 10, p.button(1).y = 10, p.button(1).Width = 100, p.button(1).Height = 30;
  p.button(2).x = 0, p.button(2).y = 50, p.button(2).Width = 60, p.button(2).Height = 20;
  p.button(3).x = 200, p.button(3).y = 40, p.button(3).Width = 100, p.button(3).Height = 30;
  return p;
}

TEST(ScrollFirstButton, EachDirectionPicksItsEdgeAndTiesGoToTheLowerIndex) {
  Project p = Scattered();
  EXPECT_EQ(ScrollFirstButton(p, 0), 1);  // bottoms 70 and 70: button 2
  EXPECT_EQ(ScrollFirstButton(p, 1), 0);  // smallest y: button 1
  EXPECT_EQ(ScrollFirstButton(p, 2), 2);  // rightmost: button 3
  EXPECT_EQ(ScrollFirstButton(p, 3), 1);  // smallest x: button 2
}

TEST(ScrollFirstButton, EmptyListGivesMinusOneExceptDirectionOne) {
  Project p = PlainProject(0);
  EXPECT_EQ(ScrollFirstButton(p, 0), -1);
  EXPECT_EQ(ScrollFirstButton(p, 1), 0);
  EXPECT_EQ(ScrollFirstButton(p, 2), -1);
  EXPECT_EQ(ScrollFirstButton(p, 3), -1);
}

TEST(ScrollFirstButton, FarAwayButtonsAreNeverChosenBySmallestSearches) {
  Project p = PlainProject(1);
  p.button(1).x = 32000;
  p.button(1).y = 32000;
  EXPECT_EQ(ScrollFirstButton(p, 1), 0);
  EXPECT_EQ(ScrollFirstButton(p, 3), -1);
}

TEST(ScrollFirstButton, NoPositiveEdgeGivesMinusOne) {
  Project p = PlainProject(1);
  p.button(1).x = -50;
  p.button(1).y = -50;
  p.button(1).Width = 20;
  p.button(1).Height = 20;
  EXPECT_EQ(ScrollFirstButton(p, 0), -1);
  EXPECT_EQ(ScrollFirstButton(p, 2), -1);
}

TEST(ScrollFirstButton, GoesIntoFieldTwentyThreeAndOtherDirectionsKeepTheLastValue) {
  TestEnv t;
  Project p = Scattered();
  p.iScDirection = 2;
  GeneratorState st;
  std::string text = Generate(p, t, st);
  EXPECT_EQ(st.iScFirstBtn, 2);
  EXPECT_EQ(GetField(LineOf(text, 4), "|", 23), "2");
  p.iScDirection = 7;
  text = Generate(p, t, st);
  EXPECT_EQ(st.iScFirstBtn, 2);
  EXPECT_EQ(GetField(LineOf(text, 4), "|", 26), "7");
}

}  // namespace
}  // namespace kp
