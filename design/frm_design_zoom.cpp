// The design window's zoom: the view shows every applet pixel as a square
// of 2, 4 or 8 screen pixels, and the mouse is mapped back to applet
// pixels, through the scroll offset, before any handler sees it.
#include <QAction>
#include <QActionGroup>
#include <QKeyEvent>
#include <QMenu>
#include <QWheelEvent>

#include <algorithm>

#include "design/design_texts.h"
#include "design/frm_design.h"
#include "render/scene.h"

namespace kp {

namespace {

constexpr const char* kZoomTextKeys[] = {"mnuZoom100", "mnuZoom200", "mnuZoom400", "mnuZoom800"};

// One notch of a mouse wheel.
constexpr int kWheelNotch = 120;

}  // namespace

void frmDesign::BuildZoomMenu() {
  mnuCommon->addSeparator();
  mnuZoom = mnuCommon->addMenu(QString());
  mnuZoom->setObjectName("mnuZoom");
  auto* group = new QActionGroup(mnuZoom);
  for (size_t n = 0; n < mnuZoomSteps.size(); ++n) {
    const int step = kZoomSteps[n];
    QAction* a = mnuZoom->addAction(QString(), [this, step] { SetZoom(step); });
    a->setObjectName(QString("mnuZoom%1").arg(step * 100));
    a->setCheckable(true);
    group->addAction(a);
    mnuZoomSteps[n] = a;
  }
  mnuZoomSteps[0]->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_0));
  connect(mnuZoom, &QMenu::aboutToShow, this, [this] { UpdateZoomMenu(); });
  UpdateZoomMenu();
}

void frmDesign::ApplyZoomTexts() {
  const DesignTexts& t = frmDesignTexts();
  mnuZoom->setTitle(DesignQText(t, "mnuZoom"));
  for (size_t n = 0; n < mnuZoomSteps.size(); ++n)
    mnuZoomSteps[n]->setText(DesignQText(t, kZoomTextKeys[n]));
}

void frmDesign::UpdateZoomMenu() {
  // Every step is offered: one the screen cannot hold scrolls.
  for (size_t n = 0; n < mnuZoomSteps.size(); ++n) mnuZoomSteps[n]->setChecked(kZoomSteps[n] == zoom_);
}

bool frmDesign::ZoomFits(int zoom, int appletW, int appletH) const {
  if (zoom <= 1) return true;
  const QSize max = MaxClientSize();
  // A window the screen cannot hold would be cut by the window manager,
  // and its resize would then shrink the applet: such a view scrolls.
  return static_cast<long>(appletW) * zoom <= max.width() &&
         static_cast<long>(appletH) * zoom <= max.height();
}

void frmDesign::SetZoom(int zoom) { SetZoomAt(zoom, std::nullopt); }

void frmDesign::SetZoomAt(int zoom, std::optional<QPoint> anchor) {
  const bool known = std::find(std::begin(kZoomSteps), std::end(kZoomSteps), zoom) !=
                     std::end(kZoomSteps);
  if (known && zoom != zoom_) {
    const QPoint before = anchor.value_or(ViewRect().center());
    const QPoint scrollBefore = scroll_;
    const int zoomBefore = zoom_;
    zoom_ = zoom;
    zoomPending_ = true;
    scrolling_ = !ZoomFits(zoom_);
    const QSize client = ZoomedClientSize(zoom_, p_.AppletWidth, p_.AppletHeight);
    scrollWanted_.reset();
    if (scrolling_) {
      // The mouse stays where it is on the screen while the window moves.
      const QPoint moved = KeepOnScreen(client);
      const int bar = BarExtent();
      const ScrollLayout l = LayoutScroll(client.width(), client.height(),
                                          p_.AppletWidth * zoom_, p_.AppletHeight * zoom_, bar,
                                          bar);
      const QPoint after =
          anchor ? *anchor - moved : QRect(0, 0, l.viewW, l.viewH).center();
      scrollWanted_ =
          QPoint(ScrollForAnchor(before.x(), scrollBefore.x(), zoomBefore, after.x(), zoom_),
                 ScrollForAnchor(before.y(), scrollBefore.y(), zoomBefore, after.y(), zoom_));
    }
    // The window follows; its resize path sees the applet's own size, or
    // a scrolling view, and leaves the project alone.
    resize(client);
    LayoutView();
    update();
  }
  UpdateZoomMenu();
}

bool frmDesign::ZoomKey(const QKeyEvent& e) {
  if (!e.modifiers().testFlag(Qt::ControlModifier)) return false;
  switch (e.key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal: SetZoom(ZoomIn(zoom_)); return true;
    case Qt::Key_Minus: SetZoom(ZoomOut(zoom_)); return true;
    case Qt::Key_0: SetZoom(1); return true;
    default: return false;
  }
}

void frmDesign::wheelEvent(QWheelEvent* e) {
  if (!e->modifiers().testFlag(Qt::ControlModifier)) {
    ScrollWheel(e);
    return;
  }
  e->accept();
  // The applet pixel under the mouse stays under it.
  const QPoint at = e->position().toPoint();
  const std::optional<QPoint> anchor =
      ViewRect().contains(at) ? std::optional<QPoint>(at) : std::nullopt;
  wheelRest_ += e->angleDelta().y();
  while (wheelRest_ >= kWheelNotch) {
    wheelRest_ -= kWheelNotch;
    SetZoomAt(ZoomIn(zoom_), anchor);
  }
  while (wheelRest_ <= -kWheelNotch) {
    wheelRest_ += kWheelNotch;
    SetZoomAt(ZoomOut(zoom_), anchor);
  }
}

bool frmDesign::StaleZoomSize(const QSize& s) {
  if (!zoomPending_) return false;
  const QSize now = ZoomedClientSize(zoom_, p_.AppletWidth, p_.AppletHeight);
  if (s == now) return false;
  // Answers may come twice or out of order: until the user sizes the
  // window, any size of another step is an old one.
  for (int z : kZoomSteps)
    if (z != zoom_ && s == ZoomedClientSize(z, p_.AppletWidth, p_.AppletHeight)) return true;
  zoomPending_ = false;
  return false;
}

QPointF frmDesign::AppletPos(const QPointF& windowPos) const {
  return QPointF(ToApplet(windowPos.x() + scroll_.x(), zoom_),
                 ToApplet(windowPos.y() + scroll_.y(), zoom_));
}

}  // namespace kp
