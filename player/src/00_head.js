/* Kestrel Pane player: shows the button bars of a page's applet blocks in
 * today's browsers, drawn pixel for pixel as the designer draws them.
 * One file, no dependencies. Built from player/src in file-name order. */
(function (global) {
'use strict';
const KP = {};
