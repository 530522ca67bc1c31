
// --- The live bar ------------------------------------------------------------
//
// One bar stands in for one applet block: a canvas that shows the scene's
// pixels, an invisible focusable element over every button for the
// keyboard and assistive technology, a tooltip, the pointer, keyboard and
// touch handling, scrolling, sounds and links. The bar is also the host
// the action programs act on (see 50_actions.js for the calls it answers).
//
// Nothing here may stop the bar: every handler, program, picture and sound
// failure is caught, warned about once on the console, and the bar goes on.

const BAR_UP = 1, BAR_OVER = 2, BAR_DOWN = 3;
const BAR_FONTS = ['Arial, Helvetica, sans-serif', '"Courier New", Courier, monospace',
  '"Times New Roman", Times, serif'];
// Scrolling faster than this only burns the processor; the old applets
// could not go faster either.
const BAR_MIN_SCROLL_DELAY = 10;
const BAR_STYLE_ID = 'kestrelpane-bar-style';

function barNow() {
  return (typeof performance !== 'undefined' && performance.now) ? performance.now() : Date.now();
}

// Model colours keep red in the low byte.
function barCss(c) {
  c = Number(c) >>> 0;
  return 'rgb(' + (c & 255) + ',' + ((c >> 8) & 255) + ',' + ((c >> 16) & 255) + ')';
}

function barLuminance(c) {
  c = Number(c) >>> 0;
  return 0.2126 * (c & 255) + 0.7152 * ((c >> 8) & 255) + 0.0722 * ((c >> 16) & 255);
}

function barFont(nameIndex, sizePx, style) {
  const family = BAR_FONTS[nameIndex] || BAR_FONTS[0];
  const size = sizePx > 0 ? sizePx : 12;
  return ((style & 2) ? 'italic ' : '') + ((style & 1) ? 'bold ' : '') + size + 'px ' + family;
}

// A label as words: line breaks and the blank escapes read as spaces.
KP.labelText = function (label) {
  return String(label || '').replace(/\\n/g, ' ').split('&!0').join(' ')
    .split('&nbsp').join(' ').replace(/\s+/g, ' ').trim();
};

function barIntersect(r, w, h) {
  const x0 = Math.max(0, r.x), y0 = Math.max(0, r.y);
  const x1 = Math.min(w, r.x + r.w), y1 = Math.min(h, r.y + r.h);
  return x1 > x0 && y1 > y0 ? { x: x0, y: y0, w: x1 - x0, h: y1 - y0 } : null;
}

function barUnion(a, b) {
  if (!a) return b;
  if (!b) return a;
  const x = Math.min(a.x, b.x), y = Math.min(a.y, b.y);
  return { x: x, y: y, w: Math.max(a.x + a.w, b.x + b.w) - x, h: Math.max(a.y + a.h, b.y + b.h) - y };
}

function barOverlaps(a, b) {
  return a.x < b.x + b.w && b.x < a.x + a.w && a.y < b.y + b.h && b.y < a.y + a.h;
}

function barInstallStyle(doc) {
  if (doc.getElementById(BAR_STYLE_ID)) return;
  const style = doc.createElement('style');
  style.id = BAR_STYLE_ID;
  style.textContent =
    '.kestrelpane-bar{display:inline-block;position:relative;line-height:0;vertical-align:baseline;' +
    'touch-action:manipulation;-webkit-user-select:none;user-select:none}' +
    '.kestrelpane-bar>canvas{display:block;image-rendering:crisp-edges;image-rendering:pixelated}' +
    '.kestrelpane-key{position:absolute;display:block;margin:0;padding:0;border:0;' +
    'background:transparent;color:transparent;font-size:0;line-height:0;overflow:hidden;' +
    'pointer-events:none;outline:none;text-decoration:none}' +
    '.kestrelpane-key[hidden]{display:none}' +
    // Two rings in opposite colours, so the focus shows on any face.
    '.kestrelpane-key:focus{outline:2px solid #000;outline-offset:0;box-shadow:0 0 0 4px #fff;z-index:1}' +
    '.kestrelpane-key.kp-dark:focus{outline-color:#fff;box-shadow:0 0 0 4px #000}' +
    '.kestrelpane-tip{position:absolute;z-index:2147483647;pointer-events:none;' +
    'white-space:pre;padding:1px 3px;line-height:normal;box-sizing:border-box}';
  (doc.head || doc.documentElement).appendChild(style);
}

KP.Bar = class {
  constructor(host, applet, buttons, options) {
    const o = options || {};
    const doc = host.ownerDocument;
    const win = doc.defaultView || global;
    this.host = host;
    this.applet = applet;
    this.buttons = buttons;
    this.name = o.name || '';
    this.imgBase = o.imgBase || doc.baseURI;
    this.sndBase = o.sndBase || this.imgBase;
    this.doc = doc;
    this.win = win;
    this.count = buttons.length - 1;
    this.W = Math.max(1, applet.AppletWidth | 0);
    this.H = Math.max(1, applet.AppletHeight | 0);
    this.drawn = false;
    this.scene = null;
    // Milestones since the page's start, for benchmarks.
    this.timing = { created: barNow(), picturesLoaded: 0, buttonsDrawn: 0, drawn: 0 };
    this.lastFaceSwitchMs = 0;
    this.faceSwitches = 0;

    this._warned = new Set();
    this._hover = 0;        // the button under the pointer
    this._focus = 0;        // the button whose key element has the focus
    this._pressed = 0;      // the button pressed and not yet released
    this._pressedBy = '';   // 'mouse', 'pen', 'touch' or 'key'
    this._checked = 0;      // the radio button that stays down
    this._pointerIn = false;
    this._appletEngaged = false;
    this._dirty = null;
    this._flushQueued = false;
    this._tip = null;
    this._tipShowTimer = 0;
    this._tipHideTimer = 0;
    this._scrollTimer = 0;
    this._names = null;
    this._keys = [null];

    let mq = null;
    try {
      mq = win.matchMedia ? win.matchMedia('(prefers-reduced-motion: reduce)') : null;
    } catch (e) { mq = null; }
    this._motionQuery = mq;

    try {
      this.sound = new KP.SoundPlayer({ warn: (m) => this.warn(m) });
    } catch (e) {
      this.sound = null;
    }

    barInstallStyle(doc);
    host.classList.add('kestrelpane-bar');
    host.style.width = this.W + 'px';
    host.style.height = this.H + 'px';
    if (this.name && !host.hasAttribute('aria-label')) host.setAttribute('aria-label', this.name);
    if (!host.hasAttribute('role')) host.setAttribute('role', 'group');

    const canvas = doc.createElement('canvas');
    canvas.setAttribute('aria-hidden', 'true');
    canvas.style.width = this.W + 'px';
    canvas.style.height = this.H + 'px';
    this.canvas = canvas;
    this._ctx = null;
    this._scale = 0;
    host.appendChild(canvas);
    this._resizeBacking();

    // The composed pixels, seen by the canvas as RGBA bytes.
    this._px = new Uint32Array(this.W * this.H);
    this._image = new ImageData(new Uint8ClampedArray(this._px.buffer), this.W, this.H);

    this._makeKeys();
    this._listen();

    this.timing.constructed = barNow();
    this.ready = this._start().catch((e) => {
      this.warn('Kestrel Pane: the bar could not be drawn (' + barMessage(e) + ')');
    }).then(() => this);
  }

  // --- Drawing -----------------------------------------------------------------

  // When the bar was first drawn, in the page's milliseconds.
  get drawnAt() {
    return this.drawn ? this.timing.drawn : undefined;
  }

  get reducedMotion() {
    return !!(this._motionQuery && this._motionQuery.matches);
  }

  // A whole number of device pixels per applet pixel: a fraction would make
  // the browser blend neighbouring pixels, and a bar is pixel art.
  _deviceScale() {
    const r = Number(this.win.devicePixelRatio) || 1;
    return Math.max(1, Math.min(8, Math.ceil(r - 0.01)));
  }

  _resizeBacking() {
    const s = this._deviceScale();
    if (s === this._scale && this._ctx) return false;
    this._scale = s;
    this.canvas.width = this.W * s;
    this.canvas.height = this.H * s;
    this._ctx = this.canvas.getContext('2d', { alpha: false });
    this._ctx.imageSmoothingEnabled = false;
    if (s > 1) {
      if (!this._off) {
        this._off = this.doc.createElement('canvas');
        this._off.width = this.W;
        this._off.height = this.H;
        this._offCtx = this._off.getContext('2d', { alpha: false });
      }
    }
    return true;
  }

  // The faces that need no picture are drawn while the pictures come in;
  // the background and the rest follow once they are all in. The scene is
  // the bar's only when everything is drawn, so nothing half-drawn shows.
  async _start() {
    const a = this.applet;
    if (a.bPreLoad && a.sLoading) this._drawLoading();
    else this._fill(a.BackGround);

    const pictures = new Map();
    const loading = this._loadPictures(pictures).catch((e) => {
      this.warn('Kestrel Pane: pictures could not be loaded (' + barMessage(e) + ')');
    });
    // A picture's request goes out from a microtask of its own; this lets
    // it go before the long drawing below.
    await null;

    let measure = null;
    try {
      measure = new KP.CanvasMeasure();
    } catch (e) {
      this.warn('Kestrel Pane: text cannot be measured (' + barMessage(e) + ')');
    }
    const scene = new KP.Scene(a, this.buttons, pictures, measure);
    const down = a.DOWNBtn | 0;
    for (let i = 1; i <= this.count; i++) scene.state[i] = i === down ? BAR_DOWN : BAR_UP;
    if (down >= 1 && down <= this.count && this.buttons[down].Radio) {
      this._checked = down;
      if (this._keys[down]) this._keys[down].setAttribute('aria-pressed', 'true');
    }
    // An opaque face without a picture depends on nothing but its record.
    const early = new Uint8Array(this.count + 1);
    for (let i = 1; i <= this.count; i++) {
      const b = this.buttons[i];
      const st = scene.state[i];
      if (b.noBackGround[st] || (b.Image[st] && b.ImgStyle[st] !== 9)) continue;
      early[i] = 1;
      this._redrawIn(scene, i);
    }
    this.timing.earlyDrawn = barNow();

    await loading;
    this.timing.picturesLoaded = barNow();
    try {
      scene.drawBackground();
    } catch (e) {
      this.warn('Kestrel Pane: the background could not be drawn (' + barMessage(e) + ')');
    }
    for (let i = 1; i <= this.count; i++) if (!early[i]) this._redrawIn(scene, i);
    this.timing.buttonsDrawn = barNow();

    this.scene = scene;
    this._invalidate({ x: 0, y: 0, w: this.W, h: this.H });
    this._flush();
    this.drawn = true;
    this.timing.drawn = barNow();

    this._preloadSounds();
    this._startScroll();
    this._run(a.AppletProgramStart);
  }

  // One bad button leaves the others drawn.
  _redrawIn(scene, i) {
    try {
      scene.redrawButton(i, false);
    } catch (e) {
      this.warn('Kestrel Pane: button ' + i + ' could not be drawn (' + barMessage(e) + ')');
    }
  }

  _fill(colour) {
    const ctx = this._ctx;
    ctx.setTransform(1, 0, 0, 1, 0, 0);
    ctx.fillStyle = barCss(colour);
    ctx.fillRect(0, 0, this.canvas.width, this.canvas.height);
  }

  // The text the applet showed while its pictures came in.
  _drawLoading() {
    const a = this.applet;
    this._fill(a.cLoadingBack);
    const ctx = this._ctx;
    const s = this._scale;
    ctx.setTransform(s, 0, 0, s, 0, 0);
    ctx.fillStyle = barCss(a.cLoadingFont);
    ctx.font = barFont(a.iLoadingFont_Name, a.iLoadingFont_Size, a.iLoadingFont_Style);
    ctx.textAlign = 'center';
    ctx.textBaseline = 'middle';
    ctx.fillText(a.sLoading, this.W / 2, this.H / 2);
    ctx.setTransform(1, 0, 0, 1, 0, 0);
    this.loadingShown = true;
  }

  // Every picture file the bar names, each fetched once, into `pictures`.
  _loadPictures(pictures) {
    const names = new Set();
    const a = this.applet;
    if (a.BackImg) names.add(a.BackImg);
    for (let i = 1; i <= this.count; i++) {
      const b = this.buttons[i];
      for (let s = 1; s <= 3; s++) {
        if (b.Image[s] && b.ImgStyle[s] !== 9) names.add(b.Image[s]);
      }
    }
    return Promise.all(Array.from(names).map(async (name) => {
      let pic = null;
      try {
        pic = await KP.loadPicture(new URL(name, this.imgBase).href);
      } catch (e) {
        pic = null;
      }
      if (!pic) this.warn('Kestrel Pane: picture ' + name + ' could not be loaded');
      pictures.set(name, pic);
    }));
  }

  _redraw(i, above) {
    if (!this.scene) return;
    try {
      this.scene.redrawButton(i, above !== false);
    } catch (e) {
      this.warn('Kestrel Pane: button ' + i + ' could not be drawn (' + barMessage(e) + ')');
    }
  }

  _rectOf(i) {
    const b = this.buttons[i];
    return { x: b.x | 0, y: b.y | 0, w: b.Width | 0, h: b.Height | 0 };
  }

  _transparent(i) {
    const b = this.buttons[i];
    const s = this.scene ? this.scene.state[i] : BAR_UP;
    return !!(b.noBackGround && b.noBackGround[s]);
  }

  // Transparent buttons above i that show part of `rect` copy what lies
  // under them, so they are painted again, lowest first.
  _redrawTransparentOver(i, rect) {
    let dirty = null;
    for (let j = i + 1; j <= this.count; j++) {
      if (!this._transparent(j)) continue;
      const r = this._rectOf(j);
      if (!barOverlaps(r, rect)) continue;
      this._redraw(j, false);
      dirty = barUnion(dirty, r);
    }
    return dirty;
  }

  _invalidate(rect) {
    const r = barIntersect(rect, this.W, this.H);
    if (!r) return;
    this._dirty = barUnion(this._dirty, r);
    if (!this._flushQueued) {
      this._flushQueued = true;
      const run = () => { this._flushQueued = false; this._flush(); };
      if (this.win.requestAnimationFrame) this.win.requestAnimationFrame(run);
      else setTimeout(run, 16);
    }
  }

  // Composes and shows what changed since the last flush.
  _flush() {
    if (!this.scene) return;
    const rescaled = this._resizeBacking();
    if (rescaled) this._dirty = { x: 0, y: 0, w: this.W, h: this.H };
    const r = this._dirty;
    if (!r) return;
    this._dirty = null;
    try {
      this._compose(r);
    } catch (e) {
      this.warn('Kestrel Pane: the bar could not be composed (' + barMessage(e) + ')');
      return;
    }
    const s = this._scale;
    if (s === 1) {
      this._ctx.putImageData(this._image, 0, 0, r.x, r.y, r.w, r.h);
    } else {
      this._offCtx.putImageData(this._image, 0, 0, r.x, r.y, r.w, r.h);
      this._ctx.imageSmoothingEnabled = false;
      this._ctx.drawImage(this._off, r.x, r.y, r.w, r.h, r.x * s, r.y * s, r.w * s, r.h * s);
    }
  }

  // The scene's composition of one rectangle only: the design surface and
  // the visible button surfaces that reach into it, in button order. A face
  // switch then costs its own rectangle, not the whole bar.
  _compose(r) {
    const scene = this.scene;
    const dst = { w: this.W, h: this.H, px: this._px };
    const x1 = r.x + r.w, y1 = r.y + r.h;
    KP.fillRect(dst, r.x, r.y, r.w, r.h, this.applet.BackGround);
    KP.bitBlt(dst, r.x, r.y, r.w, r.h, scene.design, r.x, r.y, KP.SRCCOPY);
    const surfaces = scene.surfaces;
    for (let i = 1; i <= this.count; i++) {
      const s = surfaces[i];
      if (!s || this.buttons[i].Hidden || !s.w || !s.h) continue;
      const ax = Math.max(r.x, s.Left), ay = Math.max(r.y, s.Top);
      const bx = Math.min(x1, s.Left + s.w), by = Math.min(y1, s.Top + s.h);
      if (bx <= ax || by <= ay) continue;
      KP.bitBlt(dst, ax, ay, bx - ax, by - ay, s, ax - s.Left, ay - s.Top, KP.SRCCOPY);
    }
  }

  // The composed pixels, applet-sized: what the bar shows, device pixels
  // aside.
  pixels() {
    this._flush();
    return this._px.slice();
  }

  // Shows state `state` on button i; `flush` puts it on screen at once
  // (an answer to the visitor) instead of with the next frame.
  _setFace(i, state, flush) {
    if (!this.scene || i < 1 || i > this.count) return;
    const t0 = barNow();
    if (this.scene.state[i] === state) return;
    this.scene.state[i] = state;
    // The transparent buttons above are painted again with it; what they
    // show of it lies inside its own rectangle.
    this._redraw(i, true);
    this._invalidate(this._rectOf(i));
    if (flush) {
      this._flush();
      this.lastFaceSwitchMs = barNow() - t0;
      this.faceSwitches++;
    }
  }

  // --- Keyboard elements -------------------------------------------------------

  _accessibleName(b) {
    return KP.labelText(b.Label[BAR_UP]) || String(b.Tip || '').replace(/\\n/g, ' ').trim() ||
      KP.labelText(b.sBName) || ('Button ' + b.index);
  }

  _makeKeys() {
    const doc = this.doc;
    const frag = doc.createDocumentFragment();
    for (let i = 1; i <= this.count; i++) {
      const b = this.buttons[i];
      const url = String(b.URL || '').trim();
      let el;
      if (url && !/^javascript:/i.test(url)) {
        // The page resolves it as it resolves its own links.
        el = doc.createElement('a');
        el.setAttribute('href', url);
        if (b.Target) el.target = b.Target;
      } else {
        el = doc.createElement('span');
        el.setAttribute('role', url ? 'link' : 'button');
        el.tabIndex = 0;
      }
      // The ring stands on the OVER face, which focus shows.
      el.className = barLuminance(b.BackColor[BAR_OVER]) < 128 ? 'kestrelpane-key kp-dark' : 'kestrelpane-key';
      el.setAttribute('aria-label', this._accessibleName(b));
      if (b.Radio) el.setAttribute('aria-pressed', 'false');
      el.dataset.kpButton = String(i);
      this._keys.push(el);
      frag.appendChild(el);
    }
    this.host.appendChild(frag);
    this._placeKeys();
  }

  // A key element covers the visible part of its button; a button hidden or
  // wholly outside the applet cannot be reached.
  _placeKey(i) {
    const el = this._keys[i];
    if (!el) return;
    const b = this.buttons[i];
    const r = b.Hidden ? null : barIntersect(this._rectOf(i), this.W, this.H);
    if (!r) {
      if (!el.hidden) el.hidden = true;
      return;
    }
    if (el.hidden) el.hidden = false;
    // Scrolling places every key each step; unchanged ones cost nothing.
    const at = 'left:' + r.x + 'px;top:' + r.y + 'px;width:' + r.w + 'px;height:' + r.h + 'px';
    if (el._kpAt === at) return;
    el._kpAt = at;
    el.style.cssText = at;
  }

  _placeKeys() {
    for (let i = 1; i <= this.count; i++) this._placeKey(i);
  }

  // --- Events ----------------------------------------------------------------

  _listen() {
    const h = this.host;
    const guard = (fn) => (e) => {
      try {
        fn.call(this, e);
      } catch (err) {
        this.warn('Kestrel Pane: ' + e.type + ' failed (' + barMessage(err) + ')');
      }
    };
    h.addEventListener('pointerenter', guard(this._onPointerEnter));
    h.addEventListener('pointermove', guard(this._onPointerMove));
    h.addEventListener('pointerdown', guard(this._onPointerDown));
    h.addEventListener('pointerup', guard(this._onPointerUp));
    h.addEventListener('pointercancel', guard(this._onPointerCancel));
    h.addEventListener('pointerleave', guard(this._onPointerLeave));
    h.addEventListener('dragstart', (e) => e.preventDefault());
    h.addEventListener('focusin', guard(this._onFocusIn));
    h.addEventListener('focusout', guard(this._onFocusOut));
    h.addEventListener('keydown', guard(this._onKeyDown));
    h.addEventListener('keyup', guard(this._onKeyUp));
    h.addEventListener('click', guard(this._onClick));
    // A zoom or a move to another screen changes the device pixels.
    this.win.addEventListener('resize', guard(() => {
      if (this.scene && this._deviceScale() !== this._scale) this._invalidate({ x: 0, y: 0, w: this.W, h: this.H });
    }));
  }

  // The topmost visible button under an applet point: the highest number.
  hitTest(x, y) {
    if (x < 0 || y < 0 || x >= this.W || y >= this.H) return 0;
    for (let i = this.count; i >= 1; i--) {
      const b = this.buttons[i];
      if (b.Hidden) continue;
      if (x >= b.x && x < b.x + b.Width && y >= b.y && y < b.y + b.Height) return i;
    }
    return 0;
  }

  _point(e) {
    const r = this.host.getBoundingClientRect();
    return { x: Math.floor(e.clientX - r.left), y: Math.floor(e.clientY - r.top) };
  }

  _engaged(i) {
    return i !== 0 && (this._hover === i || this._focus === i);
  }

  // The face a button shows after the visitor's last act.
  _faceFor(i) {
    if (this._pressed === i) return BAR_DOWN;
    if (this._checked === i) return BAR_DOWN;
    if (this._engaged(i)) return BAR_OVER;
    return BAR_UP;
  }

  _engageApplet() {
    if (this._appletEngaged) return;
    this._appletEngaged = true;
    this._run(this.applet.AppletProgramOVER);
  }

  _releaseApplet() {
    if (!this._appletEngaged || this._pointerIn || this._focus) return;
    this._appletEngaged = false;
    this._run(this.applet.AppletProgramOUT);
  }

  // Sounds follow the face: entering a state plays its sound, leaving it
  // stops the sound when the author asked for that.
  _soundLeave(i, state) {
    const b = this.buttons[i];
    if (b.SoundStop[state] && b.Snd[state]) this._stopSound(b.Snd[state]);
  }

  _soundEnter(i, state) {
    const b = this.buttons[i];
    if (b.Snd[state]) this._playSound(b.Snd[state], b.SoundLoop[state]);
  }

  _soundUrl(file) {
    try {
      return new URL(file, this.sndBase).href;
    } catch (e) {
      return this.sndBase + file;
    }
  }

  _playSound(file, loop) {
    if (!this.sound) return;
    try {
      this.sound.unlock();
      this.sound.play(this._soundUrl(file), !!loop);
    } catch (e) {
      this.warn('Kestrel Pane: sound ' + file + ' could not play (' + barMessage(e) + ')');
    }
  }

  _stopSound(file) {
    if (!this.sound) return;
    try {
      this.sound.stop(this._soundUrl(file));
    } catch (e) { /* a sound that will not stop is no reason to stop the bar */ }
  }

  _preloadSounds() {
    if (!this.sound || typeof this.sound.load !== 'function') return;
    const files = new Set();
    for (let i = 1; i <= this.count; i++) {
      for (let s = 1; s <= 3; s++) if (this.buttons[i].Snd[s]) files.add(this.buttons[i].Snd[s]);
    }
    for (const f of files) {
      try { this.sound.load(this._soundUrl(f)); } catch (e) { /* played later or never */ }
    }
  }

  // Button i became engaged (pointer over it or focus on it).
  _enter(i, how) {
    if (!i) return;
    const state = this._faceFor(i);
    const before = this.scene ? this.scene.state[i] : BAR_UP;
    this._setFace(i, state, true);
    if (state !== before) {
      this._soundLeave(i, before);
      this._soundEnter(i, state);
    }
    this._run(this.buttons[i].ProgramOVER);
    this._scheduleTip(i, how);
  }

  // Button i is no longer engaged.
  _leave(i) {
    if (!i) return;
    if (this._pressed === i) this._pressed = 0;
    this._hideTip();
    const before = this.scene ? this.scene.state[i] : BAR_UP;
    const state = this._faceFor(i);
    this._setFace(i, state, true);
    if (state !== before) {
      this._soundLeave(i, before);
      this._soundEnter(i, state);
    }
    this._run(this.buttons[i].ProgramLEAVE);
  }

  _setHover(i, e) {
    if (i === this._hover) return;
    const old = this._hover;
    this._hover = i;
    if (old && this._focus !== old) this._leave(old);
    if (i && this._focus !== i) this._enter(i, e);
    const b = i ? this.buttons[i] : null;
    this.canvas.style.cursor = b && b.ShowHand ? 'pointer' : '';
  }

  _onPointerEnter(e) {
    this._pointerIn = true;
    this._engageApplet();
    const p = this._point(e);
    this._lastPointer = e;
    this._lastAt = p;
    this._setHover(this.hitTest(p.x, p.y), e);
  }

  _onPointerMove(e) {
    if (!this._pointerIn) {
      this._pointerIn = true;
      this._engageApplet();
    }
    const p = this._point(e);
    this._lastPointer = e;
    this._lastAt = p;
    this._setHover(this.hitTest(p.x, p.y), e);
    if (this._tip && this._tip.dataset.how === 'pointer') this._moveTip(e);
  }

  _onPointerDown(e) {
    if (e.button !== 0) return;
    const p = this._point(e);
    this._lastAt = p;
    const i = this.hitTest(p.x, p.y);
    this._pointerIn = true;
    this._engageApplet();
    this._setHover(i, e);
    this._run(this.applet.AppletProgramDOWN);
    if (!i) return;
    // The pointer stays with the bar until it is released, so a release
    // off the button is seen and does nothing.
    try { this.host.setPointerCapture(e.pointerId); } catch (err) { /* not capturable */ }
    if (e.pointerType !== 'touch') e.preventDefault();
    this._press(i, e.pointerType || 'mouse');
  }

  _onPointerUp(e) {
    if (e.button !== 0 && e.button !== -1) return;
    const i = this._pressed;
    const p = this._point(e);
    const over = this.hitTest(p.x, p.y);
    try { this.host.releasePointerCapture(e.pointerId); } catch (err) { /* never captured */ }
    if (i && this._pressedBy !== 'key') {
      if (over === i) this._release(i);
      else this._cancelPress();
    }
    // A finger leaves nothing behind to hover: the tapped button goes back
    // up at once instead of keeping its OVER face until the next touch.
    if (e.pointerType === 'touch') this._pointerGone();
  }

  _onPointerCancel() {
    if (this._pressedBy !== 'key') this._cancelPress();
    this._pointerGone();
  }

  _onPointerLeave(e) {
    // A captured pointer that wanders off is still ours until released.
    if (this._pressed && this._pressedBy !== 'key' && this._pressedBy !== 'touch' &&
        e.pointerType !== 'touch' && this.host.hasPointerCapture &&
        this.host.hasPointerCapture(e.pointerId)) {
      this._setHover(0, e);
      return;
    }
    this._pointerGone();
  }

  _pointerGone() {
    this._lastAt = null;
    this._setHover(0, null);
    this._pointerIn = false;
    this._releaseApplet();
  }

  _press(i, by) {
    if (this._pressed && this._pressed !== i) this._cancelPress();
    this._pressed = i;
    this._pressedBy = by;
    this._hideTip();
    const before = this.scene ? this.scene.state[i] : BAR_UP;
    this._setFace(i, BAR_DOWN, true);
    if (before !== BAR_DOWN) this._soundLeave(i, before);
    this._soundEnter(i, BAR_DOWN);
    this._run(this.buttons[i].ProgramDOWN);
  }

  _cancelPress() {
    const i = this._pressed;
    if (!i) return;
    this._pressed = 0;
    this._pressedBy = '';
    const state = this._faceFor(i);
    this._setFace(i, state, true);
    if (state !== BAR_DOWN) this._soundLeave(i, BAR_DOWN);
  }

  // A completed click: the UP program, the radio group, then the link.
  // A radio button stays down once checked; the one it replaces pops up.
  _release(i) {
    this._pressed = 0;
    this._pressedBy = '';
    const b = this.buttons[i];
    let checkedNow = false;
    let unchecked = 0;
    if (b.Radio && this._checked !== i) {
      unchecked = this._checked;
      this._checked = i;
      checkedNow = true;
    }
    const state = this._faceFor(i);
    this._setFace(i, state, true);
    if (state !== BAR_DOWN) this._soundLeave(i, BAR_DOWN);
    this._run(b.ProgramUP);
    if (checkedNow) {
      if (this._keys[i]) this._keys[i].setAttribute('aria-pressed', 'true');
      this._run(b.ProgramCHECK);
    }
    if (unchecked) {
      this._setFace(unchecked, this._faceFor(unchecked), true);
      if (this._keys[unchecked]) this._keys[unchecked].setAttribute('aria-pressed', 'false');
      this._run(this.buttons[unchecked].ProgramUNCHECK);
    }
    this._follow(b);
  }

  _onFocusIn(e) {
    const i = Number(e.target && e.target.dataset ? e.target.dataset.kpButton : 0) || 0;
    if (!i || i === this._focus) return;
    const old = this._focus;
    this._focus = i;
    if (old && this._hover !== old) this._leave(old);
    this._engageApplet();
    if (this._hover !== i) this._enter(i, 'focus');
  }

  _onFocusOut(e) {
    const next = e.relatedTarget;
    const i = this._focus;
    if (!i) return;
    if (next && this.host.contains(next) && next.dataset && next.dataset.kpButton) return;
    this._focus = 0;
    if (this._pressedBy === 'key' && this._pressed === i) this._cancelPress();
    if (this._hover !== i) this._leave(i);
    this._releaseApplet();
  }

  _keyButton(e) {
    const i = Number(e.target && e.target.dataset ? e.target.dataset.kpButton : 0) || 0;
    return i >= 1 && i <= this.count ? i : 0;
  }

  _onKeyDown(e) {
    if (e.key !== 'Enter' && e.key !== ' ' && e.key !== 'Spacebar') return;
    const i = this._keyButton(e);
    if (!i) return;
    e.preventDefault();
    if (e.repeat || (this._pressed === i && this._pressedBy === 'key')) return;
    this._run(this.applet.AppletProgramDOWN);
    this._press(i, 'key');
  }

  _onKeyUp(e) {
    if (e.key !== 'Enter' && e.key !== ' ' && e.key !== 'Spacebar') return;
    const i = this._keyButton(e);
    if (!i) return;
    e.preventDefault();
    if (this._pressed === i && this._pressedBy === 'key') this._release(i);
  }

  // Key elements take no pointer events, so a click on one comes from
  // assistive technology or a script: a whole press and release.
  _onClick(e) {
    const i = this._keyButton(e);
    if (!i) return;
    e.preventDefault();
    this._press(i, 'key');
    this._release(i);
  }

  // --- Links ----------------------------------------------------------------

  // Empty target is the page itself; the four reserved names are the
  // browser's own; any other name is a frame or window of that name.
  _follow(b) {
    const raw = String(b.URL || '').trim();
    if (!raw) return;
    if (/^javascript:/i.test(raw)) {
      let code = raw.slice(raw.indexOf(':') + 1);
      try { code = decodeURIComponent(code); } catch (e) { /* used as it stands */ }
      try {
        this.callScript(code);
      } catch (e) {
        this.warn('Kestrel Pane: link script failed (' + barMessage(e) + ')');
      }
      return;
    }
    let url;
    try {
      url = new URL(raw, this.doc.baseURI).href;
    } catch (e) {
      this.warn('Kestrel Pane: link ' + raw + ' is not an address');
      return;
    }
    const target = String(b.Target || '').trim();
    const t = target.toLowerCase();
    const win = this.win;
    try {
      if (t === '' || t === '_self') win.location.assign(url);
      else if (t === '_parent') win.parent.location.assign(url);
      else if (t === '_top') win.top.location.assign(url);
      else if (t === '_blank') win.open(url, '_blank');
      else win.open(url, target);
    } catch (e) {
      // A parent of another origin cannot be told where to go; a window of
      // that name still can.
      try { win.open(url, target || '_self'); } catch (e2) {
        this.warn('Kestrel Pane: link ' + url + ' could not be followed');
      }
    }
  }

  // --- Tooltip ----------------------------------------------------------------

  // The tip shows the button's Tip; the Status text, which once went to the
  // browser's status bar that today's browsers no longer let pages set,
  // becomes the tip's second line (or the whole tip when there is no Tip).
  _tipText(i) {
    const b = this.buttons[i];
    const tip = String(b.Tip || '').replace(/\\n/g, '\n');
    const status = String(b.Status || '');
    if (tip && status) return tip + '\n' + status;
    return tip || status;
  }

  _scheduleTip(i, how) {
    this._hideTip();
    const text = this._tipText(i);
    if (!text) return;
    const delay = Math.max(0, this.applet.iTipDelay | 0);
    const ev = how && how !== 'focus' ? how : null;
    this._tipShowTimer = setTimeout(() => {
      this._tipShowTimer = 0;
      try {
        if (!this._engaged(i) || this._pressed) return;
        this._showTip(i, text, ev ? (this._lastPointer || ev) : null);
      } catch (e) {
        this.warn('Kestrel Pane: tip failed (' + barMessage(e) + ')');
      }
    }, delay);
  }

  _showTip(i, text, pointerEvent) {
    const a = this.applet;
    const doc = this.doc;
    const tip = doc.createElement('div');
    tip.className = 'kestrelpane-tip';
    tip.setAttribute('role', 'tooltip');
    tip.textContent = text;
    tip.style.background = barCss(a.cTipBackColor);
    tip.style.color = barCss(a.cTipTextColor);
    tip.style.border = Math.max(0, a.iTipBorderWidth | 0) + 'px solid ' + barCss(a.cTipBorderColor);
    tip.style.font = barFont(a.iTipFont, a.iTipFontSize, a.iTipFontStyle);
    tip.dataset.how = pointerEvent ? 'pointer' : 'focus';
    tip.dataset.button = String(i);
    (doc.body || doc.documentElement).appendChild(tip);
    this._tip = tip;
    if (pointerEvent) {
      this._moveTip(pointerEvent);
    } else {
      const hr = this.host.getBoundingClientRect();
      const b = this.buttons[i];
      this._placeTip(hr.left + b.x, hr.top + b.y + b.Height + 2);
    }
    const after = a.iTipHideAfter | 0;
    if (after > 0) this._tipHideTimer = setTimeout(() => this._hideTip(), after);
    if (this._keys[i]) {
      tip.id = tip.id || ('kestrelpane-tip-' + (++KP._tipCount || (KP._tipCount = 1)));
      this._keys[i].setAttribute('aria-describedby', tip.id);
    }
  }

  _moveTip(e) {
    if (!this._tip) return;
    this._placeTip(e.clientX + 12, e.clientY + 20);
  }

  // Viewport coordinates to the page's, kept inside the visible width.
  _placeTip(cx, cy) {
    const tip = this._tip;
    const win = this.win;
    const vw = this.doc.documentElement.clientWidth || win.innerWidth || 0;
    const w = tip.offsetWidth;
    if (vw && cx + w > vw) cx = Math.max(0, vw - w);
    tip.style.left = Math.round(cx + (win.scrollX || 0)) + 'px';
    tip.style.top = Math.round(cy + (win.scrollY || 0)) + 'px';
  }

  _hideTip() {
    if (this._tipShowTimer) clearTimeout(this._tipShowTimer);
    if (this._tipHideTimer) clearTimeout(this._tipHideTimer);
    this._tipShowTimer = 0;
    this._tipHideTimer = 0;
    if (this._tip) {
      const i = Number(this._tip.dataset.button) || 0;
      if (this._keys[i]) this._keys[i].removeAttribute('aria-describedby');
      this._tip.remove();
      this._tip = null;
    }
  }

  // --- Scrolling ---------------------------------------------------------------

  // Every button moves iScStep pixels each iScDelay milliseconds (0 left to
  // right, 1 right to left, 2 top to bottom, 3 bottom to top). The buttons
  // form one ring: a button that has wholly left the applet on the far
  // side goes back by one period and slides in again on the near side.
  // The period is the buttons' extent plus their margin before the first
  // button, and never less than the applet plus the widest button, so a
  // button never jumps into view and the order and gaps stay as designed.
  // iScFirstBtn, the outermost button the page names, is not needed:
  // measuring every button finds the same extent.
  _startScroll() {
    const a = this.applet;
    if (!a.bDoScroll || this.reducedMotion || !(a.iScStep | 0) || this.count === 0) return;
    const dir = a.iScDirection | 0;
    if (dir < 0 || dir > 3) return;
    const horizontal = dir <= 1;
    const sign = dir === 0 || dir === 2 ? 1 : -1;
    const step = Math.abs(a.iScStep | 0) * sign;
    const extent = horizontal ? this.W : this.H;
    let lo = Infinity, hi = -Infinity, biggest = 0;
    for (let i = 1; i <= this.count; i++) {
      const b = this.buttons[i];
      const pos = horizontal ? b.x : b.y;
      const size = horizontal ? b.Width : b.Height;
      lo = Math.min(lo, pos);
      hi = Math.max(hi, pos + size);
      biggest = Math.max(biggest, size);
    }
    const period = Math.max(extent + biggest, hi - lo + Math.max(0, lo));
    this.scrollPeriod = period;
    const delay = Math.max(BAR_MIN_SCROLL_DELAY, a.iScDelay | 0);
    this._scrollTimer = setInterval(() => {
      try {
        if (this.reducedMotion) return;
        this._scrollBy(horizontal, step, extent, period);
      } catch (e) {
        this.warn('Kestrel Pane: scrolling failed (' + barMessage(e) + ')');
      }
    }, delay);
  }

  _scrollBy(horizontal, step, extent, period) {
    for (let i = 1; i <= this.count; i++) {
      const b = this.buttons[i];
      let pos = (horizontal ? b.x : b.y) + step;
      const size = horizontal ? b.Width : b.Height;
      if (step > 0 && pos >= extent) pos -= period;
      else if (step < 0 && pos + size <= 0) pos += period;
      if (horizontal) b.x = pos; else b.y = pos;
    }
    // Ascending, so a transparent face copies the others at their new places.
    for (let i = 1; i <= this.count; i++) this._place(i, this._rectOf(i));
    this._invalidate({ x: 0, y: 0, w: this.W, h: this.H });
    this._placeKeys();
    if (this._tip) this._hideTip();
    this._rehover();
  }

  stopScrolling() {
    if (this._scrollTimer) clearInterval(this._scrollTimer);
    this._scrollTimer = 0;
  }

  // --- Programs ------------------------------------------------------------------

  _run(text) {
    if (!text) return Promise.resolve();
    let p;
    try {
      p = KP.runProgram(text, this);
    } catch (e) {
      this.warn('Kestrel Pane: program failed (' + barMessage(e) + ')');
      return Promise.resolve();
    }
    return Promise.resolve(p).catch((e) => {
      this.warn('Kestrel Pane: program failed (' + barMessage(e) + ')');
    });
  }

  findButton(name) {
    if (!this._names) {
      this._names = new Map();
      this._lowerNames = new Map();
      for (let i = 1; i <= this.count; i++) {
        const n = String(this.buttons[i].sBName);
        if (!this._names.has(n)) this._names.set(n, i);
        const l = n.toLowerCase();
        if (!this._lowerNames.has(l)) this._lowerNames.set(l, i);
      }
    }
    const s = String(name);
    return this._names.get(s) || this._lowerNames.get(s.toLowerCase()) || 0;
  }

  _valid(i) {
    return Number.isInteger(i) && i >= 1 && i <= this.count;
  }

  getRect(i) {
    return this._rectOf(i);
  }

  setRect(i, x, y, w, h) {
    if (!this._valid(i)) return;
    const b = this.buttons[i];
    const old = this._rectOf(i);
    b.x = x | 0;
    b.y = y | 0;
    b.Width = Math.max(0, w | 0);
    b.Height = Math.max(0, h | 0);
    const now = this._rectOf(i);
    if (old.x === now.x && old.y === now.y && old.w === now.w && old.h === now.h) return;
    this._place(i, old);
    const extra = barUnion(this._redrawTransparentOver(i, old), this._redrawTransparentOver(i, now));
    this._invalidate(barUnion(barUnion(old, now), extra));
    this._placeKey(i);
    this._rehover();
  }

  // Button i stands at its record's place. An opaque face of the same size
  // is the same pixels anywhere, so its surface only moves; a transparent
  // face shows what is under its new place and is painted again.
  _place(i, old) {
    const b = this.buttons[i];
    const s = this.scene && this.scene.surfaces[i];
    if (s && old && old.w === b.Width && old.h === b.Height && !this._transparent(i)) {
      s.Left = b.x;
      s.Top = b.y;
    } else {
      this._redraw(i, false);
    }
  }

  setHidden(i, hidden) {
    if (!this._valid(i)) return;
    const b = this.buttons[i];
    hidden = !!hidden;
    if (b.Hidden === hidden) return;
    b.Hidden = hidden;
    const r = this._rectOf(i);
    const extra = this._redrawTransparentOver(i, r);
    this._invalidate(barUnion(r, extra));
    if (hidden && this._focus === i && this._keys[i]) this._keys[i].blur();
    this._placeKey(i);
    this._rehover();
  }

  isHidden(i) {
    return this._valid(i) ? !!this.buttons[i].Hidden : false;
  }

  // What is under a still pointer may have changed under it.
  // The place is the one the pointer last reported: reading the layout
  // again here would cost a layout on every scrolling step.
  _rehover() {
    if (!this._pointerIn || !this._lastAt || this._pressed) return;
    const p = this._lastAt;
    const i = this.hitTest(p.x, p.y);
    if (i !== this._hover) this._setHover(i, this._lastPointer);
  }

  _restyle(i, state) {
    if (!this.scene) return;
    if (this.scene.state[i] !== state) return;
    this._redraw(i, true);
    this._invalidate(this._rectOf(i));
  }

  setLabel(i, state, text) {
    if (!this._valid(i)) return;
    this.buttons[i].Label[state] = String(text);
    if (state === BAR_UP && this._keys[i]) {
      this._keys[i].setAttribute('aria-label', this._accessibleName(this.buttons[i]));
    }
    this._restyle(i, state);
  }

  setFaceColor(i, state, colour) {
    if (!this._valid(i)) return;
    this.buttons[i].BackColor[state] = colour;
    this._restyle(i, state);
  }

  setBorderColor(i, state, colour) {
    if (!this._valid(i)) return;
    this.buttons[i].BorderColor[state] = colour;
    this._restyle(i, state);
  }

  setState(i, state) {
    if (!this._valid(i) || !(state >= 1 && state <= 3)) return;
    this._setFace(i, state, false);
  }

  sleep(ms) {
    return new Promise((resolve) => setTimeout(resolve, Math.max(0, Number(ms) || 0)));
  }

  callScript(source) {
    return KP.callPageScript(source);
  }

  warn(message) {
    const m = String(message);
    if (this._warned.has(m)) return;
    this._warned.add(m);
    try {
      if (typeof console !== 'undefined') console.warn(m);
    } catch (e) { /* nowhere to say it */ }
  }
};

function barMessage(e) {
  return e && e.message ? e.message : String(e);
}
