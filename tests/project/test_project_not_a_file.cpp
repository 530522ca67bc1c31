// Opening something that is not a project file at all: a device, a pipe, a
// folder or a huge file stops the load at once with the failure message,
// before a byte is read.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <filesystem>

#include "project/project_file.h"
#include "tests/project/project_fixture.h"

namespace kp::test {
namespace {

bool WasRead(const TestEnv& t, const std::string& path) {
  return std::find(t.fs.reads.begin(), t.fs.reads.end(), path) != t.fs.reads.end();
}

// Loads `path`, expecting the failure path; returns its message.
std::string FailedLoadMessage(TestEnv& t, const std::string& path) {
  Project p = MakeProject(t, 2);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(LoadProject2(p, t.env, path), LoadResult::Failed);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
  EXPECT_EQ(p.ButtonCount, 0);
  EXPECT_TRUE(p.bReady);
  if (t.prompter.shown.empty()) return "";
  EXPECT_EQ(t.prompter.CountMsg(), 1);
  return t.prompter.Last().text;
}

TEST(ProjectNotAFile, APipeReportedByTheFileSystemIsNeverRead) {
  TestEnv t;
  const std::string path = t.home.file("pipe.kpn");
  t.fs.fakeInfo[path] = PathInfo{PathKind::Other, 0};
  const std::string msg = FailedLoadMessage(t, path);
  EXPECT_EQ(msg.rfind("Error loading project.\r\n", 0), 0u) << msg;
  EXPECT_NE(msg.find(path + " is not a regular file"), std::string::npos) << msg;
  EXPECT_FALSE(WasRead(t, path));
}

TEST(ProjectNotAFile, AFileOverTheLimitIsNeverRead) {
  TestEnv t;
  const std::string path = t.home.file("huge.kpn");
  t.home.write("huge.kpn", std::string(kProjectHeader) + "\r\n420|180|0|R|\r\n");
  t.fs.fakeInfo[path] = PathInfo{PathKind::File, 300LL * 1024 * 1024};
  const std::string msg = FailedLoadMessage(t, path);
  EXPECT_NE(msg.find("is 300 MB: files over 256 MB are not opened"), std::string::npos) << msg;
  EXPECT_FALSE(WasRead(t, path));
}

TEST(ProjectNotAFile, AFileAtTheLimitIsRead) {
  TestEnv t;
  const std::string path = t.home.file("big.kpn");
  t.home.write("big.kpn", std::string(kProjectHeader) + "\r\n420|180|0|R|\r\n");
  t.fs.fakeInfo[path] = PathInfo{PathKind::File, kMaxReadBytes};
  Project p;
  EXPECT_EQ(LoadProject2(p, t.env, path), LoadResult::Loaded);
  EXPECT_TRUE(WasRead(t, path));
}

TEST(ProjectNotAFile, ARealPipeEndsTheLoadAtOnce) {
  TestEnv t;
  const std::string path = t.home.file("fifo.kpn");
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
  const std::string msg = FailedLoadMessage(t, path);
  EXPECT_NE(msg.find("is not a regular file"), std::string::npos) << msg;
}

TEST(ProjectNotAFile, DevicesEndTheLoadAtOnce) {
  for (const char* device : {"/dev/zero", "/dev/urandom"}) {
    TestEnv t;
    const std::string msg = FailedLoadMessage(t, device);
    EXPECT_NE(msg.find(std::string(device) + " is not a regular file"), std::string::npos) << msg;
  }
}

TEST(ProjectNotAFile, AFolderEndsTheLoadSayingSo) {
  TestEnv t;
  std::filesystem::create_directories(t.home.file("dir.kpn"));
  const std::string msg = FailedLoadMessage(t, t.home.file("dir.kpn"));
  EXPECT_NE(msg.find("dir.kpn is a folder, not a file"), std::string::npos) << msg;
}

TEST(ProjectNotAFile, AnOldFormatNameThatIsNoFileEndsTheSameWay) {
  TestEnv t;
  const std::string path = t.home.file("old.lpm");
  t.fs.fakeInfo[path] = PathInfo{PathKind::Other, 0};
  const std::string msg = FailedLoadMessage(t, path);
  EXPECT_NE(msg.find("is not a regular file"), std::string::npos) << msg;
  EXPECT_FALSE(WasRead(t, path));
}

}  // namespace
}  // namespace kp::test
