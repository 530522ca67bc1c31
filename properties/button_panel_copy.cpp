#include "properties/button_panel_copy.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>

#include "core/conv.h"
#include "properties/panel_model.h"

namespace kp {

bool ControlNumber(const std::string& text, i16& out) {
  const std::string t = Trim(text);
  if (ParseInt16(t, out)) return true;
  if (t.empty()) return false;
  char* end = nullptr;
  errno = 0;
  const double d = std::strtod(t.c_str(), &end);
  if (errno != 0 || end != t.c_str() + t.size() || !std::isfinite(d)) return false;
  const double r = std::nearbyint(d);
  if (r < -32768.0 || r > 32767.0) return false;
  out = static_cast<i16>(r);
  return true;
}

namespace {

struct Failed {};

i16 Number(const std::string& text) {
  i16 v = 0;
  if (!ControlNumber(text, v)) throw Failed{};
  return v;
}

void FollowBackColour(tButton& b, int s) {
  if (b.BorderAutoColor[s]) b.BorderColor[s] = b.BackColor[s];
}

void CopyOne(tButton& b, int s, int code, const PanelControls& c) {
  namespace LC = LastChange;
  switch (code) {
    case LC::Label: b.Label[s] = c.txtLabel; break;
    case LC::CenterText: b.PositionText[s] = c.chkPositionText; break;
    case LC::PositionText:
      b.PositionText[s] = c.chkPositionText;
      b.LabelPosX[s] = Number(c.txtLabelPosX);
      b.LabelPosY[s] = Number(c.txtLabelPosY);
      break;
    case LC::Font: b.Font[s] = c.lsFont; break;
    case LC::FontSize: b.FontSize[s] = Number(c.lsFontSize); break;
    case LC::Bold:
    case LC::Italic: b.FontStyle[s] = c.fontStyle; break;
    case LC::Image: b.Image[s] = c.txtImage; break;
    case LC::ImgStyle: b.ImgStyle[s] = static_cast<i16>(c.cmbImgStyle); break;
    case LC::Sound: b.Snd[s] = c.txtSound; break;
    case LC::BackColor:
      b.BackColor[s] = c.picBackColor;
      FollowBackColour(b, s);
      break;
    case LC::FontColor: b.FontColor[s] = c.picFontColor; break;
    case LC::BorderStyle: b.BorderStyle[s] = static_cast<i16>(c.cmbBorderStyle); break;
    case LC::BorderAutoColor:
      b.BorderAutoColor[s] = c.chkBorderAutoColor;
      b.BorderColor[s] = c.chkBorderAutoColor ? b.BackColor[s] : c.picBorderColor;
      break;
    case LC::BorderWidth: b.BorderWidth[s] = Number(c.txtBorderWidth); break;
    case LC::BorderShade: b.BorderShade[s] = Number(c.txtBorderShade); break;
    case LC::BorderColor:
      b.BorderAutoColor[s] = c.chkBorderAutoColor;
      b.BorderColor[s] = c.picBorderColor;
      break;
    case LC::TFrameColor: b.TFrameColor[s] = c.special.picColor; break;
    case LC::TFrameThick: b.TFrameThick[s] = Number(c.special.txtThick); break;
    case LC::TFrameShade: b.TFrameShade[s] = Number(c.special.txtShade); break;
    case LC::TFrameLight: b.TFrameLight[s] = c.special.cmbLight != 0; break;
    case LC::TFrameLeftToRight: b.TFrameLeftToRight[s] = c.special.cmbLeftToRight != 0; break;
    case LC::FrameColor: b.FrameColor[s] = c.special.picFrameColor; break;
    case LC::FrameThick: b.FrameThick[s] = Number(c.special.txtFrameThick); break;
    case LC::SpecialBackColor:
      b.BackColor[s] = c.special.picBackColor;
      FollowBackColour(b, s);
      break;
    case LC::FadeColor: b.FadeColor[s] = c.special.picFadeColor; break;
    case LC::FadeStyle: b.FadeStyle[s] = static_cast<i16>(c.special.cmbFadeStyle); break;
    case LC::SwapColors:
      b.FadeColor[s] = c.special.picFadeColor;
      b.BackColor[s] = c.special.picBackColor;
      FollowBackColour(b, s);
      break;
    case LC::SoundStop: b.SoundStop[s] = c.chkSoundStop; break;
    case LC::SoundLoop: b.SoundLoop[s] = c.chkSoundLoop; break;
    case LC::Transparent: b.noBackGround[s] = c.chkTransparent; break;
    case LC::ImgOffset:
      b.ImgX[s] = Number(c.txtImgX);
      b.ImgY[s] = Number(c.txtImgY);
      b.ImgStyle[s] = static_cast<i16>(c.cmbImgStyle);
      break;
    default: break;  // no group to repeat
  }
}

}  // namespace

bool CopyLastChangeToStates(Project& p, const std::vector<int>& selected, const PanelControls& c) {
  const int code = p.iLast_Change;
  if (code == LastChange::None) return true;
  p.bProjectSaved = false;
  static const char* const kStates[] = {"UP", "OVER", "DOWN"};
  try {
    for (int s = 1; s <= 3; ++s) {
      if (p.sState == kStates[s - 1]) continue;
      for (int i : selected) {
        if (i < 1 || i > p.ButtonCount) continue;
        CopyOne(p.button(i), s, code, c);
      }
    }
  } catch (const Failed&) {
    return false;
  }
  return true;
}

}  // namespace kp
