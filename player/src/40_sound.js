
// --- Sounds ------------------------------------------------------------------
//
// The bars' sounds are Sun AU files, which no browser plays, so they are
// decoded here and handed to Web Audio as ready sample buffers.

const AU_MAGIC = 0x2e736e64;  // ".snd"
const AU_UNKNOWN_SIZE = 0xffffffff;
const AU_HEADER_MIN = 24;
// More channels than this is a damaged header, not a sound; refusing it
// keeps a garbage file from asking for absurd allocations.
const AU_MAX_CHANNELS = 32;

// G.711 mu-law to 16-bit linear, the standard table computed once.
const au_MULAW = (function () {
  const t = new Int16Array(256);
  for (let i = 0; i < 256; i++) {
    const u = ~i & 0xff;
    let v = ((u & 0x0f) << 3) + 0x84;
    v <<= (u & 0x70) >> 4;
    t[i] = (u & 0x80) ? 0x84 - v : v - 0x84;
  }
  return t;
})();

// Never throws: a sound that cannot be read is simply no sound.
KP.decodeAU = function (arrayBuffer) {
  try {
    return au_decode(arrayBuffer);
  } catch (e) {
    return null;
  }
};

function au_decode(buf) {
  if (!buf) return null;
  if (ArrayBuffer.isView(buf)) {
    buf = buf.buffer.slice(buf.byteOffset, buf.byteOffset + buf.byteLength);
  }
  if (!(buf instanceof ArrayBuffer) && Object.prototype.toString.call(buf) !== '[object ArrayBuffer]') {
    return null;
  }
  if (buf.byteLength < AU_HEADER_MIN) return null;
  const dv = new DataView(buf);
  if (dv.getUint32(0, false) !== AU_MAGIC) return null;
  const offset = dv.getUint32(4, false);
  let size = dv.getUint32(8, false);
  const encoding = dv.getUint32(12, false);
  const sampleRate = dv.getUint32(16, false);
  const channels = dv.getUint32(20, false);
  if (offset < AU_HEADER_MIN || offset > buf.byteLength) return null;
  if (sampleRate === 0 || channels === 0 || channels > AU_MAX_CHANNELS) return null;
  let bytes;
  if (encoding === 1 || encoding === 2) bytes = 1;
  else if (encoding === 3) bytes = 2;
  else return null;
  const available = buf.byteLength - offset;
  // A file cut short still plays what it holds, as the old player did.
  if (size === AU_UNKNOWN_SIZE || size > available) size = available;
  const frames = Math.floor(size / (bytes * channels));
  const samples = [];
  for (let c = 0; c < channels; c++) samples.push(new Float32Array(frames));
  let p = offset;
  for (let f = 0; f < frames; f++) {
    for (let c = 0; c < channels; c++) {
      let v;
      if (encoding === 1) {
        v = au_MULAW[dv.getUint8(p)] / 32768;
      } else if (encoding === 2) {
        v = dv.getInt8(p) / 128;
      } else {
        v = dv.getInt16(p, false) / 32768;
      }
      samples[c][f] = v;
      p += bytes;
    }
  }
  return { sampleRate, channels, samples };
}

// --- Playing -------------------------------------------------------------------
//
// Browsers refuse to start audio until the reader has interacted with the
// page, and warn about every context made before that. So the context is
// made on the first pointer or key event only; sounds asked for before
// then are silent, except loops, which start once audio is allowed (a bar
// whose start program loops a tune should not lose it for good).
//
// options (all optional, for tests and unusual pages):
//   fetch(url) -> Promise<Response>     default: the page's fetch
//   AudioContext                         default: the page's (or webkit's)
//   gestureTarget                        where to listen for the first
//                                        gesture; default: the document
//   warn(message)                        default: console.warn

const AU_GESTURES = ['pointerdown', 'mousedown', 'touchend', 'keydown'];

KP.SoundPlayer = class {
  constructor(options) {
    const o = options || {};
    const g = typeof global !== 'undefined' ? global : globalThis;
    this._fetch = o.fetch || (typeof g.fetch === 'function' ? g.fetch.bind(g) : null);
    this._Ctx = o.AudioContext || g.AudioContext || g.webkitAudioContext || null;
    this._warn = o.warn || function (m) { if (typeof console !== 'undefined') console.warn(m); };
    this._target = o.gestureTarget !== undefined ? o.gestureTarget : (g.document || null);
    this._ctx = null;
    this._loads = new Map();     // url -> Promise<decoded AU or null>
    this._decoded = new Map();   // url -> decoded AU (null when it failed)
    this._buffers = new Map();   // url -> AudioBuffer
    this._playing = new Map();   // url -> Set of source nodes
    this._wanted = new Map();    // url -> generation; a stop makes pending plays stale
    this._pendingLoops = new Set();
    this._warned = false;
    this._onGesture = () => this.unlock();
    this._listening = false;
    if (this._target && typeof this._target.addEventListener === 'function') {
      for (const t of AU_GESTURES) this._target.addEventListener(t, this._onGesture, true);
      this._listening = true;
    }
  }

  // True once a context exists and is not suspended.
  get ready() {
    return !!this._ctx && this._ctx.state !== 'suspended' && this._ctx.state !== 'closed';
  }

  // Meant to be called from inside a user gesture; the bar may call it from
  // its own handlers as well.
  unlock() {
    if (!this._Ctx) return;
    try {
      if (!this._ctx) this._ctx = new this._Ctx();
      const ctx = this._ctx;
      if (ctx.state === 'suspended' && typeof ctx.resume === 'function') {
        const r = ctx.resume();
        if (r && typeof r.then === 'function') {
          r.then(() => this._afterUnlock(), () => {});
        }
      }
      this._afterUnlock();
    } catch (e) {
      this._warnOnce('Kestrel Pane: audio could not start (' + au_text(e) + ')');
    }
  }

  _afterUnlock() {
    if (!this.ready) return;
    if (this._listening) {
      for (const t of AU_GESTURES) this._target.removeEventListener(t, this._onGesture, true);
      this._listening = false;
    }
    const loops = Array.from(this._pendingLoops);
    this._pendingLoops.clear();
    for (const url of loops) this._start(url, true);
  }

  // Fetches and decodes; resolves to the decoded sound or null, never rejects.
  load(url) {
    const key = String(url);
    let p = this._loads.get(key);
    if (p) return p;
    p = this._fetchDecode(key).then((d) => {
      this._decoded.set(key, d);
      return d;
    });
    this._loads.set(key, p);
    return p;
  }

  async _fetchDecode(url) {
    try {
      if (!this._fetch) throw new Error('no fetch');
      const res = await this._fetch(url);
      if (!res || (res.ok === false)) throw new Error('HTTP ' + (res ? res.status : '?'));
      const data = await res.arrayBuffer();
      const d = KP.decodeAU(data);
      if (!d) throw new Error('not a sound this player reads');
      return d;
    } catch (e) {
      this._warnOnce('Kestrel Pane: sound ' + url + ' stays silent (' + au_text(e) + ')');
      return null;
    }
  }

  _warnOnce(message) {
    if (this._warned) return;
    this._warned = true;
    try { this._warn(message); } catch (e) { /* a warning must not break the bar */ }
  }

  // Starts the sound from its beginning; a copy of it still sounding is
  // cut, as the applet's clips did, so quick repeats never pile up.
  play(url, loop) {
    const key = String(url);
    const gen = (this._wanted.get(key) || 0) + 1;
    this._wanted.set(key, gen);
    if (this._decoded.has(key)) {
      this._start(key, !!loop);
      return;
    }
    this.load(key).then(() => {
      if (this._wanted.get(key) === gen) this._start(key, !!loop);
    });
  }

  _start(url, loop) {
    const d = this._decoded.get(url);
    if (!d || d.samples.length === 0 || d.samples[0].length === 0) return;
    if (!this.ready) {
      if (loop) this._pendingLoops.add(url);
      return;
    }
    try {
      this._stopSources(url);
      const ctx = this._ctx;
      let buffer = this._buffers.get(url);
      if (!buffer) {
        buffer = ctx.createBuffer(d.channels, d.samples[0].length, d.sampleRate);
        for (let c = 0; c < d.channels; c++) {
          if (typeof buffer.copyToChannel === 'function') buffer.copyToChannel(d.samples[c], c);
          else buffer.getChannelData(c).set(d.samples[c]);
        }
        this._buffers.set(url, buffer);
      }
      const src = ctx.createBufferSource();
      src.buffer = buffer;
      src.loop = loop;
      src.connect(ctx.destination);
      let set = this._playing.get(url);
      if (!set) this._playing.set(url, (set = new Set()));
      set.add(src);
      src.onended = () => set.delete(src);
      src.start(0);
    } catch (e) {
      this._warnOnce('Kestrel Pane: sound ' + url + ' could not play (' + au_text(e) + ')');
    }
  }

  _stopSources(url) {
    const set = this._playing.get(url);
    if (!set) return;
    for (const src of set) {
      try { src.stop(0); } catch (e) { /* already stopped */ }
    }
    set.clear();
  }

  stop(url) {
    const key = String(url);
    this._wanted.set(key, (this._wanted.get(key) || 0) + 1);
    this._pendingLoops.delete(key);
    this._stopSources(key);
  }

  stopAll() {
    for (const key of Array.from(this._wanted.keys())) this.stop(key);
    for (const key of Array.from(this._playing.keys())) this._stopSources(key);
  }
};

function au_text(e) {
  return e && e.message ? e.message : String(e);
}
