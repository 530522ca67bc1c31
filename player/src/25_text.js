// Text: the label's display text, font names, and a text measure that
// draws on a canvas. The label code asks a measure for sizes and glyph
// pixels; tests put in a measure with fixed metrics.

// "&nbsp" and "&!0" as blanks and the other field escapes as their
// characters, in the order the designer undoes them.
const LABEL_ESCAPES = [['&nbsp', ' '], ['&!0', ' '], ['&!1', ';'], ['&!2', '"'], ['&!3', '|'], ['&!4', '^']];
KP.LabelDisplayText = function (stored) {
  let s = String(stored);
  if (s.indexOf('&') < 0) return s;
  for (const e of LABEL_ESCAPES) s = s.split(e[0]).join(e[1]);
  return s;
};

// The family drawn for a font name of a project: the generic names and
// the old short names stand for the fonts they were drawn with; the
// system maps those onto its metric twins.
KP.ResolveFontFamily = function (name) {
  const l = String(name).trim().toLowerCase();
  if (l === 'dialog' || l === 'sansserif' || l === 'helvetica') return 'Arial';
  if (l === 'dialoginput' || l === 'monospaced' || l === 'courier') return 'Courier New';
  if (l === 'serif' || l === 'timesroman' || l === 'times') return 'Times New Roman';
  return name;
};

function cssFontOf(font) {
  const family = KP.ResolveFontFamily(font.name);
  const l = family.toLowerCase();
  const generic = l === 'courier new' ? 'monospace' : l === 'times new roman' ? 'serif' : 'sans-serif';
  return (font.italic ? 'italic ' : '') + (font.bold ? 'bold ' : '') + Math.max(1, font.size | 0) +
    'px "' + family.replace(/["\\]/g, '') + '", ' + generic;
}

// The em size at which a font's vertical metrics come out in its design
// units (TrueType fonts have 2048 units an em).
const METRIC_EM = 2048;

// The designer's advances (KP.QtAdvances, joined in when the build could
// measure them) for a face, as whole pixels at one size, indexed as the
// table's codes. A font it never measured has none.
const SOFT_HYPHEN = '\u00AD';
let advanceCodes = null;

function advanceIndex(ch) {
  if (!advanceCodes) {
    advanceCodes = new Map();
    KP.QtAdvances.codes.forEach(function (c, i) { advanceCodes.set(String.fromCharCode(c), i); });
  }
  return advanceCodes.get(ch);
}

// A digit of the table's strings: printable ASCII from '#' without '\'.
function tableDigit(s, i) {
  const c = s.charCodeAt(i);
  return c - (c > 92 ? 36 : 35);
}

// The table's entries by lower-case family and style, their strings
// unpacked on first use.
let tableFaces = null;

function tableFaceOf(family, font) {
  const t = typeof KP.QtAdvances === 'object' ? KP.QtAdvances : null;
  if (!t) return null;
  if (!tableFaces) {
    tableFaces = new Map();
    for (const key of Object.keys(t.faces)) tableFaces.set(key.toLowerCase(), { raw: t.faces[key] });
  }
  const entry = tableFaces.get(String(family).trim().toLowerCase() + '/' +
    ((font.bold ? 1 : 0) + (font.italic ? 2 : 0)));
  if (!entry) return null;
  if (!entry.units) {
    const raw = entry.raw, n = t.codes.length;
    entry.upem = raw.upem;
    entry.units = new Uint16Array(n);
    for (let i = 0; i < n; ++i) entry.units[i] = tableDigit(raw.units, 2 * i) * 91 + tableDigit(raw.units, 2 * i + 1);
    entry.sizes = raw.dev.split('!');
  }
  return entry;
}

// Whole-pixel advances at `px`: the rounded design advance, put right where
// hinting gives another (the encoding is kp_textmetrics's).
function tableAdvances(entry, px) {
  const t = KP.QtAdvances;
  const units = entry.units;
  const adv = new Int16Array(units.length);
  for (let i = 0; i < units.length; ++i) adv[i] = Math.floor(units[i] * px / entry.upem + 0.5);
  const s = px <= t.max ? entry.sizes[px - 1] || '' : '';
  let code = -1;
  for (let k = 0; k < s.length;) {
    const v = tableDigit(s, k++);
    if (v < 64) {
      code += (v >> 1) + 1;
      adv[code] += v & 1 ? 1 : -1;
    } else if (v === 80) {
      code += 91;
    } else {
      const d = v - 64;
      code += tableDigit(s, k++) + 1;
      adv[code] += d < 8 ? -d - 1 : d - 7;
    }
  }
  return adv;
}

// Whether the browser's font is the one the table measured, or one with the
// same advances: the canvas font must be set at METRIC_EM pixels.
function sameAdvances(ctx, entry) {
  const codes = KP.QtAdvances.codes;
  for (let i = 0; i < codes.length && codes[i] < 127; ++i) {
    const want = entry.units[i] * METRIC_EM / entry.upem;
    if (!(Math.abs(ctx.measureText(String.fromCharCode(codes[i])).width - want) <= 2)) return false;
  }
  return true;
}

// Measuring and glyphs on a canvas. The designer prints unantialiased,
// hinted glyphs; a browser gives coverage of unhinted outlines, read back
// at one point a pixel (see rasterise). Heights follow the designer's font
// engine: ascent and descent scaled from the font's design units and each
// rounded to 1/64 pixel. Widths add the characters' whole-pixel advances:
// the designer's own where its table has the face and the browser's font
// has the same design advances, else the browser's rounded.
KP.CanvasMeasure = function (doc) {
  doc = doc || (typeof document !== 'undefined' ? document : null);
  this.canvas = doc.createElement('canvas');
  this.canvas.width = 64;
  this.canvas.height = 64;
  this.ctx = this.canvas.getContext('2d', { willReadFrequently: true });
  this.faces = new Map();
  this.ems = new Map();
};

KP.CanvasMeasure.prototype.face = function (font) {
  // A bar's labels mostly share one font, and a label asks for its face
  // several times: the last one answers without building a key.
  const last = this.lastFace;
  if (last && last.name === font.name && last.size === font.size && last.bold === !!font.bold &&
    last.italic === !!font.italic) return last.face;
  const key = font.name + '\x1f' + font.size + (font.bold ? 'b' : '-') + (font.italic ? 'i' : '-');
  let face = this.faces.get(key);
  if (face) {
    this.lastFace = { name: font.name, size: font.size, bold: !!font.bold, italic: !!font.italic, face: face };
    return face;
  }
  if (this.faces.size > 256) {
    this.faces.clear();
    this.lastFace = null;
  }
  const px = Math.max(1, font.size | 0);
  const css = cssFontOf(font);
  const entry = tableFaceOf(KP.ResolveFontFamily(font.name), font);
  const em = this.emMetrics(css.replace(/\d+px/, METRIC_EM + 'px'), font.name, entry);
  const asc64 = Math.round(em.ascUnits * px * 64 / METRIC_EM);
  const desc64 = Math.round(em.descUnits * px * 64 / METRIC_EM);
  face = {
    css: css,
    large: css.replace(/\d+px/, px * SAMPLES + 'px'),
    px: px,
    italic: !!font.italic,
    height: (asc64 + desc64) / 64,
    ascent: Math.floor((asc64 + 32) / 64),
    descent: Math.floor((desc64 + 32) / 64),
    table: em.sameAdvances ? tableAdvances(entry, px) : null,
    advances: new Map(),
    outlines: new Map(),
    widths: new Map(),
    glyphs: new Map(),
  };
  this.faces.set(key, face);
  this.lastFace = { name: font.name, size: font.size, bold: !!font.bold, italic: !!font.italic, face: face };
  return face;
};

// What a font gives at METRIC_EM pixels, the same for every size of it:
// its ascent and descent in units of that size, and whether it has the
// advances of the designer's table `entry`. Measured once a font: a bar
// that shows one font in four sizes would measure a hundred characters
// four times.
KP.CanvasMeasure.prototype.emMetrics = function (big, name, entry) {
  const key = big + '\x1f' + name;
  let em = this.ems.get(key);
  if (em) return em;
  const ctx = this.ctx;
  this.fontOn = null;
  ctx.font = big;
  if ('fontKerning' in ctx) ctx.fontKerning = 'none';
  const mb = ctx.measureText('Hg');
  let ascUnits = mb.fontBoundingBoxAscent, descUnits = mb.fontBoundingBoxDescent;
  if (!(ascUnits > 0) || !(descUnits >= 0)) {
    // Without font metrics: the proportions of the usual sans serif.
    ascUnits = 1854;
    descUnits = 434;
  }
  em = { ascUnits: ascUnits, descUnits: descUnits, sameAdvances: !!entry && sameAdvances(ctx, entry) };
  this.ems.set(key, em);
  return em;
};

// Setting a canvas font parses it: skipped while the face's font is on.
// Whoever puts another font on the context clears `fontOn`.
KP.CanvasMeasure.prototype.setFont = function (face) {
  if (this.fontOn === face) return;
  this.fontOn = face;
  const ctx = this.ctx;
  ctx.font = face.css;
  if ('fontKerning' in ctx) ctx.fontKerning = 'none';
  ctx.textBaseline = 'alphabetic';
  ctx.textAlign = 'left';
};

// The character of `text` at i, a surrogate pair as one, as for...of reads
// them; the loops of every label use this, without an iterator's objects.
function charAt(text, i) {
  const c = text.charCodeAt(i);
  if (c >= 0xD800 && c <= 0xDBFF && i + 1 < text.length) {
    const d = text.charCodeAt(i + 1);
    if (d >= 0xDC00 && d <= 0xDFFF) return text.slice(i, i + 2);
  }
  return text[i];
}

KP.CanvasMeasure.prototype.TextWidth = function (font, text) {
  if (!text) return 0;
  const face = this.face(font);
  let w = face.widths.get(text);
  if (w !== undefined) return w;
  if (face.widths.size > 8192) face.widths.clear();
  this.setFont(face);
  w = 0;
  for (let i = 0; i < text.length;) {
    const ch = charAt(text, i);
    i += ch.length;
    w += this.advance(face, ch);
  }
  face.widths.set(text, w);
  return w;
};

// A character's advance in whole pixels. A soft hyphen takes no room in
// the designer's lines. The font must be set on the context.
KP.CanvasMeasure.prototype.advance = function (face, ch) {
  let a = face.advances.get(ch);
  if (a === undefined) {
    const i = face.table ? advanceIndex(ch) : undefined;
    if (ch === SOFT_HYPHEN) a = 0;
    else if (i !== undefined) a = face.table[i];
    else a = Math.round(this.ctx.measureText(ch).width);
    face.advances.set(ch, a);
  }
  return a;
};

// One line: the font's height whatever the text.
KP.CanvasMeasure.prototype.TextHeight = function (font) {
  return this.face(font).height;
};

const NO_GLYPHS = { width: 0, height: 0, originX: 0, originY: 0, bits: new Uint8Array(0) };

KP.CanvasMeasure.prototype.Glyphs = function (font, text) {
  if (!text) return NO_GLYPHS;
  const face = this.face(font);
  let g = face.glyphs.get(text);
  if (g) return g;
  if (face.glyphs.size > 8192) face.glyphs.clear();
  g = this.rasterise(face, text);
  face.glyphs.set(text, g);
  return g;
};

// A line's glyphs as each character's own glyphs and their pen positions:
// [[dx, glyphs], ...]. Printing these one by one gives the pixels of
// Glyphs(font, text) without putting a mask together for every new label.
KP.CanvasMeasure.prototype.GlyphRuns = function (font, text) {
  return text ? this.PrintSetup(font, text).runs : [];
};

// What printing a line needs, kept a face (a label's text border and its
// line share one): the font's height, the glyph runs and the line's width,
// which is TextWidth's. One pass over the characters gives all three.
KP.CanvasMeasure.prototype.PrintSetup = function (font, text) {
  const face = this.face(font);
  if (!face.prints) face.prints = new Map();
  let ps = face.prints.get(text);
  if (ps) return ps;
  if (face.prints.size > 8192) face.prints.clear();
  const runs = [];
  let pen = 0;
  if (text) {
    this.setFont(face);
    if (!face.chars) face.chars = new Map();
    for (let i = 0; i < text.length;) {
      const ch = charAt(text, i);
      i += ch.length;
      const a = this.advance(face, ch);
      if (ch !== SOFT_HYPHEN) {
        let g = face.chars.get(ch);
        if (!g) {
          g = this.rasteriseRun(face, ch);
          face.chars.set(ch, g);
          this.setFont(face);
        }
        if (g.width) runs.push([pen, g]);
      }
      pen += a;
    }
  }
  ps = { TH: Math.fround(face.height), runs: runs, width: pen };
  face.prints.set(text, ps);
  return ps;
};

// Glyphs are drawn SAMPLES times larger, and a pixel is printed when the
// drawing covers the point that stands for it, as an unantialiased
// rasteriser decides by the pixel's centre; the point lies a sixteenth of a
// pixel below the centre, where unhinted outlines meet the designer's
// hinted ones most often.
const SAMPLES = 4;
const SAMPLE_X = 0.5, SAMPLE_Y = 0.5625;

// The browser's unhinted advance of a character and the box of its ink
// around its origin on the base line, in pixels of the face's size. The
// large font must be set on the context.
KP.CanvasMeasure.prototype.outline = function (face, ch) {
  let o = face.outlines.get(ch);
  if (o === undefined) {
    const m = this.ctx.measureText(ch);
    const ink = function (v) { return v > -1e6 && v < 1e6 ? v / SAMPLES : 0; };
    o = {
      advance: m.width / SAMPLES,
      left: -ink(m.actualBoundingBoxLeft),
      right: ink(m.actualBoundingBoxRight),
      top: -ink(m.actualBoundingBoxAscent),
      bottom: ink(m.actualBoundingBoxDescent),
    };
    face.outlines.set(ch, o);
  }
  return o;
};

// A line's glyph pixels, put together from each character's own, which
// are drawn once per font: the designer prints every glyph by itself at its
// whole-pixel pen position, and labels repeat their characters, so a bar of
// many labels reads the canvas back once per character, not once per label.
KP.CanvasMeasure.prototype.rasterise = function (face, text) {
  this.setFont(face);
  const chars = [];
  let pen = 0;
  for (const ch of text) {
    chars.push([ch, pen]);
    pen += this.advance(face, ch);
  }
  if (!face.chars) face.chars = new Map();
  const parts = [];
  let x0 = Infinity, y0 = Infinity, x1 = -Infinity, y1 = -Infinity;
  for (const [ch, at] of chars) {
    if (ch === SOFT_HYPHEN) continue;
    let g = face.chars.get(ch);
    if (!g) {
      g = this.rasteriseRun(face, ch);
      face.chars.set(ch, g);
    }
    if (!g.width) continue;
    parts.push([at, g]);
    x0 = Math.min(x0, at + g.originX);
    y0 = Math.min(y0, g.originY);
    x1 = Math.max(x1, at + g.originX + g.width);
    y1 = Math.max(y1, g.originY + g.height);
  }
  if (!parts.length) return NO_GLYPHS;
  if (parts.length === 1 && parts[0][0] === 0) return parts[0][1];
  const w = x1 - x0, h = y1 - y0;
  const bits = new Uint8Array(w * h);
  for (const [at, g] of parts) {
    const ox = at + g.originX - x0, oy = g.originY - y0;
    for (let y = 0; y < g.height; ++y) {
      const src = y * g.width, dst = (y + oy) * w + ox;
      for (let x = 0; x < g.width; ++x) if (g.bits[src + x]) bits[dst + x] = 1;
    }
  }
  return { width: w, height: h, originX: x0, originY: y0, bits: bits };
};

// The glyph pixels of a run of characters drawn together.
KP.CanvasMeasure.prototype.rasteriseRun = function (face, text) {
  const pad = face.px + 2;
  this.setFont(face);
  let adv = 0;
  for (const ch of text) adv += this.advance(face, ch);
  const w = Math.max(1, adv) + 2 * pad;
  const h = face.ascent + face.descent + 2 * pad;
  const S = SAMPLES;
  const ctx = this.ctx;
  this.fontOn = null;
  ctx.font = face.large;
  if ('fontKerning' in ctx) ctx.fontKerning = 'none';
  // Each glyph stands at the whole-pixel pen position a hinted layout
  // gives it, so a line's ink spreads as the designer's does. An upright
  // glyph is widened or narrowed to its hinted advance, as hinting moves
  // its stems; an italic one, whose top leans past its advance, is centred
  // in it instead (the designer's italics match that best).
  const base = pad + face.ascent;
  const glyphs = [];
  let pen = pad;
  let ix0 = Infinity, ix1 = -Infinity, iy0 = Infinity, iy1 = -Infinity;
  for (const ch of text) {
    const a = this.advance(face, ch);
    if (ch !== SOFT_HYPHEN) {
      const o = this.outline(face, ch);
      const k = !face.italic && o.advance > 0 && a > 0 ? a / o.advance : 1;
      const x = face.italic ? pen + (a - o.advance) / 2 : pen;
      glyphs.push({ ch: ch, x: x, k: k });
      ix0 = Math.min(ix0, x + k * o.left);
      ix1 = Math.max(ix1, x + k * o.right);
      iy0 = Math.min(iy0, base + o.top);
      iy1 = Math.max(iy1, base + o.bottom);
    }
    pen += a;
  }
  if (!glyphs.length) return NO_GLYPHS;
  // Only the pixels around the ink are drawn and read, a pixel more each
  // way than the browser's boxes say.
  const gx0 = Math.max(0, Math.floor(ix0) - 1), gx1 = Math.min(w, Math.ceil(ix1) + 2);
  const gy0 = Math.max(0, Math.floor(iy0) - 1), gy1 = Math.min(h, Math.ceil(iy1) + 2);
  if (gx0 >= gx1 || gy0 >= gy1) return NO_GLYPHS;
  const gw = gx1 - gx0, gh = gy1 - gy0;
  const W = gw * S, H = gh * S;
  const canvas = this.canvas;
  if (canvas.width < W || canvas.height < H) {
    canvas.width = Math.max(canvas.width, W);
    canvas.height = Math.max(canvas.height, H);
    ctx.font = face.large;
    if ('fontKerning' in ctx) ctx.fontKerning = 'none';
  }
  ctx.setTransform(1, 0, 0, 1, 0, 0);
  ctx.fillStyle = '#000';
  ctx.fillRect(0, 0, W, H);
  ctx.fillStyle = '#fff';
  // The drawing is moved so that the sample point of pixel (x, y) lands in
  // the middle of the large pixel read for it.
  const dx = (0.5 - SAMPLE_X) * S + 0.5 - gx0 * S, dy = (0.5 - SAMPLE_Y) * S + 0.5 - gy0 * S;
  for (const g of glyphs) {
    ctx.setTransform(g.k, 0, 0, 1, g.x * S + dx, dy);
    ctx.fillText(g.ch, 0, base * S);
  }
  ctx.setTransform(1, 0, 0, 1, 0, 0);
  const data = ctx.getImageData(0, 0, W, H).data;
  const px = new Uint32Array(data.buffer, data.byteOffset, W * H);
  const on = new Uint8Array(gw * gh);
  sampleCovered(px, W, gw, gh, on);
  dropoutRows(px, W, gw, gh, dx, gx0, on);
  dropoutColumns(px, W, H, gw, gh, dy, gy0, on);
  return inkOf(on, gw, gh, gx0 - pad, gy0 - pad);
};

// The pixel loops of rasteriseRun stand by themselves: the browser compiles
// a hot loop with the function around it, and these are small.

// A large pixel is covered when its green is above one half (white on
// black), read as bit 15 of its little-endian word.
function sampleCovered(px, W, gw, gh, on) {
  const S = SAMPLES, half = S >> 1;
  for (let y = 0; y < gh; ++y) {
    const r = (y * S + half) * W + half;
    for (let x = 0; x < gw; ++x) if (px[r + x * S] & 0x8000) on[y * gw + x] = 1;
  }
}

// Dropout control: a stroke narrower than a pixel that passes between two
// sample points along a row or a column still prints the pixel holding its
// middle, as the designer's rasteriser keeps thin stems.
function dropoutRows(px, W, gw, gh, dx, gx0, on) {
  const S = SAMPLES, half = S >> 1;
  for (let y = 0; y < gh; ++y) {
    const r = (y * S + half) * W;
    for (let k = 0; k < W;) {
      if (!(px[r + k] & 0x8000)) { ++k; continue; }
      const a = k;
      while (k < W && px[r + k] & 0x8000) ++k;
      const b = k - 1;
      if (Math.floor((b - half) / S) < Math.ceil((a - half) / S)) {
        const x = Math.floor(((a + b + 1) / 2 - dx) / S) - gx0;
        if (x >= 0 && x < gw) on[y * gw + x] = 1;
      }
    }
  }
}

function dropoutColumns(px, W, H, gw, gh, dy, gy0, on) {
  const S = SAMPLES, half = S >> 1;
  for (let x = 0; x < gw; ++x) {
    const c = x * S + half;
    for (let k = 0; k < H;) {
      if (!(px[k * W + c] & 0x8000)) { ++k; continue; }
      const a = k;
      while (k < H && px[k * W + c] & 0x8000) ++k;
      const b = k - 1;
      if (Math.floor((b - half) / S) < Math.ceil((a - half) / S)) {
        const y = Math.floor(((a + b + 1) / 2 - dy) / S) - gy0;
        if (y >= 0 && y < gh) on[y * gw + x] = 1;
      }
    }
  }
}

// The glyph mask cut to its ink, its origin moved by (ox, oy).
function inkOf(on, gw, gh, ox, oy) {
  let x0 = gw, y0 = gh, x1 = -1, y1 = -1;
  for (let y = 0; y < gh; ++y) {
    for (let x = 0; x < gw; ++x) {
      if (on[y * gw + x]) {
        if (x < x0) x0 = x;
        if (x > x1) x1 = x;
        if (y < y0) y0 = y;
        if (y > y1) y1 = y;
      }
    }
  }
  if (x1 < 0) return NO_GLYPHS;
  const bw = x1 - x0 + 1, bh = y1 - y0 + 1;
  const bits = new Uint8Array(bw * bh);
  for (let y = y0; y <= y1; ++y)
    for (let x = x0; x <= x1; ++x) bits[(y - y0) * bw + (x - x0)] = on[y * gw + x];
  return { width: bw, height: bh, originX: x0 + ox, originY: y0 + oy, bits: bits };
}
