// The raster operations, lines and buffers every drawing routine uses.
#include <gtest/gtest.h>

#include "render/raster.h"
#include "tests/render/render_fixture.h"

namespace kp {
namespace {

TEST(Raster, ModelColourBecomesAPixelWithRedInTheHighByte) {
  EXPECT_EQ(ToPixel(RGB(1, 2, 3)), 0xFF010203u);
  EXPECT_EQ(ToColour(0xFF010203u), RGB(1, 2, 3));
  EXPECT_EQ(ToColour(ToPixel(RGB(250, 0, 7))), RGB(250, 0, 7));
}

TEST(Raster, FourOperationsCombineTheColourBits) {
  const Colour d = 0x123456, s = 0x0F0FF0;
  const QImage src = NewBuffer(1, 1, s);
  struct Case {
    Rop rop;
    Colour expected;
  } cases[] = {{Rop::SRCCOPY, s}, {Rop::SRCINVERT, d ^ s}, {Rop::SRCAND, d & s},
               {Rop::SRCPAINT, d | s}};
  for (const Case& c : cases) {
    QImage dst = NewBuffer(1, 1, d);
    BitBlt(dst, 0, 0, 1, 1, src, 0, 0, c.rop);
    EXPECT_PIXEL(dst, 0, 0, c.expected) << "operation " << std::hex << static_cast<unsigned>(c.rop);
    EXPECT_EQ(dst.pixel(0, 0) >> 24, 0xFFu);
  }
}

TEST(Raster, OperationCodesAreThePlatformsCodes) {
  EXPECT_EQ(static_cast<unsigned>(Rop::SRCCOPY), 0xCC0020u);
  EXPECT_EQ(static_cast<unsigned>(Rop::SRCINVERT), 0x660046u);
  EXPECT_EQ(static_cast<unsigned>(Rop::SRCAND), 0x8800C6u);
  EXPECT_EQ(static_cast<unsigned>(Rop::SRCPAINT), 0xEE0086u);
}

QImage Numbered(int w, int h) {
  QImage img = NewBuffer(w, h, 0);
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) PSet(img, x, y, RGB(x, y, 77));
  return img;
}

TEST(Raster, CopyClipsAtTheDestinationsEdges) {
  const QImage src = Numbered(4, 4);
  QImage dst = NewBuffer(3, 3, RGB(9, 9, 9));
  BitBlt(dst, -1, -1, 4, 4, src, 0, 0, Rop::SRCCOPY);
  EXPECT_PIXEL(dst, 0, 0, RGB(1, 1, 77));
  EXPECT_PIXEL(dst, 2, 2, RGB(3, 3, 77));
}

TEST(Raster, CopyFromOutsideTheSourceLeavesTheDestination) {
  const QImage src = Numbered(4, 4);
  QImage dst = NewBuffer(4, 4, RGB(9, 9, 9));
  BitBlt(dst, 0, 0, 4, 4, src, -2, 1, Rop::SRCCOPY);
  EXPECT_RECT(dst, 0, 0, 2, 4, RGB(9, 9, 9));
  EXPECT_PIXEL(dst, 2, 0, RGB(0, 1, 77));
  EXPECT_PIXEL(dst, 3, 2, RGB(1, 3, 77));
  EXPECT_RECT(dst, 2, 3, 2, 1, RGB(9, 9, 9));
}

TEST(Raster, CopyWithinOneBufferReadsThePixelsFromBeforeIt) {
  QImage img = Numbered(4, 1);
  BitBlt(img, 1, 0, 3, 1, img, 0, 0, Rop::SRCCOPY);
  EXPECT_PIXEL(img, 0, 0, RGB(0, 0, 77));
  EXPECT_PIXEL(img, 1, 0, RGB(0, 0, 77));
  EXPECT_PIXEL(img, 2, 0, RGB(1, 0, 77));
  EXPECT_PIXEL(img, 3, 0, RGB(2, 0, 77));
}

TEST(Raster, LineLeavesOutItsEndPointInEitherDirection) {
  const Colour bg = RGB(255, 255, 255), ink = RGB(0, 0, 0);
  QImage img = NewBuffer(8, 8, bg);
  DrawLine(img, 2, 1, 5, 1, ink);
  EXPECT_RECT(img, 2, 1, 3, 1, ink);
  EXPECT_PIXEL(img, 5, 1, bg);
  EXPECT_PIXEL(img, 1, 1, bg);

  img = NewBuffer(8, 8, bg);
  DrawLine(img, 5, 1, 2, 1, ink);
  EXPECT_RECT(img, 3, 1, 3, 1, ink);
  EXPECT_PIXEL(img, 2, 1, bg);

  img = NewBuffer(8, 8, bg);
  DrawLine(img, 3, 6, 3, 2, ink);
  EXPECT_RECT(img, 3, 3, 1, 4, ink);
  EXPECT_PIXEL(img, 3, 2, bg);

  img = NewBuffer(8, 8, bg);
  DrawLine(img, 0, 0, 3, 3, ink);
  EXPECT_PIXEL(img, 0, 0, ink);
  EXPECT_PIXEL(img, 1, 1, ink);
  EXPECT_PIXEL(img, 2, 2, ink);
  EXPECT_PIXEL(img, 3, 3, bg);
}

TEST(Raster, LineOfNoLengthPaintsNothing) {
  QImage img = NewBuffer(3, 3, RGB(255, 255, 255));
  DrawLine(img, 1, 1, 1, 1, RGB(0, 0, 0));
  EXPECT_RECT(img, 0, 0, 3, 3, RGB(255, 255, 255));
}

TEST(Raster, PixelWriteOutsideTheBufferDoesNothing) {
  QImage img = NewBuffer(2, 2, RGB(1, 1, 1));
  PSet(img, -1, 0, RGB(2, 2, 2));
  PSet(img, 2, 1, RGB(2, 2, 2));
  PSet(img, 1, 1, RGB(3, 3, 3));
  EXPECT_RECT(img, 0, 0, 2, 1, RGB(1, 1, 1));
  EXPECT_PIXEL(img, 1, 1, RGB(3, 3, 3));
  EXPECT_EQ(Point(img, 5, 5), -1);
}

TEST(Raster, ScaledCopyTakesTheSourcePixelUnderEachCentre) {
  const QImage src = Numbered(4, 2);
  QImage up = NewBuffer(8, 1, 0);
  StretchBlt(up, 0, 0, 8, 1, src, 0, 0, 4, 1, Rop::SRCCOPY);
  for (int x = 0; x < 8; ++x) EXPECT_PIXEL(up, x, 0, RGB(x / 2, 0, 77));
  QImage down = NewBuffer(2, 1, 0);
  StretchBlt(down, 0, 0, 2, 1, src, 0, 0, 4, 1, Rop::SRCCOPY);
  EXPECT_PIXEL(down, 0, 0, RGB(1, 0, 77));
  EXPECT_PIXEL(down, 1, 0, RGB(3, 0, 77));
}

TEST(Raster, ScaledCopyCombinesAndClips) {
  const QImage src = NewBuffer(2, 2, RGB(0, 255, 0));
  QImage dst = NewBuffer(4, 4, RGB(255, 0, 255));
  StretchBlt(dst, -2, -2, 4, 4, src, 0, 0, 2, 2, Rop::SRCPAINT);
  EXPECT_RECT(dst, 0, 0, 2, 2, RGB(255, 255, 255));
  EXPECT_PIXEL(dst, 2, 2, RGB(255, 0, 255));
}

TEST(Raster, SurfaceResizeKeepsItsPixelsAndFillsTheRestWithTheBackColour) {
  Surface s;
  s.backColor = RGB(10, 20, 30);
  s.Resize(2, 2);
  EXPECT_RECT(s.img, 0, 0, 2, 2, RGB(10, 20, 30));
  PSet(s.img, 1, 1, RGB(1, 2, 3));
  s.backColor = RGB(40, 50, 60);
  s.Resize(3, 3);
  EXPECT_PIXEL(s.img, 1, 1, RGB(1, 2, 3));
  EXPECT_PIXEL(s.img, 0, 0, RGB(10, 20, 30));
  EXPECT_PIXEL(s.img, 2, 2, RGB(40, 50, 60));
  s.SetBackColor(RGB(7, 7, 7));
  EXPECT_RECT(s.img, 0, 0, 3, 3, RGB(7, 7, 7));
}

}  // namespace
}  // namespace kp
