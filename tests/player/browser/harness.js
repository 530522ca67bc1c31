// Runs built pages in Debian's headless Chromium: builds a project with the
// real command-line program, serves the folder on loopback, opens the page
// and reads the bar's pixels; renders the same project with the designer's
// renderer for comparison.
const { execFileSync, spawnSync } = require('node:child_process');
const fs = require('node:fs');
const http = require('node:http');
const os = require('node:os');
const path = require('node:path');

const ROOT = path.resolve(__dirname, '../../..');
const BIN = process.env.KP_BIN_DIR || path.join(ROOT, 'build/bin');
const CLI = path.join(BIN, 'kestrelpane-cli');
const CHROMIUM = process.env.KP_CHROMIUM || '/usr/bin/chromium';

// Temporary folders live as long as the test process; a run leaves none.
const madeDirs = [];
process.on('exit', () => {
  if (process.env.KP_KEEP_TEMP) return;
  for (const d of madeDirs) {
    try { fs.rmSync(d, { recursive: true, force: true }); } catch (e) { /* already gone */ }
  }
});

function tempDir(prefix) {
  const d = fs.mkdtempSync(path.join(os.tmpdir(), prefix || 'kp-player-'));
  madeDirs.push(d);
  return d;
}

// The command-line program with its own settings file, so runs repeat.
function cli(args, opts) {
  const settings = (opts && opts.settings) || path.join(tempDir('kp-settings-'), 'settings.ini');
  return execFileSync(CLI, ['--settings', settings, ...args], {
    encoding: (opts && opts.encoding) || 'latin1',
    stdio: ['ignore', 'pipe', 'pipe'],
    cwd: (opts && opts.cwd) || undefined,
  });
}

// Builds PROJECT into a fresh folder; returns the page's path. A project
// that names a missing picture still builds (the copy reports it and the
// command ends non-zero), so only a missing page is a failure here.
function buildProject(project, pageName) {
  const dir = tempDir('kp-build-');
  const page = path.join(dir, pageName || 'index.html');
  const settings = path.join(tempDir('kp-settings-'), 'settings.ini');
  const run = spawnSync(CLI, ['--settings', settings, 'build', project, page, '--yes'], { encoding: 'latin1' });
  if (!fs.existsSync(page)) throw new Error(`build of ${project} wrote no page: ${run.stderr}`);
  return page;
}

const TYPES = {
  '.html': 'text/html; charset=windows-1252', '.htm': 'text/html; charset=windows-1252',
  '.js': 'text/javascript', '.gif': 'image/gif', '.jpg': 'image/jpeg', '.jpeg': 'image/jpeg',
  '.png': 'image/png', '.au': 'audio/basic',
};

// Serves a folder on a loopback port; resolves to { url, close }.
function serve(dir) {
  const server = http.createServer((req, res) => {
    const rel = decodeURIComponent(new URL(req.url, 'http://x').pathname);
    const file = path.join(dir, rel);
    if (!file.startsWith(dir) || !fs.existsSync(file) || fs.statSync(file).isDirectory()) {
      res.writeHead(404);
      res.end();
      return;
    }
    res.writeHead(200, { 'Content-Type': TYPES[path.extname(file).toLowerCase()] || 'application/octet-stream' });
    fs.createReadStream(file).pipe(res);
  });
  return new Promise((resolve) => {
    server.listen(0, '127.0.0.1', () => {
      resolve({
        url: `http://127.0.0.1:${server.address().port}/`,
        close: () => new Promise((r) => server.close(r)),
      });
    });
  });
}

let browserPromise = null;
// One browser for a test file; closed by closeBrowser().
function browser() {
  if (!browserPromise) {
    const { chromium } = require('playwright-core');
    browserPromise = chromium.launch({
      executablePath: CHROMIUM,
      headless: true,
      args: ['--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run',
        '--disable-background-networking', '--disable-component-update', '--disable-sync',
        '--font-render-hinting=none', '--autoplay-policy=no-user-gesture-required'],
    });
  }
  return browserPromise;
}

async function closeBrowser() {
  if (browserPromise) {
    const b = await browserPromise;
    browserPromise = null;
    await b.close();
  }
}

// Opens a served page and waits until every bar has drawn.
async function openPage(url, options) {
  const b = await browser();
  const context = await b.newContext(Object.assign({ viewport: { width: 900, height: 700 } }, options || {}));
  const page = await context.newPage();
  const messages = [];
  page.on('console', (m) => messages.push({ type: m.type(), text: m.text() }));
  page.on('pageerror', (e) => messages.push({ type: 'pageerror', text: String(e) }));
  await page.goto(url);
  await page.waitForFunction(() => window.KestrelPanePlayer &&
    window.KestrelPanePlayer.bars.length > 0 &&
    window.KestrelPanePlayer.bars.every((b) => b.drawn), null, { timeout: 15000 });
  page.messages = messages;
  page.closeAll = () => context.close();
  return page;
}

// The composed pixels of bar `k` as RGBA bytes (one byte per channel).
async function barPixels(page, k) {
  const b64 = await page.evaluate((index) => {
    const bar = window.KestrelPanePlayer.bars[index];
    const px = bar.pixels();
    const bytes = new Uint8Array(px.buffer, px.byteOffset, px.byteLength);
    let s = '';
    for (let i = 0; i < bytes.length; i += 0x8000) s += String.fromCharCode.apply(null, bytes.subarray(i, i + 0x8000));
    return btoa(s);
  }, k || 0);
  return Buffer.from(b64, 'base64');
}

// A picture file as { w, h, rgba } through ImageMagick.
function readPicture(file) {
  const size = execFileSync('/usr/bin/convert', [file, '-format', '%w %h', 'info:'], { encoding: 'utf8' })
    .trim().split(' ').map(Number);
  const rgba = execFileSync('/usr/bin/convert', [file, '-depth', '8', 'rgba:-'], { maxBuffer: 1 << 28 });
  return { w: size[0], h: size[1], rgba };
}

// The designer's picture of the applet in one state.
function render(project, state) {
  const out = path.join(tempDir('kp-render-'), 'r.png');
  cli(['render', project, out, '--state', state || 'UP']);
  return readPicture(out);
}

module.exports = {
  ROOT, BIN, CLI, tempDir, cli, buildProject, serve, browser, closeBrowser, openPage,
  barPixels, readPicture, render,
};
