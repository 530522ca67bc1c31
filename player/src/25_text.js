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

// Measuring and glyphs on a canvas. The designer prints unantialiased,
// hinted glyphs; a browser gives coverage, and a pixel counts as printed
// when its coverage is above one half. Heights follow the designer's font
// engine: ascent and descent scaled from the font's design units and each
// rounded to 1/64 pixel; widths add the advances of the characters, each
// rounded to whole pixels as hinting does.
KP.CanvasMeasure = function (doc) {
  doc = doc || (typeof document !== 'undefined' ? document : null);
  this.canvas = doc.createElement('canvas');
  this.canvas.width = 64;
  this.canvas.height = 64;
  this.ctx = this.canvas.getContext('2d', { willReadFrequently: true });
  this.faces = new Map();
};

KP.CanvasMeasure.prototype.face = function (font) {
  const key = font.name + '\x1f' + font.size + (font.bold ? 'b' : '-') + (font.italic ? 'i' : '-');
  let face = this.faces.get(key);
  if (face) return face;
  if (this.faces.size > 256) this.faces.clear();
  const px = Math.max(1, font.size | 0);
  const ctx = this.ctx;
  const css = cssFontOf(font);
  const big = css.replace(/\d+px/, METRIC_EM + 'px');
  ctx.font = big;
  const mb = ctx.measureText('Hg');
  let ascUnits = mb.fontBoundingBoxAscent, descUnits = mb.fontBoundingBoxDescent;
  if (!(ascUnits > 0) || !(descUnits >= 0)) {
    // Without font metrics: the proportions of the usual sans serif.
    ascUnits = 1854;
    descUnits = 434;
  }
  const asc64 = Math.round(ascUnits * px * 64 / METRIC_EM);
  const desc64 = Math.round(descUnits * px * 64 / METRIC_EM);
  face = {
    css: css,
    px: px,
    height: (asc64 + desc64) / 64,
    ascent: Math.floor((asc64 + 32) / 64),
    descent: Math.floor((desc64 + 32) / 64),
    advances: new Map(),
    widths: new Map(),
    glyphs: new Map(),
  };
  this.faces.set(key, face);
  return face;
};

KP.CanvasMeasure.prototype.setFont = function (face) {
  const ctx = this.ctx;
  ctx.font = face.css;
  if ('fontKerning' in ctx) ctx.fontKerning = 'none';
  ctx.textBaseline = 'alphabetic';
  ctx.textAlign = 'left';
};

KP.CanvasMeasure.prototype.TextWidth = function (font, text) {
  if (!text) return 0;
  const face = this.face(font);
  let w = face.widths.get(text);
  if (w !== undefined) return w;
  if (face.widths.size > 8192) face.widths.clear();
  this.setFont(face);
  w = 0;
  for (const ch of text) w += this.advance(face, ch);
  face.widths.set(text, w);
  return w;
};

// A character's advance, rounded to whole pixels as hinting does. The font
// must be set on the context.
KP.CanvasMeasure.prototype.advance = function (face, ch) {
  let a = face.advances.get(ch);
  if (a === undefined) {
    a = Math.round(this.ctx.measureText(ch).width);
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

KP.CanvasMeasure.prototype.rasterise = function (face, text) {
  const pad = face.px + 2;
  this.setFont(face);
  let adv = 0;
  for (const ch of text) adv += this.advance(face, ch);
  const w = Math.max(1, adv) + 2 * pad;
  const h = face.ascent + face.descent + 2 * pad;
  const canvas = this.canvas;
  if (canvas.width < w) canvas.width = w;
  if (canvas.height < h) canvas.height = h;
  const ctx = this.ctx;
  ctx.setTransform(1, 0, 0, 1, 0, 0);
  ctx.fillStyle = '#000';
  ctx.fillRect(0, 0, w, h);
  this.setFont(face);
  ctx.fillStyle = '#fff';
  // Each glyph stands at the whole-pixel pen position a hinted layout
  // gives it, so a line's ink spreads as the designer's does.
  let pen = pad;
  for (const ch of text) {
    ctx.fillText(ch, pen, pad + face.ascent);
    pen += this.advance(face, ch);
  }
  const data = ctx.getImageData(0, 0, w, h).data;
  let x0 = w, y0 = h, x1 = -1, y1 = -1;
  for (let y = 0; y < h; ++y) {
    for (let x = 0; x < w; ++x) {
      if (data[(y * w + x) * 4 + 1] > 127) {
        if (x < x0) x0 = x;
        if (x > x1) x1 = x;
        if (y < y0) y0 = y;
        if (y > y1) y1 = y;
      }
    }
  }
  if (x1 < 0) return NO_GLYPHS;
  const gw = x1 - x0 + 1, gh = y1 - y0 + 1;
  const bits = new Uint8Array(gw * gh);
  for (let y = y0; y <= y1; ++y)
    for (let x = x0; x <= x1; ++x)
      if (data[(y * w + x) * 4 + 1] > 127) bits[(y - y0) * gw + (x - x0)] = 1;
  return { width: gw, height: gh, originX: x0 - pad, originY: y0 - pad, bits: bits };
};
