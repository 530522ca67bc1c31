#include "render/text.h"

#include <QFont>
#include <QFontInfo>
#include <QFontMetrics>
#include <QFontMetricsF>
#include <QPainter>
#include <QString>
#include <algorithm>
#include <climits>
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

  static GlyphMask Rasterise(const Face& face, const QString& text) {
    GlyphMask mask;
    if (text.isEmpty()) return mask;
    const QFontMetrics fm(face.font);
    const int pad = face.font.pixelSize() + 2;
    const int w = std::max(1, fm.horizontalAdvance(text)) + 2 * pad;
    const int h = fm.height() + 2 * pad;
    QImage scratch(w, h, QImage::Format_RGB32);
    scratch.fill(0xFF000000u);
    {
      QPainter p(&scratch);
      p.setRenderHint(QPainter::TextAntialiasing, false);
      p.setRenderHint(QPainter::Antialiasing, false);
      p.setFont(face.font);
      p.setPen(QColor(255, 255, 255));
      p.drawText(QPoint(pad, pad + face.ascent), text);
    }
    int x0 = INT_MAX, y0 = INT_MAX, x1 = -1, y1 = -1;
    for (int y = 0; y < h; ++y) {
      const auto* row = reinterpret_cast<const std::uint32_t*>(scratch.constScanLine(y));
      for (int x = 0; x < w; ++x) {
        if (((row[x] >> 8) & 0xFF) > 127) {
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
        if (((row[x] >> 8) & 0xFF) > 127) mask.Set(x - x0, y - y0);
    }
    return mask;
  }
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
      auto* drow = reinterpret_cast<std::uint32_t*>(dst.scanLine(by0 + static_cast<int>(yy))) + bx0;
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
