#include "properties/frm_my_msg_box.h"

#include <QCheckBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace kp {

UiTexts& frmMyMsgBox::Texts() {
  static UiTexts t = {{"btnOK", "&Ok"}};
  return t;
}

frmMyMsgBox::frmMyMsgBox(QWidget* parent) : QDialog(parent) {
  setObjectName("frmMyMsgBox");
  txtMessage = new QPlainTextEdit(this);
  txtMessage->setObjectName("txtMessage");
  txtMessage->setReadOnly(true);
  txtMessage->setMinimumSize(380, 120);
  chkBox = new QCheckBox(this);
  chkBox->setObjectName("chkBox");
  // Shown only with a text to say.
  chkBox->hide();
  btnOK = new QPushButton(QTextOf(Texts(), "btnOK"), this);
  btnOK->setObjectName("btnOK");
  btnOK->setDefault(true);
  connect(btnOK, &QPushButton::clicked, this, &QDialog::accept);

  auto* row = new QHBoxLayout;
  row->addWidget(chkBox);
  row->addStretch();
  row->addWidget(btnOK);
  auto* box = new QVBoxLayout(this);
  box->addWidget(txtMessage);
  box->addLayout(row);
}

void frmMyMsgBox::changeEvent(QEvent* e) {
  QDialog::changeEvent(e);
  // The message is read out under the title of the box.
  if (e->type() == QEvent::WindowTitleChange && txtMessage) txtMessage->setAccessibleName(windowTitle());
}

bool frmMyMsgBox::ShowNotice(const QString& title, const QString& message,
                             const QString& checkText, bool checked) {
  setWindowTitle(title);
  txtMessage->setPlainText(message);
  chkBox->setText(checkText);
  chkBox->setVisible(!checkText.isEmpty());
  chkBox->setChecked(checked);
  btnOK->setFocus();
  exec();
  return chkBox->isChecked();
}

}  // namespace kp
