#include "properties/applet_options.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdlib>

#include "core/conv.h"
#include "core/settings.h"
#include "properties/button_panel_copy.h"

namespace kp {

// --- Global Properties ---------------------------------------------------------------

i16 AppletSizeOf(std::string_view text, i16 current) {
  i32 v = 0;
  if (!ParseInt32(Trim(text), v)) {
    // A number too long for 32 bits is still a number: it is held.
    const std::string t = Trim(text);
    const bool digits = !t.empty() && std::all_of(t.begin() + (t[0] == '-' ? 1 : 0), t.end(),
                                                  [](char ch) { return ch >= '0' && ch <= '9'; });
    if (!digits || t == "-") return current;
    return t[0] == '-' ? kMinAppletSize : kMaxAppletSize;
  }
  return static_cast<i16>(std::clamp<i32>(v, kMinAppletSize, kMaxAppletSize));
}

BackImgList BackImgTextChanged(const std::string& text, int listIndex) {
  BackImgList out;
  out.index = listIndex;
  if (out.index == -1 && !text.empty()) out.index = 2;  // "Tile"
  out.enabled = !text.empty();
  if (text.empty()) {
    out.index = -1;
    out.style = 0;
  } else {
    out.style = static_cast<i16>(out.index + 1);
  }
  return out;
}

void SwapAppletColours(Project& p) {
  std::swap(p.BackGround, p.cFadeColor);
  p.bProjectSaved = false;
}

// --- Special options ------------------------------------------------------------------

namespace {

bool Bold(i16 style) { return style == 1 || style == 3; }
bool Italic(i16 style) { return style == 2 || style == 3; }

}  // namespace

SpecialOptions SpecialOptionsOf(const Project& p) {
  SpecialOptions o;
  o.txt_sLoading = p.sLoading;
  o.pic_cLoadingFont = p.cLoadingFont;
  o.pic_cLoadingBack = p.cLoadingBack;
  o.cmb_iLoadingFont_Name = p.iLoadingFont_Name;
  o.cmb_iLoadingFont_Size = std::to_string(p.iLoadingFont_Size);
  o.chk_Bold_LoadingFont = Bold(p.iLoadingFont_Style);
  o.chk_Italic_LoadingFont = Italic(p.iLoadingFont_Style);
  o.chkClip = p.bClip;
  o.txtTipBorderWidth = std::to_string(p.iTipBorderWidth);
  o.lsTipFont = p.iTipFont;
  o.lsTipFontSize = std::to_string(p.iTipFontSize);
  o.chkTipBold = Bold(p.iTipFontStyle);
  o.chkTipItalic = Italic(p.iTipFontStyle);
  o.picTipBackColor = p.cTipBackColor;
  o.picTipTextColor = p.cTipTextColor;
  o.picTipBorderColor = p.cTipBorderColor;
  o.txtTipDelay = std::to_string(p.iTipDelay);
  o.txtTipHideAfter = std::to_string(p.iTipHideAfter);
  o.optUnusualRepaint = p.bUnusualRepaint != 0;
  o.chkDoScroll = p.bDoScroll;
  o.optDirections = p.iScDirection;
  o.txtiScDelay = std::to_string(p.iScDelay);
  o.txtiScStep = std::to_string(p.iScStep);
  o.chkPreLoad = p.bPreLoad;
  return o;
}

SpecialOptions SpecialDefaults() {
  SpecialOptions o;
  o.txt_sLoading = Lang().Loading;
  o.pic_cLoadingFont = RGB(0, 0, 255);
  o.pic_cLoadingBack = RGB(255, 255, 255);
  o.cmb_iLoadingFont_Name = 0;
  o.cmb_iLoadingFont_Size = "10";
  o.chk_Bold_LoadingFont = true;
  o.chk_Italic_LoadingFont = false;
  o.chkClip = true;
  o.txtTipBorderWidth = "1";
  o.lsTipFont = 0;
  o.lsTipFontSize = "10";
  o.chkTipBold = false;
  o.chkTipItalic = false;
  o.picTipBackColor = RGB(255, 255, 0);
  o.picTipTextColor = RGB(0, 0, 0);
  o.picTipBorderColor = RGB(0, 0, 255);
  o.txtTipDelay = "300";
  o.txtTipHideAfter = "2500";
  o.optUnusualRepaint = false;
  o.chkDoScroll = false;
  o.optDirections = 0;
  o.txtiScDelay = "0";
  o.txtiScStep = "1";
  o.chkPreLoad = true;
  return o;
}

std::string WholeNumberFailure(const std::string& text) {
  i16 v = 0;
  if (ControlNumber(text, v)) return "";
  // A number out of the 16-bit range overflows; anything else is no number.
  const std::string t = Trim(text);
  char* end = nullptr;
  errno = 0;
  const double d = std::strtod(t.c_str(), &end);
  const bool digits = !t.empty() && t.find_first_not_of("+-.0123456789eE") == std::string::npos;
  if (digits && end == t.c_str() + t.size() && (errno == ERANGE || std::isfinite(d)))
    return "Overflow";
  return "Type mismatch";
}

std::vector<std::string> StoreSpecialOptions(Project& p, const SpecialOptions& o) {
  std::vector<std::string> failures;
  auto number = [&failures](const std::string& text, i16& field) {
    const std::string why = WholeNumberFailure(text);
    if (!why.empty()) {
      failures.push_back(why);
      return;
    }
    ControlNumber(text, field);
  };
  p.bProjectSaved = false;
  p.sLoading = o.txt_sLoading;
  p.cLoadingFont = o.pic_cLoadingFont;
  p.cLoadingBack = o.pic_cLoadingBack;
  p.iLoadingFont_Name = static_cast<i16>(o.cmb_iLoadingFont_Name);
  number(o.cmb_iLoadingFont_Size, p.iLoadingFont_Size);
  p.iLoadingFont_Style = FontStyleOf(o.chk_Bold_LoadingFont, o.chk_Italic_LoadingFont);
  p.bClip = o.chkClip;
  number(o.txtTipBorderWidth, p.iTipBorderWidth);
  p.iTipFont = static_cast<i16>(o.lsTipFont);
  number(o.lsTipFontSize, p.iTipFontSize);
  p.iTipFontStyle = FontStyleOf(o.chkTipBold, o.chkTipItalic);
  p.cTipBackColor = o.picTipBackColor;
  p.cTipTextColor = o.picTipTextColor;
  p.cTipBorderColor = o.picTipBorderColor;
  number(o.txtTipDelay, p.iTipDelay);
  number(o.txtTipHideAfter, p.iTipHideAfter);
  p.bUnusualRepaint = o.optUnusualRepaint ? -1 : 0;
  p.bDoScroll = o.chkDoScroll;
  p.iScDirection = static_cast<i16>(o.optDirections);
  number(o.txtiScDelay, p.iScDelay);
  number(o.txtiScStep, p.iScStep);
  p.bPreLoad = o.chkPreLoad;
  p.bProjectSaved = false;
  return failures;
}

// --- Program settings -----------------------------------------------------------------

namespace {

struct AdvancedKey {
  const char* key;
  bool negated;  // a "Dont" key: the box shows the opposite
  bool AdvancedOptions::*box;
};

const AdvancedKey kAdvancedKeys[] = {
    {"AutoTile", false, &AdvancedOptions::chkAutoTile},
    {"frmDesignOnTop", false, &AdvancedOptions::chkKeepDesignOnTop},
    {"bSaveBackup", false, &AdvancedOptions::chkSaveBackup},
    {"DontShowSomeFilesWarning", true, &AdvancedOptions::chkSomeFilesWarning},
    {"DontShowReadyForUpload", true, &AdvancedOptions::chkReadyForUpload},
    {"DontShowAutoRepConfirm", true, &AdvancedOptions::chkAutoRepConfirm},
    {"DontShow_frm_Create_Recent", true, &AdvancedOptions::chk_Create_Recent},
    {"chk_RegPixDlgBox", false, &AdvancedOptions::chk_RegPixDlgBox},
};

}  // namespace

AdvancedOptions AdvancedOptionsOf(Env& env) {
  AdvancedOptions o;
  for (const AdvancedKey& k : kAdvancedKeys) {
    // Only "0" is off, as every reader of these keys takes them.
    const bool on = TextToBool(GetParam(env, k.key));
    o.*k.box = k.negated ? !on : on;
  }
  return o;
}

void StoreAdvancedOptions(Env& env, const AdvancedOptions& o) {
  for (const AdvancedKey& k : kAdvancedKeys) {
    const bool box = o.*k.box;
    SetParam(env, k.key, BoolToText(k.negated ? !box : box));
  }
}

// --- Label descent ---------------------------------------------------------------------

void StoreDescent(Project& p, const std::string& x, const std::string& y) {
  p.iDescentX = MakeCInt(x, 0);
  p.iDescentY = MakeCInt(y, 0);
  p.bProjectSaved = false;
}

// --- Button special options ------------------------------------------------------------

int SpecialCode(SpecialControl c) {
  namespace LC = LastChange;
  switch (c) {
    case SpecialControl::cmbFadeStyle: return LC::FadeStyle;
    case SpecialControl::picBackColor: return LC::SpecialBackColor;
    case SpecialControl::picFadeColor: return LC::FadeColor;
    case SpecialControl::picFrameColor: return LC::FrameColor;
    case SpecialControl::txtFrameThick: return LC::FrameThick;
    case SpecialControl::picColor: return LC::TFrameColor;
    case SpecialControl::txtThick: return LC::TFrameThick;
    case SpecialControl::txtShade: return LC::TFrameShade;
    case SpecialControl::cmbLight: return LC::TFrameLight;
    case SpecialControl::cmbLeftToRight: return LC::TFrameLeftToRight;
  }
  return LC::None;
}

bool SpecialRedraws(SpecialControl c) {
  return c != SpecialControl::picFrameColor && c != SpecialControl::txtFrameThick;
}

namespace {

void FollowBackColour(tButton& b, int s) {
  if (b.BorderAutoColor[s]) b.BorderColor[s] = b.BackColor[s];
}

void WriteSpecialOne(tButton& b, int s, SpecialControl c, std::string_view value) {
  const i16 n = MakeCInt(value, 0);
  const Colour colour = MakeCLng(value, 0);
  switch (c) {
    case SpecialControl::cmbFadeStyle: b.FadeStyle[s] = n; break;
    case SpecialControl::picBackColor:
      b.BackColor[s] = colour;
      FollowBackColour(b, s);
      break;
    case SpecialControl::picFadeColor: b.FadeColor[s] = colour; break;
    case SpecialControl::picFrameColor: b.FrameColor[s] = colour; break;
    case SpecialControl::txtFrameThick: b.FrameThick[s] = n; break;
    case SpecialControl::picColor: b.TFrameColor[s] = colour; break;
    case SpecialControl::txtThick: b.TFrameThick[s] = n; break;
    case SpecialControl::txtShade: b.TFrameShade[s] = n; break;
    case SpecialControl::cmbLight: b.TFrameLight[s] = n != 0; break;
    case SpecialControl::cmbLeftToRight: b.TFrameLeftToRight[s] = n != 0; break;
  }
}

template <class F>
WriteOutcome ForEachSelected(Project& p, const std::vector<int>& selected, int code, F write) {
  WriteOutcome out;
  if (!p.bReady) return out;
  out.ran = true;
  const int s = GetStateIndex(p);
  for (int i : selected) {
    if (i < 1 || i > p.ButtonCount || s == 0) continue;
    write(p.button(i), s);
    out.written.push_back(i);
  }
  p.bProjectSaved = false;
  out.code = code;
  return out;
}

}  // namespace

WriteOutcome WriteSpecialValue(Project& p, const std::vector<int>& selected, SpecialControl c,
                               std::string_view value) {
  return ForEachSelected(p, selected, SpecialCode(c),
                         [&](tButton& b, int s) { WriteSpecialOne(b, s, c, value); });
}

WriteOutcome SwapButtonColours(Project& p, const std::vector<int>& selected) {
  return ForEachSelected(p, selected, LastChange::SwapColors, [](tButton& b, int s) {
    std::swap(b.BackColor[s], b.FadeColor[s]);
    FollowBackColour(b, s);
  });
}

}  // namespace kp
