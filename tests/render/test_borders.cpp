// Colour arithmetic and the bevelled borders of buttons and the applet.
#include <gtest/gtest.h>

#include "render/borders.h"
#include "render/colour.h"
#include "tests/render/render_fixture.h"

namespace kp {
namespace {

using test::SceneFixture;

TEST(ColourParts, GetColorPartFollowsTheNumberOfDigits) {
  struct Case {
    const char* hex;
    const char *red, *green, *blue;
  } cases[] = {
      {"", "00", "00", "00"},          {"F", "00", "00", "00"},
      {"AB", "AB", "00", "00"},        {"ABC", "BC", "0A", "00"},
      {"ABCD", "CD", "AB", "00"},      {"ABCDE", "DE", "BC", "0A"},
      {"ABCDEF", "EF", "CD", "AB"},    {"1ABCDEF", "", "", ""},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(GetColorPart(c.hex, "RED"), c.red) << c.hex;
    EXPECT_EQ(GetColorPart(c.hex, "GREEN"), c.green) << c.hex;
    EXPECT_EQ(GetColorPart(c.hex, "BLUE"), c.blue) << c.hex;
  }
}

TEST(ColourParts, PartNameIgnoresCaseAndOtherNamesGiveNothing) {
  EXPECT_EQ(GetColorPart("ABCDEF", "red"), "EF");
  EXPECT_EQ(GetColorPart("ABCDEF", "Green"), "CD");
  EXPECT_EQ(GetColorPart("ABCDEF", "normal"), "");
}

TEST(ColourParts, ColourOfOneHexDigitReadsAsBlack) {
  EXPECT_EQ(ColourHex(15), "F");
  EXPECT_EQ(ColorPart(15, "RED"), 0);
  EXPECT_EQ(ColorPart(16, "RED"), 16);
  const ColourParts c = PartsOf(RGB(1, 2, 3));
  EXPECT_EQ(c.R, 1);
  EXPECT_EQ(c.G, 2);
  EXPECT_EQ(c.B, 3);
}

TEST(ColourParts, NegativeColourHasEightDigitsAndReadsAsBlack) {
  EXPECT_EQ(ColourHex(-1), "FFFFFFFF");
  const ColourParts c = PartsOf(-1);
  EXPECT_EQ(c.R + c.G + c.B, 0);
}

TEST(ShadeColor, DistanceRunsFromWidthTimesShadeDownToShade) {
  EXPECT_EQ(ShadeColor(20, 2, 100, 100, 100, 0, true), RGB(140, 140, 140));
  EXPECT_EQ(ShadeColor(20, 2, 100, 100, 100, 1, true), RGB(120, 120, 120));
  EXPECT_EQ(ShadeColor(20, 2, 100, 100, 100, 0, false), RGB(60, 60, 60));
  EXPECT_EQ(ShadeColor(20, 2, 100, 100, 100, 1, false), RGB(80, 80, 80));
  EXPECT_EQ(ShadeColor(20, 2, 100, 100, 100, -1, true), RGB(160, 160, 160));
}

TEST(ShadeColor, EachPartStopsAt255Or0ByItself) {
  EXPECT_EQ(ShadeColor(10, 2, 250, 10, 128, 0, true), RGB(255, 30, 148));
  EXPECT_EQ(ShadeColor(10, 2, 250, 10, 128, 0, false), RGB(230, 0, 108));
}

TEST(ShadeColor, WidthTimesShadeBeyond16BitsOverflows) {
  EXPECT_FALSE(ShadeColor(200, 200, 0, 0, 0, 0, true).has_value());
  EXPECT_TRUE(ShadeColor(181, 181, 0, 0, 0, 0, true).has_value());
}

constexpr Colour kPaper = RGB(1, 2, 3);

TEST(Draw3DF, RaisedWidth2Shade20OnGrey100GivesRings140And120Over60And80) {
  QImage img = NewBuffer(20, 10, kPaper);
  i16 X = 0, Y = 0;
  ASSERT_TRUE(Draw3DF(img, 1, X, Y, 20, 10, RGB(100, 100, 100), 20, 2, false));
  const Colour outerLight = RGB(140, 140, 140), innerLight = RGB(120, 120, 120);
  const Colour outerDark = RGB(60, 60, 60), innerDark = RGB(80, 80, 80);
  EXPECT_RECT(img, 0, 0, 19, 1, outerLight);  // top
  EXPECT_RECT(img, 0, 0, 1, 9, outerLight);   // left
  EXPECT_RECT(img, 0, 9, 20, 1, outerDark);   // bottom, both corners
  EXPECT_RECT(img, 19, 0, 1, 9, outerDark);   // right, top-right corner
  EXPECT_RECT(img, 1, 1, 17, 1, innerLight);
  EXPECT_RECT(img, 1, 1, 1, 7, innerLight);
  EXPECT_RECT(img, 1, 8, 18, 1, innerDark);
  EXPECT_RECT(img, 18, 1, 1, 7, innerDark);
  EXPECT_RECT(img, 2, 2, 16, 6, kPaper);
}

TEST(Draw3DF, EdgesFollowTheStyleTable) {
  struct Case {
    i16 style;
    Colour topLeft, bottomRight;
  } cases[] = {{1, RGB(110, 110, 110), RGB(90, 90, 90)},
               {2, RGB(90, 90, 90), RGB(110, 110, 110)},
               {3, RGB(110, 110, 110), RGB(110, 110, 110)},
               {4, RGB(90, 90, 90), RGB(90, 90, 90)},
               {7, RGB(110, 110, 110), RGB(110, 110, 110)}};
  for (const Case& c : cases) {
    QImage img = NewBuffer(6, 6, kPaper);
    i16 X = 0, Y = 0;
    Draw3DF(img, c.style, X, Y, 6, 6, RGB(100, 100, 100), 10, 1, false);
    EXPECT_PIXEL(img, 0, 0, c.topLeft) << "style " << c.style;
    EXPECT_PIXEL(img, 5, 5, c.bottomRight) << "style " << c.style;
  }
}

TEST(Draw3DF, ShadeZeroGivesTheBaseColourInEveryStyleButNone) {
  const Colour base = RGB(70, 80, 90);
  for (i16 style = 1; style <= 5; ++style) {
    QImage img = NewBuffer(8, 8, kPaper);
    i16 X = 0, Y = 0;
    Draw3DF(img, style, X, Y, 8, 8, base, 0, 2, false);
    EXPECT_RECT(img, 0, 0, 8, 2, base) << "style " << style;
    EXPECT_RECT(img, 0, 6, 8, 2, base) << "style " << style;
    EXPECT_RECT(img, 2, 2, 4, 4, kPaper) << "style " << style;
  }
  QImage img = NewBuffer(8, 8, kPaper);
  i16 X = 0, Y = 0;
  Draw3DF(img, 0, X, Y, 8, 8, base, 0, 2, false);
  EXPECT_RECT(img, 0, 0, 8, 8, kPaper);
}

TEST(Draw3DF, BorderColour15ShadesAsIfItWereBlack) {
  QImage img = NewBuffer(4, 4, kPaper);
  i16 X = 0, Y = 0;
  Draw3DF(img, 3, X, Y, 4, 4, 15, 10, 1, false);
  EXPECT_PIXEL(img, 0, 0, RGB(10, 10, 10));
  EXPECT_PIXEL(img, 3, 3, RGB(10, 10, 10));
}

TEST(Draw3DF, WidthOverHalfTheSizeCrossesRingsWithoutError) {
  QImage img = NewBuffer(6, 6, kPaper);
  i16 X = 0, Y = 0;
  EXPECT_TRUE(Draw3DF(img, 1, X, Y, 6, 6, RGB(100, 100, 100), 10, 5, false));
  // Ring 4 runs backwards over ring 1's bottom and right edges.
  EXPECT_PIXEL(img, 4, 4, RGB(110, 110, 110));
  EXPECT_PIXEL(img, 3, 3, RGB(120, 120, 120));
  EXPECT_PIXEL(img, 2, 2, RGB(130, 130, 130));
  EXPECT_PIXEL(img, 4, 1, RGB(90, 90, 90));
}

TEST(Draw3DF, OriginFlagZeroesTheCallersPosition) {
  QImage img = NewBuffer(6, 6, kPaper);
  i16 X = 40, Y = 30;
  Draw3DF(img, 4, X, Y, 6, 6, RGB(100, 100, 100), 10, 1, true);
  EXPECT_EQ(X, 0);
  EXPECT_EQ(Y, 0);
  EXPECT_PIXEL(img, 0, 0, RGB(90, 90, 90));
}

TEST(Draw3DF, WidthZeroPaintsNothing) {
  QImage img = NewBuffer(6, 6, kPaper);
  i16 X = 0, Y = 0;
  EXPECT_TRUE(Draw3DF(img, 1, X, Y, 6, 6, RGB(100, 100, 100), 10, 0, false));
  EXPECT_RECT(img, 0, 0, 6, 6, kPaper);
}

TEST(DrawBorder, LiesOnTheSurfacesOwnEdgeWhereverTheButtonStands) {
  Project p = test::SmallProject(200, 100);
  const int i = test::AddButton(p, 50, 30, 20, 10);
  tButton& b = p.button(i);
  b.BorderStyle[1] = 4;
  b.BorderWidth[1] = 1;
  b.BorderShade[1] = 10;
  b.BorderColor[1] = RGB(100, 100, 100);
  SceneFixture f(p);
  f.scene.RedrawButton(i, false, false, false, false);
  EXPECT_PIXEL(f.scene.pButtons(i).img, 0, 0, RGB(90, 90, 90));
  EXPECT_PIXEL(f.scene.pButtons(i).img, 19, 9, RGB(90, 90, 90));
  EXPECT_PIXEL(f.scene.pButtons(i).img, 1, 1, RGB(192, 192, 192));
}

TEST(DrawBorder, AutoColourCopiesTheFaceColourIntoTheRecordAtEachRepaint) {
  Project p = test::SmallProject(100, 50);
  const int i = test::AddButton(p, 0, 0, 20, 10, RGB(100, 100, 100));
  tButton& b = p.button(i);
  b.BorderStyle[1] = 3;
  b.BorderWidth[1] = 1;
  b.BorderShade[1] = 10;
  b.BorderAutoColor[1] = true;
  b.BorderColor[1] = RGB(255, 0, 0);
  SceneFixture f(p);
  f.scene.RedrawButton(i, false, false, false, false);
  EXPECT_EQ(b.BorderColor[1], RGB(100, 100, 100));
  EXPECT_PIXEL(f.scene.pButtons(i).img, 0, 0, RGB(110, 110, 110));
  b.BackColor[1] = RGB(50, 60, 70);
  f.scene.RedrawButton(i, false, false, true, false);
  EXPECT_EQ(b.BorderColor[1], RGB(50, 60, 70));
  EXPECT_PIXEL(f.scene.pButtons(i).img, 0, 0, RGB(60, 70, 80));
  EXPECT_EQ(b.BorderColor[2], 0) << "only the drawn state is written";
}

TEST(DrawBorder, OverflowShowsTheErrorBoxAndCancelSilencesIt) {
  Project p = test::SmallProject(100, 50);
  const int i = test::AddButton(p, 0, 0, 20, 10);
  tButton& b = p.button(i);
  b.BorderStyle[1] = 1;
  b.BorderWidth[1] = 200;
  b.BorderShade[1] = 200;
  SceneFixture f(p);
  f.prompter.answers = {Answer::Cancel};
  f.scene.RedrawButton(i, false, false, false, false);
  ASSERT_EQ(f.prompter.CountMsg(), 1);
  EXPECT_EQ(f.prompter.Last().title, "Error");
  EXPECT_EQ(f.prompter.Last().buttons, Buttons::OKCancel);
  EXPECT_EQ(f.prompter.Last().text,
            "Error on On DrawBorder(1) \r\nOverflow\r\n\r\n"
            "Please save your project to avoid possible data loss!");
  EXPECT_TRUE(f.scene.bNoBorderErrors);
  EXPECT_FALSE(f.scene.bNoLabelErrors);
  f.scene.RedrawButton(i, false, false, true, false);
  EXPECT_EQ(f.prompter.CountMsg(), 1);
  // The face was painted; the border stopped before its first ring.
  EXPECT_PIXEL(f.scene.pButtons(i).img, 0, 0, RGB(192, 192, 192));
}

TEST(DrawBorder, OkKeepsTheMessagesComing) {
  Project p = test::SmallProject(100, 50);
  const int i = test::AddButton(p, 0, 0, 20, 10);
  p.button(i).BorderStyle[1] = 1;
  p.button(i).BorderWidth[1] = 300;
  p.button(i).BorderShade[1] = 300;
  SceneFixture f(p);
  f.scene.RedrawButton(i, false, false, false, false);
  f.scene.RedrawButton(i, false, false, true, false);
  EXPECT_EQ(f.prompter.CountMsg(), 2);
  EXPECT_FALSE(f.scene.bNoBorderErrors);
}

TEST(DrawAppletBorder, LiesAtTheTopLeftOfTheDesignSurfaceInsideTheApplet) {
  Project p = test::SmallProject(100, 60, RGB(255, 255, 255));
  p.iABorderStyle = 4;
  p.iABorderWidth = 2;
  p.iABorderShade = 10;
  p.cABorderColor = RGB(100, 100, 100);
  SceneFixture f(p);
  f.scene.SetDesignSize(120, 80);
  f.scene.DrawBackGround(true, false);
  f.scene.DrawAppletBorder();
  const QImage& d = f.scene.Design().img;
  EXPECT_RECT(d, 0, 0, 99, 1, RGB(80, 80, 80));
  EXPECT_RECT(d, 1, 58, 98, 1, RGB(90, 90, 90));
  EXPECT_RECT(d, 0, 59, 100, 1, RGB(80, 80, 80));
  EXPECT_RECT(d, 100, 0, 20, 80, RGB(255, 255, 255));
  EXPECT_RECT(d, 2, 2, 96, 56, RGB(255, 255, 255));
}

}  // namespace
}  // namespace kp
