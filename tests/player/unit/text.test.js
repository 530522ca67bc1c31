// The canvas measure's use of the designer's advances (KP.QtAdvances, built
// from the fonts Qt measured): it takes them only when the browser's font
// has the same design advances, read here from the Liberation font files
// themselves; glyphs stand at the measured pen positions; soft hyphens take
// no room. Exact agreement with Qt is checked in Chromium
// (tests/player/browser/text.test.js).
const test = require('node:test');
const assert = require('node:assert/strict');
const fs = require('node:fs');
const KP = require('./load.js');

const FONT_DIR = '/usr/share/fonts/truetype/liberation';
const FILES = {
  'Arial': 'LiberationSans', 'Courier New': 'LiberationMono', 'Times New Roman': 'LiberationSerif',
};
const STYLES = ['Regular', 'Bold', 'Italic', 'BoldItalic'];

// Design advances of a TrueType file by code point (cmap format 4).
function designAdvances(file) {
  const b = fs.readFileSync(file);
  const tables = {};
  for (let i = 0, n = b.readUInt16BE(4); i < n; ++i) {
    const o = 12 + 16 * i;
    tables[b.toString('latin1', o, o + 4)] = b.readUInt32BE(o + 8);
  }
  const upem = b.readUInt16BE(tables.head + 18);
  const metrics = b.readUInt16BE(tables.hhea + 34);
  const advanceOf = (g) => b.readUInt16BE(tables.hmtx + 4 * Math.min(g, metrics - 1));
  const cmap = tables.cmap;
  let sub = -1;
  for (let i = 0, n = b.readUInt16BE(cmap + 2); i < n; ++i) {
    const o = cmap + 4 + 8 * i;
    if (b.readUInt16BE(o) === 3 && b.readUInt16BE(o + 2) === 1) sub = cmap + b.readUInt32BE(o + 4);
  }
  assert.ok(sub >= 0 && b.readUInt16BE(sub) === 4, 'a Unicode BMP cmap');
  const segs = b.readUInt16BE(sub + 6) / 2;
  const ends = sub + 14, starts = ends + 2 * segs + 2, deltas = starts + 2 * segs, ranges = deltas + 2 * segs;
  return {
    upem,
    of(code) {
      for (let s = 0; s < segs; ++s) {
        if (code > b.readUInt16BE(ends + 2 * s)) continue;
        const start = b.readUInt16BE(starts + 2 * s);
        if (code < start) return advanceOf(0);
        const delta = b.readInt16BE(deltas + 2 * s), range = b.readUInt16BE(ranges + 2 * s);
        let g = code;
        if (range) {
          g = b.readUInt16BE(ranges + 2 * s + range + 2 * (code - start));
          if (g) g += delta;
        } else {
          g += delta;
        }
        return advanceOf(g & 0xffff);
      }
      return advanceOf(0);
    },
  };
}

function fontsInstalled() {
  return fs.existsSync(`${FONT_DIR}/LiberationSans-Regular.ttf`);
}

// A canvas whose font has the given design advances (scaled linearly, as
// an unhinted browser measures) and which records where glyphs are drawn.
function fakeDocument(advancesOf) {
  const drawn = [];
  let t = { a: 1, e: 0 };
  const ctx = {
    font: '',
    measureText(text) {
      const px = Number(/(\d+)px/.exec(this.font)[1]);
      const family = /"([^"]+)"/.exec(this.font)[1];
      const style = (/bold/.test(this.font) ? 1 : 0) + (/italic/.test(this.font) ? 2 : 0);
      const f = advancesOf(family, style);
      let w = 0;
      for (const ch of text) w += f.of(ch.codePointAt(0)) * px / f.upem;
      return {
        width: w, fontBoundingBoxAscent: 0.9 * px, fontBoundingBoxDescent: 0.2 * px,
        actualBoundingBoxLeft: 0, actualBoundingBoxRight: w,
        actualBoundingBoxAscent: 0.7 * px, actualBoundingBoxDescent: 0,
      };
    },
    setTransform(a, b, c, d, e) { t = { a, e }; },
    fillRect() {},
    fillText(ch, x) {
      drawn.push({ ch, at: t.e + t.a * x, px: Number(/(\d+)px/.exec(this.font)[1]) });
    },
    getImageData(x, y, w, h) { return { data: new Uint8ClampedArray(w * h * 4) }; },
  };
  return { createElement: () => ({ width: 0, height: 0, getContext: () => ctx }), ctx, drawn };
}

function liberation() {
  const cache = new Map();
  return (family, style) => {
    const key = family + style;
    if (!cache.has(key)) cache.set(key, designAdvances(`${FONT_DIR}/${FILES[family]}-${STYLES[style]}.ttf`));
    return cache.get(key);
  };
}

const roundedDesign = (f, s, px) => [...s].reduce((w, ch) => w + Math.floor(f.of(ch.codePointAt(0)) * px / f.upem + 0.5), 0);

test('the build joined the designer\'s advances for the three families in four styles', () => {
  assert.equal(typeof KP.QtAdvances, 'object');
  for (const family of Object.keys(FILES))
    for (let style = 0; style < 4; ++style) assert.ok(KP.QtAdvances.faces[`${family}/${style}`], `${family}/${style}`);
});

test('a font with the table\'s design advances is measured by the table', { skip: !fontsInstalled() }, () => {
  const fonts = liberation();
  const doc = fakeDocument(fonts);
  const m = new KP.CanvasMeasure(doc);
  const text = 'Search the Home Page: 0123456789 \u00e9\u00df\u20ac';
  for (const family of Object.keys(FILES)) {
    for (let style = 0; style < 4; ++style) {
      let hinted = 0;
      for (let px = 6; px <= 40; ++px) {
        const font = { name: family, size: px, bold: (style & 1) !== 0, italic: (style & 2) !== 0 };
        assert.ok(m.face(font).table, `${family}/${style} ${px} px takes the table`);
        const w = m.TextWidth(font, text);
        assert.ok(Number.isInteger(w));
        const rounded = roundedDesign(fonts(family, style), text, px);
        assert.ok(Math.abs(w - rounded) <= text.length, `${family}/${style} ${px} px: ${w} near ${rounded}`);
        if (w !== rounded) ++hinted;
      }
      // Fixed-pitch fonts keep their rounded advances at most sizes.
      if (family !== 'Courier New') assert.ok(hinted > 0, `${family}/${style}: hinting shows somewhere`);
    }
  }
});

test('a font shown in several sizes is measured at the metric size once, with the same heights', () => {
  const doc = fakeDocument(() => ({ upem: 2048, of: () => 1100 }));
  const calls = new Map();
  const measure = doc.ctx.measureText;
  doc.ctx.measureText = function (text) {
    if (/ 2048px /.test(' ' + this.font)) calls.set(this.font, (calls.get(this.font) || 0) + 1);
    return measure.call(this, text);
  };
  const m = new KP.CanvasMeasure(doc);
  const font = (size, bold, italic) => ({ name: 'Arial', size, bold, italic });
  m.TextHeight(font(8, true, false));
  const perFont = [...calls.values()][0];
  assert.ok(perFont > 1);
  const heights = [8, 9, 10, 11, 12].map((size) => m.TextHeight(font(size, true, false)));
  // Another style is a font of its own, measured once too.
  for (const size of [9, 14]) {
    m.TextHeight(font(size, true, true));
    m.TextHeight(font(size, false, false));
  }
  assert.equal(calls.size, 3);
  for (const [css, n] of calls) assert.equal(n, perFont, css);
  // Each size scales the one measurement: 0.9 and 0.2 of the size, to 1/64 pixel each.
  assert.deepEqual(heights, [8, 9, 10, 11, 12].map((px) => (Math.round(0.9 * px * 64) + Math.round(0.2 * px * 64)) / 64));
});

test('past the table\'s largest size the advances are the rounded design ones', { skip: !fontsInstalled() }, () => {
  const fonts = liberation();
  const m = new KP.CanvasMeasure(fakeDocument(fonts));
  const px = KP.QtAdvances.max + 7;
  const text = 'Quite a large label';
  assert.equal(m.TextWidth({ name: 'Arial', size: px, bold: true, italic: false }, text),
    roundedDesign(fonts('Arial', 1), text, px));
});

test('a font with other design advances is measured by the browser, rounded per character', { skip: !fontsInstalled() }, () => {
  const fonts = liberation();
  // One character a few design units off is enough to tell another font.
  const doc = fakeDocument((family, style) => {
    const f = fonts(family, style);
    return { upem: f.upem, of: (code) => f.of(code) + (code === 0x61 ? 9 : 0) };
  });
  const m = new KP.CanvasMeasure(doc);
  const font = { name: 'Arial', size: 13, bold: true, italic: false };
  assert.equal(m.face(font).table, null);
  const f = fonts('Arial', 1);
  const text = 'Search';
  let want = 0;
  for (const ch of text) want += Math.round((f.of(ch.codePointAt(0)) + (ch === 'a' ? 9 : 0)) * 13 / f.upem);
  assert.equal(m.TextWidth(font, text), want);
});

test('glyphs stand at the pen positions the widths give, and soft hyphens take no room', { skip: !fontsInstalled() }, () => {
  const fonts = liberation();
  const doc = fakeDocument(fonts);
  const m = new KP.CanvasMeasure(doc);
  for (const italic of [false, true]) {
    const font = { name: 'Times', size: 17, bold: false, italic };
    const text = 'Wave\u00adlength 42';
    doc.drawn.length = 0;
    m.rasteriseRun(m.face(font), text);
    const f = fonts('Times New Roman', italic ? 2 : 0);
    const chars = [...text];
    // An italic glyph is centred in its whole-pixel advance.
    const offset = (ch) => (italic ? (m.TextWidth(font, ch) - f.of(ch.codePointAt(0)) * 17 / f.upem) / 2 : 0);
    const shown = chars.map((ch, k) => ({ ch, x: m.TextWidth(font, chars.slice(0, k).join('')) + offset(ch) }))
      .filter((g) => g.ch !== '\u00ad');
    assert.deepEqual(doc.drawn.map((g) => g.ch), shown.map((g) => g.ch));
    const scale = doc.drawn[0].px / font.size;
    for (let k = 1; k < shown.length; ++k) {
      const at = (doc.drawn[k].at - doc.drawn[0].at) / scale;
      assert.ok(Math.abs(at - (shown[k].x - shown[0].x)) < 1e-9,
        `${italic ? 'italic' : 'upright'} ${shown[k].ch} at ${at}, expected ${shown[k].x - shown[0].x}`);
    }
    assert.equal(m.TextWidth(font, 'Wave\u00adlength'), m.TextWidth(font, 'Wavelength'));
  }
});

test('a line\'s glyphs are each character\'s, drawn once per font and placed at its pen', { skip: !fontsInstalled() }, () => {
  const fonts = liberation();
  const m = new KP.CanvasMeasure(fakeDocument(fonts));
  const font = { name: 'Arial', size: 13, bold: false, italic: false };
  // Each character prints one pixel of its own, a code-dependent step
  // right of its pen and one row down per character.
  const runs = [];
  m.rasteriseRun = (face, ch) => {
    runs.push(ch);
    const c = ch.codePointAt(0);
    return { width: 1, height: 1, originX: c % 3, originY: c % 5 - 4, bits: Uint8Array.of(1) };
  };
  const text = 'ele\u00adve 1';
  const g = m.Glyphs(font, text);
  assert.deepEqual(runs, ['e', 'l', 'v', ' ', '1']);
  const want = new Set();
  let pen = 0;
  for (const ch of text) {
    const c = ch.codePointAt(0);
    if (ch !== '\u00ad') want.add(`${pen + (c % 3)},${c % 5 - 4}`);
    pen += m.TextWidth(font, ch);
  }
  const got = new Set();
  for (let y = 0; y < g.height; ++y)
    for (let x = 0; x < g.width; ++x) if (g.bits[y * g.width + x]) got.add(`${g.originX + x},${g.originY + y}`);
  assert.deepEqual([...got].sort(), [...want].sort());
  m.Glyphs(font, 'leve');
  assert.equal(runs.length, 5, 'known characters are not drawn again');
});
