// The design window's life: its pictures, its size, its title, its popup
// menu and the routing of mouse and key events to the handlers of the
// surfaces they fall on.
#include "design/frm_design.h"

#include <QAction>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QIcon>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>

#include <algorithm>

#include "core/conv.h"
#include "core/startup.h"
#include "design/design_texts.h"
#include "design/frm_grid.h"
#include "render/raster.h"
#include "render/scene.h"
#include "render/text.h"

namespace kp {

// What the scene asks of the window around a repaint.
class frmDesign::Hooks : public DesignHooks {
 public:
  explicit Hooks(frmDesign& w) : w_(w) {}
  int SelectedCount() override { return w_.host_.SelectedCount(); }
  bool IsSelected(int i) override { return w_.host_.IsSelected(i); }
  void MoveSizer(int i) override { w_.MoveSizer(i); }
  void MoveLabelPositioner(int i) override { w_.MoveLabelPositioner(i); }
  void HideSizers() override { w_.HideSizers(); }

 private:
  frmDesign& w_;
};

namespace {

QStringList LocalFiles(const QMimeData* data) {
  QStringList files;
  if (!data || !data->hasUrls()) return files;
  for (const QUrl& u : data->urls())
    if (u.isLocalFile()) files << u.toLocalFile();
  return files;
}

int ButtonOf(Qt::MouseButton b) {
  switch (b) {
    case Qt::LeftButton: return 1;
    case Qt::RightButton: return 2;
    case Qt::MiddleButton: return 4;
    default: return 0;
  }
}

int ShiftOf(Qt::KeyboardModifiers m) {
  return (m.testFlag(Qt::ShiftModifier) ? 1 : 0) | (m.testFlag(Qt::ControlModifier) ? 2 : 0) |
         (m.testFlag(Qt::AltModifier) ? 4 : 0);
}

QSize ScreenSize(const QWidget* w) {
  QScreen* s = w->screen() ? w->screen() : QGuiApplication::primaryScreen();
  return s ? s->geometry().size() : QSize(1024, 768);
}

}  // namespace

frmDesign::frmDesign(Project& p, Env& env, DesignHost& host, QWidget* parent)
    : QWidget(parent, Qt::Window),
      p_(p),
      env_(env),
      host_(host),
      measure_(std::make_unique<QtTextMeasure>()),
      hooks_(std::make_unique<Hooks>(*this)) {
  setObjectName("frmDesign");
  setAcceptDrops(true);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setFocusPolicy(Qt::StrongFocus);
  scene_ = std::make_unique<Scene>(p_, env_.prompter, *measure_, hooks_.get());
  const QSize screen = ScreenSize(this);
  scene_->screenWidth = screen.width();
  scene_->screenHeight = screen.height();
  SyncGrid();

  mnuCommon = new QMenu(this);
  mnuCommon->setObjectName("mnuCommon");
  mnuNewButton = mnuCommon->addAction(QString(), [this] {
    if (btnAddBtn_Click) btnAddBtn_Click();
  });
  mnuNewButton->setObjectName("mnuNewButton");
  mnuPaste = mnuCommon->addAction(QString(), [this] {
    if (pub_mnuPaste_Click) pub_mnuPaste_Click();
  });
  mnuPaste->setObjectName("mnuPaste");
  mnuCommon->addSeparator();
  mnuLOCKED = mnuCommon->addAction(QString(), [this] { mnuLOCKED_Click(); });
  mnuLOCKED->setObjectName("mnuLOCKED");
  mnuLOCKED->setCheckable(true);
  mnuGrid = mnuCommon->addAction(QString(), [this] { mnuGrid_Click(); });
  mnuGrid->setObjectName("mnuGrid");
  mnuCommon->addSeparator();
  mnuRefresh = mnuCommon->addAction(QString(), [this] { mnuRefresh_Click(); });
  mnuRefresh->setObjectName("mnuRefresh");
  mnuRefresh->setShortcut(Qt::Key_F5);
  BuildZoomMenu();
  BuildScrollBars();
  // Entries whose command is not there yet are not offered.
  connect(mnuCommon, &QMenu::aboutToShow, this, [this] {
    mnuNewButton->setEnabled(static_cast<bool>(btnAddBtn_Click));
    mnuPaste->setEnabled(static_cast<bool>(pub_mnuPaste_Click));
  });
  ApplyTexts();
  changeSelColor(true);

  resize(std::max<int>(1, p_.AppletWidth), std::max<int>(1, p_.AppletHeight));
  EnsureDesignSize(width(), height());
}

frmDesign::~frmDesign() = default;

void frmDesign::ApplyTexts() {
  const DesignTexts& t = frmDesignTexts();
  mnuNewButton->setText(DesignQText(t, "mnuNewButton"));
  mnuPaste->setText(DesignQText(t, "mnuPaste"));
  mnuLOCKED->setText(DesignQText(t, "mnuLOCKED"));
  mnuGrid->setText(DesignQText(t, "mnuGrid"));
  mnuRefresh->setText(DesignQText(t, "mnuRefresh"));
  ApplyZoomTexts();
  ApplyScrollTexts();
}

void frmDesign::Form_Load(const LangSettings& lang, const QIcon& icon) {
  lang_ = lang;
  setWindowIcon(icon);
  ChangeLang_frmDesign(lang);
}

void frmDesign::ChangeLang_frmDesign(const LangSettings& lang) {
  auto lines = WindowLanguageLines(env_, lang, kDesignSection, kDesignSectionLines);
  if (!lines) return;
  ReplaceDesignTexts(frmDesignTexts(), *lines);
  ApplyTexts();
}

// --- The pictures --------------------------------------------------------------

Scene& frmDesign::scene() { return *scene_; }

bool frmDesign::ValidButton(int i) const {
  return i >= 1 && i <= p_.ButtonCount && i < static_cast<int>(p_.Btn.size());
}

void frmDesign::RedrawButton(int i, bool bMoveSizer, bool bMoveLabel, bool bSkipMove,
                             bool bRedrawAbove) {
  scene_->RedrawButton(i, bMoveSizer, bMoveLabel, bSkipMove, bRedrawAbove);
  update();
}

void frmDesign::LoadButton(int i) {
  if (!ValidButton(i)) return;
  scene_->LoadButton(i);
  update();
}

void frmDesign::RemoveButton(int i) {
  scene_->RemoveButton(i);
  if (p_.ButtonCount <= 0) {
    HideSizers();
    picLabelPositioner.visible = false;
  }
  update();
}

void frmDesign::SwapButtons(int i, int j) {
  scene_->SwapButtons(i, j);
  update();
}

void frmDesign::RedrawAllButtons() {
  scene_->RedrawAllButtons();
  if (ValidButton(p_.iCurBtn)) {
    if (host_.SelectedCount() <= 1) MoveSizer(p_.iCurBtn);
    MoveLabelPositioner(p_.iCurBtn);
  }
  update();
}

void frmDesign::RepaintAll() {
  SyncGrid();
  scene_->RepaintAll();
  update();
}

void frmDesign::ClearButtons() {
  scene_->ClearButtons();
  bMouseDownBtn = false;
  captured_ = Target::None;
  HideSizers();
  picLabelPositioner.visible = false;
  update();
}

void frmDesign::UpdateTransparentBtns(int i) {
  scene_->UpdateTransparentBtns(i);
  update();
}

void frmDesign::SetAutoTile(bool on) { scene_->bAutoTile = on; }

void frmDesign::SyncGrid() {
  const SessionVars& s = Session();
  GridOptions& g = scene_->grid;
  g.bShowGrid = s.bShowGrid;
  g.bShowGridAsDots = s.bShowGridAsDots;
  g.iGridX = s.iGridX;
  g.iGridY = s.iGridY;
  g.lGridColor = s.lGridColor;
}

void frmDesign::EnsureDesignSize(int w, int h) {
  // The design surface covers the screen, so that a window grown by hand
  // shows a background tiled in advance.
  const QSize screen = ScreenSize(this);
  const int needW = std::max({w, static_cast<int>(p_.AppletWidth), screen.width(), 1});
  const int needH = std::max({h, static_cast<int>(p_.AppletHeight), screen.height(), 1});
  kp::Surface& d = scene_->Design();
  if (d.Width() < needW || d.Height() < needH)
    scene_->SetDesignSize(std::max(needW, d.Width()), std::max(needH, d.Height()));
}

void frmDesign::SetMainParams() {
  SyncGrid();
  scene_->Design().backColor = p_.BackGround;
  EnsureDesignSize(p_.AppletWidth, p_.AppletHeight);
  SetClientSize(p_.AppletWidth, p_.AppletHeight);
  scene_->DrawBackGround(true, false);
  scene_->DrawAppletBorder();
  scene_->UpdateTransparentBtns(0);
  update();
}

void frmDesign::SetAppletSize(int width, int height) {
  SetClientSize(std::max(1, width), std::max(1, height));
}

void frmDesign::SetBackColor(Colour c) {
  scene_->Design().backColor = c;
  scene_->DrawBackGround(true, false);
  scene_->DrawAppletBorder();
  scene_->UpdateTransparentBtns(0);
  update();
}

QImage& frmDesign::Surface() { return scene_->Design().img; }

QImage frmDesign::Composed() const { return scene_->Compose(); }

QRect frmDesign::SizerRect(int k) const {
  const Sizer& s = picSizer[static_cast<size_t>(k)];
  return QRect(RoundHalfEven(s.pos.x), RoundHalfEven(s.pos.y), kSizerW, kSizerH);
}

QRect frmDesign::MarkerRect() const {
  const Marker& m = picLabelPositioner;
  return QRect(RoundHalfEven(m.left), RoundHalfEven(m.top), m.width, m.height);
}

void frmDesign::PaintOverlays(QPainter& painter) const {
  const QColor sizer(sizerColour & 0xFF, (sizerColour >> 8) & 0xFF, (sizerColour >> 16) & 0xFF);
  auto sizers = [&] {
    for (int k = 0; k < 4; ++k)
      if (picSizer[static_cast<size_t>(k)].visible) painter.fillRect(SizerRect(k), sizer);
  };
  // picLabelPositioner_Paint: its face, and the outline along the right
  // and bottom edges.
  auto marker = [&] {
    if (!picLabelPositioner.visible) return;
    const QRect r = MarkerRect();
    painter.fillRect(r, QColor(255, 255, 0));
    // One applet pixel wide at every zoom.
    painter.fillRect(r.left() + r.width() - 1, r.top(), 1, r.height(), Qt::black);
    painter.fillRect(r.left(), r.top() + r.height() - 1, r.width(), 1, Qt::black);
  };
  if (markerOnTop_) {
    sizers();
    marker();
  } else {
    marker();
    sizers();
  }
}

void frmDesign::paintEvent(QPaintEvent*) {
  // The surfaces keep their pixels; showing the window only shows them.
  QPainter painter(this);
  const QImage& design = scene_->Design().img;
  painter.fillRect(rect(), Qt::white);
  const QRect view = ViewRect();
  // The corner between two scroll bars.
  if (view != rect()) painter.fillRect(rect().adjusted(view.width(), view.height(), 0, 0),
                                       palette().window());
  painter.setClipRect(view);
  painter.translate(-scroll_);
  // Zoomed, every applet pixel becomes a square of screen pixels: the
  // painter does not smooth unless asked.
  painter.scale(zoom_, zoom_);
  painter.drawImage(0, 0, design);
  for (int i = 1; i <= p_.ButtonCount; ++i) {
    if (!scene_->HasSurface(i)) continue;
    const kp::Surface& s = scene_->pButtons(i);
    painter.drawImage(s.Left, s.Top, s.img);
  }
  PaintOverlays(painter);
}

void frmDesign::ShowOver(QWidget* mainWindow, bool onTop) {
  mainWindow_ = mainWindow;
  const QPoint at = pos();
  const bool wasVisible = isVisible();
  // A window with a parent stays over it; one without stands on its own.
  if (onTop && parentWidget() != mainWindow) setParent(mainWindow, Qt::Tool);
  if (!onTop && parentWidget()) setParent(nullptr, Qt::Window);
  if (wasVisible) move(at);
  show();
}

// --- Size ------------------------------------------------------------------------

void frmDesign::SetClientSize(int w, int h) {
  EnsureDesignSize(w, h);
  // An applet too large for the zoomed window is scrolled.
  scrolling_ = !ZoomFits(zoom_, w, h);
  const QSize client = ZoomedClientSize(zoom_, w, h);
  if (scrolling_) KeepOnScreen(client);
  resize(client);
  // The platform may tell of the new size later, or not at all when the
  // window is hidden: the resize path runs now unless it already ran.
  if (w != p_.AppletWidth || h != p_.AppletHeight) Form_Resize(w, h);
  LayoutView();
}

void frmDesign::resizeEvent(QResizeEvent* e) {
  QWidget::resizeEvent(e);
  LayoutView();
  if (size() == ZoomedClientSize(zoom_, p_.AppletWidth, p_.AppletHeight)) scrollWanted_.reset();
  // While the view scrolls, a resize shows more or less of the applet.
  if (StaleZoomSize(size()) || scrolling_) return;
  const int w = AppletSpan(width(), zoom_), h = AppletSpan(height(), zoom_);
  EnsureDesignSize(w, h);
  // A size the applet already has is no resize of the applet (a window
  // shown for the first time, a size set from code arriving late, or a
  // change of zoom).
  if (w == p_.AppletWidth && h == p_.AppletHeight) return;
  Form_Resize(w, h);
}

void frmDesign::Form_Resize(int w, int h) {
  if (p_.bFillingPanel) return;
  env_.prompter.Busy(true);
  bResizing = true;
  p_.AppletWidth = static_cast<i16>(std::clamp(w, 0, 32767));
  p_.AppletHeight = static_cast<i16>(std::clamp(h, 0, 32767));
  if (!bSizeFromPanel) host_.ShowAppletSize(p_.AppletWidth, p_.AppletHeight);
  SyncGrid();
  scene_->RepaintAfterResize();
  bResizing = false;
  if (!bKeepChanged) p_.bProjectSaved = false;
  env_.prompter.Busy(false);
  // A new applet size gives the scrolling view a new range.
  LayoutView();
}

void frmDesign::Call_RESIZE() {
  if (scrolling_) Form_Resize(p_.AppletWidth, p_.AppletHeight);
  else Form_Resize(AppletSpan(width(), zoom_), AppletSpan(height(), zoom_));
}

bool frmDesign::CHECK_POS_frmDesign() {
  QScreen* s = screen() ? screen() : QGuiApplication::primaryScreen();
  const QRect area = s ? s->availableGeometry() : QRect(0, 0, 1024, 768);
  const QRect f = frameGeometry();
  return FitsOnScreen(f.x() + f.width(), f.y() + f.height(), area.width(), area.height());
}

void frmDesign::Center_frmDesign() {
  QScreen* s = screen() ? screen() : QGuiApplication::primaryScreen();
  const QRect area = s ? s->availableGeometry() : QRect(0, 0, 1024, 768);
  const QRect f = frameGeometry();
  auto [x, y] = CentredPos(f.width(), f.height(), area.width(), area.height());
  move(area.x() + x, area.y() + y);
}

// --- Title, activation, refresh ---------------------------------------------------------

void frmDesign::SetLockTitle() {
  const DesignTexts& t = frmDesignTexts();
  std::string title = DesignTextOf(t, "sDesignWindow") + " - " + p_.sMainTitle;
  if (bLocked) title += "   " + DesignTextOf(t, "sBUTTONSLOCKED");
  setWindowTitle(BytesText(title));
}

std::string frmDesign::TitleTail() const {
  if (!p_.sProjectFile.empty()) return " - " + FileNameOnly(p_.sProjectFile);
  return " - " + p_.sProjectName;
}

void frmDesign::Form_Activate() {
  host_.MarkHTMLStale();
  const DesignTexts& t = frmDesignTexts();
  if (scene_->bTiling)
    env_.prompter.ProgressShow(DesignTextOf(t, "sPleaseWait") + sCRLF +
                               DesignTextOf(t, "sTilingBackground"));
  std::string title = DesignTextOf(t, "sDesignWindow");
  if (bLocked) title += "    " + DesignTextOf(t, "sBUTTONSLOCKED");
  mnuLOCKED->setChecked(bLocked);
  setWindowTitle(BytesText(title + TitleTail()));
}

void frmDesign::mnuRefresh_Click() { host_.pub_mnuRefresh_Click(); }

void frmDesign::Refresh() {
  SyncGrid();
  scene_->Refresh();
  update();
}

bool frmDesign::event(QEvent* e) {
  if (e->type() == QEvent::WindowActivate) Form_Activate();
  return QWidget::event(e);
}

void frmDesign::closeEvent(QCloseEvent* e) {
  // The window lives as long as the program; the user cannot close it.
  if (bUnloading) {
    e->accept();
    return;
  }
  e->ignore();
  host_.ActivateMain();
}

void frmDesign::dragEnterEvent(QDragEnterEvent* e) {
  if (!LocalFiles(e->mimeData()).isEmpty()) e->acceptProposedAction();
}

void frmDesign::dropEvent(QDropEvent* e) {
  QStringList files = LocalFiles(e->mimeData());
  if (files.isEmpty()) return;
  e->acceptProposedAction();
  host_.FilesDropped(files);
}

// --- Routing of the mouse and the keys ---------------------------------------------------

void frmDesign::mousePressEvent(QMouseEvent* e) {
  // The corner between the scroll bars shows no applet.
  if (!ViewRect().contains(e->position().toPoint())) return;
  const QPointF at = AppletPos(e->position());
  const QPoint pt(RoundHalfEven(at.x()), RoundHalfEven(at.y()));
  const int button = ButtonOf(e->button());
  const int shift = ShiftOf(e->modifiers());
  EndStaleCapture(e->buttons() & ~Qt::MouseButtons(e->button()));
  if (captured_ != Target::None) return;  // a second button during a drag
  pressGlobal_ = e->globalPosition().toPoint();
  capturedButton_ = button;
  auto onMarker = [&] { return picLabelPositioner.visible && MarkerRect().contains(pt); };
  auto onSizer = [&]() -> int {
    for (int k = 0; k < 4; ++k)
      if (picSizer[static_cast<size_t>(k)].visible && SizerRect(k).contains(pt)) return k;
    return -1;
  };
  // The handles and the marker float over the buttons; whichever came to
  // the front last lies on top.
  int k = -1;
  if (markerOnTop_ && onMarker()) {
    captured_ = Target::Marker;
  } else if ((k = onSizer()) >= 0) {
    captured_ = Target::Sizer;
    capturedIndex_ = k;
  } else if (onMarker()) {
    captured_ = Target::Marker;
  } else {
    int hit = 0;
    for (int i = p_.ButtonCount; i >= 1 && hit == 0; --i) {
      if (!scene_->HasSurface(i)) continue;
      const kp::Surface& s = scene_->pButtons(i);
      if (QRect(s.Left, s.Top, s.Width(), s.Height()).contains(pt)) hit = i;
    }
    captured_ = hit ? Target::Button : Target::Form;
    capturedIndex_ = hit;
  }
  switch (captured_) {
    case Target::Marker:
      picLabelPositioner_MouseDown(button, shift, at.x() - picLabelPositioner.left,
                                   at.y() - picLabelPositioner.top);
      break;
    case Target::Sizer: {
      const PointD& s = picSizer[static_cast<size_t>(capturedIndex_)].pos;
      picSizer_MouseDown(capturedIndex_, button, shift, at.x() - s.x, at.y() - s.y);
      break;
    }
    case Target::Button: {
      const kp::Surface& s = scene_->pButtons(capturedIndex_);
      pButtons_MouseDown(capturedIndex_, button, shift, at.x() - s.Left, at.y() - s.Top);
      break;
    }
    default:
      Form_MouseDown(button, shift, at.x(), at.y());
      break;
  }
}

void frmDesign::mouseMoveEvent(QMouseEvent* e) {
  const QPointF at = AppletPos(e->position());
  const int shift = ShiftOf(e->modifiers());
  // Events go to the control that took the press, in its coordinates as
  // it stands now: after a move, the next X holds the smaller distance.
  switch (captured_) {
    case Target::Marker:
      picLabelPositioner_MouseMove(capturedButton_, shift, at.x() - picLabelPositioner.left,
                                   at.y() - picLabelPositioner.top);
      break;
    case Target::Sizer: {
      const PointD& s = picSizer[static_cast<size_t>(capturedIndex_)].pos;
      picSizer_MouseMove(capturedIndex_, capturedButton_, shift, at.x() - s.x, at.y() - s.y);
      break;
    }
    case Target::Button:
      if (scene_->HasSurface(capturedIndex_)) {
        const kp::Surface& s = scene_->pButtons(capturedIndex_);
        pButtons_MouseMove(capturedIndex_, capturedButton_, shift, at.x() - s.Left,
                           at.y() - s.Top);
      }
      break;
    default: break;
  }
}

void frmDesign::mouseReleaseEvent(QMouseEvent* e) {
  const QPointF at = AppletPos(e->position());
  const int shift = ShiftOf(e->modifiers());
  const Target t = captured_;
  captured_ = Target::None;
  switch (t) {
    case Target::Marker:
      picLabelPositioner_MouseUp(capturedButton_, shift, at.x() - picLabelPositioner.left,
                                 at.y() - picLabelPositioner.top);
      break;
    case Target::Sizer: {
      const PointD& s = picSizer[static_cast<size_t>(capturedIndex_)].pos;
      picSizer_MouseUp(capturedIndex_, capturedButton_, shift, at.x() - s.x, at.y() - s.y);
      break;
    }
    case Target::Button:
      if (scene_->HasSurface(capturedIndex_)) {
        const kp::Surface& s = scene_->pButtons(capturedIndex_);
        pButtons_MouseUp(capturedIndex_, capturedButton_, shift, at.x() - s.Left, at.y() - s.Top);
      } else {
        bMouseDownBtn = false;
      }
      break;
    default: break;
  }
}

void frmDesign::keyPressEvent(QKeyEvent* e) {
  if (ZoomKey(*e) || ScrollKey(*e)) return;
  int code = 0;
  switch (e->key()) {
    case Qt::Key_X: code = 0x58; break;
    case Qt::Key_C: code = 0x43; break;
    case Qt::Key_V: code = 0x56; break;
    case Qt::Key_F5: code = 0x74; break;
    case Qt::Key_Up: code = 0x26; break;
    case Qt::Key_Down: code = 0x28; break;
    case Qt::Key_Left: code = 0x25; break;
    case Qt::Key_Right: code = 0x27; break;
    default: QWidget::keyPressEvent(e); return;
  }
  Form_KeyDown(code, ShiftOf(e->modifiers()));
}

}  // namespace kp
