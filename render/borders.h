// The bevelled border of a rectangle, ring by ring from the outside in.
#pragma once

#include <QImage>

#include "core/model.h"

namespace kp {

// Which edges are lighter for a border style: 1 Raised, 2 Lowered,
// 3 Light, 4 Dark, above 4 both lighter. Style 0 draws nothing.
struct EdgeLight {
  bool topLeft = true;
  bool bottomRight = true;
};
EdgeLight EdgeLightOf(i16 Style);

// Paints `Width` rings inside the rectangle (X, Y, W, H), ring k shaded
// by ShadeColor(Shade, Width, .., k, ..). With bOrigin, X and Y become 0,
// in the caller's variables too. Returns false when the 16-bit arithmetic
// overflowed; the rings painted before that stay.
bool Draw3DF(QImage& surface, i16 Style, i16& X, i16& Y, i16 W, i16 H, Colour Color, i16 Shade,
             i16 Width, bool bOrigin);

}  // namespace kp
