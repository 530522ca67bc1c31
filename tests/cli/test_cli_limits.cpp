// The command line against files and projects made to hurt it: things that
// are not files, applets with nothing to draw, and sizes whose pictures
// would not fit the memory. Each ends with a message or a picture within a
// memory cap, never with a signal.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QImage>
#include <QImageReader>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "core/session.h"
#include "project/button_record.h"
#include "project/project_file.h"
#include "tests/cli/cli_fixture.h"

namespace kp::test {
namespace {

// --- Things that are not files --------------------------------------------

CliRun TimedInfo(const std::string& path) {
  TempDir dir;
  const auto start = std::chrono::steady_clock::now();
  CliRun r = RunBinary("--settings " + dir.file("s.ini") + " info " + path + " </dev/null");
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
  return r;
}

TEST(CliNotAFile, DevicesAreRefusedAtOnce) {
  for (const char* device : {"/dev/zero", "/dev/urandom"}) {
    CliRun r = TimedInfo(device);
    EXPECT_EQ(r.code, 1) << device;
    EXPECT_NE(r.err.find("Error loading project."), std::string::npos) << r.err;
    EXPECT_NE(r.err.find(std::string(device) + " is not a regular file"), std::string::npos)
        << r.err;
    EXPECT_EQ(r.out, "");
  }
}

TEST(CliNotAFile, APipeIsRefusedAtOnce) {
  TempDir dir;
  const std::string fifo = dir.file("bar.kpn");
  ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
  CliRun r = TimedInfo(fifo);
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find(fifo + " is not a regular file"), std::string::npos) << r.err;
}

TEST(CliNotAFile, AFolderIsRefusedSayingSo) {
  TempDir dir;
  std::filesystem::create_directories(dir.file("bar.kpn"));
  CliRun r = TimedInfo(dir.file("bar.kpn"));
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find(dir.file("bar.kpn") + " is a folder, not a file"), std::string::npos)
      << r.err;
}

TEST(CliNotAFile, AFileOverTheLimitIsRefusedWithoutReadingIt) {
  TempDir dir;
  const std::string big = dir.file("big.kpn");
  { std::ofstream(big) << kProjectHeader << "\r\n"; }
  std::filesystem::resize_file(big, kMaxReadBytes + 5LL * 1024 * 1024);  // sparse
  CliRun r = TimedInfo(big);
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find(big + " is 261 MB: files over 256 MB are not opened"), std::string::npos)
      << r.err;
}

// --- Projects for render ------------------------------------------------------

// A project of the given applet size with one button in the demo's look
// (fade, border, text border) at the given size and font size.
std::string WriteProject(const TempDir& dir, const std::string& name, int appletW, int appletH,
                         int buttonW = 0, int buttonH = 0, int fontSize = 10) {
  TestEnv t;
  Project p;
  SetDefaultMainParams(p, t.env);
  p.AppletWidth = static_cast<i16>(appletW);
  p.AppletHeight = static_cast<i16>(appletH);
  p.iFadeStyle = 2;
  p.cFadeColor = RGB(20, 40, 160);
  if (buttonW > 0) {
    const int i = AddNewButton(p, t.env);
    tButton& b = p.button(i);
    b.x = 0;
    b.y = 0;
    b.Width = static_cast<i16>(buttonW);
    b.Height = static_cast<i16>(buttonH);
    for (int s = 1; s <= 3; ++s) {
      b.Label[s] = "Home";
      b.FontSize[s] = static_cast<i16>(fontSize);
      b.TFrameThick[s] = 1;
      b.FadeStyle[s] = 1;
    }
  }
  const std::string path = dir.file(name);
  EXPECT_TRUE(SaveProject(p, t.env, path, true, false));
  return path;
}

TEST(CliRenderLimits, AnEmptyOrNegativeAppletSaysWhatIsWrong) {
  TempDir dir;
  struct Case {
    int w, h;
    const char* says;
  } cases[] = {{0, 0, "the applet is 0 x 0 pixels: nothing to draw"},
               {-5, 100, "the applet is -5 x 100 pixels: nothing to draw"},
               {300, 0, "the applet is 300 x 0 pixels: nothing to draw"}};
  for (const Case& c : cases) {
    const std::string project = WriteProject(dir, "empty.kpn", c.w, c.h);
    CliRun r = RunBinary("--settings " + dir.file("s.ini") + " render " + project + " " +
                         dir.file("x.png"));
    EXPECT_EQ(r.code, 1);
    EXPECT_NE(r.err.find(c.says), std::string::npos) << r.err;
    EXPECT_EQ(r.err.find("cannot write"), std::string::npos) << r.err;
    EXPECT_FALSE(std::filesystem::exists(dir.file("x.png")));
  }
}

// The built program under an address-space cap, run directly (no shell) so
// that wait4 reports its own peak resident size.
struct CappedRun {
  bool signalled = false;
  int signal = 0;
  int code = -1;
  long long peakBytes = 0;
  std::string err;
};

CappedRun RunCapped(long long capBytes, const std::vector<std::string>& args) {
  TempDir io;
  const std::string errFile = io.file("err");
  const std::string cli = std::string(KP_BINARY_DIR) + "/bin/kestrelpane-cli";
  std::vector<std::string> argv = {"prlimit", "--as=" + std::to_string(capBytes), cli};
  argv.insert(argv.end(), args.begin(), args.end());
  CappedRun run;
  const pid_t pid = ::fork();
  if (pid == 0) {
    FILE* e = std::freopen(errFile.c_str(), "w", stderr);
    (void)e;
    std::vector<char*> cargv;
    for (auto& a : argv) cargv.push_back(a.data());
    cargv.push_back(nullptr);
    ::execvp("prlimit", cargv.data());
    _exit(127);
  }
  int status = 0;
  rusage ru{};
  ::wait4(pid, &status, 0, &ru);
  run.signalled = WIFSIGNALED(status);
  run.signal = run.signalled ? WTERMSIG(status) : 0;
  run.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  run.peakBytes = static_cast<long long>(ru.ru_maxrss) * 1024;
  run.err = ReadBytes(errFile);
  return run;
}

// The goal for any project: 1.2 times its design surface plus 200 MB.
long long Goal(int appletW, int appletH) {
  return 4LL * appletW * appletH * 12 / 10 + 200LL * 1024 * 1024;
}

// Renders under the goal as a cap: a picture or a message, never a signal,
// and a peak within the goal.
void ExpectPictureOrMessage(const TempDir& dir, const std::string& project, int appletW,
                            int appletH) {
  const std::string png = dir.file("out.png");
  std::filesystem::remove(png);
  const CappedRun r = RunCapped(Goal(appletW, appletH),
                                {"--settings", dir.file("s.ini"), "render", project, png});
  EXPECT_FALSE(r.signalled) << "signal " << r.signal << "\n" << r.err;
  EXPECT_LT(r.peakBytes, Goal(appletW, appletH)) << r.peakBytes;
  if (r.code == 0) {
    EXPECT_TRUE(std::filesystem::exists(png));
    // The header is enough: decoding a picture this size is what the test
    // must not do itself.
    QImageReader reader(QString::fromStdString(png));
    EXPECT_EQ(reader.format(), "png");
    EXPECT_EQ(reader.size(), QSize(appletW, appletH));
  } else {
    EXPECT_EQ(r.code, 1) << r.err;
    EXPECT_NE(r.err.find("Not enough memory to draw"), std::string::npos) << r.err;
    EXPECT_NE(r.err.find("not written"), std::string::npos) << r.err;
    EXPECT_FALSE(std::filesystem::exists(png));
  }
  std::cout << "[ peak     ] " << project << ": " << (r.peakBytes >> 20) << " MB, exit " << r.code
            << "\n";
}

TEST(CliRenderLimits, AHugeButtonWithFont24000StopsWithAMessage) {
  TempDir dir;
  ExpectPictureOrMessage(dir, WriteProject(dir, "b.kpn", 420, 180, 32000, 32000, 24000), 420, 180);
}

TEST(CliRenderLimits, AHugeButtonWithFont10000StopsWithAMessage) {
  TempDir dir;
  ExpectPictureOrMessage(dir, WriteProject(dir, "b.kpn", 420, 180, 32000, 32000, 10000), 420, 180);
}

TEST(CliRenderLimits, AHugeFontOnAnOrdinaryButtonIsDrawn) {
  TempDir dir;
  const std::string project = WriteProject(dir, "f.kpn", 420, 180, 400, 150, 2000);
  const CappedRun r = RunCapped(Goal(420, 180), {"--settings", dir.file("s.ini"), "render",
                                                 project, dir.file("f.png")});
  EXPECT_EQ(r.code, 0) << r.err;
  EXPECT_LT(r.peakBytes, Goal(420, 180));
  EXPECT_TRUE(std::filesystem::exists(dir.file("f.png")));
}

TEST(CliRenderLimits, AppletAndButtonOf32000WithFont20000StopWithAMessage) {
  TempDir dir;
  ExpectPictureOrMessage(dir, WriteProject(dir, "ab.kpn", 32000, 32000, 32000, 32000, 20000),
                         32000, 32000);
}

TEST(CliRenderLimits, AnApplet32000SquareIsDrawnWithinTheCap) {
  TempDir dir;
  ExpectPictureOrMessage(dir, WriteProject(dir, "a.kpn", 32000, 32000), 32000, 32000);
}

}  // namespace
}  // namespace kp::test
