// Scrolling bars: every button moves a step each delay, a button that left
// the applet comes back in on the other side, and a visitor who asked for
// less motion gets a still bar.
const test = require('node:test');
const assert = require('node:assert/strict');
const S = require('./fixtures/session.js');
const { h, FACE, plain } = S;

test.after(() => h.closeBrowser());

function scrolling(direction) {
  return {
    AppletWidth: 200, AppletHeight: 100, bPreLoad: 0, sLoading: '',
    bDoScroll: 1, iScStep: 2, iScDelay: 20, iScDirection: direction,
  };
}

// The buttons' places over `ms` milliseconds, sampled every frame.
function track(page, ms) {
  return page.evaluate((ms) => new Promise((resolve) => {
    const bar = window.KestrelPanePlayer.bars[0];
    const seen = [];
    const t0 = performance.now();
    const tick = () => {
      seen.push(bar.buttons.slice(1).map((b) => [b.x, b.y]));
      if (performance.now() - t0 < ms) requestAnimationFrame(tick);
      else resolve(seen);
    };
    tick();
  }), ms);
}

test('left to right: the buttons move right in steps and wrap back in on the left', async () => {
  const s = await S.openBar(scrolling(0), [
    plain({ x: 10, y: 10, Width: 50, sBName: 'A' }),
    plain({ x: 120, y: 10, Width: 50, sBName: 'B' }),
  ]);
  try {
    const { page } = s;
    const seen = await track(page, 1500);
    const xs = seen.map((f) => f[1][0]);
    const steps = xs.slice(1).map((x, k) => x - xs[k]).filter((d) => d !== 0);
    assert.ok(steps.length > 10, 'it moved: ' + steps.length);
    // B went past the right edge and came back in from the left.
    const wrapped = steps.filter((d) => d < 0);
    assert.equal(wrapped.length >= 1, true, 'B wrapped');
    for (const d of steps) assert.ok(d > 0 ? d % 2 === 0 : d < -100, 'a step of 2 or a wrap: ' + d);
    const back = xs.findIndex((x, k) => k > 0 && x < xs[k - 1]);
    assert.ok(xs[back] + 50 <= 2, 'it comes back wholly outside, on the left: ' + xs[back]);
    // The gap between A and B, once both are in, stays what it was.
    const period = await page.evaluate(() => window.KestrelPanePlayer.bars[0].scrollPeriod);
    for (const f of seen) {
      const d = ((f[1][0] - f[0][0]) % period + period) % period;
      assert.equal(d, 110);
    }
    // The pixels follow: B's face is where B is now.
    const now = await page.evaluate(() => { const bar = window.KestrelPanePlayer.bars[0]; bar.stopScrolling(); return bar.getRect(1); });
    if (now.x >= 0 && now.x + 50 <= 200) assert.equal(await S.pixelAt(page, now.x + 2, 12), FACE.UP);
    const key = await page.evaluate(() => document.querySelector('[aria-label="A"]').style.left);
    assert.equal(key, Math.max(0, now.x) + 'px', 'the key element moved too');
  } finally {
    await s.close();
  }
});

test('bottom to top scrolls up', async () => {
  const s = await S.openBar(scrolling(3), [plain({ x: 10, y: 60, sBName: 'A' })]);
  try {
    const seen = await track(s.page, 400);
    const ys = seen.map((f) => f[0][1]);
    assert.ok(ys[ys.length - 1] < ys[0], JSON.stringify([ys[0], ys[ys.length - 1]]));
    assert.ok(seen.every((f) => f[0][0] === 10), 'x stays');
  } finally {
    await s.close();
  }
});

test('with reduced motion asked for, the bar stays still', async () => {
  const s = await S.openBar(scrolling(0), [plain({ x: 10, y: 10, sBName: 'A' })], {
    context: { reducedMotion: 'reduce' },
  });
  try {
    const seen = await track(s.page, 300);
    assert.ok(seen.every((f) => f[0][0] === 10));
    // Moves and blinks jump to their end as well.
    const t0 = Date.now();
    await S.runProgram(s.page, '3 A 100 -999 -999 -999 10 100;');
    assert.ok(Date.now() - t0 < 700, 'no ten frames of 100 ms');
    assert.deepEqual(await s.page.evaluate(() => window.KestrelPanePlayer.bars[0].getRect(1).x), 100);
  } finally {
    await s.close();
  }
});

test('a button that scrolls under a still pointer takes the OVER face, and drops it moving on', async () => {
  const s = await S.openBar(scrolling(0), [plain({ x: 10, y: 10, Width: 40, sBName: 'A', ProgramOVER: S.noteCmd('over') })]);
  try {
    const { page } = s;
    await S.moveTo(page, 100, 20);
    await S.waitNotes(page, ['over'], 3000);
    // The button goes on scrolling: its face is read in the same moment as
    // its place, and must show OVER while it is under the pointer.
    await page.waitForFunction((over) => {
      const bar = window.KestrelPanePlayer.bars[0];
      const r = bar.getRect(1);
      const under = r.x <= 100 && 100 < r.x + r.w;
      return under && (bar.pixels()[20 * bar.W + 100] & 0xffffff) === over;
    }, FACE.OVER, { timeout: 3000 });
    await page.waitForFunction(() => {
      const b = window.KestrelPanePlayer.bars[0].getRect(1);
      return b.x > 100;
    });
    await page.waitForTimeout(50);
    // Place and pixel in one moment: the button moves on between two reads.
    const face = await page.evaluate(() => {
      const bar = window.KestrelPanePlayer.bars[0];
      const x = Math.min(199, bar.getRect(1).x + 1);
      return bar.pixels()[20 * bar.W + x] & 0xffffff;
    });
    assert.equal(face, FACE.UP);
  } finally {
    await s.close();
  }
});
