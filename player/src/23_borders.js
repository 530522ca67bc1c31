// The bevelled border of a rectangle, ring by ring from the outside in.

// Which edges are lighter: 1 Raised, 2 Lowered, 3 Light, 4 Dark, above 4
// both lighter.
KP.EdgeLightOf = function (Style) {
  switch (Style) {
    case 1: return { topLeft: true, bottomRight: false };
    case 2: return { topLeft: false, bottomRight: true };
    case 3: return { topLeft: true, bottomRight: true };
    case 4: return { topLeft: false, bottomRight: false };
    default: return { topLeft: true, bottomRight: true };
  }
};

// Width rings inside (X, Y, W, H), ring k shaded by ShadeColor(.., k, ..);
// bOrigin puts the rectangle at 0, 0. Style 0 draws nothing. false when
// the 16-bit arithmetic overflowed; the rings painted before that stay.
KP.Draw3DF = function (surface, Style, X, Y, W, H, Color, Shade, Width, bOrigin) {
  if (Style === 0) return true;
  if (bOrigin) {
    X = 0;
    Y = 0;
  }
  const c = KP.PartsOf(Color);
  const light = KP.EdgeLightOf(Style);
  try {
    for (let k = 0; k <= Width - 1; ++k) {
      const a = KP.ShadeColor(Shade, Width, c.R, c.G, c.B, k, light.topLeft);
      if (a === null) throw KP.Overflow;
      const left = KP.add16(X, k), top = KP.add16(Y, k);
      const right = KP.sub16(KP.sub16(KP.add16(X, W), 1), k);
      const bottom = KP.sub16(KP.sub16(KP.add16(Y, H), 1), k);
      KP.drawLine(surface, left, top, right, top, a);
      KP.drawLine(surface, left, top, left, bottom, a);
      const b = KP.ShadeColor(Shade, Width, c.R, c.G, c.B, k, light.bottomRight);
      if (b === null) throw KP.Overflow;
      // The bottom edge runs one pixel further than the top edge, so the
      // four edges close the ring.
      KP.drawLine(surface, left, bottom, KP.sub16(KP.add16(X, W), k), bottom, b);
      KP.drawLine(surface, right, top, right, bottom, b);
    }
  } catch (e) {
    if (e !== KP.Overflow) throw e;
    return false;
  }
  return true;
};

// A button's border lies on its surface's own edge, wherever the button
// stands. The designer would show an error box on an overflow; a page
// has nobody to show it to.
KP.DrawBorder = function (surface, b, s) {
  try {
    KP.i16(surface.Left);
    KP.i16(surface.Top);
    return KP.Draw3DF(surface, b.BorderStyle[s], surface.Left, surface.Top, KP.i16(surface.w),
      KP.i16(surface.h), b.BorderColor[s], b.BorderShade[s], b.BorderWidth[s], true);
  } catch (e) {
    if (e !== KP.Overflow) throw e;
    return false;
  }
};

KP.DrawAppletBorder = function (design, applet) {
  return KP.Draw3DF(design, applet.iABorderStyle, 0, 0, applet.AppletWidth, applet.AppletHeight,
    applet.cABorderColor, applet.iABorderShade, applet.iABorderWidth, false);
};

// The frame a button shows in a browser only (the designer's window leaves
// it out): Thick rings of one colour on the surface's edge, over the face,
// the label and the border.
KP.DrawFrame = function (surface, Thick, Color) {
  const t = Math.min(Thick | 0, Math.ceil(Math.min(surface.w, surface.h) / 2));
  if (t <= 0) return;
  const w = surface.w, h = surface.h;
  KP.fillRect(surface, 0, 0, w, t, Color);
  KP.fillRect(surface, 0, h - t, w, t, Color);
  KP.fillRect(surface, 0, t, t, h - 2 * t, Color);
  KP.fillRect(surface, w - t, t, t, h - 2 * t, Color);
};
