// Every step of every write and copy made to fail in turn (as a full disk
// would fail it) during save, build, export and replace: after each, every
// file is its previous version or its complete new one, no temporary file
// is left, and the command says what failed with a non-zero exit.
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <map>

#include "tests/cli/cli_fixture.h"

namespace kp::test {
namespace {

namespace fs = std::filesystem;

using Snapshot = std::map<std::string, std::string>;  // path below the root -> bytes

Snapshot Take(const std::string& root) {
  Snapshot s;
  for (auto& e : fs::recursive_directory_iterator(root))
    if (e.is_regular_file()) s[fs::relative(e.path(), root).string()] = ReadBytes(e.path());
  return s;
}

void Restore(const std::string& root, const Snapshot& s) {
  for (auto& e : fs::directory_iterator(root)) fs::remove_all(e.path());
  for (auto& [rel, bytes] : s) {
    fs::create_directories(fs::path(root + "/" + rel).parent_path());
    WriteBytes(root + "/" + rel, bytes);
  }
}

bool IsTempName(const std::string& rel) {
  return fs::path(rel).filename().string().find(".tmp-") != std::string::npos;
}

// One command run against a folder that holds a previous version of every
// file the command writes.
struct Scenario {
  std::string command;
  std::function<std::vector<std::string>(const TempDir& src, const TempDir& out)> args;
  std::function<void(const TempDir& src, const TempDir& out)> seed;
};

void RunEveryFault(const Scenario& sc) {
  TempDir src, out;
  CopyDemoProject(src);
  sc.seed(src, out);
  const Snapshot before = Take(out.path());
  const Snapshot sources = Take(src.path());

  // The run without faults: how many steps there are, and what complete
  // new files look like.
  Snapshot after;
  int total = 0;
  {
    TestEnv t;
    CliRun r = RunCommand(t, sc.command, sc.args(src, out));
    ASSERT_EQ(r.code, 0) << r.err;
    total = t.fs.steps;
    after = Take(out.path());
  }
  ASSERT_GT(total, 3) << sc.command;

  for (int k = 0; k < total; ++k) {
    Restore(out.path(), before);
    Restore(src.path(), sources);
    TestEnv t;
    t.fs.failAt = k;
    CliRun r = RunCommand(t, sc.command, sc.args(src, out));
    const std::string step = sc.command + " failing at step " + std::to_string(k) + " (" +
                             t.fs.stepLog.at(static_cast<size_t>(k)) + ")";
    EXPECT_NE(r.code, 0) << step;
    EXPECT_NE(r.err.find("No space left on device"), std::string::npos) << step << "\n" << r.err;

    const Snapshot now = Take(out.path());
    for (auto& [rel, bytes] : now) {
      EXPECT_FALSE(IsTempName(rel)) << step << ": left " << rel;
      auto old = before.find(rel);
      auto done = after.find(rel);
      const bool isOld = old != before.end() && old->second == bytes;
      const bool isNew = done != after.end() && done->second == bytes;
      EXPECT_TRUE(isOld || isNew) << step << ": " << rel << " is neither its old nor its new self";
    }
    for (auto& [rel, bytes] : before)
      EXPECT_TRUE(now.count(rel)) << step << ": " << rel << " is gone";
    for (auto& [rel, bytes] : Take(src.path()))
      EXPECT_FALSE(IsTempName(rel)) << step << ": left " << rel;
    for (auto& [rel, bytes] : Take(t.home.path()))
      EXPECT_FALSE(IsTempName(rel)) << step << ": left " << rel;
  }
}

// The previous version of each media file: other bytes under the same name.
void SeedOldMedia(const TempDir& src, const TempDir& out) {
  for (auto& e : fs::directory_iterator(src.path()))
    if (e.path().extension() != ".kpn")
      out.write(e.path().filename().string(), "old " + e.path().filename().string());
}

TEST(CliFaults, ResaveLeavesTheOldProjectOrTheNewOne) {
  RunEveryFault({"resave",
                 [](const TempDir& src, const TempDir& out) {
                   return std::vector<std::string>{src.file("Demo.kpn"), out.file("Demo.kpn")};
                 },
                 [](const TempDir&, const TempDir& out) { out.write("Demo.kpn", "old project"); }});
}

TEST(CliFaults, BuildLeavesEveryFileOldOrComplete) {
  RunEveryFault({"build",
                 [](const TempDir& src, const TempDir& out) {
                   return std::vector<std::string>{src.file("Demo.kpn"), out.file("index.html"),
                                                   "--yes"};
                 },
                 [](const TempDir& src, const TempDir& out) {
                   SeedOldMedia(src, out);
                   out.write("index.html", "old page");
                 }});
}

TEST(CliFaults, ExportLeavesEveryFileOldOrComplete) {
  RunEveryFault({"export",
                 [](const TempDir& src, const TempDir& out) {
                   return std::vector<std::string>{src.file("Demo.kpn"), out.file("Demo.kpn"),
                                                   "--yes"};
                 },
                 [](const TempDir& src, const TempDir& out) {
                   SeedOldMedia(src, out);
                   out.write("Demo.kpn", "old project");
                 }});
}

TEST(CliFaults, ReplaceLeavesThePageOldOrComplete) {
  RunEveryFault({"replace",
                 [](const TempDir& src, const TempDir& out) {
                   return std::vector<std::string>{src.file("Demo.kpn"), out.file("page.html"),
                                                   "--select", "1,2", "--update-files"};
                 },
                 [](const TempDir& src, const TempDir& out) {
                   SeedOldMedia(src, out);
                   out.write("page.html",
                             "<p>\n<applet code=\"a\">\n</applet>\n<applet code=\"b\">\n</applet>\n");
                 }});
}


const std::string kTwoApplets =
    "<p>\n<applet code=\"a\">\n</applet>\n<applet code=\"b\">\n</applet>\n";

TEST(CliFaults, AReadOnlyPageIsNotReplacedAndTheCommandSaysSo) {
  TestEnv t;
  TempDir src, out;
  CopyDemoProject(src);
  out.write("page.html", kTwoApplets);
  fs::permissions(out.file("page.html"), fs::perms::owner_read | fs::perms::group_read |
                                             fs::perms::others_read);
  CliRun r = RunCommand(t, "replace", {src.file("Demo.kpn"), out.file("page.html")});
  EXPECT_NE(r.code, 0);
  EXPECT_NE(r.err.find("write-protected"), std::string::npos) << r.err;
  EXPECT_EQ(out.read("page.html"), kTwoApplets);
  EXPECT_EQ(fs::status(out.file("page.html")).permissions() & fs::perms::all,
            fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
  EXPECT_FALSE(fs::exists(out.file("page_backup.html")));
}

TEST(CliFaults, AReadOnlyProjectFileIsNotResaved) {
  TestEnv t;
  TempDir src, out;
  CopyDemoProject(src);
  out.write("Copy.kpn", "old project");
  fs::permissions(out.file("Copy.kpn"), fs::perms::owner_read);
  CliRun r = RunCommand(t, "resave", {src.file("Demo.kpn"), out.file("Copy.kpn")});
  EXPECT_NE(r.code, 0);
  EXPECT_NE(r.err.find("write-protected"), std::string::npos) << r.err;
  EXPECT_EQ(out.read("Copy.kpn"), "old project");
}

TEST(CliFaults, APageThatIsALinkIsReplacedInItsTarget) {
  TestEnv t;
  TempDir src, out;
  CopyDemoProject(src);
  fs::create_directories(out.file("site"));
  out.write("site/page.html", kTwoApplets);
  fs::create_symlink("site/page.html", out.file("page.html"));
  CliRun r = RunCommand(t, "replace", {src.file("Demo.kpn"), out.file("page.html")});
  ASSERT_EQ(r.code, 0) << r.err;
  EXPECT_TRUE(fs::is_symlink(out.file("page.html")));
  EXPECT_NE(out.read("site/page.html").find("<applet name=\"DemoBar\""), std::string::npos);
  EXPECT_EQ(out.read("page_backup.html"), kTwoApplets);
}

TEST(CliFaults, AFailedBackupEndsTheReplaceWithANonZeroExit) {
  TestEnv t;
  TempDir src, out;
  CopyDemoProject(src);
  out.write("page.html", kTwoApplets);
  t.fs.failCopy.insert(out.file("page_backup.html"));
  CliRun r = RunCommand(t, "replace", {src.file("Demo.kpn"), out.file("page.html")});
  EXPECT_NE(r.code, 0);
  EXPECT_NE(r.err.find("Permission denied"), std::string::npos) << r.err;
  EXPECT_EQ(out.read("page.html"), kTwoApplets);
}

TEST(CliFaults, APagePathWhoseOnlyDotIsInAFolderEndsWithANonZeroExit) {
  TestEnv t;
  TempDir src, out;
  CopyDemoProject(src);
  fs::create_directories(out.file("my.site"));
  out.write("my.site/page", kTwoApplets);
  CliRun r = RunCommand(t, "replace", {src.file("Demo.kpn"), out.file("my.site/page")});
  EXPECT_NE(r.code, 0);
  EXPECT_NE(r.err.find("No such file or directory"), std::string::npos) << r.err;
  EXPECT_EQ(out.read("my.site/page"), kTwoApplets);
}

TEST(CliFaults, AnAppletWithoutItsClosingTagIsReportedAsNotReplaced) {
  TestEnv t;
  TempDir src, out;
  CopyDemoProject(src);
  const std::string page = "<p>\n<applet code=\"a\">\n<param name=x>\n";
  out.write("page.html", page);
  CliRun r = RunCommand(t, "replace", {src.file("Demo.kpn"), out.file("page.html")});
  EXPECT_NE(r.code, 0);
  EXPECT_NE(r.err.find("Applet 1 of"), std::string::npos) << r.err;
  EXPECT_NE(r.err.find("was not replaced"), std::string::npos) << r.err;
  EXPECT_NE(r.err.find("No applets were replaced in"), std::string::npos) << r.err;
  EXPECT_EQ(r.err.find("is updated and is ready for upload"), std::string::npos) << r.err;
  EXPECT_EQ(out.read("page.html").substr(0, page.size()), page);
}

}  // namespace
}  // namespace kp::test
