// Surfaces and the raster operations every drawing routine uses. A pixel
// is 0xFF000000 | colour with red in the low byte, the byte order of
// canvas ImageData on little-endian machines, so a surface needs no
// conversion on its way to the screen. Integer code only, clipped to the
// surfaces involved.

const PX_OPAQUE = 0xFF000000;
const PX_COLOUR = 0x00FFFFFF;

KP.SRCCOPY = 0xCC0020;
KP.SRCINVERT = 0x660046;
KP.SRCAND = 0x8800C6;
KP.SRCPAINT = 0xEE0086;

KP.toPixel = function (c) {
  return (PX_OPAQUE | (c & PX_COLOUR)) >>> 0;
};

// A size of 0 or less gives an empty surface, on which every operation
// does nothing.
KP.newSurface = function (w, h, fill) {
  w = w > 0 ? w | 0 : 0;
  h = h > 0 ? h | 0 : 0;
  if (w === 0 || h === 0) w = h = 0;
  const s = { w: w, h: h, px: new Uint32Array(w * h), backColor: 0xFFFFFF, Left: 0, Top: 0 };
  // Opaque black until painted: every pixel of a surface is opaque, which
  // lets composing copy rows (see copyOpaque).
  s.px.fill((fill !== undefined ? KP.toPixel(fill) : PX_OPAQUE) | 0);
  return s;
};

function surfaceEmpty(s) {
  return !s || s.w <= 0 || s.h <= 0;
}

// n pixels of s from si combined onto d from di.
function pxBlendRow(d, di, s, si, n, rop) {
  let k;
  switch (rop) {
    case KP.SRCCOPY:
      for (k = 0; k < n; ++k) d[di + k] = PX_OPAQUE | (s[si + k] & PX_COLOUR);
      break;
    case KP.SRCINVERT:
      for (k = 0; k < n; ++k) d[di + k] = PX_OPAQUE | ((d[di + k] ^ s[si + k]) & PX_COLOUR);
      break;
    case KP.SRCAND:
      for (k = 0; k < n; ++k) d[di + k] = PX_OPAQUE | ((d[di + k] & s[si + k]) & PX_COLOUR);
      break;
    case KP.SRCPAINT:
      for (k = 0; k < n; ++k) d[di + k] = PX_OPAQUE | ((d[di + k] | s[si + k]) & PX_COLOUR);
      break;
    default:
      break;
  }
}

KP.bitBlt = function (dst, dx, dy, w, h, src, sx, sy, rop) {
  if (surfaceEmpty(dst) || surfaceEmpty(src) || w <= 0 || h <= 0) return;
  // Clip against the source, then the destination, moving both corners.
  if (sx < 0) { dx -= sx; w += sx; sx = 0; }
  if (sy < 0) { dy -= sy; h += sy; sy = 0; }
  if (dx < 0) { sx -= dx; w += dx; dx = 0; }
  if (dy < 0) { sy -= dy; h += dy; dy = 0; }
  w = Math.min(w, src.w - sx, dst.w - dx);
  h = Math.min(h, src.h - sy, dst.h - dy);
  if (w <= 0 || h <= 0) return;
  let spx = src.px, sw = src.w;
  if (dst.px === src.px) {
    // The copy must read the pixels from before it began.
    const part = new Uint32Array(w * h);
    for (let y = 0; y < h; ++y) part.set(spx.subarray((sy + y) * sw + sx, (sy + y) * sw + sx + w), y * w);
    spx = part; sw = w; sx = 0; sy = 0;
  }
  // Surfaces hold opaque pixels only, so a copy moves rows as they are.
  if (rop === KP.SRCCOPY) {
    KP.copyOpaque(dst, dx, dy, w, h, { w: sw, px: spx }, sx, sy);
    return;
  }
  const d = dst.px;
  for (let y = 0; y < h; ++y) pxBlendRow(d, (dy + y) * dst.w + dx, spx, (sy + y) * sw + sx, w, rop);
};

// SRCCOPY of a rectangle that lies inside both surfaces. Surfaces hold
// opaque pixels only (they start opaque, and every write is a colour made
// a pixel or a raster operation, which sets the alpha), so the copy needs
// no alpha of its own and goes row by row.
KP.copyOpaque = function (dst, dx, dy, w, h, src, sx, sy) {
  const d = dst.px, s = src.px, dw = dst.w, sw = src.w;
  // Within one buffer a row is moved without a view of its own: a bar of a
  // thousand buttons would make twenty thousand.
  if (d.buffer === s.buffer && d !== s) {
    const all = wholeBuffer(d.buffer);
    const d0 = d.byteOffset >> 2, s0 = s.byteOffset >> 2;
    for (let y = 0; y < h; ++y) {
      const at = s0 + (sy + y) * sw + sx;
      all.copyWithin(d0 + (dy + y) * dw + dx, at, at + w);
    }
    return;
  }
  for (let y = 0; y < h; ++y) {
    const at = (sy + y) * sw + sx;
    d.set(s.subarray(at, at + w), (dy + y) * dw + dx);
  }
};

// A view of a whole buffer. Composing asks for the same one a thousand
// times, so the last one is kept.
let wholeOf = null, wholeView = null;
function wholeBuffer(buffer) {
  if (buffer !== wholeOf) {
    wholeOf = buffer;
    wholeView = new Uint32Array(buffer);
  }
  return wholeView;
}

// Each destination pixel takes the source pixel under its centre.
KP.stretchBlt = function (dst, dx, dy, dw, dh, src, sx, sy, sw, sh, rop) {
  if (surfaceEmpty(dst) || surfaceEmpty(src) || dw <= 0 || dh <= 0 || sw <= 0 || sh <= 0) return;
  if (dw === sw && dh === sh) {
    KP.bitBlt(dst, dx, dy, dw, dh, src, sx, sy, rop);
    return;
  }
  const spx = dst.px === src.px ? src.px.slice() : src.px;
  const x0 = Math.max(0, dx), x1 = Math.min(dst.w, dx + dw);
  const y0 = Math.max(0, dy), y1 = Math.min(dst.h, dy + dh);
  if (x0 >= x1 || y0 >= y1) return;
  const n = x1 - x0;
  const col = new Int32Array(n);
  for (let x = x0; x < x1; ++x) col[x - x0] = sx + Math.floor(((2 * (x - dx) + 1) * sw) / (2 * dw));
  const line = new Uint32Array(n);
  const d = dst.px;
  for (let y = y0; y < y1; ++y) {
    const syy = sy + Math.floor(((2 * (y - dy) + 1) * sh) / (2 * dh));
    if (syy < 0 || syy >= src.h) continue;
    const rowAt = syy * src.w;
    const drow = y * dst.w + x0;
    let k = 0;
    while (k < n) {
      const c = col[k];
      if (c < 0 || c >= src.w) { ++k; continue; }
      const start = k;
      let m = 0;
      while (k < n) {
        const cc = col[k];
        if (cc < 0 || cc >= src.w) break;
        line[m++] = spx[rowAt + cc];
        ++k;
      }
      pxBlendRow(d, drow + start, line, 0, m, rop);
    }
  }
};

KP.pset = function (dst, x, y, c) {
  if (x < 0 || y < 0 || x >= dst.w || y >= dst.h) return;
  dst.px[y * dst.w + x] = KP.toPixel(c);
};

// The colour at (x, y); -1 outside.
KP.point = function (src, x, y) {
  if (x < 0 || y < 0 || x >= src.w || y >= src.h) return -1;
  return src.px[y * src.w + x] & PX_COLOUR;
};

KP.fillRect = function (dst, x, y, w, h, c) {
  if (surfaceEmpty(dst)) return;
  const x0 = Math.max(0, x), y0 = Math.max(0, y);
  const x1 = Math.min(dst.w, x + w), y1 = Math.min(dst.h, y + h);
  if (x0 >= x1 || y0 >= y1) return;
  const p = KP.toPixel(c);
  const px = dst.px, stride = dst.w;
  // Fades and borders fill one-pixel columns and short runs, where a call
  // of fill() per row costs more than the pixels themselves.
  if (x1 - x0 < 16) {
    for (let yy = y0; yy < y1; ++yy) {
      for (let i = yy * stride + x0, e = yy * stride + x1; i < e; ++i) px[i] = p;
    }
    return;
  }
  // The same bits as a small integer: fill() takes those far faster.
  const q = p | 0;
  for (let yy = y0; yy < y1; ++yy) px.fill(q, yy * stride + x0, yy * stride + x1);
};

// The end point is left out, in whichever direction the line runs.
KP.drawLine = function (dst, x1, y1, x2, y2, c) {
  if (surfaceEmpty(dst) || (x1 === x2 && y1 === y2)) return;
  if (y1 === y2) {
    if (x2 > x1) KP.fillRect(dst, x1, y1, x2 - x1, 1, c);
    else KP.fillRect(dst, x2 + 1, y1, x1 - x2, 1, c);
    return;
  }
  if (x1 === x2) {
    if (y2 > y1) KP.fillRect(dst, x1, y1, 1, y2 - y1, c);
    else KP.fillRect(dst, x1, y2 + 1, 1, y1 - y2, c);
    return;
  }
  const adx = Math.abs(x2 - x1), ady = Math.abs(y2 - y1);
  const stx = x2 > x1 ? 1 : -1, sty = y2 > y1 ? 1 : -1;
  let x = x1, y = y1, n, err;
  if (adx >= ady) {
    err = 2 * ady - adx;
    for (n = 0; n < adx; ++n) {
      KP.pset(dst, x, y, c);
      if (err > 0) { y += sty; err -= 2 * adx; }
      err += 2 * ady;
      x += stx;
    }
  } else {
    err = 2 * adx - ady;
    for (n = 0; n < ady; ++n) {
      KP.pset(dst, x, y, c);
      if (err > 0) { x += stx; err -= 2 * ady; }
      err += 2 * adx;
      y += sty;
    }
  }
};

// A persistent surface keeps a back colour it is cleared to, as a picture
// box does.
KP.cls = function (s) {
  if (!surfaceEmpty(s)) s.px.fill(KP.toPixel(s.backColor) | 0);
};

KP.setBackColor = function (s, c) {
  s.backColor = c;
  KP.cls(s);
};

// The pixels that stay inside are kept; new ones take the back colour.
KP.resizeSurface = function (s, w, h) {
  w = Math.max(0, w | 0);
  h = Math.max(0, h | 0);
  if (w === 0 || h === 0) w = h = 0;
  if (w === s.w && h === s.h) return;
  const next = KP.newSurface(w, h, s.backColor);
  KP.bitBlt(next, 0, 0, w, h, s, 0, 0, KP.SRCCOPY);
  s.w = next.w;
  s.h = next.h;
  s.px = next.px;
};
