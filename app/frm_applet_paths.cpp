#include "app/frm_applet_paths.h"
#include "properties/window_lang.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "publish/player.h"
#include "design/escape_key.h"

namespace kp {

// The order is the order of the "[frmAppletPaths]" section of a language
// file.
UiTexts& frmAppletPaths::Texts() {
  static UiTexts t = {
      {"frmAppletPaths", "Applet Paths"},
      {"lblAppletName", "Applet Name:"},
      {"Frame1", " Applet will load files from these folders"},
      {"lblCodeBase", "codebase:"},
      {"lblImages", "images:"},
      {"lblSounds", "sounds:"},
      {"lblNote", " Note: Start folder for 'Images' and 'Sounds' is 'Codebase'  "},
      {"btnRestoreDefaults", "&Restore Defaults"},
      {"btnClose", "&Close"},
      // Added after the others: older language files keep their lines.
      {"chkAddPlayerScript", "Add the player script (shows the bar in today's browsers)"},
  };
  return t;
}

namespace {

QLabel* Label(QWidget* parent, const char* name) {
  auto* l = new QLabel(parent);
  l->setObjectName(name);
  l->setTextFormat(Qt::PlainText);
  return l;
}

bool IsEnter(int key) { return key == Qt::Key_Return || key == Qt::Key_Enter; }

}  // namespace

frmAppletPaths::frmAppletPaths(Project& p, Env& env, GeneratorState& st, const LangSettings& lang,
                               QWidget* parent)
    : QWidget(parent, Qt::Window), p_(p), env_(env), st_(st) {
  setObjectName("frmAppletPaths");
  lblAppletName = Label(this, "lblAppletName");
  txtAppletName = new QLineEdit(this);
  txtAppletName->setObjectName("txtAppletName");
  Frame1 = new QGroupBox(this);
  Frame1->setObjectName("Frame1");
  lblCodeBase = Label(Frame1, "lblCodeBase");
  txtCodeBase = new QLineEdit(Frame1);
  txtCodeBase->setObjectName("txtCodeBase");
  lblImages = Label(Frame1, "lblImages");
  txtImgPath = new QLineEdit(Frame1);
  txtImgPath->setObjectName("txtImgPath");
  lblSounds = Label(Frame1, "lblSounds");
  txtSndPath = new QLineEdit(Frame1);
  txtSndPath->setObjectName("txtSndPath");
  lblNote = Label(Frame1, "lblNote");
  lblNote->setWordWrap(true);
  chkAddPlayerScript = new QCheckBox(this);
  chkAddPlayerScript->setObjectName("chkAddPlayerScript");
  btnRestoreDefaults = new QPushButton(this);
  btnRestoreDefaults->setObjectName("btnRestoreDefaults");
  btnClose = new QPushButton(this);
  btnClose->setObjectName("btnClose");
  connect(btnRestoreDefaults, &QPushButton::clicked, this, [this] { btnRestoreDefaults_Click(); });
  connect(btnClose, &QPushButton::clicked, this, [this] { btnClose_Click(); });
  // Escape closes it as it closes a dialog.
  CloseOnEscape(this, [this] { btnClose_Click(); });
  // Only the user's change is stored, not the filling from the setting.
  connect(chkAddPlayerScript, &QCheckBox::clicked, this, [this] { chkAddPlayerScript_Click(); });

  for (QLineEdit* box : {txtAppletName, txtCodeBase, txtImgPath, txtSndPath}) {
    box->installEventFilter(this);
    // A paste with the mouse is an edit without a key.
    connect(box, &QLineEdit::textEdited, this, [this, box] { KeyUp(box); });
  }

  auto* nameRow = new QHBoxLayout;
  nameRow->addWidget(lblAppletName);
  nameRow->addWidget(txtAppletName, 1);
  auto* folders = new QGridLayout(Frame1);
  folders->addWidget(lblCodeBase, 0, 0);
  folders->addWidget(txtCodeBase, 0, 1);
  folders->addWidget(lblImages, 1, 0);
  folders->addWidget(txtImgPath, 1, 1);
  folders->addWidget(lblSounds, 2, 0);
  folders->addWidget(txtSndPath, 2, 1);
  folders->addWidget(lblNote, 3, 0, 1, 2);
  folders->setColumnStretch(1, 1);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(btnRestoreDefaults);
  buttons->addStretch();
  buttons->addWidget(btnClose);
  auto* root = new QVBoxLayout(this);
  root->addLayout(nameRow);
  root->addWidget(Frame1);
  root->addWidget(chkAddPlayerScript);
  root->addLayout(buttons);
  root->addStretch();

  ApplyLanguageSection(env, lang, Texts(), "[frmAppletPaths]");
  ApplyTexts();
  FillFromProject();
  chkAddPlayerScript->setChecked(PlayerScriptSetting(env_));
  resize(440, sizeHint().height());
}

void frmAppletPaths::ApplyTexts() {
  const UiTexts& t = Texts();
  setWindowTitle(QTextOf(t, "frmAppletPaths"));
  lblAppletName->setText(QTextOf(t, "lblAppletName"));
  Frame1->setTitle(QTextOf(t, "Frame1"));
  lblCodeBase->setText(QTextOf(t, "lblCodeBase"));
  lblImages->setText(QTextOf(t, "lblImages"));
  lblSounds->setText(QTextOf(t, "lblSounds"));
  lblNote->setText(QTextOf(t, "lblNote"));
  btnRestoreDefaults->setText(QTextOf(t, "btnRestoreDefaults"));
  btnClose->setText(QTextOf(t, "btnClose"));
  chkAddPlayerScript->setText(QTextOf(t, "chkAddPlayerScript"));
}

void frmAppletPaths::Fill(const AppletPathsBoxes& boxes) {
  txtAppletName->setText(DisplayText(boxes.txtAppletName));
  txtCodeBase->setText(PathText(boxes.txtCodeBase));
  txtImgPath->setText(PathText(boxes.txtImgPath));
  txtSndPath->setText(PathText(boxes.txtSndPath));
}

void frmAppletPaths::FillFromProject() {
  Fill({p_.AppletName, p_.CodeBase, p_.ImgPath, p_.SndPath});
}

AppletPathsBoxes frmAppletPaths::Boxes() const {
  return {PathBytes(txtAppletName->text()), PathBytes(txtCodeBase->text()),
          PathBytes(txtImgPath->text()), PathBytes(txtSndPath->text())};
}

void frmAppletPaths::Form_Activate() { AppletPaths_Activate(st_); }

bool frmAppletPaths::event(QEvent* e) {
  const bool handled = QWidget::event(e);
  if (e->type() == QEvent::WindowActivate) Form_Activate();
  return handled;
}

void frmAppletPaths::txtAppletName_KeyUp() { kp::txtAppletName_KeyUp(p_, Boxes()); }
void frmAppletPaths::txtCodeBase_KeyUp() { kp::txtCodeBase_KeyUp(p_, Boxes()); }
void frmAppletPaths::txtImgPath_KeyUp() { kp::txtImgPath_KeyUp(p_, Boxes()); }
void frmAppletPaths::txtSndPath_KeyUp() { kp::txtSndPath_KeyUp(p_, Boxes()); }

void frmAppletPaths::KeyUp(QObject* box) {
  if (box == txtAppletName)
    txtAppletName_KeyUp();
  else if (box == txtCodeBase)
    txtCodeBase_KeyUp();
  else if (box == txtImgPath)
    txtImgPath_KeyUp();
  else if (box == txtSndPath)
    txtSndPath_KeyUp();
}

bool frmAppletPaths::eventFilter(QObject* watched, QEvent* e) {
  if (e->type() == QEvent::KeyPress && IsEnter(static_cast<QKeyEvent*>(e)->key())) {
    // Enter walks name, code base, images, sounds, then the Close button.
    QWidget* next = watched == txtAppletName ? static_cast<QWidget*>(txtCodeBase)
                    : watched == txtCodeBase ? static_cast<QWidget*>(txtImgPath)
                    : watched == txtImgPath  ? static_cast<QWidget*>(txtSndPath)
                    : watched == txtSndPath  ? static_cast<QWidget*>(btnClose)
                                             : nullptr;
    if (next) {
      next->setFocus(Qt::TabFocusReason);
      return true;
    }
  }
  if (e->type() == QEvent::KeyRelease && !static_cast<QKeyEvent*>(e)->isAutoRepeat())
    KeyUp(watched);
  return QWidget::eventFilter(watched, e);
}

void frmAppletPaths::btnRestoreDefaults_Click() {
  AppletPathsBoxes boxes = Boxes();
  AppletPaths_RestoreDefaults(p_, boxes);
  Fill(boxes);
}

void frmAppletPaths::btnClose_Click() { close(); }

void frmAppletPaths::chkAddPlayerScript_Click() {
  SetPlayerScriptSetting(env_, chkAddPlayerScript->isChecked());
}

void frmAppletPaths::closeEvent(QCloseEvent* e) {
  QWidget::closeEvent(e);
  if (e->isAccepted() && onClose) onClose();
}

}  // namespace kp
