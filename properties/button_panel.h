// The button property panel of the main window: the properties of the
// current button in the current state. Every edit writes through at once
// to all selected buttons (the rows selected in lstButtons), redraws them,
// marks the project unsaved and records what kind of change it was, so
// that the copy to the other states can repeat it.
//
// The decisions of the write path live in panel_model.h; this window reads
// its controls, calls it, and redraws through the design window.
#pragma once

#include <QAbstractButton>
#include <QLabel>
#include <QPixmap>
#include <QWidget>
#include <array>
#include <functional>
#include <string>
#include <vector>

#include "core/env.h"
#include "core/model.h"
#include "properties/button_panel_copy.h"
#include "properties/panel_hooks.h"
#include "properties/panel_model.h"
#include "properties/ui_text.h"

class QCheckBox;
class QComboBox;
class QFrame;
class QGridLayout;
class QGroupBox;
class QLineEdit;
class QPushButton;
class QScrollBar;
class QToolButton;

namespace kp {

class ButtonList;
class ColourBox;
class frmDesign;
class frmMain;

// A picture toggle (imgBold, imgItalic): three pictures for up, hovered
// and pressed. The panel decides which one shows. It is a checkable
// button, so Space and a screen reader's toggle reach it as a mouse
// press does; its checked state is the panel's flag.
class PictureToggle : public QAbstractButton {
 public:
  enum Look { Up = 0, Hovered = 1, Pressed = 2 };
  PictureToggle(const QString& letter, bool italic, QWidget* parent);
  void ShowLook(Look look);
  Look look() const { return look_; }
  std::function<void()> onMouseDown;
  std::function<void()> onMouseMove;
  QSize sizeHint() const override { return {22, 22}; }

 protected:
  void paintEvent(QPaintEvent* e) override;
  void mousePressEvent(QMouseEvent* e) override;
  void mouseReleaseEvent(QMouseEvent* e) override;
  void mouseMoveEvent(QMouseEvent* e) override;
  void enterEvent(QEnterEvent* e) override;
  void nextCheckState() override;

 private:
  std::array<QPixmap, 3> pictures_;
  Look look_ = Up;
};

class ButtonPanel : public QWidget, public PanelHooks {
 public:
  ButtonPanel(frmMain& main, Project& p, Env& env, QWidget* parent);
  ~ButtonPanel() override;
  // The panel's texts, in the order a language file gives them.
  static UiTexts& Texts();
  void ApplyTexts();

  // --- PanelHooks ---
  void ShowProp(int index) override;
  void SetLastChange(int code) override;

  // Shows bold and italic from a style number (0 none, 1 bold, 2 italic,
  // 3 both): both flags and both pictures.
  void SetFontStyle(int style);

  // The buttons whose rows are selected, ascending; and how many rows.
  std::vector<int> SelectedButtons() const;
  int SelectedRowCount() const;

  // The size the panel needs with every control of every mode shown.
  QSize FullSizeHint(bool minimum = false) const;

  // The list operations that share the panel (add, delete, names ...).
  ButtonList& List() { return *list_; }

  // --- Handlers ---
  void btnUpState_Click();
  void btnOverState_Click();
  void btnDownState_Click();
  void btnCopyToAll_Click();
  void btnAdvanced_Click();
  void chkDOWNBtn_MouseUp();
  void chkCenterText_MouseUp();
  void chkPositionText_MouseUp();
  void imgBold_MouseDown();
  void imgItalic_MouseDown();
  void Frame1_MouseMove();
  void btnGetLink_Click();
  void btnGetBitmap_Click();
  void btnGetSound_Click();
  void btnMultiLine_Click();
  void btnTFrame_Click();
  void btnAction_Click();

  // --- Controls ---
  QLineEdit* txt_btnName;
  QPushButton* btnUpState;
  QPushButton* btnOverState;
  QPushButton* btnDownState;
  QToolButton* btnCopyToAll;
  QFrame* Frame1;
  QLineEdit* txtLabel;
  QPushButton* btnMultiLine;
  QComboBox* lsFont;
  QComboBox* lsFontSize;
  PictureToggle* imgBold;
  PictureToggle* imgItalic;
  ColourBox* picFontColor;
  ColourBox* picBackColor;
  QCheckBox* chkTransparent;
  QCheckBox* chkCenterText;
  QCheckBox* chkPositionText;
  QFrame* frameTextPos;
  QLineEdit* txtLabelPosX;
  QLineEdit* txtLabelPosY;
  QLineEdit* txtImage;
  QPushButton* btnGetBitmap;
  QComboBox* cmbImgStyle;
  QFrame* frameImgOffset;
  QLineEdit* txtImgX;
  QLineEdit* txtImgY;
  QLineEdit* txtSound;
  QPushButton* btnGetSound;
  QCheckBox* chkSoundLoop;
  QCheckBox* chkSoundStop;
  QComboBox* cmbBorderStyle;
  QLineEdit* txtBorderWidth;
  QScrollBar* scrollBorderWidth;
  QLineEdit* txtBorderShade;
  QScrollBar* scrollBorderShade;
  ColourBox* picBorderColor;
  QCheckBox* chkBorderAutoColor;
  QPushButton* btnTFrame;
  QLineEdit* txtURL;
  QPushButton* btnGetLink;
  QComboBox* lsTarget;
  QLineEdit* txtStatus;
  QLineEdit* txtTip;
  QLineEdit* txtX;
  QLineEdit* txtY;
  QLineEdit* txtWidth;
  QLineEdit* txtHeight;
  QPushButton* btnAdvanced;
  QCheckBox* chkHidden;
  QCheckBox* chkShowHand;
  QCheckBox* chkRadio;
  QCheckBox* chkDOWNBtn;
  QPushButton* btnAction;
  QComboBox* cmbAction;

  // The flags of the two picture toggles.
  bool bBold = false;
  bool bItalic = false;
  // Set while a scroll bar writes its text field, so that the field does
  // not write the bar back.
  bool bScrollMark = false;

  // Later windows plug in here; unset, their buttons do nothing.
  // The action editor, for the program key of cmbAction's event.
  std::function<void(const std::string& programKey)> onSetAction;
  // The button special options dialog.
  std::function<void()> onSpecial;
  // That dialog's controls, read by the copy to the other states.
  std::function<SpecialControls()> specialControls;

 protected:
  bool eventFilter(QObject* watched, QEvent* e) override;

 private:
  void BuildControls();
  void BuildLayout();
  void Connect();
  void MakeEnterKeys();

  frmDesign* Design();
  // The write path for one control with its value (see panel_model.h),
  // then the redraw, the name warning and the last-change code.
  void Write(PanelControl c, const std::string& value);
  void RedrawWritten(PanelControl c, const std::vector<int>& written);
  // The handler of each control, reading the control.
  void Run(PanelControl c);
  std::string ValueOf(PanelControl c) const;
  void SwitchState(const char* state);
  void SwitchTab(const std::string& state);
  void ShowTabLook();
  void ShowTextPosMode(bool manual);
  void ToggleLook(PictureToggle* t, bool on);
  void ScrollChanged(QScrollBar* bar, QLineEdit* field);
  void SyncScroll(QScrollBar* bar, i16 value);
  PanelControls ReadControls() const;

  // The state when a tab was pressed: a click that did not switch runs the
  // switch itself.
  std::string stateAtPress_;
  QGridLayout* optionsGrid_ = nullptr;
  frmMain& main_;
  Project& p_;
  Env& env_;
  ButtonList* list_ = nullptr;
  // Enter keys: the field and the control whose handler Enter runs again.
  std::vector<std::pair<QObject*, PanelControl>> enterRuns_;
  std::vector<QObject*> enterSwallows_;
};

// Creates the panel inside the main window's property frame, with the
// button list operations beside it, and makes it the window's panel.
ButtonPanel* InstallButtonPanel(frmMain& main, Project& p, Env& env);

// A model text as the controls show it, and back.
QString ShownText(const std::string& bytes);
std::string ModelText(const QString& text);

}  // namespace kp
