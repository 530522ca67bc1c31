// The player's script element in built, tested and replaced pages, and the
// player file beside the applet's own files.
#include <gtest/gtest.h>

#include <algorithm>

#include "core/conv.h"
#include "core/settings.h"
#include "generate/html_generator.h"
#include "publish/browser_test.h"
#include "publish/build.h"
#include "publish/export.h"
#include "publish/player.h"
#include "publish/replace.h"
#include "tests/publish/publish_fixture.h"

namespace kp {
namespace {

using test::CheckListAnswer;
using test::Exists;
using test::FilesIn;
using test::MakeFiles;
using test::Pub;
using test::TempDir;

const std::string kCRLF = "\r\n";
const std::string kElement = "<script type=\"text/javascript\" src=\"KestrelPane.js\"></script>";
const std::string kEnd = "<!-- END GENERATED CODE -->";

int Count(const std::string& text, const std::string& part) {
  int n = 0;
  for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++n;
  return n;
}

// A one-button project with the player (and the class files) in the
// program folder.
struct PlayerFixture : Pub {
  TempDir out;
  PlayerFixture() {
    MakeFiles(t.home.path(),
              {"KestrelPane.class", "KestrelPane.cab", "KestrelPane.jar", "KestrelPane.js"});
    AddButton("Home");
    Generate();
  }
  BuildReport Build(bool withFiles, const std::string& name = "page.html") {
    prompter().saveAnswers = {out.file(name)};
    return BuildApplet(c, withFiles);
  }
  bool PlayerCopied() const {
    return std::any_of(fs.copies.begin(), fs.copies.end(),
                       [](const auto& c) { return EndsWith(c.first, "KestrelPane.js"); });
  }
  // Replaces the first applet of `name` in the output folder.
  bool Replace(const std::string& name) {
    win.txtAutoReplaceHTML_FileName = out.file(name);
    prompter().checkListAnswers.push_back(CheckListAnswer{true, std::vector<bool>{true}});
    return btnAutoReplaceHTML_Click(c);
  }
};

// --- The element's text --------------------------------------------------------

TEST(PlayerScriptSrc, FollowsTheCodeBaseWithForwardSlashes) {
  EXPECT_EQ(PlayerScriptSrc(""), "KestrelPane.js");
  EXPECT_EQ(PlayerScriptSrc("code"), "code/KestrelPane.js");
  EXPECT_EQ(PlayerScriptSrc("code\\"), "code/KestrelPane.js");
  EXPECT_EQ(PlayerScriptSrc("code/"), "code/KestrelPane.js");
  EXPECT_EQ(PlayerScriptSrc("applet\\code"), "applet/code/KestrelPane.js");
  EXPECT_EQ(PlayerScriptSrc("../shared"), "../shared/KestrelPane.js");
  EXPECT_EQ(PlayerScriptSrc("/"), "/KestrelPane.js");
}

TEST(PlayerScriptSrc, HttpCodeBaseGetsTheFileNameAfterExactlyOneSlash) {
  EXPECT_EQ(PlayerScriptSrc("http://example.com/bar"), "http://example.com/bar/KestrelPane.js");
  EXPECT_EQ(PlayerScriptSrc("http://example.com/bar/"), "http://example.com/bar/KestrelPane.js");
  EXPECT_EQ(PlayerScriptSrc("https://cdn.example.com/"), "https://cdn.example.com/KestrelPane.js");
}

TEST(PlayerScriptElement, IsOneScriptTagLoadingTheSrc) {
  EXPECT_EQ(PlayerScriptElement(""), kElement);
  EXPECT_EQ(PlayerScriptElement("code"),
            "<script type=\"text/javascript\" src=\"code/KestrelPane.js\"></script>");
  // A quote in the folder would close the attribute early.
  EXPECT_EQ(PlayerScriptSrc("a\"b"), "a%22b/KestrelPane.js");
}

TEST(HasPlayerScript, FindsAnySrcEndingInThePlayersNameButNotOthers) {
  EXPECT_TRUE(HasPlayerScript("<script src=\"KestrelPane.js\"></script>"));
  EXPECT_TRUE(HasPlayerScript("<SCRIPT type='text/javascript' SRC='lib/kestrelpane.JS'>"));
  EXPECT_TRUE(HasPlayerScript("<script src=http://x.org/KestrelPane.js></script>"));
  EXPECT_TRUE(HasPlayerScript("<script\r\n  src = \"a/KestrelPane.js\" defer></script>"));
  EXPECT_FALSE(HasPlayerScript("<script src=\"other.js\"></script>"));
  EXPECT_FALSE(HasPlayerScript("<script src=\"MyKestrelPane.js\"></script>"));
  EXPECT_FALSE(HasPlayerScript("<script data-src=\"KestrelPane.js\"></script>"));
  EXPECT_FALSE(HasPlayerScript("<script>load('KestrelPane.js')</script>"));
  EXPECT_FALSE(HasPlayerScript("<img src=\"KestrelPane.js\">"));
}

// --- Where it goes ---------------------------------------------------------------

TEST(WithPlayerScript, GoesOnTheLineAfterTheLastEndComment) {
  const std::string page = "<body>\r\n<applet>\r\n</applet>\r\n" + kEnd + "\r\n</body>\r\n";
  EXPECT_EQ(WithPlayerScript(page, ""),
            "<body>\r\n<applet>\r\n</applet>\r\n" + kEnd + "\r\n" + kElement + "\r\n</body>\r\n");
}

TEST(WithPlayerScript, PageWithTwoAppletBlocksGetsOneElementAfterTheLast) {
  const std::string block = "<applet>\r\n</applet>\r\n" + kEnd + "\r\n";
  const std::string page = "<body>\r\n" + block + "<p>between</p>\r\n" + block + "</body>\r\n";
  const std::string result = WithPlayerScript(page, "");
  EXPECT_EQ(Count(result, kElement), 1);
  EXPECT_EQ(result, "<body>\r\n" + block + "<p>between</p>\r\n" + block + kElement + "\r\n" +
                        "</body>\r\n");
}

TEST(WithPlayerScript, WithoutEndCommentGoesAfterTheLastClosingAppletTagInAnyCase) {
  const std::string page = "<applet a>\n</applet>\n<p>x</p>\n<APPLET b>\n</APPLET>\n</body>\n";
  EXPECT_EQ(WithPlayerScript(page, "code"),
            "<applet a>\n</applet>\n<p>x</p>\n<APPLET b>\n</APPLET>\n"
            "<script type=\"text/javascript\" src=\"code/KestrelPane.js\"></script>\n</body>\n");
}

TEST(WithPlayerScript, TextAfterTheAnchorOnItsLineMovesToTheNextLine) {
  EXPECT_EQ(WithPlayerScript("<applet></applet></body>", ""),
            "<applet></applet>\r\n" + kElement + "\r\n</body>");
  EXPECT_EQ(WithPlayerScript("<applet></applet>", ""), "<applet></applet>\r\n" + kElement);
}

TEST(WithPlayerScript, PageWithoutAppletOrWithThePlayerAlreadyStaysAsItWas) {
  EXPECT_EQ(WithPlayerScript("<p>nothing</p>\r\n", ""), "<p>nothing</p>\r\n");
  const std::string loaded =
      "<script src=\"js/KestrelPane.js\"></script>\r\n<applet>\r\n</applet>\r\n" + kEnd + "\r\n";
  EXPECT_EQ(WithPlayerScript(loaded, ""), loaded);
}

// --- The setting -------------------------------------------------------------------

TEST(PlayerSetting, IsOnByDefaultAndLivesInTheParamsSection) {
  Pub f;
  EXPECT_EQ(ParamDefault(f.env, "bAddPlayerScript"), "1");
  EXPECT_TRUE(PlayerScriptSetting(f.env));
  EXPECT_TRUE(PlayerWanted(f.c));
  SetPlayerScriptSetting(f.env, false);
  EXPECT_EQ(f.t.store.Get(kSecParams, "bAddPlayerScript"), std::optional<std::string>("0"));
  EXPECT_FALSE(PlayerWanted(f.c));
  SetPlayerScriptSetting(f.env, true);
  EXPECT_TRUE(PlayerWanted(f.c));
  // The command line's bare pages win over the setting.
  f.state.bWithoutPlayer = true;
  EXPECT_FALSE(PlayerWanted(f.c));
}

// --- Build -------------------------------------------------------------------------

TEST(BuildWithPlayer, ElementAppearsOnceRightAfterTheLastEndComment) {
  PlayerFixture f;
  ASSERT_EQ(f.Build(true).result, BuildResult::Built);
  const std::string page = f.out.read("page.html");
  EXPECT_EQ(Count(page, "<script"), 1);
  EXPECT_EQ(Count(page, kElement), 1);
  EXPECT_NE(page.find(kEnd + kCRLF + kElement + kCRLF), std::string::npos);
  EXPECT_GT(page.find(kElement), page.rfind(kEnd));
}

TEST(BuildWithPlayer, GeneratedBlockStaysByteForByte) {
  PlayerFixture f;
  f.Build(true);
  const std::string page = f.out.read("page.html");
  // MakeHTML's block, untouched, with the player's line behind it.
  CodeBox fresh;
  GeneratorState st;
  st.bAddJAR = true;
  MakeHTML(f.p, f.env, st, fresh);
  ASSERT_EQ(fresh.text, f.txtHTML.text);
  EXPECT_EQ(page, f.p.sHTMLbefore + fresh.text + kElement + kCRLF + f.p.sHTMLafter + kCRLF);
  EXPECT_EQ(fresh.text.find("<script type"), std::string::npos);
}

TEST(BuildWithPlayer, CodeBaseCodeLoadsCodeSlashPlayerAndTheFileLandsInCode) {
  PlayerFixture f;
  f.p.CodeBase = "code";
  f.Generate();
  f.Build(true);
  const std::string page = f.out.read("page.html");
  EXPECT_NE(
      page.find(kEnd + kCRLF +
                "<script type=\"text/javascript\" src=\"code/KestrelPane.js\"></script>" + kCRLF),
      std::string::npos);
  EXPECT_EQ(f.out.read("code/KestrelPane.js"), "KestrelPane.js");
  EXPECT_FALSE(Exists(f.out.file("KestrelPane.js")));
}

TEST(BuildWithPlayer, BackslashCodeBaseLoadsWithForwardSlashes) {
  PlayerFixture f;
  f.p.CodeBase = "code\\";
  f.Generate();
  f.Build(false);
  EXPECT_NE(f.out.read("page.html").find("src=\"code/KestrelPane.js\""), std::string::npos);
}

TEST(BuildWithPlayer, HttpCodeBaseLoadsThePlayerFromTheServer) {
  PlayerFixture f;
  f.p.CodeBase = "http://example.com/bar/";
  f.Generate();
  f.Build(false);
  const std::string page = f.out.read("page.html");
  EXPECT_NE(page.find(kEnd + kCRLF +
                      "<script type=\"text/javascript\" "
                      "src=\"http://example.com/bar/KestrelPane.js\"></script>" +
                      kCRLF),
            std::string::npos);
}

TEST(BuildWithPlayer, EmptyCodeBasePutsThePlayerBesideThePage) {
  PlayerFixture f;
  f.Build(true);
  EXPECT_EQ(f.out.read("KestrelPane.js"), "KestrelPane.js");
  EXPECT_TRUE(f.PlayerCopied());
}

TEST(BuildWithPlayer, SaveHtmlOnlyAddsTheElementButCopiesNothing) {
  PlayerFixture f;
  ASSERT_EQ(f.Build(false).result, BuildResult::Built);
  EXPECT_EQ(Count(f.out.read("page.html"), kElement), 1);
  EXPECT_TRUE(f.fs.copies.empty());
  EXPECT_EQ(FilesIn(f.out.path()), std::vector<std::string>{"page.html"});
}

TEST(BuildWithPlayer, SettingOffAddsNothingAndCopiesNothing) {
  PlayerFixture f;
  SetPlayerScriptSetting(f.env, false);
  f.Build(true);
  EXPECT_EQ(f.out.read("page.html"), PageText(f.p, f.txtHTML));
  EXPECT_EQ(f.out.read("page.html").find("<script"), std::string::npos);
  EXPECT_FALSE(f.PlayerCopied());
  EXPECT_FALSE(Exists(f.out.file("KestrelPane.js")));
  // The applet's own files still go.
  EXPECT_TRUE(Exists(f.out.file("KestrelPane.class")));
}

TEST(BuildWithPlayer, WithoutPlayerFlagAddsNothingAndCopiesNothing) {
  PlayerFixture f;
  f.state.bWithoutPlayer = true;
  f.Build(true);
  EXPECT_EQ(f.out.read("page.html"), PageText(f.p, f.txtHTML));
  EXPECT_FALSE(Exists(f.out.file("KestrelPane.js")));
}

TEST(BuildWithPlayer, PageThatAlreadyLoadsThePlayerGetsNoSecond) {
  PlayerFixture f;
  f.p.sHTMLbefore = "<html><head><script src=\"js/KestrelPane.js\"></script></head>\r\n<body>\r\n";
  f.Build(false);
  const std::string page = f.out.read("page.html");
  EXPECT_EQ(Count(page, "KestrelPane.js\"></script>"), 1);
  EXPECT_EQ(page.find(kElement), std::string::npos);
}

TEST(BuildWithPlayer, TwoGeneratedBlocksInThePageGetOneElementAfterTheLast) {
  PlayerFixture f;
  // The author pasted an earlier block into the text around the code.
  f.p.sHTMLafter = "<p>more</p>\r\n" + f.txtHTML.text + "</body>\r\n";
  f.Build(false);
  const std::string page = f.out.read("page.html");
  EXPECT_EQ(Count(page, kEnd), 2);
  EXPECT_EQ(Count(page, kElement), 1);
  EXPECT_EQ(page.find(kElement), page.rfind(kEnd) + kEnd.size() + 2);
}

TEST(CopyClassFiles, PlayerFollowsTheClassFilesSkipRuleAndMissingIsSilent) {
  PlayerFixture f;
  // The program's own folder as the target copies nothing at all.
  Copy_Class_Files(f.c, f.t.home.path() + "/");
  EXPECT_TRUE(f.fs.copies.empty());

  Pub g;  // a program folder without the player
  TempDir out;
  Copy_Class_Files(g.c, out.path() + "/");
  EXPECT_FALSE(Exists(out.file("KestrelPane.js")));
  EXPECT_TRUE(g.prompter().shown.empty());
}

// --- Test in Browser ----------------------------------------------------------------

TEST(TestInBrowserWithPlayer, PageHasTheElementAndAppletTempGetsTheFile) {
  PlayerFixture f;
  const std::string page = TestInBrowser(f.c);
  ASSERT_FALSE(page.empty());
  const std::string text = test::ReadBytes(page);
  EXPECT_EQ(Count(text, kElement), 1);
  EXPECT_NE(text.find(kEnd + kCRLF + kElement + kCRLF), std::string::npos);
  EXPECT_EQ(test::ReadBytes(f.t.home.path() + "/AppletTemp/KestrelPane.js"), "KestrelPane.js");
}

TEST(TestInBrowserWithPlayer, CodeBaseFolderBelowAppletTempGetsTheFile) {
  PlayerFixture f;
  f.p.CodeBase = "code";
  f.Generate();
  const std::string page = TestInBrowser(f.c);
  EXPECT_NE(test::ReadBytes(page).find("src=\"code/KestrelPane.js\""), std::string::npos);
  EXPECT_TRUE(Exists(f.t.home.path() + "/AppletTemp/code/KestrelPane.js"));
}

TEST(TestInBrowserWithPlayer, SettingOffAddsNothingAndCopiesNothing) {
  PlayerFixture f;
  SetPlayerScriptSetting(f.env, false);
  const std::string page = TestInBrowser(f.c);
  EXPECT_EQ(test::ReadBytes(page).find("<script"), std::string::npos);
  EXPECT_FALSE(Exists(f.t.home.path() + "/AppletTemp/KestrelPane.js"));
  EXPECT_FALSE(f.PlayerCopied());
}

// --- Replace ------------------------------------------------------------------------

TEST(ReplaceWithPlayer, AddsTheElementToAPageThatLacksIt) {
  PlayerFixture f;
  f.out.write("page.html", "<body>\r\n<applet code=\"Old.class\">\r\n</applet>\r\n</body>\r\n");
  ASSERT_TRUE(f.Replace("page.html"));
  const std::string page = f.out.read("page.html");
  EXPECT_EQ(page,
            "<body>\r\n" + NewAppletCode(f.txtHTML.text) + "\r\n" + kElement + "\r\n</body>\r\n");
}

TEST(ReplaceWithPlayer, PageWithTheGeneratedCommentsGetsItAfterTheLastEndComment) {
  PlayerFixture f;
  const std::string old = "<body>\r\n" + f.txtHTML.text + "<p>x</p>\r\n</body>\r\n";
  f.out.write("page.html", old);
  ASSERT_TRUE(f.Replace("page.html"));
  const std::string page = f.out.read("page.html");
  EXPECT_EQ(page, "<body>\r\n" + f.txtHTML.text + kElement + "\r\n<p>x</p>\r\n</body>\r\n");
}

TEST(ReplaceWithPlayer, SecondReplaceAddsNothing) {
  PlayerFixture f;
  f.out.write("page.html", "<body>\r\n<applet code=\"Old.class\">\r\n</applet>\r\n</body>\r\n");
  ASSERT_TRUE(f.Replace("page.html"));
  const std::string once = f.out.read("page.html");
  ASSERT_TRUE(f.Replace("page.html"));
  EXPECT_EQ(f.out.read("page.html"), once);
  EXPECT_EQ(Count(once, kElement), 1);
}

TEST(ReplaceWithPlayer, PageThatLoadsThePlayerElsewhereGetsNoSecond) {
  PlayerFixture f;
  const std::string head = "<head><script src='scripts/KestrelPane.js'></script></head>\r\n";
  f.out.write("page.html", head + "<applet code=\"Old.class\">\r\n</applet>\r\n");
  ASSERT_TRUE(f.Replace("page.html"));
  EXPECT_EQ(f.out.read("page.html"), head + NewAppletCode(f.txtHTML.text) + "\r\n");
}

TEST(ReplaceWithPlayer, UpdateFilesCopiesThePlayerBesideThePage) {
  PlayerFixture f;
  f.win.chkUpdateRequired = true;
  f.out.write("page.html", "<applet code=\"Old.class\">\r\n</applet>\r\n");
  ASSERT_TRUE(f.Replace("page.html"));
  EXPECT_EQ(f.out.read("KestrelPane.js"), "KestrelPane.js");
}

TEST(ReplaceWithPlayer, WithoutUpdateFilesCopiesNoPlayer) {
  PlayerFixture f;
  f.out.write("page.html", "<applet code=\"Old.class\">\r\n</applet>\r\n");
  ASSERT_TRUE(f.Replace("page.html"));
  EXPECT_FALSE(f.PlayerCopied());
  EXPECT_FALSE(Exists(f.out.file("KestrelPane.js")));
}

TEST(ReplaceWithPlayer, SettingOffAddsNothingAndCopiesNothing) {
  PlayerFixture f;
  SetPlayerScriptSetting(f.env, false);
  f.win.chkUpdateRequired = true;
  f.out.write("page.html", "<applet code=\"Old.class\">\r\n</applet>\r\n");
  ASSERT_TRUE(f.Replace("page.html"));
  EXPECT_EQ(f.out.read("page.html"), NewAppletCode(f.txtHTML.text) + "\r\n");
  EXPECT_FALSE(Exists(f.out.file("KestrelPane.js")));
  EXPECT_TRUE(Exists(f.out.file("KestrelPane.class")));
}

// --- Export -------------------------------------------------------------------------

TEST(ExportWithPlayer, ExportCopiesNoPlayerFile) {
  PlayerFixture f;
  TempDir media;
  MakeFiles(media.path(), {"a.gif"});
  f.p.button(1).Image[1] = media.file("a.gif");
  f.prompter().saveAnswers = {f.out.file("bar.kpn")};
  ExportReport r = mnuExport_Click(f.c);
  ASSERT_TRUE(r.saved);
  EXPECT_EQ(FilesIn(f.out.path()), (std::vector<std::string>{"a.gif", "bar.kpn"}));
  EXPECT_FALSE(f.PlayerCopied());
}

}  // namespace
}  // namespace kp
