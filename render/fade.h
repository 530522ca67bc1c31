// Colour gradients: one line per pixel of width or height, from the second
// colour towards the first.
#pragma once

#include <QImage>

#include "core/model.h"

namespace kp {

// The step of a gradient from a to b over n lines: (b - a) / n, or b - a
// itself when that is 0 or n is 0.
double dUvilich(i16 a, i16 b, i16 n);

// One gradient over the rectangle: Style 1 vertical lines across the width,
// Style 2 horizontal lines across the height; line 0 has colour C2 and
// the last falls one step short of C1. Any other Style paints nothing. An
// overflow ends the gradient where it stands, quietly.
void Vycvet(QImage& surface, Colour C1, Colour C2, i16 X, i16 Y, i16 W, i16 H, i16 Style);

// The face fill: 0 nothing, 1 and 2 one gradient, 3 and 4 two gradients
// meeting in the middle (edges C2, middle C1), above 4 nothing. Quiet.
void Fade(QImage& surface, Colour C1, Colour C2, i16 X, i16 Y, i16 W, i16 H, i16 Style);

}  // namespace kp
