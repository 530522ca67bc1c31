// Text in a named font: measuring and the pixels of a printed line. The
// label code asks a TextMeasure for sizes and glyph pixels; the program
// uses QtTextMeasure, tests may put in a measure with fixed metrics.
#pragma once

#include <QImage>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/model.h"

namespace kp {

struct FontSpec {
  std::string name;  // as drawString hands it on ("Courier" already replaced)
  i16 size = 10;     // points
  bool bold = false;
  bool italic = false;
  bool operator==(const FontSpec&) const = default;
};

// The pixels a printed line covers, relative to the top-left corner of
// its text cell (the place a print is given): bit (x, y) set means the
// pixel (left + originX + x, top + originY + y) takes the text colour.
struct GlyphMask {
  int width = 0;
  int height = 0;
  int originX = 0;
  int originY = 0;
  int words = 0;  // 64-bit words a row
  std::vector<std::uint64_t> bits;

  bool empty() const { return width == 0 || height == 0; }
  bool At(int x, int y) const {
    return (bits[static_cast<size_t>(y * words + x / 64)] >> (x % 64)) & 1u;
  }
  void Set(int x, int y) { bits[static_cast<size_t>(y * words + x / 64)] |= 1ull << (x % 64); }
  void Allocate(int w, int h);
};

// The part of a print's text cell that can reach the surface it is printed
// on, in the cell's coordinates: x0 <= x < x1, y0 <= y < y1.
struct CellReach {
  long long x0 = 0, y0 = 0, x1 = 0, y1 = 0;
  bool empty() const { return x0 >= x1 || y0 >= y1; }
};

class TextMeasure {
 public:
  virtual ~TextMeasure() = default;
  // Size of one line of text in pixels, fractional.
  virtual double TextWidth(const FontSpec& font, const std::string& text) = 0;
  virtual double TextHeight(const FontSpec& font, const std::string& text) = 0;
  // The glyph pixels of one line. The reference stays valid until the next
  // call on this measure.
  virtual const GlyphMask& Glyphs(const FontSpec& font, const std::string& text) = 0;
  // The glyph pixels of one line as far as they lie inside `reach`; pixels
  // outside may be left out, as they can never show. A measure whose
  // glyphs are small anyway gives them all.
  virtual const GlyphMask& Glyphs(const FontSpec& font, const std::string& text,
                                  const CellReach& reach) {
    (void)reach;
    return Glyphs(font, text);
  }
};

// Pixel height of a font size in points at 96 dots an inch, rounded as the
// platform's font mapper does (10 pt is 13 px).
int PixelSizeOf(i16 points);

// The family the platform draws for a font name of a project: the
// generic Java names and the old short names of the Windows fonts are
// replaced by the fonts they stand for; every other name is looked up as
// it stands (Arial, Courier New and Times New Roman resolve through the
// system's aliases).
std::string ResolveFontFamily(const std::string& name);

// Measuring and glyphs through QtGui, one unantialiased, fully hinted font
// per FontSpec; results are kept, as labels repeat on every repaint. Needs
// a QGuiApplication.
class QtTextMeasure : public TextMeasure {
 public:
  QtTextMeasure();
  ~QtTextMeasure() override;
  double TextWidth(const FontSpec& font, const std::string& text) override;
  double TextHeight(const FontSpec& font, const std::string& text) override;
  const GlyphMask& Glyphs(const FontSpec& font, const std::string& text) override;
  // A line whose scratch picture would be large (a big font) is drawn only
  // inside the reach, a band of rows at a time, so the work follows the
  // surface and not the font size. Throws std::bad_alloc when even that
  // cannot be had.
  const GlyphMask& Glyphs(const FontSpec& font, const std::string& text,
                          const CellReach& reach) override;
  // The family the platform chose for a font (for checks and reports).
  std::string ActualFamily(const FontSpec& font);
  // The largest scratch picture, in pixels, drawn in one piece and kept;
  // above it a line is drawn by bands inside its reach. Tests lower it to
  // compare both ways.
  long long wholeScratchPixels = 32LL * 1024 * 1024;
  // The most pixels of scratch a band of rows takes.
  long long bandPixels = 2LL * 1024 * 1024;

 private:
  struct Impl;
  std::unique_ptr<Impl> d_;
};

// The stored label text as it is shown: "&nbsp" and "&!0" as blanks and
// the other escapes of the file format as their characters.
std::string LabelDisplayText(const std::string& stored);

// One print of a line: its text cell's top-left corner and colour.
struct Stamp {
  int x = 0;
  int y = 0;
  Colour colour = 0;
};

// Prints the same glyphs at every stamp, in order, a later print covering
// an earlier one: the same pixels as printing them one by one, but each
// pixel is written once, by the last print that covers it.
void StampGlyphs(QImage& dst, const GlyphMask& glyphs, const std::vector<Stamp>& stamps);

}  // namespace kp
