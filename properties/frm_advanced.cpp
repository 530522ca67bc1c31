#include "properties/frm_advanced.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/settings.h"
#include "core/startup.h"
#include "design/frm_design.h"
#include "properties/frm_main.h"
#include "properties/window_lang.h"

namespace kp {

// The order is the order of the "[frmAdvanced]" section of a language file.
UiTexts& frmAdvanced::Texts() {
  static UiTexts t = {
      {"frmAdvanced", "Program Settings"},
      {"lblWarning", " Warning: Changing these settings may result in program malfunction. "},
      {"chkAutoTile", "Auto Tiling Unseen Areas (Design Only)"},
      {"chkKeepDesignOnTop", "Keep Design Form On Top"},
      {"chkSaveBackup", "Save backup project in 'AppletTemp' before testing in Browser"},
      {"chkSomeFilesWarning", "Warn when output folder contains files."},
      {"chkReadyForUpload", "Show 'Ready for Upload' message."},
      {"chkAutoRepConfirm", "Show Applet replace confirmation message."},
      {"chk_Create_Recent", "Show [ 'Create' / 'Open' / 'Open Recent' ] dialog on start."},
      {"chk_RegPixDlgBox", "Use regular dialog-box to open picture files."},
      {"btnRestoreDefaults", "Restore Defaults"},
      {"btnResetAll", "Reset All Settings..."},
      {"btnOK", "&OK"},
      {"btnCANCEL", "&Cancel"},
  };
  return t;
}

frmAdvanced::frmAdvanced(frmMain& main, Env& env, const LangSettings& lang)
    : QDialog(&main), main_(main), env_(env) {
  setObjectName("frmAdvanced");
  setWindowModality(Qt::ApplicationModal);
  lblWarning = NamedControl(new QLabel(this), "lblWarning");
  lblWarning->setStyleSheet("color: #c00000;");
  auto check = [this](const char* name) { return NamedControl(new QCheckBox(this), name); };
  chkAutoTile = check("chkAutoTile");
  chkKeepDesignOnTop = check("chkKeepDesignOnTop");
  chkSaveBackup = check("chkSaveBackup");
  chkSomeFilesWarning = check("chkSomeFilesWarning");
  chkReadyForUpload = check("chkReadyForUpload");
  chkAutoRepConfirm = check("chkAutoRepConfirm");
  chk_Create_Recent = check("chk_Create_Recent");
  chk_RegPixDlgBox = check("chk_RegPixDlgBox");
  btnOK = NamedControl(new QPushButton(this), "btnOK");
  btnCANCEL = NamedControl(new QPushButton(this), "btnCANCEL");
  btnRestoreDefaults = NamedControl(new QPushButton(this), "btnRestoreDefaults");
  btnResetAll = NamedControl(new QPushButton(this), "btnResetAll");
  for (QPushButton* b : {btnOK, btnCANCEL, btnRestoreDefaults, btnResetAll}) b->setAutoDefault(false);

  auto* box = new QVBoxLayout(this);
  box->addWidget(lblWarning);
  for (QCheckBox* c : {chkAutoTile, chkKeepDesignOnTop, chkSaveBackup, chkSomeFilesWarning,
                       chkReadyForUpload, chkAutoRepConfirm, chk_Create_Recent, chk_RegPixDlgBox})
    box->addWidget(c);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(btnRestoreDefaults);
  buttons->addWidget(btnResetAll);
  buttons->addStretch();
  buttons->addWidget(btnOK);
  buttons->addWidget(btnCANCEL);
  box->addLayout(buttons);

  connect(btnOK, &QPushButton::clicked, this, [this] { btnOK_Click(); });
  connect(btnCANCEL, &QPushButton::clicked, this, [this] { btnCANCEL_Click(); });
  connect(btnRestoreDefaults, &QPushButton::clicked, this, [this] { btnRestoreDefaults_Click(); });
  connect(btnResetAll, &QPushButton::clicked, this, [this] { btnResetAll_Click(); });
  connect(chkSaveBackup, &QCheckBox::clicked, this, [this] { chkSaveBackup_Click(); });
  ApplyLanguageSection(env_, lang, Texts(), "[frmAdvanced]");
  ApplyTexts();
}

void frmAdvanced::ApplyTexts() {
  const UiTexts& t = Texts();
  setWindowTitle(QTextOf(t, "frmAdvanced"));
  lblWarning->setText(QTextOf(t, "lblWarning"));
  for (QAbstractButton* b : findChildren<QAbstractButton*>()) {
    const std::string name = b->objectName().toStdString();
    for (const UiText& x : t)
      if (name == x.control) b->setText(DisplayText(x.text));
  }
}

AdvancedOptions frmAdvanced::ReadControls() const {
  AdvancedOptions o;
  o.chkAutoTile = chkAutoTile->isChecked();
  o.chkKeepDesignOnTop = chkKeepDesignOnTop->isChecked();
  o.chkSaveBackup = chkSaveBackup->isChecked();
  o.chkSomeFilesWarning = chkSomeFilesWarning->isChecked();
  o.chkReadyForUpload = chkReadyForUpload->isChecked();
  o.chkAutoRepConfirm = chkAutoRepConfirm->isChecked();
  o.chk_Create_Recent = chk_Create_Recent->isChecked();
  o.chk_RegPixDlgBox = chk_RegPixDlgBox->isChecked();
  return o;
}

void frmAdvanced::ShowOptions(const AdvancedOptions& o) {
  chkAutoTile->setChecked(o.chkAutoTile);
  chkKeepDesignOnTop->setChecked(o.chkKeepDesignOnTop);
  chkSaveBackup->setChecked(o.chkSaveBackup);
  chkSomeFilesWarning->setChecked(o.chkSomeFilesWarning);
  chkReadyForUpload->setChecked(o.chkReadyForUpload);
  chkAutoRepConfirm->setChecked(o.chkAutoRepConfirm);
  chk_Create_Recent->setChecked(o.chk_Create_Recent);
  chk_RegPixDlgBox->setChecked(o.chk_RegPixDlgBox);
}

void frmAdvanced::Form_Load() { ShowOptions(AdvancedOptionsOf(env_)); }

void frmAdvanced::ShowDialog() {
  Form_Load();
  // A design window kept over the main window would stand over this one.
  if (GetParam(env_, "frmDesignOnTop") != "0") main_.Design()->hide();
  show();
  raise();
  activateWindow();
}

void frmAdvanced::Close() {
  hide();
  // Back over the main window, or on its own, as the setting now says.
  main_.ShowDesign();
}

void frmAdvanced::btnOK_Click() {
  const AdvancedOptions o = ReadControls();
  StoreAdvancedOptions(env_, o);
  // The settings the running program holds follow at once.
  main_.bAutoTile = o.chkAutoTile;
  main_.Design()->SetAutoTile(o.chkAutoTile);
  Session().bSaveBackup = o.chkSaveBackup;
  Close();
}

void frmAdvanced::btnCANCEL_Click() { Close(); }

void frmAdvanced::btnRestoreDefaults_Click() {
  ShowOptions(AdvancedDefaults());
  ResetSettings(env_, true);
}

void frmAdvanced::btnResetAll_Click() {
  if (ResetSettings(env_, false) == ResetResult::Done) ShowOptions(AdvancedOptionsOf(env_));
}

void frmAdvanced::chkSaveBackup_Click() { Session().bSaveBackup = chkSaveBackup->isChecked(); }

void frmAdvanced::closeEvent(QCloseEvent* e) {
  e->accept();
  Close();
}

}  // namespace kp
