#include "render/fade.h"

#include "render/checked.h"
#include "render/colour.h"
#include "render/raster.h"

namespace kp {
namespace rd = render_detail;

double dUvilich(i16 a, i16 b, i16 n) {
  const i16 d = static_cast<i16>(b - a);
  if (d == 0 || n == 0) return d;
  return static_cast<double>(d) / n;
}

namespace {

i16 Channel(double step, int i, i16 start) {
  double v = rd::RoundEven(step * i + start);
  if (v > 255) v = 255;
  if (v < 0) v = 0;
  return static_cast<i16>(v);
}

}  // namespace

void Vycvet(QImage& surface, Colour C1, Colour C2, i16 X, i16 Y, i16 W, i16 H, i16 Style) {
  try {
    const ColourParts a = PartsOf(C1), b = PartsOf(C2);
    const i16 N = Style == 1 ? W : Style == 2 ? H : 0;
    // From C2 towards C1.
    const double dR = dUvilich(b.R, a.R, N), dG = dUvilich(b.G, a.G, N), dB = dUvilich(b.B, a.B, N);
    for (int i = 0; i <= N - 1; ++i) {
      const Colour c = RGB(Channel(dR, i, b.R), Channel(dG, i, b.G), Channel(dB, i, b.B));
      if (Style == 1) {
        const i16 x = rd::Add(X, i);
        DrawLine(surface, x, Y, x, rd::Add(Y, H), c);
      } else {
        const i16 y = rd::Add(Y, i);
        DrawLine(surface, X, y, rd::Add(X, W), y, c);
      }
    }
  } catch (const rd::DrawError&) {
  }
}

void Fade(QImage& surface, Colour C1, Colour C2, i16 X, i16 Y, i16 W, i16 H, i16 Style) {
  try {
    switch (Style) {
      case 1:
      case 2: Vycvet(surface, C1, C2, X, Y, W, H, Style); break;
      case 3: {
        const float half = static_cast<float>(W) / 2.0f;
        Vycvet(surface, C1, C2, X, Y, rd::CInt(half), H, 1);
        Vycvet(surface, C2, C1, rd::CInt(half + static_cast<float>(X)), Y, rd::CInt(half + 1.0f), H,
               1);
        break;
      }
      case 4: {
        const float half = static_cast<float>(H) / 2.0f;
        Vycvet(surface, C1, C2, X, Y, W, rd::CInt(half), 2);
        Vycvet(surface, C2, C1, X, rd::CInt(half + static_cast<float>(Y)), W, rd::CInt(half + 1.0f),
               2);
        break;
      }
      default: break;  // 0 "Mono Color" and unknown styles paint nothing
    }
  } catch (const rd::DrawError&) {
  }
}

}  // namespace kp
