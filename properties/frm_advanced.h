// frmAdvanced: the program settings that have no window of their own. Each
// box is a key of the Params section, written by OK only; the keys whose
// name says "Dont" hold the opposite of the box.
#pragma once

#include <QDialog>

#include "core/env.h"
#include "core/language.h"
#include "properties/applet_options.h"
#include "properties/ui_text.h"

class QCheckBox;
class QLabel;
class QPushButton;

namespace kp {

class frmMain;

class frmAdvanced : public QDialog {
 public:
  frmAdvanced(frmMain& main, Env& env, const LangSettings& lang);
  static UiTexts& Texts();

  // The boxes from the settings, then shown modally; a design window kept
  // on top steps aside while it is open.
  void ShowDialog();
  void Form_Load();

  void btnOK_Click();
  void btnCANCEL_Click();
  // The boxes to their defaults and the Params and Sizes settings removed
  // without a question.
  void btnRestoreDefaults_Click();
  // Every setting of this version removed, after the question.
  void btnResetAll_Click();
  void chkSaveBackup_Click();

  AdvancedOptions ReadControls() const;
  void ShowOptions(const AdvancedOptions& o);

  QLabel* lblWarning;
  QCheckBox* chkAutoTile;
  QCheckBox* chkKeepDesignOnTop;
  QCheckBox* chkSaveBackup;
  QCheckBox* chkSomeFilesWarning;
  QCheckBox* chkReadyForUpload;
  QCheckBox* chkAutoRepConfirm;
  QCheckBox* chk_Create_Recent;
  QCheckBox* chk_RegPixDlgBox;
  QPushButton* btnOK;
  QPushButton* btnCANCEL;
  QPushButton* btnRestoreDefaults;
  QPushButton* btnResetAll;

 protected:
  void closeEvent(QCloseEvent* e) override;

 private:
  void ApplyTexts();
  void Close();

  frmMain& main_;
  Env& env_;
};

}  // namespace kp
