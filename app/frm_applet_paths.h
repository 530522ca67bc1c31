// frmAppletPaths: the applet's name and the three folders it loads from.
// Each box writes its filtered text into the project on every key release;
// the box keeps what was typed until the next generation refills it.
#pragma once

#include <QWidget>
#include <functional>

#include "core/language.h"
#include "core/model.h"
#include "generate/html_generator.h"
#include "generate/surrounding.h"
#include "properties/ui_text.h"

class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace kp {

class frmAppletPaths : public QWidget {
 public:
  frmAppletPaths(Project& p, Env& env, GeneratorState& st, const LangSettings& lang,
                 QWidget* parent);
  // The window's texts in the order of its language section.
  static UiTexts& Texts();

  // The four boxes from a generation, or from the project.
  void Fill(const AppletPathsBoxes& boxes);
  void FillFromProject();
  AppletPathsBoxes Boxes() const;

  // The window's activation makes the generated code stale.
  void Form_Activate();
  void txtAppletName_KeyUp();
  void txtCodeBase_KeyUp();
  void txtImgPath_KeyUp();
  void txtSndPath_KeyUp();
  void btnRestoreDefaults_Click();
  void btnClose_Click();
  // Writes the player-script setting from the box.
  void chkAddPlayerScript_Click();

  // Where closing goes back to (the window closed by any means).
  std::function<void()> onClose;

  QLabel* lblAppletName;
  QLineEdit* txtAppletName;
  QGroupBox* Frame1;
  QLabel* lblCodeBase;
  QLineEdit* txtCodeBase;
  QLabel* lblImages;
  QLineEdit* txtImgPath;
  QLabel* lblSounds;
  QLineEdit* txtSndPath;
  QLabel* lblNote;
  QCheckBox* chkAddPlayerScript;
  QPushButton* btnRestoreDefaults;
  QPushButton* btnClose;

 protected:
  bool event(QEvent* e) override;
  bool eventFilter(QObject* watched, QEvent* e) override;
  void closeEvent(QCloseEvent* e) override;

 private:
  void ApplyTexts();
  void KeyUp(QObject* box);

  Project& p_;
  Env& env_;
  GeneratorState& st_;
};

}  // namespace kp
