// Starting, renewing and leaving a project; the state names.
#include <gtest/gtest.h>

#include "core/settings.h"
#include "project/new_project.h"
#include "project/project_file.h"
#include "tests/project/project_fixture.h"

namespace kp::test {
namespace {

TEST(ProjectModel, OnlyTheThreeStateNamesAreLegalStates) {
  EXPECT_EQ(GetStateIndex(std::string("UP")), 1);
  EXPECT_EQ(GetStateIndex(std::string("OVER")), 2);
  EXPECT_EQ(GetStateIndex(std::string("DOWN")), 3);
  for (const char* s : {"up", "Over", "", "UP ", "LEAVE"}) EXPECT_EQ(GetStateIndex(std::string(s)), 0) << s;
}

TEST(ProjectModel, HiddenButtonWithoutHandIsStoredLikeAnyOther) {
  TestEnv t;
  Project p = MakeProject(t, 2);
  p.button(1).ShowHand = false;
  p.button(1).Hidden = 1;
  SaveProject(p, t.env, t.home.file("h.kpn"), false, false);
  Project q;
  ASSERT_EQ(LoadProject2(q, t.env, t.home.file("h.kpn")), LoadResult::Loaded);
  EXPECT_EQ(q.ButtonCount, 2);
  EXPECT_EQ(q.button(1), p.button(1));
}

TEST(ProjectModel, FreshStartHoldsOneDefaultButtonAndClosingAsksNothing) {
  TestEnv t;
  Project p;
  ASSERT_TRUE(FreshStart(p, t.env));
  EXPECT_EQ(p.ButtonCount, 1);
  EXPECT_EQ(p.button(1).sBName, "Button 1");
  EXPECT_EQ(p.button(1).Label[1], "Button 1");
  // The add command's place for the first button of an empty applet.
  EXPECT_EQ(p.button(1).x, 10);
  EXPECT_EQ(p.button(1).y, 10);
  EXPECT_TRUE(p.bProjectSaved);
  EXPECT_EQ(p.sState, "UP");
  bool saved = false;
  EXPECT_EQ(AskToSaveChanges(p, t.env, [&] { saved = true; }), "SAVED");
  EXPECT_EQ(t.prompter.CountMsg(), 0);
  EXPECT_FALSE(saved);
}

TEST(ProjectModel, NewProjectHasNoButtonAtAll) {
  TestEnv t;
  Project p;
  FreshStart(p, t.env);
  p.sProjectFile = "/x.kpn";
  p.AppletWidth = 10;
  NewProject(p, t.env);
  EXPECT_EQ(p.ButtonCount, 0);
  EXPECT_EQ(p.iCurBtn, 0);
  EXPECT_EQ(p.AppletWidth, 420);
  EXPECT_EQ(p.sProjectFile, "");
  EXPECT_TRUE(p.bProjectSaved);
}

TEST(ProjectModel, AskToSaveChangesOffersYesNoCancel) {
  TestEnv t;
  Project p;
  FreshStart(p, t.env);
  p.bProjectSaved = false;
  p.sProjectFile = "/a.kpn";
  int saves = 0;
  t.prompter.answers = {Answer::Yes, Answer::No, Answer::Cancel};
  EXPECT_EQ(AskToSaveChanges(p, t.env, [&] { ++saves; }), "YES");
  EXPECT_EQ(AskToSaveChanges(p, t.env, [&] { ++saves; }), "NO");
  EXPECT_EQ(AskToSaveChanges(p, t.env, [&] { ++saves; }), "CANCEL");
  EXPECT_EQ(saves, 1);
  EXPECT_EQ(t.prompter.shown[0].text,
            "The Project /a.kpn has changed.\r\n\r\nDo you want to Save the changes?");
  EXPECT_EQ(t.prompter.shown[0].title, "KestrelPane");
  EXPECT_EQ(t.prompter.shown[0].buttons, Buttons::YesNoCancel);
}

TEST(ProjectModel, DefaultsComeFromTheDocumentedTable) {
  TestEnv t;
  Project p;
  FreshStart(p, t.env);
  EXPECT_EQ(p.AppletWidth, 420);
  EXPECT_EQ(p.AppletHeight, 180);
  EXPECT_EQ(p.BackGround, 16777215);
  EXPECT_EQ(p.cFadeColor, 8388608);
  EXPECT_EQ(p.iABorderWidth, 10);
  EXPECT_EQ(p.iDescentX, 1);
  EXPECT_EQ(p.iTipHideAfter, 2500);
  EXPECT_EQ(p.sLoading, "Loading...");
  EXPECT_EQ(p.sHTMLalt, "<BLINK><b>Java is disabled in your Browser!</b></BLINK>");
  EXPECT_EQ(p.sHTMLafter, "\r\n</Center>\r\n</Body>\r\n</Html>");
  EXPECT_EQ(p.sHTMLbefore,
            "<Html>\r\n<Head><Title>Kestrel Pane</Title></Head>\r\n<Body>\r\n<Center>\r\n\r\n");
  EXPECT_EQ(p.sSearchImagesFolder, t.home.path() + "/Samples");
  EXPECT_EQ(p.Btn.size(), static_cast<size_t>(kBtnUpperBound + 1));
}

}  // namespace
}  // namespace kp::test
