#include "render/borders.h"

#include "render/checked.h"
#include "render/colour.h"
#include "render/raster.h"

namespace kp {
namespace rd = render_detail;

EdgeLight EdgeLightOf(i16 Style) {
  switch (Style) {
    case 1: return {true, false};
    case 2: return {false, true};
    case 3: return {true, true};
    case 4: return {false, false};
    default: return {true, true};
  }
}

bool Draw3DF(QImage& surface, i16 Style, i16& X, i16& Y, i16 W, i16 H, Colour Color, i16 Shade,
             i16 Width, bool bOrigin) {
  if (Style == 0) return true;
  if (bOrigin) {
    X = 0;
    Y = 0;
  }
  const ColourParts c = PartsOf(Color);
  const EdgeLight light = EdgeLightOf(Style);
  try {
    for (i16 k = 0; k <= Width - 1; ++k) {
      auto a = ShadeColor(Shade, Width, c.R, c.G, c.B, k, light.topLeft);
      if (!a) throw rd::Overflow();
      const i16 left = rd::Add(X, k), top = rd::Add(Y, k);
      const i16 right = rd::Sub(rd::Sub(rd::Add(X, W), 1), k);
      const i16 bottom = rd::Sub(rd::Sub(rd::Add(Y, H), 1), k);
      DrawLine(surface, left, top, right, top, *a);
      DrawLine(surface, left, top, left, bottom, *a);
      auto b = ShadeColor(Shade, Width, c.R, c.G, c.B, k, light.bottomRight);
      if (!b) throw rd::Overflow();
      // The bottom edge runs one pixel further than the top edge, so the
      // four edges close the ring.
      DrawLine(surface, left, bottom, rd::Sub(rd::Add(X, W), k), bottom, *b);
      DrawLine(surface, right, top, right, bottom, *b);
    }
  } catch (const rd::DrawError&) {
    return false;
  }
  return true;
}

}  // namespace kp
