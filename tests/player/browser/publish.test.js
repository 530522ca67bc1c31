// The pages the publishing commands write show a working bar: the browser
// test's page in the program's AppletTemp, and a page whose applet was
// replaced in place.
const test = require('node:test');
const assert = require('node:assert/strict');
const { spawnSync } = require('node:child_process');
const fs = require('node:fs');
const path = require('node:path');
const h = require('./harness.js');

const DEMO_DIR = path.join(h.ROOT, 'data/Projects');

test.after(() => h.closeBrowser());

// A program folder of our own: the programs, the player, Kestrel.ini.
function ownHome() {
  const home = h.tempDir('kp-home-');
  for (const f of ['kestrelpane-cli', 'KestrelPane.js', 'Kestrel.ini']) {
    fs.copyFileSync(path.join(h.BIN, f), path.join(home, f));
  }
  fs.chmodSync(path.join(home, 'kestrelpane-cli'), 0o755);
  const projects = path.join(home, 'Projects');
  fs.mkdirSync(projects);
  for (const f of fs.readdirSync(DEMO_DIR)) fs.copyFileSync(path.join(DEMO_DIR, f), path.join(projects, f));
  return home;
}

async function barIn(dir, page) {
  const server = await h.serve(dir);
  try {
    const p = await h.openPage(server.url + page);
    const result = await p.evaluate(() => {
      const bars = window.KestrelPanePlayer.bars;
      return {
        bars: bars.length,
        buttons: bars[0].count,
        applets: document.querySelectorAll('applet').length,
        scripts: Array.from(document.scripts).filter((s) => /KestrelPane\.js$/.test(s.src)).length,
        size: [bars[0].canvas.clientWidth, bars[0].canvas.clientHeight],
      };
    });
    await p.closeAll();
    return result;
  } finally {
    await server.close();
  }
}

test('the browser test\'s page in AppletTemp shows the demo bar', async () => {
  const home = ownHome();
  const settings = path.join(h.tempDir('kp-settings-'), 's.ini');
  // The default browser is whatever the desktop opens; here it opens nothing.
  const run = spawnSync(path.join(home, 'kestrelpane-cli'),
    ['--home', home, '--settings', settings, 'test', path.join(home, 'Projects/Demo.kpn')],
    { encoding: 'latin1', env: Object.assign({}, process.env, { BROWSER: 'true', DISPLAY: '' }) });
  const temp = path.join(home, 'AppletTemp');
  assert.ok(fs.existsSync(path.join(temp, 'Demo.htm')), run.stderr);
  assert.ok(fs.existsSync(path.join(temp, 'KestrelPane.js')));
  const r = await barIn(temp, 'Demo.htm');
  assert.deepEqual(r, { bars: 1, buttons: 12, applets: 0, scripts: 1, size: [460, 200] });
});

test('a page whose applet was replaced in place shows the new bar, with one player element', async () => {
  const home = ownHome();
  const settings = path.join(h.tempDir('kp-settings-'), 's.ini');
  const dir = h.tempDir('kp-site-');
  // A hand-made page holding the applet block the author pasted earlier,
  // without the player.
  const block = h.cli(['--home', home, 'html', path.join(home, 'Projects/Demo.kpn')], { settings });
  const old = block.replace('width=460', 'width=300');
  fs.writeFileSync(path.join(dir, 'site.html'),
    Buffer.from('<html><body>\r\n<h1>Our site</h1>\r\n' + old + '<p>footer</p>\r\n</body></html>\r\n', 'latin1'));
  for (const f of fs.readdirSync(DEMO_DIR)) fs.copyFileSync(path.join(DEMO_DIR, f), path.join(dir, f));
  for (let round = 0; round < 2; round++) {
    const run = spawnSync(path.join(home, 'kestrelpane-cli'),
      ['--home', home, '--settings', settings, 'replace', path.join(home, 'Projects/Demo.kpn'),
        path.join(dir, 'site.html'), '--update-files'], { encoding: 'latin1' });
    assert.equal(run.status, 0, run.stderr);
  }
  const page = fs.readFileSync(path.join(dir, 'site.html'), 'latin1');
  assert.equal(page.split('KestrelPane.js').length - 1, 1);
  assert.ok(page.includes('<h1>Our site</h1>') && page.includes('<p>footer</p>'));
  const r = await barIn(dir, 'site.html');
  assert.deepEqual(r, { bars: 1, buttons: 12, applets: 0, scripts: 1, size: [460, 200] });
});
