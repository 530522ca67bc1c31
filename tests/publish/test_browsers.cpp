#include <gtest/gtest.h>

#include <filesystem>
#include <map>

#include "core/conv.h"
#include "core/settings.h"
#include "publish/browsers.h"
#include "tests/publish/publish_fixture.h"

namespace kp {
namespace {

using test::TempDir;
using test::TestEnv;

std::string B(TestEnv& t, const std::string& key) {
  return fReadValue(t.env, kSecBrowsers, key, "<none>");
}

// A registry of the two old browsers, both installed in a temp folder.
struct FakeRegistry {
  TempDir dir;
  std::map<std::string, std::string> values;
  FakeRegistry(const std::string& nsVersion = "4.08 [en]",
               const std::string& ieVersion = "5.50.4522.1800") {
    std::filesystem::create_directories(dir.file("Netscape/Program"));
    dir.write("Netscape/Program/Netscape.exe", "ns");
    dir.write("IE/iexplore.exe", "ie");
    values["SOFTWARE\\Netscape\\Netscape Navigator|CurrentVersion"] = nsVersion;
    values["SOFTWARE\\Netscape\\Netscape Navigator\\" + nsVersion + "\\Main|Install Directory"] =
        dir.file("Netscape");
    values["SOFTWARE\\Microsoft\\Internet Explorer|Version"] = ieVersion;
    values["SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\IEXPLORE.EXE|"] =
        dir.file("IE/iexplore.exe");
  }
  RegistryReader Reader() {
    return [this](const std::string& key, const std::string& value) {
      auto it = values.find(key + "|" + value);
      return it == values.end() ? std::string() : it->second;
    };
  }
};

TEST(DetectBrowsers, FirstStartWithBothOldBrowsersGivesEntriesZeroAndOneAndCountTwo) {
  TestEnv t;
  FakeRegistry reg;
  DetectBrowsers(t.env, reg.Reader(), BrowserSearch{});
  EXPECT_EQ(B(t, "Count"), "2");
  EXPECT_EQ(B(t, "B0"), reg.dir.file("Netscape/Program/Netscape.exe"));
  EXPECT_EQ(B(t, "Name0"), "Netscape 4.08");
  EXPECT_EQ(B(t, "B1"), reg.dir.file("IE/iexplore.exe"));
  EXPECT_EQ(B(t, "Name1"), "Internet Explorer 5.50");
  EXPECT_EQ(B(t, "NS"), "YES");
  EXPECT_EQ(B(t, "IE"), "YES");
}

TEST(DetectBrowsers, LongVersionTextIsCutToItsFirstFourCharacters) {
  EXPECT_EQ(ShortVersion("4.08 [en]"), "4.08");
  EXPECT_EQ(ShortVersion("6 [e"), "6 [e");
  EXPECT_EQ(ShortVersion("6.2 beta"), "6.2");
  EXPECT_EQ(ShortVersion("4.7"), "4.7");
}

TEST(DetectBrowsers, ABrowserFoundOnceIsNotLookedForAgainSoARemovalStays) {
  TestEnv t;
  FakeRegistry reg;
  DetectBrowsers(t.env, reg.Reader(), BrowserSearch{});
  BrowserSetup s = BrowserSetup_Load(t.env);
  s.selected = 0;
  BrowserSetup_Remove(s);
  BrowserSetup_OK(t.env, s);
  DetectBrowsers(t.env, reg.Reader(), BrowserSearch{});
  EXPECT_EQ(B(t, "Count"), "1");
  EXPECT_EQ(B(t, "Name0"), "Internet Explorer 5.50");
}

TEST(DetectBrowsers, NetscapeFallsBackToItsAppPathAndIsLookedForAgainWhenAbsent) {
  TestEnv t;
  FakeRegistry reg;
  std::filesystem::remove(reg.dir.file("Netscape/Program/Netscape.exe"));
  EXPECT_FALSE(DetectNetscape(t.env, reg.Reader()));
  EXPECT_EQ(B(t, "NS"), "<none>");
  reg.dir.write("nsapp.exe", "ns");
  reg.values["SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Netscape.exe|"] =
      reg.dir.file("nsapp.exe");
  EXPECT_TRUE(DetectNetscape(t.env, reg.Reader()));
  EXPECT_EQ(B(t, "B0"), reg.dir.file("nsapp.exe"));
}

TEST(DetectBrowsers, NoRegistryOnThisPlatformFindsNothingThere) {
  TestEnv t;
  EXPECT_FALSE(DetectNetscape(t.env, nullptr));
  EXPECT_FALSE(DetectExplorer(t.env, nullptr));
  EXPECT_EQ(B(t, "Count"), "<none>");
}

// Executables named like the known browsers in a folder of their own.
void MakeProgram(const std::string& path, bool executable = true) {
  test::WriteBytes(path, "#!/bin/sh\n");
  std::filesystem::permissions(
      path, executable ? std::filesystem::perms::owner_all
                       : std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
}

TEST(DetectBrowsers, DesktopBrowsersOnThePathInTheirOrderEachOnce) {
  TestEnv t;
  TempDir bin1, bin2;
  MakeProgram(bin2.file("chromium"));
  MakeProgram(bin1.file("firefox-esr"));
  MakeProgram(bin2.file("epiphany-browser"));
  MakeProgram(bin1.file("google-chrome"), false);  // not executable: not a browser
  BrowserSearch search{bin1.path() + "::" + bin2.path(), {}};
  EXPECT_EQ(DetectDesktopBrowsers(t.env, search), 3);
  EXPECT_EQ(B(t, "Count"), "3");
  EXPECT_EQ(B(t, "Name0"), "Firefox");
  EXPECT_EQ(B(t, "B0"), bin1.file("firefox-esr"));
  EXPECT_EQ(B(t, "Name1"), "Chromium");
  EXPECT_EQ(B(t, "B1"), bin2.file("chromium"));
  EXPECT_EQ(B(t, "Name2"), "Epiphany");
  EXPECT_EQ(B(t, "B2"), bin2.file("epiphany-browser"));
  EXPECT_EQ(B(t, "Firefox"), "YES");
  EXPECT_EQ(B(t, "GoogleChrome"), "<none>");

  // Found once: a second run adds nothing, a newly installed one is added.
  MakeProgram(bin1.file("google-chrome-stable"));
  EXPECT_EQ(DetectDesktopBrowsers(t.env, search), 1);
  EXPECT_EQ(B(t, "Name3"), "Google Chrome");
  EXPECT_EQ(DetectDesktopBrowsers(t.env, search), 0);
  EXPECT_EQ(B(t, "Count"), "4");
}

TEST(DetectBrowsers, DesktopFileNamesAProgramOffThePath) {
  TestEnv t;
  TempDir data, opt, emptyData;
  MakeProgram(opt.file("firefox/firefox-bin"));
  std::filesystem::create_directories(data.file("applications"));
  data.write("applications/firefox.desktop",
             "[Desktop Entry]\nName=Firefox\nExec=\"" + opt.file("firefox/firefox-bin") +
                 "\" %u\n[Desktop Action new-window]\nExec=/nowhere --new-window\n");
  BrowserSearch search{"", {emptyData.path(), data.path()}};
  EXPECT_EQ(DetectDesktopBrowsers(t.env, search), 1);
  EXPECT_EQ(B(t, "B0"), opt.file("firefox/firefox-bin"));
  EXPECT_EQ(B(t, "Name0"), "Firefox");
}

TEST(DetectBrowsers, DesktopExecLineGivesItsProgram) {
  EXPECT_EQ(DesktopExecProgram("[Desktop Entry]\r\nExec=/usr/bin/chromium %U\r\n"),
            "/usr/bin/chromium");
  EXPECT_EQ(DesktopExecProgram("[Desktop Entry]\nExec=epiphany\n"), "epiphany");
  EXPECT_EQ(DesktopExecProgram("[Other]\nExec=x\n"), "");
  EXPECT_EQ(DesktopExecProgram("[Desktop Entry]\nName=x\n"), "");
}

TEST(GetBrowsers, DefaultFirstThenTheNamesWithThePathsAlongside) {
  TestEnv t;
  fWriteValue(t.env, kSecBrowsers, "Count", "2");
  fWriteValue(t.env, kSecBrowsers, "B0", "/usr/bin/firefox");
  fWriteValue(t.env, kSecBrowsers, "Name0", "Firefox");
  fWriteValue(t.env, kSecBrowsers, "B1", "/usr/bin/other");
  fWriteValue(t.env, kSecBrowsers, "Selected", "2");
  BrowserList l;
  GetBrowsers(t.env, l);
  EXPECT_EQ(l.cmbBrowser, (std::vector<std::string>{"Default", "Firefox", "Unnamed"}));
  EXPECT_EQ(l.List1, (std::vector<std::string>{"/usr/bin/firefox", "/usr/bin/other"}));
  EXPECT_EQ(l.listIndex, 2);
  fWriteValue(t.env, kSecBrowsers, "Selected", "-1");
  GetBrowsers(t.env, l);
  EXPECT_EQ(l.listIndex, 0);
}

TEST(GetBrowsers, SelectedAboveTheListsLengthLeavesTheDefaultRow) {
  TestEnv t;
  fWriteValue(t.env, kSecBrowsers, "Count", "1");
  fWriteValue(t.env, kSecBrowsers, "B0", "/usr/bin/firefox");
  fWriteValue(t.env, kSecBrowsers, "Selected", "5");
  BrowserList l;
  l.listIndex = 1;
  GetBrowsers(t.env, l);
  EXPECT_EQ(l.cmbBrowser.size(), 2u);
  EXPECT_EQ(l.listIndex, 0);
}

TEST(GetBrowsers, ClickingARowStoresItAsSelected) {
  TestEnv t;
  BrowserList l;
  cmbBrowser_Click(t.env, l, 3);
  EXPECT_EQ(B(t, "Selected"), "3");
  EXPECT_EQ(l.listIndex, 3);
}

TEST(BrowserSetup, CancelKeepsTheOldListEvenAfterManyRemovals) {
  TestEnv t;
  FakeRegistry reg;
  DetectBrowsers(t.env, reg.Reader(), BrowserSearch{});
  BrowserSetup s = BrowserSetup_Load(t.env);
  for (int i = 0; i < 5; ++i) {
    s.selected = 0;
    BrowserSetup_Remove(s);
  }
  EXPECT_TRUE(s.ListNames.empty());
  // Cancel: the window closes without BrowserSetup_OK.
  BrowserList l;
  GetBrowsers(t.env, l);
  EXPECT_EQ(l.cmbBrowser,
            (std::vector<std::string>{"Default", "Netscape 4.08", "Internet Explorer 5.50"}));
}

TEST(BrowserSetup, OkStoresTheRowsAndPutsTheHtmlWindowBackOnDefault) {
  TestEnv t;
  fWriteValue(t.env, kSecBrowsers, "Selected", "1");
  BrowserSetup s = BrowserSetup_Load(t.env);
  EXPECT_TRUE(s.ListNames.empty());
  AddEditBrowser box{"/usr/bin/firefox", ""};
  AddEditBrowser_OKAdd(s, box);
  AddEditBrowser_OKAdd(s, AddEditBrowser{"/usr/bin/chromium", "Chromium"});
  s.selected = 0;
  AddEditBrowser_OKEdit(s, AddEditBrowser{"/usr/bin/firefox-esr", "Firefox ESR"});
  BrowserSetup_OK(t.env, s);
  EXPECT_EQ(B(t, "Count"), "2");
  EXPECT_EQ(B(t, "B0"), "/usr/bin/firefox-esr");
  EXPECT_EQ(B(t, "Name0"), "Firefox ESR");
  EXPECT_EQ(B(t, "Name1"), "Chromium");
  EXPECT_EQ(B(t, "Selected"), "-1");
  BrowserList l;
  GetBrowsers(t.env, l);
  EXPECT_EQ(l.listIndex, 0);
}

TEST(BrowserSetup, AnEmptyNameBecomesUnnamed) {
  BrowserSetup s;
  AddEditBrowser_OKAdd(s, AddEditBrowser{"/x/y", ""});
  EXPECT_EQ(s.ListNames, std::vector<std::string>{"Unnamed"});
}

TEST(AddEditBrowser, BrowseFillsThePathAndAnEmptyNameFromTheProgramsName) {
  TestEnv t;
  t.prompter.openAnswers = {"/opt/browsers/opera.exe", "/usr/bin/vivaldi"};
  AddEditBrowser box;
  AddEditBrowser_Browse(t.env, box);
  EXPECT_EQ(box.txtPath, "/opt/browsers/opera.exe");
  EXPECT_EQ(box.txtName, "Opera");
  AddEditBrowser_Browse(t.env, box);
  EXPECT_EQ(box.txtPath, "/usr/bin/vivaldi");
  EXPECT_EQ(box.txtName, "Opera");
  EXPECT_EQ(t.prompter.fileDialogs[0].filter, "Programs (*)|*| All Files (*.*)|*.*");
  EXPECT_TRUE(t.prompter.fileDialogs[0].pathMustExist);
  EXPECT_EQ(BrowserNameFromPath("C:\\Program Files\\netscape.exe"), "Netscape");
}

}  // namespace
}  // namespace kp
