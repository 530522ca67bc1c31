// The bar in Chromium shows the designer's pixels: at rest (UP), under the
// pointer (OVER) and pressed (DOWN), every pixel outside the labels equals
// the command-line renderer's picture of that state, and each label's ink
// box lies within one pixel of the designer's.
const test = require('node:test');
const assert = require('node:assert/strict');
const fs = require('node:fs');
const path = require('node:path');
const h = require('./harness.js');
const { rgb, writeProject, withoutLabels, withoutPrograms } = require('./kpn.js');

const DEMO_DIR = path.join(h.ROOT, 'data/Projects');
const MEDIA = ['demo_star.gif', 'demo_arrow.gif', 'demo_bg.jpg', 'click.au'].map((f) => path.join(DEMO_DIR, f));

// The canvas of bar 0 as the page shows it, read back as a PNG.
async function canvasPicture(page) {
  const dataUrl = await page.evaluate(() => window.KestrelPanePlayer.bars[0].canvas.toDataURL('image/png'));
  const file = path.join(h.tempDir('kp-canvas-'), 'c.png');
  fs.writeFileSync(file, Buffer.from(dataUrl.split(',')[1], 'base64'));
  return h.readPicture(file);
}

function px(pic, x, y) {
  const o = (y * pic.w + x) * 4;
  return (pic.rgba[o] << 16) | (pic.rgba[o + 1] << 8) | pic.rgba[o + 2];
}

// Bounding box of the pixels where two pictures differ inside a rectangle,
// leaving out those that `skip(x, y)` names.
function diffBox(a, b, r, skip) {
  let box = null;
  for (let y = Math.max(0, r.y); y < Math.min(a.h, r.y + r.h); y++) {
    for (let x = Math.max(0, r.x); x < Math.min(a.w, r.x + r.w); x++) {
      if (px(a, x, y) === px(b, x, y) || (skip && skip(x, y))) continue;
      if (!box) box = { x0: x, y0: y, x1: x, y1: y };
      box.x0 = Math.min(box.x0, x); box.x1 = Math.max(box.x1, x);
      box.y0 = Math.min(box.y0, y); box.y1 = Math.max(box.y1, y);
    }
  }
  return box;
}

function inBox(box, x, y, grow) {
  return box && x >= box.x0 - grow && x <= box.x1 + grow && y >= box.y0 - grow && y <= box.y1 + grow;
}

// A context that builds the project once and renders what the designer shows.
function subject(project) {
  const page = h.buildProject(project);
  const bare = withoutLabels(project, path.join(path.dirname(project), '_nolabels_' + path.basename(project)));
  const rects = h.cli(['info', project], { encoding: 'utf8' }).split('\n')
    .map((l) => /^(\d+) .* (-?\d+),(-?\d+) (\d+)x(\d+)$/.exec(l)).filter(Boolean)
    .map((m) => ({ i: +m[1], x: +m[2], y: +m[3], w: +m[4], h: +m[5] }));
  const renders = {};
  const rendered = (state, labels) => {
    const key = state + labels;
    if (!renders[key]) renders[key] = h.render(labels ? project : bare, state);
    return renders[key];
  };
  return { dir: path.dirname(page), page, rects, rendered };
}

const STATE_INDEX = { UP: 1, OVER: 2, DOWN: 3 };

// The frame a page draws and the designer does not: the colour of pixel
// (x, y) when it lies in the frame of the topmost button there, else null.
function frameAt(frames, state, x, y) {
  let top = null;
  for (const f of frames) if (x >= f.x && x < f.x + f.w && y >= f.y && y < f.y + f.h) top = f;
  if (!top) return null;
  const s = STATE_INDEX[state(x, y)];
  const t = Math.min(top.thick[s], Math.ceil(Math.min(top.w, top.h) / 2));
  if (!(t > 0)) return null;
  const dx = Math.min(x - top.x, top.x + top.w - 1 - x), dy = Math.min(y - top.y, top.y + top.h - 1 - y);
  if (Math.min(dx, dy) >= t) return null;
  const c = top.colour[s];
  return ((c & 255) << 16) | (c & 0xff00) | ((c >> 16) & 255);
}

// The buttons' frames as the page read them.
function framesOf(page) {
  return page.evaluate(() => window.KestrelPanePlayer.bars[0].buttons.filter(Boolean).filter((b) => !b.Hidden)
    .map((b) => ({ x: b.x, y: b.y, w: b.Width, h: b.Height, thick: b.FrameThick, colour: b.FrameColor })));
}

// Compares the page with the designer: `expect(x, y)` names the state whose
// render holds pixel (x, y); frames are the page's own and must show their
// colour. Returns a description of the first failures.
function compare(pagePic, s, stateAt, rectsToCheck, frames) {
  const problems = [];
  const W = pagePic.w, H = pagePic.h;
  const framed = (x, y) => frameAt(frames, stateAt, x, y) !== null;
  // Label boxes of the designer and of the page, per button and state.
  const boxes = new Map();
  const boxOf = (r, state) => {
    const key = r.i + state;
    if (!boxes.has(key)) boxes.set(key, diffBox(s.rendered(state, true), s.rendered(state, false), r));
    return boxes.get(key);
  };
  for (const r of rectsToCheck) {
    const state = stateAt(r.x + Math.floor(r.w / 2), r.y + Math.floor(r.h / 2));
    const mine = boxOf(r, state);
    const theirs = diffBox(pagePic, s.rendered(state, false), r, framed);
    if (!!mine !== !!theirs) {
      problems.push(`button ${r.i} ${state}: label ink ${JSON.stringify(theirs)} vs designer ${JSON.stringify(mine)}`);
    } else if (mine) {
      for (const k of ['x0', 'y0', 'x1', 'y1']) {
        if (Math.abs(mine[k] - theirs[k]) > 1) {
          problems.push(`button ${r.i} ${state}: label ink box ${JSON.stringify(theirs)} vs designer ${JSON.stringify(mine)}`);
          break;
        }
      }
    }
  }
  let count = 0;
  for (let y = 0; y < H; y++) {
    for (let x = 0; x < W; x++) {
      const state = stateAt(x, y);
      const frame = frameAt(frames, stateAt, x, y);
      const want = frame !== null ? frame : px(s.rendered(state, true), x, y);
      const got = px(pagePic, x, y);
      if (want === got) continue;
      const owner = rectsToCheck.filter((r) => x >= r.x && x < r.x + r.w && y >= r.y && y < r.y + r.h);
      if (frame === null && owner.some((r) => inBox(boxOf(r, state), x, y, 1))) continue;
      if (count++ < 5) problems.push(`(${x},${y}) ${state}: page ${got.toString(16)} designer ${want.toString(16)}`);
    }
  }
  if (count > 5) problems.push(`... ${count} differing pixels outside labels`);
  return problems;
}

async function checkProject(t, project, buttonsToPress) {
  const s = subject(project);
  const server = await h.serve(s.dir);
  try {
    const url = server.url + path.basename(s.page);
    const rest = await h.openPage(url);
    await rest.evaluate(() => window.KestrelPanePlayer.bars[0].ready);
    // Programs of the applet's start (waits, blinks) run to their end first.
    await rest.waitForTimeout(2000);
    const up = await canvasPicture(rest);
    const frames = await framesOf(rest);
    await rest.closeAll();
    assert.deepEqual([up.w, up.h], [s.rendered('UP', true).w, s.rendered('UP', true).h]);
    assert.deepEqual(compare(up, s, () => 'UP', s.rects, frames), [], 'at rest');

    for (const i of buttonsToPress) {
      const r = s.rects.find((q) => q.i === i);
      const inside = (x, y) => x >= r.x && x < r.x + r.w && y >= r.y && y < r.y + r.h;
      const page = await h.openPage(url);
      await page.waitForTimeout(2000);
      const canvasBox = await page.evaluate(() => {
        const b = window.KestrelPanePlayer.bars[0].canvas.getBoundingClientRect();
        return { x: b.left, y: b.top };
      });
      await page.mouse.move(canvasBox.x + r.x + r.w / 2, canvasBox.y + r.y + r.h / 2);
      await page.waitForTimeout(50);
      const over = await canvasPicture(page);
      assert.deepEqual(compare(over, s, (x, y) => (inside(x, y) ? 'OVER' : 'UP'), s.rects, frames), [],
        `button ${i} under the pointer`);
      await page.mouse.down();
      await page.waitForTimeout(50);
      const down = await canvasPicture(page);
      assert.deepEqual(compare(down, s, (x, y) => (inside(x, y) ? 'DOWN' : 'UP'), s.rects, frames), [],
        `button ${i} pressed`);
      await page.closeAll();
    }
  } finally {
    await server.close();
  }
}

test.after(() => h.closeBrowser());

test('the demo project matches the designer at rest, under the pointer and pressed', async (t) => {
  const dir = h.tempDir('kp-demo-');
  for (const f of fs.readdirSync(DEMO_DIR)) fs.copyFileSync(path.join(DEMO_DIR, f), path.join(dir, f));
  // The demo's programs move and recolour other buttons; the faces are
  // compared without them (their effects are the behaviour tests' concern).
  const project = withoutPrograms(path.join(dir, 'Demo.kpn'), path.join(dir, 'DemoFaces.kpn'));
  await checkProject(t, project, [1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12]);
});

// Buttons that together use every face feature: border styles, fades in
// every style with and without a border, text borders both ways, fonts and
// styles, centred, two-line and placed labels, transparent faces.
function faceButtons() {
  const b = [];
  const col = (k) => 10 + (k % 5) * 84;
  const row = (k) => 10 + Math.floor(k / 5) * 44;
  const at = (k, o) => Object.assign({ x: col(k), y: row(k), Width: 80, Height: 40 }, o);
  b.push(at(0, { BorderStyle: [1, 2, 3], BorderWidth: [2, 3, 4], BorderShade: [20, 30, 10], BorderColor: rgb(100, 100, 100), Label: 'Raised' }));
  b.push(at(1, { BorderStyle: [4, 1, 2], BorderWidth: 1, BorderShade: 60, BorderColor: rgb(20, 120, 220), Label: ['Dark', 'Up', 'Down'] }));
  b.push(at(2, { FadeStyle: [1, 2, 3], FadeColor: rgb(255, 0, 0), BackColor: rgb(0, 0, 255), Label: 'Fade' }));
  b.push(at(3, { FadeStyle: [4, 3, 1], FadeColor: rgb(0, 200, 0), BorderStyle: 0, Label: '' }));
  b.push(at(4, { FadeStyle: 3, Width: 81, FadeColor: rgb(250, 250, 0), BackColor: rgb(10, 10, 10), BorderWidth: 5, Label: 'Odd' }));
  b.push(at(5, { TFrameThick: [2, 1, 3], TFrameColor: rgb(0, 128, 0), TFrameShade: [30, 40, 20], TFrameLight: [0, 1, 0], TFrameLeftToRight: [0, 0, 1], Label: 'Frame', FontColor: rgb(255, 255, 255) }));
  b.push(at(6, { Font: ['times', 'courier', 'dialog'], FontStyle: [1, 2, 3], FontSize: [12, 9, 11], Label: ['Times', 'Courier', 'Dialog'] }));
  b.push(at(7, { Label: 'Two\\nlines', FontSize: 8, PositionText: [0, 0, 0] }));
  b.push(at(8, { Label: 'Placed', PositionText: [1, 1, 1], LabelPosX: [2, 10, 20], LabelPosY: [12, 20, 30] }));
  b.push(at(9, { noBackGround: [true, true, false], Label: 'Clear', BorderStyle: [0, 1, 1] }));
  b.push(at(10, { Label: 'Big', FontSize: 16, FontStyle: 1, FontColor: rgb(200, 0, 0), BackColor: rgb(255, 255, 200) }));
  b.push(at(11, { BorderStyle: 1, BorderWidth: 30, BorderShade: 5, BorderColor: rgb(150, 50, 50), Label: 'Thick' }));
  b.push(at(12, { Label: 'a&nbspb', BorderStyle: 2 }));
  b.push(at(13, { x: col(13) - 20, noBackGround: true, Label: 'Over', BorderStyle: 0 }));
  b.push(at(14, { FrameThick: [2, 0, 5], FrameColor: [rgb(255, 0, 0), 0, rgb(0, 0, 160)], Label: 'Framed' }));
  return b;
}

test('generated faces match the designer on a flat background', async (t) => {
  const dir = h.tempDir('kp-faces-');
  const project = writeProject(dir, 'faces.kpn', { AppletWidth: 430, AppletHeight: 150, BackGround: rgb(230, 240, 250) }, faceButtons(), MEDIA);
  await checkProject(t, project, [1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 15]);
});

test('generated faces match the designer over a faded background with an applet border', async (t) => {
  const dir = h.tempDir('kp-faces2-');
  const project = writeProject(dir, 'faces2.kpn', {
    AppletWidth: 430, AppletHeight: 150, BackGround: rgb(200, 220, 255), iFadeStyle: 3,
    cFadeColor: rgb(40, 80, 160), iABorderStyle: 1, iABorderWidth: 6, iABorderShade: 15,
    cABorderColor: rgb(60, 60, 140),
  }, faceButtons(), MEDIA);
  await checkProject(t, project, [10, 14]);
});

// Pictures in every placement and every background picture style.
function pictureButtons() {
  return [
    { x: 10, y: 10, Width: 80, Height: 40, Image: 'demo_star.gif', ImgStyle: 0, Label: '' },
    { x: 100, y: 10, Width: 80, Height: 40, Image: ['demo_star.gif', 'demo_arrow.gif', 'demo_star.gif'], ImgStyle: 1, ImgX: [-5, 10, 50], ImgY: [3, -4, 20], Label: 'Pic' },
    { x: 190, y: 10, Width: 80, Height: 40, Image: 'demo_arrow.gif', ImgStyle: 2, Label: 'Stretch' },
    { x: 280, y: 10, Width: 20, Height: 20, Image: 'demo_star.gif', ImgStyle: 0, Label: '' },
    { x: 10, y: 60, Width: 80, Height: 40, Image: 'demo_bg.jpg', ImgStyle: [0, 1, 2], Label: 'Jpeg' },
    { x: 100, y: 60, Width: 80, Height: 40, noBackGround: true, Image: 'demo_star.gif', ImgStyle: 0, Label: 'See' },
    { x: 190, y: 60, Width: 80, Height: 40, Image: 'missing.gif', ImgStyle: 0, Label: 'Gone' },
  ];
}

for (const [style, offsets] of [[1, [7, 5]], [2, [30, 30]], [3, [5, 9]], [4, [12, 4]]]) {
  test(`pictures match the designer over background picture style ${style}`, async (t) => {
    const dir = h.tempDir('kp-pics-');
    const project = writeProject(dir, 'pics.kpn', {
      AppletWidth: 320, AppletHeight: 120, BackGround: rgb(255, 250, 240), BackImg: 'demo_star.gif',
      BackImgStyle: style, iBgOffsetX: offsets[0], iBgOffsetY: offsets[1],
    }, pictureButtons(), MEDIA);
    await checkProject(t, project, style === 1 ? [1, 2, 3, 4, 5, 6, 7] : [2, 6]);
  });
}
