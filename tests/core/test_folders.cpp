// The program folder that is read and the user folder that is written.
#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "core/association.h"
#include "core/folders.h"
#include "core/language.h"
#include "core/startup.h"
#include "tests/support/test_env.h"

namespace kp {
namespace {

using test::TempDir;
using test::TestEnv;

// A machine described by the files that exist and the folders that may be
// written; nothing is looked up on the real disk.
struct Machine {
  std::set<std::string> files;
  std::set<std::string> writableDirs;
  FolderInputs Inputs() const {
    FolderInputs in;
    in.userHome = "/home/author";
    in.installedRelative = "../share/kestrelpane";
    in.writable = [this](const std::string& d) { return writableDirs.count(d) > 0; };
    in.fileExists = [this](const std::string& f) { return files.count(f) > 0; };
    return in;
  }
};

TEST(Folders, InstalledProgramsReadTheSharedFolderAndWriteTheUsersDataFolder) {
  Machine m;
  m.files = {"/usr/share/kestrelpane/Kestrel.ini"};
  FolderInputs in = m.Inputs();
  in.exePath = "/usr/bin/kestrelpane";
  in.dataHome = "/home/author/data";
  Folders f = ResolveFolders(in);
  EXPECT_EQ(f.programFolder, "/usr/share/kestrelpane");
  EXPECT_TRUE(f.installed);
  EXPECT_EQ(f.userFolder, "/home/author/data/kestrelpane");
}

TEST(Folders, WithoutXdgDataHomeTheUserFolderIsInLocalShare) {
  Machine m;
  m.files = {"/opt/kp/share/kestrelpane/Kestrel.ini"};
  FolderInputs in = m.Inputs();
  in.exePath = "/opt/kp/bin/kestrelpane-cli";
  EXPECT_EQ(ResolveFolders(in).userFolder, "/home/author/.local/share/kestrelpane");
  // A relative value is not a base directory and is ignored.
  in.dataHome = "data";
  EXPECT_EQ(ResolveFolders(in).userFolder, "/home/author/.local/share/kestrelpane");
  EXPECT_EQ(ResolveFolders(in).programFolder, "/opt/kp/share/kestrelpane");
}

TEST(Folders, ABuildFolderIsReadAndWrittenAsBefore) {
  Machine m;
  // Both exist: the build folder's own files win.
  m.files = {"/src/build/bin/Kestrel.ini", "/src/build/share/kestrelpane/Kestrel.ini"};
  m.writableDirs = {"/src/build/bin"};
  FolderInputs in = m.Inputs();
  in.exePath = "/src/build/bin/kestrelpane";
  Folders f = ResolveFolders(in);
  EXPECT_EQ(f.programFolder, "/src/build/bin");
  EXPECT_FALSE(f.installed);
  EXPECT_EQ(f.userFolder, "");
}

TEST(Folders, HomeOptionThenEnvironmentNameTheProgramFolder) {
  Machine m;
  m.files = {"/usr/share/kestrelpane/Kestrel.ini"};
  m.writableDirs = {"/mine", "/theirs"};
  FolderInputs in = m.Inputs();
  in.exePath = "/usr/bin/kestrelpane";
  in.homeEnv = "/theirs/";
  EXPECT_EQ(ResolveFolders(in).programFolder, "/theirs");
  in.homeOption = "/mine/./";
  Folders f = ResolveFolders(in);
  EXPECT_EQ(f.programFolder, "/mine");
  EXPECT_EQ(f.userFolder, "");
}

TEST(Folders, TheInstalledFolderIsNeverWrittenEvenWhenNamedOrWritable) {
  Machine m;
  m.files = {"/usr/share/kestrelpane/Kestrel.ini"};
  // Root may write there; the package's files are still not the program's.
  m.writableDirs = {"/usr/share/kestrelpane"};
  FolderInputs in = m.Inputs();
  in.exePath = "/usr/bin/kestrelpane";
  in.homeOption = "/usr/share/kestrelpane";
  Folders f = ResolveFolders(in);
  EXPECT_TRUE(f.installed);
  EXPECT_EQ(f.userFolder, "/home/author/.local/share/kestrelpane");
}

TEST(Folders, AFolderTheUserCannotWriteSendsTheWritesToTheUserFolder) {
  Machine m;
  FolderInputs in = m.Inputs();
  in.exePath = "/usr/bin/kestrelpane";
  in.homeOption = "/srv/shared-kp";
  Folders f = ResolveFolders(in);
  EXPECT_EQ(f.programFolder, "/srv/shared-kp");
  EXPECT_FALSE(f.installed);
  EXPECT_EQ(f.userFolder, "/home/author/.local/share/kestrelpane");
}

TEST(Folders, NoFilesAnywhereKeepsTheExecutablesFolder) {
  Machine m;
  FolderInputs in = m.Inputs();
  in.exePath = "/x/bin/kestrelpane";
  EXPECT_EQ(ResolveFolders(in).programFolder, "/x/bin");
}

struct UserFolderTest : ::testing::Test {
  TestEnv t;
  TempDir user;
  std::string UserFolder() const { return user.path() + "/share/kestrelpane"; }
  void SetUp() override { t.env.userFolder = UserFolder(); }
};

TEST_F(UserFolderTest, WritesGoToTheUserFolderAndWithoutOneToTheProgramFolder) {
  EXPECT_EQ(WriteFolder(t.env), UserFolder());
  t.env.userFolder.clear();
  EXPECT_EQ(WriteFolder(t.env), t.home.path());
}

TEST_F(UserFolderTest, TheUsersOwnCopyOfAProgramFileIsReadFirst) {
  t.home.write("Kestrel.ini", "installed");
  EXPECT_EQ(ProgramFile(t.env, "Kestrel.ini"), t.home.file("Kestrel.ini"));
  std::filesystem::create_directories(UserFolder());
  test::WriteBytes(UserFolder() + "/Kestrel.ini", "[LANG SETTINGS]\r\nmy_lng\r\nMINE\r\n");
  EXPECT_EQ(ProgramFile(t.env, "Kestrel.ini"), UserFolder() + "/Kestrel.ini");
  LangSettings s = GET_LANG_SETTINGS(t.env);
  EXPECT_EQ(s.sLangFile, "my_lng");
  EXPECT_EQ(s.sLangName, "MINE");
  // The language file it names is looked for the same way.
  EXPECT_EQ(LangFilePath(t.env, s), t.home.file("my_lng"));
  test::WriteBytes(UserFolder() + "/my_lng", "x");
  EXPECT_EQ(LangFilePath(t.env, s), UserFolder() + "/my_lng");
}

TEST_F(UserFolderTest, FirstUseMakesTheFolderAndSeedsProjectsWithTheSamples) {
  std::filesystem::create_directories(t.home.file("Projects"));
  t.home.write("Projects/Demo.kpn", "demo");
  t.home.write("Projects/demo_bg.jpg", "jpg");
  ASSERT_FALSE(std::filesystem::exists(user.path() + "/share"));
  PrepareUserFolder(t.env);
  EXPECT_EQ(test::ReadBytes(UserFolder() + "/Projects/Demo.kpn"), "demo");
  EXPECT_EQ(test::ReadBytes(UserFolder() + "/Projects/demo_bg.jpg"), "jpg");
  // Later starts leave the user's projects alone.
  test::WriteBytes(UserFolder() + "/Projects/Demo.kpn", "changed");
  std::filesystem::remove(UserFolder() + "/Projects/demo_bg.jpg");
  PrepareUserFolder(t.env);
  EXPECT_EQ(test::ReadBytes(UserFolder() + "/Projects/Demo.kpn"), "changed");
  EXPECT_FALSE(std::filesystem::exists(UserFolder() + "/Projects/demo_bg.jpg"));
}

TEST_F(UserFolderTest, WithoutAUserFolderNothingIsMade) {
  t.env.userFolder.clear();
  PrepareUserFolder(t.env);
  EXPECT_FALSE(std::filesystem::exists(t.home.file("Projects")));
}

TEST_F(UserFolderTest, ARelativeProjectNameIsLookedForInTheUserFolderFirst) {
  t.home.write("Demo.kpn", "installed");
  EXPECT_EQ(FindProjectFile(t.env, "Demo.kpn"), t.home.file("Demo.kpn"));
  std::filesystem::create_directories(UserFolder());
  test::WriteBytes(UserFolder() + "/Demo.kpn", "mine");
  EXPECT_EQ(FindProjectFile(t.env, "Demo.kpn"), UserFolder() + "/Demo.kpn");
  EXPECT_EQ(FindProjectFile(t.env, "Other.kpn"), "");
}

// The association as a package installs it for all users.
struct SystemAssociationTest : ::testing::Test {
  TestEnv t;
  std::string prefix = t.home.path() + "/usr";
  std::string userData = t.home.path() + "/home/.local/share";
  void Install(const std::string& exec, const std::string& icon) {
    std::filesystem::create_directories(prefix + "/share/applications");
    std::filesystem::create_directories(prefix + "/share/mime/packages");
    test::WriteBytes(prefix + "/share/applications/kestrelpane.desktop",
                     "[Desktop Entry]\nType=Application\nExec=" + exec + "\nIcon=" + icon +
                         "\nMimeType=application/x-kestrelpane-project;\n");
    XdgAssociation any{userData, "/x"};
    test::WriteBytes(prefix + "/share/mime/packages/kestrelpane.xml", any.MimePackageText());
  }
};

TEST_F(SystemAssociationTest, APackagesEntryForThisProgramIsTheAssociation) {
  Install("kestrelpane %f", "kestrelpane");
  XdgAssociation assoc{userData, prefix + "/bin/kestrelpane", {"/nowhere", prefix + "/share"}};
  EXPECT_FALSE(assoc.AssociationMissing(t.env));
}

TEST_F(SystemAssociationTest, AnEntryOfAnotherPrefixOrProgramIsNot) {
  Install("kestrelpane %f", "kestrelpane");
  XdgAssociation elsewhere{userData, "/opt/kp/bin/kestrelpane", {prefix + "/share"}};
  EXPECT_TRUE(elsewhere.AssociationMissing(t.env));
  Install("other %f", "kestrelpane");
  XdgAssociation other{userData, prefix + "/bin/kestrelpane", {prefix + "/share"}};
  EXPECT_TRUE(other.AssociationMissing(t.env));
}

TEST(DataDirs, EmptyMeansTheDefaultAndRelativeEntriesAreDropped) {
  EXPECT_EQ(DataDirsFrom(""), (std::vector<std::string>{"/usr/local/share", "/usr/share"}));
  EXPECT_EQ(DataDirsFrom("/a/:rel::/b"), (std::vector<std::string>{"/a", "/b"}));
}

}  // namespace
}  // namespace kp
