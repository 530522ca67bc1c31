// The label of a button: lines, their places, the text border and the
// print itself.
#include <new>
#include <vector>

#include "core/conv.h"
#include "render/checked.h"
#include "render/colour.h"
#include "render/scene.h"

namespace kp {
namespace rd = render_detail;

namespace {

// The label's lines, split at the two-character token "\n".
std::vector<std::string> SplitLabel(const std::string& label) {
  std::vector<std::string> lines;
  size_t from = 0;
  for (;;) {
    const size_t at = label.find("\\n", from);
    if (at == std::string::npos) {
      lines.push_back(label.substr(from));
      return lines;
    }
    lines.push_back(label.substr(from, at - from));
    from = at + 2;
  }
}

std::string PrintedFontName(const std::string& name) {
  // The old bitmap Courier is replaced by its outline successor; font names
  // compare as the platform's font mapper compares them, without case.
  return LCase(name) == "courier" ? std::string("Courier New") : name;
}

// The top of a print: three quarters of the text's height above Y, so Y
// works as a base line; rounded only when the pixels are placed.
int PrintTop(i16 Y, float TH) {
  const float top = static_cast<float>(Y) - (TH / 2.0f + TH) / 2.0f;
  return static_cast<int>(rd::RoundEven(top));
}

}  // namespace

struct Scene::PrintSetup {
  float TH = 0;
  FontSpec font;
  std::string shown;
};

Scene::PrintSetup Scene::SetupPrint(const std::string& s, const std::string& FontName,
                                    i16 FontSize, bool Bold, bool Italic) {
  PrintSetup ps;
  ps.shown = LabelDisplayText(s);
  ps.font = FontSpec{PrintedFontName(FontName), FontSize, Bold, Italic};
  ps.TH = static_cast<float>(measure_.TextHeight(ps.font, ps.shown));
  return ps;
}

namespace {

// The cell rectangle that prints with their tops between (xMin, topMin)
// and (xMax, topMax) can bring onto a w x h surface, a pixel wider all
// round. Glyph work stays inside it, whatever the font size.
CellReach ReachOf(long long xMin, long long xMax, long long topMin, long long topMax, int w,
                  int h) {
  return CellReach{-xMax - 1, -topMax - 1, w - xMin + 1, h - topMin + 1};
}

// The same top as PrintTop, for a Y that need not fit 16 bits.
long long WideTop(long long Y, float TH) {
  const float top = static_cast<float>(Y) - (TH / 2.0f + TH) / 2.0f;
  return static_cast<long long>(rd::RoundEven(top));
}

}  // namespace

void Scene::drawString(int i, const std::string& s, i16 X, i16 Y, const std::string& FontName,
                       i16 FontSize, Colour Color, bool Bold, bool Italic) {
  // Setting the font has no pixels of its own: the measure is asked for
  // the font at each print.
  if (s.empty()) return;
  const PrintSetup ps = SetupPrint(s, FontName, FontSize, Bold, Italic);
  Surface& surf = pButtons(i);
  const int top = PrintTop(Y, ps.TH);
  const GlyphMask& glyphs =
      measure_.Glyphs(ps.font, ps.shown, ReachOf(X, X, top, top, surf.Width(), surf.Height()));
  ++prints;
  StampGlyphs(surf.img, glyphs, {Stamp{X, top, Color}});
}

void Scene::drawTFrame(int i, Surface& surface, const std::string& s, i16 X, i16 Y, i16 Thick,
                       Colour Color, bool Light, i16 Shade, bool LeftToRight,
                       const std::string& FontName, i16 FontSize, bool Bold, bool Italic) {
  (void)i;
  if (Thick < 1) return;
  const ColourParts c = PartsOf(Color);
  const PrintSetup ps = SetupPrint(s, FontName, FontSize, Bold, Italic);
  const int W = surface.Width(), H = surface.Height();
  const GlyphMask& g = measure_.Glyphs(
      ps.font, ps.shown,
      ReachOf(static_cast<long long>(X) - Thick, static_cast<long long>(X) + Thick,
              WideTop(static_cast<long long>(Y) - Thick, ps.TH),
              WideTop(static_cast<long long>(Y) + Thick, ps.TH), W, H));
  // A print whose glyphs all fall outside the surface changes nothing; it
  // counts as a print but is not laid down.
  auto reaches = [&](int x, int top) {
    const long long gx = static_cast<long long>(x) + g.originX;
    const long long gy = static_cast<long long>(top) + g.originY;
    return !g.empty() && gx < W && gx + g.width > 0 && gy < H && gy + g.height > 0;
  };
  // The prints of both passes in their order; the glyphs are laid down
  // once at the end, each pixel by the last print that covers it.
  std::vector<Stamp> stamps;
  long long printed = 0;
  auto shade = [&](i16 n) {
    auto v = ShadeColor(Shade, Thick, c.R, c.G, c.B, n, Light);
    if (!v) throw rd::Overflow();
    return *v;
  };
  Colour fore = 0;
  auto row = [&](i16 yy, i16& n) {
    if (!LeftToRight) {
      fore = shade(n);
      n = rd::Add(n, 1);
    } else {
      n = 0;
    }
    const int top = PrintTop(yy, ps.TH);
    const i16 last = rd::Add(X, Thick);
    for (int xx = rd::Sub(X, Thick); xx <= last; ++xx) {
      if (LeftToRight) {
        fore = shade(n);
        n = rd::Add(n, 1);
      }
      ++printed;
      if (reaches(xx, top)) stamps.push_back(Stamp{xx, top, fore});
    }
  };
  bool failed = false;
  rd::DrawError error;
  try {
    i16 n = -1;
    for (int yy = rd::Sub(Y, Thick); yy <= Y; ++yy) row(static_cast<i16>(yy), n);
    n = -1;
    const i16 stop = rd::Sub(Y, 1);
    for (int yy = rd::Add(Y, Thick); yy >= stop; --yy) row(static_cast<i16>(yy), n);
  } catch (const rd::DrawError& e) {
    failed = true;
    error = e;
  }
  // What was printed before an error stays printed.
  if (!s.empty()) {
    prints += printed;
    StampGlyphs(surface.img, g, stamps);
  }
  if (failed) throw error;
}

void Scene::StoreLabelPos(int i, i16 x, i16 y) {
  const int s = GetStateIndex(p_.sState);
  if (s == 0) return;
  p_.button(i).LabelPosX[s] = x;
  p_.button(i).LabelPosY[s] = y;
}

void Scene::DrawLabel(int i) {
  const int s = GetStateIndex(p_.sState);
  if (s == 0 || !HasSurface(i)) return;
  tButton& b = p_.button(i);
  try {
    const bool bold = b.FontStyle[s] == 1 || b.FontStyle[s] == 3;
    const bool italic = b.FontStyle[s] == 2 || b.FontStyle[s] == 3;
    drawString(i, "", 0, 0, b.Font[s], b.FontSize[s], b.FontColor[s], bold, italic);
    const FontSpec font{PrintedFontName(b.Font[s]), b.FontSize[s], bold, italic};
    // The label is measured as stored; only the print shows the escapes.
    const std::vector<std::string> lines = SplitLabel(b.Label[s]);
    const int N = static_cast<int>(lines.size());
    Surface& surf = pButtons(i);
    const float W = static_cast<float>(surf.Width()), H = static_cast<float>(surf.Height());
    auto print = [&](const std::string& line, i16 x, i16 y) {
      drawTFrame(i, surf, line, x, y, b.TFrameThick[s], b.TFrameColor[s], b.TFrameLight[s],
                 b.TFrameShade[s], b.TFrameLeftToRight[s], b.Font[s], b.FontSize[s], bold, italic);
      drawString(i, line, x, y, b.Font[s], b.FontSize[s], b.FontColor[s], bold, italic);
    };
    auto height = [&](const std::string& line) {
      return static_cast<float>(measure_.TextHeight(font, line));
    };
    if (!b.PositionText[s]) {
      // Centred. The divisors 3 and 4 with the print's three quarters
      // place the text as the applet does.
      const float TH1 = height(lines[0]);
      i16 y = N == 1 ? rd::CInt(H / 2.0f + TH1 / 3.0f)
                     : rd::CInt(H / 2.0f - (TH1 * static_cast<float>(N)) / 4.0f);
      for (int k = 1; k <= N; ++k) {
        const std::string& line = lines[static_cast<size_t>(k - 1)];
        const float tw = static_cast<float>(measure_.TextWidth(font, line));
        i16 x = rd::CInt(W / 2.0f - tw / 2.0f);
        if (k > 1) y = rd::CInt(height(line) + static_cast<float>(y));
        i16 drawY = y;
        if (s == 3) {
          // The pressed look: moved by the descent, but the stored y
          // stays without it.
          x = rd::Add(x, p_.iDescentX);
          drawY = rd::Add(y, p_.iDescentY);
        }
        print(line, x, drawY);
        if (k == 1) StoreLabelPos(i, x, y);
      }
    } else {
      const i16 x = b.LabelPosX[s];
      i16 y = b.LabelPosY[s];
      for (int k = 1; k <= N; ++k) {
        const std::string& line = lines[static_cast<size_t>(k - 1)];
        if (k > 1) y = rd::CInt(height(line) + static_cast<float>(y));
        print(line, x, y);
      }
    }
  } catch (const rd::DrawError& e) {
    Report("DrawLabel", i, e.description, bNoLabelErrors);
  } catch (const std::bad_alloc&) {
    // The glyphs of the line could not be had: the label's own error path,
    // with the description the platform gives this failure.
    ++memoryFailures;
    Report("DrawLabel", i, "Out of memory", bNoLabelErrors);
  }
}

}  // namespace kp
