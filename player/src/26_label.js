// The label of a button: lines, their places, the text border and the
// print itself.

// The label's lines, split at the two-character token "\n".
KP.SplitLabel = function (label) {
  const s = String(label);
  return s.indexOf('\\n') < 0 ? [s] : s.split('\\n');
};

// The old bitmap Courier is printed as its outline successor.
KP.PrintedFontName = function (name) {
  return String(name).toLowerCase() === 'courier' ? 'Courier New' : name;
};

// The top of a print: three quarters of the text's height above Y, so Y
// works as a base line; rounded only when the pixels are placed.
KP.PrintTop = function (Y, TH) {
  const f32 = Math.fround;
  return KP.roundEven(f32(Y - f32(f32(f32(TH / 2) + TH) / 2)));
};

// The set pixels of a glyph mask as offsets, worked out once a mask.
function glyphPoints(g) {
  if (g._points) return g._points;
  let n = 0;
  for (let k = 0; k < g.bits.length; ++k) if (g.bits[k]) ++n;
  const out = new Int32Array(2 * n);
  let at = 0;
  for (let y = 0; y < g.height; ++y) {
    for (let x = 0; x < g.width; ++x) {
      if (!g.bits[y * g.width + x]) continue;
      out[at++] = g.originX + x;
      out[at++] = g.originY + y;
    }
  }
  try {
    Object.defineProperty(g, '_points', { value: out, enumerable: false });
  } catch (e) {
    // A frozen mask is worked out again each time.
  }
  return out;
}

// A line's glyphs, character by character where the measure offers that.
function printRuns(measure, font, shown) {
  if (measure.GlyphRuns) return measure.GlyphRuns(font, shown);
  return [[0, measure.Glyphs(font, shown)]];
}

// The runs [[dx, glyphs], ...] of a line printed at every stamp, in order.
// Stamps come flat, three numbers each: x, y, colour.
KP.StampRuns = function (dst, runs, stamps) {
  if (dst.w <= 0 || stamps.length === 0) return;
  const w = dst.w, h = dst.h, px = dst.px;
  // The line's ink box, for the stamps that need no clipping.
  let x0 = 0, y0 = 0, x1 = 0, y1 = 0, any = false;
  for (let r = 0; r < runs.length; ++r) {
    const g = runs[r][1];
    if (!glyphsShow(g)) continue;
    const gx = runs[r][0] + g.originX;
    if (!any || gx < x0) x0 = gx;
    if (!any || g.originY < y0) y0 = g.originY;
    if (!any || gx + g.width > x1) x1 = gx + g.width;
    if (!any || g.originY + g.height > y1) y1 = g.originY + g.height;
    any = true;
  }
  if (!any) return;
  // Each stamp is one colour, so its characters may go in any order;
  // stamps keep theirs, a later one covering an earlier one.
  for (let m = 0; m < stamps.length; m += 3) {
    const sx = stamps[m], sy = stamps[m + 1], p = KP.toPixel(stamps[m + 2]) | 0;
    const inside = sx + x0 >= 0 && sy + y0 >= 0 && sx + x1 <= w && sy + y1 <= h;
    for (let r = 0; r < runs.length; ++r) {
      const g = runs[r][1];
      if (!glyphsShow(g)) continue;
      const q = glyphPoints(g), ox = sx + runs[r][0];
      if (inside) stampInside(px, w, q, ox, sy, p);
      else stampClipped(px, w, h, q, ox, sy, p);
    }
  }
};

function glyphsShow(g) {
  return !!g && g.width > 0 && g.height > 0;
}

// The loops of a stamp stand by themselves: the browser compiles a hot
// loop with the function around it, and small ones compile fast.
function stampInside(px, w, q, ox, sy, p) {
  for (let k = 0; k < q.length; k += 2) px[(sy + q[k + 1]) * w + ox + q[k]] = p;
}

function stampClipped(px, w, h, q, ox, sy, p) {
  for (let k = 0; k < q.length; k += 2) {
    const x = ox + q[k], y = sy + q[k + 1];
    if (x >= 0 && y >= 0 && x < w && y < h) px[y * w + x] = p;
  }
}

// The stamps that show: one that a later stamp at the same place covers
// (the text border prints the rows beside the base line twice) leaves no
// pixel of its own, so it is dropped; the rest keep their order.
function lastStampsOnly(stamps) {
  const seen = new Set();
  const keep = [];
  for (let m = stamps.length - 3; m >= 0; m -= 3) {
    // x lies in the 16-bit range and y near it, so the key is exact.
    const place = (stamps[m] + 65536) * 262144 + (stamps[m + 1] + 131072);
    if (seen.has(place)) continue;
    seen.add(place);
    keep.push(m);
  }
  if (keep.length * 3 === stamps.length) return stamps;
  const out = [];
  for (let k = keep.length - 1; k >= 0; --k) out.push(stamps[keep[k]], stamps[keep[k] + 1], stamps[keep[k] + 2]);
  return out;
}

function labelFont(FontName, FontSize, Bold, Italic) {
  return { name: KP.PrintedFontName(FontName), size: FontSize, bold: Bold, italic: Italic };
}

// The font of button b's label in state s.
function stateFont(b, s) {
  const style = b.FontStyle[s];
  return labelFont(b.Font[s], b.FontSize[s], style === 1 || style === 3, style === 2 || style === 3);
}

// What printing a line needs: its height and its glyph runs. A measure
// that keeps them (the canvas measure) answers a line it has seen with
// one lookup.
function setupPrint(measure, s, font) {
  const shown = KP.LabelDisplayText(s);
  if (measure.PrintSetup) return measure.PrintSetup(font, shown);
  return { TH: Math.fround(measure.TextHeight(font, shown)), runs: printRuns(measure, font, shown) };
}

// The stamps of one row of the text border at yy; returns the next shade
// step. Along the row the shade steps on only when LeftToRight.
function tframeRow(stamps, ps, X, yy, Thick, c, Light, Shade, LeftToRight, n) {
  let fore = 0;
  if (!LeftToRight) {
    fore = KP.ShadeColor(Shade, Thick, c.R, c.G, c.B, n, Light);
    if (fore === null) throw KP.Overflow;
    n = KP.add16(n, 1);
  } else {
    n = 0;
  }
  const top = KP.PrintTop(yy, ps.TH);
  const last = KP.add16(X, Thick);
  for (let xx = KP.sub16(X, Thick); xx <= last; ++xx) {
    if (LeftToRight) {
      fore = KP.ShadeColor(Shade, Thick, c.R, c.G, c.B, n, Light);
      if (fore === null) throw KP.Overflow;
      n = KP.add16(n, 1);
    }
    stamps.push(xx, top, fore);
  }
  return n;
}

// The text border of one line: the line printed at every offset around
// (X, Y) up to Thick, each print in a shade of Color; first the rows from
// the top down to Y, then from the bottom up to Y - 1.
function printTFrame(surface, ps, s, X, Y, Thick, Color, Light, Shade, LeftToRight) {
  const c = KP.PartsOf(Color);
  const stamps = [];
  let error = null;
  try {
    let n = -1;
    for (let yy = KP.sub16(Y, Thick); yy <= Y; ++yy)
      n = tframeRow(stamps, ps, X, yy, Thick, c, Light, Shade, LeftToRight, n);
    n = -1;
    const stop = KP.sub16(Y, 1);
    for (let yy = KP.add16(Y, Thick); yy >= stop; --yy)
      n = tframeRow(stamps, ps, X, yy, Thick, c, Light, Shade, LeftToRight, n);
  } catch (e) {
    error = e;
  }
  // What was printed before an error stays printed.
  if (s) KP.StampRuns(surface, ps.runs, lastStampsOnly(stamps));
  if (error) throw error;
}

// The text border and then the line over it, from one print setup; `ps`
// is the line's setup when the caller has it already.
function printLine(surface, measure, b, s, font, line, x, y, ps) {
  const thick = b.TFrameThick[s];
  if (thick < 1 && !line) return;
  if (!ps) ps = setupPrint(measure, line, font);
  if (thick >= 1)
    printTFrame(surface, ps, line, x, y, thick, b.TFrameColor[s], b.TFrameLight[s], b.TFrameShade[s],
      b.TFrameLeftToRight[s]);
  if (line) KP.StampRuns(surface, ps.runs, [x, KP.PrintTop(y, ps.TH), b.FontColor[s]]);
}

// The print setup of a stored line that shows as stored, from a measure
// that keeps setups; null otherwise. Its height and width are the line's
// TextHeight and TextWidth, so a label asks the measure once a line.
function storedSetup(measure, font, line) {
  return measure.PrintSetup && line.indexOf('&') < 0 ? measure.PrintSetup(font, line) : null;
}

function lineHeight(measure, font, line, ps) {
  return ps ? ps.TH : Math.fround(measure.TextHeight(font, line));
}

// The label of button record b in state s on its surface. A centred
// label's first line place is written back into the record, as the
// designer's label positioner reads it from there. An overflow ends the
// label quietly; the designer would show an error box.
KP.DrawLabel = function (surface, measure, b, s, applet) {
  const f32 = Math.fround;
  try {
    const font = stateFont(b, s);
    // Measured as stored; only the print shows the escapes.
    const lines = KP.SplitLabel(b.Label[s]);
    const N = lines.length;
    const W = f32(surface.w), H = f32(surface.h);
    if (!b.PositionText[s]) {
      // Centred. The divisors 3 and 4 with the print's three quarters
      // place the text as the applet does.
      const first = storedSetup(measure, font, lines[0]);
      const TH1 = lineHeight(measure, font, lines[0], first);
      let y = N === 1 ? KP.cint(f32(f32(H / 2) + f32(TH1 / 3)))
        : KP.cint(f32(f32(H / 2) - f32(f32(TH1 * N) / 4)));
      for (let k = 1; k <= N; ++k) {
        const line = lines[k - 1];
        const ps = k === 1 ? first : storedSetup(measure, font, line);
        const tw = f32(ps ? ps.width : measure.TextWidth(font, line));
        let x = KP.cint(f32(f32(W / 2) - f32(tw / 2)));
        if (k > 1) y = KP.cint(f32(lineHeight(measure, font, line, ps) + y));
        let drawY = y;
        if (s === 3) {
          // The pressed look moves the print; the stored y stays without.
          x = KP.add16(x, applet.iDescentX);
          drawY = KP.add16(y, applet.iDescentY);
        }
        printLine(surface, measure, b, s, font, line, x, drawY, ps);
        if (k === 1) KP.StoreLabelPos(b, s, x, y);
      }
    } else {
      const x = b.LabelPosX[s];
      let y = b.LabelPosY[s];
      for (let k = 1; k <= N; ++k) {
        const line = lines[k - 1];
        const ps = storedSetup(measure, font, line);
        if (k > 1) y = KP.cint(f32(lineHeight(measure, font, line, ps) + y));
        printLine(surface, measure, b, s, font, line, x, y, ps);
      }
    }
  } catch (e) {
    if (e !== KP.Overflow) throw e;
  }
};

// What printing button b's label in state s needs, set up ahead in the
// measure: its font's face and the glyphs of each line. Draws nothing.
KP.WarmLabel = function (measure, b, s) {
  const font = stateFont(b, s);
  const lines = KP.SplitLabel(b.Label[s]);
  for (let k = 0; k < lines.length; ++k) {
    if (lines[k]) setupPrint(measure, lines[k], font);
  }
};

KP.StoreLabelPos = function (b, s, x, y) {
  if (!b.LabelPosX || !b.LabelPosY) return;
  b.LabelPosX[s] = x;
  b.LabelPosY[s] = y;
};
