#include <gtest/gtest.h>

#include <filesystem>

#include "core/conv.h"
#include "core/settings.h"
#include "generate/js_caller.h"
#include "publish/build.h"
#include "tests/publish/publish_fixture.h"

namespace kp {
namespace {

using test::DialogAnswer;
using test::Exists;
using test::FilesIn;
using test::MakeFiles;
using test::Pub;
using test::ReadBytes;
using test::TempDir;

const std::string kCRLF = "\r\n";
const std::string kPlayerLine = "<script type=\"text/javascript\" src=\"KestrelPane.js\"></script>";

// A project of two buttons with a background, pictures and sounds in a
// media folder of their own.
struct MediaProject {
  TempDir media;
  MediaProject(Pub& f) {
    MakeFiles(media.path(), {"bg.jpg", "a.gif", "b.gif", "c.gif", "click.au", "over.au"});
    f.p.BackImg = media.file("bg.jpg");
    int one = f.AddButton("One");
    int two = f.AddButton("Two");
    f.p.button(one).Image[1] = media.file("a.gif");
    f.p.button(one).Image[3] = media.file("b.gif");
    f.p.button(one).Snd[2] = media.file("over.au");
    f.p.button(two).Image[2] = media.file("c.gif");
    f.p.button(two).Snd[3] = media.file("click.au");
    f.Generate();
  }
};

TEST(BuildApplet, CancelledSaveDialogChangesNothingNotEvenTheOutputFolder) {
  Pub f;
  f.AddButton("One");
  f.Generate();
  f.p.sOutputHTML = "/old/page.html";
  const std::string before = f.p.sHTMLbefore;
  BuildReport r = BuildApplet(f.c, true);
  EXPECT_EQ(r.result, BuildResult::Cancelled);
  EXPECT_EQ(f.p.sOutputFolder, "");
  EXPECT_EQ(f.p.sOutputHTML, "/old/page.html");
  EXPECT_EQ(f.p.sHTMLbefore, before);
  EXPECT_EQ(f.prompter().fileDialogs.size(), 1u);
  EXPECT_TRUE(f.prompter().dialogs.empty());

  // A project with an output folder keeps it too.
  f.p.sOutputFolder = f.t.home.path() + "/";
  BuildApplet(f.c, false);
  EXPECT_EQ(f.p.sOutputFolder, f.t.home.path() + "/");
}

TEST(BuildApplet, FirstBuildProposesTheProjectsFolderAndTheProjectName) {
  Pub f;
  f.Generate();
  BuildApplet(f.c, true);
  ASSERT_EQ(f.prompter().fileDialogs.size(), 1u);
  const FileDialog& d = f.prompter().fileDialogs[0];
  EXPECT_EQ(d.folder, f.t.home.path() + "/Projects/MyProject");
  // Proposed, not made: the dialog was cancelled.
  EXPECT_TRUE(d.folderMadeOnAccept);
  EXPECT_FALSE(std::filesystem::exists(d.folder));
  EXPECT_EQ(d.fileName, "MyProject.html");
  EXPECT_EQ(d.filter, "HTML (*.htm;*.html)|*.htm;*.html|All Files (*.*)|*.*");
  EXPECT_EQ(d.defaultExt, "html");
  EXPECT_TRUE(d.overwritePrompt);
  EXPECT_TRUE(d.pathMustExist);
  EXPECT_TRUE(d.hideReadOnly);
}

TEST(BuildApplet, CancelledDialogsLeaveTheFolderTreeAsItWas) {
  Pub f;
  f.AddButton("One");
  f.Generate();
  const auto before = test::TreeOf(f.t.home.path());
  EXPECT_EQ(BuildApplet(f.c, true).result, BuildResult::Cancelled);
  EXPECT_EQ(BuildApplet(f.c, false).result, BuildResult::Cancelled);
  EXPECT_EQ(test::TreeOf(f.t.home.path()), before);
}

TEST(BuildApplet, TheProposedFolderIsMadeWhenAPageInItIsChosen) {
  Pub f;
  f.AddButton("One");
  f.Generate();
  const std::string folder = f.t.home.path() + "/Projects/MyProject";
  ASSERT_FALSE(std::filesystem::exists(folder));
  f.prompter().saveAnswers.push_back(folder + "/MyProject.html");
  EXPECT_EQ(BuildApplet(f.c, false).result, BuildResult::Built);
  EXPECT_TRUE(std::filesystem::is_directory(folder));
  EXPECT_TRUE(Exists(folder + "/MyProject.html"));
}

TEST(BuildApplet, NoToTheFolderWarningBringsTheSaveDialogBack) {
  Pub f;
  f.Generate();
  TempDir occupied, empty;
  occupied.write("index.html", "old");
  f.prompter().saveAnswers = {occupied.file("page.html"), empty.file("page.html")};
  f.prompter().dialogAnswers = {DialogAnswer{1, {}}};  // "&No"
  BuildReport r = BuildApplet(f.c, true);
  EXPECT_EQ(r.result, BuildResult::Built);
  ASSERT_EQ(f.prompter().fileDialogs.size(), 2u);
  EXPECT_EQ(f.prompter().fileDialogs[1].folder, occupied.path() + "/");
  ASSERT_EQ(f.DialogsNamed("frmSomeFilesWarning").size(), 1u);
  EXPECT_FALSE(f.state.bSomeFilesProceed);
  EXPECT_FALSE(Exists(occupied.file("page.html")));
  EXPECT_TRUE(Exists(empty.file("page.html")));
  EXPECT_EQ(f.p.sOutputHTML, empty.file("page.html"));
}

TEST(BuildApplet, FolderWarningHasTheProgramsTextsAndYesProceeds) {
  Pub f;
  f.Generate();
  TempDir out;
  out.write("other.txt", "x");
  f.prompter().saveAnswers = {out.file("page.html")};
  BuildApplet(f.c, true);
  auto w = f.DialogsNamed("frmSomeFilesWarning");
  ASSERT_EQ(w.size(), 1u);
  EXPECT_EQ(w[0].caption, "Warning. Kestrel Pane 2.02");
  EXPECT_EQ(w[0].text, "This folder already contains files." + kCRLF +
                           "Such actions may overwrite some of them." + kCRLF +
                           "Are you sure you want to proceed?");
  ASSERT_EQ(w[0].buttons.size(), 2u);
  EXPECT_EQ(w[0].buttons[0].caption, "&Yes");
  EXPECT_EQ(w[0].buttons[1].caption, "&No");
  EXPECT_EQ(w[0].checkCaption, "show this warning next time.");
  EXPECT_TRUE(w[0].beep);
  EXPECT_TRUE(f.state.bSomeFilesProceed);
  EXPECT_TRUE(Exists(out.file("page.html")));
}

TEST(BuildApplet, UntickingTheFolderWarningTurnsItOff) {
  Pub f;
  f.Generate();
  TempDir out;
  out.write("other.txt", "x");
  f.prompter().saveAnswers = {out.file("page.html"), out.file("page.html")};
  f.prompter().dialogAnswers = {DialogAnswer{0, false}};
  BuildApplet(f.c, true);
  EXPECT_EQ(GetParam(f.env, "DontShowSomeFilesWarning"), "1");
  BuildApplet(f.c, true);
  EXPECT_EQ(f.DialogsNamed("frmSomeFilesWarning").size(), 1u);
}

TEST(BuildApplet, SaveHtmlOnlyNeverWarnsCopiesNothingButShowsTheClosingDialog) {
  Pub f;
  MediaProject m(f);
  TempDir out;
  out.write("index.html", "old");
  f.prompter().saveAnswers = {out.file("page.html")};
  BuildReport r = BuildApplet(f.c, false);
  EXPECT_EQ(r.result, BuildResult::Built);
  EXPECT_TRUE(f.DialogsNamed("frmSomeFilesWarning").empty());
  EXPECT_TRUE(f.fs.copies.empty());
  EXPECT_EQ(FilesIn(out.path()), (std::vector<std::string>{"index.html", "page.html"}));
  EXPECT_EQ(f.DialogsNamed("frmReadyForUpload").size(), 1u);
}

TEST(BuildApplet, PageIsTheTextBeforeTheCodeBoxAndTheTextAfterWithOneLineEnd) {
  Pub f;
  f.AddButton("One");
  f.p.button(1).URL = "javascript:go()";
  f.Generate();
  ASSERT_TRUE(f.st.bUseJSCaller);
  TempDir out;
  f.prompter().saveAnswers = {out.file("page.html")};
  BuildApplet(f.c, false);
  // The body tag got the caller's onload, in the project itself.
  EXPECT_NE(f.p.sHTMLbefore.find("<Body onload=\"InitJSCaller();\">"), std::string::npos);
  EXPECT_EQ(out.read("page.html"), f.p.sHTMLbefore + f.txtHTML.text + kPlayerLine + kCRLF +
                                      f.p.sHTMLafter + kCRLF);
  EXPECT_EQ(PageText(f.p, f.txtHTML), f.p.sHTMLbefore + f.txtHTML.text + f.p.sHTMLafter + kCRLF);
  EXPECT_EQ(BuildPageText(f.c), out.read("page.html"));
  EXPECT_EQ(f.p.sOutputFolder, out.path() + "/");
  EXPECT_EQ(f.p.sOutputHTML, out.file("page.html"));
}

TEST(BuildApplet, BlankInThePageNameWarnsAboutSpacesButNeverAboutBackslashes) {
  Pub f;
  f.Generate();
  TempDir out;
  f.prompter().saveAnswers = {out.file("my page.html")};
  BuildApplet(f.c, false);
  int spaces = 0, backslashes = 0;
  for (const auto& s : f.prompter().shown) {
    spaces += s.kind == "notice" && s.text.find("contains spaces!") != std::string::npos;
    backslashes += s.text.find("contains backlash!") != std::string::npos;
  }
  EXPECT_EQ(spaces, 1);
  EXPECT_EQ(backslashes, 0);
  EXPECT_TRUE(Exists(out.file("my page.html")));
}

TEST(BuildApplet, ClosingDialogExploresTheFolderAndCanBeTurnedOff) {
  Pub f;
  f.Generate();
  TempDir out;
  f.prompter().saveAnswers = {out.file("page.html"), out.file("page.html")};
  // Explore first (the window stays open), then Close with the box unticked.
  f.prompter().dialogAnswers = {DialogAnswer{0, {}}, DialogAnswer{1, false}};
  BuildApplet(f.c, false);
  auto d = f.DialogsNamed("frmReadyForUpload");
  ASSERT_EQ(d.size(), 1u);
  EXPECT_EQ(d[0].caption, "Applet built. Kestrel Pane 2.02");
  EXPECT_EQ(d[0].text, "The applet was successfully built, and is ready for upload." + kCRLF +
                           kCRLF +
                           "Note: everything is Case-Sensitive, so if your file is recorded as "
                           "\"MyImage.gif\" and you upload it as \"MYimaGe.GIF\" it won't work.");
  EXPECT_EQ(d[0].buttons[0].caption, "View files in the File &Manager");
  EXPECT_EQ(d[0].buttons[1].caption, "&Close");
  EXPECT_EQ(d[0].checkCaption, "show this message next time.");
  ASSERT_EQ(f.launcher.calls.size(), 1u);
  EXPECT_EQ(f.launcher.calls[0].verb, "explore");
  EXPECT_EQ(f.launcher.calls[0].args[0], out.path() + "/");
  EXPECT_EQ(GetParam(f.env, "DontShowReadyForUpload"), "1");
  BuildApplet(f.c, false);
  EXPECT_EQ(f.DialogsNamed("frmReadyForUpload").size(), 1u);
}

TEST(BuildApplet, CopiesBackgroundThenAllPicturesThenAllSounds) {
  Pub f;
  MediaProject m(f);
  TempDir out;
  f.prompter().saveAnswers = {out.file("page.html")};
  BuildReport r = BuildApplet(f.c, true);
  std::vector<std::string> order;
  for (auto& [from, to] : f.fs.copies)
    if (from.rfind(m.media.path(), 0) == 0) order.push_back(FileNameOnly(from));
  EXPECT_EQ(order,
            (std::vector<std::string>{"bg.jpg", "a.gif", "b.gif", "c.gif", "over.au", "click.au"}));
  EXPECT_EQ(r.media.copied, 6);
  EXPECT_EQ(r.media.reported, 0);
  for (const char* n : {"bg.jpg", "a.gif", "b.gif", "c.gif", "over.au", "click.au"})
    EXPECT_EQ(out.read(n), n) << n;
  EXPECT_TRUE(f.Messages().empty());
}

TEST(BuildApplet, IntoTheFolderWhereTheMediaLieSkipsEveryCopy) {
  Pub f;
  MediaProject m(f);
  f.prompter().saveAnswers = {m.media.file("page.html")};
  BuildReport r = BuildApplet(f.c, true);
  for (auto& [from, to] : f.fs.copies)
    EXPECT_EQ(from.rfind(m.media.path(), 0), std::string::npos) << from;
  EXPECT_EQ(r.media.copied, 0);
  EXPECT_EQ(r.media.skipped, 6);
  EXPECT_TRUE(f.Messages().empty());
}

TEST(BuildApplet, SameFileByAPathThatDiffersGivesTheSilentError70) {
  // The skip test compares the text of the paths: another spelling of the
  // same folder (here a link, where letter case does it on other systems)
  // is not skipped by name; the copy onto itself is error 70, which is
  // silent, and is counted with the skipped files, not the failed ones.
  Pub f;
  MediaProject m(f);
  TempDir links;
  const std::string alias = links.file("alias");
  std::filesystem::create_directory_symlink(m.media.path(), alias);
  f.prompter().saveAnswers = {alias + "/page.html"};
  BuildReport r = BuildApplet(f.c, true);
  EXPECT_EQ(r.media.skipped, 6);
  EXPECT_EQ(r.media.failed, 0);
  EXPECT_EQ(r.media.reported, 0);
  EXPECT_TRUE(f.Messages().empty());
  EXPECT_EQ(m.media.read("a.gif"), "a.gif");
  EXPECT_EQ(CopyErrorNumber(f.env, m.media.file("a.gif"), alias + "/a.gif",
                            f.fs.CopyFile(m.media.file("a.gif"), alias + "/a.gif")),
            70);
}

TEST(BuildApplet, HttpCodeBaseCreatesNoFoldersAndTheCopyErrorsAreReported) {
  Pub f;
  MediaProject m(f);
  f.p.CodeBase = "http://www.example.com/applets";
  f.Generate();
  TempDir out;
  f.prompter().saveAnswers = {out.file("page.html")};
  BuildReport r = BuildApplet(f.c, true);
  EXPECT_EQ(FilesIn(out.path()), std::vector<std::string>{"page.html"});
  std::error_code ec;
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(out.path(), ec),
                          std::filesystem::directory_iterator()),
            1);
  EXPECT_EQ(r.media.failed, 6);
  EXPECT_EQ(r.media.reported, 6);
  auto msgs = f.Messages();
  ASSERT_GE(msgs.size(), 2u);
  EXPECT_EQ(msgs[0].buttons, Buttons::OKCancel);
  EXPECT_EQ(msgs[0].text.rfind("Can't copy BackGround image:" + kCRLF + kCRLF +
                                   m.media.file("bg.jpg") + kCRLF + kCRLF,
                               0),
            0u);
  EXPECT_NE(msgs[0].text.find(" Error Number:76" + kCRLF + kCRLF +
                              "Press Cancel to stop showing error messages."),
            std::string::npos);
  EXPECT_EQ(msgs[1].text.rfind("Can't copy Picture for Button # 1" + kCRLF + kCRLF, 0), 0u);
  // The folders notice follows, as for any build with folders of its own.
  int notices = 0;
  for (const auto& s : f.prompter().shown) notices += s.title == "Notice";
  EXPECT_EQ(notices, 1);
}

TEST(BuildApplet, CancelInACopyErrorSilencesTheRestForTheProgramsLife) {
  Pub f;
  MediaProject m(f);
  f.fs.copies.clear();
  TempDir out;
  // Every copy fails: the media are gone.
  std::filesystem::remove_all(m.media.path());
  f.prompter().saveAnswers = {out.file("page.html"), out.file("page2.html")};
  f.prompter().answers = {Answer::OK, Answer::Cancel};
  BuildReport r = BuildApplet(f.c, true);
  EXPECT_EQ(r.media.failed, 6);
  EXPECT_EQ(r.media.reported, 2);
  EXPECT_TRUE(f.state.bStopCopyMessages);
  EXPECT_NE(f.Messages()[0].text.find(" Error Number:53"), std::string::npos);
  const size_t shown = f.Messages().size();
  BuildApplet(f.c, true);
  EXPECT_EQ(f.Messages().size(), shown);
}

TEST(BuildApplet, AMissingSoundIsWaitedForAndThenReported) {
  Pub f;
  int b = f.AddButton("One");
  TempDir media;
  f.p.button(b).Snd[1] = media.file("never.au");
  f.Generate();
  TempDir out;
  f.prompter().saveAnswers = {out.file("page.html")};
  BuildReport r = BuildApplet(f.c, true);
  EXPECT_EQ(f.clock.Slept(), std::chrono::seconds(6));
  EXPECT_EQ(r.media.reported, 1);
  EXPECT_EQ(f.Messages()[0].text.rfind(
                "Can't copy Sound for Button # 1" + kCRLF + kCRLF + media.file("never.au"), 0),
            0u);
}

TEST(BuildApplet, ImgPathStartingWithDotDotGoesOneFolderUpFromTheCodeBase) {
  Pub f;
  MediaProject m(f);
  f.p.CodeBase = "code";
  f.p.ImgPath = "../img";
  f.p.SndPath = "snd";
  f.Generate();
  TempDir out;
  f.prompter().saveAnswers = {out.file("page.html")};
  BuildApplet(f.c, true);
  EXPECT_EQ(FilesIn(out.file("img")),
            (std::vector<std::string>{"a.gif", "b.gif", "bg.jpg", "c.gif"}));
  EXPECT_EQ(FilesIn(out.file("code/snd")), (std::vector<std::string>{"click.au", "over.au"}));
  EXPECT_FALSE(Exists(out.file("code/img")));
}

TEST(BuildApplet, EmptySndPathPutsTheSoundsAmongThePictures) {
  Pub f;
  MediaProject m(f);
  f.p.ImgPath = "img";
  f.Generate();
  TempDir out;
  f.prompter().saveAnswers = {out.file("page.html")};
  BuildApplet(f.c, true);
  EXPECT_EQ(FilesIn(out.file("img")),
            (std::vector<std::string>{"a.gif", "b.gif", "bg.jpg", "c.gif", "click.au", "over.au"}));
}

TEST(BuildApplet, TwoPicturesOfOneNameEndAsOneFileTheLastWinning) {
  Pub f;
  TempDir one, two, out;
  MakeFiles(one.path(), {"pic.gif"});
  MakeFiles(two.path(), {});
  test::WriteBytes(two.file("pic.gif"), "second");
  f.AddButton("A");
  f.AddButton("B");
  f.p.button(1).Image[1] = one.file("pic.gif");
  f.p.button(2).Image[1] = two.file("pic.gif");
  f.Generate();
  f.prompter().saveAnswers = {out.file("page.html")};
  BuildApplet(f.c, true);
  EXPECT_EQ(out.read("pic.gif"), "second");
}

TEST(BuildApplet, FoldersNoticeFollowsABuildWithFoldersOfItsOwn) {
  Pub f;
  f.AddButton("One");
  f.p.ImgPath = "img";
  f.Generate();
  TempDir out;
  f.prompter().saveAnswers = {out.file("page.html")};
  BuildApplet(f.c, true);
  test::Shown notice;
  for (const auto& s : f.prompter().shown)
    if (s.title == "Notice") notice = s;
  EXPECT_EQ(notice.kind, "notice");
  EXPECT_EQ(notice.title, "Notice");
  EXPECT_EQ(notice.text, "Please note:" + kCRLF + kCRLF +
                             "This applet expects content in different folders." + kCRLF +
                             "You should upload all specified folders to make applet work.");

  Pub g;
  g.AddButton("One");
  g.Generate();
  g.prompter().saveAnswers = {out.file("page2.html")};
  BuildApplet(g.c, true);
  for (const auto& s : g.prompter().shown) EXPECT_NE(s.title, "Notice");
}

TEST(CopyClassFiles, CopiesClassCabAndJarOnlyWithAddJarAndMissingOnesSilently) {
  Pub f;
  MakeFiles(f.t.home.path(), {"KestrelPane.class", "KestrelPane.jar"});
  TempDir out;
  Copy_Class_Files(f.c, out.path() + "/");
  EXPECT_EQ(FilesIn(out.path()),
            (std::vector<std::string>{"KestrelPane.class", "KestrelPane.jar"}));
  EXPECT_TRUE(f.prompter().shown.empty());

  TempDir out2;
  f.st.bAddJAR = false;
  Copy_Class_Files(f.c, out2.path() + "/");
  EXPECT_EQ(FilesIn(out2.path()), std::vector<std::string>{"KestrelPane.class"});

  f.fs.copies.clear();
  Copy_Class_Files(f.c, f.t.home.path() + "/");  // the program's own folder
  EXPECT_TRUE(f.fs.copies.empty());
}

TEST(CopyReqFile, CodeBaseFolderGetsTheClassFiles) {
  Pub f;
  MakeFiles(f.t.home.path(), {"KestrelPane.class", "KestrelPane.cab", "KestrelPane.jar"});
  f.p.CodeBase = "applet/code";
  f.Generate();
  TempDir out;
  Copy_Req_File(f.c, out.file("page.html"));
  EXPECT_EQ(FilesIn(out.file("applet/code")),
            (std::vector<std::string>{"KestrelPane.cab", "KestrelPane.class", "KestrelPane.jar"}));
}

TEST(MakePathFolders, CreatesEveryLevelButNothingForAServerAddress) {
  Pub f;
  TempDir out;
  MakePathFolders(f.env, out.path() + "\\a\\b");
  EXPECT_TRUE(std::filesystem::is_directory(out.file("a/b")));
  MakePathFolders(f.env, out.path() + "/http://server/code/");
  MakePathFolders(f.env, "http://server/code");
  EXPECT_FALSE(Exists(out.file("http:")));
  MakePathFolders(f.env, "");
}

TEST(WaitForAuFile, WaitsOneTwoAndThreeSecondsWithEventsAndTheOverlay) {
  Pub f;
  TempDir d;
  WaitForAuFile(f.c, d.file("late.au"));
  EXPECT_EQ(f.clock.Slept(), std::chrono::seconds(6));
  for (auto s : f.clock.sleeps) EXPECT_LE(s, std::chrono::milliseconds(20));
  EXPECT_GE(f.prompter().eventRuns, 300);
  ASSERT_FALSE(f.view.overlay.empty());
  EXPECT_EQ(f.view.overlay.front(), "Checking AU file(s)...");
  EXPECT_EQ(f.view.overlay.back(), "");
  EXPECT_FALSE(f.view.overlayVisible);
}

TEST(WaitForAuFile, StopsWaitingOnceTheFileHasCome) {
  Pub f;
  TempDir d;
  f.clock.onSleep = [&](std::chrono::milliseconds now) {
    if (now >= std::chrono::milliseconds(500)) test::WriteBytes(d.file("late.au"), "au");
  };
  WaitForAuFile(f.c, d.file("late.au"));
  EXPECT_EQ(f.clock.Slept(), std::chrono::seconds(1));
}

TEST(WaitForAuFile, OtherNamesAndExistingFilesAreNotWaitedFor) {
  Pub f;
  TempDir d;
  d.write("here.AU", "x");
  WaitForAuFile(f.c, d.file("here.AU"));
  WaitForAuFile(f.c, d.file("missing.wav"));
  WaitForAuFile(f.c, d.file("missing.au.txt"));
  EXPECT_TRUE(f.clock.sleeps.empty());
  EXPECT_TRUE(f.view.overlay.empty());
}

TEST(CopyErrorMessage, PhaseWordsAndTheUnexpectedCase) {
  EXPECT_EQ(CopyErrorMessage(CopyPhase::Background, "/m/bg.jpg", 0),
            "Can't copy BackGround image:" + kCRLF + kCRLF + "/m/bg.jpg");
  EXPECT_EQ(CopyErrorMessage(CopyPhase::Pictures, "/m/a.gif", 12),
            "Can't copy Picture for Button # 12" + kCRLF + kCRLF + "/m/a.gif");
  EXPECT_EQ(CopyErrorMessage(CopyPhase::Sounds, "/m/a.au", 3),
            "Can't copy Sound for Button # 3" + kCRLF + kCRLF + "/m/a.au");
  EXPECT_EQ(
      CopyErrorMessage(CopyPhase::Sounds, "", 3),
      "Unexpected error. Please restart your computer." + kCRLF + kCRLF + kCRLF + kCRLF + "SOUNDS");
  EXPECT_EQ(
      CopyErrorMessage(CopyPhase::None, "/m/x", 0),
      "Unexpected error. Please restart your computer." + kCRLF + kCRLF + "/m/x" + kCRLF + kCRLF);
}

TEST(CopyErrorNumber, MissingSourceMissingFolderAndPermission) {
  Pub f;
  TempDir d;
  d.write("a.gif", "a");
  IoStatus fail = IoStatus::Fail("x");
  EXPECT_EQ(CopyErrorNumber(f.env, d.file("none.gif"), d.file("out/none.gif"), fail), 53);
  EXPECT_EQ(CopyErrorNumber(f.env, d.file("a.gif"), d.file("out/a.gif"), fail), 76);
  EXPECT_EQ(CopyErrorNumber(f.env, d.file("a.gif"), d.file("b.gif"), fail), 75);
  EXPECT_EQ(CopyErrorNumber(f.env, d.file("a.gif"), d.file("b.gif"), IoStatus::Fail("x", true)),
            70);
}

}  // namespace
}  // namespace kp
