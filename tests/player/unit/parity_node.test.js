// The player's drawing against the designer's own picture of the same
// projects (kestrelpane-cli render), pixel for pixel. Labels are left out
// of the player's drawing (its measure prints nothing), so the pixels the
// designer's labels cover are compared against a render of the same
// project with its labels blanked. Needs the built CLI and ImageMagick.
const test = require('node:test');
const assert = require('node:assert/strict');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { execFileSync } = require('node:child_process');
const KP = require('./load.js');

const ROOT = path.resolve(__dirname, '../../..');
const BIN = process.env.KP_BIN_DIR || path.join(ROOT, 'build/bin');
const CLI = path.join(BIN, 'kestrelpane-cli');
const DEMO = path.join(ROOT, 'data/Projects');
const CONVERT = ['/usr/bin/convert', '/usr/local/bin/convert'].find((f) => fs.existsSync(f));
const missing = !fs.existsSync(CLI) ? 'the CLI is not built' : !CONVERT ? 'ImageMagick is missing' : null;

const RGB = (r, g, b) => r + 256 * g + 65536 * b;

// Decoded RGBA bytes of the first frame of a picture file.
function readRGBA(file) {
  const [w, h] = execFileSync('identify', ['-format', '%w %h\n', file + '[0]']).toString()
    .split('\n')[0].split(' ').map(Number);
  const rgba = execFileSync(CONVERT, [file + '[0]', '-depth', '8', 'rgba:-'], { maxBuffer: 1 << 28 });
  assert.equal(rgba.length, w * h * 4, file);
  return { w, h, rgba };
}

function cli(dir, ...args) {
  return execFileSync(CLI, ['--home', BIN, '--settings', path.join(dir, 'settings.ini'), ...args],
    { maxBuffer: 1 << 26, env: { ...process.env, QT_QPA_PLATFORM: 'offscreen' } });
}

// A project file as lines of fields, edited by field number (0-based).
function loadKpn(file) {
  const text = fs.readFileSync(file, 'latin1');
  const lines = text.split('\r\n');
  return { lines, applet: lines[1].split('|'), buttons: lines.slice(2, 2 + Number(lines[1].split('|')[2])).map((l) => l.split('|')) };
}
function saveKpn(p, file) {
  const lines = p.lines.slice();
  lines[1] = p.applet.join('|');
  lines.splice(2, Number(lines[1].split('|')[2]), ...p.buttons.map((b) => b.join('|')));
  fs.writeFileSync(file, lines.join('\r\n'), 'latin1');
}

// Field numbers of a button line.
const F = {
  x: 0, y: 1, w: 2, h: 3, label: 4, noBack: 11, image: 13, back: 16, imgStyle: 34, borderStyle: 51,
  borderWidth: 54, borderShade: 57, borderAuto: 60, borderColor: 63, fadeColor: 81, fadeStyle: 84,
  imgX: 100,
};
// ... and of the applet line.
const A = { back: 5, img: 6, imgStyle: 7, offX: 11, offY: 12, bStyle: 35, bWidth: 36, bShade: 37, bColor: 38, fadeColor: 39, fadeStyle: 40 };
const set3 = (b, at, ...v) => { for (let s = 0; s < 3; ++s) b[at + s] = String(v[s] === undefined ? v[0] : v[s]); };

// The projects: the demo as it stands and variants that reach every
// face feature and background style.
const VARIANTS = {
  demo: () => {},
  manualBackgroundFade3: (p) => {
    Object.assign(p.applet, { [A.img]: 'trans.gif', [A.imgStyle]: '1', [A.offX]: '7', [A.offY]: '-3', [A.fadeStyle]: '3', [A.bStyle]: '0' });
    p.buttons.forEach((b, k) => {
      set3(b, F.fadeStyle, k % 5, (k + 1) % 5, (k + 2) % 5);
      set3(b, F.imgStyle, k % 4, (k + 1) % 4, (k + 2) % 4);
      set3(b, F.image, 'trans.gif', 'big.gif', 'demo_arrow.gif');
    });
  },
  centredBackgroundFade4: (p) => {
    Object.assign(p.applet, { [A.img]: 'big.gif', [A.imgStyle]: '2', [A.fadeStyle]: '4', [A.bStyle]: '2', [A.bWidth]: '3', [A.bShade]: '30' });
    p.buttons.forEach((b, k) => {
      set3(b, F.borderStyle, k % 6, (k + 3) % 6, 5);
      set3(b, F.borderWidth, 1 + (k % 4) * 7, 2, 60);
      set3(b, F.borderShade, 9, 40, 3);
      set3(b, F.borderAuto, 0);
      set3(b, F.borderColor, RGB(20 + k * 10, 200, 90));
      b[F.imgX] = '-5'; b[F.imgX + 1] = '30';
    });
  },
  stretchedBackgroundTransparentButtons: (p) => {
    Object.assign(p.applet, { [A.img]: 'trans.gif', [A.imgStyle]: '4', [A.offX]: '5', [A.offY]: '9', [A.fadeStyle]: '1', [A.bStyle]: '5', [A.bWidth]: '2' });
    p.buttons.forEach((b, k) => {
      b[F.x] = String(10 + k * 33);
      b[F.y] = String(8 + (k % 3) * 40);
      b[F.noBack] = 't' + (k % 2 ? '123' : '2');
      set3(b, F.imgStyle, 1, 0, 2);
    });
  },
  tiledGifOverlappingTransparent: (p) => {
    Object.assign(p.applet, { [A.img]: 'demo_star.gif', [A.imgStyle]: '3', [A.offX]: '-4', [A.offY]: '11', [A.fadeStyle]: '0', [A.bStyle]: '0' });
    p.buttons.forEach((b, k) => {
      b[F.x] = String(5 + k * 25);
      b[F.y] = String(5 + (k % 4) * 30);
      if (k % 3 === 1) b[F.noBack] = 't123';
    });
  },
  flatAppletTransparentButtons: (p) => {
    Object.assign(p.applet, { [A.img]: '', [A.imgStyle]: '0', [A.fadeStyle]: '0', [A.bStyle]: '0' });
    p.buttons.forEach((b, k) => {
      b[F.x] = String(5 + k * 30);
      if (k % 2) b[F.noBack] = 't13';
    });
  },
};

function makeProject(dir, name, edit, blankLabels) {
  const p = loadKpn(path.join(DEMO, 'Demo.kpn'));
  edit(p);
  if (blankLabels) for (const b of p.buttons) set3(b, F.label, '');
  const file = path.join(dir, name + (blankLabels ? '_blank' : '') + '.kpn');
  saveKpn(p, file);
  return file;
}

function params(dir, file) {
  const html = cli(dir, 'html', file).toString('latin1');
  const size = /<applet[^>]*width=(\d+) height=(\d+)/.exec(html);
  const values = {};
  for (const m of html.matchAll(/<Param Name="([^"]+)" value="([^"]*)">/g)) values[m[1]] = m[2];
  const applet = KP.decodeApplet(values.p, Number(size[1]), Number(size[2]));
  const buttons = [null];
  for (let i = 1; i <= applet.ButtonCount; ++i) buttons.push(KP.decodeButton(values[String(i)], i));
  return { applet, buttons };
}

const NO_GLYPHS = { width: 0, height: 0, originX: 0, originY: 0, bits: new Uint8Array(0) };
const emptyMeasure = {
  TextWidth: (font, s) => 6 * s.length, TextHeight: () => 16, Glyphs: () => NO_GLYPHS,
};

function playerPicture(dir, file, state) {
  const { applet, buttons } = params(dir, file);
  const pictures = new Map();
  const want = new Set([applet.BackImg]);
  for (const b of buttons.slice(1)) for (let s = 1; s <= 3; ++s) want.add(b.Image[s]);
  for (const name of want) {
    if (!name) continue;
    const f = path.join(dir, name);
    if (!fs.existsSync(f)) { pictures.set(name, null); continue; }
    const d = readRGBA(f);
    pictures.set(name, KP.pictureFromRGBA(d.w, d.h, d.rgba));
  }
  const scene = new KP.Scene(applet, buttons, pictures, emptyMeasure);
  for (let i = 1; i < buttons.length; ++i) scene.state[i] = state;
  scene.redrawAll();
  return { w: applet.AppletWidth, h: applet.AppletHeight, px: scene.compose() };
}

function designerPicture(dir, file, state) {
  const out = path.join(dir, 'out.png');
  cli(dir, 'render', file, out, '--state', ['', 'UP', 'OVER', 'DOWN'][state]);
  const d = readRGBA(out);
  const px = new Uint32Array(d.w * d.h);
  for (let k = 0; k < px.length; ++k) px[k] = RGB(d.rgba[4 * k], d.rgba[4 * k + 1], d.rgba[4 * k + 2]);
  return { w: d.w, h: d.h, px };
}

function differing(player, designer, skip) {
  assert.equal(player.w, designer.w);
  assert.equal(player.h, designer.h);
  const at = [];
  for (let k = 0; k < designer.px.length; ++k) {
    if (skip && skip[k]) continue;
    if ((player.px[k] & 0xFFFFFF) !== designer.px[k]) at.push(k);
  }
  return at;
}

function describe(at, pic, player) {
  return at.slice(0, 5).map((k) => `(${k % pic.w}, ${Math.floor(k / pic.w)}) designer ${pic.px[k].toString(16)} player ${(player.px[k] & 0xFFFFFF).toString(16)}`).join('; ');
}

let dir;
test.before(() => {
  if (missing) return;
  dir = fs.mkdtempSync(path.join(os.tmpdir(), 'kp-parity-'));
  for (const f of ['demo_arrow.gif', 'demo_star.gif', 'demo_bg.jpg', 'click.au']) fs.copyFileSync(path.join(DEMO, f), path.join(dir, f));
  // A picture with transparent pixels, and one larger than any button.
  execFileSync(CONVERT, ['-size', '40x30', 'xc:none', '-fill', '#C83214', '-draw', 'circle 20,15 20,4',
    '-fill', '#1464C8', '-draw', 'rectangle 2,2 9,27', path.join(dir, 'trans.gif')]);
  execFileSync(CONVERT, ['-size', '150x90', 'gradient:#FFE000-#003090', '-fill', '#10A040', '-draw',
    'rectangle 30,20 60,70', path.join(dir, 'big.gif')]);
});
test.after(() => { if (dir) fs.rmSync(dir, { recursive: true, force: true }); });

for (const [name, edit] of Object.entries(VARIANTS)) {
  for (const state of [1, 2, 3]) {
    test(`${name} in state ${state} has the designer's pixels outside the labels`, { skip: missing || false }, () => {
      const blank = makeProject(dir, name, edit, true);
      const full = makeProject(dir, name, edit, false);
      const player = playerPicture(dir, blank, state);
      const plain = designerPicture(dir, blank, state);
      const labelled = designerPicture(dir, full, state);
      // The designer's label pixels: where its labelled picture differs
      // from the one without labels.
      const labels = new Uint8Array(plain.px.length);
      let labelPixels = 0;
      for (let k = 0; k < labels.length; ++k) if (plain.px[k] !== labelled.px[k]) { labels[k] = 1; ++labelPixels; }
      if (name === 'demo') assert.ok(labelPixels > 500, 'the demo has labels to leave out');
      const bad = differing(player, plain, null);
      const badOutside = differing(player, labelled, labels);
      if (process.env.KP_PARITY_REPORT)
        console.log(`# ${name} state ${state}: ${bad.length} differing without labels, ${badOutside.length} outside label pixels (${labelPixels} label pixels)`);
      assert.equal(bad.length, 0, describe(bad, plain, player));
      assert.equal(badOutside.length, 0, describe(badOutside, labelled, player));
    });
  }
}
