#include <gtest/gtest.h>

#include "core/conv.h"
#include "generate/html_generator.h"
#include "generate/js_caller.h"
#include "generate/surrounding.h"
#include "tests/generate/generate_fixture.h"

namespace kp {
namespace {

using test::LineOf;
using test::PlainProject;
using test::RecordingView;
using test::TestEnv;

// --- Applet name and folders -------------------------------------------------------------

TEST(AppletPaths, TypedBlankInTheNameBecomesUnderscoreAndALeadingDigitGetsOneInFront) {
  Project p;
  AppletPathsBoxes boxes;
  boxes.txtAppletName = "my bar";
  txtAppletName_KeyUp(p, boxes);
  EXPECT_EQ(p.AppletName, "my_bar");
  boxes.txtAppletName = "2nd bar";
  txtAppletName_KeyUp(p, boxes);
  EXPECT_EQ(p.AppletName, "_2nd_bar");
  EXPECT_EQ(boxes.txtAppletName, "2nd bar");
}

TEST(AppletPaths, NameLosesEveryUnsafeCharacterDotsIncluded) {
  EXPECT_EQ(FilterAppletName("a.b-c\"d"), "a_b_c_d");
}

TEST(AppletPaths, BackSlashInTheImagesBoxReachesTheModelAsSlashWhileTheBoxKeepsIt) {
  TestEnv t;
  Project p = PlainProject(1);
  AppletPathsBoxes boxes;
  boxes.txtImgPath = "pics\\small";
  txtImgPath_KeyUp(p, boxes);
  EXPECT_EQ(p.ImgPath, "pics/small");
  EXPECT_EQ(boxes.txtImgPath, "pics\\small");

  // The next generation refills the box from the model.
  GeneratorState st;
  RecordingView view;
  CodeBox box;
  MakeHTML(p, t.env, st, box, &view);
  EXPECT_EQ(view.boxes.txtImgPath, "pics/small");
}

TEST(AppletPaths, FolderBoxesReplaceQuotesAndBars) {
  Project p;
  AppletPathsBoxes boxes;
  boxes.txtSndPath = "a\"b|c\\d";
  txtSndPath_KeyUp(p, boxes);
  EXPECT_EQ(p.SndPath, "a_b_c/d");
}

TEST(AppletPaths, CodeBaseLosesOnlyItsDoubleQuotes) {
  Project p;
  AppletPathsBoxes boxes;
  boxes.txtCodeBase = "..\\cls \"x\"|y";
  txtCodeBase_KeyUp(p, boxes);
  EXPECT_EQ(p.CodeBase, "..\\cls _x_|y");
}

TEST(AppletPaths, KeyReleaseMarksTheProjectChangedOnlyWhenTheValueChanges) {
  Project p;
  p.CodeBase = "cls";
  AppletPathsBoxes boxes;
  boxes.txtCodeBase = "cls";
  txtCodeBase_KeyUp(p, boxes);
  EXPECT_TRUE(p.bProjectSaved);
  boxes.txtCodeBase = "cls2";
  txtCodeBase_KeyUp(p, boxes);
  EXPECT_FALSE(p.bProjectSaved);
}

TEST(AppletPaths, RestoreDefaultsThenCloseGivesTheTagNameKestrelPaneAndCodeBaseDot) {
  TestEnv t;
  Project p = PlainProject(1);
  p.AppletName = "Nav";
  p.CodeBase = "cls";
  p.ImgPath = "img";
  p.SndPath = "snd";
  GeneratorState st;
  CodeBox box;
  HTMLWindowActivate(p, t.env, st, box);
  ASSERT_NE(LineOf(box.text, 2).find("name=\"Nav\""), std::string::npos);

  AppletPaths_Activate(st);  // the window opens
  AppletPathsBoxes boxes{"Nav", "cls", "img", "snd"};
  AppletPaths_RestoreDefaults(p, boxes);
  EXPECT_EQ(boxes.txtAppletName, "KestrelPane");
  EXPECT_EQ(boxes.txtCodeBase, "");
  EXPECT_EQ(boxes.txtImgPath, "");
  EXPECT_EQ(boxes.txtSndPath, "");
  EXPECT_FALSE(p.bProjectSaved);

  HTMLWindowActivate(p, t.env, st, box);  // closing goes back to the HTML window
  EXPECT_EQ(LineOf(box.text, 2),
            "<applet name=\"KestrelPane\" code=\"KestrelPane.class\" codebase=\".\" "
            "archive=\"KestrelPane.jar\" width=420 height=180>");
  EXPECT_EQ(GetField(LineOf(box.text, 4), "|", 36), "");
  EXPECT_EQ(GetField(LineOf(box.text, 4), "|", 37), "");
}

// --- Surrounding HTML ---------------------------------------------------------------------------

TEST(SurHTML, CancelKeepsTheStoredTextsButTheBodyChangeOfActivationStays) {
  Project p = PlainProject(1);
  p.button(1).URL = "JAVASCRIPT:open()";
  const std::string alt = p.sHTMLalt, after = p.sHTMLafter;
  GeneratorState st;
  SurHTMLBoxes boxes = SurHTML_Load(p, st);
  SurHTML_Activate(p, st);
  EXPECT_TRUE(st.bUseJSCaller);
  EXPECT_NE(boxes.txtHTMLbefore.find(kCallerBody), std::string::npos);
  boxes.txtHTMLbefore = "changed";
  boxes.txtHTMLalt = "changed";
  boxes.txtHTMLafter = "changed";
  // Cancel: nothing is stored.
  EXPECT_EQ(p.sHTMLalt, alt);
  EXPECT_EQ(p.sHTMLafter, after);
  EXPECT_NE(p.sHTMLbefore.find(kCallerBody), std::string::npos);
}

TEST(SurHTML, ApplyStoresTheThreeBoxesAndMarksTheProjectChanged) {
  Project p = PlainProject(0);
  GeneratorState st;
  SurHTMLBoxes boxes = SurHTML_Load(p, st);
  boxes.txtHTMLbefore = "<html><body>";
  boxes.txtHTMLalt = "";
  boxes.txtHTMLafter = "</body></html>";
  SurHTML_Apply(p, boxes);
  EXPECT_EQ(p.sHTMLbefore, "<html><body>");
  EXPECT_EQ(p.sHTMLalt, "");
  EXPECT_EQ(p.sHTMLafter, "</body></html>");
  EXPECT_FALSE(p.bProjectSaved);
}

TEST(SurHTML, LoadFillsTheBoxesFromTheModel) {
  Project p = PlainProject(0);
  p.sHTMLbefore = "B";
  p.sHTMLalt = "A";
  p.sHTMLafter = "F";
  GeneratorState st;
  SurHTMLBoxes boxes = SurHTML_Load(p, st);
  EXPECT_EQ(boxes.txtHTMLbefore, "B");
  EXPECT_EQ(boxes.txtHTMLalt, "A");
  EXPECT_EQ(boxes.txtHTMLafter, "F");
}

TEST(SurHTML, OwnTestLooksAtLinksOnlyNotAtActionPrograms) {
  Project p = PlainProject(2);
  p.button(1).ProgramOVER = "7 alert(1);";
  EXPECT_FALSE(SurHTMLUseJSCaller(p, true));
  EXPECT_TRUE(NeedsJSCaller(p));
  p.button(2).URL = "javascript:go()";
  EXPECT_TRUE(SurHTMLUseJSCaller(p, false));
}

TEST(SurHTML, WithNoButtonsTheFlagKeepsItsValue) {
  Project p = PlainProject(0);
  EXPECT_TRUE(SurHTMLUseJSCaller(p, true));
  EXPECT_FALSE(SurHTMLUseJSCaller(p, false));
}

TEST(SurHTML, ActivationWithoutJavaScriptLinksRemovesTheOnload) {
  Project p = PlainProject(1);
  p.button(1).ProgramDOWN = "7 alert(1);";  // the HTML window would want the caller
  p.sHTMLbefore = std::string("<html>") + kCallerBody;
  GeneratorState st;
  st.bUseJSCaller = true;
  SurHTML_Activate(p, st);
  EXPECT_FALSE(st.bUseJSCaller);
  EXPECT_EQ(p.sHTMLbefore, "<html><Body>");
}

}  // namespace
}  // namespace kp
