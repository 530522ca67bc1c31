#include <gtest/gtest.h>

#include "core/conv.h"
#include "core/settings.h"
#include "publish/browser_test.h"
#include "tests/publish/publish_fixture.h"

namespace kp {
namespace {

using test::Exists;
using test::FilesIn;
using test::MakeFiles;
using test::Pub;
using test::TempDir;

const std::string kMeta =
    "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=iso-8859-1\">";

TEST(GetTempPageName, UnsavedProjectWithABlankInItsNameGetsAnUnderscore) {
  Project p;
  p.sProjectName = "My Project";
  EXPECT_EQ(GetTempPageName(p), "My_Project");
  p.sProjectName = "";
  EXPECT_EQ(GetTempPageName(p), "KestrelPane");
}

TEST(GetTempPageName, ProjectFileWithTwoDotsKeepsTheFirst) {
  Project p;
  p.sProjectName = "Ignored";
  p.sProjectFile = "/home/me/bar.v2.kpn";
  EXPECT_EQ(GetTempPageName(p), "bar.v2");
  p.sProjectFile = "C:\\Projects\\my bar&!0x.kpn";
  EXPECT_EQ(GetTempPageName(p), "my_bar_x");
}

struct TestFixture : Pub {
  TestFixture() {
    AddButton("Home");
    Generate();
  }
  std::string Folder() const { return t.home.path() + "/AppletTemp"; }
};

TEST(TestInBrowser, WritesThePageInAppletTempAndOpensItWithTheDesktopsOpener) {
  TestFixture f;
  const std::string page = TestInBrowser(f.c);
  EXPECT_EQ(page, f.Folder() + "/MyProject.htm");
  // The code box ends with the end comment's line; the player's line follows.
  EXPECT_EQ(test::ReadBytes(page),
            f.p.sHTMLbefore + f.txtHTML.text +
                "<script type=\"text/javascript\" src=\"KestrelPane.js\"></script>\r\n" +
                f.p.sHTMLafter + "\r\n");
  ASSERT_EQ(f.launcher.calls.size(), 1u);
  EXPECT_EQ(f.launcher.calls[0].verb, "open");
  EXPECT_EQ(f.launcher.calls[0].args, std::vector<std::string>{page});
  // The test itself stays silent: no folders notice, no closing dialog.
  EXPECT_TRUE(f.prompter().shown.empty());
}

TEST(TestInBrowser, DefaultRowNeverReadsThePathList) {
  TestFixture f;
  f.win.browsers.cmbBrowser = {"Default", "Fake"};
  f.win.browsers.List1 = {"/opt/fake/browser"};
  f.win.browsers.listIndex = 0;
  TestInBrowser(f.c);
  ASSERT_EQ(f.launcher.calls.size(), 1u);
  EXPECT_EQ(f.launcher.calls[0].verb, "open");
  EXPECT_TRUE(f.launcher.calls[0].program.empty());
}

TEST(TestInBrowser, AppletViewerGetsTheRelativeNameOtherBrowsersTheFullPath) {
  TestFixture f;
  f.win.browsers.cmbBrowser = {"Default", "Viewer", "Fox", "Viewer2"};
  f.win.browsers.List1 = {"/jdk/bin/appletviewer", "/usr/bin/firefox", "C:\\JDK\\AppletViewer.EXE"};
  f.win.browsers.listIndex = 1;
  TestInBrowser(f.c);
  f.win.browsers.listIndex = 2;
  TestInBrowser(f.c);
  f.win.browsers.listIndex = 3;
  TestInBrowser(f.c);
  ASSERT_EQ(f.launcher.calls.size(), 3u);
  EXPECT_EQ(f.launcher.calls[0].program, "/jdk/bin/appletviewer");
  EXPECT_EQ(f.launcher.calls[0].args, std::vector<std::string>{"MyProject.htm"});
  EXPECT_EQ(f.launcher.calls[0].workDir, f.Folder() + "/");
  EXPECT_EQ(f.launcher.calls[1].program, "/usr/bin/firefox");
  EXPECT_EQ(f.launcher.calls[1].args, std::vector<std::string>{f.Folder() + "/MyProject.htm"});
  EXPECT_EQ(f.launcher.calls[1].workDir, f.Folder() + "/");
  EXPECT_TRUE(f.launcher.calls[1].detached);
  EXPECT_EQ(f.launcher.calls[2].args, std::vector<std::string>{"MyProject.htm"});
}

TEST(TestInBrowser, ABrowserThatCannotStartFailsSilently) {
  TestFixture f;
  f.launcher.fail = true;
  EXPECT_FALSE(TestInBrowser(f.c).empty());
  EXPECT_TRUE(f.prompter().shown.empty());
}

TEST(TestInBrowser, CodeBaseCodeGetsASubfolderWithTheClassFilesAndThePagePointsThere) {
  TestFixture f;
  MakeFiles(f.t.home.path(), {"KestrelPane.class", "KestrelPane.cab", "KestrelPane.jar"});
  TempDir media;
  MakeFiles(media.path(), {"a.gif"});
  f.p.button(1).Image[1] = media.file("a.gif");
  f.p.CodeBase = "code";
  f.Generate();
  const std::string page = TestInBrowser(f.c);
  EXPECT_EQ(FilesIn(f.Folder() + "/code"),
            (std::vector<std::string>{"KestrelPane.cab", "KestrelPane.class", "KestrelPane.jar",
                                      "a.gif"}));
  EXPECT_NE(test::ReadBytes(page).find("codebase=\"code\""), std::string::npos);
  EXPECT_TRUE(f.prompter().shown.empty());
}

TEST(TestInBrowser, FirstTestAddsTheMetaLineToAHeadWrittenWithACapital) {
  TestFixture f;
  ASSERT_NE(f.p.sHTMLbefore.find("<Head>"), std::string::npos);
  TestInBrowser(f.c);
  EXPECT_NE(f.p.sHTMLbefore.find("<head> \r\n" + kMeta + "\r\n<Title>"), std::string::npos);
  EXPECT_EQ(f.p.sHTMLbefore.find("<Head>"), std::string::npos);
  const std::string once = f.p.sHTMLbefore;
  TestInBrowser(f.c);
  EXPECT_EQ(f.p.sHTMLbefore, once);
}

TEST(TestInBrowser, LowerCaseHeadOrALanguageNotAppliedGetsNoMetaLine) {
  TestFixture f;
  f.p.sHTMLbefore = "<html><head><title>x</title></head><body>";
  TestInBrowser(f.c);
  EXPECT_EQ(f.p.sHTMLbefore.find(kMeta), std::string::npos);

  TestFixture g;
  fWriteValue(g.env, kSecLanguage, "ENGLISH", "NO");
  TestInBrowser(g.c);
  EXPECT_EQ(g.p.sHTMLbefore.find(kMeta), std::string::npos);
}

TEST(TestInBrowser, BackupSettingSavesTheProjectBesideTheTestPage) {
  TestFixture f;
  TestInBrowser(f.c);
  EXPECT_FALSE(Exists(f.Folder() + "/MyProject.kpn"));
  SetParam(f.env, "bSaveBackup", "1");
  f.p.bProjectSaved = false;
  TestInBrowser(f.c);
  EXPECT_TRUE(Exists(f.Folder() + "/MyProject.kpn"));
  EXPECT_FALSE(f.p.bProjectSaved);  // kept as it was
  EXPECT_FALSE(f.prompter().busy);
}

TEST(TestInBrowser, JavaScriptProjectGetsTheCallerBody) {
  TestFixture f;
  f.p.button(1).URL = "javascript:hello()";
  f.Generate();
  const std::string page = TestInBrowser(f.c);
  EXPECT_NE(test::ReadBytes(page).find("<Body onload=\"InitJSCaller();\">"), std::string::npos);
}

TEST(IsAppletViewer, EndsInTheViewersNameInAnyCase) {
  EXPECT_TRUE(IsAppletViewer("/jdk/bin/appletviewer"));
  EXPECT_TRUE(IsAppletViewer("C:\\jdk\\bin\\APPLETVIEWER.exe"));
  EXPECT_FALSE(IsAppletViewer("/usr/bin/appletviewer.sh"));
  EXPECT_FALSE(IsAppletViewer("/usr/bin/firefox"));
}

}  // namespace
}  // namespace kp
