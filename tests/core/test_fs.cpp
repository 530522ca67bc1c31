#include <gtest/gtest.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
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

}  // namespace
}  // namespace kp
