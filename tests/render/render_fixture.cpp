#include "tests/render/render_fixture.h"

#include <cstdio>
#include <sstream>

namespace kp::test {

double FixedMeasure::TextWidth(const FontSpec& font, const std::string& text) {
  fontsAsked.push_back(font);
  return charWidth * static_cast<double>(text.size());
}

double FixedMeasure::TextHeight(const FontSpec& font, const std::string&) {
  fontsAsked.push_back(font);
  return height;
}

const GlyphMask& FixedMeasure::Glyphs(const FontSpec& font, const std::string& text) {
  fontsAsked.push_back(font);
  printedTexts.push_back(text);
  mask_ = GlyphMask{};
  int last = -1;
  for (size_t k = 0; k < text.size(); ++k)
    if (text[k] != ' ') last = static_cast<int>(k);
  if (last < 0) return mask_;
  mask_.Allocate(last + 1, 1);
  for (int k = 0; k <= last; ++k)
    if (text[static_cast<size_t>(k)] != ' ') mask_.Set(k, 0);
  return mask_;
}

namespace {

// Codes of 9 bits, LSB first, in sub-blocks of at most 255 bytes.
class CodeWriter {
 public:
  void Put(int code) {
    acc_ |= static_cast<unsigned>(code) << bits_;
    bits_ += 9;
    while (bits_ >= 8) {
      bytes_.push_back(static_cast<char>(acc_ & 0xFF));
      acc_ >>= 8;
      bits_ -= 8;
    }
  }
  std::string Blocks() {
    if (bits_ > 0) bytes_.push_back(static_cast<char>(acc_ & 0xFF));
    std::string out;
    for (size_t at = 0; at < bytes_.size(); at += 255) {
      const size_t n = std::min<size_t>(255, bytes_.size() - at);
      out.push_back(static_cast<char>(n));
      out.append(bytes_, at, n);
    }
    out.push_back('\0');
    return out;
  }

 private:
  unsigned acc_ = 0;
  int bits_ = 0;
  std::string bytes_;
};

void Put16(std::string& s, int v) {
  s.push_back(static_cast<char>(v & 0xFF));
  s.push_back(static_cast<char>((v >> 8) & 0xFF));
}

}  // namespace

void WriteGif(const std::string& path, int w, int h, const std::vector<Colour>& palette,
              const std::vector<int>& indices, int transparentIndex) {
  std::string s = "GIF89a";
  Put16(s, w);
  Put16(s, h);
  s.push_back(static_cast<char>(0xF7));  // global table of 256 entries
  s.push_back('\0');
  s.push_back('\0');
  for (int k = 0; k < 256; ++k) {
    const Colour c = k < static_cast<int>(palette.size()) ? palette[static_cast<size_t>(k)] : 0;
    s.push_back(static_cast<char>(c & 0xFF));
    s.push_back(static_cast<char>((c >> 8) & 0xFF));
    s.push_back(static_cast<char>((c >> 16) & 0xFF));
  }
  if (transparentIndex >= 0) {
    s += std::string("\x21\xF9\x04\x01\x00\x00", 6);
    s.push_back(static_cast<char>(transparentIndex));
    s.push_back('\0');
  }
  s.push_back(',');
  Put16(s, 0);
  Put16(s, 0);
  Put16(s, w);
  Put16(s, h);
  s.push_back('\0');
  s.push_back('\x08');  // minimum code size
  // Every pixel a literal code; a clear code before the table would need
  // codes of 10 bits keeps every code at 9 bits.
  CodeWriter codes;
  codes.Put(256);
  int sinceClear = 0;
  for (int v : indices) {
    if (sinceClear == 250) {
      codes.Put(256);
      sinceClear = 0;
    }
    codes.Put(v);
    ++sinceClear;
  }
  codes.Put(257);
  s += codes.Blocks();
  s.push_back(';');
  WriteBytes(path, s);
}

Project SmallProject(int appletW, int appletH, Colour background) {
  Project p;
  SetDefaultMainParams(p);
  p.AppletWidth = static_cast<i16>(appletW);
  p.AppletHeight = static_cast<i16>(appletH);
  p.BackGround = background;
  return p;
}

int AddButton(Project& p, int x, int y, int w, int h, Colour face) {
  const int i = ++p.ButtonCount;
  tButton& b = p.button(i);
  b.sBName = "Button " + std::to_string(i);
  b.x = static_cast<i16>(x);
  b.y = static_cast<i16>(y);
  b.Width = static_cast<i16>(w);
  b.Height = static_cast<i16>(h);
  b.iBtnType = 5;
  for (int s = 1; s <= 3; ++s) {
    b.BackColor[s] = face;
    b.FadeColor[s] = RGB(0, 0, 0);
    b.Font[s] = "Arial";
    b.FontSize[s] = 10;
    b.FontColor[s] = RGB(255, 0, 0);
  }
  return i;
}

SceneFixture::SceneFixture(Project& project, TextMeasure* measure)
    : p(project), scene(project, prompter, measure ? *measure : fixed) {
  scene.SizeDesignToApplet();
}

std::string ColourText(Colour c) {
  if (c < 0) return "outside";
  std::ostringstream o;
  o << "RGB(" << (c & 0xFF) << "," << ((c >> 8) & 0xFF) << "," << ((c >> 16) & 0xFF) << ")";
  return o.str();
}

::testing::AssertionResult PixelIs(const QImage& img, int x, int y, Colour expected) {
  const Colour got = Point(img, x, y);
  if (got == expected) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "pixel (" << x << "," << y << ") is " << ColourText(got)
                                       << ", expected " << ColourText(expected);
}

::testing::AssertionResult RectIs(const QImage& img, int x, int y, int w, int h,
                                  Colour expected) {
  for (int yy = y; yy < y + h; ++yy)
    for (int xx = x; xx < x + w; ++xx) {
      const Colour got = Point(img, xx, yy);
      if (got != expected)
        return ::testing::AssertionFailure()
               << "in the rectangle (" << x << "," << y << "," << w << "x" << h << ") pixel ("
               << xx << "," << yy << ") is " << ColourText(got) << ", expected "
               << ColourText(expected);
    }
  return ::testing::AssertionSuccess();
}

::testing::AssertionResult SamePixels(const QImage& actual, const QImage& expected) {
  if (actual.size() != expected.size())
    return ::testing::AssertionFailure() << "size " << actual.width() << "x" << actual.height()
                                         << ", expected " << expected.width() << "x"
                                         << expected.height();
  const QImage a = actual.convertToFormat(QImage::Format_RGB32);
  const QImage e = expected.convertToFormat(QImage::Format_RGB32);
  long differ = 0;
  int fx = -1, fy = -1;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x)
      if ((a.pixel(x, y) & 0xFFFFFF) != (e.pixel(x, y) & 0xFFFFFF)) {
        if (!differ++) {
          fx = x;
          fy = y;
        }
      }
  if (!differ) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure()
         << differ << " pixels differ, the first at (" << fx << "," << fy << "): "
         << ColourText(Point(a, fx, fy)) << ", expected " << ColourText(Point(e, fx, fy));
}

}  // namespace kp::test
