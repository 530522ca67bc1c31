// frmHex2Color: shows a colour as six hexadecimal digits and as three
// decimal parts, and converts whichever the user types into the other.
#pragma once

#include <QWidget>

#include "core/env.h"
#include "properties/ui_text.h"

class QLineEdit;
class QPushButton;

namespace kp {

class ColourBox;

class frmHex2Color : public QWidget {
 public:
  frmHex2Color(QWidget* mainWindow, Env& env);
  static UiTexts& Texts();

  void Form_Load();
  void picColor_Click();
  void txtHEX_KeyUp();
  void txtRGB_KeyUp(QLineEdit* field);
  void btnClose_Click();

  ColourBox* picColor;
  QLineEdit* txtHEX;
  QLineEdit* txtRED;
  QLineEdit* txtGREEN;
  QLineEdit* txtBLUE;
  QPushButton* btnClose;

 protected:
  bool eventFilter(QObject* watched, QEvent* e) override;

 private:
  // All four fields from the colour of picColor.
  void FieldsFromColour();
  QWidget* mainWindow_;
};

}  // namespace kp
