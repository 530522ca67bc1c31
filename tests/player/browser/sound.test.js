// Sounds in the page: each kind of AU file the bar may carry decodes in
// the browser, and the faces start and stop them as the author set.
const test = require('node:test');
const assert = require('node:assert/strict');
const fs = require('node:fs');
const path = require('node:path');
const S = require('./fixtures/session.js');
const { h, plain } = S;

test.after(() => h.closeBrowser());

// A Sun AU file: big-endian header, then the samples.
function au(encoding, rate, channels, frames) {
  const bytes = encoding === 3 ? 2 : 1;
  const data = Buffer.alloc(frames * channels * bytes);
  for (let f = 0; f < frames; f++) {
    for (let c = 0; c < channels; c++) {
      const v = Math.sin((f / rate) * 2 * Math.PI * 440 * (c + 1));
      const at = (f * channels + c) * bytes;
      if (encoding === 1) data[at] = v >= 0 ? 0x80 : 0x00;       // mu-law, loud square
      else if (encoding === 2) data.writeInt8(Math.round(v * 100), at);
      else data.writeInt16BE(Math.round(v * 20000), at);
    }
  }
  const head = Buffer.alloc(24);
  head.write('.snd', 0, 'latin1');
  head.writeUInt32BE(24, 4);
  head.writeUInt32BE(data.length, 8);
  head.writeUInt32BE(encoding, 12);
  head.writeUInt32BE(rate, 16);
  head.writeUInt32BE(channels, 20);
  return Buffer.concat([head, data]);
}

test('each kind of AU decodes in the page, and faces play and stop their sounds', async () => {
  const dir = h.tempDir('kp-sounds-');
  const files = {
    'up16.au': au(3, 22050, 2, 2205),
    'over_mulaw.au': au(1, 8000, 1, 800),
    'down8.au': au(2, 11025, 1, 1100),
  };
  const media = Object.entries(files).map(([name, data]) => {
    fs.writeFileSync(path.join(dir, name), data);
    return path.join(dir, name);
  });
  const s = await S.openBar({ AppletWidth: 300, AppletHeight: 100, bPreLoad: 0, sLoading: '' }, [
    plain({
      x: 10, y: 10, sBName: 'A', Snd: ['up16.au', 'over_mulaw.au', 'down8.au'],
      SoundLoop: [0, 1, 0], SoundStop: [0, 1, 1],
    }),
  ], { media });
  try {
    const { page } = s;
    const decoded = await page.evaluate(async () => {
      const bar = window.KestrelPanePlayer.bars[0];
      const out = {};
      for (const name of ['up16.au', 'over_mulaw.au', 'down8.au']) {
        const d = await bar.sound.load(new URL(name, bar.sndBase).href);
        out[name] = d && [d.sampleRate, d.channels, d.samples[0].length, d.samples[0].some((v) => v !== 0)];
      }
      return out;
    });
    assert.deepEqual(decoded, {
      'up16.au': [22050, 2, 2205, true],
      'over_mulaw.au': [8000, 1, 800, true],
      'down8.au': [11025, 1, 1100, true],
    });

    await page.evaluate(() => { window.soundCalls.length = 0; });
    await S.moveTo(page, 20, 20);
    await page.mouse.down();
    await page.mouse.up();
    await S.moveTo(page, 200, 80);
    const calls = await page.evaluate(() => window.soundCalls.map((c) => [c.m, c.url.split('/').pop(), c.loop]));
    assert.deepEqual(calls, [
      ['play', 'over_mulaw.au', true],    // entering: the OVER sound, looping
      ['stop', 'over_mulaw.au', false],   // pressing leaves OVER, which stops its sound
      ['play', 'down8.au', false],
      ['stop', 'down8.au', false],        // releasing leaves DOWN for OVER
      ['stop', 'over_mulaw.au', false],   // leaving OVER
      ['play', 'up16.au', false],         // for UP, with its sound
    ]);
    const state = await page.evaluate(() => ({
      ready: window.KestrelPanePlayer.bars[0].sound.ready,
      warnings: window.warnings.filter((w) => /sound/i.test(w)),
    }));
    assert.equal(state.ready, true, 'the first gesture started the audio');
    assert.deepEqual(state.warnings, []);
    assert.deepEqual(S.pageErrors(s), []);
  } finally {
    await s.close();
  }
});
