// frm_Create_Recent: the start dialog. A new project under a name, a
// project from disk, or one of the recent ones.
#pragma once

#include <QDialog>
#include <functional>
#include <string>

#include "core/env.h"
#include "core/model.h"
#include "properties/ui_text.h"

class QCheckBox;
class QGroupBox;
class QLineEdit;
class QMenu;
class QPushButton;

namespace kp {

class frm_Create_Recent : public QDialog {
 public:
  frm_Create_Recent(Project& p, Env& env, QWidget* mainWindow);
  static UiTexts& Texts();

  // Both frames, modal.
  void ShowStart();
  // The new-project frame alone, modal (New).
  void ShowOnlyNewProject();

  void btnCreate_Click();
  void btnOpenFromDisk_Click();
  void btnRecent_Click();
  void chkShowNextTime_Click();

  // What the main window does for the two other choices.
  std::function<void()> onOpenFromDisk;
  std::function<void(const std::string&)> onOpenRecent;

  QGroupBox* frameNew;
  QGroupBox* frameOpen;
  QLineEdit* txtProjectName;
  QPushButton* btnCreate;
  QPushButton* btnOpenFromDisk;
  QPushButton* btnRecent;
  QMenu* mnuRecentFiles;
  QCheckBox* chkShowNextTime;

 protected:
  bool eventFilter(QObject* watched, QEvent* e) override;

 private:
  void Form_Load();
  Project& p_;
  Env& env_;
};

}  // namespace kp
