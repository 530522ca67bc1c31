// A settings file that cannot be read, one that holds no settings, and one
// whose owner made it read-only: what the store says and what it leaves.
#include <gtest/gtest.h>

#include <filesystem>

#include "core/settings.h"
#include "platform/qt_settings_store.h"
#include "tests/support/test_env.h"

namespace kp {
namespace {

using test::TempDir;
namespace fs = std::filesystem;

TEST(QtSettingsFaults, AFileOfOtherTextIsNamedAndLeftAsItIs) {
  TempDir d;
  // A project file given where the settings file belongs.
  const std::string text = "KestrelPane Project 2.02\r\n[Start: x\r\n420|180|2|R|\r\n";
  d.write("k.ini", text);
  {
    QtSettingsStore store(d.file("k.ini"));
    const std::string problem = store.ReadProblem();
    EXPECT_NE(problem.find(d.file("k.ini")), std::string::npos) << problem;
    EXPECT_NE(problem.find("not a settings file"), std::string::npos) << problem;
    // The run keeps its changes in memory.
    EXPECT_EQ(store.Set(kSecParams, "iGridX", "12"), "");
    EXPECT_EQ(store.Get(kSecParams, "iGridX"), "12");
    EXPECT_EQ(store.RemoveSection(kSecParams), "");
    EXPECT_FALSE(store.Get(kSecParams, "iGridX"));
  }
  EXPECT_EQ(d.read("k.ini"), text);
}

TEST(QtSettingsFaults, AFolderInPlaceOfTheFileCannotBeRead) {
  TempDir d;
  fs::create_directories(d.file("k.ini"));
  QtSettingsStore store(d.file("k.ini"));
  const std::string problem = store.ReadProblem();
  EXPECT_NE(problem.find("cannot be read"), std::string::npos) << problem;
  EXPECT_NE(problem.find("a folder"), std::string::npos) << problem;
  EXPECT_EQ(store.Set(kSecParams, "iGridX", "3"), "");
  EXPECT_TRUE(fs::is_directory(d.file("k.ini")));
}

TEST(QtSettingsFaults, AGoodFileHasNoProblem) {
  TempDir d;
  d.write("k.ini", "[2.02]\nParams\\iGridX=4\n");
  QtSettingsStore store(d.file("k.ini"));
  EXPECT_EQ(store.ReadProblem(), "");
  EXPECT_EQ(store.Get(kSecParams, "iGridX"), "4");
  EXPECT_NE(store.Where().find(d.file("k.ini")), std::string::npos);
}

TEST(QtSettingsFaults, AWriteProtectedFileIsReadButNotWritten) {
  TempDir d;
  const std::string text = "[2.02]\nParams\\iGridX=4\n";
  d.write("k.ini", text);
  fs::permissions(d.file("k.ini"), fs::perms::owner_read | fs::perms::group_read);
  {
    QtSettingsStore store(d.file("k.ini"));
    EXPECT_EQ(store.ReadProblem(), "");
    EXPECT_EQ(store.Get(kSecParams, "iGridX"), "4");
    const std::string failure = store.Set(kSecParams, "iGridX", "9");
    EXPECT_NE(failure.find("write-protected"), std::string::npos) << failure;
    EXPECT_NE(failure.find(d.file("k.ini")), std::string::npos) << failure;
    EXPECT_NE(store.SetMany(kSecRecent, {{"File1", "x"}}), "");
    EXPECT_NE(store.RemoveSection(kSecParams), "");
  }
  EXPECT_EQ(d.read("k.ini"), text);
}

}  // namespace
}  // namespace kp
