// The scene: faces, transparency over the background and lower buttons,
// the background picture styles and the composed bar.
const test = require('node:test');
const assert = require('node:assert/strict');
const { KP, RGB, applet, button, FixedMeasure, columnsPicture, picture, pixelIs, rectIs } =
  require('./draw_fixture.js');

const kWhite = RGB(255, 255, 255);
const kGreen = RGB(0, 128, 0);
const kRed = RGB(255, 0, 0);
const kBlue = RGB(0, 0, 255);

function scene(a, buttons, pictures = new Map()) {
  return new KP.Scene(a, [null, ...buttons], pictures, new FixedMeasure());
}

test('a transparent button over a flat background shows BackGround whatever the design surface says', () => {
  const b = button(1, 10, 10, 30, 20, kRed);
  b.noBackGround[1] = true;
  const sc = scene(applet(100, 60, kGreen), [b]);
  sc.redrawAll();
  KP.fillRect(sc.design, 0, 0, 100, 60, kBlue);
  sc.redrawButton(1);
  rectIs(sc.surface(1), 0, 0, 30, 20, kGreen);
});

test('a transparent button over a faded background copies the design surface under it', () => {
  const a = applet(100, 60, kWhite);
  a.iFadeStyle = 1;
  a.cFadeColor = RGB(0, 0, 128);
  const b = button(1, 15, 12, 30, 20, kRed);
  b.noBackGround[1] = true;
  b.FadeStyle[1] = 2;
  b.FadeColor[1] = kBlue;
  const sc = scene(a, [b]);
  sc.redrawAll();
  for (let y = 0; y < 20; ++y)
    for (let x = 0; x < 30; ++x) pixelIs(sc.surface(1), x, y, KP.point(sc.design, x + 15, y + 12));
  assert.notEqual(KP.point(sc.surface(1), 3, 3), KP.point(sc.surface(1), 24, 3), 'the fade runs under the button');
});

test('a transparent button over a tiled background picture shows the tiles', () => {
  const a = applet(100, 60, kWhite);
  a.BackImg = 'bg.gif';
  a.BackImgStyle = 3;
  const b = button(1, 15, 12, 30, 20, kGreen);
  b.noBackGround[1] = true;
  const sc = scene(a, [b], new Map([['bg.gif', picture(2, 2, [kBlue, kRed, kRed, kBlue])]]));
  sc.redrawAll();
  pixelIs(sc.surface(1), 0, 0, kRed, '(15, 12): odd column, even row');
  pixelIs(sc.surface(1), 1, 0, kBlue);
  pixelIs(sc.surface(1), 1, 1, kRed);
});

test('the upper of two overlapping transparent buttons shows the lower one and follows its redraw above', () => {
  const lower = button(1, 10, 10, 40, 20), upper = button(2, 10, 10, 40, 20);
  lower.noBackGround[1] = upper.noBackGround[1] = true;
  lower.Label[1] = 'A';
  const sc = scene(applet(100, 60, kWhite), [lower, upper]);
  sc.redrawAll();
  // x = round(20 - 3) = 17; y = round(10 + 16/3) = 15, top 3.
  pixelIs(sc.surface(2), 17, 3, kRed);
  lower.Label[1] = 'BCD';
  sc.redrawButton(1, false);
  pixelIs(sc.surface(2), 17, 3, kRed, 'without redraw above the upper button is stale');
  sc.redrawButton(1);
  rectIs(sc.surface(2), 11, 3, 3, 1, kRed);
  pixelIs(sc.surface(2), 17, 3, kWhite);
});

test('covered lower buttons are copied in ascending order, hidden ones left out', () => {
  const one = button(1, 0, 0, 20, 20, kRed);
  const two = button(2, 10, 0, 20, 20, kBlue);
  const three = button(3, 5, 5, 30, 10);
  three.noBackGround[1] = true;
  let sc = scene(applet(100, 60, kWhite), [one, two, three]);
  sc.redrawAll();
  rectIs(sc.surface(3), 0, 0, 5, 10, kRed);
  rectIs(sc.surface(3), 5, 0, 20, 10, kBlue);
  rectIs(sc.surface(3), 25, 0, 5, 10, kWhite);
  two.Hidden = true;
  sc = scene(applet(100, 60, kWhite), [one, two, three]);
  sc.redrawAll();
  rectIs(sc.surface(3), 0, 0, 15, 10, kRed);
  rectIs(sc.surface(3), 15, 0, 15, 10, kWhite);
});

test('touching rectangles do not cover each other', () => {
  const bs = [[0, 0], [10, 0], [0, 10], [10, 10], [9, 9]].map(([x, y], k) => button(k + 1, x, y, 10, 10));
  const sc = scene(applet(100, 60), bs);
  sc.redrawAll();
  assert.equal(KP.DoCover(sc, 1, 2), false);
  assert.equal(KP.DoCover(sc, 1, 3), false);
  assert.equal(KP.DoCover(sc, 1, 4), false);
  assert.equal(KP.DoCover(sc, 1, 5), true);
  assert.equal(KP.DoCover(sc, 5, 1), true);
  assert.equal(KP.DoCover(sc, 4, 5), true);
});

test('redraw above reaches only transparent buttons overlapping the repainted one', () => {
  const one = button(1, 0, 0, 20, 20, kRed);
  const two = button(2, 10, 0, 20, 20);
  const three = button(3, 40, 0, 20, 20);
  two.noBackGround[1] = three.noBackGround[1] = true;
  const sc = scene(applet(100, 60, kWhite), [one, two, three]);
  sc.redrawAll();
  one.BackColor[1] = kBlue;
  one.x = 30;
  sc.redrawButton(1);
  rectIs(sc.surface(2), 0, 0, 10, 20, kRed, 'two no longer overlaps one, so it keeps its old copy');
  rectIs(sc.surface(3), 0, 0, 10, 20, kBlue, 'one now lies under three');
  rectIs(sc.surface(3), 10, 0, 10, 20, kWhite);
});

test('a raised border of width 3 fades only the inner rectangle', () => {
  const b = button(1, 0, 0, 30, 20, RGB(200, 200, 200));
  b.FadeStyle[1] = 1;
  b.FadeColor[1] = RGB(0, 0, 100);
  b.BorderStyle[1] = 1;
  b.BorderWidth[1] = 3;
  const sc = scene(applet(100, 60), [b]);
  sc.redrawAll();
  KP.DrawPix(sc, 1);
  const face = sc.surface(1);
  rectIs(face, 0, 0, 30, 3, RGB(200, 200, 200));
  rectIs(face, 0, 0, 3, 20, RGB(200, 200, 200));
  rectIs(face, 3, 3, 1, 14, RGB(0, 0, 100));
  rectIs(face, 27, 0, 3, 20, RGB(200, 200, 200));
  rectIs(face, 0, 17, 30, 3, RGB(200, 200, 200));
});

test('the border lies on the surface edge wherever the button stands', () => {
  const b = button(1, 50, 30, 20, 10);
  b.BorderStyle[1] = 4;
  b.BorderWidth[1] = 1;
  b.BorderShade[1] = 10;
  b.BorderColor[1] = RGB(100, 100, 100);
  const sc = scene(applet(200, 100), [b]);
  sc.redrawAll();
  pixelIs(sc.surface(1), 0, 0, RGB(90, 90, 90));
  pixelIs(sc.surface(1), 19, 9, RGB(90, 90, 90));
  pixelIs(sc.surface(1), 1, 1, RGB(192, 192, 192));
});

function faceWith(pic, w, h, style) {
  const b = button(1, 0, 0, w, h, kGreen);
  b.Image[1] = 'pic.gif';
  b.ImgStyle[1] = style;
  const sc = scene(applet(200, 100), [b], new Map([['pic.gif', pic]]));
  sc.redrawAll();
  return sc.surface(1);
}

test('an image larger than the button centred shows its middle clipped on both sides', () => {
  const face = faceWith(columnsPicture(40, 4), 20, 10, 0);
  // x = round(10 - 20) = -10, y = round(5 - 2) = 3.
  pixelIs(face, 0, 3, RGB(10, 7, 9));
  pixelIs(face, 19, 6, RGB(29, 7, 9));
  rectIs(face, 0, 0, 20, 3, kGreen);
  rectIs(face, 0, 7, 20, 3, kGreen);
});

test('an odd centre rounds half to even, not down', () => {
  // W = 21: x = round(10.5 - 3) = round(7.5) = 8.
  const face = faceWith(columnsPicture(6, 2), 21, 4, 0);
  pixelIs(face, 7, 1, kGreen);
  pixelIs(face, 8, 1, RGB(0, 7, 9));
});

test('an odd centre rounds half to even, not up', () => {
  // W = 20: x = round(6.5) = 6; H = 8: y = round(2.5) = 2.
  const face = faceWith(columnsPicture(7, 3), 20, 8, 0);
  pixelIs(face, 6, 2, RGB(0, 7, 9));
  pixelIs(face, 12, 4, RGB(6, 7, 9));
  pixelIs(face, 13, 2, kGreen);
  pixelIs(face, 6, 1, kGreen);
});

test('a manual image stands at ImgX, ImgY; a stretched one fills the face; style 3 shows none', () => {
  const b = button(1, 0, 0, 20, 10, kGreen);
  b.Image[1] = 'p';
  b.ImgStyle[1] = 1;
  b.ImgX[1] = -1;
  b.ImgY[1] = 8;
  const sc = scene(applet(200, 100), [b], new Map([['p', columnsPicture(3, 3)]]));
  sc.redrawAll();
  pixelIs(sc.surface(1), 0, 8, RGB(1, 7, 9));
  pixelIs(sc.surface(1), 1, 9, RGB(2, 7, 9));
  pixelIs(sc.surface(1), 2, 9, kGreen);
  pixelIs(sc.surface(1), 0, 7, kGreen);
  const stretched = faceWith(columnsPicture(2, 1), 8, 4, 2);
  rectIs(stretched, 0, 0, 4, 4, RGB(0, 7, 9));
  rectIs(stretched, 4, 0, 4, 4, RGB(1, 7, 9));
  rectIs(faceWith(columnsPicture(2, 2), 8, 4, 3), 0, 0, 8, 4, kGreen);
});

test('a GIF without transparency has a black mask and replaces the face', () => {
  const pic = picture(4, 4, new Array(16).fill(kBlue));
  rectIs(KP.pictureMask(pic), 0, 0, 4, 4, 0);
  const b = button(1, 0, 0, 10, 10, kGreen);
  b.Image[1] = 'p.gif';
  b.FadeStyle[1] = 1;
  b.FadeColor[1] = kRed;
  const sc = scene(applet(200, 100), [b], new Map([['p.gif', pic]]));
  sc.redrawAll();
  rectIs(sc.surface(1), 3, 3, 4, 4, kBlue);
  pixelIs(sc.surface(1), 0, 0, kRed);
});

test('transparent picture pixels keep the face; a missing picture leaves the face', () => {
  const face = faceWith(picture(2, 1, [kBlue, -1]), 2, 1, 1);
  pixelIs(face, 0, 0, kBlue);
  pixelIs(face, 1, 0, kGreen);
  const b = button(1, 0, 0, 10, 6, kGreen);
  b.Image[1] = 'none.gif';
  const sc = scene(applet(200, 100), [b], new Map([['none.gif', null]]));
  sc.redrawAll();
  rectIs(sc.surface(1), 0, 0, 10, 6, kGreen);
});

// The applet's picture with a red square of 4 x 4.
function backgroundWith(style, offX = 3, offY = 5, w = 20, h = 16) {
  const a = applet(w, h, kWhite);
  a.BackImg = 'sq.gif';
  a.BackImgStyle = style;
  a.iBgOffsetX = offX;
  a.iBgOffsetY = offY;
  const sc = scene(a, [], new Map([['sq.gif', picture(4, 4, new Array(16).fill(kRed))]]));
  sc.drawBackground();
  return sc.design;
}

test('background picture styles: manual at the offsets, centred without them', () => {
  let d = backgroundWith(1);
  rectIs(d, 3, 5, 4, 4, kRed);
  pixelIs(d, 2, 5, kWhite);
  pixelIs(d, 7, 9, kWhite);
  d = backgroundWith(2);
  rectIs(d, 8, 6, 4, 4, kRed);
  pixelIs(d, 7, 6, kWhite);
});

test('a tiled background runs right and down from the offsets, limited to the applet', () => {
  const d = backgroundWith(3, 3, 5, 20, 16);
  pixelIs(d, 2, 5, kWhite);
  pixelIs(d, 3, 4, kWhite);
  rectIs(d, 3, 5, 17, 11, kRed);
});

test('a stretched background fills the applet from the offsets', () => {
  const d = backgroundWith(4, 3, 5, 20, 16);
  rectIs(d, 3, 5, 17, 11, kRed);
  rectIs(d, 0, 0, 20, 5, kWhite);
  rectIs(d, 0, 0, 3, 16, kWhite);
});

test('transparent background picture pixels show the fade; an unreadable picture leaves a plain surface', () => {
  const a = applet(10, 4, kWhite);
  a.iFadeStyle = 1;
  a.cFadeColor = kBlue;
  a.BackImg = 'h.gif';
  a.BackImgStyle = 1;
  let sc = scene(a, [], new Map([['h.gif', picture(2, 1, [kRed, -1])]]));
  sc.drawBackground();
  pixelIs(sc.design, 0, 0, kRed);
  pixelIs(sc.design, 1, 0, KP.point(sc.design, 1, 1));
  assert.notEqual(KP.point(sc.design, 1, 0), kWhite);
  sc = scene(a, [], new Map([['h.gif', null]]));
  sc.drawBackground();
  rectIs(sc.design, 0, 0, 10, 4, kWhite);
});

test('the background fade stays inside an applet border of 10', () => {
  const a = applet(60, 40, RGB(200, 0, 0));
  a.iFadeStyle = 1;
  a.cFadeColor = RGB(0, 0, 200);
  a.iABorderStyle = 1;
  a.iABorderWidth = 10;
  a.iABorderShade = 2;
  a.cABorderColor = RGB(100, 100, 100);
  const sc = scene(a, []);
  sc.drawBackground();
  pixelIs(sc.design, 0, 0, RGB(120, 120, 120), 'the outer ring of the applet border');
  pixelIs(sc.design, 10, 10, RGB(0, 0, 200), 'the fade starts inside the border');
  pixelIs(sc.design, 59, 39, RGB(80, 80, 80));
});

test('compose stacks higher numbers on top and leaves hidden buttons out', () => {
  const one = button(1, 0, 0, 10, 10, kRed);
  const two = button(2, 5, 0, 10, 10, kBlue);
  const three = button(3, 20, 0, 10, 10, kGreen);
  three.Hidden = true;
  const sc = scene(applet(40, 10, kWhite), [one, two, three]);
  sc.redrawAll();
  const out = sc.compose();
  const s = { w: 40, h: 10, px: out };
  rectIs(s, 0, 0, 5, 10, kRed);
  rectIs(s, 5, 0, 10, 10, kBlue);
  rectIs(s, 15, 0, 25, 10, kWhite);
  assert.equal(sc.compose(out), out, 'a given array is filled and returned');
});

test('a button whose record changes size gets a new surface of that size', () => {
  const b = button(1, 2, 3, 10, 10, kRed);
  const sc = scene(applet(40, 30, kWhite), [b]);
  sc.redrawAll();
  b.Width = 7;
  b.Height = 4;
  b.BackColor[2] = kBlue;
  sc.state[1] = 2;
  sc.redrawButton(1);
  assert.equal(sc.surface(1).w, 7);
  assert.equal(sc.surface(1).h, 4);
  rectIs(sc.surface(1), 0, 0, 7, 4, kBlue);
  assert.equal(sc.surface(1).Left, 2);
  assert.equal(sc.surface(1).Top, 3);
});

test('a page frames a button with rings of the frame colour over its border; the designer\'s scene does not', () => {
  const b = button(1, 5, 5, 20, 12, kRed);
  b.BorderStyle = [undefined, 1, 1, 1];
  b.BorderWidth = [undefined, 3, 3, 3];
  b.BorderColor = [undefined, RGB(100, 100, 100), RGB(100, 100, 100), RGB(100, 100, 100)];
  b.FrameThick = [undefined, 2, 0, 2];
  b.FrameColor = [undefined, kBlue, kBlue, kGreen];
  const designer = scene(applet(40, 30), [b]);
  designer.redrawAll();
  const page = scene(applet(40, 30), [JSON.parse(JSON.stringify(b))]);
  page.drawFrames = true;
  page.redrawAll();
  // The two rings on every edge, the inside untouched.
  rectIs(page.surface(1), 0, 0, 20, 2, kBlue, 'top');
  rectIs(page.surface(1), 0, 10, 20, 2, kBlue, 'bottom');
  rectIs(page.surface(1), 0, 2, 2, 8, kBlue, 'left');
  rectIs(page.surface(1), 18, 2, 2, 8, kBlue, 'right');
  assert.equal(KP.point(page.surface(1), 2, 2), KP.point(designer.surface(1), 2, 2));
  rectIs(page.surface(1), 3, 3, 14, 6, kRed, 'face');
  assert.notEqual(KP.point(designer.surface(1), 0, 0), KP.toPixel(kBlue));
  // A state without a frame shows none; another state its own colour.
  page.state[1] = 2;
  page.redrawButton(1);
  assert.equal(KP.point(page.surface(1), 0, 0), KP.point(designer.surface(1), 0, 0));
  page.state[1] = 3;
  page.redrawButton(1);
  pixelIs(page.surface(1), 19, 11, kGreen);
});

test('reserving with a head gives it its own pixels at the start of the buttons\' buffer', () => {
  const a = button(1, 2, 2, 20, 10, kRed);
  const b = button(2, 30, 2, 15, 12, kBlue);
  const s = scene(applet(60, 20), [a, b]);
  const head = s.reserve(60 * 20);
  assert.equal(head.length, 60 * 20);
  assert.equal(head.byteOffset, 0);
  assert.equal(head.buffer, s.surface(1).px.buffer);
  assert.equal(s.surface(1).px.byteOffset, 60 * 20 * 4);
  assert.equal(s.surface(2).px.byteOffset, (60 * 20 + 20 * 10) * 4);
  s.redrawAll();
  head.fill(7);
  pixelIs(s.surface(1), 0, 0, kRed);
  pixelIs(s.surface(2), 14, 11, kBlue);
});

test('surfaces reserved from one buffer draw as separate ones and part when a button grows', () => {
  const make = () => {
    const a = button(1, 2, 2, 20, 10, kRed);
    const b = button(2, 30, 2, 15, 12, kBlue);
    b.BorderStyle = [undefined, 1, 1, 1];
    b.BorderWidth = [undefined, 2, 2, 2];
    b.BorderColor = [undefined, kGreen, kGreen, kGreen];
    return scene(applet(60, 20), [a, b]);
  };
  const plainScene = make();
  plainScene.redrawAll();
  const pooled = make();
  pooled.reserve();
  assert.equal(pooled.surface(1).px.buffer, pooled.surface(2).px.buffer);
  pooled.redrawAll();
  for (const i of [1, 2]) assert.deepEqual(pooled.surface(i).px, plainScene.surface(i).px);
  // Growing button 1 must not spill into button 2's pixels.
  const before = Array.from(pooled.surface(2).px);
  pooled.buttons[1].Width = 25;
  pooled.redrawButton(1);
  assert.equal(pooled.surface(1).w, 25);
  assert.notEqual(pooled.surface(1).px.buffer, pooled.surface(2).px.buffer);
  assert.deepEqual(Array.from(pooled.surface(2).px), before);
  assert.deepEqual(pooled.compose(), (() => { plainScene.buttons[1].Width = 25; plainScene.redrawButton(1); return plainScene.compose(); })());
});
