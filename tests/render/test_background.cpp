// Gradients, the design surface's background with its repaint cache,
// tiling and the grid.
#include <gtest/gtest.h>

#include "render/fade.h"
#include "tests/render/render_fixture.h"

namespace kp {
namespace {

using test::SceneFixture;

constexpr Colour kWhite = RGB(255, 255, 255);
constexpr Colour kRed = RGB(255, 0, 0);

TEST(Gradient, DUvilichIsTheDifferenceOverTheLines) {
  EXPECT_DOUBLE_EQ(dUvilich(0, 100, 4), 25.0);
  EXPECT_DOUBLE_EQ(dUvilich(10, 10, 5), 0.0);
  EXPECT_DOUBLE_EQ(dUvilich(0, 7, 0), 7.0);
  EXPECT_DOUBLE_EQ(dUvilich(100, 0, 3), -100.0 / 3.0);
}

TEST(Gradient, RunsFromC2TowardsC1AndStopsOneStepShort) {
  QImage img = NewBuffer(3, 5, kWhite);
  Vycvet(img, RGB(100, 0, 0), RGB(0, 0, 100), 0, 0, 3, 4, 2);
  EXPECT_RECT(img, 0, 0, 3, 1, RGB(0, 0, 100));
  EXPECT_RECT(img, 0, 1, 3, 1, RGB(25, 0, 75));
  EXPECT_RECT(img, 0, 2, 3, 1, RGB(50, 0, 50));
  EXPECT_RECT(img, 0, 3, 3, 1, RGB(75, 0, 25));
  EXPECT_RECT(img, 0, 4, 3, 1, kWhite);
}

TEST(Gradient, AChannelHalfWayRoundsToEven) {
  // Blue 16 keeps the hexadecimal text at six digits, so red reads true.
  QImage img = NewBuffer(2, 1, kWhite);
  Vycvet(img, RGB(5, 0, 16), RGB(0, 0, 16), 0, 0, 2, 1, 1);
  // 2.5 rounds to 2.
  EXPECT_PIXEL(img, 1, 0, RGB(2, 0, 16));
  img = NewBuffer(2, 1, kWhite);
  Vycvet(img, RGB(7, 0, 16), RGB(0, 0, 16), 0, 0, 2, 1, 1);
  // 3.5 rounds to 4.
  EXPECT_PIXEL(img, 1, 0, RGB(4, 0, 16));
}

TEST(Gradient, OneLineHasColourC2) {
  QImage img = NewBuffer(3, 3, kWhite);
  Vycvet(img, RGB(200, 0, 0), RGB(0, 200, 0), 1, 0, 1, 3, 1);
  EXPECT_RECT(img, 1, 0, 1, 3, RGB(0, 200, 0));
  EXPECT_RECT(img, 0, 0, 1, 3, kWhite);
  EXPECT_RECT(img, 2, 0, 1, 3, kWhite);
  img = NewBuffer(3, 3, kWhite);
  Vycvet(img, RGB(200, 0, 0), RGB(0, 200, 0), 0, 2, 3, 1, 2);
  EXPECT_RECT(img, 0, 2, 3, 1, RGB(0, 200, 0));
  EXPECT_RECT(img, 0, 0, 3, 2, kWhite);
}

TEST(Gradient, EqualColoursFillTheRectangleWithThatColour) {
  const Colour c = RGB(10, 20, 30);
  for (i16 style = 1; style <= 4; ++style) {
    QImage img = NewBuffer(12, 9, kWhite);
    Fade(img, c, c, 0, 0, 11, 8, style);
    EXPECT_RECT(img, 0, 0, 11, 8, c) << "style " << style;
  }
}

TEST(Gradient, MonoColourAndUnknownStylesPaintNothing) {
  for (i16 style : {0, 5, -1}) {
    QImage img = NewBuffer(4, 4, kWhite);
    Fade(img, kRed, RGB(0, 0, 255), 0, 0, 4, 4, style);
    EXPECT_RECT(img, 0, 0, 4, 4, kWhite) << "style " << style;
  }
}

TEST(Gradient, Width101InStyle3HasHalvesOf50And52LinesAndEndsOnePixelBeyond) {
  QImage img = NewBuffer(110, 2, kWhite);
  const Colour c1 = RGB(200, 0, 0), c2 = RGB(0, 0, 200);
  Fade(img, c1, c2, 0, 0, 101, 2, 3);
  // First half: 50 lines from C2 towards C1, step 4.
  EXPECT_PIXEL(img, 0, 0, c2);
  EXPECT_PIXEL(img, 49, 1, RGB(196, 0, 4));
  // Second half starts at X + 50 with C1 and has 52 lines, step 200/52.
  EXPECT_PIXEL(img, 50, 0, c1);
  EXPECT_PIXEL(img, 51, 0, RGB(196, 0, 4));
  EXPECT_PIXEL(img, 100, 0, RGB(8, 0, 192));
  EXPECT_PIXEL(img, 101, 1, RGB(4, 0, 196));  // outside the 101 pixels
  EXPECT_PIXEL(img, 102, 0, kWhite);
}

TEST(Gradient, Style4SplitsTheHeight) {
  QImage img = NewBuffer(2, 12, kWhite);
  Fade(img, RGB(100, 0, 0), RGB(0, 0, 0), 0, 0, 2, 10, 4);
  EXPECT_PIXEL(img, 0, 0, RGB(0, 0, 0));
  EXPECT_PIXEL(img, 0, 4, RGB(80, 0, 0));
  EXPECT_PIXEL(img, 0, 5, RGB(100, 0, 0));  // round(10/2 + 0) = 5, from C1
  EXPECT_PIXEL(img, 0, 10, RGB(100 - 83, 0, 0));  // line 5 of 6 steps of 100/6
  EXPECT_PIXEL(img, 0, 11, kWhite);
}

// The applet's picture with a red square of 4 x 4 at the offsets (3, 5).
struct PictureBackground : ::testing::Test {
  test::TempDir dir;
  Project p = test::SmallProject(40, 30, kWhite);
  std::string pic = dir.file("red.gif");
  PictureBackground() {
    test::WriteGif(pic, 4, 4, {kRed}, std::vector<int>(16, 0));
    p.BackImg = pic;
    p.iBgOffsetX = 3;
    p.iBgOffsetY = 5;
  }
  QImage Paint(i16 style) {
    p.BackImgStyle = style;
    SceneFixture f(p);
    f.scene.DrawBackGround(true, false);
    return f.scene.Design().img.copy();
  }
};

TEST_F(PictureBackground, ManualHonoursTheOffsets) {
  const QImage d = Paint(1);
  EXPECT_RECT(d, 3, 5, 4, 4, kRed);
  EXPECT_PIXEL(d, 2, 5, kWhite);
  EXPECT_PIXEL(d, 7, 9, kWhite);
}

TEST_F(PictureBackground, CenterIgnoresTheOffsets) {
  const QImage d = Paint(2);
  EXPECT_RECT(d, 18, 13, 4, 4, kRed);
  EXPECT_PIXEL(d, 3, 5, kWhite);
  EXPECT_PIXEL(d, 17, 13, kWhite);
}

TEST_F(PictureBackground, TileRunsRightAndDownFromTheOffsets) {
  const QImage d = Paint(3);
  EXPECT_RECT(d, 3, 5, 37, 25, kRed);
  EXPECT_RECT(d, 0, 0, 3, 30, kWhite);
  EXPECT_RECT(d, 0, 0, 40, 5, kWhite);
}

TEST_F(PictureBackground, StretchFillsTheAppletFromTheOffsets) {
  const QImage d = Paint(4);
  EXPECT_RECT(d, 3, 5, 37, 25, kRed);
  EXPECT_PIXEL(d, 2, 29, kWhite);
  EXPECT_PIXEL(d, 39, 4, kWhite);
}

TEST_F(PictureBackground, TransparentPixelsShowTheFade) {
  test::WriteGif(pic, 2, 1, {kRed, RGB(0, 0, 0)}, {0, 1}, 1);
  p.iFadeStyle = 1;
  p.cFadeColor = RGB(0, 0, 40);
  p.iBgOffsetX = 0;
  p.iBgOffsetY = 0;
  const QImage d = Paint(1);
  EXPECT_PIXEL(d, 0, 0, kRed);
  EXPECT_EQ(Point(d, 1, 0), Point(d, 1, 1)) << "the fade's column";
  EXPECT_NE(Point(d, 1, 0), RGB(0, 0, 0));
}

TEST_F(PictureBackground, SameImageStyleAndSizeNotForcedPaintsOnlyTheGrid) {
  p.BackImgStyle = 1;
  SceneFixture f(p);
  f.scene.DrawBackGround(true, false);
  PSet(f.scene.Design().img, 20, 20, RGB(1, 2, 3));
  f.scene.grid.bShowGrid = true;
  f.scene.DrawBackGround(false, false);
  EXPECT_PIXEL(f.scene.Design().img, 21, 21, kWhite);
  EXPECT_PIXEL(f.scene.Design().img, 20, 20, f.scene.grid.lGridColor);
  EXPECT_PIXEL(f.scene.Design().img, 5, 20, f.scene.grid.lGridColor);
  // Another size is another picture.
  PSet(f.scene.Design().img, 21, 21, RGB(1, 2, 3));
  p.AppletWidth = 39;
  f.scene.DrawBackGround(false, false);
  EXPECT_PIXEL(f.scene.Design().img, 21, 21, kWhite);
}

TEST_F(PictureBackground, UnreadablePictureLeavesAPlainSurfaceQuietly) {
  test::WriteBytes(pic, "not a picture");
  p.iFadeStyle = 1;
  SceneFixture f(p);
  f.scene.DrawBackGround(true, false);
  EXPECT_RECT(f.scene.Design().img, 0, 0, 40, 30, kWhite);
  EXPECT_EQ(f.prompter.shown.size(), 0u);
  EXPECT_EQ(f.scene.sLastBackImg, pic);
  EXPECT_EQ(f.scene.iLastBackWidth, 0) << "the cache keeps the last finished repaint";
}

TEST(Background, EmptyPictureNotForcedRepaintsNothingButTheGrid) {
  Project p = test::SmallProject(40, 30, kWhite);
  SceneFixture f(p);
  f.scene.DrawBackGround(true, false);
  PSet(f.scene.Design().img, 5, 5, RGB(1, 2, 3));
  p.BackGround = RGB(0, 0, 255);
  f.scene.grid.bShowGrid = true;
  f.scene.DrawBackGround(false, false);
  EXPECT_PIXEL(f.scene.Design().img, 5, 5, RGB(1, 2, 3));
  EXPECT_PIXEL(f.scene.Design().img, 7, 7, kWhite);
  EXPECT_PIXEL(f.scene.Design().img, 10, 3, f.scene.grid.lGridColor);
  EXPECT_PIXEL(f.scene.Design().img, 3, 0, f.scene.grid.lGridColor);
}

TEST(Background, FadeInsideAnAppletBorderOf10CoversOnlyTheInnerRectangle) {
  Project p = test::SmallProject(100, 50, kWhite);
  p.iABorderStyle = 1;
  p.iABorderWidth = 10;
  p.iFadeStyle = 1;
  p.cFadeColor = RGB(0, 0, 128);
  SceneFixture f(p);
  f.scene.DrawBackGround(true, false);
  const QImage& d = f.scene.Design().img;
  EXPECT_RECT(d, 0, 0, 100, 10, kWhite);
  EXPECT_RECT(d, 0, 0, 10, 50, kWhite);
  EXPECT_RECT(d, 10, 10, 1, 30, RGB(0, 0, 128));
  EXPECT_RECT(d, 90, 10, 10, 40, kWhite);
  EXPECT_NE(Point(d, 89, 39), kWhite);
  EXPECT_RECT(d, 10, 40, 80, 10, kWhite);
  f.scene.DrawAppletBorder();
  EXPECT_NE(Point(d, 5, 5), kWhite);
  EXPECT_NE(Point(d, 95, 45), kWhite);
}

TEST(Background, GridDotsLieAtZeroToOneHundredInclusive) {
  Project p = test::SmallProject(100, 50, kWhite);
  SceneFixture f(p);
  f.scene.SetDesignSize(110, 60);
  f.scene.grid = GridOptions{true, true, 10, 25, RGB(0, 0, 0)};
  f.scene.DrawBackGround(true, false);
  const QImage& d = f.scene.Design().img;
  for (int x = 0; x <= 100; x += 10)
    for (int y = 0; y <= 50; y += 25) EXPECT_PIXEL(d, x, y, RGB(0, 0, 0));
  EXPECT_PIXEL(d, 5, 0, kWhite);
  EXPECT_PIXEL(d, 110 - 9, 0, kWhite);
  EXPECT_PIXEL(d, 0, 12, kWhite);
  EXPECT_PIXEL(d, 100, 51, kWhite);
}

TEST(Background, GridLinesRunToBothLimitsWithoutTheirEndPoints) {
  Project p = test::SmallProject(100, 50, kWhite);
  SceneFixture f(p);
  f.scene.SetDesignSize(110, 60);
  f.scene.grid = GridOptions{true, false, 10, 25, RGB(0, 0, 0)};
  f.scene.DrawBackGround(true, false);
  const QImage& d = f.scene.Design().img;
  EXPECT_RECT(d, 0, 50, 100, 1, RGB(0, 0, 0));
  EXPECT_RECT(d, 100, 0, 1, 50, RGB(0, 0, 0));
  EXPECT_PIXEL(d, 100, 50, kWhite);
  EXPECT_PIXEL(d, 5, 12, kWhite);
}

// A prompter whose event processing presses Cancel after some tiles.
class CancellingPrompter : public test::ScriptedPrompter {
 public:
  Scene* scene = nullptr;
  int cancelAfter = 3;
  int events = 0;
  int hides = 0;
  void ProcessEvents() override {
    if (++events == cancelAfter && scene) scene->bCancelTile = true;
  }
  void ProgressHide() override { ++hides; }
};

struct TiledScreen : ::testing::Test {
  test::TempDir dir;
  Project p = test::SmallProject(40, 30, kWhite);
  TiledScreen() {
    test::WriteGif(dir.file("t.gif"), 8, 8, {kRed}, std::vector<int>(64, 0));
    p.BackImg = dir.file("t.gif");
    p.BackImgStyle = 3;
  }
};

TEST_F(TiledScreen, ResizingTilesTheScreenOnceWhileTheFadeStyleIs0) {
  SceneFixture f(p);
  f.scene.SetDesignSize(200, 150);
  f.scene.screenWidth = 200;
  f.scene.screenHeight = 150;
  f.scene.RepaintAfterResize();
  EXPECT_TRUE(f.scene.bTiledToScreen);
  EXPECT_FALSE(f.scene.bTiling);
  EXPECT_RECT(f.scene.Design().img, 0, 0, 200, 150, kRed);
  PSet(f.scene.Design().img, 190, 140, RGB(1, 2, 3));
  f.scene.RepaintAfterResize();
  EXPECT_PIXEL(f.scene.Design().img, 190, 140, RGB(1, 2, 3));
  // A larger applet needs no new tiles either: the screen is covered.
  p.AppletWidth = 120;
  f.scene.RepaintAfterResize();
  EXPECT_PIXEL(f.scene.Design().img, 190, 140, RGB(1, 2, 3));
  EXPECT_EQ(f.scene.iLastBackWidth, 120);
  // With a fade the background is painted again each time.
  p.iFadeStyle = 1;
  f.scene.RepaintAfterResize();
  EXPECT_PIXEL(f.scene.Design().img, 190, 140, kRed);
}

TEST_F(TiledScreen, CancelStopsTheTilingAndKeepsTheCache) {
  CancellingPrompter prompter;
  test::FixedMeasure measure;
  Scene scene(p, prompter, measure);
  prompter.scene = &scene;
  scene.SetDesignSize(200, 150);
  scene.screenWidth = 200;
  scene.screenHeight = 150;
  scene.DrawBackGround(true, true);
  EXPECT_EQ(prompter.events, 3);
  EXPECT_FALSE(scene.bTiling);
  EXPECT_FALSE(scene.bTiledToScreen);
  EXPECT_EQ(prompter.hides, 1);
  EXPECT_EQ(scene.iLastBackStyle, 0);
  EXPECT_EQ(scene.sLastTiledImg, "");
  EXPECT_RECT(scene.Design().img, 0, 0, 24, 8, kRed);
  EXPECT_PIXEL(scene.Design().img, 24, 0, kWhite);
}

TEST_F(TiledScreen, WithoutAutoTilingNothingIsPaintedToTheScreen) {
  SceneFixture f(p);
  f.scene.SetDesignSize(100, 100);
  f.scene.bAutoTile = false;
  f.scene.DrawBackGround(true, true);
  EXPECT_RECT(f.scene.Design().img, 0, 0, 100, 100, kWhite);
  EXPECT_FALSE(f.scene.bTiledToScreen);
  EXPECT_EQ(f.scene.iLastBackStyle, 3);
}

TEST_F(TiledScreen, ToTheAppletOnlyTheAppletIsTiled) {
  SceneFixture f(p);
  f.scene.SetDesignSize(100, 100);
  f.scene.DrawBackGround(true, false);
  // Tiles start at every step up to and including the applet's edges.
  EXPECT_RECT(f.scene.Design().img, 0, 0, 48, 32, kRed);
  EXPECT_PIXEL(f.scene.Design().img, 48, 0, kWhite);
  EXPECT_PIXEL(f.scene.Design().img, 0, 32, kWhite);
  EXPECT_FALSE(f.scene.bTiledToScreen);
}

}  // namespace
}  // namespace kp
