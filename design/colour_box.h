// A picture box that shows one colour and reports a click: the colour
// controls of the panels (picColor, picGeneralBackGround ...) and of the
// grid dialog.
#pragma once

#include <QFrame>
#include <functional>

#include "core/model.h"

namespace kp {

class ColourBox : public QFrame {
 public:
  explicit ColourBox(QWidget* parent = nullptr);
  Colour colour() const { return colour_; }
  void setColour(Colour c);
  std::function<void()> onClick;

 protected:
  void paintEvent(QPaintEvent* e) override;
  void mouseReleaseEvent(QMouseEvent* e) override;

 private:
  Colour colour_ = 0;
};

}  // namespace kp
