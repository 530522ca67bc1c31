#include <gtest/gtest.h>

#include "core/conv.h"
#include "generate/html_generator.h"
#include "generate/js_caller.h"
#include "tests/generate/generate_fixture.h"

namespace kp {
namespace {

using test::Lines;
using test::PlainProject;
using test::TestEnv;

TEST(GetJSCaller, CopiesTheBlockWithABreakBeforeEachLineAndNoneAtTheEnd) {
  TestEnv t;
  t.home.write("Kestrel.ini",
               "[LANG SETTINGS]\r\nenglish_lng\r\n[JSCALLER]\r\nline one\r\nline two\r\n"
               "[END OF JSCALLER]\r\nafter\r\n");
  EXPECT_EQ(GetJSCaller(t.env, "Nav"), "\r\nline one\r\nline two");
}

TEST(GetJSCaller, NoJscallerLineGivesEmptyAndTheBoxGetsOneEmptyLine) {
  TestEnv t;
  t.home.write("Kestrel.ini", "[LANG SETTINGS]\r\nenglish_lng\r\n");
  EXPECT_EQ(GetJSCaller(t.env, "Nav"), "");

  Project p = PlainProject(1);
  p.button(1).URL = "javascript:x()";
  GeneratorState st;
  CodeBox box;
  HTMLWindowActivate(p, t.env, st, box);
  EXPECT_TRUE(EndsWith(box.text, "</applet>\r\n\r\n<!-- END GENERATED CODE -->\r\n")) << box.text;
}

TEST(GetJSCaller, MissingFileGivesEmptyWithNoMessage) {
  TestEnv t;
  EXPECT_EQ(GetJSCaller(t.env, "Nav"), "");
  EXPECT_TRUE(t.prompter.shown.empty());
}

TEST(GetJSCaller, UnreadableFileGivesEmpty) {
  TestEnv t;
  t.home.write("Kestrel.ini", "[JSCALLER]\r\nx\r\n");
  t.fs.failRead.insert(t.home.file("Kestrel.ini"));
  EXPECT_EQ(GetJSCaller(t.env, "Nav"), "");
}

TEST(GetJSCaller, NoEndLineRunsTheBlockToTheEndOfTheFile) {
  TestEnv t;
  t.home.write("Kestrel.ini", "[JSCALLER]\r\na\r\nb\r\nlast without break");
  EXPECT_EQ(GetJSCaller(t.env, "Nav"), "\r\na\r\nb\r\nlast without break");
}

TEST(GetJSCaller, AppletNameTwiceOnALineIsReplacedBothTimes) {
  EXPECT_EQ(JSCallerFromText("[JSCALLER]\r\nf(\"AppletName\", AppletName);\r\n", "Nav"),
            "\r\nf(\"Nav\", Nav);");
}

TEST(GetJSCaller, ReplacementIsCaseSensitiveAndDoesNotRescanTheName) {
  EXPECT_EQ(JSCallerFromText("[JSCALLER]\nappletname AppletName\n", "xAppletNamex"),
            "\r\nappletname xAppletNamex");
}

TEST(GetJSCaller, HeadingsMatchInAnyCaseButNotWithALeadingBlank) {
  EXPECT_EQ(JSCallerFromText("[jscaller]\r\nin\r\n[End Of JSCaller]\r\nout\r\n", "N"), "\r\nin");
  EXPECT_EQ(JSCallerFromText(" [JSCALLER]\r\nin\r\n", "N"), "");
  EXPECT_EQ(JSCallerFromText("[JSCALLER]\r\nin\r\n [END OF JSCALLER]\r\nstill\r\n", "N"),
            "\r\nin\r\n [END OF JSCALLER]\r\nstill");
}

TEST(GetJSCaller, EndLineBeforeTheBlockStopsTheReading) {
  EXPECT_EQ(JSCallerFromText("[END OF JSCALLER]\r\n[JSCALLER]\r\nin\r\n", "N"), "");
}

TEST(GetJSCaller, EmptyLinesInsideTheBlockAreKept) {
  EXPECT_EQ(JSCallerFromText("[JSCALLER]\r\na\r\n\r\nb\r\n[END OF JSCALLER]", "N"),
            "\r\na\r\n\r\nb");
}

TEST(GetJSCaller, LineFeedOnlyFilesAreReadToo) {
  EXPECT_EQ(JSCallerFromText("[JSCALLER]\na\nb\n[END OF JSCALLER]\n", "N"), "\r\na\r\nb");
}

// --- The shipped Kestrel.ini ---------------------------------------------------------------------

TEST(KestrelIni, LanguageBlockHoldsTheBuiltInValuesInOrder) {
  std::string text = test::ReadBytes(test::SourcePath("data/Kestrel.ini"));
  auto lines = Lines(text);
  ASSERT_GE(lines.size(), 14u);
  EXPECT_EQ(lines[0], "[LANG SETTINGS]");
  EXPECT_EQ(lines[1], "english_lng");
  EXPECT_EQ(lines[2], "ENGLISH");
  EXPECT_EQ(lines[3], "Wav2Au_ReadMe.txt");
  EXPECT_EQ(lines[4], "Java is disabled in your Browser!");
  EXPECT_EQ(lines[5], "Loading...");
  EXPECT_TRUE(StartsWith(lines[6], "<meta ", true));
  EXPECT_NE(lines[6].find("charset=iso-8859-1"), std::string::npos);
  EXPECT_EQ(lines[7], "\\Help\\index.htm");
  for (size_t k = 9; k <= 13; ++k) EXPECT_EQ(lines[k], "") << "scrambled line " << k - 8;
}

TEST(KestrelIni, EveryLineEndsInCarriageReturnLineFeed) {
  std::string text = test::ReadBytes(test::SourcePath("data/Kestrel.ini"));
  ASSERT_TRUE(EndsWith(text, "\r\n"));
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\n') {
      EXPECT_TRUE(i > 0 && text[i - 1] == '\r') << "at " << i;
    }
    if (text[i] == '\r') {
      EXPECT_TRUE(i + 1 < text.size() && text[i + 1] == '\n') << "at " << i;
    }
  }
}

TEST(KestrelIni, CallerBlockDefinesInitJSCallerForTheNamedApplet) {
  std::string text = test::ReadBytes(test::SourcePath("data/Kestrel.ini"));
  std::string block = JSCallerFromText(text, "NavBar");
  EXPECT_TRUE(StartsWith(block, "\r\n<script"));
  EXPECT_TRUE(EndsWith(block, "</script>"));
  EXPECT_NE(block.find("InitJSCaller"), std::string::npos);
  EXPECT_NE(block.find("\"NavBar\""), std::string::npos);
  EXPECT_EQ(block.find("AppletName"), std::string::npos);
  EXPECT_NE(block.find("document.applets"), std::string::npos);
  EXPECT_NE(block.find("getElementById"), std::string::npos);
}

// --- FixBodyTag ----------------------------------------------------------------------------------

TEST(FixBodyTag, BodyTagInCapitalsGetsTheCallerBody) {
  Project p;
  p.sHTMLbefore = "<HTML>\r\n<BODY>\r\n<center>";
  FixBodyTag(p, true);
  EXPECT_EQ(p.sHTMLbefore, "<HTML>\r\n<Body onload=\"InitJSCaller();\">\r\n<center>");
}

TEST(FixBodyTag, BodyTagWithABlankBeforeItsCloseIsLeftAlone) {
  Project p;
  p.sHTMLbefore = "<Html>\r\n<body >\r\n";
  FixBodyTag(p, true);
  EXPECT_EQ(p.sHTMLbefore, "<Html>\r\n<body >\r\n");
  p.sHTMLbefore = "<body bgcolor=white>";
  FixBodyTag(p, true);
  EXPECT_EQ(p.sHTMLbefore, "<body bgcolor=white>");
}

TEST(FixBodyTag, SwitchingFromJavaScriptToPlainLinksRemovesTheOnloadAgain) {
  TestEnv t;
  Project p = PlainProject(1);
  p.sHTMLbefore = DefaultHTMLbefore();
  const std::string original = p.sHTMLbefore;
  p.button(1).URL = "javascript:go()";
  GeneratorState st;
  CodeBox box;
  HTMLWindowActivate(p, t.env, st, box);
  FixBodyTag(p, st.bUseJSCaller);  // as the build does
  EXPECT_NE(p.sHTMLbefore.find(kCallerBody), std::string::npos);

  p.button(1).URL = "go.htm";
  MarkHTMLStale(st);
  HTMLWindowActivate(p, t.env, st, box);
  FixBodyTag(p, st.bUseJSCaller);
  EXPECT_EQ(p.sHTMLbefore, original);
  EXPECT_EQ(p.sHTMLbefore.find("onload"), std::string::npos);
}

TEST(FixBodyTag, RemovalIgnoresCaseAndLeavesTheRestOfTheTag) {
  Project p;
  p.sHTMLbefore = "<body bgcolor=red ONLOAD=\"initjscaller();\" text=black>";
  FixBodyTag(p, false);
  EXPECT_EQ(p.sHTMLbefore, "<body bgcolor=red text=black>");
}

TEST(FixBodyTag, RepeatedFixesChangeNothingMore) {
  Project p;
  p.sHTMLbefore = "<body>";
  FixBodyTag(p, true);
  FixBodyTag(p, true);
  EXPECT_EQ(p.sHTMLbefore, kCallerBody);
  FixBodyTag(p, false);
  FixBodyTag(p, false);
  EXPECT_EQ(p.sHTMLbefore, "<Body>");
}

}  // namespace
}  // namespace kp
