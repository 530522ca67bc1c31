// frmSpecial: the applet's special options (loading message, tips, paint
// mode, scrolling, preloading, clipping). The controls are filled from the
// applet record when the window opens; only OK writes them back.
#pragma once

#include <QDialog>
#include <array>

#include "core/env.h"
#include "core/language.h"
#include "core/model.h"
#include "properties/applet_options.h"
#include "properties/ui_text.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QScrollBar;

namespace kp {

class ColourBox;

class frmSpecial : public QDialog {
 public:
  frmSpecial(QWidget* mainWindow, Project& p, Env& env, const LangSettings& lang);
  static UiTexts& Texts();

  // Form_Load, then shown modally over the main window.
  void ShowDialog();
  void Form_Load();

  // --- Handlers ---
  void btnOK_Click();
  void btnCANCEL_Click();
  void btnRestoreDefaults_Click();
  void chkDoScroll_Click();
  void pic_Click(ColourBox* box);

  // The controls as they show, and back.
  SpecialOptions ReadControls() const;
  void ShowOptions(const SpecialOptions& o);

  // --- Controls ---
  QLabel* lblWarning;
  QLineEdit* txt_sLoading;
  ColourBox* pic_cLoadingFont;
  ColourBox* pic_cLoadingBack;
  QComboBox* cmb_iLoadingFont_Name;
  QComboBox* cmb_iLoadingFont_Size;
  QCheckBox* chk_Bold_LoadingFont;
  QCheckBox* chk_Italic_LoadingFont;
  QCheckBox* chkClip;
  QLineEdit* txtTipBorderWidth;
  QComboBox* lsTipFont;
  QComboBox* lsTipFontSize;
  QCheckBox* chkTipBold;
  QCheckBox* chkTipItalic;
  ColourBox* picTipBackColor;
  ColourBox* picTipTextColor;
  ColourBox* picTipBorderColor;
  QLineEdit* txtTipDelay;
  QLineEdit* txtTipHideAfter;
  QRadioButton* optNormalRepaint;
  QRadioButton* optUnusualRepaint;
  QCheckBox* chkDoScroll;
  std::array<QRadioButton*, 4> optDirections{};
  QLineEdit* txtiScDelay;
  QScrollBar* scrolliScDelay;
  QLineEdit* txtiScStep;
  QScrollBar* scrolliScStep;
  QCheckBox* chkPreLoad;
  QPushButton* btnOK;
  QPushButton* btnCANCEL;
  QPushButton* btnRestoreDefaults;

 protected:
  bool eventFilter(QObject* watched, QEvent* e) override;

 private:
  void BuildControls();
  void BuildLayout();
  void Connect();
  void ApplyTexts();
  void Caption();
  QLabel* Label(const char* name);

  Project& p_;
  Env& env_;
  // Set while a bar writes its field, so that the field leaves the bar.
  bool scrollMark_ = false;
};

}  // namespace kp
