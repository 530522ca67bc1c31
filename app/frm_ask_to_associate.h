// frmAskToAssociate: offers to make this program the one that opens ".kpn"
// files.
#pragma once

#include <QDialog>

#include "core/association.h"
#include "core/env.h"
#include "properties/ui_text.h"

class QCheckBox;
class QPushButton;

namespace kp {

class frmAskToAssociate : public QDialog {
 public:
  frmAskToAssociate(Env& env, FileAssociation& association, QWidget* owner);
  static UiTexts& Texts();

  void btnYes_Click();
  void btnNo_Click();
  void chkDontAsk_Click();

  QPushButton* btnYes;
  QPushButton* btnNo;
  QCheckBox* chkDontAsk;

 private:
  Env& env_;
  FileAssociation& association_;
};

}  // namespace kp
