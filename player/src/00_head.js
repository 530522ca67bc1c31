//# allFunctionsCalledOnLoad
/* Kestrel Pane player: shows the button bars of a page's applet blocks in
 * today's browsers, drawn pixel for pixel as the designer draws them.
 * One file, no dependencies. Built from player/src in file-name order. */
// The file's first line must stay first: it asks the browser to compile
// every function while the file loads, off the page's thread, since a bar
// calls nearly all of them before its first drawing.
(function (global) {
'use strict';
const KP = {};
// When the player started the page's bars, for benchmarks.
KP.timing = { bootStarted: 0 };
