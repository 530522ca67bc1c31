#include <gtest/gtest.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <future>

#include "core/fs.h"
#include "tests/support/test_env.h"

namespace kp {
namespace {

using test::ReadBytes;
using test::TempDir;

std::string AllBytes() {
  std::string s;
  for (int i = 0; i < 256; ++i) s.push_back(static_cast<char>(i));
  return s;
}

TEST(DiskFileSystem, WriteThenReadKeepsEveryByte) {
  TempDir d;
  DiskFileSystem fs;
  std::string data = AllBytes() + "\r\n|end";
  ASSERT_TRUE(fs.WriteFileAtomic(d.file("a.kpn"), data));
  std::string back;
  ASSERT_TRUE(fs.ReadFile(d.file("a.kpn"), back));
  EXPECT_EQ(back, data);
}

TEST(DiskFileSystem, WriteReplacesOldContentAndLeavesNoTemporaryFile) {
  TempDir d;
  DiskFileSystem fs;
  d.write("p.kpn", "old content that is longer");
  ASSERT_TRUE(fs.WriteFileAtomic(d.file("p.kpn"), "new"));
  EXPECT_EQ(d.read("p.kpn"), "new");
  EXPECT_EQ(fs.ListFiles(d.path()), std::vector<std::string>{"p.kpn"});
  for (auto& e : std::filesystem::directory_iterator(d.path()))
    EXPECT_EQ(e.path().filename().string(), "p.kpn");
}

TEST(DiskFileSystem, FailedWriteLeavesOldFileUntouched) {
  TempDir d;
  DiskFileSystem fs;
  d.write("p.kpn", "old");
  // A file-size limit makes the write of the temporary file fail half way.
  auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
  rlimit saved{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &saved), 0);
  rlimit small = saved;
  small.rlim_cur = 1024;
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
  IoStatus st = fs.WriteFileAtomic(d.file("p.kpn"), std::string(8192, 'x'));
  setrlimit(RLIMIT_FSIZE, &saved);
  std::signal(SIGXFSZ, oldHandler);

  EXPECT_FALSE(st.ok);
  EXPECT_FALSE(st.message.empty());
  EXPECT_EQ(d.read("p.kpn"), "old");
  int entries = 0;
  for (auto& e : std::filesystem::directory_iterator(d.path())) {
    (void)e;
    ++entries;
  }
  EXPECT_EQ(entries, 1) << "the temporary file must be removed";
}

TEST(DiskFileSystem, WriteIntoMissingFolderFails) {
  TempDir d;
  DiskFileSystem fs;
  IoStatus st = fs.WriteFileAtomic(d.file("none/p.kpn"), "x");
  EXPECT_FALSE(st);
  EXPECT_EQ(st.message, "No such file or directory");
}

TEST(DiskFileSystem, WriteOverFolderFailsAndRemovesTemporaryFile) {
  TempDir d;
  DiskFileSystem fs;
  std::filesystem::create_directories(d.file("dir/inner"));
  EXPECT_FALSE(fs.WriteFileAtomic(d.file("dir"), "x"));
  EXPECT_TRUE(fs.ListFiles(d.path()).empty());
}

TEST(DiskFileSystem, ReadMissingFileFails) {
  TempDir d;
  DiskFileSystem fs;
  std::string out = "stale";
  IoStatus st = fs.ReadFile(d.file("missing"), out);
  EXPECT_FALSE(st);
  EXPECT_FALSE(st.permissionLike);
  EXPECT_TRUE(out.empty());
  EXPECT_FALSE(fs.ReadFile(d.path(), out));  // a folder is no file
}

TEST(DiskFileSystem, CopyCopiesBytes) {
  TempDir d;
  DiskFileSystem fs;
  d.write("a.gif", AllBytes());
  d.write("b.gif", "longer old target content ..........................");
  ASSERT_TRUE(fs.CopyFile(d.file("a.gif"), d.file("b.gif")));
  EXPECT_EQ(d.read("b.gif"), AllBytes());
  EXPECT_EQ(d.read("a.gif"), AllBytes());
}

TEST(DiskFileSystem, CopyOntoItselfIsPermissionLike) {
  TempDir d;
  DiskFileSystem fs;
  d.write("a.gif", "GIF");
  IoStatus same = fs.CopyFile(d.file("a.gif"), d.file("a.gif"));
  EXPECT_FALSE(same);
  EXPECT_TRUE(same.permissionLike);
  // The same file under another name (a hard link) counts too.
  std::filesystem::create_hard_link(d.file("a.gif"), d.file("link.gif"));
  IoStatus linked = fs.CopyFile(d.file("a.gif"), d.file("link.gif"));
  EXPECT_FALSE(linked);
  EXPECT_TRUE(linked.permissionLike);
  IoStatus dotted = fs.CopyFile(d.file("a.gif"), d.path() + "/./a.gif");
  EXPECT_TRUE(dotted.permissionLike);
  EXPECT_EQ(d.read("a.gif"), "GIF");
}

TEST(DiskFileSystem, CopyOfMissingFileIsNotPermissionLike) {
  TempDir d;
  DiskFileSystem fs;
  IoStatus st = fs.CopyFile(d.file("none.gif"), d.file("b.gif"));
  EXPECT_FALSE(st);
  EXPECT_FALSE(st.permissionLike);
  EXPECT_FALSE(std::filesystem::exists(d.file("b.gif")));
}

TEST(DiskFileSystem, FileExistsOnlyForRegularFiles) {
  TempDir d;
  DiskFileSystem fs;
  d.write("a.txt", "");
  EXPECT_TRUE(fs.FileExists(d.file("a.txt")));
  EXPECT_FALSE(fs.FileExists(d.path()));
  EXPECT_FALSE(fs.FileExists(d.file("b.txt")));
  EXPECT_TRUE(fs.DirExists(d.path()));
  EXPECT_FALSE(fs.DirExists(d.file("a.txt")));
}

TEST(DiskFileSystem, ListFilesGivesNamesOfRegularFilesOnly) {
  TempDir d;
  DiskFileSystem fs;
  d.write("b.gif", "1");
  d.write("a.jpg", "2");
  std::filesystem::create_directories(d.file("sub"));
  EXPECT_EQ(fs.ListFiles(d.path()), (std::vector<std::string>{"a.jpg", "b.gif"}));
  EXPECT_TRUE(fs.ListFiles(d.file("missing")).empty());
}

TEST(DiskFileSystem, MakeDirRemoveFileAndChangeDir) {
  TempDir d;
  DiskFileSystem fs;
  EXPECT_TRUE(fs.MakeDir(d.file("new")));
  EXPECT_FALSE(fs.MakeDir(d.file("new")));  // exists already
  EXPECT_FALSE(fs.MakeDir(d.file("x/y")));  // no parent
  d.write("f", "1");
  EXPECT_TRUE(fs.RemoveFile(d.file("f")));
  EXPECT_FALSE(fs.RemoveFile(d.file("f")));
  auto before = std::filesystem::current_path();
  EXPECT_TRUE(fs.ChangeDir(d.file("new")));
  EXPECT_EQ(std::filesystem::current_path(), std::filesystem::canonical(d.file("new")));
  std::filesystem::current_path(before);
  EXPECT_FALSE(fs.ChangeDir(d.file("missing")));
}

// Reading whole is for regular files only: a device or a pipe would never
// end, and a huge file would fill the memory. Each fails at once.
TEST(DiskFileSystem, ReadOfADeviceFailsAtOnceSayingWhatItIs) {
  DiskFileSystem fs;
  for (const char* device : {"/dev/zero", "/dev/urandom", "/dev/null"}) {
    std::string out = "x";
    IoStatus st = fs.ReadFile(device, out);
    EXPECT_FALSE(st.ok) << device;
    EXPECT_EQ(st.message, std::string(device) + " is not a regular file (a device, a pipe or a socket)");
    EXPECT_TRUE(out.empty());
  }
}

TEST(DiskFileSystem, ReadOfAPipeWithoutWriterFailsAtOnce) {
  TempDir d;
  DiskFileSystem fs;
  const std::string fifo = d.file("pipe");
  ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
  auto reading = std::async(std::launch::async, [&] {
    std::string out;
    return fs.ReadFile(fifo, out);
  });
  if (reading.wait_for(std::chrono::seconds(5)) != std::future_status::ready) {
    // Let the stuck read go before failing.
    int fd = ::open(fifo.c_str(), O_WRONLY);
    if (fd >= 0) ::close(fd);
    FAIL() << "reading a pipe waited for a writer";
  }
  IoStatus st = reading.get();
  EXPECT_FALSE(st.ok);
  EXPECT_NE(st.message.find("is not a regular file"), std::string::npos) << st.message;
}

TEST(DiskFileSystem, ReadOfAFolderSaysItIsAFolder) {
  TempDir d;
  DiskFileSystem fs;
  std::string out;
  IoStatus st = fs.ReadFile(d.path(), out);
  EXPECT_FALSE(st.ok);
  EXPECT_EQ(st.message, d.path() + " is a folder, not a file");
}

TEST(DiskFileSystem, ReadOfAFileOverTheLimitFailsWithoutReadingIt) {
  TempDir d;
  DiskFileSystem fs;
  const std::string big = d.file("big.kpn");
  // A sparse file: its size is over the limit, its blocks are not there.
  { std::ofstream(big).put('K'); }
  std::filesystem::resize_file(big, kMaxReadBytes + 1);
  std::string out;
  const auto start = std::chrono::steady_clock::now();
  IoStatus st = fs.ReadFile(big, out);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(500));
  EXPECT_FALSE(st.ok);
  EXPECT_EQ(st.message, big + " is 257 MB: files over 256 MB are not opened");
  EXPECT_TRUE(out.empty());
  EXPECT_EQ(CheckReadable(fs, big).message, st.message);
}

TEST(DiskFileSystem, InspectTellsFilesFoldersAndOtherThingsApart) {
  TempDir d;
  DiskFileSystem fs;
  d.write("a.kpn", "12345");
  PathInfo file = fs.Inspect(d.file("a.kpn"));
  EXPECT_EQ(file.kind, PathKind::File);
  EXPECT_EQ(file.size, 5);
  EXPECT_EQ(fs.Inspect(d.path()).kind, PathKind::Folder);
  EXPECT_EQ(fs.Inspect("/dev/zero").kind, PathKind::Other);
  EXPECT_EQ(fs.Inspect(d.file("missing")).kind, PathKind::Missing);
  // A missing file passes the check: the read reports it in the system's words.
  EXPECT_TRUE(CheckReadable(fs, d.file("missing")));
  EXPECT_TRUE(CheckReadable(fs, d.file("a.kpn")));
  EXPECT_FALSE(CheckReadable(fs, "/dev/zero"));
}


std::vector<std::string> TempNamesIn(const std::string& dir) {
  std::vector<std::string> names;
  for (auto& e : std::filesystem::directory_iterator(dir))
    if (e.path().filename().string().find(".tmp-") != std::string::npos)
      names.push_back(e.path().filename().string());
  return names;
}

// A copy over an older file, failed at each of its steps in turn: the older
// file stays whole and no temporary file is left. The source is larger than
// one block so that a failure can come between two blocks.
TEST(DiskFileSystem, CopyFailedAtAnyStepLeavesThePreviousFileAndNoTemporary) {
  TempDir d;
  std::string big(200000, '\0');
  for (size_t i = 0; i < big.size(); ++i) big[i] = static_cast<char>(i * 7);
  d.write("new.gif", big);
  test::FaultFs probe;
  d.write("pic.gif", "previous");
  ASSERT_TRUE(probe.CopyFile(d.file("new.gif"), d.file("pic.gif")));
  const int total = probe.steps;
  ASSERT_GE(total, 6);  // create, several blocks, flush, rename
  for (int k = 0; k < total; ++k) {
    d.write("pic.gif", "previous");
    test::FaultFs fs;
    fs.failAt = k;
    IoStatus s = fs.CopyFile(d.file("new.gif"), d.file("pic.gif"));
    EXPECT_FALSE(s) << fs.stepLog[k];
    EXPECT_EQ(s.message, "No space left on device");
    EXPECT_EQ(d.read("pic.gif"), "previous") << fs.stepLog[k];
    EXPECT_TRUE(TempNamesIn(d.path()).empty()) << fs.stepLog[k];
  }
  EXPECT_EQ(d.read("pic.gif"), "previous");
}

TEST(DiskFileSystem, WriteFailedAtAnyStepLeavesThePreviousFileAndNoTemporary) {
  TempDir d;
  for (int k = 0; k < 4; ++k) {
    d.write("a.kpn", "previous");
    test::FaultFs fs;
    fs.failAt = k;
    EXPECT_FALSE(fs.WriteFileAtomic(d.file("a.kpn"), "new text"));
    EXPECT_EQ(d.read("a.kpn"), "previous");
    EXPECT_TRUE(TempNamesIn(d.path()).empty());
  }
  test::FaultFs fs;
  EXPECT_TRUE(fs.WriteFileAtomic(d.file("a.kpn"), "new text"));
  EXPECT_EQ(fs.steps, 4);
  EXPECT_EQ(d.read("a.kpn"), "new text");
}

TEST(DiskFileSystem, WriteProtectedFileIsNotReplacedAndTheMessageSaysSo) {
  TempDir d;
  d.write("page.html", "kept");
  d.write("src.gif", "new");
  ::chmod(d.file("page.html").c_str(), 0444);
  DiskFileSystem fs;
  IoStatus w = fs.WriteFileAtomic(d.file("page.html"), "new");
  EXPECT_FALSE(w);
  EXPECT_NE(w.message.find("write-protected"), std::string::npos) << w.message;
  IoStatus c = fs.CopyFile(d.file("src.gif"), d.file("page.html"));
  EXPECT_FALSE(c);
  EXPECT_NE(c.message.find("write-protected"), std::string::npos) << c.message;
  EXPECT_EQ(d.read("page.html"), "kept");
  struct stat st {};
  ASSERT_EQ(::stat(d.file("page.html").c_str(), &st), 0);
  EXPECT_EQ(st.st_mode & 0777, 0444u);
  EXPECT_TRUE(fs.Inspect(d.file("page.html")).writeProtected);
  EXPECT_TRUE(TempNamesIn(d.path()).empty());
}

TEST(DiskFileSystem, WriteAndCopyGoThroughASymbolicLinkToItsTarget) {
  TempDir d;
  std::filesystem::create_directories(d.file("real"));
  d.write("real/page.html", "old");
  d.write("src.html", "copied");
  std::filesystem::create_symlink("real/page.html", d.file("page.html"));
  DiskFileSystem fs;
  ASSERT_TRUE(fs.WriteFileAtomic(d.file("page.html"), "written"));
  EXPECT_TRUE(std::filesystem::is_symlink(d.file("page.html")));
  EXPECT_EQ(d.read("real/page.html"), "written");
  ASSERT_TRUE(fs.CopyFile(d.file("src.html"), d.file("page.html")));
  EXPECT_TRUE(std::filesystem::is_symlink(d.file("page.html")));
  EXPECT_EQ(d.read("real/page.html"), "copied");
}

// The id of a process that has ended.
long GonePid() {
  pid_t child = ::fork();
  if (child == 0) ::_exit(0);
  int status = 0;
  ::waitpid(child, &status, 0);
  return static_cast<long>(child);
}

TEST(DiskFileSystem, StaleTemporaryFilesOfGoneProcessesAreRemovedAndOthersKept) {
  TempDir d;
  const std::string gone = std::to_string(GonePid());
  const std::string alive = std::to_string(static_cast<long>(::getppid()));
  d.write(".a.kpn.tmp-" + gone, "partial");
  d.write(".b.html.tmp-" + alive, "being written");
  d.write("c.tmp-" + gone, "not ours: no leading dot");
  d.write(".d.tmp-x" + gone, "not ours: no process id");
  EXPECT_EQ(RemoveStaleTemps(d.path()), 1);
  EXPECT_FALSE(std::filesystem::exists(d.file(".a.kpn.tmp-" + gone)));
  EXPECT_TRUE(std::filesystem::exists(d.file(".b.html.tmp-" + alive)));
  EXPECT_TRUE(std::filesystem::exists(d.file("c.tmp-" + gone)));
  EXPECT_TRUE(std::filesystem::exists(d.file(".d.tmp-x" + gone)));
}

TEST(DiskFileSystem, TheFirstSaveIntoAFolderRemovesItsStaleTemporaryFiles) {
  TempDir d;
  const std::string stale = ".old.kpn.tmp-" + std::to_string(GonePid());
  d.write(stale, "left by a killed run");
  DiskFileSystem fs;
  ASSERT_TRUE(fs.WriteFileAtomic(d.file("new.kpn"), "x"));
  EXPECT_FALSE(std::filesystem::exists(d.file(stale)));
}

}  // namespace
}  // namespace kp
