// Starting outside programs for real: a fake browser, a shell script that
// records its working folder and arguments.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "core/launcher.h"
#include "publish/browser_test.h"
#include "tests/publish/publish_fixture.h"

namespace kp {
namespace {

using test::TempDir;

// Writes a script that appends its folder and each argument, one per line,
// to `record`, then "done".
std::string FakeBrowser(const TempDir& dir, const std::string& record) {
  const std::string path = dir.file("fakebrowser");
  test::WriteBytes(
      path, "#!/bin/sh\n{ pwd; for a in \"$@\"; do echo \"$a\"; done; echo done; } > '" + record +
                ".part'\nmv '" + record + ".part' '" + record + "'\n");
  std::filesystem::permissions(path, std::filesystem::perms::owner_all);
  return path;
}

// The recorded lines once the script has finished (up to 5 seconds).
std::vector<std::string> Recorded(const std::string& record) {
  for (int i = 0; i < 100 && !std::filesystem::exists(record); ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  std::vector<std::string> lines;
  std::string text = test::ReadBytes(record), line;
  for (char ch : text) {
    if (ch == '\n') {
      lines.push_back(line);
      line.clear();
    } else {
      line.push_back(ch);
    }
  }
  return lines;
}

TEST(PosixLauncher, DetachedRunGetsItsArgumentsAndWorkingFolder) {
  TempDir dir, work;
  const std::string record = dir.file("args.txt");
  PosixLauncher l;
  IoStatus s = l.Run(FakeBrowser(dir, record), {"/a page.htm", "two"}, true, work.path());
  ASSERT_TRUE(s) << s.message;
  EXPECT_EQ(Recorded(record),
            (std::vector<std::string>{work.path(), "/a page.htm", "two", "done"}));
}

TEST(PosixLauncher, MissingProgramFailsWithTheSystemsText) {
  PosixLauncher l;
  IoStatus s = l.Run("/no/such/browser", {"x"}, true);
  EXPECT_FALSE(s);
  EXPECT_EQ(s.message, "No such file or directory");
  EXPECT_FALSE(l.Run("", {}, true));
}

TEST(PosixLauncher, WaitedRunFailsOnANonZeroExit) {
  PosixLauncher l;
  EXPECT_TRUE(l.Run("/bin/sh", {"-c", "exit 0"}, false));
  IoStatus s = l.Run("/bin/sh", {"-c", "exit 3"}, false);
  EXPECT_FALSE(s);
  EXPECT_NE(s.message.find("3"), std::string::npos);
}

TEST(PosixLauncher, RunForErrorsWaitsAndKeepsWhatTheProgramSaidOnItsErrorOutput) {
  PosixLauncher l;
  std::string errors = "old";
  IoStatus s = l.RunForErrors("/bin/sh", {"-c", "echo out; echo first >&2; echo why >&2; exit 3"},
                              errors);
  EXPECT_FALSE(s);
  EXPECT_EQ(errors, "first\nwhy\n");
  EXPECT_EQ(s.message, "/bin/sh ended with exit code 3");
  EXPECT_TRUE(l.RunForErrors("/bin/sh", {"-c", "exit 0"}, errors));
  EXPECT_EQ(errors, "");
  EXPECT_FALSE(l.RunForErrors("/no/such/program", {}, errors));
  EXPECT_EQ(errors, "");
}

TEST(PosixLauncher, OpenAndExploreGoThroughTheDesktopsOpener) {
  TempDir dir;
  PosixLauncher l;
  l.opener = FakeBrowser(dir, dir.file("open.txt"));
  ASSERT_TRUE(l.Open("/x/page.htm"));
  EXPECT_EQ(Recorded(dir.file("open.txt"))[1], "/x/page.htm");
  l.opener = FakeBrowser(dir, dir.file("explore.txt"));
  ASSERT_TRUE(l.Explore("/x/"));
  EXPECT_EQ(Recorded(dir.file("explore.txt"))[1], "/x/");
}

TEST(TestInBrowser, ChosenBrowserProgramIsStartedWithTheFullPageInAppletTemp) {
  test::Pub f;
  PosixLauncher real;
  f.env.launcher = &real;
  TempDir dir;
  const std::string record = dir.file("args.txt");
  f.win.browsers.cmbBrowser = {"Default", "Fake"};
  f.win.browsers.List1 = {FakeBrowser(dir, record)};
  f.win.browsers.listIndex = 1;
  f.AddButton("Home");
  f.Generate();
  const std::string page = TestInBrowser(f.c);
  const std::string folder = f.t.home.path() + "/AppletTemp";
  EXPECT_EQ(Recorded(record),
            (std::vector<std::string>{folder, folder + "/MyProject.htm", "done"}));
  EXPECT_EQ(page, folder + "/MyProject.htm");
}

TEST(TestInBrowser, AppletViewerIsStartedWithTheRelativeNameInAppletTemp) {
  test::Pub f;
  PosixLauncher real;
  f.env.launcher = &real;
  TempDir dir;
  const std::string record = dir.file("args.txt");
  const std::string viewer = dir.file("appletviewer");
  std::filesystem::rename(FakeBrowser(dir, record), viewer);
  f.win.browsers.List1 = {viewer};
  f.win.browsers.listIndex = 1;
  f.Generate();
  TestInBrowser(f.c);
  EXPECT_EQ(Recorded(record),
            (std::vector<std::string>{f.t.home.path() + "/AppletTemp", "MyProject.htm", "done"}));
}

}  // namespace
}  // namespace kp
