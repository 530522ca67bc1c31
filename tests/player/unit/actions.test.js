'use strict';
// The action program interpreter against a fake bar and a fake clock.

const test = require('node:test');
const assert = require('node:assert/strict');

const KP = require('./load.js');

// Macrotask turn: every pending promise reaction has run by then.
const settle = async () => {
  for (let k = 0; k < 3; k++) await new Promise((r) => setImmediate(r));
};

class Clock {
  constructor() { this.now = 0; this.timers = []; this.seq = 0; this.sleeps = []; }
  sleep(ms) {
    this.sleeps.push(ms);
    return new Promise((resolve) => {
      this.timers.push({ at: this.now + ms, seq: this.seq++, resolve });
    });
  }
  async advance(ms) {
    const end = this.now + ms;
    await settle();
    for (;;) {
      this.timers.sort((a, b) => a.at - b.at || a.seq - b.seq);
      const t = this.timers[0];
      if (!t || t.at > end) break;
      this.timers.shift();
      this.now = t.at;
      t.resolve();
      await settle();
    }
    this.now = end;
    await settle();
  }
}

// buttons: { name: { x, y, w, h, hidden } }, numbered in the order given.
function makeHost(buttons, { reducedMotion = false } = {}) {
  const clock = new Clock();
  const names = Object.keys(buttons);
  const state = names.map((n) => Object.assign({ hidden: false }, buttons[n]));
  const log = [];
  const warnings = [];
  const rec = (...entry) => log.push({ t: clock.now, call: entry });
  const host = {
    reducedMotion,
    findButton(name) { return names.indexOf(name) + 1; },
    getRect(i) { const b = state[i - 1]; return { x: b.x, y: b.y, w: b.w, h: b.h }; },
    setRect(i, x, y, w, h) { Object.assign(state[i - 1], { x, y, w, h }); rec('setRect', i, x, y, w, h); },
    setHidden(i, hidden) { state[i - 1].hidden = hidden; rec('setHidden', i, hidden); },
    isHidden(i) { return state[i - 1].hidden; },
    setLabel(i, s, text) { rec('setLabel', i, s, text); },
    setFaceColor(i, s, c) { rec('setFaceColor', i, s, c); },
    setBorderColor(i, s, c) { rec('setBorderColor', i, s, c); },
    setState(i, s) { rec('setState', i, s); },
    sleep(ms) { rec('sleep', ms); return clock.sleep(ms); },
    callScript(source) { rec('callScript', source); return KP.callPageScript(source); },
    warn(m) { warnings.push(m); },
  };
  const calls = (name) => log.filter((e) => e.call[0] === name).map((e) => e.call.slice(1));
  return { host, clock, state, log, warnings, calls };
}

const one = () => makeHost({ Home: { x: 10, y: 20, w: 100, h: 30 } });

// Runs a program that has no waits and returns the host afterwards.
async function runNow(program, h = one()) {
  await KP.runProgram(program, h.host);
  return h;
}

// --- Text rules ------------------------------------------------------------------

test('splitProgram drops the text after the last ";"', () => {
  assert.deepEqual(KP.splitProgram('1 A;2 B;'), ['1 A', '2 B']);
  assert.deepEqual(KP.splitProgram('1 A;2 B'), ['1 A']);
  assert.deepEqual(KP.splitProgram('1 A;;2 B;'), ['1 A', '', '2 B']);
  assert.deepEqual(KP.splitProgram(''), []);
  assert.deepEqual(KP.splitProgram('no semicolon'), []);
  assert.deepEqual(KP.splitProgram(';'), ['']);
});

test('getToken counts single blanks, two blanks hold an empty token', () => {
  assert.equal(KP.getToken('3 Home 10 20', 1), '3');
  assert.equal(KP.getToken('3 Home 10 20', 2), 'Home');
  assert.equal(KP.getToken('3 Home 10 20', 4), '20');
  assert.equal(KP.getToken('3 Home 10 20', 5), '');
  assert.equal(KP.getToken('3 Home 10 20', 0), '');
  assert.equal(KP.getToken('4  x', 2), '');
  assert.equal(KP.getToken('4  x', 3), 'x');
  assert.equal(KP.getToken('4 a ', 3), '');
  assert.equal(KP.getToken(' a', 1), '');
  assert.equal(KP.getToken(' a', 2), 'a');
  assert.equal(KP.getToken('', 1), '');
});

test('unescapeToken undoes the field escapes in the designer\'s order', () => {
  assert.equal(KP.unescapeToken('My&!0Button'), 'My Button');
  assert.equal(KP.unescapeToken('a&!1b&!2c&!3d&!4e'), 'a;b"c|d^e');
  assert.equal(KP.unescapeToken('x&nbspy'), 'x y');
  assert.equal(KP.unescapeToken('one\\ntwo'), 'one\\ntwo');
  assert.equal(KP.unescapeToken('&&!4!0'), '&^!0');
  assert.equal(KP.unescapeToken('plain'), 'plain');
});

// --- The ten commands -------------------------------------------------------------

test('Show and Hide', async () => {
  const h = makeHost({ A: { x: 0, y: 0, w: 1, h: 1 }, 'B C': { x: 0, y: 0, w: 1, h: 1, hidden: true } });
  await KP.runProgram('2 A;1 B&!0C;', h.host);
  assert.deepEqual(h.calls('setHidden'), [[1, true], [2, false]]);
  assert.equal(h.state[0].hidden, true);
  assert.equal(h.state[1].hidden, false);
  assert.deepEqual(h.warnings, []);
});

test('Move without frames jumps to absolute values', async () => {
  const h = await runNow('3 Home 50 60 70 80 0 0;3 Home -20 -5 10 11 1 100;');
  assert.deepEqual(h.calls('setRect'), [[1, 50, 60, 70, 80], [1, -20, -5, 10, 11]]);
  assert.deepEqual(h.calls('sleep'), []);
});

test('Move: "-999" keeps a quantity, "+"/"-" move from where the button stands', async () => {
  const h = await runNow('3 Home -999 -999 -999 -999 0 0;3 Home 20+ 5- -999 10+ 0 0;3 Home -999 -7 3- -999 0 0;');
  assert.deepEqual(h.calls('setRect'), [
    [1, 10, 20, 100, 30],
    [1, 30, 15, 100, 40],
    [1, 30, -7, 97, 40],
  ]);
});

test('Move never makes a negative size', async () => {
  const h = await runNow('3 Home -999 -999 500- -5 0 0;');
  assert.deepEqual(h.calls('setRect'), [[1, 10, 20, 0, 0]]);
});

test('Move over 5 frames steps linearly, one step per frame delay, ending exactly', async () => {
  const h = one();
  let done = false;
  const p = KP.runProgram('3 Home 20+ 3 -999 31 5 40;', h.host).then(() => { done = true; });
  await h.clock.advance(0);
  assert.deepEqual(h.calls('setRect'), [[1, 14, 17, 100, 30]]);
  await h.clock.advance(39);
  assert.equal(h.calls('setRect').length, 1);
  await h.clock.advance(1);
  assert.equal(h.calls('setRect').length, 2);
  await h.clock.advance(120);
  assert.equal(done, true);
  await p;
  // x 10 -> 30, y 20 -> 3, h 30 -> 31; halves round away from zero.
  assert.deepEqual(h.calls('setRect'), [
    [1, 14, 17, 100, 30],   // y 16.6 -> 17, h 30.2 -> 30
    [1, 18, 13, 100, 30],   // y 13.2, h 30.4
    [1, 22, 10, 100, 31],   // y 9.8, h 30.6
    [1, 26, 6, 100, 31],    // y 6.4, h 30.8
    [1, 30, 3, 100, 31],
  ]);
  assert.deepEqual(h.log.filter((e) => e.call[0] === 'setRect').map((e) => e.t), [0, 40, 80, 120, 160]);
  assert.deepEqual(h.calls('sleep'), [[40], [40], [40], [40]]);
});

test('Move frames round halves away from zero in both directions', async () => {
  const right = makeHost({ Home: { x: 10, y: 0, w: 1, h: 1 } });
  const left = makeHost({ Home: { x: -10, y: 0, w: 1, h: 1 } });
  const pr = KP.runProgram('3 Home 11 -999 -999 -999 2 0;', right.host);
  const pl = KP.runProgram('3 Home -11 -999 -999 -999 2 0;', left.host);
  // The first frame comes before any wait.
  assert.deepEqual(right.calls('setRect'), [[1, 11, 0, 1, 1]]);  // 10.5
  assert.deepEqual(left.calls('setRect'), [[1, -11, 0, 1, 1]]);  // -10.5
  await right.clock.advance(0);
  await left.clock.advance(0);
  await Promise.all([pr, pl]);
  assert.equal(right.calls('setRect').length, 2);
  assert.deepEqual(left.calls('setRect')[1], [1, -11, 0, 1, 1]);
});

test('the next command waits for an animation to end', async () => {
  const h = one();
  const p = KP.runProgram('3 Home 0 -999 -999 -999 3 10;2 Home;', h.host);
  await h.clock.advance(15);
  assert.deepEqual(h.calls('setHidden'), []);
  await h.clock.advance(5);
  await p;
  assert.deepEqual(h.calls('setHidden'), [[1, true]]);
  assert.deepEqual(h.log.map((e) => e.call[0]).filter((c) => c !== 'sleep'),
                   ['setRect', 'setRect', 'setRect', 'setHidden']);
});

test('Set Label unescapes the text and keeps "\\n"', async () => {
  const h = await runNow('4 Home 2 Line&!0one\\nLine&!0two;4 Home 1 a&nbspb&!1c;');
  assert.deepEqual(h.calls('setLabel'), [[1, 2, 'Line one\\nLine two'], [1, 1, 'a b;c']]);
});

test('Set Color and Border Color read RRGGBB into the model colour', async () => {
  const h = await runNow('5 Home 3 FF8001;9 Home 1 0a0B0c;5 Home 2 000000;');
  assert.deepEqual(h.calls('setFaceColor'), [[1, 3, 0xff + 256 * 0x80 + 65536 * 0x01], [1, 2, 0]]);
  assert.deepEqual(h.calls('setBorderColor'), [[1, 1, 0x0a + 256 * 0x0b + 65536 * 0x0c]]);
});

test('Set State', async () => {
  const h = await runNow('8 Home 3;8 Home 1;');
  assert.deepEqual(h.calls('setState'), [[1, 3], [1, 1]]);
});

test('Wait holds the rest of the program while another program runs', async () => {
  const h = makeHost({ A: { x: 0, y: 0, w: 1, h: 1 }, B: { x: 0, y: 0, w: 1, h: 1 } });
  let done = false;
  const p = KP.runProgram('2 A;6 500;1 A;', h.host).then(() => { done = true; });
  await h.clock.advance(0);
  assert.deepEqual(h.calls('setHidden'), [[1, true]]);
  await KP.runProgram('8 B 2;2 B;', h.host);
  assert.deepEqual(h.calls('setHidden'), [[1, true], [2, true]]);
  assert.deepEqual(h.calls('setState'), [[2, 2]]);
  await h.clock.advance(499);
  assert.equal(done, false);
  assert.equal(h.state[0].hidden, true);
  await h.clock.advance(1);
  await p;
  assert.deepEqual(h.calls('setHidden'), [[1, true], [2, true], [1, false]]);
  assert.equal(h.log[h.log.length - 1].t, 500);
});

test('Wait takes fractional milliseconds', async () => {
  const h = one();
  const p = KP.runProgram('6 1.5;2 Home;', h.host);
  await h.clock.advance(1);
  assert.deepEqual(h.calls('setHidden'), []);
  await h.clock.advance(0.5);
  await p;
  assert.deepEqual(h.calls('sleep'), [[1.5]]);
  assert.deepEqual(h.calls('setHidden'), [[1, true]]);
});

test('Call JavaScript runs the unescaped script in the global scope', async () => {
  delete globalThis.kpActionProbe;
  const h = await runNow('7 0 globalThis.kpActionProbe&!0=&!0&!2a&!1b&!2.length&!1;7 0 var&!0kpActionVar&!0=&!07;');
  assert.deepEqual(h.calls('callScript'),
                   ['globalThis.kpActionProbe = "a;b".length;', 'var kpActionVar = 7'].map((s) => [s]));
  assert.equal(globalThis.kpActionProbe, 3);
  assert.equal(globalThis.kpActionVar, 7);
  assert.deepEqual(h.warnings, []);
  delete globalThis.kpActionProbe;
  delete globalThis.kpActionVar;
});

test('a throwing script only warns and the program goes on', async () => {
  const h = await runNow('7 0 throw&!0new&!0Error("boom");7 0 )syntax(;2 Home;');
  assert.equal(h.warnings.length, 2);
  assert.match(h.warnings[0], /boom/);
  assert.deepEqual(h.calls('setHidden'), [[1, true]]);
});

test('Blink 3 times toggles 6 times and ends as it began', async () => {
  const h = one();
  const p = KP.runProgram('10 Home 3 100;8 Home 2;', h.host);
  await h.clock.advance(0);
  assert.deepEqual(h.calls('setHidden'), [[1, true]]);
  await h.clock.advance(250);
  assert.deepEqual(h.calls('setHidden'), [[1, true], [1, false], [1, true]]);
  await h.clock.advance(250);
  await p;
  const toggles = h.log.filter((e) => e.call[0] === 'setHidden');
  assert.deepEqual(toggles.map((e) => e.call[2]), [true, false, true, false, true, false]);
  assert.deepEqual(toggles.map((e) => e.t), [0, 100, 200, 300, 400, 500]);
  assert.equal(h.state[0].hidden, false);
  assert.deepEqual(h.calls('setState'), [[1, 2]]);
});

test('a hidden button blinks into view and ends hidden', async () => {
  const h = makeHost({ X: { x: 0, y: 0, w: 1, h: 1, hidden: true } });
  const p = KP.runProgram('10 X 1 10;', h.host);
  await h.clock.advance(10);
  await p;
  assert.deepEqual(h.calls('setHidden'), [[1, false], [1, true]]);
});

test('reduced motion: Move jumps to its end, Blink to its end state, without waiting', async () => {
  const h = makeHost({ Home: { x: 10, y: 20, w: 100, h: 30 } }, { reducedMotion: true });
  await KP.runProgram('3 Home 20+ 40 -999 -999 10 50;10 Home 4 100;', h.host);
  assert.deepEqual(h.calls('setRect'), [[1, 30, 40, 100, 30]]);
  assert.deepEqual(h.calls('sleep'), []);
  assert.equal(h.state[0].hidden, false);
  assert.deepEqual(h.calls('setHidden'), []);
});

// --- Robustness -----------------------------------------------------------------------

test('an unknown button name warns once and the rest still runs', async () => {
  const h = await runNow('2 Nobody;3 Nobody 1 2 3 4 0 0;8 Home 3;1 Nobody;');
  assert.equal(h.warnings.length, 1);
  assert.match(h.warnings[0], /Nobody/);
  assert.deepEqual(h.calls('setState'), [[1, 3]]);
  assert.deepEqual(h.calls('setHidden'), []);
  assert.deepEqual(h.calls('setRect'), []);
});

test('bad operands and unknown codes skip only their command', async () => {
  const bad = [
    '3 Home 1 2 3;',            // missing tokens
    '3 Home x 2 3 4 0 0;',      // not a number
    '3 Home 1 2 3 4 -1 0;',     // negative frames
    '3 Home 1+2 2 3 4 0 0;',
    '3 Home + 2 3 4 0 0;',
    '4 Home 4 text;',           // no such state
    '4 Home 1;',                // no label
    '5 Home 1 FF00;',           // short colour
    '9 Home 2 GG0000;',
    '5 Home 0 FF0000;',
    '6 soon;',
    '6 -5;',
    '6;',
    '7 0;',
    '8 Home;',
    '10 Home x 100;',
    '10 Home 3;',
    '11 Home;',
    '0;',
    'Show Home;',
    ';',
    '  ;',
  ];
  for (const cmd of bad) {
    const h = one();
    await assert.doesNotReject(KP.runProgram(cmd + '8 Home 2;', h.host), cmd);
    await h.clock.advance(1000);
    const effects = h.log.filter((e) => e.call[0] !== 'sleep').map((e) => e.call);
    assert.deepEqual(effects, [['setState', 1, 2]], cmd);
    assert.equal(h.state[0].x, 10, cmd);
  }
});

test('a host call that throws skips that command only', async () => {
  const h = one();
  h.host.setLabel = () => { throw new Error('drawing failed'); };
  await KP.runProgram('4 Home 1 x;8 Home 3;', h.host);
  assert.deepEqual(h.calls('setState'), [[1, 3]]);
  assert.equal(h.warnings.length, 1);
  assert.match(h.warnings[0], /drawing failed/);
});

test('empty and missing programs finish at once', async () => {
  const h = one();
  await KP.runProgram('', h.host);
  await KP.runProgram(undefined, h.host);
  await KP.runProgram(null, h.host);
  await KP.runProgram('2 Home', h.host);  // no ";": dropped
  assert.deepEqual(h.log, []);
});

test('a program runs afresh each time: the name warning comes again on the next run', async () => {
  const h = one();
  await KP.runProgram('2 Ghost;', h.host);
  await KP.runProgram('2 Ghost;', h.host);
  assert.equal(h.warnings.length, 2);
});

test('a script whose value is a pending promise does not hold the program', async () => {
  const h = await runNow('7 0 new&!0Promise(function&!0()&!0{});2 Home;');
  assert.deepEqual(h.calls('setHidden'), [[1, true]]);
  assert.deepEqual(h.warnings, []);
});
