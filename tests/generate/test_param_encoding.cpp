#include <gtest/gtest.h>

#include <random>

#include "core/conv.h"
#include "generate/param_encoding.h"
#include "tests/generate/generate_fixture.h"

namespace kp {
namespace {

using test::PlainProject;
using test::TestEnv;
using test::ValueFields;

// The packing passes as whole-text replacements, longest first, each one
// repeated until a scan no longer changes the length: the reference that
// the one-pass versions must equal.
std::string RescanReplace(std::string text, const std::string& find, const std::string& repl) {
  for (;;) {
    std::string next = ReplaceAll(text, find, repl);
    bool same = next.size() == text.size();
    text = std::move(next);
    if (same) return text;
  }
}

const std::string kDigits = "0123456789abcdefghijklmnopqrstuvwxyz";

std::string ReferencePackRepeats(std::string line) {
  for (int n = 35; n >= 2; --n) {
    std::string run;
    for (int k = 0; k < n; ++k) run += "^|";
    line = RescanReplace(line, run, std::string("^") + kDigits[static_cast<size_t>(n)]);
  }
  return line;
}

std::string ReferencePackBlanks(std::string line) {
  for (int n = 36; n >= 4; --n)
    line = RescanReplace(line, std::string(static_cast<size_t>(n), '|'),
                         std::string("||^") + kDigits[static_cast<size_t>(n - 2)]);
  return line;
}

std::string Repeat(const std::string& s, int n) {
  std::string out;
  for (int i = 0; i < n; ++i) out += s;
  return out;
}

// --- ColorText ------------------------------------------------------------------

TEST(ColorText, DocumentedExamples) {
  EXPECT_EQ(ColorText(RGB(255, 255, 255)), "FFFFFF");
  EXPECT_EQ(ColorText(RGB(0, 0, 0)), "0");
  EXPECT_EQ(ColorText(RGB(255, 0, 0)), "FF0000");
  EXPECT_EQ(ColorText(RGB(0, 0, 255)), "FF");
  EXPECT_EQ(ColorText(RGB(0, 0, 128)), "80");
  EXPECT_EQ(ColorText(RGB(192, 192, 192)), "C0C0C0");
  EXPECT_EQ(ColorText(RGB(15, 0, 0)), "0");
  EXPECT_EQ(ColorText(RGB(16, 0, 0)), "100000");
}

TEST(ColorText, ValueBelowSixteenGoesOutAsBlack) {
  for (int v = 0; v < 16; ++v) EXPECT_EQ(ColorText(v), "0") << v;
}

TEST(ColorText, OddDigitCountPadsTheLeftoverDigitOfBlue) {
  // 0x12345: red 45, green 23, blue 01.
  EXPECT_EQ(ColorText(0x12345), "452301");
  // 0x345: red 45, green 03, no blue.
  EXPECT_EQ(ColorText(0x345), "450300");
}

TEST(ColorText, GreenOnlyKeepsItsPlace) {
  EXPECT_EQ(ColorText(RGB(0, 255, 0)), "FF00");
  EXPECT_EQ(ColorText(RGB(0, 1, 0)), "100");
}

TEST(ColorText, NegativeValueReadsItsThirtyTwoBitPattern) {
  EXPECT_EQ(ColorText(-1), "FFFFFF");
  // 0xFF123456: the top byte is ignored; red 56, green 34, blue 12.
  EXPECT_EQ(ColorText(static_cast<Colour>(0xFF123456u)), "563412");
}

TEST(ColorText, SixthCharacterIsNeverDropped) {
  EXPECT_EQ(ColorText(RGB(0, 0, 16)), "10");
  EXPECT_EQ(ColorText(RGB(0, 0, 1)), "1");
}

// --- PixelSize, FontIndex ----------------------------------------------------------

TEST(PixelSize, DocumentedExamplesRoundHalfToEven) {
  EXPECT_EQ(PixelSize(10), 13);
  EXPECT_EQ(PixelSize(12), 16);
  EXPECT_EQ(PixelSize(50), 66);   // 66.5
  EXPECT_EQ(PixelSize(150), 200);  // 199.5
  EXPECT_EQ(PixelSize(0), 0);
}

TEST(PixelSize, OverflowGivesZero) {
  EXPECT_EQ(PixelSize(30000), 0);  // 39900 does not fit 16 bits
  EXPECT_EQ(PixelSize(24000), 31920);
}

TEST(FontIndex, WholeNamesInAnyCase) {
  EXPECT_EQ(FontIndex("Arial"), 0);
  EXPECT_EQ(FontIndex("COURIER"), 1);
  EXPECT_EQ(FontIndex("times"), 2);
  EXPECT_EQ(FontIndex("Dialog"), 3);
  EXPECT_EQ(FontIndex("Times New Roman"), 0);
  EXPECT_EQ(FontIndex("Verdana"), 0);
  EXPECT_EQ(FontIndex(""), 0);
}

// --- Field helpers --------------------------------------------------------------------

TEST(TargetField, SelfWithAUrlGivesAnEmptyField) {
  tButton b;
  b.URL = "index.htm";
  b.Target = "_self";
  EXPECT_EQ(TargetField(b), "");
}

TEST(TargetField, NamedTargetWithEmptyUrlGivesAnEmptyField) {
  tButton b;
  b.Target = "main";
  EXPECT_EQ(TargetField(b), "");
}

TEST(TargetField, NamedTargetWithUrlIsEscaped) {
  tButton b;
  b.URL = "a.htm";
  b.Target = "ma|in";
  EXPECT_EQ(TargetField(b), "ma&!3in");
  b.Target = "_SELF";  // only the exact text counts as self
  EXPECT_EQ(TargetField(b), "_SELF");
}

TEST(NameField, AutomaticNameOfThisButtonIsEmptyButOfAnotherIsWritten) {
  tButton b;
  b.sBName = "Button 3";
  EXPECT_EQ(NameField(b, 3), "");
  EXPECT_EQ(NameField(b, 4), "Button&!03");
}

TEST(NameField, BlanksAndSemicolonsGetTheExtraEscapes) {
  tButton b;
  b.sBName = "a;b \"c\"|^";
  EXPECT_EQ(NameField(b, 1), "a&!1b&!0&!2c&!2&!3&!4");
}

TEST(ImageStyleField, ExistingFileGivesItsStyleMissingGivesNine) {
  TestEnv t;
  t.home.write("pic.gif", "GIF89a");
  FileProbe probe(t.fs);
  tButton b;
  b.Image[1] = t.home.file("pic.gif");
  b.ImgStyle[1] = 2;
  b.Image[2] = t.home.file("missing.gif");
  b.ImgStyle[2] = 1;
  b.ImgStyle[3] = 1;  // no picture at all
  EXPECT_EQ(ImageStyleField(b, 1, probe), 2);
  EXPECT_EQ(ImageStyleField(b, 2, probe), 9);
  EXPECT_EQ(ImageStyleField(b, 3, probe), 9);
}

TEST(ImageStyleField, AFolderCountsAsPresent) {
  TestEnv t;
  FileProbe probe(t.fs);
  tButton b;
  b.Image[1] = t.home.path();
  b.ImgStyle[1] = 1;
  EXPECT_EQ(ImageStyleField(b, 1, probe), 1);
}

TEST(Flags, AppletFlagsAlwaysCarryTwo) {
  Project p;
  EXPECT_EQ(AppletFlags(p), 2);
  p.bClip = true;
  p.bPreLoad = true;
  EXPECT_EQ(AppletFlags(p), 7);
  p.bDoScroll = true;
  p.bUnusualRepaint = 5;
  EXPECT_EQ(AppletFlags(p), 31);
}

TEST(Flags, ButtonFlagsHaveOneBitEach) {
  tButton b;
  EXPECT_EQ(ButtonFlags(b), 0);
  b.ShowHand = true;
  EXPECT_EQ(ButtonFlags(b), 1);
  b.Radio = true;
  b.noBackGround[2] = true;
  b.Hidden = 3;
  b.TFrameLight[1] = true;
  b.TFrameLeftToRight[3] = true;
  b.SoundStop[2] = true;
  b.SoundLoop[3] = true;
  EXPECT_EQ(ButtonFlags(b), 1 + 2 + 8 + 32 + 64 + 2048 + 8192 + 131072);
}

// --- AddButtonField ----------------------------------------------------------------------

TEST(AddButtonField, EqualNeighboursOfDifferentMeaningAreMarked) {
  Project p = PlainProject(1);
  TestEnv t;
  FileProbe probe(t.fs);
  ParamBuilder b;
  BuildButtonLine(b, p, 1, probe);
  EXPECT_NE(b.sParamLine.find("value=\"10|^|100|30|"), std::string::npos) << b.sParamLine;
}

TEST(AddButtonField, ThreeZerosGiveZeroAndTwoMarksWhichPackToCaretTwo) {
  ParamBuilder b;
  b.AddButtonField(0);
  b.AddButtonField(0);
  b.AddButtonField(0);
  EXPECT_EQ(b.sParamLine, "0|^|^|");
  EXPECT_EQ(PackRepeats(b.sParamLine), "0|^2");
}

TEST(AddButtonField, EmptyFieldBreaksTheChain) {
  ParamBuilder b;
  b.AddButtonField("Home");
  b.AddButtonField("");
  b.AddButtonField("");
  b.AddButtonField("Home");
  EXPECT_EQ(b.sParamLine, "Home|||Home|");
  EXPECT_EQ(b.sLastField, "Home");
}

TEST(AddButtonField, ComparisonIsCaseSensitive) {
  ParamBuilder b;
  b.AddButtonField("ff");
  b.AddButtonField("FF");
  EXPECT_EQ(b.sParamLine, "ff|FF|");
}

TEST(AddHeaderField, NeverMarksRepeats) {
  ParamBuilder b;
  b.AddHeaderField(0);
  b.AddHeaderField(0);
  b.AddHeaderField("x");
  b.AddHeaderField("x");
  EXPECT_EQ(b.sParamLine, "0|0|x|x|");
}

TEST(AddButtonField, FortyOneRepeatsComeOutAsCaretZCaretSixThenTheNextFieldRightBehind) {
  ParamBuilder b;
  for (int i = 0; i < 42; ++i) b.AddButtonField(0);  // a first one and 41 equal
  b.AddButtonField(9);
  EXPECT_EQ(PackRepeats(b.sParamLine), "0|^z^69|");
}

TEST(AddButtonField, EmptyOverLabelGivesZeroFontColourAndLaterEqualTextIsWrittenAgain) {
  Project p = PlainProject(1);
  tButton& btn = p.button(1);
  btn.Label[1] = "Go";
  btn.Label[3] = "Go";
  for (int s = 1; s <= 3; ++s) btn.FontColor[s] = RGB(255, 0, 0);
  TestEnv t;
  FileProbe probe(t.fs);
  ParamBuilder b;
  BuildButtonLine(b, p, 1, probe);
  auto f = ValueFields(b.sParamLine);
  ASSERT_EQ(f.size(), 91u);
  EXPECT_EQ(f[5], "FF0000");  // field 6: UP label present
  EXPECT_EQ(f[6], "0");   // field 7: OVER label empty
  EXPECT_EQ(f[7], "FF0000");  // field 8
  EXPECT_EQ(f[71], "Go");  // field 72
  EXPECT_EQ(f[72], "");    // field 73
  EXPECT_EQ(f[73], "Go");  // field 74: not a repeat mark after the gap
}

// --- Packing -----------------------------------------------------------------------------------

TEST(PackRepeats, LongestRunFirstAndSingleMarkStays) {
  EXPECT_EQ(PackRepeats("a|^|b|"), "a|^|b|");
  EXPECT_EQ(PackRepeats("a|" + Repeat("^|", 2)), "a|^2");
  EXPECT_EQ(PackRepeats("a|" + Repeat("^|", 35)), "a|^z");
  EXPECT_EQ(PackRepeats("a|" + Repeat("^|", 36)), "a|^z^|");
  EXPECT_EQ(PackRepeats("a|" + Repeat("^|", 41)), "a|^z^6");
  EXPECT_EQ(PackRepeats("a|" + Repeat("^|", 70)), "a|^z^z");
  EXPECT_EQ(PackRepeats("a|" + Repeat("^|", 72) + "b|"), "a|^z^z^2b|");
}

TEST(PackBlanks, RunsOfFourOrMoreBarsAreCountedFromTwo) {
  EXPECT_EQ(PackBlanks("a|||b"), "a|||b");
  EXPECT_EQ(PackBlanks("a||||b"), "a||^2b");
  EXPECT_EQ(PackBlanks("a" + std::string(36, '|')), "a||^y");
  EXPECT_EQ(PackBlanks("a" + std::string(40, '|')), "a||^y||^2");
  EXPECT_EQ(PackBlanks("a" + std::string(37, '|')), "a||^y|");
  EXPECT_EQ(PackBlanks("a" + std::string(16, '|') + "\">"), "a||^e\">");
}

TEST(PackBlanks, ThreeEmptyFieldsMakeFourBarsAndCaretTwoTwoEmptyFieldsStay) {
  ParamBuilder three;
  three.AddButtonField("x");
  for (int i = 0; i < 3; ++i) three.AddButtonField("");
  three.AddButtonField("y");
  EXPECT_EQ(three.sParamLine, "x||||y|");
  EXPECT_EQ(PackBlanks(three.sParamLine), "x||^2y|");

  ParamBuilder two;
  two.AddButtonField("x");
  for (int i = 0; i < 2; ++i) two.AddButtonField("");
  two.AddButtonField("y");
  EXPECT_EQ(PackBlanks(two.sParamLine), "x|||y|");
}

TEST(PackBlanks, FifteenEmptyTrailingFieldsEndTheButtonInCaretE) {
  Project p = PlainProject(1);
  tButton& btn = p.button(1);
  btn.URL = "a.htm";
  btn.Status = "Status text";  // field 76; fields 77 to 91 stay empty
  TestEnv t;
  FileProbe probe(t.fs);
  std::string line = ButtonParamLine(p, 1, probe);
  EXPECT_TRUE(EndsWith(line, "Status text||^e\">")) << line;
}

TEST(PackBlanks, SixteenEmptyTrailingFieldsEndInCaretF) {
  // One more empty field than above: 17 bars.
  Project p = PlainProject(1);
  tButton& btn = p.button(1);
  btn.URL = "a.htm";  // field 75; 76 to 91 stay empty
  TestEnv t;
  FileProbe probe(t.fs);
  std::string line = ButtonParamLine(p, 1, probe);
  EXPECT_TRUE(EndsWith(line, "a.htm||^f\">")) << line;
}

TEST(Packing, OnePassEqualsLongestFirstWholeTextReplacement) {
  std::mt19937 rng(20240229);
  const std::string alphabet = "^|^|^||a0";
  for (int round = 0; round < 1000; ++round) {
    std::string s;
    int len = static_cast<int>(rng() % 200);
    for (int i = 0; i < len; ++i) {
      // Long runs are what the passes are about: sometimes add one.
      if (rng() % 23 == 0) s += Repeat("^|", static_cast<int>(rng() % 90));
      else if (rng() % 23 == 0) s += std::string(rng() % 90, '|');
      else s += alphabet[rng() % alphabet.size()];
    }
    ASSERT_EQ(PackRepeats(s), ReferencePackRepeats(s)) << s;
    ASSERT_EQ(PackBlanks(s), ReferencePackBlanks(s)) << s;
    std::string both = PackRepeats(s);
    ASSERT_EQ(PackBlanks(both), ReferencePackBlanks(ReferencePackRepeats(s))) << s;
  }
}

// --- The p parameter -------------------------------------------------------------------------

TEST(AppletParam, HasFortyOneFieldsAndDefaultsAsDocumented) {
  Project p = PlainProject(2);
  TestEnv t;
  FileProbe probe(t.fs);
  std::string line = AppletParamLine(p, 0, probe);
  EXPECT_EQ(line,
            "<Param Name=\"p\" value=\"FFFFFF|Loading...|FF|FFFFFF|13|1|0|2|0|0|||0|7|0||||0|0|1|1|"
            "0|1|0|0|FFFF00|0|FF|1|300|2500|0|13|0|||0|0|0|0|\">");
  EXPECT_EQ(ValueFields(line).size(), 41u);
}

TEST(AppletParam, FadeColourOnlyWithAFade) {
  Project p = PlainProject(0);
  TestEnv t;
  FileProbe probe(t.fs);
  EXPECT_EQ(ValueFields(AppletParamLine(p, 0, probe))[9], "0");
  p.iFadeStyle = 2;
  auto f = ValueFields(AppletParamLine(p, 0, probe));
  EXPECT_EQ(f[8], "2");
  EXPECT_EQ(f[9], "80");
}

TEST(AppletParam, BackImgStyleTwoForcesOffsetsToZero) {
  Project p = PlainProject(0);
  p.iBgOffsetX = 5;
  p.iBgOffsetY = -7;
  TestEnv t;
  FileProbe probe(t.fs);
  p.BackImgStyle = 1;
  auto f = ValueFields(AppletParamLine(p, 0, probe));
  EXPECT_EQ(f[18], "5");
  EXPECT_EQ(f[19], "-7");
  p.BackImgStyle = 2;
  f = ValueFields(AppletParamLine(p, 0, probe));
  EXPECT_EQ(f[18], "0");
  EXPECT_EQ(f[19], "0");
}

TEST(AppletParam, MissingBackImgStillGivesItsNameAndStyleZero) {
  Project p = PlainProject(0);
  TestEnv t;
  p.BackImg = t.home.file("sub/back ground.jpg");
  p.BackImgStyle = 3;
  FileProbe probe(t.fs);
  auto f = ValueFields(AppletParamLine(p, 0, probe));
  EXPECT_EQ(f[11], "back ground.jpg");
  EXPECT_EQ(f[12], "0");

  TestEnv t2;
  t2.home.write("bg.jpg", "JFIF");
  p.BackImg = t2.home.file("bg.jpg");
  FileProbe probe2(t2.fs);
  f = ValueFields(AppletParamLine(p, 0, probe2));
  EXPECT_EQ(f[11], "bg.jpg");
  EXPECT_EQ(f[12], "3");
}

TEST(AppletParam, ImgPathGainsOneSlashAndEmptyStaysEmpty) {
  Project p = PlainProject(0);
  TestEnv t;
  FileProbe probe(t.fs);
  p.ImgPath = "img";
  p.SndPath = "snd/";
  auto f = ValueFields(AppletParamLine(p, 0, probe));
  EXPECT_EQ(f[35], "img/");
  EXPECT_EQ(f[36], "snd/");
  p.ImgPath = "img/";
  p.SndPath = "";
  f = ValueFields(AppletParamLine(p, 0, probe));
  EXPECT_EQ(f[35], "img/");
  EXPECT_EQ(f[36], "");
}

TEST(AppletParam, BorderFieldsOnlyWithABorderStyle) {
  Project p = PlainProject(0);
  TestEnv t;
  FileProbe probe(t.fs);
  auto f = ValueFields(AppletParamLine(p, 0, probe));
  EXPECT_EQ(f[37], "0");
  EXPECT_EQ(f[38], "0");
  EXPECT_EQ(f[39], "0");
  EXPECT_EQ(f[40], "0");
  p.iABorderStyle = 2;
  f = ValueFields(AppletParamLine(p, 0, probe));
  EXPECT_EQ(f[37], "2");
  EXPECT_EQ(f[38], "10");
  EXPECT_EQ(f[39], "20");
  EXPECT_EQ(f[40], "FF");
}

TEST(AppletParam, ProgramsAndLoadingTextGoOutRaw) {
  Project p = PlainProject(0);
  p.sLoading = "Wait a^bit";
  p.AppletProgramStart = "7 alert(1);";
  p.AppletProgramOUT = "2 b&!0x;";
  TestEnv t;
  FileProbe probe(t.fs);
  auto f = ValueFields(AppletParamLine(p, 3, probe));
  EXPECT_EQ(f[1], "Wait a^bit");
  EXPECT_EQ(f[10], "7 alert(1);");
  EXPECT_EQ(f[17], "2 b&!0x;");
  EXPECT_EQ(f[22], "3");  // iScFirstBtn
}

// --- A button's parameter -------------------------------------------------------------------

TEST(ButtonParam, HasNinetyOneFieldsInTheDocumentedOrder) {
  Project p = PlainProject(1);
  tButton& b = p.button(1);
  b.Hidden = 1;
  for (int s = 1; s <= 3; ++s) {
    b.Label[s] = "L" + std::to_string(s);
    b.FontColor[s] = s;          // below 16: black
    b.BorderStyle[s] = static_cast<i16>(s);
    b.BorderWidth[s] = static_cast<i16>(s - 1);  // UP has no width
    b.BorderColor[s] = RGB(0, 0, 16 * s);
    b.BackColor[s] = RGB(16 * s, 0, 0);
    b.TFrameThick[s] = static_cast<i16>(s);
    b.TFrameColor[s] = RGB(0, 32 * s, 0);
    b.FadeStyle[s] = static_cast<i16>(s);
    b.FadeColor[s] = RGB(0, 0, 48 * s);
    b.FrameThick[s] = static_cast<i16>(s);
    b.FrameColor[s] = RGB(64 * s, 0, 0);
    b.PositionText[s] = s != 2;
    b.LabelPosX[s] = static_cast<i16>(100 + s);
    b.LabelPosY[s] = static_cast<i16>(200 + s);
    b.Font[s] = s == 1 ? "Courier" : "Times";
    b.TFrameShade[s] = static_cast<i16>(300 + s);
    b.FontStyle[s] = static_cast<i16>(400 + s);
    b.ImgX[s] = static_cast<i16>(500 + s);
    b.ImgY[s] = static_cast<i16>(600 + s);
    b.BorderShade[s] = static_cast<i16>(700 + s);
    b.FontSize[s] = static_cast<i16>(12 * s);
    b.Image[s] = "/nowhere/pic" + std::to_string(s) + ".gif";
    b.Snd[s] = "C:\\snd\\s" + std::to_string(s) + ".au";
  }
  b.noBackGround[2] = true;
  b.URL = "page.htm";
  b.Status = "st|at";
  b.Target = "top";
  b.ProgramUP = "1 a;";
  b.ProgramLEAVE = "2 b;";
  b.ProgramOVER = "3 c;";
  b.ProgramDOWN = "4 d;";
  b.ProgramCHECK = "5 e;";
  b.ProgramUNCHECK = "6 f;";
  b.Tip = "ti\"p";
  b.sBName = "my name";

  TestEnv t;
  FileProbe probe(t.fs);
  ParamBuilder pb;
  BuildButtonLine(pb, p, 1, probe);
  auto f = ValueFields(pb.sParamLine);
  ASSERT_EQ(f.size(), 91u);
  const std::vector<std::string> expected = {
      "10", "^", "100", "30", "40",                    // 1-5 (Hidden = 32, noBackGround(2) = 8)
      "0", "^", "^",                                    // 6-8
      "^", "100000", "20", "0", "30", "300000",         // 9-14 (9 repeats 8)
      "2000", "4000", "6000",                           // 15-17
      "30", "60", "90",                                 // 18-20
      "400000", "800000", "C00000",                     // 21-23
      "-1", "0", "-1",                                  // 24-26
      "101", "201", "0", "^", "103", "203",            // 27-32
      "1", "2", "^",                                    // 33-35
      "301", "302", "303", "401", "402", "403",         // 36-41
      "1", "2", "3", "1", "2", "3", "1", "2", "3",      // 42-50
      "501", "601", "502", "602", "503", "603",         // 51-56
      "9", "^", "^",                                    // 57-59
      "1", "2", "3",                                    // 60-62
      "0", "1", "2",                                    // 63-65
      "701", "702", "703",                              // 66-68
      "16", "32", "48",                                 // 69-71
      "L1", "L2", "L3",                                 // 72-74
      "page.htm", "st&!3at", "top",                     // 75-77
      "pic1.gif", "pic2.gif", "pic3.gif",               // 78-80
      "s1.au", "s2.au", "s3.au",                        // 81-83
      "1 a;", "2 b;", "3 c;", "4 d;", "5 e;", "6 f;",   // 84-89
      "ti&!2p", "my&!0name"};                           // 90-91
  ASSERT_EQ(expected.size(), 91u);
  for (size_t k = 0; k < 91; ++k) EXPECT_EQ(f[k], expected[k]) << "field " << k + 1;
}

TEST(ButtonParam, BorderColourAndWidthOnlyWithABorderStyle) {
  Project p = PlainProject(1);
  tButton& b = p.button(1);
  b.Label[3] = "x";
  b.FontColor[3] = RGB(0, 255, 0);  // field 8, so that field 9 cannot be a mark
  b.BorderWidth[1] = 4;             // UP: a width but no style
  b.BorderColor[1] = RGB(255, 255, 255);
  b.BorderStyle[3] = 3;             // field 62, so that field 63 cannot be a mark
  b.BorderWidth[3] = 5;
  TestEnv t;
  FileProbe probe(t.fs);
  ParamBuilder pb;
  BuildButtonLine(pb, p, 1, probe);
  auto f = ValueFields(pb.sParamLine);
  EXPECT_EQ(f[7], "FF00");
  EXPECT_EQ(f[8], "0");   // field 9: no colour without a style
  EXPECT_EQ(f[61], "3");
  EXPECT_EQ(f[62], "0");  // field 63: no width without a style
  EXPECT_EQ(f[64], "5");  // field 65: DOWN has both
}

TEST(ButtonParam, LineBreakMarkerInALabelGoesOutAsItStands) {
  Project p = PlainProject(1);
  p.button(1).Label[1] = "two\\nlines";
  TestEnv t;
  FileProbe probe(t.fs);
  ParamBuilder pb;
  BuildButtonLine(pb, p, 1, probe);
  EXPECT_EQ(ValueFields(pb.sParamLine)[71], "two\\nlines");
}

TEST(ButtonParam, ParameterNameIsThePlainIndex) {
  Project p = PlainProject(12);
  TestEnv t;
  FileProbe probe(t.fs);
  EXPECT_TRUE(StartsWith(ButtonParamLine(p, 12, probe), "<Param Name=\"12\" value=\""));
}

}  // namespace
}  // namespace kp

namespace kp {
namespace {

TEST(ButtonParam, TextFieldsEscapeQuoteBarAndCaretButNotBlanksOrAmpersand) {
  Project p = test::PlainProject(1);
  tButton& b = p.button(1);
  b.Label[1] = "a \"b\" | c ^ d & e";
  b.URL = "x.htm?a=1&b=^";
  b.Image[1] = "/pics/my^pic|.gif";
  test::TestEnv t;
  FileProbe probe(t.fs);
  ParamBuilder pb;
  BuildButtonLine(pb, p, 1, probe);
  auto f = test::ValueFields(pb.sParamLine);
  EXPECT_EQ(f[71], "a &!2b&!2 &!3 c &!4 d & e");
  EXPECT_EQ(f[74], "x.htm?a=1&b=&!4");
  EXPECT_EQ(f[77], "my&!4pic&!3.gif");
}

}  // namespace
}  // namespace kp
