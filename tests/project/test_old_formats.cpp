// Older project forms: version 1 line files and the INI form.
#include <gtest/gtest.h>

#include "core/conv.h"
#include "core/settings.h"
#include "project/old_formats.h"
#include "project/project_file.h"
#include "tests/project/project_fixture.h"

namespace kp::test {
namespace {

TEST(OldFormats, ConvertOldLineTurnsOldEscapesAndCaret) {
  EXPECT_EQ(ConvertOldLine("a&y00b&y01c&y02d&y03e&y04^"), "a&!0b&!1c&!2d&!3e&y04&!4");
}

TEST(OldFormats, VersionOneLineWithOldEscapeComesInAsSemicolon) {
  TestEnv t;
  t.home.write("v1.kpn", "KestrelPane Project 1.5\r\n300|90|1|R|\r\n1|2|30|20|a&y01b|x^y|\r\n");
  Project q;
  ASSERT_EQ(LoadProject2(q, t.env, t.home.file("v1.kpn")), LoadResult::Loaded);
  EXPECT_EQ(q.button(1).Label[1], "a;b");
  // A caret survives: the conversion escapes it and the reader turns it back.
  EXPECT_EQ(q.button(1).Label[2], "x^y");
  ASSERT_EQ(t.prompter.CountMsg(), 1);
  EXPECT_EQ(t.prompter.Last().title, "Warning");
  EXPECT_EQ(t.prompter.Last().text,
            "Project was created by earlier version of Kestrel Pane\r\n\r\nNote: Saving will "
            "convert it to version 2.02");
}

TEST(OldFormats, SiblingVersionOneHeadersAreTakenToo) {
  for (const char* head : {"QuailStone Project 1.0", "LinnetPlum Project 1.2"}) {
    TestEnv t;
    t.home.write("v1.kpn", std::string(head) + "\r\n300|90|0|R|\r\n");
    Project q;
    EXPECT_EQ(LoadProject2(q, t.env, t.home.file("v1.kpn")), LoadResult::Loaded) << head;
    EXPECT_EQ(q.AppletWidth, 300);
  }
}

TEST(OldFormats, UpperCaseLPMIsNotRecognisedByTheExtension) {
  TestEnv t;
  const std::string ini = "[Buttons]\r\nButtonCount=1\r\nAppletWidth=200\r\n";
  t.home.write("old.LPM", ini);
  Project q;
  EXPECT_EQ(LoadProject2(q, t.env, t.home.file("old.LPM")), LoadResult::Refused);
  EXPECT_EQ(t.prompter.Last().text,
            "File type not supported or it was created by later version of the program.");
  t.home.write("old.lpm", ini);
  Project r;
  EXPECT_EQ(LoadProject2(r, t.env, t.home.file("old.lpm")), LoadResult::Loaded);
  EXPECT_EQ(r.AppletWidth, 200);
  EXPECT_EQ(r.ButtonCount, 1);
}

TEST(OldFormats, IniFileWithNoSectionGivesAnEmptyProjectOfTheDefaultSize) {
  TestEnv t;
  t.home.write("none.lpm", "just some text\r\nButtonCount=4\r\n");
  Project q;
  q.AppletWidth = 5;
  EXPECT_EQ(LoadProject2(q, t.env, t.home.file("none.lpm")), LoadResult::Loaded);
  EXPECT_EQ(q.ButtonCount, 0);
  EXPECT_EQ(q.AppletWidth, 420);
  EXPECT_EQ(q.AppletHeight, 180);
  EXPECT_TRUE(q.bReady);
  EXPECT_TRUE(q.bProjectSaved);
}

TEST(OldFormats, IniButtonsTakeOnlyTheirListedFields) {
  TestEnv t;
  t.home.write("b.lpm",
               "[buttons]\r\nButtonCount=2\r\nBackGround=255\r\nx_1=5\r\ny_1=6\r\nWidth_1=70\r\n"
               "Height_1=20\r\nLabelUP_1=  Home  \r\nLabelOVER_1=Go\r\nFontDOWN_1=Times\r\n"
               "noBackGround_1=1\r\nShowHand_1=1\r\nImageUP_1=pic.gif\r\nx_2=9\r\n"
               "LabelUP_2=" + std::string(150, 'z') + "\r\n");
  Project q;
  ASSERT_EQ(LoadProject2(q, t.env, t.home.file("b.lpm")), LoadResult::Loaded);
  ASSERT_EQ(q.ButtonCount, 2);
  const tButton& b = q.button(1);
  EXPECT_EQ(q.BackGround, 255);
  EXPECT_EQ(b.x, 5);
  EXPECT_EQ(b.Label[1], "Home");
  EXPECT_EQ(b.Label[2], "Go");
  EXPECT_EQ(b.Font[3], "Times");
  EXPECT_EQ(b.Font[1], "Arial");
  EXPECT_EQ(b.FontSize[2], 10);
  EXPECT_TRUE(b.noBackGround[2]);
  EXPECT_TRUE(b.ShowHand);
  EXPECT_EQ(b.Image[1], "pic.gif");
  // Fields the format lacks stay as the allocation left them.
  EXPECT_EQ(b.BorderWidth[1], 0);
  EXPECT_EQ(b.Target, "");
  EXPECT_EQ(q.button(2).Label[1], std::string(99, 'z'));
  EXPECT_EQ(q.button(2).y, 0);
  EXPECT_EQ(q.iDescentX, 0);
}

TEST(OldFormats, ImportedLpmLineFileDoesNotBecomeTheOpenFile) {
  TestEnv t;
  t.home.write("imp.lpm", "LinnetPlum Project 1.1\r\n250|80|0|R|\r\n");
  Project q;
  q.sProjectFile = "/before.kpn";
  ASSERT_EQ(LoadProject2(q, t.env, t.home.file("imp.lpm")), LoadResult::Loaded);
  EXPECT_EQ(q.AppletWidth, 250);
  EXPECT_EQ(q.sProjectFile, "/before.kpn");
  EXPECT_EQ(ReadRecentRaw(t.env)[0], "-1");
}

}  // namespace
}  // namespace kp::test
