#include "properties/panel_model.h"

#include <cstdlib>

#include "core/conv.h"

namespace kp {

namespace {

using C = PanelControl;
using R = PanelRedraw;
using N = NameCheck;
namespace LC = LastChange;

// control, name, code, redraw, perState, needsReady, check
const std::vector<PanelRule> kRules = {
    {C::txtLabel, "txtLabel", LC::Label, R::InPlace, true, false, N::None},
    {C::lsFont, "lsFont", LC::Font, R::InPlace, true, false, N::None},
    {C::lsFontSize, "lsFontSize", LC::FontSize, R::InPlace, true, false, N::None},
    {C::imgBold, "imgBold", LC::Bold, R::InPlace, true, false, N::None},
    {C::imgItalic, "imgItalic", LC::Italic, R::InPlace, true, false, N::None},
    {C::picFontColor, "picFontColor", LC::FontColor, R::InPlace, true, false, N::None},
    {C::picBackColor, "picBackColor", LC::BackColor, R::InPlace, true, false, N::None},
    {C::picBorderColor, "picBorderColor", LC::BorderColor, R::InPlace, true, false, N::None},
    {C::cmbBorderStyle, "cmbBorderStyle", LC::BorderStyle, R::InPlace, true, true, N::None},
    {C::txtBorderWidth, "txtBorderWidth", LC::BorderWidth, R::InPlace, true, false, N::None},
    {C::txtBorderShade, "txtBorderShade", LC::BorderShade, R::InPlace, true, false, N::None},
    {C::chkBorderAutoColor, "chkBorderAutoColor", LC::BorderAutoColor, R::InPlace, true, false,
     N::None},
    {C::chkTransparent, "chkTransparent", LC::Transparent, R::InPlace, true, false, N::None},
    {C::cmbImgStyle, "cmbImgStyle", LC::ImgStyle, R::InPlace, true, true, N::None},
    {C::txtImgX, "txtImgX", LC::ImgOffset, R::InPlace, true, true, N::None},
    {C::txtImgY, "txtImgY", LC::ImgOffset, R::InPlace, true, true, N::None},
    {C::txtImage, "txtImage", LC::Image, R::InPlace, true, false, N::FileName},
    {C::txtSound, "txtSound", LC::Sound, R::None, true, false, N::FileName},
    {C::txtURL, "txtURL", 0, R::None, false, false, N::Link},
    {C::lsTarget, "lsTarget", 0, R::None, false, false, N::Target},
    {C::txtStatus, "txtStatus", 0, R::None, false, false, N::None},
    {C::txtTip, "txtTip", 0, R::None, false, false, N::None},
    {C::txtX, "txtX", 0, R::Move, false, false, N::None},
    {C::txtY, "txtY", 0, R::Move, false, false, N::None},
    {C::txtWidth, "txtWidth", 0, R::Move, false, false, N::None},
    {C::txtHeight, "txtHeight", 0, R::Move, false, false, N::None},
    {C::chkHidden, "chkHidden", 0, R::None, false, false, N::None},
    {C::chkShowHand, "chkShowHand", 0, R::None, false, false, N::None},
    {C::chkRadio, "chkRadio", 0, R::None, false, false, N::None},
    {C::chkCenterText, "chkCenterText", LC::CenterText, R::InPlace, true, false, N::None},
    {C::chkPositionText, "chkPositionText", LC::PositionText, R::InPlace, true, false, N::None},
    {C::txtLabelPosX, "txtLabelPosX", LC::PositionText, R::InPlace, true, false, N::None},
    {C::txtLabelPosY, "txtLabelPosY", LC::PositionText, R::InPlace, true, false, N::None},
    {C::chkSoundLoop, "chkSoundLoop", LC::SoundLoop, R::None, true, true, N::None},
    {C::chkSoundStop, "chkSoundStop", LC::SoundStop, R::None, true, true, N::None},
};

bool Checked(std::string_view v) { return MakeCInt(v, 0) != 0; }

i16 AbsOf(i16 v) { return v == -32768 ? i16{32767} : static_cast<i16>(v < 0 ? -v : v); }

// Writes the converted value of `c` into button b, state s (0 for the
// fields that are not per state).
void WriteOne(tButton& b, int s, PanelControl c, std::string_view v) {
  switch (c) {
    case C::txtLabel: b.Label[s] = std::string(v); break;
    case C::lsFont: b.Font[s] = std::string(v); break;
    case C::lsFontSize: b.FontSize[s] = FontSizeOf(v); break;
    case C::imgBold:
    case C::imgItalic: b.FontStyle[s] = MakeCInt(v, 0); break;
    case C::picFontColor: b.FontColor[s] = MakeCLng(v, 0); break;
    case C::picBackColor: b.BackColor[s] = MakeCLng(v, 0); break;
    case C::picBorderColor: b.BorderColor[s] = MakeCLng(v, 0); break;
    case C::cmbBorderStyle: b.BorderStyle[s] = MakeCInt(v, 0); break;
    case C::txtBorderWidth: b.BorderWidth[s] = BorderWidthOf(v); break;
    case C::txtBorderShade: b.BorderShade[s] = BorderShadeOf(v); break;
    case C::chkBorderAutoColor: b.BorderAutoColor[s] = Checked(v); break;
    case C::chkTransparent: b.noBackGround[s] = Checked(v); break;
    case C::cmbImgStyle: b.ImgStyle[s] = MakeCInt(v, 0); break;
    case C::txtImgX: b.ImgX[s] = ImageOffsetOf(v); break;
    case C::txtImgY: b.ImgY[s] = ImageOffsetOf(v); break;
    case C::txtImage: b.Image[s] = Trim(v); break;
    case C::txtSound: b.Snd[s] = Trim(v); break;
    case C::txtURL: b.URL = Trim(v); break;
    case C::lsTarget: b.Target = std::string(v); break;
    case C::txtStatus: b.Status = std::string(v); break;
    case C::txtTip: b.Tip = std::string(v); break;
    case C::txtX: b.x = PositionOf(v); break;
    case C::txtY: b.y = PositionOf(v); break;
    case C::txtWidth: b.Width = ButtonWidthOf(v); break;
    case C::txtHeight: b.Height = ButtonHeightOf(v); break;
    case C::chkHidden: b.Hidden = Checked(v) ? 1 : 0; break;
    case C::chkShowHand: b.ShowHand = Checked(v); break;
    case C::chkRadio: b.Radio = Checked(v); break;
    // Both boxes write the one flag; the value is the manual box's.
    case C::chkCenterText:
    case C::chkPositionText: b.PositionText[s] = Checked(v); break;
    case C::txtLabelPosX: b.LabelPosX[s] = LabelPosOf(v); break;
    case C::txtLabelPosY: b.LabelPosY[s] = LabelPosOf(v); break;
    case C::chkSoundLoop: b.SoundLoop[s] = Checked(v); break;
    case C::chkSoundStop: b.SoundStop[s] = Checked(v); break;
  }
}

}  // namespace

const std::vector<PanelRule>& PanelRules() { return kRules; }

const PanelRule& RuleOf(PanelControl c) {
  for (const PanelRule& r : kRules)
    if (r.control == c) return r;
  return kRules.front();
}

i16 FontSizeOf(std::string_view text) { return MakeCInt(checkIn(text, 3, 999, 10), 10); }
i16 BorderWidthOf(std::string_view text) { return MakeCInt(text, 7); }
i16 BorderShadeOf(std::string_view text) { return MakeCInt(text, 25); }
i16 PositionOf(std::string_view text) { return MakeCInt(text, 10); }
i16 ButtonWidthOf(std::string_view text) { return AbsOf(MakeCInt(text, 100)); }
i16 ButtonHeightOf(std::string_view text) { return AbsOf(MakeCInt(text, 50)); }
i16 LabelPosOf(std::string_view text) { return MakeCInt(text, 0); }
i16 ImageOffsetOf(std::string_view text) { return MakeCInt(text, 0); }

WriteOutcome WritePanelValue(Project& p, const std::vector<int>& selected, PanelControl c,
                             std::string_view value) {
  WriteOutcome out;
  const PanelRule& rule = RuleOf(c);
  if (p.bFillingPanel) return out;
  if (rule.needsReady && !p.bReady) return out;
  out.ran = true;
  const int s = GetStateIndex(p);
  for (int i : selected) {
    if (i < 1 || i > p.ButtonCount) continue;
    // A state name that is none of the three has no field to write.
    if (rule.perState && s == 0) continue;
    WriteOne(p.button(i), s, c, value);
    out.written.push_back(i);
  }
  p.bProjectSaved = false;
  out.code = rule.code;
  return out;
}

bool IsJavaScriptLink(std::string_view text) { return StartsWith(text, "javascript:"); }

void CheckPanelName(Env& env, PanelControl c, const std::string& value) {
  switch (RuleOf(c).check) {
    case NameCheck::None: break;
    // The file-name part alone: a folder may hold blanks, and "\" cannot
    // be in a name.
    case NameCheck::FileName: CheckFileName(env, FileNameOnly(Trim(value))); break;
    case NameCheck::Link:
      if (!IsJavaScriptLink(Trim(value))) CheckLinkName(env, Trim(value));
      break;
    case NameCheck::Target: CheckTargetName(env, value); break;
  }
}

std::string DeleteCaption(const std::string& deleteWord, const std::string& name) {
  return deleteWord + " " + name;
}

std::string PropertiesCaption(const std::string& propertiesFor, const std::string& name) {
  return propertiesFor + name;
}

}  // namespace kp
