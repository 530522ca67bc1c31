
// ---------------------------------------------------------------------------
// The parameters read back. The designer writes each value as fields that
// end in "|"; a button's value is then packed: "^|" repeats the field
// before, "^" plus a base-36 digit repeats it that many more times, and a
// long run of bars was shortened the same way. The applet record "p" is
// never packed.

const DEC_DIGITS = '0123456789abcdefghijklmnopqrstuvwxyz';

// The fields of a packed value, in order, with every repeat spelled out.
KP.unpack = function (value) {
  const out = [];
  const n = value.length;
  let i = 0;
  while (i < n) {
    if (value.charCodeAt(i) === 94 /* ^ */ && i + 1 < n) {
      const c = value[i + 1];
      const prev = out.length ? out[out.length - 1] : '';
      if (c === '|') {
        out.push(prev);
        i += 2;
        continue;
      }
      const d = DEC_DIGITS.indexOf(c);
      if (d >= 0) {
        for (let k = 0; k < d; k++) out.push(prev);
        i += 2;
        continue;
      }
    }
    let j = value.indexOf('|', i);
    if (j < 0) j = n;
    out.push(value.slice(i, j));
    i = j + 1;
  }
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
function decTri(fields, first, step, conv) {
  const a = fields[first - 1], b = fields[first - 1 + step], c = fields[first - 1 + 2 * step];
  return [undefined, conv(a === undefined ? '' : a), conv(b === undefined ? '' : b),
    conv(c === undefined ? '' : c)];
}

function decOn(s) {
  return decInt(s) !== 0;
}

function decBits(flags, a, b, c) {
  return [undefined, (flags & a) !== 0, (flags & b) !== 0, (flags & c) !== 0];
}

KP.decodeButton = function (value, index) {
  const fields = KP.unpack(String(value || ''));
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
    FontColor: decTri(fields, 6, 1, decColour),
    BorderColor: decTri(fields, 9, 2, decColour),
    BackColor: decTri(fields, 10, 2, decColour),
    TFrameColor: decTri(fields, 15, 1, decColour),
    FadeColor: decTri(fields, 18, 1, decColour),
    FrameColor: decTri(fields, 21, 1, decColour),
    PositionText: decTri(fields, 24, 1, decOn),
    LabelPosX: decTri(fields, 27, 2, decInt),
    LabelPosY: decTri(fields, 28, 2, decInt),
    Font: decTri(fields, 33, 1, decFont),
    TFrameShade: decTri(fields, 36, 1, decInt),
    FontStyle: decTri(fields, 39, 1, decInt),
    FadeStyle: decTri(fields, 42, 1, decInt),
    TFrameThick: decTri(fields, 45, 1, decInt),
    FrameThick: decTri(fields, 48, 1, decInt),
    ImgX: decTri(fields, 51, 2, decInt),
    ImgY: decTri(fields, 52, 2, decInt),
    ImgStyle: decTri(fields, 57, 1, decInt),
    BorderStyle: decTri(fields, 60, 1, decInt),
    BorderWidth: decTri(fields, 63, 1, decInt),
    BorderShade: decTri(fields, 66, 1, decInt),
    FontSize: decTri(fields, 69, 1, decInt),
    Label: decTri(fields, 72, 1, text),
    URL: text(f(75)),
    Status: text(f(76)),
    Target: text(f(77)),
    Image: decTri(fields, 78, 1, text),
    Snd: decTri(fields, 81, 1, text),
    ProgramUP: f(84),
    ProgramLEAVE: f(85),
    ProgramOVER: f(86),
    ProgramDOWN: f(87),
    ProgramCHECK: f(88),
    ProgramUNCHECK: f(89),
    Tip: text(f(90)),
  };
};
