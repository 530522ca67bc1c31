
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
// At most this many buttons have their labels set up ahead (see _warmLabels).
const BAR_WARM_BUTTONS = 2000;
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

// The bar in layers, one file each: drawing and keyboard elements here,
// then events and links, tips and scrolling, and the program host.
const BarCore = class {
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

    this._setComposed(new Uint32Array(this.W * this.H));

    // The keyboard elements come after the first drawing: the bar shows
    // sooner, and nothing can be focused before it shows anyway.
    this._listen();

    this.timing.constructed = barNow();
    this.ready = this._start().catch((e) => {
      this.warn('Kestrel Pane: the bar could not be drawn (' + barMessage(e) + ')');
    }).then(() => this);
  }

  // --- Drawing -----------------------------------------------------------------

  // The composed pixels, seen by the canvas as RGBA bytes.
  _setComposed(px) {
    this._px = px;
    this._image = new ImageData(new Uint8ClampedArray(px.buffer, px.byteOffset, px.length * 4), this.W, this.H);
  }

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
    const names = this._pictureNames();
    // Without pictures to wait for, the bar is drawn before the page can
    // paint, so a loading text would never be seen.
    if (names.size) {
      if (a.bPreLoad && a.sLoading) this._drawLoading();
      else this._fill(a.BackGround);
    }

    const pictures = new Map();
    const loading = this._loadPictures(names, pictures).catch((e) => {
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
    scene.drawFrames = true;
    const head = scene.reserve(this.W * this.H);
    if (head) this._setComposed(head);
    const down = a.DOWNBtn | 0;
    for (let i = 1; i <= this.count; i++) scene.state[i] = i === down ? BAR_DOWN : BAR_UP;
    if (down >= 1 && down <= this.count && this.buttons[down].Radio) this._checked = down;
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
    // The keyboard elements and sounds wait for the next task, so that the
    // bar can reach the screen first.
    await new Promise((resolve) => setTimeout(resolve, 0));
    this._makeKeys();

    this._preloadSounds();
    this._startScroll();
    this._run(a.AppletProgramStart);
    this._warmLabels();
  }

  // The labels of every state are set up in idle time after the first
  // drawing. A label's first print in a font waits on the browser for the
  // font and draws its glyphs, which made a button's first hover take up
  // to 6 ms. The measure keeps 8192 lines a font, so a bar of more
  // buttons than this warms would only push out the lines it shows.
  _warmLabels() {
    const measure = this.scene && this.scene.measure;
    if (!measure || !measure.PrintSetup) return;
    const win = this.win;
    const later = win.requestIdleCallback ? (f) => win.requestIdleCallback(f, { timeout: 2000 })
      : (f) => setTimeout(f, 50);
    const last = Math.min(this.count, BAR_WARM_BUTTONS);
    let i = 1;
    const work = (deadline) => {
      const stop = barNow() + (deadline && deadline.timeRemaining ? deadline.timeRemaining() : 5);
      do {
        const b = this.buttons[i++];
        for (let s = 1; s <= 3; s++) {
          try {
            KP.WarmLabel(measure, b, s);
          } catch (e) {
            // The drawing of that state will meet it and say so.
          }
        }
      } while (i <= last && barNow() < stop - 1);
      if (i <= last) later(work);
    };
    if (last >= 1) later(work);
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

  // Every picture file the bar names, once each.
  _pictureNames() {
    const names = new Set();
    const a = this.applet;
    if (a.BackImg) names.add(a.BackImg);
    for (let i = 1; i <= this.count; i++) {
      const b = this.buttons[i];
      for (let s = 1; s <= 3; s++) {
        if (b.Image[s] && b.ImgStyle[s] !== 9) names.add(b.Image[s]);
      }
    }
    return names;
  }

  // The pictures of `names` fetched into `pictures`.
  _loadPictures(names, pictures) {
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
    if (scene.design.w < x1 || scene.design.h < y1) KP.fillRect(dst, r.x, r.y, r.w, r.h, this.applet.BackGround);
    const d = scene.design;
    const dx1 = Math.min(x1, d.w), dy1 = Math.min(y1, d.h);
    if (dx1 > r.x && dy1 > r.y) KP.copyOpaque(dst, r.x, r.y, dx1 - r.x, dy1 - r.y, d, r.x, r.y);
    const surfaces = scene.surfaces;
    for (let i = 1; i <= this.count; i++) {
      const s = surfaces[i];
      if (!s || this.buttons[i].Hidden || !s.w || !s.h) continue;
      const ax = Math.max(r.x, s.Left), ay = Math.max(r.y, s.Top);
      const bx = Math.min(x1, s.Left + s.w), by = Math.min(y1, s.Top + s.h);
      if (bx <= ax || by <= ay) continue;
      KP.copyOpaque(dst, ax, ay, bx - ax, by - ay, s, ax - s.Left, ay - s.Top);
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
      if (b.Radio) el.setAttribute('aria-pressed', i === this._checked ? 'true' : 'false');
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

};
