#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "core/conv.h"
#include "core/settings.h"
#include "tests/support/test_env.h"

namespace kp {
namespace {

using test::TestEnv;

// --- Numbers ------------------------------------------------------------------

TEST(MakeCInt, OutOfRangeTextGivesDefault) {
  EXPECT_EQ(MakeCInt("70000", 3), 3);
  EXPECT_EQ(MakeCInt("32768", 3), 3);
  EXPECT_EQ(MakeCInt("-32769", 3), 3);
}

TEST(MakeCInt, EmptyTextGivesDefault) { EXPECT_EQ(MakeCInt("", 5), 5); }

TEST(MakeCInt, RangeLimitsAreAccepted) {
  EXPECT_EQ(MakeCInt("32767", 0), 32767);
  EXPECT_EQ(MakeCInt("-32768", 0), -32768);
}

TEST(MakeCInt, SignAndDigitsParse) {
  EXPECT_EQ(MakeCInt("42", 0), 42);
  EXPECT_EQ(MakeCInt("+42", 0), 42);
  EXPECT_EQ(MakeCInt("-7", 0), -7);
  EXPECT_EQ(MakeCInt("007", 0), 7);
}

TEST(MakeCInt, BlanksFractionsAndLettersGiveDefault) {
  EXPECT_EQ(MakeCInt(" 1", 9), 9);
  EXPECT_EQ(MakeCInt("1 ", 9), 9);
  EXPECT_EQ(MakeCInt("1.5", 9), 9);
  EXPECT_EQ(MakeCInt("12a", 9), 9);
  EXPECT_EQ(MakeCInt("-", 9), 9);
  EXPECT_EQ(MakeCInt("+", 9), 9);
  EXPECT_EQ(MakeCInt("--1", 9), 9);
  EXPECT_EQ(MakeCInt("&H10", 9), 9);
}

TEST(MakeCLng, ThirtyTwoBitRangeAndOverflow) {
  EXPECT_EQ(MakeCLng("70000", 3), 70000);
  EXPECT_EQ(MakeCLng("8421504", 0), 8421504);
  EXPECT_EQ(MakeCLng("2147483647", 0), 2147483647);
  EXPECT_EQ(MakeCLng("-2147483648", 0), INT32_MIN);
  EXPECT_EQ(MakeCLng("2147483648", 11), 11);
  EXPECT_EQ(MakeCLng("99999999999999999999999", 11), 11);
  EXPECT_EQ(MakeCLng("", 11), 11);
  EXPECT_EQ(MakeCLng("1e3", 11), 11);
}

TEST(MakeLONG, FailureGivesZero) {
  EXPECT_EQ(makeLONG("123456"), 123456);
  EXPECT_EQ(makeLONG("abc"), 0);
  EXPECT_EQ(makeLONG(""), 0);
}

TEST(ParseInt16, ReportsFailureAndLeavesOutput) {
  i16 v = 77;
  EXPECT_FALSE(ParseInt16("40000", v));
  EXPECT_EQ(v, 77);
  EXPECT_TRUE(ParseInt16("-12", v));
  EXPECT_EQ(v, -12);
  i32 w = 5;
  EXPECT_FALSE(ParseInt32("x", w));
  EXPECT_EQ(w, 5);
  EXPECT_TRUE(ParseInt32("100000", w));
  EXPECT_EQ(w, 100000);
}

TEST(CurToInt, RoundsHalfToEven) {
  EXPECT_EQ(CurToInt(25000), 2);    // 2.5
  EXPECT_EQ(CurToInt(35000), 4);    // 3.5
  EXPECT_EQ(CurToInt(-25000), -2);  // -2.5
  EXPECT_EQ(CurToInt(-35000), -4);  // -3.5
  EXPECT_EQ(CurToInt(24999), 2);
  EXPECT_EQ(CurToInt(25001), 3);
  EXPECT_EQ(CurToInt(70000), 7);
}

TEST(CurToInt, OutOfRangeGivesZero) {
  EXPECT_EQ(CurToInt(std::int64_t{32768} * 10000), 0);
  EXPECT_EQ(CurToInt(std::int64_t{32767} * 10000), 32767);
  EXPECT_EQ(CurToInt(std::int64_t{-32768} * 10000), -32768);
}

TEST(CheckIn, HoldsValueInRange) {
  EXPECT_EQ(checkIn("5", 0, 2, 0), "2");
  EXPECT_EQ(checkIn("-5", 0, 2, 1), "0");
  EXPECT_EQ(checkIn("1", 0, 2, 0), "1");
  EXPECT_EQ(checkIn("abc", 3, 999, 10), "10");
  EXPECT_EQ(checkIn("1000", 3, 999, 10), "999");
  // The default itself is held to the range too.
  EXPECT_EQ(checkIn("", 3, 999, 1), "3");
}

TEST(TextToBool, EmptyTextIsTrue) { EXPECT_TRUE(TextToBool("")); }

TEST(TextToBool, OnlyExactZeroIsFalse) {
  EXPECT_FALSE(TextToBool("0"));
  EXPECT_TRUE(TextToBool("00"));
  EXPECT_TRUE(TextToBool(" 0"));
  EXPECT_TRUE(TextToBool("1"));
  EXPECT_EQ(BoolToText(true), "1");
  EXPECT_EQ(BoolToText(false), "0");
  EXPECT_EQ(BoolToInt(true), 1);
}

TEST(ByteHex, TwoCharacterForm) {
  EXPECT_EQ(ByteHex("A0"), "A0");
  EXPECT_EQ(ByteHex("F"), "0F");
  EXPECT_EQ(ByteHex(""), "00");
  EXPECT_EQ(ByteHex("123"), "00");
}

TEST(Capitalize, FirstCharacterOnly) {
  EXPECT_EQ(Capitalize("arial black"), "Arial black");
  EXPECT_EQ(Capitalize("x"), "X");
  EXPECT_EQ(Capitalize("aBC"), "ABC");
  EXPECT_EQ(Capitalize(""), "");
}

TEST(StripZeros, BlanksUpToFiveLeadingZeros) {
  EXPECT_EQ(StripZeros("00012", true), "12");
  EXPECT_EQ(StripZeros("0000000", true), "00");
  EXPECT_EQ(StripZeros("00000", true), "0");
  EXPECT_EQ(StripZeros("", true), "0");
  EXPECT_EQ(StripZeros("120", true), "120");
  EXPECT_EQ(StripZeros("00012", false), "00012");
}

// --- Escapes ---------------------------------------------------------------------

TEST(EscapeField, ReplacesQuoteBarCaretButBlankOnlyWithFlag) {
  EXPECT_EQ(EscapeField("a \"b\"|c^d"), "a &!2b&!2&!3c&!4d");
  EXPECT_EQ(EscapeField("a \"b\"|c^d", true), "a&!0&!2b&!2&!3c&!4d");
  EXPECT_EQ(EscapeField("x;y"), "x;y");
}

TEST(EscapeNameField, AlsoEscapesBlankAndSemicolon) {
  EXPECT_EQ(EscapeNameField("Button 1;x|"), "Button&!01&!1x&!3");
}

TEST(UnescapeField, NbspBecomesSpaceButEscapeFieldNeverProducesNbsp) {
  EXPECT_EQ(UnescapeField("&nbsp"), " ");
  EXPECT_EQ(UnescapeField("a&nbspb"), "a b");
  EXPECT_EQ(EscapeField(" ", true), "&!0");
  EXPECT_EQ(EscapeField("a b", true).find("&nbsp"), std::string::npos);
}

TEST(EscapeField, AmpersandIsNotEscapedSoEscapedBarComesBackAsBar) {
  std::string text = "a&!3b";
  std::string stored = EscapeField(text, true);
  EXPECT_EQ(stored, "a&!3b");
  EXPECT_EQ(UnescapeField(stored), "a|b");
}

TEST(UnescapeField, RoundTripOfEscapedText) {
  std::string text = "say \"hi\"; a|b^c";
  EXPECT_EQ(UnescapeField(EscapeNameField(text)), text);
  EXPECT_EQ(UnescapeField(EscapeField(text)), text);
}

TEST(CleanForList, QuoteBarAndBackslash) { EXPECT_EQ(CleanForList("a\"b|c\\d"), "a_b_c/d"); }

// --- Text helpers -------------------------------------------------------------------

TEST(ReplaceAll, EveryOccurrenceLeftToRight) {
  EXPECT_EQ(ReplaceAll("aaa", "aa", "b"), "ba");
  EXPECT_EQ(ReplaceAll("a.b.c", ".", "::"), "a::b::c");
  EXPECT_EQ(ReplaceAll("abc", "x", "y"), "abc");
}

TEST(ReplaceAll, EmptyTextOrEmptyFindComesBackUnchanged) {
  EXPECT_EQ(ReplaceAll("", "a", "b"), "");
  EXPECT_EQ(ReplaceAll("abc", "", "b"), "abc");
}

TEST(ReplaceAll, IgnoreCaseComparesLetters) {
  EXPECT_EQ(ReplaceAll("<BODY><body>", "<body>", "[b]", true), "[b][b]");
  EXPECT_EQ(ReplaceAll("<BODY><body>", "<body>", "[b]", false), "<BODY>[b]");
}

TEST(StartsEndsWith, CaseFlag) {
  EXPECT_TRUE(StartsWith("http://x", "HTTP://", true));
  EXPECT_FALSE(StartsWith("http://x", "HTTP://", false));
  EXPECT_TRUE(EndsWith("a.GIF", ".gif", true));
  EXPECT_FALSE(EndsWith("a.GIF", ".gif"));
  EXPECT_FALSE(EndsWith("f", ".gif", true));
  EXPECT_TRUE(StartsWith("abc", ""));
}

TEST(GetField, CountsFromOneAndGivesEmptyBeyondLast) {
  EXPECT_EQ(GetField("a|b||d", "|", 1), "a");
  EXPECT_EQ(GetField("a|b||d", "|", 2), "b");
  EXPECT_EQ(GetField("a|b||d", "|", 3), "");
  EXPECT_EQ(GetField("a|b||d", "|", 4), "d");
  EXPECT_EQ(GetField("a|b||d", "|", 5), "");
  EXPECT_EQ(GetField("a|b", "|", 0), "");
  EXPECT_EQ(GetField("one&&two", "&&", 2), "two");
  EXPECT_EQ(GetField("plain", "|", 1), "plain");
}

TEST(CountOf, OverlappingOccurrencesCount) {
  EXPECT_EQ(CountOf("aaaa", "aa"), 3);
  EXPECT_EQ(CountOf("../../x", "../"), 2);
  EXPECT_EQ(CountOf("abc", ""), 0);
  EXPECT_EQ(CountOf("", "a"), 0);
}

TEST(Trim, BlanksAndTabsAtBothEnds) {
  EXPECT_EQ(Trim(" \tab c\t "), "ab c");
  EXPECT_EQ(Trim("   "), "");
  EXPECT_EQ(LCase("AbC"), "abc");
  EXPECT_EQ(UCase("AbC"), "ABC");
}

// --- CleanName ------------------------------------------------------------------------

TEST(CleanName, LeadingDigitGetsUnderscore) {
  EXPECT_EQ(CleanName("1st menu"), "_1st_menu");
  EXPECT_EQ(CleanName("menu1"), "menu1");
}

TEST(CleanName, EveryUnsafeCharacterBecomesUnderscore) {
  const std::string unsafe = " '\"/\\|.;:?`@~&!#$%^*()+-={}[]<>";
  EXPECT_EQ(CleanName(unsafe), std::string(unsafe.size(), '_'));
  EXPECT_EQ(CleanName("My.Project-v2"), "My_Project_v2");
  EXPECT_EQ(CleanName("a_b,c"), "a_b,c");  // "_" and "," are not in the set
}

TEST(CleanName, KeepDotsKeepsDotTildeBangCaretAndLeadingDigit) {
  EXPECT_EQ(CleanName("1.a~b!c^d e", true), "1.a~b!c^d_e");
  EXPECT_EQ(CleanName("a#b", true), "a_b");
}

// --- Paths ----------------------------------------------------------------------------------

TEST(IsAbsolutePath, RootOrDrive) {
  EXPECT_TRUE(IsAbsolutePath("/home/a"));
  EXPECT_TRUE(IsAbsolutePath("C:\\web"));
  EXPECT_TRUE(IsAbsolutePath("d:/web"));
  EXPECT_FALSE(IsAbsolutePath("C:web"));
  EXPECT_FALSE(IsAbsolutePath("images/a.gif"));
  EXPECT_FALSE(IsAbsolutePath(""));
}

TEST(GetFolder, UpToLastSeparatorOfEitherKind) {
  EXPECT_EQ(GetFolder("/a/b/c.gif"), "/a/b/");
  EXPECT_EQ(GetFolder("C:\\a\\b.gif"), "C:\\a\\");
  EXPECT_EQ(GetFolder("C:\\a/b\\c.gif"), "C:\\a/b\\");
  EXPECT_EQ(GetFolder("c.gif"), "");
}

TEST(FileNameOnly, BothSeparatorsSplit) {
  EXPECT_EQ(FileNameOnly("C:\\pics\\a b.gif"), "a b.gif");
  EXPECT_EQ(FileNameOnly("/pics/x.jpg"), "x.jpg");
  EXPECT_EQ(FileNameOnly("x.jpg"), "x.jpg");
  EXPECT_EQ(FileNameOnly("/pics/"), "");
}

TEST(FileNameOf, WithoutExtensionRemovesOnlyTextAfterLastDot) {
  EXPECT_EQ(FileNameOf("/p/my.file.name.gif", true), "my.file.name");
  EXPECT_EQ(FileNameOf("/p/my.file.name.gif", false), "my.file.name.gif");
}

TEST(FileNameOf, TrimsAndEscapesWithoutSpaceFlag) {
  EXPECT_EQ(FileNameOf("C:\\x\\ a b .kpn", true), "a b");
  EXPECT_EQ(FileNameOf("/x/a|b^c.gif"), "a&!3b&!4c.gif");
  EXPECT_EQ(FileNameOf("/x/noext", true), "noext");
}

TEST(EndBackslash, AddsOneSeparatorUnlessPresent) {
  EXPECT_EQ(EndBackslash("/a/b"), "/a/b/");
  EXPECT_EQ(EndBackslash("/a/b/"), "/a/b/");
  EXPECT_EQ(EndBackslash("C:\\a\\"), "C:\\a\\");
  EXPECT_EQ(EndBackslash(""), "");
}

TEST(EndSlash, AddsOneSlashUnlessPresent) {
  EXPECT_EQ(EndSlash("http://x"), "http://x/");
  EXPECT_EQ(EndSlash("http://x/"), "http://x/");
  EXPECT_EQ(EndSlash(""), "");
}

TEST(MakeRelative, JoinsBaseAndRelativeWithSeparators) {
  EXPECT_EQ(MakeRelative("/web/site/", "images"), "/web/site/images/");
  EXPECT_EQ(MakeRelative("/web/site", "images/btn"), "/web/site/images/btn/");
  EXPECT_EQ(MakeRelative("/web/site/", "images\\btn\\"), "/web/site/images/btn/");
}

TEST(MakeRelative, EmptyRelativeAddsNothing) {
  EXPECT_EQ(MakeRelative("/web/site/", ""), "/web/site/");
  EXPECT_EQ(MakeRelative("/web/site", ""), "/web/site/");
}

TEST(MakeRelative, EachUpLevelCutsOneFolderOffBase) {
  EXPECT_EQ(MakeRelative("/web/site/", "../classes"), "/web/classes/");
  EXPECT_EQ(MakeRelative("/web/site/page/", "..\\..\\classes"), "/web/classes/");
  EXPECT_EQ(MakeRelative("/web/site/", ".."), "/web/site/../");  // no separator, no level
}

TEST(MakeRelative, DropsOneLeadingSeparatorOfRelative) {
  EXPECT_EQ(MakeRelative("/web/", "/img"), "/web/img/");
  EXPECT_EQ(MakeRelative("/web/", "\\img"), "/web/img/");
}

TEST(MakeRelative, ResultUsesSlashThroughout) {
  EXPECT_EQ(MakeRelative("C:\\web\\site\\", "..\\img"), "C:/web/img/");
}

TEST(MakeLongDir, CreatesEveryMissingLevel) {
  TestEnv t;
  std::string deep = t.home.path() + "/a/b/c";
  MakeLongDir(t.env, deep);
  EXPECT_TRUE(std::filesystem::is_directory(deep));
  std::string withSep = t.home.path() + "/x/y/";
  MakeLongDir(t.env, withSep);
  EXPECT_TRUE(std::filesystem::is_directory(t.home.path() + "/x/y"));
  // Backslashes from older project paths separate folders too.
  MakeLongDir(t.env, t.home.path() + "/p\\q");
  EXPECT_TRUE(std::filesystem::is_directory(t.home.path() + "/p/q"));
}

TEST(MakeLongDir, FailureIsIgnored) {
  TestEnv t;
  t.home.write("file", "x");
  MakeLongDir(t.env, t.home.file("file") + "/below");  // a file in the way
  EXPECT_FALSE(std::filesystem::exists(t.home.file("file") + "/below"));
  MakeLongDir(t.env, "");
}

TEST(PrepareDir, CreatesAndChangesToTheFolder) {
  TestEnv t;
  auto before = std::filesystem::current_path();
  std::string dir = t.home.path() + "/out/site";
  PrepareDir(t.env, dir);
  EXPECT_EQ(std::filesystem::current_path(), std::filesystem::canonical(dir));
  std::filesystem::current_path(before);
  myChDir(t.env, t.home.path() + "/missing");  // ignored
  EXPECT_EQ(std::filesystem::current_path(), before);
}

TEST(IsFileExist, OnlyOpenableRegularFiles) {
  TestEnv t;
  t.home.write("a.gif", "GIF89a");
  EXPECT_TRUE(IsFileExist(t.env, t.home.file("a.gif")));
  EXPECT_FALSE(IsFileExist(t.env, t.home.file("b.gif")));
  EXPECT_FALSE(IsFileExist(t.env, t.home.path()));
  EXPECT_FALSE(IsFileExist(t.env, ""));
}

// --- File-name warnings ---------------------------------------------------------------

TEST(CheckFileName, BlankInNameShowsSpacesWarning) {
  TestEnv t;
  CheckFileName(t.env, "/pics/my button.gif");
  ASSERT_EQ(t.prompter.shown.size(), 1u);
  EXPECT_EQ(t.prompter.Last().kind, "notice");
  EXPECT_EQ(t.prompter.Last().title, "Warning! Strange chars...");
  EXPECT_EQ(t.prompter.Last().text,
            "This file name contains spaces!\r\nMost web servers do not support such file "
            "names.\r\nPlease consider to rename your file.");
}

TEST(CheckFileName, BackslashShowsBacklashWarning) {
  TestEnv t;
  CheckFileName(t.env, "sub\\page.html");
  ASSERT_EQ(t.prompter.shown.size(), 1u);
  EXPECT_EQ(t.prompter.Last().title, "Warning! Strange chars...");
  EXPECT_EQ(t.prompter.Last().text,
            "This file name contains backlash!\r\nUnlike Windows most web servers use '/' instead "
            "of '\\' .\r\nPlease consider to correct your file path.");
}

TEST(CheckFileName, BlankAndBackslashShowBothInOrder) {
  TestEnv t;
  CheckFileName(t.env, "sub\\my page.html");
  ASSERT_EQ(t.prompter.shown.size(), 2u);
  EXPECT_NE(t.prompter.shown[0].text.find("spaces"), std::string::npos);
  EXPECT_NE(t.prompter.shown[1].text.find("backlash"), std::string::npos);
}

TEST(CheckFileName, CleanNameShowsNothing) {
  TestEnv t;
  CheckFileName(t.env, "/my folder/page.html");  // only the name itself counts
  CheckFileName(t.env, "images/a.gif");
  EXPECT_TRUE(t.prompter.shown.empty());
}

TEST(CheckFileName, UntickedWarningIsNotShownAgain) {
  TestEnv t;
  t.prompter.noticeAnswers = {false};
  CheckFileName(t.env, "a b.gif");
  EXPECT_EQ(t.store.data[kSecParams]["Warn_Space_in_FileName"], "0");
  CheckFileName(t.env, "a b.gif");
  EXPECT_EQ(t.prompter.shown.size(), 1u);
  // The other warning keeps its own setting.
  CheckFileName(t.env, "a\\b.gif");
  EXPECT_EQ(t.prompter.shown.size(), 2u);
}

TEST(CheckTargetName, BlankShowsSpacesWarning) {
  TestEnv t;
  CheckTargetName(t.env, "main frame");
  ASSERT_EQ(t.prompter.shown.size(), 1u);
  EXPECT_EQ(t.prompter.Last().title, "Warning! Strange chars...");
  EXPECT_EQ(t.prompter.Last().text, "Spaces are illigal in Target name.");
}

TEST(CheckTargetName, DotShowsDotsWarningWithSample) {
  TestEnv t;
  CheckTargetName(t.env, "page.html");
  ASSERT_EQ(t.prompter.shown.size(), 1u);
  EXPECT_EQ(t.prompter.Last().text,
            "Dots, comas and other special chars are illigal in Target name.\r\nYou should input "
            "the name of the frame here not the file name.\r\nName of the frame can be found in "
            "your HTML page, it should look like: <frame name=\"main\"...");
}

TEST(CheckTargetName, SettingsSilenceEachWarning) {
  TestEnv t;
  t.store.data[kSecParams]["Warn_Dot_in_TargetName"] = "0";
  CheckTargetName(t.env, "a b.html");
  ASSERT_EQ(t.prompter.shown.size(), 1u);
  EXPECT_EQ(t.prompter.Last().text, "Spaces are illigal in Target name.");
  CheckTargetName(t.env, "_blank");
  EXPECT_EQ(t.prompter.shown.size(), 1u);
}

}  // namespace
}  // namespace kp
