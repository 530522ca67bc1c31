// The command line: resave, actions, info, and its exit codes.
#include <gtest/gtest.h>

#include "core/conv.h"
#include "tests/cli/cli_fixture.h"

namespace kp::test {
namespace {

// Splits a "|"-terminated line into its fields and joins them back.
std::vector<std::string> Fields(const std::string& line) {
  std::vector<std::string> f;
  size_t start = 0;
  for (size_t pos; (pos = line.find('|', start)) != std::string::npos; start = pos + 1)
    f.push_back(line.substr(start, pos - start));
  return f;
}
std::string Join(const std::vector<std::string>& f) {
  std::string s;
  for (auto& x : f) s += x + "|";
  return s;
}

// The demo as a save writes it from `folder`: bare file names in the file
// fields become full paths there, every other byte stays.
std::string DemoAsSavedFrom(const std::string& folder) {
  std::string text = ReadBytes(SourcePath("data/Projects/Demo.kpn"));
  std::string out;
  size_t start = 0;
  int lineNo = 0;
  int buttons = 0;
  while (start < text.size()) {
    size_t end = text.find("\r\n", start);
    std::string line = text.substr(start, end - start);
    ++lineNo;
    auto f = Fields(line);
    auto full = [&](size_t k) {
      if (k < f.size() && !f[k].empty()) f[k] = folder + "/" + f[k];
    };
    if (lineNo == 2) {
      buttons = std::stoi(f.at(2));
      full(6);
      line = Join(f);
    } else if (lineNo >= 3 && lineNo < 3 + buttons) {
      for (size_t k : {13, 14, 15, 31, 32, 33}) full(k);
      line = Join(f);
    }
    out += line + "\r\n";
    start = end + 2;
  }
  return out;
}

TEST(Cli, ResaveOfTheDemoKeepsEveryByteButTheFullPaths) {
  TestEnv t;
  CopyDemoProject(t.home);
  CliRun r = RunCommand(t, "resave", {t.home.file("Demo.kpn"), t.home.file("Out.kpn")});
  ASSERT_EQ(r.code, 0) << r.err;
  EXPECT_EQ(r.err, "");
  EXPECT_EQ(t.home.read("Out.kpn"), DemoAsSavedFrom(t.home.path()));
}

TEST(Cli, ResaveOfAResavedDemoIsByteIdentical) {
  TestEnv t;
  CopyDemoProject(t.home);
  ASSERT_EQ(RunCommand(t, "resave", {t.home.file("Demo.kpn"), t.home.file("A.kpn")}).code, 0);
  ASSERT_EQ(RunCommand(t, "resave", {t.home.file("A.kpn"), t.home.file("B.kpn")}).code, 0);
  EXPECT_EQ(t.home.read("A.kpn"), t.home.read("B.kpn"));
}

TEST(Cli, InfoListsAppletSizeAndEveryButtonRectangle) {
  TestEnv t;
  CopyDemoProject(t.home);
  CliRun r = RunCommand(t, "info", {t.home.file("Demo.kpn")});
  ASSERT_EQ(r.code, 0);
  std::string text = ReadBytes(SourcePath("data/Projects/Demo.kpn"));
  auto applet = Fields(text.substr(text.find("\r\n") + 2));
  EXPECT_TRUE(StartsWith(r.out, "applet " + applet[0] + "x" + applet[1] + "\nbuttons " +
                                    applet[2] + "\n"));
  // One line a button, numbered from 1, with the name and the rectangle.
  EXPECT_EQ(CountOf(r.out, "\n"), 2 + std::stoi(applet[2]));
  EXPECT_NE(r.out.find("\n4 About Us "), std::string::npos);
}

TEST(Cli, ActionsListsAppletProgramsFirstThenEachButtonsInEventOrder) {
  TestEnv t;
  CopyDemoProject(t.home);
  CliRun r = RunCommand(t, "actions", {t.home.file("Demo.kpn")});
  ASSERT_EQ(r.code, 0);
  EXPECT_TRUE(StartsWith(r.out, "Applet AppletProgramStart:\n"));
  size_t applet = r.out.rfind("Applet ");
  size_t firstButton = r.out.find("Home ProgramOVER:");
  ASSERT_NE(firstButton, std::string::npos);
  EXPECT_LT(applet, firstButton);
  EXPECT_NE(r.out.find("Blink: Home  ->  times:3 delay:150ms\n"), std::string::npos);
  EXPECT_NE(r.out.find("Home ProgramDOWN:\nCall JavaScript: alert('Hello from Kestrel Pane')\n"),
            std::string::npos);
}

TEST(Cli, ActionsOfAProgramShowOneDisplayLinePerCommand) {
  TestEnv t;
  std::vector<std::string> applet(14), button(49);
  applet[0] = "100";
  applet[1] = "50";
  applet[2] = "1";
  applet[13] = "6 250;";
  button[48] = "1 My&!0Button;3 x 10 -999 20+ -999 5 100;";
  t.home.write("a.kpn", "KestrelPane Project 2.02\r\n" + Join(applet) + "\r\n" + Join(button) + "\r\n");
  CliRun r = RunCommand(t, "actions", {t.home.file("a.kpn")});
  ASSERT_EQ(r.code, 0) << r.err;
  EXPECT_EQ(r.out,
            "Applet AppletProgramStart:\nWait: 250 ms\n"
            "1 ProgramOVER:\nShow: My Button\n"
            "Move: x  ->  x:10 y:   width:20+ height:   f:5 d:100\n");
}

TEST(Cli, FailureOfTheLoadExitsWithOneAndTellsWhy) {
  TestEnv t;
  t.home.write("bad.kpn", "not a project\r\n");
  CliRun r = RunCommand(t, "info", {t.home.file("bad.kpn")});
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find("File type not supported"), std::string::npos);
}

TEST(Cli, DamagedDefaultRecordExitsWithThree) {
  TestEnv t;
  CopyDemoProject(t.home);
  t.store.Set("2.02/Params", "sDefaultBtn", "1|2|x|");
  CliRun r = RunCommand(t, "info", {t.home.file("Demo.kpn")});
  EXPECT_EQ(r.code, 3);
  EXPECT_NE(r.err.find("Settings restored. Please restart the program."), std::string::npos);
}

TEST(Cli, UnknownCommandOrWrongArgumentsIsAUsageError) {
  TestEnv t;
  EXPECT_EQ(RunCommand(t, "frobnicate", {}).code, 2);
  EXPECT_EQ(RunCommand(t, "info", {}).code, 2);
  EXPECT_EQ(RunCommand(t, "resave", {"a"}).code, 2);
}

TEST(CliBinary, UsesTheSettingsFileGivenAndCreatesIt) {
  TempDir dir;
  CopyDemoProject(dir);
  CliRun r = RunBinary("--settings " + dir.file("s.ini") + " --home " + dir.path() + " resave " +
                       dir.file("Demo.kpn") + " " + dir.file("Out.kpn"));
  ASSERT_EQ(r.code, 0) << r.err;
  std::string ini = dir.read("s.ini");
  // The save put the file at the top of the recent list in that file.
  EXPECT_NE(ini.find("File1=" + dir.file("Out.kpn")), std::string::npos) << ini;
}

TEST(CliBinary, NoCommandIsAUsageErrorWithExitTwo) {
  CliRun r = RunBinary("");
  EXPECT_EQ(r.code, 2);
  EXPECT_NE(r.err.find("usage:"), std::string::npos);
}

TEST(CliBinary, RelativePathsAreTakenFromTheCurrentFolder) {
  TempDir dir;
  CopyDemoProject(dir);
  CliRun r = RunBinary("--settings " + dir.file("s.ini") + " info " + dir.file("Demo.kpn"));
  ASSERT_EQ(r.code, 0) << r.err;
  EXPECT_EQ(r.err, "");
}

}  // namespace
}  // namespace kp::test
