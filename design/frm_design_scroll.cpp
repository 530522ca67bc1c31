// The design window's view of a zoomed applet larger than the screen: the
// window keeps to the screen's available area, scroll bars move the view,
// and a resize of the window changes only what is seen.
#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleHints>
#include <QWheelEvent>

#include <algorithm>

#include "design/design_texts.h"
#include "design/frm_design.h"

namespace kp {

namespace {

// Window pixels of one arrow step, and of one wheel line.
constexpr int kScrollStep = 20;
constexpr int kWheelNotch = 120;

// The arrow keys on a focused bar: left and up towards the start. Qt's
// bars take their inverted wheel setting for the sideways keys too, and a
// right arrow then moved the view left.
class BarArrows : public QObject {
 public:
  explicit BarArrows(QScrollBar* bar) : QObject(bar), bar_(bar) {}

 protected:
  bool eventFilter(QObject*, QEvent* e) override {
    if (e->type() != QEvent::KeyPress) return false;
    const auto* k = static_cast<QKeyEvent*>(e);
    if (k->modifiers() != Qt::NoModifier && k->modifiers() != Qt::KeypadModifier) return false;
    switch (k->key()) {
      case Qt::Key_Left:
      case Qt::Key_Up: bar_->triggerAction(QAbstractSlider::SliderSingleStepSub); return true;
      case Qt::Key_Right:
      case Qt::Key_Down: bar_->triggerAction(QAbstractSlider::SliderSingleStepAdd); return true;
      default: return false;
    }
  }

 private:
  QScrollBar* bar_;
};

}  // namespace

void frmDesign::BuildScrollBars() {
  auto make = [this](Qt::Orientation o, const char* name, int* offset) {
    auto* bar = new QScrollBar(o, this);
    bar->setObjectName(name);
    // Reached by Tab; a click leaves the arrow keys with the buttons.
    bar->setFocusPolicy(Qt::TabFocus);
    bar->setSingleStep(kScrollStep);
    bar->installEventFilter(new BarArrows(bar));
    bar->hide();
    connect(bar, &QScrollBar::valueChanged, this, [this, offset](int v) {
      *offset = v;
      scrollWanted_.reset();
      update();
    });
    return bar;
  };
  scrollH = make(Qt::Horizontal, "scrollH", &scroll_.rx());
  scrollV = make(Qt::Vertical, "scrollV", &scroll_.ry());
}

void frmDesign::ApplyScrollTexts() {
  const DesignTexts& t = frmDesignTexts();
  scrollH->setAccessibleName(DesignQText(t, "scrollH"));
  scrollV->setAccessibleName(DesignQText(t, "scrollV"));
}

int frmDesign::BarExtent() const { return style()->pixelMetric(QStyle::PM_ScrollBarExtent); }

QRect frmDesign::AvailableArea() const {
  QScreen* s = screen() ? screen() : QGuiApplication::primaryScreen();
  return s ? s->availableGeometry() : QRect(0, 0, 1024, 768);
}

QSize frmDesign::MaxClientSize() const {
  const QRect area = AvailableArea();
  const QRect f = frameGeometry();
  return QSize(area.width() - std::max(0, f.width() - width()),
               area.height() - std::max(0, f.height() - height()));
}

QSize frmDesign::ZoomedClientSize(int zoom, int appletW, int appletH) const {
  const int w = std::max(1, appletW * zoom), h = std::max(1, appletH * zoom);
  if (ZoomFits(zoom, appletW, appletH)) return QSize(w, h);
  const QSize max = MaxClientSize();
  const auto [cw, ch] = CappedClientSize(w, h, max.width(), max.height(), BarExtent(), BarExtent());
  return QSize(std::max(1, cw), std::max(1, ch));
}

QPoint frmDesign::KeepOnScreen(QSize client) {
  const QRect area = AvailableArea();
  const QRect f = frameGeometry();
  const QSize outer = client + (f.size() - size());
  const int x = std::max(area.left(), std::min(f.left(), area.left() + area.width() - outer.width()));
  const int y = std::max(area.top(), std::min(f.top(), area.top() + area.height() - outer.height()));
  if (QPoint(x, y) != f.topLeft()) move(x, y);
  return QPoint(x, y) - f.topLeft();
}

QRect frmDesign::ViewRect() const { return scrolling_ ? view_ : rect(); }

void frmDesign::LayoutView() {
  if (!scrolling_) {
    scrollH->hide();
    scrollV->hide();
    scroll_ = QPoint();
    scrollWanted_.reset();
    view_ = rect();
    update();
    return;
  }
  const int bar = BarExtent();
  const int cw = p_.AppletWidth * zoom_, ch = p_.AppletHeight * zoom_;
  const ScrollLayout l = LayoutScroll(width(), height(), cw, ch, bar, bar);
  view_ = QRect(0, 0, l.viewW, l.viewH);
  const QPoint want = scrollWanted_.value_or(scroll_);
  scroll_ = QPoint(ClampScroll(want.x(), cw, l.viewW), ClampScroll(want.y(), ch, l.viewH));
  auto place = [](QScrollBar* b, bool shown, const QRect& r, int content, int view, int value) {
    const QSignalBlocker block(b);
    b->setGeometry(r);
    b->setRange(0, std::max(0, content - view));
    b->setPageStep(std::max(1, view));
    b->setValue(value);
    b->setVisible(shown);
  };
  place(scrollH, l.barH, QRect(0, height() - bar, l.viewW, bar), cw, l.viewW, scroll_.x());
  place(scrollV, l.barV, QRect(width() - bar, 0, bar, l.viewH), ch, l.viewH, scroll_.y());
  update();
}

void frmDesign::ScrollTo(QPoint offset) {
  scrollWanted_.reset();
  // The bars clamp the offset and tell it back.
  scrollH->setValue(offset.x());
  scrollV->setValue(offset.y());
}

bool frmDesign::ScrollKey(const QKeyEvent& e) {
  if (!scrolling_) return false;
  const bool sideways = e.modifiers().testFlag(Qt::ShiftModifier);
  QScrollBar* bar = sideways ? scrollH : scrollV;
  switch (e.key()) {
    case Qt::Key_PageUp: bar->triggerAction(QAbstractSlider::SliderPageStepSub); return true;
    case Qt::Key_PageDown: bar->triggerAction(QAbstractSlider::SliderPageStepAdd); return true;
    case Qt::Key_Home: bar->triggerAction(QAbstractSlider::SliderToMinimum); return true;
    case Qt::Key_End: bar->triggerAction(QAbstractSlider::SliderToMaximum); return true;
    default: return false;
  }
}

void frmDesign::ScrollWheel(QWheelEvent* e) {
  if (!scrolling_) {
    e->ignore();
    return;
  }
  e->accept();
  const bool sideways = e->modifiers().testFlag(Qt::ShiftModifier);
  // A touchpad tells pixels, a wheel notches of some lines each.
  QPoint d = e->pixelDelta();
  if (d.isNull()) d = e->angleDelta() * QGuiApplication::styleHints()->wheelScrollLines() *
                      kScrollStep / kWheelNotch;
  // Shift turns the wheel sideways; some platforms already did.
  const int across = sideways ? (d.y() != 0 ? d.y() : d.x()) : d.x();
  const int down = sideways ? 0 : d.y();
  ScrollTo(scroll_ - QPoint(across, down));
}

}  // namespace kp
