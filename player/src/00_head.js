/* Kestrel Pane player: shows the button bars of a page's applet blocks in
 * today's browsers, drawn pixel for pixel as the designer draws them.
 * One file, no dependencies. Built from player/src in file-name order. */
(function (global) {
'use strict';
const KP = {};
// When the script ran and when it started the page's bars, for benchmarks.
KP.timing = { scriptRan: typeof performance !== 'undefined' ? performance.now() : 0, bootStarted: 0 };
