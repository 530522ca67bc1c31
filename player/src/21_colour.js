// 16-bit arithmetic as the designer's drawing does it, and the colour
// arithmetic of borders, text borders and fades. Every intermediate result
// is a 16-bit integer and leaving that range ends the drawing routine;
// the routines that may meet it catch KP.Overflow.

KP.Overflow = { description: 'Overflow' };

KP.i16 = function (v) {
  if (!(v >= -32768 && v <= 32767)) throw KP.Overflow;
  return v;
};
KP.add16 = function (a, b) { return KP.i16(a + b); };
KP.sub16 = function (a, b) { return KP.i16(a - b); };
KP.mul16 = function (a, b) { return KP.i16(a * b); };

// Nearest integer, a tie going to the even neighbour.
KP.roundEven = function (v) {
  const f = Math.floor(v);
  const d = v - f;
  if (d < 0.5) return f;
  if (d > 0.5) return f + 1;
  return f % 2 === 0 ? f : f + 1;
};

// A fractional value made a 16-bit integer: rounded half to even; an
// overflow when it does not fit.
KP.cint = function (v) {
  if (!Number.isFinite(v)) throw KP.Overflow;
  const r = KP.roundEven(v);
  if (r < -32768 || r > 32767) throw KP.Overflow;
  return r;
};

// Single precision, as the fractional pixel positions are computed.
KP.f32 = Math.fround;

// Upper-case hexadecimal without leading zeros; a negative colour gives
// the eight digits of its 32-bit pattern.
KP.colourHex = function (c) {
  return ((c | 0) >>> 0).toString(16).toUpperCase();
};

// The digits read blue, green, red from the left; a shorter text lacks its
// leading digits, so the parts are taken from the right. A row holds
// {red, green, blue} as [start, length, leading zero]; length 0 is "00".
const COLOUR_PART_TABLE = [
  [[0, 0, false], [0, 0, false], [0, 0, false]],
  [[0, 0, false], [0, 0, false], [0, 0, false]],
  [[0, 2, false], [0, 0, false], [0, 0, false]],
  [[1, 2, false], [0, 1, true], [0, 0, false]],
  [[2, 2, false], [0, 2, false], [0, 0, false]],
  [[3, 2, false], [1, 2, false], [0, 1, true]],
  [[4, 2, false], [2, 2, false], [0, 2, false]],
];

KP.GetColorPart = function (hexText, partName) {
  const name = String(partName).toUpperCase();
  const part = name === 'RED' ? 0 : name === 'GREEN' ? 1 : name === 'BLUE' ? 2 : -1;
  if (part < 0 || hexText.length > 6) return '';
  const piece = COLOUR_PART_TABLE[hexText.length][part];
  if (piece[1] === 0) return '00';
  return (piece[2] ? '0' : '') + hexText.substr(piece[0], piece[1]);
};

KP.ColorPart = function (c, partName) {
  const text = KP.GetColorPart(KP.colourHex(c), partName);
  let v = 0;
  for (let k = 0; k < text.length; ++k) {
    const d = parseInt(text[k], 16);
    if (Number.isNaN(d)) break;
    v = v * 16 + d;
  }
  return v;
};

// The three parts at once. Read from the right of the hexadecimal text,
// the parts are the colour's bytes whenever the text has two to six
// digits; one digit or more than six reads as black. Drawing asks this for
// every fade and border, so the text is never built.
KP.PartsOf = function (c) {
  const u = (c | 0) >>> 0;
  if (u < 16 || u > 0xFFFFFF) return { R: 0, G: 0, B: 0 };
  return { R: u & 255, G: (u >>> 8) & 255, B: u >>> 16 };
};

KP.RGB = function (r, g, b) {
  return (r & 255) + 256 * (g & 255) + 65536 * (b & 255);
};

// The colour k steps inside a band of Width steps of Shade each, lighter
// or darker than R, G, B by (Width - k) * Shade, every part held to 0..255
// by itself. null when the 16-bit arithmetic overflows.
KP.ShadeColor = function (Shade, Width, R, G, B, k, bLight) {
  // Every step of the sum is checked as the 16-bit arithmetic would; the
  // steps shared by the three parts are worked out once.
  const far = Width * Shade, near = k * Shade;
  if (!(far >= -32768 && far <= 32767 && near >= -32768 && near <= 32767)) return null;
  const d = bLight ? far - near : near - far;
  if (!(d >= -32768 && d <= 32767)) return null;
  let r = R + d, g = G + d, b = B + d;
  if (!(r >= -32768 && r <= 32767 && g >= -32768 && g <= 32767 && b >= -32768 && b <= 32767)) return null;
  r = r > 255 ? 255 : r < 0 ? 0 : r;
  g = g > 255 ? 255 : g < 0 ? 0 : g;
  b = b > 255 ? 255 : b < 0 ? 0 : b;
  return KP.RGB(r, g, b);
};
