// The button list operations of the main window: new, duplicate, delete,
// names, cut, copy, paste, the default button, stacking and the Edit menu
// that offers them. The model's side is button_list_model.h; this keeps
// the list rows, the design window's surfaces and the panel in step.
#pragma once

#include <QObject>
#include <string>

#include "core/env.h"
#include "core/model.h"
#include "properties/button_list_model.h"
#include "properties/ui_text.h"

class QAction;
class QPushButton;

namespace kp {

class ButtonPanel;
class frmDesign;
class frmMain;

class ButtonList : public QObject {
 public:
  ButtonList(frmMain& main, ButtonPanel& panel, Project& p, Env& env);
  // The texts, in the order a language file gives them.
  static UiTexts& Texts();
  void ApplyTexts();

  // --- Commands ---
  void btnAddBtn_Click();
  void btnDuplicate_Click();
  void pub_btnDuplicate_Click() { btnDuplicate_Click(); }
  void btnRemove_Click();
  void pub_btnRemove_Click() { btnRemove_Click(); }
  void mnuCut_Click();
  void mnuCopy_Click();
  void mnuPaste_Click();
  void CutItem() { mnuCut_Click(); }
  void CopyItem() { mnuCopy_Click(); }
  void PasteItem() { mnuPaste_Click(); }
  void pub_mnuPaste_Click() { mnuPaste_Click(); }
  void mnuMakeDefaultBtn_Click();
  void mnuBringToFront_Click();
  void mnuSendBack_Click();
  // Computes the Edit menu's entries; runs at each opening.
  void mnuEdit_Click();
  // txt_btnName key up: the name for every selected button.
  void txt_btnName_KeyUp();
  std::string Get_FREE_sBName(int index) const;

  // The delete entry names the button the panel shows.
  void ShowDeleteCaption(const std::string& name);

  // The gaps of a new button: the grid steps when buttons snap to the grid.
  PlacementGaps Gaps() const;

  // --- Controls ---
  QPushButton* btnAddBtn;
  QPushButton* btnDuplicate;
  QPushButton* btnRemove;
  QAction* mnuCut;
  QAction* mnuCopy;
  QAction* mnuPaste;
  QAction* mnuDuplicate;
  QAction* mnuDelete;
  QAction* mnuBringToFront;
  QAction* mnuSendBack;

 private:
  frmDesign* Design();
  // After an add or duplicate in the model: the row, the surface, the
  // selection, the panel and the marks.
  void ShowNewButton();
  void RenameRows(const std::vector<int>& rows);

  frmMain& main_;
  ButtonPanel& panel_;
  Project& p_;
  Env& env_;
};

}  // namespace kp
