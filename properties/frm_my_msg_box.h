// frmMyMsgBox: a notice with a check box that a setting is bound to, such
// as "Warn next time". Whether it shows at all is decided by MyMsgBox of the
// settings layer; this window only shows and reports the check box.
#pragma once

#include <QDialog>

#include "properties/ui_text.h"

class QCheckBox;
class QPlainTextEdit;
class QPushButton;

namespace kp {

class frmMyMsgBox : public QDialog {
 public:
  explicit frmMyMsgBox(QWidget* parent = nullptr);
  static UiTexts& Texts();

  // Caption, message, and the check box with `checkText` (hidden when
  // empty), ticked as `checked`. Modal; returns the box's state on close.
  bool ShowNotice(const QString& title, const QString& message, const QString& checkText,
                  bool checked);

  QPlainTextEdit* txtMessage = nullptr;
  QCheckBox* chkBox = nullptr;
  QPushButton* btnOK = nullptr;

 protected:
  void changeEvent(QEvent* e) override;
};

}  // namespace kp
