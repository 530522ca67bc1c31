#include <gtest/gtest.h>

#include "core/association.h"
#include "core/conv.h"
#include "core/launcher.h"
#include "tests/support/test_env.h"

namespace kp {
namespace {

using test::TestEnv;

// Records what would be started instead of starting it.
class RecordingLauncher : public Launcher {
 public:
  IoStatus Open(const std::string&) override { return {}; }
  IoStatus Explore(const std::string&) override { return {}; }
  IoStatus Run(const std::string& program, const std::vector<std::string>& args, bool detached,
               const std::string&) override {
    std::string line = program;
    for (const std::string& a : args) line += " " + a;
    runs.push_back(line);
    waited.push_back(!detached);
    return IoStatus::Fail("not here");
  }
  std::vector<std::string> runs;
  std::vector<bool> waited;
};

struct AssociationFixture : ::testing::Test {
  TestEnv t;
  RecordingLauncher launcher;
  std::string dataHome = t.home.path() + "/home/.local/share";
  XdgAssociation assoc{dataHome, "/opt/Kestrel Pane/kestrelpane"};
  void SetUp() override { t.env.launcher = &launcher; }
};

TEST_F(AssociationFixture, MissingFilesMeanTheAssociationMustBeOffered) {
  EXPECT_TRUE(assoc.AssociationMissing(t.env));
}

TEST_F(AssociationFixture, RegisteringWritesBothFilesAndMakesTheEntryTheDefault) {
  ASSERT_TRUE(assoc.RegisterAssociation(t.env));
  EXPECT_EQ(test::ReadBytes(dataHome + "/applications/kestrelpane.desktop"),
            assoc.DesktopFileText());
  EXPECT_EQ(test::ReadBytes(dataHome + "/mime/packages/kestrelpane.xml"), assoc.MimePackageText());
  EXPECT_FALSE(assoc.AssociationMissing(t.env));
  ASSERT_EQ(launcher.runs.size(), 2u);
  EXPECT_EQ(launcher.runs[0], "update-mime-database " + dataHome + "/mime");
  EXPECT_EQ(launcher.runs[1],
            "xdg-mime default kestrelpane.desktop application/x-kestrelpane-project");
  EXPECT_TRUE(launcher.waited[1]);
  // The tools failing to start is not the user's business.
  EXPECT_TRUE(t.prompter.shown.empty());
}

TEST_F(AssociationFixture, DesktopEntryOpensTheFileWithThisProgram) {
  const std::string text = assoc.DesktopFileText();
  EXPECT_EQ(DesktopEntryValue(text, "Exec"), "\"/opt/Kestrel Pane/kestrelpane\" %f");
  EXPECT_EQ(DesktopEntryValue(text, "MimeType"), "application/x-kestrelpane-project;");
  EXPECT_NE(assoc.MimePackageText().find("<glob pattern=\"*.kpn\"/>"), std::string::npos);
  EXPECT_NE(assoc.MimePackageText().find("<comment>Kestrel Pane Project</comment>"),
            std::string::npos);
}

TEST_F(AssociationFixture, CommandAndIconCompareWithoutCase) {
  ASSERT_TRUE(assoc.RegisterAssociation(t.env));
  std::string text = test::ReadBytes(assoc.DesktopFilePath());
  test::WriteBytes(assoc.DesktopFilePath(),
                   ReplaceAll(text, "/opt/Kestrel Pane/kestrelpane", "/OPT/Kestrel PANE/KestrelPane"));
  EXPECT_FALSE(assoc.AssociationMissing(t.env));
}

TEST_F(AssociationFixture, AnyOfTheFourValuesChangedMeansMissing) {
  ASSERT_TRUE(assoc.RegisterAssociation(t.env));
  const std::string xml = assoc.MimePackageText();
  const std::string desktop = assoc.DesktopFileText();
  auto replaced = [](std::string s, const std::string& from, const std::string& to) {
    s.replace(s.find(from), from.size(), to);
    return s;
  };
  struct Case {
    std::string path, text;
  } cases[] = {
      {assoc.MimePackagePath(), replaced(xml, "*.kpn", "*.kpx")},
      {assoc.MimePackagePath(), replaced(xml, "Kestrel Pane Project", "Other Project")},
      {assoc.DesktopFilePath(), replaced(desktop, "Icon=/opt", "Icon=/usr")},
      {assoc.DesktopFilePath(), replaced(desktop, "%f", "%u")},
  };
  for (const Case& c : cases) {
    XdgAssociation fresh{dataHome, "/opt/Kestrel Pane/kestrelpane"};
    ASSERT_TRUE(fresh.RegisterAssociation(t.env));
    test::WriteBytes(c.path, c.text);
    EXPECT_TRUE(fresh.AssociationMissing(t.env)) << c.text;
  }
}

TEST_F(AssociationFixture, EntryForAnotherProgramPathMeansMissing) {
  ASSERT_TRUE(assoc.RegisterAssociation(t.env));
  XdgAssociation moved{dataHome, "/usr/bin/kestrelpane"};
  EXPECT_TRUE(moved.AssociationMissing(t.env));
}

TEST_F(AssociationFixture, FailedWriteShowsTheStoreWriteBox) {
  t.fs.failWrite.insert(assoc.DesktopFilePath());
  EXPECT_FALSE(assoc.RegisterAssociation(t.env));
  ASSERT_EQ(t.prompter.CountMsg(), 1);
  EXPECT_EQ(t.prompter.Last().text, "Unable to write registry or .ini file value.");
  EXPECT_EQ(t.prompter.Last().title, "fWriteValue");
  EXPECT_TRUE(launcher.runs.empty());
}

TEST(DesktopEntry, ValuesAreReadFromTheDesktopEntryGroupOnly) {
  const std::string text = "[Other]\nExec=wrong\n[Desktop Entry]\nName=x\nExec=right %f\n";
  EXPECT_EQ(DesktopEntryValue(text, "Exec"), "right %f");
  EXPECT_EQ(DesktopEntryValue(text, "Icon"), "");
}

}  // namespace
}  // namespace kp
