#include "design/colour_box.h"

#include <QMouseEvent>
#include <QPainter>


namespace kp {

ColourBox::ColourBox(QWidget* parent) : QFrame(parent) {
  setFrameStyle(QFrame::Panel | QFrame::Sunken);
  setLineWidth(1);
  setMinimumSize(24, 18);
  setCursor(Qt::PointingHandCursor);
}

void ColourBox::setColour(Colour c) {
  colour_ = c;
  update();
}

void ColourBox::paintEvent(QPaintEvent* e) {
  QPainter painter(this);
  painter.fillRect(contentsRect(),
                   QColor(colour_ & 0xFF, (colour_ >> 8) & 0xFF, (colour_ >> 16) & 0xFF));
  painter.end();
  QFrame::paintEvent(e);
}

void ColourBox::mouseReleaseEvent(QMouseEvent* e) {
  if (e->button() == Qt::LeftButton && rect().contains(e->position().toPoint()) && onClick)
    onClick();
}

}  // namespace kp
