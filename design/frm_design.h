// frmDesign: the design window. It shows the render scene (the design
// surface with one surface per button stacked over it by number) and lets
// the author pick buttons with the mouse, drag them, size them with four
// handles, nudge them with the arrow keys, move the label's marker, and
// line buttons up against the grid or each other.
//
// The selection is the main window's list of buttons, reached through a
// DesignHost; the model is the program's one Project.
//
// This header stays free of the render headers, so that the main window's
// files, which use the other text helpers, can include it.
#pragma once

#include <QImage>
#include <QPointer>
#include <QStringList>
#include <QWidget>
#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/env.h"
#include "core/language.h"
#include "core/model.h"
#include "design/design_host.h"
#include "design/geometry.h"

class QAction;
class QIcon;
class QKeyEvent;
class QMenu;
class QScrollBar;

namespace kp {

class Scene;
class QtTextMeasure;
class frmGrid;

class frmDesign : public QWidget {
 public:
  frmDesign(Project& p, Env& env, DesignHost& host, QWidget* parent = nullptr);
  ~frmDesign() override;

  // --- The pictures --------------------------------------------------------------

  Scene& scene();
  // The one entry for repainting a button: forwards to the scene and shows
  // the result.
  void RedrawButton(int i, bool bMoveSizer = true, bool bMoveLabel = true, bool bSkipMove = false,
                    bool bRedrawAbove = true);
  // Button i exists now: its surface is created, placed and painted.
  void LoadButton(int i);
  // Button i was removed from Btn: the surfaces above it move down one.
  void RemoveButton(int i);
  // Buttons i and j exchanged their places in Btn.
  void SwapButtons(int i, int j);
  // Every button repainted in place (a state switch); the handles and the
  // label marker follow the current button.
  void RedrawAllButtons();
  // Background, border and every button (after a load).
  void RepaintAll();
  // Every button surface removed (a new or loading project).
  void ClearButtons();
  void UpdateTransparentBtns(int i);
  // "Auto Tiling Unseen Areas (Design Only)".
  void SetAutoTile(bool on);

  // The applet record pushed to the window: size, colour, background,
  // grid, repaint. Called by SetMainParams under bFillingPanel.
  void SetMainParams();
  // The window's inner size, which is the applet's size.
  void SetAppletSize(int width, int height);
  // The applet's colour: the background is painted again.
  void SetBackColor(Colour c);
  // The design surface, as painted.
  QImage& Surface();
  // The scene's picture: the design surface with every button over it
  // (the window shows it with the handles and the label marker on top).
  QImage Composed() const;

  // Icon, tile texts and, with a language in use, the language file's texts.
  void Form_Load(const LangSettings& lang, const QIcon& icon);
  void ChangeLang_frmDesign(const LangSettings& lang);
  const LangSettings& Language() const { return lang_; }
  // The window stays over `mainWindow` (the setting "frmDesignOnTop") or
  // stands on its own; either way it is shown.
  void ShowOver(QWidget* mainWindow, bool onTop);

  // --- Selection, dragging and sizing -----------------------------------------------

  // Places the four handles around button i and brings them to the front;
  // whether they show is the selection's business (ShowSizers, HideSizers).
  void MoveSizer(int i);
  void ShowSizers();
  void HideSizers();
  void DrawMultiSelector(int i);
  void changeSelColor(bool bUnlocked);

  // Button: 1 left, 2 right, 4 middle. Shift: 1 Shift, 2 Ctrl, 4 Alt.
  // X and Y are in the pressed surface's own coordinates.
  void pButtons_MouseDown(int i, int Button, int Shift, double X, double Y);
  void pButtons_MouseMove(int i, int Button, int Shift, double X, double Y);
  void pButtons_MouseUp(int i, int Button, int Shift, double X, double Y);
  void picSizer_MouseDown(int k, int Button, int Shift, double X, double Y);
  void picSizer_MouseMove(int k, int Button, int Shift, double X, double Y);
  void picSizer_MouseUp(int k, int Button, int Shift, double X, double Y);
  void Form_MouseDown(int Button, int Shift, double X, double Y);
  void Form_KeyDown(int KeyCode, int Shift);
  void Nudge(int dx, int dy);

  void mnuLOCKED_Click();
  // The title by the lock rule: "Design Window - " and the main window's
  // title, and the lock text while locked.
  void SetLockTitle();
  void Form_Activate();

  // --- Alignment, grid and stacking -------------------------------------------------

  void AlignX(int i, bool bMoveSizer);
  void AlignY(int i, bool bMoveSizer);
  void AlignW(int i, bool bMoveSizer, bool bRoundUp);
  void AlignH(int i, bool bMoveSizer, bool bRoundUp);
  void Align_Left();
  void Align_Right();
  void Align_Top();
  void Align_Bottom();
  void Align_Horizontal_Row();
  void Align_Vertical_Column();
  // One step up (down) in the button order for the current button; nothing
  // where there is no neighbour.
  void Public_mnuBringToFront_Click();
  void Public_mnuSendBack_Click();
  void mnuGrid_Click();
  frmGrid* Grid();
  // The grid settings of the session (Session()) handed to the scene.
  void SyncGrid();

  // --- Label marker and window commands ---------------------------------------------

  void MoveLabelPositioner(int i);
  void picLabelPositioner_MouseDown(int Button, int Shift, double X, double Y);
  void picLabelPositioner_MouseMove(int Button, int Shift, double X, double Y);
  void picLabelPositioner_MouseUp(int Button, int Shift, double X, double Y);
  // The window's inner size became w x h: it is the applet's size now.
  void Form_Resize(int w, int h);
  void Call_RESIZE();
  bool CHECK_POS_frmDesign();
  void Center_frmDesign();
  void mnuRefresh_Click();

  // --- Zoom ----------------------------------------------------------------------------

  // Screen pixels an applet pixel: 1, 2, 4 or 8. A view setting only: the
  // surfaces stay at 1:1, the applet keeps its size and nothing of it
  // reaches the project.
  int Zoom() const { return zoom_; }
  // Takes a step; the applet point at the view's centre stays there where
  // the scroll range allows.
  void SetZoom(int zoom);
  // The zoomed window fits on the screen and shows the whole applet.
  // Otherwise the window takes the screen's available area and the view
  // scrolls.
  bool ZoomFits(int zoom) const { return ZoomFits(zoom, p_.AppletWidth, p_.AppletHeight); }
  bool ZoomFits(int zoom, int appletW, int appletH) const;
  // The view scrolls: a resize of the window changes only what is seen,
  // never the applet.
  bool Scrolling() const { return scrolling_; }
  // The zoomed view's offset in window pixels, and the part of the window
  // that shows the applet (all of it unless scroll bars take their room).
  QPoint ScrollOffset() const { return scroll_; }
  QRect ViewRect() const;
  void ScrollTo(QPoint offset);

  // The main window's refresh routine: everything under the buttons
  // repainted, forced.
  void Refresh();

  // --- State -----------------------------------------------------------------------

  bool bLocked = false;
  bool bMouseDownBtn = false;
  double sngStartX = 0;
  i16 iStartY = 0;
  double sngLastX = 0;
  double sngLastY = 0;
  double sngSizerX = 0;
  i16 iSizerY = 0;
  bool bResizing = false;
  bool bSizeFromPanel = false;
  bool bKeepChanged = false;
  i16 iPosStartX = 0;
  i16 iPosStartY = 0;
  // Where the last press on the empty window was: the place for a new or
  // pasted button. The add command takes it when x is above 0 and clears it.
  float sngNewBtnX = 0;
  float sngNewBtnY = 0;

  struct Sizer {
    PointD pos;
    bool visible = false;
    std::string Tag = "Up";
  };
  std::array<Sizer, 4> picSizer;
  Colour sizerColour = 0x800000;

  struct Marker {
    double left = 0;
    double top = 0;
    int width = 8;
    int height = 8;
    bool visible = false;
    std::string Tag = "UP";
  };
  Marker picLabelPositioner;

  // The list commands of the main window; set by the button list's
  // operations (nothing happens while they are unset).
  std::function<void()> btnAddBtn_Click;
  std::function<void()> pub_mnuPaste_Click;
  std::function<void()> CutItem;
  std::function<void()> CopyItem;
  std::function<void()> PasteItem;

  // The popup menu of the empty window.
  QMenu* mnuCommon;
  QAction* mnuNewButton;
  QAction* mnuPaste;
  QAction* mnuLOCKED;
  QAction* mnuGrid;
  QAction* mnuRefresh;
  QMenu* mnuZoom;
  // 100, 200, 400 and 800 %, in the order of kZoomSteps.
  std::array<QAction*, 4> mnuZoomSteps{};
  // Shown only while the zoomed view scrolls.
  QScrollBar* scrollH = nullptr;
  QScrollBar* scrollV = nullptr;

  // Set by the program's shutdown: only then may the window close.
  bool bUnloading = false;

 protected:
  bool event(QEvent* e) override;
  void paintEvent(QPaintEvent* e) override;
  void resizeEvent(QResizeEvent* e) override;
  void closeEvent(QCloseEvent* e) override;
  void mousePressEvent(QMouseEvent* e) override;
  void mouseMoveEvent(QMouseEvent* e) override;
  void mouseReleaseEvent(QMouseEvent* e) override;
  void keyPressEvent(QKeyEvent* e) override;
  void wheelEvent(QWheelEvent* e) override;
  void dragEnterEvent(QDragEnterEvent* e) override;
  void dropEvent(QDropEvent* e) override;

 private:
  // Writes a snapped position or size into Btn(i), marks the project changed
  // when it moved, and redraws; nothing when there was nothing to snap to.
  void SnapField(int i, i16 tButton::*field, const std::optional<i16>& snapped, bool bMoveSizer);

  class Hooks;
  enum class Target { None, Button, Sizer, Marker, Form };

  void ApplyTexts();
  void EnsureDesignSize(int w, int h);
  // Surface i's place and size as a box.
  Box SurfaceBox(int i);
  void SetSurfaceBox(int i, const Box& b);
  bool ValidButton(int i) const;
  Selection CurrentSelection();
  // The panel's fields filled again from the current button.
  void FillPanel();
  // The window's client size set from code; its resize path runs at once.
  void SetClientSize(int w, int h);
  QRect SizerRect(int k) const;
  QRect MarkerRect() const;
  void PaintOverlays(QPainter& painter) const;
  std::string TitleTail() const;
  void BuildZoomMenu();
  void ApplyZoomTexts();
  void UpdateZoomMenu();
  // Ctrl with plus, minus or 0; true when the key was a zoom key.
  bool ZoomKey(const QKeyEvent& e);
  // A window position in applet pixels.
  QPointF AppletPos(const QPointF& windowPos) const;
  // A zoom step that keeps the applet point under `anchor` (a view
  // position) in place, or the view's centre without one.
  void SetZoomAt(int zoom, std::optional<QPoint> anchor);
  // The client size for an applet at a zoom: the zoomed applet, or the
  // largest part of it the screen's available area holds.
  QSize ZoomedClientSize(int zoom, int appletW, int appletH) const;
  // The screen's area for windows (a fallback when there is no screen).
  QRect AvailableArea() const;
  QSize MaxClientSize() const;
  // The thickness of a scroll bar.
  int BarExtent() const;
  // A scrolling window is moved back within the available area; returns
  // how far it moved.
  QPoint KeepOnScreen(QSize client);
  void BuildScrollBars();
  void ApplyScrollTexts();
  // The bars placed, shown or hidden, and their ranges set, for the
  // window's size now; the offset kept within the range.
  void LayoutView();
  // Page Up/Down, Home and End move the view; Shift for sideways.
  bool ScrollKey(const QKeyEvent& e);
  void ScrollWheel(QWheelEvent* e);
  // A window manager answers a resize later: after quick zoom steps a size
  // of an earlier step may still arrive, and is no resize of the applet.
  bool StaleZoomSize(const QSize& s);
  // A press came while an earlier press still held the capture although
  // its button is up: the release went to a menu or dialog. The earlier
  // press ends here, so the new one is not lost.
  void EndStaleCapture(Qt::MouseButtons held);
  // Transparent buttons above a dragged one that took a piece of it; the
  // drag's end paints them again from what lies under them now.
  void NotePassedTransparent(int i);
  void RefreshPassedTransparent();

  Project& p_;
  Env& env_;
  DesignHost& host_;
  std::unique_ptr<QtTextMeasure> measure_;
  std::unique_ptr<Hooks> hooks_;
  std::unique_ptr<Scene> scene_;
  QPointer<frmGrid> grid_;
  LangSettings lang_;
  QWidget* mainWindow_ = nullptr;
  // The marker was brought to the front after the handles.
  bool markerOnTop_ = false;
  // The control that took the press, until the release.
  Target captured_ = Target::None;
  int capturedIndex_ = 0;
  int capturedButton_ = 0;
  // Where the last press was, on the screen: popup menus open there.
  QPoint pressGlobal_;
  int zoom_ = 1;
  bool zoomPending_ = false;
  bool scrolling_ = false;
  QPoint scroll_;
  QRect view_;
  // The offset a zoom step chose, kept until the window has its new size:
  // a size that arrives late must not cut it.
  std::optional<QPoint> scrollWanted_;
  // Wheel steps short of a whole notch (touchpads send small ones).
  int wheelRest_ = 0;
  std::vector<int> passedTransparent_;
};

}  // namespace kp
