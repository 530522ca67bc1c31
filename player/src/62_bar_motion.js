
// ---------------------------------------------------------------------------
// The bar's tips and scrolling.
const BarMotion = class extends BarEvents {
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

};
