// Button faces: colour, fade, picture, transparency and the buttons that
// follow a repaint.
#include <gtest/gtest.h>

#include "render/picture.h"
#include "tests/render/render_fixture.h"

namespace kp {
namespace {

using test::SceneFixture;

constexpr Colour kWhite = RGB(255, 255, 255);
constexpr Colour kGreen = RGB(0, 128, 0);
constexpr Colour kRed = RGB(255, 0, 0);
constexpr Colour kBlue = RGB(0, 0, 255);

TEST(Transparent, OverAFlatBackgroundShowsBackGroundWhateverBackColor) {
  Project p = test::SmallProject(100, 60, kGreen);
  const int i = test::AddButton(p, 10, 10, 30, 20, kRed);
  p.button(i).noBackGround[1] = true;
  SceneFixture f(p);
  f.scene.RepaintAll();
  // Even a design surface that says otherwise is not read.
  FillRect(f.scene.Design().img, 0, 0, 100, 60, kBlue);
  f.scene.RedrawButton(i, false, false, true, false);
  EXPECT_RECT(f.scene.pButtons(i).img, 0, 0, 30, 20, kGreen);
}

TEST(Transparent, OverAFadeShowsTheDesignSurfaceIncludingGridLines) {
  Project p = test::SmallProject(100, 60, kWhite);
  p.iFadeStyle = 1;
  p.cFadeColor = RGB(0, 0, 128);
  const int i = test::AddButton(p, 15, 12, 30, 20, kRed);
  p.button(i).noBackGround[1] = true;
  SceneFixture f(p);
  f.scene.grid.bShowGrid = true;
  f.scene.RepaintAll();
  const QImage& d = f.scene.Design().img;
  const QImage& face = f.scene.pButtons(i).img;
  for (int y = 0; y < 20; ++y)
    for (int x = 0; x < 30; ++x) ASSERT_PIXEL(face, x, y, Point(d, x + 15, y + 12));
  EXPECT_PIXEL(face, 5, 3, f.scene.grid.lGridColor);  // the lines x = 20 and y = 20
  EXPECT_PIXEL(face, 3, 8, f.scene.grid.lGridColor);
  EXPECT_NE(Point(face, 3, 3), Point(face, 24, 3)) << "the fade runs under the button";
}

TEST(Transparent, WithABackgroundPictureShowsTheDesignSurface) {
  test::TempDir dir;
  test::WriteGif(dir.file("bg.gif"), 2, 2, {kBlue, kRed}, {0, 1, 1, 0});
  Project p = test::SmallProject(100, 60, kWhite);
  p.BackImg = dir.file("bg.gif");
  p.BackImgStyle = 3;
  const int i = test::AddButton(p, 15, 12, 30, 20, kGreen);
  p.button(i).noBackGround[1] = true;
  SceneFixture f(p);
  f.scene.RepaintAll();
  EXPECT_PIXEL(f.scene.pButtons(i).img, 0, 0, kRed);  // (15, 12): odd column, even row
  EXPECT_PIXEL(f.scene.pButtons(i).img, 1, 0, kBlue);
  EXPECT_PIXEL(f.scene.pButtons(i).img, 1, 1, kRed);
}

TEST(Transparent, TheFadeOfATransparentStateIsNotPainted) {
  Project p = test::SmallProject(100, 60, kGreen);
  const int i = test::AddButton(p, 10, 10, 30, 20, kRed);
  p.button(i).noBackGround[1] = true;
  p.button(i).FadeStyle[1] = 1;
  p.button(i).FadeColor[1] = kBlue;
  SceneFixture f(p);
  f.scene.RepaintAll();
  EXPECT_RECT(f.scene.pButtons(i).img, 0, 0, 30, 20, kGreen);
}

TEST(Transparent, UpperOneShowsTheLowerOnesLabelAndFollowsItsRedrawAbove) {
  Project p = test::SmallProject(100, 60, kWhite);
  const int lower = test::AddButton(p, 10, 10, 40, 20);
  const int upper = test::AddButton(p, 10, 10, 40, 20);
  for (int i : {lower, upper}) p.button(i).noBackGround[1] = true;
  p.button(lower).Label[1] = "A";
  SceneFixture f(p);
  f.scene.RepaintAll();
  // x = round(20 - 3) = 17; y = round(10 + 16/3) = 15, top 3.
  const QImage& top = f.scene.pButtons(upper).img;
  EXPECT_PIXEL(top, 17, 3, kRed);
  p.button(lower).Label[1] = "BCD";  // x = round(20 - 9) = 11
  f.scene.RedrawButton(lower, false, false, true, false);
  EXPECT_PIXEL(top, 17, 3, kRed) << "without bRedrawAbove the upper button is stale";
  EXPECT_PIXEL(top, 11, 3, kWhite);
  f.scene.RedrawButton(lower, false, false, true, true);
  EXPECT_RECT(top, 11, 3, 3, 1, kRed);
  EXPECT_PIXEL(top, 17, 3, kWhite);
}

TEST(Opaque, RaisedBorderOfWidth3FadesOnlyTheInnerRectangle) {
  Project p = test::SmallProject(100, 60, kWhite);
  const int i = test::AddButton(p, 0, 0, 30, 20, RGB(200, 200, 200));
  tButton& b = p.button(i);
  b.FadeStyle[1] = 1;
  b.FadeColor[1] = RGB(0, 0, 100);
  b.BorderStyle[1] = 1;
  b.BorderWidth[1] = 3;
  SceneFixture f(p);
  f.scene.pButtons(i).Resize(30, 20);
  f.scene.DrawPix(i);
  const QImage& face = f.scene.pButtons(i).img;
  EXPECT_RECT(face, 0, 0, 30, 3, RGB(200, 200, 200));
  EXPECT_RECT(face, 0, 0, 3, 20, RGB(200, 200, 200));
  EXPECT_RECT(face, 3, 3, 1, 14, RGB(0, 0, 100));
  EXPECT_NE(Point(face, 26, 16), RGB(200, 200, 200));
  EXPECT_RECT(face, 27, 0, 3, 20, RGB(200, 200, 200));
  EXPECT_RECT(face, 0, 17, 30, 3, RGB(200, 200, 200));
}

TEST(Opaque, WithoutABorderTheFadeCoversTheButtonWhateverTheWidth) {
  Project p = test::SmallProject(100, 60, kWhite);
  const int i = test::AddButton(p, 0, 0, 30, 20, RGB(200, 200, 200));
  tButton& b = p.button(i);
  b.FadeStyle[1] = 2;
  b.FadeColor[1] = RGB(0, 0, 100);
  b.BorderStyle[1] = 0;
  b.BorderWidth[1] = 3;
  SceneFixture f(p);
  f.scene.RedrawButton(i, false, false, false, false);
  EXPECT_RECT(f.scene.pButtons(i).img, 0, 0, 30, 1, RGB(0, 0, 100));
  EXPECT_NE(Point(f.scene.pButtons(i).img, 0, 19), RGB(200, 200, 200));
}

// A button of W x H with a picture whose column k has colour RGB(k, 7, 9).
struct FacePicture : ::testing::Test {
  test::TempDir dir;
  Project p = test::SmallProject(200, 100, kWhite);
  std::string path = dir.file("pic.gif");
  void WriteColumns(int w, int h, int transparentIndex = -1) {
    std::vector<Colour> palette;
    for (int k = 0; k < w; ++k) palette.push_back(RGB(k, 7, 9));
    std::vector<int> indices;
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x) indices.push_back(x);
    test::WriteGif(path, w, h, palette, indices, transparentIndex);
  }
  const QImage& Face(int w, int h, i16 style) {
    const int i = test::AddButton(p, 0, 0, w, h, kGreen);
    p.button(i).Image[1] = path;
    p.button(i).ImgStyle[1] = style;
    f = std::make_unique<SceneFixture>(p);
    f->scene.RedrawButton(i, false, false, false, false);
    return f->scene.pButtons(i).img;
  }
  std::unique_ptr<SceneFixture> f;
};

TEST_F(FacePicture, WiderThanTheButtonCentredShowsItsMiddleClippedOnBothSides) {
  WriteColumns(40, 4);
  const QImage& face = Face(20, 10, 0);
  // x = round(10 - 20) = -10, y = round(5 - 2) = 3.
  EXPECT_PIXEL(face, 0, 3, RGB(10, 7, 9));
  EXPECT_PIXEL(face, 19, 6, RGB(29, 7, 9));
  EXPECT_RECT(face, 0, 0, 20, 3, kGreen);
  EXPECT_RECT(face, 0, 7, 20, 3, kGreen);
}

TEST_F(FacePicture, OddCentreRoundsHalfToEvenNotDown) {
  WriteColumns(6, 2);
  // W = 21: x = round(10.5 - 3) = round(7.5) = 8.
  const QImage& face = Face(21, 4, 0);
  EXPECT_PIXEL(face, 7, 1, kGreen);
  EXPECT_PIXEL(face, 8, 1, RGB(0, 7, 9));
}

TEST_F(FacePicture, OddCentreRoundsHalfToEvenNotUp) {
  WriteColumns(7, 3);
  // W = 20: x = round(10 - 3.5) = round(6.5) = 6; H = 8: y = round(4 - 1.5) = 2.
  const QImage& face = Face(20, 8, 0);
  EXPECT_PIXEL(face, 6, 2, RGB(0, 7, 9));
  EXPECT_PIXEL(face, 12, 4, RGB(6, 7, 9));
  EXPECT_PIXEL(face, 13, 2, kGreen);
  EXPECT_PIXEL(face, 6, 1, kGreen);
}

TEST_F(FacePicture, ManualPlacesItAtImgXImgY) {
  WriteColumns(3, 3);
  const int i = test::AddButton(p, 0, 0, 20, 10, kGreen);
  p.button(i).Image[1] = path;
  p.button(i).ImgStyle[1] = 1;
  p.button(i).ImgX[1] = -1;
  p.button(i).ImgY[1] = 8;
  SceneFixture fx(p);
  fx.scene.RedrawButton(i, false, false, false, false);
  EXPECT_PIXEL(fx.scene.pButtons(i).img, 0, 8, RGB(1, 7, 9));
  EXPECT_PIXEL(fx.scene.pButtons(i).img, 1, 9, RGB(2, 7, 9));
  EXPECT_PIXEL(fx.scene.pButtons(i).img, 2, 9, kGreen);
  EXPECT_PIXEL(fx.scene.pButtons(i).img, 0, 7, kGreen);
}

TEST_F(FacePicture, StretchScalesItToTheWholeSurface) {
  WriteColumns(2, 1);
  const QImage& face = Face(8, 4, 2);
  EXPECT_RECT(face, 0, 0, 4, 4, RGB(0, 7, 9));
  EXPECT_RECT(face, 4, 0, 4, 4, RGB(1, 7, 9));
}

TEST_F(FacePicture, UnknownStyleDoesNotPaintIt) {
  WriteColumns(2, 2);
  EXPECT_RECT(Face(8, 4, 3), 0, 0, 8, 4, kGreen);
}

TEST_F(FacePicture, WithoutTransparencyTheMaskIsBlackAndItReplacesTheFace) {
  test::WriteGif(path, 4, 4, {RGB(0, 0, 0), kBlue}, std::vector<int>(16, 1));
  PictureCache cache;
  const Picture* pic = cache.Load(path);
  ASSERT_NE(pic, nullptr);
  EXPECT_RECT(pic->mask, 0, 0, 4, 4, RGB(0, 0, 0));
  const int i = test::AddButton(p, 0, 0, 10, 10, kGreen);
  p.button(i).Image[1] = path;
  p.button(i).FadeStyle[1] = 1;
  p.button(i).FadeColor[1] = kRed;
  SceneFixture fx(p);
  fx.scene.RedrawButton(i, false, false, false, false);
  EXPECT_RECT(fx.scene.pButtons(i).img, 3, 3, 4, 4, kBlue);
  EXPECT_PIXEL(fx.scene.pButtons(i).img, 0, 0, kRed);
}

TEST_F(FacePicture, TransparentPixelsKeepTheFace) {
  test::WriteGif(path, 2, 1, {kBlue, RGB(9, 9, 9)}, {0, 1}, 1);
  const QImage& face = Face(2, 1, 1);
  EXPECT_PIXEL(face, 0, 0, kBlue);
  EXPECT_PIXEL(face, 1, 0, kGreen);
}

TEST_F(FacePicture, AFileThatCannotBeReadLeavesTheFaceWithoutMessage) {
  test::WriteBytes(path, "GIF89a but not really");
  const QImage& face = Face(10, 6, 0);
  EXPECT_RECT(face, 0, 0, 10, 6, kGreen);
  EXPECT_EQ(f->prompter.shown.size(), 0u);
  EXPECT_EQ(p.button(1).Image[1], path);
}

TEST_F(FacePicture, AMissingFileLeavesTheFaceWithoutMessage) {
  path = dir.file("none.gif");
  EXPECT_RECT(Face(10, 6, 0), 0, 0, 10, 6, kGreen);
  EXPECT_EQ(f->prompter.shown.size(), 0u);
}

TEST_F(FacePicture, AChangedFileIsReadAgain) {
  test::WriteGif(path, 1, 1, {kBlue}, {0});
  EXPECT_PIXEL(Face(3, 3, 0), 1, 1, kBlue);
  test::WriteGif(path, 3, 1, {kRed}, {0, 0, 0});
  f->scene.RedrawButton(1, false, false, true, false);
  EXPECT_RECT(f->scene.pButtons(1).img, 0, 1, 3, 1, kRed);
}

TEST_F(FacePicture, JpegPicturesAreRead) {
  QImage jpeg(4, 4, QImage::Format_RGB32);
  jpeg.fill(QColor(0, 0, 255));
  ASSERT_TRUE(jpeg.save(QString::fromStdString(dir.file("p.jpg")), "JPEG", 100));
  path = dir.file("p.jpg");
  const QImage& face = Face(4, 4, 0);
  const Colour c = Point(face, 1, 1);
  EXPECT_LE(c & 0xFF, 8);
  EXPECT_GE((c >> 16) & 0xFF, 240);
}

TEST(PictureMask, EqualsThePictureOverBlackXorThePictureOverWhite) {
  QImage src(3, 1, QImage::Format_ARGB32);
  src.setPixel(0, 0, qRgba(10, 20, 30, 255));
  src.setPixel(1, 0, qRgba(10, 20, 30, 0));
  src.setPixel(2, 0, qRgba(200, 100, 50, 128));
  const Picture pic = MakePicture(src);
  EXPECT_PIXEL(pic.obj, 0, 0, RGB(10, 20, 30));
  EXPECT_PIXEL(pic.mask, 0, 0, RGB(0, 0, 0));
  EXPECT_PIXEL(pic.obj, 1, 0, RGB(0, 0, 0));
  EXPECT_PIXEL(pic.mask, 1, 0, RGB(255, 255, 255));
  auto over = [](int c, int a, int bg) { return (c * a + bg * (255 - a) + 127) / 255; };
  EXPECT_PIXEL(pic.obj, 2, 0, RGB(over(200, 128, 0), over(100, 128, 0), over(50, 128, 0)));
  EXPECT_PIXEL(pic.mask, 2, 0,
               RGB(over(200, 128, 0) ^ over(200, 128, 255), over(100, 128, 0) ^ over(100, 128, 255),
                   over(50, 128, 0) ^ over(50, 128, 255)));
}

TEST(Face, AStateNameThatIsNoStateOnlyClearsTheSurface) {
  Project p = test::SmallProject(100, 60, kWhite);
  const int i = test::AddButton(p, 0, 0, 10, 30, kRed);
  p.button(i).Label[1] = "A";
  p.button(i).FontColor[1] = kBlue;
  SceneFixture f(p);
  f.scene.RedrawButton(i, false, false, false, false);
  ASSERT_PIXEL(f.scene.pButtons(i).img, 2, 8, kBlue);
  p.sState = "LEFT";
  f.scene.RedrawButton(i, false, false, true, false);
  EXPECT_RECT(f.scene.pButtons(i).img, 0, 0, 10, 30, kRed) << "the present back colour";
}

TEST(Cover, TouchingRectanglesDoNotOverlap) {
  Project p = test::SmallProject(100, 60);
  const int a = test::AddButton(p, 0, 0, 10, 10);
  const int right = test::AddButton(p, 10, 0, 10, 10);
  const int below = test::AddButton(p, 0, 10, 10, 10);
  const int corner = test::AddButton(p, 10, 10, 10, 10);
  const int inside = test::AddButton(p, 9, 9, 10, 10);
  SceneFixture f(p);
  f.scene.RepaintAll();
  EXPECT_FALSE(f.scene.DoCover(a, right));
  EXPECT_FALSE(f.scene.DoCover(a, below));
  EXPECT_FALSE(f.scene.DoCover(a, corner));
  EXPECT_TRUE(f.scene.DoCover(a, inside));
  EXPECT_TRUE(f.scene.DoCover(inside, a));
  EXPECT_TRUE(f.scene.DoCover(corner, inside));
}

TEST(Cover, CoveredButtonsAreCopiedInAscendingOrderHiddenOrNot) {
  Project p = test::SmallProject(100, 60, kWhite);
  test::AddButton(p, 0, 0, 20, 20, kRed);
  const int two = test::AddButton(p, 10, 0, 20, 20, kBlue);
  p.button(two).Hidden = 1;
  const int three = test::AddButton(p, 5, 5, 30, 10);
  p.button(three).noBackGround[1] = true;
  SceneFixture f(p);
  f.scene.RepaintAll();
  const QImage& face = f.scene.pButtons(three).img;
  EXPECT_RECT(face, 0, 0, 5, 10, kRed);
  EXPECT_RECT(face, 5, 0, 20, 10, kBlue);
  EXPECT_RECT(face, 25, 0, 5, 10, kWhite);
}

TEST(Cover, RedrawAboveReachesOnlyTransparentButtonsOverlappingTheRepaintedOne) {
  Project p = test::SmallProject(100, 60, kWhite);
  const int one = test::AddButton(p, 0, 0, 20, 20, kRed);
  const int two = test::AddButton(p, 10, 0, 20, 20);
  const int three = test::AddButton(p, 20, 0, 20, 20);
  const int four = test::AddButton(p, 0, 30, 20, 20, kGreen);
  for (int i : {two, three}) p.button(i).noBackGround[1] = true;
  SceneFixture f(p);
  f.scene.RepaintAll();
  EXPECT_PIXEL(f.scene.pButtons(two).img, 0, 0, kRed);
  EXPECT_PIXEL(f.scene.pButtons(three).img, 2, 3, kWhite);
  // Two gets a label where three overlaps it; one changes colour.
  tButton& b2 = p.button(two);
  b2.Label[1] = "A";
  b2.PositionText[1] = true;
  b2.LabelPosX[1] = 12;
  b2.LabelPosY[1] = 15;
  b2.FontColor[1] = kBlue;
  p.button(one).BackColor[1] = kBlue;
  f.scene.RedrawButton(one, false, false, true, true);
  EXPECT_PIXEL(f.scene.pButtons(two).img, 0, 0, kBlue);
  EXPECT_PIXEL(f.scene.pButtons(two).img, 12, 3, kBlue);
  EXPECT_PIXEL(f.scene.pButtons(three).img, 2, 3, kWhite) << "three overlaps only two";
  EXPECT_PIXEL(f.scene.pButtons(four).img, 0, 0, kGreen);
  f.scene.RedrawButton(two, false, false, true, true);
  EXPECT_PIXEL(f.scene.pButtons(three).img, 2, 3, kBlue);
}

TEST(Cover, UpdateTransparentButtonsFollowsTheDesignSurfaceWhenReady) {
  Project p = test::SmallProject(100, 60, kWhite);
  p.iFadeStyle = 1;
  const int opaque = test::AddButton(p, 0, 0, 10, 10, kRed);
  const int clear = test::AddButton(p, 20, 0, 10, 10);
  p.button(clear).noBackGround[1] = true;
  SceneFixture f(p);
  f.scene.RepaintAll();
  FillRect(f.scene.Design().img, 0, 0, 100, 60, kBlue);
  p.bReady = false;
  f.scene.UpdateTransparentBtns(0);
  EXPECT_NE(Point(f.scene.pButtons(clear).img, 0, 0), kBlue);
  p.bReady = true;
  f.scene.UpdateTransparentBtns(opaque);
  EXPECT_NE(Point(f.scene.pButtons(clear).img, 0, 0), kBlue);
  f.scene.UpdateTransparentBtns(clear);
  EXPECT_RECT(f.scene.pButtons(clear).img, 0, 0, 10, 10, kBlue);
  FillRect(f.scene.Design().img, 0, 0, 100, 60, kGreen);
  f.scene.UpdateTransparentBtns(0);
  EXPECT_RECT(f.scene.pButtons(clear).img, 0, 0, 10, 10, kGreen);
  EXPECT_RECT(f.scene.pButtons(opaque).img, 0, 0, 10, 10, kRed);
}

TEST(Cover, AnOpaqueButtonDraggedOverATransparentOneShowsInItAfterRedrawAbove) {
  Project p = test::SmallProject(100, 60, kWhite);
  const int dragged = test::AddButton(p, 0, 0, 10, 10, kRed);
  const int clear = test::AddButton(p, 30, 0, 20, 20);
  p.button(clear).noBackGround[1] = true;
  SceneFixture f(p);
  f.scene.RepaintAll();
  EXPECT_RECT(f.scene.pButtons(clear).img, 0, 0, 20, 20, kWhite);
  // A drag step moves the surface and the record, then repaints above.
  f.scene.pButtons(dragged).Left = 25;
  p.button(dragged).x = 25;
  f.scene.RedrawTransparentAbove(dragged);
  EXPECT_RECT(f.scene.pButtons(clear).img, 0, 0, 5, 10, kRed);
  EXPECT_PIXEL(f.scene.pButtons(clear).img, 5, 0, kWhite);
}

// A design window with two selected buttons.
class TwoSelected : public DesignHooks {
 public:
  int SelectedCount() override { return 2; }
  bool IsSelected(int i) override { return i == 1; }
  void HideSizers() override { ++hidden; }
  void MoveSizer(int i) override { sizer = i; }
  void MoveLabelPositioner(int i) override { positioner = i; }
  int hidden = 0, sizer = 0, positioner = 0;
};

TEST(MultiSelector, ASelectedButtonOfSeveralGetsFourMarks) {
  Project p = test::SmallProject(100, 60, kWhite);
  const int i = test::AddButton(p, 0, 0, 40, 30, kGreen);
  const int other = test::AddButton(p, 50, 0, 40, 30, kGreen);
  test::ScriptedPrompter prompter;
  test::FixedMeasure measure;
  TwoSelected hooks;
  Scene scene(p, prompter, measure, &hooks);
  scene.RedrawButton(i, true, true, false, false);
  scene.RedrawButton(other, false, false, false, false);
  const QImage& face = scene.pButtons(i).img;
  const Colour black = RGB(0, 0, 0);
  // Top: corners (23, 1) and (17, 7).
  EXPECT_RECT(face, 17, 1, 7, 1, black);
  EXPECT_RECT(face, 17, 7, 7, 1, black);
  EXPECT_RECT(face, 18, 2, 5, 5, kWhite);
  EXPECT_PIXEL(face, 16, 4, kGreen);
  // Bottom: (23, 23) and (17, 29).
  EXPECT_RECT(face, 17, 29, 7, 1, black);
  EXPECT_RECT(face, 18, 24, 5, 5, kWhite);
  // Right: (39, 18) and (33, 12); left: (1, 18) and (7, 12).
  EXPECT_RECT(face, 39, 12, 1, 7, black);
  EXPECT_RECT(face, 34, 13, 5, 5, kWhite);
  EXPECT_RECT(face, 1, 12, 1, 7, black);
  EXPECT_RECT(face, 2, 13, 5, 5, kWhite);
  EXPECT_PIXEL(face, 0, 15, kGreen);
  EXPECT_EQ(hooks.hidden, 1);
  EXPECT_EQ(hooks.sizer, i);
  EXPECT_EQ(hooks.positioner, i);
  EXPECT_RECT(scene.pButtons(other).img, 0, 0, 40, 30, kGreen);
}

TEST(RedrawButton, PlacesTheSurfaceFromTheRecordUnlessTheMoveIsSkipped) {
  Project p = test::SmallProject(100, 60, kWhite);
  const int i = test::AddButton(p, 5, 6, 20, 10, kRed);
  SceneFixture f(p);
  f.scene.RedrawButton(i, false, false, false, false);
  EXPECT_EQ(f.scene.pButtons(i).Left, 5);
  EXPECT_EQ(f.scene.pButtons(i).Top, 6);
  EXPECT_EQ(f.scene.pButtons(i).Width(), 20);
  p.button(i).x = 50;
  p.button(i).Width = 30;
  f.scene.RedrawButton(i, false, false, true, false);
  EXPECT_EQ(f.scene.pButtons(i).Left, 5);
  EXPECT_EQ(f.scene.pButtons(i).Width(), 20);
  f.scene.RedrawButton(i, false, false, false, false);
  EXPECT_EQ(f.scene.pButtons(i).Left, 50);
  EXPECT_RECT(f.scene.pButtons(i).img, 0, 0, 30, 10, kRed);
  EXPECT_FALSE(f.scene.bMovingBtn);
}

TEST(RedrawButton, ComposeStacksHigherNumbersOnTop) {
  Project p = test::SmallProject(60, 40, kWhite);
  test::AddButton(p, 0, 0, 20, 20, kRed);
  test::AddButton(p, 10, 10, 20, 20, kBlue);
  SceneFixture f(p);
  f.scene.RepaintAll();
  const QImage out = f.scene.ComposeApplet();
  EXPECT_PIXEL(out, 5, 5, kRed);
  EXPECT_PIXEL(out, 15, 15, kBlue);
  EXPECT_PIXEL(out, 35, 35, kWhite);
  EXPECT_EQ(out.format(), QImage::Format_RGB32);
}

TEST(Surfaces, FollowTheButtonListWhenButtonsAreRemovedOrExchanged) {
  Project p = test::SmallProject(60, 40, kWhite);
  test::AddButton(p, 0, 0, 10, 10, kRed);
  test::AddButton(p, 20, 0, 10, 10, kGreen);
  test::AddButton(p, 40, 0, 10, 10, kBlue);
  SceneFixture f(p);
  for (int i = 1; i <= 3; ++i) f.scene.LoadButton(i);
  EXPECT_PIXEL(f.scene.pButtons(2).img, 0, 0, kGreen);
  EXPECT_EQ(f.scene.pButtons(2).Left, 20);
  f.scene.SwapButtons(1, 3);
  EXPECT_PIXEL(f.scene.pButtons(1).img, 0, 0, kBlue);
  EXPECT_PIXEL(f.scene.pButtons(3).img, 0, 0, kRed);
  f.scene.RemoveButton(1);
  EXPECT_PIXEL(f.scene.pButtons(1).img, 0, 0, kGreen);
  EXPECT_PIXEL(f.scene.pButtons(2).img, 0, 0, kRed);
  EXPECT_FALSE(f.scene.HasSurface(3));
  f.scene.ClearButtons();
  EXPECT_FALSE(f.scene.HasSurface(1));
}

TEST(Surfaces, RefreshRepaintsTheBackgroundAndTheTransparentButtons) {
  Project p = test::SmallProject(60, 40, kWhite);
  p.iFadeStyle = 2;
  p.cFadeColor = kBlue;
  const int i = test::AddButton(p, 10, 10, 10, 10, kRed);
  p.button(i).noBackGround[1] = true;
  SceneFixture f(p);
  f.scene.RepaintAll();
  const Colour under = Point(f.scene.Design().img, 10, 10);
  FillRect(f.scene.Design().img, 0, 0, 60, 40, kGreen);
  f.scene.UpdateTransparentBtns(0);
  EXPECT_PIXEL(f.scene.pButtons(i).img, 0, 0, kGreen);
  f.scene.Refresh();
  EXPECT_PIXEL(f.scene.Design().img, 10, 10, under);
  EXPECT_PIXEL(f.scene.pButtons(i).img, 0, 0, under);
}

}  // namespace
}  // namespace kp
