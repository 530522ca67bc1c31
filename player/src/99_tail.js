
if (typeof module !== 'undefined' && module.exports) {
  module.exports = KP;
} else {
  global.KestrelPanePlayer = KP;
  if (global.document && KP.boot) KP.boot(global.document);
}
})(typeof window !== 'undefined' ? window : globalThis);
