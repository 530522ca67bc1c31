// The in-memory project: one applet record, the button array and the
// session variables beside them. Every layer reads and writes this one
// structure; windows keep no copy of it.
//
// Button numbers are 1-based everywhere: Btn[i] for i in 1..ButtonCount is
// the button, its stacking order (higher on top) and its parameter number.
// Per-state properties are Tri<T>, indexed 1 (UP), 2 (OVER), 3 (DOWN).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kp {

using i16 = std::int16_t;
using i32 = std::int32_t;
using Colour = std::int32_t;  // red bits 0-7, green 8-15, blue 16-23

constexpr Colour RGB(int r, int g, int b) { return r + 256 * g + 65536 * b; }

// Version text of the project format and the settings sections.
inline constexpr const char* sPRJ_FILE_VERSION = "2.02";
// The array is allocated to 1002, the last slot deliberately never used.
inline constexpr int kBtnUpperBound = 1002;
inline constexpr int kMaxButtons = 1001;

template <class T>
struct Tri {
  T v[3]{};
  T& operator[](int state) { return v[state - 1]; }
  const T& operator[](int state) const { return v[state - 1]; }
  bool operator==(const Tri&) const = default;
};

// Field order as the project file and the text record write them.
struct tButton {
  std::string sBName;
  i16 x = 0;
  i16 y = 0;
  i16 Width = 0;
  i16 Height = 0;
  Tri<std::string> Label;
  Tri<bool> PositionText;
  Tri<i16> LabelPosX;
  Tri<i16> LabelPosY;
  std::string URL;
  std::string Target;
  std::string Status;
  std::string Tip;
  Tri<Colour> BackColor;
  Tri<std::string> Font;
  Tri<i16> FontStyle;
  Tri<i16> FontSize;
  Tri<Colour> FontColor;
  Tri<std::string> Image;
  Tri<i16> ImgStyle;
  i16 iBtnType = 0;
  Tri<i16> BorderStyle;
  Tri<i16> BorderWidth;
  Tri<i16> BorderShade;
  Tri<bool> BorderAutoColor;
  Tri<Colour> BorderColor;
  Tri<i16> TFrameThick;
  Tri<Colour> TFrameColor;
  Tri<bool> TFrameLight;
  Tri<i16> TFrameShade;
  Tri<bool> TFrameLeftToRight;
  i16 Hidden = 0;
  Tri<bool> noBackGround;
  bool ShowHand = false;
  Tri<std::string> Snd;
  Tri<bool> SoundStop;
  Tri<bool> SoundLoop;
  std::string ProgramUP;
  std::string ProgramLEAVE;
  std::string ProgramOVER;
  std::string ProgramDOWN;
  std::string ProgramCHECK;
  std::string ProgramUNCHECK;
  Tri<Colour> FadeColor;
  Tri<i16> FadeStyle;
  Tri<Colour> FrameColor;
  Tri<i16> FrameThick;
  Tri<i16> ImgX;
  Tri<i16> ImgY;
  bool Radio = false;

  bool operator==(const tButton&) const = default;
};

// The project-wide record plus the session state. Defaults here are those of
// a freshly allocated record; SetDefaultMainParams gives the documented ones.
struct Project {
  // Applet record.
  i16 AppletWidth = 0;
  i16 AppletHeight = 0;
  i16 ButtonCount = 0;
  Colour BackGround = 0;
  i16 DOWNBtn = 0;
  std::string BackImg;
  i16 BackImgStyle = 0;
  i16 iBgOffsetX = 0;
  i16 iBgOffsetY = 0;
  i16 iABorderStyle = 0;
  i16 iABorderWidth = 0;
  i16 iABorderShade = 0;
  Colour cABorderColor = 0;
  Colour cFadeColor = 0;
  i16 iFadeStyle = 0;
  i16 iDescentX = 0;
  i16 iDescentY = 0;
  std::string AppletName;
  std::string CodeBase;
  std::string ImgPath;
  std::string SndPath;
  i16 bUnusualRepaint = 0;
  bool bPreLoad = false;
  bool bClip = false;
  bool bDoScroll = false;
  i16 iScStep = 0;
  i16 iScDelay = 0;
  i16 iScDirection = 0;
  Colour cTipBackColor = 0;
  Colour cTipTextColor = 0;
  Colour cTipBorderColor = 0;
  i16 iTipBorderWidth = 0;
  i16 iTipDelay = 0;
  i16 iTipHideAfter = 0;
  i16 iTipFont = 0;
  i16 iTipFontSize = 0;
  i16 iTipFontStyle = 0;
  std::string sLoading;
  Colour cLoadingFont = 0;
  Colour cLoadingBack = 0;
  i16 iLoadingFont_Size = 0;
  i16 iLoadingFont_Style = 0;
  i16 iLoadingFont_Name = 0;
  std::string AppletProgramStart;
  std::string AppletProgramOVER;
  std::string AppletProgramDOWN;
  std::string AppletProgramOUT;
  std::string sHTMLbefore;
  std::string sHTMLalt;
  std::string sHTMLafter;
  std::string sOutputHTML;
  std::string sProjectName = "MyProject";
  std::string sOutputFolder;
  std::string sSearchImagesFolder;
  std::string sSearchSoundsFolder;
  std::string sSearchLinkFolder;

  // Buttons: Btn[0] is never used; Btn.size() is kBtnUpperBound + 1 once
  // allocated.
  std::vector<tButton> Btn;

  // Session variables, not saved.
  std::string sProjectFile;
  std::string sProjectsPath;
  bool bProjectSaved = true;
  i16 iLast_Change = 0;
  bool bReady = true;
  i16 iCurBtn = 0;
  std::string sState = "UP";
  bool bFillingPanel = false;
  // The main window's title, which the design window's title repeats.
  std::string sMainTitle = "Kestrel Pane 2.02";

  Project() { AllocateButtons(); }

  // Empties Btn and allocates it again to the fixed upper bound.
  void AllocateButtons();
  tButton& button(int i) { return Btn.at(static_cast<size_t>(i)); }
  const tButton& button(int i) const { return Btn.at(static_cast<size_t>(i)); }
};

inline constexpr const char* sCRLF = "\r\n";
inline constexpr const char* sQuote = "\"";

// Language-dependent texts that the model's defaults use. They start with
// the built-in English values; the language settings may replace them.
struct LangTexts {
  std::string NoJava = "Java is disabled in your Browser!";
  std::string Loading = "Loading...";
  std::string ButtonWord = "Button ";
  std::string TitleText = "Kestrel Pane 2.02";
  std::string TooManyButtons =
      "Can't create more buttons on one applet.\r\nYou may use two applets and put them on one page "
      "instead.";
  // The language settings' name, the sound tool's read-me file and the
  // page's content-type line.
  std::string LanguageName = "ENGLISH";
  std::string SoundReadMe = "Wav2Au_ReadMe.txt";
  std::string MetaLine =
      "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=iso-8859-1\">";
};
LangTexts& Lang();

// 1, 2, 3 for "UP", "OVER", "DOWN"; 0 for any other text, which is no state.
int GetStateIndex(const std::string& sState);
inline int GetStateIndex(const Project& p) { return GetStateIndex(p.sState); }

// Stores every documented applet default (the program name is the two words
// of the title). Pushing the record to the windows is the caller's business
// through ProjectView::SetMainParams.
void SetDefaultMainParams(Project& p);
std::string DefaultHTMLbefore();
std::string DefaultHTMLafter();
std::string DefaultHTMLalt();

// First "Button n" (n = 1, 2, ...) that no button other than `self` holds.
std::string Get_FREE_sBName(const Project& p, int self);

// The add-button limit test: true when another button may be added.
inline bool CanAddButton(const Project& p) { return p.ButtonCount < kMaxButtons; }

}  // namespace kp
