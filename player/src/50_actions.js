
// --- Action programs -------------------------------------------------------------
//
// A program is the designer's text "C1;C2;...;Cn;", each command blank-
// joined tokens with the numeric code first. The reading rules below are
// the designer's to the character, since the text is written there and
// only ever run here.
//
// KP.runProgram(text, host) runs one program and resolves when it is done,
// waits and animations included. Programs never share state, so a Wait in
// one leaves every other program and event running. A command that cannot
// run (unknown code, missing or bad operand, no such button, a failing
// host call) is skipped with a console warning and the rest goes on: an
// author's slip must never stop the bar.
//
// The host is the bar. It provides exactly these, and nothing else is used:
//
//   host.findButton(name) -> index (1-based) or 0   name already unescaped
//   host.getRect(i) -> {x, y, w, h}
//   host.setRect(i, x, y, w, h)        moves/resizes and repaints
//   host.setHidden(i, bool)            hides/shows and repaints
//   host.isHidden(i) -> bool
//   host.setLabel(i, state, text)      text unescaped; "\n" left as it is
//   host.setFaceColor(i, state, colour)
//   host.setBorderColor(i, state, colour)
//   host.setState(i, state)
//   host.sleep(ms) -> Promise          ms may be fractional
//   host.callScript(source)            runs page JavaScript (KP.callPageScript
//                                      is the usual implementation)
//   host.warn(message)
//   host.reducedMotion                 boolean
//
// States are 1 (UP), 2 (OVER), 3 (DOWN); colours are red + 256 green +
// 65536 blue, as in the model.

const ACT_KEEP = '-999';

// Each command is what stands before a ";"; text after the last ";" is
// dropped, as the designer drops it.
KP.splitProgram = function (text) {
  const commands = [];
  if (text === null || text === undefined) return commands;
  const s = String(text);
  let start = 0;
  for (let i = 0; i < s.length; i++) {
    if (s.charCodeAt(i) === 59 /* ; */) {
      commands.push(s.slice(start, i));
      start = i + 1;
    }
  }
  return commands;
};

// Token n (from 1), single blanks separating: two blanks in a row hold an
// empty token, and a token that does not exist is "".
KP.getToken = function (command, n) {
  const s = String(command);
  let count = 1;
  let start = 0;
  for (let i = 0; i <= s.length; i++) {
    if (i < s.length && s.charCodeAt(i) !== 32) continue;
    if (count === n) return s.slice(start, i);
    start = i + 1;
    count++;
  }
  return '';
};

// In the designer's order: each escape replaced throughout before the
// next, so mixtures read back exactly as the designer reads them.
KP.unescapeToken = function (s) {
  let t = String(s);
  if (t.indexOf('&') < 0) return t;
  t = t.split('&nbsp').join(' ');
  t = t.split('&!0').join(' ');
  t = t.split('&!1').join(';');
  t = t.split('&!2').join('"');
  t = t.split('&!3').join('|');
  t = t.split('&!4').join('^');
  return t;
};

// Indirect eval: the script runs as page code in the global scope (its
// top-level declarations become page globals), not inside the player.
KP.callPageScript = function (source) {
  return (0, eval)(String(source));
};

// A whole number as the designer writes one: optional sign, digits only.
function act_int(tok) {
  return /^[+-]?[0-9]+$/.test(tok) ? Number(tok) : NaN;
}

// A plain decimal number as Wait and Blink carry it ("1.5" included).
function act_number(tok) {
  return /^[+-]?([0-9]+\.?[0-9]*|\.[0-9]+)([eE][+-]?[0-9]+)?$/.test(tok) ? Number(tok) : NaN;
}

function act_state(tok) {
  const s = act_int(tok);
  return s >= 1 && s <= 3 ? s : NaN;
}

// "RRGGBB" to the model's red + 256 green + 65536 blue.
function act_colour(tok) {
  if (!/^[0-9a-fA-F]{6}$/.test(tok)) return NaN;
  const r = parseInt(tok.slice(0, 2), 16);
  const g = parseInt(tok.slice(2, 4), 16);
  const b = parseInt(tok.slice(4, 6), 16);
  return r + 256 * g + 65536 * b;
}

// One Move quantity: "-999" keeps it, a trailing "+"/"-" is relative to
// where the button stands, anything else absolute. null when unreadable.
function act_quantity(tok, current) {
  if (tok === ACT_KEEP) return current;
  const last = tok.charAt(tok.length - 1);
  if (last === '+' || last === '-') {
    const d = act_int(tok.slice(0, -1));
    if (Number.isNaN(d)) return null;
    return last === '+' ? current + d : current - d;
  }
  const v = act_int(tok);
  return Number.isNaN(v) ? null : v;
}

// Intermediate frames land on whole pixels, rounded half away from zero so
// that an animation runs the same to the left as to the right.
function act_round(v) {
  return v < 0 ? -Math.floor(-v + 0.5) : Math.floor(v + 0.5);
}

class act_Skip extends Error {}

function act_bad(why) {
  throw new act_Skip(why);
}

KP.runProgram = async function (text, host) {
  const warned = new Set();
  const warn = (key, message) => {
    if (warned.has(key)) return;
    warned.add(key);
    try { host.warn(message); } catch (e) { /* nothing more to do */ }
  };
  for (const command of KP.splitProgram(text)) {
    if (command === '') continue;
    try {
      await act_run(command, host, warn);
    } catch (e) {
      if (e instanceof act_Skip) {
        if (e.quiet) continue;  // already warned, once per name
        warn('cmd:' + command, 'Kestrel Pane: action "' + command + '" skipped: ' + e.message);
      } else {
        warn('cmd:' + command, 'Kestrel Pane: action "' + command + '" failed: ' +
             (e && e.message ? e.message : String(e)));
      }
    }
  }
};

function act_button(command, host, warn) {
  const name = KP.unescapeToken(KP.getToken(command, 2));
  const i = host.findButton(name);
  if (!i) {
    warn('name:' + name, 'Kestrel Pane: no button named "' + name + '"; action "' +
         command + '" skipped');
    const e = new act_Skip('no such button');
    e.quiet = true;
    throw e;
  }
  return i;
}

async function act_run(command, host, warn) {
  const tok = (n) => KP.getToken(command, n);
  const code = act_int(tok(1));
  switch (code) {
    case 1:    // Show
    case 2: {  // Hide
      const i = act_button(command, host, warn);
      host.setHidden(i, code === 2);
      return;
    }
    case 3:    // Move
      return act_move(command, host, warn);
    case 4: {  // Set Label
      const state = act_state(tok(3));
      if (Number.isNaN(state)) act_bad('state');
      if (tok(4) === '') act_bad('no label');
      const i = act_button(command, host, warn);
      host.setLabel(i, state, KP.unescapeToken(tok(4)));
      return;
    }
    case 5:    // Set Color
    case 9: {  // Border Color
      const state = act_state(tok(3));
      if (Number.isNaN(state)) act_bad('state');
      const colour = act_colour(tok(4));
      if (Number.isNaN(colour)) act_bad('colour');
      const i = act_button(command, host, warn);
      if (code === 5) host.setFaceColor(i, state, colour);
      else host.setBorderColor(i, state, colour);
      return;
    }
    case 6: {  // Wait
      const ms = act_number(tok(2));
      if (!(ms >= 0) || !Number.isFinite(ms)) act_bad('milliseconds');
      await host.sleep(ms);
      return;
    }
    case 7: {  // Call JavaScript; token 2 is a fixed "0"
      const source = KP.unescapeToken(tok(3));
      if (source === '') act_bad('no script');
      // Not awaited: a script whose value is a promise that never settles
      // must not hold the program.
      try {
        host.callScript(source);
      } catch (e) {
        warn('js:' + command, 'Kestrel Pane: script "' + source + '" threw: ' +
             (e && e.message ? e.message : String(e)));
      }
      return;
    }
    case 8: {  // Set State
      const state = act_state(tok(3));
      if (Number.isNaN(state)) act_bad('state');
      const i = act_button(command, host, warn);
      host.setState(i, state);
      return;
    }
    case 10:   // Blink
      return act_blink(command, host, warn);
    default:
      act_bad('unknown action code');
  }
}

async function act_move(command, host, warn) {
  const t = [3, 4, 5, 6, 7, 8].map((n) => KP.getToken(command, n));
  const frames = act_int(t[4]);
  const delay = act_number(t[5]);
  // The designer writes 16-bit counts; more is a damaged program.
  if (!(frames >= 0 && frames <= 32767)) act_bad('frames');
  if (!(delay >= 0) || !Number.isFinite(delay)) act_bad('frame delay');
  const i = act_button(command, host, warn);
  const r = host.getRect(i);
  const from = [r.x, r.y, r.w, r.h];
  const to = [];
  for (let k = 0; k < 4; k++) {
    const v = act_quantity(t[k], from[k]);
    if (v === null) act_bad('position or size');
    to.push(k >= 2 ? Math.max(0, v) : v);
  }
  if (frames <= 1 || host.reducedMotion) {
    host.setRect(i, to[0], to[1], to[2], to[3]);
    return;
  }
  for (let f = 1; f <= frames; f++) {
    if (f > 1) await host.sleep(delay);
    const at = (k) => (f === frames ? to[k] : act_round(from[k] + (to[k] - from[k]) * f / frames));
    host.setRect(i, at(0), at(1), at(2), at(3));
  }
}

async function act_blink(command, host, warn) {
  const times = Math.floor(act_number(KP.getToken(command, 3)));
  const delay = act_number(KP.getToken(command, 4));
  if (!(times >= 0)) act_bad('times');
  if (!(delay >= 0) || !Number.isFinite(delay)) act_bad('delay');
  const i = act_button(command, host, warn);
  // Every blink is a pair of toggles, so the end state is always the
  // start; without motion there is nothing left to show.
  if (host.reducedMotion || times === 0) return;
  const hidden = !!host.isHidden(i);
  const toggles = 2 * Math.min(times, 1e6);
  for (let k = 1; k <= toggles; k++) {
    if (k > 1) await host.sleep(delay);
    host.setHidden(i, k % 2 === 1 ? !hidden : hidden);
  }
}
