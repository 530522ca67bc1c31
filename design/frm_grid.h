// frmGrid: the grid options of the design window. The values reach the
// session's grid settings and the per-user settings on Apply (or OK); the
// two "Now" buttons snap every button to the dialog's steps at once.
#pragma once

#include <QDialog>
#include <QFrame>
#include <functional>

#include "core/env.h"
#include "core/model.h"
#include "design/colour_box.h"
#include "design/design_host.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QScrollBar;

namespace kp {

class frmDesign;

class frmGrid : public QDialog {
 public:
  frmGrid(frmDesign& design, Project& p, Env& env, DesignHost& host, QWidget* parent);

  // Form_Load: the controls from the session's grid settings; then shown.
  void Form_Load();
  void ShowDialog();

  void btnApply_Click();
  void btnOK_Click();
  void btnCANCEL_Click();
  void btnAlignXY_NOW_Click();
  void btnAlignWH_NOW_Click();
  void picGridColor_Click();
  // At each key release the typed step is held to 2..999 (10 for text
  // that is no number) and given to the scroll bar.
  void txtX_KeyUp();
  void txtY_KeyUp();

  // The dialog's values were copied to the session since the last change.
  bool bApplied = false;

  QCheckBox* chkGrid;
  QCheckBox* chkAlignXY;
  QCheckBox* chkAlignWH;
  QRadioButton* optShowAsDots;
  QRadioButton* optShowAsLines;
  QLabel* lblGridX;
  QLineEdit* txtX;
  QScrollBar* scrollX;
  QLabel* lblGridY;
  QLineEdit* txtY;
  QScrollBar* scrollY;
  QLabel* lblGridColor;
  ColourBox* picGridColor;
  QPushButton* btnApply;
  QPushButton* btnOK;
  QPushButton* btnCANCEL;
  QPushButton* btnAlignXY_NOW;
  QPushButton* btnAlignWH_NOW;

 protected:
  bool eventFilter(QObject* watched, QEvent* e) override;

 private:
  void ApplyTexts();
  void Changed();
  // The steps as the dialog holds them, bounded.
  i16 StepX() const;
  i16 StepY() const;
  // The lock is asked about before snapping; false when the answer is No.
  bool UnlockForAlign();

  frmDesign& design_;
  Project& p_;
  Env& env_;
  DesignHost& host_;
  bool filling_ = false;
  bool syncingScroll_ = false;
};

}  // namespace kp
