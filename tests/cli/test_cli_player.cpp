// The player's script element and file through the publishing commands,
// the setting from the settings file and the --no-player flag.
#include <gtest/gtest.h>

#include <filesystem>

#include "core/settings.h"
#include "tests/cli/cli_fixture.h"

namespace kp::test {
namespace {

namespace fs = std::filesystem;

const std::string kElement = "<script type=\"text/javascript\" src=\"KestrelPane.js\"></script>";
const std::string kEnd = "<!-- END GENERATED CODE -->";

int Count(const std::string& text, const std::string& part) {
  int n = 0;
  for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++n;
  return n;
}

// The demo project, an output folder, and the player in the program folder.
struct PlayerDemo {
  TestEnv t;
  TempDir src, out;
  PlayerDemo() {
    CopyDemoProject(src);
    t.home.write("KestrelPane.js", "player");
  }
  std::string Project() const { return src.file("Demo.kpn"); }
};

TEST(CliPlayer, PageHasTheElementOnceAfterTheEndCommentAndHtmlHasNone) {
  PlayerDemo d;
  CliRun html = RunCommand(d.t, "html", {d.Project()});
  CliRun page = RunCommand(d.t, "page", {d.Project()});
  ASSERT_EQ(page.code, 0) << page.err;
  EXPECT_EQ(html.out.find("<script type"), std::string::npos);
  EXPECT_EQ(Count(page.out, kElement), 1);
  // The block as `html` prints it, byte for byte, then the player's line.
  EXPECT_NE(page.out.find(html.out + kElement + "\r\n"), std::string::npos);
  EXPECT_EQ(page.out.find(kElement), page.out.rfind(kEnd) + kEnd.size() + 2);
}

TEST(CliPlayer, BuildWritesTheElementAndCopiesThePlayer) {
  PlayerDemo d;
  CliRun r = RunCommand(d.t, "build", {d.Project(), d.out.file("index.html")});
  ASSERT_EQ(r.code, 0) << r.err;
  EXPECT_EQ(Count(d.out.read("index.html"), kElement), 1);
  EXPECT_EQ(d.out.read("KestrelPane.js"), "player");
}

TEST(CliPlayer, NoPlayerFlagKeepsPagesBareAndCopiesNothing) {
  PlayerDemo d;
  CliRun page = RunCommand(d.t, "page", {d.Project(), "--no-player"});
  ASSERT_EQ(page.code, 0) << page.err;
  EXPECT_EQ(page.out.find("<script type"), std::string::npos);

  CliRun build = RunCommand(d.t, "build", {d.Project(), d.out.file("index.html"), "--no-player"});
  ASSERT_EQ(build.code, 0) << build.err;
  EXPECT_EQ(d.out.read("index.html"), page.out);
  EXPECT_FALSE(fs::exists(d.out.file("KestrelPane.js")));
  EXPECT_TRUE(fs::exists(d.out.file("demo_star.gif")));

  TempDir site;
  site.write("page.html", "<applet code=\"a\">\n</applet>\n");
  CliRun replace = RunCommand(
      d.t, "replace", {d.Project(), site.file("page.html"), "--update-files", "--no-player"});
  ASSERT_EQ(replace.code, 0) << replace.err;
  EXPECT_EQ(site.read("page.html").find("<script type"), std::string::npos);
  EXPECT_FALSE(fs::exists(site.file("KestrelPane.js")));
}

TEST(CliPlayer, ReplaceAddsTheElementOnceAndUpdateFilesCopiesThePlayer) {
  PlayerDemo d;
  d.out.write("page.html", "<body>\n<applet code=\"a\">\n</applet>\n</body>\n");
  CliRun r = RunCommand(d.t, "replace", {d.Project(), d.out.file("page.html"), "--update-files"});
  ASSERT_EQ(r.code, 0) << r.err;
  const std::string once = d.out.read("page.html");
  EXPECT_NE(once.find("</applet>\n" + kElement + "\n</body>\n"), std::string::npos);
  EXPECT_EQ(d.out.read("KestrelPane.js"), "player");
  r = RunCommand(d.t, "replace", {d.Project(), d.out.file("page.html")});
  ASSERT_EQ(r.code, 0) << r.err;
  EXPECT_EQ(d.out.read("page.html"), once);
}

TEST(CliPlayer, ExportCopiesNoPlayer) {
  PlayerDemo d;
  CliRun r = RunCommand(d.t, "export", {d.Project(), d.out.file("Moved.kpn")});
  ASSERT_EQ(r.code, 0) << r.err;
  EXPECT_TRUE(fs::exists(d.out.file("Moved.kpn")));
  EXPECT_FALSE(fs::exists(d.out.file("KestrelPane.js")));
  // Export writes a project, not a page: the flag is not one of its own.
  EXPECT_EQ(RunCommand(d.t, "export", {d.Project(), d.out.file("X.kpn"), "--no-player"}).code, 2);
}

TEST(CliPlayer, SettingInTheSettingsFileTurnsThePlayerOff) {
  TempDir dir, out;
  CopyDemoProject(dir);
  dir.write("home/KestrelPane.js", "player");
  const std::string common =
      "--settings " + dir.file("s.ini") + " --home " + dir.file("home") + " ";

  CliRun on = RunBinary(common + "build " + dir.file("Demo.kpn") + " " + out.file("on.html"));
  ASSERT_EQ(on.code, 0) << on.err;
  EXPECT_EQ(Count(out.read("on.html"), kElement), 1);
  EXPECT_TRUE(fs::exists(out.file("KestrelPane.js")));

  fs::remove(out.file("KestrelPane.js"));
  // The key under the version's section, as the store writes Params keys.
  std::string ini = dir.read("s.ini");
  const size_t section = ini.find("[2.02]\n");
  const std::string line = "Params\\bAddPlayerScript=0\n";
  if (section == std::string::npos)
    ini += "[2.02]\n" + line;
  else
    ini.insert(section + 7, line);
  dir.write("s.ini", ini);
  CliRun off =
      RunBinary(common + "build " + dir.file("Demo.kpn") + " " + out.file("off.html") + " --yes");
  ASSERT_EQ(off.code, 0) << off.err;
  EXPECT_EQ(out.read("off.html").find("<script type"), std::string::npos);
  EXPECT_FALSE(fs::exists(out.file("KestrelPane.js")));
  CliRun page = RunBinary(common + "page " + dir.file("Demo.kpn"));
  EXPECT_EQ(page.out.find("<script type"), std::string::npos);
}

TEST(CliPlayer, TestPutsThePlayerInAppletTempUnlessTurnedOff) {
  PlayerDemo d;
  // No launcher in-process: the page is written and nothing is started.
  CliRun r = RunCommand(d.t, "test", {d.Project()});
  ASSERT_EQ(r.code, 0) << r.err;
  const std::string folder = d.t.home.path() + "/AppletTemp";
  EXPECT_EQ(Count(d.t.home.read("AppletTemp/Demo.htm"), kElement), 1);
  EXPECT_TRUE(fs::exists(folder + "/KestrelPane.js"));

  fs::remove_all(folder);
  r = RunCommand(d.t, "test", {d.Project(), "--no-player"});
  ASSERT_EQ(r.code, 0) << r.err;
  EXPECT_EQ(d.t.home.read("AppletTemp/Demo.htm").find("<script type"), std::string::npos);
  EXPECT_FALSE(fs::exists(folder + "/KestrelPane.js"));
}

TEST(CliPlayer, UsageNamesTheNoPlayerFlag) {
  CliRun help = RunBinary("--help");
  EXPECT_NE(help.out.find("build PROJECT.kpn PAGE [--html-only] [--yes] [--no-player]"),
            std::string::npos);
  EXPECT_NE(help.out.find("--no-player leaves out"), std::string::npos);
}

}  // namespace
}  // namespace kp::test
