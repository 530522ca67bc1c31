// The pixels of the design window: the design surface (background, fade,
// background picture, grid, applet border) and one persistent surface per
// button, stacked over it in button order. Every repaint of a button goes
// through RedrawButton; a surface keeps its pixels until something paints
// it again, so showing the window only ever shows these surfaces.
//
// The scene reads and writes the one project model. It writes back exactly
// what the drawing writes back: the first label line's place when the
// label is centred, and the border colour when it follows the face colour.
#pragma once

#include <QImage>
#include <atomic>
#include <memory>
#include <string>
#include <vector>

#include "core/model.h"
#include "core/prompter.h"
#include "render/picture.h"
#include "render/raster.h"
#include "render/text.h"

namespace kp {

// The grid settings of the design window.
struct GridOptions {
  bool bShowGrid = false;
  bool bShowGridAsDots = false;
  i16 iGridX = 10;
  i16 iGridY = 10;
  Colour lGridColor = 8421504;
};

// What the design window does around a repaint: the selection it shows
// and its handles. Every call has a do-nothing default, so headless
// callers need not care.
class DesignHooks {
 public:
  virtual ~DesignHooks() = default;
  virtual int SelectedCount() { return 0; }
  virtual bool IsSelected(int /*i*/) { return false; }
  virtual void MoveSizer(int /*i*/) {}
  virtual void MoveLabelPositioner(int /*i*/) {}
  virtual void HideSizers() {}
};

class Scene {
 public:
  // The scene draws text through `measure` and reports drawing errors
  // through `prompter`; both must outlive it.
  Scene(Project& p, Prompter& prompter, TextMeasure& measure, DesignHooks* hooks = nullptr);
  ~Scene();
  Scene(const Scene&) = delete;
  Scene& operator=(const Scene&) = delete;

  // --- Surfaces -------------------------------------------------------------

  Surface& Design() { return design_; }
  const Surface& Design() const { return design_; }
  // The design surface's size: the window's client area, or the screen's
  // size so that a tiled background can fill any window size. False, after
  // a message, when the memory cannot hold it: the surface is then empty.
  bool SetDesignSize(int w, int h);
  bool SizeDesignToApplet() { return SetDesignSize(p_.AppletWidth, p_.AppletHeight); }

  // The surface of button i (1-based), created empty on first use.
  Surface& pButtons(int i);
  bool HasSurface(int i) const;
  // Every button surface removed (a project is unloaded).
  void ClearButtons();
  // Button i exists now: its surface is placed and painted.
  void LoadButton(int i);
  // Button i was removed from Btn: the surfaces above it move down one.
  void RemoveButton(int i);
  // Buttons i and j exchanged their places in Btn.
  void SwapButtons(int i, int j);

  // --- Pictures ---------------------------------------------------------------

  // The design window as shown: the design surface with every button's
  // surface over it, higher numbers on top.
  QImage Compose() const;
  // The applet's rectangle of that picture.
  QImage ComposeApplet() const;
  // The same picture, made in the design surface's own pixels when it has
  // the applet's size, so that no second full-size copy is needed. The
  // design surface is empty afterwards. Null when the memory cannot hold
  // the picture.
  QImage TakeAppletPicture();
  // Background, applet border and every button, placed and painted in
  // button order: the design window after a project was loaded.
  void RepaintAll();
  // Every button repainted in place, in button order: a state switch.
  void RedrawAllButtons();
  // The design window was resized: the background as far as the size
  // needs it, the applet border, the transparent buttons.
  void RepaintAfterResize();
  // The refresh command (F5): everything under the buttons, forced.
  void Refresh();

  // --- Button face ------------------------------------------------------------

  // The one entry for repainting a button.
  void RedrawButton(int i, bool bMoveSizer, bool bMoveLabel, bool bSkipMove, bool bRedrawAbove);
  // Face colour, fade and picture of the state, or what lies under a
  // transparent face. Quiet on every error.
  void DrawPix(int i);
  void MakeTransparent(int i);
  void CopyCoveredButtons(int i);
  bool DoCover(int i, int j);
  void RedrawTransparentAbove(int i);
  // 0: every button whose current state is transparent; otherwise only
  // button i when it is.
  void UpdateTransparentBtns(int i);
  // The marks of a button that is one of several selected.
  void DrawMultiSelector(int i);

  // --- Label ------------------------------------------------------------------

  void DrawLabel(int i);
  // Sets the font and prints one line with its cell's left at X and its
  // top three quarters of the text's height above Y.
  void drawString(int i, const std::string& s, i16 X, i16 Y, const std::string& FontName,
                  i16 FontSize, Colour Color, bool Bold, bool Italic);
  // The text border of one line: the line printed at every offset around
  // (X, Y) up to Thick, each print in a shade of Color.
  void drawTFrame(int i, Surface& surface, const std::string& s, i16 X, i16 Y, i16 Thick,
                  Colour Color, bool Light, i16 Shade, bool LeftToRight,
                  const std::string& FontName, i16 FontSize, bool Bold, bool Italic);
  void StoreLabelPos(int i, i16 x, i16 y);

  // --- Borders ----------------------------------------------------------------

  void DrawBorder(int i);
  void DrawAppletBorder();

  // --- Background -------------------------------------------------------------

  void DrawBackGround(bool bForce, bool bToScreen);
  void DrawGrid();

  // --- The design window's state ------------------------------------------------

  GridOptions grid;
  // "Auto Tiling Unseen Areas (Design Only)".
  bool bAutoTile = true;
  // The screen's size in pixels, the limit of tiling to the screen.
  int screenWidth = 1920;
  int screenHeight = 1080;
  // Set by Cancel in the answer to an error box; kept until the program
  // ends.
  bool bNoLabelErrors = false;
  bool bNoBorderErrors = false;
  bool bMovingBtn = false;
  // The background repaint cache.
  std::string sLastBackImg;
  std::string sLastTiledImg;
  i16 iLastBackStyle = 0;
  i16 iLastBackWidth = 0;
  i16 iLastBackHeight = 0;
  bool bTiledToScreen = false;
  bool bTiling = false;
  // Set by the Cancel button of the tile message while the tiling lets
  // events run; the progress window's Cancel sets it too.
  std::atomic<bool> bCancelTile{false};
  // Lines printed so far by drawString (text borders included).
  long long prints = 0;
  // The most all surfaces together may take, in bytes; 0 for no limit but
  // the memory's own. A surface beyond it is treated as one the memory
  // cannot hold.
  long long surfaceBudget = 0;
  // Drawings ended so far because a surface or the glyphs of a line could
  // not be had.
  int memoryFailures = 0;
  // Set by Cancel in the answer to a memory message; kept until the
  // program ends.
  bool bNoMemoryErrors = false;

 private:
  struct PrintSetup;
  PrintSetup SetupPrint(const std::string& s, const std::string& FontName, i16 FontSize, bool Bold,
                        bool Italic);
  void Place(int i);
  // Gives `s` the size w x h within the memory and the budget; otherwise
  // empties it, says which drawing ends and why (`what` names it), and
  // returns false.
  bool Allocate(Surface& s, int w, int h, const std::string& what);
  long long SurfaceBytes() const;
  void Report(const char* routine, int i, const std::string& description, bool& silenced);
  void PaintBackground(bool bForce, bool bToScreen);
  void Base();
  bool Tile(bool bForce, bool bToScreen, const Picture& pic);

  Project& p_;
  Prompter& prompter_;
  TextMeasure& measure_;
  DesignHooks* hooks_;
  Surface design_;
  std::vector<std::unique_ptr<Surface>> buttons_;  // index 0 unused
  PictureCache pictures_;
};

}  // namespace kp
