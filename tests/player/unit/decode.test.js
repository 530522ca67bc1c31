const test = require('node:test');
const assert = require('node:assert/strict');
const KP = require('./load.js');

// The designer's packing of a button's fields, as the generator does it:
// a field equal to the one before is "^", then runs of "^|" and of bars
// are shortened, longest first.
const DIGITS = '0123456789abcdefghijklmnopqrstuvwxyz';
function pack(fields) {
  let line = '';
  let last = '';
  for (const v of fields) {
    line += (v !== '' && v === last ? '^' : v) + '|';
    last = v;
  }
  for (let n = 35; n >= 2; n--) line = line.split('^|'.repeat(n)).join('^' + DIGITS[n]);
  for (let n = 36; n >= 4; n--) line = line.split('|'.repeat(n)).join('||^' + DIGITS[n - 2]);
  return line;
}

// A button value of 91 fields, all "0" but the given ones (0-based).
function recordWith(fields) {
  const all = new Array(91).fill('0');
  for (const [k, v] of Object.entries(fields)) all[k] = v;
  return all.join('|') + '|';
}

test('unpack: equal neighbours of different meaning repeat the field before', () => {
  assert.deepEqual(KP.unpack('10|^|100|'), ['10', '10', '100']);
});

test('unpack: three zeros packed as 0|^2 are three fields', () => {
  assert.deepEqual(KP.unpack('0|^2'), ['0', '0', '0']);
});

test('unpack: 41 repeats after a first field come back from ^z^6 with the next field behind', () => {
  const fields = KP.unpack('0|^z^69|');
  assert.equal(fields.length, 43);
  assert.ok(fields.slice(0, 42).every((f) => f === '0'));
  assert.equal(fields[42], '9');
});

test('unpack: a run of four bars packed as ||^2 gives three empty fields', () => {
  assert.deepEqual(KP.unpack('a||^2b|'), ['a', '', '', '', 'b']);
  assert.deepEqual(KP.unpack('a|||b|'), ['a', '', '', 'b']);
});

test('unpack: 15 empty trailing fields end in ||^e', () => {
  const fields = KP.unpack('x||^e');
  assert.equal(fields.length, 16);
  assert.equal(fields[0], 'x');
  assert.ok(fields.slice(1).every((f) => f === ''));
});

test('unpack: a repeat after a run of repeats and a run of bars', () => {
  assert.deepEqual(KP.unpack('a|^2||^2'), ['a', 'a', 'a', '', '', '', '']);
  assert.deepEqual(KP.unpack('10|^||^2'), ['10', '10', '', '', '']);
});

test('unpack: a mark before a capital letter, a sign or the end is field text, not a repeat', () => {
  assert.deepEqual(KP.unpack('a|^A|b|'), ['a', '^A', 'b']);
  assert.deepEqual(KP.unpack('a|^-|'), ['a', '^-']);
  assert.deepEqual(KP.unpack('a|^'), ['a', '^']);
  assert.deepEqual(KP.unpack('a|^z'), new Array(36).fill('a'));
});

test('unpack inverts packing for random field lists', () => {
  let seed = 12345;
  const rnd = (n) => {
    seed = (seed * 1103515245 + 12345) & 0x7fffffff;
    return seed % n;
  };
  const pool = ['', '', '', '0', '0', '1', '10', 'C0C0C0', 'Home', '9'];
  for (let round = 0; round < 500; round++) {
    const fields = [];
    const count = 1 + rnd(120);
    for (let k = 0; k < count; k++) fields.push(pool[rnd(pool.length)]);
    fields[0] = String(rnd(500));  // a button's value starts with its x
    assert.deepEqual(KP.unpack(pack(fields)), fields, pack(fields));
  }
});

// The two buttons of the generator's worked example.
const LINE1 = '10|^|100|30|1|0|FF0000|0|808080|C0C0C0|808080|C0C0C0|808080|C0C0C0|0|^z^69|^21|^22|^20|^213|^2Home|^2index.htm|Back to the start||^e';
const LINE2 = "120|10|100|30|1|0|FF0000|0|^|C0C0C0|0|C0C0C0|0|C0C0C0|0|^z^62|9|^|0|^813|^2News|^2news.htm||main|n.gif||^2click.au||^6What's new|Latest&!0news|";

test('decodeButton reads every field of the worked example', () => {
  const b = KP.decodeButton(LINE1, 1);
  assert.equal(KP.unpack(LINE1).length, 91);
  assert.deepEqual([b.x, b.y, b.Width, b.Height], [10, 10, 100, 30]);
  assert.equal(b.ShowHand, true);
  assert.equal(b.Radio, false);
  assert.deepEqual(b.FontColor.slice(1), [0, 255, 0]);
  assert.deepEqual(b.BorderColor.slice(1), [0x808080, 0x808080, 0x808080]);
  assert.deepEqual(b.BackColor.slice(1), [0xc0c0c0, 0xc0c0c0, 0xc0c0c0]);
  assert.deepEqual(b.BorderStyle.slice(1), [1, 1, 1]);
  assert.deepEqual(b.BorderWidth.slice(1), [2, 2, 2]);
  assert.deepEqual(b.BorderShade.slice(1), [0, 0, 0]);
  assert.deepEqual(b.FontSize.slice(1), [13, 13, 13]);
  assert.deepEqual(b.Label.slice(1), ['Home', 'Home', 'Home']);
  assert.deepEqual(b.ImgStyle.slice(1), [9, 9, 9]);
  assert.deepEqual(b.Font.slice(1), ['Arial', 'Arial', 'Arial']);
  assert.equal(b.URL, 'index.htm');
  assert.equal(b.Status, 'Back to the start');
  assert.equal(b.Target, '');
  assert.equal(b.Tip, '');
  assert.equal(b.sBName, 'Button 1');
});

test('decodeButton reads the second button: picture, sound, target, tip and escaped name', () => {
  const b = KP.decodeButton(LINE2, 2);
  assert.equal(KP.unpack(LINE2).length, 91);
  assert.deepEqual(b.BorderStyle.slice(1), [0, 0, 0]);
  assert.deepEqual(b.ImgStyle.slice(1), [2, 9, 9]);
  assert.deepEqual(b.Image.slice(1), ['n.gif', '', '']);
  assert.deepEqual(b.Snd.slice(1), ['', 'click.au', '']);
  assert.equal(b.Target, 'main');
  assert.equal(b.URL, 'news.htm');
  assert.equal(b.Tip, "What's new");
  assert.equal(b.sBName, 'Latest news');
  assert.equal(b.ProgramOVER, '');
});

test('decodeButton undoes the text escapes of labels, links and names', () => {
  const b = KP.decodeButton(recordWith({ 71: 'a&!3b&!2c&!4d', 74: 'javascript:go(&!2x&!2)', 90: 'My&!0Button&!1x' }), 7);
  assert.equal(b.Label[1], 'a|b"c^d');
  assert.equal(b.URL, 'javascript:go("x")');
  assert.equal(b.sBName, 'My Button;x');
});

test('decodeButton reads each flag bit by itself', () => {
  const names = [
    [1, 'ShowHand'], [2, 'Radio'], [32, 'Hidden'],
    [4, 'noBackGround', 1], [8, 'noBackGround', 2], [16, 'noBackGround', 3],
    [64, 'TFrameLight', 1], [256, 'TFrameLight', 3], [1024, 'TFrameLeftToRight', 2],
    [4096, 'SoundStop', 1], [16384, 'SoundStop', 3], [65536, 'SoundLoop', 2], [131072, 'SoundLoop', 3],
  ];
  for (const [bitValue, key, s] of names) {
    const b = KP.decodeButton(recordWith({ 4: String(bitValue) }), 1);
    assert.equal(s ? b[key][s] : b[key], true, key);
    assert.equal(b.Hidden === true, bitValue === 32);
  }
});

test('buttons share a triple of three equal fields, and setting one state copies it for that button only', () => {
  const value = recordWith({ 9: '808080', 10: '808080', 11: '808080', 12: '808080', 13: '808080', 14: '808080' });
  const a = KP.decodeButton(value, 1);
  const b = KP.decodeButton(value, 2);
  // BackColor reads fields 10, 12 and 14.
  assert.equal(a.BackColor, b.BackColor);
  assert.ok(Object.isFrozen(a.BackColor));
  assert.deepEqual(a.BackColor.slice(1), [0x808080, 0x808080, 0x808080]);
  assert.equal(a.noBackGround, b.noBackGround);

  KP.setTri(a, 'BackColor', 2, 0x0000ff);
  assert.deepEqual(a.BackColor.slice(1), [0x808080, 0x0000ff, 0x808080]);
  assert.deepEqual(b.BackColor.slice(1), [0x808080, 0x808080, 0x808080]);
  // Once a button's own, the triple is written in place.
  const own = a.BackColor;
  KP.setTri(a, 'BackColor', 3, 0x00ff00);
  assert.equal(a.BackColor, own);
  assert.equal(a.BackColor[3], 0x00ff00);

  // Label places are written on every drawing of a centred label: never shared.
  assert.notEqual(a.LabelPosX, b.LabelPosX);
  assert.ok(!Object.isFrozen(a.LabelPosX));
});

test('three different fields make a triple of the button\'s own', () => {
  const value = recordWith({ 5: 'FF', 6: 'FF00', 7: 'FF0000' });
  const a = KP.decodeButton(value, 1);
  const b = KP.decodeButton(value, 2);
  assert.notEqual(a.FontColor, b.FontColor);
  assert.deepEqual(a.FontColor.slice(1), [0xff0000, 0x00ff00, 0x0000ff]);
});

test('parseColour turns the red-first text into the model colour', () => {
  assert.equal(KP.parseColour('FFFFFF'), 0xffffff);
  assert.equal(KP.parseColour('0'), 0);
  assert.equal(KP.parseColour('FF0000'), 255);
  assert.equal(KP.parseColour('FF'), 255 * 65536);
  assert.equal(KP.parseColour('80'), 128 * 65536);
  assert.equal(KP.parseColour('100000'), 16);
  assert.equal(KP.parseColour('zz'), 0);
});

test('decodeApplet reads the worked example applet record', () => {
  const p = 'FFFFFF|Loading...|FF|FFFFFF|13|1|0|2|0|0|||0|7|0||||0|0|1|1|0|1|0|0|FFFF00|0|FF|1|300|2500|0|13|0|||0|0|0|0|';
  const a = KP.decodeApplet(p, 420, 180);
  assert.equal(a.BackGround, 0xffffff);
  assert.equal(a.sLoading, 'Loading...');
  assert.equal(a.cLoadingFont, 255 * 65536);
  assert.equal(a.iLoadingFont_Size, 13);
  assert.equal(a.iLoadingFont_Style, 1);
  assert.equal(a.ButtonCount, 2);
  assert.equal(a.bPreLoad, true);
  assert.equal(a.bClip, true);
  assert.equal(a.bDoScroll, false);
  assert.equal(a.bUnusualRepaint, false);
  assert.deepEqual([a.iDescentX, a.iDescentY], [1, 1]);
  assert.equal(a.iScStep, 1);
  assert.equal(a.cTipBackColor, 0x00ffff);
  assert.equal(a.cTipBorderColor, 255 * 65536);
  assert.deepEqual([a.iTipBorderWidth, a.iTipDelay, a.iTipHideAfter, a.iTipFontSize], [1, 300, 2500, 13]);
  assert.deepEqual([a.AppletWidth, a.AppletHeight], [420, 180]);
  assert.equal(a.iABorderStyle, 0);
});

test('numbers are an optional sign and decimal digits; anything else reads as 0', () => {
  const field = (v) => KP.decodeButton(recordWith({ 0: v }), 1).x;
  assert.equal(field('15'), 15);
  assert.equal(field('-20'), -20);
  assert.equal(field('+7'), 7);
  for (const bad of ['', '-', '+', '1.5', '1e3', ' 4', '4 ', '0x10', 'abc']) assert.equal(field(bad), 0, bad);
});

test('every field of a button record reads as the unpacked field it stands at', () => {
  let x = 5;
  const next = () => (x = (Math.imul(x, 1664525) + 1013904223) >>> 0);
  const alphabet = '0123456789|||^^abzAF&!234 -+;';
  const num = (s) => (/^[+-]?\d+$/.test(s) ? Number(s) : 0);
  const hex = (s) => {
    if (!/^[0-9A-Fa-f]{1,6}$/.test(s)) return 0;
    const v = parseInt(s, 16);
    return ((v >> 16) & 255) | (v & 0xff00) | ((v & 255) << 16);
  };
  for (let t = 0; t < 3000; ++t) {
    let value = '';
    const n = next() % 160;
    for (let k = 0; k < n; ++k) value += alphabet[next() % alphabet.length];
    const fields = KP.unpack(value);
    const f = (k) => (fields[k - 1] === undefined ? '' : fields[k - 1]);
    const b = KP.decodeButton(value, 4);
    assert.equal(b.x, num(f(1)), value);
    assert.equal(b.Height, num(f(4)), value);
    assert.deepEqual(b.FontColor, [undefined, hex(f(6)), hex(f(7)), hex(f(8))], value);
    assert.deepEqual(b.BackColor, [undefined, hex(f(10)), hex(f(12)), hex(f(14))], value);
    assert.deepEqual(b.LabelPosY, [undefined, num(f(28)), num(f(30)), num(f(32))], value);
    assert.deepEqual(b.PositionText, [undefined, num(f(24)) !== 0, num(f(25)) !== 0, num(f(26)) !== 0], value);
    assert.deepEqual(b.Label, [undefined, KP.unescapeText(f(72)), KP.unescapeText(f(73)), KP.unescapeText(f(74))], value);
    assert.equal(b.ProgramOVER, f(86), value);
    assert.equal(b.sBName, f(91) === '' ? 'Button 4' : KP.unescapeName(f(91)), value);
  }
});
