#include <gtest/gtest.h>

#include "core/language.h"
#include "core/settings.h"
#include "tests/support/test_env.h"

namespace kp {
namespace {

using test::TestEnv;

// Lang() is program-wide: every test here puts it back.
class LanguageTest : public ::testing::Test {
 protected:
  void TearDown() override { Lang() = saved_; }
  LangTexts saved_ = Lang();
};

TEST_F(LanguageTest, NoHeadingKeepsEveryBuiltInValue) {
  LangSettings s = ReadLangSettings("french_lng\r\nFRENCH\r\n");
  EXPECT_EQ(s.sLangFile, "english_lng");
  EXPECT_EQ(s.sLangName, "ENGLISH");
  EXPECT_EQ(s.sNoJava, "Java is disabled in your Browser!");
  EXPECT_EQ(s.sLoading, "Loading...");
  EXPECT_EQ(s.sHelpIndex, "\\Help\\index.htm");
}

TEST_F(LanguageTest, LinesAfterTheHeadingFillTheValuesByPosition) {
  LangSettings s = ReadLangSettings(
      "[OTHER]\r\nskipped\r\n[LANG SETTINGS]\r\nfrench_lng\r\nFRENCH\r\nlisez.txt\r\n"
      "Java est coupe\r\nChargement...\r\n<meta x>\r\n\\Aide\\index.htm\r\nignored\r\n");
  EXPECT_EQ(s.sLangFile, "french_lng");
  EXPECT_EQ(s.sLangName, "FRENCH");
  EXPECT_EQ(s.sWav2AuReadMe, "lisez.txt");
  EXPECT_EQ(s.sNoJava, "Java est coupe");
  EXPECT_EQ(s.sLoading, "Chargement...");
  EXPECT_EQ(s.sMetaLine, "<meta x>");
  EXPECT_EQ(s.sHelpIndex, "\\Aide\\index.htm");
}

TEST_F(LanguageTest, HeadingWithTrailingBlankIsNotTheHeading) {
  LangSettings s = ReadLangSettings("[LANG SETTINGS] \r\nfrench_lng\r\n");
  EXPECT_EQ(s.sLangFile, "english_lng");
}

TEST_F(LanguageTest, ShortBlockKeepsBuiltInsForTheMissingLines) {
  LangSettings s = ReadLangSettings("[LANG SETTINGS]\nfrench_lng\nFRENCH");
  EXPECT_EQ(s.sLangFile, "french_lng");
  EXPECT_EQ(s.sLangName, "FRENCH");
  EXPECT_EQ(s.sWav2AuReadMe, "Wav2Au_ReadMe.txt");
  EXPECT_EQ(s.sLoading, "Loading...");
}

TEST_F(LanguageTest, ZeroByteEndsAValue) {
  std::string ini = "[LANG SETTINGS]\r\nfrench_lng";
  ini += '\0';
  ini += "junk\r\n";
  EXPECT_EQ(ReadLangSettings(ini).sLangFile, "french_lng");
}

TEST_F(LanguageTest, MissingSettingsFileKeepsTheEnglishTextsSilently) {
  TestEnv t;
  Lang().NoJava = "changed";
  LangSettings s = GET_LANG_SETTINGS(t.env);
  EXPECT_EQ(s.sLangName, "ENGLISH");
  EXPECT_EQ(Lang().NoJava, "Java is disabled in your Browser!");
  EXPECT_TRUE(t.prompter.shown.empty());
}

TEST_F(LanguageTest, SettingsFilePutsItsTextsInForce) {
  TestEnv t;
  t.home.write("Kestrel.ini",
               "[LANG SETTINGS]\r\nfr_lng\r\nFRENCH\r\nlisez.txt\r\nPas de Java\r\nAttendez\r\n");
  LangSettings s = GET_LANG_SETTINGS(t.env);
  EXPECT_EQ(s.sLangFile, "fr_lng");
  EXPECT_EQ(Lang().NoJava, "Pas de Java");
  EXPECT_EQ(Lang().Loading, "Attendez");
  EXPECT_EQ(Lang().LanguageName, "FRENCH");
  EXPECT_EQ(Lang().SoundReadMe, "lisez.txt");
}

TEST_F(LanguageTest, LanguageStateIsYesOnlyWhenTheLanguageFileIsInTheProgramFolder) {
  TestEnv t;
  LangSettings s;
  EXPECT_FALSE(StoreLanguageState(t.env, s));
  EXPECT_EQ(t.store.Get(kSecLanguage, "ENGLISH"), "NO");
  EXPECT_FALSE(LanguageApplies(t.env, s));
  t.home.write("english_lng", "[frmMain]\r\n");
  EXPECT_TRUE(StoreLanguageState(t.env, s));
  EXPECT_EQ(t.store.Get(kSecLanguage, "ENGLISH"), "YES");
  EXPECT_TRUE(LanguageApplies(t.env, s));
}

TEST_F(LanguageTest, SectionTakesTheLinesAfterItsExactHeading) {
  const std::string file = "[frmMain] \r\nwrong\r\n[frmMain]\r\none\r\ntwo\r\n[frmDesign]\r\nd1\r\n";
  EXPECT_EQ(ReadLanguageSection(file, "[frmMain]", 2), (std::vector<std::string>{"one", "two"}));
  // Too few lines in a section: the next heading's lines are taken too.
  EXPECT_EQ(ReadLanguageSection(file, "[frmMain]", 4),
            (std::vector<std::string>{"one", "two", "[frmDesign]", "d1"}));
  EXPECT_TRUE(ReadLanguageSection(file, "[frmHex2Color]", 3).empty());
}

// A window's language routine on a two-text table, as the windows run it.
std::vector<std::string> Routine(TestEnv& t, const std::string& heading, size_t count) {
  LangSettings s;
  auto lines = WindowLanguageLines(t.env, s, heading, count);
  return lines ? *lines : std::vector<std::string>{"(not applied)"};
}

TEST_F(LanguageTest, AHeadingLineWithTrailingBlanksIsNotAHeading) {
  TestEnv t;
  t.home.write("english_lng", "[frmGrid]  \r\nGitter\r\n");
  t.store.Set(kSecLanguage, "ENGLISH", "YES");
  EXPECT_TRUE(Routine(t, "[frmGrid]", 1).empty());
}

TEST_F(LanguageTest, ASectionWithTooFewLinesTakesTheFollowingLinesAsItsOwn) {
  TestEnv t;
  t.home.write("english_lng", "[frmGrid]\r\nGitter\r\n[frmDesign]\r\nEntwurf\r\n");
  t.store.Set(kSecLanguage, "ENGLISH", "YES");
  EXPECT_EQ(Routine(t, "[frmGrid]", 3),
            (std::vector<std::string>{"Gitter", "[frmDesign]", "Entwurf"}));
}

TEST_F(LanguageTest, AFileWithNoHeadingForAWindowLeavesThatWindowInEnglish) {
  TestEnv t;
  t.home.write("english_lng", "[frmDesign]\r\nEntwurf\r\n");
  t.store.Set(kSecLanguage, "ENGLISH", "YES");
  EXPECT_TRUE(Routine(t, "[frmGrid]", 13).empty());
  EXPECT_EQ(t.store.Get(kSecLanguage, "ENGLISH"), "YES");
}

TEST_F(LanguageTest, TheRoutineDoesNothingUnlessTheLanguageSettingIsYes) {
  TestEnv t;
  t.home.write("english_lng", "[frmGrid]\r\nGitter\r\n");
  t.store.Set(kSecLanguage, "ENGLISH", "NO");
  EXPECT_EQ(Routine(t, "[frmGrid]", 1), std::vector<std::string>{"(not applied)"});
  EXPECT_TRUE(t.prompter.shown.empty());
}

TEST_F(LanguageTest, AMissingLanguageFileIsReportedAndTheSettingBecomesNo) {
  TestEnv t;
  t.store.Set(kSecLanguage, "ENGLISH", "YES");
  EXPECT_EQ(Routine(t, "[frmGrid]", 1), std::vector<std::string>{"(not applied)"});
  ASSERT_EQ(t.prompter.shown.size(), 1u);
  EXPECT_EQ(t.prompter.shown[0].text, "Language File: \"english_lng\" not found");
  EXPECT_EQ(t.store.Get(kSecLanguage, "ENGLISH"), "NO");
}

TEST_F(LanguageTest, BackslashNInAMessageLineIsALineBreak) {
  EXPECT_EQ(MessageLineText("one\\ntwo"), "one\r\ntwo");
  EXPECT_EQ(MessageLineOf("one\r\ntwo"), "one\\ntwo");
  EXPECT_EQ(MessageLineText(MessageLineOf("a\r\nb\r\nc")), "a\r\nb\r\nc");
}

TEST_F(LanguageTest, TheFixedSectionCountsAreTheFormats) {
  EXPECT_EQ(FixedSectionLines("[frmMain]"), 190u);
  EXPECT_EQ(FixedSectionLines("[frmGrid]"), 13u);
  EXPECT_EQ(FixedSectionLines("[frmButtonSpecial]"), 20u);
  EXPECT_EQ(FixedSectionLines("[frmHex2Color]"), 0u);
}

TEST_F(LanguageTest, ALanguageFileIsHeadingsAndLinesWithCrLf) {
  EXPECT_EQ(LanguageFileText({{"[frmA]", {"x", "y"}}, {"[frmB]", {}}}),
            "[frmA]\r\nx\r\ny\r\n[frmB]\r\n");
}

}  // namespace
}  // namespace kp
