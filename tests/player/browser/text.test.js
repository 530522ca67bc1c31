// The player's canvas measure in Chromium lays labels out as the designer
// does: kp_textmetrics prints what the designer's own measure gives for
// sample lines in every family, style and size a project reaches up to
// 72 px (line widths and the pen position before each character), and the
// page's CanvasMeasure must give the same, and draw each glyph there.
const test = require('node:test');
const assert = require('node:assert/strict');
const fs = require('node:fs');
const path = require('node:path');
const { execFileSync } = require('node:child_process');
const h = require('./harness.js');

const TOOL = process.env.KP_TEXTMETRICS || path.join(h.ROOT, 'build/tools/textmetrics/kp_textmetrics');
const PLAYER = process.env.KP_PLAYER_JS || path.join(h.BIN, 'KestrelPane.js');

function designerLines() {
  const out = execFileSync(TOOL, ['widths'], {
    encoding: 'utf8', maxBuffer: 1 << 28, stdio: ['ignore', 'pipe', 'ignore'],
    env: Object.assign({}, process.env, { QT_QPA_PLATFORM: 'offscreen' }),
  });
  return JSON.parse(out);
}

async function playerPage() {
  const b = await h.browser();
  const context = await b.newContext();
  const page = await context.newPage();
  await page.setContent('<!DOCTYPE html><html><body></body></html>');
  await page.addScriptTag({ content: fs.readFileSync(PLAYER, 'latin1') });
  page.closeAll = () => context.close();
  return page;
}

test.after(() => h.closeBrowser());

test('canvas widths and pen positions equal the designer\'s in every family, style and size', async () => {
  const lines = designerLines();
  assert.ok(lines.length > 1000, 'the tool printed its sample lines');
  const page = await playerPage();
  try {
    const problems = await page.evaluate((samples) => {
      const KP = window.KestrelPanePlayer;
      const m = new KP.CanvasMeasure();
      const out = [];
      const seen = new Set();
      for (const s of samples) {
        const font = { name: s.name, size: s.size, bold: s.bold, italic: s.italic };
        const face = m.face(font);
        const key = s.name + s.size + s.bold + s.italic;
        if (!face.table && !seen.has(key)) out.push(`${key}: the designer's advances are not used`);
        seen.add(key);
        const w = m.TextWidth(font, s.text);
        if (w !== s.width) out.push(`${key} ${JSON.stringify(s.text)}: width ${w}, designer ${s.width}`);
        const chars = Array.from(s.text);
        for (let k = 1; k < chars.length; ++k) {
          const pen = m.TextWidth(font, chars.slice(0, k).join(''));
          if (pen !== s.pens[k]) {
            out.push(`${key} ${JSON.stringify(s.text)}: character ${k} at ${pen}, designer ${s.pens[k]}`);
            break;
          }
        }
        if (out.length > 20) break;
      }
      return out;
    }, lines);
    assert.deepEqual(problems, []);
  } finally {
    await page.closeAll();
  }
});

test('glyphs are drawn at the designer\'s pen positions', async () => {
  const lines = designerLines().filter((s) => s.size >= 6 && s.size <= 40 && s.text.trim());
  const page = await playerPage();
  try {
    const problems = await page.evaluate((samples) => {
      const KP = window.KestrelPanePlayer;
      const m = new KP.CanvasMeasure();
      const ctx = m.ctx;
      const fill = ctx.fillText;
      let drawn = [];
      // Where the glyph's origin lands on the canvas, in pixels of the
      // requested size (the canvas may draw larger).
      ctx.fillText = function (ch, x, y) {
        const t = this.getTransform();
        drawn.push({ ch, at: t.e + t.a * x, px: parseFloat(/([\d.]+)px/.exec(this.font)[1]) });
        return fill.call(this, ch, x, y);
      };
      const plain = document.createElement('canvas').getContext('2d');
      plain.fontKerning = 'none';
      const out = [];
      for (const s of samples) {
        drawn = [];
        const font = { name: s.name, size: s.size, bold: s.bold, italic: s.italic };
        // A run of glyphs drawn together; a label's glyphs are put together
        // from single-character runs (the next test).
        m.rasteriseRun(m.face(font), s.text);
        // A soft hyphen shows nothing in the designer's lines. An italic
        // glyph is centred in its advance: off its pen by half of what the
        // whole-pixel advance adds to the browser's.
        plain.font = m.face(font).css;
        const offset = (ch) => (s.italic ? (m.TextWidth(font, ch) - plain.measureText(ch).width) / 2 : 0);
        const want = Array.from(s.text).map((ch, k) => ({ ch, x: s.pens[k] + offset(ch) }))
          .filter((g) => g.ch !== '\u00ad');
        const scale = drawn.length ? drawn[0].px / s.size : 1;
        drawn.forEach((g) => { g.x = g.at / scale; });
        const first = drawn.length ? drawn[0].x - want[0].x : 0;
        if (drawn.length !== want.length) {
          out.push(`${s.name} ${s.size} ${JSON.stringify(s.text)}: ${drawn.length} glyphs drawn`);
          continue;
        }
        for (let k = 0; k < want.length; ++k) {
          if (drawn[k].ch !== want[k].ch || Math.abs(drawn[k].x - first - want[k].x) > 1e-6) {
            out.push(`${s.name} ${s.size} ${s.bold} ${s.italic} ${JSON.stringify(s.text)}: ` +
              `${JSON.stringify(drawn[k].ch)} at ${drawn[k].x - first}, designer ${want[k].x}`);
            break;
          }
        }
        if (out.length > 20) break;
      }
      return out;
    }, lines);
    assert.deepEqual(problems, []);
  } finally {
    await page.closeAll();
  }
});
