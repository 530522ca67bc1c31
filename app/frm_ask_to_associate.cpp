#include "app/frm_ask_to_associate.h"
#include "properties/window_lang.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/model.h"
#include "core/settings.h"

namespace kp {

UiTexts& frmAskToAssociate::Texts() {
  static UiTexts t = {
      {"Label1", "Kestrel Pane editor is not registered as default program for .KPN files"},
      {"Label2", "Would you like to register it so if you double-click the .KPN, it's opened?"},
      {"btnYes", "&Yes"},
      {"btnNo", "&No"},
      {"chkDontAsk", "Don't ask me again"},
  };
  return t;
}

frmAskToAssociate::frmAskToAssociate(Env& env, FileAssociation& association, QWidget* owner)
    : QDialog(owner), env_(env), association_(association) {
  setObjectName("frmAskToAssociate");
  ApplyLanguageSection(env_, Texts(), "[frmAskToAssociate]");
  setWindowTitle(DisplayText(Lang().TitleText));
  auto* label1 = new QLabel(QTextOf(Texts(), "Label1"), this);
  auto* label2 = new QLabel(QTextOf(Texts(), "Label2"), this);
  for (QLabel* l : {label1, label2}) {
    l->setTextFormat(Qt::PlainText);
    l->setWordWrap(true);
  }
  btnYes = new QPushButton(QTextOf(Texts(), "btnYes"), this);
  btnYes->setObjectName("btnYes");
  btnYes->setDefault(true);
  btnNo = new QPushButton(QTextOf(Texts(), "btnNo"), this);
  btnNo->setObjectName("btnNo");
  chkDontAsk = new QCheckBox(QTextOf(Texts(), "chkDontAsk"), this);
  chkDontAsk->setObjectName("chkDontAsk");
  chkDontAsk->setChecked(GetParam(env_, "DontAskToAssociate") == "1");
  connect(btnYes, &QPushButton::clicked, this, [this] { btnYes_Click(); });
  connect(btnNo, &QPushButton::clicked, this, [this] { btnNo_Click(); });
  connect(chkDontAsk, &QCheckBox::clicked, this, [this] { chkDontAsk_Click(); });

  auto* row = new QHBoxLayout;
  row->addWidget(chkDontAsk);
  row->addStretch();
  row->addWidget(btnYes);
  row->addWidget(btnNo);
  auto* box = new QVBoxLayout(this);
  box->addWidget(label1);
  box->addWidget(label2);
  box->addLayout(row);
  setMinimumWidth(460);
}

void frmAskToAssociate::btnYes_Click() {
  association_.RegisterAssociation(env_);
  accept();
}

void frmAskToAssociate::btnNo_Click() { reject(); }

void frmAskToAssociate::chkDontAsk_Click() {
  SetParam(env_, "DontAskToAssociate", chkDontAsk->isChecked() ? "1" : "0");
}

}  // namespace kp
