// Colour gradients: one line per pixel of width or height, from the second
// colour towards the first.

// The step from a to b over n lines; b - a itself when that is 0 or n is 0.
KP.dUvilich = function (a, b, n) {
  const d = b - a;
  if (d === 0 || n === 0) return d;
  return d / n;
};

function fadeChannel(step, i, start) {
  let v = KP.roundEven(step * i + start);
  if (v > 255) v = 255;
  if (v < 0) v = 0;
  return v;
}

// Style 1 vertical lines across the width, 2 horizontal lines across the
// height; line 0 has colour C2 and the last falls one step short of C1.
// An overflow ends the gradient where it stands, quietly.
KP.Vycvet = function (surface, C1, C2, X, Y, W, H, Style) {
  try {
    const a = KP.PartsOf(C1), b = KP.PartsOf(C2);
    const N = Style === 1 ? W : Style === 2 ? H : 0;
    const dR = KP.dUvilich(b.R, a.R, N), dG = KP.dUvilich(b.G, a.G, N), dB = KP.dUvilich(b.B, a.B, N);
    for (let i = 0; i <= N - 1; ++i) {
      const c = KP.RGB(fadeChannel(dR, i, b.R), fadeChannel(dG, i, b.G), fadeChannel(dB, i, b.B));
      if (Style === 1) {
        const x = KP.add16(X, i);
        KP.drawLine(surface, x, Y, x, KP.add16(Y, H), c);
      } else {
        const y = KP.add16(Y, i);
        KP.drawLine(surface, X, y, KP.add16(X, W), y, c);
      }
    }
  } catch (e) {
    if (e !== KP.Overflow) throw e;
  }
};

// The face fill: 0 nothing, 1 and 2 one gradient, 3 and 4 two gradients
// meeting in the middle (edges C2, middle C1), anything else nothing.
KP.Fade = function (surface, C1, C2, X, Y, W, H, Style) {
  const f32 = Math.fround;
  try {
    let half;
    switch (Style) {
      case 1:
      case 2:
        KP.Vycvet(surface, C1, C2, X, Y, W, H, Style);
        break;
      case 3:
        half = f32(W / 2);
        KP.Vycvet(surface, C1, C2, X, Y, KP.cint(half), H, 1);
        KP.Vycvet(surface, C2, C1, KP.cint(f32(half + X)), Y, KP.cint(f32(half + 1)), H, 1);
        break;
      case 4:
        half = f32(H / 2);
        KP.Vycvet(surface, C1, C2, X, Y, W, KP.cint(half), 2);
        KP.Vycvet(surface, C2, C1, X, KP.cint(f32(half + Y)), W, KP.cint(f32(half + 1)), 2);
        break;
      default:
        break;
    }
  } catch (e) {
    if (e !== KP.Overflow) throw e;
  }
};
