// Label lines, their places, the text border and the prints, measured by
// a text measure with fixed metrics.
const test = require('node:test');
const assert = require('node:assert/strict');
const { KP, RGB, applet, button, FixedMeasure, pixelIs, rectIs, countOf } = require('./draw_fixture.js');

const kWhite = RGB(255, 255, 255);
const kInk = RGB(255, 0, 0);

// One button of 60 x 40 with a white face and a red label.
function labelled(label, state = 1, height = 16, setup = () => {}) {
  const b = button(1, 0, 0, 60, 40, kWhite);
  b.Label[state] = label;
  setup(b);
  const measure = new FixedMeasure(height);
  const sc = new KP.Scene(applet(100, 60), [null, b], new Map(), measure);
  sc.state[1] = state;
  sc.redrawAll();
  return { b, face: sc.surface(1), measure };
}

test('two centred lines with text height 16 stand at 12 and 28', () => {
  const { b, face } = labelled('A\\nB');
  // x = round(30 - 6/2); each print's top is its y less 3/4 of 16.
  pixelIs(face, 27, 0, kInk);
  pixelIs(face, 27, 16, kInk);
  assert.equal(countOf(face, kInk), 2);
  assert.equal(b.LabelPosX[1], 27);
  assert.equal(b.LabelPosY[1], 12);
});

test('one line with text height 15 has y 25 and its top at 13.75 on row 14', () => {
  const { b, face } = labelled('A', 1, 15);
  assert.equal(b.LabelPosY[1], 25);
  pixelIs(face, 27, 14, kInk);
  assert.equal(countOf(face, kInk), 1);
});

test('the down state moves a centred label by the descent and stores y without it', () => {
  const { b, face } = labelled('A', 3);
  pixelIs(face, 28, 14, kInk);
  assert.equal(countOf(face, kInk), 1);
  assert.equal(b.LabelPosX[3], 28);
  assert.equal(b.LabelPosY[3], 25);
});

test('a manual position in the down state has no descent and is not written back', () => {
  const { b, face } = labelled('A\\nB', 3, 16, (b) => {
    b.PositionText[3] = true;
    b.LabelPosX[3] = 10;
    b.LabelPosY[3] = 20;
  });
  pixelIs(face, 10, 8, kInk);
  pixelIs(face, 10, 24, kInk);
  assert.equal(countOf(face, kInk), 2);
  assert.deepEqual([b.LabelPosX[3], b.LabelPosY[3]], [10, 20]);
});

test('a top-down text border shades rows and the second pass stays on top', () => {
  const { face } = labelled('A', 1, 16, (b) => {
    b.TFrameThick[1] = 2;
    b.TFrameShade[1] = 10;
    b.TFrameColor[1] = RGB(100, 100, 100);
    b.TFrameLight[1] = true;
  });
  const grey = (v) => RGB(v, v, v);
  rectIs(face, 25, 11, 5, 1, grey(130));
  rectIs(face, 25, 12, 5, 1, grey(100));
  rectIs(face, 25, 13, 2, 1, grey(110));
  pixelIs(face, 27, 13, kInk, 'the line itself on top');
  rectIs(face, 28, 13, 2, 1, grey(110));
  rectIs(face, 25, 14, 5, 1, grey(120));
  rectIs(face, 25, 15, 5, 1, grey(130));
  assert.equal(countOf(face, kWhite), 60 * 40 - 25);
});

test('a dark text border shades below the colour', () => {
  const { face } = labelled('A', 1, 16, (b) => {
    b.TFrameThick[1] = 2;
    b.TFrameShade[1] = 10;
    b.TFrameColor[1] = RGB(100, 100, 100);
  });
  rectIs(face, 25, 11, 5, 1, RGB(70, 70, 70));
  rectIs(face, 25, 12, 5, 1, RGB(100, 100, 100));
});

test('a left-to-right text border shades columns from the left', () => {
  const { face } = labelled('A', 1, 16, (b) => {
    b.TFrameThick[1] = 2;
    b.TFrameShade[1] = 10;
    b.TFrameColor[1] = RGB(100, 100, 100);
    b.TFrameLight[1] = true;
    b.TFrameLeftToRight[1] = true;
  });
  [120, 110, 100, 90, 80].forEach((v, k) => {
    rectIs(face, 25 + k, 11, 1, 2, RGB(v, v, v), 'column ' + (25 + k));
    rectIs(face, 25 + k, 14, 1, 2, RGB(v, v, v), 'column ' + (25 + k));
  });
  pixelIs(face, 27, 13, kInk);
});

test('a text border shade overflow ends the label but the border is still drawn', () => {
  const { face } = labelled('A', 1, 16, (b) => {
    b.TFrameThick[1] = 200;
    b.TFrameShade[1] = 200;
    b.BorderStyle[1] = 4;
    b.BorderWidth[1] = 1;
    b.BorderShade[1] = 10;
    b.BorderColor[1] = RGB(100, 100, 100);
  });
  assert.equal(countOf(face, kInk), 0);
  pixelIs(face, 0, 0, RGB(90, 90, 90));
});

test('Courier is drawn as Courier New and the record keeps Courier', () => {
  const { b, measure } = labelled('A', 1, 16, (b) => {
    b.Font[1] = 'Courier';
    b.TFrameThick[1] = 1;
  });
  assert.ok(measure.fontsAsked.length > 0);
  for (const f of measure.fontsAsked) assert.equal(f.name, 'Courier New');
  assert.equal(b.Font[1], 'Courier');
});

test('FontStyle gives bold and italic, and the size goes to the measure as it stands', () => {
  for (const [style, bold, italic] of [[0, false, false], [1, true, false], [2, false, true], [3, true, true]]) {
    const { measure } = labelled('A', 1, 16, (b) => { b.FontStyle[1] = style; b.FontSize[1] = 17; });
    const f = measure.fontsAsked[measure.fontsAsked.length - 1];
    assert.deepEqual(f, { name: 'Arial', size: 17, bold, italic });
  }
});

test('"&nbsp" is drawn as a blank, centred on the stored width, and the record is unchanged', () => {
  const { b, face, measure } = labelled('A&nbspB');
  assert.equal(measure.printedTexts[measure.printedTexts.length - 1], 'A B');
  // round(30 - 7 * 6 / 2) = 9.
  pixelIs(face, 9, 13, kInk);
  pixelIs(face, 10, 13, kWhite);
  pixelIs(face, 11, 13, kInk);
  assert.equal(b.Label[1], 'A&nbspB');
});

test('a label ending in "\\n" has an empty last line and is placed as two lines', () => {
  const { b, face } = labelled('A\\n');
  assert.equal(b.LabelPosY[1], 12);
  pixelIs(face, 27, 0, kInk);
  assert.equal(countOf(face, kInk), 1);
});

test('an empty label is one empty line whose place is still stored', () => {
  const { b, face } = labelled('');
  assert.deepEqual([b.LabelPosX[1], b.LabelPosY[1]], [30, 25]);
  assert.equal(countOf(face, kWhite), 60 * 40);
});

test('each centred line is centred by itself', () => {
  const { face } = labelled('A\\nABC');
  pixelIs(face, 27, 0, kInk);
  rectIs(face, 21, 16, 3, 1, kInk);
});

test('the display text turns the escapes into characters', () => {
  assert.equal(KP.LabelDisplayText('a&!0b&!1c&!2d&!3e&!4f&nbspg'), 'a b;c"d|e^f g');
});

test('font names resolve to the three families the system maps onto Liberation fonts', () => {
  assert.equal(KP.ResolveFontFamily('Dialog'), 'Arial');
  assert.equal(KP.ResolveFontFamily('Courier'), 'Courier New');
  assert.equal(KP.ResolveFontFamily('Times'), 'Times New Roman');
  assert.equal(KP.ResolveFontFamily(' monospaced '), 'Courier New');
  assert.equal(KP.ResolveFontFamily('Arial'), 'Arial');
});

// A canvas that knows the vertical metrics of Liberation Sans (1854 and
// 434 units of 2048) and gives every character an advance of 0.55 em.
function fakeDocument() {
  const ctx = {
    font: '',
    measureText(text) {
      const px = Number(/(\d+)px/.exec(this.font)[1]);
      return {
        width: 0.55 * px * [...text].length,
        fontBoundingBoxAscent: Math.round(1854 * px / 2048),
        fontBoundingBoxDescent: Math.round(434 * px / 2048),
      };
    },
  };
  return { createElement: () => ({ width: 0, height: 0, getContext: () => ctx }), ctx };
}

test('the canvas measure gives the heights of the designer\'s font engine', () => {
  const doc = fakeDocument();
  const m = new KP.CanvasMeasure(doc);
  // What Qt gives Liberation Sans at these pixel sizes.
  assert.equal(m.TextHeight({ name: 'Arial', size: 13, bold: false, italic: false }, 'x'), 14.515625);
  assert.equal(m.TextHeight({ name: 'Dialog', size: 8, bold: true, italic: false }, 'x'), 8.953125);
  assert.equal(m.TextHeight({ name: 'Arial', size: 17, bold: false, italic: false }, 'Wg'), 19);
  assert.match(doc.ctx.font, /"Arial"/);
});

test('the canvas measure adds whole-pixel advances and asks for the resolved family', () => {
  const doc = fakeDocument();
  const m = new KP.CanvasMeasure(doc);
  // 0.55 * 13 = 7.15 a character, 7 after rounding.
  assert.equal(m.TextWidth({ name: 'Times', size: 13, bold: false, italic: true }, 'Home'), 28);
  assert.match(doc.ctx.font, /^italic 13px "Times New Roman"/);
  assert.equal(m.TextWidth({ name: 'Arial', size: 13 }, ''), 0);
});

test('a line printed character by character gives the pixels of its whole mask, the last stamp on top', () => {
  const { KP: P } = require('./draw_fixture.js');
  const mask = (w, h, ox, oy, on) => ({ width: w, height: h, originX: ox, originY: oy, bits: Uint8Array.from(on) });
  const a = mask(2, 2, 0, -1, [1, 0, 1, 1]);
  const b = mask(2, 1, 0, 0, [1, 1]);
  // The same two characters as one mask: a at pen 0, b at pen 1 (overlapping a).
  const whole = mask(3, 2, 0, -1, [1, 0, 0, 1, 1, 1]);
  const stamps = [{ x: 2, y: 3, colour: 0x0000ff }, { x: 3, y: 3, colour: 0x00ff00 }, { x: 2, y: 4, colour: 0xff0000 }];
  const bySteps = P.newSurface(8, 8, 0xffffff);
  P.StampRuns(bySteps, [[0, a], [1, b]], stamps.flatMap((s) => [s.x, s.y, s.colour]));
  const together = P.newSurface(8, 8, 0xffffff);
  P.StampRuns(together, [[0, whole]], stamps.flatMap((s) => [s.x, s.y, s.colour]));
  assert.deepEqual(Array.from(bySteps.px), Array.from(together.px));
});

// A mask that overlaps itself when moved by one pixel: a plus sign of
// three by three a character, the characters two pixels apart.
class PlusMeasure {
  TextWidth(font, text) { return 2 * text.length; }
  TextHeight() { return 8; }
  Glyphs(font, text) {
    const w = 2 * text.length + 1, bits = new Uint8Array(w * 3);
    for (let k = 0; k < text.length; ++k) {
      bits[2 * k + 1] = 1;
      bits[w + 2 * k] = bits[w + 2 * k + 1] = bits[w + 2 * k + 2] = 1;
      bits[2 * w + 2 * k + 1] = 1;
    }
    return { width: w, height: 3, originX: 0, originY: -1, bits };
  }
}

// Every print of a text border in its order, each painted in full: rows
// from Y - Thick down to Y, then from Y + Thick up to Y - 1, each row from
// the left; the shade steps per row, or along the row from 0 when it runs
// left to right. Then the line itself.
function textBorderByEveryPrint(surface, g, X, Y, T, colour, light, shade, leftToRight, fontColour) {
  const { R, G, B } = KP.PartsOf(colour);
  const paint = (x, top, c) => {
    for (let yy = 0; yy < g.height; ++yy)
      for (let xx = 0; xx < g.width; ++xx)
        if (g.bits[yy * g.width + xx]) KP.pset(surface, x + g.originX + xx, top + g.originY + yy, c);
  };
  const rows = [];
  for (let yy = Y - T; yy <= Y; ++yy) rows.push([yy, rows.length === 0]);
  for (let yy = Y + T; yy >= Y - 1; --yy) rows.push([yy, yy === Y + T]);
  let n = -1;
  for (const [yy, first] of rows) {
    if (first) n = -1;
    const top = KP.PrintTop(yy, 8);
    if (!leftToRight) {
      const c = KP.ShadeColor(shade, T, R, G, B, n++, light);
      for (let x = X - T; x <= X + T; ++x) paint(x, top, c);
    } else {
      let m = 0;
      for (let x = X - T; x <= X + T; ++x) paint(x, top, KP.ShadeColor(shade, T, R, G, B, m++, light));
    }
  }
  paint(X, KP.PrintTop(Y, 8), fontColour);
}

test('a text border leaves the pixels of every print in order, also where prints repeat a place and at the edges', () => {
  let cases = 0;
  for (const T of [1, 2, 3, 6]) {
    for (const light of [false, true]) {
      for (const leftToRight of [false, true]) {
        for (const [X, Y] of [[20, 20], [1, 2], [55, 38]]) {
          const b = button(1, 0, 0, 60, 40, kWhite);
          b.Label[1] = 'AB';
          b.PositionText[1] = true;
          b.LabelPosX[1] = X;
          b.LabelPosY[1] = Y;
          b.TFrameThick[1] = T;
          b.TFrameShade[1] = 17;
          b.TFrameColor[1] = RGB(90, 120, 150);
          b.TFrameLight[1] = light;
          b.TFrameLeftToRight[1] = leftToRight;
          const measure = new PlusMeasure();
          const sc = new KP.Scene(applet(100, 60), [null, b], new Map(), measure);
          sc.redrawAll();
          const want = KP.newSurface(60, 40, kWhite);
          textBorderByEveryPrint(want, measure.Glyphs(null, 'AB'), X, Y, T, b.TFrameColor[1], light, 17, leftToRight,
            b.FontColor[1]);
          assert.deepEqual(Array.from(sc.surface(1).px), Array.from(want.px), `thick ${T} light ${light} ltr ${leftToRight} at ${X},${Y}`);
          ++cases;
        }
      }
    }
  }
  assert.equal(cases, 48);
});
