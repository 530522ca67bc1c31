
// ---------------------------------------------------------------------------
// The parameters read back. The designer writes each value as fields that
// end in "|"; a button's value is then packed: "^|" repeats the field
// before, "^" plus a base-36 digit repeats it that many more times, and a
// long run of bars was shortened the same way. The applet record "p" is
// never packed.


// Where each field of a packed value lies, with every repeat spelled out:
// field k runs from at[2k] to at[2k + 1]. Returns the number of fields.
// Offsets instead of strings: a thousand buttons bring a hundred thousand
// fields, and most of them are only read as numbers.
function unpackBounds(value, at) {
  const n = value.length;
  let count = 0, i = 0;
  let ps = 0, pe = 0;  // the field before, for the repeat marks
  while (i < n) {
    if (value.charCodeAt(i) === 94 /* ^ */ && i + 1 < n) {
      const c = value.charCodeAt(i + 1);
      let d = -1;
      if (c === 124 /* | */) d = 1;
      else if (c >= 48 && c <= 57) d = c - 48;
      else if (c >= 97 && c <= 122) d = c - 87;
      if (d >= 0) {
        if (at.length < 2 * (count + d)) return -1 - count;
        for (let k = 0; k < d; k++) {
          at[2 * count] = ps;
          at[2 * count + 1] = pe;
          ++count;
        }
        i += 2;
        continue;
      }
    }
    let j = value.indexOf('|', i);
    if (j < 0) j = n;
    if (at.length < 2 * (count + 1)) return -1 - count;
    ps = i;
    pe = j;
    at[2 * count] = ps;
    at[2 * count + 1] = pe;
    ++count;
    i = j + 1;
  }
  return count;
}

// Field bounds of the value being decoded; grown when a value has more.
let decAt = new Int32Array(256);

function decBounds(value) {
  for (;;) {
    const count = unpackBounds(value, decAt);
    if (count >= 0) return count;
    decAt = new Int32Array(decAt.length * 2);
  }
}

// The fields of a packed value, in order, with every repeat spelled out.
KP.unpack = function (value) {
  const count = decBounds(value);
  const out = [];
  for (let k = 0; k < count; k++) out.push(value.slice(decAt[2 * k], decAt[2 * k + 1]));
  return out;
};

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

// decInt of the characters s..e of v.
function decIntAt(v, s, e) {
  let i = s, neg = false;
  if (i < e) {
    const c = v.charCodeAt(i);
    if (c === 43 || c === 45) {
      neg = c === 45;
      i = s + 1;
    }
  }
  if (i >= e) return 0;
  let n = 0;
  for (; i < e; ++i) {
    const d = v.charCodeAt(i) - 48;
    if (d < 0 || d > 9) return 0;
    n = n * 10 + d;
  }
  return neg ? -n : n;
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

// parseColour of the characters s..e of v.
function decColourAt(v, s, e) {
  if (e - s > 6) return 0;
  let n = 0;
  for (let i = s; i < e; ++i) {
    const c = v.charCodeAt(i);
    const d = c >= 48 && c <= 57 ? c - 48 : c >= 65 && c <= 70 ? c - 55 : c >= 97 && c <= 102 ? c - 87 : -1;
    if (d < 0) return 0;
    n = n * 16 + d;
  }
  return ((n >> 16) & 255) | (n & 0xff00) | ((n & 255) << 16);
}

const DEC_FONTS = ['Arial', 'Courier', 'Times', 'Dialog'];

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

// Field k (1-based) of the value being decoded, read as a number, a
// colour or a string; a field past the last reads as empty.
function fInt(v, count, k) {
  return k <= count ? decIntAt(v, decAt[2 * k - 2], decAt[2 * k - 1]) : 0;
}

function fColour(v, count, k) {
  return k <= count ? decColourAt(v, decAt[2 * k - 2], decAt[2 * k - 1]) : 0;
}

function fStr(v, count, k) {
  return k <= count ? v.slice(decAt[2 * k - 2], decAt[2 * k - 1]) : '';
}

function fText(v, count, k) {
  return KP.unescapeText(fStr(v, count, k));
}

// Three fields, one a state, starting at field `first`, every `step`.
// One function a kind, so each call site stays simple for the compiler.
function triInt(v, n, first, step) {
  return [undefined, fInt(v, n, first), fInt(v, n, first + step), fInt(v, n, first + 2 * step)];
}

function triColour(v, n, first, step) {
  return [undefined, fColour(v, n, first), fColour(v, n, first + step), fColour(v, n, first + 2 * step)];
}

function triText(v, n, first) {
  return [undefined, fText(v, n, first), fText(v, n, first + 1), fText(v, n, first + 2)];
}

function triOn(v, n, first) {
  return [undefined, fInt(v, n, first) !== 0, fInt(v, n, first + 1) !== 0, fInt(v, n, first + 2) !== 0];
}

function triFont(v, n, first) {
  return [undefined, DEC_FONTS[fInt(v, n, first)] || 'Arial', DEC_FONTS[fInt(v, n, first + 1)] || 'Arial',
    DEC_FONTS[fInt(v, n, first + 2)] || 'Arial'];
}

function decBits(flags, a, b, c) {
  return [undefined, (flags & a) !== 0, (flags & b) !== 0, (flags & c) !== 0];
}

KP.decodeButton = function (value, index) {
  const v = String(value || '');
  const n = decBounds(v);
  const flags = fInt(v, n, 5);
  const name = fStr(v, n, 91);
  return {
    index: index,
    sBName: name === '' ? 'Button ' + index : KP.unescapeName(name),
    x: fInt(v, n, 1),
    y: fInt(v, n, 2),
    Width: fInt(v, n, 3),
    Height: fInt(v, n, 4),
    ShowHand: (flags & 1) !== 0,
    Radio: (flags & 2) !== 0,
    Hidden: (flags & 32) !== 0,
    noBackGround: decBits(flags, 4, 8, 16),
    TFrameLight: decBits(flags, 64, 128, 256),
    TFrameLeftToRight: decBits(flags, 512, 1024, 2048),
    SoundStop: decBits(flags, 4096, 8192, 16384),
    SoundLoop: decBits(flags, 32768, 65536, 131072),
    FontColor: triColour(v, n, 6, 1),
    BorderColor: triColour(v, n, 9, 2),
    BackColor: triColour(v, n, 10, 2),
    TFrameColor: triColour(v, n, 15, 1),
    FadeColor: triColour(v, n, 18, 1),
    FrameColor: triColour(v, n, 21, 1),
    PositionText: triOn(v, n, 24),
    LabelPosX: triInt(v, n, 27, 2),
    LabelPosY: triInt(v, n, 28, 2),
    Font: triFont(v, n, 33),
    TFrameShade: triInt(v, n, 36, 1),
    FontStyle: triInt(v, n, 39, 1),
    FadeStyle: triInt(v, n, 42, 1),
    TFrameThick: triInt(v, n, 45, 1),
    FrameThick: triInt(v, n, 48, 1),
    ImgX: triInt(v, n, 51, 2),
    ImgY: triInt(v, n, 52, 2),
    ImgStyle: triInt(v, n, 57, 1),
    BorderStyle: triInt(v, n, 60, 1),
    BorderWidth: triInt(v, n, 63, 1),
    BorderShade: triInt(v, n, 66, 1),
    FontSize: triInt(v, n, 69, 1),
    Label: triText(v, n, 72),
    URL: fText(v, n, 75),
    Status: fText(v, n, 76),
    Target: fText(v, n, 77),
    Image: triText(v, n, 78),
    Snd: triText(v, n, 81),
    ProgramUP: fStr(v, n, 84),
    ProgramLEAVE: fStr(v, n, 85),
    ProgramOVER: fStr(v, n, 86),
    ProgramDOWN: fStr(v, n, 87),
    ProgramCHECK: fStr(v, n, 88),
    ProgramUNCHECK: fStr(v, n, 89),
    Tip: fText(v, n, 90),
  };
};
