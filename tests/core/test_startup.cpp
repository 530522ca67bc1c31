#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "core/settings.h"
#include "core/startup.h"
#include "tests/support/test_env.h"

namespace kp {
namespace {

using test::TempDir;
using test::TestEnv;

TEST(Startup, VersionSelfTestAcceptsThisVersionAndRefusesOthers) {
  EXPECT_TRUE(VersionSelfTest(sPRJ_FILE_VERSION));
  EXPECT_TRUE(VersionSelfTest("2.05"));
  EXPECT_FALSE(VersionSelfTest("1.9"));
  EXPECT_FALSE(VersionSelfTest("3.0"));
}

TEST(Startup, ResetSwitchWithTrailingBlankIsNotTheSwitch) {
  EXPECT_TRUE(IsResetSwitch("/reset_kp"));
  EXPECT_FALSE(IsResetSwitch("/reset_kp "));
  EXPECT_FALSE(IsResetSwitch(" /reset_kp"));
  EXPECT_FALSE(IsResetSwitch("/RESET_KP"));
  // Treated as a file name, it is trimmed like any other.
  EXPECT_EQ(CommandLineName("/reset_kp "), "/reset_kp");
}

TEST(Startup, QuotedPathLosesItsQuotes) {
  EXPECT_EQ(CommandLineName("\"/tmp/my projects/a.kpn\""), "/tmp/my projects/a.kpn");
  EXPECT_EQ(CommandLineName("  \"/tmp/a.kpn\"  "), "/tmp/a.kpn");
}

TEST(Startup, SingleLeadingQuoteAlsoLosesTheLastCharacter) {
  EXPECT_EQ(CommandLineName("\"/tmp/a.kpn"), "/tmp/a.kp");
  EXPECT_EQ(CommandLineName("\"/tmp/a.kpnX"), "/tmp/a.kpn");
  EXPECT_EQ(CommandLineName("\""), "");
}

TEST(Startup, UnquotedNameIsOnlyTrimmed) {
  EXPECT_EQ(CommandLineName("  Demo.kpn "), "Demo.kpn");
  EXPECT_EQ(CommandLineName("a\"b\""), "a\"b\"");
  EXPECT_EQ(CommandLineName("   "), "");
}

TEST(Startup, AbsoluteExistingPathIsTakenAsItStands) {
  TestEnv t;
  TempDir other;
  other.write("a.kpn", "x");
  EXPECT_EQ(FindProjectFile(t.env, other.file("a.kpn")), other.file("a.kpn"));
}

TEST(Startup, RelativeNameIsFoundOnlyInTheProgramFolder) {
  TestEnv t;
  TempDir cwd;
  cwd.write("only_here.kpn", "x");
  t.home.write("Demo.kpn", "x");
  const auto old = std::filesystem::current_path();
  std::filesystem::current_path(cwd.path());
  EXPECT_EQ(FindProjectFile(t.env, "Demo.kpn"), t.home.file("Demo.kpn"));
  EXPECT_EQ(FindProjectFile(t.env, "only_here.kpn"), "");
  std::filesystem::current_path(old);
}

TEST(Startup, MissingAbsolutePathIsNotFound) {
  TestEnv t;
  EXPECT_EQ(FindProjectFile(t.env, t.home.file("none.kpn")), "");
  EXPECT_EQ(FindProjectFile(t.env, ""), "");
}

TEST(Startup, NotFoundTextNamesTheWholeCommandLine) {
  EXPECT_EQ(NotFoundText("\"x.kpn\" "), "File: \"x.kpn\" \r\nNot found. Error # 21-01");
}

TEST(Startup, SessionVarsComeFromTheSettingsWithTheirDefaults) {
  TestEnv t;
  Project p;
  p.sProjectName = "Other";
  p.bReady = false;
  p.bProjectSaved = false;
  SessionVars& s = InitSessionVars(p, t.env);
  EXPECT_EQ(p.sProjectName, "MyProject");
  EXPECT_TRUE(p.bReady);
  EXPECT_TRUE(p.bProjectSaved);
  EXPECT_FALSE(s.bShowGrid);
  EXPECT_EQ(s.iGridX, 10);
  EXPECT_EQ(s.iGridY, 10);
  EXPECT_EQ(s.lGridColor, 8421504);
  EXPECT_TRUE(s.bAddJAR);

  SetParam(t.env, "bShowGrid", "1");
  SetParam(t.env, "iGridX", "7");
  SetParam(t.env, "lGridColor", "255");
  SetParam(t.env, "bAddJAR", "0");
  SetParam(t.env, "bSaveBackup", "1");
  InitSessionVars(p, t.env);
  EXPECT_TRUE(s.bShowGrid);
  EXPECT_TRUE(s.bSaveBackup);
  EXPECT_EQ(s.iGridX, 7);
  EXPECT_EQ(s.lGridColor, 255);
  EXPECT_FALSE(s.bAddJAR);
  // bAddJAR lives in the version section itself.
  EXPECT_EQ(t.store.Get(kSecVersion, "bAddJAR"), "0");
}

TEST(Startup, TitleTextIsProductNameBlankVersion) {
  LangTexts saved = Lang();
  Lang().TitleText = "x";
  mInitilize();
  EXPECT_EQ(Lang().TitleText, "Kestrel Pane 2.02");
  Lang() = saved;
}

}  // namespace
}  // namespace kp

namespace kp {
namespace {

TEST(RemoveLeftovers, StaleTemporaryFilesInAppletTempGoAtStart) {
  test::TestEnv t;
  std::filesystem::create_directories(t.home.file("AppletTemp"));
  pid_t child = ::fork();
  if (child == 0) ::_exit(0);
  int status = 0;
  ::waitpid(child, &status, 0);
  const std::string stale = t.home.file("AppletTemp/._AutoReplace_HTML.htm.tmp-") +
                            std::to_string(static_cast<long>(child));
  const std::string kept = t.home.file("AppletTemp/_AutoReplace_HTML.htm");
  test::WriteBytes(stale, "partial");
  test::WriteBytes(kept, "a page");
  EXPECT_EQ(RemoveLeftovers(t.env), 1);
  EXPECT_FALSE(std::filesystem::exists(stale));
  EXPECT_TRUE(std::filesystem::exists(kept));
}

}  // namespace
}  // namespace kp
