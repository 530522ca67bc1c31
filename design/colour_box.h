// A picture box that shows one colour and reports a click: the colour
// controls of the panels (picColor, picGeneralBackGround ...) and of the
// grid dialog. It is a button, so the keyboard and a screen reader can
// press it; its accessible name says whose colour it is.
#pragma once

#include <QAbstractButton>
#include <functional>

#include "core/model.h"

namespace kp {

class ColourBox : public QAbstractButton {
 public:
  explicit ColourBox(QWidget* parent = nullptr);
  Colour colour() const { return colour_; }
  void setColour(Colour c);
  std::function<void()> onClick;
  QSize sizeHint() const override { return {36, 20}; }

 protected:
  void paintEvent(QPaintEvent* e) override;
  void keyPressEvent(QKeyEvent* e) override;

 private:
  Colour colour_ = 0;
};

}  // namespace kp
