// The button panel's write path without its widgets: which field each
// control writes, how its text is converted, whether the button is redrawn
// and which last-change code the edit leaves. The panel widgets only read
// their controls and call WritePanelValue; everything a test needs to know
// about an edit is decided here.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/env.h"
#include "core/model.h"

namespace kp {

// The codes of iLast_Change: what the copy to the other states repeats.
namespace LastChange {
inline constexpr int None = 0;
inline constexpr int Label = 1;
inline constexpr int CenterText = 2;
inline constexpr int PositionText = 3;
inline constexpr int Font = 4;
inline constexpr int FontSize = 5;
inline constexpr int Bold = 6;
inline constexpr int Italic = 7;
inline constexpr int Image = 8;
inline constexpr int ImgStyle = 9;
inline constexpr int Sound = 10;
inline constexpr int BackColor = 11;
inline constexpr int FontColor = 12;
inline constexpr int BorderStyle = 13;
inline constexpr int BorderAutoColor = 14;
inline constexpr int BorderWidth = 15;
inline constexpr int BorderShade = 16;
inline constexpr int BorderColor = 17;
// 18 to 28 belong to the button special options dialog.
inline constexpr int TFrameColor = 18;
inline constexpr int TFrameThick = 19;
inline constexpr int TFrameShade = 20;
inline constexpr int TFrameLight = 21;
inline constexpr int TFrameLeftToRight = 22;
inline constexpr int FrameColor = 23;
inline constexpr int FrameThick = 24;
inline constexpr int SpecialBackColor = 25;
inline constexpr int FadeColor = 26;
inline constexpr int FadeStyle = 27;
inline constexpr int SwapColors = 28;
inline constexpr int SoundStop = 29;
inline constexpr int SoundLoop = 30;
inline constexpr int Transparent = 31;
inline constexpr int ImgOffset = 32;
}  // namespace LastChange

// The panel's controls that write into the model.
enum class PanelControl {
  txtLabel,
  lsFont,
  lsFontSize,
  imgBold,
  imgItalic,
  picFontColor,
  picBackColor,
  picBorderColor,
  cmbBorderStyle,
  txtBorderWidth,
  txtBorderShade,
  chkBorderAutoColor,
  chkTransparent,
  cmbImgStyle,
  txtImgX,
  txtImgY,
  txtImage,
  txtSound,
  txtURL,
  lsTarget,
  txtStatus,
  txtTip,
  txtX,
  txtY,
  txtWidth,
  txtHeight,
  chkHidden,
  chkShowHand,
  chkRadio,
  chkCenterText,
  chkPositionText,
  txtLabelPosX,
  txtLabelPosY,
  chkSoundLoop,
  chkSoundStop,
};

// How a written button is repainted.
enum class PanelRedraw {
  None,     // the field does not show on the design window
  InPlace,  // the face is painted again where it stands
  Move,     // position or size changed: the surface moves first
};

// Which name warning follows the write.
enum class NameCheck {
  None,
  FileName,  // a blank in the file-name part of the path
  Link,      // a blank or "\" anywhere, unless the text is a "javascript:" link
  Target,    // a blank or "." in a frame name
};

struct PanelRule {
  PanelControl control;
  const char* name;    // the control's name
  int code;            // LastChange code; 0 leaves iLast_Change alone
  PanelRedraw redraw;
  bool perState;       // the field of the state sState names
  bool needsReady;     // also stops while a project loads
  NameCheck check;
};

const PanelRule& RuleOf(PanelControl c);
const std::vector<PanelRule>& PanelRules();

// The value of a control as the write path reads it: text boxes and lists
// give their text; check boxes "1" or "0"; colour boxes the colour in
// decimal; the two style lists (cmbBorderStyle, cmbImgStyle) their index;
// the bold and italic toggles the style number of both flags.
struct WriteOutcome {
  bool ran = false;          // false: a guard stopped the edit
  std::vector<int> written;  // the buttons written, ascending
  int code = 0;              // the last-change code to record (0: none)
};

// The write path: stops while the panel is being filled (and, for the
// fields that need it, while a project loads); otherwise writes the
// converted value into every selected button, for per-state fields into the
// state sState names, and marks the project unsaved. Recording the code and
// redrawing are the caller's, which owns the button and the design window.
WriteOutcome WritePanelValue(Project& p, const std::vector<int>& selected, PanelControl c,
                             std::string_view value);

// The conversions of the write path, one per kind of field.
i16 FontSizeOf(std::string_view text);           // 3..999, default 10
i16 BorderWidthOf(std::string_view text);        // default 7
i16 BorderShadeOf(std::string_view text);        // default 25
i16 PositionOf(std::string_view text);           // txtX, txtY: default 10
i16 ButtonWidthOf(std::string_view text);        // absolute, default 100
i16 ButtonHeightOf(std::string_view text);       // absolute, default 50
i16 LabelPosOf(std::string_view text);           // default 0
i16 ImageOffsetOf(std::string_view text);        // default 0

// The font style number of the two toggles: bold 1, italic 2, both 3.
inline i16 FontStyleOf(bool bold, bool italic) {
  return static_cast<i16>((bold ? 1 : 0) + (italic ? 2 : 0));
}
inline bool IsBoldStyle(int style) { return style == 1 || style == 3; }
inline bool IsItalicStyle(int style) { return style == 2 || style == 3; }

// A link the file-name warning leaves alone.
bool IsJavaScriptLink(std::string_view text);

// The warning that follows a write of `c`, on the text as written
// (trimmed where the write trims).
void CheckPanelName(Env& env, PanelControl c, const std::string& value);

// The "Initially Pressed" box: the shown button, or 0.
inline void SetDOWNBtn(Project& p, bool checked) {
  p.DOWNBtn = checked ? p.iCurBtn : 0;
  p.bProjectSaved = false;
}

// The captions ShowProp writes: the delete entry and the panel's frame.
std::string DeleteCaption(const std::string& deleteWord, const std::string& name);
std::string PropertiesCaption(const std::string& propertiesFor, const std::string& name);

}  // namespace kp
