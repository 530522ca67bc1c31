// The publishing commands: page, build, replace, export, browsers, test.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "core/launcher.h"
#include "core/settings.h"
#include "tests/cli/cli_fixture.h"

namespace kp::test {
namespace {

namespace fs = std::filesystem;

struct Demo {
  TempDir src, out;
  Demo() { CopyDemoProject(src); }
  std::string Project() const { return src.file("Demo.kpn"); }
};

TEST(CliPublish, PagePrintsWhatABuildWritesIntoThePageFile) {
  TestEnv t;
  Demo d;
  CliRun page = RunCommand(t, "page", {d.Project()});
  ASSERT_EQ(page.code, 0) << page.err;
  CliRun build = RunCommand(t, "build", {d.Project(), d.out.file("index.html"), "--html-only"});
  ASSERT_EQ(build.code, 0) << build.err;
  EXPECT_EQ(d.out.read("index.html"), page.out);
  EXPECT_EQ(page.out.substr(page.out.size() - 9), "</Html>\r\n");
  EXPECT_NE(page.out.find("<applet name=\"DemoBar\""), std::string::npos);
}

TEST(CliPublish, BuildWritesThePageAndTheMediaBesideIt) {
  TestEnv t;
  Demo d;
  CliRun r = RunCommand(t, "build", {d.Project(), d.out.file("index.html")});
  ASSERT_EQ(r.code, 0) << r.err;
  EXPECT_EQ(r.out, d.out.file("index.html") + "\n");
  for (const char* f : {"index.html", "click.au", "demo_bg.jpg", "demo_star.gif"})
    EXPECT_TRUE(fs::exists(d.out.file(f))) << f;
  EXPECT_NE(r.err.find("The applet was successfully built, and is ready for upload."),
            std::string::npos);
}

TEST(CliPublish, OccupiedFolderStopsWithTheWarningUnlessYes) {
  TestEnv t;
  Demo d;
  d.out.write("old.html", "old");
  CliRun r = RunCommand(t, "build", {d.Project(), d.out.file("index.html")});
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find("This folder already contains files."), std::string::npos);
  EXPECT_FALSE(fs::exists(d.out.file("index.html")));
  r = RunCommand(t, "build", {d.Project(), d.out.file("index.html"), "--yes"});
  EXPECT_EQ(r.code, 0) << r.err;
  EXPECT_TRUE(fs::exists(d.out.file("index.html")));
}

TEST(CliPublish, BuildReportsMissingMediaWithExitOne) {
  TestEnv t;
  Demo d;
  fs::remove(d.src.file("demo_star.gif"));
  CliRun r = RunCommand(t, "build", {d.Project(), d.out.file("index.html")});
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find("Can't copy Picture for Button # 1"), std::string::npos);
  EXPECT_TRUE(fs::exists(d.out.file("index.html")));
}

TEST(CliPublish, ReplaceSwapsTheListedAppletsAndKeepsABackup) {
  TestEnv t;
  Demo d;
  const std::string page = "<p>\n<applet code=\"a\">\n</applet>\n<applet code=\"b\">\n</applet>\n";
  d.out.write("page.html", page);
  CliRun r = RunCommand(t, "replace", {d.Project(), d.out.file("page.html"), "--select", "2"});
  ASSERT_EQ(r.code, 0) << r.err;
  const std::string now = d.out.read("page.html");
  EXPECT_EQ(now.rfind("<p>\n<applet code=\"a\">\n</applet>\n<applet name=\"DemoBar\"", 0), 0u);
  EXPECT_EQ(d.out.read("page_backup.html"), page);
  EXPECT_FALSE(fs::exists(d.out.file("demo_star.gif")));
  EXPECT_NE(r.err.find("Total applets found: 2. Replaced applets: 1."), std::string::npos);
}

TEST(CliPublish, ReplaceDefaultsToTheFirstAppletAndCanUpdateTheFiles) {
  TestEnv t;
  Demo d;
  d.out.write("page.html", "<applet code=\"a\">\n</applet>\n<applet code=\"b\">\n</applet>\n");
  CliRun r = RunCommand(t, "replace", {d.Project(), d.out.file("page.html"), "--update-files"});
  ASSERT_EQ(r.code, 0) << r.err;
  EXPECT_EQ(d.out.read("page.html").rfind("<applet name=\"DemoBar\"", 0), 0u);
  EXPECT_NE(d.out.read("page.html").find("<applet code=\"b\">"), std::string::npos);
  EXPECT_TRUE(fs::exists(d.out.file("demo_star.gif")));
}

TEST(CliPublish, ReplaceWithoutAppletsOrPageFailsAndBadRowsAreAUsageError) {
  TestEnv t;
  Demo d;
  d.out.write("plain.html", "<p>nothing</p>\n");
  CliRun r = RunCommand(t, "replace", {d.Project(), d.out.file("plain.html")});
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find("No applets found in: plain.html"), std::string::npos);
  r = RunCommand(t, "replace", {d.Project(), d.out.file("gone.html")});
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find("not found"), std::string::npos);
  EXPECT_EQ(RunCommand(t, "replace", {d.Project(), d.out.file("plain.html"), "--select", "0"}).code,
            2);
  EXPECT_EQ(RunCommand(t, "replace", {d.Project(), d.out.file("plain.html"), "--select"}).code, 2);
}

TEST(CliPublish, ExportPutsTheProjectAndItsMediaInOneFolder) {
  TestEnv t;
  Demo d;
  CliRun r = RunCommand(t, "export", {d.Project(), d.out.file("Moved.kpn")});
  ASSERT_EQ(r.code, 0) << r.err;
  for (const char* f : {"Moved.kpn", "click.au", "demo_bg.jpg", "demo_star.gif"})
    EXPECT_TRUE(fs::exists(d.out.file(f))) << f;
  EXPECT_EQ(d.out.read("Moved.kpn").find(d.src.path()), std::string::npos);
  EXPECT_EQ(RunCommand(t, "export", {d.Project(), d.out.file("Again.kpn")}).code, 1);
  EXPECT_EQ(RunCommand(t, "export", {d.Project(), d.out.file("Again.kpn"), "--yes"}).code, 0);
}

TEST(CliPublish, TestBuildsIntoAppletTempAndStartsTheChosenBrowser) {
  TestEnv t;
  Demo d;
  // A browser that records its argument.
  TempDir bin;
  const std::string record = bin.file("args.txt");
  WriteBytes(bin.file("fakebrowser"), "#!/bin/sh\necho \"$1\" > '" + record + ".part'\nmv '" +
                                          record + ".part' '" + record + "'\n");
  fs::permissions(bin.file("fakebrowser"), fs::perms::owner_all);
  fWriteValue(t.env, kSecBrowsers, "Count", "1");
  fWriteValue(t.env, kSecBrowsers, "B0", bin.file("fakebrowser"));
  fWriteValue(t.env, kSecBrowsers, "Name0", "Fake");

  std::ostringstream out, err;
  CliPrompter prompter(err);
  PosixLauncher launcher;
  Env env{t.fs, t.store, prompter, t.view, t.home.path(), &launcher};
  int code = cli::Run(env, prompter, "test", {d.Project(), "--browser", "1"}, out, err);
  ASSERT_EQ(code, 0) << err.str();
  const std::string page = t.home.path() + "/AppletTemp/Demo.htm";
  EXPECT_EQ(out.str(), page + "\n");
  for (int i = 0; i < 100 && !fs::exists(record); ++i) usleep(50000);
  EXPECT_EQ(ReadBytes(record), page + "\n");
  EXPECT_TRUE(fs::exists(t.home.path() + "/AppletTemp/demo_star.gif"));
  EXPECT_EQ(cli::Run(env, prompter, "test", {d.Project(), "--browser", "2"}, out, err), 2);
}

TEST(CliPublish, BrowsersListsDefaultFirst) {
  TestEnv t;
  CliRun r = RunCommand(t, "browsers", {});
  ASSERT_EQ(r.code, 0);
  EXPECT_EQ(r.out.rfind("0\tDefault\n", 0), 0u);
}

TEST(CliPublish, WrongArgumentsAreUsageErrors) {
  TestEnv t;
  EXPECT_EQ(RunCommand(t, "build", {"a.kpn"}).code, 2);
  EXPECT_EQ(RunCommand(t, "build", {"a.kpn", "b.html", "--bogus"}).code, 2);
  EXPECT_EQ(RunCommand(t, "page", {}).code, 2);
  EXPECT_EQ(RunCommand(t, "browsers", {"x"}).code, 2);
}

TEST(CliPublish, TheBinaryBuildsAndSaysSoInItsUsage) {
  Demo d;
  TempDir home;
  CliRun help = RunBinary("--help");
  EXPECT_NE(help.out.find("build PROJECT.kpn PAGE"), std::string::npos);
  CliRun r = RunBinary("--home " + home.path() + " --settings " + home.file("s.ini") + " build " +
                       d.Project() + " " + d.out.file("index.html"));
  EXPECT_EQ(r.code, 0) << r.err;
  EXPECT_TRUE(fs::exists(d.out.file("demo_bg.jpg")));
}

}  // namespace
}  // namespace kp::test
