
// ---------------------------------------------------------------------------
// The bar's events: pointer, keyboard and touch, and where links lead.
const BarEvents = class extends BarCore {
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

};
