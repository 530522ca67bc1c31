// Prints how fast the bar is in Chromium with a 1001-button project: from
// the page's start to the bar drawn, and a face switch under the pointer.
//   node tests/player/browser/bench.js [runs]
const path = require('node:path');
const S = require('./fixtures/session.js');
const { h, rgb, plain } = S;

const COLS = 25;
const COUNT = 1001;

function buttons() {
  const out = [];
  for (let i = 0; i < COUNT; i++) {
    out.push(plain({
      x: 2 + (i % COLS) * 40, y: 2 + Math.floor(i / COLS) * 20, Width: 38, Height: 18,
      sBName: 'B' + (i + 1), Label: String(i + 1), FontSize: 10, FontColor: rgb(255, 255, 255),
      BorderStyle: 1, BorderWidth: 2, FadeStyle: [i % 3, 0, 0], FadeColor: rgb(0, 0, 0),
      ProgramOVER: i % 50 === 0 ? '8 B' + (i + 2) + ' 2;' : '',
    }));
  }
  return out;
}

function stats(xs) {
  const s = xs.slice().sort((a, b) => a - b);
  const pick = (q) => s[Math.min(s.length - 1, Math.floor(q * s.length))];
  return { median: pick(0.5), p95: pick(0.95), max: s[s.length - 1] };
}

async function main() {
  const runs = Number(process.argv[2]) || 3;
  const applet = {
    AppletWidth: COLS * 40 + 4, AppletHeight: Math.ceil(COUNT / COLS) * 20 + 4, bPreLoad: 0, sLoading: '',
    BackImg: 'demo_bg.jpg', BackImgStyle: 3,
  };
  const built = S.build(applet, buttons(), { media: [path.join(h.ROOT, 'data/Projects/demo_bg.jpg')] });
  const load = [];
  let faces = [];
  let composeAll = [];
  for (let r = 0; r < runs; r++) {
    const s = await S.open(built, { context: { viewport: { width: 1100, height: 900 } } });
    const { page } = s;
    const t = await page.evaluate(() => {
      const bar = window.KestrelPanePlayer.bars[0];
      const nav = performance.getEntriesByType('navigation')[0];
      return Object.assign({ dcl: nav ? nav.domContentLoadedEventStart : 0 }, bar.timing);
    });
    load.push(t);
    // The pointer across a row and down a column: one face switch each.
    for (let k = 0; k < 60; k++) {
      const i = (k * 7) % COUNT;
      await S.moveTo(page, 2 + (i % COLS) * 40 + 19, 2 + Math.floor(i / COLS) * 20 + 9);
      faces.push(await page.evaluate(() => window.KestrelPanePlayer.bars[0].lastFaceSwitchMs));
    }
    composeAll.push(await page.evaluate(() => {
      const bar = window.KestrelPanePlayer.bars[0];
      const t0 = performance.now();
      for (let k = 0; k < 10; k++) bar.scene.compose(bar._px);
      return (performance.now() - t0) / 10;
    }));
    await s.close();
  }
  await h.closeBrowser();
  const f = (v) => v.toFixed(1);
  console.log(`buttons: ${COUNT}, applet ${applet.AppletWidth}x${applet.AppletHeight}, runs: ${runs}`);
  for (const t of load) {
    console.log(`page start -> bar drawn ${f(t.drawn)} ms: page parsed ${f(t.dcl)}, bar made ${f(t.created)}, ` +
      `keys ${f(t.constructed - t.created)}, faces without pictures ${f(t.earlyDrawn - t.constructed)}, ` +
      `pictures in ${f(t.picturesLoaded)}, the rest ${f(t.drawn - t.picturesLoaded)}; from the bar made: ${f(t.drawn - t.created)} ms`);
  }
  const st = stats(faces);
  console.log(`face switch under the pointer: median ${st.median.toFixed(2)} ms, p95 ${st.p95.toFixed(2)} ms, max ${st.max.toFixed(2)} ms (${faces.length} switches)`);
  console.log(`whole-bar composition, for comparison: ${stats(composeAll).median.toFixed(2)} ms`);
}

main().catch((e) => {
  console.error(e);
  process.exit(1);
});
