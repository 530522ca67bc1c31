// frmSetAction: the modal editor of one action program, a button's for one
// of its events or the applet's. It works on a copy in two parallel lists
// (the command texts, hidden, and their display lines); nothing reaches the
// model before OK. The lists' rules live in actions/editor.h, the command
// texts and display lines in actions/program.h.
#pragma once

#include <QDialog>
#include <functional>
#include <string>
#include <vector>

#include "actions/editor.h"
#include "core/env.h"
#include "core/model.h"
#include "properties/ui_text.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QToolButton;
class QWidget;

namespace kp {

class frmMain;

class frmSetAction : public QDialog {
 public:
  // `selected` names the buttons OK writes a button program into.
  frmSetAction(QWidget* mainWindow, Project& p, Env& env,
               std::function<std::vector<int>()> selected);
  static UiTexts& Texts();
  // The editor of the main window, created on first use and kept.
  static frmSetAction* Of(frmMain& main, Project& p, Env& env);

  // Keeps the key, sets the caption, loads the form anew and runs it
  // modally over the main window.
  void myShow(const std::string& strReturnTo, const std::string& strCaption);
  void Form_Load();

  // --- Handlers ---
  void cmbAction_Click();
  void lstActions_MouseDown();
  void btnAdd_Click() { AddOrReplace(true); }
  void btnReplace_Click() { AddOrReplace(false); }
  void btnRemove_Click();
  void btnUP_Click();
  void btnDown_Click();
  void btnGetHexColor_Click();
  void btnCopyProg_Click();
  void btnPasteProg_Click();
  void btnOK_Click();
  void btnCANCEL_Click();

  // --- Form values ---
  std::string strReturnTo;
  std::string sSorryIDont;
  std::string sNoActionSelected;

  // --- Controls ---
  QListWidget* lstActions;
  QListWidget* lstActionsCode;
  QComboBox* cmbAction;
  QComboBox* cmbButtonNumber;
  QWidget* picActionMove;
  QLineEdit* txtX;
  QLineEdit* txtY;
  QLineEdit* txtWidth;
  QLineEdit* txtHeight;
  QLineEdit* txtFrames;
  QLineEdit* txtFrameDelay;
  QLabel* lblWidth;
  QLabel* lblHeight;
  QWidget* picSetLabel;
  QLineEdit* txtLabel;
  QComboBox* cmbStateSelector;
  QPushButton* btnGetHexColor;
  QWidget* picSetTimer;
  QComboBox* lsMiliseconds;
  QWidget* picBlink;
  QLineEdit* txtBlinkCount;
  QComboBox* cmbBlinkDelay;
  QLineEdit* txtJavaScript;
  QPushButton* btnAdd;
  QPushButton* btnReplace;
  QPushButton* btnRemove;
  QToolButton* btnUP;
  QToolButton* btnDown;
  QPushButton* btnCopyProg;
  QPushButton* btnPasteProg;
  QPushButton* btnOK;
  QPushButton* btnCANCEL;

 protected:
  bool eventFilter(QObject* watched, QEvent* e) override;
  void closeEvent(QCloseEvent* e) override;

 private:
  void BuildControls();
  void BuildLayout();
  void Connect();
  void ApplyTexts();
  void AddOrReplace(bool add);
  // lstActions and lstActionsCode from the program being edited.
  void Rebuild();
  void SelectRow(int row);
  // The selected row of lstActions, -1 for none.
  int SelectedRow() const;
  ActionFields ReadFields() const;
  void ShowFields(const ActionFields& f);
  ActionTexts LineTexts() const;
  void Close();

  QWidget* mainWindow_;
  Project& p_;
  Env& env_;
  std::function<std::vector<int>()> selected_;
  ProgramEditor editor_;
  std::vector<QObject*> enterAdds_;
  std::vector<std::pair<QObject*, QWidget*>> enterMoves_;
};

}  // namespace kp
