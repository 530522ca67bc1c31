#include "render/raster.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace kp {
namespace {

constexpr std::uint32_t kColourBits = 0x00FFFFFFu;
constexpr std::uint32_t kTop = 0xFF000000u;

inline std::uint32_t* Row(QImage& img, int y) {
  return reinterpret_cast<std::uint32_t*>(img.scanLine(y));
}
inline const std::uint32_t* Row(const QImage& img, int y) {
  return reinterpret_cast<const std::uint32_t*>(img.constScanLine(y));
}

template <class Op>
void CombineRow(std::uint32_t* d, const std::uint32_t* s, int n, Op op) {
  for (int k = 0; k < n; ++k) d[k] = kTop | (op(d[k], s[k]) & kColourBits);
}

void BlendRow(std::uint32_t* d, const std::uint32_t* s, int n, Rop rop) {
  switch (rop) {
    case Rop::SRCCOPY:
      for (int k = 0; k < n; ++k) d[k] = kTop | (s[k] & kColourBits);
      break;
    case Rop::SRCINVERT:
      CombineRow(d, s, n, [](std::uint32_t a, std::uint32_t b) { return a ^ b; });
      break;
    case Rop::SRCAND:
      CombineRow(d, s, n, [](std::uint32_t a, std::uint32_t b) { return a & b; });
      break;
    case Rop::SRCPAINT:
      CombineRow(d, s, n, [](std::uint32_t a, std::uint32_t b) { return a | b; });
      break;
  }
}

}  // namespace

QImage NewBuffer(int w, int h, Colour fill) {
  if (w <= 0 || h <= 0) return QImage();
  QImage img(w, h, QImage::Format_RGB32);
  img.fill(ToPixel(fill));
  return img;
}

void BitBlt(QImage& dst, int dx, int dy, int w, int h, const QImage& src, int sx, int sy, Rop rop) {
  if (dst.isNull() || src.isNull() || w <= 0 || h <= 0) return;
  // Clip against the source, then the destination, moving both corners.
  if (sx < 0) { dx -= sx; w += sx; sx = 0; }
  if (sy < 0) { dy -= sy; h += sy; sy = 0; }
  if (dx < 0) { sx -= dx; w += dx; dx = 0; }
  if (dy < 0) { sy -= dy; h += dy; dy = 0; }
  w = std::min({w, src.width() - sx, dst.width() - dx});
  h = std::min({h, src.height() - sy, dst.height() - dy});
  if (w <= 0 || h <= 0) return;
  if (dst.constBits() == src.constBits()) {
    // Same buffer: take the source rectangle first, as the copy must read
    // the pixels from before it began.
    QImage part = src.copy(sx, sy, w, h);
    if (part.isNull()) return;  // no memory for the copy: nothing is drawn
    for (int y = 0; y < h; ++y) BlendRow(Row(dst, dy + y) + dx, Row(part, y), w, rop);
    return;
  }
  for (int y = 0; y < h; ++y) BlendRow(Row(dst, dy + y) + dx, Row(src, sy + y) + sx, w, rop);
}

void StretchBlt(QImage& dst, int dx, int dy, int dw, int dh, const QImage& src, int sx, int sy,
                int sw, int sh, Rop rop) {
  if (dst.isNull() || src.isNull() || dw <= 0 || dh <= 0 || sw <= 0 || sh <= 0) return;
  if (dw == sw && dh == sh) {
    BitBlt(dst, dx, dy, dw, dh, src, sx, sy, rop);
    return;
  }
  const QImage source = dst.constBits() == src.constBits() ? src.copy() : src;
  if (source.isNull()) return;
  const int x0 = std::max(0, dx), x1 = std::min(dst.width(), dx + dw);
  const int y0 = std::max(0, dy), y1 = std::min(dst.height(), dy + dh);
  if (x0 >= x1 || y0 >= y1) return;
  // The source column of each destination column, computed once.
  std::vector<int> col(static_cast<size_t>(x1 - x0));
  for (int x = x0; x < x1; ++x) {
    long long i = x - dx;
    col[static_cast<size_t>(x - x0)] = sx + static_cast<int>(((2 * i + 1) * sw) / (2LL * dw));
  }
  std::vector<std::uint32_t> line(static_cast<size_t>(x1 - x0));
  for (int y = y0; y < y1; ++y) {
    long long j = y - dy;
    const int syy = sy + static_cast<int>(((2 * j + 1) * sh) / (2LL * dh));
    const bool rowIn = syy >= 0 && syy < source.height();
    const std::uint32_t* s = rowIn ? Row(source, syy) : nullptr;
    std::uint32_t* d = Row(dst, y) + x0;
    int k = 0;
    while (k < x1 - x0) {
      // Runs of columns whose source lies inside the source buffer.
      const int c = col[static_cast<size_t>(k)];
      if (!rowIn || c < 0 || c >= source.width()) { ++k; continue; }
      int start = k;
      int n = 0;
      while (k < x1 - x0) {
        const int cc = col[static_cast<size_t>(k)];
        if (cc < 0 || cc >= source.width()) break;
        line[static_cast<size_t>(n++)] = s[cc];
        ++k;
      }
      BlendRow(d + start, line.data(), n, rop);
    }
  }
}

void PSet(QImage& dst, int x, int y, Colour c) {
  if (x < 0 || y < 0 || x >= dst.width() || y >= dst.height()) return;
  Row(dst, y)[x] = ToPixel(c);
}

Colour Point(const QImage& src, int x, int y) {
  if (x < 0 || y < 0 || x >= src.width() || y >= src.height()) return -1;
  return ToColour(Row(src, y)[x]);
}

void FillRect(QImage& dst, int x, int y, int w, int h, Colour c) {
  if (dst.isNull()) return;
  int x0 = std::max(0, x), y0 = std::max(0, y);
  int x1 = static_cast<int>(std::min<long long>(dst.width(), static_cast<long long>(x) + w));
  int y1 = static_cast<int>(std::min<long long>(dst.height(), static_cast<long long>(y) + h));
  if (x0 >= x1 || y0 >= y1) return;
  const std::uint32_t px = ToPixel(c);
  // scanLine() checks for sharing on every call; a fade draws its lines one
  // pixel wide, so the check would cost more than the pixels.
  uchar* base = dst.bits();
  const qsizetype bpl = dst.bytesPerLine();
  for (int yy = y0; yy < y1; ++yy) {
    auto* row = reinterpret_cast<std::uint32_t*>(base + yy * bpl);
    std::fill(row + x0, row + x1, px);
  }
}

void DrawLine(QImage& dst, int x1, int y1, int x2, int y2, Colour c) {
  if (dst.isNull() || (x1 == x2 && y1 == y2)) return;
  if (y1 == y2) {
    // Horizontal: x1 included, x2 left out.
    if (x2 > x1) FillRect(dst, x1, y1, x2 - x1, 1, c);
    else FillRect(dst, x2 + 1, y1, x1 - x2, 1, c);
    return;
  }
  if (x1 == x2) {
    if (y2 > y1) FillRect(dst, x1, y1, 1, y2 - y1, c);
    else FillRect(dst, x1, y2 + 1, 1, y1 - y2, c);
    return;
  }
  // Any other slope: Bresenham's steps, stopping before the end point.
  const int adx = std::abs(x2 - x1), ady = std::abs(y2 - y1);
  const int stx = x2 > x1 ? 1 : -1, sty = y2 > y1 ? 1 : -1;
  int x = x1, y = y1;
  if (adx >= ady) {
    int err = 2 * ady - adx;
    for (int n = 0; n < adx; ++n) {
      PSet(dst, x, y, c);
      if (err > 0) { y += sty; err -= 2 * adx; }
      err += 2 * ady;
      x += stx;
    }
  } else {
    int err = 2 * adx - ady;
    for (int n = 0; n < ady; ++n) {
      PSet(dst, x, y, c);
      if (err > 0) { x += stx; err -= 2 * ady; }
      err += 2 * adx;
      y += sty;
    }
  }
}

void Surface::Cls() {
  if (!img.isNull()) img.fill(ToPixel(backColor));
}

void Surface::SetBackColor(Colour c) {
  backColor = c;
  Cls();
}

bool Surface::Resize(int w, int h) {
  w = std::max(0, w);
  h = std::max(0, h);
  if (w == Width() && h == Height()) return true;
  QImage next = NewBuffer(w, h, backColor);
  if (next.isNull() && w > 0 && h > 0) {
    img = QImage();
    return false;
  }
  BitBlt(next, 0, 0, w, h, img, 0, 0, Rop::SRCCOPY);
  img = std::move(next);
  return true;
}

}  // namespace kp
