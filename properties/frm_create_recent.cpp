#include "properties/frm_create_recent.h"
#include "properties/window_lang.h"

#include <QCheckBox>
#include <QEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include "core/conv.h"
#include "core/settings.h"

namespace kp {

UiTexts& frm_Create_Recent::Texts() {
  static UiTexts t = {
      {"frameNew", " Create New Project "},
      {"lblProjectName", "Project Name:"},
      {"btnCreate", "&Create"},
      {"frameOpen", " Open Existing Project "},
      {"btnOpenFromDisk", "Open..."},
      {"btnRecent", "&Recent Projects"},
      {"chkShowNextTime", "show this dialog next time."},
  };
  return t;
}

frm_Create_Recent::frm_Create_Recent(Project& p, Env& env, QWidget* mainWindow)
    : QDialog(mainWindow), p_(p), env_(env) {
  setObjectName("frm_Create_Recent");
  ApplyLanguageSection(env_, Texts(), "[frm_Create_Recent]");

  frameNew = new QGroupBox(QTextOf(Texts(), "frameNew"), this);
  frameNew->setObjectName("frameNew");
  txtProjectName = new QLineEdit(frameNew);
  txtProjectName->setObjectName("txtProjectName");
  txtProjectName->installEventFilter(this);
  btnCreate = new QPushButton(QTextOf(Texts(), "btnCreate"), frameNew);
  btnCreate->setObjectName("btnCreate");
  auto* newRow = new QHBoxLayout(frameNew);
  newRow->addWidget(new QLabel(QTextOf(Texts(), "lblProjectName"), frameNew));
  newRow->addWidget(txtProjectName, 1);
  newRow->addWidget(btnCreate);

  frameOpen = new QGroupBox(QTextOf(Texts(), "frameOpen"), this);
  frameOpen->setObjectName("frameOpen");
  btnOpenFromDisk = new QPushButton(QTextOf(Texts(), "btnOpenFromDisk"), frameOpen);
  btnOpenFromDisk->setObjectName("btnOpenFromDisk");
  btnRecent = new QPushButton(QTextOf(Texts(), "btnRecent"), frameOpen);
  btnRecent->setObjectName("btnRecent");
  mnuRecentFiles = new QMenu(this);
  mnuRecentFiles->setObjectName("mnuRecentFiles");
  auto* openRow = new QHBoxLayout(frameOpen);
  openRow->addWidget(btnOpenFromDisk);
  openRow->addWidget(btnRecent);
  openRow->addStretch();

  chkShowNextTime = new QCheckBox(QTextOf(Texts(), "chkShowNextTime"), this);
  chkShowNextTime->setObjectName("chkShowNextTime");

  auto* box = new QVBoxLayout(this);
  box->addWidget(frameNew);
  box->addWidget(frameOpen);
  box->addWidget(chkShowNextTime);
  setMinimumWidth(400);

  connect(btnCreate, &QPushButton::clicked, this, [this] { btnCreate_Click(); });
  connect(btnOpenFromDisk, &QPushButton::clicked, this, [this] { btnOpenFromDisk_Click(); });
  connect(btnRecent, &QPushButton::clicked, this, [this] { btnRecent_Click(); });
  connect(chkShowNextTime, &QCheckBox::clicked, this, [this] { chkShowNextTime_Click(); });
}

void frm_Create_Recent::Form_Load() {
  setWindowTitle(DisplayText(Lang().TitleText));
  txtProjectName->setText(DisplayText(p_.sProjectName));
  // The box says "show next time"; the setting says "don't show".
  chkShowNextTime->setChecked(GetParam(env_, "DontShow_frm_Create_Recent") == "0");
  mnuRecentFiles->clear();
  for (const RecentEntry& e : GetRecent(env_)) {
    QAction* a = mnuRecentFiles->addAction(DisplayText(e.text).replace("&", "&&"));
    const std::string path = e.path;
    connect(a, &QAction::triggered, this, [this, path] {
      hide();
      if (onOpenRecent) onOpenRecent(path);
    });
  }
  const bool any = !mnuRecentFiles->isEmpty();
  btnRecent->setEnabled(any);
  txtProjectName->setFocus();
  txtProjectName->selectAll();
}

void frm_Create_Recent::ShowStart() {
  frameOpen->setVisible(true);
  chkShowNextTime->setVisible(true);
  Form_Load();
  adjustSize();
  exec();
}

void frm_Create_Recent::ShowOnlyNewProject() {
  frameOpen->setVisible(false);
  chkShowNextTime->setVisible(false);
  Form_Load();
  adjustSize();
  exec();
}

void frm_Create_Recent::btnCreate_Click() {
  hide();
  QByteArray typed = txtProjectName->text().toLocal8Bit();
  std::string name = CleanName(std::string(typed.constData(), static_cast<size_t>(typed.size())));
  p_.sProjectName = name.empty() ? "Unnamed" : name;
  done(QDialog::Accepted);
}

void frm_Create_Recent::btnOpenFromDisk_Click() {
  hide();
  if (onOpenFromDisk) onOpenFromDisk();
}

void frm_Create_Recent::btnRecent_Click() {
  mnuRecentFiles->popup(btnRecent->mapToGlobal(QPoint(0, btnRecent->height())));
}

void frm_Create_Recent::chkShowNextTime_Click() {
  SetParam(env_, "DontShow_frm_Create_Recent", chkShowNextTime->isChecked() ? "0" : "1");
}

bool frm_Create_Recent::eventFilter(QObject* watched, QEvent* e) {
  if (watched == txtProjectName) {
    if (e->type() == QEvent::KeyPress) {
      auto* k = static_cast<QKeyEvent*>(e);
      if (k->key() == Qt::Key_Return || k->key() == Qt::Key_Enter) {
        btnCreate_Click();
        return true;
      }
    } else if (e->type() == QEvent::FocusIn) {
      QTimer::singleShot(0, txtProjectName, [this] { txtProjectName->selectAll(); });
    }
  }
  return QDialog::eventFilter(watched, e);
}

}  // namespace kp
