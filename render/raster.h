// Pixel buffers and the raster operations every drawing routine uses. All
// buffers are QImage::Format_RGB32; an operation works on the 24 colour
// bits and keeps the unused top byte at 0xFF. Everything is integer code:
// no painter, no antialiasing, clipped to the buffers involved.
#pragma once

#include <QImage>
#include <cstdint>

#include "core/model.h"

namespace kp {

// A colour of the model (red in bits 0-7) as a pixel (red in bits 16-23).
inline constexpr std::uint32_t ToPixel(Colour c) {
  const auto u = static_cast<std::uint32_t>(c);
  return 0xFF000000u | ((u & 0xFFu) << 16) | (u & 0xFF00u) | ((u >> 16) & 0xFFu);
}
inline constexpr Colour ToColour(std::uint32_t px) {
  return static_cast<Colour>(((px >> 16) & 0xFFu) | (px & 0xFF00u) | ((px & 0xFFu) << 16));
}

// The raster operation codes of the platform, as the drawing routines name
// them.
enum class Rop : std::uint32_t {
  SRCCOPY = 0xCC0020,    // source
  SRCINVERT = 0x660046,  // destination XOR source
  SRCAND = 0x8800C6,     // destination AND source
  SRCPAINT = 0xEE0086,   // destination OR source
};

// A new buffer of the given size filled with one colour; a size of 0 gives
// an empty buffer, and so does a buffer the memory cannot hold (check
// isNull() where the size is not 0).
QImage NewBuffer(int w, int h, Colour fill);

// Copies the w x h rectangle at (sx, sy) of src onto dst at (dx, dy),
// combining by `rop`. Parts outside either buffer are left out; dst and
// src may be the same buffer.
void BitBlt(QImage& dst, int dx, int dy, int w, int h, const QImage& src, int sx, int sy, Rop rop);

// The scaled copy: the sw x sh rectangle of src onto the dw x dh rectangle
// of dst, each destination pixel taking the source pixel under its centre.
// A destination or source size of 0 or less copies nothing.
void StretchBlt(QImage& dst, int dx, int dy, int dw, int dh, const QImage& src, int sx, int sy,
                int sw, int sh, Rop rop);

// The one-pixel line from (x1, y1) towards (x2, y2), without the end point,
// in whichever direction it runs.
void DrawLine(QImage& dst, int x1, int y1, int x2, int y2, Colour c);

// A single pixel; outside the buffer nothing happens.
void PSet(QImage& dst, int x, int y, Colour c);
Colour Point(const QImage& src, int x, int y);  // -1 outside

// The rectangle, clipped.
void FillRect(QImage& dst, int x, int y, int w, int h, Colour c);

// A persistent pixel buffer with its place on the design window and the
// back colour it is cleared to, as a picture box keeps them.
struct Surface {
  QImage img;
  int Left = 0;
  int Top = 0;
  Colour backColor = RGB(255, 255, 255);

  int Width() const { return img.width(); }
  int Height() const { return img.height(); }
  // Clears the whole buffer to the back colour.
  void Cls();
  // Setting the back colour clears the buffer to it.
  void SetBackColor(Colour c);
  // New size; the pixels that stay inside are kept, new ones take the
  // back colour. False when the memory cannot hold the new size: the
  // buffer is then empty, so that no drawing touches it.
  bool Resize(int w, int h);
};

}  // namespace kp
