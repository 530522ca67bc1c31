#include "design/colour_box.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>
#include <qdrawutil.h>

namespace kp {

ColourBox::ColourBox(QWidget* parent) : QAbstractButton(parent) {
  setMinimumSize(24, 18);
  setCursor(Qt::PointingHandCursor);
  setFocusPolicy(Qt::StrongFocus);
  connect(this, &QAbstractButton::clicked, this, [this] {
    if (onClick) onClick();
  });
}

void ColourBox::setColour(Colour c) {
  colour_ = c;
  update();
}

void ColourBox::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRect r = rect();
  painter.fillRect(r.adjusted(1, 1, -1, -1),
                   QColor(colour_ & 0xFF, (colour_ >> 8) & 0xFF, (colour_ >> 16) & 0xFF));
  qDrawShadePanel(&painter, r, palette(), true, 1);
  if (hasFocus()) {
    // A dotted ring inside the sunken edge, visible on any colour.
    QPen pen(Qt::black, 1, Qt::DotLine);
    painter.setPen(pen);
    painter.drawRect(r.adjusted(2, 2, -3, -3));
    pen.setColor(Qt::white);
    pen.setDashOffset(1);
    painter.setPen(pen);
    painter.drawRect(r.adjusted(2, 2, -3, -3));
  }
}

void ColourBox::keyPressEvent(QKeyEvent* e) {
  // Enter picks the colour as Space does.
  if (e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter) {
    click();
    return;
  }
  QAbstractButton::keyPressEvent(e);
}

}  // namespace kp
