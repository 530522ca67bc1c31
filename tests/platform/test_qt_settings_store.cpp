#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "core/settings.h"
#include "platform/qt_settings_store.h"
#include "tests/support/test_env.h"

namespace kp {
namespace {

using test::TempDir;

// QSettings caches parsed files within a process; a copy under a new name
// makes the reader parse what was really written to disk.
std::string FreshCopy(const TempDir& d, const std::string& path) {
  static int n = 0;
  const std::string copy = d.file("copy" + std::to_string(++n) + ".ini");
  std::filesystem::copy_file(path, copy);
  return copy;
}

std::string HighBytes() {
  std::string s;
  for (int b = 0x80; b <= 0xFF; ++b) s.push_back(static_cast<char>(b));
  return s;
}

TEST(QtSettingsStore, IniFileIsCreatedWhenMissing) {
  TempDir d;
  const std::string path = d.file("conf/Kestrel settings.ini");
  QtSettingsStore store(path);
  EXPECT_TRUE(std::filesystem::exists(path));
  EXPECT_FALSE(store.Get(kSecParams, "iGridX"));
}

TEST(QtSettingsStore, HighBytesRoundTripThroughIniFile) {
  TempDir d;
  const std::string path = d.file("k.ini");
  const std::string value = HighBytes();
  {
    QtSettingsStore store(path);
    EXPECT_EQ(store.Set("2.02/Params", "_buffer", value), "");
    EXPECT_EQ(store.Get("2.02/Params", "_buffer"), value);
  }
  QtSettingsStore reopened(FreshCopy(d, path));
  EXPECT_EQ(reopened.Get("2.02/Params", "_buffer"), value);
}

TEST(QtSettingsStore, BarsLineBreaksAndSpecialTextsRoundTrip) {
  TempDir d;
  const std::string path = d.file("k.ini");
  const std::string record = "Button 1|10|20|a;b|\r\nsecond line\r\n|end";
  const std::map<std::string, std::string> values = {
      {"rec", record},
      {"commas", "a, b, c"},
      {"at", "@ByteArray(x)"},
      {"quotes", "say \"hi\" = 'x'"},
      {"blank", ""},
      {"spaces", "  padded  "},
      {"backslash", "C:\\web\\page.html"},
      {"semicolon", "x;y # not a comment"},
  };
  {
    QtSettingsStore store(path);
    for (auto& [k, v] : values) EXPECT_EQ(store.Set("2.02/Params", k, v), "") << k;
  }
  QtSettingsStore reopened(FreshCopy(d, path));
  for (auto& [k, v] : values) EXPECT_EQ(reopened.Get("2.02/Params", k), v) << k;
}

TEST(QtSettingsStore, SectionsKeepVersionsApart) {
  TempDir d;
  QtSettingsStore store(d.file("k.ini"));
  store.Set("2.02/Params", "iGridX", "12");
  store.Set("2.01/Params", "iGridX", "5");
  store.Set("CustColors", "C1", "255");
  EXPECT_EQ(store.Get("2.02/Params", "iGridX"), "12");
  EXPECT_EQ(store.Get("2.01/Params", "iGridX"), "5");
  EXPECT_EQ(store.Get("CustColors", "C1"), "255");
  EXPECT_FALSE(store.Get("2.02", "iGridX"));
}

TEST(QtSettingsStore, RemoveSectionRemovesSubsections) {
  TempDir d;
  const std::string path = d.file("k.ini");
  {
    QtSettingsStore store(path);
    store.Set("2.02", "bAddJAR", "0");
    store.Set("2.02/Params", "iGridX", "12");
    store.Set("2.02/Sizes/frmMain", "Left", "100");
    store.Set("2.01/Params", "iGridX", "5");
    store.Set("CustColors", "C1", "7");
    EXPECT_EQ(store.RemoveSection("2.02"), "");
    EXPECT_FALSE(store.Get("2.02", "bAddJAR"));
    EXPECT_FALSE(store.Get("2.02/Params", "iGridX"));
    EXPECT_FALSE(store.Get("2.02/Sizes/frmMain", "Left"));
  }
  QtSettingsStore reopened(FreshCopy(d, path));
  EXPECT_FALSE(reopened.Get("2.02/Sizes/frmMain", "Left"));
  EXPECT_EQ(reopened.Get("2.01/Params", "iGridX"), "5");
  EXPECT_EQ(reopened.Get("CustColors", "C1"), "7");
}

TEST(QtSettingsStore, RemovingOneSubsectionKeepsItsSiblings) {
  TempDir d;
  QtSettingsStore store(d.file("k.ini"));
  store.Set("2.02/Params", "iGridX", "12");
  store.Set("2.02/Sizes/frmMain", "Left", "100");
  store.Set("2.02/Sizes/frmDesign", "Left", "200");
  store.Set("2.02/Recent", "File1", "/p/a.kpn");
  EXPECT_EQ(store.RemoveSection("2.02/Sizes"), "");
  EXPECT_FALSE(store.Get("2.02/Sizes/frmDesign", "Left"));
  EXPECT_EQ(store.Get("2.02/Params", "iGridX"), "12");
  EXPECT_EQ(store.Get("2.02/Recent", "File1"), "/p/a.kpn");
  EXPECT_NE(store.RemoveSection(""), "");  // never the whole store
  EXPECT_EQ(store.Get("2.02/Params", "iGridX"), "12");
}

TEST(QtSettingsStore, UnwritableFileGivesErrorText) {
  TempDir d;
  d.write("blocker", "a file where a folder should be");
  QtSettingsStore store(d.file("blocker/k.ini"));
  EXPECT_NE(store.Set("2.02/Params", "iGridX", "12"), "");
}

TEST(QtSettingsStore, NativeStoreIsPerUserUnderApplicationName) {
  TempDir d;
  ::setenv("XDG_CONFIG_HOME", d.path().c_str(), 1);
  QtSettingsStore store;
  const std::string file = store.FileName();
  // QSettings fixes its folders once per process; never touch a real store.
  if (file.rfind(d.path(), 0) != 0) GTEST_SKIP() << "config folder already fixed: " << file;
  EXPECT_NE(file.find("KestrelPane"), std::string::npos);
  EXPECT_EQ(store.Set(kSecParams, "iGridX", "14"), "");
  EXPECT_EQ(store.Get(kSecParams, "iGridX"), "14");
  EXPECT_TRUE(std::filesystem::exists(file));
}

TEST(QtSettingsStore, ServesTheSettingsLayer) {
  TempDir d;
  QtSettingsStore store(d.file("k.ini"));
  test::ScriptedPrompter prompter;
  test::FaultFs fs;
  ProjectView view;
  Env env{fs, store, prompter, view, d.path()};
  EXPECT_EQ(GetParam(env, "iGridX"), "10");
  for (const char* p : {"/p/1.kpn", "/p/2.kpn", "/p/3.kpn", "/p/4.kpn", "/p/5.kpn"})
    WriteRecent(env, p);
  EXPECT_EQ(ReadRecentRaw(env),
            (std::array<std::string, 4>{"/p/5.kpn", "/p/4.kpn", "/p/3.kpn", "/p/2.kpn"}));
  EXPECT_EQ(ResetSettings(env, false), ResetResult::Done);
  EXPECT_EQ(ReadRecentRaw(env)[0], "-1");
  EXPECT_TRUE(prompter.CountMsg() == 1);
}

}  // namespace
}  // namespace kp
