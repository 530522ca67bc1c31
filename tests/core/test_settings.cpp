#include <gtest/gtest.h>

#include "core/settings.h"
#include "tests/support/test_env.h"

namespace kp {
namespace {

using test::ScriptedPrompter;
using test::TestEnv;

// --- The in-memory store --------------------------------------------------

TEST(MemorySettings, RemoveSectionRemovesSubsectionsOnly) {
  MemorySettings s;
  s.Set("2.02", "bAddJAR", "0");
  s.Set("2.02/Params", "iGridX", "5");
  s.Set("2.02/Sizes/frmMain", "Left", "1");
  s.Set("2.020", "x", "1");
  s.Set("2.01/Params", "iGridX", "7");
  EXPECT_EQ(s.RemoveSection("2.02"), "");
  EXPECT_FALSE(s.Get("2.02", "bAddJAR"));
  EXPECT_FALSE(s.Get("2.02/Params", "iGridX"));
  EXPECT_FALSE(s.Get("2.02/Sizes/frmMain", "Left"));
  EXPECT_EQ(s.Get("2.020", "x"), "1");
  EXPECT_EQ(s.Get("2.01/Params", "iGridX"), "7");
}

TEST(MemorySettings, InjectedFailuresReturnText) {
  MemorySettings s;
  s.failWrites = true;
  EXPECT_NE(s.Set("a", "b", "c"), "");
  EXPECT_FALSE(s.Get("a", "b"));
  s.failWrites = false;
  s.Set("a", "b", "c");
  s.failDeletes = true;
  EXPECT_NE(s.RemoveSection("a"), "");
  EXPECT_EQ(s.Get("a", "b"), "c");
}

// --- Store routines ----------------------------------------------------------

TEST(FReadValue, MissingKeyGivesDefault) {
  TestEnv t;
  EXPECT_EQ(fReadValue(t.env, kSecParams, "nothing", "dflt"), "dflt");
  t.store.data[kSecParams]["nothing"] = "";
  EXPECT_EQ(fReadValue(t.env, kSecParams, "nothing", "dflt"), "");
}

TEST(FWriteValue, WritesValue) {
  TestEnv t;
  EXPECT_TRUE(fWriteValue(t.env, kSecParams, "iGridX", "12"));
  EXPECT_EQ(t.store.data[kSecParams]["iGridX"], "12");
  EXPECT_TRUE(t.prompter.shown.empty());
}

TEST(FWriteValue, FailureShowsMessageTitledWithRoutineName) {
  TestEnv t;
  t.store.failWrites = true;
  EXPECT_FALSE(fWriteValue(t.env, kSecParams, "iGridX", "12"));
  ASSERT_EQ(t.prompter.CountMsg(), 1);
  EXPECT_EQ(t.prompter.Last().text, "Unable to write registry or .ini file value.");
  EXPECT_EQ(t.prompter.Last().title, "fWriteValue");
}

TEST(FDeleteKey, FailureShowsMessageTitledWithRoutineName) {
  TestEnv t;
  t.store.data[kSecParams]["iGridX"] = "3";
  t.store.failDeletes = true;
  EXPECT_FALSE(fDeleteKey(t.env, kSecParams));
  ASSERT_EQ(t.prompter.CountMsg(), 1);
  EXPECT_EQ(t.prompter.Last().text, "Unable to delete registry key.");
  EXPECT_EQ(t.prompter.Last().title, "fDeleteKey");
  EXPECT_EQ(t.store.data[kSecParams]["iGridX"], "3");
}

TEST(FDeleteKey, DeletesSectionAndBelow) {
  TestEnv t;
  t.store.data[kSecSizes + "/frmMain"]["Left"] = "1";
  EXPECT_TRUE(fDeleteKey(t.env, kSecSizes));
  EXPECT_TRUE(t.store.data.empty());
}

// --- Params and defaults --------------------------------------------------------

TEST(ParamDefault, DocumentedDefaults) {
  TestEnv t;
  EXPECT_EQ(ParamDefault(t.env, "bSaveBackup"), "0");
  EXPECT_EQ(ParamDefault(t.env, "bShowGrid"), "0");
  EXPECT_EQ(ParamDefault(t.env, "iGridX"), "10");
  EXPECT_EQ(ParamDefault(t.env, "iGridY"), "10");
  EXPECT_EQ(ParamDefault(t.env, "lGridColor"), "8421504");
  EXPECT_EQ(ParamDefault(t.env, "AutoTile"), "1");
  EXPECT_EQ(ParamDefault(t.env, "sDefaultBtn"), "-1");
  EXPECT_EQ(ParamDefault(t.env, "_buffer"), "-1");
  EXPECT_EQ(ParamDefault(t.env, "sProjectsPath"), "");
  EXPECT_EQ(ParamDefault(t.env, "ProgClipBoard"), "");
  EXPECT_EQ(ParamDefault(t.env, "DontShowReadyForUpload"), "0");
  EXPECT_EQ(ParamDefault(t.env, "ShowDifferentDirsWarning"), "1");
  EXPECT_EQ(ParamDefault(t.env, "WAV2AU_Auto_Convertion"), "1");
  EXPECT_EQ(ParamDefault(t.env, "ABorder_AutoFullRepaint"), "1");
  EXPECT_EQ(ParamDefault(t.env, "Warn_Space_in_FileName"), "1");
  EXPECT_EQ(ParamDefault(t.env, "Warn_BackSlash_in_FileName"), "1");
  EXPECT_EQ(ParamDefault(t.env, "Warn_Space_in_TargetName"), "1");
  EXPECT_EQ(ParamDefault(t.env, "Warn_Dot_in_TargetName"), "1");
  EXPECT_EQ(ParamDefault(t.env, "unknown key"), "");
}

TEST(ParamDefault, SearchFoldersLieBeneathProgramFolder) {
  TestEnv t;
  EXPECT_EQ(ParamDefault(t.env, "sSearchImagesFolder"), t.env.programFolder + "/Samples");
  EXPECT_EQ(ParamDefault(t.env, "sSearchSoundsFolder"), t.env.programFolder + "/Sounds");
  EXPECT_EQ(GetParam(t.env, "sSearchImagesFolder"), t.env.programFolder + "/Samples");
}

TEST(GetParam, StoredValueWinsOverDefault) {
  TestEnv t;
  EXPECT_EQ(GetParam(t.env, "iGridX"), "10");
  EXPECT_TRUE(SetParam(t.env, "iGridX", "16"));
  EXPECT_EQ(t.store.data[kSecParams]["iGridX"], "16");
  EXPECT_EQ(GetParam(t.env, "iGridX"), "16");
}

TEST(GetParam, AddJarLivesInTheVersionSection) {
  TestEnv t;
  EXPECT_EQ(GetParam(t.env, "bAddJAR"), "1");
  EXPECT_TRUE(SetParam(t.env, "bAddJAR", "0"));
  EXPECT_EQ(t.store.data[kSecVersion]["bAddJAR"], "0");
  EXPECT_EQ(t.store.data[kSecParams].count("bAddJAR"), 0u);
  EXPECT_EQ(GetParam(t.env, "bAddJAR"), "0");
}

TEST(Settings, SettingsOfAnotherVersionAreNotSeen) {
  TestEnv t;
  t.store.data["2.01/Params"]["iGridX"] = "25";
  t.store.data["2.01/Recent"]["File1"] = "/old/version.kpn";
  t.store.data["2.01"]["bAddJAR"] = "0";
  EXPECT_EQ(GetParam(t.env, "iGridX"), "10");
  EXPECT_TRUE(GetRecent(t.env).empty());
  EXPECT_EQ(GetParam(t.env, "bAddJAR"), "1");
}

// --- Recent files -------------------------------------------------------------------

class CountingView : public ProjectView {
 public:
  void RecentChanged() override { ++changes; }
  int changes = 0;
};

TEST(WriteRecent, FifthDifferentFileDropsOldest) {
  TestEnv t;
  for (const char* p : {"/p/1.kpn", "/p/2.kpn", "/p/3.kpn", "/p/4.kpn", "/p/5.kpn"})
    WriteRecent(t.env, p);
  auto e = ReadRecentRaw(t.env);
  EXPECT_EQ(e, (std::array<std::string, 4>{"/p/5.kpn", "/p/4.kpn", "/p/3.kpn", "/p/2.kpn"}));
}

TEST(WriteRecent, ReopeningThirdEntryMovesItToTopAndKeepsFourth) {
  TestEnv t;
  for (const char* p : {"/p/4.kpn", "/p/3.kpn", "/p/2.kpn", "/p/1.kpn"}) WriteRecent(t.env, p);
  ASSERT_EQ(ReadRecentRaw(t.env)[2], "/p/3.kpn");
  WriteRecent(t.env, "/p/3.kpn");
  EXPECT_EQ(ReadRecentRaw(t.env),
            (std::array<std::string, 4>{"/p/3.kpn", "/p/1.kpn", "/p/2.kpn", "/p/4.kpn"}));
}

TEST(WriteRecent, FirstEntryAgainChangesNothing) {
  TestEnv t;
  WriteRecent(t.env, "/p/a.kpn");
  WriteRecent(t.env, "/p/b.kpn");
  WriteRecent(t.env, "/p/b.kpn");
  EXPECT_EQ(ReadRecentRaw(t.env), (std::array<std::string, 4>{"/p/b.kpn", "/p/a.kpn", "-1", "-1"}));
}

TEST(WriteRecent, ComparisonIsExactIncludingCase) {
  TestEnv t;
  WriteRecent(t.env, "/p/Menu.kpn");
  WriteRecent(t.env, "/p/menu.kpn");
  EXPECT_EQ(ReadRecentRaw(t.env),
            (std::array<std::string, 4>{"/p/menu.kpn", "/p/Menu.kpn", "-1", "-1"}));
}

TEST(WriteRecent, StoresFileKeysAndTellsTheView) {
  TestEnv t;
  CountingView view;
  Env env{t.fs, t.store, t.prompter, view, t.home.path()};
  WriteRecent(env, "/p/a.kpn");
  EXPECT_EQ(t.store.data[kSecRecent]["File1"], "/p/a.kpn");
  EXPECT_EQ(t.store.data[kSecRecent]["File2"], "-1");
  EXPECT_EQ(view.changes, 1);
}

TEST(GetRecent, EmptyWhenFirstEntryIsEmpty) {
  TestEnv t;
  EXPECT_TRUE(GetRecent(t.env).empty());
  t.store.data[kSecRecent]["File1"] = "-1";
  t.store.data[kSecRecent]["File2"] = "/p/b.kpn";
  EXPECT_TRUE(GetRecent(t.env).empty());
}

TEST(GetRecent, SkipsEmptyEntriesAndShortensTexts) {
  TestEnv t;
  const std::string longPath = "/home/author/projects/menus/2024/top-navigation.kpn";
  t.store.data[kSecRecent]["File1"] = "/p/a.kpn";
  t.store.data[kSecRecent]["File2"] = "-1";
  t.store.data[kSecRecent]["File3"] = longPath;
  auto r = GetRecent(t.env);
  ASSERT_EQ(r.size(), 2u);
  EXPECT_EQ(r[0].k, 1);
  EXPECT_EQ(r[0].path, "/p/a.kpn");
  EXPECT_EQ(r[0].text, "/p/a.kpn");
  EXPECT_EQ(r[1].k, 3);
  EXPECT_EQ(r[1].path, longPath);
  EXPECT_EQ(r[1].text, ShortPath(longPath));
}

TEST(ShortPath, ThirtyNineCharactersStayAsTheyAre) {
  std::string s(39, 'a');
  EXPECT_EQ(ShortPath(s), s);
}

TEST(ShortPath, FortyOrMoreKeepFirst17AndLast25) {
  const std::string p = "/home/author/projects/menus/2024/top-navigation.kpn";
  EXPECT_EQ(ShortPath(p), "/home/author/proj....s/2024/top-navigation.kpn");
  const std::string forty = "0123456789abcdefghijklmnopqrstuvwxyzABCD";
  ASSERT_EQ(forty.size(), 40u);
  EXPECT_EQ(ShortPath(forty), "0123456789abcdefg....fghijklmnopqrstuvwxyzABCD");
}

// --- Custom colours ---------------------------------------------------------------

TEST(CustColors, SavedAsDecimalBytesAndReadBack) {
  TestEnv t;
  CustColors c{};
  for (int i = 0; i < 128; ++i) c[i] = static_cast<std::uint8_t>(i * 2 + 1);
  c[127] = 255;
  SaveCustColors(t.env, c);
  EXPECT_EQ(t.store.data[kSecCustColors]["C1"], "1");
  EXPECT_EQ(t.store.data[kSecCustColors]["C2"], "3");
  EXPECT_EQ(t.store.data[kSecCustColors]["C128"], "255");
  EXPECT_EQ(t.store.data[kSecCustColors].size(), 128u);
  EXPECT_EQ(GetCustColors(t.env), c);
}

TEST(CustColors, MissingOrBadValuesReadAsZero) {
  TestEnv t;
  t.store.data[kSecCustColors]["C1"] = "300";
  t.store.data[kSecCustColors]["C2"] = "x";
  t.store.data[kSecCustColors]["C3"] = "17";
  CustColors c = GetCustColors(t.env);
  EXPECT_EQ(c[0], 0);
  EXPECT_EQ(c[1], 0);
  EXPECT_EQ(c[2], 17);
  EXPECT_EQ(c[3], 0);
}

TEST(CustColors, FailingStoreShowsOneBox) {
  TestEnv t;
  t.store.failWrites = true;
  SaveCustColors(t.env, CustColors{});
  EXPECT_EQ(t.prompter.CountMsg(), 1);
}

// --- Reset ----------------------------------------------------------------------------

void FillSettings(MemorySettings& s) {
  s.data["2.02"]["bAddJAR"] = "0";
  s.data["2.02/Params"]["iGridX"] = "20";
  s.data["2.02/Sizes/frmMain"]["Left"] = "100";
  s.data["2.02/Recent"]["File1"] = "/p/a.kpn";
  s.data["2.02/Browsers"]["Count"] = "2";
  s.data["2.01/Params"]["iGridX"] = "5";
  s.data["CustColors"]["C1"] = "9";
}

TEST(ResetSettings, ResetWithNoLeavesAllSettings) {
  TestEnv t;
  FillSettings(t.store);
  auto before = t.store.data;
  t.prompter.answers = {Answer::No};
  EXPECT_EQ(ResetSettings(t.env, false), ResetResult::Declined);
  ASSERT_EQ(t.prompter.CountMsg(), 1);
  EXPECT_EQ(t.prompter.Last().text, "Reset KestrelPane 2.02 registry?");
  EXPECT_EQ(t.prompter.Last().buttons, Buttons::YesNo);
  EXPECT_EQ(t.store.data, before);
}

TEST(ResetSettings, YesDeletesTheWholeVersionOnly) {
  TestEnv t;
  FillSettings(t.store);
  t.prompter.answers = {Answer::Yes};
  EXPECT_EQ(ResetSettings(t.env, false), ResetResult::Done);
  EXPECT_EQ(t.store.data.count("2.02"), 0u);
  EXPECT_EQ(t.store.data.count("2.02/Params"), 0u);
  EXPECT_EQ(t.store.data.count("2.02/Sizes/frmMain"), 0u);
  EXPECT_EQ(t.store.data.count("2.02/Recent"), 0u);
  EXPECT_EQ(t.store.data["2.01/Params"]["iGridX"], "5");
  EXPECT_EQ(t.store.data["CustColors"]["C1"], "9");
}

TEST(ResetSettings, QuietDeletesParamsAndSizesWithoutQuestion) {
  TestEnv t;
  FillSettings(t.store);
  EXPECT_EQ(ResetSettings(t.env, true), ResetResult::Done);
  EXPECT_TRUE(t.prompter.shown.empty());
  EXPECT_EQ(t.store.data.count("2.02/Params"), 0u);
  EXPECT_EQ(t.store.data.count("2.02/Sizes/frmMain"), 0u);
  EXPECT_EQ(t.store.data["2.02/Recent"]["File1"], "/p/a.kpn");
  EXPECT_EQ(t.store.data["2.02"]["bAddJAR"], "0");
  EXPECT_EQ(t.store.data["2.02/Browsers"]["Count"], "2");
  EXPECT_EQ(GetParam(t.env, "iGridX"), "10");
}

TEST(ResetSettings, FailedDeleteShowsErrorText) {
  TestEnv t;
  FillSettings(t.store);
  t.store.failDeletes = true;
  EXPECT_EQ(ResetSettings(t.env, true), ResetResult::Failed);
  ASSERT_EQ(t.prompter.CountMsg(), 1);
  EXPECT_EQ(t.prompter.Last().text, "Error: Access is denied.");

  TestEnv u;
  u.store.failDeletes = true;
  u.prompter.answers = {Answer::Yes};
  EXPECT_EQ(ResetSettings(u.env, false), ResetResult::Failed);
  ASSERT_EQ(u.prompter.CountMsg(), 2);
  EXPECT_EQ(u.prompter.Last().text.rfind("Error: ", 0), 0u);
}

// --- Window sizes ------------------------------------------------------------------------

TEST(Sizes, WrittenUnderFormSectionAndReadBack) {
  TestEnv t;
  Geometry g{120, 240, 9000, 6000};
  WriteSizes(t.env, "frmMain", g);
  auto& sec = t.store.data[kSecSizes + "/frmMain"];
  EXPECT_EQ(sec["Left"], "120");
  EXPECT_EQ(sec["Top"], "240");
  EXPECT_EQ(sec["Width"], "9000");
  EXPECT_EQ(sec["Height"], "6000");
  EXPECT_EQ(ReadSizes(t.env, "frmMain", Geometry{1, 2, 3, 4}, 20000, 15000), g);
}

TEST(Sizes, AllZeroKeepsCurrentPlace) {
  TestEnv t;
  Geometry current{300, 400, 5000, 4000};
  EXPECT_EQ(ReadSizes(t.env, "frmDesign", current, 20000, 15000), current);
  WriteSizes(t.env, "frmDesign", Geometry{0, 0, 0, 0});
  EXPECT_EQ(ReadSizes(t.env, "frmDesign", current, 20000, 15000), current);
}

TEST(Sizes, StoredGeometryIsKeptOnScreen) {
  TestEnv t;
  WriteSizes(t.env, "frmMain", Geometry{18000, 100, 5000, 4000});
  EXPECT_EQ(ReadSizes(t.env, "frmMain", Geometry{}, 20000, 15000),
            (Geometry{15000, 100, 5000, 4000}));
}

TEST(KeepOnScreen, WindowInsideStaysPut) {
  EXPECT_EQ(KeepOnScreen({100, 200, 3000, 2000}, 15360, 11520), (Geometry{100, 200, 3000, 2000}));
}

TEST(KeepOnScreen, BeyondRightOrBottomEdgeIsMovedBack) {
  EXPECT_EQ(KeepOnScreen({14000, 200, 3000, 2000}, 15360, 11520),
            (Geometry{12360, 200, 3000, 2000}));
  EXPECT_EQ(KeepOnScreen({100, 11000, 3000, 2000}, 15360, 11520),
            (Geometry{100, 9520, 3000, 2000}));
  EXPECT_EQ(KeepOnScreen({20000, 20000, 3000, 2000}, 15360, 11520),
            (Geometry{12360, 9520, 3000, 2000}));
}

TEST(KeepOnScreen, LargerThanScreenIsReducedToScreen) {
  EXPECT_EQ(KeepOnScreen({500, 500, 20000, 13000}, 15360, 11520), (Geometry{0, 0, 15360, 11520}));
  EXPECT_EQ(KeepOnScreen({0, 0, 20000, 100}, 15360, 11520), (Geometry{0, 0, 15360, 100}));
}

// --- MyMsgBox --------------------------------------------------------------------------------

// Records the check box state each notice is shown with.
class CheckRecordingPrompter : public ScriptedPrompter {
 public:
  bool Notice(const std::string& title, const std::string& text, const std::string& checkCaption,
              bool checked) override {
    captions.push_back(checkCaption);
    checkedShown.push_back(checked);
    return ScriptedPrompter::Notice(title, text, checkCaption, checked);
  }
  std::vector<std::string> captions;
  std::vector<bool> checkedShown;
};

TEST(MyMsgBox, SettingZeroShowsNothing) {
  TestEnv t;
  t.store.data[kSecParams]["ShowDifferentDirsWarning"] = "0";
  EXPECT_FALSE(MyMsgBox(t.env, "Title", "Message", "Warn next time", "ShowDifferentDirsWarning"));
  EXPECT_TRUE(t.prompter.shown.empty());
  EXPECT_EQ(t.store.data[kSecParams]["ShowDifferentDirsWarning"], "0");
}

TEST(MyMsgBox, DefaultShowsTickedNotice) {
  TestEnv t;
  CheckRecordingPrompter p;
  Env env{t.fs, t.store, p, t.view, t.home.path()};
  EXPECT_TRUE(MyMsgBox(env, "Title", "Message", "Warn next time", "ShowDifferentDirsWarning"));
  ASSERT_EQ(p.shown.size(), 1u);
  EXPECT_EQ(p.Last().kind, "notice");
  EXPECT_EQ(p.Last().title, "Title");
  EXPECT_EQ(p.Last().text, "Message");
  EXPECT_EQ(p.captions, std::vector<std::string>{"Warn next time"});
  EXPECT_EQ(p.checkedShown, std::vector<bool>{true});
  // Left ticked: it shows again next time.
  EXPECT_TRUE(MyMsgBox(env, "Title", "Message", "Warn next time", "ShowDifferentDirsWarning"));
  EXPECT_EQ(p.shown.size(), 2u);
}

TEST(MyMsgBox, ClearingTheBoxWritesHideValueAndEndsTheNotice) {
  TestEnv t;
  t.prompter.noticeAnswers = {false};
  EXPECT_TRUE(MyMsgBox(t.env, "T", "M", "Warn next time", "WAV2AU_Auto_Convertion"));
  EXPECT_EQ(t.store.data[kSecParams]["WAV2AU_Auto_Convertion"], "0");
  EXPECT_FALSE(MyMsgBox(t.env, "T", "M", "Warn next time", "WAV2AU_Auto_Convertion"));
  EXPECT_EQ(t.prompter.shown.size(), 1u);
}

TEST(MyMsgBox, OwnShowAndHideValues) {
  TestEnv t;
  // Shown while the setting is "0" (its default here), hidden by "1".
  t.prompter.noticeAnswers = {false};
  EXPECT_TRUE(
      MyMsgBox(t.env, "T", "M", "Don't show again", "DontShowSomeFilesWarning", "0", "1", "0"));
  EXPECT_EQ(t.store.data[kSecParams]["DontShowSomeFilesWarning"], "1");
  EXPECT_FALSE(
      MyMsgBox(t.env, "T", "M", "Don't show again", "DontShowSomeFilesWarning", "0", "1", "0"));
  EXPECT_EQ(t.prompter.shown.size(), 1u);
}

TEST(MyMsgBox, SettingStoredAsShowValueShows) {
  TestEnv t;
  t.store.data[kSecParams]["Warn_Dot_in_TargetName"] = "1";
  EXPECT_TRUE(MyMsgBox(t.env, "T", "M", "", "Warn_Dot_in_TargetName"));
  EXPECT_EQ(t.prompter.shown.size(), 1u);
  EXPECT_EQ(t.store.data[kSecParams]["Warn_Dot_in_TargetName"], "1");
}


// Counts how the store was written to.
class CountingSettings : public MemorySettings {
 public:
  std::string Set(const std::string& s, const std::string& k, const std::string& v) override {
    ++sets;
    return MemorySettings::Set(s, k, v);
  }
  std::string SetMany(const std::string& s,
                      const std::vector<std::pair<std::string, std::string>>& values) override {
    ++batches;
    batchSizes.push_back(values.size());
    for (const auto& [k, v] : values) MemorySettings::Set(s, k, v);
    return "";
  }
  int sets = 0, batches = 0;
  std::vector<size_t> batchSizes;
};

TEST(WriteRecent, TheFourEntriesAreWrittenAsOneChange) {
  test::TestEnv t;
  CountingSettings store;
  Env env{t.fs, store, t.prompter, t.view, t.home.path()};
  WriteRecent(env, "/a.kpn");
  WriteRecent(env, "/b.kpn");
  EXPECT_EQ(store.sets, 0);
  EXPECT_EQ(store.batches, 2);
  EXPECT_EQ(store.batchSizes, (std::vector<size_t>{4, 4}));
  ASSERT_EQ(GetRecent(env).size(), 2u);
  EXPECT_EQ(GetRecent(env)[0].path, "/b.kpn");
  EXPECT_EQ(GetRecent(env)[1].path, "/a.kpn");
}

TEST(WriteRecent, AFailedWriteSaysSoOnce) {
  test::TestEnv t;
  t.store.failWrites = true;
  WriteRecent(t.env, "/a.kpn");
  EXPECT_EQ(t.prompter.CountMsg(), 1);
  EXPECT_EQ(t.prompter.Last().text, "Unable to write registry or .ini file value.");
}

}  // namespace
}  // namespace kp
