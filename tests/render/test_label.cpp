// Label lines, their places, the text border and the prints, measured by
// a text measure with the metrics of the worked examples.
#include <gtest/gtest.h>

#include <QFontDatabase>
#include <cmath>
#include <random>

#include "render/colour.h"
#include "tests/render/render_fixture.h"

namespace kp {
namespace {

using test::SceneFixture;

constexpr Colour kWhite = RGB(255, 255, 255);
constexpr Colour kInk = RGB(255, 0, 0);

int CountOf(const QImage& img, Colour c) {
  int n = 0;
  for (int y = 0; y < img.height(); ++y)
    for (int x = 0; x < img.width(); ++x) n += Point(img, x, y) == c;
  return n;
}

// One button of 60 x 40 with a white face and a red label.
struct Label : ::testing::Test {
  Project p = test::SmallProject(100, 60);
  int i = test::AddButton(p, 0, 0, 60, 40, kWhite);
  tButton& b = p.button(i);
  std::unique_ptr<SceneFixture> f;
  Label() {
    for (int s = 1; s <= 3; ++s) b.FontColor[s] = kInk;
  }
  SceneFixture& Draw(const std::string& state = "UP", double textHeight = 16) {
    p.sState = state;
    if (!f) f = std::make_unique<SceneFixture>(p);
    f->fixed.height = textHeight;
    f->scene.RedrawButton(i, false, false, false, false);
    return *f;
  }
  const QImage& Face() { return f->scene.pButtons(i).img; }
};

TEST_F(Label, TwoCentredLinesWithTextHeight16StandAt12And28) {
  b.Label[1] = "A\\nB";
  Draw();
  // x = round(30 - 6/2); each print's top is its y less 3/4 of 16.
  EXPECT_PIXEL(Face(), 27, 0, kInk);
  EXPECT_PIXEL(Face(), 27, 16, kInk);
  EXPECT_EQ(CountOf(Face(), kInk), 2);
  EXPECT_EQ(b.LabelPosX[1], 27);
  EXPECT_EQ(b.LabelPosY[1], 12);
}

TEST_F(Label, OneLineWithTextHeight15HasY25AndItsTopAt13_75) {
  b.Label[1] = "A";
  Draw("UP", 15);
  EXPECT_EQ(b.LabelPosY[1], 25);
  // The top 25 - 11.25 = 13.75 lands on row 14.
  EXPECT_PIXEL(Face(), 27, 14, kInk);
  EXPECT_EQ(CountOf(Face(), kInk), 1);
}

TEST_F(Label, DownStateCentredIsOnePixelRightAndDownAndStoresXWithTheDescentYWithout) {
  b.Label[1] = b.Label[3] = "A";
  Draw("UP");
  EXPECT_PIXEL(Face(), 27, 13, kInk);
  Draw("DOWN");
  EXPECT_PIXEL(Face(), 28, 14, kInk);
  EXPECT_EQ(CountOf(Face(), kInk), 1);
  EXPECT_EQ(b.LabelPosX[1], 27);
  EXPECT_EQ(b.LabelPosY[1], 25);
  EXPECT_EQ(b.LabelPosX[3], 28);
  EXPECT_EQ(b.LabelPosY[3], 25);
}

TEST_F(Label, ManualPositionInTheDownStateHasNoDescent) {
  p.iDescentX = 3;
  p.iDescentY = 4;
  b.Label[3] = "A\\nB";
  b.PositionText[3] = true;
  b.LabelPosX[3] = 10;
  b.LabelPosY[3] = 20;
  Draw("DOWN");
  EXPECT_PIXEL(Face(), 10, 8, kInk);
  EXPECT_PIXEL(Face(), 10, 24, kInk);
  EXPECT_EQ(CountOf(Face(), kInk), 2);
  EXPECT_EQ(b.LabelPosX[3], 10);
  EXPECT_EQ(b.LabelPosY[3], 20);
}

TEST_F(Label, ThickZeroDrawsTheLineOnceWithoutABorder) {
  b.Label[1] = "A";
  b.TFrameShade[1] = 10;
  b.TFrameColor[1] = RGB(100, 100, 100);
  SceneFixture& fx = Draw();
  EXPECT_EQ(fx.scene.prints, 1);
  EXPECT_EQ(CountOf(Face(), kWhite), 60 * 40 - 1);
}

TEST_F(Label, ALineWithABorderOfThickTCostsTheDocumentedPrints) {
  b.Label[1] = "A";
  b.TFrameThick[1] = 1;
  EXPECT_EQ(Draw().scene.prints, 1 + 2 * 3 + 3 * 3);
  f->scene.prints = 0;
  b.TFrameThick[1] = 9;
  EXPECT_EQ(Draw().scene.prints, 1 + 10 * 19 + 11 * 19);
}

TEST_F(Label, TopDownBorderShadesRowsAndTheSecondPassStaysOnTop) {
  b.Label[1] = "A";
  b.TFrameThick[1] = 2;
  b.TFrameShade[1] = 10;
  b.TFrameColor[1] = RGB(100, 100, 100);
  b.TFrameLight[1] = true;
  Draw();
  // y = 25, so the print of row yy has its top at yy - 12, columns 25..29.
  auto grey = [](int v) { return RGB(v, v, v); };
  EXPECT_RECT(Face(), 25, 11, 5, 1, grey(130));  // yy = 23, first pass n = -1
  EXPECT_RECT(Face(), 25, 12, 5, 1, grey(100));  // yy = 24, second pass n = 2
  EXPECT_RECT(Face(), 25, 13, 2, 1, grey(110));  // yy = 25, second pass n = 1
  EXPECT_PIXEL(Face(), 27, 13, kInk);            // the line itself on top
  EXPECT_RECT(Face(), 28, 13, 2, 1, grey(110));
  EXPECT_RECT(Face(), 25, 14, 5, 1, grey(120));
  EXPECT_RECT(Face(), 25, 15, 5, 1, grey(130));
  EXPECT_EQ(CountOf(Face(), kWhite), 60 * 40 - 25);
}

TEST_F(Label, DarkBorderShadesBelowTheColour) {
  b.Label[1] = "A";
  b.TFrameThick[1] = 2;
  b.TFrameShade[1] = 10;
  b.TFrameColor[1] = RGB(100, 100, 100);
  b.TFrameLight[1] = false;
  Draw();
  EXPECT_RECT(Face(), 25, 11, 5, 1, RGB(70, 70, 70));
  EXPECT_RECT(Face(), 25, 12, 5, 1, RGB(100, 100, 100));
}

TEST_F(Label, LeftToRightBorderShadesColumnsFromTheLeft) {
  b.Label[1] = "A";
  b.TFrameThick[1] = 2;
  b.TFrameShade[1] = 10;
  b.TFrameColor[1] = RGB(100, 100, 100);
  b.TFrameLight[1] = true;
  b.TFrameLeftToRight[1] = true;
  Draw();
  const int shades[5] = {120, 110, 100, 90, 80};
  for (int k = 0; k < 5; ++k) {
    const Colour c = RGB(shades[k], shades[k], shades[k]);
    EXPECT_RECT(Face(), 25 + k, 11, 1, 2, c) << "column " << 25 + k;
    EXPECT_RECT(Face(), 25 + k, 14, 1, 2, c) << "column " << 25 + k;
  }
  EXPECT_PIXEL(Face(), 27, 13, kInk);
}

TEST_F(Label, CourierIsDrawnAsCourierNewAndTheRecordKeepsCourier) {
  b.Label[1] = "A";
  b.Font[1] = "Courier";
  b.TFrameThick[1] = 1;
  SceneFixture& fx = Draw();
  ASSERT_FALSE(fx.fixed.fontsAsked.empty());
  for (const FontSpec& font : fx.fixed.fontsAsked) EXPECT_EQ(font.name, "Courier New");
  EXPECT_EQ(b.Font[1], "Courier");
}

TEST_F(Label, FontStyleGivesBoldAndItalic) {
  b.Label[1] = "A";
  const bool bold[4] = {false, true, false, true}, italic[4] = {false, false, true, true};
  for (i16 style = 0; style <= 3; ++style) {
    b.FontStyle[1] = style;
    SceneFixture& fx = Draw();
    EXPECT_EQ(fx.fixed.fontsAsked.back().bold, bold[style]) << style;
    EXPECT_EQ(fx.fixed.fontsAsked.back().italic, italic[style]) << style;
    EXPECT_EQ(fx.fixed.fontsAsked.back().size, 10);
    EXPECT_EQ(fx.fixed.fontsAsked.back().name, "Arial");
  }
}

TEST_F(Label, NbspIsDrawnAsABlankAndTheRecordStaysUnchanged) {
  b.Label[1] = "A&nbspB";
  SceneFixture& fx = Draw();
  ASSERT_FALSE(fx.fixed.printedTexts.empty());
  EXPECT_EQ(fx.fixed.printedTexts.back(), "A B");
  // Centred on the stored text's width: round(30 - 7 * 6 / 2) = 9.
  EXPECT_PIXEL(Face(), 9, 13, kInk);
  EXPECT_PIXEL(Face(), 10, 13, kWhite);
  EXPECT_PIXEL(Face(), 11, 13, kInk);
  EXPECT_EQ(b.Label[1], "A&nbspB");
}

TEST_F(Label, ALabelWithoutATokenIsOneLine) {
  b.Label[1] = "AB";
  SceneFixture& fx = Draw();
  EXPECT_EQ(fx.scene.prints, 1);
  EXPECT_EQ(b.LabelPosY[1], 25);
  EXPECT_PIXEL(Face(), 24, 13, kInk);
  EXPECT_PIXEL(Face(), 25, 13, kInk);
}

TEST_F(Label, ALabelEndingInTheTokenHasAnEmptyLastLine) {
  b.Label[1] = "A\\n";
  Draw();
  // Placed as two lines: y = round(20 - 16 * 2 / 4) = 12.
  EXPECT_EQ(b.LabelPosY[1], 12);
  EXPECT_PIXEL(Face(), 27, 0, kInk);
  EXPECT_EQ(CountOf(Face(), kInk), 1);
}

TEST_F(Label, EmptyLabelIsOneEmptyLine) {
  b.Label[1] = "";
  Draw();
  EXPECT_EQ(b.LabelPosX[1], 30);
  EXPECT_EQ(b.LabelPosY[1], 25);
  EXPECT_EQ(CountOf(Face(), kWhite), 60 * 40);
}

TEST_F(Label, EachCentredLineIsCentredByItself) {
  b.Label[1] = "A\\nABC";
  Draw();
  EXPECT_PIXEL(Face(), 27, 0, kInk);
  EXPECT_RECT(Face(), 21, 16, 3, 1, kInk);
}

TEST_F(Label, OverflowShowsTheLabelErrorBoxAndCancelSilencesIt) {
  b.Label[1] = "A\\nB";
  b.PositionText[1] = true;
  b.LabelPosY[1] = 32760;
  b.BorderStyle[1] = 4;
  b.BorderWidth[1] = 1;
  b.BorderShade[1] = 10;
  b.BorderColor[1] = RGB(100, 100, 100);
  p.sState = "UP";
  f = std::make_unique<SceneFixture>(p);
  f->prompter.answers = {Answer::Cancel};
  f->scene.RedrawButton(i, false, false, false, false);
  ASSERT_EQ(f->prompter.CountMsg(), 1);
  EXPECT_EQ(f->prompter.Last().title, "Error");
  EXPECT_EQ(f->prompter.Last().buttons, Buttons::OKCancel);
  EXPECT_EQ(f->prompter.Last().text,
            "Error on On DrawLabel(1) \r\nOverflow\r\n\r\n"
            "Please save your project to avoid possible data loss!");
  EXPECT_TRUE(f->scene.bNoLabelErrors);
  EXPECT_FALSE(f->scene.bNoBorderErrors);
  // The repaint goes on with the border.
  EXPECT_PIXEL(Face(), 0, 0, RGB(90, 90, 90));
  f->scene.RedrawButton(i, false, false, true, false);
  EXPECT_EQ(f->prompter.CountMsg(), 1);
}

TEST_F(Label, TextBorderShadeOverflowIsALabelError) {
  b.Label[1] = "A";
  b.TFrameThick[1] = 200;
  b.TFrameShade[1] = 200;
  SceneFixture& fx = Draw();
  EXPECT_EQ(fx.prompter.CountMsg(), 1);
  EXPECT_EQ(fx.prompter.Last().text.substr(0, 25), "Error on On DrawLabel(1) ");
}

TEST(LabelText, DisplayTextTurnsTheEscapesIntoCharacters) {
  EXPECT_EQ(LabelDisplayText("a&!0b&!1c&!2d&!3e&!4f&nbspg"), "a b;c\"d|e^f g");
}

TEST(LabelText, TenPointsAre13PixelsAt96DotsAnInch) {
  EXPECT_EQ(PixelSizeOf(10), 13);
  EXPECT_EQ(PixelSizeOf(9), 12);
  EXPECT_EQ(PixelSizeOf(11), 15);
  EXPECT_EQ(PixelSizeOf(12), 16);
  EXPECT_EQ(PixelSizeOf(8), 11);
}

TEST(LabelText, FontNamesResolveToTheirMetricTwins) {
  if (!QFontDatabase::families().contains("Liberation Sans"))
    GTEST_SKIP() << "the Liberation fonts are not installed";
  QtTextMeasure m;
  EXPECT_EQ(m.ActualFamily({"Arial", 10}), "Liberation Sans");
  EXPECT_EQ(m.ActualFamily({"Courier New", 10}), "Liberation Mono");
  EXPECT_EQ(m.ActualFamily({"Times New Roman", 10}), "Liberation Serif");
  EXPECT_EQ(ResolveFontFamily("Dialog"), "Arial");
  EXPECT_EQ(m.ActualFamily({"Dialog", 10}), "Liberation Sans");
}

TEST(LabelText, QtMeasureGivesFractionalSizesAndTwoLevelGlyphs) {
  QtTextMeasure m;
  const FontSpec font{"Arial", 10, true, false};
  const double w = m.TextWidth(font, "Home");
  EXPECT_GT(w, 20.0);
  EXPECT_LT(w, 50.0);
  EXPECT_DOUBLE_EQ(m.TextWidth(font, ""), 0.0);
  const double h = m.TextHeight(font, "x");
  EXPECT_GT(h, 12.0);
  EXPECT_LT(h, 20.0);
  EXPECT_DOUBLE_EQ(m.TextHeight(font, "Wg"), h);
  const GlyphMask& g = m.Glyphs(font, "Home");
  EXPECT_FALSE(g.empty());
  EXPECT_GE(g.originY, 0);
  EXPECT_TRUE(m.Glyphs(font, "").empty());
  EXPECT_TRUE(m.Glyphs(font, "   ").empty());
}

// The text border as its loops print it, one print after the other, with
// the glyph pixels of the measure: what the stamped border must equal.
void ReferenceBorder(QImage& img, TextMeasure& m, const FontSpec& font, const std::string& s,
                     int X, int Y, int T, Colour color, bool light, i16 shade, bool ltr) {
  const float TH = static_cast<float>(m.TextHeight(font, s));
  const GlyphMask g = m.Glyphs(font, s);
  const ColourParts c = PartsOf(color);
  auto print = [&](int xx, int yy, Colour col) {
    const int top = static_cast<int>(std::nearbyint(static_cast<float>(yy) - (TH / 2 + TH) / 2));
    for (int gy = 0; gy < g.height; ++gy)
      for (int gx = 0; gx < g.width; ++gx)
        if (g.At(gx, gy)) PSet(img, xx + g.originX + gx, top + g.originY + gy, col);
  };
  auto shadeOf = [&](int n) {
    return *ShadeColor(shade, static_cast<i16>(T), c.R, c.G, c.B, static_cast<i16>(n), light);
  };
  Colour fore = 0;
  auto row = [&](int yy, int& n) {
    if (!ltr) fore = shadeOf(n++);
    else n = 0;
    for (int xx = X - T; xx <= X + T; ++xx) {
      if (ltr) fore = shadeOf(n++);
      print(xx, yy, fore);
    }
  };
  int n = -1;
  for (int yy = Y - T; yy <= Y; ++yy) row(yy, n);
  n = -1;
  for (int yy = Y + T; yy >= Y - 1; --yy) row(yy, n);
}

TEST(TextBorder, StampedOnceEqualsEveryPrintInTurn) {
  QtTextMeasure measure;
  for (bool ltr : {false, true}) {
    for (int X : {-3, 20, 70}) {
      Project p = test::SmallProject(100, 60);
      const int i = test::AddButton(p, 0, 0, 80, 40, kWhite);
      SceneFixture f(p, &measure);
      Surface& surface = f.scene.pButtons(i);
      surface.Resize(80, 40);
      surface.SetBackColor(kWhite);
      f.scene.drawTFrame(i, surface, "W&nbspg", static_cast<i16>(X), 24, 3, RGB(40, 90, 160),
                         true, 12, ltr, "Arial", 12, true, true);
      QImage expected = NewBuffer(80, 40, kWhite);
      ReferenceBorder(expected, measure, {"Arial", 12, true, true}, "W g", X, 24, 3,
                      RGB(40, 90, 160), true, 12, ltr);
      EXPECT_TRUE(test::SamePixels(surface.img, expected)) << "LeftToRight " << ltr << " X " << X;
      EXPECT_NE(CountOf(surface.img, kWhite), 80 * 40);
    }
  }
}

TEST(TextBorder, StampingClipsAndKeepsTheLastPrintOnTop) {
  std::mt19937 rng(7);
  GlyphMask g;
  g.Allocate(70, 5);  // wider than one word
  g.originX = -2;
  g.originY = 1;
  for (int y = 0; y < 5; ++y)
    for (int x = 0; x < 70; ++x)
      if (rng() % 3 == 0) g.Set(x, y);
  std::vector<Stamp> stamps;
  for (int k = 0; k < 60; ++k)
    stamps.push_back({static_cast<int>(rng() % 140) - 70, static_cast<int>(rng() % 30) - 8,
                      static_cast<Colour>(rng() % 0xFFFFFF)});
  QImage stamped = NewBuffer(90, 20, kWhite), printed = NewBuffer(90, 20, kWhite);
  StampGlyphs(stamped, g, stamps);
  for (const Stamp& s : stamps)
    for (int y = 0; y < g.height; ++y)
      for (int x = 0; x < g.width; ++x)
        if (g.At(x, y)) PSet(printed, s.x + g.originX + x, s.y + g.originY + y, s.colour);
  EXPECT_TRUE(test::SamePixels(stamped, printed));
}

}  // namespace
}  // namespace kp
