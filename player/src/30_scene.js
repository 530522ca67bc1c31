// The scene: the design surface (background and applet border) and one
// persistent surface per button, stacked over it in button order. A
// surface keeps its pixels until something paints it again, so showing
// the bar only ever copies surfaces.

KP.Scene = function (applet, buttons, pictures, measure) {
  this.applet = applet;
  this.buttons = buttons;
  this.pictures = pictures || new Map();
  this.measure = measure;
  this.state = [];
  for (let i = 0; i < buttons.length; ++i) this.state.push(1);
  this.design = KP.newSurface(applet.AppletWidth, applet.AppletHeight, applet.BackGround);
  this.design.backColor = applet.BackGround;
  this.surfaces = [];
  // The designer's window shows no button frame; a page does.
  this.drawFrames = false;
};

// A picture by file name; null when it is missing or unreadable.
KP.Scene.prototype.picture = function (name) {
  const pic = this.pictures.get(name);
  return pic || null;
};

KP.Scene.prototype.hasSurface = function (i) {
  return i >= 1 && !!this.surfaces[i];
};

// The surface of button i, created empty on first use.
KP.Scene.prototype.surface = function (i) {
  let s = this.surfaces[i];
  if (!s) {
    s = KP.newSurface(0, 0);
    this.surfaces[i] = s;
  }
  return s;
};

// Surfaces for every button at its present size, cut from one buffer: a
// bar of a thousand buttons then allocates once, not a thousand times. A
// surface that changes size later gets a buffer of its own. With `head`,
// the buffer starts with that many pixels more, returned as their own
// view: the bar composes into them, and a copy within one buffer needs no
// view per row (see copyOpaque). Null when there is nothing to reserve.
KP.Scene.prototype.reserve = function (head) {
  head = head > 0 ? head | 0 : 0;
  let total = 0;
  const n = this.buttons.length;
  const sizes = new Int32Array(2 * n);
  for (let i = 1; i < n; ++i) {
    const b = this.buttons[i];
    const w = b && b.Width > 0 ? b.Width | 0 : 0, h = b && b.Height > 0 ? b.Height | 0 : 0;
    if (!w || !h) continue;
    sizes[2 * i] = w;
    sizes[2 * i + 1] = h;
    total += w * h;
  }
  if (total <= 0 || head + total > (1 << 26)) return null;
  // The head is composed over before it is shown; surfaces start opaque.
  const pool = new Uint32Array(head + total).fill(PX_OPAQUE | 0, head);
  let at = head;
  for (let i = 1; i < n; ++i) {
    if (this.surfaces[i]) continue;
    const w = sizes[2 * i], h = sizes[2 * i + 1];
    this.surfaces[i] = { w: w, h: h, px: pool.subarray(at, at + w * h), backColor: 0xFFFFFF, Left: 0, Top: 0 };
    at += w * h;
  }
  return pool.subarray(0, head);
};

KP.Scene.prototype.buttonCount = function () {
  return this.buttons.length - 1;
};

KP.Scene.prototype.drawBackground = function () {
  const a = this.applet;
  if (this.design.w !== Math.max(0, a.AppletWidth) || this.design.h !== Math.max(0, a.AppletHeight)) {
    this.design = KP.newSurface(a.AppletWidth, a.AppletHeight, a.BackGround);
  }
  const self = this;
  KP.DrawBackGround(this.design, a, function (name) { return self.picture(name); });
  KP.DrawAppletBorder(this.design, a);
};

// The surface placed and sized from the record.
function placeButton(scene, i) {
  const b = scene.buttons[i];
  if (b.Width < 0 || b.Height < 0) throw new Error('Invalid property value');
  const s = scene.surface(i);
  s.Left = b.x;
  s.Top = b.y;
  KP.resizeSurface(s, b.Width, b.Height);
}

// The one entry for repainting a button. A repaint that fails ends
// quietly where it failed.
KP.Scene.prototype.redrawButton = function (i, redrawAbove) {
  if (redrawAbove === undefined) redrawAbove = true;
  if (!(i >= 1 && i < this.buttons.length) || !this.buttons[i]) return;
  try {
    placeButton(this, i);
    KP.DrawPix(this, i);
    KP.DrawLabel(this.surface(i), this.measure, this.buttons[i], this.state[i], this.applet);
    KP.DrawBorder(this.surface(i), this.buttons[i], this.state[i]);
    const b = this.buttons[i], st = this.state[i];
    if (this.drawFrames && b.FrameThick && b.FrameThick[st] > 0) {
      KP.DrawFrame(this.surface(i), b.FrameThick[st], b.FrameColor[st]);
    }
    if (redrawAbove) this.redrawTransparentAbove(i);
  } catch (e) {
    // As in the designer: no message.
  }
};

// One level only: the repaint of j does not look further up itself.
KP.Scene.prototype.redrawTransparentAbove = function (i) {
  for (let j = i + 1; j < this.buttons.length; ++j) {
    const b = this.buttons[j];
    if (b && b.noBackGround[this.state[j]] && KP.DoCover(this, i, j)) this.redrawButton(j, false);
  }
};

KP.Scene.prototype.redrawAll = function () {
  this.drawBackground();
  for (let i = 1; i < this.buttons.length; ++i) this.redrawButton(i, false);
};

// The bar as shown: the design surface, then every button that is not
// hidden at its place, higher numbers on top.
KP.Scene.prototype.compose = function (out) {
  const a = this.applet;
  const w = Math.max(0, a.AppletWidth), h = Math.max(0, a.AppletHeight);
  if (!out) out = new Uint32Array(w * h);
  const dst = { w: w, h: h, px: out };
  out.fill(KP.toPixel(a.BackGround));
  KP.bitBlt(dst, 0, 0, w, h, this.design, 0, 0, KP.SRCCOPY);
  for (let i = 1; i < this.buttons.length; ++i) {
    const b = this.buttons[i];
    if (!b || b.Hidden || !this.hasSurface(i)) continue;
    const s = this.surfaces[i];
    KP.bitBlt(dst, s.Left, s.Top, s.w, s.h, s, 0, 0, KP.SRCCOPY);
  }
  return out;
};
