// Repeating the panel's last edit in the other two states of the selected
// buttons. The values come from the controls, not from the model, so the
// caller hands over what its controls show now.
#pragma once

#include <string>
#include <vector>

#include "core/model.h"

namespace kp {

// The button special options dialog's controls that codes 18 to 28 read.
// Its form defaults stand until the dialog fills them.
struct SpecialControls {
  Colour picColor = 0;
  std::string txtThick = "0";
  std::string txtShade = "0";
  int cmbLight = 0;
  int cmbLeftToRight = 0;
  Colour picFrameColor = 0;
  std::string txtFrameThick = "0";
  Colour picBackColor = 0;
  Colour picFadeColor = 0;
  int cmbFadeStyle = 0;
};

// The panel's controls that the copy reads, as they show now.
struct PanelControls {
  std::string txtLabel;
  bool chkPositionText = false;
  std::string txtLabelPosX;
  std::string txtLabelPosY;
  std::string lsFont;
  std::string lsFontSize;
  i16 fontStyle = 0;  // the style number of the bold and italic flags
  std::string txtImage;
  int cmbImgStyle = 0;
  std::string txtSound;
  Colour picBackColor = 0;
  Colour picFontColor = 0;
  int cmbBorderStyle = 0;
  bool chkBorderAutoColor = false;
  std::string txtBorderWidth;
  std::string txtBorderShade;
  Colour picBorderColor = 0;
  bool chkSoundStop = false;
  bool chkSoundLoop = false;
  bool chkTransparent = false;
  std::string txtImgX;
  std::string txtImgY;
  SpecialControls special;
};

// A number typed in a control, as an implicit conversion reads it: blanks
// around it allowed, a fraction rounded half to even; false when it is no
// number or out of the 16-bit range.
bool ControlNumber(const std::string& text, i16& out);

// btnCopyToAll: for every state other than sState and every selected
// button, the group of iLast_Change is written from `c`. Nothing happens
// for code 0. Returns false when a value could not be converted: the copy
// stopped there, and what was written stays.
bool CopyLastChangeToStates(Project& p, const std::vector<int>& selected, const PanelControls& c);

}  // namespace kp
