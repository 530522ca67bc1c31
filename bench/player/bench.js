// The player's speed in Debian's headless Chromium: from page load to the
// bar drawn, for the demo project and for projects of 100, 500 and 1001
// buttons, the time to switch a face under the pointer, and what the first
// hovers over a freshly drawn bar cost.
//
//   node bench/player/bench.js            (after scripts/build.sh)
//
// Prints one line a measurement, the median of several page loads; for the
// largest bar also how much of its load the page's thread ran (traced).
const fs = require('node:fs');
const path = require('node:path');
const h = require('../../tests/player/browser/harness.js');
const { rgb, writeProject } = require('../../tests/player/browser/kpn.js');

const RUNS = Number(process.env.KP_BENCH_RUNS || 7);
const DEMO_DIR = path.join(h.ROOT, 'data/Projects');

// A project of n buttons in rows, each with a label, a border, a fade and
// a text border, the way a heavy bar looks.
function bigProject(n) {
  const dir = h.tempDir('kp-bench-');
  const cols = 33;
  const buttons = [];
  for (let k = 0; k < n; k++) {
    buttons.push({
      x: 2 + (k % cols) * 30, y: 2 + Math.floor(k / cols) * 20, Width: 28, Height: 18,
      Label: 'B' + (k + 1), FontSize: 7, FadeStyle: [k % 5, (k + 1) % 5, (k + 2) % 5],
      FadeColor: rgb(k % 256, 100, 200), BorderStyle: 1 + (k % 4), BorderWidth: 2,
      TFrameThick: k % 3 === 0 ? 1 : 0, TFrameColor: rgb(0, 90, 0), TFrameShade: 30,
      ProgramOVER: k % 10 === 0 ? '6 10;' : '',
    });
  }
  const rows = Math.ceil(n / cols);
  return writeProject(dir, `big${n}.kpn`, { AppletWidth: 2 + cols * 30, AppletHeight: 2 + rows * 20 }, buttons);
}

function median(values) {
  const s = values.slice().sort((a, b) => a - b);
  return s[Math.floor(s.length / 2)];
}

// Milliseconds from the start of navigation to the bar drawn, and from the
// player's start (reading the page's blocks, the player's own work) to
// drawn.
async function loadTime(url) {
  const page = await h.openPage(url);
  const t = await page.evaluate(async () => {
    const bar = window.KestrelPanePlayer.bars[0];
    await bar.ready;
    const nav = performance.getEntriesByType('navigation')[0];
    const boot = window.KestrelPanePlayer.timing.bootStarted || bar.timing.created;
    return { drawn: bar.timing.drawn, boot: boot, dcl: nav ? nav.domContentLoadedEventStart : 0 };
  });
  await page.closeAll();
  return t;
}

// The page's DOMContentLoaded work (the player reading the blocks and
// drawing the bar) from a trace of one load: its wall time and the time the
// page's main thread was running for it. On a machine of few cores the
// difference is the time the thread waited for a core or for the browser.
async function busyTime(url) {
  const b = await h.browser();
  const context = await b.newContext({ viewport: { width: 900, height: 700 } });
  const page = await context.newPage();
  await b.startTracing(page, { categories: ['devtools.timeline', 'blink'] });
  await page.goto(url);
  await page.waitForFunction(() => window.KestrelPanePlayer && window.KestrelPanePlayer.bars.every((x) => x.drawn));
  const events = JSON.parse((await b.stopTracing()).toString()).traceEvents;
  await context.close();
  const mains = new Set(events.filter((e) => e.name === 'thread_name' && e.args.name === 'CrRendererMain')
    .map((e) => e.pid + ':' + e.tid));
  const work = events.filter((e) => mains.has(e.pid + ':' + e.tid) && e.name === 'Document::FinishedParsing')
    .sort((x, y) => y.dur - x.dur)[0];
  return work ? { wall: work.dur / 1000, cpu: work.tdur / 1000 } : null;
}

// Milliseconds a pointer move takes that changes a face, measured around
// the synchronous event dispatch, alternating between two buttons.
async function switchTime(url, a, b) {
  const page = await h.openPage(url);
  const result = await page.evaluate(async ([ra, rb]) => {
    const bar = window.KestrelPanePlayer.bars[0];
    await bar.ready;
    const c = bar.canvas;
    const box = c.getBoundingClientRect();
    const times = [];
    for (let k = 0; k < 200; k++) {
      const r = k % 2 ? rb : ra;
      const ev = new PointerEvent('pointermove', {
        clientX: box.left + r.x + r.w / 2, clientY: box.top + r.y + r.h / 2,
        bubbles: true, pointerType: 'mouse', pointerId: 1,
      });
      const t0 = performance.now();
      c.dispatchEvent(ev);
      times.push(performance.now() - t0);
    }
    times.sort((x, y) => x - y);
    return { median: times[100], p95: times[190] };
  }, [a, b]);
  await page.closeAll();
  return result;
}

// The first pointer move over each of the first twelve visible buttons,
// half a second after the bar is drawn: what a visitor's first hovers
// cost, setting up a label's font and glyphs included. Medians over a few
// loads of the median and of the slowest of the twelve.
async function firstHoverTime(url) {
  const medians = [], slowest = [];
  for (let k = 0; k < Math.min(RUNS, 5); k++) {
    const page = await h.openPage(url);
    const times = await page.evaluate(async () => {
      const bar = window.KestrelPanePlayer.bars[0];
      await bar.ready;
      await new Promise((resolve) => setTimeout(resolve, 500));
      const box = bar.canvas.getBoundingClientRect();
      const out = [];
      for (let i = 1; i < bar.buttons.length && out.length < 12; i++) {
        const b = bar.buttons[i];
        if (b.Hidden) continue;
        const ev = new PointerEvent('pointermove', {
          clientX: box.left + b.x + b.Width / 2, clientY: box.top + b.y + b.Height / 2,
          bubbles: true, pointerType: 'mouse', pointerId: 1,
        });
        const t0 = performance.now();
        bar.canvas.dispatchEvent(ev);
        out.push(performance.now() - t0);
      }
      return out;
    });
    await page.closeAll();
    medians.push(median(times));
    slowest.push(Math.max(...times));
  }
  return { median: median(medians), slowest: median(slowest) };
}

async function measure(label, project, a, b, traced) {
  const pagePath = h.buildProject(project);
  const server = await h.serve(path.dirname(pagePath));
  const url = server.url + path.basename(pagePath);
  try {
    const loads = [];
    for (let k = 0; k < RUNS; k++) loads.push(await loadTime(url));
    const sw = await switchTime(url, a, b);
    const first = await firstHoverTime(url);
    const f = (v) => v.toFixed(1).padStart(6);
    console.log(`${label.padEnd(22)} navigation to drawn ${f(median(loads.map((t) => t.drawn)))} ms` +
      ` (page parsed ${f(median(loads.map((t) => t.dcl)))}, player ${f(median(loads.map((t) => t.drawn - t.boot)))},` +
      ` loaded to drawn ${f(median(loads.map((t) => t.drawn - t.dcl)))})` +
      `   face switch median ${sw.median.toFixed(2)} ms, p95 ${sw.p95.toFixed(2)} ms,` +
      ` first hovers median ${first.median.toFixed(2)} ms, slowest ${first.slowest.toFixed(2)} ms`);
    if (traced) {
      const busy = [];
      for (let k = 0; k < RUNS; k++) busy.push(await busyTime(url));
      const ok = busy.filter((x) => x);
      console.log(`${''.padEnd(22)} traced loads: the loaded page's work ${f(median(ok.map((x) => x.wall)))} ms,` +
        ` of it the page's thread running ${f(median(ok.map((x) => x.cpu)))} ms`);
    }
  } finally {
    await server.close();
  }
}

(async () => {
  const demoDir = h.tempDir('kp-bench-demo-');
  for (const f of fs.readdirSync(DEMO_DIR)) fs.copyFileSync(path.join(DEMO_DIR, f), path.join(demoDir, f));
  await measure('Demo.kpn (12 buttons)', path.join(demoDir, 'Demo.kpn'),
    { x: 125, y: 16, w: 100, h: 48 }, { x: 235, y: 16, w: 100, h: 48 });
  for (const n of [100, 500, 1001]) {
    await measure(`${n} buttons`, bigProject(n), { x: 2, y: 2, w: 28, h: 18 }, { x: 32, y: 2, w: 28, h: 18 },
      n === 1001);
  }
  await h.closeBrowser();
})().catch(async (e) => {
  console.error(e);
  await h.closeBrowser();
  process.exit(1);
});
