#include "render/text.h"

#include <QFont>
#include <QFontInfo>
#include <QFontMetrics>
#include <QFontMetricsF>
#include <QPainter>
#include <QString>
#include <algorithm>
#include <climits>
#include <new>
#include <cmath>

#include "core/conv.h"
#include "render/raster.h"

namespace kp {

void GlyphMask::Allocate(int w, int h) {
  width = std::max(0, w);
  height = std::max(0, h);
  words = (width + 63) / 64;
  bits.assign(static_cast<size_t>(words) * static_cast<size_t>(height), 0);
}

int PixelSizeOf(i16 points) {
  // Multiply, then divide rounding half away from zero.
  const int p = points;
  const int px = p >= 0 ? (p * 96 + 36) / 72 : -((-p * 96 + 36) / 72);
  return std::max(1, px);
}

std::string ResolveFontFamily(const std::string& name) {
  const std::string l = LCase(Trim(name));
  if (l == "dialog" || l == "sansserif" || l == "helvetica") return "Arial";
  if (l == "dialoginput" || l == "monospaced" || l == "courier") return "Courier New";
  if (l == "serif" || l == "timesroman" || l == "times") return "Times New Roman";
  return name;
}

std::string LabelDisplayText(const std::string& stored) { return UnescapeField(stored); }

namespace {

// Project texts are Windows-1252 bytes.
QString FromCp1252(const std::string& s) {
  static const char16_t k80[32] = {
      0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
      0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
      0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
  QString out;
  out.reserve(static_cast<qsizetype>(s.size()));
  for (unsigned char c : s) {
    if (c >= 0x80 && c < 0xA0) out.append(QChar(k80[c - 0x80]));
    else out.append(QChar(static_cast<char16_t>(c)));
  }
  return out;
}

std::string KeyOf(const FontSpec& f) {
  return f.name + '\x1f' + std::to_string(f.size) + (f.bold ? "b" : "-") + (f.italic ? "i" : "-");
}

}  // namespace

struct QtTextMeasure::Impl {
  struct Face {
    QFont font;
    double height = 0;
    int ascent = 0;
    std::unordered_map<std::string, double> widths;
    std::unordered_map<std::string, GlyphMask> glyphs;
  };
  std::unordered_map<std::string, Face> faces;
  // Caches stay small enough for a project's labels; a runaway (such as a
  // label typed letter by letter) starts them afresh.
  static constexpr size_t kMaxEntries = 8192;

  Face& FaceOf(const FontSpec& want) {
    const std::string key = KeyOf(want);
    auto it = faces.find(key);
    if (it != faces.end()) return it->second;
    if (faces.size() > 256) faces.clear();
    Face face;
    face.font = QFont(QString::fromStdString(ResolveFontFamily(want.name)));
    face.font.setPixelSize(PixelSizeOf(want.size));
    face.font.setBold(want.bold);
    face.font.setItalic(want.italic);
    face.font.setKerning(false);
    face.font.setStyleStrategy(QFont::NoAntialias);
    face.font.setHintingPreference(QFont::PreferFullHinting);
    face.height = QFontMetricsF(face.font).height();
    face.ascent = QFontMetrics(face.font).ascent();
    return faces.emplace(key, std::move(face)).first->second;
  }

  // The line drawn into a black picture of w x h pixels with its baseline
  // start at (originX, originY); white where a glyph pixel is.
  static QImage DrawScratch(const Face& face, const QString& text, int originX, int originY, int w,
                            int h) {
    QImage scratch(w, h, QImage::Format_RGB32);
    // A picture that cannot be had must not be painted on.
    if (scratch.isNull()) throw std::bad_alloc();
    scratch.fill(0xFF000000u);
    QPainter p;
    if (!p.begin(&scratch)) throw std::bad_alloc();
    p.setRenderHint(QPainter::TextAntialiasing, false);
    p.setRenderHint(QPainter::Antialiasing, false);
    p.setFont(face.font);
    p.setPen(QColor(255, 255, 255));
    p.drawText(QPoint(originX, originY), text);
    p.end();
    return scratch;
  }

  static bool Lit(std::uint32_t px) { return ((px >> 8) & 0xFF) > 127; }

  // The scratch picture that holds a whole line, in cell coordinates: the
  // advance and height with a font size of room on every side.
  struct Extent {
    long long pad = 0, w = 0, h = 0;
  };
  static Extent WholeExtent(const Face& face, const QString& text) {
    const QFontMetrics fm(face.font);
    Extent e;
    e.pad = face.font.pixelSize() + 2;
    e.w = std::max(1, fm.horizontalAdvance(text)) + 2 * e.pad;
    e.h = fm.height() + 2 * e.pad;
    return e;
  }

  static GlyphMask Rasterise(const Face& face, const QString& text) {
    GlyphMask mask;
    if (text.isEmpty()) return mask;
    const Extent e = WholeExtent(face, text);
    const int pad = static_cast<int>(e.pad), w = static_cast<int>(e.w), h = static_cast<int>(e.h);
    const QImage scratch = DrawScratch(face, text, pad, pad + face.ascent, w, h);
    int x0 = INT_MAX, y0 = INT_MAX, x1 = -1, y1 = -1;
    for (int y = 0; y < h; ++y) {
      const auto* row = reinterpret_cast<const std::uint32_t*>(scratch.constScanLine(y));
      for (int x = 0; x < w; ++x) {
        if (Lit(row[x])) {
          x0 = std::min(x0, x);
          x1 = std::max(x1, x);
          y0 = std::min(y0, y);
          y1 = std::max(y1, y);
        }
      }
    }
    if (x1 < 0) return mask;
    mask.Allocate(x1 - x0 + 1, y1 - y0 + 1);
    mask.originX = x0 - pad;
    mask.originY = y0 - pad;
    for (int y = y0; y <= y1; ++y) {
      const auto* row = reinterpret_cast<const std::uint32_t*>(scratch.constScanLine(y));
      for (int x = x0; x <= x1; ++x)
        if (Lit(row[x])) mask.Set(x - x0, y - y0);
    }
    return mask;
  }

  // The glyph pixels inside the cell rectangle [cx0, cx1) x [cy0, cy1),
  // drawn a column at a time: one pass finds the pixels' bounds, a second
  // fills a mask of just that size. Every column starts at the top of the
  // whole scratch picture, so the rasteriser walks each outline from the
  // same first row and gives the same pixels as Rasterise; only the
  // columns' sides are cut, and a cut at the side does not move a pixel.
  static GlyphMask RasteriseWithin(const Face& face, const QString& text, long long cx0,
                                   long long cy0, long long cx1, long long cy1, long long top,
                                   long long bandPixels) {
    GlyphMask mask;
    if (text.isEmpty() || cx0 >= cx1 || cy0 >= cy1 || top > cy0) return mask;
    const int baseline = static_cast<int>(face.ascent - top);
    // Calls fn(cellX, cellY) for every glyph pixel of the columns that
    // cover [x0, x1) x [cy0, y1).
    auto scan = [&](long long x0, long long x1, long long y1, auto&& fn) {
      const int h = static_cast<int>(y1 - top);
      const long long cw = std::clamp<long long>(bandPixels / h, 1, x1 - x0);
      for (long long x = x0; x < x1; x += cw) {
        const int w = static_cast<int>(std::min(cw, x1 - x));
        const QImage column = DrawScratch(face, text, static_cast<int>(-x), baseline, w, h);
        for (int y = static_cast<int>(cy0 - top); y < h; ++y) {
          const auto* row = reinterpret_cast<const std::uint32_t*>(column.constScanLine(y));
          for (int k = 0; k < w; ++k)
            if (Lit(row[k])) fn(x + k, top + y);
        }
      }
    };
    long long bx0 = LLONG_MAX, by0 = LLONG_MAX, bx1 = LLONG_MIN, by1 = LLONG_MIN;
    scan(cx0, cx1, cy1, [&](long long x, long long y) {
      bx0 = std::min(bx0, x);
      bx1 = std::max(bx1, x);
      by0 = std::min(by0, y);
      by1 = std::max(by1, y);
    });
    if (bx1 < bx0) return mask;
    mask.Allocate(static_cast<int>(bx1 - bx0 + 1), static_cast<int>(by1 - by0 + 1));
    mask.originX = static_cast<int>(bx0);
    mask.originY = static_cast<int>(by0);
    scan(bx0, bx1 + 1, by1 + 1, [&](long long x, long long y) {
      mask.Set(static_cast<int>(x - bx0), static_cast<int>(y - by0));
    });
    return mask;
  }

  // The last line drawn within a reach, and what it was asked with.
  std::string reachKey;
  GlyphMask reached;
  GlyphMask none;
};

QtTextMeasure::QtTextMeasure() : d_(std::make_unique<Impl>()) {}
QtTextMeasure::~QtTextMeasure() = default;

double QtTextMeasure::TextWidth(const FontSpec& font, const std::string& text) {
  Impl::Face& face = d_->FaceOf(font);
  auto it = face.widths.find(text);
  if (it != face.widths.end()) return it->second;
  if (face.widths.size() > Impl::kMaxEntries) face.widths.clear();
  const double w =
      text.empty() ? 0.0 : QFontMetricsF(face.font).horizontalAdvance(FromCp1252(text));
  face.widths.emplace(text, w);
  return w;
}

double QtTextMeasure::TextHeight(const FontSpec& font, const std::string&) {
  // One line: the font's height whatever the text.
  return d_->FaceOf(font).height;
}

const GlyphMask& QtTextMeasure::Glyphs(const FontSpec& font, const std::string& text) {
  Impl::Face& face = d_->FaceOf(font);
  auto it = face.glyphs.find(text);
  if (it != face.glyphs.end()) return it->second;
  if (face.glyphs.size() > Impl::kMaxEntries) face.glyphs.clear();
  return face.glyphs.emplace(text, Impl::Rasterise(face, FromCp1252(text))).first->second;
}

const GlyphMask& QtTextMeasure::Glyphs(const FontSpec& font, const std::string& text,
                                       const CellReach& reach) {
  Impl::Face& face = d_->FaceOf(font);
  const QString shown = FromCp1252(text);
  const Impl::Extent e = Impl::WholeExtent(face, shown);
  // Ordinary lines are drawn whole and kept, exactly as they always were.
  if (e.w * e.h <= wholeScratchPixels) return Glyphs(font, text);
  const long long cx0 = std::max(reach.x0, -e.pad), cy0 = std::max(reach.y0, -e.pad);
  const long long cx1 = std::min(reach.x1, e.w - e.pad), cy1 = std::min(reach.y1, e.h - e.pad);
  if (cx0 >= cx1 || cy0 >= cy1) return d_->none;
  std::string key = KeyOf(font) + '\x1f' + std::to_string(bandPixels) + ':' +
                    std::to_string(cx0) + ',' + std::to_string(cy0) + ',' + std::to_string(cx1) +
                    ',' + std::to_string(cy1) + '\x1f' + text;
  if (key == d_->reachKey) return d_->reached;
  d_->reachKey.clear();
  d_->reached = GlyphMask{};  // the old mask goes before the new one is made
  d_->reached = Impl::RasteriseWithin(face, shown, cx0, cy0, cx1, cy1, -e.pad, bandPixels);
  d_->reachKey = std::move(key);
  return d_->reached;
}

std::string QtTextMeasure::ActualFamily(const FontSpec& font) {
  return QFontInfo(d_->FaceOf(font).font).family().toStdString();
}

namespace {

// 64 bits of a glyph row starting at bit `start` (which may lie outside).
inline std::uint64_t Bits64(const std::uint64_t* row, int words, long long start) {
  long long wi = start >= 0 ? start / 64 : -((-start + 63) / 64);
  const int bi = static_cast<int>(start - wi * 64);
  auto word = [&](long long k) -> std::uint64_t {
    return k >= 0 && k < words ? row[k] : 0;
  };
  std::uint64_t v = word(wi) >> bi;
  if (bi) v |= word(wi + 1) << (64 - bi);
  return v;
}

}  // namespace

void StampGlyphs(QImage& dst, const GlyphMask& g, const std::vector<Stamp>& stamps) {
  if (g.empty() || stamps.empty() || dst.isNull()) return;
  long long minX = LLONG_MAX, minY = LLONG_MAX, maxX = LLONG_MIN, maxY = LLONG_MIN;
  for (const Stamp& s : stamps) {
    minX = std::min<long long>(minX, s.x + g.originX);
    minY = std::min<long long>(minY, s.y + g.originY);
    maxX = std::max<long long>(maxX, s.x + g.originX + g.width);
    maxY = std::max<long long>(maxY, s.y + g.originY + g.height);
  }
  const int bx0 = static_cast<int>(std::max<long long>(0, minX));
  const int by0 = static_cast<int>(std::max<long long>(0, minY));
  const int bx1 = static_cast<int>(std::min<long long>(dst.width(), maxX));
  const int by1 = static_cast<int>(std::min<long long>(dst.height(), maxY));
  if (bx0 >= bx1 || by0 >= by1) return;
  const int boxW = bx1 - bx0, boxH = by1 - by0;
  const int words = (boxW + 63) / 64;
  const std::uint64_t lastMask = boxW % 64 ? (1ull << (boxW % 64)) - 1 : ~0ull;
  // Pixels already decided by a later print.
  std::vector<std::uint64_t> painted(static_cast<size_t>(words) * static_cast<size_t>(boxH), 0);
  // One check for sharing, not one a row of every print.
  uchar* base = dst.bits();
  const qsizetype bpl = dst.bytesPerLine();
  for (auto s = stamps.rbegin(); s != stamps.rend(); ++s) {
    const long long offX = static_cast<long long>(s->x) + g.originX - bx0;
    const long long offY = static_cast<long long>(s->y) + g.originY - by0;
    if (offX >= boxW || offX + g.width <= 0) continue;
    const std::uint32_t px = ToPixel(s->colour);
    for (int r = 0; r < g.height; ++r) {
      const long long yy = offY + r;
      if (yy < 0 || yy >= boxH) continue;
      const std::uint64_t* grow = g.bits.data() + static_cast<size_t>(r) * g.words;
      std::uint64_t* prow = painted.data() + static_cast<size_t>(yy) * words;
      auto* drow = reinterpret_cast<std::uint32_t*>(base + (by0 + yy) * bpl) + bx0;
      for (int w = 0; w < words; ++w) {
        std::uint64_t bits = Bits64(grow, g.words, 64LL * w - offX);
        if (w == words - 1) bits &= lastMask;
        std::uint64_t fresh = bits & ~prow[w];
        if (!fresh) continue;
        prow[w] |= fresh;
        while (fresh) {
          const int b = __builtin_ctzll(fresh);
          drow[w * 64 + b] = px;
          fresh &= fresh - 1;
        }
      }
    }
  }
}

}  // namespace kp
