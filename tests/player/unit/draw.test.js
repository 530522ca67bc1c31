// Raster operations, colour arithmetic, gradients, bevelled borders and
// pictures, as the designer's drawing does them.
const test = require('node:test');
const assert = require('node:assert/strict');
const { KP, RGB, pixelIs, rectIs } = require('./draw_fixture.js');

const kWhite = RGB(255, 255, 255);
const kRed = RGB(255, 0, 0);
const kPaper = RGB(1, 2, 3);

test('a pixel is 0xFF000000 with red in the low byte, as canvas ImageData on little-endian', () => {
  const s = KP.newSurface(1, 1, RGB(0x11, 0x22, 0x33));
  assert.equal(s.px[0], 0xFF332211);
});

test('bitBlt clips a source rectangle reaching outside both surfaces', () => {
  const dst = KP.newSurface(4, 4, kWhite);
  const src = KP.newSurface(3, 3, kRed);
  KP.bitBlt(dst, -1, 2, 5, 5, src, 0, 0, KP.SRCCOPY);
  rectIs(dst, 0, 2, 2, 1, kRed);
  rectIs(dst, 0, 3, 2, 1, kRed);
  rectIs(dst, 2, 2, 2, 2, kWhite);
  rectIs(dst, 0, 0, 4, 2, kWhite);
});

test('rows copied between surfaces of one buffer land as rows copied between two buffers', () => {
  const buffer = new Uint32Array(6 * 4 + 3 * 3).fill(0xFF000000 | 0);
  const shared = { w: 6, h: 4, px: buffer.subarray(0, 24) };
  const src = { w: 3, h: 3, px: buffer.subarray(24) };
  for (let k = 0; k < 9; k++) src.px[k] = (0xFF000000 | (k + 1) * 0x10101) >>> 0;
  const alone = { w: 6, h: 4, px: new Uint32Array(24).fill(0xFF000000 | 0) };
  const srcAlone = { w: 3, h: 3, px: Uint32Array.from(src.px) };
  KP.copyOpaque(shared, 2, 1, 2, 3, src, 1, 0);
  KP.copyOpaque(alone, 2, 1, 2, 3, srcAlone, 1, 0);
  assert.deepEqual(Array.from(shared.px), Array.from(alone.px));
  assert.equal(KP.point(shared, 2, 1), 0x020202);
  assert.equal(KP.point(shared, 3, 3), 0x090909);
  // The source, behind the destination in the buffer, is untouched.
  assert.deepEqual(Array.from(src.px), Array.from(srcAlone.px));
});

test('bitBlt within one surface reads the pixels from before the copy', () => {
  const s = KP.newSurface(4, 1, 0);
  [1, 2, 3, 4].forEach((v, k) => KP.pset(s, k, 0, v * 16));
  KP.bitBlt(s, 1, 0, 3, 1, s, 0, 0, KP.SRCCOPY);
  assert.deepEqual([0, 1, 2, 3].map((x) => KP.point(s, x, 0)), [16, 16, 32, 48]);
});

test('the combining operations XOR, AND and OR work on the colour bits', () => {
  for (const [rop, want] of [[KP.SRCINVERT, 0x0F0F0F ^ 0x00FF33], [KP.SRCAND, 0x0F0F0F & 0x00FF33],
    [KP.SRCPAINT, 0x0F0F0F | 0x00FF33]]) {
    const d = KP.newSurface(1, 1, 0x0F0F0F);
    KP.bitBlt(d, 0, 0, 1, 1, KP.newSurface(1, 1, 0x00FF33), 0, 0, rop);
    assert.equal(KP.point(d, 0, 0), want);
    assert.equal(d.px[0] >>> 24, 0xFF, 'the top byte stays set');
  }
});

test('stretchBlt takes the source pixel under each destination pixel centre', () => {
  const src = KP.newSurface(3, 1, 0);
  [10, 20, 30].forEach((v, k) => KP.pset(src, k, 0, v));
  const dst = KP.newSurface(7, 1, kWhite);
  KP.stretchBlt(dst, 0, 0, 7, 1, src, 0, 0, 3, 1, KP.SRCCOPY);
  // Column x samples floor((2x + 1) * 3 / 14).
  assert.deepEqual([0, 1, 2, 3, 4, 5, 6].map((x) => KP.point(dst, x, 0)), [10, 10, 20, 20, 20, 30, 30]);
  const down = KP.newSurface(2, 1, kWhite);
  KP.stretchBlt(down, 0, 0, 2, 1, src, 0, 0, 3, 1, KP.SRCCOPY);
  assert.deepEqual([KP.point(down, 0, 0), KP.point(down, 1, 0)], [10, 30]);
});

test('drawLine leaves out its end point in every direction', () => {
  const s = KP.newSurface(5, 5, kWhite);
  KP.drawLine(s, 0, 0, 4, 0, kRed);
  rectIs(s, 0, 0, 4, 1, kRed);
  pixelIs(s, 4, 0, kWhite);
  KP.drawLine(s, 4, 4, 4, 1, kRed);
  rectIs(s, 4, 2, 1, 3, kRed);
  pixelIs(s, 4, 1, kWhite);
  const d = KP.newSurface(5, 5, kWhite);
  KP.drawLine(d, 0, 0, 4, 2, kRed);
  pixelIs(d, 0, 0, kRed);
  pixelIs(d, 4, 2, kWhite);
});

test('GetColorPart follows the number of hexadecimal digits', () => {
  const cases = [['', '00', '00', '00'], ['F', '00', '00', '00'], ['AB', 'AB', '00', '00'],
    ['ABC', 'BC', '0A', '00'], ['ABCD', 'CD', 'AB', '00'], ['ABCDE', 'DE', 'BC', '0A'],
    ['ABCDEF', 'EF', 'CD', 'AB'], ['1ABCDEF', '', '', '']];
  for (const [h, r, g, b] of cases) {
    assert.equal(KP.GetColorPart(h, 'RED'), r, h);
    assert.equal(KP.GetColorPart(h, 'green'), g, h);
    assert.equal(KP.GetColorPart(h, 'Blue'), b, h);
  }
  assert.equal(KP.GetColorPart('ABCDEF', 'normal'), '');
});

test('a colour of one hex digit and a negative colour read as black', () => {
  assert.equal(KP.ColorPart(15, 'RED'), 0);
  assert.equal(KP.ColorPart(16, 'RED'), 16);
  assert.equal(KP.colourHex(-1), 'FFFFFFFF');
  assert.deepEqual(KP.PartsOf(-1), { R: 0, G: 0, B: 0 });
  assert.deepEqual(KP.PartsOf(RGB(1, 2, 3)), { R: 1, G: 2, B: 3 });
});

test('ShadeColor runs from Width times Shade down to Shade and clamps each part', () => {
  assert.equal(KP.ShadeColor(20, 2, 100, 100, 100, 0, true), RGB(140, 140, 140));
  assert.equal(KP.ShadeColor(20, 2, 100, 100, 100, 1, true), RGB(120, 120, 120));
  assert.equal(KP.ShadeColor(20, 2, 100, 100, 100, 0, false), RGB(60, 60, 60));
  assert.equal(KP.ShadeColor(10, 2, 250, 10, 128, 0, false), RGB(230, 0, 108));
  assert.equal(KP.ShadeColor(10, 2, 250, 10, 128, 0, true), RGB(255, 30, 148));
});

test('ShadeColor overflows when Width times Shade leaves 16 bits', () => {
  assert.equal(KP.ShadeColor(200, 200, 0, 0, 0, 0, true), null);
  assert.notEqual(KP.ShadeColor(181, 181, 0, 0, 0, 0, true), null);
});

test('Raised border 2/20 on RGB(100,100,100) gives rings 140 and 120 over 60 and 80', () => {
  const s = KP.newSurface(20, 10, kPaper);
  assert.equal(KP.Draw3DF(s, 1, 0, 0, 20, 10, RGB(100, 100, 100), 20, 2, false), true);
  const g = (v) => RGB(v, v, v);
  rectIs(s, 0, 0, 19, 1, g(140), 'top');
  rectIs(s, 0, 0, 1, 9, g(140), 'left');
  rectIs(s, 0, 9, 20, 1, g(60), 'bottom with both corners');
  rectIs(s, 19, 0, 1, 9, g(60), 'right');
  rectIs(s, 1, 1, 17, 1, g(120));
  rectIs(s, 1, 1, 1, 7, g(120));
  rectIs(s, 1, 8, 18, 1, g(80));
  rectIs(s, 18, 1, 1, 7, g(80));
  rectIs(s, 2, 2, 16, 6, kPaper);
});

test('border styles light the edges by the style table', () => {
  for (const [style, tl, br] of [[1, 110, 90], [2, 90, 110], [3, 110, 110], [4, 90, 90], [7, 110, 110]]) {
    const s = KP.newSurface(6, 6, kPaper);
    KP.Draw3DF(s, style, 0, 0, 6, 6, RGB(100, 100, 100), 10, 1, false);
    pixelIs(s, 0, 0, RGB(tl, tl, tl), 'style ' + style);
    pixelIs(s, 5, 5, RGB(br, br, br), 'style ' + style);
  }
  const none = KP.newSurface(6, 6, kPaper);
  KP.Draw3DF(none, 0, 0, 0, 6, 6, RGB(100, 100, 100), 10, 2, false);
  rectIs(none, 0, 0, 6, 6, kPaper);
});

test('a border wider than half the size crosses its rings without error', () => {
  const s = KP.newSurface(6, 6, kPaper);
  assert.equal(KP.Draw3DF(s, 1, 0, 0, 6, 6, RGB(100, 100, 100), 10, 5, false), true);
  pixelIs(s, 4, 4, RGB(110, 110, 110));
  pixelIs(s, 3, 3, RGB(120, 120, 120));
  pixelIs(s, 4, 1, RGB(90, 90, 90));
});

test('a border overflow stops the rings and reports false', () => {
  const s = KP.newSurface(6, 6, kPaper);
  assert.equal(KP.Draw3DF(s, 1, 0, 0, 6, 6, RGB(100, 100, 100), 200, 200, false), false);
  rectIs(s, 0, 0, 6, 6, kPaper);
});

test('dUvilich is the difference over the lines, or the difference itself', () => {
  assert.equal(KP.dUvilich(0, 100, 4), 25);
  assert.equal(KP.dUvilich(10, 10, 5), 0);
  assert.equal(KP.dUvilich(0, 7, 0), 7);
  assert.equal(KP.dUvilich(100, 0, 3), -100 / 3);
});

test('a gradient runs from C2 towards C1 and stops one step short', () => {
  const s = KP.newSurface(3, 5, kWhite);
  KP.Vycvet(s, RGB(100, 0, 0), RGB(0, 0, 100), 0, 0, 3, 4, 2);
  rectIs(s, 0, 0, 3, 1, RGB(0, 0, 100));
  rectIs(s, 0, 1, 3, 1, RGB(25, 0, 75));
  rectIs(s, 0, 3, 3, 1, RGB(75, 0, 25));
  rectIs(s, 0, 4, 3, 1, kWhite);
});

test('a gradient channel half way rounds to even', () => {
  let s = KP.newSurface(2, 1, kWhite);
  KP.Vycvet(s, RGB(5, 0, 16), RGB(0, 0, 16), 0, 0, 2, 1, 1);
  pixelIs(s, 1, 0, RGB(2, 0, 16), '2.5 rounds to 2');
  s = KP.newSurface(2, 1, kWhite);
  KP.Vycvet(s, RGB(7, 0, 16), RGB(0, 0, 16), 0, 0, 2, 1, 1);
  pixelIs(s, 1, 0, RGB(4, 0, 16), '3.5 rounds to 4');
});

test('a gradient of N=1 line has colour C2', () => {
  let s = KP.newSurface(3, 3, kWhite);
  KP.Vycvet(s, RGB(200, 0, 0), RGB(0, 200, 0), 1, 0, 1, 3, 1);
  rectIs(s, 1, 0, 1, 3, RGB(0, 200, 0));
  rectIs(s, 0, 0, 1, 3, kWhite);
  rectIs(s, 2, 0, 1, 3, kWhite);
  s = KP.newSurface(3, 3, kWhite);
  KP.Vycvet(s, RGB(200, 0, 0), RGB(0, 200, 0), 0, 2, 3, 1, 2);
  rectIs(s, 0, 2, 3, 1, RGB(0, 200, 0));
  rectIs(s, 0, 0, 3, 2, kWhite);
});

test('C1 = C2 fills the rectangle with that colour in every style', () => {
  const c = RGB(10, 20, 30);
  for (let style = 1; style <= 4; ++style) {
    const s = KP.newSurface(12, 9, kWhite);
    KP.Fade(s, c, c, 0, 0, 11, 8, style);
    rectIs(s, 0, 0, 11, 8, c, 'style ' + style);
  }
});

test('mono colour and unknown fade styles paint nothing', () => {
  for (const style of [0, 5, -1]) {
    const s = KP.newSurface(4, 4, kWhite);
    KP.Fade(s, kRed, RGB(0, 0, 255), 0, 0, 4, 4, style);
    rectIs(s, 0, 0, 4, 4, kWhite, 'style ' + style);
  }
});

test('width 101 in style 3 has halves of 50 and 52 lines and ends one pixel beyond', () => {
  const s = KP.newSurface(110, 2, kWhite);
  const c1 = RGB(200, 0, 0), c2 = RGB(0, 0, 200);
  KP.Fade(s, c1, c2, 0, 0, 101, 2, 3);
  pixelIs(s, 0, 0, c2);
  pixelIs(s, 49, 1, RGB(196, 0, 4));
  pixelIs(s, 50, 0, c1);
  pixelIs(s, 51, 0, RGB(196, 0, 4));
  pixelIs(s, 100, 0, RGB(8, 0, 192));
  pixelIs(s, 101, 1, RGB(4, 0, 196));
  pixelIs(s, 102, 0, kWhite);
});

test('style 4 splits the height, the second half starting at C1', () => {
  const s = KP.newSurface(2, 12, kWhite);
  KP.Fade(s, RGB(100, 0, 0), RGB(0, 0, 0), 0, 0, 2, 10, 4);
  pixelIs(s, 0, 0, RGB(0, 0, 0));
  pixelIs(s, 0, 4, RGB(80, 0, 0));
  pixelIs(s, 0, 5, RGB(100, 0, 0));
  pixelIs(s, 0, 10, RGB(17, 0, 0));
  pixelIs(s, 0, 11, kWhite);
});

test('a picture mask is the picture over black XOR the picture over white', () => {
  const pic = KP.pictureFromRGBA(3, 1, Uint8Array.from([10, 20, 30, 255, 10, 20, 30, 0, 200, 100, 50, 128]));
  const obj = KP.pictureObj(pic), mask = KP.pictureMask(pic);
  pixelIs(obj, 0, 0, RGB(10, 20, 30));
  pixelIs(mask, 0, 0, 0);
  pixelIs(obj, 1, 0, 0);
  pixelIs(mask, 1, 0, RGB(255, 255, 255));
  const over = (c, a, bg) => Math.floor((c * a + bg * (255 - a) + 127) / 255);
  pixelIs(obj, 2, 0, RGB(over(200, 128, 0), over(100, 128, 0), over(50, 128, 0)));
  pixelIs(mask, 2, 0, RGB(over(200, 128, 0) ^ over(200, 128, 255), over(100, 128, 0) ^ over(100, 128, 255),
    over(50, 128, 0) ^ over(50, 128, 255)));
});

test('a picture is opaque when its mask is all black, and then laid over or stretched as through its mask', () => {
  const rnd = numbers(7);
  const rgba = (w, h, alpha) => Uint8Array.from({ length: w * h * 4 }, (_, k) => (k % 4 === 3 ? alpha(k >> 2) : rnd() & 255));
  const solid = KP.pictureFromRGBA(5, 4, rgba(5, 4, () => 255));
  assert.equal(solid.opaque, true);
  // A corner half see-through, or one pixel of alpha 0 over black, is not opaque.
  assert.equal(KP.pictureFromRGBA(5, 4, rgba(5, 4, (k) => (k === 19 ? 128 : 255))).opaque, false);
  assert.equal(KP.pictureFromRGBA(2, 1, Uint8Array.from([0, 0, 0, 255, 0, 0, 0, 0])).opaque, false);
  const throughMask = { ...solid, opaque: false };
  const ground = () => {
    const s = KP.newSurface(12, 9, 0);
    for (let k = 0; k < s.px.length; ++k) s.px[k] = (0xFF000000 | (rnd() & 0xFFFFFF)) >>> 0;
    return s;
  };
  for (const [x, y] of [[0, 0], [3, 2], [-2, -1], [9, 7]]) {
    const a = ground(), b = KP.newSurface(12, 9, 0);
    b.px.set(a.px);
    KP.overlayPicture(a, solid, x, y);
    KP.overlayPicture(b, throughMask, x, y);
    assert.deepEqual(Array.from(a.px), Array.from(b.px), `over at ${x}, ${y}`);
    const c = ground(), d = KP.newSurface(12, 9, 0);
    d.px.set(c.px);
    KP.stretchPicture(c, solid, x, y, 9, 7);
    KP.stretchPicture(d, throughMask, x, y, 9, 7);
    assert.deepEqual(Array.from(c.px), Array.from(d.px), `stretched at ${x}, ${y}`);
  }
});

test('the rounding of fractional positions is half to even, and out of range overflows', () => {
  assert.deepEqual([0.5, 1.5, 2.5, -0.5, -1.5, 7.5, 6.5].map(KP.roundEven), [0, 2, 2, 0, -2, 8, 6]);
  assert.throws(() => KP.cint(32767.6), (e) => e === KP.Overflow);
  assert.throws(() => KP.cint(NaN), (e) => e === KP.Overflow);
  assert.equal(KP.cint(-32768.4), -32768);
});

// A small deterministic generator, so a failure can be repeated.
function numbers(seed) {
  let x = seed >>> 0;
  return () => {
    x = (Math.imul(x, 1664525) + 1013904223) >>> 0;
    return x;
  };
}

test('the three parts of a colour read at once equal each part read from its hexadecimal text', () => {
  const next = numbers(7);
  const colours = [-1, -2, 0x7FFFFFFF, -0x80000000, 0x1000000, 0xFFFFFF, 0x100000, 0xFFFFF, 0x10000, 0xFFFF, 0x1000, 0xFFF, 0x100];
  for (let c = 0; c <= 300; ++c) colours.push(c);
  for (let k = 0; k < 3000; ++k) colours.push(next() | 0, next() & 0xFFFFFF, next() & 0xFFFF, next() & 0xFFF);
  for (const c of colours) {
    assert.deepEqual(KP.PartsOf(c), { R: KP.ColorPart(c, 'RED'), G: KP.ColorPart(c, 'GREEN'), B: KP.ColorPart(c, 'BLUE') }, String(c));
  }
});

test('a shade gives null exactly where one of its 16-bit steps overflows', () => {
  // Each step of the sum as its own checked 16-bit operation, part by part.
  const reference = (Shade, Width, R, G, B, k, bLight) => {
    try {
      const part = [R, G, B];
      for (let n = 0; n < 3; ++n) {
        const far = KP.mul16(Width, Shade), near = KP.mul16(k, Shade);
        let v = bLight ? KP.add16(part[n], KP.sub16(far, near)) : KP.add16(part[n], KP.sub16(near, far));
        part[n] = Math.max(0, Math.min(255, v));
      }
      return KP.RGB(part[0], part[1], part[2]);
    } catch (e) {
      if (e === KP.Overflow) return null;
      throw e;
    }
  };
  const next = numbers(11);
  const pick = (values) => values[next() % values.length];
  const sizes = [0, 1, 2, 5, 127, 128, 181, 182, 255, 256, 16383, 16384, 32767, -1, -181, -32768];
  let nulls = 0;
  for (let t = 0; t < 20000; ++t) {
    const args = [pick(sizes), pick(sizes), pick([0, 255, 32767, -32768, 100]), pick([0, 255, 32767, 7]),
      pick([0, 255, -32768, 9]), pick(sizes), (next() & 1) === 1];
    const want = reference(...args);
    if (want === null) ++nulls;
    assert.equal(KP.ShadeColor(...args), want, JSON.stringify(args));
  }
  assert.ok(nulls > 1000, 'the cases reach the overflows');
});

test('a new surface is opaque everywhere, and an opaque copy equals SRCCOPY', () => {
  const blank = KP.newSurface(3, 2);
  assert.ok(Array.from(blank.px).every((p) => p === 0xFF000000));
  const src = KP.newSurface(5, 4, kRed);
  KP.fillRect(src, 1, 1, 2, 2, RGB(1, 2, 3));
  const a = KP.newSurface(6, 6, kWhite), b = KP.newSurface(6, 6, kWhite);
  KP.bitBlt(a, 2, 1, 3, 3, src, 1, 0, KP.SRCCOPY);
  KP.copyOpaque(b, 2, 1, 3, 3, src, 1, 0);
  assert.deepEqual(Array.from(b.px), Array.from(a.px));
  assert.notDeepEqual(Array.from(b.px), Array.from(KP.newSurface(6, 6, kWhite).px));
});
