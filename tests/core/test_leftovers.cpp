// What a killed replace or export leaves beside the page or project it was
// writing: half-written copies under our temporary names, cleared at the
// next start wherever the last replace, export or project dialog was.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "core/settings.h"
#include "core/startup.h"
#include "tests/support/test_env.h"

namespace kp::test {
namespace {

namespace fs = std::filesystem;

// The id of a process that has ended: its files are leftovers.
long GonePid() {
  pid_t child = ::fork();
  if (child == 0) ::_exit(0);
  int status = 0;
  ::waitpid(child, &status, 0);
  return static_cast<long>(child);
}

TEST(Leftovers, PartialBackupsBesideTheLastReplacedPageGoAtStart) {
  TestEnv t;
  TempDir site, exported, projects;
  const std::string gone = std::to_string(GonePid());
  site.write("page.html", "the page");
  site.write("page_backup.html", "a finished backup");
  site.write(".page_backup1.html.tmp-" + gone, "half a back");
  site.write(".page.html.tmp-" + gone, "half a new pa");
  exported.write(".Demo.kpn.tmp-" + gone, "KestrelPane Pro");
  exported.write(".demo_star.gif.tmp-" + gone, "GIF8");
  projects.write(".Mine.kpn.tmp-" + gone, "Kestrel");
  // A temporary file of a run still going is not a leftover.
  const std::string mine = ".page_backup2.html.tmp-" + std::to_string(::getpid());
  site.write(mine, "being written");
  SetParam(t.env, "sLastReplacedFolder", site.path() + "/");
  SetParam(t.env, "sExportFolder", exported.path());
  SetParam(t.env, "sProjectsPath", projects.path());

  EXPECT_EQ(RemoveLeftovers(t.env), 5);
  EXPECT_FALSE(fs::exists(site.file(".page_backup1.html.tmp-" + gone)));
  EXPECT_FALSE(fs::exists(site.file(".page.html.tmp-" + gone)));
  EXPECT_FALSE(fs::exists(exported.file(".Demo.kpn.tmp-" + gone)));
  EXPECT_FALSE(fs::exists(projects.file(".Mine.kpn.tmp-" + gone)));
  EXPECT_TRUE(fs::exists(site.file(mine)));
  EXPECT_EQ(site.read("page.html"), "the page");
  EXPECT_EQ(site.read("page_backup.html"), "a finished backup");
}

TEST(Leftovers, UnsetFoldersSweepNothingElse) {
  TestEnv t;
  TempDir site;
  const std::string gone = std::to_string(GonePid());
  site.write(".page_backup.html.tmp-" + gone, "half");
  EXPECT_EQ(RemoveLeftovers(t.env), 0);
  EXPECT_TRUE(fs::exists(site.file(".page_backup.html.tmp-" + gone)));
}

}  // namespace
}  // namespace kp::test
