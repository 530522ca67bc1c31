#include <gtest/gtest.h>

#include <filesystem>

#include "core/conv.h"
#include "core/settings.h"
#include "project/project_file.h"
#include "publish/export.h"
#include "tests/publish/publish_fixture.h"

namespace kp {
namespace {

using test::DialogAnswer;
using test::FilesIn;
using test::MakeFiles;
using test::Pub;
using test::TempDir;

struct ExportFixture : Pub {
  TempDir media;
  ExportFixture() {
    MakeFiles(media.path(), {"bg.jpg", "a.gif", "s.au"});
    p.BackImg = media.file("bg.jpg");
    int b = AddButton("One");
    p.button(b).Image[2] = media.file("a.gif");
    p.button(b).Snd[3] = media.file("s.au");
    p.ImgPath = "img";
    p.SndPath = "snd";
  }
};

TEST(Export, ProjectAndEveryMediaFileLandInOneFolderWithNamesOnly) {
  ExportFixture f;
  TempDir dest;
  f.p.sProjectFile = "/somewhere/bar.kpn";
  f.p.bProjectSaved = false;
  f.prompter().saveAnswers = {dest.file("bar.kpn")};
  ExportReport r = mnuExport_Click(f.c);
  EXPECT_EQ(r.path, dest.file("bar.kpn"));
  EXPECT_TRUE(r.saved);
  EXPECT_EQ(FilesIn(dest.path()), (std::vector<std::string>{"a.gif", "bar.kpn", "bg.jpg", "s.au"}));
  const std::string text = dest.read("bar.kpn");
  EXPECT_NE(text.find("|a.gif|"), std::string::npos);
  EXPECT_EQ(text.find(f.media.path()), std::string::npos);
  // The export leaves the project's own state alone.
  EXPECT_FALSE(f.p.bProjectSaved);
  EXPECT_EQ(f.p.sProjectFile, "/somewhere/bar.kpn");
  EXPECT_EQ(f.p.button(1).Image[2], f.media.file("a.gif"));
  EXPECT_EQ(f.view.fileMenu, (std::vector<bool>{false, true}));
}

TEST(Export, DialogProposesTheProjectFilesNameInTheExportFolder) {
  ExportFixture f;
  f.p.sProjectFile = "/somewhere/bar.kpn";
  mnuExport_Click(f.c);
  ASSERT_EQ(f.prompter().fileDialogs.size(), 1u);
  const FileDialog& d = f.prompter().fileDialogs[0];
  EXPECT_EQ(d.fileName, "bar.kpn");
  EXPECT_EQ(d.folder, f.t.home.path() + "/Export");
  // Proposed, not made: the dialog was cancelled.
  EXPECT_TRUE(d.folderMadeOnAccept);
  EXPECT_FALSE(std::filesystem::exists(d.folder));
  EXPECT_EQ(d.filter, "Kestrel Pane Projects (*.kpn)|*.kpn|All Files (*.*)|*.*");
  EXPECT_EQ(d.defaultExt, "kpn");
  EXPECT_TRUE(d.overwritePrompt);
}

TEST(Export, UnsavedProjectProposesItsNameWithKpn) {
  ExportFixture f;
  f.p.sProjectName = "Fresh";
  mnuExport_Click(f.c);
  EXPECT_EQ(f.prompter().fileDialogs[0].fileName, "Fresh.kpn");
  EXPECT_EQ(ExportProposedName(f.p), "Fresh.kpn");
}

TEST(Export, CancelTellsNothingAndGivesTheFileMenuBack) {
  ExportFixture f;
  ExportReport r = mnuExport_Click(f.c);
  EXPECT_TRUE(r.path.empty());
  EXPECT_TRUE(f.prompter().shown.empty());
  EXPECT_TRUE(f.fs.copies.empty());
  EXPECT_EQ(f.view.fileMenu, (std::vector<bool>{false, true}));
  EXPECT_EQ(GetParam(f.env, "sExportFolder"), "");
}

TEST(Export, ACancelledDialogLeavesTheFolderTreeAsItWas) {
  ExportFixture f;
  const auto before = test::TreeOf(f.t.home.path());
  EXPECT_TRUE(mnuExport_Click(f.c).path.empty());
  EXPECT_EQ(test::TreeOf(f.t.home.path()), before);
  EXPECT_FALSE(std::filesystem::exists(f.t.home.path() + "/Export"));
}

TEST(Export, TheProposedFolderIsMadeWhenANameInItIsChosen) {
  ExportFixture f;
  const std::string folder = f.t.home.path() + "/Export";
  f.prompter().saveAnswers = {folder + "/x.kpn"};
  ExportReport r = mnuExport_Click(f.c);
  EXPECT_TRUE(r.saved);
  EXPECT_TRUE(std::filesystem::is_directory(folder));
  EXPECT_EQ(FilesIn(folder), (std::vector<std::string>{"a.gif", "bg.jpg", "s.au", "x.kpn"}));
}

TEST(Export, TheChosenFolderIsRememberedForTheNextExport) {
  ExportFixture f;
  TempDir dest;
  f.prompter().saveAnswers = {dest.file("x.kpn")};
  mnuExport_Click(f.c);
  EXPECT_EQ(GetParam(f.env, "sExportFolder"), dest.path() + "/");
  mnuExport_Click(f.c);
  EXPECT_EQ(f.prompter().fileDialogs[1].folder, dest.path() + "/");
}

TEST(Export, IntoTheFolderThatHoldsTheMediaCopiesNothing) {
  ExportFixture f;
  f.prompter().saveAnswers = {f.media.file("x.kpn")};
  ExportReport r = mnuExport_Click(f.c);
  EXPECT_TRUE(f.fs.copies.empty());
  EXPECT_EQ(r.media.skipped, 3);
  EXPECT_EQ(r.media.copied, 0);
  EXPECT_TRUE(f.Messages().empty());
  // The folder was not empty: the warning came first.
  EXPECT_EQ(f.DialogsNamed("frmSomeFilesWarning").size(), 1u);
}

TEST(Export, TwoButtonsWithDifferentImagesOfOneNameEndAsOneFile) {
  ExportFixture f;
  TempDir other, dest;
  test::WriteBytes(other.file("a.gif"), "other a");
  int b = f.AddButton("Two");
  f.p.button(b).Image[1] = other.file("a.gif");
  f.prompter().saveAnswers = {dest.file("x.kpn")};
  mnuExport_Click(f.c);
  EXPECT_EQ(FilesIn(dest.path()), (std::vector<std::string>{"a.gif", "bg.jpg", "s.au", "x.kpn"}));
  EXPECT_EQ(dest.read("a.gif"), "other a");
}

TEST(Export, NoToTheFolderWarningBringsTheDialogBack) {
  ExportFixture f;
  TempDir occupied, empty;
  occupied.write("old.kpn", "x");
  f.prompter().saveAnswers = {occupied.file("x.kpn"), empty.file("x.kpn")};
  f.prompter().dialogAnswers = {DialogAnswer{1, {}}};
  ExportReport r = mnuExport_Click(f.c);
  EXPECT_EQ(r.path, empty.file("x.kpn"));
  EXPECT_EQ(f.prompter().fileDialogs.size(), 2u);
  EXPECT_EQ(FilesIn(occupied.path()), std::vector<std::string>{"old.kpn"});
}

TEST(Export, ExportedProjectOpensWithItsMediaBesideIt) {
  ExportFixture f;
  TempDir dest;
  f.prompter().saveAnswers = {dest.file("x.kpn")};
  mnuExport_Click(f.c);
  test::TestEnv t;
  Project q;
  ASSERT_EQ(LoadProject2(q, t.env, dest.file("x.kpn")), LoadResult::Loaded);
  EXPECT_EQ(q.BackImg, dest.file("bg.jpg"));
  EXPECT_EQ(q.button(1).Image[2], dest.file("a.gif"));
  EXPECT_EQ(q.button(1).Snd[3], dest.file("s.au"));
  EXPECT_EQ(t.prompter.CountMsg(), 0);
}

}  // namespace
}  // namespace kp
