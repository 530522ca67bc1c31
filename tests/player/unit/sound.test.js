'use strict';
// Sun AU decoding and the Web Audio player, with AU files built here byte
// by byte and a fake audio context and fetch.

const test = require('node:test');
const assert = require('node:assert/strict');
const fs = require('node:fs');
const path = require('node:path');

const KP = require('./load.js');

// An AU file: 24-byte header (or a longer one), then the data bytes.
function au({ encoding, rate = 8000, channels = 1, data, dataSize, headerSize = 24 }) {
  const bytes = Buffer.from(data);
  const buf = Buffer.alloc(headerSize + bytes.length);
  buf.writeUInt32BE(0x2e736e64, 0);
  buf.writeUInt32BE(headerSize, 4);
  buf.writeUInt32BE(dataSize === undefined ? bytes.length : dataSize, 8);
  buf.writeUInt32BE(encoding, 12);
  buf.writeUInt32BE(rate, 16);
  buf.writeUInt32BE(channels, 20);
  bytes.copy(buf, headerSize);
  return buf.buffer.slice(buf.byteOffset, buf.byteOffset + buf.length);
}

function be16(values) {
  const b = Buffer.alloc(values.length * 2);
  values.forEach((v, i) => b.writeInt16BE(v, i * 2));
  return b;
}

test('8-bit linear PCM decodes to s/128', () => {
  const d = KP.decodeAU(au({ encoding: 2, rate: 11025, data: [0x00, 0x7f, 0x80, 0xff, 0x40] }));
  assert.equal(d.sampleRate, 11025);
  assert.equal(d.channels, 1);
  assert.equal(d.samples.length, 1);
  assert.ok(d.samples[0] instanceof Float32Array);
  assert.deepEqual(Array.from(d.samples[0]), [0, 127 / 128, -1, -1 / 128, 0.5]);
});

test('16-bit linear PCM mono is big-endian s/32768', () => {
  const d = KP.decodeAU(au({ encoding: 3, data: be16([0, 32767, -32768, 1, -2, 16384]) }));
  assert.equal(d.channels, 1);
  assert.deepEqual(Array.from(d.samples[0]),
                   [0, 32767 / 32768, -1, 1 / 32768, -2 / 32768, 0.5]);
});

test('16-bit stereo is interleaved frame by frame', () => {
  const d = KP.decodeAU(au({ encoding: 3, rate: 22050, channels: 2,
                             data: be16([100, -100, 200, -200, 16384, -16384]) }));
  assert.equal(d.sampleRate, 22050);
  assert.equal(d.channels, 2);
  assert.deepEqual(Array.from(d.samples[0]), [100 / 32768, 200 / 32768, 0.5]);
  assert.deepEqual(Array.from(d.samples[1]), [-100 / 32768, -200 / 32768, -0.5]);
});

test('an incomplete last frame is left out', () => {
  const d = KP.decodeAU(au({ encoding: 3, channels: 2, data: [0, 1, 0, 2, 0, 3] }));
  assert.equal(d.samples[0].length, 1);
  assert.equal(d.samples[1].length, 1);
  assert.equal(d.samples[1][0], 2 / 32768);
});

test('mu-law uses the G.711 table', () => {
  // Reference values of the standard mu-law decoding.
  const cases = [
    [0x00, -32124], [0x80, 32124], [0x7f, 0], [0xff, 0], [0x7e, -8], [0xfe, 8],
    [0x0f, -16764], [0x10, -15996], [0x70, -120], [0xf0, 120], [0x55, -716], [0xaa, 5372], [0x01, -31100],
  ];
  const d = KP.decodeAU(au({ encoding: 1, data: cases.map((c) => c[0]) }));
  assert.deepEqual(Array.from(d.samples[0]), cases.map((c) => c[1] / 32768));
});

test('mu-law covers all 256 codes symmetrically and monotonically', () => {
  const codes = Array.from({ length: 256 }, (_, i) => i);
  const d = KP.decodeAU(au({ encoding: 1, data: codes }));
  const s = d.samples[0];
  for (let i = 0; i < 128; i++) assert.ok(s[i] === -s[i + 128], 'code ' + i);
  for (let i = 1; i < 128; i++) assert.ok(s[i] > s[i - 1], 'rising at ' + i);
});

test('a longer header with annotation is skipped by its size', () => {
  const d = KP.decodeAU(au({ encoding: 2, headerSize: 32, data: [0x20, 0xe0] }));
  assert.deepEqual(Array.from(d.samples[0]), [0.25, -0.25]);
});

test('unknown data size reads to the end; an overlong size is cut to the file', () => {
  const a = KP.decodeAU(au({ encoding: 2, dataSize: 0xffffffff, data: [1, 2, 3] }));
  assert.equal(a.samples[0].length, 3);
  const b = KP.decodeAU(au({ encoding: 2, dataSize: 1000, data: [1, 2] }));
  assert.equal(b.samples[0].length, 2);
  const c = KP.decodeAU(au({ encoding: 2, dataSize: 2, data: [1, 2, 3, 4] }));
  assert.deepEqual(Array.from(c.samples[0]), [1 / 128, 2 / 128]);
});

test('typed array views are read as their bytes only', () => {
  const file = Buffer.from(au({ encoding: 2, data: [64] }));
  const padded = Buffer.concat([Buffer.from([9, 9, 9]), file]);
  const d = KP.decodeAU(new Uint8Array(padded.buffer, padded.byteOffset + 3, file.length));
  assert.deepEqual(Array.from(d.samples[0]), [0.5]);
});

test('garbage, truncated headers and unsupported encodings give null', () => {
  assert.equal(KP.decodeAU(null), null);
  assert.equal(KP.decodeAU(undefined), null);
  assert.equal(KP.decodeAU('.snd'), null);
  assert.equal(KP.decodeAU(new ArrayBuffer(0)), null);
  const garbage = Buffer.from('RIFF....WAVEfmt garbage garbage garbage');
  assert.equal(KP.decodeAU(garbage.buffer.slice(garbage.byteOffset,
                                                garbage.byteOffset + garbage.length)), null);
  const good = au({ encoding: 2, data: [1, 2, 3] });
  assert.notEqual(KP.decodeAU(good), null);
  assert.equal(KP.decodeAU(good.slice(0, 23)), null);       // header cut short
  assert.equal(KP.decodeAU(au({ encoding: 4, data: [0, 0, 0] })), null);   // 24-bit
  assert.equal(KP.decodeAU(au({ encoding: 6, data: [0, 0, 0, 0] })), null);  // float
  assert.equal(KP.decodeAU(au({ encoding: 27, data: [0] })), null);  // A-law
  assert.equal(KP.decodeAU(au({ encoding: 2, channels: 0, data: [0] })), null);
  assert.equal(KP.decodeAU(au({ encoding: 2, rate: 0, data: [0] })), null);
  assert.equal(KP.decodeAU(au({ encoding: 2, channels: 100000, data: [0] })), null);
  assert.equal(KP.decodeAU(au({ encoding: 2, headerSize: 16, data: [0, 0, 0, 0, 0, 0, 0, 0, 0] })),
               null);
  // A header size that points past the end of the file.
  const far = Buffer.from(au({ encoding: 2, data: [1] }));
  far.writeUInt32BE(400, 4);
  assert.equal(KP.decodeAU(far.buffer.slice(far.byteOffset, far.byteOffset + far.length)), null);
  // Little-endian magic is not this format.
  const le = Buffer.from(au({ encoding: 2, data: [1] }));
  le.writeUInt32LE(0x2e736e64, 0);
  assert.equal(KP.decodeAU(le.buffer.slice(le.byteOffset, le.byteOffset + le.length)), null);
});

test('random bytes never throw', () => {
  let seed = 12345;
  const rnd = () => (seed = (seed * 1103515245 + 12345) >>> 0) >>> 24;
  for (let n = 0; n < 300; n++) {
    const b = new Uint8Array(n % 64);
    for (let i = 0; i < b.length; i++) b[i] = rnd();
    if (n % 3 === 0 && b.length >= 4) b.set([0x2e, 0x73, 0x6e, 0x64]);
    assert.doesNotThrow(() => KP.decodeAU(b.buffer));
  }
});

test('the demo click sound decodes', () => {
  const file = fs.readFileSync(path.join(__dirname, '../../../data/Projects/click.au'));
  const buf = file.buffer.slice(file.byteOffset, file.byteOffset + file.length);
  const d = KP.decodeAU(buf);
  assert.ok(d);
  assert.equal(d.sampleRate, 8000);
  assert.equal(d.channels, 1);
  const offset = file.readUInt32BE(4);
  const size = file.readUInt32BE(8);
  assert.equal(file.readUInt32BE(12), 2);  // 8-bit linear
  assert.equal(d.samples[0].length, Math.min(size, file.length - offset));
  for (let i = 0; i < d.samples[0].length; i++) {
    assert.equal(d.samples[0][i], file.readInt8(offset + i) / 128);
  }
});

// --- The player, with a fake audio context --------------------------------------

class FakeTarget {
  constructor() { this.listeners = new Map(); }
  addEventListener(type, fn) {
    if (!this.listeners.has(type)) this.listeners.set(type, new Set());
    this.listeners.get(type).add(fn);
  }
  removeEventListener(type, fn) {
    if (this.listeners.has(type)) this.listeners.get(type).delete(fn);
  }
  dispatch(type) {
    for (const fn of Array.from(this.listeners.get(type) || [])) fn({ type });
  }
  count() {
    let n = 0;
    for (const s of this.listeners.values()) n += s.size;
    return n;
  }
}

function fakeAudio() {
  const made = [];
  class Ctx {
    constructor() {
      this.state = 'suspended';
      this.destination = { isDestination: true };
      this.sources = [];
      this.buffers = [];
      made.push(this);
    }
    resume() { this.state = 'running'; return Promise.resolve(); }
    createBuffer(channels, length, rate) {
      const data = Array.from({ length: channels }, () => new Float32Array(length));
      const b = { numberOfChannels: channels, length, sampleRate: rate,
                  getChannelData: (c) => data[c],
                  copyToChannel: (src, c) => data[c].set(src) };
      this.buffers.push(b);
      return b;
    }
    createBufferSource() {
      const s = { started: 0, stopped: 0, connected: null, loop: false, buffer: null,
                  connect(d) { this.connected = d; },
                  start() { this.started++; },
                  stop() { this.stopped++; } };
      this.sources.push(s);
      return s;
    }
  }
  return { Ctx, made };
}

function fakeFetch(files) {
  const calls = [];
  const fetch = async (url) => {
    calls.push(url);
    if (!(url in files)) return { ok: false, status: 404, arrayBuffer: async () => new ArrayBuffer(0) };
    return { ok: true, status: 200, arrayBuffer: async () => files[url] };
  };
  return { fetch, calls };
}

const tick = () => new Promise((r) => setImmediate(r));

function setup(files) {
  const audio = fakeAudio();
  const net = fakeFetch(files);
  const target = new FakeTarget();
  const warnings = [];
  const player = new KP.SoundPlayer({ fetch: net.fetch, AudioContext: audio.Ctx,
                                      gestureTarget: target, warn: (m) => warnings.push(m) });
  return { audio, net, target, warnings, player };
}

const CLICK = au({ encoding: 2, data: [0x40, 0xc0, 0x00] });

test('no audio context before the first gesture, and play does not throw', async () => {
  const t = setup({ 'a.au': CLICK });
  assert.doesNotThrow(() => t.player.play('a.au', false));
  await tick();
  assert.equal(t.audio.made.length, 0);
  assert.equal(t.player.ready, false);
  assert.deepEqual(t.warnings, []);
  t.target.dispatch('pointermove');
  assert.equal(t.audio.made.length, 0);
  t.target.dispatch('pointerdown');
  await tick();
  assert.equal(t.audio.made.length, 1);
  assert.equal(t.audio.made[0].state, 'running');
  assert.equal(t.player.ready, true);
  assert.equal(t.target.count(), 0, 'gesture listeners are removed once audio runs');
  // The click before the gesture stays unheard; it is not played late.
  assert.equal(t.audio.made[0].sources.length, 0);
});

test('key presses unlock audio too', async () => {
  const t = setup({});
  t.target.dispatch('keydown');
  await tick();
  assert.equal(t.audio.made.length, 1);
  assert.equal(t.player.ready, true);
});

test('after a gesture a sound plays with its decoded samples', async () => {
  const t = setup({ 'a.au': CLICK });
  t.target.dispatch('pointerdown');
  await tick();
  t.player.play('a.au', false);
  await tick();
  const ctx = t.audio.made[0];
  assert.equal(ctx.sources.length, 1);
  const src = ctx.sources[0];
  assert.equal(src.started, 1);
  assert.equal(src.loop, false);
  assert.equal(src.connected, ctx.destination);
  assert.equal(src.buffer.sampleRate, 8000);
  assert.equal(src.buffer.numberOfChannels, 1);
  assert.deepEqual(Array.from(src.buffer.getChannelData(0)), [0.5, -0.5, 0]);
});

test('each URL is fetched once and its buffer reused', async () => {
  const t = setup({ 'a.au': CLICK });
  t.target.dispatch('pointerdown');
  await tick();
  t.player.play('a.au', false);
  t.player.play('a.au', false);
  await tick();
  t.player.play('a.au', false);
  await tick();
  assert.deepEqual(t.net.calls, ['a.au']);
  const ctx = t.audio.made[0];
  assert.equal(ctx.buffers.length, 1);
  assert.ok(ctx.sources.length >= 2);
  assert.ok(ctx.sources.every((s) => s.buffer === ctx.buffers[0]));
});

test('playing again cuts the copy still sounding', async () => {
  const t = setup({ 'a.au': CLICK });
  t.target.dispatch('pointerdown');
  await t.player.load('a.au');
  await tick();
  t.player.play('a.au', false);
  t.player.play('a.au', false);
  const [first, second] = t.audio.made[0].sources;
  assert.equal(first.stopped, 1);
  assert.equal(second.stopped, 0);
  assert.equal(second.started, 1);
});

test('loops loop, and stop and stopAll end them', async () => {
  const t = setup({ 'a.au': CLICK, 'b.au': au({ encoding: 3, data: be16([1000]) }) });
  t.target.dispatch('pointerdown');
  await tick();
  t.player.play('a.au', true);
  t.player.play('b.au', true);
  await tick();
  const ctx = t.audio.made[0];
  const a = ctx.sources.find((s) => s.buffer.getChannelData(0)[0] === 0.5);
  const b = ctx.sources.find((s) => s.buffer.getChannelData(0)[0] === 1000 / 32768);
  assert.ok(a && b);
  assert.equal(a.loop, true);
  t.player.stop('a.au');
  assert.equal(a.stopped, 1);
  assert.equal(b.stopped, 0);
  t.player.stopAll();
  assert.equal(b.stopped, 1);
});

test('a stop before loading finishes keeps the sound from starting', async () => {
  const t = setup({ 'a.au': CLICK });
  t.target.dispatch('pointerdown');
  await tick();
  t.player.play('a.au', true);
  t.player.stop('a.au');
  await tick();
  await tick();
  assert.equal(t.audio.made[0].sources.length, 0);
});

test('a loop asked for before the gesture starts once audio is allowed', async () => {
  const t = setup({ 'tune.au': CLICK, 'x.au': CLICK });
  t.player.play('tune.au', true);
  t.player.play('x.au', true);
  await tick();
  t.player.stop('x.au');
  t.target.dispatch('pointerdown');
  await tick();
  const ctx = t.audio.made[0];
  assert.equal(ctx.sources.length, 1);
  assert.equal(ctx.sources[0].loop, true);
  assert.equal(ctx.sources[0].started, 1);
});

test('missing and broken sounds are silent with a single warning', async () => {
  const t = setup({ 'bad.au': au({ encoding: 27, data: [0] }) });
  t.target.dispatch('pointerdown');
  await tick();
  assert.doesNotThrow(() => {
    t.player.play('missing.au', false);
    t.player.play('bad.au', true);
  });
  await tick();
  await tick();
  t.player.play('missing.au', false);
  await tick();
  assert.equal(t.audio.made[0].sources.length, 0);
  assert.equal(t.warnings.length, 1);
  assert.match(t.warnings[0], /\.au/);
  assert.equal(await t.player.load('missing.au'), null);
  assert.deepEqual(t.net.calls.filter((u) => u === 'missing.au'), ['missing.au']);
});

test('a fetch that rejects is silent too', async () => {
  const warnings = [];
  const audio = fakeAudio();
  const player = new KP.SoundPlayer({
    fetch: () => Promise.reject(new Error('offline')), AudioContext: audio.Ctx,
    gestureTarget: new FakeTarget(), warn: (m) => warnings.push(m) });
  player.play('a.au', false);
  assert.equal(await player.load('a.au'), null);
  assert.equal(warnings.length, 1);
  assert.match(warnings[0], /offline/);
});

test('without Web Audio nothing throws', async () => {
  const target = new FakeTarget();
  const net = fakeFetch({ 'a.au': CLICK });
  const player = new KP.SoundPlayer({ fetch: net.fetch, AudioContext: null, gestureTarget: target,
                                      warn: () => {} });
  target.dispatch('pointerdown');
  player.play('a.au', true);
  await tick();
  player.stop('a.au');
  player.stopAll();
  assert.equal(player.ready, false);
  assert.ok(await player.load('a.au'), 'the sound still decodes');
});
