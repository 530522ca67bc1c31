// The applet's options without their windows: the Global Properties
// fields, the special options, the program settings, the label descent and
// the button special options' write path. The windows read their controls,
// call these, and repaint; every decision a test needs is made here.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/env.h"
#include "core/model.h"
#include "properties/panel_model.h"

namespace kp {

// --- Global Properties ---------------------------------------------------------------

inline constexpr i16 kMinAppletSize = 10;
inline constexpr i16 kMaxAppletSize = 32000;

// A typed width or height: a whole number held to 10..32000; `current`
// when the text is no number.
i16 AppletSizeOf(std::string_view text, i16 current);

// What the background picture's style list shows after its text changed.
struct BackImgList {
  int index = -1;     // the list's selection (-1 none)
  bool enabled = false;
  i16 style = 0;      // BackImgStyle: the index plus 1, 0 without a picture
};
// An empty list gets "Tile" as soon as there is a name; without a name the
// list is off and has no selection.
BackImgList BackImgTextChanged(const std::string& text, int listIndex);

// The offset control is of no use to a centred picture or to none.
inline bool BgOffsetVisible(int listIndex) { return listIndex != -1 && listIndex != 1; }

// btnChangeColors of the fade dialog: the applet's colour and its fade
// colour change places.
void SwapAppletColours(Project& p);

// --- Special options ------------------------------------------------------------------

// frmSpecial's controls, in the order of the table its OK reads them in.
struct SpecialOptions {
  std::string txt_sLoading;
  Colour pic_cLoadingFont = 0;
  Colour pic_cLoadingBack = 0;
  int cmb_iLoadingFont_Name = 0;
  std::string cmb_iLoadingFont_Size;
  bool chk_Bold_LoadingFont = false;
  bool chk_Italic_LoadingFont = false;
  bool chkClip = false;
  std::string txtTipBorderWidth;
  int lsTipFont = 0;
  std::string lsTipFontSize;
  bool chkTipBold = false;
  bool chkTipItalic = false;
  Colour picTipBackColor = 0;
  Colour picTipTextColor = 0;
  Colour picTipBorderColor = 0;
  std::string txtTipDelay;
  std::string txtTipHideAfter;
  bool optUnusualRepaint = false;
  bool chkDoScroll = false;
  int optDirections = 0;
  std::string txtiScDelay;
  std::string txtiScStep;
  bool chkPreLoad = false;

  bool operator==(const SpecialOptions&) const = default;
};

// Form_Load: the controls from the applet record.
SpecialOptions SpecialOptionsOf(const Project& p);
// btnRestoreDefaults: the documented defaults (the loading text of the
// language in use).
SpecialOptions SpecialDefaults();
// btnOK: every field in table order. A field whose text is no whole number
// is skipped and its failure's description is returned, in order; the
// other fields are still written.
std::vector<std::string> StoreSpecialOptions(Project& p, const SpecialOptions& o);

// The description of a failed conversion of a field's text, "" when it is
// a whole number.
std::string WholeNumberFailure(const std::string& text);

// --- Program settings -----------------------------------------------------------------

// frmAdvanced's check boxes as they show.
struct AdvancedOptions {
  bool chkAutoTile = true;
  bool chkKeepDesignOnTop = false;
  bool chkSaveBackup = false;
  bool chkSomeFilesWarning = true;
  bool chkReadyForUpload = true;
  bool chkAutoRepConfirm = true;
  bool chk_Create_Recent = true;
  bool chk_RegPixDlgBox = false;

  bool operator==(const AdvancedOptions&) const = default;
};

// The boxes from the settings; the "Dont" keys show negated.
AdvancedOptions AdvancedOptionsOf(Env& env);
// What the boxes are restored to.
inline AdvancedOptions AdvancedDefaults() { return AdvancedOptions{}; }
// btnOK: each box into its key, "1" or "0", the "Dont" keys negated.
void StoreAdvancedOptions(Env& env, const AdvancedOptions& o);

// --- Label descent ---------------------------------------------------------------------

// frmDescent's OK: both fields as whole numbers, 0 for anything else.
void StoreDescent(Project& p, const std::string& x, const std::string& y);

// --- Button special options ------------------------------------------------------------

// The controls of frmButtonSpecial that write into the selected buttons.
enum class SpecialControl {
  cmbFadeStyle,
  picBackColor,
  picFadeColor,
  picFrameColor,
  txtFrameThick,
  picColor,
  txtThick,
  txtShade,
  cmbLight,
  cmbLeftToRight,
};

// The last-change code an edit of the control leaves.
int SpecialCode(SpecialControl c);
// The frame is drawn in a browser only: its two controls do not redraw.
bool SpecialRedraws(SpecialControl c);

// The write path of the dialog: stops while a project loads (bReady
// false); otherwise writes the value, converted, into the state sState of
// every selected button and marks the project unsaved. Colours are decimal
// text, lists their index, text fields their text (a bad number gives 0).
WriteOutcome WriteSpecialValue(Project& p, const std::vector<int>& selected, SpecialControl c,
                               std::string_view value);

// btnChangeColors: each selected button's BackColor and FadeColor of the
// state sState change places (the border colour follows an auto colour).
WriteOutcome SwapButtonColours(Project& p, const std::vector<int>& selected);

}  // namespace kp
