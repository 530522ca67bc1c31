
// ---------------------------------------------------------------------------
// The bar as the host of its action programs.
KP.Bar = class extends BarMotion {
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
    KP.setTri(this.buttons[i], 'Label', state, String(text));
    if (state === BAR_UP && this._keys[i]) {
      this._keys[i].setAttribute('aria-label', this._accessibleName(this.buttons[i]));
    }
    this._restyle(i, state);
  }

  setFaceColor(i, state, colour) {
    if (!this._valid(i)) return;
    KP.setTri(this.buttons[i], 'BackColor', state, colour);
    this._restyle(i, state);
  }

  setBorderColor(i, state, colour) {
    if (!this._valid(i)) return;
    KP.setTri(this.buttons[i], 'BorderColor', state, colour);
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
