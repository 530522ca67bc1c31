// frmButtonSpecial: what the button panel has no room for, per state: the
// button's fade, the frame a browser shows around it, and the border around
// its text. Edits write every selected button in the state sState and
// leave the codes the copy to the other states repeats.
#pragma once

#include <QDialog>
#include <string>

#include "core/env.h"
#include "core/language.h"
#include "core/model.h"
#include "properties/applet_options.h"
#include "properties/button_panel_copy.h"
#include "properties/ui_text.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QScrollBar;

namespace kp {

class ButtonPanel;
class ColourBox;
class frmMain;

class frmButtonSpecial : public QDialog {
 public:
  frmButtonSpecial(frmMain& main, ButtonPanel& panel, Project& p, Env& env,
                   const LangSettings& lang);
  static UiTexts& Texts();

  // Shown beside the main window, not modal; Close only hides it.
  void ShowDialog();
  // The fields of iCurBtn in the state sState, under the form's mark; each
  // time the form gets the focus.
  void Form_Activate();

  // --- Handlers ---
  void cmbFadeStyle_Click();
  void picBackColor_Click();
  void picFadeColor_Click();
  void btnChangeColors_Click();
  void picFrameColor_Click();
  void txtFrameThick_Change();
  void picColor_Click();
  void txtThick_Change();
  void txtShade_Change();
  void cmbLight_Click();
  void cmbLeftToRight_Click();
  void btnClose_Click();

  // The controls the copy to the other states reads, as they show.
  SpecialControls ReadControls() const;

  // --- Controls ---
  QComboBox* cmbFadeStyle;
  ColourBox* picBackColor;
  ColourBox* picFadeColor;
  QPushButton* btnChangeColors;
  ColourBox* picFrameColor;
  QLineEdit* txtFrameThick;
  QScrollBar* scrollFrameThick;
  QLabel* lblFrameNote;
  ColourBox* picColor;
  QLineEdit* txtThick;
  QScrollBar* scrollThick;
  QLineEdit* txtShade;
  QScrollBar* scrollShade;
  QComboBox* cmbLight;
  QComboBox* cmbLeftToRight;
  QPushButton* btnClose;

 protected:
  bool event(QEvent* e) override;
  bool eventFilter(QObject* watched, QEvent* e) override;

 private:
  void BuildControls();
  void BuildLayout();
  void Connect();
  void ApplyTexts();
  // The write path: the value into the selected buttons, their redraw,
  // the last-change code.
  void Write(SpecialControl c, const std::string& value);
  void Redraw(const std::vector<int>& written);
  bool PickColour(ColourBox* box);
  void TextChanged(SpecialControl c, QLineEdit* field, QScrollBar* bar);
  void ScrollChanged(QScrollBar* bar, QLineEdit* field);
  void SyncScroll(QScrollBar* bar, i16 value);

  frmMain& main_;
  ButtonPanel& panel_;
  Project& p_;
  Env& env_;
  // Raised while the form fills its controls, and while a bar writes its
  // field.
  bool mark_ = false;
  bool scrollMark_ = false;
};

// frmDescent: the one applet-wide shift of a pressed label. Modal; only OK
// writes.
class frmDescent : public QDialog {
 public:
  frmDescent(QWidget* mainWindow, Project& p, Env& env, const LangSettings& lang);
  static UiTexts& Texts();
  void ShowDialog();
  void Form_Load();
  void btnOK_Click();
  void btnCANCEL_Click();
  void btnRestoreDefaults_Click();

  QLineEdit* txtX;
  QLineEdit* txtY;
  QPushButton* btnOK;
  QPushButton* btnCANCEL;
  QPushButton* btnRestoreDefaults;

 protected:
  bool eventFilter(QObject* watched, QEvent* e) override;

 private:
  Project& p_;
  Env& env_;
};

}  // namespace kp
