// Drawing within the memory: glyph work follows what can show on the
// surface, not the font size, and a surface that cannot be had ends its
// drawing with a message instead of a crash.
#include <gtest/gtest.h>

#include <QImage>
#include <chrono>
#include <climits>
#include <filesystem>

#include "project/project_file.h"
#include "tests/render/render_fixture.h"

namespace kp::test {
namespace {

bool Bit(const GlyphMask& g, long long cx, long long cy) {
  const long long x = cx - g.originX, y = cy - g.originY;
  if (x < 0 || y < 0 || x >= g.width || y >= g.height) return false;
  return g.At(static_cast<int>(x), static_cast<int>(y));
}

::testing::AssertionResult SameMask(const GlyphMask& a, const GlyphMask& b) {
  if (a.width != b.width || a.height != b.height || a.originX != b.originX ||
      a.originY != b.originY)
    return ::testing::AssertionFailure()
           << "boxes differ: " << a.width << "x" << a.height << "@" << a.originX << ","
           << a.originY << " against " << b.width << "x" << b.height << "@" << b.originX << ","
           << b.originY;
  for (int y = 0; y < a.height; ++y)
    for (int x = 0; x < a.width; ++x)
      if (a.At(x, y) != b.At(x, y))
        return ::testing::AssertionFailure() << "bit (" << x << "," << y << ") differs";
  return ::testing::AssertionSuccess();
}

const CellReach kEverywhere{-1000000, -1000000, 1000000, 1000000};

TEST(GlyphBands, LinesDrawnByBandsEqualLinesDrawnWhole) {
  QtTextMeasure whole;
  whole.wholeScratchPixels = LLONG_MAX;
  QtTextMeasure banded;
  banded.wholeScratchPixels = 0;
  banded.bandPixels = 20000;  // many bands for every size below
  for (i16 size : {8, 10, 24, 72, 150}) {
    for (int style = 0; style < 4; ++style) {
      const FontSpec font{"Arial", size, style == 1 || style == 3, style >= 2};
      for (const char* text : {"Home", "Wg|^\"", "a b;c", "\xC4pfel"}) {
        SCOPED_TRACE(std::to_string(size) + " pt, style " + std::to_string(style) + ", " + text);
        const GlyphMask expected = whole.Glyphs(font, text);
        ASSERT_FALSE(expected.empty());
        EXPECT_TRUE(SameMask(banded.Glyphs(font, text, kEverywhere), expected));
      }
    }
  }
}

TEST(GlyphBands, AReachKeepsExactlyTheGlyphPixelsInsideIt) {
  QtTextMeasure whole;
  whole.wholeScratchPixels = LLONG_MAX;
  QtTextMeasure banded;
  banded.wholeScratchPixels = 0;
  banded.bandPixels = 5000;
  const FontSpec font{"Arial", 120, true, false};
  const GlyphMask all = whole.Glyphs(font, "Wide");
  const CellReach reach{37, 51, 140, 97};
  const GlyphMask part = banded.Glyphs(font, "Wide", reach);
  int inside = 0;
  for (long long y = reach.y0 - 5; y < reach.y1 + 5; ++y) {
    for (long long x = reach.x0 - 5; x < reach.x1 + 5; ++x) {
      const bool in = x >= reach.x0 && x < reach.x1 && y >= reach.y0 && y < reach.y1;
      if (in) {
        ASSERT_EQ(Bit(part, x, y), Bit(all, x, y)) << x << "," << y;
        inside += Bit(all, x, y);
      } else {
        ASSERT_FALSE(Bit(part, x, y)) << x << "," << y;
      }
    }
  }
  EXPECT_GT(inside, 100);  // the reach does cross the letters
  // The mask is no larger than the reach.
  EXPECT_LE(part.width, reach.x1 - reach.x0);
  EXPECT_LE(part.height, reach.y1 - reach.y0);
}

TEST(GlyphBands, AnOrdinaryLineIsDrawnWholeWhateverTheReach) {
  QtTextMeasure m;
  const FontSpec font{"Arial", 10, false, false};
  const GlyphMask& a = m.Glyphs(font, "Home", CellReach{0, 0, 2, 2});
  EXPECT_EQ(&a, &m.Glyphs(font, "Home"));  // the kept whole line
}

// A button with a label in a font size of its own, and a text border.
Project LabelProject(i16 fontSize, int w, int h, i16 thick, const std::string& label = "Wg\\nHome") {
  Project p = SmallProject(w + 20, h + 20);
  const int i = AddButton(p, 10, 10, w, h, RGB(30, 60, 90));
  tButton& b = p.button(i);
  for (int s = 1; s <= 3; ++s) {
    b.Label[s] = label;
    b.FontSize[s] = fontSize;
    b.FontColor[s] = RGB(250, 240, 10);
    b.TFrameThick[s] = thick;
    b.TFrameColor[s] = RGB(200, 0, 0);
    b.TFrameShade[s] = 10;
  }
  p.sState = "UP";
  return p;
}

TEST(GlyphBands, ALabelDrawnByBandsHasTheSamePixels) {
  QtTextMeasure whole;
  whole.wholeScratchPixels = LLONG_MAX;
  QtTextMeasure banded;
  banded.wholeScratchPixels = 0;
  banded.bandPixels = 30000;
  for (i16 size : {12, 60, 140}) {
    Project a = LabelProject(size, 260, 120, 3);
    Project b = LabelProject(size, 260, 120, 3);
    SceneFixture fa(a, &whole), fb(b, &banded);
    fa.scene.RedrawButton(1, false, false, false, false);
    fb.scene.RedrawButton(1, false, false, false, false);
    EXPECT_TRUE(SamePixels(fb.scene.pButtons(1).img, fa.scene.pButtons(1).img)) << size;
    EXPECT_EQ(fb.scene.prints, fa.scene.prints);
    EXPECT_TRUE(fa.prompter.shown.empty());
    EXPECT_TRUE(fb.prompter.shown.empty());
  }
}

TEST(GlyphBands, AHugeFontOnASmallButtonDrawsWhatShowsAtOnce) {
  // 3000 pt is 4000 pixels: drawn whole, its scratch picture would take
  // over 400 MB; drawn within the button's reach it takes a few.
  QtTextMeasure measure;
  Project p = LabelProject(3000, 300, 200, 2, "I");
  SceneFixture f(p, &measure);
  const auto start = std::chrono::steady_clock::now();
  f.scene.RedrawButton(1, false, false, false, false);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
  for (const Shown& m : f.prompter.shown) ADD_FAILURE() << m.text;
  EXPECT_EQ(f.scene.memoryFailures, 0);
  // The stem of the giant letter covers the middle of the button.
  EXPECT_PIXEL(f.scene.pButtons(1).img, 150, 100, RGB(250, 240, 10));
}

TEST(GlyphBands, TheLargestFontSizesEndWithoutACrash) {
  // 24000 pt is 32000 pixels, beyond what the platform's font metrics
  // hold; whatever they give, the drawing stays within the button.
  QtTextMeasure measure;
  for (const char* label : {"I", "Wg\\nHome"}) {
    Project p = LabelProject(24000, 300, 200, 2, label);
    SceneFixture f(p, &measure);
    const auto start = std::chrono::steady_clock::now();
    f.scene.RedrawButton(1, false, false, false, false);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
    EXPECT_EQ(f.scene.memoryFailures, 0);
    EXPECT_EQ(f.scene.pButtons(1).Width(), 300);
  }
}

TEST(SurfaceMemory, ASurfaceOverTheBudgetEndsItsDrawingWithAMessage) {
  Project p = SmallProject(200, 100);
  AddButton(p, 0, 0, 50, 20);
  const int big = AddButton(p, 0, 0, 3000, 2000);
  p.button(big).sBName = "Huge";
  AddButton(p, 60, 0, 50, 20, RGB(1, 2, 3));
  SceneFixture f(p);
  f.scene.surfaceBudget = 4LL * 200 * 100 + 4LL * 2 * 50 * 20 + 1000;
  f.scene.RepaintAll();
  ASSERT_EQ(f.prompter.CountMsg(), 1);
  EXPECT_EQ(f.prompter.Last().title, "Error");
  EXPECT_EQ(f.prompter.Last().text,
            "Not enough memory to draw button 2 \"Huge\": a surface of 3000 x 2000 pixels needs "
            "23 MB.");
  EXPECT_EQ(f.scene.memoryFailures, 1);
  EXPECT_TRUE(f.scene.pButtons(big).img.isNull());
  // The buttons around it are drawn; the picture shows them.
  EXPECT_PIXEL(f.scene.pButtons(3).img, 5, 5, RGB(1, 2, 3));
  EXPECT_PIXEL(f.scene.ComposeApplet(), 65, 5, RGB(1, 2, 3));
  // Cancel silences the message for the rest of the run.
  f.prompter.answers.push_back(Answer::Cancel);
  f.scene.RedrawButton(big, false, false, false, false);
  f.scene.RedrawButton(big, false, false, false, false);
  EXPECT_EQ(f.prompter.CountMsg(), 2);
  EXPECT_EQ(f.scene.memoryFailures, 3);
}

TEST(SurfaceMemory, ADesignSurfaceOverTheBudgetSaysSo) {
  Project p = SmallProject(200, 100);
  SceneFixture f(p);
  f.scene.surfaceBudget = 1000;
  EXPECT_FALSE(f.scene.SetDesignSize(4000, 3000));
  ASSERT_EQ(f.prompter.CountMsg(), 1);
  EXPECT_NE(f.prompter.Last().text.find("the applet's background"), std::string::npos);
  EXPECT_TRUE(f.scene.Design().img.isNull());
  // Drawing on the empty surface does nothing and does not crash.
  f.scene.RepaintAll();
}

TEST(SurfaceMemory, ThePictureTakenInPlaceEqualsTheComposedCopy) {
  TestEnv t;
  for (const auto& e : std::filesystem::directory_iterator(SourcePath("data/Projects")))
    std::filesystem::copy_file(e.path(), t.home.file(e.path().filename().string()));
  Project p;
  ASSERT_EQ(LoadProject2(p, t.env, t.home.file("Demo.kpn")), LoadResult::Loaded);
  p.sState = "OVER";
  QtTextMeasure measure;
  Scene scene(p, t.prompter, measure);
  scene.SizeDesignToApplet();
  scene.RepaintAll();
  const QImage copy = scene.ComposeApplet();
  const QImage taken = scene.TakeAppletPicture();
  EXPECT_TRUE(SamePixels(taken, copy));
  EXPECT_TRUE(scene.Design().img.isNull());
}

}  // namespace
}  // namespace kp::test
