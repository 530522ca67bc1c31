// The project file: what a save writes, what a load reads back, and the
// failure paths of both.
#include <gtest/gtest.h>

#include "core/conv.h"
#include "core/settings.h"
#include "project/button_record.h"
#include "project/project_file.h"
#include "tests/project/project_fixture.h"

namespace kp::test {
namespace {

// A button whose every field differs from the default record, with files
// that exist.
tButton Distinctive(const TempDir& dir) {
  dir.write("a.gif", "GIF89a");
  dir.write("b.gif", "GIF89a");
  dir.write("c.au", ".snd");
  tButton b;
  b.sBName = "My Button;1";
  b.x = -5; b.y = 7; b.Width = 300; b.Height = 33;
  b.URL = "page.html?a=1&b=2"; b.Target = "_blank"; b.Status = "status \"quoted\""; b.Tip = "tip";
  b.iBtnType = 5;
  b.Hidden = 1;
  b.ShowHand = true;
  b.Radio = true;
  b.ProgramUP = "1 Home;"; b.ProgramLEAVE = "2 Home;"; b.ProgramOVER = "6 250;";
  b.ProgramDOWN = "7 0 alert('x');"; b.ProgramCHECK = "8 Home 3;"; b.ProgramUNCHECK = "8 Home 1;";
  for (int s = 1; s <= 3; ++s) {
    b.Label[s] = "L" + std::to_string(s) + " ^caret";
    b.PositionText[s] = s != 2;
    b.LabelPosX[s] = static_cast<i16>(10 + s); b.LabelPosY[s] = static_cast<i16>(-20 - s);
    b.BackColor[s] = 100 + s; b.Font[s] = s == 1 ? "Courier" : "times"; b.FontStyle[s] = 3;
    b.FontSize[s] = static_cast<i16>(8 + s); b.FontColor[s] = 16777215 - s;
    b.Image[s] = s == 3 ? "" : dir.file(s == 1 ? "a.gif" : "b.gif");
    b.ImgStyle[s] = static_cast<i16>(s - 1);
    b.BorderStyle[s] = static_cast<i16>(s + 1); b.BorderWidth[s] = static_cast<i16>(2 * s);
    b.BorderShade[s] = static_cast<i16>(30 + s); b.BorderAutoColor[s] = s == 1;
    b.BorderColor[s] = s == 1 ? b.BackColor[s] : 4242 + s;
    b.TFrameThick[s] = static_cast<i16>(s); b.TFrameColor[s] = 77 + s; b.TFrameLight[s] = s == 2;
    b.TFrameShade[s] = static_cast<i16>(40 + s); b.TFrameLeftToRight[s] = s == 3;
    b.noBackGround[s] = s == 2; b.Snd[s] = s == 2 ? dir.file("c.au") : "";
    b.SoundStop[s] = s == 1; b.SoundLoop[s] = s == 3;
    b.FadeColor[s] = 555 + s; b.FadeStyle[s] = static_cast<i16>(s); b.FrameColor[s] = 999 + s;
    b.FrameThick[s] = static_cast<i16>(s + 2); b.ImgX[s] = static_cast<i16>(-s);
    b.ImgY[s] = static_cast<i16>(s * 3);
  }
  return b;
}

void SetDistinctiveApplet(Project& p) {
  p.AppletWidth = 333; p.AppletHeight = 111; p.BackGround = 1234567; p.DOWNBtn = 2;
  p.BackImgStyle = 3; p.iBgOffsetX = -4; p.iBgOffsetY = 9;
  p.AppletProgramStart = "6 100;"; p.AppletProgramOVER = "1 Home;";
  p.AppletProgramDOWN = "2 Home;"; p.AppletProgramOUT = "10 Home 5 100;";
  p.AppletName = "Bar1"; p.bUnusualRepaint = -1; p.bDoScroll = true; p.iScStep = 3;
  p.iScDelay = 40; p.iScDirection = 2; p.CodeBase = "classes/"; p.bPreLoad = false;
  p.cTipBackColor = 11; p.cTipTextColor = 12; p.cTipBorderColor = 13; p.iTipBorderWidth = 2;
  p.iTipDelay = 400; p.iTipHideAfter = 3000; p.iTipFontStyle = 1; p.iTipFontSize = 12;
  p.iTipFont = 2; p.bClip = false; p.ImgPath = "img/"; p.SndPath = "snd/";
  p.iABorderStyle = 1; p.iABorderWidth = 5; p.iABorderShade = 30; p.cABorderColor = 14;
  p.cFadeColor = 15; p.iFadeStyle = 4; p.sLoading = "Wait..."; p.cLoadingFont = 16;
  p.cLoadingBack = 17; p.iLoadingFont_Size = 14; p.iLoadingFont_Style = 2;
  p.iLoadingFont_Name = 1; p.iDescentX = 3; p.iDescentY = 4;
  p.sHTMLbefore = "<Html>\r\n<Body>"; p.sHTMLalt = "no java"; p.sHTMLafter = "</Body>\r\n</Html>";
  p.sOutputHTML = "out.html"; p.sProjectsPath = "/projects"; p.sOutputFolder = "/out";
  p.sSearchImagesFolder = "/img"; p.sSearchSoundsFolder = "/snd"; p.sSearchLinkFolder = "/lnk";
}

void ExpectSameApplet(const Project& a, const Project& b) {
  EXPECT_EQ(a.AppletWidth, b.AppletWidth);
  EXPECT_EQ(a.AppletHeight, b.AppletHeight);
  EXPECT_EQ(a.ButtonCount, b.ButtonCount);
  EXPECT_EQ(a.BackGround, b.BackGround);
  EXPECT_EQ(a.DOWNBtn, b.DOWNBtn);
  EXPECT_EQ(a.BackImgStyle, b.BackImgStyle);
  EXPECT_EQ(a.iBgOffsetX, b.iBgOffsetX);
  EXPECT_EQ(a.iBgOffsetY, b.iBgOffsetY);
  EXPECT_EQ(a.AppletProgramStart, b.AppletProgramStart);
  EXPECT_EQ(a.AppletProgramOVER, b.AppletProgramOVER);
  EXPECT_EQ(a.AppletProgramDOWN, b.AppletProgramDOWN);
  EXPECT_EQ(a.AppletProgramOUT, b.AppletProgramOUT);
  EXPECT_EQ(a.AppletName, b.AppletName);
  EXPECT_EQ(a.bUnusualRepaint, b.bUnusualRepaint);
  EXPECT_EQ(a.bDoScroll, b.bDoScroll);
  EXPECT_EQ(a.iScStep, b.iScStep);
  EXPECT_EQ(a.iScDelay, b.iScDelay);
  EXPECT_EQ(a.iScDirection, b.iScDirection);
  EXPECT_EQ(a.CodeBase, b.CodeBase);
  EXPECT_EQ(a.bPreLoad, b.bPreLoad);
  EXPECT_EQ(a.cTipBackColor, b.cTipBackColor);
  EXPECT_EQ(a.cTipTextColor, b.cTipTextColor);
  EXPECT_EQ(a.cTipBorderColor, b.cTipBorderColor);
  EXPECT_EQ(a.iTipBorderWidth, b.iTipBorderWidth);
  EXPECT_EQ(a.iTipDelay, b.iTipDelay);
  EXPECT_EQ(a.iTipHideAfter, b.iTipHideAfter);
  EXPECT_EQ(a.iTipFontStyle, b.iTipFontStyle);
  EXPECT_EQ(a.iTipFontSize, b.iTipFontSize);
  EXPECT_EQ(a.iTipFont, b.iTipFont);
  EXPECT_EQ(a.bClip, b.bClip);
  EXPECT_EQ(a.ImgPath, b.ImgPath);
  EXPECT_EQ(a.SndPath, b.SndPath);
  EXPECT_EQ(a.iABorderStyle, b.iABorderStyle);
  EXPECT_EQ(a.iABorderWidth, b.iABorderWidth);
  EXPECT_EQ(a.iABorderShade, b.iABorderShade);
  EXPECT_EQ(a.cABorderColor, b.cABorderColor);
  EXPECT_EQ(a.cFadeColor, b.cFadeColor);
  EXPECT_EQ(a.iFadeStyle, b.iFadeStyle);
  EXPECT_EQ(a.sLoading, b.sLoading);
  EXPECT_EQ(a.cLoadingFont, b.cLoadingFont);
  EXPECT_EQ(a.cLoadingBack, b.cLoadingBack);
  EXPECT_EQ(a.iLoadingFont_Size, b.iLoadingFont_Size);
  EXPECT_EQ(a.iLoadingFont_Style, b.iLoadingFont_Style);
  EXPECT_EQ(a.iLoadingFont_Name, b.iLoadingFont_Name);
  EXPECT_EQ(a.iDescentX, b.iDescentX);
  EXPECT_EQ(a.iDescentY, b.iDescentY);
  EXPECT_EQ(a.sHTMLbefore, b.sHTMLbefore);
  EXPECT_EQ(a.sHTMLalt, b.sHTMLalt);
  EXPECT_EQ(a.sHTMLafter, b.sHTMLafter);
  EXPECT_EQ(a.sOutputHTML, b.sOutputHTML);
  EXPECT_EQ(a.sProjectsPath, b.sProjectsPath);
  EXPECT_EQ(a.sOutputFolder, b.sOutputFolder);
  EXPECT_EQ(a.sSearchImagesFolder, b.sSearchImagesFolder);
  EXPECT_EQ(a.sSearchSoundsFolder, b.sSearchSoundsFolder);
  EXPECT_EQ(a.sSearchLinkFolder, b.sSearchLinkFolder);
}

// Saves p to dir/name and loads it into a fresh project.
Project SaveAndLoad(TestEnv& t, Project& p, const std::string& name = "p.kpn") {
  EXPECT_TRUE(SaveProject(p, t.env, t.home.file(name), false, false));
  Project q;
  EXPECT_EQ(LoadProject2(q, t.env, t.home.file(name)), LoadResult::Loaded);
  return q;
}

TEST(ProjectFile, SaveAndReloadKeepsEveryFieldOfAppletAndButtons) {
  TestEnv t;
  Project p = MakeProject(t, 2);
  SetDistinctiveApplet(p);
  p.button(2) = Distinctive(t.home);
  Project q = SaveAndLoad(t, p);
  ExpectSameApplet(p, q);
  EXPECT_EQ(q.button(1), p.button(1));
  EXPECT_EQ(q.button(2), p.button(2));
  EXPECT_EQ(t.prompter.CountMsg(), 0);
}

TEST(ProjectFile, ReloadMarksSavedAndNamesProjectAfterFile) {
  TestEnv t;
  Project p = MakeProject(t, 1);
  p.bProjectSaved = false;
  EXPECT_TRUE(SaveProject(p, t.env, t.home.file("Shop Bar.kpn"), false, false));
  EXPECT_TRUE(p.bProjectSaved);
  EXPECT_EQ(p.sProjectName, "Shop Bar");
  Project q;
  q.sProjectName = "Other";
  q.bProjectSaved = false;
  ASSERT_EQ(LoadProject2(q, t.env, t.home.file("Shop Bar.kpn")), LoadResult::Loaded);
  EXPECT_EQ(q.sProjectName, "Shop Bar");
  EXPECT_TRUE(q.bProjectSaved);
  EXPECT_EQ(q.sProjectFile, t.home.file("Shop Bar.kpn"));
  EXPECT_EQ(ReadRecentRaw(t.env)[0], t.home.file("Shop Bar.kpn"));
}

TEST(ProjectFile, TargetWithEscapedCharacterKeepsEscapeTextAndGainsNoFurtherLayer) {
  TestEnv t;
  Project p = MakeProject(t, 1);
  p.button(1).Target = "a|b";
  Project q = SaveAndLoad(t, p);
  EXPECT_EQ(q.button(1).Target, "a&!3b");
  Project r = SaveAndLoad(t, q, "again.kpn");
  EXPECT_EQ(r.button(1).Target, "a&!3b");
}

TEST(ProjectFile, CodeBaseIsEscapedOnWritingButReadRawAndLoneDotIsEmpty) {
  TestEnv t;
  Project p = MakeProject(t, 1);
  p.CodeBase = "a^b";
  EXPECT_EQ(SaveAndLoad(t, p).CodeBase, "a&!4b");
  p.CodeBase = ".";
  EXPECT_EQ(SaveAndLoad(t, p).CodeBase, "");
}

TEST(ProjectFile, DescentIsSavedAndReloaded) {
  TestEnv t;
  Project p = MakeProject(t, 1);
  p.iDescentX = 6;
  p.iDescentY = -2;
  Project q = SaveAndLoad(t, p);
  EXPECT_EQ(q.iDescentX, 6);
  EXPECT_EQ(q.iDescentY, -2);
}

TEST(ProjectFile, FileWithoutDescentFieldsLoadsWithNoDescent) {
  TestEnv t;
  Project p = MakeProject(t, 1);
  SaveProject(p, t.env, t.home.file("p.kpn"), true, false);
  std::string text = t.home.read("p.kpn");
  std::string applet = LineOf(text, 2);
  std::string shortApplet = applet.substr(0, applet.size() - std::string("1|1|").size());
  t.home.write("short.kpn", ReplaceAll(text, applet, shortApplet));
  Project q;
  ASSERT_EQ(LoadProject2(q, t.env, t.home.file("short.kpn")), LoadResult::Loaded);
  EXPECT_EQ(q.iDescentX, 0);
  EXPECT_EQ(q.iDescentY, 0);
}

TEST(ProjectFile, LabelWithBarIsWrittenEscapedAndComesBack) {
  TestEnv t;
  Project p = MakeProject(t, 1);
  p.button(1).Label[1] = "a|b";
  SaveProject(p, t.env, t.home.file("p.kpn"), false, false);
  EXPECT_EQ(FieldOf(LineOf(t.home.read("p.kpn"), 3), 4), "a&!3b");
  Project q;
  LoadProject2(q, t.env, t.home.file("p.kpn"));
  EXPECT_EQ(q.button(1).Label[1], "a|b");
}

TEST(ProjectFile, LabelHoldingNbspComesBackAsOneSpace) {
  TestEnv t;
  Project p = MakeProject(t, 1);
  p.button(1).Label[2] = "x&nbspy";
  EXPECT_EQ(SaveAndLoad(t, p).button(1).Label[2], "x y");
}

TEST(ProjectFile, ShorterButtonLineKeepsDefaultButtonValues) {
  TestEnv t;
  std::string text = std::string(kProjectHeader) + "\r\n" + "200|100|1|R|\r\n" +
                     "5|6|70|20|Go|||\r\n";
  t.home.write("old.kpn", text);
  Project q;
  ASSERT_EQ(LoadProject2(q, t.env, t.home.file("old.kpn")), LoadResult::Loaded);
  ASSERT_EQ(q.ButtonCount, 1);
  const tButton& b = q.button(1);
  EXPECT_EQ(b.x, 5);
  EXPECT_EQ(b.Width, 70);
  EXPECT_EQ(b.Label[1], "Go");
  EXPECT_EQ(b.Label[2], "");
  EXPECT_EQ(b.Target, "_self");
  EXPECT_EQ(b.BorderWidth[1], 7);
  EXPECT_EQ(b.BackColor[1], 8388608);
  EXPECT_EQ(b.FadeColor[3], 65535);
  EXPECT_EQ(b.sBName, "1");
  // No type field: the line predates the type, so its borders are cleared.
  EXPECT_EQ(b.iBtnType, 0);
  EXPECT_EQ(b.BorderStyle[1], 0);
  EXPECT_EQ(b.BorderStyle[3], 0);
}

TEST(ProjectFile, TruncatedButtonLineWithoutLabelsGetsTheFreeNameAsLabels) {
  TestEnv t;
  t.home.write("old.kpn", std::string(kProjectHeader) + "\r\n200|100|1|R|\r\n5|6|70|20|Go|\r\n");
  Project q;
  ASSERT_EQ(LoadProject2(q, t.env, t.home.file("old.kpn")), LoadResult::Loaded);
  EXPECT_EQ(q.button(1).Label[1], "Go");
  EXPECT_EQ(q.button(1).Label[2], "Button 1");
  EXPECT_EQ(q.button(1).Label[3], "Button 1");
}

TEST(ProjectFile, LineWithMoreThan110FieldsIgnoresTheRest) {
  TestEnv t;
  Project p = MakeProject(t, 1);
  SaveProject(p, t.env, t.home.file("p.kpn"), true, false);
  std::string text = t.home.read("p.kpn");
  std::string line = LineOf(text, 3);
  std::string extra;
  for (int i = 0; i < 1000; ++i) extra += "junk|";
  t.home.write("long.kpn", ReplaceAll(text, line, line + extra));
  Project q;
  ASSERT_EQ(LoadProject2(q, t.env, t.home.file("long.kpn")), LoadResult::Loaded);
  EXPECT_EQ(q.button(1), p.button(1));
}

TEST(ProjectFile, ButtonCountLargerThanTheLinesEndsInFailureKeepingButtonsRead) {
  TestEnv t;
  Project p = MakeProject(t, 3);
  SaveProject(p, t.env, t.home.file("p.kpn"), true, false);
  std::string text = t.home.read("p.kpn");
  std::string cut = LineOf(text, 1) + "\r\n" + WithField(LineOf(text, 2), 2, "5") + "\r\n" +
                    LineOf(text, 3) + "\r\n" + LineOf(text, 4) + "\r\n" + LineOf(text, 5) + "\r\n";
  t.home.write("cut.kpn", cut);
  Project q;
  EXPECT_EQ(LoadProject2(q, t.env, t.home.file("cut.kpn")), LoadResult::Failed);
  EXPECT_EQ(q.ButtonCount, 3);
  EXPECT_EQ(q.button(3).sBName, "Button 3");
  ASSERT_EQ(t.prompter.CountMsg(), 1);
  EXPECT_EQ(t.prompter.Last().text, "Error loading project.\r\nInput past end of file");
  EXPECT_TRUE(q.bReady);
  EXPECT_FALSE(t.prompter.progressVisible);
}

TEST(ProjectFile, FailureAtTheFirstButtonLeavesNoButton) {
  TestEnv t;
  t.home.write("p.kpn", std::string(kProjectHeader) + "\r\n420|180|4|R|\r\n");
  Project q;
  EXPECT_EQ(LoadProject2(q, t.env, t.home.file("p.kpn")), LoadResult::Failed);
  EXPECT_EQ(q.ButtonCount, 0);
}

TEST(ProjectFile, MoreButtonsThanTheArrayHoldsFailsAtTheBound) {
  TestEnv t;
  std::string text = std::string(kProjectHeader) + "\r\n420|180|1100|R|\r\n";
  for (int i = 0; i < 1100; ++i) text += "1|1|10|10|x|x|x|\r\n";
  t.home.write("big.kpn", text);
  Project q;
  EXPECT_EQ(LoadProject2(q, t.env, t.home.file("big.kpn")), LoadResult::Failed);
  EXPECT_EQ(q.ButtonCount, kBtnUpperBound);
  EXPECT_EQ(t.prompter.Last().text, "Error loading project.\r\nSubscript out of range");
}

TEST(ProjectFile, ShowHandIsTrueOnlyForExactlyOneWhileOtherBooleansTakeAnythingButZero) {
  TestEnv t;
  Project p = MakeProject(t, 1);
  SaveProject(p, t.env, t.home.file("p.kpn"), true, false);
  std::string text = t.home.read("p.kpn");
  std::string line = LineOf(text, 3);
  std::string changed = WithField(WithField(WithField(line, 12, "2"), 60, "2"), 106, "x");
  t.home.write("b.kpn", ReplaceAll(text, line, changed));
  Project q;
  LoadProject2(q, t.env, t.home.file("b.kpn"));
  EXPECT_FALSE(q.button(1).ShowHand);
  EXPECT_TRUE(q.button(1).BorderAutoColor[1]);
  EXPECT_TRUE(q.button(1).Radio);
}

TEST(ProjectFile, EmptySHTMLbeforeIsNotWrittenAndReloadsAsTheDefaultHead) {
  TestEnv t;
  Project p = MakeProject(t, 1);
  p.sHTMLbefore.clear();
  SaveProject(p, t.env, t.home.file("p.kpn"), false, false);
  EXPECT_EQ(t.home.read("p.kpn").find("[Start: sHTMLbefore]"), std::string::npos);
  Project q;
  LoadProject2(q, t.env, t.home.file("p.kpn"));
  EXPECT_EQ(q.sHTMLbefore, DefaultHTMLbefore());
}

TEST(ProjectFile, PresentButEmptyBlockSetsEmptyTextAndAltFallsBackToDefault) {
  TestEnv t;
  std::string text = std::string(kProjectHeader) + "\r\n420|180|0|R|\r\n\r\n" +
                     "[Start: sHTMLafter]\r\n[End: sHTMLafter]\r\n" +
                     "[Start: sHTMLalt]\r\n[End: sHTMLalt]\r\n";
  t.home.write("p.kpn", text);
  Project q;
  ASSERT_EQ(LoadProject2(q, t.env, t.home.file("p.kpn")), LoadResult::Loaded);
  EXPECT_EQ(q.sHTMLafter, "");
  EXPECT_EQ(q.sHTMLalt, DefaultHTMLalt());
  EXPECT_EQ(q.sHTMLbefore, DefaultHTMLbefore());
}

TEST(ProjectFile, SaveWritesTheExactLayout) {
  TestEnv t;
  Project p;
  SetDefaultMainParams(p);
  p.sSearchImagesFolder = "/i";
  p.sSearchSoundsFolder = "/s";
  p.sHTMLalt.clear();
  p.sHTMLafter = "</Html>";
  p.sOutputHTML = "index.html";
  SaveProject(p, t.env, t.home.file("e.kpn"), false, false);
  const std::string expected =
      "KestrelPane Project 2.02\r\n"
      "420|180|0|R|0|16777215||0||||0|0|||0|0|1|0|0||1|65535|0|16711680|1|300|2500|0|10|0|1|"
      "reserved|||0|10|20|16711680|8388608|0|Loading...|16711680|16777215|10|1|0|1|1|\r\n"
      "\r\n"
      "[Start: sHTMLbefore]\r\n<Html>\r\n<Head><Title>Kestrel Pane</Title></Head>\r\n<Body>\r\n"
      "<Center>\r\n\r\n\r\n[End: sHTMLbefore]\r\n"
      "[Start: sHTMLafter]\r\n</Html>\r\n[End: sHTMLafter]\r\n"
      "\r\n"
      "[Start: kpProjectSettings]\r\nindex.html\r\n\r\n\r\n\r\n/i\r\n/s\r\n\r\n"
      "[End: kpProjectSettings]\r\n\r\n";
  EXPECT_EQ(t.home.read("e.kpn"), expected);
}

TEST(ProjectFile, SaveWithoutPageBlocksStillEndsWithTheirEmptyLine) {
  TestEnv t;
  Project p;
  SetDefaultMainParams(p);
  p.sHTMLbefore.clear();
  p.sHTMLalt.clear();
  p.sHTMLafter.clear();
  SaveProject(p, t.env, t.home.file("e.kpn"), false, false);
  std::string text = t.home.read("e.kpn");
  EXPECT_NE(text.find("|\r\n\r\n\r\n[Start: kpProjectSettings]"), std::string::npos);
  EXPECT_TRUE(EndsWith(text, "[End: kpProjectSettings]\r\n\r\n"));
}

TEST(ProjectFile, ExportFormWritesFileNamesAndOnlyTheProjectName) {
  TestEnv t;
  Project p = MakeProject(t, 1);
  p.BackImg = "/pics/my\"bg.jpg";
  p.button(1).Image[2] = "C:\\art\\over.gif";
  p.sOutputHTML = "x.html";
  SaveProject(p, t.env, t.home.file("Exported.kpn"), true, true);
  std::string text = t.home.read("Exported.kpn");
  EXPECT_EQ(FieldOf(LineOf(text, 2), 6), "my&!2bg.jpg");
  EXPECT_EQ(FieldOf(LineOf(text, 3), 14), "over.gif");
  EXPECT_NE(text.find("[Start: kpProjectSettings]\r\n\r\nExported\r\n\r\n\r\n\r\n\r\n\r\n[End"),
            std::string::npos);
}

TEST(ProjectFile, SaveShowsProgressForEveryButton) {
  TestEnv t;
  Project p = MakeProject(t, 2);
  SaveProject(p, t.env, t.home.file("p.kpn"), false, false);
  ASSERT_EQ(t.prompter.progress.size(), 3u);
  EXPECT_EQ(t.prompter.progress[0], "Saving Buttons to File...");
  EXPECT_EQ(t.prompter.progress[1], "Saving Button # 1 of 2");
  EXPECT_EQ(t.prompter.percents[1], 100);
  EXPECT_FALSE(t.prompter.progressVisible);
}

TEST(ProjectFile, FailedSaveKeepsTheOldFileAndTheChangeMark) {
  TestEnv t;
  t.home.write("p.kpn", "old bytes");
  t.fs.failWrite.insert(t.home.file("p.kpn"));
  Project p = MakeProject(t, 1);
  p.bProjectSaved = false;
  EXPECT_FALSE(SaveProject(p, t.env, t.home.file("p.kpn"), false, false));
  EXPECT_EQ(t.home.read("p.kpn"), "old bytes");
  EXPECT_FALSE(p.bProjectSaved);
  EXPECT_EQ(t.prompter.Last().text,
            "Error Saving Buttons. File may be Read Only, Hidden or used by another application."
            "\r\n\r\nPermission denied");
  EXPECT_EQ(ReadRecentRaw(t.env)[0], "-1");
}

TEST(ProjectFile, SaveIntoAMissingFolderFailsWithTheMessage) {
  TestEnv t;
  Project p = MakeProject(t, 1);
  EXPECT_FALSE(SaveProject(p, t.env, t.home.file("no/such/dir/p.kpn"), false, false));
  EXPECT_EQ(t.prompter.CountMsg(), 1);
}

TEST(ProjectFile, KeepStateSaveLeavesChangeMarkAndRecentList) {
  TestEnv t;
  Project p = MakeProject(t, 1);
  p.bProjectSaved = false;
  EXPECT_TRUE(SaveProject(p, t.env, t.home.file("b.kpn"), true, false));
  EXPECT_FALSE(p.bProjectSaved);
  EXPECT_EQ(ReadRecentRaw(t.env)[0], "-1");
}

TEST(ProjectFile, MissingFileWarnsUntilCancelThenStaysSilentForThatLoadOnly) {
  TestEnv t;
  Project p = MakeProject(t, 2);
  p.button(1).Image[1] = "/nowhere/a.gif";
  p.button(1).Image[2] = "/nowhere/b.gif";
  p.button(2).Snd[1] = "/nowhere/c.au";
  SaveProject(p, t.env, t.home.file("p.kpn"), true, false);
  t.prompter.answers = {Answer::OK, Answer::Cancel};
  Project q;
  LoadProject2(q, t.env, t.home.file("p.kpn"));
  ASSERT_EQ(t.prompter.CountMsg(), 2);
  EXPECT_EQ(t.prompter.shown[0].title, "File Not Found");
  EXPECT_EQ(t.prompter.shown[0].buttons, Buttons::OKCancel);
  EXPECT_NE(t.prompter.shown[0].text.find("Possible causes:"), std::string::npos);
  EXPECT_NE(t.prompter.shown[0].text.find(t.home.path() + "/"), std::string::npos);
  EXPECT_EQ(q.button(1).Image[1], "/nowhere/a.gif");
  Project r;
  LoadProject2(r, t.env, t.home.file("p.kpn"));
  EXPECT_EQ(t.prompter.CountMsg(), 5);
}

TEST(ProjectFile, FileFieldsFromAnotherMachineAreFoundBesideTheProject) {
  TestEnv t;
  t.home.write("pic.gif", "GIF89a");
  t.home.write("snd.au", ".snd");
  Project p = MakeProject(t, 1);
  p.button(1).Image[1] = "C:\\Users\\me\\pic.gif";
  p.button(1).Snd[2] = "snd.au";
  Project q = SaveAndLoad(t, p);
  EXPECT_EQ(q.button(1).Image[1], t.home.file("pic.gif"));
  EXPECT_EQ(q.button(1).Snd[2], t.home.file("snd.au"));
  EXPECT_EQ(t.prompter.CountMsg(), 0);
}

TEST(ProjectFile, RelativeMissingFileGetsTheProjectFolderInFront) {
  TestEnv t;
  Project p = MakeProject(t, 1);
  p.BackImg = "sub/bg.jpg";
  t.prompter.answers = {Answer::Cancel};
  Project q = SaveAndLoad(t, p);
  EXPECT_EQ(q.BackImg, t.home.path() + "/sub/bg.jpg");
}

TEST(ProjectFile, FileOfAnotherVersionIsRefusedWithItsFirstLine) {
  TestEnv t;
  t.home.write("p.kpn", "KestrelPane Project 3.10\r\n420|180|0|R|\r\n");
  Project q;
  EXPECT_EQ(LoadProject2(q, t.env, t.home.file("p.kpn")), LoadResult::Refused);
  ASSERT_EQ(t.prompter.CountMsg(), 1);
  EXPECT_TRUE(StartsWith(t.prompter.Last().text,
                         "This file looks like: KestrelPane Project 3.10\r\nYou should use the "
                         "same or later version of the program to open this file.\r\n"));
  EXPECT_NE(t.prompter.Last().text.find(kHomePage), std::string::npos);
  EXPECT_EQ(q.ButtonCount, 0);
  EXPECT_TRUE(q.bReady);
}

TEST(ProjectFile, BinaryGarbageIsNotSupported) {
  TestEnv t;
  t.home.write("g.kpn", std::string("\x00\xff\x13garbage|||\r\n", 14));
  Project q;
  EXPECT_EQ(LoadProject2(q, t.env, t.home.file("g.kpn")), LoadResult::Refused);
  EXPECT_EQ(t.prompter.Last().text,
            "File type not supported or it was created by later version of the program.");
}

TEST(ProjectFile, EmptyOrMissingFileEndsInTheFailurePath) {
  TestEnv t;
  t.home.write("empty.kpn", "");
  Project q;
  EXPECT_EQ(LoadProject2(q, t.env, t.home.file("empty.kpn")), LoadResult::Failed);
  EXPECT_EQ(t.prompter.Last().text, "Error loading project.\r\nInput past end of file");
  EXPECT_EQ(LoadProject2(q, t.env, t.home.file("none.kpn")), LoadResult::Failed);
  EXPECT_TRUE(StartsWith(t.prompter.Last().text, "Error loading project.\r\n"));
}

TEST(ProjectFile, AppletRelicFieldOneMakesEveryButtonRadioUnlessTheLineSaysOtherwise) {
  TestEnv t;
  std::string text = std::string(kProjectHeader) + "\r\n420|180|2|1|\r\n1|1|10|10|\r\n";
  Project p = MakeProject(t, 1);
  SaveProject(p, t.env, t.home.file("p.kpn"), true, false);
  text += LineOf(t.home.read("p.kpn"), 3) + "\r\n";
  t.home.write("r.kpn", text);
  Project q;
  ASSERT_EQ(LoadProject2(q, t.env, t.home.file("r.kpn")), LoadResult::Loaded);
  EXPECT_TRUE(q.button(1).Radio);
  EXPECT_FALSE(q.button(2).Radio);
}

TEST(ProjectFile, AutoColourBordersTakeTheFaceColourOnLoad) {
  TestEnv t;
  Project p = MakeProject(t, 1);
  p.button(1).BorderAutoColor[2] = true;
  p.button(1).BackColor[2] = 4711;
  p.button(1).BorderColor[2] = 99;
  p.button(1).BorderAutoColor[3] = false;
  p.button(1).BorderColor[3] = 98;
  Project q = SaveAndLoad(t, p);
  EXPECT_EQ(q.button(1).BorderColor[2], 4711);
  EXPECT_EQ(q.button(1).BorderColor[3], 98);
}

TEST(ProjectFile, TipFontIsHeldToTheThreeFontsAndFieldsPast48AreIgnored) {
  TestEnv t;
  Project p = MakeProject(t, 0);
  SaveProject(p, t.env, t.home.file("p.kpn"), true, false);
  std::string text = t.home.read("p.kpn");
  std::string applet = LineOf(text, 2);
  t.home.write("q.kpn", ReplaceAll(text, applet, WithField(applet, 30, "7") + "99|x|"));
  Project q;
  ASSERT_EQ(LoadProject2(q, t.env, t.home.file("q.kpn")), LoadResult::Loaded);
  EXPECT_EQ(q.iTipFont, 2);
}

TEST(ProjectFile, BadNumbersFallBackToTheirFieldDefaults) {
  TestEnv t;
  t.home.write("p.kpn", std::string(kProjectHeader) + "\r\nwide|99999|1|R|\r\nx|y|w|h|\r\n");
  Project q;
  ASSERT_EQ(LoadProject2(q, t.env, t.home.file("p.kpn")), LoadResult::Loaded);
  EXPECT_EQ(q.AppletWidth, 420);
  EXPECT_EQ(q.AppletHeight, 180);
  EXPECT_EQ(q.button(1).x, 12);
  EXPECT_EQ(q.button(1).Width, 102);
  EXPECT_EQ(q.button(1).Height, 42);
}

TEST(ProjectFile, DamagedDefaultRecordDuringLoadRestoresItAndEndsTheProcess) {
  TestEnv t;
  Project p = MakeProject(t, 1);
  SaveProject(p, t.env, t.home.file("p.kpn"), true, false);
  t.store.Set("2.02/Params", "sDefaultBtn", "0|0|abc|");
  Project q;
  EXPECT_EQ(LoadProject2(q, t.env, t.home.file("p.kpn")), LoadResult::ProcessEnds);
  EXPECT_EQ(*t.store.Get("2.02/Params", "sDefaultBtn"), kBuiltInDefaultButton);
  ASSERT_EQ(t.prompter.CountMsg(), 2);
  EXPECT_EQ(t.prompter.shown[1].text, "Settings restored. Please restart the program.");
}

TEST(ProjectFile, LoadSelectsTheLastButtonAndSetsBothTitles) {
  struct View : ProjectView {
    std::string main, design;
    int loaded = 0, selected = 0;
    void LoadButton(Project&, int) override { ++loaded; }
    void SelectButton(Project&, int i) override { selected = i; }
    void SetTitles(const std::string& m, const std::string& d) override { main = m; design = d; }
  } view;
  TestEnv t;
  Env env{t.fs, t.store, t.prompter, view, t.home.path()};
  Project p = MakeProject(t, 3);
  SaveProject(p, env, t.home.file("p.kpn"), true, false);
  Project q;
  LoadProject2(q, env, t.home.file("p.kpn"));
  EXPECT_EQ(view.loaded, 3);
  EXPECT_EQ(view.selected, 3);
  EXPECT_EQ(q.iCurBtn, 3);
  EXPECT_EQ(view.main, t.home.file("p.kpn") + " - Kestrel Pane 2.02");
  EXPECT_EQ(view.design, "Design Window - " + view.main);
}

TEST(ProjectFile, LoadShowsProgressAndHidesItAtTheEnd) {
  TestEnv t;
  Project p = MakeProject(t, 2);
  SaveProject(p, t.env, t.home.file("p.kpn"), true, false);
  t.prompter.progress.clear();
  Project q;
  LoadProject2(q, t.env, t.home.file("p.kpn"));
  ASSERT_EQ(t.prompter.progress.size(), 3u);
  EXPECT_EQ(t.prompter.progress[0], "Loading Project...");
  EXPECT_EQ(t.prompter.progress[2], "Loading Button # 2 of 2");
  EXPECT_FALSE(t.prompter.progressVisible);
}

}  // namespace
}  // namespace kp::test

namespace kp::test {
namespace {

TEST(ProjectFile, LinesOfAMillionFieldsLoadWithTheExtraFieldsIgnored) {
  TestEnv t;
  std::string many;
  many.reserve(2'000'000);
  for (int i = 0; i < 1'000'000; ++i) many += "7|";
  t.home.write("m.kpn", std::string(kProjectHeader) + "\r\n" + many + "\r\n" + many + "\r\n");
  Project q;
  // Seven buttons announced by the applet line, one there: the first is
  // read, the second ends the load in the failure path.
  ASSERT_EQ(LoadProject2(q, t.env, t.home.file("m.kpn")), LoadResult::Failed);
  EXPECT_EQ(q.AppletWidth, 7);
  EXPECT_EQ(q.ButtonCount, 1);
  EXPECT_EQ(q.button(1).x, 7);
  EXPECT_EQ(q.button(1).FontSize[3], 7);
}

}  // namespace
}  // namespace kp::test
