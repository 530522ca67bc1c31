// Both programs as the package installs them: --help and --version, usage
// errors, and a program folder under /usr that is read and never written.
#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <set>

#include "core/model.h"
#include "tests/cli/cli_fixture.h"

namespace kp::test {
namespace {

namespace fs = std::filesystem;

CliRun RunProgram(const std::string& commandLine) {
  TempDir io;
  const std::string cmd = commandLine + " >" + io.file("out") + " 2>" + io.file("err");
  const int status = std::system(cmd.c_str());
  CliRun r;
  r.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  r.out = io.read("out");
  r.err = io.read("err");
  return r;
}

const std::string kBin = std::string(KP_BINARY_DIR) + "/bin/";

TEST(Programs, VersionIsOneLineWithTheProgramsNameAndVersion) {
  for (const std::string program : {"kestrelpane", "kestrelpane-cli"}) {
    // The designer answers without a display.
    CliRun r = RunProgram("env -u DISPLAY -u WAYLAND_DISPLAY " + kBin + program + " --version");
    EXPECT_EQ(r.code, 0) << program << r.err;
    EXPECT_EQ(r.out, program + " (Kestrel Pane) " + sPRJ_FILE_VERSION + "\n");
    EXPECT_EQ(r.err, "");
  }
}

TEST(Programs, HelpGoesToStandardOutputWithExitZero) {
  CliRun designer = RunProgram("env -u DISPLAY " + kBin + "kestrelpane --help");
  EXPECT_EQ(designer.code, 0) << designer.err;
  EXPECT_EQ(designer.out.rfind("usage: kestrelpane [--home DIR] [--settings FILE]", 0), 0u);
  EXPECT_NE(designer.out.find("--version"), std::string::npos);
  EXPECT_NE(designer.out.find("$XDG_DATA_HOME/kestrelpane"), std::string::npos);
  CliRun cli = RunProgram(kBin + "kestrelpane-cli --help");
  EXPECT_EQ(cli.code, 0);
  EXPECT_NE(cli.out.find("--version"), std::string::npos);
  EXPECT_NE(cli.out.find("exit status: 0 success, 1 a failure"), std::string::npos);
}

TEST(Programs, TheDesignerRefusesAnUnknownOptionWithExitTwo) {
  CliRun r = RunProgram("env -u DISPLAY " + kBin + "kestrelpane --frobnicate x.kpn");
  EXPECT_EQ(r.code, 2);
  EXPECT_EQ(r.out, "");
  EXPECT_EQ(r.err,
            "kestrelpane: unrecognized option '--frobnicate'\n"
            "Try 'kestrelpane --help' for more information.\n");
  r = RunProgram("env -u DISPLAY " + kBin + "kestrelpane --home");
  EXPECT_EQ(r.code, 2);
  EXPECT_NE(r.err.find("option '--home' requires an argument"), std::string::npos);
}

// Every file and folder below a folder, for comparing before and after.
std::set<std::string> Tree(const std::string& root) {
  std::set<std::string> names;
  for (auto& e : fs::recursive_directory_iterator(root))
    names.insert(e.path().string() + "@" +
                 std::to_string(e.is_regular_file() ? fs::file_size(e.path()) : 0));
  return names;
}

// The command-line program copied into <prefix>/bin and the program folder's
// files into <prefix>/share/kestrelpane, as `cmake --install` lays them out.
struct Installed {
  TempDir root;
  std::string prefix = root.path() + "/usr";
  std::string home = root.path() + "/home/author";
  std::string data = prefix + "/share/kestrelpane";
  Installed() {
    fs::create_directories(prefix + "/bin");
    fs::create_directories(prefix + "/share");
    fs::create_directories(home);
    fs::copy_file(kBin + "kestrelpane-cli", prefix + "/bin/kestrelpane-cli");
    fs::copy(SourcePath("data"), data, fs::copy_options::recursive);
    fs::copy_file(kBin + "KestrelPane.js", data + "/KestrelPane.js");
    // The desktop's opener only notes what it was given.
    WriteBytes(root.path() + "/opener/xdg-open",
               "#!/bin/sh\necho \"$1\" > " + root.path() + "/opened\n");
    fs::permissions(root.path() + "/opener/xdg-open", fs::perms::owner_all);
  }
  CliRun Run(const std::string& args) const {
    return RunProgram("cd " + home + " && env -u KESTRELPANE_HOME -u XDG_DATA_HOME HOME=" + home +
                      " PATH=" + root.path() + "/opener:/usr/bin:/bin " + prefix +
                      "/bin/kestrelpane-cli --settings " + home + "/settings.ini " + args);
  }
  std::string Opened() const {
    for (int k = 0; k < 100 && !fs::exists(root.path() + "/opened"); ++k) usleep(50000);
    return ReadBytes(root.path() + "/opened");
  }
};

TEST(Installed, ABrowserTestWritesIntoTheUsersDataFolderAndNothingUnderUsr) {
  Installed i;
  const std::set<std::string> before = Tree(i.prefix);
  CliRun r = i.Run("test " + i.data + "/Projects/Demo.kpn");
  ASSERT_EQ(r.code, 0) << r.err;
  const std::string temp = i.home + "/.local/share/kestrelpane/AppletTemp";
  EXPECT_EQ(r.out.substr(0, r.out.find('\n')), temp + "/Demo.htm");
  EXPECT_TRUE(fs::exists(temp + "/Demo.htm"));
  EXPECT_TRUE(fs::exists(temp + "/demo_bg.jpg"));
  EXPECT_TRUE(fs::exists(temp + "/KestrelPane.js"));
  EXPECT_EQ(i.Opened(), temp + "/Demo.htm\n");
  // The first use also gave the user a sample project to open and save.
  EXPECT_EQ(ReadBytes(i.home + "/.local/share/kestrelpane/Projects/Demo.kpn"),
            ReadBytes(i.data + "/Projects/Demo.kpn"));
  EXPECT_EQ(Tree(i.prefix), before);
}

TEST(Installed, TheInstalledSampleBuildsIntoTheUsersHomeWithEveryPicture) {
  Installed i;
  const std::set<std::string> before = Tree(i.prefix);
  fs::create_directories(i.home + "/site");
  CliRun r = i.Run("build " + i.data + "/Projects/Demo.kpn " + i.home + "/site/index.html --yes");
  ASSERT_EQ(r.code, 0) << r.err;
  EXPECT_EQ(r.err.find("Can't copy"), std::string::npos) << r.err;
  for (const char* f : {"demo_bg.jpg", "demo_star.gif", "demo_arrow.gif", "click.au",
                        "KestrelPane.js", "index.html"})
    EXPECT_TRUE(fs::exists(i.home + "/site/" + f)) << f;
  EXPECT_EQ(Tree(i.prefix), before);
}

TEST(Installed, HomeStillNamesAProgramFolderOfOnesOwnThatIsWrittenAsBefore) {
  Installed i;
  const std::string own = i.root.path() + "/own";
  fs::copy(i.data, own, fs::copy_options::recursive);
  CliRun r = i.Run("--home " + own + " test " + own + "/Projects/Demo.kpn");
  ASSERT_EQ(r.code, 0) << r.err;
  EXPECT_TRUE(fs::exists(own + "/AppletTemp/Demo.htm"));
  EXPECT_FALSE(fs::exists(i.home + "/.local/share/kestrelpane"));
}

}  // namespace
}  // namespace kp::test
