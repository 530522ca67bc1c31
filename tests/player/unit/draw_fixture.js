// Fixtures of the drawing tests: records as the decoder gives them, a text
// measure with fixed metrics, and pixel checks.
const assert = require('node:assert/strict');
const KP = require('./load.js');

const RGB = (r, g, b) => r + 256 * g + 65536 * b;

function tri(v) {
  return [undefined, v, v, v];
}

// An applet record with the designer's defaults for a new project.
function applet(w, h, background = RGB(255, 255, 255)) {
  return {
    AppletWidth: w, AppletHeight: h, BackGround: background, ButtonCount: 0,
    iFadeStyle: 0, cFadeColor: RGB(0, 0, 128), BackImg: '', BackImgStyle: 0,
    iBgOffsetX: 0, iBgOffsetY: 0, iDescentX: 1, iDescentY: 1,
    iABorderStyle: 0, iABorderWidth: 0, iABorderShade: 0, cABorderColor: 0,
  };
}

// A plain button in all three states: no border, fade, picture or text
// border; font Arial 13 px in red.
function button(index, x, y, w, h, face = RGB(192, 192, 192)) {
  return {
    index, sBName: 'Button ' + index, x, y, Width: w, Height: h,
    ShowHand: false, Radio: false, Hidden: false,
    noBackGround: tri(false), TFrameLight: tri(false), TFrameLeftToRight: tri(false),
    FontColor: tri(RGB(255, 0, 0)), BorderColor: tri(0), BackColor: tri(face), TFrameColor: tri(0),
    FadeColor: tri(0), FrameColor: tri(0), PositionText: tri(false), LabelPosX: tri(0),
    LabelPosY: tri(0), Font: tri('Arial'), TFrameShade: tri(0), FontStyle: tri(0), FadeStyle: tri(0),
    TFrameThick: tri(0), FrameThick: tri(0), ImgX: tri(0), ImgY: tri(0), ImgStyle: tri(0),
    BorderStyle: tri(0), BorderWidth: tri(0), BorderShade: tri(0), FontSize: tri(13),
    Label: tri(''), Image: tri(''),
  };
}

// Every line is `height` high and `charWidth` a character wide. Its glyphs
// mark the text cell: one pixel in the top row for every character that is
// not a blank, so a print at (x, top) paints (x + k, top) for character k.
class FixedMeasure {
  constructor(height = 16, charWidth = 6) {
    this.height = height;
    this.charWidth = charWidth;
    this.fontsAsked = [];
    this.printedTexts = [];
  }
  TextWidth(font, text) {
    this.fontsAsked.push(font);
    return this.charWidth * text.length;
  }
  TextHeight(font) {
    this.fontsAsked.push(font);
    return this.height;
  }
  Glyphs(font, text) {
    this.fontsAsked.push(font);
    this.printedTexts.push(text);
    let last = -1;
    for (let k = 0; k < text.length; ++k) if (text[k] !== ' ') last = k;
    if (last < 0) return { width: 0, height: 0, originX: 0, originY: 0, bits: new Uint8Array(0) };
    const bits = new Uint8Array(last + 1);
    for (let k = 0; k <= last; ++k) bits[k] = text[k] !== ' ' ? 1 : 0;
    return { width: last + 1, height: 1, originX: 0, originY: 0, bits };
  }
}

// A picture whose column k has colour RGB(k, 7, 9), opaque.
function columnsPicture(w, h) {
  const rgba = new Uint8Array(w * h * 4);
  for (let y = 0; y < h; ++y)
    for (let x = 0; x < w; ++x) rgba.set([x, 7, 9, 255], (y * w + x) * 4);
  return KP.pictureFromRGBA(w, h, rgba);
}

// A picture from colours, -1 for a transparent pixel.
function picture(w, h, colours) {
  const rgba = new Uint8Array(w * h * 4);
  colours.forEach((c, k) => {
    if (c < 0) rgba.set([0, 0, 0, 0], k * 4);
    else rgba.set([c & 255, (c >> 8) & 255, (c >> 16) & 255, 255], k * 4);
  });
  return KP.pictureFromRGBA(w, h, rgba);
}

const hex = (c) => (c < 0 ? 'outside' : 'RGB(' + (c & 255) + ',' + ((c >> 8) & 255) + ',' + ((c >> 16) & 255) + ')');

function pixelIs(s, x, y, expected, note = '') {
  const got = KP.point(s, x, y);
  assert.equal(hex(got), hex(expected), `pixel (${x}, ${y}) ${note}`);
}

function rectIs(s, x, y, w, h, expected, note = '') {
  for (let yy = y; yy < y + h; ++yy)
    for (let xx = x; xx < x + w; ++xx) pixelIs(s, xx, yy, expected, note);
}

function countOf(s, c) {
  let n = 0;
  for (let y = 0; y < s.h; ++y) for (let x = 0; x < s.w; ++x) n += KP.point(s, x, y) === c ? 1 : 0;
  return n;
}

module.exports = { KP, RGB, tri, applet, button, FixedMeasure, columnsPicture, picture, pixelIs, rectIs, countOf };
