
// ---------------------------------------------------------------------------
// The parameters read back. The designer writes each value as fields that
// end in "|"; a button's value is then packed: "^|" repeats the field
// before, "^" plus a base-36 digit repeats it that many more times, and a
// long run of bars was shortened the same way. The applet record "p" is
// never packed.

// The fields of a packed value, in order, with every repeat spelled out,
// written into `out` from its start; returns how many there are.
function unpackInto(value, out) {
  const n = value.length;
  let i = 0, m = 0;
  while (i < n) {
    if (value.charCodeAt(i) === 94 /* ^ */ && i + 1 < n) {
      const c = value.charCodeAt(i + 1);
      const prev = m ? out[m - 1] : '';
      if (c === 124 /* | */) {
        out[m++] = prev;
        i += 2;
        continue;
      }
      // A base-36 digit, lower case.
      const d = c >= 48 && c <= 57 ? c - 48 : c >= 97 && c <= 122 ? c - 87 : -1;
      if (d >= 0) {
        for (let k = 0; k < d; k++) out[m++] = prev;
        i += 2;
        continue;
      }
    }
    let j = value.indexOf('|', i);
    if (j < 0) j = n;
    out[m++] = value.slice(i, j);
    i = j + 1;
  }
  return m;
}

KP.unpack = function (value) {
  const out = [];
  unpackInto(value, out);
  return out;
};

// The fields of the button being read. One list serves every button: a
// thousand buttons would otherwise make a thousand lists to collect.
const DEC_FIELDS = [];
let decFieldsUsed = 0;

function decFieldsOf(value) {
  const n = unpackInto(value, DEC_FIELDS);
  if (n < decFieldsUsed) DEC_FIELDS.fill(undefined, n, decFieldsUsed);
  decFieldsUsed = n;
  return DEC_FIELDS;
}

// A text field: the three substitutions that keep quotes, bars and repeat
// marks out of the value.
KP.unescapeText = function (s) {
  if (s.indexOf('&!') < 0) return s;
  return s.split('&!2').join('"').split('&!3').join('|').split('&!4').join('^');
};

// A button name or a program token: blanks and semicolons were escaped too.
KP.unescapeName = function (s) {
  if (s.indexOf('&') < 0) return s;
  return s.split('&nbsp').join(' ').split('&!0').join(' ').split('&!1').join(';')
    .split('&!2').join('"').split('&!3').join('|').split('&!4').join('^');
};

// Integers are plain decimal; anything else reads as 0, as a bad number
// never stops the bar.
function decInt(s) {
  if (s === undefined) return 0;
  const n = s.length;
  let i = 0, neg = false;
  if (n > 0) {
    const c = s.charCodeAt(0);
    if (c === 43 || c === 45) {
      neg = c === 45;
      i = 1;
    }
  }
  if (i >= n) return 0;
  // A thousand buttons bring ninety thousand fields: no regular expression.
  let v = 0;
  for (; i < n; ++i) {
    const d = s.charCodeAt(i) - 48;
    if (d < 0 || d > 9) return 0;
    v = v * 10 + d;
  }
  return neg ? -v : v;
}

// Colours are written red, green, blue with leading zeros dropped; the
// model keeps red in the low byte.
KP.parseColour = function (s) {
  if (!s || s.length > 6) return 0;
  let v = 0;
  for (let i = 0; i < s.length; ++i) {
    const c = s.charCodeAt(i);
    const d = c >= 48 && c <= 57 ? c - 48 : c >= 65 && c <= 70 ? c - 55 : c >= 97 && c <= 102 ? c - 87 : -1;
    if (d < 0) return 0;
    v = v * 16 + d;
  }
  return ((v >> 16) & 255) | (v & 0xff00) | ((v & 255) << 16);
};
const decColour = KP.parseColour;

const DEC_FONTS = ['Arial', 'Courier', 'Times', 'Dialog'];
function decFont(s) {
  return DEC_FONTS[decInt(s)] || 'Arial';
}

KP.decodeApplet = function (value, width, height) {
  const f = String(value || '').split('|');
  const at = (k) => (f[k - 1] === undefined ? '' : f[k - 1]);
  const flags = decInt(at(14));
  return {
    AppletWidth: width,
    AppletHeight: height,
    BackGround: decColour(at(1)),
    sLoading: at(2),
    cLoadingFont: decColour(at(3)),
    cLoadingBack: decColour(at(4)),
    iLoadingFont_Size: decInt(at(5)),
    iLoadingFont_Style: decInt(at(6)),
    iLoadingFont_Name: decInt(at(7)),
    ButtonCount: Math.max(0, decInt(at(8))),
    iFadeStyle: decInt(at(9)),
    cFadeColor: decColour(at(10)),
    AppletProgramStart: at(11),
    BackImg: KP.unescapeText(at(12)),
    BackImgStyle: decInt(at(13)),
    bUnusualRepaint: (flags & 16) !== 0,
    bDoScroll: (flags & 8) !== 0,
    bPreLoad: (flags & 4) !== 0,
    bClip: (flags & 1) !== 0,
    DOWNBtn: decInt(at(15)),
    AppletProgramOVER: at(16),
    AppletProgramDOWN: at(17),
    AppletProgramOUT: at(18),
    iBgOffsetX: decInt(at(19)),
    iBgOffsetY: decInt(at(20)),
    iDescentX: decInt(at(21)),
    iDescentY: decInt(at(22)),
    iScFirstBtn: decInt(at(23)),
    iScStep: decInt(at(24)),
    iScDelay: decInt(at(25)),
    iScDirection: decInt(at(26)),
    cTipBackColor: decColour(at(27)),
    cTipTextColor: decColour(at(28)),
    cTipBorderColor: decColour(at(29)),
    iTipBorderWidth: decInt(at(30)),
    iTipDelay: decInt(at(31)),
    iTipHideAfter: decInt(at(32)),
    iTipFontStyle: decInt(at(33)),
    iTipFontSize: decInt(at(34)),
    iTipFont: decInt(at(35)),
    ImgPath: at(36),
    SndPath: at(37),
    iABorderStyle: decInt(at(38)),
    iABorderWidth: decInt(at(39)),
    iABorderShade: decInt(at(40)),
    cABorderColor: decColour(at(41)),
  };
};

// Three fields, one a state, starting at field `first` (1-based), every
// `step`. Called ninety times a button while the page waits, so no
// closures: the fields are read straight from the array.
//
// Mostly the three are one field repeated. Such a triple is one frozen
// array per value in `shared`, used by every button that has it: a
// thousand buttons then keep a few hundred arrays instead of thirty
// thousand, which the collector would copy while the bar is drawn. Whoever
// changes a state's value replaces the array (see KP.setTri).
function decTri(fields, first, step, conv, shared) {
  const a = fields[first - 1], b = fields[first - 1 + step], c = fields[first - 1 + 2 * step];
  if (shared && a === b && a === c) {
    const key = a === undefined ? '' : a;
    let t = shared.get(key);
    if (t === undefined) {
      const v = conv(key);
      t = Object.freeze([undefined, v, v, v]);
      shared.set(key, t);
    }
    return t;
  }
  return [undefined, conv(a === undefined ? '' : a), conv(b === undefined ? '' : b),
    conv(c === undefined ? '' : c)];
}

// The triples shared by value, one table per way of reading a field. They
// last as long as the page: a page's bars name few values.
const DEC_COLOUR_TRIS = new Map(), DEC_INT_TRIS = new Map(), DEC_ON_TRIS = new Map();
const DEC_FONT_TRIS = new Map(), DEC_TEXT_TRIS = new Map();

// State s of button b's triple `key` set to v, without touching a triple
// other buttons share.
KP.setTri = function (b, key, s, v) {
  const t = b[key];
  if (t[s] === v) return;
  const own = Object.isFrozen(t) ? t.slice() : t;
  own[s] = v;
  b[key] = own;
};

function decOn(s) {
  return decInt(s) !== 0;
}

// The eight triples of flags, shared as the triples above; nothing changes
// them.
const DEC_BITS = [];
for (let k = 0; k < 8; k++) DEC_BITS.push(Object.freeze([undefined, (k & 1) !== 0, (k & 2) !== 0, (k & 4) !== 0]));

function decBits(flags, a, b, c) {
  return DEC_BITS[((flags & a) !== 0 ? 1 : 0) | ((flags & b) !== 0 ? 2 : 0) | ((flags & c) !== 0 ? 4 : 0)];
}

KP.decodeButton = function (value, index) {
  const fields = decFieldsOf(String(value || ''));
  const f = (k) => (fields[k - 1] === undefined ? '' : fields[k - 1]);
  const flags = decInt(f(5));
  const text = KP.unescapeText;
  const name = f(91);
  return {
    index: index,
    sBName: name === '' ? 'Button ' + index : KP.unescapeName(name),
    x: decInt(f(1)),
    y: decInt(f(2)),
    Width: decInt(f(3)),
    Height: decInt(f(4)),
    ShowHand: (flags & 1) !== 0,
    Radio: (flags & 2) !== 0,
    Hidden: (flags & 32) !== 0,
    noBackGround: decBits(flags, 4, 8, 16),
    TFrameLight: decBits(flags, 64, 128, 256),
    TFrameLeftToRight: decBits(flags, 512, 1024, 2048),
    SoundStop: decBits(flags, 4096, 8192, 16384),
    SoundLoop: decBits(flags, 32768, 65536, 131072),
    FontColor: decTri(fields, 6, 1, decColour, DEC_COLOUR_TRIS),
    BorderColor: decTri(fields, 9, 2, decColour, DEC_COLOUR_TRIS),
    BackColor: decTri(fields, 10, 2, decColour, DEC_COLOUR_TRIS),
    TFrameColor: decTri(fields, 15, 1, decColour, DEC_COLOUR_TRIS),
    FadeColor: decTri(fields, 18, 1, decColour, DEC_COLOUR_TRIS),
    FrameColor: decTri(fields, 21, 1, decColour, DEC_COLOUR_TRIS),
    PositionText: decTri(fields, 24, 1, decOn, DEC_ON_TRIS),
    LabelPosX: decTri(fields, 27, 2, decInt),
    LabelPosY: decTri(fields, 28, 2, decInt),
    Font: decTri(fields, 33, 1, decFont, DEC_FONT_TRIS),
    TFrameShade: decTri(fields, 36, 1, decInt, DEC_INT_TRIS),
    FontStyle: decTri(fields, 39, 1, decInt, DEC_INT_TRIS),
    FadeStyle: decTri(fields, 42, 1, decInt, DEC_INT_TRIS),
    TFrameThick: decTri(fields, 45, 1, decInt, DEC_INT_TRIS),
    FrameThick: decTri(fields, 48, 1, decInt, DEC_INT_TRIS),
    ImgX: decTri(fields, 51, 2, decInt, DEC_INT_TRIS),
    ImgY: decTri(fields, 52, 2, decInt, DEC_INT_TRIS),
    ImgStyle: decTri(fields, 57, 1, decInt, DEC_INT_TRIS),
    BorderStyle: decTri(fields, 60, 1, decInt, DEC_INT_TRIS),
    BorderWidth: decTri(fields, 63, 1, decInt, DEC_INT_TRIS),
    BorderShade: decTri(fields, 66, 1, decInt, DEC_INT_TRIS),
    FontSize: decTri(fields, 69, 1, decInt, DEC_INT_TRIS),
    Label: decTri(fields, 72, 1, text, DEC_TEXT_TRIS),
    URL: text(f(75)),
    Status: text(f(76)),
    Target: text(f(77)),
    Image: decTri(fields, 78, 1, text, DEC_TEXT_TRIS),
    Snd: decTri(fields, 81, 1, text, DEC_TEXT_TRIS),
    ProgramUP: f(84),
    ProgramLEAVE: f(85),
    ProgramOVER: f(86),
    ProgramDOWN: f(87),
    ProgramCHECK: f(88),
    ProgramUNCHECK: f(89),
    Tip: text(f(90)),
  };
};
