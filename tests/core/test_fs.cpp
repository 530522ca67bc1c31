#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

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

}  // namespace
}  // namespace kp
