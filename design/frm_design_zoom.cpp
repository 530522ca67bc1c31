// The design window's zoom: the view shows every applet pixel as a square
// of 2, 4 or 8 screen pixels, and the mouse is mapped back to applet
// pixels before any handler sees it.
#include <QAction>
#include <QActionGroup>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QScreen>
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
  for (size_t n = 0; n < mnuZoomSteps.size(); ++n) {
    mnuZoomSteps[n]->setChecked(kZoomSteps[n] == zoom_);
    mnuZoomSteps[n]->setEnabled(ZoomFits(kZoomSteps[n]));
  }
}

bool frmDesign::ZoomFits(int zoom, int appletW, int appletH) const {
  if (zoom <= 1) return true;
  QScreen* s = screen() ? screen() : QGuiApplication::primaryScreen();
  const QRect area = s ? s->availableGeometry() : QRect(0, 0, 1024, 768);
  const QRect f = frameGeometry();
  const long frameW = std::max(0, f.width() - width());
  const long frameH = std::max(0, f.height() - height());
  // A window the screen cannot hold would be cut by the window manager,
  // and its resize would then shrink the applet.
  return static_cast<long>(appletW) * zoom + frameW <= area.width() &&
         static_cast<long>(appletH) * zoom + frameH <= area.height();
}

void frmDesign::SetZoom(int zoom) {
  const bool known = std::find(std::begin(kZoomSteps), std::end(kZoomSteps), zoom) !=
                     std::end(kZoomSteps);
  if (known && zoom != zoom_ && ZoomFits(zoom)) {
    zoom_ = zoom;
    zoomPending_ = true;
    // The window follows; its resize path sees the applet's own size and
    // leaves the project alone.
    resize(std::max(1, p_.AppletWidth * zoom_), std::max(1, p_.AppletHeight * zoom_));
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
    QWidget::wheelEvent(e);
    return;
  }
  e->accept();
  wheelRest_ += e->angleDelta().y();
  while (wheelRest_ >= kWheelNotch) {
    wheelRest_ -= kWheelNotch;
    SetZoom(ZoomIn(zoom_));
  }
  while (wheelRest_ <= -kWheelNotch) {
    wheelRest_ += kWheelNotch;
    SetZoom(ZoomOut(zoom_));
  }
}

bool frmDesign::StaleZoomSize(const QSize& s) {
  if (!zoomPending_) return false;
  const QSize applet(p_.AppletWidth, p_.AppletHeight);
  // Answers may come twice or out of order: until the user sizes the
  // window, any size of another step is an old one.
  for (int z : kZoomSteps)
    if (z != zoom_ && s == applet * z) return true;
  if (s != applet * zoom_) zoomPending_ = false;
  return false;
}

QPointF frmDesign::AppletPos(const QPointF& windowPos) const {
  return QPointF(ToApplet(windowPos.x(), zoom_), ToApplet(windowPos.y(), zoom_));
}

}  // namespace kp
