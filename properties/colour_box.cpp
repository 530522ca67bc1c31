#include "properties/colour_box.h"

#include <QMouseEvent>
#include <QPainter>

#include "properties/colour_dialog.h"

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
  painter.fillRect(contentsRect(), ToQColor(colour_));
  painter.end();
  QFrame::paintEvent(e);
}

void ColourBox::mouseReleaseEvent(QMouseEvent* e) {
  if (e->button() == Qt::LeftButton && rect().contains(e->position().toPoint()) && onClick)
    onClick();
}

}  // namespace kp
