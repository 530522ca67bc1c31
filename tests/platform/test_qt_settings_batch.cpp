// The settings file is written once an operation: at the end of a batch,
// or, in a program with an event loop, once the current event is done.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "core/settings.h"
#include "platform/qt_settings_store.h"
#include "tests/support/test_env.h"

namespace kp {
namespace {

using test::TempDir;

// The file's text as it is on the disk now.
std::string OnDisk(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream s;
  s << in.rdbuf();
  return s.str();
}

TEST(QtSettingsBatch, ABatchWritesTheFileOnceWithEveryValue) {
  TempDir d;
  const std::string path = d.file("k.ini");
  QtSettingsStore store(path);
  store.BeginBatch();
  for (int i = 1; i <= 8; ++i) store.Set(kSecParams, "key" + std::to_string(i), std::to_string(i));
  store.SetMany(kSecRecent, {{"File1", "/a.kpn"}, {"File2", "-1"}});
  // Nothing reached the disk inside the operation.
  EXPECT_EQ(OnDisk(path).find("key1"), std::string::npos);
  EXPECT_EQ(store.EndBatch(), "");
  EXPECT_EQ(store.Writes(), 1);
  const std::string text = OnDisk(path);
  EXPECT_NE(text.find("key1=1"), std::string::npos) << text;
  EXPECT_NE(text.find("key8=8"), std::string::npos) << text;
  EXPECT_NE(text.find("File1=/a.kpn"), std::string::npos) << text;
}

TEST(QtSettingsBatch, WithoutAnEventLoopAChangeIsWrittenAtOnce) {
  TempDir d;
  const std::string path = d.file("k.ini");
  QtSettingsStore store(path);
  ASSERT_EQ(QCoreApplication::instance(), nullptr);
  store.Set(kSecParams, "iGridX", "7");
  EXPECT_EQ(store.Writes(), 1);
  EXPECT_NE(OnDisk(path).find("iGridX=7"), std::string::npos);
}

TEST(QtSettingsBatch, WithAnEventLoopTheChangesOfOneEventAreOneWrite) {
  TempDir d;
  const std::string path = d.file("k.ini");
  int argc = 1;
  char name[] = "kp_platform_tests";
  char* argv[] = {name, nullptr};
  QCoreApplication app(argc, argv);
  QtSettingsStore store(path);
  store.Set(kSecParams, "iGridX", "7");
  store.Set(kSecParams, "iGridY", "9");
  store.Set(kSecParams, "bShowGrid", "1");
  EXPECT_EQ(store.Writes(), 0);
  EXPECT_EQ(OnDisk(path).find("iGridX"), std::string::npos);
  // The event is done: before the next one, a kill would lose nothing.
  QCoreApplication::processEvents();
  EXPECT_EQ(store.Writes(), 1);
  const std::string text = OnDisk(path);
  EXPECT_NE(text.find("iGridX=7"), std::string::npos) << text;
  EXPECT_NE(text.find("bShowGrid=1"), std::string::npos) << text;
  // A batch open while events run keeps its changes to its end.
  store.BeginBatch();
  store.Set(kSecParams, "iGridX", "8");
  QCoreApplication::processEvents();
  EXPECT_EQ(store.Writes(), 1);
  EXPECT_EQ(OnDisk(path).find("iGridX=8"), std::string::npos);
  store.EndBatch();
  EXPECT_EQ(store.Writes(), 2);
  EXPECT_NE(OnDisk(path).find("iGridX=8"), std::string::npos);
  // A change waiting for its event's end joins a batch begun before it.
  store.Set(kSecParams, "iGridY", "3");
  store.BeginBatch();
  store.Set(kSecParams, "iGridX", "4");
  QCoreApplication::processEvents();
  EXPECT_EQ(store.Writes(), 2);
  store.EndBatch();
  EXPECT_EQ(store.Writes(), 3);
  EXPECT_NE(OnDisk(path).find("iGridY=3"), std::string::npos);
}

TEST(QtSettingsBatch, WhatIsPendingAtTheEndIsWrittenAsTheStoreCloses) {
  TempDir d;
  const std::string path = d.file("k.ini");
  {
    int argc = 1;
    char name[] = "kp_platform_tests";
    char* argv[] = {name, nullptr};
    QCoreApplication app(argc, argv);
    QtSettingsStore store(path);
    store.Set(kSecParams, "sProjectsPath", "/home/p");
    EXPECT_EQ(store.Writes(), 0);
  }
  EXPECT_NE(OnDisk(path).find("sProjectsPath=/home/p"), std::string::npos);
}

}  // namespace
}  // namespace kp
