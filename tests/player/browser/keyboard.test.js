// The bar without a mouse: Tab reaches every visible button in bar order,
// each with a name, a focus ring and the OVER face; Enter and Space press
// and release; a tap on a touch screen is a whole click.
const test = require('node:test');
const assert = require('node:assert/strict');
const S = require('./fixtures/session.js');
const { h, rgb, FACE, plain } = S;

test.after(() => h.closeBrowser());

const APPLET = { AppletWidth: 300, AppletHeight: 100, bPreLoad: 0, sLoading: '' };

// What has the focus: the bar's button number, or the element's tag.
function focused(page) {
  return page.evaluate(() => {
    const e = document.activeElement;
    return e && e.dataset && e.dataset.kpButton ? Number(e.dataset.kpButton) : (e ? e.tagName : null);
  });
}

test('Tab visits the visible buttons in bar order, each named, ringed and showing OVER', async () => {
  const s = await S.openBar(APPLET, [
    plain({ x: 200, y: 10, sBName: 'First', Label: 'Go\\nHome&!0Now', URL: 'a.html', ProgramOVER: S.noteCmd('over1') }),
    plain({ x: 10, y: 10, sBName: 'Gone', Label: 'Gone', Hidden: 1 }),
    plain({ x: 100, y: 10, sBName: 'Third', Label: '', Tip: 'Tip text' }),
    plain({ x: 10, y: 50, sBName: 'Fourth', Label: '' }),
  ]);
  try {
    const { page } = s;
    await page.evaluate(() => document.body.focus());
    const order = [];
    for (let k = 0; k < 3; k++) {
      await page.keyboard.press('Tab');
      order.push(await focused(page));
    }
    assert.deepEqual(order, [1, 3, 4], 'index order, the hidden one left out');
    const names = await page.evaluate(() => Array.from(document.querySelectorAll('.kestrelpane-key'))
      .map((e) => [e.tagName, e.getAttribute('role'), e.getAttribute('aria-label'), e.getAttribute('href') !== null]));
    assert.deepEqual(names, [
      ['A', null, 'Go Home Now', true],
      ['SPAN', 'button', 'Gone', false],
      ['SPAN', 'button', 'Tip text', false],
      ['SPAN', 'button', 'Fourth', false],
    ]);
    // On Fourth now: its face is OVER and the ring is drawn.
    assert.equal(await S.pixelAt(page, 15, 55), FACE.OVER);
    assert.equal(await S.pixelAt(page, 105, 15), FACE.UP, 'the one left went back UP');
    const ring = await page.evaluate(() => {
      const cs = getComputedStyle(document.activeElement);
      return [cs.outlineStyle, cs.outlineWidth, cs.boxShadow !== 'none'];
    });
    assert.deepEqual(ring, ['solid', '2px', true]);
    await page.keyboard.press('Shift+Tab');
    await page.keyboard.press('Shift+Tab');
    assert.equal(await focused(page), 1);
    assert.equal(await S.pixelAt(page, 205, 15), FACE.OVER);
    await S.waitNotes(page, ['over1']);

    // Show makes the hidden one reachable, in its place in the order.
    await S.runProgram(page, '1 Gone;');
    await page.keyboard.press('Tab');
    assert.equal(await focused(page), 2);
    await S.runProgram(page, '2 Gone;');
    assert.notEqual(await focused(page), 2, 'a button hidden while focused gives the focus up');
    assert.equal(await S.pixelAt(page, 15, 15), S.BACK);
  } finally {
    await s.close();
  }
});

test('Enter and Space press and release: DOWN while held, then the UP program and the link', async () => {
  const s = await S.openBar(APPLET, [
    plain({ x: 10, y: 10, sBName: 'A', ProgramDOWN: S.noteCmd('downA'), ProgramUP: S.noteCmd('upA') }),
    plain({ x: 100, y: 10, sBName: 'B', URL: 'next.html', Target: '', ProgramUP: S.noteCmd('upB') }),
  ], { extraFiles: { 'next.html': '<p>next</p>' } });
  try {
    const { page } = s;
    await page.keyboard.press('Tab');
    assert.equal(await focused(page), 1);
    await page.keyboard.down('Enter');
    assert.equal(await S.pixelAt(page, 15, 15), FACE.DOWN);
    await page.keyboard.up('Enter');
    assert.equal(await S.pixelAt(page, 15, 15), FACE.OVER, 'focused, so OVER again');
    await page.keyboard.down(' ');
    assert.equal(await S.pixelAt(page, 15, 15), FACE.DOWN);
    await page.keyboard.up(' ');
    assert.deepEqual(await S.waitNotes(page, ['downA', 'upA']), ['downA', 'upA', 'downA', 'upA']);
    const scrolled = await page.evaluate(() => window.scrollY);
    assert.equal(scrolled, 0, 'Space does not scroll the page');
    await page.keyboard.press('Tab');
    await page.keyboard.press('Enter');
    await page.waitForURL(/\/next\.html$/);
  } finally {
    await s.close();
  }
});

test('a tap on a touch screen clicks and leaves the button UP', async () => {
  const s = await S.openBar(APPLET, [
    plain({ x: 10, y: 10, sBName: 'A', ProgramOVER: S.noteCmd('over'), ProgramDOWN: S.noteCmd('down'), ProgramUP: S.noteCmd('up'), ProgramLEAVE: S.noteCmd('leave') }),
    plain({ x: 100, y: 10, sBName: 'R', Radio: 1, ProgramCHECK: S.noteCmd('check') }),
  ], { context: { hasTouch: true, isMobile: false } });
  try {
    const { page } = s;
    const p = await S.pagePoint(page, 20, 20);
    await page.touchscreen.tap(p.x, p.y);
    const n = await S.waitNotes(page, ['up', 'leave']);
    assert.deepEqual(n, ['over', 'down', 'up', 'leave']);
    await page.waitForTimeout(50);
    assert.equal(await S.pixelAt(page, 15, 15), FACE.UP, 'no OVER face stuck after the finger left');
    const q = await S.pagePoint(page, 110, 20);
    await page.touchscreen.tap(q.x, q.y);
    await S.waitNotes(page, ['check']);
    await page.waitForTimeout(50);
    assert.equal(await S.pixelAt(page, 105, 15), FACE.DOWN, 'a tapped radio button stays checked');
    assert.deepEqual(S.pageErrors(s), []);
  } finally {
    await s.close();
  }
});

test('assistive technology activating a key element clicks the button', async () => {
  const s = await S.openBar(APPLET, [plain({ x: 10, y: 10, sBName: 'A', URL: "javascript:note('clicked')", ProgramUP: S.noteCmd('up') })]);
  try {
    const { page } = s;
    await page.evaluate(() => document.querySelector('.kestrelpane-key').click());
    assert.deepEqual(await S.waitNotes(page, ['up', 'clicked']), ['up', 'clicked']);
    assert.equal(await page.evaluate(() => document.querySelector('.kestrelpane-key').getAttribute('role')), 'link');
  } finally {
    await s.close();
  }
});

test('a dark face gets a light focus ring and a light face a dark one', async () => {
  const s = await S.openBar(APPLET, [
    plain({ x: 10, y: 10, sBName: 'Dark', BackColor: rgb(10, 10, 10) }),
    plain({ x: 100, y: 10, sBName: 'Light', BackColor: rgb(250, 250, 240) }),
  ]);
  try {
    const { page } = s;
    const rings = [];
    for (let k = 0; k < 2; k++) {
      await page.keyboard.press('Tab');
      rings.push(await page.evaluate(() => getComputedStyle(document.activeElement).outlineColor));
    }
    assert.deepEqual(rings, ['rgb(255, 255, 255)', 'rgb(0, 0, 0)']);
  } finally {
    await s.close();
  }
});

test('keyboard focus shows the tip below the button, and moving on hides it', async () => {
  const s = await S.openBar(Object.assign({}, APPLET, { iTipDelay: 100, iTipHideAfter: 0 }), [
    plain({ x: 10, y: 10, sBName: 'A', Tip: 'About A' }),
    plain({ x: 100, y: 10, sBName: 'B' }),
  ]);
  try {
    const { page } = s;
    await page.keyboard.press('Tab');
    await page.waitForSelector('.kestrelpane-tip');
    const t = await page.evaluate(() => {
      const tip = document.querySelector('.kestrelpane-tip');
      const r = tip.getBoundingClientRect();
      const c = window.KestrelPanePlayer.bars[0].canvas.getBoundingClientRect();
      return { text: tip.textContent, x: r.left - c.left, y: r.top - c.top,
        describedBy: document.activeElement.getAttribute('aria-describedby') === tip.id };
    });
    assert.equal(t.text, 'About A');
    assert.equal(t.x, 10);
    assert.ok(t.y >= 40 && t.y <= 45, 'just below the button: ' + t.y);
    assert.equal(t.describedBy, true);
    await page.keyboard.press('Tab');
    assert.equal(await page.evaluate(() => document.querySelector('.kestrelpane-tip')), null);
  } finally {
    await s.close();
  }
});
