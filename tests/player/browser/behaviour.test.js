// The live bar under the pointer: faces, programs of buttons and applet,
// links and their targets, radio buttons, tips, stacking, loading text and
// the canvas on a high-density screen.
const test = require('node:test');
const assert = require('node:assert/strict');
const fs = require('node:fs');
const S = require('./fixtures/session.js');
const { h, rgb, FACE, BACK, plain } = S;

test.after(() => h.closeBrowser());

const APPLET = { AppletWidth: 300, AppletHeight: 100, bPreLoad: 0, sLoading: '' };

test('the pointer shows OVER over a button, DOWN while pressed, UP again when it leaves', async () => {
  const s = await S.openBar(APPLET, [
    plain({ x: 10, y: 10, sBName: 'A' }),
    plain({ x: 100, y: 10, sBName: 'B' }),
  ]);
  try {
    const { page } = s;
    assert.equal(await S.pixelAt(page, 15, 15), FACE.UP);
    assert.equal(await S.pixelAt(page, 105, 15), FACE.UP);
    assert.equal(await S.pixelAt(page, 5, 5), BACK);
    await S.moveTo(page, 30, 20);
    assert.equal(await S.pixelAt(page, 15, 15), FACE.OVER);
    assert.equal(await S.pixelAt(page, 105, 15), FACE.UP, 'only the button under the pointer changes');
    await page.mouse.down();
    assert.equal(await S.pixelAt(page, 15, 15), FACE.DOWN);
    await page.mouse.up();
    assert.equal(await S.pixelAt(page, 15, 15), FACE.OVER);
    await S.moveTo(page, 120, 20);
    assert.equal(await S.pixelAt(page, 15, 15), FACE.UP);
    assert.equal(await S.pixelAt(page, 105, 15), FACE.OVER);
    await S.moveTo(page, 250, 80);
    assert.equal(await S.pixelAt(page, 105, 15), FACE.UP);
    // What the canvas shows is what pixels() reports.
    const shown = await page.evaluate(() => {
      const bar = window.KestrelPanePlayer.bars[0];
      const d = bar.canvas.getContext('2d').getImageData(105 * bar._scale, 15 * bar._scale, 1, 1).data;
      return d[0] + 256 * d[1] + 65536 * d[2];
    });
    assert.equal(shown, FACE.UP);
    assert.deepEqual(S.pageErrors(s), []);
  } finally {
    await s.close();
  }
});

test('the topmost visible button takes the pointer, and ShowHand shows a hand', async () => {
  const s = await S.openBar(APPLET, [
    plain({ x: 10, y: 10, Width: 100, Height: 40, sBName: 'Low', ShowHand: 1 }),
    plain({ x: 60, y: 20, Width: 100, Height: 40, sBName: 'High', BackColor: [rgb(200, 0, 0), rgb(0, 200, 200), rgb(90, 90, 90)] }),
  ]);
  try {
    const { page } = s;
    await S.moveTo(page, 80, 30);  // where both lie, High on top
    assert.equal(await S.pixelAt(page, 80, 30), rgb(0, 200, 200));
    assert.equal(await S.pixelAt(page, 15, 15), FACE.UP, 'the covered button stays UP');
    assert.equal(await page.evaluate(() => getComputedStyle(window.KestrelPanePlayer.bars[0].canvas).cursor), 'auto');
    await S.moveTo(page, 20, 20);  // Low only
    assert.equal(await S.pixelAt(page, 15, 15), FACE.OVER);
    assert.equal(await S.pixelAt(page, 80, 30), rgb(200, 0, 0));
    assert.equal(await page.evaluate(() => getComputedStyle(window.KestrelPanePlayer.bars[0].canvas).cursor), 'pointer');
    // A hidden button takes no pointer: the one under it does.
    await S.runProgram(page, '2 High;');
    await S.moveTo(page, 100, 45);
    assert.equal(await S.pixelAt(page, 100, 45), FACE.OVER);
  } finally {
    await s.close();
  }
});

test('button programs run on OVER, DOWN, UP and LEAVE, in that order', async () => {
  const s = await S.openBar(APPLET, [plain({
    x: 10, y: 10, sBName: 'A',
    ProgramOVER: S.noteCmd('over'), ProgramDOWN: S.noteCmd('down'),
    ProgramUP: S.noteCmd('up'), ProgramLEAVE: S.noteCmd('leave'),
  })]);
  try {
    const { page } = s;
    await S.moveTo(page, 20, 20);
    await page.mouse.down();
    await page.mouse.up();
    await S.moveTo(page, 200, 80);
    assert.deepEqual(await S.waitNotes(page, ['over', 'down', 'up', 'leave']), ['over', 'down', 'up', 'leave']);
    // A press released off the button is no click: no UP program.
    await S.moveTo(page, 20, 20);
    await page.mouse.down();
    await S.moveTo(page, 200, 80);
    await page.mouse.up();
    await page.waitForTimeout(100);
    const n = await S.notes(page);
    assert.deepEqual(n.slice(4), ['over', 'down', 'leave']);
  } finally {
    await s.close();
  }
});

test('the applet programs run at start, on entering, on pressing anywhere and on leaving', async () => {
  const s = await S.openBar(Object.assign({}, APPLET, {
    AppletProgramStart: S.noteCmd('start'), AppletProgramOVER: S.noteCmd('aover'),
    AppletProgramDOWN: S.noteCmd('adown'), AppletProgramOUT: S.noteCmd('aout'),
  }), [plain({ x: 10, y: 10, sBName: 'A', ProgramDOWN: S.noteCmd('bdown') })], {
    context: { viewport: { width: 900, height: 700 } },
  });
  try {
    const { page } = s;
    await S.waitNotes(page, ['start']);
    await page.mouse.move(700, 600);
    await S.moveTo(page, 200, 60);    // the applet, no button
    await page.mouse.down();
    await page.mouse.up();
    await S.moveTo(page, 20, 20);     // a button inside the applet: still inside
    await page.mouse.down();
    await page.mouse.up();
    await page.mouse.move(700, 600);  // out
    const n = await S.waitNotes(page, ['aout']);
    assert.deepEqual(n, ['start', 'aover', 'adown', 'adown', 'bdown', 'aout']);
  } finally {
    await s.close();
  }
});

// Each of the ten commands, run by the bar as its events run them.
test('Show, Hide, Move, Set Label, Set Color, Set State and Border Color change the bar', async () => {
  const s = await S.openBar(APPLET, [
    plain({ x: 10, y: 10, sBName: 'T', Label: 'Hi', FontColor: rgb(255, 255, 255), FontSize: 14, Hidden: 1 }),
    plain({ x: 100, y: 10, sBName: 'Bd', BorderStyle: 1, BorderWidth: 4, BorderColor: rgb(128, 128, 128) }),
  ]);
  try {
    const { page } = s;
    const T = { x: 10, y: 10, w: 60, h: 30 };
    assert.equal(await S.pixelAt(page, 12, 12), BACK, 'hidden at first');
    assert.equal(await page.evaluate(() => document.querySelector('[aria-label="Hi"]').hidden), true);

    await S.runProgram(page, '1 T;');
    assert.equal(await S.pixelAt(page, 12, 12), FACE.UP, 'Show');
    assert.equal(await page.evaluate(() => document.querySelector('[aria-label="Hi"]').hidden), false);

    const before = await S.rectPixels(page, T);
    await S.runProgram(page, '4 T 1 Hello&!0World;');
    const after = await S.rectPixels(page, T);
    assert.notDeepEqual(after, before, 'Set Label repaints the face');
    assert.ok(after.some((c) => c === rgb(255, 255, 255)), 'the new label is printed');
    assert.equal(await page.evaluate(() => !!document.querySelector('[aria-label="Hello World"]')), true);

    await S.runProgram(page, '5 T 1 FF0000;');
    assert.equal(await S.pixelAt(page, 12, 12), rgb(255, 0, 0), 'Set Color');
    await S.runProgram(page, '5 T 2 00FF00;');
    assert.equal(await S.pixelAt(page, 12, 12), rgb(255, 0, 0), 'another state\'s colour waits for that state');

    await S.runProgram(page, '8 T 2;');
    assert.equal(await S.pixelAt(page, 12, 12), rgb(0, 255, 0), 'Set State shows OVER with its new colour');
    await S.runProgram(page, '8 T 3;');
    assert.equal(await S.pixelAt(page, 12, 12), FACE.DOWN, 'Set State DOWN');

    await S.runProgram(page, '3 T 200 50 -999 -999 1 0;');
    assert.equal(await S.pixelAt(page, 12, 12), BACK, 'Move leaves the old place');
    assert.equal(await S.pixelAt(page, 202, 52), FACE.DOWN, 'Move arrives');
    assert.deepEqual(await page.evaluate(() => window.KestrelPanePlayer.bars[0].getRect(1)), { x: 200, y: 50, w: 60, h: 30 });
    const key = await page.evaluate(() => { const e = document.querySelector('[aria-label="Hello World"]'); return [e.style.left, e.style.top]; });
    assert.deepEqual(key, ['200px', '50px'], 'the key element follows');

    await S.runProgram(page, '2 T;');
    assert.equal(await S.pixelAt(page, 202, 52), BACK, 'Hide');

    const border = { x: 100, y: 10, w: 60, h: 30 };
    const b0 = await S.rectPixels(page, border);
    await S.runProgram(page, '9 Bd 1 00FF00;');
    const b1 = await S.rectPixels(page, border);
    assert.notDeepEqual(b1, b0, 'Border Color repaints the border');
    assert.equal(await S.pixelAt(page, 130, 25), FACE.UP, 'the face inside the border keeps its colour');
    const greenish = b1.filter((c, k) => c !== b0[k]).every((c) => ((c >> 8) & 255) >= (c & 255) && ((c >> 8) & 255) >= ((c >> 16) & 255));
    assert.ok(greenish, 'the changed border pixels are shades of the new green');
    assert.deepEqual(S.pageErrors(s), []);
  } finally {
    await s.close();
  }
});

test('Wait holds the rest of its program, Call JavaScript runs in the page', async () => {
  const s = await S.openBar(APPLET, [plain({ x: 10, y: 10, sBName: 'A' })]);
  try {
    const { page } = s;
    const t = await page.evaluate(async () => {
      const KP = window.KestrelPanePlayer;
      const bar = KP.bars[0];
      const running = KP.runProgram("7 0 note('a');6 250;7 0 note('b');", bar);
      window.note('other');  // another program goes on meanwhile
      await running;
      return window.notes.map((n) => [n.s, n.t]);
    });
    assert.deepEqual(t.map((n) => n[0]), ['a', 'other', 'b']);
    assert.ok(t[2][1] - t[0][1] >= 240, 'b came ' + (t[2][1] - t[0][1]) + ' ms after a');
    await S.runProgram(page, '7 0 var&!0kpGlobal&!0=&!0[1,2].length+40;');
    assert.equal(await page.evaluate(() => window.kpGlobal), 42, 'top-level declarations become page globals');
  } finally {
    await s.close();
  }
});

test('Move in 5 frames passes through 4 places before its end; Blink hides and shows', async () => {
  const s = await S.openBar(APPLET, [plain({ x: 0, y: 10, sBName: 'M' })]);
  try {
    const { page } = s;
    const frames = await page.evaluate(async () => {
      const KP = window.KestrelPanePlayer;
      const bar = KP.bars[0];
      const seen = [];
      const real = bar.setRect.bind(bar);
      bar.setRect = (i, x, y, w, hh) => { real(i, x, y, w, hh); seen.push([x, performance.now(), bar.pixels()[20 * bar.W + x + 1] & 0xffffff]); };
      const t0 = performance.now();
      await KP.runProgram('3 M 100 -999 -999 -999 5 40;', bar);
      return { seen: seen.map((s) => [s[0], Math.round(s[1] - t0), s[2]]) };
    });
    assert.deepEqual(frames.seen.map((f) => f[0]), [20, 40, 60, 80, 100]);
    assert.ok(frames.seen[4][1] >= 155, 'four waits of 40 ms: ' + frames.seen[4][1]);
    for (const f of frames.seen) assert.equal(f[2], FACE.UP, 'each frame shows the button at ' + f[0]);

    const blink = await page.evaluate(async () => {
      const KP = window.KestrelPanePlayer;
      const bar = KP.bars[0];
      const seen = [];
      const real = bar.setHidden.bind(bar);
      bar.setHidden = (i, v) => { real(i, v); seen.push([v, bar.pixels()[20 * bar.W + 105] & 0xffffff]); };
      await KP.runProgram('10 M 2 30;', bar);
      return seen;
    });
    assert.deepEqual(blink, [[true, S.BACK], [false, FACE.UP], [true, S.BACK], [false, FACE.UP]]);
  } finally {
    await s.close();
  }
});

test('a name that matches no button warns once and the rest of the program runs', async () => {
  const s = await S.openBar(APPLET, [plain({ x: 10, y: 10, sBName: 'A' })]);
  try {
    const { page } = s;
    await S.runProgram(page, "1 Nobody;2 Nobody;5 Nobody 1 FF0000;7 0 note('rest');2 A;");
    assert.deepEqual(await S.notes(page), ['rest']);
    assert.equal(await S.pixelAt(page, 12, 12), BACK, 'the command after the bad ones ran');
    const w = await page.evaluate(() => window.warnings.filter((m) => m.includes('Nobody')));
    assert.equal(w.length, 1, JSON.stringify(w));
    // A script that throws is a warning too, never a page error.
    await S.runProgram(page, "7 0 no.such.thing();7 0 note('after');");
    assert.deepEqual(await S.notes(page), ['rest', 'after']);
    assert.deepEqual(S.pageErrors(s), []);
  } finally {
    await s.close();
  }
});

test('radio buttons stay down when checked and pop up when another is checked', async () => {
  const radio = (x, name) => plain({
    x: x, y: 10, sBName: name, Radio: 1,
    ProgramCHECK: S.noteCmd('check' + name), ProgramUNCHECK: S.noteCmd('uncheck' + name),
  });
  const s = await S.openBar(Object.assign({}, APPLET, { DOWNBtn: 1 }), [radio(10, 'R1'), radio(100, 'R2'), radio(190, 'R3')]);
  try {
    const { page } = s;
    assert.equal(await S.pixelAt(page, 12, 12), FACE.DOWN, 'DOWNBtn starts checked');
    assert.equal(await S.pixelAt(page, 102, 12), FACE.UP);
    const click = async (x) => { await S.moveTo(page, x, 20); await page.mouse.down(); await page.mouse.up(); };
    await click(110);
    await S.moveTo(page, 150, 80);
    assert.deepEqual(await S.waitNotes(page, ['checkR2', 'uncheckR1']), ['checkR2', 'uncheckR1']);
    assert.equal(await S.pixelAt(page, 102, 12), FACE.DOWN, 'the checked one stays down after the pointer left');
    assert.equal(await S.pixelAt(page, 12, 12), FACE.UP, 'the one before popped up');
    await click(110);  // checked already: nothing changes
    await click(200);
    await S.moveTo(page, 150, 80);
    await S.waitNotes(page, ['checkR3', 'uncheckR2']);
    assert.deepEqual(await S.notes(page), ['checkR2', 'uncheckR1', 'checkR3', 'uncheckR2']);
    assert.equal(await S.pixelAt(page, 102, 12), FACE.UP);
    assert.equal(await S.pixelAt(page, 192, 12), FACE.DOWN);
    assert.equal(await page.evaluate(() => document.querySelector('[aria-label="R3"]').getAttribute('aria-pressed')), 'true');
  } finally {
    await s.close();
  }
});

test('links follow their targets: the page itself, a new window, a named frame, a script', async () => {
  const buttons = [
    plain({ x: 10, y: 10, sBName: 'Self', URL: 'next.html', Target: '' }),
    plain({ x: 80, y: 10, sBName: 'Blank', URL: 'popup.html', Target: '_blank' }),
    plain({ x: 150, y: 10, sBName: 'Framed', URL: 'framed.html', Target: 'content' }),
    plain({ x: 220, y: 10, sBName: 'Js', URL: "javascript:note('js'+(1+1))", Target: '' }),
    plain({ x: 10, y: 60, sBName: 'Top', URL: 'top.html', Target: '_top' }),
  ];
  const files = {
    'next.html': '<p>next</p>', 'popup.html': '<p>popup</p>', 'framed.html': '<p>framed</p>', 'top.html': '<p>top</p>',
  };
  const built = S.build(APPLET, buttons, {
    extraFiles: files,
    pageEdit: (html) => html.replace(/<\/Body>/i, '<iframe name="content" src="about:blank"></iframe></Body>'),
  });
  const s = await S.open(built);
  try {
    const { page, context } = s;
    const click = async (x, y) => { await S.moveTo(page, x, y); await page.mouse.down(); await page.mouse.up(); };

    await click(240, 20);
    assert.deepEqual(await S.waitNotes(page, ['js2']), ['js2']);

    const popup = context.waitForEvent('page');
    await click(100, 20);
    const p = await popup;
    await p.waitForLoadState();
    assert.ok(p.url().endsWith('/popup.html'), p.url());
    await p.close();

    await click(170, 20);
    const frame = page.frame({ name: 'content' });
    await page.waitForFunction(() => {
      const f = document.querySelector('iframe[name=content]');
      return f.contentWindow.location.href.endsWith('/framed.html');
    });
    assert.ok(frame.url().endsWith('/framed.html'));
    assert.ok(page.url().endsWith('/index.html'), 'the page itself stays');

    await click(20, 20);
    await page.waitForURL(/\/next\.html$/);
  } finally {
    await s.close();
  }
  // In a frame, _top replaces the whole window.
  const outer = S.build(APPLET, buttons, { extraFiles: Object.assign({}, files, { 'outer.html': '<iframe src="index.html" width="400" height="200"></iframe>' }) });
  const s2 = await S.open(outer, { wait: false });
  try {
    const { page } = s2;
    await page.goto(s2.url.replace('index.html', 'outer.html'));
    const inner = page.frames().find((f) => f.url().endsWith('/index.html'));
    await inner.waitForFunction(() => window.KestrelPanePlayer && window.KestrelPanePlayer.bars[0] && window.KestrelPanePlayer.bars[0].drawn);
    const box = await (await inner.frameElement()).boundingBox();
    const c = await inner.evaluate(() => { const r = window.KestrelPanePlayer.bars[0].canvas.getBoundingClientRect(); return { x: r.left, y: r.top }; });
    await page.mouse.move(box.x + c.x + 20, box.y + c.y + 70);
    await page.mouse.down();
    await page.mouse.up();
    await page.waitForURL(/\/top\.html$/);
  } finally {
    await s2.close();
  }
});

test('a tip appears after its delay in the tip colours with Tip and Status, and hides', async () => {
  const applet = Object.assign({}, APPLET, {
    iTipDelay: 300, iTipHideAfter: 700, cTipBackColor: rgb(255, 255, 0), cTipTextColor: rgb(0, 0, 128),
    cTipBorderColor: rgb(255, 0, 0), iTipBorderWidth: 3, iTipFontSize: 15, iTipFontStyle: 1, iTipFont: 1,
  });
  const s = await S.openBar(applet, [
    plain({ x: 10, y: 10, sBName: 'A', Tip: 'Hello tip', Status: 'Goes home' }),
    plain({ x: 100, y: 10, sBName: 'B', Status: 'Only status' }),
    plain({ x: 190, y: 10, sBName: 'C' }),
  ]);
  try {
    const { page } = s;
    const tip = () => page.evaluate(() => {
      const t = document.querySelector('.kestrelpane-tip');
      if (!t) return null;
      const cs = getComputedStyle(t);
      const r = t.getBoundingClientRect();
      return {
        text: t.textContent, bg: cs.backgroundColor, color: cs.color, border: cs.borderTopWidth + ' ' + cs.borderTopStyle + ' ' + cs.borderTopColor,
        size: cs.fontSize, weight: cs.fontWeight, family: cs.fontFamily, x: r.left, y: r.top, visible: r.width > 0 && r.height > 0,
      };
    });
    await S.moveTo(page, 30, 20);
    const t0 = Date.now();
    assert.equal(await tip(), null, 'not at once');
    await page.waitForSelector('.kestrelpane-tip');
    assert.ok(Date.now() - t0 >= 250, 'after the delay');
    const t = await tip();
    assert.equal(t.text, 'Hello tip\nGoes home');
    assert.equal(t.bg, 'rgb(255, 255, 0)');
    assert.equal(t.color, 'rgb(0, 0, 128)');
    assert.equal(t.border, '3px solid rgb(255, 0, 0)');
    // The page carries pixel sizes: 15 points are 20 pixels.
    assert.equal(t.size, await page.evaluate(() => window.KestrelPanePlayer.bars[0].applet.iTipFontSize + 'px'));
    assert.equal(t.size, '20px');
    assert.equal(t.weight, '700');
    assert.match(t.family, /Courier/);
    assert.ok(t.visible);
    const p = await S.pagePoint(page, 30, 20);
    assert.ok(Math.abs(t.x - p.x) < 40 && t.y > p.y && t.y - p.y < 50, 'near the pointer: ' + JSON.stringify([t.x, t.y, p]));
    await page.waitForSelector('.kestrelpane-tip', { state: 'detached', timeout: 2000 });
    const shownFor = Date.now() - t0;
    assert.ok(shownFor >= 900, 'hidden after about 700 ms: ' + shownFor);

    await S.moveTo(page, 120, 20);
    await page.waitForSelector('.kestrelpane-tip');
    assert.equal((await tip()).text, 'Only status');
    await S.moveTo(page, 210, 20);  // no tip here: the old one goes at once
    assert.equal(await tip(), null);
    await page.waitForTimeout(450);
    assert.equal(await tip(), null);
  } finally {
    await s.close();
  }
});

test('the loading text shows until the pictures are in', async () => {
  const path = require('node:path');
  const applet = Object.assign({}, APPLET, {
    bPreLoad: 1, sLoading: 'Loading...', cLoadingFont: rgb(255, 0, 0), cLoadingBack: rgb(0, 0, 255),
    iLoadingFont_Size: 20, iLoadingFont_Style: 1, iLoadingFont_Name: 0,
  });
  const star = path.join(h.ROOT, 'data/Projects/demo_star.gif');
  const built = S.build(applet, [plain({ x: 10, y: 10, sBName: 'A', Image: 'demo_star.gif' })], { media: [star] });
  const s = await S.openHolding(built, '**/demo_star.gif');
  try {
    const { page } = s;
    await page.waitForFunction(() => window.KestrelPanePlayer && window.KestrelPanePlayer.bars.length === 1);
    await page.waitForTimeout(150);
    const loading = await page.evaluate(() => {
      const bar = window.KestrelPanePlayer.bars[0];
      const c = bar.canvas;
      const d = c.getContext('2d').getImageData(0, 0, c.width, c.height).data;
      let blue = 0, red = 0;
      for (let k = 0; k < d.length; k += 4) {
        if (d[k] === 0 && d[k + 1] === 0 && d[k + 2] === 255) blue++;
        if (d[k] > 200 && d[k + 1] < 60 && d[k + 2] < 60) red++;
      }
      return { drawn: bar.drawn, blue, red, all: d.length / 4 };
    });
    assert.equal(loading.drawn, false);
    assert.ok(loading.blue > loading.all * 0.8, 'the loading background fills the bar');
    assert.ok(loading.red > 20, 'the loading text is printed in its colour');
    s.release();
    await S.waitDrawn(page);
    assert.equal(await S.pixelAt(page, 12, 12), FACE.UP);
  } finally {
    await s.close();
  }
});

test('a missing picture and a broken sound file do not stop the bar', async () => {
  const path = require('node:path');
  const star = path.join(h.ROOT, 'data/Projects/demo_star.gif');
  const broken = path.join(h.tempDir('kp-media-'), 'broken.au');
  require('node:fs').writeFileSync(broken, 'this is not a sound');
  const s = await S.open(S.build(APPLET, [
    plain({ x: 10, y: 10, sBName: 'A', Image: 'demo_star.gif', Snd: ['', 'broken.au', 'broken.au'] }),
  ], {
    media: [star, broken],
    removeFiles: ['demo_star.gif'],
  }));
  try {
    const { page } = s;
    assert.equal(await S.pixelAt(page, 12, 12), FACE.UP);
    await S.moveTo(page, 20, 20);
    await page.mouse.down();
    assert.equal(await S.pixelAt(page, 12, 12), FACE.DOWN);
    await page.mouse.up();
    assert.equal(await S.pixelAt(page, 12, 12), FACE.OVER);
    await page.waitForTimeout(200);
    assert.deepEqual(S.pageErrors(s), []);
  } finally {
    await s.close();
  }
});

test('on a double-density screen the canvas has twice the pixels, each applet pixel a sharp 2x2 block', async () => {
  const s = await S.openBar(APPLET, [plain({ x: 10, y: 10, sBName: 'A', Label: 'Ab', FontColor: rgb(255, 255, 255) })], {
    context: { deviceScaleFactor: 2 },
  });
  try {
    const { page } = s;
    const r = await page.evaluate(() => {
      const bar = window.KestrelPanePlayer.bars[0];
      const c = bar.canvas;
      const rect = c.getBoundingClientRect();
      const d = c.getContext('2d').getImageData(0, 0, c.width, c.height).data;
      const px = bar.pixels();
      let bad = 0;
      for (let y = 0; y < c.height; y++) {
        for (let x = 0; x < c.width; x++) {
          const k = (y * c.width + x) * 4;
          const want = px[(y >> 1) * bar.W + (x >> 1)] & 0xffffff;
          if (d[k] + 256 * d[k + 1] + 65536 * d[k + 2] !== want) bad++;
        }
      }
      return { w: c.width, h: c.height, cssW: rect.width, cssH: rect.height, bad, rendering: getComputedStyle(c).imageRendering };
    });
    assert.deepEqual([r.w, r.h, r.cssW, r.cssH], [600, 200, 300, 100]);
    assert.equal(r.bad, 0);
    assert.equal(r.rendering, 'pixelated');
  } finally {
    await s.close();
  }
});

test('two bars on one page keep their own radio groups and keys', async () => {
  const radio = (x, name) => plain({ x: x, y: 10, sBName: name, Radio: 1 });
  const s = await S.open(S.build(APPLET, [radio(10, 'R1'), radio(100, 'R2')], {
    pageEdit: (html) => html.replace(/<applet[\s\S]*?<\/applet>/i, (block) => block + '<br>' + block.replace(/name="TestBar"/, 'name="OtherBar"')),
  }));
  try {
    const { page } = s;
    assert.equal(await page.evaluate(() => window.KestrelPanePlayer.bars.length), 2);
    const click = async (k, x) => {
      const r = await page.evaluate((k) => { const c = window.KestrelPanePlayer.bars[k].canvas.getBoundingClientRect(); return { x: c.left, y: c.top }; }, k);
      await page.mouse.move(r.x + x, r.y + 20);
      await page.mouse.down();
      await page.mouse.up();
    };
    await click(0, 20);
    await click(1, 110);
    await page.mouse.move(5, 690);
    const faces = await page.evaluate(() => window.KestrelPanePlayer.bars.map((b) => {
      const px = b.pixels();
      return [px[12 * b.W + 12] & 0xffffff, px[12 * b.W + 102] & 0xffffff];
    }));
    assert.deepEqual(faces, [[FACE.DOWN, FACE.UP], [FACE.UP, FACE.DOWN]]);
    assert.equal(await page.evaluate(() => document.querySelectorAll('.kestrelpane-key').length), 4);
    assert.equal(await page.evaluate(() => document.querySelectorAll('#kestrelpane-bar-style').length), 1);
  } finally {
    await s.close();
  }
});

test('while the page is still being read, a block keeps its bar\'s place and hides its alternative text', async () => {
  // A slow script after the player's holds the page's reading back, as a
  // page's own scripts and a slow server do.
  const built = S.build(APPLET, [plain({ x: 10, y: 10, sBName: 'A' })], {
    extraFiles: { 'slow.js': 'window.slowRan = true;\n' },
    pageEdit: (html) => html.replace(/(<script[^>]*KestrelPane\.js[^>]*><\/script>)/i,
      '$1\r\n<p id="after">After the bar</p>\r\n<script src="slow.js"></script>'),
  });
  assert.match(fs.readFileSync(built.page, 'latin1'), /id="after"/);
  const s = await S.openHolding(built, '**/slow.js');
  try {
    const { page } = s;
    await page.waitForFunction(() => !!document.getElementById('after'));
    const before = await page.evaluate(() => {
      const el = document.querySelector('applet');
      const r = el.getBoundingClientRect();
      const text = Array.from(el.querySelectorAll('b')).map((b) => b.textContent).join(' ');
      return { state: document.readyState, visibility: getComputedStyle(el).visibility, w: r.width, h: r.height,
        left: r.left, top: r.top, after: document.getElementById('after').getBoundingClientRect().top, text };
    });
    assert.equal(before.state, 'loading', 'the page is still being read');
    assert.match(before.text, /Java/, 'the block still holds its alternative text');
    assert.equal(before.visibility, 'hidden');
    assert.deepEqual([before.w, before.h], [APPLET.AppletWidth, APPLET.AppletHeight]);
    s.release();
    await S.waitDrawn(page);
    const after = await page.evaluate(() => {
      const r = window.KestrelPanePlayer.bars[0].host.getBoundingClientRect();
      return { left: r.left, top: r.top, after: document.getElementById('after').getBoundingClientRect().top,
        applets: document.querySelectorAll('applet').length, slowRan: window.slowRan === true };
    });
    assert.deepEqual(after, { left: before.left, top: before.top, after: before.after, applets: 0, slowRan: true },
      'the bar takes the place the block kept; nothing below moves');
    assert.equal(await S.pixelAt(page, 12, 12), FACE.UP);
  } finally {
    await s.close();
  }
});

test('after the first drawing, the labels of every state are set up in idle time, before any hover', async () => {
  const s = await S.openBar(APPLET, [
    plain({ x: 10, y: 10, sBName: 'A', Label: ['Up', 'Over here', 'Down low'], FontSize: [10, 14, 12],
      FontStyle: [0, 2, 1] }),
    plain({ x: 100, y: 10, sBName: 'B', Label: 'Plain' }),
  ]);
  try {
    const { page } = s;
    // Whether the measure holds state st's line of button 1, in its face
    // (the record carries pixel sizes).
    const setUp = (st) => page.evaluate((st) => {
      const bar = window.KestrelPanePlayer.bars[0];
      const b = bar.buttons[1], m = bar.scene.measure;
      const key = 'Arial\x1f' + b.FontSize[st] + (st === 3 ? 'b' : '-') + (st === 2 ? 'i' : '-');
      const face = m.faces.get(key);
      return !!(face && face.prints && face.prints.has(b.Label[st]));
    }, st);
    assert.equal(await page.evaluate(() => window.KestrelPanePlayer.bars[0].scene.state[1]), 1);
    const deadline = Date.now() + 5000;
    while (!(await setUp(2) && await setUp(3)) && Date.now() < deadline) await page.waitForTimeout(50);
    assert.equal(await setUp(2), true, 'the OVER line is set up');
    assert.equal(await setUp(3), true, 'the DOWN line is set up');
    assert.equal(await page.evaluate(() => window.KestrelPanePlayer.bars[0].scene.state[1]), 1, 'no hover yet');
    // The hover then shows the face it set up for.
    await S.moveTo(page, 30, 20);
    assert.equal(await page.evaluate(() => window.KestrelPanePlayer.bars[0].scene.state[1]), 2);
  } finally {
    await s.close();
  }
});
