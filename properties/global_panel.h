// The Global Properties panel of the main window (frmGeneral): the
// applet's size, colour and background picture, and the buttons that open
// the applet's option dialogs and its action programs. It also brings the
// applet's menu entries (special options, label descent, program settings)
// and hands the button panel its special options dialog.
#pragma once

#include <QLabel>
#include <QObject>
#include <QPointer>
#include <array>
#include <functional>

#include "core/env.h"
#include "core/model.h"
#include "properties/applet_options.h"
#include "properties/ui_text.h"

class QAction;
class QComboBox;
class QGroupBox;
class QLineEdit;
class QPushButton;

namespace kp {

class ColourBox;
class frmAdvanced;
class frmAppletBorder;
class frmAppletFade;
class frmButtonSpecial;
class frmDescent;
class frmMain;
class frmSetBgOffset;
class frmSpecial;

// A picture or label that reports a click (picUpdateDesignSize, picBgOffset).
class ClickLabel : public QLabel {
 public:
  using QLabel::QLabel;
  std::function<void()> onClick;

 protected:
  void mouseReleaseEvent(QMouseEvent* e) override;
};

class GlobalPanel : public QObject {
 public:
  GlobalPanel(frmMain& main, Project& p, Env& env);
  ~GlobalPanel() override;
  static UiTexts& Texts();
  // The items of the background picture's style list (after the shared
  // messages in the main window's section).
  static UiTexts& ItemTexts();

  // The applet record shown (SetMainParams, under bFillingPanel).
  void ShowMainParams();
  // The background painted again: background and border under the wait
  // cursor, then the transparent buttons.
  void RepaintBackGround();

  // --- Handlers ---
  void txtAppletSize_Change();
  void txtAppletWidth_KeyUp();
  void txtAppletHeight_KeyUp();
  // Enter in either field, or a click on the update picture or its label.
  void UpdateDesignSize();
  void picUpdateDesignSize_Click();
  void txtBackImg_Change();
  void txtBackImg_KeyUp();
  void btnGetBackImg_Click();
  void cmbBackImgStyle_Click();
  void picGeneralBackGround_Click();
  void picBgOffset_Click();
  void btnAppletBorder_Click();
  void btnAppletFade_Click();
  void btnAppletSpecial_Click();
  void btnAppletProgram_Click(int k);
  void mnuAdvanced_Click();
  void mnuDescent_Click();

  // The windows, created on first use and kept.
  frmSpecial* Special();
  frmAdvanced* Advanced();
  frmAppletBorder* AppletBorder();
  frmAppletFade* AppletFade();
  frmSetBgOffset* SetBgOffset();
  frmButtonSpecial* ButtonSpecial();
  frmDescent* Descent();

  // --- Controls (beside the main window's own fields) ---
  ClickLabel* picUpdateDesignSize;
  ClickLabel* lblUpdateDesignSize;
  QPushButton* btnGetBackImg;
  QComboBox* cmbBackImgStyle;
  ClickLabel* picBgOffset;
  QPushButton* btnAppletBorder;
  QPushButton* btnAppletFade;
  QPushButton* btnAppletSpecial;
  QGroupBox* frmAppletAction;
  std::array<QPushButton*, 4> btnAppletProgram{};
  QAction* mnuSpecial;
  QAction* mnuDescent;
  QAction* mnuAdvanced;

 protected:
  bool eventFilter(QObject* watched, QEvent* e) override;

 public:
  // The texts of the tables shown again (after a language routine).
  void ApplyTexts();

 private:
  void BuildControls();
  void BuildLayout();
  void BuildMenu();
  void Connect();
  void ShowUpdateHint(bool on);
  void ShowBgOffsetFor(int index);
  // The style list's selection set from code, without its own handler.
  void SelectBackImgStyle(int index);

  frmMain& main_;
  Project& p_;
  Env& env_;
  QPointer<frmSpecial> special_;
  QPointer<frmAdvanced> advanced_;
  QPointer<frmAppletBorder> border_;
  QPointer<frmAppletFade> fade_;
  QPointer<frmSetBgOffset> offset_;
  QPointer<frmButtonSpecial> buttonSpecial_;
  QPointer<frmDescent> descent_;
  bool selecting_ = false;
};

// Creates the panel over the main window's Global Properties frame and
// wires the button panel's special options to their dialog.
GlobalPanel* InstallGlobalPanel(frmMain& main, Project& p, Env& env);

}  // namespace kp
