// The three small dialogs of the applet's background: its border
// (frmAppletBorder), its fade (frmAppletFade) and the offset of its picture
// (frmSetBgOffset). Each writes the applet record and has the design
// window's background repainted through `repaint`.
#pragma once

#include <QDialog>
#include <functional>

#include "core/env.h"
#include "core/language.h"
#include "core/model.h"
#include "properties/ui_text.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;
class QScrollBar;

namespace kp {

class ColourBox;

// The repaint of the background in its two steps (background and border
// under the wait cursor, then the transparent buttons).
using RepaintBackGround = std::function<void()>;

class frmAppletBorder : public QDialog {
 public:
  frmAppletBorder(QWidget* mainWindow, Project& p, Env& env, const LangSettings& lang,
                  RepaintBackGround repaint);
  static UiTexts& Texts();
  // The controls from the model, then shown; the form stays open beside
  // the main window until it is closed, which only hides it.
  void ShowDialog();
  void Form_Load();

  void cmbBorderStyle_Click();
  void txtBorderWidth_Change();
  void txtBorderShade_Change();
  void picBorderColor_Click();
  void chkAutoFullRepaint_Click();
  void btnRepainBackGround_and_border_Click();

  QComboBox* cmbBorderStyle;
  QLineEdit* txtBorderWidth;
  QScrollBar* scrollBorderWidth;
  QLineEdit* txtBorderShade;
  QScrollBar* scrollBorderShade;
  ColourBox* picBorderColor;
  QCheckBox* chkAutoFullRepaint;
  QPushButton* btnRepainBackGround_and_border;

 private:
  void ApplyTexts();
  // After every edit: unsaved, and the repaint when the box asks for it.
  void Edited();
  void ScrollChanged(QScrollBar* bar, QLineEdit* field);
  void SyncScroll(QScrollBar* bar, i16 value);

  Project& p_;
  Env& env_;
  RepaintBackGround repaint_;
  bool filling_ = false;
  bool scrollMark_ = false;
};

class frmAppletFade : public QDialog {
 public:
  frmAppletFade(QWidget* mainWindow, Project& p, Env& env, const LangSettings& lang,
                RepaintBackGround repaint);
  static UiTexts& Texts();
  void ShowDialog();
  void Form_Load();

  void cmbFadeStyle_Click();
  void picGeneralBackGround_Click();
  void picFadeColor_Click();
  void btnChangeColors_Click();

  ColourBox* picGeneralBackGround;
  ColourBox* picFadeColor;
  QPushButton* btnChangeColors;
  QComboBox* cmbFadeStyle;

  // The applet's colour changed here: the main window's box shows it too.
  std::function<void(Colour)> onBackGround;

 private:
  void ApplyTexts();

  Project& p_;
  Env& env_;
  RepaintBackGround repaint_;
  bool filling_ = false;
};

class frmSetBgOffset : public QDialog {
 public:
  frmSetBgOffset(QWidget* mainWindow, Project& p, Env& env, const LangSettings& lang,
                 RepaintBackGround repaint);
  static UiTexts& Texts();
  // Opens beside `anchor` (the main window's offset control).
  void ShowDialog(QWidget* anchor);
  void Form_Activate();

  void btnApply_Click();
  void btnOK_Click();
  void btnCANCEL_Click();

  QLineEdit* txtX;
  QScrollBar* scrollX;
  QLineEdit* txtY;
  QScrollBar* scrollY;
  QPushButton* btnApply;
  QPushButton* btnOK;
  QPushButton* btnCANCEL;

 protected:
  bool eventFilter(QObject* watched, QEvent* e) override;

 private:
  void ApplyTexts();

  Project& p_;
  Env& env_;
  RepaintBackGround repaint_;
  bool scrollMark_ = false;
};

}  // namespace kp
