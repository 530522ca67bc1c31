// Writes small project files for the browser tests: an applet line and
// button lines in the project file's field order, named fields set on top
// of plain defaults. Colours are model values (red + 256 green + 65536 blue).
const fs = require('node:fs');
const path = require('node:path');

const rgb = (r, g, b) => r + 256 * g + 65536 * b;

const APPLET_FIELDS = [
  'AppletWidth', 'AppletHeight', 'ButtonCount', 'R', 'DOWNBtn', 'BackGround', 'BackImg',
  'BackImgStyle', 'AppletProgramOVER', 'AppletProgramDOWN', 'AppletProgramOUT', 'iBgOffsetX',
  'iBgOffsetY', 'AppletProgramStart', 'AppletName', 'bUnusualRepaint', 'bDoScroll', 'iScStep',
  'iScDelay', 'iScDirection', 'CodeBase', 'bPreLoad', 'cTipBackColor', 'cTipTextColor',
  'cTipBorderColor', 'iTipBorderWidth', 'iTipDelay', 'iTipHideAfter', 'iTipFontStyle',
  'iTipFontSize', 'iTipFont', 'bClip', 'reserved', 'ImgPath', 'SndPath', 'iABorderStyle',
  'iABorderWidth', 'iABorderShade', 'cABorderColor', 'cFadeColor', 'iFadeStyle', 'sLoading',
  'cLoadingFont', 'cLoadingBack', 'iLoadingFont_Size', 'iLoadingFont_Style', 'iLoadingFont_Name',
  'iDescentX', 'iDescentY',
];

const APPLET_DEFAULTS = {
  AppletWidth: 420, AppletHeight: 180, ButtonCount: 0, R: 'R', DOWNBtn: 0, BackGround: rgb(255, 255, 255),
  BackImg: '', BackImgStyle: 0, AppletProgramOVER: '', AppletProgramDOWN: '', AppletProgramOUT: '',
  iBgOffsetX: 0, iBgOffsetY: 0, AppletProgramStart: '', AppletName: 'TestBar', bUnusualRepaint: 0,
  bDoScroll: 0, iScStep: 1, iScDelay: 0, iScDirection: 0, CodeBase: '', bPreLoad: 1,
  cTipBackColor: rgb(255, 255, 0), cTipTextColor: 0, cTipBorderColor: rgb(0, 0, 255),
  iTipBorderWidth: 1, iTipDelay: 300, iTipHideAfter: 2500, iTipFontStyle: 0, iTipFontSize: 10,
  iTipFont: 0, bClip: 1, reserved: 'reserved', ImgPath: '', SndPath: '', iABorderStyle: 0,
  iABorderWidth: 10, iABorderShade: 20, cABorderColor: rgb(0, 0, 255), cFadeColor: rgb(0, 0, 128),
  iFadeStyle: 0, sLoading: 'Loading...', cLoadingFont: rgb(0, 0, 255), cLoadingBack: rgb(255, 255, 255),
  iLoadingFont_Size: 10, iLoadingFont_Style: 1, iLoadingFont_Name: 0, iDescentX: 1, iDescentY: 1,
};

// Per-state fields are written three times (UP, OVER, DOWN); a value given
// as an array of three sets each state, a plain value sets all three.
const BUTTON_FIELDS = [
  'x', 'y', 'Width', 'Height', ['Label'], 'URL', 'Status', 'Target', 'type', 'transparent',
  'ShowHand', ['Image'], ['BackColor'], ['FontColor'], ['Font'], ['FontStyle'], ['FontSize'], ['Snd'],
  ['ImgStyle'], ['PositionText'], 'LabelPos', 'Hidden', 'ProgramLEAVE', 'ProgramOVER', 'ProgramDOWN',
  'Tip', ['BorderStyle'], ['BorderWidth'], ['BorderShade'], ['BorderAutoColor'], ['BorderColor'],
  ['TFrameThick'], ['TFrameColor'], ['TFrameLight'], ['TFrameShade'], ['TFrameLeftToRight'],
  ['FadeColor'], ['FadeStyle'], ['FrameColor'], ['FrameThick'], 'sBName', ['SoundStop'],
  ['SoundLoop'], 'ImgPos', 'Radio', 'ProgramUP', 'ProgramCHECK', 'ProgramUNCHECK',
];

const BUTTON_DEFAULTS = {
  x: 10, y: 10, Width: 100, Height: 30, Label: 'Button', URL: '', Status: '', Target: '_self',
  type: 5, noBackGround: [false, false, false], ShowHand: 1, Image: '', BackColor: rgb(192, 192, 192),
  FontColor: 0, Font: 'arial', FontStyle: 0, FontSize: 10, Snd: '', ImgStyle: 0, PositionText: 0,
  LabelPosX: 0, LabelPosY: 0, Hidden: 0, ProgramLEAVE: '', ProgramOVER: '', ProgramDOWN: '', Tip: '',
  BorderStyle: 1, BorderWidth: 2, BorderShade: 20, BorderAutoColor: 0, BorderColor: rgb(128, 128, 128),
  TFrameThick: 0, TFrameColor: 0, TFrameLight: 0, TFrameShade: 0, TFrameLeftToRight: 0,
  FadeColor: 0, FadeStyle: 0, FrameColor: 0, FrameThick: 0, SoundStop: 0, SoundLoop: 0,
  ImgX: 0, ImgY: 0, Radio: 0, ProgramUP: '', ProgramCHECK: '', ProgramUNCHECK: '',
};

const tri = (v) => (Array.isArray(v) ? v : [v, v, v]);
const bool = (v) => (v ? '1' : '0');

function buttonLine(given, index) {
  const b = Object.assign({}, BUTTON_DEFAULTS, { sBName: 'Button ' + index }, given);
  const out = [];
  for (const f of BUTTON_FIELDS) {
    if (Array.isArray(f)) {
      const k = f[0];
      const vals = tri(b[k]);
      if (k === 'PositionText') out.push(...vals.map((v) => (v ? '-1' : '0')));
      else if (['BorderAutoColor', 'TFrameLight', 'TFrameLeftToRight', 'SoundStop', 'SoundLoop'].includes(k)) {
        out.push(...vals.map(bool));
      } else out.push(...vals.map(String));
    } else if (f === 'transparent') {
      const t = tri(b.noBackGround);
      out.push('t' + [1, 2, 3].filter((s) => t[s - 1]).join(''));
    } else if (f === 'LabelPos') {
      const xs = tri(b.LabelPosX), ys = tri(b.LabelPosY);
      for (let s = 0; s < 3; s++) out.push(String(xs[s]), String(ys[s]));
    } else if (f === 'ImgPos') {
      const xs = tri(b.ImgX), ys = tri(b.ImgY);
      for (let s = 0; s < 3; s++) out.push(String(xs[s]), String(ys[s]));
    } else if (f === 'ShowHand' || f === 'Radio') {
      out.push(bool(b[f]));
    } else {
      out.push(String(b[f]).replace(/ /g, f === 'sBName' ? '&!0' : ' '));
    }
  }
  return out.join('|') + '|';
}

// The text of a project file: applet values, button values.
function projectText(applet, buttons) {
  const a = Object.assign({}, APPLET_DEFAULTS, applet, { ButtonCount: buttons.length });
  const line = APPLET_FIELDS.map((k) => String(a[k])).join('|') + '|';
  const lines = ['KestrelPane Project 2.02', line];
  buttons.forEach((b, k) => lines.push(buttonLine(b, k + 1)));
  lines.push('', '[Start: sHTMLbefore]', '<Html>', '<Head><Title>Test</Title></Head>', '<Body>',
    '[End: sHTMLbefore]', '[Start: sHTMLalt]', '<b>Java is disabled in your Browser!</b>',
    '[End: sHTMLalt]', '[Start: sHTMLafter]', '</Body>', '</Html>', '[End: sHTMLafter]', '',
    '[Start: kpProjectSettings]', 'test.html', '', '', '', '', '', '', '[End: kpProjectSettings]', '', '');
  return lines.join('\r\n');
}

// Writes a project into `dir` beside copies of the given media files.
function writeProject(dir, name, applet, buttons, media) {
  for (const m of media || []) fs.copyFileSync(m, path.join(dir, path.basename(m)));
  const file = path.join(dir, name);
  fs.writeFileSync(file, Buffer.from(projectText(applet, buttons), 'latin1'));
  return file;
}

// A copy of a project file whose buttons have no labels, for telling the
// label's pixels from the face's.
function withoutLabels(projectFile, outFile) {
  const lines = fs.readFileSync(projectFile, 'latin1').split('\r\n');
  const count = parseInt(lines[1].split('|')[2], 10);
  for (let k = 2; k < 2 + count; k++) {
    const f = lines[k].split('|');
    f[4] = f[5] = f[6] = '';
    lines[k] = f.join('|');
  }
  fs.writeFileSync(outFile, Buffer.from(lines.join('\r\n'), 'latin1'));
  return outFile;
}

// A copy of a project file without action programs, so that a face seen in
// the page is the face of the state and nothing a program changed.
function withoutPrograms(projectFile, outFile) {
  const lines = fs.readFileSync(projectFile, 'latin1').split('\r\n');
  const applet = lines[1].split('|');
  for (const k of [8, 9, 10, 13]) applet[k] = '';
  lines[1] = applet.join('|');
  const count = parseInt(applet[2], 10);
  for (let k = 2; k < 2 + count; k++) {
    const f = lines[k].split('|');
    for (const n of [47, 48, 49, 107, 108, 109]) f[n] = '';
    lines[k] = f.join('|');
  }
  fs.writeFileSync(outFile, Buffer.from(lines.join('\r\n'), 'latin1'));
  return outFile;
}

module.exports = { rgb, projectText, writeProject, withoutLabels, withoutPrograms, buttonLine };
