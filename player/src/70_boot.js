
// ---------------------------------------------------------------------------
// Finding the applet blocks of a page and starting a bar in place of each.

KP.bars = [];

// Our blocks name the applet's class; an applet of someone else's stays.
function bootIsOurs(el) {
  const code = (el.getAttribute('code') || '').toLowerCase();
  return code === 'kestrelpane.class' || code === 'kestrelpane';
}

// The folder a file name of a field is found in: the code base is relative
// to the page, the picture and sound folders to the code base. Sounds go
// beside the pictures when no folder of their own is given, as the build
// copies them there.
function bootBase(pageUrl, codebase, folder) {
  let cb = (codebase || '.').replace(/\\/g, '/');
  if (!cb.endsWith('/')) cb += '/';
  const base = new URL(cb, pageUrl);
  const f = (folder || '').replace(/\\/g, '/');
  return f ? new URL(f.endsWith('/') ? f : f + '/', base).href : base.href;
}

// The parameter values of an applet element, by name.
function bootParams(el) {
  const params = Object.create(null);
  const list = el.querySelectorAll('param');
  for (let k = 0; k < list.length; k++) {
    const p = list[k];
    const name = p.getAttribute('name');
    if (name !== null && !(name in params)) params[name] = p.getAttribute('value') || '';
  }
  return params;
}

// Reads an applet element: the records and where its files lie.
KP.readApplet = function (el, pageUrl) {
  const params = bootParams(el);
  const width = parseInt(el.getAttribute('width'), 10) || 0;
  const height = parseInt(el.getAttribute('height'), 10) || 0;
  const applet = KP.decodeApplet(params.p || '', width, height);
  const buttons = [null];
  for (let i = 1; i <= applet.ButtonCount; i++) {
    if (!(String(i) in params)) break;
    buttons.push(KP.decodeButton(params[String(i)], i));
  }
  applet.ButtonCount = buttons.length - 1;
  const codebase = el.getAttribute('codebase');
  const imgBase = bootBase(pageUrl, codebase, applet.ImgPath);
  const sndBase = applet.SndPath ? bootBase(pageUrl, codebase, applet.SndPath) : imgBase;
  return {
    name: el.getAttribute('name') || '',
    applet: applet,
    buttons: buttons,
    imgBase: imgBase,
    sndBase: sndBase,
  };
};

// Puts a bar in place of one applet element. The host element keeps the
// applet's name, so the page's scripts still find it by name.
KP.mount = function (el) {
  const doc = el.ownerDocument;
  const info = KP.readApplet(el, doc.baseURI);
  const host = doc.createElement('span');
  host.className = 'kestrelpane-bar';
  if (info.name) {
    host.setAttribute('name', info.name);
    if (!doc.getElementById(info.name)) host.id = info.name;
  }
  el.replaceWith(host);
  const bar = new KP.Bar(host, info.applet, info.buttons, {
    name: info.name,
    imgBase: info.imgBase,
    sndBase: info.sndBase,
  });
  KP.bars.push(bar);
  return bar;
};

// While the page is still being read, a block already in it keeps the
// place and size its bar will take and hides its alternative text: the
// browser paints what it has read, and would show "Java is disabled" and
// then move the page down when the bar came.
function bootHold(el) {
  barInstallStyle(el.ownerDocument);
  el.classList.add('kestrelpane-bar');
  el.style.width = Math.max(1, parseInt(el.getAttribute('width'), 10) || 0) + 'px';
  el.style.height = Math.max(1, parseInt(el.getAttribute('height'), 10) || 0) + 'px';
  el.style.overflow = 'hidden';
  el.style.visibility = 'hidden';
}

// A block whose bar could not start shows its alternative text after all.
function bootRelease(el) {
  el.classList.remove('kestrelpane-bar');
  for (const p of ['width', 'height', 'overflow', 'visibility']) el.style.removeProperty(p);
}

KP.boot = function (doc) {
  const start = () => {
    KP.timing.bootStarted = barNow();
    for (const el of Array.from(doc.querySelectorAll('applet'))) {
      if (!bootIsOurs(el)) continue;
      try {
        KP.mount(el);
      } catch (e) {
        bootRelease(el);
        if (global.console) console.warn('Kestrel Pane: a bar could not start:', e);
      }
    }
  };
  if (doc.readyState === 'loading') {
    for (const el of Array.from(doc.querySelectorAll('applet'))) if (bootIsOurs(el)) bootHold(el);
    doc.addEventListener('DOMContentLoaded', start);
  } else {
    start();
  }
};
