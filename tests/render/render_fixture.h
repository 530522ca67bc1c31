// Fixtures of the drawing tests: a text measure with fixed metrics, a GIF
// writer for pictures with known pixels, small projects, pixel checks.
#pragma once

#include <gtest/gtest.h>

#include <QImage>
#include <functional>
#include <string>
#include <vector>

#include "core/model.h"
#include "render/raster.h"
#include "render/scene.h"
#include "render/text.h"
#include "tests/support/test_env.h"

namespace kp::test {

// Every line is `height` high and `charWidth` a character wide. Its glyphs
// mark the text cell: one pixel in the top row for every character that is
// not a blank, so a print at (x, top) paints (x + k, top) for character k.
class FixedMeasure : public TextMeasure {
 public:
  double height = 16;
  double charWidth = 6;
  std::vector<FontSpec> fontsAsked;
  std::vector<std::string> printedTexts;  // display texts whose glyphs were asked

  double TextWidth(const FontSpec& font, const std::string& text) override;
  double TextHeight(const FontSpec& font, const std::string& text) override;
  const GlyphMask& Glyphs(const FontSpec& font, const std::string& text) override;

 private:
  GlyphMask mask_;
};

// A GIF file of w x h palette indices; transparentIndex -1 for none.
void WriteGif(const std::string& path, int w, int h, const std::vector<Colour>& palette,
              const std::vector<int>& indices, int transparentIndex = -1);

// A project with the documented defaults, the given applet size and no
// buttons.
Project SmallProject(int appletW, int appletH, Colour background = RGB(255, 255, 255));
// A plain button (no border, fade, picture or text border; font Arial
// 10) in all three states, added on top; returns its number.
int AddButton(Project& p, int x, int y, int w, int h, Colour face = RGB(192, 192, 192));

// A scene over a project, with a scripted prompter and a measure of its
// own; the design surface has the applet's size unless told.
struct SceneFixture {
  explicit SceneFixture(Project& project, TextMeasure* measure = nullptr);
  Project& p;
  ScriptedPrompter prompter;
  FixedMeasure fixed;
  Scene scene;
};

std::string ColourText(Colour c);

::testing::AssertionResult PixelIs(const QImage& img, int x, int y, Colour expected);
::testing::AssertionResult RectIs(const QImage& img, int x, int y, int w, int h, Colour expected);
// Two pictures of the same size with the same pixels.
::testing::AssertionResult SamePixels(const QImage& actual, const QImage& expected);

}  // namespace kp::test

#define EXPECT_PIXEL(img, x, y, colour) EXPECT_TRUE(::kp::test::PixelIs((img), (x), (y), (colour)))
#define ASSERT_PIXEL(img, x, y, colour) ASSERT_TRUE(::kp::test::PixelIs((img), (x), (y), (colour)))
#define EXPECT_RECT(img, x, y, w, h, colour) \
  EXPECT_TRUE(::kp::test::RectIs((img), (x), (y), (w), (h), (colour)))
